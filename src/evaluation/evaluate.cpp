#include "evaluation/evaluate.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>

#include "evaluation/endings/ending.h"
#include "evaluation/endings/pawn_ending.h"
#include "evaluation/endings/pawnless.h"
#include "evaluation/endings/queen_ending.h"
#include "evaluation/endings/rook_ending.h"
#include "evaluation/middle_game.h"
#include "evaluation/pawns/passed_pawns.h"
#include "evaluation/pawns/pawn_hash_entry.h"
#include "frame/base/checked_assert.h"
#include "frame/base/theory.h"
#include "frame/base/vocabulary.h"
#include "search/tables/hash.h"
#include "search/tables/score.h"

namespace {

/// Scores near a mate are never computed.
bool is_near_mate(int bound) { return std::abs(bound) >= mate_score_limit; }
int answer_near_mate(int bound) { return bound > 0 ? bound - 1 : bound; }

EVALUATION_RESULT run_routine(EVALUATION_CONTEXT& context, const BOARD& board, int bound, int position_type) {
    switch (position_type) {
        case opening:
            return evaluate_opening(context, board, bound);
        case middle_game:
            return evaluate_middle_game(context, board, bound);
        case rook_ending:
            return evaluate_rook_ending(context, board, bound);
        case queen_ending:
            return evaluate_queen_ending(context, board, bound);
        case pawn_ending:
            return evaluate_pawn_ending(context, board, bound);
        default:
            return evaluate_ending(context, board, bound);
    }
}

// --- What must hold before and after an evaluation; for debug builds: see theory.h ---

void assert_question_makes_sense(const EVALUATION_CONTEXT& context, const BOARD& board, int bound, int position_type) {
    using vocabulary::no_error_description;
    CHECKED_ASSERT(context.settings != nullptr && context.tables != nullptr, no_error_description);
    CHECKED_ASSERT(std::abs(bound) <= infinity_bound, no_error_description);
    CHECKED_ASSERT(opening <= position_type && position_type < no_position_type, no_error_description);
    // Both sides without pawns, or one that is far behind.
    CHECKED_ASSERT(position_type != pawnless || board.side(white).pawns == 0 || board.side(black).pawns == 0,
                   no_error_description);
}

void assert_evaluation_is_sound(const EVALUATION_CONTEXT& context, const BOARD& board, int bound,
                                const EVALUATION_RESULT& result) {
    using vocabulary::no_error_description;
    const auto is_share = [](double factor) { return 0.0 <= factor && factor <= 1.0; };
    CHECKED_ASSERT(std::abs(result.score) < mate_score_limit, no_error_description);
    CHECKED_ASSERT(!result.lazy || result.score == bound || result.score == bound - 1, no_error_description);
    CHECKED_ASSERT(is_share(context.endgame_weight), no_error_description);
    for (const Colour side : {white, black}) {
        CHECKED_ASSERT(is_share(context.attack_factor[side]), no_error_description);
        CHECKED_ASSERT(is_share(context.cover_factor[side]), no_error_description);
        const PAWN_INFO& pawns = context.pawns[side];
        CHECKED_ASSERT((pawns.passed & ~board.side(side).pawns) == 0, no_error_description);
        if (!context.pawn_entry_from_table && !context.pawn_facts_found) continue;
        CHECKED_ASSERT((pawns.front_passed & ~pawns.passed) == 0, no_error_description);
        CHECKED_ASSERT((pawns.isolated & ~board.side(side).pawns) == 0, no_error_description);
        CHECKED_ASSERT((pawns.backward & ~board.side(side).pawns) == 0, no_error_description);
    }
}

/// Facts of the position before that nobody may read, for debug builds: a rule that reads a fact before it is found
/// gives a score that is seen to be wrong.
void spoil_pawn_facts(EVALUATION_CONTEXT& context) { std::memset(context.pawns, 0xA5, sizeof(context.pawns)); }

/// Everything after the table of scores. The passed pawns are needed at once; the other pawn facts come after the lazy
/// test, from their table or built afresh, and a finished evaluation leaves there what it has built.
EVALUATION_RESULT evaluate_afresh(EVALUATION_CONTEXT& context, const BOARD& board, int bound, int position_type) {
    context.Clear();
    if constexpr (theory_is_checked) spoil_pawn_facts(context);
    context.pawn_entry = context.tables->pawn.Probe(board.frame().pawn_key, position_type);
    if (context.pawn_entry != nullptr)
        restore_passed_pawns(*context.pawn_entry, context, board);
    else
        find_passed_pawns(context, board);
    const EVALUATION_RESULT result = run_routine(context, board, bound, position_type);
    if constexpr (theory_is_checked) assert_evaluation_is_sound(context, board, bound, result);
    if (!result.lazy && context.pawn_facts_found) {
        context.tables->pawn.Store(construct_pawn_entry(context, board, position_type));
    }
    return result;
}

/// The score of a bound test: the greatest bound that `ask` does not find the position below.
template <class BoundTest>
int bisect(BoundTest ask) {
    int low = -infinity_bound;
    int high = infinity_bound;
    for (;;) {
        int middle = (low + high) / 2;
        if (middle == low) middle = high;
        if (ask(middle) < middle) {
            high = middle - 1;
            if (low >= high) return low;
        } else {
            low = middle;
            if (middle >= high) return low;
        }
    }
}

}  // namespace

