#include "chess/move_generator.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <string>
#include <string_view>
#include <vector>

#include "support/board_builder.h"
#include "support/row_name.h"

// Lists by name and in order. That every list is right in every position is the business of
// move_generator_property_test.
namespace {

/// From, to, the letter of a promotion (a queen's too), "+" for direct and "~" for discovered check.
std::string TextOf(Move move) {
    std::string text = SquareToString(FromSquare(move)) + SquareToString(ToSquare(move));
    if (PromotionPiece(move) != no_piece) text += piece_letters[static_cast<std::size_t>(PromotionPiece(move))];
    if (GivesDirectCheck(move)) text += '+';
    if (GivesDiscoveredCheck(move)) text += '~';
    return text;
}

/// The moves of a list, or only those of the piece that stands on `from`.
std::string ListOf(const BOARD& board, unsigned mode, std::string_view from = "") {
    Move buffer[MAX_MOVES];
    const Move* const end = GenerateMoves(buffer, board, mode);
    std::string text;
    for (const Move* move = buffer; move != end; ++move) {
        const std::string word = TextOf(*move);
        if (!word.starts_with(from)) continue;
        if (!text.empty()) text += ' ';
        text += word;
    }
    return text;
}

struct Row {
    std::string_view name, fen;
    unsigned mode;
    std::string_view moves;
    std::string_view from = "";
};
std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.fen << ", mode " << row.mode; }

class Lists : public testing::TestWithParam<Row> {};

TEST_P(Lists, HoldTheseMovesInThisOrder) {
    const Row& row = GetParam();
    EXPECT_EQ(ListOf(BoardFromFen(std::string(row.fen) + " 0 1"), row.mode, row.from), row.moves);
}

constexpr std::string_view rook_behind_knight = "4k3/8/8/8/4N3/8/8/K3R3 w - -";
constexpr std::string_view promotion_on_e8 = "8/4P3/8/8/8/4k3/8/7K w - -";
constexpr std::string_view promotion_by_capture = "3r4/4P3/8/8/8/7k/8/7K w - -";
constexpr std::string_view double_check_by_pawn = "8/8/3k4/4n3/3P4/8/8/3R3K w - -";
constexpr std::string_view castling_with_check = "5k2/8/8/8/8/8/8/4K2R w K -";
constexpr std::string_view en_passant_with_check = "8/2k5/8/3pP3/8/8/8/7K w - d6";

