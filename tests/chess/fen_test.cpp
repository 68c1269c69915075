#include "chess/fen.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>
#include <string_view>

#include "chess/user_board.h"
#include "support/board_builder.h"
#include "support/row_name.h"

namespace {

using namespace std::string_view_literals;

struct GoodRow {
    std::string_view name;
    std::string_view fen;
    std::uint32_t ply_offset;
    std::string_view written;  ///< the first five fields; empty if they are as in `fen`
};
std::ostream& operator<<(std::ostream& out, const GoodRow& row) { return out << row.fen; }

class GoodFens : public testing::TestWithParam<GoodRow> {};

TEST_P(GoodFens, AreReadAndWritten) {
    const GoodRow& row = GetParam();
    BOARD board;
    std::uint32_t ply_offset = 0;
    ReadFen(board, std::string(row.fen), ply_offset);
    EXPECT_EQ(ply_offset, row.ply_offset);
    EXPECT_EQ(board.ply, 0U);
    EXPECT_TRUE(board.IsValid());
    const std::string_view fields = row.written.empty() ? row.fen.substr(0, row.fen.rfind(' ')) : row.written;
    EXPECT_EQ(WriteFen(board, 17), std::string(fields) + " 17");
}

constexpr auto good_fens = std::to_array<GoodRow>({
    {"start", "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", 2, ""},
    {"after e4", "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq e3 0 1", 3, ""},
    {"Black has jumped", "rnbqkbnr/ppp1pppp/8/3p4/8/8/PPPPPPPP/RNBQKBNR w KQkq d6 0 2", 4, ""},
    {"all castling letters", "r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 3 40", 80, ""},
    {"castling Kq", "r3k2r/8/8/8/8/8/8/R3K2R b Kq - 3 40", 81, ""},
    {"castling Qk", "r3k2r/8/8/8/8/8/8/R3K2R b Qk - 3 40", 81, ""},
    {"castling Kk", "r3k2r/8/8/8/8/8/8/R3K2R w Kk - 3 40", 80, ""},
    {"castling q", "r3k2r/8/8/8/8/8/8/R3K2R w q - 3 40", 80, ""},
    {"no castling", "r3k2r/8/8/8/8/8/8/R3K2R w - - 3 40", 80, ""},
    {"every letter", "k1rnbq2/6p1/P7/8/8/p7/6P1/K1RNBQ2 w - - 0 1", 2, ""},
    {"kings", "4k3/8/8/8/8/8/8/4K3 b - - 99 1", 3, ""},
    {"clock at its highest", "4k3/8/8/8/8/8/4P3/4K3 w - - 100 90", 180, ""},
    {"clock with leading zeros", "4k3/8/8/8/8/8/4P3/4K3 w - - 007 1", 2, "4k3/8/8/8/8/8/4P3/4K3 w - - 7"},
    {"move number zero", "4k3/8/8/8/8/8/4P3/4K3 b - - 0 0", 1, ""},
    {"move number with leading zeros", "4k3/8/8/8/8/8/4P3/4K3 w - - 0 0012", 24, ""},
    {"largest move number", "4k3/8/8/8/8/8/4P3/4K3 b - - 0 2147483647", 4294967295U, ""},
    {"runs of empty squares in parts", "4k3/44/11111111/8/8/71/1P6/K1111111 w - - 0 1", 2,
     "4k3/8/8/8/8/8/1P6/K7 w - - 0"},
    {"much white space", " \t4k3/8/8/8/8/8/4P3/4K3\r\nw  -\t-  5 \n 1 \r\n", 2, "4k3/8/8/8/8/8/4P3/4K3 w - - 5"},
    {"capital file of the en passant square", "4k3/8/8/3pP3/8/8/8/4K3 w - D6 0 1", 2,
     "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0"},
});
INSTANTIATE_TEST_SUITE_P(Fen, GoodFens, testing::ValuesIn(good_fens), RowName<GoodRow>);

struct TextRow {
    std::string_view name;
    std::string_view text;
};
std::ostream& operator<<(std::ostream& out, const TextRow& row) { return out << row.text; }

class TextsThatAreNoFen : public testing::TestWithParam<TextRow> {};

TEST_P(TextsThatAreNoFen, ThrowIoError) {
    BOARD board;
    std::uint32_t ply_offset = 0;
    EXPECT_THROW(ReadFen(board, std::string(GetParam().text), ply_offset), UserBoard::io_error);
}

constexpr auto texts_that_are_no_fen = std::to_array<TextRow>({
    {"empty", ""},
    {"blanks", "  \t \r\n"},
    {"one word", "startpos"},
    {"one field", "4k3/8/8/8/8/8/8/4K3"},
    {"four fields", "4k3/8/8/8/8/8/8/4K3 w - -"},
    {"five fields", "4k3/8/8/8/8/8/8/4K3 w - - 0"},
    {"seven fields", "4k3/8/8/8/8/8/8/4K3 w - - 0 1 x"},
    {"zero byte as separator", "4k3/8/8/8/8/8/8/4K3\0w - - 0 1"sv},
    {"comma as separator", "4k3/8/8/8/8/8/8/4K3,w,-,-,0,1"},

    {"rank too short", "4k3/8/8/8/8/8/8/4K2 w - - 0 1"},
    {"first rank too short", "4k2/8/8/8/8/8/8/4K3 w - - 0 1"},
    {"middle rank too short", "4k3/8/8/7/8/8/8/4K3 w - - 0 1"},
    {"empty rank", "4k3/8/8//8/8/8/4K3 w - - 0 1"},
    {"rank too long by digits", "4k3/8/8/81/8/8/8/4K3 w - - 0 1"},
    {"rank too long by a piece", "4k3p/8/8/8/8/8/8/4K3 w - - 0 1"},
    {"last rank too long by a piece", "4k3/8/8/8/8/8/8/4K3P w - - 0 1"},
    {"last rank too long by a digit", "4k3/8/8/8/8/8/8/4K31 w - - 0 1"},
    {"piece after too many digits", "88p/8/8/8/8/8/8/8 w - - 0 1"},
    {"piece after a full rank, again and again", "8pppppppp/8/8/8/8/8/8/8 w - - 0 1"},
    {"digits that jump a rank", "4k3/8/8/88/8/8/4K3 w - - 0 1"},
    {"seven ranks", "4k3/8/8/8/8/8/4K3 w - - 0 1"},
    {"nine ranks", "4k3/8/8/8/8/8/8/4K3/8 w - - 0 1"},
    {"nine ranks with pieces", "4k3/8/8/8/8/8/8/4K3/RNBQ1BNR w - - 0 1"},
    {"slash after the last rank", "4k3/8/8/8/8/8/8/4K3/ w - - 0 1"},
    {"slash before the first rank", "/4k3/8/8/8/8/8/8/4K3 w - - 0 1"},
    {"no slashes", "4k3888888884K3 w - - 0 1"},
    {"digit zero", "4k30/8/8/8/8/8/8/4K3 w - - 0 1"},
    {"digit nine", "4k3/9/8/8/8/8/8/4K3 w - - 0 1"},
    {"unknown letter", "4k3/8/8/8/3x4/8/8/4K3 w - - 0 1"},
    {"question mark", "4k3/8/8/8/3?4/8/8/4K3 w - - 0 1"},
    {"blank for an empty square", "4k3/8/8/8/3 4/8/8/4K3 w - - 0 1"},
    {"high byte",
     "4k3/8/8/8/3\xe9"
     "4/8/8/4K3 w - - 0 1"sv},
    {"zero byte", "4k3/8/8/8/3\0004/8/8/4K3 w - - 0 1"sv},
    {"minus", "4k3/8/8/8/-8/8/8/4K3 w - - 0 1"},

    {"capital side", "4k3/8/8/8/8/8/8/4K3 W - - 0 1"},
    {"side as a word", "4k3/8/8/8/8/8/8/4K3 white - - 0 1"},
    {"unknown side", "4k3/8/8/8/8/8/8/4K3 x - - 0 1"},
    {"no side", "4k3/8/8/8/8/8/8/4K3 - - - 0 1"},

    {"castling qK", "r3k2r/8/8/8/8/8/8/R3K2R w qK - 0 1"},
    {"castling Q after k", "r3k2r/8/8/8/8/8/8/R3K2R w kQ - 0 1"},
    {"castling QK", "r3k2r/8/8/8/8/8/8/R3K2R w QK - 0 1"},
    {"castling twice the same", "r3k2r/8/8/8/8/8/8/R3K2R w KK - 0 1"},
    {"castling five letters", "r3k2r/8/8/8/8/8/8/R3K2R w KQkqq - 0 1"},
    {"castling with a minus after", "r3k2r/8/8/8/8/8/8/R3K2R w KQ- - 0 1"},
    {"castling with a minus before", "r3k2r/8/8/8/8/8/8/R3K2R w -kq - 0 1"},
    {"castling two minuses", "r3k2r/8/8/8/8/8/8/R3K2R w -- - 0 1"},
    {"castling by file", "r3k2r/8/8/8/8/8/8/R3K2R w HAha - 0 1"},
    {"castling with a zero byte", "r3k2r/8/8/8/8/8/8/R3K2R w K\0 - 0 1"sv},

    {"en passant file alone", "4k3/8/8/3pP3/8/8/8/4K3 w - d 0 1"},
    {"en passant three characters", "4k3/8/8/3pP3/8/8/8/4K3 w - d66 0 1"},
    {"en passant off the board", "4k3/8/8/3pP3/8/8/8/4K3 w - d9 0 1"},
    {"en passant rank zero", "4k3/8/8/3pP3/8/8/8/4K3 w - d0 0 1"},
    {"en passant file i", "4k3/8/8/3pP3/8/8/8/4K3 w - i6 0 1"},
    {"en passant turned round", "4k3/8/8/3pP3/8/8/8/4K3 w - 6d 0 1"},
    {"en passant two minuses", "4k3/8/8/3pP3/8/8/8/4K3 w - -- 0 1"},
    {"en passant number", "4k3/8/8/3pP3/8/8/8/4K3 w - 0 0 1"},

    {"clock 101", "4k3/8/8/8/8/8/4P3/4K3 w - - 101 1"},
    {"clock huge", "4k3/8/8/8/8/8/4P3/4K3 w - - 4294967296 1"},
    {"clock beyond 64 bits", "4k3/8/8/8/8/8/4P3/4K3 w - - 18446744073709551617 1"},
    {"clock negative", "4k3/8/8/8/8/8/4P3/4K3 w - - -1 1"},
    {"clock with plus", "4k3/8/8/8/8/8/4P3/4K3 w - - +1 1"},
    {"clock minus", "4k3/8/8/8/8/8/4P3/4K3 w - - - 1"},
    {"clock a letter", "4k3/8/8/8/8/8/4P3/4K3 w - - x 1"},
    {"clock with a letter", "4k3/8/8/8/8/8/4P3/4K3 w - - 1x 1"},
    {"clock with a point", "4k3/8/8/8/8/8/4P3/4K3 w - - 1.0 1"},
    {"clock hexadecimal", "4k3/8/8/8/8/8/4P3/4K3 w - - 0x1 1"},

    {"move number negative", "4k3/8/8/8/8/8/4P3/4K3 w - - 0 -1"},
    {"move number with plus", "4k3/8/8/8/8/8/4P3/4K3 w - - 0 +1"},
    {"move number minus", "4k3/8/8/8/8/8/4P3/4K3 w - - 0 -"},
    {"move number with a point", "4k3/8/8/8/8/8/4P3/4K3 w - - 0 1."},
    {"move number with no ply offset", "4k3/8/8/8/8/8/4P3/4K3 w - - 0 2147483648"},
    {"move number beyond 64 bits", "4k3/8/8/8/8/8/4P3/4K3 w - - 0 99999999999999999999"},

    {"wrong text of an impossible position", "8/8/8/8/8/8/8/8 w - - 0"},
    {"wrong number after an impossible position", "8/8/8/8/8/8/8/8 w - a1 0 x"},
});
INSTANTIATE_TEST_SUITE_P(Fen, TextsThatAreNoFen, testing::ValuesIn(texts_that_are_no_fen), RowName<TextRow>);

TEST(ReadFen, RefusesLongTexts) {
    constexpr std::size_t mebibyte = 1U << 20;
    BOARD board;
    std::uint32_t ply_offset = 0;
    for (const char c : {'a', '8', '/', ' ', '\0', 'K', '\xff'}) {
        EXPECT_THROW(ReadFen(board, std::string(mebibyte, c), ply_offset), UserBoard::io_error) << static_cast<int>(c);
        EXPECT_THROW(ReadFen(board, start_fen + std::string(mebibyte, c) + "x", ply_offset), UserBoard::io_error)
            << static_cast<int>(c);
    }
}

TEST(ReadFen, TakesTheMostMovesAndMenOfAGame) {
    BOARD board;
    std::uint32_t ply_offset = 0;
    EXPECT_NO_THROW(ReadFen(board, "R6R/3Q4/1Q4Q1/4Q3/2Q4Q/Q4Q2/pp1Q4/kBNN1KB1 w - - 0 1", ply_offset));
    EXPECT_NO_THROW(ReadFen(board, "4k3/8/8/8/8/N7/NNNNNNNN/NNN1KNNN w - - 0 1", ply_offset));
}

class ImpossiblePositions : public testing::TestWithParam<TextRow> {};

TEST_P(ImpossiblePositions, ThrowInvalidPosition) {
    BOARD board;
    std::uint32_t ply_offset = 0;
    EXPECT_THROW(ReadFen(board, std::string(GetParam().text), ply_offset), UserBoard::invalid_position);
}

constexpr auto impossible_positions = std::to_array<TextRow>({
    {"more moves than a game can bring", "kqQQQQQQ/ppQ4Q/Q6Q/Q6Q/Q6Q/Q6Q/Q6Q/KQQQQQQQ w - - 0 1"},
    {"more moves for the side that waits", "kqQQQQQQ/ppQ4Q/Q6Q/Q6Q/Q6Q/Q6Q/Q6Q/KQQQQQQQ b - - 0 1"},
    {"seventeen officers", "4k3/8/8/8/8/NN6/NNNNNNNN/NNN1KNNN w - - 0 1"},
    {"empty board", "8/8/8/8/8/8/8/8 w - - 0 1"},
    {"no white king", "4k3/8/8/8/8/8/8/8 w - - 0 1"},
    {"no black king", "8/8/8/8/8/8/8/4K3 b - - 0 1"},
    {"two white kings", "4k3/8/8/8/8/8/8/K3K3 w - - 0 1"},
    {"pawn on the first rank", "4k3/8/8/8/8/8/8/P3K3 w - - 0 1"},
    {"pawn on the eighth rank", "4k2p/8/8/8/8/8/8/4K3 w - - 0 1"},
    {"fifteen white pawns", "4k3/8/8/8/8/PPPPPPP1/PPPPPPPP/4K3 w - - 0 1"},
    {"side not to move in check", "4k3/8/8/8/8/8/8/K3R3 w - - 0 1"},
    {"kings side by side", "8/8/8/3kK3/8/8/8/8 w - - 0 1"},
    {"right without king at home", "4k3/8/8/8/8/8/8/R2K3R w K - 0 1"},
    {"right without rook at home", "4k3/8/8/8/8/8/8/4K3 w Q - 0 1"},
    {"black right without rook", "4k3/8/8/8/8/8/8/4K3 w k - 0 1"},
    {"black right with a white rook", "R3k3/8/8/8/8/8/8/4K3 b q - 0 1"},
    {"en passant on the wrong rank", "4k3/8/8/3pP3/8/8/8/4K3 w - d3 0 1"},
    {"en passant on the fourth rank", "4k3/8/8/3pP3/8/8/8/4K3 w - d4 0 1"},
    {"en passant square a1", "4k3/8/8/3pP3/8/8/8/4K3 w - a1 0 1"},
    {"en passant square A1", "4k3/8/8/3pP3/8/8/8/4K3 b - A1 0 1"},
    {"en passant without pawn", "4k3/8/8/4P3/8/8/8/4K3 w - d6 0 1"},
    {"en passant for the wrong side", "4k3/8/8/3pP3/8/8/8/4K3 b - d6 0 1"},
    {"en passant square occupied", "4k3/8/3n4/3pP3/8/8/8/4K3 w - d6 0 1"},
    {"square behind the en passant square occupied", "4k3/3n4/8/3pP3/8/8/8/4K3 w - d6 0 1"},
});
INSTANTIATE_TEST_SUITE_P(Fen, ImpossiblePositions, testing::ValuesIn(impossible_positions), RowName<TextRow>);

TEST(ReadFen, AcceptsFourteenPawns) {
    EXPECT_NO_THROW(static_cast<void>(BoardFromFen("4k3/8/8/8/8/PPPPPP2/PPPPPPPP/4K3 w - - 0 1")));
}

TEST(ReadFen, SetsEveryField) {
    const BOARD board = BoardFromFen("r3k2r/8/8/3pP3/8/8/8/R3K2R w Kq d6 12 1");
    EXPECT_EQ(board.side_to_move, static_cast<std::uint32_t>(white));
    EXPECT_EQ(board.squares[a1], rook);
    EXPECT_EQ(board.squares[e1], king);
    EXPECT_EQ(board.squares[e5], pawn);
    EXPECT_EQ(board.squares[d5], -pawn);
    EXPECT_EQ(board.squares[e8], -king);
    EXPECT_EQ(board.squares[h8], -rook);
    EXPECT_EQ(board.frame().castling, white_short | black_long);
    EXPECT_EQ(board.frame().en_passant_square, static_cast<std::uint16_t>(d6));
    EXPECT_EQ(board.frame().fifty_counter, 12);
}

}  // namespace
