#include <array>
#include <cstddef>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/pawns/front_distance.h"
#include "evaluation/pawns/pawn_groups.h"
#include "evaluation/pawns/pawn_tables.h"
#include "evaluation/pawns/pawn_terms.h"

// The pawn structure in an ending: the walk of the middle game with values of its own, all in centipawns.

namespace {

using pawn_tables::value_at;

// By front_distance; the first is that of a pawn with nothing ahead.
constexpr std::array<std::int16_t, 6> stuck_pawn = {20, 44, 14, 15, 15, 16};
constexpr std::array<std::int16_t, 8> doubled_isolated = {48, 40, 42, 44, 44, 44, 14, 15};

// By rank, and by file from a to h.
constexpr std::array<std::int16_t, 7> defended_passed_by_rank = {0, 0, 3, 10, 30, 55, 90};
constexpr std::array<std::int16_t, 8> defended_passed_by_file = {7, 8, 8, 8, 8, 8, 8, 7};
constexpr std::array<std::int16_t, 7> connected_passed_by_rank = {0, 39, 40, 45, 54, 75, 118};
constexpr std::array<std::int16_t, 7> pushing_pawn_by_rank = {0, 0, 2, 7, 10, 12, 0};

}  // namespace

template <Colour Us>
int pawn_squares_ending(const EVALUATION_CONTEXT& /*context*/, const BOARD& board) noexcept {
    int sum = 0;
    for (Bitboard pawns = board.side(Us).pawns; pawns != 0;) {
        sum += value_at<Us>(pawn_tables::ending, TakeNextBit(pawns));
    }
    return sum;
}

template <Colour Us>
int backward_pawns_ending(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    int sum = 0;
    for (Bitboard pawns = info.backward; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        const int distance = front_distance<Us>(context, board, s);
        if (Has(info.backward_stuck, s))
            sum -= at(stuck_pawn, distance);
        else
            sum -= distance != 0 ? 8 : 10;
    }
    return sum;
}

template <Colour Us>
int isolated_pawns_ending(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    int sum = 0;
    for (Bitboard pawns = info.isolated & ~info.doubled; pawns != 0;) {
        sum -= front_distance<Us>(context, board, TakeNextBit(pawns)) != 0 ? 10 : 14;
    }
    return sum;
}

template <Colour Us>
int duo_and_defended_pawns_ending(const EVALUATION_CONTEXT& context, const BOARD& /*board*/) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    const Bitboard rear_passed = info.passed & ~info.front_passed;
    int sum = 0;
    for (Bitboard pawns = info.duo & ~rear_passed; pawns != 0;) {
        sum += value_at<Us>(pawn_tables::duo_ending, TakeNextBit(pawns));
    }
    for (Bitboard pawns = info.defended & ~rear_passed; pawns != 0;) {
        sum += value_at<Us>(pawn_tables::defended_ending, TakeNextBit(pawns));
    }
    return sum;
}

template <Colour Us>
int doubled_pawns_ending(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    int sum = 0;
    for (Bitboard rest = info.doubled; rest != 0;) {
        const int file = FileOf(FindLowestBit(rest));
        const Bitboard on_file = rest & file_mask(file);
        rest &= ~on_file;
        const bool isolated = (on_file & info.isolated) != 0;
        const int distance = front_distance<Us>(context, board, foremost<Us>(on_file));
        if (info.file_count[static_cast<std::size_t>(file)] > 2) {
            sum -= 65 + (isolated ? 20 : 0) + (distance == 0 ? 5 : 0);
        } else {
            sum -= isolated ? at(doubled_isolated, distance) : 18;
        }
    }
    return sum;
}

template <Colour Us>
int defended_passed_pawns_ending(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    const Bitboard ahead = one_ahead<Us>(board.side(Us).pawns & ~info.passed);
    int sum = 0;
    for (Bitboard pawns = info.front_passed & (one_left(ahead) | one_right(ahead)); pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        sum += at(defended_passed_by_rank, rank_seen<Us>(s)) * at(defended_passed_by_file, FileOf(s)) / 8;
    }
    return sum;
}

template <Colour Us>
int connected_passed_pawns_ending(const EVALUATION_CONTEXT& context) noexcept {
    int sum = 0;
    for_each_connected_pair(context.pawns[Us], [&](int /*right_file*/, int high, int low) {
        sum += at(connected_passed_by_rank, high) * connected_weight(high - low) / 8;
    });
    return sum;
}

template <Colour Us>
int pawn_chains_ending(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    int sum = 0;
    for_each_defender<Us>(context.pawns[Us], board.side(Us).pawns,
                          [&](Square /*defender*/, bool firm) { sum += firm ? 2 : -4; });
    return sum;
}

template <Colour Us>
int pawn_majorities_ending(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    int sum = 0;
    for (const Wing wing : {queen_side, king_side}) {
        if (context.majority[wing].kind != majority_of<Us>) continue;
        const Bitboard pushing = majority_pawns<Us>(context, board, wing);
        sum += 17 - 8 * PopCount(pushing & (info.backward | context.rams));
        for (Bitboard pawns = pushing; pawns != 0;) sum += at(pushing_pawn_by_rank, rank_seen<Us>(TakeNextBit(pawns)));
    }
    return sum;
}

template <Colour Us>
int centre_patterns_ending(const BOARD& board) noexcept {
    return stands_alone_in_centre<Us>(board.side(Us).pawns, board.side(Opponent(Us)).pawns) ? -6 : 0;
}

template int pawn_squares_ending<white>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_squares_ending<black>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int backward_pawns_ending<white>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int backward_pawns_ending<black>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int isolated_pawns_ending<white>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int isolated_pawns_ending<black>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int duo_and_defended_pawns_ending<white>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int duo_and_defended_pawns_ending<black>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int doubled_pawns_ending<white>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int doubled_pawns_ending<black>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int defended_passed_pawns_ending<white>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int defended_passed_pawns_ending<black>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int connected_passed_pawns_ending<white>(const EVALUATION_CONTEXT& context) noexcept;
template int connected_passed_pawns_ending<black>(const EVALUATION_CONTEXT& context) noexcept;
template int pawn_chains_ending<white>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_chains_ending<black>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_majorities_ending<white>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_majorities_ending<black>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int centre_patterns_ending<white>(const BOARD& board) noexcept;
template int centre_patterns_ending<black>(const BOARD& board) noexcept;
