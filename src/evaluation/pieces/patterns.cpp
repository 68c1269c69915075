#include "evaluation/pieces/patterns.h"

#include <algorithm>
#include <cmath>

#include "evaluation/context/board_areas.h"

namespace {

// --- Patterns ---

/// One side's men where a pattern wants them, by their names as White sees them.
template <Colour Us>
class Men {
  public:
    explicit Men(const BOARD& board) : own_(board.side(Us)), enemy_(board.side(Opponent(Us))) {}
    bool Pawn(Square s) const { return Has(own_.pawns, Seen<Us>(s)); }
    bool EnemyPawn(Square s) const { return Has(enemy_.pawns, Seen<Us>(s)); }
    bool Knight(Square s) const { return Has(own_.knights, Seen<Us>(s)); }
    bool Bishop(Square s) const { return Has(own_.bishops, Seen<Us>(s)); }
    bool KnightsAreExactly(Bitboard seen) const { return own_.knights == seen; }

  private:
    const SIDE_PIECES& own_;
    const SIDE_PIECES& enemy_;
};

template <Colour Us>
void count(EVALUATION_CONTEXT& context, Wing wing, int pressure, int cover) {
    add_points(context.pressure[Us][wing], pressure);
    add_points(context.cover[Us][wing], cover);
}

template <Colour Us>
SCORE_PAIR pieces_at_home(EVALUATION_CONTEXT& context, const Men<Us>& men) {
    SCORE_PAIR sum;
    if (men.Knight(b1) && men.Bishop(c1)) {
        sum += {-18, -45};
        count<Us>(context, queen_side, -4, -8);
    }
    if (men.Knight(g1) && men.Bishop(f1)) {
        sum += {-14, -40};
        count<Us>(context, king_side, -4, -6);
    }
    return sum;
}

/// A pawn has made room for a bishop that has not moved there.
template <Colour Us>
SCORE_PAIR missing_fianchetto(EVALUATION_CONTEXT& context, const Men<Us>& men) {
    SCORE_PAIR sum;
    if (men.Bishop(f1) && men.Pawn(g3) && !men.Pawn(g2) && (men.Pawn(f2) || men.Pawn(h2))) {
        sum += {-8, -14};
        count<Us>(context, king_side, 0, -4);
    }
    if (men.Bishop(c1) && men.Pawn(b3) && !men.Pawn(b2) && (men.Pawn(a2) || men.Pawn(c2))) {
        sum += {-5, -8};
        count<Us>(context, queen_side, 0, -3);
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR right_to_move(EVALUATION_CONTEXT& context, const BOARD& board) {
    if (board.side_to_move != Us) return {};
    count<Us>(context, centre, 4, 6);
    return {6, 14};
}

/// Both knights before the bishops' pawns, which the centre needs.
template <Colour Us>
SCORE_PAIR knights_before_pawns(EVALUATION_CONTEXT& context, const Men<Us>& men) {
    if (!men.KnightsAreExactly(squares_seen<Us>(c3, f3)) || !men.Pawn(c2) || !men.Pawn(f2)) return {};
    count<Us>(context, centre, -3, 3);
    SCORE_PAIR sum = {-4, -8};
    if (men.Pawn(e3) && men.EnemyPawn(d5)) {
        const bool is_locked = men.Pawn(d4) && men.EnemyPawn(e4);
        sum += is_locked ? SCORE_PAIR{-25, -35} : SCORE_PAIR{-10, -20};
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR fixed_patterns(EVALUATION_CONTEXT& context, const BOARD& board) {
    const Men<Us> men(board);
    SCORE_PAIR sum = pieces_at_home<Us>(context, men);
    sum += missing_fianchetto<Us>(context, men);
    sum += right_to_move<Us>(context, board);
    return sum;
}

// --- Space ---

/// The side that attacks clearly more squares presses on the centre.
template <Colour Us>
void press_on_centre(EVALUATION_CONTEXT& context, int own_squares, int enemy_squares) {
    if (own_squares <= enemy_squares || 20 * own_squares <= 21 * enemy_squares) return;
    add_points(context.pressure[Us][centre], 7 * own_squares > 8 * enemy_squares ? 20 : 12);
}

template <Colour Us>
void press_on_wings(EVALUATION_CONTEXT& context) {
    constexpr Bitboard halves[2] = {files(0, 2), files(5, 7)};
    constexpr int pressure[4] = {-4, 4, 6, 8};
    for (const Wing wing : {queen_side, king_side}) {
        const int attacked = PopCount(context.attacks[Us] & halves[wing] & ranks<Us>(4, 6));
        add_points(context.pressure[Us][wing], pressure[std::min(attacked, 3)]);
        if (attacked == 0) add_points(context.cover[Opponent(Us)][wing], 6);
    }
}

/// Pieces at home weaken the far wing, pieces in the enemy's half, there the king too, strengthen the near one.
template <Colour Us>
void press_by_placement(EVALUATION_CONTEXT& context, const BOARD& board) {
    constexpr Bitboard left = files(0, 3);
    constexpr Bitboard right = files(4, 7);
    constexpr Bitboard home = ranks<Us>(0, 2);
    constexpr Bitboard enemy_half = ranks<Us>(4, 7);
    const SIDE_PIECES& own = board.side(Us);
    const Bitboard at_home = (own.knights | own.bishops | own.queens | (own.rooks & ~ranks<Us>(2, 2))) & home;
    const Bitboard advanced = (own.all & ~own.pawns) & enemy_half;
    WingCounters& pressure = context.pressure[Us];
    add_points(pressure[queen_side], 2 * (PopCount(advanced & left) - PopCount(at_home & right)));
    add_points(pressure[king_side], 2 * (PopCount(advanced & right) - PopCount(at_home & left)));
}

}  // namespace

SCORE_PAIR patterns_middle_game(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    return fixed_patterns<white>(context, board) - fixed_patterns<black>(context, board);
}

SCORE_PAIR patterns_opening(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    SCORE_PAIR sum = patterns_middle_game(context, board);
    sum += knights_before_pawns<white>(context, Men<white>(board));
    sum -= knights_before_pawns<black>(context, Men<black>(board));
    return sum;
}

SCORE_PAIR space(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const int of_white = PopCount(context.attacks[white]);
    const int of_black = PopCount(context.attacks[black]);
    press_on_centre<white>(context, of_white, of_black);
    press_on_centre<black>(context, of_black, of_white);
    press_on_wings<white>(context);
    press_on_wings<black>(context);
    press_by_placement<white>(context, board);
    press_by_placement<black>(context, board);
    return {2 * (of_white - of_black), 4 * (of_white - of_black)};
}

SCORE_PAIR activity(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    constexpr int most_material = 150;  // centipawns
    const int material = std::clamp<int>(board.frame().material_balance, -most_material, most_material);
    add_points(context.activity, (board.side_to_move == white ? material : -material) / 2);
    const int weighed = static_cast<int>(std::round(context.activity * context.endgame_weight));
    return {weighed, weighed / 8};
}