constexpr auto rows = std::to_array<Row>({
    {"start", "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -", mode_legal,
     "g1h3 g1f3 b1c3 b1a3 h2h3 g2g3 f2f3 e2e3 d2d3 c2c3 b2b3 a2a3 h2h4 g2g4 f2f4 e2e4 d2d4 c2c4 b2b4 a2a4"},
    {"start for Black", "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR b KQkq -", mode_legal,
     "g8h6 g8f6 b8c6 b8a6 h7h6 g7g6 f7f6 e7e6 d7d6 c7c6 b7b6 a7a6 h7h5 g7g5 f7f5 e7e5 d7d5 c7c5 b7b5 a7a5"},
    {"start has no checks", "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -", 14, ""},
    {"no kind asked for", "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -", 0, ""},
    {"kinds of pieces in order", "k7/8/8/8/1Q6/8/7P/N1B1K2R w K -", mode_legal,
     "e1g1 a1b3 a1c2 c1h6 c1g5 c1f4 c1e3 c1a3 c1d2 c1b2 h1g1 h1f1 b4f8+ b4b8+ b4e7 b4b7+ b4d6 b4b6 b4c5 b4b5 b4a5+ "
     "b4h4 b4g4 b4f4 b4e4+ b4d4 b4c4 b4a4+ b4c3 b4b3 b4a3+ b4d2 b4b2 b4b1 h2h3 h2h4 e1f2 e1e2 e1d2 e1f1 e1d1"},
    {"pawn captures to the a file first", "4k3/8/8/1p1p1p2/2P1P3/8/8/K7 w - -", mode_captures, "e4d5 c4b5 e4f5 c4d5"},
    {"black captures to the a file first", "k7/8/8/2p1p3/1P1P1P2/8/8/4K3 b - -", mode_captures, "e5d4 c5b4 e5f4 c5d4"},
    {"single steps before double steps", "4k3/8/8/8/8/8/P6P/4K3 w - -", mode_legal,
     "h2h3 a2a3 h2h4 a2a4 e1f2 e1e2 e1d2 e1f1 e1d1"},
    {"both castlings, short first", "r3k2r/p6p/8/8/8/8/P6P/R3K2R w KQkq -", mode_castling, "e1g1 e1c1"},
    {"both black castlings", "r3k2r/p6p/8/8/8/8/P6P/R3K2R b KQkq -", mode_castling, "e8g8 e8c8"},
    {"castling over an attacked square", "4kr2/8/8/8/8/8/8/R3K2R w KQ -", mode_castling, "e1c1"},
    {"castling onto an attacked square", "4k1r1/8/8/8/8/8/8/R3K2R w KQ -", mode_castling, "e1c1"},
    {"castling beside an attacked square", "1r2k3/8/8/8/8/8/8/R3K2R w KQ -", mode_castling, "e1g1 e1c1"},
    {"castling over a square that a pawn attacks", "4k3/8/8/8/8/8/4p3/R3K2R w KQ -", mode_castling, ""},
    {"castling past a piece on b1", "4k3/8/8/8/8/8/8/RN2K3 w Q -", mode_castling, ""},
    {"castling in check", "4k3/8/8/8/8/8/4r3/R3K2R w KQ -", mode_legal, "e1e2 e1f1 e1d1"},
    {"castling is not part of all moves", "4k3/8/8/8/8/8/7P/4K2R w K -", mode_all,
     "h1g1 h1f1 h2h3 h2h4 e1f2 e1e2 e1d2 e1f1 e1d1"},
    {"castling checks along the file", castling_with_check, mode_castling, "e1g1+"},
    {"checking castling among direct checks", castling_with_check, mode_direct_checks, "e1g1+ h1h8+ h1f1+"},
    {"quiet castling is no check", "k7/8/8/8/8/8/8/4K2R w K -", mode_direct_checks, "h1h8+"},
    {"castling checks along the rank", "8/8/8/8/8/8/8/1k2K2R w K -", mode_castling, "e1g1+"},
    {"knight discovers", rook_behind_knight, mode_legal, "e4f6+~ e4d6+~ e4g5~ e4c5~ e4g3~ e4c3~ e4f2~ e4d2~", "e4"},
    {"knight, direct checks", rook_behind_knight, mode_direct_checks, "e4f6+~ e4d6+~", "e4"},
    {"knight, discovered checks", rook_behind_knight, mode_discovered_checks,
     "e4f6+~ e4d6+~ e4g5~ e4c5~ e4g3~ e4c3~ e4f2~ e4d2~", "e4"},
    {"knight, double checks", rook_behind_knight, mode_double_checks, "e4f6+~ e4d6+~", "e4"},
    {"bishop discovers off its file", "4k3/8/8/8/4B3/8/8/K3R3 w - -", mode_double_checks, "e4g6+~ e4c6+~", "e4"},
    {"rook leaves the diagonal", "7k/8/8/8/3R4/8/8/B6K w - -", mode_discovered_checks,
     "d4d8+~ d4d7~ d4d6~ d4d5~ d4h4+~ d4g4~ d4f4~ d4e4~ d4c4~ d4b4~ d4a4~ d4d3~ d4d2~ d4d1~", "d4"},
    {"king discovers", "4k3/8/8/8/4K3/8/8/4R3 w - -", mode_legal, "e4f5~ e4e5 e4d5~ e4f4~ e4d4~ e4f3~ e4e3 e4d3~",
     "e4"},
    {"king discovers, discovered checks", "4k3/8/8/8/4K3/8/8/4R3 w - -", mode_discovered_checks,
     "e4f5~ e4d5~ e4f4~ e4d4~ e4f3~ e4d3~"},
    {"king discovers, other checks", "4k3/8/8/8/4K3/8/8/4R3 w - -", mode_direct_checks | mode_double_checks, ""},
    {"pawn discovers by a step", "8/8/8/k2P3R/8/8/8/7K w - -", mode_discovered_checks, "d5d6~"},
    {"pawn discovers by a double step", "8/8/8/8/8/8/k2P3R/7K w - -", mode_discovered_checks, "d2d3~ d2d4~"},
    {"pawn on the file discovers nothing", "4k3/8/8/8/8/8/4P3/K3R3 w - -", mode_discovered_checks, ""},
    {"pawn step checks", "8/8/3k4/8/4P3/8/8/7K w - -", mode_direct_checks, "e4e5+"},
    {"captures with check come with checks", "4k3/8/3p4/8/4N3/8/8/K7 w - -", mode_direct_checks, "e4f6+ e4d6+"},

    {"promotions", promotion_on_e8, mode_legal, "e7e8Q+ e7e8R+ e7e8B e7e8N", "e7"},
    {"queen promotion", promotion_on_e8, mode_queen_promotions, "e7e8Q+"},
    {"underpromotions are all four", promotion_on_e8, mode_underpromotions, "e7e8Q+ e7e8R+ e7e8B e7e8N"},
    {"promotions that check", promotion_on_e8, mode_direct_checks, "e7e8Q+ e7e8R+"},
    {"promotions without an asked bit", promotion_on_e8, mode_captures | mode_discovered_checks | mode_double_checks,
     ""},
    {"promotion of a discovering pawn", "8/k2P3R/8/8/8/8/8/7K w - -", mode_legal, "d7d8Q~ d7d8R~ d7d8B~ d7d8N~", "d7"},
    {"discovering promotion, discovered checks, deliberate", "8/k2P3R/8/8/8/8/8/7K w - -", mode_discovered_checks, ""},
    {"discovering promotion, double checks", "8/1k1P3R/8/8/8/8/8/7K w - -", mode_double_checks, "d7d8N+~"},
    {"promotion by capture, captures", promotion_by_capture, mode_captures, "e7d8Q"},
    {"promotion by capture, all", promotion_by_capture, mode_legal, "e7e8Q e7e8R e7e8B e7e8N e7d8Q e7d8R e7d8B e7d8N",
     "e7"},
    {"promotion by capture, queen promotions", promotion_by_capture, mode_queen_promotions, "e7e8Q e7d8Q"},
    {"promotion by capture, discovered checks, deliberate", promotion_by_capture, mode_discovered_checks, "e7d8Q"},
    {"promotion by capture, underpromotions, deliberate", promotion_by_capture, mode_underpromotions,
     "e7e8Q e7e8R e7e8B e7e8N"},
    {"promotion looks through its old square", "8/4P3/8/4k3/8/8/8/7K w - -", mode_legal, "e7e8Q+ e7e8R+ e7e8B e7e8N",
     "e7"},
    {"promotion by capture looks through its old square", "5r2/4P3/3k4/8/8/8/8/7K w - -", mode_captures, "e7f8Q+"},
    {"knight promotion checks", "8/2k1P3/8/8/8/8/8/7K w - -", mode_direct_checks, "e7e8N+"},
    {"black promotion", "7k/8/8/8/8/4K3/4p3/8 b - -", mode_queen_promotions, "e2e1Q+"},

    {"pawn capture, double check", double_check_by_pawn, mode_legal, "d4d5 d4e5+~", "d4"},
    {"pawn capture, double check with its bit", double_check_by_pawn, mode_double_checks, "d4e5+~"},
    {"pawn capture, double check with other bits, deliberate", double_check_by_pawn,
     mode_direct_checks | mode_discovered_checks, ""},
    {"en passant with check", en_passant_with_check, mode_direct_checks, "e5d6+"},
    {"en passant with check, other bits", en_passant_with_check, mode_discovered_checks | mode_double_checks, ""},
    {"en passant is a capture", en_passant_with_check, mode_captures, "e5d6+"},
    {"en passant by two pawns", "4k3/8/8/2PpP3/8/8/8/4K3 w - d6", mode_captures, "e5d6 c5d6"},
    {"black en passant", "4k3/8/8/8/2pPp3/8/8/4K3 b - d3", mode_captures, "e4d3 c4d3"},
    {"en passant opens the rank", "8/8/8/K2pP2r/8/8/8/7k w - d6", mode_captures, ""},
    {"en passant opens the rank, king to the right", "8/8/8/r2Pp2K/8/8/8/7k w - e6", mode_captures, ""},
    {"en passant opens a diagonal", "6bk/8/8/3pP3/8/1K6/8/8 w - d6", mode_captures, ""},
    {"en passant by a pinned pawn", "4r2k/8/8/3pP3/8/8/8/4K3 w - d6", mode_captures, ""},
    {"en passant along the pin", "7k/2b5/8/3pP3/5K2/8/8/8 w - d6", mode_captures, "e5d6"},
    {"en passant takes the checker", "7k/8/8/3pP3/4K3/8/8/8 w - d6", mode_legal,
     "e5d6 e4f5 e4d5 e4f4 e4d4 e4f3 e4e3 e4d3"},
    {"en passant is no answer to another check", "7k/8/8/3pP3/8/8/8/r3K3 w - d6", mode_legal, "e1f2 e1e2 e1d2"},
    {"en passant discovers a check", "k7/8/8/2Pp4/8/5B2/8/7K w - d6", mode_discovered_checks, "c5d6~"},

    {"pinned pawn steps on the file", "4r2k/8/8/8/8/8/4P3/4K3 w - -", mode_legal, "e2e3 e2e4", "e2"},
    {"pinned pawn takes the pinner only", "7k/8/8/8/8/1p1b4/2P5/1K6 w - -", mode_legal, "c2d3", "c2"},
    {"pinned pawn on a rank", "7k/8/8/8/8/1p3p2/r1P1K3/8 w - -", mode_legal, "", "c2"},
    {"pinned knight", "4r2k/8/8/8/8/8/4N3/4K3 w - -", mode_legal, "", "e2"},
    {"pinned bishop on a file", "4r2k/8/8/8/8/8/4B3/4K3 w - -", mode_legal, "", "e2"},
    {"pinned bishop on a diagonal", "7k/8/8/8/7b/8/5B2/4K3 w - -", mode_legal, "f2h4 f2g3", "f2"},
    {"pinned rook on a file", "4r2k/8/8/8/8/8/4R3/4K3 w - -", mode_legal, "e2e8+ e2e7 e2e6 e2e5 e2e4 e2e3", "e2"},
    {"pinned rook on a diagonal", "7k/8/8/8/7b/8/5R2/4K3 w - -", mode_legal, "", "f2"},
    {"pinned queen", "7k/8/8/8/7b/8/5Q2/4K3 w - -", mode_legal, "f2h4+ f2g3", "f2"},
    {"two pieces between are not pinned", "4r2k/8/8/8/8/4N3/4N3/4K3 w - -", mode_legal, "e2f4 e2d4 e2g3 e2c3 e2g1 e2c1",
     "e2"},

    {"king stays on the checking line", "4r2k/8/8/8/8/8/8/4K3 w - -", mode_legal, "e1f2 e1d2 e1f1 e1d1"},
    {"check is answered by blocking and taking", "4r2k/8/8/8/B7/8/8/3RK3 w - -", mode_legal, "a4e8 e1f2 e1d2 e1f1"},
    {"block by a double step", "7k/8/8/8/r6K/8/4P3/8 w - -", mode_legal, "e2e4 h4h5 h4g5 h4h3 h4g3"},
    {"block that promotes", "r6K/4P3/8/8/8/8/8/7k w - -", mode_legal, "e7e8Q e7e8R e7e8B e7e8N h8h7 h8g7"},
    {"double check moves the king alone", "4r2k/8/8/8/7b/8/3Q4/4K3 w - -", mode_legal, "e1f1 e1d1"},
    {"check by a knight can't be blocked", "7k/8/8/8/8/3n4/R7/4K3 w - -", mode_legal, "e1e2 e1d2 e1f1 e1d1"},
    {"all ways out of check in every mode", "4r2k/8/8/8/8/8/R7/4K3 w - -", mode_castling, "a2e2 e1f2 e1d2 e1f1 e1d1"},
    {"king does not go beside the other", "8/8/8/8/4k3/8/4K3/8 w - -", mode_legal, "e2f2 e2d2 e2f1 e2e1 e2d1"},
    {"mate", "R3k3/8/4K3/8/8/8/8/8 b - -", mode_legal, ""},
    {"stalemate", "7k/8/6Q1/8/8/8/8/K7 b - -", mode_legal, ""},
});
INSTANTIATE_TEST_SUITE_P(Rows, Lists, testing::ValuesIn(rows), RowName<Row>);

