#include "evaluation/pawns/pawn_terms.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/pawns/front_distance.h"
#include "evaluation/pawns/pawn_groups.h"
#include "evaluation/pawns/pawn_tables.h"

namespace {

using pawn_tables::value_at;

template <std::size_t Size>
using PairTable = std::array<SCORE_PAIR, Size>;

/// The counters of the pawn structure that a term of `Us` changes.
template <Colour Us>
struct PawnCounters {
    explicit PawnCounters(EVALUATION_CONTEXT& context)
        : own_pressure(context.pawn_pressure[Us]),
          own_cover(context.pawn_cover[Us]),
          enemy_cover(context.pawn_cover[Opponent(Us)]) {}
    void AddPressure(Wing wing, int points) { add_points(own_pressure[wing], points); }
    void AddCover(Wing wing, int points) { add_points(own_cover[wing], points); }
    void AddEnemyCover(Wing wing, int points) { add_points(enemy_cover[wing], points); }

    WingCounters& own_pressure;
    WingCounters& own_cover;
    WingCounters& enemy_cover;
};

/// A backward pawn that still stands at home without a neighbour, by front_distance.
constexpr PairTable<8> stuck_pawn = {{
    {-15, -12},  // none
    {-15, -12},  // 1
    {-6, -6},
    {-8, -8},
    {-9, -9},
    {-11, -10},
    {-10, -5},
    {-3, -3},
}};

/// Two isolated pawns on a file, by the front_distance of the foremost.
constexpr PairTable<6> doubled_isolated = {{
    {-50, -30},  // none
    {-30, -10},  // 1
    {-34, -14},
    {-36, -15},
    {-39, -17},
    {-42, -20},
}};

/// Connected passed pawns, by the rank of the foremost, in eighths and for each point of their weight.
constexpr PairTable<7> connected_passed = {{
    {0, 0},
    {15, 10},  // the second rank
    {16, 11},
    {20, 18},
    {32, 35},
    {44, 50},
    {100, 110},
}};
/// Pawns that push a majority: reckless, by rank.
constexpr std::array<int, 7> pushing_pawn = {0, 0, 2, 6, 8, 10, 0};

}  // namespace

