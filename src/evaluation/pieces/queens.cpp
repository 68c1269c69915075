#include "evaluation/pieces/queens.h"

#include <array>

#include "chess/attacks.h"
#include "chess/bitboard_tables.h"
#include "chess/position_keys.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/rule_values.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/pieces/ending_tables.h"
#include "evaluation/pieces/piece_tables.h"
#include "evaluation/rules/tell.h"

namespace {

using piece_tables::value_at;

/// What the opening and the middle game count differently, rule by rule.
struct QueenValues {
    const piece_tables::Board& positional;
    const piece_tables::Board& reckless;
    int wing_pressure;
    RULE_VALUES kept_to_second_rank;
    RULE_VALUES cut_off_from_home;
    RULE_VALUES on_seventh;
};

constexpr QueenValues opening_values = {
    .positional = piece_tables::queen_opening_positional,
    .reckless = piece_tables::queen_opening_reckless,
    .wing_pressure = 10,
    .kept_to_second_rank = {.pair = {-8, -10}, .cover = -2},
    .cut_off_from_home = {.pair = {-18, -30}, .cover = -4},
    .on_seventh = {.pair = {10, 18}, .pressure = 6},
};

constexpr QueenValues middle_game_values = {
    .positional = piece_tables::queen_middle_game_positional,
    .reckless = piece_tables::queen_middle_game_reckless,
    .wing_pressure = 12,
    .kept_to_second_rank = {.pair = {-8, -14}, .cover = -1},
    .cut_off_from_home = {.pair = {-12, -20}, .cover = -4},
    .on_seventh = {.pair = {15, 25}, .pressure = 8},
};

/// It presses on the centre too.
template <Colour Us>
SCORE_PAIR queen_on_square(EVALUATION_CONTEXT& context, Square s, const QueenValues& values) {
    constexpr int centre_pressure = 6;
    add_points(context.pressure[Us][centre], centre_pressure);
    add_points(context.pressure[Us][wide_wing(FileOf(s))], values.wing_pressure);
    return {value_at<Us>(values.positional, s), value_at<Us>(values.reckless, s)};
}

/// Own men that must not leave their line, or the queen is lost.
SCORE_PAIR men_pinned_to_queen(Bitboard pinned) {
    const int charge = -30 * PopCount(pinned);
    return {charge, charge};
}

// --- The mobility of a queen off its first two ranks ---

constexpr SCORE_PAIR queen_out = {-5, -2};

/// No free square, or a single one. The centre suffers too.
template <Colour Us>
SCORE_PAIR queen_without_free_square(EVALUATION_CONTEXT& context, Wing wing) {
    add_points(context.pressure[Us][centre], -16);
    return count_on<Us>(wing, context, {.pair = {-70, -110}, .cover = -10});
}
template <Colour Us>
SCORE_PAIR queen_with_one_free_square(EVALUATION_CONTEXT& context, Wing wing) {
    add_points(context.pressure[Us][centre], -12);
    return count_on<Us>(wing, context, {.pair = {-40, -70}, .cover = -8});
}

/// No free square on its first rank, but one on its second; or none on either.
template <Colour Us>
SCORE_PAIR queen_kept_to_second_rank(EVALUATION_CONTEXT& context, Wing wing, const QueenValues& values) {
    return count_on<Us>(wing, context, values.kept_to_second_rank);
}
template <Colour Us>
SCORE_PAIR queen_cut_off_from_home(EVALUATION_CONTEXT& context, Wing wing, const QueenValues& values) {
    return count_on<Us>(wing, context, values.cut_off_from_home);
}

/// `free_squares` are those where nothing smaller than a queen takes it.
template <Colour Us, class Context>
SCORE_PAIR queen_mobility(Context& context, Square s, Bitboard free_squares, const QueenValues& values) {
    if (rank_seen<Us>(s) <= 1) return {};
    const Wing wing = wide_wing(FileOf(s));
    const auto told = [&](Rule rule, SCORE_PAIR pair) { return tell<Us>(context, rule, Bit(s) | free_squares, pair); };
    const SCORE_PAIR out = tell<Us>(context, Rule::queen_out, Bit(s), queen_out);
    if (free_squares == 0)
        return out + told(Rule::queen_without_free_square, queen_without_free_square<Us>(context, wing));
    if (!HasSeveral(free_squares))
        return out + told(Rule::queen_with_one_free_square, queen_with_one_free_square<Us>(context, wing));
    if ((free_squares & ranks<Us>(0, 0)) != 0) return out;
    if ((free_squares & ranks<Us>(1, 1)) != 0)
        return out + told(Rule::queen_kept_to_second_rank, queen_kept_to_second_rank<Us>(context, wing, values));
    return out + told(Rule::queen_cut_off_from_home, queen_cut_off_from_home<Us>(context, wing, values));
}

// --- Queens and kings ---

template <Colour Us>
bool has_enemy_king_at_home(const BOARD& board) {
    return rank_seen<Us>(board.side(Opponent(Us)).king_square) >= 6;
}

/// On the seventh rank while the enemy king stands there or behind it.
template <Colour Us>
SCORE_PAIR queen_on_seventh(EVALUATION_CONTEXT& context, const BOARD& board, Square s, const QueenValues& values) {
    if (rank_seen<Us>(s) != 6 || !has_enemy_king_at_home<Us>(board)) return {};
    return count_on<Us>(context.king_wing[Opponent(Us)], context, values.on_seventh);
}

/// A queen that attacks a square next to the enemy king, whose cover suffers.
template <Colour Us>
SCORE_PAIR queen_beside_enemy_king(EVALUATION_CONTEXT& context, const BOARD& board, Bitboard attacks) {
    constexpr Colour Them = Opponent(Us);
    constexpr int enemy_cover = -4;
    if ((attacks & bitboard_tables.king_attacks[board.side(Them).king_square]) == 0) return {};
    add_points(context.cover[Them][context.king_wing[Them]], enemy_cover);
    return count_on<Us>(context.king_wing[Them], context, {.pair = {0, 8}, .pressure = 4});
}

template <Colour Us>
bool can_still_castle(const BOARD& board) {
    return (board.frame().castling & castling_rights_of[Us]) != 0;
}

/// The way to an enemy king that can't castle any more, by distance.
template <Colour Us>
SCORE_PAIR queen_far_from_enemy_king(EVALUATION_CONTEXT& context, const BOARD& board, Square s) {
    constexpr Colour Them = Opponent(Us);
    static constexpr std::array<int, 8> pressure = {0, 18, 14, 12, 6, 2, 1, 0};
    if (can_still_castle<Them>(board)) return {};
    const int distance = bitboard_tables.distance[s][board.side(Them).king_square];
    add_points(context.pressure[Us][context.king_wing[Them]], at(pressure, distance));
    return {-distance, -3 * distance};
}

/// A king that can't castle any more and that its queen has left alone.
template <Colour Us>
SCORE_PAIR queen_far_from_own_king(EVALUATION_CONTEXT& context, const BOARD& board, Square s, Bitboard attacks) {
    constexpr int near = 8;  // steps along files and ranks
    const Square king = board.side(Us).king_square;
    if (can_still_castle<Us>(board) || bitboard_tables.manhattan_distance[king][s] <= near) return {};
    if ((attacks & bitboard_tables.king_attacks[king]) != 0) return {};
    return count_on<Us>(context.king_wing[Us], context, {.pair = {-8, -20}, .cover = -16});
}

// --- Endings ---

template <Colour Us>
int queen_on_square_ending(Square s) {
    return ending_tables::value_at<Us>(ending_tables::queen_ending, s);
}

/// The squares from which a queen gives a check that nobody answers by taking it.
template <Colour Us>
Bitboard safe_checks_of_queen(const BOARD& board, Bitboard attacks) {
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    Bitboard safe = 0;
    for (Bitboard checks = attacks & ~board.side(Us).all & board.QueenAttacks(enemy.king_square) &
                           ~bitboard_tables.king_attacks[enemy.king_square];
         checks != 0;) {
        const Square s = TakeNextBit(checks);
        if (!IsAttackedBy(s, board, enemy)) safe |= Bit(s);
    }
    return safe;
}

/// A perpetual check may save a side that is behind in material.
template <Colour Us>
bool needs_perpetual_check(const BOARD& board) {
    constexpr int least_lead = 90;  // centipawns
    const int balance = board.frame().material_balance;
    return (board.side_to_move == Us ? -balance : balance) >= least_lead;
}
template <Colour Us>
int perpetual_check_chances_ending(const BOARD& board, Bitboard safe_checks) {
    if (safe_checks == 0) return 0;
    const int count = PopCount(safe_checks);
    return board.side_to_move == Us && board.frame().in_check == 0 ? 33 + 4 * count : 16 + 2 * count;
}

int men_pinned_to_queen_ending(Bitboard pinned) { return -30 * PopCount(pinned); }

/// By its distance from either king.
int queen_far_from_king_ending(Square s, Square king) { return -2 * bitboard_tables.distance[s][king]; }

template <Colour Us>
int queen_on_seventh_ending(const BOARD& board, Square s) {
    return rank_seen<Us>(s) == 6 && has_enemy_king_at_home<Us>(board) ? 55 : 0;
}

}  // namespace

