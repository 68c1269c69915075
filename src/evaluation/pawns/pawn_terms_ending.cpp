#include <array>
#include <cstddef>
#include <cstdint>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/pawns/front_distance.h"
#include "evaluation/pawns/pawn_groups.h"
#include "evaluation/pawns/pawn_tables.h"
#include "evaluation/pawns/pawn_terms.h"
#include "evaluation/rules/tell.h"

// The pawn structure in an ending: the rules of the middle game with values of their own, all in centipawns.

namespace {

using pawn_tables::value_at;

// By front_distance; the first is that of a pawn with nothing ahead.
int stuck_backward_pawn_ending(int distance) {
    static constexpr std::array<int, 6> charge = {20, 44, 14, 15, 15, 16};
    return -at(charge, distance);
}
int backward_pawn_ending(int distance) { return distance == 0 ? -10 : -8; }
int isolated_pawn_ending(int distance) { return distance == 0 ? -14 : -10; }

// By the front_distance of the foremost pawn.
int tripled_isolated_pawns_ending(int distance) { return distance == 0 ? -90 : -85; }
int tripled_pawns_ending(int distance) { return distance == 0 ? -70 : -65; }
int doubled_isolated_pawns_ending(int distance) {
    static constexpr std::array<int, 8> charge = {48, 40, 42, 44, 44, 44, 14, 15};
    return -at(charge, distance);
}
constexpr int doubled_pawns_with_neighbours_ending = -18;

template <Colour Us>
int defended_passed_pawn_ending(Square s) {
    static constexpr std::array<int, 7> by_rank = {0, 0, 3, 10, 30, 55, 90};
    static constexpr std::array<int, 8> eighths_by_file = {7, 8, 8, 8, 8, 8, 8, 7};
    return at(by_rank, rank_seen<Us>(s)) * at(eighths_by_file, FileOf(s)) / 8;
}

int connected_pair_ending(int high, int low) {
    static constexpr std::array<int, 7> eighths_by_rank = {0, 39, 40, 45, 54, 75, 118};
    return at(eighths_by_rank, high) * connected_weight(high - low) / 8;
}

constexpr int firm_pawn_in_chain_ending = 2;
constexpr int loose_pawn_in_chain_ending = -4;

constexpr int majority_on_wing_ending = 17;
template <Colour Us>
int pawn_in_majority_ending(Square s) {
    static constexpr std::array<int, 7> by_rank = {0, 0, 2, 7, 10, 12, 0};
    return at(by_rank, rank_seen<Us>(s));
}
constexpr int pawn_held_in_majority_ending = -8;

}  // namespace

template <Colour Us, class Context>
int pawn_squares_ending(Context& context, const BOARD& board) noexcept {
    int sum = 0;
    for (Bitboard pawns = board.side(Us).pawns; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        sum += tell<Us>(context, Rule::pawn_on_square, Bit(s), int{value_at<Us>(pawn_tables::ending, s)});
    }
    return sum;
}

template <Colour Us, class Context>
int backward_pawns_ending(Context& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    int sum = 0;
    for (Bitboard pawns = info.backward; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        const int distance = front_distance<Us>(context, board, s);
        if (Has(info.backward_stuck, s))
            sum += tell<Us>(context, Rule::stuck_backward_pawn, Bit(s), stuck_backward_pawn_ending(distance));
        else
            sum += tell<Us>(context, Rule::backward_pawn, Bit(s), backward_pawn_ending(distance));
    }
    return sum;
}

template <Colour Us, class Context>
int isolated_pawns_ending(Context& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    int sum = 0;
    for (Bitboard pawns = info.isolated & ~info.doubled; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        const int distance = front_distance<Us>(context, board, s);
        sum += tell<Us>(context, Rule::isolated_pawn, Bit(s), isolated_pawn_ending(distance));
    }
    return sum;
}

template <Colour Us, class Context>
int duo_and_defended_pawns_ending(Context& context, const BOARD& /*board*/) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    const Bitboard rear_passed = info.passed & ~info.front_passed;
    int sum = 0;
    for (Bitboard pawns = info.duo & ~rear_passed; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        sum += tell<Us>(context, Rule::pawn_in_duo, Bit(s), int{value_at<Us>(pawn_tables::duo_ending, s)});
    }
    for (Bitboard pawns = info.defended & ~rear_passed; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        sum += tell<Us>(context, Rule::defended_pawn, Bit(s), int{value_at<Us>(pawn_tables::defended_ending, s)});
    }
    return sum;
}

