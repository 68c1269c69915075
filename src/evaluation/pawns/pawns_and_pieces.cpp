#include "evaluation/pawns/pawns_and_pieces.h"

#include <array>
#include <cstddef>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/pawns/pawn_groups.h"

namespace {

/// Whether the king stands on the half of the board where the wing is not.
bool is_on_other_half(Square king_square, Wing wing) { return (FileOf(king_square) >= 4) == (wing == queen_side); }

bool is_four_against_three(const MAJORITY_INFO& majority) { return majority.count_a == 4 && majority.count_b == 3; }

/// What stands in front of a passed pawn, by piece code.
constexpr std::array<int, 7> blocker_weight = {0, 0, 8, 7, 6, 4, 10};
/// By the rank of the pawn, in eighths and for each point of the blocker's weight.
constexpr std::array<SCORE_PAIR, 7> blocked_passed = {{
    {0, 0},
    {2, 3},  // the second rank
    {4, 4},
    {6, 5},
    {12, 10},
    {28, 30},
    {72, 83},
}};

/// The isolated queen pawn by the material that is left, in units of both sides: pieces make it an asset.
SCORE_PAIR isolated_queen_pawn_by_material(int total_material) {
    if (total_material > 58) return {0, 25};
    if (total_material > 48) return {-6, 10};
    if (total_material > 38) return {0, 0};
    if (total_material > 28) return {-12, -4};
    return {-18, -16};
}

template <Colour Us>
bool has_isolated_queen_pawn(const EVALUATION_CONTEXT& context) {
    return Has(context.pawns[Us].isolated & ~context.pawns[Us].doubled, Seen<Us>(d4));
}

template <Colour Us>
int activity_of(int points) {
    return Us == white ? points : -points;
}

}  // namespace

template <Colour Us>
SCORE_PAIR majority_and_king(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    for (const Wing wing : {queen_side, king_side}) {
        const MAJORITY_INFO& majority = context.majority[wing];
        if (majority.kind != majority_of<Us>) continue;
        if (is_on_other_half(board.side(Opponent(Us)).king_square, wing)) {
            sum += {20, 7};
            add_points(context.pressure[Us][wing], 2);
            add_points(context.activity, activity_of<Us>(12));
        } else if (is_four_against_three(majority)) {
            sum += {5, 14};
            add_points(context.pressure[Us][wing], 5);
            add_points(context.activity, activity_of<Us>(20));
        }
    }
    return sum;
}

template <Colour Us>
int majority_and_king_ending(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    int sum = 0;
    for (const Wing wing : {queen_side, king_side}) {
        const MAJORITY_INFO& majority = context.majority[wing];
        if (majority.kind != majority_of<Us>) continue;
        if (is_on_other_half(board.side(Opponent(Us)).king_square, wing))
            sum += 18;
        else if (is_four_against_three(majority))
            sum += 14;
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR blocked_centre_pawns(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const SIDE_PIECES& own = board.side(Us);
    const auto own_pawn = [&](Square s) { return Has(own.pawns, Seen<Us>(s)); };
    SCORE_PAIR sum;
    const int blocked = (own_pawn(d2) && Has(board.occupied, Seen<Us>(d3)) ? 1 : 0) +
                        (own_pawn(e2) && Has(board.occupied, Seen<Us>(e3)) ? 1 : 0);
    sum += {-18 * blocked, -28 * blocked};
    add_points(context.pressure[Us][centre], -6 * blocked);
    add_points(context.cover[Us][centre], -4 * blocked);
    if (own_pawn(c2) && Has(own.all & ~own.pawns, Seen<Us>(c3))) {
        const bool closed = own_pawn(d4) && Has(board.side(Opponent(Us)).pawns, Seen<Us>(d5));
        sum += closed ? SCORE_PAIR{-25, -25} : SCORE_PAIR{-8, -10};
        add_points(context.pressure[Us][centre], closed ? -4 : -2);
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR isolated_queen_pawn_and_pieces(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    constexpr Bitboard own_square_colour = Us == white ? ~light_squares : light_squares;  // that of d4 or d5
    if (!has_isolated_queen_pawn<Us>(context)) return {};
    std::int16_t& cover = context.cover[Us][centre];
    if (has_isolated_queen_pawn<Opponent(Us)>(context)) {
        add_points(cover, -6);
        return {};
    }
    const SIDE_PIECES& own = board.side(Us);
    SCORE_PAIR sum = isolated_queen_pawn_by_material(board.total_material);
    if (const Bitboard bishops = own.bishops & own_square_colour; bishops != 0) {
        const bool attacks_pawn = (bishops & bitboard_tables.bishop_mask[Seen<Us>(d4)]) != 0;
        sum += attacks_pawn ? SCORE_PAIR{0, -2} : SCORE_PAIR{0, 1};
        add_points(cover, attacks_pawn ? 2 : 1);
    }
    if ((own.rooks & squares_seen<Us>(d1, d2, d3)) != 0) {
        sum += {6, 6};
        add_points(cover, 2);
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR passed_pawns_and_pieces(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    constexpr Colour Them = Opponent(Us);
    SCORE_PAIR sum;
    for (Bitboard pawns = context.pawns[Us].front_passed; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        const Wing wing = narrow_wing(FileOf(s));
        const int rank = rank_seen<Us>(s);
        const Bitboard ahead = Us == white ? bitboard_tables.ray_north[s] : bitboard_tables.ray_south[s];
        const Bitboard behind = Us == white ? bitboard_tables.ray_south[s] : bitboard_tables.ray_north[s];
        if ((board.side(Us).rooks & behind) != 0) sum += {5, 5};
        if ((board.side(Them).rooks & behind) != 0)
            sum += {-4, -2};
        else if ((board.side(Them).rooks & ahead) != 0)
            sum += {-2, 0};

        const Square next = square_ahead<Us>(s);
        if (Has(board.side(Them).all, next)) {
            const int weight = blocker_weight[static_cast<std::size_t>(std::abs(board.squares[next]))];
            const SCORE_PAIR pair = blocked_passed[static_cast<std::size_t>(rank)];
            sum -= {weight * pair.positional() / 8, weight * pair.reckless() / 8};
            add_points(context.cover[Them][wing], 2);
        } else if (!Has(board.occupied, next) && rank >= 4) {
            sum += {6, 8};
            add_points(context.pressure[Us][wing], 1);
        }
    }
    return sum;
}

template SCORE_PAIR majority_and_king<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR majority_and_king<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int majority_and_king_ending<white>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int majority_and_king_ending<black>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR blocked_centre_pawns<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR blocked_centre_pawns<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_queen_pawn_and_pieces<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_queen_pawn_and_pieces<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR passed_pawns_and_pieces<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR passed_pawns_and_pieces<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
