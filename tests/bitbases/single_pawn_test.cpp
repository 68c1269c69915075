#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <string>
#include <vector>

#include "bitbases/bitbases.h"
#include "bitbases/single_pawn_bitbases_data.h"
#include "bitbases/single_pawn_solver.h"
#include "support/board_builder.h"

namespace {

int Probe(const std::string& fen) { return VorkaBitbases::ProbeSinglePawn(BoardFromFen(fen)); }

TEST(SinglePawn, IsTheSolutionThatWasBuiltIn) {
    const std::vector<std::uint64_t> solution = SolveSinglePawn();
    ASSERT_EQ(solution.size(), single_pawn_bitbase.size());
    EXPECT_TRUE(std::equal(solution.begin(), solution.end(), single_pawn_bitbase.begin()));
    int draws = 0;
    for (const std::uint64_t word : single_pawn_bitbase) draws += std::popcount(word);
    EXPECT_EQ(draws, 108788);
}

TEST(SinglePawn, KnownPositions) {
    EXPECT_EQ(Probe("4k3/8/4K3/4P3/8/8/8/8 w - - 0 1"), 4 * 4 + 32687);
    EXPECT_EQ(Probe("4k3/8/4K3/4P3/8/8/8/8 b - - 0 1"), -(4 * 4 + 32687)) << "the king on the sixth rank wins anyway";
    EXPECT_EQ(Probe("4k3/4P3/4K3/8/8/8/8/8 b - - 0 1"), 0) << "stalemate";
    EXPECT_EQ(Probe("4k3/8/8/8/4p3/4K3/8/8 w - - 0 1"), 0) << "the pawn is under attack";
    EXPECT_EQ(Probe("8/8/8/4k3/8/4K3/4P3/8 w - - 0 1"), 0) << "no opposition";
    EXPECT_EQ(Probe("8/8/8/4k3/8/4K3/4P3/8 b - - 0 1"), -(4 * 1 + 32687)) << "opposition";
    EXPECT_EQ(Probe("k7/8/1K6/P7/8/8/8/8 w - - 0 1"), 0) << "a rook pawn";
    EXPECT_EQ(Probe("8/8/8/8/p7/1k6/8/K7 b - - 0 1"), 0) << "and of Black";
    EXPECT_EQ(Probe("8/8/8/8/4p3/4k3/8/4K3 b - - 0 1"), 4 * 4 + 32687) << "colours exchanged";
    EXPECT_EQ(Probe("7k/8/8/8/8/8/P7/K7 w - - 0 1"), 4 * 1 + 32687) << "outside the square";
}

/// What the moves of a position say of it: whether the side with the pawn wins.
bool WinsByItsMoves(BOARD& board, Colour strong) {
    const std::vector<Move> moves = LegalMovesOf(board);
    const bool strong_to_move = board.side_to_move == strong;
    if (moves.empty()) return !strong_to_move && board.in_check();
    for (const Move move : moves) {
        board.MakeMove(move);
        bool wins = false;
        if (board.side(strong).pawns != 0) {
            wins = VorkaBitbases::IsSinglePawnWin(static_cast<Colour>(board.side_to_move), strong,
                                                  FindLowestBit(board.side(strong).pawns),
                                                  board.side(white).king_square, board.side(black).king_square);
        } else if (board.side(strong).heavy_points != 0) {
            // A new queen or rook wins unless it can be taken at once or leaves no move.
            const std::vector<Move> answers = LegalMovesOf(board);
            wins = !answers.empty() || board.in_check();
            for (const Move answer : answers) {
                if (CapturedPiece(answer) != 0) wins = false;
            }
        }
        board.UnmakeMove(move);
        if (wins == strong_to_move) return wins;
    }
    return !strong_to_move;
}

TEST(SinglePawn, AgreesWithTheMovesOfEveryPosition) {
    // A part of all positions, both colours: every one whose number is a multiple of 5.
    int number = 0;
    int checked = 0;
    for (const Colour strong : {white, black}) {
        for (Square pawn_square = a2; pawn_square <= h7; ++pawn_square) {
            for (Square own_king = a1; own_king <= h8; ++own_king) {
                for (Square enemy_king = a1; enemy_king <= h8; ++enemy_king) {
                    if (++number % 5 != 0 || own_king == enemy_king) continue;
                    if (pawn_square == own_king || pawn_square == enemy_king) continue;
                    std::int8_t squares[64] = {};
                    squares[pawn_square] = static_cast<std::int8_t>(strong == white ? pawn : -pawn);
                    squares[own_king] = static_cast<std::int8_t>(strong == white ? king : -king);
                    squares[enemy_king] = static_cast<std::int8_t>(strong == white ? -king : king);
                    for (const Colour to_move : {white, black}) {
                        BOARD board;
                        if (!board.SetPosition(squares, static_cast<int>(to_move), 0, 0)) continue;
                        const bool wins = VorkaBitbases::IsSinglePawnWin(
                            to_move, strong, pawn_square, board.side(white).king_square, board.side(black).king_square);
                        ASSERT_EQ(wins, WinsByItsMoves(board, strong)) << FenOf(board);
                        const int score = VorkaBitbases::ProbeSinglePawn(board);
                        ASSERT_EQ(score != 0, wins);
                        if (wins) {
                            ASSERT_EQ(score > 0, to_move == strong);
                        }
                        ++checked;
                    }
                }
            }
        }
    }
    EXPECT_GT(checked, 100'000);
}

}  // namespace
