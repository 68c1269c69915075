#include "evaluation/pieces/knights.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/pieces/ending_tables.h"
#include "evaluation/pieces/material_terms.h"
#include "evaluation/pieces/piece_tables.h"

namespace {

using piece_tables::value_at;

/// What the opening and the middle game count differently.
struct KnightValues {
    const piece_tables::Board& positional;
    const piece_tables::Board& reckless;
    SCORE_PAIR defends_knight;
    int defends_knight_cover, defends_knight_pressure;
    SCORE_PAIR defended_by_pawn;
    SCORE_PAIR attackable;  ///< enemy pawns on neighbouring files may drive it away
    SCORE_PAIR held_off;    ///< they all are restrained
    int held_off_pressure;
    SCORE_PAIR outpost;
    SCORE_PAIR firm_outpost[2];  ///< by one defender, by two
    int firm_outpost_pressure, firm_outpost_cover;
    SCORE_PAIR other_outpost[3];  ///< by number of defenders
    int other_outpost_pressure, other_outpost_cover;
};

constexpr KnightValues opening_values = {
    .positional = piece_tables::knight_opening_positional,
    .reckless = piece_tables::knight_opening_reckless,
    .defends_knight = {0, 0},
    .defends_knight_cover = 1,
    .defends_knight_pressure = 0,
    .defended_by_pawn = {2, 0},
    .attackable = {-2, -4},
    .held_off = {2, 10},
    .held_off_pressure = 3,
    .outpost = {9, 14},
    .firm_outpost = {{13, 18}, {21, 27}},
    .firm_outpost_pressure = 6,
    .firm_outpost_cover = 3,
    .other_outpost = {{0, 0}, {3, 7}, {5, 12}},
    .other_outpost_pressure = 4,
    .other_outpost_cover = 2,
};

constexpr KnightValues middle_game_values = {
    .positional = piece_tables::knight_middle_game_positional,
    .reckless = piece_tables::knight_middle_game_reckless,
    .defends_knight = {1, -2},
    .defends_knight_cover = 4,
    .defends_knight_pressure = -2,
    .defended_by_pawn = {2, 2},
    .attackable = {2, 4},
    .held_off = {3, 10},
    .held_off_pressure = 2,
    .outpost = {13, 23},
    .firm_outpost = {{13, 20}, {25, 32}},
    .firm_outpost_pressure = 7,
    .firm_outpost_cover = 4,
    .other_outpost = {{0, 0}, {2, 10}, {6, 14}},
    .other_outpost_pressure = 4,
    .other_outpost_cover = 3,
};

/// The more pawns, the better for knights.
SCORE_PAIR knight_by_pawns(const BOARD& board) {
    const int value = 6 * half_of_all_pawns(board) - 30;
    return {value, value};
}

template <Colour Us>
SCORE_PAIR knight_on_square(EVALUATION_CONTEXT& context, Square s, const KnightValues& values) {
    add_points(context.pressure[Us][wide_wing(FileOf(s))], value_at<Us>(piece_tables::knight_pressure, s));
    return {value_at<Us>(values.positional, s), value_at<Us>(values.reckless, s)};
}

template <Colour Us>
SCORE_PAIR knight_in_contact(EVALUATION_CONTEXT& context, const BOARD& board, Square s, const KnightValues& values) {
    const Wing wing = wide_wing(FileOf(s));
    SCORE_PAIR sum;
    if ((bitboard_tables.knight_attacks[s] & board.side(Us).knights) != 0) {
        sum += values.defends_knight;
        add_points(context.cover[Us][wing], values.defends_knight_cover);
        add_points(context.pressure[Us][wing], values.defends_knight_pressure);
    }
    if (Has(context.pawns[Us].attacks, s)) {
        sum += values.defended_by_pawn;
        add_points(context.cover[Us][wing], 1);
    }
    return sum;
}

/// A knight that no enemy pawn can drive away any more.
template <Colour Us>
SCORE_PAIR knight_outpost(EVALUATION_CONTEXT& context, const BOARD& board, Square s, const KnightValues& values) {
    if (rank_seen<Us>(s) == 3) return values.outpost;
    const Bitboard ahead =
        Us == white ? bitboard_tables.white_pawn_front_span[s] : bitboard_tables.black_pawn_front_span[s];
    const Bitboard defenders = bitboard_tables.pawn_attacks(Opponent(Us))[s] & board.side(Us).pawns;
    const int count = PopCount(defenders);
    const bool can_be_kept =
        (ahead & board.side(Opponent(Us)).pawns) == 0 && (defenders & ~context.pawns[Us].passed) != 0;
    const Wing wing = wide_wing(FileOf(s));
    add_points(context.pressure[Us][wing], can_be_kept ? values.firm_outpost_pressure : values.other_outpost_pressure);
    add_points(context.cover[Us][wing], can_be_kept ? values.firm_outpost_cover : values.other_outpost_cover);
    return values.outpost + (can_be_kept ? values.firm_outpost[count - 1] : values.other_outpost[count]);
}

template <Colour Us>
SCORE_PAIR advanced_knight(EVALUATION_CONTEXT& context, const BOARD& board, Square s, const KnightValues& values) {
    if (rank_seen<Us>(s) <= 2) return {};
    const Bitboard ahead =
        Us == white ? bitboard_tables.white_pawn_front_span[s] : bitboard_tables.black_pawn_front_span[s];
    const Bitboard chasers = ahead & neighbouring_files(FileOf(s)) & board.side(Opponent(Us)).pawns;
    if (chasers == 0) return knight_outpost<Us>(context, board, s, values);
    if ((chasers & ~context.pawns[Opponent(Us)].restrained) != 0) return values.attackable;
    add_points(context.pressure[Us][wide_wing(FileOf(s))], values.held_off_pressure);
    return values.held_off;
}

template <Colour Us>
SCORE_PAIR knight_and_kings(EVALUATION_CONTEXT& context, const BOARD& board, Square s) {
    constexpr Colour Them = Opponent(Us);
    const Wing wing = wide_wing(FileOf(s));
    SCORE_PAIR sum;
    const int to_enemy_king = bitboard_tables.distance[s][board.side(Them).king_square];
    if (to_enemy_king > 4 || wing != context.king_wing[Them])
        sum = {-to_enemy_king, -8 * to_enemy_king};
    else
        context.attackers_near_king[Them] |= Bit(s);
    const int to_own_king = bitboard_tables.distance[s][board.side(Us).king_square];
    if (to_own_king < 5 && wing == context.king_wing[Us]) context.attackers_near_king[Us] |= Bit(s);
    return sum;
}

/// By half the openness: knights like it closed.
template <Colour Us>
SCORE_PAIR knight_by_openness(EVALUATION_CONTEXT& context, Square s) {
    static constexpr std::array<int, 8> reckless = {15, 12, 6, 3, 2, 0, -2, -5};
    static constexpr std::array<int, 8> pressure = {6, 5, 3, 2, 1, 1, 0, 0};
    const auto half = static_cast<std::size_t>(context.openness >> 1);
    add_points(context.pressure[Us][wide_wing(FileOf(s))], pressure[half]);
    return {0, reckless[half]};
}

template <Colour Us>
SCORE_PAIR one_knight(EVALUATION_CONTEXT& context, const BOARD& board, Square s, const KnightValues& values) {
    context.attacks[Us] |= bitboard_tables.knight_attacks[s];
    SCORE_PAIR sum = knight_by_pawns(board);
    sum += knight_on_square<Us>(context, s, values);
    sum += knight_in_contact<Us>(context, board, s, values);
    sum += advanced_knight<Us>(context, board, s, values);
    return sum;
}

/// By the number of squares that a knight can go to.
constexpr std::array<SCORE_PAIR, 9> mobility_pairs = {
    {{-6, -12}, {-2, -4}, {2, 4}, {3, 6}, {4, 8}, {4, 8}, {4, 8}, {4, 8}, {4, 8}}};
constexpr std::array<int, 9> mobility_points = {-6, -3, 0, 1, 2, 2, 2, 2, 2};

/// A knight is slow: pawns on both wings, one of them near the rim, trouble it everywhere, rim pawns of one wing where
/// it stands on the other.
int far_wing_charge(Bitboard knights, Bitboard every_pawn) {
    const bool on_left_rim = (every_pawn & files(0, 1)) != 0;
    const bool on_right_rim = (every_pawn & files(6, 7)) != 0;
    const bool on_both_wings = (every_pawn & files(0, 2)) != 0 && (every_pawn & files(5, 7)) != 0;
    if (on_both_wings && (on_left_rim || on_right_rim)) return 12 * PopCount(knights);
    if (on_right_rim) return 8 * PopCount(knights & files(0, 2));
    if (on_left_rim) return 8 * PopCount(knights & files(5, 7));
    return 0;
}

}  // namespace

