#include "evaluation/endings/queen_ending.h"

#include <array>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/context/view.h"
#include "evaluation/endings/ending.h"
#include "evaluation/pieces/ending_tables.h"
#include "evaluation/rules/tell.h"

namespace {

template <Colour Us>
int queen_in_centre(Square queen) {
    return ending_tables::value_at<Us>(ending_tables::queen_centralisation, queen) / 2;
}

template <Colour Us>
int foremost_passed_pawn(Square pawn) {
    static constexpr std::array<int, 7> by_rank = {-127, -50, -52, -30, 10, 75, 160};
    return at(by_rank, rank_seen<Us>(pawn));
}
constexpr int no_passed_pawn = -45;

/// Material says little where a queen can check: half of it is taken back.
int material_counts_half(int material) { return -(material / 2); }
constexpr int queens_right_to_move = 24;

template <Colour Us, class Context>
int queen_and_pawn(Context& context, const BOARD& board) {
    const Square queen = FindLowestBit(board.side(Us).queens);
    const Bitboard passed = context.pawns[Us].front_passed;
    const int value = tell<Us>(context, Rule::queen_in_centre, Bit(queen), queen_in_centre<Us>(queen));
    if (passed == 0) return value + tell<Us>(context, Rule::no_passed_pawn, 0, no_passed_pawn);
    const Square pawn = foremost<Us>(passed);
    return value + tell<Us>(context, Rule::foremost_passed_pawn, Bit(pawn), foremost_passed_pawn<Us>(pawn));
}

// --- What checks may hold of a worse position ---

/// Checks of the side to move, with and without checks of the other side.
constexpr SHARE checks_may_hold = {3, 8};
constexpr SHARE checks_of_both = {5, 8};

constexpr SHARE king_without_pawns = {4, 8};
constexpr SHARE king_hidden_by_pawns(int pawns) { return {6 + pawns, 8}; }

/// From where the queen of `Us` can check the enemy king and neither pawn, queen nor king guards.
template <Colour Us>
Bitboard safe_checks(const EVALUATION_CONTEXT& context, const BOARD& board) {
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    const Bitboard reach = board.QueenAttacks(FindLowestBit(board.side(Us).queens)) & ~board.side(Us).all;
    const Bitboard guarded = context.pawns[Opponent(Us)].attacks | bitboard_tables.king_attacks[enemy.king_square] |
                             board.QueenAttacks(FindLowestBit(enemy.queens));
    return reach & board.QueenAttacks(enemy.king_square) & ~guarded;
}

/// What is left of a worse position when checks may hold it: `value` is negative, the checked king is the enemy's.
template <Colour Us, class Context>
int with_checks(Context& context, const BOARD& board, int value) {
    const Bitboard checks = safe_checks<Us>(context, board);
    if (checks == 0) return value;
    const SHARE share = safe_checks<Opponent(Us)>(context, board) != 0 ? checks_of_both : checks_may_hold;
    const int held = tell_scaled(context, Us, Rule::checks_may_hold, checks, share, value);

    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    const Bitboard shelter = bitboard_tables.king_attacks[enemy.king_square] & enemy.pawns & files(1, 6);
    return shelter == 0
               ? tell_scaled(context, Us, Rule::king_without_pawns, Bit(enemy.king_square), king_without_pawns, held)
               : tell_scaled(context, Us, Rule::king_hidden_by_pawns, shelter, king_hidden_by_pawns(PopCount(shelter)),
                             held);
}

}  // namespace

template <class Context>
int score_of_queen_ending(Context& context, const BOARD& board, int plain_score) noexcept {
    const Colour to_move = board.mover();
    int value = plain_score;
    value +=
        tell(context, to_move, Rule::material_counts_half, 0, material_counts_half(board.frame().material_balance));
    value += tell(context, to_move, Rule::queens_right_to_move, 0, queens_right_to_move);
    const int of_white = queen_and_pawn<white>(context, board);
    value += turned(board, of_white - queen_and_pawn<black>(context, board));
    if (value >= 0) return value;
    return to_move == white ? with_checks<white>(context, board, value) : with_checks<black>(context, board, value);
}

EVALUATION_RESULT evaluate_queen_ending(EVALUATION_CONTEXT& context, const BOARD& board, int bound) noexcept {
    const EVALUATION_RESULT ending = evaluate_ending(context, board, bound);
    return ending.lazy ? ending : EVALUATION_RESULT{.score = score_of_queen_ending(context, board, ending.score)};
}

template int score_of_queen_ending(EVALUATION_CONTEXT& context, const BOARD& board, int plain_score) noexcept;
template int score_of_queen_ending(TRACED_CONTEXT& context, const BOARD& board, int plain_score) noexcept;
