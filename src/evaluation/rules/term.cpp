#include "evaluation/rules/term.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::array<std::string_view, static_cast<std::size_t>(Term::checked_unstoppable_pawns) + 1> names = {
    "passed pawns",
    "material imbalance",
    "unstoppable pawns",
    "bishop pair",
    "pawn squares",
    "backward pawns",
    "isolated pawns",
    "isolated queen pawn",
    "duo and defended pawns",
    "doubled pawns",
    "defended passed pawns",
    "connected passed pawns",
    "pawn chains",
    "pawn majorities",
    "centre squares",
    "centre patterns",
    "pawns alone",
    "majority and king",
    "blocked centre pawns",
    "isolated queen pawn, pieces",
    "passed pawns and pieces",
    "knights",
    "bishops",
    "rooks",
    "queens",
    "patterns",
    "space",
    "activity",
    "king safety",
    "knight mobility",
    "pawn balance",
    "king placement",
    "checked unstoppable pawns",
};
static_assert(names.back() == "checked unstoppable pawns");

}  // namespace

std::string_view name_of(Term term) noexcept { return names[static_cast<std::size_t>(term)]; }
