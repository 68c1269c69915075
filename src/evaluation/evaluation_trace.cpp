#include "evaluation/evaluation_trace.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "bitbases/bitbases.h"
#include "evaluation/blend.h"
#include "evaluation/context/view.h"
#include "evaluation/endings/ending.h"
#include "evaluation/endings/ending_walk.h"
#include "evaluation/endings/pawn_ending.h"
#include "evaluation/endings/pawnless.h"
#include "evaluation/endings/queen_ending.h"
#include "evaluation/endings/rook_ending.h"
#include "evaluation/endings/wrong_bishop.h"
#include "evaluation/evaluate.h"
#include "evaluation/king/places.h"
#include "evaluation/middle_game_walk.h"
#include "search/tables/hash.h"

namespace {

/// In an ending both halves are one value.
SCORE_PAIR pair_of(SCORE_PAIR pair) { return pair; }
SCORE_PAIR pair_of(int value) { return {value, value}; }

SCORE_PAIR operator*(int times, SCORE_PAIR pair) { return {times * pair.positional(), times * pair.reckless()}; }

/// Writes down every term with the rules that were told since the last one.
template <class Value>
class TermRecorder {
  public:
    TermRecorder(TRACED_CONTEXT& context, EVALUATION_TRACE& trace) : context_(context), trace_(trace) {}

    void OfSides(Term term, const SIDES<Value>& values, int times = 1) {
        const TERM_RECORD record = RecordOf(term, values, times);
        trace_.sum += record.sum;
        Record(record);
    }
    void OfBoth(Term term, Value value, int times = 1) {
        const SCORE_PAIR sum = times * pair_of(value);
        trace_.sum += sum;
        Record({term, times, false, false, {}, {}, sum, Counters()});
    }
    void OfPawnsAlone(Term term, const SIDES<Value>& values, int times = 1) {
        TERM_RECORD record = RecordOf(term, values, times);
        record.is_part = true;
        record.counters = {.pressure = {context_.pawn_pressure[white], context_.pawn_pressure[black]},
                           .cover = {context_.pawn_cover[white], context_.pawn_cover[black]}};
        Record(record);
    }

  private:
    [[nodiscard]] TERM_RECORD RecordOf(Term term, const SIDES<Value>& values, int times) const {
        return {term,
                times,
                false,
                true,
                times * pair_of(values.of_white),
                times * pair_of(values.of_black),
                times * pair_of(values.sum()),
                Counters()};
    }
    void Record(const TERM_RECORD& term) {
        trace_.terms.push_back(term);
        for (const TOLD_RULE& told : context_.told) {
            const int reckless = std::is_same_v<Value, int> ? told.positional : told.reckless;
            trace_.rules.push_back({term.term, told.rule, told.side, told.squares, term.times * told.positional,
                                    term.times * reckless, told.points});
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
    trace.full_score = trace.material + turned(board, trace.blended);
}

/// The rules that were told after the last term are the steps to the score.
void record_steps(const TRACED_CONTEXT& context, const BOARD& board, EVALUATION_TRACE& trace) {
    int score = turned(board, trace.sum.positional());
    for (const TOLD_RULE& told : context.told) {
        const int value = turned_from(told.side, board, told.positional);
        const int before = std::exchange(score, told.effect == Effect::adds ? score + value : value);
        trace.steps.push_back({told.rule, told.side, told.squares, told.effect, score - before, told.share, score});
    }
    trace.full_score = score;
}

/// Gives the score, for the side to move.
int trace_plain_ending(TRACED_CONTEXT& context, const BOARD& board, EVALUATION_TRACE& trace) {
    TermRecorder<int> recorder(context, trace);
    const RunnerCheck check = walk_first_ending_terms(context, board, recorder);
    find_places(context, board);
    walk_other_ending_terms(context, board, check, recorder);
    return turned(board, score_of_ending(context, board, trace.sum.positional()));
}

void trace_pawn_ending(TRACED_CONTEXT& context, const BOARD& board, EVALUATION_TRACE& trace) {
    TermRecorder<int> recorder(context, trace);
    walk_first_pawn_ending_terms(context, board, recorder);
    find_places(context, board);
    walk_other_pawn_ending_terms(context, board, recorder);
    static_cast<void>(score_of_pawn_ending(context, board, trace.sum.positional()));
}

void trace_ending(TRACED_CONTEXT& context, const BOARD& board, EVALUATION_TRACE& trace) {
    switch (trace.position_type) {
        case pawn_ending:
            return trace_pawn_ending(context, board, trace);
        case pawnless:
            static_cast<void>(evaluate_pawnless(context, board));
            return;
        case rook_ending:
            if (single_rook_and_pawn(context, board)) return;
            break;
        default:
            break;
    }
    if (wrong_bishop_rule(context, board)) return;
    const int score = trace_plain_ending(context, board, trace);
    if (trace.position_type == rook_ending) static_cast<void>(rooks_tied_to_pawns(context, board));
    if (trace.position_type == queen_ending) static_cast<void>(score_of_queen_ending(context, board, score));
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
        default:
            trace_ending(context, board, trace);
            record_steps(context, board, trace);
    }
    return trace;
}
