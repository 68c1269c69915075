#include "evaluation/pieces/queens.h"

#include <array>
#include <cstddef>

#include "chess/attacks.h"
#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/pieces/ending_tables.h"
#include "evaluation/pieces/piece_tables.h"

namespace {

using piece_tables::value_at;

/// What the opening and the middle game count differently.
struct QueenValues {
    const piece_tables::Board& positional;
    const piece_tables::Board& reckless;
    int wing_pressure;
    SCORE_PAIR kept_to_second_rank;  ///< no free square on the first rank, but one on the second
    int kept_to_second_rank_cover;
    SCORE_PAIR cut_off;  ///< no free square on either
    int cut_off_cover;
    SCORE_PAIR seventh_rank;
    int seventh_rank_pressure;
};

constexpr QueenValues opening_values = {
    .positional = piece_tables::queen_opening_positional,
    .reckless = piece_tables::queen_opening_reckless,
    .wing_pressure = 10,
    .kept_to_second_rank = {-8, -10},
    .kept_to_second_rank_cover = -2,
    .cut_off = {-18, -30},
    .cut_off_cover = -4,
    .seventh_rank = {10, 18},
    .seventh_rank_pressure = 6,
};

constexpr QueenValues middle_game_values = {
    .positional = piece_tables::queen_middle_game_positional,
    .reckless = piece_tables::queen_middle_game_reckless,
    .wing_pressure = 12,
    .kept_to_second_rank = {-8, -14},
    .kept_to_second_rank_cover = -1,
    .cut_off = {-12, -20},
    .cut_off_cover = -4,
    .seventh_rank = {15, 25},
    .seventh_rank_pressure = 8,
};

template <Colour Us>
SCORE_PAIR queen_on_square(EVALUATION_CONTEXT& context, Square s, const QueenValues& values) {
    add_points(context.pressure[Us][centre], 6);
    add_points(context.pressure[Us][wide_wing(FileOf(s))], values.wing_pressure);
    return {value_at<Us>(values.positional, s), value_at<Us>(values.reckless, s)};
}

/// Own men that must not leave their line, or the queen is lost.
template <Colour Us>
SCORE_PAIR men_pinned_to_queen(const BOARD& board, Square s) {
    const int pinned = PopCount(FindPins(s, board, board.side(Us).all, board.side(Opponent(Us))));
    return {-30 * pinned, -30 * pinned};
}

/// A queen off its first two ranks should find squares to go to, some of them back home.
template <Colour Us>
SCORE_PAIR queen_mobility(EVALUATION_CONTEXT& context, Square s, Bitboard free_squares, const QueenValues& values) {
    if (rank_seen<Us>(s) <= 1) return {};
    constexpr SCORE_PAIR out_early = {-5, -2};
    std::int16_t& cover = context.cover[Us][wide_wing(FileOf(s))];
    const int count = PopCount(free_squares);
    if (count == 0) {
        add_points(context.pressure[Us][centre], -16);
        add_points(cover, -10);
        return out_early + SCORE_PAIR{-70, -110};
    }
    if (count == 1) {
        add_points(context.pressure[Us][centre], -12);
        add_points(cover, -8);
        return out_early + SCORE_PAIR{-40, -70};
    }
    if ((free_squares & ranks<Us>(0, 0)) != 0) return out_early;
    if ((free_squares & ranks<Us>(1, 1)) != 0) {
        add_points(cover, values.kept_to_second_rank_cover);
        return out_early + values.kept_to_second_rank;
    }
    add_points(cover, values.cut_off_cover);
    return out_early + values.cut_off;
}

template <Colour Us>
SCORE_PAIR queen_on_seventh_rank(EVALUATION_CONTEXT& context, const BOARD& board, Square s, const QueenValues& values) {
    constexpr Colour Them = Opponent(Us);
    if (rank_seen<Us>(s) != 6 || rank_seen<Us>(board.side(Them).king_square) < 6) return {};
    add_points(context.pressure[Us][context.king_wing[Them]], values.seventh_rank_pressure);
    return values.seventh_rank;
}

template <Colour Us>
SCORE_PAIR queen_beside_enemy_king(EVALUATION_CONTEXT& context, const BOARD& board, Bitboard attacks) {
    constexpr Colour Them = Opponent(Us);
    if ((attacks & bitboard_tables.king_attacks[board.side(Them).king_square]) == 0) return {};
    const Wing wing = context.king_wing[Them];
    add_points(context.pressure[Us][wing], 4);
    add_points(context.cover[Them][wing], -4);
    return {0, 8};
}

template <Colour Us>
bool can_still_castle(const BOARD& board) {
    constexpr int rights = Us == white ? white_short | white_long : black_short | black_long;
    return (board.frame().castling & rights) != 0;
}

/// The way to an enemy king that can't castle any more.
template <Colour Us>
SCORE_PAIR queen_and_enemy_king(EVALUATION_CONTEXT& context, const BOARD& board, Square s) {
    constexpr Colour Them = Opponent(Us);
    static constexpr std::array<int, 8> pressure = {0, 18, 14, 12, 6, 2, 1, 0};  // by distance
    if (can_still_castle<Them>(board)) return {};
    const int distance = bitboard_tables.distance[s][board.side(Them).king_square];
    add_points(context.pressure[Us][context.king_wing[Them]], pressure[static_cast<std::size_t>(distance)]);
    return {-distance, -3 * distance};
}

/// A king that its queen has left alone.
template <Colour Us>
SCORE_PAIR queen_and_own_king(EVALUATION_CONTEXT& context, const BOARD& board, Square s, Bitboard attacks) {
    const Square king = board.side(Us).king_square;
    if (can_still_castle<Us>(board) || bitboard_tables.manhattan_distance[king][s] <= 8) return {};
    if ((attacks & bitboard_tables.king_attacks[king]) != 0) return {};
    add_points(context.cover[Us][context.king_wing[Us]], -16);
    return {-8, -20};
}

// --- Endings ---

/// The squares from which a queen that is behind in material can give a check that nobody answers by taking it.
template <Colour Us>
int perpetual_check_chances(const BOARD& board, Bitboard attacks) {
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    const int balance = board.frame().material_balance;
    if ((board.side_to_move == Us ? -balance : balance) < 90) return 0;
    Bitboard checks = attacks & ~board.side(Us).all & board.QueenAttacks(enemy.king_square) &
                      ~bitboard_tables.king_attacks[enemy.king_square];
    int safe_checks = 0;
    while (checks != 0) {
        if (!IsAttackedBy(TakeNextBit(checks), board, enemy)) ++safe_checks;
    }
    if (safe_checks == 0) return 0;
    return board.side_to_move == Us && board.frame().in_check == 0 ? 33 + 4 * safe_checks : 16 + 2 * safe_checks;
}

}  // namespace