template <Colour Us, class Context>
int doubled_pawns_ending(Context& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    int sum = 0;
    for (Bitboard rest = info.doubled; rest != 0;) {
        const int file = FileOf(FindLowestBit(rest));
        const Bitboard on_file = rest & file_mask(file);
        rest &= ~on_file;
        const auto count = [&](Rule rule, int value) { sum += tell<Us>(context, rule, on_file, value); };
        const bool are_isolated = (on_file & info.isolated) != 0;
        const int distance = front_distance<Us>(context, board, foremost<Us>(on_file));
        if (has_three(on_file)) {
            if (are_isolated)
                count(Rule::tripled_isolated_pawns, tripled_isolated_pawns_ending(distance));
            else
                count(Rule::tripled_pawns, tripled_pawns_ending(distance));
        } else if (are_isolated) {
            count(Rule::doubled_isolated_pawns, doubled_isolated_pawns_ending(distance));
        } else {
            count(Rule::doubled_pawns_with_neighbours, doubled_pawns_with_neighbours_ending);
        }
    }
    return sum;
}

template <Colour Us, class Context>
int defended_passed_pawns_ending(Context& context, const BOARD& board) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    const Bitboard ahead = one_ahead<Us>(board.side(Us).pawns & ~info.passed);
    int sum = 0;
    for (Bitboard pawns = info.front_passed & (one_left(ahead) | one_right(ahead)); pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        sum += tell<Us>(context, Rule::defended_passed_pawn, Bit(s), defended_passed_pawn_ending<Us>(s));
    }
    return sum;
}

template <Colour Us, class Context>
int connected_passed_pawns_ending(Context& context, const BOARD& /*board*/) noexcept {
    const PAWN_INFO& info = context.pawns[Us];
    int sum = 0;
    for_each_connected_pair(info, [&](int right_file, int high, int low) {
        sum += tell<Us>(context, Rule::connected_pair, info.front_passed & files(right_file - 1, right_file),
                        connected_pair_ending(high, low));
    });
    return sum;
}

template <Colour Us, class Context>
int pawn_chains_ending(Context& context, const BOARD& board) noexcept {
    int sum = 0;
    for_each_defender<Us>(context.pawns[Us], board.side(Us).pawns, [&](Square s, bool firm) {
        if (firm)
            sum += tell<Us>(context, Rule::firm_pawn_in_chain, Bit(s), firm_pawn_in_chain_ending);
        else
            sum += tell<Us>(context, Rule::loose_pawn_in_chain, Bit(s), loose_pawn_in_chain_ending);
    });
    return sum;
}

template <Colour Us, class Context>
int pawn_majorities_ending(Context& context, const BOARD& board) noexcept {
    int sum = 0;
    for (const Wing wing : {queen_side, king_side}) {
        if (context.majority[wing].kind != majority_of[Us]) continue;
        sum += tell<Us>(context, Rule::majority_on_wing, board.side(Us).pawns & half_of_wing(wing),
                        majority_on_wing_ending);
        for (Bitboard pawns = majority_pawns<Us>(context, board, wing); pawns != 0;) {
            const Square s = TakeNextBit(pawns);
            sum += tell<Us>(context, Rule::pawn_in_majority, Bit(s), pawn_in_majority_ending<Us>(s));
            if (Has(context.pawns[Us].backward | context.rams, s))
                sum += tell<Us>(context, Rule::pawn_held_in_majority, Bit(s), pawn_held_in_majority_ending);
        }
    }
    return sum;
}

template int pawn_squares_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_squares_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_squares_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_squares_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int backward_pawns_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int backward_pawns_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int backward_pawns_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int backward_pawns_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int isolated_pawns_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int isolated_pawns_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int isolated_pawns_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int isolated_pawns_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int duo_and_defended_pawns_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int duo_and_defended_pawns_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int duo_and_defended_pawns_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int duo_and_defended_pawns_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int doubled_pawns_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int doubled_pawns_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int doubled_pawns_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int doubled_pawns_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int defended_passed_pawns_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int defended_passed_pawns_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int defended_passed_pawns_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int defended_passed_pawns_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int connected_passed_pawns_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int connected_passed_pawns_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int connected_passed_pawns_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int connected_passed_pawns_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_chains_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_chains_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_chains_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_chains_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_majorities_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_majorities_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_majorities_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int pawn_majorities_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
