#include "evaluation/rules/term.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::array<std::string_view, static_cast<std::size_t>(Term::reach_of_kings) + 1> names = {
    "passed_pawns",
    "material_imbalance",
    "unstoppable_pawns",
    "bishop_pair",
    "pawn_squares",
    "backward_pawns",
    "isolated_pawns",
    "isolated_queen_pawn",
    "duo_and_defended_pawns",
    "doubled_pawns",
    "defended_passed_pawns",
    "connected_passed_pawns",
    "pawn_chains",
    "pawn_majorities",
    "centre_squares",
    "centre_patterns",
    "pawns_alone",
    "majority_and_king",
    "blocked_centre_pawns",
    "isolated_queen_pawn_and_pieces",
    "passed_pawns_and_pieces",
    "knights",
    "bishops",
    "rooks",
    "queens",
    "patterns",
    "space",
    "activity",
    "king_safety",
    "knight_mobility",
    "pawn_balance",
    "king_placement",
    "checked_unstoppable_pawns",
    "pawn_race",
    "spare_pawn_moves",
    "passed_pawns_on_both_rims",
    "reach_of_kings",
};
static_assert(names.back() == "reach_of_kings");

}  // namespace

std::string_view name_of(Term term) noexcept { return names[static_cast<std::size_t>(term)]; }
