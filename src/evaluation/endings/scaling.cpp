#include "evaluation/endings/scaling.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "evaluation/context/board_areas.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/rules/tell.h"

namespace {

// --- Few pawns ---

/// What is left of the score by the pawns of the winner: the fewer, the less.
SHARE few_pawns_to_win_with(Bitboard pawns) {
    static constexpr std::array<int, 9> eighths = {2, 4, 5, 6, 7, 8, 9, 9, 9};  // n = 0, 1, ..
    constexpr SHARE on_both_wings = {9, 8};
    const int count = PopCount(pawns);
    if (count <= 8) return {at(eighths, count), 8};
    // More than a game can bring.
    return (pawns & files(0, 2)) != 0 && (pawns & files(5, 7)) != 0 ? on_both_wings : SHARE{8, 8};
}
/// But that takes no more than half a pawn.
constexpr int few_pawns_cost_no_more = 50;

template <class Context>
int reduce_by_pawns(Context& context, Colour winner, Bitboard pawns, int value) {
    const SHARE share = few_pawns_to_win_with(pawns);
    const int reduced = tell_scaled(context, winner, Rule::few_pawns_to_win_with, pawns, share, value);
    return tell_limited(context, winner, Rule::few_pawns_cost_no_more, reduced,
                        std::max(reduced, value - few_pawns_cost_no_more));
}

// --- Bishops on different colours ---

constexpr SHARE opposite_bishops = {6, 8};
constexpr int opposite_bishops_cost_no_more = 250;

/// With no other pieces: the loser's pawns that the winner's bishop could attack.
Bitboard targets_of_bishop(const SIDE_PIECES& winner, const SIDE_PIECES& loser) {
    const bool is_light = (winner.bishops & light_squares) != 0;
    return loser.pawns & (is_light ? light_squares : ~light_squares);
}
/// They are what is left to play for.
SHARE opposite_bishops_by_targets(Bitboard targets) {
    static constexpr std::array<int, 9> eighths = {2, 4, 5, 6, 6, 6, 6, 6, 6};  // n = 0, 1, ..
    return {at(eighths, std::min(PopCount(targets), 8)), 8};
}

template <class Context>
int reduce_by_opposite_bishops(Context& context, Colour winning_side, const BOARD& board, int value) {
    constexpr int two_bishops = 6;  // material units
    const SIDE_PIECES& winner = board.side(winning_side);
    const SIDE_PIECES& loser = board.side(Opponent(winning_side));
    int reduced = tell_scaled(context, winning_side, Rule::opposite_bishops, winner.bishops | loser.bishops,
                              opposite_bishops, value);
    if (board.total_material == two_bishops) {
        const Bitboard targets = targets_of_bishop(winner, loser);
        reduced = tell_scaled(context, winning_side, Rule::opposite_bishops_by_targets, targets,
                              opposite_bishops_by_targets(targets), reduced);
    }
    return tell_limited(context, winning_side, Rule::opposite_bishops_cost_no_more, reduced,
                        std::max(reduced, value - opposite_bishops_cost_no_more));
}

}  // namespace

template <class Context>
int scale_ending(Context& context, int score, bool bishops_are_opposite, const BOARD& board) noexcept {
    const Colour winner = score >= 0 ? white : black;
    int value = reduce_by_pawns(context, winner, board.side(winner).pawns, std::abs(score));
    if (bishops_are_opposite) value = reduce_by_opposite_bishops(context, winner, board, value);
    return score >= 0 ? value : -value;
}

template int scale_ending(EVALUATION_CONTEXT& context, int score, bool bishops_are_opposite,
                          const BOARD& board) noexcept;
template int scale_ending(TRACED_CONTEXT& context, int score, bool bishops_are_opposite, const BOARD& board) noexcept;
