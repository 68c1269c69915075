#include "uci/syzygy/root_choice.h"

#include <algorithm>
#include <tuple>

namespace VorkaUci {

namespace {

constexpr int draw = 2;

/// Larger is better.
std::tuple<int, int> WorthOf(const TableMove& candidate) {
    if (candidate.result > draw) return {candidate.result, -candidate.distance};
    if (candidate.result < draw) return {candidate.result, candidate.distance};
    return {draw, 0};
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

}  // namespace VorkaUci
