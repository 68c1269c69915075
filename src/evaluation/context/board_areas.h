#pragma once

#include "chess/bits.h"

/// Sets of squares that the evaluation speaks of, and steps of whole sets. `Us` turns what is seen from White's side.

inline constexpr Bitboard a_file = 0x0101010101010101;
inline constexpr Bitboard h_file = a_file << 7;
inline constexpr Bitboard first_rank = 0xFF;

[[nodiscard]] constexpr Bitboard file_mask(int file) noexcept { return a_file << file; }
/// Number of squares in a set that lies on that file: moved to the a-file they stand in the lowest bits of the eight
/// bytes, and the product adds the bytes up.
[[nodiscard]] constexpr int count_on_file(Bitboard set, int file) noexcept {
    return static_cast<int>(((set >> file) * a_file) >> 56);
}
/// Number of squares in a set that can't hold more than two.
[[nodiscard]] constexpr int count_up_to_two(Bitboard set) noexcept {
    return static_cast<int>(set != 0) + static_cast<int>(HasSeveral(set));
}
/// The files from `first` to `last`, both included.
[[nodiscard]] constexpr Bitboard files(int first, int last) noexcept {
    Bitboard set = 0;
    for (int file = first; file <= last; ++file) set |= file_mask(file);
    return set;
}
/// The files beside `file`.
[[nodiscard]] constexpr Bitboard neighbouring_files(int file) noexcept {
    return (file > 0 ? file_mask(file - 1) : 0) | (file < 7 ? file_mask(file + 1) : 0);
}

/// The rank index as its side counts: 0 is the back rank of `Us`.
template <Colour Us>
[[nodiscard]] constexpr int rank_seen(Square s) noexcept {
    return Us == white ? RankOf(s) : 7 - RankOf(s);
}
/// The ranks from index `first` to `last` as `Us` counts them, both included.
template <Colour Us>
[[nodiscard]] constexpr Bitboard ranks(int first, int last) noexcept {
    Bitboard set = 0;
    for (int rank = first; rank <= last; ++rank) set |= first_rank << 8 * (Us == white ? rank : 7 - rank);
    return set;
}

template <Colour Us>
[[nodiscard]] constexpr Square square_ahead(Square s) noexcept {
    return Us == white ? s + 8 : s - 8;
}
template <Colour Us>
[[nodiscard]] constexpr Square square_behind(Square s) noexcept {
    return square_ahead<Opponent(Us)>(s);
}
/// All squares of the set one step ahead, as `Us` sees it; what leaves the board is gone.
template <Colour Us>
[[nodiscard]] constexpr Bitboard one_ahead(Bitboard set) noexcept {
    return Us == white ? set << 8 : set >> 8;
}
[[nodiscard]] constexpr Bitboard one_left(Bitboard set) noexcept { return (set & ~a_file) >> 1; }
[[nodiscard]] constexpr Bitboard one_right(Bitboard set) noexcept { return (set & ~h_file) << 1; }

/// The square of a set that is farthest from the back rank of `Us`; the set must not be empty.
template <Colour Us>
[[nodiscard]] Square foremost(Bitboard set) noexcept {
    return Us == white ? FindHighestBit(set) : FindLowestBit(set);
}
/// And the nearest to it.
template <Colour Us>
[[nodiscard]] Square rearmost(Bitboard set) noexcept {
    return foremost<Opponent(Us)>(set);
}

/// A set of squares by their names, as `Us` sees it: `squares_seen<Us>(d4, e4)`.
template <Colour Us, class... Squares>
[[nodiscard]] constexpr Bitboard squares_seen(Squares... names) noexcept {
    return (Bit(Seen<Us>(names)) | ...);
}

/// A whole set that is written from White's side, as `Us` sees it.
template <Colour Us>
[[nodiscard]] constexpr Bitboard set_seen(Bitboard from_white) noexcept {
    return Us == white ? from_white : MirrorRanks(from_white);
}

/// All squares of the files that hold one of the set.
[[nodiscard]] constexpr Bitboard fill_files(Bitboard set) noexcept {
    set |= set >> 32;
    set |= set >> 16;
    set |= set >> 8;
    return (set & first_rank) * a_file;
}
