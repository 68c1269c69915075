#include "uci/strength.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace VorkaUci {

namespace {

/// Measured by games (docs/opponents.md): from 1400 on against a reference, below against the next row.
constexpr Strength strength_table[] = {
    Strength{.elo = 1000, .nodes = 400, .blur = 110},  Strength{.elo = 1200, .nodes = 750, .blur = 70},
    Strength{.elo = 1400, .nodes = 1200, .blur = 50},  Strength{.elo = 1600, .nodes = 5000, .blur = 30},
    Strength{.elo = 1800, .nodes = 25000, .blur = 15}, Strength{.elo = 2000, .nodes = 500000, .blur = 0},
};

static_assert(std::begin(strength_table)->elo == weakest_elo &&
              std::prev(std::end(strength_table))->elo == strongest_elo);

}  // namespace

std::span<const Strength> StrengthTable() { return strength_table; }

Strength StrengthOf(int elo) {
    elo = std::clamp(elo, std::begin(strength_table)->elo, std::prev(std::end(strength_table))->elo);
    const auto* const above = std::find_if(std::next(std::begin(strength_table)), std::prev(std::end(strength_table)),
                                           [elo](const Strength& row) { return row.elo >= elo; });
    const Strength& low = *std::prev(above);
    const Strength& high = *above;
    const double share = static_cast<double>(elo - low.elo) / (high.elo - low.elo);
    // Nodes grow by factors.
    const double nodes = static_cast<double>(low.nodes) *
                         std::pow(static_cast<double>(high.nodes) / static_cast<double>(low.nodes), share);
    return {.elo = elo,
            .nodes = static_cast<std::uint64_t>(std::llround(nodes)),
            .blur = low.blur + static_cast<int>(std::lround(share * (high.blur - low.blur)))};
}

}  // namespace VorkaUci
