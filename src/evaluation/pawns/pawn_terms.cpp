#include "evaluation/pawns/pawn_terms.h"

#include <array>
#include <cstddef>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/pawns/front_distance.h"
#include "evaluation/pawns/pawn_groups.h"
#include "evaluation/pawns/pawn_points.h"
#include "evaluation/pawns/pawn_tables.h"
#include "evaluation/rules/tell.h"

namespace {

using pawn_tables::value_at;

// --- Squares ---

template <Colour Us>
SCORE_PAIR pawn_on_square(Square s, PositionType type) {
    const auto& positional = type == opening ? pawn_tables::opening_positional : pawn_tables::middle_game_positional;
    const auto& reckless = type == opening ? pawn_tables::opening_reckless : pawn_tables::middle_game_reckless;
    return {value_at<Us>(positional, s), value_at<Us>(reckless, s)};
}

// --- Backward pawns ---

/// One that still stands at home without a neighbour, by its front_distance.
template <Colour Us>
SCORE_PAIR stuck_backward_pawn(EVALUATION_CONTEXT& context, Square s, int distance) {
    static constexpr std::array<RULE_VALUES, 8> by_distance = {{
        {.pair = {-15, -12}, .pressure = -3, .cover = -8},  // nothing ahead
        {.pair = {-15, -12}, .pressure = -1, .cover = -4},  // 1
        {.pair = {-6, -6}, .pressure = -1, .cover = -4},
        {.pair = {-8, -8}, .pressure = -1, .cover = -4},
        {.pair = {-9, -9}, .pressure = -1, .cover = -4},
        {.pair = {-11, -10}, .pressure = -1, .cover = -4},
        {.pair = {-10, -5}, .pressure = -1, .cover = -4},
        {.pair = {-3, -3}, .pressure = -1, .cover = -4},
    }};
    return count_of_pawns_on<Us>(narrow_wing(FileOf(s)), context, at(by_distance, distance));
}

/// In a duo it keeps its pressure.
template <Colour Us>
SCORE_PAIR backward_pawn(EVALUATION_CONTEXT& context, Square s, int distance) {
    constexpr RULE_VALUES nothing_ahead = {.pair = {-10, -5}, .cover = -3};
    constexpr RULE_VALUES stopped_anyway = {.pair = {-3, -3}, .cover = -1};
    const Wing wing = narrow_wing(FileOf(s));
    if (!Has(context.pawns[Us].duo, s)) add_points(context.pawn_pressure[Us][wing], -1);
    return count_of_pawns_on<Us>(wing, context, distance == 0 ? nothing_ahead : stopped_anyway);
}

// --- Isolated pawns ---

template <Colour Us>
SCORE_PAIR isolated_pawn(EVALUATION_CONTEXT& context, Square s, int distance) {
    constexpr RULE_VALUES nothing_ahead = {.pair = {-18, -6}, .cover = -4};
    constexpr RULE_VALUES stopped_anyway = {.pair = {-14, -4}, .cover = -2};
    return count_of_pawns_on<Us>(narrow_wing(FileOf(s)), context, distance == 0 ? nothing_ahead : stopped_anyway);
}

/// On d4, with no enemy pawn that holds it up: a weakness that presses.
template <Colour Us>
SCORE_PAIR isolated_pawn_on_d4(EVALUATION_CONTEXT& context) {
    return count_of_pawns_on<Us>(centre, context, {.pair = {-8, 12}, .pressure = 8, .cover = -10});
}

/// An enemy pawn on e6 or c6 watches the square before it.
template <Colour Us>
SCORE_PAIR isolated_pawn_on_d4_watched(EVALUATION_CONTEXT& context, const BOARD& board) {
    constexpr RULE_VALUES by_e6 = {.pair = {2, 3}, .pressure = -3};
    constexpr RULE_VALUES by_c6_alone = {.pair = {2, 3}, .pressure = -2};
    constexpr int enemy_cover = 3;
    const Bitboard enemy_pawns = board.side(Opponent(Us)).pawns;
    if ((enemy_pawns & squares_seen<Us>(c6, e6)) == 0) return {};
    add_enemy_cover_of_pawns<Us>(centre, context, enemy_cover);
    return count_of_pawns_on<Us>(centre, context, Has(enemy_pawns, Seen<Us>(e6)) ? by_e6 : by_c6_alone);
}

// --- Pawns together ---

template <Colour Us>
SCORE_PAIR pawn_in_duo(Square s) {
    return {value_at<Us>(pawn_tables::duo_positional, s), value_at<Us>(pawn_tables::duo_reckless, s)};
}
template <Colour Us>
SCORE_PAIR defended_pawn(Square s) {
    return {value_at<Us>(pawn_tables::defended_positional, s), value_at<Us>(pawn_tables::defended_reckless, s)};
}

// --- Several pawns on a file, by the front_distance of the foremost ---

template <Colour Us>
SCORE_PAIR tripled_isolated_pawns(EVALUATION_CONTEXT& context, Wing wing, int distance) {
    constexpr RULE_VALUES nothing_ahead = {.pair = {-90, -90}, .pressure = -2, .cover = -8};
    constexpr RULE_VALUES stopped_anyway = {.pair = {-85, -82}, .pressure = -2, .cover = -8};
    return count_of_pawns_on<Us>(wing, context, distance == 0 ? nothing_ahead : stopped_anyway);
}
template <Colour Us>
SCORE_PAIR tripled_pawns(EVALUATION_CONTEXT& context, Wing wing, int distance) {
    constexpr RULE_VALUES nothing_ahead = {.pair = {-70, -70}, .pressure = -2, .cover = -8};
    constexpr RULE_VALUES stopped_anyway = {.pair = {-65, -67}, .pressure = -2, .cover = -8};
    return count_of_pawns_on<Us>(wing, context, distance == 0 ? nothing_ahead : stopped_anyway);
}
template <Colour Us>
SCORE_PAIR doubled_isolated_pawns(EVALUATION_CONTEXT& context, Wing wing, int distance) {
    static constexpr std::array<RULE_VALUES, 6> by_distance = {{
        {.pair = {-50, -30}, .pressure = -2, .cover = -10},  // nothing ahead
        {.pair = {-30, -10}, .pressure = -1, .cover = -7},   // 1
        {.pair = {-34, -14}, .pressure = -1, .cover = -7},
        {.pair = {-36, -15}, .pressure = -1, .cover = -7},
        {.pair = {-39, -17}, .pressure = -1, .cover = -7},
        {.pair = {-42, -20}, .pressure = -1, .cover = -7},
    }};
    return count_of_pawns_on<Us>(wing, context, at(by_distance, distance));
}
/// Two that have neighbours.
template <Colour Us>
SCORE_PAIR doubled_pawns_with_neighbours(EVALUATION_CONTEXT& context, Wing wing) {
    return count_of_pawns_on<Us>(wing, context, {.pair = {-16, -6}, .pressure = -2, .cover = -3});
}

// --- Connected passed pawns ---

/// By the rank of the foremost, and less the farther the other is behind it. The enemy's cover suffers.
template <Colour Us>
SCORE_PAIR connected_pair(EVALUATION_CONTEXT& context, Wing wing, int high, int low) {
    static constexpr std::array<SCORE_PAIR, 7> eighths_by_rank = {{
        {0, 0},
        {15, 10},  // the second rank
        {16, 11},
        {20, 18},
        {32, 35},
        {44, 50},
        {100, 110},
    }};
    constexpr int pressure = 3;
    constexpr int enemy_cover = -5;
    const int weight = connected_weight(high - low);
    const SCORE_PAIR pair = at(eighths_by_rank, high);
    add_points(context.pawn_pressure[Us][wing], pressure);
    add_enemy_cover_of_pawns<Us>(wing, context, enemy_cover);
    return {weight * pair.positional() / 8, weight * pair.reckless() / 8};
}

// --- Pawn chains ---

template <Colour Us>
SCORE_PAIR firm_pawn_in_chain(EVALUATION_CONTEXT& context, Square s) {
    return count_of_pawns_on<Us>(narrow_wing(FileOf(s)), context, {.pair = {3, 0}, .cover = 1});
}
template <Colour Us>
SCORE_PAIR loose_pawn_in_chain(EVALUATION_CONTEXT& context, Square s) {
    return count_of_pawns_on<Us>(narrow_wing(FileOf(s)), context, {.pair = {-8, -2}, .cover = -2});
}

// --- Majorities ---

template <Colour Us>
SCORE_PAIR majority_on_wing(EVALUATION_CONTEXT& context, Wing wing) {
    return count_of_pawns_on<Us>(wing, context, {.pair = {18, 10}, .pressure = 2});
}

/// A pawn of it that has left its first square, by rank.
template <Colour Us>
SCORE_PAIR pawn_in_majority(Square s) {
    static constexpr std::array<int, 7> reckless = {0, 0, 2, 6, 8, 10, 0};
    return {0, at(reckless, rank_seen<Us>(s))};
}

/// Such a pawn presses the more the farther it is; but one that can't advance helps the enemy.
template <Colour Us>
SCORE_PAIR pawn_free_in_majority(EVALUATION_CONTEXT& context, Wing wing, Square s) {
    add_points(context.pawn_pressure[Us][wing], rank_seen<Us>(s) - 1);
    return {};
}
template <Colour Us>
SCORE_PAIR pawn_held_in_majority(EVALUATION_CONTEXT& context, Wing wing) {
    constexpr int enemy_cover = 3;
    add_enemy_cover_of_pawns<Us>(wing, context, enemy_cover);
    return count_of_pawns_on<Us>(wing, context, {.pair = {-2, -7}, .pressure = -4});
}

}  // namespace

