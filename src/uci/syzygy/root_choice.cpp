#include "uci/syzygy/root_choice.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>

#include "search/tables/score.h"

namespace VorkaUci {

namespace {

/// More half moves to the next step than this are told as so many: the score stays one of a mate.
constexpr int furthest_step = 200;

/// Larger is better.
std::tuple<TableResult, int> WorthOf(const TableMove& candidate) {
    if (candidate.result > TableResult::draw) return {candidate.result, -candidate.distance};
    if (candidate.result < TableResult::draw) return {candidate.result, candidate.distance};
    return {TableResult::draw, 0};
}

}  // namespace

std::vector<Move> BestTableMoves(const std::vector<TableMove>& moves) {
    std::vector<Move> best;
    const auto first = std::max_element(moves.begin(), moves.end(), [](const TableMove& one, const TableMove& other) {
        return WorthOf(one) < WorthOf(other);
    });
    for (const TableMove& candidate : moves) {
        if (WorthOf(candidate) == WorthOf(*first)) best.push_back(candidate.move);
    }
    return best;
}

const TableMove* FindTableMove(const std::vector<TableMove>& moves, Move move) {
    const auto found =
        std::find_if(moves.begin(), moves.end(), [move](const TableMove& known) { return known.move == move; });
    return found == moves.end() ? nullptr : &*found;
}

int KnownScore(const TableMove& known, int score, int draw_score) {
    if (infinity_bound - std::abs(score) <= furthest_mate) return score;
    const int win = infinity_bound - plies_of_table_win - std::min(known.distance, furthest_step);
    switch (known.result) {
        case TableResult::win:
            return win;
        case TableResult::loss:
            return -win;
        default:
            return draw_score;
    }
}

}  // namespace VorkaUci
