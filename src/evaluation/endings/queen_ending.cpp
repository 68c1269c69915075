#include "evaluation/endings/queen_ending.h"

#include <array>
#include <cstddef>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/endings/ending.h"
#include "evaluation/pieces/ending_tables.h"

namespace {

/// The foremost passed pawn, by rank; without any -45.
template <Colour Us>
int foremost_pawn(const EVALUATION_CONTEXT& context) {
    static constexpr std::array<int, 7> by_rank = {-127, -50, -52, -30, 10, 75, 160};
    const Bitboard passed = context.pawns[Us].front_passed;
    if (passed == 0) return -45;
    return by_rank[static_cast<std::size_t>(rank_seen<Us>(foremost<Us>(passed)))];
}

template <Colour Us>
int queen_and_pawn(const EVALUATION_CONTEXT& context, const BOARD& board) {
    const Square queen = FindLowestBit(board.side(Us).queens);
    return ending_tables::value_at<Us>(ending_tables::queen_centralisation, queen) / 2 + foremost_pawn<Us>(context);
}

/// Whether the queen of `Us` can check the enemy king from where neither pawn, queen nor king guards.
template <Colour Us>
bool has_safe_check(const EVALUATION_CONTEXT& context, const BOARD& board) {
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    const Bitboard reach = board.QueenAttacks(FindLowestBit(board.side(Us).queens)) & ~board.side(Us).all;
    const Bitboard guarded = context.pawns[Opponent(Us)].attacks | bitboard_tables.king_attacks[enemy.king_square] |
                             board.QueenAttacks(FindLowestBit(enemy.queens));
    return (reach & board.QueenAttacks(enemy.king_square) & ~guarded) != 0;
}

/// What is left of a worse position when checks may hold it: `value` is negative, the checked king is the enemy's.
template <Colour Us>
int with_checks(const EVALUATION_CONTEXT& context, const BOARD& board, int value) {
    if (!has_safe_check<Us>(context, board)) return value;
    const int share = (has_safe_check<Opponent(Us)>(context, board) ? 5 : 3) * value;
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    const int shelter = PopCount(bitboard_tables.king_attacks[enemy.king_square] & enemy.pawns & files(1, 6));
    return (shelter == 0 ? 4 : 6 + shelter) * (share / 8) / 8;
}

}  // namespace

EVALUATION_RESULT evaluate_queen_ending(EVALUATION_CONTEXT& context, const BOARD& board, int bound) noexcept {
    const EVALUATION_RESULT ending = evaluate_ending(context, board, bound);
    if (ending.lazy) return ending;
    const bool white_to_move = board.side_to_move == white;
    const int queens = queen_and_pawn<white>(context, board) - queen_and_pawn<black>(context, board);
    const int value = ending.score - board.frame().material_balance / 2 + 24 + (white_to_move ? queens : -queens);
    if (value >= 0) return {.score = value};
    return {.score =
                white_to_move ? with_checks<white>(context, board, value) : with_checks<black>(context, board, value)};
}