TEST(GenerateMoves, MarksNothingAtTheStart) {
    for (const Move move : LegalMovesOf(BoardFromFen(start_fen))) EXPECT_FALSE(GivesCheck(move)) << TextOf(move);
}

TEST(GenerateMoves, LeavesTheBoardAlone) {
    const BOARD board = BoardFromFen(start_fen);
    Move buffer[MAX_MOVES + 1];
    buffer[20] = 77;
    EXPECT_EQ(GenerateMoves(buffer, board, mode_legal), buffer + 20);
    EXPECT_EQ(buffer[20], 77U) << "written after the end";
}

TEST(CastlingWords, AreTheKnownWords) {
    const BOARD white_castles = BoardFromFen("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1");
    const BOARD black_castles = BoardFromFen("r3k2r/8/8/8/8/8/8/R3K2R b KQkq - 0 1");
    Move buffer[MAX_MOVES];
    ASSERT_EQ(GenerateMoves(buffer, white_castles, mode_castling) - buffer, 2);
    EXPECT_EQ(buffer[0], 0x6184U);
    EXPECT_EQ(buffer[1], 0x6084U);
    ASSERT_EQ(GenerateMoves(buffer, black_castles, mode_castling) - buffer, 2);
    EXPECT_EQ(buffer[0], 0x6FBCU);
    EXPECT_EQ(buffer[1], 0x6EBCU);
    GenerateMoves(buffer, BoardFromFen("5k2/8/8/8/8/8/8/4K2R w K - 0 1"), mode_castling);
    EXPECT_EQ(buffer[0], 0x206184U);
}

