#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "chess/attacks.h"
#include "chess/fen.h"
#include "chess/notation.h"
#include "chess/user_board.h"
#include "support/board_builder.h"
#include "support/random_games.h"

namespace {

constexpr std::uint32_t seed = 20260;
constexpr int games = 140;
constexpr int plies = 120;

/// The moves of random games that do not come back when `write(board, move)` is read.
template <class Write>
int MovesThatReadOtherwise(Write write, std::string& example) {
    int count = 0;
    ForEachRandomPosition(seed, games, plies, [&](const BOARD& board, const std::vector<Move>& moves) {
        for (const Move move : moves) {
            const std::string text = write(board, move);
            MoveParseError error{};
            if (ParseMove(text, board, error) == move) continue;
            ++count;
            example = text + " in " + FenOf(board);
        }
    });
    return count;
}

TEST(MovesOfRandomGames, ReadAsWrittenInSan) {
    std::string example;
    EXPECT_EQ(MovesThatReadOtherwise(MoveToSan, example), 0) << example << ", seed " << seed;
}

TEST(MovesOfRandomGames, ReadAsWrittenInCoordinates) {
    std::string example;
    EXPECT_EQ(MovesThatReadOtherwise([](const BOARD&, Move move) { return MoveToCoordinate(move); }, example), 0)
        << example << ", seed " << seed;
}

// A writer that leaves out which piece is meant must be caught.
TEST(MovesOfRandomGames, CatchAWriterThatTellsTooLittle) {
    const auto tells_too_little = [](const BOARD& board, Move move) {
        const std::string text = MoveToSan(board, move);
        if (MovingPiece(move) == pawn || IsCastling(move)) return text;
        return text.substr(0, 1) + SquareToString(ToSquare(move));
    };
    std::string example;
    EXPECT_GT(MovesThatReadOtherwise(tells_too_little, example), 0);
}

TEST(MovesOfRandomGames, HaveDifferentTexts) {
    ForEachRandomPosition(seed + 1, games, plies, [](const BOARD& board, const std::vector<Move>& moves) {
        std::set<std::string> san, long_algebraic, coordinate;
        for (const Move move : moves) {
            san.insert(MoveToSan(board, move));
            long_algebraic.insert(MoveToLongAlgebraic(board, move));
            coordinate.insert(MoveToCoordinate(move));
        }
        ASSERT_EQ(san.size(), moves.size()) << FenOf(board);
        ASSERT_EQ(long_algebraic.size(), moves.size()) << FenOf(board);
        ASSERT_EQ(coordinate.size(), moves.size()) << FenOf(board);
    });
}

/// What stands between the piece letter and the target, found from attacks and pins: of the attackers of the target,
/// those count that are not held by a pin.
std::string SlowDisambiguation(const BOARD& board, Move move) {
    const Square from = FromSquare(move);
    const Square to = ToSquare(move);
    std::vector<Square> others;
    for (Square square = a1; square <= h8; ++square) {
        const bool same_kind = board.squares[square] == board.squares[from];
        if (!same_kind || square == from || !Has(AttackersOf(to, board), square)) continue;
        const Move other = MakeWord(square, to, MovingPiece(move), CapturedPiece(move));
        if (!LeavesKingInCheck(other, board)) others.push_back(square);
    }
    if (others.empty()) return "";
    const std::string name = SquareToString(from);
    if (std::none_of(others.begin(), others.end(), [&](Square s) { return FileOf(s) == FileOf(from); })) {
        return name.substr(0, 1);
    }
    if (std::none_of(others.begin(), others.end(), [&](Square s) { return RankOf(s) == RankOf(from); })) {
        return name.substr(1);
    }
    return name;
}

TEST(MovesOfRandomGames, AreToldApartAsAttacksAndPinsDemand) {
    int told_apart = 0;
    ForEachRandomPosition(seed + 2, games, plies, [&](const BOARD& board, const std::vector<Move>& moves) {
        for (const Move move : moves) {
            if (MovingPiece(move) == pawn || IsCastling(move)) continue;
            const std::string expected = SlowDisambiguation(board, move);
            const std::string capture = CapturedPiece(move) != no_piece ? "x" : "";
            const std::string san = MoveToSan(board, move);
            const std::string head = san.substr(0, 1) + expected + capture + SquareToString(ToSquare(move));
            ASSERT_EQ(san.substr(0, san.find_first_of("+#")), head) << FenOf(board);
            if (!expected.empty()) ++told_apart;
        }
    });
    EXPECT_GT(told_apart, 100);
}

TEST(PositionsOfRandomGames, ReadAsWritten) {
    ForEachRandomPosition(seed + 3, games, plies, [](const BOARD& board, const std::vector<Move>& moves) {
        const std::string fen = WriteFen(board, 23);
        const BOARD read = BoardFromFen(fen);
        ASSERT_EQ(WriteFen(read, 23), fen);
        ASSERT_EQ(read.key(), board.key()) << fen;
        ASSERT_EQ(read.frame(), board.frame()) << fen;
        ASSERT_TRUE(std::equal(read.squares, read.squares + 64, board.squares)) << fen;
        ASSERT_EQ(LegalMovesOf(read), moves) << fen;
    });
}

// Whatever is damaged in a text: it is refused, or what it says is a sound position.
TEST(PositionsOfRandomGames, DamagedTextsAreRefusedOrSound) {
    std::mt19937 random(seed);
    const std::string alphabet("pnbrqkPNBRQK12345678/ wb-KQkqae360\0\xff", 37);
    int accepted = 0;
    int refused = 0;
    ForEachRandomPosition(seed + 4, 28, plies, [&](const BOARD& board, const std::vector<Move>&) {
        std::string fen = WriteFen(board, 23);
        const std::size_t place = random() % fen.size();
        const char damage = alphabet[random() % alphabet.size()];
        if (random() % 2 == 0) {
            fen[place] = damage;
        } else {
            fen.insert(place, 1, damage);
        }
        UserBoard game;
        try {
            game.SetBoardFromFen(fen);
            ASSERT_TRUE(game.board().IsValid()) << fen;
            ASSERT_NO_THROW(static_cast<void>(BoardFromFen(game.GetFen()))) << fen;
            ++accepted;
        } catch (const UserBoard::user_exception&) {
            ASSERT_EQ(game.GetFen(), start_fen);
            ++refused;
        }
    });
    EXPECT_GT(accepted, 0);
    EXPECT_GT(refused, 0);
}

TEST(TextsOfRandomGames, DamagedMovesAreRefusedOrLegal) {
    std::mt19937 random(seed);
    const std::string alphabet("abcdefgh12345678NBRQKOo0-x:=+# \0\xe9", 33);
    ForEachRandomPosition(seed + 5, games, plies, [&](const BOARD& board, const std::vector<Move>& moves) {
        if (moves.empty()) return;
        std::string text = MoveToSan(board, moves[random() % moves.size()]);
        text[random() % text.size()] = alphabet[random() % alphabet.size()];
        MoveParseError error{};
        const Move move = ParseMove(text, board, error);
        if (move == INVALID) {
            ASSERT_LE(static_cast<int>(error), 3);
        } else {
            ASSERT_NE(std::find(moves.begin(), moves.end(), move), moves.end()) << text << " in " << FenOf(board);
        }
    });
}

/// A whole game taken back and played again stands where it stood, at every move.
TEST(RandomGames, AreTakenBackAndPlayedAgain) {
    std::mt19937 random(seed);
    for (int number = 0; number < 20; ++number) {
        UserBoard game;
        std::vector<std::string> fens = {game.GetFen()};
        std::vector<GameResult> results = {game.result()};
        while (!game.IsGameOver() && fens.size() < 60) {
            const std::vector<Move> moves = LegalMovesOf(game.board());
            game.MakeMoveFromText(MoveToSan(game.board(), moves[random() % moves.size()]));
            fens.push_back(game.GetFen());
            results.push_back(game.result());
        }
        for (std::size_t i = fens.size() - 1; i > 0; --i) {
            game.UndoMove();
            ASSERT_EQ(game.GetFen(), fens[i - 1]);
            ASSERT_EQ(game.result(), results[i - 1]);
        }
        for (std::size_t i = 1; i < fens.size(); ++i) {
            game.NextMove();
            ASSERT_EQ(game.GetFen(), fens[i]);
            ASSERT_EQ(game.result(), results[i]);
        }
    }
}

}  // namespace
