#include "evaluation/evaluation_trace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "chess/notation.h"
#include "support/evaluation_builder.h"
#include "support/random_games.h"
#include "support/row_name.h"

namespace {

struct Values {
    int positional = 0, reckless = 0;
    void Add(int more_positional, int more_reckless, int sign) {
        positional += sign * more_positional;
        reckless += sign * more_reckless;
    }
    bool operator==(const Values&) const = default;
};

Values ValuesOf(SCORE_PAIR pair) { return {pair.positional(), pair.reckless()}; }

/// The rules of each term, White minus Black. Rules of one side alone are those of `of_side`.
Values SumOfRules(const EVALUATION_TRACE& trace, Term term, std::optional<Colour> of_side = std::nullopt) {
    Values sum;
    for (const RULE_RECORD& rule : trace.rules) {
        if (rule.term != term || rule.side != of_side.value_or(rule.side)) continue;
        sum.Add(rule.positional, rule.reckless, rule.side == white || of_side ? 1 : -1);
    }
    return sum;
}

void ExpectRulesAddUp(const EVALUATION_TRACE& trace) {
    Values sum, parts;
    for (const TERM_RECORD& term : trace.terms) {
        SCOPED_TRACE(name_of(term.term));
        (term.is_part ? parts : sum).Add(term.sum.positional(), term.sum.reckless(), 1);
        if (term.term == Term::pawns_alone) {
            EXPECT_EQ(parts, ValuesOf(term.sum));
            continue;
        }
        EXPECT_EQ(SumOfRules(trace, term.term), ValuesOf(term.sum));
        if (!term.has_sides) continue;
        EXPECT_EQ(SumOfRules(trace, term.term, white), ValuesOf(term.of_white));
        EXPECT_EQ(SumOfRules(trace, term.term, black), ValuesOf(term.of_black));
    }
    EXPECT_EQ(sum, ValuesOf(trace.sum));
}

/// The points of all rules are what stands in the counters in the end.
void ExpectPointsAddUp(const EVALUATION_TRACE& trace) {
    COUNTER_POINTS sum;
    for (const RULE_RECORD& rule : trace.rules) {
        for (const Colour side : {white, black}) {
            for (const Wing wing : {queen_side, king_side, centre}) {
                add_points(sum.pressure[side][wing], rule.points.pressure[side][wing]);
                add_points(sum.cover[side][wing], rule.points.cover[side][wing]);
            }
        }
    }
    EXPECT_EQ(sum.pressure, trace.terms.back().counters.pressure);
    EXPECT_EQ(sum.cover, trace.terms.back().counters.cover);
}

int ForSideToMove(const BOARD& board, int score) { return board.side_to_move == white ? score : -score; }

/// Every step follows from the one before it, and the last one from the sum of the terms is the score.
void ExpectStepsEndAt(int wanted, const EVALUATION_TRACE& trace, const BOARD& board) {
    int score = ForSideToMove(board, trace.sum.positional());
    for (const STEP_RECORD& step : trace.steps) {
        SCOPED_TRACE(name_of(step.rule));
        if (step.effect == Effect::scales) {
            EXPECT_EQ(step.score, step.share.of(score));
        }
        EXPECT_EQ(step.score, score + step.change);
        EXPECT_FALSE(step.effect == Effect::adds && step.change == 0) << "what adds nothing is left out";
        score = step.score;
    }
    EXPECT_EQ(score, trace.full_score);
    EXPECT_EQ(score, wanted);
}

TEST(EvaluationTrace, RulesAddUpToTermsAndTermsToTheScore) {
    constexpr std::uint32_t seed = 78;
    int pairs = 0;
    int endings = 0;
    ForEachRandomPosition(seed, 112, 120, [&](BOARD& board, const std::vector<Move>& /*moves*/) {
        if (testing::Test::HasFailure()) return;
        const EVALUATION_TRACE trace = trace_evaluation(board, 0);
        SCOPED_TRACE(FenOf(board));
        ExpectRulesAddUp(trace);
        if (trace.is_blended) {
            ++pairs;
            ExpectPointsAddUp(trace);
            EvaluationBuilder position(FenOf(board));
            EXPECT_EQ(position.FullScore(), trace.material + ForSideToMove(board, trace.blended));
        } else {
            ++endings;
            ExpectStepsEndAt(trace.score, trace, board);
        }
    });
    EXPECT_GT(pairs, 100);
    EXPECT_GT(endings, 100);
}

EVALUATION_TRACE TraceOf(std::string_view fen) { return trace_evaluation(BoardFromFen(std::string(fen)), 0); }

const RULE_RECORD* Find(const EVALUATION_TRACE& trace, Rule rule, Colour side) {
    const auto found = std::find_if(trace.rules.begin(), trace.rules.end(), [&](const RULE_RECORD& record) {
        return record.rule == rule && record.side == side;
    });
    return found == trace.rules.end() ? nullptr : &*found;
}

TEST(EvaluationTrace, ARookOnTheSeventhRankIsNamedWithItsSquare) {
    const EVALUATION_TRACE trace = TraceOf("r2q1rk1/pR3ppp/2n1pn2/8/3P4/2NBPN2/P4PPP/3Q1RK1 w - - 0 1");
    const RULE_RECORD* const record = Find(trace, Rule::rook_on_seventh, white);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(name_of(record->rule), "rook_on_seventh");
    EXPECT_EQ(record->term, Term::rooks);
    EXPECT_EQ(record->squares, Bit(b7));
    EXPECT_EQ(record->positional, 28);
    EXPECT_EQ(record->reckless, 50);
    EXPECT_EQ(record->points.pressure[white][centre], 14);
    EXPECT_EQ(Find(trace, Rule::rook_on_seventh, black), nullptr);
}

TEST(EvaluationTrace, OfTwoSheltersTheBetterOneIsTold) {
    const EVALUATION_TRACE trace = TraceOf("r3k2r/pppq1ppp/2npbn2/2b1p3/2B1P3/2NPBN2/PPPQ1PPP/R3K2R w KQkq - 0 1");
    Bitboard kings = 0;
    for (const RULE_RECORD& rule : trace.rules) {
        if (rule.rule == Rule::king_on_g_or_h_file || rule.rule == Rule::king_on_other_file) kings |= rule.squares;
    }
    EXPECT_EQ(PopCount(kings), 2);
}

TEST(EvaluationTrace, NamesAreUnique) {
    std::set<std::string_view> rules, terms;
    for (int term = 0; term < static_cast<int>(Term::number_of_terms); ++term) {
        EXPECT_TRUE(terms.insert(name_of(static_cast<Term>(term))).second) << term;
    }
    for (int rule = 0; rule < static_cast<int>(Rule::number_of_rules); ++rule) {
        EXPECT_TRUE(rules.insert(name_of(static_cast<Rule>(rule))).second) << rule;
    }
}

// --- Endings ---

struct EndingRow {
    std::string_view name;
    std::string_view fen;
    int position_type;
    bool has_terms;
    /// The steps to the score: "few_pawns_to_win_with a2 b2 : 5/8 = 40". White is to move.
    std::vector<std::string_view> steps;
};
std::ostream& operator<<(std::ostream& out, const EndingRow& row) { return out << row.name; }

std::string TextOf(const STEP_RECORD& step) {
    std::string text(name_of(step.rule));
    for (Square s = a1; s <= h8; ++s) {
        if (Has(step.squares, s)) text += ' ' + SquareToString(s);
    }
    switch (step.effect) {
        case Effect::adds:
            text += " : " + std::string(step.change > 0 ? "+" : "") + std::to_string(step.change);
            break;
        case Effect::scales:
            text += " : " + std::to_string(step.share.part) + '/' + std::to_string(step.share.whole);
            break;
        case Effect::limits:
            text += " : limit";
            break;
        case Effect::sets:
            text += " : set";
            break;
    }
    return text + " = " + std::to_string(step.score);
}

class EndingTraces : public testing::TestWithParam<EndingRow> {};
TEST_P(EndingTraces, GoStepByStep) {
    const EndingRow& row = GetParam();
    const BOARD board = BoardFromFen(std::string(row.fen));
    for (const bool exchange : {false, true}) {
        const BOARD position = exchange ? WithColoursExchanged(board) : board;
        const EVALUATION_TRACE trace = trace_evaluation(position, 0);
        EXPECT_EQ(trace.position_type, row.position_type);
        EXPECT_EQ(!trace.terms.empty(), row.has_terms);
        ExpectStepsEndAt(trace.score, trace, position);
        if (exchange) continue;
        std::vector<std::string> steps;
        for (const STEP_RECORD& step : trace.steps) steps.push_back(TextOf(step));
        EXPECT_EQ(steps, std::vector<std::string>(row.steps.begin(), row.steps.end()));
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(EvaluationTrace, EndingTraces, testing::Values(
    EndingRow{"opposite bishops", "2b1k3/p7/8/8/8/8/PPPP4/2B1K3 w - - 0 1", opposite_bishops, true, {
        "material : +300 = 427",
        "few_pawns_to_win_with a2 b2 c2 d2 : 7/8 = 373",
        "few_pawns_cost_no_more : limit = 377",
        "opposite_bishops c1 c8 : 6/8 = 282",
        "opposite_bishops_by_targets a7 : 4/8 = 141"}},
    EndingRow{"wrong bishop", "7k/8/8/8/8/8/P7/2B1K3 w - - 0 1", unbalanced_ending, false, {
        "bishop_of_wrong_colour c1 : +315 = 315",
        "enemy_king_from_corner a8 h8 : +90 = 405",
        "own_king_from_corner e1 a8 : -30 = 375",
        "pawn_with_bishop_by_rank a2 : +50 = 425"}},
    EndingRow{"wrong bishop, the corner held", "k7/8/8/8/8/8/P7/2B1K3 w - - 0 1", unbalanced_ending, false, {
        "king_holds_corner a8 : set = 0"}},
    EndingRow{"rook and pawn, the bridge", "3K4/3P1k2/8/8/8/8/8/2r1R3 w - - 0 1", rook_ending, false, {
        "bridge_before_king d7 d8 : +350 = 350",
        "bridge_by_files_cut_off e1 f7 : +8 = 358",
        "bridge_rook_off_fourth_rank e1 : -24 = 334"}},
    EndingRow{"bishop and knight", "k7/8/1K6/8/8/8/8/2NB4 w - - 0 1", pawnless, false, {
        "bishop_and_knight c1 d1 : +1000 = 1000",
        "enemy_king_off_centre a8 : +80 = 1080",
        "kings_apart b6 a8 : -12 = 1068",
        "enemy_king_in_bishops_corner d1 a8 : +120 = 1188",
        "enough_to_mate c1 d1 : +6 = 1194"}},
    EndingRow{"a knight alone", "7k/8/5K2/8/8/8/8/1N6 w - - 0 1", pawnless, false, {
        "small_part_of_material : +76 = 76",
        "own_king_in_centre f6 : +14 = 90",
        "enemy_king_off_centre h8 : +40 = 130",
        "piece_far_from_king b1 : -12 = 118",
        "piece_not_attacked b1 : +10 = 128",
        "not_enough_to_mate b1 : +4 = 132"}},
    EndingRow{"even rooks", "4k3/8/4K3/8/8/8/r7/7R w - - 0 1", pawnless, false, {
        "king_driven_to_rim e6 e8 : +20 = 20",
        "piece_not_attacked h1 : +6 = 26",
        "enemy_king_off_centre e6 : +3 = 29",
        "piece_not_attacked a2 : -6 = 23",
        "right_to_move : +3 = 26"}},
    EndingRow{"kings and pawns", "4k3/8/8/P6P/8/8/8/4K3 w - - 0 1", pawn_ending, true, {
        "material : +600 = 3026"}}), RowName<EndingRow>);
// clang-format on

TEST(EvaluationTrace, ATiedRookIsNamedWithItsPawn) {
    const EVALUATION_TRACE trace = TraceOf("1r4k1/6pp/8/8/8/1P6/6PP/1R4K1 w - - 0 1");
    ASSERT_FALSE(trace.steps.empty());
    EXPECT_EQ(TextOf(trace.steps.back()), "rook_tied_to_pawn b3 : -30 = " + std::to_string(trace.score));
}

TEST(EvaluationTrace, ChecksThatHoldAQueenEndingAreNamed) {
    const EVALUATION_TRACE trace = TraceOf("6k1/5p2/8/8/3q4/8/8/1Q4K1 w - - 0 1");
    const auto found = std::find_if(trace.steps.begin(), trace.steps.end(),
                                    [](const STEP_RECORD& step) { return step.rule == Rule::checks_may_hold; });
    ASSERT_NE(found, trace.steps.end());
    EXPECT_EQ(found->effect, Effect::scales);
    EXPECT_EQ(found->side, white);
}

TEST(EvaluationTrace, PawnsOfAPawnEndingCountThreeTimes) {
    const EVALUATION_TRACE trace = TraceOf("8/8/8/P5k1/8/8/8/K7 w - - 0 1");
    for (const TERM_RECORD& term : trace.terms) {
        const bool is_own_term = term.term == Term::pawn_race || term.term == Term::spare_pawn_moves ||
                                 term.term == Term::passed_pawns_on_both_rims || term.term == Term::reach_of_kings;
        EXPECT_EQ(term.times, is_own_term ? 1 : 3) << name_of(term.term);
    }
    const RULE_RECORD* const pawn = Find(trace, Rule::passed_pawn, white);
    ASSERT_NE(pawn, nullptr);
    EXPECT_EQ(pawn->positional, 3 * (9 * 85 / 8));
    EXPECT_NE(Find(trace, Rule::runner_against_king, white), nullptr);
}

TEST(EvaluationTrace, SettledScoresHaveNoTerms) {
    const EVALUATION_TRACE trace = TraceOf("4k3/8/8/8/8/8/8/4KR2 w - - 0 1");
    EXPECT_EQ(trace.position_type, pawnless);
    EXPECT_TRUE(trace.terms.empty());
    EXPECT_TRUE(trace.rules.empty());
    EXPECT_FALSE(trace.steps.empty());
    EXPECT_GT(trace.score, 500);
}

}  // namespace
