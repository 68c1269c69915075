#include "chess/notation.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>
#include <string_view>

#include "support/board_builder.h"
#include "support/row_name.h"

namespace {

using namespace std::string_view_literals;

constexpr std::string_view start = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";
constexpr std::string_view white_castles = "r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1";
constexpr std::string_view black_castles = "r3k2r/8/8/8/8/8/8/R3K2R b KQkq - 0 1";
constexpr std::string_view f1_attacked = "r3k2r/8/8/8/8/8/5r2/R3K2R w KQkq - 0 1";
constexpr std::string_view no_rights = "4k3/8/8/8/8/8/8/R3K2R w - - 0 1";
constexpr std::string_view rook_on_e1 = "3k4/8/8/8/8/8/K7/4R3 w - - 0 1";
constexpr std::string_view pawn_and_bishop = "4k3/8/8/8/8/2n5/1P6/K3B3 w - - 0 1";
constexpr std::string_view pawn_takes = "4k3/8/8/3p4/4P3/8/8/4K3 w - - 0 1";
constexpr std::string_view en_passant = "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1";
constexpr std::string_view promotion = "k7/4P3/8/8/8/8/8/K7 w - - 0 1";
constexpr std::string_view black_promotion = "k7/8/8/8/8/8/4p3/K7 b - - 0 1";
constexpr std::string_view capture_promotion = "3r3k/4P3/8/8/8/8/8/K7 w - - 0 1";
constexpr std::string_view two_knights = "4k3/8/8/8/8/8/3N4/4K1N1 w - - 0 1";
constexpr std::string_view lone_rook = "4k3/8/8/8/8/8/8/K6R w - - 0 1";
constexpr std::string_view pinned_knight = "4r2k/8/8/8/8/7N/4N3/4K3 w - - 0 1";
constexpr std::string_view pinned_rook = "4r2k/8/8/R7/8/4R3/8/4K3 w - - 0 1";
constexpr std::string_view pinned_bishop = "7k/6b1/8/4B3/8/2K5/5B2/8 w - - 0 1";
constexpr std::string_view one_legal_move = "k7/8/8/8/8/8/6q1/7K w - - 0 1";
constexpr std::string_view three_queens = "8/8/1k6/8/4Q2Q/8/8/K6Q w - - 0 1";
constexpr std::string_view rooks_on_a_file = "7k/8/8/R7/8/8/8/R3K3 w - - 0 1";
constexpr std::string_view castling_mates = "5k2/8/4R1R1/8/8/8/8/4K2R w K - 0 1";
constexpr std::string_view castling_checks = "5k2/8/8/8/8/8/8/4K2R w K - 0 1";
constexpr std::string_view black_long_castling_mates = "r3k3/8/8/8/8/2r1r3/8/3K4 b q - 0 1";
constexpr std::string_view back_rank = "6k1/5ppp/8/8/8/8/8/R3K3 w - - 0 1";

struct ReadRow {
    std::string_view name;
    std::string_view fen;
    std::string_view text;
    std::string_view coordinate;  ///< as MoveToCoordinate writes it
};
std::ostream& operator<<(std::ostream& out, const ReadRow& row) { return out << row.text << " in " << row.fen; }

class ReadableMoves : public testing::TestWithParam<ReadRow> {};

TEST_P(ReadableMoves, GiveTheLegalMove) {
    const ReadRow& row = GetParam();
    const BOARD board = BoardFromFen(std::string(row.fen));
    MoveParseError error{};
    const Move move = ParseMove(row.text, board, error);
    ASSERT_NE(move, INVALID) << MoveParseErrorText(error);
    EXPECT_EQ(move, MoveOf(board, row.coordinate)) << MoveToCoordinate(move);
}

constexpr auto readable_moves = std::to_array<ReadRow>({
    {"coordinate", start, "e2e4", "e2e4"},
    {"capital coordinate", start, "E2E4", "e2e4"},
    {"mixed coordinate", start, "E2e4", "e2e4"},
    {"coordinate knight", start, "g1f3", "g1f3"},
    {"coordinate rest ignored", start, "e2e4 or not", "e2e4"},
    {"coordinate with a third square", start, "e2e3e4", "e2e3"},
    {"coordinate high byte after", start, "e2e4\xff"sv, "e2e4"},
    {"coordinate equals without letter", start, "e2e4=", "e2e4"},
    {"coordinate letter of no promotion", start, "e2e4k", "e2e4"},
    {"pawn by square", start, "e4", "e2e4"},
    {"pawn by capital square", start, "E4", "e2e4"},
    {"pawn with its letter", start, "Pe4", "e2e4"},
    {"pawn with its small letter", start, "pe4", "e2e4"},
    {"pawn with its file", start, "ee4", "e2e4"},
    {"pawn with its rank", start, "2e4", "e2e4"},
    {"pawn with its rank after its letter", start, "P2e4", "e2e4"},
    {"text ends at zero", start, "e4\0junk"sv, "e2e4"},
    {"pawn before knight", start, "f3", "f2f3"},
    {"knight", start, "Nf3", "g1f3"},
    {"small knight", start, "nf3", "g1f3"},
    {"knight with file", start, "Ngf3", "g1f3"},
    {"knight with rank", start, "N1f3", "g1f3"},
    {"knight with square", start, "Ng1f3", "g1f3"},
    {"knight to a file", start, "Nf", "g1f3"},

    {"short castling", white_castles, "O-O", "e1g1"},
    {"small short castling", white_castles, "o-o", "e1g1"},
    {"short castling with zeros", white_castles, "0-0", "e1g1"},
    {"short castling with check mark", white_castles, "O-O+", "e1g1"},
    {"short castling with mate mark", white_castles, "0-0#", "e1g1"},
    {"short castling then blank", white_castles, "O-O x", "e1g1"},
    {"short castling rest after mark", white_castles, "O-O+abc", "e1g1"},
    {"long castling", white_castles, "O-O-O", "e1c1"},
    {"small long castling", white_castles, "o-o-o", "e1c1"},
    {"long castling with zeros and mark", white_castles, "0-0-0#", "e1c1"},
    {"long castling then blank", white_castles, "O-O-O ", "e1c1"},
    {"castling by coordinate", white_castles, "e1g1", "e1g1"},
    {"castling as king move", white_castles, "Kg1", "e1g1"},
    {"long castling as small king move", white_castles, "kc1", "e1c1"},
    {"Black short castling", black_castles, "O-O", "e8g8"},
    {"Black long castling", black_castles, "0-0-0", "e8c8"},
    {"long castling where short is barred", f1_attacked, "O-O-O", "e1c1"},

    {"pawn takes on c3", pawn_and_bishop, "bxc3", "b2c3"},
    {"bishop takes on c3", pawn_and_bishop, "Bxc3", "e1c3"},
    {"small b is a file", pawn_and_bishop, "b3", "b2b3"},
    {"pawn takes without mark", pawn_and_bishop, "bc3", "b2c3"},
    {"pawn takes with colon", pawn_and_bishop, "b:c3", "b2c3"},
    {"bishop takes without mark", pawn_and_bishop, "Bc3", "e1c3"},
    {"the pawn is meant", pawn_and_bishop, "xc3", "b2c3"},
    {"bishop by its file alone", pawn_and_bishop, "exc3", "e1c3"},
    {"capture mark at the end", pawn_and_bishop, "Bc3x", "e1c3"},
    {"pawn capture to a file", pawn_takes, "exd", "e4d5"},
    {"pawn capture to a file without mark", pawn_takes, "ed", "e4d5"},
    {"pawn capture to a file with colon", pawn_takes, "e:d5", "e4d5"},
    {"en passant", en_passant, "exd6", "e5d6"},
    {"en passant to a file", en_passant, "ed", "e5d6"},
    {"en passant by coordinate", en_passant, "e5d6", "e5d6"},

    {"promotion", promotion, "e8=Q", "e7e8"},
    {"promotion small letter", promotion, "e8=q", "e7e8"},
    {"promotion by coordinate", promotion, "e7e8q", "e7e8"},
    {"promotion by coordinate capital", promotion, "e7e8Q", "e7e8"},
    {"promotion by coordinate with equals", promotion, "e7e8=Q", "e7e8"},
    {"promotion by bare coordinate", promotion, "e7e8", "e7e8"},
    {"promotion other letter is a queen", promotion, "e7e8k", "e7e8"},
    {"promotion pawn letter is a queen", promotion, "e7e8=p", "e7e8"},
    {"promotion to knight", promotion, "e8=N", "e7e8N"},
    {"promotion to knight by coordinate", promotion, "e7e8n", "e7e8N"},
    {"promotion to bishop by coordinate", promotion, "e7e8=b", "e7e8B"},
    {"promotion to rook", promotion, "e7e8r", "e7e8R"},
    {"promotion with check mark", promotion, "e8=Q+", "e7e8"},
    {"promotion with check mark and praise", promotion, "e8=R+!!", "e7e8R"},
    {"the only queen", promotion, "=Q", "e7e8"},
    {"equals in the middle", promotion, "e=Q8", "e7e8"},
    {"Black promotion by bare coordinate", black_promotion, "e2e1", "e2e1"},
    {"Black promotion to bishop", black_promotion, "e1=B", "e2e1B"},
    {"capture and promotion", capture_promotion, "exd8=Q+", "e7d8"},
    {"capture and promotion from a square", capture_promotion, "e7xd8=N", "e7d8N"},
    {"capture and promotion in short", capture_promotion, "ed=N", "e7d8N"},

    {"knight by file", two_knights, "Ngf3", "g1f3"},
    {"other knight by file", two_knights, "Ndf3", "d2f3"},
    {"knight by rank", two_knights, "N1f3", "g1f3"},
    {"other knight by rank", two_knights, "N2f3", "d2f3"},
    {"knight by square", two_knights, "Nd2f3", "d2f3"},
    {"the other knight is pinned", pinned_knight, "Nf4", "h3f4"},
    {"check", lone_rook, "Rh8+", "h1h8"},
    {"check called mate", lone_rook, "Re1#", "h1e1"},
    {"check not told", lone_rook, "Rh8", "h1h8"},
    {"forced capture", one_legal_move, "x", "h1g2"},
    {"forced king move", one_legal_move, "K", "h1g2"},
});
INSTANTIATE_TEST_SUITE_P(ParseMove, ReadableMoves, testing::ValuesIn(readable_moves), RowName<ReadRow>);

struct WrongRow {
    std::string_view name;
    std::string_view fen;
    std::string_view text;
    MoveParseError error;
};
std::ostream& operator<<(std::ostream& out, const WrongRow& row) { return out << row.text << " in " << row.fen; }

class WrongMoves : public testing::TestWithParam<WrongRow> {};

TEST_P(WrongMoves, GiveTheirError) {
    const WrongRow& row = GetParam();
    const BOARD board = BoardFromFen(std::string(row.fen));
    // The error that is left unset is told from the one that is set.
    for (const auto before : {MoveParseError::ambiguous, MoveParseError::syntax}) {
        MoveParseError error = before;
        const Move move = ParseMove(row.text, board, error);
        EXPECT_EQ(move, INVALID) << MoveToCoordinate(move);
        EXPECT_EQ(error, row.error) << MoveParseErrorText(error);
    }
}

using enum MoveParseError;
constexpr auto wrong_moves = std::to_array<WrongRow>({
    {"empty", start, "", syntax},
    {"empty with a forced move", one_legal_move, "", syntax},
    {"zero byte first", start, "\0e4"sv, syntax},
    {"blank", start, " ", syntax},
    {"blank before", start, " e4", syntax},
    {"blank after", start, "e4 ", syntax},
    {"high bytes", start, "\xff\xfe\x80"sv, syntax},
    {"high byte after", start, "e4\xe9"sv, syntax},
    {"high byte in coordinate", start,
     "e2\xe9"
     "4"sv,
     syntax},
    {"dash", start, "e2-e4", syntax},
    {"dash in long form", start, "Ng1-f3", syntax},
    {"word", start, "hello", syntax},
    {"ninth rank", start, "e9", syntax},
    {"rank zero", start, "e0", syntax},
    {"file i", start, "i4", syntax},
    {"number", start, "42", no_correspondence},
    {"two capture marks", pawn_takes, "exxd5", syntax},
    {"both capture marks", pawn_takes, "ex:d5", syntax},
    {"capital X", pawn_takes, "eXd5", syntax},
    {"praise", start, "e4!", syntax},
    {"coordinate with a promotion that is none", start, "e2e4q", syntax},
    {"en passant told", en_passant, "exd6ep", syntax},

    {"nothing but a check mark", start, "+", no_correspondence},
    {"nothing but a capture mark", start, "x", no_correspondence},
    {"no such pawn move", start, "e5", no_correspondence},
    {"no such knight move", start, "Nf6", no_correspondence},
    {"no such coordinate move", start, "e2e5", no_correspondence},
    {"coordinate of an empty square", start, "e4e5", no_correspondence},
    {"coordinate of the enemy", start, "e7e5", no_correspondence},
    {"no check", start, "Nf3+", no_correspondence},
    {"no mate", start, "Nf3#", no_correspondence},
    {"no capture", start, "Nxf3", no_correspondence},
    {"no capture with colon", start, "N:f3", no_correspondence},
    {"no check with the rook", lone_rook, "Rh7+", no_correspondence},
    {"no promotion", start, "e4=Q", no_correspondence},
    {"promotion without that check", promotion, "e8=N+", no_correspondence},
    {"wrong file", two_knights, "Naf3", no_correspondence},
    {"wrong rank", two_knights, "N8f3", no_correspondence},
    {"pinned", pinned_knight, "Nef4", no_correspondence},
    {"pinned by coordinate", pinned_knight, "e2f4", no_correspondence},

    {"ambiguous knights", two_knights, "Nf3", ambiguous},
    {"piece alone", start, "N", ambiguous},
    {"file alone", start, "e", ambiguous},
    {"rank alone", start, "4", ambiguous},
    {"promotion piece open", promotion, "e8", ambiguous},
    {"promotion piece open with check", promotion, "e8+", ambiguous},
    {"two checks", lone_rook, "+", ambiguous},
    {"several pieces and no pawn", two_knights, "f3", ambiguous},

    {"promotion without equals", promotion, "e8Q", syntax},
    {"promotion in brackets", promotion, "e8(Q)", syntax},
    {"promotion to king", promotion, "e8=K", syntax},
    {"promotion to pawn", promotion, "e8=P", syntax},
    {"promotion without letter", promotion, "e8=", syntax},
    {"lone equals", promotion, "=", syntax},
    {"promotion told twice", promotion, "e8=Q=Q", syntax},
    {"promotion letter blanked by a check mark", promotion, "e8=+Q", syntax},

    {"short castling barred at the start", start, "O-O", invalid_castling},
    {"long castling barred at the start", start, "0-0-0", invalid_castling},
    {"castling through check", f1_attacked, "O-O", invalid_castling},
    {"castling without right", no_rights, "O-O", invalid_castling},
    {"long castling without right", no_rights, "O-O-O+", invalid_castling},
    {"a rook goes from e1 to g1", rook_on_e1, "O-O", invalid_castling},
    {"long castling of mixed characters", white_castles, "O-O-0", syntax},
    {"long castling cut short", white_castles, "O-O-", syntax},
    {"castling of mixed characters", white_castles, "O-0", syntax},
    {"castling of mixed cases", white_castles, "O-o", syntax},
    {"castling with something after", white_castles, "O-Ox", syntax},
    {"castling with praise", white_castles, "O-O!", syntax},
    {"long castling with something after", white_castles, "O-O-O-O", syntax},
    {"castling without dashes", white_castles, "OO", syntax},
    {"castling half told", white_castles, "O-", syntax},
});
INSTANTIATE_TEST_SUITE_P(ParseMove, WrongMoves, testing::ValuesIn(wrong_moves), RowName<WrongRow>);

TEST(ParseMove, ReadsTheHeadOfALongText) {
    const BOARD board = BoardFromFen(start_fen);
    constexpr std::size_t mebibyte = 1U << 20;
    MoveParseError error{};

    EXPECT_EQ(ParseMove(std::string(mebibyte, 'a'), board, error), INVALID);
    EXPECT_EQ(error, syntax);
    EXPECT_EQ(ParseMove(std::string(mebibyte, '\0'), board, error), INVALID);
    EXPECT_EQ(error, syntax);
    EXPECT_EQ(ParseMove("e2e4" + std::string(mebibyte, 'x'), board, error), MoveOf(board, "e2e4"));
}

TEST(ParseMove, FindsNoMoveOnTheEmptyBoard) {
    const BOARD board;
    for (const std::string_view text : {"e2e4", "Kb1", "a1b1", "O-O", "+", ""}) {
        MoveParseError error{};
        EXPECT_EQ(ParseMove(text, board, error), INVALID) << text;
    }
}

TEST(ParseMove, FindsNoMoveAfterMate) {
    const BOARD board = BoardFromFen("rnb1kbnr/pppp1ppp/8/4p3/6Pq/5P2/PPPPP2P/RNBQKBNR w KQkq - 1 3");
    for (const std::string_view text : {"e2e4", "Kf2", "a3"}) {
        MoveParseError error{};
        EXPECT_EQ(ParseMove(text, board, error), INVALID) << text;
        EXPECT_EQ(error, no_correspondence) << text;
    }
}

TEST(MoveParseError, HasItsWords) {
    EXPECT_EQ(MoveParseErrorText(ambiguous), "ambiguous move");
    EXPECT_EQ(MoveParseErrorText(no_correspondence), "no correspondence");
    EXPECT_EQ(MoveParseErrorText(invalid_castling), "invalid move");
    EXPECT_EQ(MoveParseErrorText(syntax), "syntax error");
    EXPECT_EQ(static_cast<int>(ambiguous), 0);
    EXPECT_EQ(static_cast<int>(no_correspondence), 1);
    EXPECT_EQ(static_cast<int>(invalid_castling), 2);
    EXPECT_EQ(static_cast<int>(syntax), 3);
}

struct WriteRow {
    std::string_view name;
    std::string_view fen;
    std::string_view coordinate;
    std::string_view san;
    std::string_view long_algebraic;
};
std::ostream& operator<<(std::ostream& out, const WriteRow& row) { return out << row.coordinate << " in " << row.fen; }

class WrittenMoves : public testing::TestWithParam<WriteRow> {};

TEST_P(WrittenMoves, ReadAsTold) {
    const WriteRow& row = GetParam();
    const BOARD board = BoardFromFen(std::string(row.fen));
    const Move move = MoveOf(board, row.coordinate);
    EXPECT_EQ(MoveToSan(board, move), row.san);
    EXPECT_EQ(MoveToLongAlgebraic(board, move), row.long_algebraic);
}

constexpr auto written_moves = std::to_array<WriteRow>({
    {"pawn", start, "e2e4", "e4", "Pe2-e4"},
    {"knight", start, "g1f3", "Nf3", "Ng1-f3"},
    {"pawn takes", pawn_takes, "e4d5", "exd5", "Pe4xd5"},
    {"en passant", en_passant, "e5d6", "exd6", "Pe5xd6"},
    {"promotion with check", promotion, "e7e8", "e8=Q+", "Pe7-e8=Q+"},
    {"promotion to rook", promotion, "e7e8R", "e8=R+", "Pe7-e8=R+"},
    {"promotion to bishop", promotion, "e7e8B", "e8=B", "Pe7-e8=B"},
    {"promotion to knight", promotion, "e7e8N", "e8=N", "Pe7-e8=N"},
    {"capture and promotion", capture_promotion, "e7d8N", "exd8=N", "Pe7xd8=N"},
    {"capture and promotion with check", capture_promotion, "e7d8", "exd8=Q+", "Pe7xd8=Q+"},
    {"Black promotion", black_promotion, "e2e1", "e1=Q+", "Pe2-e1=Q+"},

    {"short castling", white_castles, "e1g1", "O-O", "O-O"},
    {"long castling", white_castles, "e1c1", "O-O-O", "O-O-O"},
    {"Black short castling", black_castles, "e8g8", "O-O", "O-O"},
    {"Black long castling", black_castles, "e8c8", "O-O-O", "O-O-O"},
    {"castling that checks", castling_checks, "e1g1", "O-O+", "O-O+"},
    {"castling that mates", castling_mates, "e1g1", "O-O+", "O-O+"},
    {"Black long castling that mates", black_long_castling_mates, "e8c8", "O-O-O+", "O-O-O+"},
    {"king step", castling_checks, "e1d2", "Kd2", "Ke1-d2"},

    {"check", lone_rook, "h1h8", "Rh8+", "Rh1-h8+"},
    {"mate", back_rank, "a1a8", "Ra8#", "Ra1-a8#"},
    {"bishop takes", pawn_and_bishop, "e1c3", "Bxc3", "Be1xc3"},
    {"king takes", one_legal_move, "h1g2", "Kxg2", "Kh1xg2"},

    {"file tells", two_knights, "g1f3", "Ngf3", "Ng1-f3"},
    {"file tells the other", two_knights, "d2f3", "Ndf3", "Nd2-f3"},
    {"alone on that square", two_knights, "d2b3", "Nb3", "Nd2-b3"},
    {"rank tells", rooks_on_a_file, "a1a3", "R1a3", "Ra1-a3"},
    {"rank tells the other", rooks_on_a_file, "a5a3", "R5a3", "Ra5-a3"},
    {"one of three by its file", three_queens, "e4e1", "Qee1", "Qe4-e1"},
    {"one of three by its rank", three_queens, "h1e1", "Q1e1", "Qh1-e1"},
    {"one of three by its square", three_queens, "h4e1", "Qh4e1", "Qh4-e1"},
    {"the other is pinned", pinned_knight, "h3f4", "Nf4", "Nh3-f4"},
    {"the other is pinned along the way", pinned_rook, "a5e5", "Rae5", "Ra5-e5"},
    {"pinned along the way", pinned_rook, "e3e5", "Ree5", "Re3-e5"},
    {"the other is pinned on a diagonal", pinned_bishop, "f2d4", "Bfd4", "Bf2-d4"},
    {"the pinned bishop may not leave its line", pinned_bishop, "f2g3", "Bg3", "Bf2-g3"},
});
INSTANTIATE_TEST_SUITE_P(Notation, WrittenMoves, testing::ValuesIn(written_moves), RowName<WriteRow>);

TEST(MoveToCoordinate, WritesFromToAndAPromotionOtherThanQueen) {
    EXPECT_EQ(MoveToCoordinate(MakeWord(e2, e4, pawn)), "e2e4");
    EXPECT_EQ(MoveToCoordinate(MakeWord(a8, h1, bishop, rook)), "a8h1");
    EXPECT_EQ(MoveToCoordinate(castling_word[white][0]), "e1g1");
    EXPECT_EQ(MoveToCoordinate(castling_word[black][1]), "e8c8");
    EXPECT_EQ(MoveToCoordinate(MakeWord(e7, e8, pawn, no_piece, queen)), "e7e8");
    EXPECT_EQ(MoveToCoordinate(MakeWord(e7, d8, pawn, rook, rook)), "e7d8R");
    EXPECT_EQ(MoveToCoordinate(MakeWord(e7, e8, pawn, no_piece, bishop)), "e7e8B");
    EXPECT_EQ(MoveToCoordinate(MakeWord(b2, b1, pawn, no_piece, knight) | check_bits), "b2b1N");
}

TEST(MoveToSan, TellsMateAtTheDeepestPlyOfASearch) {
    BOARD board = BoardFromFen("6k1/5ppp/8/8/8/8/8/R3K3 b - - 100 80");
    while (board.ply + 1 < max_frames) board.MakeNullMove();
    ASSERT_EQ(board.side_to_move, static_cast<std::uint32_t>(white));
    EXPECT_EQ(MoveToSan(board, MoveOf(board, "a1a8")), "Ra8#");
}

TEST(Squares, AreReadInBothCasesAndWrittenSmall) {
    for (Square square = a1; square <= h8; ++square) {
        const std::string text = SquareToString(square);
        ASSERT_EQ(text.size(), 2U);
        EXPECT_EQ(text[0], "abcdefgh"[FileOf(square)]);
        EXPECT_EQ(text[1], "12345678"[RankOf(square)]);
        EXPECT_EQ(SquareFromChars(text[0], text[1]), square);
        EXPECT_EQ(SquareFromChars("ABCDEFGH"[FileOf(square)], text[1]), square);
    }
    for (int c = -128; c < 128; ++c) {
        const char character = static_cast<char>(c);
        EXPECT_EQ(IsFileChar(character),
                  c != 0 && std::string_view("abcdefghABCDEFGH").find(character) != std::string_view::npos);
        EXPECT_EQ(IsRankChar(character),
                  c != 0 && std::string_view("12345678").find(character) != std::string_view::npos);
    }
}

}  // namespace
