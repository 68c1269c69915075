#include "evaluation/pieces/knights.h"

#include <array>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/rule_values.h"
#include "evaluation/context/sided_squares.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/pieces/ending_tables.h"
#include "evaluation/pieces/material_terms.h"
#include "evaluation/pieces/piece_tables.h"
#include "evaluation/rules/tell.h"

namespace {

using piece_tables::value_at;

/// What the opening and the middle game count differently, rule by rule.
struct KnightValues {
    const piece_tables::Board& positional;
    const piece_tables::Board& reckless;
    RULE_VALUES defends_knight;
    RULE_VALUES defended_by_pawn;
    RULE_VALUES may_be_driven_away;
    RULE_VALUES with_held_chasers;
    SCORE_PAIR outpost;
    RULE_VALUES kept_outpost[2];   ///< with one defender, with two
    RULE_VALUES other_outpost[3];  ///< by number of defenders
};

constexpr KnightValues opening_values = {
    .positional = piece_tables::knight_opening_positional,
    .reckless = piece_tables::knight_opening_reckless,
    .defends_knight = {.pair = {0, 0}, .cover = 1},
    .defended_by_pawn = {.pair = {2, 0}, .cover = 1},
    .may_be_driven_away = {.pair = {-2, -4}},
    .with_held_chasers = {.pair = {2, 10}, .pressure = 3},
    .outpost = {9, 14},
    .kept_outpost = {{.pair = {13, 18}, .pressure = 6, .cover = 3}, {.pair = {21, 27}, .pressure = 6, .cover = 3}},
    .other_outpost = {{.pair = {0, 0}, .pressure = 4, .cover = 2},
                      {.pair = {3, 7}, .pressure = 4, .cover = 2},
                      {.pair = {5, 12}, .pressure = 4, .cover = 2}},
};

constexpr KnightValues middle_game_values = {
    .positional = piece_tables::knight_middle_game_positional,
    .reckless = piece_tables::knight_middle_game_reckless,
    .defends_knight = {.pair = {1, -2}, .pressure = -2, .cover = 4},
    .defended_by_pawn = {.pair = {2, 2}, .cover = 1},
    .may_be_driven_away = {.pair = {2, 4}},
    .with_held_chasers = {.pair = {3, 10}, .pressure = 2},
    .outpost = {13, 23},
    .kept_outpost = {{.pair = {13, 20}, .pressure = 7, .cover = 4}, {.pair = {25, 32}, .pressure = 7, .cover = 4}},
    .other_outpost = {{.pair = {0, 0}, .pressure = 4, .cover = 3},
                      {.pair = {2, 10}, .pressure = 4, .cover = 3},
                      {.pair = {6, 14}, .pressure = 4, .cover = 3}},
};

/// One knight, with what its rules read.
struct KnightState {
    Square square;
    Wing wing;
};

/// The more pawns, the better for knights.
SCORE_PAIR knight_by_pawns(const EVALUATION_CONTEXT& context) {
    const int value = 6 * half_of_all_pawns(context) - 30;
    return {value, value};
}

template <Colour Us>
SCORE_PAIR knight_on_square(EVALUATION_CONTEXT& context, const KnightState& knight, const KnightValues& values) {
    add_points(context.pressure[Us][knight.wing], value_at<Us>(piece_tables::knight_pressure, knight.square));
    return {value_at<Us>(values.positional, knight.square), value_at<Us>(values.reckless, knight.square)};
}

/// A knight that protects another one.
template <Colour Us>
SCORE_PAIR knight_defends_knight(EVALUATION_CONTEXT& context, const BOARD& board, const KnightState& knight,
                                 const RULE_VALUES& values) {
    if ((bitboard_tables.knight_attacks[knight.square] & board.side(Us).knights) == 0) return {};
    return count_on<Us>(knight.wing, context, values);
}

template <Colour Us>
SCORE_PAIR knight_defended_by_pawn(EVALUATION_CONTEXT& context, const KnightState& knight, const RULE_VALUES& values) {
    if (!Has(context.pawns[Us].attacks, knight.square)) return {};
    return count_on<Us>(knight.wing, context, values);
}

// --- Knights on the fourth rank and beyond ---

/// The enemy pawns on the files beside a knight that have still to pass it.
template <Colour Us>
Bitboard chasers_of_knight(const BOARD& board, Square s) {
    return front_span<Us>(s) & neighbouring_files(FileOf(s)) & board.side(Opponent(Us)).pawns;
}

/// One of them can move; or all are restrained.
template <Colour Us>
SCORE_PAIR knight_may_be_driven_away(EVALUATION_CONTEXT& context, const KnightState& knight,
                                     const KnightValues& values) {
    return count_on<Us>(knight.wing, context, values.may_be_driven_away);
}
template <Colour Us>
SCORE_PAIR knight_with_held_chasers(EVALUATION_CONTEXT& context, const KnightState& knight,
                                    const KnightValues& values) {
    return count_on<Us>(knight.wing, context, values.with_held_chasers);
}

/// A knight that no enemy pawn can drive away any more.
SCORE_PAIR knight_outpost(const KnightValues& values) { return values.outpost; }

/// Its defenders, from the fifth rank on. They count for more if no enemy pawn stands before the knight and not all of
/// them are passed: they stay.
template <Colour Us>
SCORE_PAIR knight_outpost_defended(EVALUATION_CONTEXT& context, const BOARD& board, const KnightState& knight,
                                   Bitboard defenders, const KnightValues& values) {
    const int count = PopCount(defenders);
    const bool can_be_kept = (front_span<Us>(knight.square) & board.side(Opponent(Us)).pawns) == 0 &&
                             (defenders & ~context.pawns[Us].passed) != 0;
    return count_on<Us>(knight.wing, context,
                        can_be_kept ? values.kept_outpost[count - 1] : values.other_outpost[count]);
}

// --- The middle game alone ---

/// Far from the enemy king, or on another wing, by the distance.
template <Colour Us>
SCORE_PAIR knight_far_from_king(EVALUATION_CONTEXT& context, const BOARD& board, const KnightState& knight) {
    const int distance = bitboard_tables.distance[knight.square][board.side(Opponent(Us)).king_square];
    if (distance <= 4 && knight.wing == context.king_wing[Opponent(Us)]) return {};
    return {-distance, -8 * distance};
}

/// By half the openness: knights like it closed.
template <Colour Us>
SCORE_PAIR knight_by_openness(EVALUATION_CONTEXT& context, const KnightState& knight) {
    static constexpr std::array<int, 8> reckless = {15, 12, 6, 3, 2, 0, -2, -5};
    static constexpr std::array<int, 8> pressure = {6, 5, 3, 2, 1, 1, 0, 0};
    const int half = context.openness >> 1;
    add_points(context.pressure[Us][knight.wing], at(pressure, half));
    return {0, at(reckless, half)};
}

// --- Mobility ---

/// By the number of squares that a knight can go to.
template <Colour Us>
SCORE_PAIR knight_mobility_by_squares(EVALUATION_CONTEXT& context, int squares) {
    static constexpr std::array<SCORE_PAIR, 9> pairs = {
        {{-6, -12}, {-2, -4}, {2, 4}, {3, 6}, {4, 8}, {4, 8}, {4, 8}, {4, 8}, {4, 8}}};
    static constexpr std::array<int, 9> points = {-6, -3, 0, 1, 2, 2, 2, 2, 2};
    add_points(context.pressure[Us][centre], at(points, squares));
    add_points(context.cover[Us][centre], at(points, squares));
    return at(pairs, squares);
}

// --- Endings ---

int knight_by_pawns_ending(const EVALUATION_CONTEXT& context) { return 6 * half_of_all_pawns(context) - 30; }

template <Colour Us>
int knight_on_square_ending(Square s) {
    return ending_tables::value_at<Us>(ending_tables::knight_ending, s);
}

/// A knight is slow: pawns on both wings, one of them near the rim, trouble it everywhere, rim pawns of one wing where
/// it stands on the other.
int knight_far_from_rim_pawns_ending(Bitboard knights, Bitboard every_pawn) {
    constexpr int everywhere = 12;
    constexpr int on_the_other_wing = 8;
    const bool on_left_rim = (every_pawn & files(0, 1)) != 0;
    const bool on_right_rim = (every_pawn & files(6, 7)) != 0;
    const bool on_both_wings = (every_pawn & files(0, 2)) != 0 && (every_pawn & files(5, 7)) != 0;
    if (on_both_wings && (on_left_rim || on_right_rim)) return -everywhere * PopCount(knights);
    if (on_right_rim) return -on_the_other_wing * PopCount(knights & files(0, 2));
    if (on_left_rim) return -on_the_other_wing * PopCount(knights & files(5, 7));
    return 0;
}

/// The rules that the opening and the middle game share.
template <Colour Us, class Context>
SCORE_PAIR one_knight(Context& context, const BOARD& board, const KnightState& knight, const KnightValues& values) {
    const Square s = knight.square;
    SCORE_PAIR sum;
    const auto count = [&](Rule rule, SCORE_PAIR pair, Bitboard with = 0) {
        sum += tell<Us>(context, rule, Bit(s) | with, pair);
    };
    context.attacks[Us] |= bitboard_tables.knight_attacks[s];
    count(Rule::knight_by_pawns, knight_by_pawns(context));
    count(Rule::knight_on_square, knight_on_square<Us>(context, knight, values));
    count(Rule::knight_defends_knight, knight_defends_knight<Us>(context, board, knight, values.defends_knight),
          bitboard_tables.knight_attacks[s] & board.side(Us).knights);
    count(Rule::knight_defended_by_pawn, knight_defended_by_pawn<Us>(context, knight, values.defended_by_pawn));
    if (rank_seen<Us>(s) <= 2) return sum;

    const Bitboard chasers = chasers_of_knight<Us>(board, s);
    if (chasers == 0) {
        count(Rule::knight_outpost, knight_outpost(values));
        if (rank_seen<Us>(s) != 3) {
            const Bitboard defenders = bitboard_tables.pawn_attacks(Opponent(Us))[s] & board.side(Us).pawns;
            count(Rule::knight_outpost_defended, knight_outpost_defended<Us>(context, board, knight, defenders, values),
                  defenders);
        }
    } else if ((chasers & ~context.pawns[Opponent(Us)].restrained) != 0) {
        count(Rule::knight_may_be_driven_away, knight_may_be_driven_away<Us>(context, knight, values), chasers);
    } else {
        count(Rule::knight_with_held_chasers, knight_with_held_chasers<Us>(context, knight, values), chasers);
    }
    return sum;
}

}  // namespace

