#include "web/evaluation_answer.h"

#include <array>
#include <string>
#include <vector>

#include "chess/bits.h"
#include "chess/notation.h"
#include "evaluation/evaluation_trace.h"

namespace VorkaWeb {

namespace {

JsonValue Numbers(std::initializer_list<int> numbers) {
    return JsonValue::Array(numbers, [](int number) { return number; });
}

JsonValue Pair(SCORE_PAIR pair) { return Numbers({pair.positional(), pair.reckless()}); }

JsonValue Squares(Bitboard squares) {
    std::vector<std::string> names;
    for (Square s = a1; s <= h8; ++s) {
        if (Has(squares, s)) names.push_back(SquareToString(s));
    }
    return JsonValue::Array(names, [](const std::string& name) { return name; });
}

/// By wing: queen side, centre, king side.
JsonValue Points(const WingCounters& counters) {
    return Numbers({counters[queen_side], counters[centre], counters[king_side]});
}

JsonValue Sides(const std::array<WingCounters, 2>& counters) {
    return JsonValue::Object({{"white", Points(counters[white])}, {"black", Points(counters[black])}});
}

JsonValue Counters(const COUNTER_POINTS& points) {
    return JsonValue::Object(
        {{"pressure", Sides(points.pressure)}, {"cover", Sides(points.cover)}, {"activity", points.activity}});
}

std::string_view SideName(Colour side) { return side == white ? "white" : "black"; }

JsonValue Term(const TERM_RECORD& record) {
    return JsonValue::Object({{"name", name_of(record.term)},
                              {"times", record.times},
                              {"isPart", record.is_part},
                              {"hasSides", record.has_sides},
                              {"white", Pair(record.of_white)},
                              {"black", Pair(record.of_black)},
                              {"sum", Pair(record.sum)},
                              {"counters", Counters(record.counters)}});
}

JsonValue Rule(const RULE_RECORD& record) {
    return JsonValue::Object({{"term", name_of(record.term)},
                              {"name", name_of(record.rule)},
                              {"side", SideName(record.side)},
                              {"squares", Squares(record.squares)},
                              {"value", Numbers({record.positional, record.reckless})},
                              {"points", Counters(record.points)}});
}

std::string_view EffectName(Effect effect) {
    constexpr std::array<std::string_view, 4> names = {"adds", "scales", "limits", "sets"};
    return names[static_cast<std::size_t>(effect)];
}

JsonValue Step(const STEP_RECORD& record) {
    return JsonValue::Object({{"name", name_of(record.rule)},
                              {"side", SideName(record.side)},
                              {"squares", Squares(record.squares)},
                              {"effect", EffectName(record.effect)},
                              {"change", record.change},
                              {"share", Numbers({record.share.part, record.share.whole})},
                              {"score", record.score}});
}

JsonValue King(const KING_DANGER& king) {
    return JsonValue::Object({{"attack", king.attack},
                              {"cover", king.cover},
                              {"attackFactor", king.attack_factor},
                              {"coverFactor", king.cover_factor}});
}

}  // namespace

JsonValue EvaluationAnswer(const BOARD& board, int personality) {
    const EVALUATION_TRACE trace = trace_evaluation(board, personality);
    return JsonValue::Object({{"type", trace.position_type},
                              {"mover", SideName(board.mover())},
                              {"material", trace.material},
                              {"score", trace.score},
                              {"fullScore", trace.full_score},
                              {"terms", JsonValue::Array(trace.terms, Term)},
                              {"rules", JsonValue::Array(trace.rules, Rule)},
                              {"sum", Pair(trace.sum)},
                              {"steps", JsonValue::Array(trace.steps, Step)},
                              {"isBlended", trace.is_blended},
                              {"endgameWeight", trace.endgame_weight},
                              {"openness", trace.openness},
                              {"whiteKing", King(trace.king[white])},
                              {"blackKing", King(trace.king[black])},
                              {"blendWeight", trace.blend_weight},
                              {"blended", trace.blended}});
}

}  // namespace VorkaWeb
