#include <array>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/king/king_safety.h"
#include "evaluation/pieces/ending_tables.h"
#include "evaluation/rules/tell.h"

namespace {

/// By its square: with enough enemy pieces left it still hides, later it goes to the centre.
template <Colour Us>
int king_on_square_ending(const BOARD& board) {
    constexpr int few_units = 8;  // of material
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    const Square king = board.side(Us).king_square;
    if (5 * enemy.heavy_points + enemy.minor_points > few_units) {
        return ending_tables::value_at(ending_tables::king_normal, king);
    }
    return 2 * ending_tables::value_at(ending_tables::king_late, king);
}

/// A queen or two rooks against a king, by the men that stand around it.
template <Colour Us>
int heavy_pieces_against_king_ending(const BOARD& board) {
    static constexpr std::array<int, 9> by_guards = {-10, 15, 30, 40, 45, 50, 55, 60, 65};  // n = 0, 1, ..
    constexpr int with_queen = 100;
    constexpr int without_queen = 20;
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    if (board.side(Us).heavy_points < 2) return 0;
    const int guards = PopCount(bitboard_tables.king_attacks[enemy.king_square] & enemy.all);
    return (board.side(Us).queens != 0 ? with_queen : without_queen) - at(by_guards, guards);
}

template <Colour Us, class Context>
int king_placement_of(Context& context, const BOARD& board) {
    const Bitboard enemy_king = Bit(board.side(Opponent(Us)).king_square);
    int sum =
        tell<Us>(context, Rule::king_on_square, Bit(board.side(Us).king_square), king_on_square_ending<Us>(board));
    sum += tell<Us>(context, Rule::heavy_pieces_against_king, enemy_king, heavy_pieces_against_king_ending<Us>(board));
    return sum;
}

}  // namespace

template <class Context>
int king_placement_ending(Context& context, const BOARD& board) noexcept {
    const int of_white = king_placement_of<white>(context, board);
    return of_white - king_placement_of<black>(context, board);
}

template int king_placement_ending(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int king_placement_ending(TRACED_CONTEXT& context, const BOARD& board) noexcept;