template <Colour Us, class Context>
SCORE_PAIR knights_opening(Context& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    for (Bitboard rest = board.side(Us).knights; rest != 0;) {
        const Square s = TakeNextBit(rest);
        sum += one_knight<Us>(context, board, {.square = s, .wing = wide_wing(FileOf(s))}, opening_values);
    }
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR knights_middle_game(Context& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    for (Bitboard rest = board.side(Us).knights; rest != 0;) {
        const Square s = TakeNextBit(rest);
        const KnightState knight{.square = s, .wing = wide_wing(FileOf(s))};
        sum += one_knight<Us>(context, board, knight, middle_game_values);
        sum += tell<Us>(context, Rule::knight_far_from_king, Bit(s) | Bit(board.side(Opponent(Us)).king_square),
                        knight_far_from_king<Us>(context, board, knight));
        sum += tell<Us>(context, Rule::knight_by_openness, Bit(s), knight_by_openness<Us>(context, knight));
    }
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR knight_mobility(Context& context, const BOARD& board) noexcept {
    constexpr Colour Them = Opponent(Us);
    const Bitboard safe = ~context.attacks_no_queen[Them] | context.pawns[Us].attacks;
    const Bitboard open = ~board.occupied & ~context.pawns[Them].attacks & safe;
    SCORE_PAIR sum;
    for (Bitboard rest = board.side(Us).knights; rest != 0;) {
        const Square s = TakeNextBit(rest);
        const Bitboard squares = bitboard_tables.knight_attacks[s] & open;
        sum += tell<Us>(context, Rule::knight_mobility_by_squares, Bit(s) | squares,
                        knight_mobility_by_squares<Us>(context, PopCount(squares)));
    }
    return sum;
}

template <Colour Us, class Context>
int knights_ending(Context& context, const BOARD& board) noexcept {
    const Bitboard knights = board.side(Us).knights;
    int sum = tell<Us>(context, Rule::knight_far_from_rim_pawns, knights,
                       knight_far_from_rim_pawns_ending(knights, board.side(white).pawns | board.side(black).pawns));
    for (Bitboard rest = knights; rest != 0;) {
        const Square s = TakeNextBit(rest);
        context.attacks[Us] |= bitboard_tables.knight_attacks[s];
        sum += tell<Us>(context, Rule::knight_by_pawns, Bit(s), knight_by_pawns_ending(context));
        sum += tell<Us>(context, Rule::knight_on_square, Bit(s), knight_on_square_ending<Us>(s));
    }
    return sum;
}

template SCORE_PAIR knights_opening<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knights_opening<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knights_opening<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knights_opening<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knights_middle_game<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knights_middle_game<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knights_middle_game<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knights_middle_game<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knight_mobility<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knight_mobility<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knight_mobility<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knight_mobility<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int knights_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int knights_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int knights_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int knights_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