template <Colour Us>
SCORE_PAIR pawn_squares(const EVALUATION_CONTEXT& /*context*/, const BOARD& board, PositionType type) noexcept {
    const auto& positional = type == opening ? pawn_tables::opening_positional : pawn_tables::middle_game_positional;
    const auto& reckless = type == opening ? pawn_tables::opening_reckless : pawn_tables::middle_game_reckless;
    SCORE_PAIR sum;
    for (Bitboard pawns = board.side(Us).pawns; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        sum += {value_at<Us>(positional, s), value_at<Us>(reckless, s)};
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR backward_pawns(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    PawnCounters<Us> counters(context);
    SCORE_PAIR sum;
    for (Bitboard pawns = info.backward; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        const Wing wing = narrow_wing(FileOf(s));
        const int distance = front_distance<Us>(context, board, s);
        if (Has(info.backward_stuck, s)) {
            sum += at(stuck_pawn, distance);
            counters.AddPressure(wing, distance == 0 ? -3 : -1);
            counters.AddCover(wing, distance == 0 ? -8 : -4);
        } else {
            sum += distance == 0 ? SCORE_PAIR{-10, -5} : SCORE_PAIR{-3, -3};
            if (!Has(info.duo, s)) counters.AddPressure(wing, -1);
            counters.AddCover(wing, distance == 0 ? -3 : -1);
        }
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR isolated_pawns(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    PawnCounters<Us> counters(context);
    SCORE_PAIR sum;
    for (Bitboard pawns = info.isolated & ~info.doubled; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        const bool free_file = front_distance<Us>(context, board, s) == 0;
        sum += free_file ? SCORE_PAIR{-18, -6} : SCORE_PAIR{-14, -4};
        counters.AddCover(narrow_wing(FileOf(s)), free_file ? -4 : -2);
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR isolated_queen_pawn(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    const Bitboard enemy_pawns = board.side(Opponent(Us)).pawns;
    if (!Has(info.isolated & ~info.doubled, Seen<Us>(d4))) return {};
    if ((enemy_pawns & squares_seen<Us>(c5, d5, e5, d6, d7)) != 0) return {};
    PawnCounters<Us> counters(context);
    SCORE_PAIR sum = {-8, 12};
    counters.AddCover(centre, -10);
    if ((enemy_pawns & squares_seen<Us>(c6, e6)) == 0) {
        counters.AddPressure(centre, 8);
    } else {
        sum += {2, 3};
        counters.AddEnemyCover(centre, 3);
        counters.AddPressure(centre, Has(enemy_pawns, Seen<Us>(e6)) ? 5 : 6);
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR duo_and_defended_pawns(const EVALUATION_CONTEXT& context, const BOARD& /*board*/) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    SCORE_PAIR sum;
    for (Bitboard pawns = info.duo & ~info.front_passed; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        sum += {value_at<Us>(pawn_tables::duo_positional, s), value_at<Us>(pawn_tables::duo_reckless, s)};
    }
    for (Bitboard pawns = info.defended & ~info.front_passed; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        sum += {value_at<Us>(pawn_tables::defended_positional, s), value_at<Us>(pawn_tables::defended_reckless, s)};
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR doubled_pawns(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    PawnCounters<Us> counters(context);
    SCORE_PAIR sum;
    for (Bitboard rest = info.doubled; rest != 0;) {
        const int file = FileOf(FindLowestBit(rest));
        const Bitboard on_file = rest & file_mask(file);
        rest &= ~on_file;
        const Wing wing = narrow_wing(file);
        const bool isolated = (on_file & info.isolated) != 0;
        const int distance = front_distance<Us>(context, board, foremost<Us>(on_file));
        if (info.file_count[static_cast<std::size_t>(file)] > 2) {
            if (isolated) sum += distance != 0 ? SCORE_PAIR{-85, -82} : SCORE_PAIR{-90, -90};
            if (!isolated) sum += distance != 0 ? SCORE_PAIR{-65, -67} : SCORE_PAIR{-70, -70};
            counters.AddPressure(wing, -2);
            counters.AddCover(wing, -8);
        } else if (!isolated) {
            sum += {-16, -6};
            counters.AddPressure(wing, -2);
            counters.AddCover(wing, -3);
        } else {
            sum += at(doubled_isolated, distance);
            counters.AddPressure(wing, distance == 0 ? -2 : -1);
            counters.AddCover(wing, distance == 0 ? -10 : -7);
        }
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR connected_passed_pawns(EVALUATION_CONTEXT& context) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    if (info.front_passed == 0) return {};
    PawnCounters<Us> counters(context);
    SCORE_PAIR sum;
    for_each_connected_pair(info, [&](int right_file, int high, int low) {
        const int weight = connected_weight(high - low);
        const SCORE_PAIR pair = at(connected_passed, high);
        sum += {weight * pair.positional() / 8, weight * pair.reckless() / 8};
        counters.AddPressure(wide_wing(right_file), 3);
        counters.AddEnemyCover(wide_wing(right_file), -5);
    });
    return sum;
}

template <Colour Us>
SCORE_PAIR pawn_chains(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    PawnCounters<Us> counters(context);
    SCORE_PAIR sum;
    for_each_defender<Us>(context.pawns[Us], board.side(Us).pawns, [&](Square defender, bool firm) {
        sum += firm ? SCORE_PAIR{3, 0} : SCORE_PAIR{-8, -2};
        counters.AddCover(narrow_wing(FileOf(defender)), firm ? 1 : -2);
    });
    return sum;
}

template <Colour Us>
SCORE_PAIR pawn_majorities(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    PawnCounters<Us> counters(context);
    SCORE_PAIR sum;
    for (const Wing wing : {queen_side, king_side}) {
        if (context.majority[wing].kind != majority_of<Us>) continue;
        sum += {18, 10};
        counters.AddPressure(wing, 2);
        for (Bitboard pawns = majority_pawns<Us>(context, board, wing); pawns != 0;) {
            const Square s = TakeNextBit(pawns);
            const int rank = rank_seen<Us>(s);
            sum += {0, pushing_pawn[static_cast<std::size_t>(rank)]};
            if (Has(info.backward | context.rams, s)) {
                sum += {-2, -7};
                counters.AddPressure(wing, -4);
                counters.AddEnemyCover(wing, 3);
            } else {
                counters.AddPressure(wing, rank - 1);
            }
        }
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR centre_squares(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    constexpr Bitboard centre_square_set = squares_seen<Us>(d4, e4, d5, e5);
    const PAWN_INFO& own = context.pawns[Us];
    const PAWN_INFO& enemy = context.pawns[Opponent(Us)];
    const Bitboard own_pawns = board.side(Us).pawns;
    const Bitboard enemy_pawns = board.side(Opponent(Us)).pawns;
    const Bitboard empty = centre_square_set & ~(own_pawns | enemy_pawns);
    PawnCounters<Us> counters(context);

    const Bitboard held = empty & own.attacks & ~enemy.attacks;
    const int contested = PopCount(held & enemy.attack_span);
    const int safe = PopCount(held & ~enemy.attack_span);
    const int reachable = PopCount(empty & ~own.attacks & ~enemy.attacks & own.attack_span & ~enemy.attack_span);
    counters.AddPressure(centre, 4 * contested + 6 * safe);
    counters.AddCover(centre, 2 * reachable);
    SCORE_PAIR sum = {2 * contested + 4 * safe + 2 * reachable, 4 * contested + 12 * safe + reachable};
    if (PopCount(own_pawns & files(3, 4)) > PopCount(enemy_pawns & files(3, 4))) {
        sum += {2, 2};
        counters.AddPressure(centre, 1);
    }
    return sum;
}

namespace {

/// One formation that a side's centre pawns stand in.
struct CentrePattern {
    SCORE_PAIR pair;
    int pressure, cover;  ///< of the centre
    int king_side_pressure;
};

template <Colour Us>
class CentrePatterns {
  public:
    CentrePatterns(EVALUATION_CONTEXT& context, const BOARD& board)
        : own_(board.side(Us).pawns), enemy_(board.side(Opponent(Us)).pawns), counters_(context) {}

    SCORE_PAIR Sum() {
        if (Own(d2)) PawnOnD2();
        if (Own(e2)) PawnOnE2();
        if (Own(d4)) PawnOnD4();
        if (Own(e4)) PawnOnE4();
        return sum_;
    }

  private:
    bool Own(Square s) const { return Has(own_, Seen<Us>(s)); }
    bool Enemy(Square s) const { return Has(enemy_, Seen<Us>(s)); }
    bool AnyPawn(Square s) const { return Own(s) || Enemy(s); }
    void Add(const CentrePattern& pattern) {
        sum_ += pattern.pair;
        counters_.AddPressure(centre, pattern.pressure);
        counters_.AddCover(centre, pattern.cover);
        counters_.AddPressure(king_side, pattern.king_side_pressure);
    }

    // Rows that do not exclude one another all count.
    void PawnOnD2() {
        if (Own(e2)) Add({{-8, -20}, -6, -4, 0});
        if (AnyPawn(d3))
            Add({{-12, -20}, -6, -6, 0});
        else
            Add({{0, 0}, -4, -2, 0});
    }
    void PawnOnE2() {
        if (AnyPawn(e3))
            Add({{-12, -20}, -6, -6, 0});
        else if (Own(g2) || Own(d2))
            Add({{-7, -14}, -5, -4, 0});
    }
    void PawnOnD4() {
        if (Own(c2)) {
            if (Enemy(d5))
                Add({{-12, -20}, -6, 0, 0});
            else
                Add({{-2, -14}, -3, 0, 0});
        } else if (stands_alone_in_centre<Us>(own_, enemy_)) {
            Add({{-6, 2}, 0, -2, 0});
        } else {
            if (Own(c3)) Add({{10, 8}, 0, 3, 0});
            if (Own(c4)) Add({{8, 12}, 3, 0, 0});
        }
    }
    void PawnOnE4() {
        if (Own(f2)) {
            if (Enemy(e5))
                Add({{-3, -16}, 0, 0, -4});
            else
                Add({{0, -8}, 0, 0, -3});
        }
        if (Own(f3)) Add({{3, 4}, 0, 2, 0});
        if (Own(f4)) Add({{3, 10}, 0, 0, 6});
    }

    Bitboard own_, enemy_;
    PawnCounters<Us> counters_;
    SCORE_PAIR sum_;
};

}  // namespace

template <Colour Us>
SCORE_PAIR centre_patterns(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    return CentrePatterns<Us>(context, board).Sum();
}

template SCORE_PAIR pawn_squares<white>(const EVALUATION_CONTEXT& context, const BOARD& board,
                                        PositionType type) noexcept;
template SCORE_PAIR pawn_squares<black>(const EVALUATION_CONTEXT& context, const BOARD& board,
                                        PositionType type) noexcept;
template SCORE_PAIR backward_pawns<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR backward_pawns<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_pawns<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_pawns<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_queen_pawn<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_queen_pawn<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR duo_and_defended_pawns<white>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR duo_and_defended_pawns<black>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR doubled_pawns<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR doubled_pawns<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR connected_passed_pawns<white>(EVALUATION_CONTEXT& context) noexcept;
template SCORE_PAIR connected_passed_pawns<black>(EVALUATION_CONTEXT& context) noexcept;
template SCORE_PAIR pawn_chains<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR pawn_chains<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR pawn_majorities<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR pawn_majorities<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR centre_squares<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR centre_squares<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR centre_patterns<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR centre_patterns<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
