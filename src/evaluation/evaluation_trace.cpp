#include "evaluation/evaluation_trace.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "bitbases/bitbases.h"
#include "evaluation/blend.h"
#include "evaluation/endings/ending_walk.h"
#include "evaluation/endings/scaling.h"
#include "evaluation/evaluate.h"
#include "evaluation/king/places.h"
#include "evaluation/middle_game_walk.h"
#include "search/tables/hash.h"

namespace {

/// In an ending both halves are one value.
SCORE_PAIR pair_of(SCORE_PAIR pair) { return pair; }
SCORE_PAIR pair_of(int value) { return {value, value}; }

/// Writes down every term with the rules that were told since the last one.
template <class Value>
class TermRecorder {
  public:
    TermRecorder(TRACED_CONTEXT& context, EVALUATION_TRACE& trace) : context_(context), trace_(trace) {}

    void OfSides(Term term, const SIDES<Value>& values) {
        trace_.sum += pair_of(values.sum());
        Record(
            {term, false, true, pair_of(values.of_white), pair_of(values.of_black), pair_of(values.sum()), Counters()});
    }
    void OfBoth(Term term, Value value) {
        trace_.sum += pair_of(value);
        Record({term, false, false, {}, {}, pair_of(value), Counters()});
    }
    void OfPawnsAlone(Term term, const SIDES<Value>& values) {
        const COUNTER_POINTS counters{.pressure = {context_.pawn_pressure[white], context_.pawn_pressure[black]},
                                      .cover = {context_.pawn_cover[white], context_.pawn_cover[black]}};
        Record({term, true, true, pair_of(values.of_white), pair_of(values.of_black), pair_of(values.sum()), counters});
    }

  private:
    void Record(const TERM_RECORD& term) {
        trace_.terms.push_back(term);
        for (const TOLD_RULE& told : context_.told) {
            const int reckless = std::is_same_v<Value, int> ? told.positional : told.reckless;
            trace_.rules.push_back(
                {term.term, told.rule, told.side, told.squares, told.positional, reckless, told.points});
        }
        context_.told.clear();
        context_.ForgetPoints();
    }
    [[nodiscard]] COUNTER_POINTS Counters() const {
        return {.pressure = {context_.pressure[white], context_.pressure[black]},
                .cover = {context_.cover[white], context_.cover[black]},
                .activity = context_.activity};
    }

    TRACED_CONTEXT& context_;
    EVALUATION_TRACE& trace_;
};

template <PositionType Type>
void trace_pairs(TRACED_CONTEXT& context, const BOARD& board, EVALUATION_TRACE& trace) {
    TermRecorder<SCORE_PAIR> recorder(context, trace);
    walk_first_terms(context, board, recorder);
    find_places(context, board);
    walk_other_terms<Type>(context, board, recorder);

    constexpr bool is_middle_game = Type == middle_game;
    trace.is_blended = true;
    trace.endgame_weight = context.endgame_weight;
    trace.openness = context.openness;
    for (const Colour side : {white, black}) {
        trace.king[side] = {.attack = context.king_attack[side],
                            .cover = context.king_cover[side],
                            .attack_factor = context.attack_factor[side],
                            .cover_factor = context.cover_factor[side]};
    }
    trace.blend_weight = blend_weight(is_middle_game, context, board);
    trace.blended = blend(trace.sum, is_middle_game, context, board);
}

void trace_ending(TRACED_CONTEXT& context, const BOARD& board, EVALUATION_TRACE& trace) {
    TermRecorder<int> recorder(context, trace);
    const RunnerCheck check = walk_first_ending_terms(context, board, recorder);
    find_places(context, board);
    walk_other_ending_terms(context, board, check, recorder);
}

}  // namespace

EVALUATION_TRACE trace_evaluation(const BOARD& board, int personality) {
    const EVALUATION_SETTINGS settings{.draw_score = 0, .personality = static_cast<std::int16_t>(personality)};
    EVALUATION_TRACE trace;
    trace.position_type = classify_position(board, no_position_type);
    trace.material = board.frame().material_balance;
    HashTables tables;
    trace.score = evaluate_for_display(board, personality, tables, VorkaBitbases::Bitbases{});
    TRACED_CONTEXT context;
    context.settings = &settings;
    find_passed_pawns(context, board);
    switch (trace.position_type) {
        case opening:
            trace_pairs<opening>(context, board, trace);
            break;
        case middle_game:
            trace_pairs<middle_game>(context, board, trace);
            break;
        case pawn_ending:
        case pawnless:
            break;
        default:
            if (!wrong_bishop_rule(board)) trace_ending(context, board, trace);
    }
    return trace;
}
