#include "search/node/quiescence.h"
#include "evaluation/evaluate.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "chess/move_generator.h"
#include "evaluation/context/position_type.h"
#include "support/board_builder.h"
#include "support/row_name.h"
#include "support/search_builder.h"

namespace {

constexpr std::string_view quiet_position = "4k3/pppppppp/8/8/8/8/PPPPPPPP/4K3 w - - 0 1";
constexpr std::string_view rook_ending_up = "4k1r1/pppp4/8/8/8/8/PPPPP3/R3K3 w - - 0 1";

// --- Stand pat ---

TEST(StandPatStep, ReturnsBetaWhenTheScoreReachesIt) {
    SearchBuilder search(rook_ending_up);
    const int score = evaluate_for_display(search.board->board, 0, search.tables, search.engine.bitbases);
    Node node = search.NodeAt(score, 0);
    EXPECT_EQ(StandPat(node), score);
    Node above = search.NodeAt(score + 1, 0);
    EXPECT_EQ(StandPat(above), go_on);
}

TEST(StandPatStep, IsNotForFullWidth) {
    SearchBuilder search(rook_ending_up);
    Node node = search.NodeAt(0, 1);
    EXPECT_EQ(StandPat(node), go_on);
}

TEST(StandPatStep, MayReachUpIntoTheTreeInSimpleEndings) {
    SearchBuilder ending(rook_ending_up, {.max_distance_for_stand_pat_checks = 64});
    ASSERT_EQ(ending.board->position_class[0], rook_ending);
    Node near = ending.NodeAt(0, 64);
    EXPECT_EQ(StandPat(near), 0);
    Node far = ending.NodeAt(0, 65);
    EXPECT_EQ(StandPat(far), go_on);

    SearchBuilder opening_position(start_fen, {.max_distance_for_stand_pat_checks = 64});
    Node other_type = opening_position.NodeAt(0, 64);
    EXPECT_EQ(StandPat(other_type), go_on);
    opening_position.settings.no_stand_pat_check_if_full_searching_simple_endgames = false;
    Node any_type = opening_position.NodeAt(0, 64);
    EXPECT_EQ(StandPat(any_type), 0);
}

TEST(StandPatStep, IsLeftOutUnderAMateThreat) {
    SearchBuilder search(quiet_position);
    Node node = search.NodeAt(0, 0);
    node.flags = NodeFlags::mate_threat;
    EXPECT_EQ(StandPat(node), go_on);
}

TEST(StandPatStep, IsLeftOutUnderAPinThreatIfToldSo) {
    SearchBuilder search(quiet_position);
    Node node = search.NodeAt(0, 0);
    node.flags = NodeFlags::pin_threat;
    EXPECT_EQ(StandPat(node), 0);
    search.settings.skip_stand_pat_because_of_pin_threat = true;
    EXPECT_EQ(StandPat(node), go_on);
}

TEST(StandPatStep, NeverReachesAMateScore) {
    SearchBuilder search(quiet_position);
    Node node = search.NodeAt(31767, 0);
    EXPECT_EQ(StandPat(node), go_on);
    Node below = search.NodeAt(-31767, 0);
    EXPECT_EQ(StandPat(below), -31767);
}

// --- Generation ---

struct ModeRow {
    std::string_view name;
    Score beta;
    Distance distance;
    unsigned mode;
};
std::ostream& operator<<(std::ostream& out, const ModeRow& row) { return out << row.name; }

class Modes : public testing::TestWithParam<ModeRow> {};

TEST_P(Modes, FollowFromBetaAndDistance) {
    SearchBuilder search(start_fen);
    search.Make("e2e4");
    EXPECT_EQ(QuiescenceMode(search.NodeAt(GetParam().beta, GetParam().distance)), GetParam().mode);
}

INSTANTIATE_TEST_SUITE_P(Quiescence, Modes,
                         testing::Values(ModeRow{"at the horizon", 0, 0, 14U | 17U | 64U},
                                         ModeRow{"last distance with checks", 0, -384, 14U | 17U | 64U},
                                         ModeRow{"below it", 0, -385, 17U | 64U},
                                         ModeRow{"last beta that is no mate", 31766, 0, 14U | 17U | 64U},
                                         ModeRow{"looking for a mate", 31767, 0, 14U},
                                         ModeRow{"looking for a mate too deep", 31767, -385, 0U}),
                         RowName<ModeRow>);

TEST(Quiescence, CastlingIsGeneratedDownToItsOwnDistance) {
    SearchBuilder search(start_fen, {.generate_castling_moves_in_quiescence_min_distance = -64});
    search.Make("e2e4");
    EXPECT_EQ(QuiescenceMode(search.NodeAt(0, -64)) & mode_castling, 64U);
    EXPECT_EQ(QuiescenceMode(search.NodeAt(0, -65)) & mode_castling, 0U);
}

/// White to move has just checked with the queen, and the check was answered.
class PerpetualCheck : public testing::Test {
  protected:
    PerpetualCheck() {
        search_.Make("e2e8");
        search_.Make("g8h7");
        search_.board->check_runs[1].threat = 1;
    }
    [[nodiscard]] bool GeneratesChecks(Score beta, Distance distance) {
        return (QuiescenceMode(search_.NodeAt(beta, distance)) & 14U) != 0;
    }