int evaluate(EVALUATION_CONTEXT& context, const BOARD& board, int bound, int position_type) noexcept {
    if constexpr (theory_is_checked) assert_question_makes_sense(context, board, bound, position_type);
    if (is_near_mate(bound)) return answer_near_mate(bound);
    if (position_type == pawnless) return evaluate_pawnless(context, board);

    const EvaluationAnswer stored = context.tables->evaluation.Probe(board.key(), bound);
    if (stored != EvaluationAnswer::not_found) {
        return stored == EvaluationAnswer::below_threshold ? bound - 1 : bound;
    }
    const EVALUATION_RESULT result = evaluate_afresh(context, board, bound, position_type);
    if (!result.lazy) {
        context.tables->evaluation.Store({.key = board.key(), .score = static_cast<std::int16_t>(result.score)});
    }
    return result.score;
}

int exact_evaluation(EVALUATION_CONTEXT& context, const BOARD& board, int position_type) noexcept {
    return bisect([&](int bound) { return evaluate(context, board, bound, position_type); });
}

int full_evaluation(EVALUATION_CONTEXT& context, const BOARD& board, int position_type) noexcept {
    if (position_type == pawnless) return evaluate_pawnless(context, board);
    if (const auto known = context.tables->evaluation.ScoreOf(board.key())) return *known;
    // What stands before the lazy test seldom comes to more than its margin; where it does the question follows it.
    constexpr int step = 500;  // less than both margins together, so that none of the bounds between is passed over
    for (int bound = board.frame().material_balance;;) {
        const EVALUATION_RESULT result = evaluate_afresh(context, board, bound, position_type);
        if (!result.lazy) {
            context.tables->evaluation.Store({.key = board.key(), .score = static_cast<std::int16_t>(result.score)});
            return result.score;
        }
        bound += result.score >= bound ? step : -step;
    }
}

int evaluate_for_display(const BOARD& board, int personality, HashTables& tables,
                         const VorkaBitbases::Bitbases& bitbases) noexcept {
    const EVALUATION_SETTINGS settings{.draw_score = 0, .personality = static_cast<std::int16_t>(personality)};
    EVALUATION_CONTEXT context{&settings, &tables, &bitbases};
    const int position_type = classify_position(board, no_position_type);
    if (position_type == pawnless) return evaluate_pawnless(context, board);
    // The one full answer settles all later questions, as the table of scores would: asked again farther away, the
    // routine would stop at its lazy test and could contradict it.
    std::optional<int> known;
    return bisect([&](int bound) {
        if (is_near_mate(bound)) return answer_near_mate(bound);
        if (!known) {
            const EVALUATION_RESULT result = evaluate_afresh(context, board, bound, position_type);
            if (result.lazy) return result.score;
            known = result.score;
        }
        return *known < bound ? bound - 1 : bound;
    });
}