TEST(GenerateLegalMoves, ReplacesTheList) {
    const BOARD board = BoardFromFen(start_fen);
    std::vector<Move> list(300, INVALID);
    GenerateLegalMoves(board, list);
    Move buffer[MAX_MOVES];
    EXPECT_EQ(list, std::vector<Move>(buffer, GenerateMoves(buffer, board, mode_legal)));
    GenerateLegalMoves(BoardFromFen("7k/8/6Q1/8/8/8/8/K7 b - - 0 1"), list);
    EXPECT_TRUE(list.empty());
}

// No game comes here, but the board accepts any number of queens.
TEST(GenerateLegalMovesDeathTest, TooManyMovesAreReported) {
    std::int8_t queens_all_around[64] = {};
    for (Square s = a1; s <= h8; ++s) {
        const bool at_the_edge = FileOf(s) == 0 || FileOf(s) == 7 || RankOf(s) == 0 || RankOf(s) == 7;
        if (at_the_edge) queens_all_around[s] = queen;
    }
    queens_all_around[a1] = king;
    queens_all_around[a8] = -king;
    queens_all_around[b8] = -queen;
    queens_all_around[a7] = queens_all_around[b7] = -pawn;
    queens_all_around[c7] = queen;
    BOARD board;
    ASSERT_TRUE(board.SetPosition(queens_all_around, white, 0, 0));
    // The report goes to standard output, and a death test watches the error stream.
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            static_cast<void>(LegalMovesOf(board));
        },
        testing::KilledBySignal(SIGABRT),
        "NUM_MOVES <= MAX_MOVES && buffer\\[MAX_MOVES\\] == INVALID\nfile: move_generator, line: [0-9]+\n"
        "Increase the constant MAX_MOVES!");
}

}  // namespace