    SearchBuilder search_{"6k1/5pp1/7p/8/8/8/4QPPP/6K1 w - - 0 1", {.generate_checking_moves_min_distance = 0}};
};

TEST_F(PerpetualCheck, MayGoOnWhenADrawIsEnough) {
    EXPECT_TRUE(GeneratesChecks(0, -1));
    EXPECT_FALSE(GeneratesChecks(1, -1)) << "a draw is not enough";
    EXPECT_TRUE(GeneratesChecks(0, -256));
    EXPECT_FALSE(GeneratesChecks(0, -257)) << "too deep";
}

TEST_F(PerpetualCheck, NeedsTheThreat) {
    search_.board->check_runs[1].threat = 0;
    EXPECT_FALSE(GeneratesChecks(0, -1));
}

TEST_F(PerpetualCheck, NeedsAQueenCheckBefore) {
    search_.board->moves_played[1] &= ~check_bits;
    EXPECT_FALSE(GeneratesChecks(0, -1)) << "no check";
    search_.board->moves_played[1] = MakeWord(e2, e8, rook) | direct_check_bit;
    EXPECT_FALSE(GeneratesChecks(0, -1)) << "no queen";
}

TEST_F(PerpetualCheck, DrawIsSeenFromTheSideOnMove) {
    search_.board->draw_score[white] = -20;
    EXPECT_TRUE(GeneratesChecks(-20, -1));
    EXPECT_FALSE(GeneratesChecks(-19, -1));
}

// --- Filter ---

/// `need` is what the move has to gain: beta is chosen so, from the material and the margin of the position's type.
struct FilterRow {
    std::string_view name;
    std::string_view fen;
    std::string_view move;
    Distance distance;
    Score need;
    bool searched;
};
std::ostream& operator<<(std::ostream& out, const FilterRow& row) { return out << row.move << " in " << row.fen; }

constexpr Score hopeless = 5000;

class Filters : public testing::TestWithParam<FilterRow> {};

TEST_P(Filters, LetThroughWhatMayHelp) {
    const FilterRow& row = GetParam();
    SearchBuilder search(row.fen);
    constexpr Score margins[18] = {285, 275, 300, 300, 300, 400,  400,  400,  400,
                                   400, 500, 600, 600, 600, 1000, 3000, 5000, 700};
    const Score beta =
        search.board->board.frame().material_balance + margins[search.board->position_class[0]] + row.need;
    EXPECT_EQ(PassesQuiescenceFilter(search.NodeAt(beta, row.distance), MoveOf(search.board->board, row.move)),
              row.searched);
}

constexpr std::string_view promotion = "8/P4k2/8/8/8/8/8/K7 w - - 0 1";
constexpr std::string_view promotion_next_to_king = "8/P1k5/8/8/8/8/8/K7 w - - 0 1";
constexpr std::string_view checks = "7k/8/8/3p4/8/2N5/8/KR4Q1 w - - 0 1";
constexpr std::string_view knight_check = "6k1/8/2p5/4N3/8/8/8/K7 w - - 0 1";
constexpr std::string_view knight_fork = "6k1/8/8/3q4/4N3/8/8/K7 w - - 0 1";
constexpr std::string_view discovery = "4k3/8/8/8/4N3/8/8/K3R3 w - - 0 1";
constexpr std::string_view double_check = "4k3/8/8/8/4N3/8/8/K3R3 w - - 0 1";
constexpr std::string_view queen_takes_pawn = "4k3/8/2p5/3p4/8/8/8/K2Q4 w - - 0 1";
constexpr std::string_view queen_takes_loose_pawn = "4k3/8/8/3p4/8/8/8/K2Q4 w - - 0 1";
constexpr std::string_view knight_takes_bishop = "4k3/2p5/3b4/8/4N3/8/8/K7 w - - 0 1";
constexpr std::string_view bishop_takes_knight = "4k3/2p5/3n4/8/5B2/8/8/K7 w - - 0 1";
constexpr std::string_view king_takes = "4k3/8/8/8/8/2p5/1K6/8 w - - 0 1";
constexpr std::string_view castling = "4k3/8/8/8/8/8/8/R3K3 w Q - 0 1";
constexpr std::string_view en_passant = "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Quiescence, Filters, testing::Values(
    FilterRow{"promotion to a queen",             promotion, "a7a8", -1000, hopeless, true},
    FilterRow{"promotion to a rook",              promotion, "a7a8R", 0, -hopeless, false},
    FilterRow{"promotion to a quiet knight",      promotion, "a7a8N", 0, -hopeless, false},
    FilterRow{"promotion to a checking knight",   promotion_next_to_king, "a7a8N", -1000, hopeless, true},
    FilterRow{"promotion to a bishop",            promotion_next_to_king, "a7a8B", 0, -hopeless, false},

