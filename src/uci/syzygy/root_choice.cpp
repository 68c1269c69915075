#include "uci/syzygy/root_choice.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>

#include "search/tables/score.h"

namespace VorkaUci {

namespace {

/// A win by the tables is told as a mate after so many half moves, and those to the next step; never nearer than the
/// wins of the bitbases, and above the least score of a mate.
constexpr int plies_of_win = 300;
constexpr int furthest_step = 200;
/// A mate that is nearer than this was found by the search.
constexpr int plies_of_search = 55;

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
    if (infinity_bound - std::abs(score) <= plies_of_search) return score;
    const int win = infinity_bound - plies_of_win - std::min(known.distance, furthest_step);
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
