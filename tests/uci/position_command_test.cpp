#include "uci/position_command.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "chess/fen.h"
#include "frame/base/text_utilities.h"
#include "support/row_name.h"

namespace {

struct Answer {
    bool is_position = false;
    std::string fen;
    std::string refused;
};

Answer Read(std::string_view text) {
    Answer answer;
    if (const auto command = VorkaUci::ReadPosition(VorkaUtils::tokenize(text))) {
        EXPECT_EQ(command->board.ply, 0U);
        answer = {.is_position = true, .fen = WriteFen(command->board, 1), .refused = command->refused};
    }
    return answer;
}

constexpr std::string_view start_fen = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";

struct Row {
    std::string_view name;
    std::string_view text;
    std::string_view fen;
};

class Position : public testing::TestWithParam<Row> {};

TEST_P(Position, IsSet) {
    const Answer answer = Read(GetParam().text);
    EXPECT_TRUE(answer.is_position);
    EXPECT_EQ(answer.fen, GetParam().fen);
    EXPECT_EQ(answer.refused, "");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Uci, Position, testing::Values(
    Row{"start", "startpos", start_fen},
    Row{"moves", "startpos moves e2e4 e7e5 g1f3", "rnbqkbnr/pppp1ppp/8/4p3/4P3/5N2/PPPP1PPP/RNBQKB1R b KQkq - 1 1"},
    Row{"no moves", "startpos moves", start_fen},
    Row{"unknown words first", "please startpos moves e2e4", "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq e3 0 1"},
    Row{"castling is the king's move", "fen r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1 moves e1c1 e8g8", "r4rk1/8/8/8/8/8/8/2KR3R w - - 2 1"},
    Row{"promotion", "fen 8/P6k/8/8/8/8/7K/8 w - - 0 1 moves a7a8n", "N7/7k/8/8/8/8/7K/8 b - - 0 1"},
    Row{"capital promotion letter", "fen 8/P6k/8/8/8/8/7K/8 w - - 0 1 moves a7a8R", "R7/7k/8/8/8/8/7K/8 b - - 0 1"},
    Row{"en passant", "startpos moves e2e4 a7a6 e4e5 d7d5 e5d6", "rnbqkbnr/1pp1pppp/p2P4/8/8/8/PPPP1PPP/RNBQKBNR b KQkq - 0 1"},
    Row{"two fields", "fen 8/8/8/4k3/8/8/4P3/4K3 b", "8/8/8/4k3/8/8/4P3/4K3 b - - 0 1"},
    Row{"four fields", "fen 8/8/8/4k3/8/8/4P3/4K3 b - -", "8/8/8/4k3/8/8/4P3/4K3 b - - 0 1"},
    Row{"four fields and moves", "fen 8/8/8/4k3/8/8/4P3/4K3 b - - moves e5e4", "8/8/8/8/4k3/8/4P3/4K3 w - - 1 1"},
    Row{"clocks left open", "fen 8/8/8/4k3/8/8/4P3/4K3 b - - - -", "8/8/8/4k3/8/8/4P3/4K3 b - - 0 1"},
    Row{"clock above a hundred", "fen 8/8/8/4k3/8/8/4P3/4K3 b - - 130 1", "8/8/8/4k3/8/8/4P3/4K3 b - - 100 1"},
    Row{"castling letters in another order", "fen r3k2r/8/8/8/8/8/8/R3K2R w kqKQ - 0 1", "r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1"},
    Row{"rights without a rook", "fen r3k3/8/8/8/8/8/8/4K2R w KQkq - 0 1", "r3k3/8/8/8/8/8/8/4K2R w Kq - 0 1"},
    Row{"rights without a king", "fen r2k3r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", "r2k3r/8/8/8/8/8/8/R3K2R w KQ - 0 1"},
    Row{"no right at all", "fen 3k4/8/8/8/8/8/8/3K4 w KQkq - 0 1", "3k4/8/8/8/8/8/8/3K4 w - - 0 1"},
    Row{"en passant square without a pawn", "fen 4k3/8/8/8/8/8/8/4K3 b - e3 0 1", "4k3/8/8/8/8/8/8/4K3 b - - 0 1"},
    Row{"en passant square on the wrong rank", "fen 4k3/8/8/8/4P3/8/8/4K3 w - e3 0 1", "4k3/8/8/8/4P3/8/8/4K3 w - - 0 1"},
    Row{"en passant square in a corner", "fen 4k3/8/8/8/4P3/8/8/4K3 b - a1 0 1", "4k3/8/8/8/4P3/8/8/4K3 b - - 0 1"},
    Row{"en passant square that was jumped over", "fen 4k3/8/8/8/4P3/8/8/4K3 b - e3 0 1", "4k3/8/8/8/4P3/8/8/4K3 b - e3 0 1"},
    Row{"mate", "startpos moves f2f3 e7e5 g2g4 d8h4", "rnb1kbnr/pppp1ppp/8/4p3/6Pq/5P2/PPPPP2P/RNBQKBNR w KQkq - 1 1"}),
    RowName<Row>);
// clang-format on

TEST(PositionWords, PlayOnAfterTheFiftyMoves) {
    std::string text = "fen 8/8/8/4k3/8/8/4P3/R3K3 w - - 98 1 moves";
    for (int i = 0; i < 100; ++i) text += i % 2 == 0 ? " a1a2 e5e6 a2a1" : " a1b1 e6e5";
    EXPECT_TRUE(Read(text).is_position);
}

TEST(PositionWords, ThatAreNoneGiveNone) {
    for (const char* text : {"", "moves e2e4", "fen", "fen w", "fen 8/8/8/8/8/8/8/8 w - - 0 1", "fen x w - - 0 1",
                             "fen rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQ1BNR w - - 0 1",
                             "fen 4k3/8/8/8/8/8/8/4K2R w Kx - 0 1", "fen 4k3/8/8/8/8/8/8/4K2R w KK - 0 1",
                             "fen 4k3/8/8/8/8/8/8/4K2R w - e9 0 1", "fen 4k3/4R3/8/8/8/8/8/4K3 w - - 0 1"}) {
        EXPECT_FALSE(Read(text).is_position) << text;
    }
}

TEST(PositionWords, StopAtTheFirstMoveThatCannotBePlayed) {
    for (const char* wrong : {"e2e5", "0000", "e7e8q", "Nf3", "e1g1", "zzzz", "e2e4q", "e2"}) {
        const Answer answer = Read("startpos moves d2d4 d7d5 " + std::string(wrong) + " e2e4");
        EXPECT_TRUE(answer.is_position);
        EXPECT_EQ(answer.refused, wrong);
        EXPECT_EQ(answer.fen, "rnbqkbnr/ppp1pppp/8/3p4/3P4/8/PPP1PPPP/RNBQKBNR w KQkq d6 0 1");
    }
}

}  // namespace