    FilterRow{"simple check within reach",        checks, "g1h1", -51, hopeless, true},
    FilterRow{"simple check out of reach",        checks, "g1h1", -52, hopeless, false},
    FilterRow{"discovered check within reach",    discovery, "e4c5", -51, hopeless, true},
    FilterRow{"discovered check out of reach",    discovery, "e4c5", -52, hopeless, false},
    FilterRow{"double check is always in reach",  double_check, "e4d6", -1000, hopeless, true},

    FilterRow{"capture with no need",             queen_takes_loose_pawn, "d1d5", 0, 0, true},
    FilterRow{"capture gains just enough",        queen_takes_loose_pawn, "d1d5", 0, 100, true},
    FilterRow{"capture gains too little",         queen_takes_loose_pawn, "d1d5", 0, 101, false},
    FilterRow{"capture loses the queen",          queen_takes_pawn, "d1d5", 0, 0, false},
    FilterRow{"capture of a protected equal",     knight_takes_bishop, "e4d6", 0, 0, true},
    FilterRow{"bishop for a knight",              bishop_takes_knight, "f4d6", 0, 0, true},
    FilterRow{"en passant counts a pawn",         en_passant, "e5d6", 0, 100, true},
    FilterRow{"en passant, one point more",       en_passant, "e5d6", 0, 101, false},
    FilterRow{"king capture is not exchanged",    king_takes, "b2c3", 0, 100, true},
    FilterRow{"king capture gains too little",    king_takes, "b2c3", 0, 101, false},

    FilterRow{"castling with no need",            castling, "e1c1", 0, 0, true},
    FilterRow{"castling with a need",             castling, "e1c1", 0, 1, false},
    FilterRow{"quiet need grows below -128",      castling, "e1c1", -128, 0, true},
    FilterRow{"quiet need has grown by 129",      castling, "e1c1", -129, -129, true},
    FilterRow{"quiet need has grown too much",    castling, "e1c1", -129, -128, false},
    FilterRow{"capture's need does not grow",     queen_takes_loose_pawn, "d1d5", -300, 100, true},
    FilterRow{"discovery's need does not grow",   discovery, "e4c5", -300, 0, true},

    FilterRow{"simple check counts no threat",    checks, "g1d4", -100, 1, false},
    FilterRow{"knight check counts its threat",   knight_fork, "e4f6", -100, 1020, true},
    FilterRow{"knight check threatens too little", knight_fork, "e4f6", -100, 1021, false},
    FilterRow{"knight check without a threat",    knight_check, "e5d7", -100, 1, false}),
    RowName<FilterRow>);
// clang-format on

TEST(Quiescence, MateScoresAreLookedForByChecksAndPromotionsOnly) {
    SearchBuilder search(queen_takes_loose_pawn);
    const BOARD& board = search.board->board;
    EXPECT_FALSE(PassesQuiescenceFilter(search.NodeAt(31768, 0), MoveOf(board, "d1d5")));
    EXPECT_TRUE(PassesQuiescenceFilter(search.NodeAt(31768, 0), MoveOf(board, "d1e2"))) << "a check within reach";
    EXPECT_FALSE(PassesQuiescenceFilter(search.NodeAt(31768, -64), MoveOf(board, "d1e2")));
}

TEST(Quiescence, KnightForBishopTradeIsNoThreatUnlessToldSo) {
    // The checking knight attacks a protected bishop: a gain of 10.
    SearchBuilder search("6k1/8/2p5/3b4/4N3/8/8/K7 w - - 0 1");
    const BOARD& board = search.board->board;
    const Score beta = board.frame().material_balance + 400 + 10;
    ASSERT_EQ(search.board->position_class[0], knight_against_bishop);
    EXPECT_FALSE(PassesQuiescenceFilter(search.NodeAt(beta, -100), MoveOf(board, "e4f6")));
    search.settings.score_checking_move_should_neglect_trade_knight_vs_bishop = false;
    EXPECT_TRUE(PassesQuiescenceFilter(search.NodeAt(beta, -100), MoveOf(board, "e4f6")));
}

}  // namespace
