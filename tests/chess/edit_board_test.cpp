#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "chess/board_text.h"
#include "chess/user_board.h"
#include "frame/base/logfile.h"
#include "support/board_builder.h"
#include "support/row_name.h"

namespace {

struct Placement {
    Colour colour;
    PieceType piece;
    Square square;
};

EditBoard Placed(const std::vector<Placement>& pieces) {
    EditBoard edit;
    edit.Clear();
    for (const Placement& placement : pieces) {
        edit.SetColour(placement.colour);
        edit.SetSquare(placement.square, placement.piece);
    }
    return edit;
}

std::string Printed(EditBoard& edit, bool with_state) {
    testing::internal::CaptureStdout();
    edit.Print(with_state);
    vlog.Flush();
    return testing::internal::GetCapturedStdout();
}

TEST(EditBoard, StartsWithTheKings) {
    EditBoard edit;
    EXPECT_EQ(edit.side(), white);
    EXPECT_EQ(edit.edit_colour(), white);
    EXPECT_TRUE(edit.IsValid());
    EXPECT_EQ(FenOf(edit.GetBoard()), "4k3/8/8/8/8/8/8/4K3 w - - 0 1");
}

TEST(EditBoard, ClearLeavesNothing) {
    EditBoard edit;
    edit.Clear();
    EXPECT_FALSE(edit.IsValid());
    EXPECT_THROW(static_cast<void>(edit.GetBoard()), EditBoard::invalid_position);
}

TEST(EditBoard, SetDefaultPutsTheKingsBack) {
    EditBoard edit;
    edit.SetSide(black);
    edit.SetSquare(a4, queen);
    edit.SetDefault();
    EXPECT_EQ(FenOf(edit.GetBoard()), "4k3/8/8/8/8/8/8/4K3 b - - 0 1");
}

TEST(EditBoard, PlacesPiecesOfTheEditColour) {
    EditBoard edit;
    edit.SetSquare(a1, rook);
    edit.SetColour(black);
    EXPECT_EQ(edit.edit_colour(), black);
    edit.SetSquare(b8, knight);
    edit.SetSquare(c7, pawn);
    EXPECT_EQ(FenOf(edit.GetBoard()), "1n2k3/2p5/8/8/8/8/8/R3K3 w Q - 0 1");
    edit.SetSquare(c7, no_piece);
    edit.SetSquare(a1, no_piece);
    EXPECT_EQ(FenOf(edit.GetBoard()), "1n2k3/8/8/8/8/8/8/4K3 w - - 0 1");
}

TEST(EditBoard, RefusesMoreMenThanAGameCanBring) {
    EditBoard edit;
    for (Square s = a2; s < a4; ++s) edit.SetSquare(s, knight);
    EXPECT_FALSE(edit.IsValid());
    edit.SetSquare(a2, no_piece);
    EXPECT_TRUE(edit.IsValid());
}

TEST(EditBoard, ReplacesAPiece) {
    EditBoard edit;
    edit.SetSquare(d4, queen);
    edit.SetColour(black);
    edit.SetSquare(d4, knight);
    EXPECT_EQ(FenOf(edit.GetBoard()), "4k3/8/8/8/3n4/8/8/4K3 w - - 0 1");
}

TEST(EditBoard, ChangesTheSide) {
    EditBoard edit;
    edit.SetSquare(e4, pawn);
    EXPECT_EQ(FenOf(edit.GetBoard()), "4k3/8/8/8/4P3/8/8/4K3 w - - 0 1");
    edit.SetSide(black);
    EXPECT_EQ(edit.side(), black);
    EXPECT_EQ(FenOf(edit.GetBoard()), "4k3/8/8/8/4P3/8/8/4K3 b - - 0 1");
}

TEST(EditBoard, TheSideDecidesWhetherTheOpponentMayStandInCheck) {
    EditBoard edit;
    edit.SetSquare(e2, queen);
    EXPECT_FALSE(edit.IsValid());
    edit.SetSide(black);
    EXPECT_TRUE(edit.IsValid());
    edit.SetSide(white);
    EXPECT_FALSE(edit.IsValid());
}

struct CastlingRow {
    std::string_view name;
    std::vector<Placement> pieces;
    std::string_view rights;
};
std::ostream& operator<<(std::ostream& out, const CastlingRow& row) { return out << row.name; }

class EditedCastling : public testing::TestWithParam<CastlingRow> {};

TEST_P(EditedCastling, IsAllThatThePlacementAllows) {
    EditBoard edit = Placed(GetParam().pieces);
    EXPECT_EQ(CastlingText(edit.GetBoard()), GetParam().rights);
}

const auto castling_rows = std::to_array<CastlingRow>({
    {"all",
     {{white, king, e1}, {white, rook, h1}, {white, rook, a1}, {black, king, e8}, {black, rook, h8}, {black, rook, a8}},
     "KQkq"},
    {"white short", {{white, king, e1}, {white, rook, h1}, {black, king, e8}}, "K"},
    {"white long", {{white, king, e1}, {white, rook, a1}, {black, king, e8}}, "Q"},
    {"black short", {{white, king, e1}, {black, king, e8}, {black, rook, h8}}, "k"},
    {"black long", {{white, king, e1}, {black, king, e8}, {black, rook, a8}}, "q"},
    {"none", {{white, king, e1}, {black, king, e8}}, "none"},
    {"king away", {{white, king, d1}, {white, rook, h1}, {white, rook, a1}, {black, king, e8}}, "none"},
    {"rooks away", {{white, king, e1}, {white, rook, g1}, {white, rook, b1}, {black, king, e8}}, "none"},
    {"rook of the enemy", {{white, king, e1}, {black, rook, h1}, {black, king, e8}}, "none"},
    {"queen in the corner", {{white, king, e1}, {white, queen, h1}, {black, king, e8}, {black, knight, a8}}, "none"},
});
INSTANTIATE_TEST_SUITE_P(EditBoard, EditedCastling, testing::ValuesIn(castling_rows), RowName<CastlingRow>);

TEST(EditBoard, KeepsALoadedValidPosition) {
    const BOARD board = BoardFromFen("r3k2r/8/8/3pP3/8/8/8/R3K2R w Kq d6 0 1");
    EditBoard edit;
    edit.SetColour(black);
    edit.LoadFrom(board);
    EXPECT_EQ(edit.edit_colour(), white);
    EXPECT_TRUE(edit.IsValid());
    EXPECT_EQ(FenOf(edit.GetBoard()), FenOf(board));
}

TEST(EditBoard, LoadsTheSide) {
    EditBoard edit;
    edit.LoadFrom(BoardFromFen("4k3/8/8/8/8/8/4P3/4K3 b - - 12 1"));
    EXPECT_EQ(edit.side(), black);
    EXPECT_EQ(FenOf(edit.GetBoard()), "4k3/8/8/8/8/8/4P3/4K3 b - - 12 1");
}

// The rights go with the placement as soon as it is touched; without a change they stay as they were.
TEST(EditBoard, GrantsCastlingAnewAfterAChange) {
    EditBoard edit;
    edit.LoadFrom(BoardFromFen("r3k2r/8/8/8/8/8/8/R3K2R w Kq - 0 1"));
    edit.SetSquare(a1, rook);
    EXPECT_EQ(CastlingText(edit.GetBoard()), "Kq");
    edit.SetSide(black);
    EXPECT_EQ(CastlingText(edit.GetBoard()), "Kq");
    edit.SetSquare(d4, pawn);
    EXPECT_EQ(CastlingText(edit.GetBoard()), "KQkq");
}

TEST(EditBoard, ForgetsTheEnPassantSquareAfterAChange) {
    EditBoard edit;
    edit.LoadFrom(BoardFromFen("4k3/8/8/3pP3/8/8/8/4K3 w - d6 3 1"));
    edit.SetSquare(a2, pawn);
    EXPECT_EQ(FenOf(edit.GetBoard()), "4k3/8/8/3pP3/8/8/P7/4K3 w - - 0 1");
}

TEST(EditBoard, KeepsTheEnPassantSquareOfTheSameSide) {
    EditBoard edit;
    edit.LoadFrom(BoardFromFen("4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1"));
    edit.SetSide(white);
    edit.SetSquare(e5, pawn);
    EXPECT_EQ(FenOf(edit.GetBoard()), "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1");
}

TEST(EditBoard, LoadsAnInvalidBoard) {
    EditBoard edit;
    edit.LoadFrom(BOARD());
    EXPECT_FALSE(edit.IsValid());
    edit.SetSquare(e1, king);
    EXPECT_FALSE(edit.IsValid());
    edit.SetColour(black);
    edit.SetSquare(e8, king);
    EXPECT_TRUE(edit.IsValid());
}

struct InvalidRow {
    std::string_view name;
    std::vector<Placement> pieces;
};
std::ostream& operator<<(std::ostream& out, const InvalidRow& row) { return out << row.name; }

class EditedNonsense : public testing::TestWithParam<InvalidRow> {};

TEST_P(EditedNonsense, IsNoPositionButIsShown) {
    EditBoard edit = Placed(GetParam().pieces);
    EXPECT_FALSE(edit.IsValid());
    EXPECT_THROW(static_cast<void>(edit.GetBoard()), EditBoard::invalid_position);
    const std::string shown = Printed(edit, true);
    for (const Placement& placement : GetParam().pieces) {
        const std::string cell = std::string(placement.colour == white ? " *" : " ") +
                                 piece_letters[static_cast<std::size_t>(placement.piece)] +
                                 (placement.colour == white ? "|" : " |");
        // A square's line is the second one of the board's or a later one, of 38 characters each.
        const int line = 1 + 7 - RankOf(placement.square);
        const auto column = static_cast<std::size_t>(38 * line + 5 + 4 * FileOf(placement.square));
        EXPECT_EQ(shown.substr(column, 4), cell) << shown;
    }
    EXPECT_FALSE(edit.IsValid());
}

const auto nonsense = std::to_array<InvalidRow>({
    {"nothing", {}},
    {"no kings", {{white, queen, d1}, {black, pawn, a7}}},
    {"one king", {{white, king, e1}, {white, rook, a1}}},
    {"two kings of a colour", {{white, king, e1}, {white, king, c1}, {black, king, e8}}},
    {"pawns on the last ranks", {{white, king, e1}, {black, king, e8}, {white, pawn, a8}, {black, pawn, h1}}},
    {"kings side by side", {{white, king, e4}, {black, king, e5}}},
    {"opponent in check", {{white, king, e1}, {black, king, e8}, {white, rook, e5}}},
});
INSTANTIATE_TEST_SUITE_P(EditBoard, EditedNonsense, testing::ValuesIn(nonsense), RowName<InvalidRow>);

TEST(EditBoard, PrintsAValidPosition) {
    EditBoard edit;
    edit.SetSquare(h1, rook);
    edit.SetColour(black);
    edit.SetSquare(g7, knight);
    EXPECT_EQ(Printed(edit, true),
              "    +---+---+---+---+---+---+---+---+\n"
              "  8 |   |   |   |   | K |   |   |   |\n"
              "  7 |   |   |   |   |   |   | N |   |\n"
              "  6 |   |   |   |   |   |   |   |   |\n"
              "  5 |   |   |   |   |   |   |   |   |\n"
              "  4 |   |   |   |   |   |   |   |   |\n"
              "  3 |   |   |   |   |   |   |   |   |\n"
              "  2 |   |   |   |   |   |   |   |   |\n"
              "  1 |   |   |   |   | *K|   |   | *R|\n"
              "    +---+---+---+---+---+---+---+---+\n"
              "      a   b   c   d   e   f   g   h\n"
              "castle possibilities: K\n"
              "side on move: white; en-passant square: none\n");
}

TEST(EditBoard, PrintsWithoutTheState) {
    EditBoard edit;
    edit.Clear();
    EXPECT_EQ(Printed(edit, false),
              "    +---+---+---+---+---+---+---+---+\n"
              "  8 |   |   |   |   |   |   |   |   |\n"
              "  7 |   |   |   |   |   |   |   |   |\n"
              "  6 |   |   |   |   |   |   |   |   |\n"
              "  5 |   |   |   |   |   |   |   |   |\n"
              "  4 |   |   |   |   |   |   |   |   |\n"
              "  3 |   |   |   |   |   |   |   |   |\n"
              "  2 |   |   |   |   |   |   |   |   |\n"
              "  1 |   |   |   |   |   |   |   |   |\n"
              "    +---+---+---+---+---+---+---+---+\n"
              "      a   b   c   d   e   f   g   h\n");
}

}  // namespace
