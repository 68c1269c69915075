#include "evaluation/endings/pawn_ending.h"

#include <cstdlib>

#include "chess/attacks.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/endings/ending.h"
#include "evaluation/endings/unstoppable_pawns.h"
#include "evaluation/king/places.h"
#include "evaluation/pawns/passed_pawns.h"
#include "evaluation/pawns/pawn_structure.h"

namespace {

/// What the terms after the lazy test are taken to add at most, in centipawns.
constexpr int lazy_margin = 3000;
/// Pawns are all there is: everything about them counts three times.
constexpr int weight = 3;

/// Pawns on their first square with both steps open: moves to spare.
template <Colour Us>
int spare_moves(const EVALUATION_CONTEXT& context, const BOARD& board) {
    const Bitboard open = context.pawns[Us].advance_squares;
    const Bitboard one = one_ahead<Us>(board.side(Us).pawns & ranks<Us>(1, 1)) & open;
    return 16 * PopCount(one_ahead<Us>(one) & open);
}

/// Passed pawns so far apart that no king stops both.
template <Colour Us>
int passed_on_both_rims(const EVALUATION_CONTEXT& context) {
    const Bitboard passed = context.pawns[Us].passed;
    return (passed & files(0, 1)) != 0 && (passed & files(6, 7)) != 0 ? 60 : 0;
}

int reach_of_kings(const EVALUATION_CONTEXT& context, const BOARD& board) {
    const KingReach reach =
        ReachableSquares(board, context.pawns[white].front_passed, context.pawns[black].front_passed);
    return weight * (PopCount(reach.white) - PopCount(reach.black));
}

}  // namespace

EVALUATION_RESULT evaluate_pawn_ending(EVALUATION_CONTEXT& context, const BOARD& board, int bound) noexcept {
    const auto turned = [&](int score) { return board.side_to_move == white ? score : -score; };
    // In this order: the race reads what the passed pawns leave.
    int sum = weight * passed_pawns_ending(context, board);
    sum += race(context, board);
    const int material = board.frame().material_balance;
    const int estimate = limit_to_draw_score(turned(material) + sum, context.settings->draw_score, board);
    const int gap = bound - turned(estimate);
    if (std::abs(gap) > lazy_margin) return lazy_answer(gap <= 0, bound);

    find_places(context, board);
    sum += weight * pawn_structure_ending(context, board);
    sum += spare_moves<white>(context, board) - spare_moves<black>(context, board);
    sum += passed_on_both_rims<white>(context) - passed_on_both_rims<black>(context);
    sum += reach_of_kings(context, board);
    return {.score = weight * material + turned(sum)};
}
