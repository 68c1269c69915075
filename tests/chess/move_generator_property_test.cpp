#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "chess/attacks.h"
#include "support/board_checks.h"
#include "support/mode_filter.h"
#include "support/perft_file.h"
#include "support/random_games.h"
#include "support/slow_chess.h"

// The board and the generator against slow chess, in every position of shallow trees and of random games.
namespace {

constexpr std::uint32_t seed = 4711;
const std::string where = ", seed " + std::to_string(seed);

std::string TextOf(const std::vector<Move>& moves) {
    std::string text;
    for (const Move move : moves)
        text += MoveToCoordinate(move) + '/' + std::to_string(PromotionPiece(move)) +
                std::to_string(static_cast<unsigned>(CheckType(move))) + ' ';
    return text;
}

std::vector<Move> Generated(const BOARD& board, unsigned mode) {
    Move buffer[MAX_MOVES];
    return {buffer, GenerateMoves(buffer, board, mode)};
}

/// What is wrong with the list of all legal moves: the same words are expected, in the same order.
std::string FaultInList(const BOARD& board, const std::vector<Move>& moves) {
    const std::vector<Move> expected = SlowLegalMoves(SlowFromBoard(board));
    return moves == expected ? "" : "wanted " + TextOf(expected) + "\nfound  " + TextOf(moves);
}

/// What is wrong with the lists of the modes `first`, `first` + `step`, ..
std::string FaultInModes(const BOARD& board, const std::vector<Move>& moves, unsigned first, unsigned step) {
    for (unsigned mode = first; mode < 256; mode += step) {
        std::vector<Move> expected = moves;
        if (!board.in_check()) std::erase_if(expected, [mode](Move move) { return !ModeWants(mode, move); });
        const std::vector<Move> found = Generated(board, mode);
        if (found != expected)
            return "mode " + std::to_string(mode) + "\nwanted " + TextOf(expected) + "\nfound  " + TextOf(found);
    }
    return "";
}

/// What is wrong with making and unmaking a legal move.
std::string FaultInMove(BOARD& board, Move move) {
    const BOARD before = board;
    const std::uint64_t key_after = board.HashKeyAfterMove(move);
    const SlowPosition slow_after = SlowAfter(SlowFromBoard(board), move);
    std::string fault;
    if (!board.IsMovePseudoLegal(move)) fault += "not pseudo-legal\n";
    if (!VerifyMove(move, board)) fault += "not verified\n";
    if (LeavesKingInCheck(move, board)) fault += "leaves the king in check\n";
    fault += Differences(board, before);

    board.MakeMove(move);
    if (!(SlowFromBoard(board) == slow_after)) fault += "another position than " + SlowFen(slow_after) + '\n';
    if (board.key() != key_after) fault += "HashKeyAfterMove\n";
    const bool resets = MovingPiece(move) == pawn || CapturedPiece(move) != no_piece;
    if (board.frame().fifty_counter != (resets ? 0 : before.frame().fifty_counter + 1)) fault += "fifty_counter\n";
    fault += Disagreements(board);

    board.UnmakeMove(move);
    fault += Differences(board, before);
    return fault;
}

std::string FaultInNullMove(BOARD& board) {
    const BOARD before = board;
    board.MakeNullMove();
    SlowPosition expected = SlowFromBoard(before);
    expected.side = Opponent(expected.side);
    expected.en_passant_square = 0;
    std::string fault;
    if (!(SlowFromBoard(board) == expected)) fault += "null move\n";
    if (board.frame().fifty_counter != 0) fault += "fifty_counter after the null move\n";
    fault += Disagreements(board);
    board.UnmakeNullMove();
    return fault + Differences(board, before);
}

std::string FaultInMoves(BOARD& board, const std::vector<Move>& moves) {
    for (const Move move : moves)
        if (const std::string fault = FaultInMove(board, move); !fault.empty())
            return MoveToCoordinate(move) + ": " + fault;
    return board.in_check() ? "" : FaultInNullMove(board);
}

/// Looks at a position and at all that follow within `depth` half moves.
void ExpectSoundTree(BOARD& board, int depth, int& positions) {
    const std::vector<Move> moves = Generated(board, mode_legal);
    ++positions;
    ASSERT_EQ(FaultInList(board, moves), "") << FenOf(board);
    // All 256 modes near the root, every 17th further on, starting elsewhere each time.
    const unsigned step = depth > 0 ? 1 : 17;
    ASSERT_EQ(FaultInModes(board, moves, static_cast<unsigned>(positions) % step, step), "") << FenOf(board);
    ASSERT_EQ(FaultInMoves(board, moves), "") << FenOf(board);
    if (depth == 0) return;
    for (const Move move : moves) {
        board.MakeMove(move);
        ExpectSoundTree(board, depth - 1, positions);
        board.UnmakeMove(move);
        if (testing::Test::HasFatalFailure()) return;
    }
}

TEST(PositionsOfPerft, AreSoundAndSoIsAllThatFollows) {
    int positions = 0;
    for (const PerftRow& row : ReadPerftFile(VORKA_TEST_DIRECTORY "/data/perft.txt")) {
        BOARD board = BoardFromFen(row.fen);
        ExpectSoundTree(board, row.counts[1] < 200 ? 2 : 1, positions);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(positions, 2000);
}

TEST(PositionsOfRandomGames, ListEqualsSlowList) {
    ForEachRandomPosition(seed, 112, 80, [](const BOARD& board, const std::vector<Move>& moves) {
        ASSERT_EQ(FaultInList(board, moves), "") << FenOf(board) << where;
    });
}

TEST(PositionsOfRandomGames, MovesAreMadeAndUnmade) {
    ForEachRandomPosition(seed + 1, 42, 80, [](BOARD& board, const std::vector<Move>& moves) {
        ASSERT_EQ(Disagreements(board), "") << FenOf(board) << where;
        ASSERT_EQ(FaultInMoves(board, moves), "") << FenOf(board) << where;
    });
}

TEST(PositionsOfRandomGames, ModesFilterTheList) {
    unsigned visited = 0;
    ForEachRandomPosition(seed + 2, 56, 80, [&visited](const BOARD& board, const std::vector<Move>& moves) {
        ASSERT_EQ(FaultInModes(board, moves, visited++ % 5, 5), "") << FenOf(board) << where;
    });
}

// The walk is of no use if the rare things do not come up in it.
TEST(PositionsOfRandomGames, HoldTheRareMoves) {
    int castling = 0, checking_castling = 0, en_passant = 0, promotions_with_check = 0, double_checks = 0, in_check = 0;
    const auto visit = [&](const BOARD& board, const std::vector<Move>& moves) {
        in_check += board.in_check();
        for (const Move move : moves) {
            castling += IsCastling(move);
            checking_castling += IsCastling(move) && GivesCheck(move);
            en_passant += CapturedPiece(move) == pawn && board.squares[ToSquare(move)] == no_piece;
            promotions_with_check += PromotionPiece(move) != no_piece && GivesCheck(move);
            double_checks += CheckType(move) == CheckKind::both;
        }
    };
    for (std::uint32_t offset = 0; offset < 3; ++offset) ForEachRandomPosition(seed + offset, 28, 80, visit);
    EXPECT_GT(castling, 20);
    EXPECT_GT(checking_castling, 0);
    EXPECT_GT(en_passant, 20);
    EXPECT_GT(promotions_with_check, 100);
    EXPECT_GT(double_checks, 20);
    EXPECT_GT(in_check, 100);
}

// The checks must see what is wrong: one deliberate fault for each.
TEST(PositionChecks, CatchFaults) {
    BOARD board = BoardFromFen(random_game_starts[1]);
    std::vector<Move> moves = Generated(board, mode_legal);
    EXPECT_EQ(FaultInModes(board, moves, 0, 1), "");
    std::swap(moves[3], moves[4]);
    EXPECT_NE(FaultInList(board, moves), "");
    EXPECT_NE(FaultInModes(board, moves, 0, 1), "");
    EXPECT_NE(FaultInMove(board, moves[0] ^ direct_check_bit), "");

    const BOARD sound = board;
    board.occupied_file ^= 1;
    EXPECT_EQ(Disagreements(board), "occupied_file\n");
    EXPECT_EQ(Differences(board, sound), "occupied_file\n");
}

}  // namespace