template <Colour Us>
SCORE_PAIR knights_opening(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    for (Bitboard rest = board.side(Us).knights; rest != 0;) {
        sum += one_knight<Us>(context, board, TakeNextBit(rest), opening_values);
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR knights_middle_game(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    for (Bitboard rest = board.side(Us).knights; rest != 0;) {
        const Square s = TakeNextBit(rest);
        sum += one_knight<Us>(context, board, s, middle_game_values);
        sum += knight_and_kings<Us>(context, board, s);
        sum += knight_by_openness<Us>(context, s);
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR knight_mobility(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    constexpr Colour Them = Opponent(Us);
    const Bitboard safe = ~context.attacks_no_queen[Them] | context.pawns[Us].attacks;
    const Bitboard open = ~board.occupied & ~context.pawns[Them].attacks & safe;
    SCORE_PAIR sum;
    for (Bitboard rest = board.side(Us).knights; rest != 0;) {
        const auto count = static_cast<std::size_t>(PopCount(bitboard_tables.knight_attacks[TakeNextBit(rest)] & open));
        sum += mobility_pairs[count];
        add_points(context.pressure[Us][centre], mobility_points[count]);
        add_points(context.cover[Us][centre], mobility_points[count]);
    }
    return sum;
}

template <Colour Us>
int knights_ending(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const Bitboard knights = board.side(Us).knights;
    const int by_pawns = 6 * half_of_all_pawns(board) - 30;
    int sum = -far_wing_charge(knights, board.side(white).pawns | board.side(black).pawns);
    for (Bitboard rest = knights; rest != 0;) {
        const Square s = TakeNextBit(rest);
        context.attacks[Us] |= bitboard_tables.knight_attacks[s];
        sum += ending_tables::value_at<Us>(ending_tables::knight_ending, s) + by_pawns;
    }
    return sum;
}

template SCORE_PAIR knights_opening<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knights_opening<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knights_middle_game<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knights_middle_game<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knight_mobility<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knight_mobility<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int knights_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int knights_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