template <Colour Us, class Context>
SCORE_PAIR pawn_squares(Context& context, const BOARD& board, PositionType type) noexcept {
    SCORE_PAIR sum;
    for (Bitboard pawns = board.side(Us).pawns; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        sum += tell<Us>(context, Rule::pawn_on_square, Bit(s), pawn_on_square<Us>(s, type));
    }
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR backward_pawns(Context& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    for (Bitboard pawns = context.pawns[Us].backward; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        const int distance = front_distance<Us>(context, board, s);
        if (Has(context.pawns[Us].backward_stuck, s)) {
            sum += tell<Us>(context, Rule::stuck_backward_pawn, Bit(s), stuck_backward_pawn<Us>(context, s, distance));
        } else {
            sum += tell<Us>(context, Rule::backward_pawn, Bit(s), backward_pawn<Us>(context, s, distance));
        }
    }
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR isolated_pawns(Context& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    for (Bitboard pawns = context.pawns[Us].isolated & ~context.pawns[Us].doubled; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        sum += tell<Us>(context, Rule::isolated_pawn, Bit(s),
                        isolated_pawn<Us>(context, s, front_distance<Us>(context, board, s)));
    }
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR isolated_queen_pawn(Context& context, const BOARD& board) noexcept {
    constexpr Bitboard queen_pawn = squares_seen<Us>(d4);
    constexpr Bitboard watching = squares_seen<Us>(c6, e6);
    const Bitboard enemy_pawns = board.side(Opponent(Us)).pawns;
    if ((context.pawns[Us].isolated & ~context.pawns[Us].doubled & queen_pawn) == 0) return {};
    if ((enemy_pawns & squares_seen<Us>(c5, d5, e5, d6, d7)) != 0) return {};
    SCORE_PAIR sum = tell<Us>(context, Rule::isolated_pawn_on_d4, queen_pawn, isolated_pawn_on_d4<Us>(context));
    sum += tell<Us>(context, Rule::isolated_pawn_on_d4_watched, queen_pawn | (enemy_pawns & watching),
                    isolated_pawn_on_d4_watched<Us>(context, board));
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR duo_and_defended_pawns(Context& context, const BOARD& /*board*/) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    SCORE_PAIR sum;
    for (Bitboard pawns = info.duo & ~info.front_passed; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        sum += tell<Us>(context, Rule::pawn_in_duo, Bit(s), pawn_in_duo<Us>(s));
    }
    for (Bitboard pawns = info.defended & ~info.front_passed; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        sum += tell<Us>(context, Rule::defended_pawn, Bit(s), defended_pawn<Us>(s));
    }
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR doubled_pawns(Context& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    SCORE_PAIR sum;
    for (Bitboard rest = info.doubled; rest != 0;) {
        const int file = FileOf(FindLowestBit(rest));
        const Bitboard on_file = rest & file_mask(file);
        rest &= ~on_file;
        const auto count = [&](Rule rule, SCORE_PAIR pair) { sum += tell<Us>(context, rule, on_file, pair); };
        const Wing wing = narrow_wing(file);
        const bool are_isolated = (on_file & info.isolated) != 0;
        const int distance = front_distance<Us>(context, board, foremost<Us>(on_file));
        if (has_three(on_file)) {
            if (are_isolated)
                count(Rule::tripled_isolated_pawns, tripled_isolated_pawns<Us>(context, wing, distance));
            else
                count(Rule::tripled_pawns, tripled_pawns<Us>(context, wing, distance));
        } else if (are_isolated) {
            count(Rule::doubled_isolated_pawns, doubled_isolated_pawns<Us>(context, wing, distance));
        } else {
            count(Rule::doubled_pawns_with_neighbours, doubled_pawns_with_neighbours<Us>(context, wing));
        }
    }
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR connected_passed_pawns(Context& context, const BOARD& /*board*/) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    if (info.front_passed == 0) return {};
    SCORE_PAIR sum;
    for_each_connected_pair(info, [&](int right_file, int high, int low) {
        sum += tell<Us>(context, Rule::connected_pair, info.front_passed & files(right_file - 1, right_file),
                        connected_pair<Us>(context, wide_wing(right_file), high, low));
    });
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR pawn_chains(Context& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    for_each_defender<Us>(context.pawns[Us], board.side(Us).pawns, [&](Square s, bool firm) {
        if (firm)
            sum += tell<Us>(context, Rule::firm_pawn_in_chain, Bit(s), firm_pawn_in_chain<Us>(context, s));
        else
            sum += tell<Us>(context, Rule::loose_pawn_in_chain, Bit(s), loose_pawn_in_chain<Us>(context, s));
    });
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR pawn_majorities(Context& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    for (const Wing wing : {queen_side, king_side}) {
        if (context.majority[wing].kind != majority_of[Us]) continue;
        sum += tell<Us>(context, Rule::majority_on_wing, board.side(Us).pawns & half_of_wing(wing),
                        majority_on_wing<Us>(context, wing));
        for (Bitboard pawns = majority_pawns<Us>(context, board, wing); pawns != 0;) {
            const Square s = TakeNextBit(pawns);
            const auto count = [&](Rule rule, SCORE_PAIR pair) { sum += tell<Us>(context, rule, Bit(s), pair); };
            count(Rule::pawn_in_majority, pawn_in_majority<Us>(s));
            if (Has(context.pawns[Us].backward | context.rams, s))
                count(Rule::pawn_held_in_majority, pawn_held_in_majority<Us>(context, wing));
            else
                count(Rule::pawn_free_in_majority, pawn_free_in_majority<Us>(context, wing, s));
        }
    }
    return sum;
}

template SCORE_PAIR pawn_squares<white>(EVALUATION_CONTEXT& context, const BOARD& board, PositionType type) noexcept;
template SCORE_PAIR pawn_squares<black>(EVALUATION_CONTEXT& context, const BOARD& board, PositionType type) noexcept;
template SCORE_PAIR pawn_squares<white>(TRACED_CONTEXT& context, const BOARD& board, PositionType type) noexcept;
template SCORE_PAIR pawn_squares<black>(TRACED_CONTEXT& context, const BOARD& board, PositionType type) noexcept;
template SCORE_PAIR backward_pawns<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR backward_pawns<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR backward_pawns<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR backward_pawns<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_pawns<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_pawns<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_pawns<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_pawns<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_queen_pawn<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_queen_pawn<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_queen_pawn<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_queen_pawn<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR duo_and_defended_pawns<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR duo_and_defended_pawns<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR duo_and_defended_pawns<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR duo_and_defended_pawns<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR doubled_pawns<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR doubled_pawns<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR doubled_pawns<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR doubled_pawns<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR connected_passed_pawns<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR connected_passed_pawns<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR connected_passed_pawns<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR connected_passed_pawns<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR pawn_chains<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR pawn_chains<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR pawn_chains<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR pawn_chains<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR pawn_majorities<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR pawn_majorities<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR pawn_majorities<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR pawn_majorities<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
