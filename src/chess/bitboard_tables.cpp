#include "chess/bitboard_tables.h"

#include <algorithm>
#include <cstdlib>
#include <span>

#include "chess/random_keys.h"

// The attacks of sliding pieces are looked up by the occupancy of one line. A rank stands in the plain occupancy as a
// byte; files and diagonals are made into runs of bits by three permutations of the squares. Example: the a1-h8
// diagonal of c3 begins (at a1) at bit 28 of its rotated occupancy and is eight squares long, so
//
//     attacks_diag_a1h8[c3][(occupied_a1h8 >> 28) & 0xFF]
//
// are the squares that a bishop on c3 attacks along it, the first blocker on each side included.

namespace {

constexpr int file_steps_and_rank_steps_of_knight[8][2] = {{+1, +2}, {+2, +1}, {+2, -1}, {+1, -2},
                                                           {-1, -2}, {-2, -1}, {-2, +1}, {-1, +2}};
constexpr int file_steps_and_rank_steps_of_king[8][2] = {{0, +1}, {+1, +1}, {+1, 0}, {+1, -1},
                                                         {0, -1}, {-1, -1}, {-1, 0}, {-1, +1}};

constexpr bool OnBoard(int file, int rank) { return file >= 0 && file < 8 && rank >= 0 && rank < 8; }
constexpr Square SquareAt(int file, int rank) { return rank * 8 + file; }

/// The square itself excluded, up to the edge.
Bitboard Ray(Square s, int file_step, int rank_step) {
    Bitboard ray = 0;
    int f = FileOf(s) + file_step, r = RankOf(s) + rank_step;
    for (; OnBoard(f, r); f += file_step, r += rank_step) ray |= Bit(SquareAt(f, r));
    return ray;
}

Bitboard Leaps(Square s, const int (&steps)[8][2]) {
    Bitboard targets = 0;
    for (const auto& [file_step, rank_step] : steps) {
        const int f = FileOf(s) + file_step, r = RankOf(s) + rank_step;
        if (OnBoard(f, r)) targets |= Bit(SquareAt(f, r));
    }
    return targets;
}

/// All squares between two corners, both included.
Bitboard Rectangle(int west_file, int bottom_rank, int east_file, int top_rank) {
    Bitboard squares = 0;
    for (int r = std::max(bottom_rank, 0); r <= std::min(top_rank, 7); ++r)
        for (int f = std::max(west_file, 0); f <= std::min(east_file, 7); ++f) squares |= Bit(SquareAt(f, r));
    return squares;
}

/// The keys of all squares and pieces differ; those of the en passant files are taken as they come.
void BuildKeys(BITBOARD_TABLES& t) {
    RandomKeys random;
    const std::span<std::uint64_t> keys(&t.zobrist_piece[0][0], 64 * 13);
    for (auto key = keys.begin(); key != keys.end(); ++key) {
        do *key = random.Next64();
        while (std::find(keys.begin(), key, *key) != key);
    }
    for (int f = 0; f < 8; ++f) {
        t.zobrist_ep_third_rank[f] = random.Next64();
        t.zobrist_ep_sixth_rank[f] = random.Next64();
    }
}

void BuildBitInfo(BITBOARD_TABLES& t) {
    for (unsigned v = 1; v < 65535; ++v)
        t.bit_info[v] = static_cast<std::uint8_t>(std::popcount(v) << 4 | (31 - std::countl_zero(v)));
    t.bit_info[65535] = 15;  // a population of 16 does not fit
}

/// What a piece on `position` of a line of `length` squares attacks, as bits of the line; the first blocker on either
/// side is included.
unsigned LineAttacks(int position, unsigned pattern, int length) {
    unsigned attacks = 0;
    for (int i = position - 1; i >= 0; --i) {
        attacks |= 1U << i;
        if ((pattern >> i & 1U) != 0) break;
    }
    for (int i = position + 1; i < length; ++i) {
        attacks |= 1U << i;
        if ((pattern >> i & 1U) != 0) break;
    }
    return attacks;
}

/// Fills the attacks along one line, given by its squares in the order of their bits in a pattern.
void BuildLine(std::span<const Square> line, Bitboard (&attacks)[64][256]) {
    const int length = static_cast<int>(line.size());
    for (int position = 0; position < length; ++position) {
        for (unsigned pattern = 0; pattern < 1U << length; ++pattern) {
            const unsigned attacked = LineAttacks(position, pattern, length);
            Bitboard& squares = attacks[line[static_cast<std::size_t>(position)]][pattern];
            for (int i = 0; i < length; ++i)
                if ((attacked >> i & 1U) != 0) squares |= Bit(line[static_cast<std::size_t>(i)]);
        }
    }
}

/// The diagonals follow each other in the rotated occupancy, each with its own start bit and length.
void BuildDiagonals(const std::array<Square, 15>& starts, int rank_step, std::uint8_t (&shift)[64],
                    std::uint16_t (&mask)[64], Bitboard (&attacks)[64][256]) {
    int start_bit = 0;
    for (const Square start : starts) {
        std::array<Square, 8> diagonal{};
        std::size_t length = 0;
        for (int f = FileOf(start), r = RankOf(start); OnBoard(f, r); ++f, r += rank_step)
            diagonal[length++] = SquareAt(f, r);
        const std::span<const Square> line(diagonal.data(), length);
        for (const Square s : line) {
            shift[s] = static_cast<std::uint8_t>(start_bit);
            mask[s] = static_cast<std::uint16_t>((1U << length) - 1);
        }
        BuildLine(line, attacks);
        start_bit += static_cast<int>(length);
    }
}

void BuildSliders(BITBOARD_TABLES& t) {
    BuildDiagonals(rotation::starts_a1h8, +1, t.diag_shift_a1h8, t.diag_mask_a1h8, t.attacks_diag_a1h8);
    BuildDiagonals(rotation::starts_a8h1, -1, t.diag_shift_a8h1, t.diag_mask_a8h1, t.attacks_diag_a8h1);
    for (int line = 0; line < 8; ++line) {
        std::array<Square, 8> rank{}, file{};
        for (int i = 0; i < 8; ++i) {
            rank[static_cast<std::size_t>(i)] = SquareAt(i, line);
            file[static_cast<std::size_t>(i)] = SquareAt(line, i);
        }
        BuildLine(rank, t.attacks_rank);
        BuildLine(file, t.attacks_file);
    }
}

void BuildLeapers(BITBOARD_TABLES& t) {
    for (int s = a1; s <= h8; ++s) {
        t.knight_attacks[s] = Leaps(s, file_steps_and_rank_steps_of_knight);
        t.king_attacks[s] = Leaps(s, file_steps_and_rank_steps_of_king);
    }
}

LineDirection DirectionOf(int files, int ranks) {
    if (files == 0 && ranks == 0) return no_line;
    if (ranks == 0) return files < 0 ? west : east;
    if (files == 0) return ranks > 0 ? north : south;
    if (std::abs(files) != std::abs(ranks)) return no_line;
    if (ranks > 0) return files < 0 ? north_west : north_east;
    return files < 0 ? south_west : south_east;
}

Bitboard Between(Square from, Square to) {
    constexpr int step_of_direction[9] = {0, 1, 1, 8, 8, 7, 9, 9, 7};
    const int files = FileOf(to) - FileOf(from), ranks = RankOf(to) - RankOf(from);
    const int step = step_of_direction[DirectionOf(files, ranks)];
    Bitboard squares = 0;
    if (step == 0) return squares;
    for (Square s = std::min(from, to) + step; s < std::max(from, to); s += step) squares |= Bit(s);
    return squares;
}

void BuildPairs(BITBOARD_TABLES& t) {
    for (int from = a1; from <= h8; ++from) {
        for (int to = a1; to <= h8; ++to) {
            const int files = FileOf(to) - FileOf(from), ranks = RankOf(to) - RankOf(from);
            t.direction[from][to] = static_cast<std::int8_t>(DirectionOf(files, ranks));
            t.between[from][to] = Between(from, to);
            t.distance[from][to] = static_cast<std::int8_t>(std::max(std::abs(files), std::abs(ranks)));
            t.manhattan_distance[from][to] = static_cast<std::int8_t>(std::abs(files) + std::abs(ranks));
        }
    }
}

void BuildRaysAndMasks(BITBOARD_TABLES& t) {
    for (int s = a1; s <= h8; ++s) {
        t.ray_west[s] = Ray(s, -1, 0);
        t.ray_east[s] = Ray(s, +1, 0);
        t.ray_north[s] = Ray(s, 0, +1);
        t.ray_south[s] = Ray(s, 0, -1);
        t.ray_north_west[s] = Ray(s, -1, +1);
        t.ray_north_east[s] = Ray(s, +1, +1);
        t.ray_south_west[s] = Ray(s, -1, -1);
        t.ray_south_east[s] = Ray(s, +1, -1);
        t.bishop_mask[s] =
            Bit(s) | t.ray_north_west[s] | t.ray_north_east[s] | t.ray_south_west[s] | t.ray_south_east[s];
        t.rook_mask[s] = Bit(s) | t.ray_west[s] | t.ray_east[s] | t.ray_north[s] | t.ray_south[s];
        t.queen_mask[s] = t.bishop_mask[s] | t.rook_mask[s];
    }
}

void BuildPawnAttacksAndSpans(BITBOARD_TABLES& t) {
    for (int s = a1; s <= h8; ++s) {
        const int f = FileOf(s), r = RankOf(s);
        t.white_pawn_attacks[s] = Rectangle(f - 1, r + 1, f + 1, r + 1) & ~Ray(s, 0, +1);
        t.black_pawn_attacks[s] = Rectangle(f - 1, r - 1, f + 1, r - 1) & ~Ray(s, 0, -1);
        t.white_pawn_front_span[s] = Rectangle(f - 1, r + 1, f + 1, 7);
        t.black_pawn_front_span[s] = Rectangle(f - 1, 0, f + 1, r - 1);
    }
    for (int s = a3; s <= h8; ++s)
        for (Square walker = s; walker >= a3; walker -= 8) t.black_pawn_attack_span[s] |= t.black_pawn_attacks[walker];
    for (int s = a1; s <= h6; ++s)
        for (Square walker = s; walker <= h6; walker += 8) t.white_pawn_attack_span[s] |= t.white_pawn_attacks[walker];
}

/// The rule of the square: a king outside the rectangle can't catch the pawn. A pawn on its start rank counts as one
/// step further on, since it may begin with two.
void BuildPawnSquares(BITBOARD_TABLES& t) {
    for (int s = a2; s <= h7; ++s) {
        const int f = FileOf(s);
        const int bottom = std::max(RankOf(s), 2), white_steps = 7 - bottom;
        t.white_pawn_square[s] = Rectangle(f - white_steps, bottom, f + white_steps, 7);
        t.white_pawn_square_wide[s] =
            Rectangle(f - white_steps - 1, bottom - 1, f + white_steps + 1, 7) | t.king_attacks[s];
        const int top = std::min(RankOf(s), 5), black_steps = top;
        t.black_pawn_square_wide[s] =
            Rectangle(f - black_steps - 1, 0, f + black_steps + 1, top + 1) | t.king_attacks[s];
        t.black_pawn_square[s] = Rectangle(f - black_steps, 0, f + black_steps, top);
    }
    for (int defender = a1; defender <= h8; ++defender) {
        for (int s = a2; s <= h7; ++s) {
            if (!Has(t.white_pawn_square[s], defender)) t.outside_white_pawn_square[defender][0] |= Bit(s);
            if (!Has(t.white_pawn_square_wide[s], defender)) t.outside_white_pawn_square[defender][1] |= Bit(s);
            if (!Has(t.black_pawn_square_wide[s], defender)) t.outside_black_pawn_square[defender][0] |= Bit(s);
            if (!Has(t.black_pawn_square[s], defender)) t.outside_black_pawn_square[defender][1] |= Bit(s);
        }
    }
}

BITBOARD_TABLES BuildTables() {
    BITBOARD_TABLES tables{};
    BuildKeys(tables);
    BuildBitInfo(tables);
    BuildSliders(tables);
    BuildLeapers(tables);
    BuildPairs(tables);
    BuildRaysAndMasks(tables);
    BuildPawnAttacksAndSpans(tables);
    BuildPawnSquares(tables);
    return tables;
}

}  // namespace

const BITBOARD_TABLES bitboard_tables = BuildTables();
