#include "evaluation/pieces/patterns.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "evaluation/context/board_areas.h"
#include "evaluation/context/rule_values.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/context/view.h"
#include "evaluation/rules/tell.h"

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
SCORE_PAIR knight_and_bishop_at_home_queen_side(EVALUATION_CONTEXT& context, const Men<Us>& men) {
    if (!men.Knight(b1) || !men.Bishop(c1)) return {};
    return count_on<Us>(queen_side, context, {.pair = {-18, -45}, .pressure = -4, .cover = -8});
}
template <Colour Us>
SCORE_PAIR knight_and_bishop_at_home_king_side(EVALUATION_CONTEXT& context, const Men<Us>& men) {
    if (!men.Knight(g1) || !men.Bishop(f1)) return {};
    return count_on<Us>(king_side, context, {.pair = {-14, -40}, .pressure = -4, .cover = -6});
}

// A pawn has made room for a bishop that has not moved there.
template <Colour Us>
SCORE_PAIR missing_fianchetto_king_side(EVALUATION_CONTEXT& context, const Men<Us>& men) {
    if (!men.Bishop(f1) || !men.Pawn(g3) || men.Pawn(g2) || !(men.Pawn(f2) || men.Pawn(h2))) return {};
    return count_on<Us>(king_side, context, {.pair = {-8, -14}, .cover = -4});
}
template <Colour Us>
SCORE_PAIR missing_fianchetto_queen_side(EVALUATION_CONTEXT& context, const Men<Us>& men) {
    if (!men.Bishop(c1) || !men.Pawn(b3) || men.Pawn(b2) || !(men.Pawn(a2) || men.Pawn(c2))) return {};
    return count_on<Us>(queen_side, context, {.pair = {-5, -8}, .cover = -3});
}

template <Colour Us>
SCORE_PAIR right_to_move(EVALUATION_CONTEXT& context, const BOARD& board) {
    if (board.side_to_move != Us) return {};
    return count_on<Us>(centre, context, {.pair = {6, 14}, .pressure = 4, .cover = 6});
}

/// Both knights before the bishops' pawns, which the centre needs.
template <Colour Us>
bool has_knights_before_pawns(const Men<Us>& men) {
    return men.KnightsAreExactly(squares_seen<Us>(c3, f3)) && men.Pawn(c2) && men.Pawn(f2);
}
template <Colour Us>
SCORE_PAIR knights_before_pawns(EVALUATION_CONTEXT& context) {
    return count_on<Us>(centre, context, {.pair = {-4, -8}, .pressure = -3, .cover = 3});
}
/// And the centre needs them more: e3 against d5, or locked by d4 and e4 as well.
template <Colour Us>
SCORE_PAIR knights_before_pawns_of_closed_centre(const Men<Us>& men) {
    constexpr SCORE_PAIR locked = {-25, -35};
    constexpr SCORE_PAIR otherwise = {-10, -20};
    if (!men.Pawn(e3) || !men.EnemyPawn(d5)) return {};
    return men.Pawn(d4) && men.EnemyPawn(e4) ? locked : otherwise;
}

