#include "evaluation/rules/term.h"

#include <array>
#include <cstddef>

namespace {

struct NAMED_TERM {
    Term term;
    std::string_view name;
};

/// One row for each term, in the order of the enumeration.
constexpr auto names = std::to_array<NAMED_TERM>({
    {Term::passed_pawns, "passed_pawns"},
    {Term::material_imbalance, "material_imbalance"},
    {Term::unstoppable_pawns, "unstoppable_pawns"},
    {Term::bishop_pair, "bishop_pair"},
    {Term::pawn_squares, "pawn_squares"},
    {Term::backward_pawns, "backward_pawns"},
    {Term::isolated_pawns, "isolated_pawns"},
    {Term::isolated_queen_pawn, "isolated_queen_pawn"},
    {Term::duo_and_defended_pawns, "duo_and_defended_pawns"},
    {Term::doubled_pawns, "doubled_pawns"},
    {Term::defended_passed_pawns, "defended_passed_pawns"},
    {Term::connected_passed_pawns, "connected_passed_pawns"},
    {Term::pawn_chains, "pawn_chains"},
    {Term::pawn_majorities, "pawn_majorities"},
    {Term::centre_squares, "centre_squares"},
    {Term::centre_patterns, "centre_patterns"},
    {Term::pawns_alone, "pawns_alone"},
    {Term::majority_and_king, "majority_and_king"},
    {Term::blocked_centre_pawns, "blocked_centre_pawns"},
    {Term::isolated_queen_pawn_and_pieces, "isolated_queen_pawn_and_pieces"},
    {Term::passed_pawns_and_pieces, "passed_pawns_and_pieces"},
    {Term::knights, "knights"},
    {Term::bishops, "bishops"},
    {Term::rooks, "rooks"},
    {Term::queens, "queens"},
    {Term::patterns, "patterns"},
    {Term::space, "space"},
    {Term::activity, "activity"},
    {Term::king_safety, "king_safety"},
    {Term::knight_mobility, "knight_mobility"},
    {Term::pawn_balance, "pawn_balance"},
    {Term::king_placement, "king_placement"},
    {Term::checked_unstoppable_pawns, "checked_unstoppable_pawns"},
    {Term::pawn_race, "pawn_race"},
    {Term::spare_pawn_moves, "spare_pawn_moves"},
    {Term::passed_pawns_on_both_rims, "passed_pawns_on_both_rims"},
    {Term::reach_of_kings, "reach_of_kings"},
});

consteval bool rows_stand_in_order() {
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (static_cast<std::size_t>(names[i].term) != i) return false;
    }
    return true;
}
static_assert(rows_stand_in_order());
static_assert(names.size() == static_cast<std::size_t>(Term::number_of_terms));

}  // namespace

std::string_view name_of(Term term) noexcept { return names[static_cast<std::size_t>(term)].name; }