template <Colour Us>
SCORE_PAIR queens_opening(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    for (Bitboard rest = board.side(Us).queens; rest != 0;) {
        const Square s = TakeNextBit(rest);
        const Bitboard attacks = board.QueenAttacks(s);
        context.attacks[Us] |= attacks;
        const Bitboard free_squares = attacks & ~board.occupied & ~context.attacks_no_queen[Opponent(Us)];
        sum += queen_on_square<Us>(context, s, opening_values);
        sum += men_pinned_to_queen<Us>(board, s);
        sum += queen_mobility<Us>(context, s, free_squares, opening_values);
        sum += queen_on_seventh_rank<Us>(context, board, s, opening_values);
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR queens_middle_game(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    for (Bitboard rest = board.side(Us).queens; rest != 0;) {
        const Square s = TakeNextBit(rest);
        const Bitboard attacks = board.QueenAttacks(s);
        context.attacks[Us] |= attacks;
        // Unlike in the opening, a square where it takes is free too.
        const Bitboard free_squares = attacks & ~board.side(Us).all & ~context.attacks_no_queen[Opponent(Us)];
        sum += queen_on_square<Us>(context, s, middle_game_values);
        sum += men_pinned_to_queen<Us>(board, s);
        sum += queen_beside_enemy_king<Us>(context, board, attacks);
        sum += queen_mobility<Us>(context, s, free_squares, middle_game_values);
        sum += queen_and_enemy_king<Us>(context, board, s);
        sum += queen_and_own_king<Us>(context, board, s, attacks);
        sum += queen_on_seventh_rank<Us>(context, board, s, middle_game_values);
    }
    return sum;
}

template <Colour Us>
int queens_ending(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const SIDE_PIECES& own = board.side(Us);
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    int sum = 0;
    for (Bitboard rest = own.queens; rest != 0;) {
        const Square s = TakeNextBit(rest);
        const Bitboard attacks = board.QueenAttacks(s);
        context.attacks[Us] |= attacks;
        sum += ending_tables::value_at<Us>(ending_tables::queen_ending, s);
        sum += perpetual_check_chances<Us>(board, attacks);
        sum -= 30 * PopCount(FindPins(s, board, own.all, enemy));
        sum -= 2 * bitboard_tables.distance[s][own.king_square];
        sum -= 2 * bitboard_tables.distance[s][enemy.king_square];
        if (rank_seen<Us>(s) == 6 && rank_seen<Us>(enemy.king_square) >= 6) sum += 55;
    }
    return sum;
}

template SCORE_PAIR queens_opening<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR queens_opening<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR queens_middle_game<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR queens_middle_game<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int queens_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int queens_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
