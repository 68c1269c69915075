#include "evaluation/evaluation_trace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "chess/notation.h"
#include "evaluation/endings/ending.h"
#include "evaluation/endings/scaling.h"
#include "evaluation/pieces/bishops.h"
#include "support/evaluation_builder.h"
#include "support/random_games.h"

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

TEST(EvaluationTrace, RulesAddUpToTermsAndTermsToTheScore) {
    constexpr std::uint32_t seed = 78;
    int pairs = 0;
    int endings = 0;
    ForEachRandomPosition(seed, 112, 120, [&](BOARD& board, const std::vector<Move>& /*moves*/) {
        if (testing::Test::HasFailure()) return;
        const EVALUATION_TRACE trace = trace_evaluation(board, 0);
        if (trace.terms.empty()) return;
        SCOPED_TRACE(FenOf(board));
        ExpectRulesAddUp(trace);
        if (trace.is_blended) {
            ++pairs;
            ExpectPointsAddUp(trace);
            EvaluationBuilder position(FenOf(board));
            EXPECT_EQ(position.FullScore(), trace.material + ForSideToMove(board, trace.blended));
        } else if (trace.position_type != rook_ending && trace.position_type != queen_ending) {
            ++endings;
            int score = ForSideToMove(board, trace.material) + trace.sum.positional();
            if (std::abs(trace.material) < 500) score = scale_ending(score, has_opposite_bishops(board), board);
            EXPECT_EQ(trace.score, ForSideToMove(board, limit_to_draw_score(score, 0, board)));
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

TEST(EvaluationTrace, SettledScoresHaveNoTerms) {
    const EVALUATION_TRACE trace = TraceOf("4k3/8/8/8/8/8/8/4KR2 w - - 0 1");
    EXPECT_EQ(trace.position_type, pawnless);
    EXPECT_TRUE(trace.terms.empty());
    EXPECT_TRUE(trace.rules.empty());
    EXPECT_GT(trace.score, 500);
}

}  // namespace