template <Colour Us, class Context>
SCORE_PAIR fixed_patterns(Context& context, const BOARD& board) {
    const Men<Us> men(board);
    SCORE_PAIR sum;
    const auto count = [&](Rule rule, SCORE_PAIR pair, Bitboard squares) {
        sum += tell<Us>(context, rule, squares, pair);
    };
    count(Rule::knight_and_bishop_at_home_queen_side, knight_and_bishop_at_home_queen_side<Us>(context, men),
          squares_seen<Us>(b1, c1));
    count(Rule::knight_and_bishop_at_home_king_side, knight_and_bishop_at_home_king_side<Us>(context, men),
          squares_seen<Us>(f1, g1));
    count(Rule::missing_fianchetto_king_side, missing_fianchetto_king_side<Us>(context, men),
          squares_seen<Us>(f1, g2, g3));
    count(Rule::missing_fianchetto_queen_side, missing_fianchetto_queen_side<Us>(context, men),
          squares_seen<Us>(c1, b2, b3));
    count(Rule::right_to_move, right_to_move<Us>(context, board), 0);
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR opening_patterns(Context& context, const BOARD& board) {
    const Men<Us> men(board);
    if (!has_knights_before_pawns<Us>(men)) return {};
    SCORE_PAIR sum = tell<Us>(context, Rule::knights_before_pawns, squares_seen<Us>(c2, c3, f2, f3),
                              knights_before_pawns<Us>(context));
    sum += tell<Us>(context, Rule::knights_before_pawns_of_closed_centre, squares_seen<Us>(e3, d5, d4, e4),
                    knights_before_pawns_of_closed_centre<Us>(men));
    return sum;
}

// --- Space ---

/// Every square that the side attacks.
SCORE_PAIR attacked_squares(int count) { return {2 * count, 4 * count}; }

/// The side that attacks clearly more squares presses on the centre.
template <Colour Us>
SCORE_PAIR more_attacked_squares(EVALUATION_CONTEXT& context, int own_squares, int enemy_squares) {
    constexpr int by_a_twentieth = 12;
    constexpr int by_a_seventh = 20;
    if (own_squares <= enemy_squares || 20 * own_squares <= 21 * enemy_squares) return {};
    add_points(context.pressure[Us][centre], 7 * own_squares > 8 * enemy_squares ? by_a_seventh : by_a_twentieth);
    return {};
}

/// The squares of a wing on its fifth to seventh rank that a side attacks. Where there is none the enemy is safe.
template <Colour Us>
SCORE_PAIR attacked_squares_on_wing(EVALUATION_CONTEXT& context, Wing wing, Bitboard squares) {
    static constexpr std::array<int, 4> pressure = {-4, 4, 6, 8};  // n = 0, 1, 2, more
    constexpr int enemy_cover = 6;
    const int count = PopCount(squares);
    add_points(context.pressure[Us][wing], at(pressure, std::min(count, 3)));
    if (count == 0) add_points(context.cover[Opponent(Us)][wing], enemy_cover);
    return {};
}

/// Pieces at home weaken the far wing, pieces in the enemy's half, there the king too, strengthen the near one.
template <Colour Us>
SCORE_PAIR pieces_by_wing(EVALUATION_CONTEXT& context, Bitboard at_home, Bitboard advanced) {
    constexpr Bitboard left = files(0, 3);
    constexpr Bitboard right = files(4, 7);
    constexpr int each = 2;
    WingCounters& pressure = context.pressure[Us];
    add_points(pressure[queen_side], each * (PopCount(advanced & left) - PopCount(at_home & right)));
    add_points(pressure[king_side], each * (PopCount(advanced & right) - PopCount(at_home & left)));
    return {};
}

template <Colour Us, class Context>
void press_on_wings(Context& context) {
    constexpr Bitboard halves[2] = {files(0, 2), files(5, 7)};
    for (const Wing wing : {queen_side, king_side}) {
        const Bitboard attacked = context.attacks[Us] & halves[wing] & ranks<Us>(4, 6);
        tell<Us>(context, Rule::attacked_squares_on_wing, attacked,
                 attacked_squares_on_wing<Us>(context, wing, attacked));
    }
}

template <Colour Us, class Context>
void press_by_placement(Context& context, const BOARD& board) {
    constexpr Bitboard home = ranks<Us>(0, 2);
    constexpr Bitboard enemy_half = ranks<Us>(4, 7);
    const SIDE_PIECES& own = board.side(Us);
    const Bitboard at_home = (own.knights | own.bishops | own.queens | (own.rooks & ~ranks<Us>(2, 2))) & home;
    const Bitboard advanced = (own.all & ~own.pawns) & enemy_half;
    tell<Us>(context, Rule::pieces_by_wing, at_home | advanced, pieces_by_wing<Us>(context, at_home, advanced));
}

}  // namespace

template <class Context>
SCORE_PAIR patterns_middle_game(Context& context, const BOARD& board) noexcept {
    const SCORE_PAIR of_white = fixed_patterns<white>(context, board);
    return of_white - fixed_patterns<black>(context, board);
}

template <class Context>
SCORE_PAIR patterns_opening(Context& context, const BOARD& board) noexcept {
    SCORE_PAIR sum = patterns_middle_game(context, board);
    sum += opening_patterns<white>(context, board);
    sum -= opening_patterns<black>(context, board);
    return sum;
}

template <class Context>
SCORE_PAIR space(Context& context, const BOARD& board) noexcept {
    const int of_white = PopCount(context.attacks[white]);
    const int of_black = PopCount(context.attacks[black]);
    SCORE_PAIR sum;
    sum += tell<white>(context, Rule::attacked_squares, context.attacks[white], attacked_squares(of_white));
    sum -= tell<black>(context, Rule::attacked_squares, context.attacks[black], attacked_squares(of_black));
    tell<white>(context, Rule::more_attacked_squares, 0, more_attacked_squares<white>(context, of_white, of_black));
    tell<black>(context, Rule::more_attacked_squares, 0, more_attacked_squares<black>(context, of_black, of_white));
    press_on_wings<white>(context);
    press_on_wings<black>(context);
    press_by_placement<white>(context, board);
    press_by_placement<black>(context, board);
    return sum;
}

template <class Context>
SCORE_PAIR activity(Context& context, const BOARD& board) noexcept {
    constexpr int most_material = 150;  // centipawns
    const int material = std::clamp<int>(board.frame().material_balance, -most_material, most_material);
    add_points(context.activity, turned(board, material) / 2);
    const int weighed = static_cast<int>(std::round(context.activity * context.endgame_weight));
    return tell<white>(context, Rule::weighed_activity, 0, SCORE_PAIR{weighed, weighed / 8});
}

template SCORE_PAIR patterns_middle_game(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR patterns_middle_game(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR patterns_opening(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR patterns_opening(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR space(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR space(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR activity(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR activity(TRACED_CONTEXT& context, const BOARD& board) noexcept;
