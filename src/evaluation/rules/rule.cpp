#include "evaluation/rules/rule.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::array<std::string_view, static_cast<std::size_t>(Rule::rooks_against_isolated_pawns) + 1> names = {
    "rook_by_pawns",           "rook_by_squares_on_file",    "rooks_on_seventh",
    "rook_protects_rook",      "rooks_apart_by_queen",       "rook_beside_rook",
    "rook_behind_own_pawn",    "rook_without_sideways_move", "rook_may_change_to_free_file",
    "rook_among_closed_files", "rook_shut_in_by_king",       "rook_before_own_pawn",
    "rook_on_half_open_file",  "rook_on_only_open_file",     "rook_on_open_file",
    "rook_on_seventh",         "rook_on_kings_file",         "rook_beside_kings_file",
    "rook_against_queen",      "rook_ties_rook_to_pawn",     "rooks_against_isolated_pawns",
};
static_assert(names.back() == "rooks_against_isolated_pawns");

}  // namespace

std::string_view name_of(Rule rule) noexcept { return names[static_cast<std::size_t>(rule)]; }