template <Colour Us, class Context>
SCORE_PAIR queens_opening(Context& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    for (Bitboard rest = board.side(Us).queens; rest != 0;) {
        const Square s = TakeNextBit(rest);
        const Bitboard attacks = board.QueenAttacks(s);
        const Bitboard pinned = FindPins(s, board, board.side(Us).all, board.side(Opponent(Us)));
        const auto count = [&](Rule rule, SCORE_PAIR pair, Bitboard with = 0) {
            sum += tell<Us>(context, rule, Bit(s) | with, pair);
        };
        context.attacks[Us] |= attacks;
        count(Rule::queen_on_square, queen_on_square<Us>(context, s, opening_values));
        count(Rule::men_pinned_to_queen, men_pinned_to_queen(pinned), pinned);
        const Bitboard free_squares = attacks & ~board.occupied & ~context.attacks_no_queen[Opponent(Us)];
        sum += queen_mobility<Us>(context, s, free_squares, opening_values);
        count(Rule::queen_on_seventh, queen_on_seventh<Us>(context, board, s, opening_values));
    }
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR queens_middle_game(Context& context, const BOARD& board) noexcept {
    const Bitboard own_king = Bit(board.side(Us).king_square);
    const Bitboard enemy_king = Bit(board.side(Opponent(Us)).king_square);
    SCORE_PAIR sum;
    for (Bitboard rest = board.side(Us).queens; rest != 0;) {
        const Square s = TakeNextBit(rest);
        const Bitboard attacks = board.QueenAttacks(s);
        const Bitboard pinned = FindPins(s, board, board.side(Us).all, board.side(Opponent(Us)));
        const auto count = [&](Rule rule, SCORE_PAIR pair, Bitboard with = 0) {
            sum += tell<Us>(context, rule, Bit(s) | with, pair);
        };
        context.attacks[Us] |= attacks;
        count(Rule::queen_on_square, queen_on_square<Us>(context, s, middle_game_values));
        count(Rule::men_pinned_to_queen, men_pinned_to_queen(pinned), pinned);
        count(Rule::queen_beside_enemy_king, queen_beside_enemy_king<Us>(context, board, attacks), enemy_king);
        // Unlike in the opening, a square where it takes is free too.
        const Bitboard free_squares = attacks & ~board.side(Us).all & ~context.attacks_no_queen[Opponent(Us)];
        sum += queen_mobility<Us>(context, s, free_squares, middle_game_values);
        count(Rule::queen_far_from_enemy_king, queen_far_from_enemy_king<Us>(context, board, s), enemy_king);
        count(Rule::queen_far_from_own_king, queen_far_from_own_king<Us>(context, board, s, attacks), own_king);
        count(Rule::queen_on_seventh, queen_on_seventh<Us>(context, board, s, middle_game_values));
    }
    return sum;
}

template <Colour Us, class Context>
int queens_ending(Context& context, const BOARD& board) noexcept {
    const SIDE_PIECES& own = board.side(Us);
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    int sum = 0;
    for (Bitboard rest = own.queens; rest != 0;) {
        const Square s = TakeNextBit(rest);
        const Bitboard attacks = board.QueenAttacks(s);
        const auto count = [&](Rule rule, int value, Bitboard with = 0) {
            sum += tell<Us>(context, rule, Bit(s) | with, value);
        };
        context.attacks[Us] |= attacks;
        count(Rule::queen_on_square, queen_on_square_ending<Us>(s));
        if (needs_perpetual_check<Us>(board)) {
            const Bitboard checks = safe_checks_of_queen<Us>(board, attacks);
            count(Rule::perpetual_check_chances, perpetual_check_chances_ending<Us>(board, checks), checks);
        }
        const Bitboard pinned = FindPins(s, board, own.all, enemy);
        count(Rule::men_pinned_to_queen, men_pinned_to_queen_ending(pinned), pinned);
        count(Rule::queen_far_from_own_king, queen_far_from_king_ending(s, own.king_square), Bit(own.king_square));
        count(Rule::queen_far_from_enemy_king, queen_far_from_king_ending(s, enemy.king_square),
              Bit(enemy.king_square));
        count(Rule::queen_on_seventh, queen_on_seventh_ending<Us>(board, s));
    }
    return sum;
}

template SCORE_PAIR queens_opening<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR queens_opening<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR queens_opening<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR queens_opening<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR queens_middle_game<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR queens_middle_game<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR queens_middle_game<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR queens_middle_game<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int queens_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int queens_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int queens_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int queens_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
