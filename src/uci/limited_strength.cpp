#include "uci/limited_strength.h"

#include <algorithm>
#include <functional>

namespace VorkaUci {

void LimitedStrength::Begin(int elo, SearchLimits& limits) {
    const Strength strength = StrengthOf(elo);
    limits.max_nodes = limits.max_nodes == 0 ? strength.nodes : std::min(limits.max_nodes, strength.nodes);
    blur_ = strength.blur;
    if (blur_ > 0) limits.lines = std::max(limits.lines, candidate_count);
    nodes_ = limits.max_nodes;
    candidates_.clear();
    earlier_candidates_.clear();
}

/// A better line of an iteration takes the place of the one before; those after it are of the iteration before.
void LimitedStrength::Note(const SearchInfo& info) {
    if (info.principal_variation.empty()) return;
    if (info.line == 0 && candidates_.size() > 1) earlier_candidates_ = candidates_;
    const auto place = static_cast<std::size_t>(info.line);
    const Move move = info.principal_variation.front().first;
    candidates_.resize(std::min(candidates_.size(), place));
    candidates_.push_back({.move = move, .score = info.score});
}

/// An iteration that was cut off has fewer lines than the one before it.
Move LimitedStrength::Choose(std::mt19937_64& chance) const {
    if (blur_ == 0) return INVALID;
    const auto& most = candidates_.size() < earlier_candidates_.size() ? earlier_candidates_ : candidates_;
    return ChooseBlurred(most, blur_, std::ref(chance));
}

}  // namespace VorkaUci
