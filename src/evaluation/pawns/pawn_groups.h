#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "chess/board.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/evaluation_context.h"

/// Groups of pawns that the pairs of the middle game and the values of an ending both walk.

/// Calls `found(right_file, high, low)` for neighbouring files that both have passed pawns, from the a-file on, with
/// the ranks of their foremost ones. A file belongs to one pair at most: on a, b and c the pawn on c stands alone.
template <class Found>
void for_each_connected_pair(const PAWN_INFO& info, Found found) {
    for (std::size_t file = 1; file < 8;) {
        const int right = info.passed_rank[file];
        const int left = info.passed_rank[file - 1];
        if (right == 0) {
            file += 2;
        } else if (left == 0) {
            file += 1;
        } else {
            found(static_cast<int>(file), std::max(left, right), std::min(left, right));
            file += 2;
        }
    }
}
/// What a connected pair counts by how many ranks the two are apart.
[[nodiscard]] constexpr int connected_weight(int ranks_apart) noexcept {
    constexpr std::array<int, 6> weight = {10, 9, 7, 5, 3, 2};
    return weight[static_cast<std::size_t>(ranks_apart)];
}

/// Calls `found(defender, firm)` for the pawns that defend a pawn: both if there are two. A defender is firm at the
/// rim, or if it has a neighbour or a defender itself.
template <Colour Us, class Found>
void for_each_defender(const PAWN_INFO& info, Bitboard pawns, Found found) {
    const Bitboard firm = info.defended | info.duo | a_file | h_file;
    const Bitboard behind = one_ahead<Opponent(Us)>(info.defended);
    const auto walk = [&](Bitboard defenders) {
        while (defenders != 0) {
            const Square s = TakeNextBit(defenders);
            found(s, Has(firm, s));
        }
    };
    walk(one_left(behind) & pawns);
    walk(one_right(behind) & pawns);
}

/// Three pawns or more.
[[nodiscard]] constexpr bool has_three(Bitboard pawns) noexcept { return HasSeveral(pawns & (pawns - 1)); }

inline constexpr Majority majority_of[2] = {Majority::white, Majority::black};  // by Colour

/// The half of the board that a wing's majority plays on.
[[nodiscard]] constexpr Bitboard half_of_wing(Wing wing) noexcept {
    return wing == queen_side ? files(0, 3) : files(4, 7);
}

/// The pawns that push a majority: on their half of the board, off their first square, not passed.
template <Colour Us>
[[nodiscard]] Bitboard majority_pawns(const EVALUATION_CONTEXT& context, const BOARD& board, Wing wing) noexcept {
    return board.side(Us).pawns & half_of_wing(wing) & ~ranks<Us>(1, 1) & ~context.pawns[Us].passed;
}

/// Whether the pawn on d4 and one on c3 or c4 are all that stands on the files b to e, of either side.
template <Colour Us>
[[nodiscard]] constexpr bool stands_alone_in_centre(Bitboard own_pawns, Bitboard enemy_pawns) noexcept {
    const Bitboard own = own_pawns & files(1, 4);
    return (enemy_pawns & files(1, 4)) == 0 && (own == squares_seen<Us>(d4, c3) || own == squares_seen<Us>(d4, c4));
}
