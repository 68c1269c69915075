#include "chess/board.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "chess/attacks.h"
#include "chess/board_text.h"
#include "chess/move_generator.h"
#include "support/board_builder.h"
#include "support/board_checks.h"
#include "support/log_capture.h"
#include "support/row_name.h"
#include "support/slow_chess.h"

namespace {

/// Loads a position that need not be valid; false if SetPosition says that it is not.
bool Load(BOARD& board, std::string_view fen) { return LoadBoard(board, SlowFromFen(fen)); }

struct ValidityRow {
    std::string_view name, fen;
    bool is_valid;
};
std::ostream& operator<<(std::ostream& out, const ValidityRow& row) { return out << row.fen; }

class Validity : public testing::TestWithParam<ValidityRow> {};

TEST_P(Validity, IsTold) {
    BOARD board;
    EXPECT_EQ(Load(board, GetParam().fen), GetParam().is_valid);
    EXPECT_EQ(board.IsValid(), GetParam().is_valid);
    EXPECT_TRUE(SlowFromBoard(board) == SlowFromFen(GetParam().fen)) << "loaded even if it is invalid";
}

constexpr auto validity_rows = std::to_array<ValidityRow>({
    {"start", "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -", true},
    {"kings alone", "4k3/8/8/8/8/8/8/4K3 b - -", true},
    {"no white king", "4k3/8/8/8/8/8/8/8 w - -", false},
    {"no black king", "8/8/8/8/8/8/8/4K3 w - -", false},
    {"empty board", "8/8/8/8/8/8/8/8 w - -", false},
    {"two white kings", "4k3/8/8/8/8/8/8/K3K3 w - -", false},
    {"two black kings", "k3k3/8/8/8/8/8/8/4K3 w - -", false},
    {"white pawn on the first rank", "4k3/8/8/8/8/8/8/P3K3 w - -", false},
    {"white pawn on the eighth rank", "P3k3/8/8/8/8/8/8/4K3 w - -", false},
    {"black pawn on the first rank", "4k3/8/8/8/8/8/8/4K2p w - -", false},
    {"black pawn on the eighth rank", "4k2p/8/8/8/8/8/8/4K3 w - -", false},
    {"fourteen white pawns with some on the first rank", "4k3/8/8/8/8/8/PPPPPPPP/PPPPPPK1 w - -", false},
    {"fourteen white pawns", "4k3/8/8/8/8/PPPPPP2/PPPPPPPP/4K3 w - -", true},
    {"fifteen white pawns", "4k3/8/8/8/8/PPPPPPP1/PPPPPPPP/4K3 w - -", false},
    {"fourteen black pawns", "4k3/pppppppp/pppppp2/8/8/8/8/4K3 w - -", true},
    {"fifteen black pawns", "4k3/pppppppp/ppppppp1/8/8/8/8/4K3 w - -", false},
    {"side to move in check", "4k3/8/8/8/8/8/8/4K2r w - -", true},
    {"side not to move in check", "4k3/8/8/8/8/8/8/4K2r b - -", false},
    {"side not to move in check by a pawn", "4k3/3P4/8/8/8/8/8/4K3 w - -", false},
    {"kings side by side", "8/8/8/8/8/4k3/4K3/8 w - -", false},
    {"en passant after a white jump", "4k3/8/8/8/4P3/8/8/4K3 b - e3", true},
    {"en passant after a black jump", "4k3/8/8/3p4/8/8/8/4K3 w - d6", true},
    {"en passant without a pawn", "4k3/8/8/8/8/8/8/4K3 w - d6", false},
    {"en passant in front of an own pawn", "4k3/8/8/3P4/8/8/8/4K3 w - d6", false},
    {"en passant in front of a piece", "4k3/8/8/3n4/8/8/8/4K3 w - d6", false},
    {"en passant on an occupied square", "4k3/8/3n4/3p4/8/8/8/4K3 w - d6", false},
    {"en passant with the square behind occupied", "4k3/3n4/8/3p4/8/8/8/4K3 w - d6", false},
    {"all rights", "r3k2r/8/8/8/8/8/8/R3K2R w KQkq -", true},
    {"white short right without rook", "r3k2r/8/8/8/8/8/8/R3K3 w K -", false},
    {"white long right without rook", "r3k2r/8/8/8/8/8/8/4K2R w Q -", false},
    {"black short right without rook", "r3k3/8/8/8/8/8/8/R3K2R w k -", false},
    {"black long right without rook", "4k2r/8/8/8/8/8/8/R3K2R w q -", false},
    {"white right with the king away", "r3k2r/8/8/8/8/8/8/R2K3R w K -", false},
    {"black right with the king away", "r2k3r/8/8/8/8/8/8/R3K2R w q -", false},
    {"right with an enemy rook in the corner", "4k3/8/8/8/8/8/4B3/4K2r w K -", false},
    {"right with another piece in the corner", "4k3/8/8/8/8/8/8/4K2N w K -", false},
});
INSTANTIATE_TEST_SUITE_P(Positions, Validity, testing::ValuesIn(validity_rows), RowName<ValidityRow>);

struct RefusedRow {
    std::string_view name;
    int side, en_passant_square, castling, code_on_e4;
};
std::ostream& operator<<(std::ostream& out, const RefusedRow& row) { return out << row.name; }

class RefusedValues : public testing::TestWithParam<RefusedRow> {};

TEST_P(RefusedValues, ChangeNothing) {
    const RefusedRow& row = GetParam();
    BOARD board = BoardFromFen(start_fen);
    const BOARD before = board;
    std::int8_t squares[64] = {};
    squares[e1] = king;
    squares[e8] = -king;
    squares[e4] = static_cast<std::int8_t>(row.code_on_e4);
    EXPECT_FALSE(board.SetPosition(squares, row.side, row.en_passant_square, row.castling));
    EXPECT_EQ(Differences(board, before), "");
}

constexpr auto refused_rows = std::to_array<RefusedRow>({
    {"side 2", 2, 0, 0, 0},
    {"side -1", -1, 0, 0, 0},
    {"en passant square 64", 0, 64, 0, 0},
    {"en passant square -1", 0, -1, 0, 0},
    {"third rank with White to move", 0, e3, 0, pawn},
    {"sixth rank with Black to move", 1, e6, 0, 0},
    {"fourth rank", 1, e4, 0, 0},
    {"castling 16", 0, 0, 16, 0},
    {"castling -1", 0, 0, -1, 0},
    {"code 7", 0, 0, 0, 7},
    {"code -7", 0, 0, 0, -7},
});
INSTANTIATE_TEST_SUITE_P(Board, RefusedValues, testing::ValuesIn(refused_rows), RowName<RefusedRow>);

TEST(Board, IsEmptyAtFirst) {
    const BOARD board;
    EXPECT_EQ(board.ply, 0U);
    EXPECT_EQ(board.occupied, 0U);
    EXPECT_EQ(board.key(), 0U);
    EXPECT_EQ(board.key_history, board.key_store);
    EXPECT_EQ(board.frame(), PLY_FRAME{});
    EXPECT_FALSE(board.IsValid());
}

TEST(Board, LoadsAllFieldsFromTheSquares) {
    for (const std::string_view fen :
         {"r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R b KQkq -", "4k3/8/8/3pP3/8/8/8/4K3 w - d6",
          "4k3/8/8/8/8/8/8/4K2r w - -", "n1n5/PPPk4/8/8/8/8/4Kppp/5N1N b - -"}) {
        BOARD board = BoardFromFen(start_fen);
        board.SetFiftyCounter(30);
        ASSERT_TRUE(Load(board, fen));
        EXPECT_EQ(Disagreements(board), "") << fen;
        EXPECT_EQ(board.frame().fifty_counter, 0);
        EXPECT_EQ(board.key_history, board.key_store);
    }
}

TEST(Board, LoadsFromItsOwnSquares) {
    BOARD board = BoardFromFen(start_fen);
    EXPECT_TRUE(board.SetPosition(board.squares, black, 0, 15));
    EXPECT_EQ(Disagreements(board), "");
    EXPECT_EQ(PopCount(board.occupied), 32);
}

TEST(Board, CopyHasItsOwnKeys) {
    BOARD board = BoardFromFen(start_fen);
    board.SetFiftyCounter(7);
    board.MakeMove(MoveOf(board, "g1f3"));
    const BOARD copy = board;
    BOARD assigned;
    assigned = board;
    for (const BOARD* other : {&copy, static_cast<const BOARD*>(&assigned)}) {
        EXPECT_EQ(Differences(*other, board), "");
        EXPECT_EQ(other->key_history - other->key_store, 7);
        EXPECT_NE(other->key_history, board.key_history);
    }
    board.key_history[board.ply] ^= 1;
    EXPECT_NE(copy.key(), board.key());
    const BOARD& same = board;
    board = same;
    EXPECT_EQ(board.key_history - board.key_store, 7);
}

// Two games to the same position by other orders of moves, except that one of them holds an en passant square.
TEST(Board, KeyHoldsTheEnPassantSquareWhetherOrNotItIsOfUse) {
    BOARD jumped = BoardFromFen("4k3/8/8/8/8/8/4P3/4K3 w - - 0 1");
    jumped.MakeMove(MoveOf(jumped, "e2e4"));
    const BOARD without = BoardFromFen("4k3/8/8/8/4P3/8/8/4K3 b - - 0 1");
    EXPECT_EQ(jumped.key() ^ without.key(), bitboard_tables.zobrist_ep_third_rank[4]);
}

struct DrawRow {
    std::string_view name, fen;
    int fifty_counter;
    bool is_draw;
};
std::ostream& operator<<(std::ostream& out, const DrawRow& row) { return out << row.fen; }

class DrawsOfTheSearch : public testing::TestWithParam<DrawRow> {};

TEST_P(DrawsOfTheSearch, AreTold) {
    BOARD board;
    ASSERT_TRUE(Load(board, GetParam().fen));
    board.SetFiftyCounter(GetParam().fifty_counter);
    EXPECT_EQ(board.IsDraw(), GetParam().is_draw);
}

constexpr auto draw_rows = std::to_array<DrawRow>({
    {"kings", "4k3/8/8/8/8/8/8/4K3 w - -", 0, true},
    {"bishop against knight", "4k1n1/8/8/8/8/8/8/4KB2 w - -", 0, true},
    {"two knights against a king", "4k3/8/8/8/8/8/8/1N2K1N1 w - -", 0, true},
    {"two knights on each side", "1n2k1n1/8/8/8/8/8/8/1N2K1N1 w - -", 0, true},
    {"bishop pair against a king", "4k3/8/8/8/8/8/8/2B1KB2 w - -", 0, false},
    {"bishop and knight against a king", "4k3/8/8/8/8/8/8/4KBN1 w - -", 0, false},
    {"bishop pair of Black", "2b1kb2/8/8/8/8/8/8/4K3 w - -", 0, false},
    {"three knights", "4k3/8/8/8/8/8/8/1NN1K1N1 w - -", 0, false},
    {"a pawn", "4k3/8/8/8/8/8/P7/4K3 w - -", 0, false},
    {"a black pawn", "4k3/p7/8/8/8/8/8/4K3 w - -", 0, false},
    {"a rook", "4k3/8/8/8/8/8/8/R3K3 w - -", 0, false},
    {"a black queen", "4k2q/8/8/8/8/8/8/4K3 w - -", 0, false},
    {"99 plies", "4k3/8/8/8/8/8/8/R3K3 w - -", 99, false},
    {"100 plies", "4k3/8/8/8/8/8/8/R3K3 w - -", 100, true},
    {"100 plies and mate", "R3k3/8/4K3/8/8/8/8/8 b - -", 100, true},
});
INSTANTIATE_TEST_SUITE_P(Positions, DrawsOfTheSearch, testing::ValuesIn(draw_rows), RowName<DrawRow>);

void MakeMoves(BOARD& board, std::initializer_list<std::string_view> moves) {
    for (const std::string_view move : moves) board.MakeMove(MoveOf(board, move));
}

TEST(Repetition, OneEarlierOccurrenceIsADraw) {
    BOARD board = BoardFromFen(start_fen);
    MakeMoves(board, {"g1f3", "g8f6", "f3g1"});
    EXPECT_FALSE(board.IsDraw());
    MakeMoves(board, {"f6g8"});
    EXPECT_TRUE(board.IsDraw());
}

TEST(Repetition, IsNotSeenAcrossAPawnMove) {
    BOARD board = BoardFromFen("4k1n1/8/8/8/8/8/P7/4K1N1 w - - 0 1");
    MakeMoves(board, {"g1f3", "g8f6", "a2a3", "f6g8", "f3g1", "g8f6", "g1f3"});
    EXPECT_TRUE(board.IsDraw()) << "the position after a2a3 came back";
    board = BoardFromFen("4k1n1/8/8/8/8/8/P7/4K1N1 w - - 0 1");
    MakeMoves(board, {"g1f3", "g8f6", "a2a3", "f6g8", "f3g1"});
    EXPECT_FALSE(board.IsDraw());
}

TEST(Repetition, IsNotSeenAcrossANullMove) {
    BOARD board = BoardFromFen("r3k3/8/8/8/8/8/8/R3K3 w - - 0 1");
    MakeMoves(board, {"a1b1", "a8b8", "b1a1", "b8a8"});
    EXPECT_TRUE(board.IsDraw());
    board.MakeNullMove();
    board.MakeNullMove();
    EXPECT_FALSE(board.IsDraw());
}

TEST(Repetition, IsSeenAfterResetPly) {
    BOARD board = BoardFromFen(start_fen);
    for (const std::string_view move : {"g1f3", "g8f6", "f3g1", "f6g8"}) {
        MakeMoves(board, {move});
        board.ResetPly();
        EXPECT_EQ(board.ply, 0U);
    }
    EXPECT_EQ(board.key_history - board.key_store, 4);
    EXPECT_TRUE(board.IsDraw());
}

TEST(ResetPly, ForgetsTheHistoryAfterAPawnMove) {
    BOARD board = BoardFromFen(start_fen);
    MakeMoves(board, {"g1f3", "g8f6"});
    board.ResetPly();
    MakeMoves(board, {"e2e4"});
    const BOARD before = board;
    board.ResetPly();
    EXPECT_EQ(board.key_history, board.key_store);
    EXPECT_EQ(board.key(), before.key());
    EXPECT_EQ(board.frame(), before.frame());
    EXPECT_EQ(Disagreements(board), "");
}

// A game that goes on for ever must not run out of the key store, nor forget a repetition that still counts.
TEST(ResetPly, KeepsRoomForASearchInEveryGame) {
    BOARD board = BoardFromFen("4k2r/8/8/8/8/8/8/R3K3 w - - 0 1");
    for (int round = 0; round < 100; ++round) {
        for (const std::string_view move : {"a1a2", "h8h7", "a2a1", "h7h8"}) {
            MakeMoves(board, {move});
            board.ResetPly();
            ASSERT_LE(board.key_history - board.key_store + max_frames, max_keys);
            ASSERT_EQ(board.key(), SlowKey(SlowFromBoard(board)));
            ASSERT_EQ(board.IsDraw(), board.frame().fifty_counter >= 4);
        }
    }
}

TEST(SetFiftyCounter, FillsTheHistoryWithKeysThatMatchNothing) {
    for (const int n : {0, 1, 57, 100}) {
        BOARD board = BoardFromFen(start_fen);
        const std::uint64_t key = board.key();
        board.SetFiftyCounter(n);
        EXPECT_EQ(board.frame().fifty_counter, n);
        EXPECT_EQ(board.key(), key);
        ASSERT_EQ(board.key_history - board.key_store, n);
        for (int i = 0; i < n; ++i) EXPECT_EQ(board.key_store[i], static_cast<std::uint64_t>(i) + 1);
        EXPECT_EQ(board.IsDraw(), n == 100);
    }
}

TEST(ChangeSide, GivesTheMoveAsANewFirstPly) {
    BOARD board = BoardFromFen("4k3/8/8/8/8/8/8/R3K3 w - - 40 1");
    MakeMoves(board, {"a1a5", "e8e7"});
    EXPECT_TRUE(board.ChangeSide());
    EXPECT_EQ(board.side_to_move, black);
    EXPECT_EQ(board.ply, 0U);
    EXPECT_EQ(board.frame().fifty_counter, 0);
    EXPECT_EQ(board.frame().material_balance, -500);
    EXPECT_EQ(board.key_history, board.key_store);
    EXPECT_EQ(Disagreements(board), "");
}

TEST(ChangeSide, FailsInCheckAndWithAnEnPassantSquare) {
    BOARD in_check = BoardFromFen("4k3/8/8/8/8/8/8/4K2r w - - 0 1");
    EXPECT_FALSE(in_check.ChangeSide());
    BOARD jumped = BoardFromFen("4k3/8/8/8/4P3/8/8/4K3 b - e3 0 1");
    EXPECT_FALSE(jumped.ChangeSide());
    EXPECT_EQ(jumped.frame().en_passant_square, e3);
}

TEST(LeavesKingInCheck, SeesPinsAndChecks) {
    const BOARD board = BoardFromFen("4r2k/8/8/8/8/8/4N3/4K3 w - - 0 1");
    EXPECT_TRUE(LeavesKingInCheck(MakeWord(e2, c3, knight), board));
    EXPECT_FALSE(LeavesKingInCheck(MakeWord(e1, d1, king), board));
    EXPECT_FALSE(LeavesKingInCheck(MakeWord(e1, f2, king), board));
    const BOARD attacked = BoardFromFen("7k/8/8/8/8/6n1/8/4K3 w - - 0 1");
    EXPECT_TRUE(LeavesKingInCheck(MakeWord(e1, f1, king), attacked));
    EXPECT_TRUE(LeavesKingInCheck(MakeWord(e1, e2, king), attacked));
}

TEST(VerifyMove, WantsTheExactWord) {
    const BOARD board = BoardFromFen(start_fen);
    const Move move = MakeWord(e2, e4, pawn);
    EXPECT_TRUE(VerifyMove(move, board));
    EXPECT_FALSE(VerifyMove(move | direct_check_bit, board));
    EXPECT_FALSE(VerifyMove(move | 1U << 23, board));
    EXPECT_FALSE(VerifyMove(MakeWord(e2, e5, pawn), board));
    EXPECT_FALSE(VerifyMove(INVALID, board));
}

struct StateRow {
    std::string_view name, fen, castling, en_passant;
};
std::ostream& operator<<(std::ostream& out, const StateRow& row) { return out << row.fen; }

class StateTexts : public testing::TestWithParam<StateRow> {};

TEST_P(StateTexts, AreTold) {
    BOARD board;
    ASSERT_TRUE(Load(board, GetParam().fen));
    EXPECT_EQ(CastlingText(board), GetParam().castling);
    EXPECT_EQ(EnPassantText(board), GetParam().en_passant);
}

constexpr auto state_rows = std::to_array<StateRow>({
    {"all rights", "r3k2r/8/8/8/8/8/8/R3K2R w KQkq -", "KQkq", "none"},
    {"no right", "r3k2r/8/8/8/8/8/8/R3K2R w - -", "none", "none"},
    {"white short", "r3k2r/8/8/8/8/8/8/R3K2R w K -", "K", "none"},
    {"long ones", "r3k2r/8/8/8/8/8/8/R3K2R w Qq -", "Qq", "none"},
    {"black short", "r3k2r/8/8/8/8/8/8/R3K2R w k -", "k", "none"},
    {"e3", "4k3/8/8/8/4P3/8/8/4K3 b - e3", "none", "e3"},
    {"a6", "4k3/8/8/p7/8/8/8/4K3 w - a6", "none", "a6"},
});
INSTANTIATE_TEST_SUITE_P(Positions, StateTexts, testing::ValuesIn(state_rows), RowName<StateRow>);

constexpr std::string_view printed_start =
    "    +---+---+---+---+---+---+---+---+\n"
    "  8 | R | N | B | Q | K | B | N | R |\n"
    "  7 | P | P | P | P | P | P | P | P |\n"
    "  6 |   |   |   |   |   |   |   |   |\n"
    "  5 |   |   |   |   |   |   |   |   |\n"
    "  4 |   |   |   |   | *P|   |   |   |\n"
    "  3 |   |   |   |   |   |   |   |   |\n"
    "  2 | *P| *P| *P| *P|   | *P| *P| *P|\n"
    "  1 | *R| *N| *B| *Q| *K| *B| *N| *R|\n"
    "    +---+---+---+---+---+---+---+---+\n"
    "      a   b   c   d   e   f   g   h\n";

TEST(Print, ShowsTheBoardAndIfAskedTheState) {
    BOARD board = BoardFromFen(start_fen);
    MakeMoves(board, {"e2e4"});
    const LogCapture log;
    testing::internal::CaptureStdout();
    PrintBoard(board, false);
    PrintBoard(board, true);
    const std::string both = std::string(printed_start) + std::string(printed_start) +
                             "castle possibilities: KQkq\nside on move: black; en-passant square: e3\n";
    EXPECT_EQ(log.text(), both);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), both);
}

TEST(Print, ShowsAnInvalidPositionToo) {
    BOARD board;
    const LogCapture log;
    testing::internal::CaptureStdout();
    PrintBoard(board, true);
    EXPECT_NE(log.text().find("castle possibilities: none\nside on move: white; en-passant square: none\n"),
              std::string::npos);
    static_cast<void>(testing::internal::GetCapturedStdout());
}

}  // namespace
