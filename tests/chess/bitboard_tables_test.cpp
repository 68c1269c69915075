#include "chess/bitboard_tables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <string_view>
#include <vector>

#include "chess/random_keys.h"

namespace {

const BITBOARD_TABLES& t = bitboard_tables;

constexpr bool OnBoard(int file, int rank) { return file >= 0 && file < 8 && rank >= 0 && rank < 8; }

struct Step {
    int files, ranks;
};
constexpr Step west_step{-1, 0}, east_step{1, 0}, north_step{0, 1}, south_step{0, -1};
constexpr Step north_west_step{-1, 1}, north_east_step{1, 1}, south_west_step{-1, -1}, south_east_step{1, -1};

/// Walks from a square, up to and with the first occupied one.
Bitboard Walk(Square s, Step step, Bitboard occupied = 0) {
    Bitboard walked = 0;
    int f = FileOf(s) + step.files, r = RankOf(s) + step.ranks;
    for (; OnBoard(f, r); f += step.files, r += step.ranks) {
        walked |= Bit(r * 8 + f);
        if (Has(occupied, r * 8 + f)) break;
    }
    return walked;
}

/// All squares for which a rule holds.
template <class Rule>
Bitboard SquaresWhere(Rule rule) {
    Bitboard squares = 0;
    for (Square s = a1; s <= h8; ++s)
        if (rule(FileOf(s), RankOf(s))) squares |= Bit(s);
    return squares;
}

TEST(BitboardTables, BitInfoHoldsPopulationAndHighestBit) {
    EXPECT_EQ(t.bit_info[0], 0);
    EXPECT_EQ(t.bit_info[1], 0x10);
    EXPECT_EQ(t.bit_info[0x8000], 0x1F);
    for (unsigned v = 1; v <= 65534; ++v) {
        unsigned population = 0, highest = 0;
        for (unsigned i = 0; i < 16; ++i) {
            if ((v >> i & 1U) == 0) continue;
            ++population;
            highest = i;
        }
        ASSERT_EQ(t.bit_info[v], population * 16 + highest) << v;
    }
    EXPECT_EQ(t.bit_info[65535], 15);
}

/// The squares of a board in the order of their bits in a rotated occupancy.
std::string_view NameOf(Square s) {
    static constexpr std::string_view names =
        "a1b1c1d1e1f1g1h1a2b2c2d2e2f2g2h2a3b3c3d3e3f3g3h3a4b4c4d4e4f4g4h4"
        "a5b5c5d5e5f5g5h5a6b6c6d6e6f6g6h6a7b7c7d7e7f7g7h7a8b8c8d8e8f8g8h8";
    return names.substr(static_cast<std::size_t>(s) * 2, 2);
}
std::string InBitOrder(const std::array<std::uint8_t, 64>& bit_of) {
    std::array<Square, 64> square_of{};
    for (Square s = a1; s <= h8; ++s) square_of[bit_of[static_cast<std::size_t>(s)]] = s;
    std::string text;
    for (const Square s : square_of) text += NameOf(s);
    return text;
}

TEST(Rotations, PackDiagonalsParallelToA1H8) {
    EXPECT_EQ(InBitOrder(ROTATE_DIAG_A1H8),
              "h1"
              "g1h2"
              "f1g2h3"
              "e1f2g3h4"
              "d1e2f3g4h5"
              "c1d2e3f4g5h6"
              "b1c2d3e4f5g6h7"
              "a1b2c3d4e5f6g7h8"
              "a2b3c4d5e6f7g8"
              "a3b4c5d6e7f8"
              "a4b5c6d7e8"
              "a5b6c7d8"
              "a6b7c8"
              "a7b8"
              "a8");
    EXPECT_EQ(ROTATE_DIAG_A1H8[h1], 0);
    EXPECT_EQ(ROTATE_DIAG_A1H8[a1], 28);
    EXPECT_EQ(ROTATE_DIAG_A1H8[h8], 35);
    EXPECT_EQ(ROTATE_DIAG_A1H8[a8], 63);
}

TEST(Rotations, PackDiagonalsParallelToA8H1) {
    EXPECT_EQ(InBitOrder(ROTATE_DIAG_A8H1),
              "a1"
              "a2b1"
              "a3b2c1"
              "a4b3c2d1"
              "a5b4c3d2e1"
              "a6b5c4d3e2f1"
              "a7b6c5d4e3f2g1"
              "a8b7c6d5e4f3g2h1"
              "b8c7d6e5f4g3h2"
              "c8d7e6f5g4h3"
              "d8e7f6g5h4"
              "e8f7g6h5"
              "f8g7h6"
              "g8h7"
              "h8");
    EXPECT_EQ(ROTATE_DIAG_A8H1[a1], 0);
    EXPECT_EQ(ROTATE_DIAG_A8H1[a8], 28);
    EXPECT_EQ(ROTATE_DIAG_A8H1[h1], 35);
    EXPECT_EQ(ROTATE_DIAG_A8H1[h8], 63);
}

TEST(Rotations, PackFiles) {
    EXPECT_EQ(InBitOrder(ROTATE_FILE).substr(0, 32), "h1h2h3h4h5h6h7h8g1g2g3g4g5g6g7g8");
    for (Square s = a1; s <= h8; ++s)
        ASSERT_EQ(ROTATE_FILE[static_cast<std::size_t>(s)], (7 - FileOf(s)) * 8 + RankOf(s));
}

TEST(BitboardTables, DiagonalShiftsAndMasksCutOutTheDiagonal) {
    for (Square s = a1; s <= h8; ++s) {
        const auto expect_cut = [s](const std::array<std::uint8_t, 64>& bit_of, Bitboard diagonal, int shift,
                                    int mask) {
            Bitboard rotated = 0;
            for (Square d = a1; d <= h8; ++d)
                if (Has(diagonal, d)) rotated |= Bit(bit_of[static_cast<std::size_t>(d)]);
            ASSERT_EQ(static_cast<Bitboard>(mask) << shift, rotated) << NameOf(s);
        };
        expect_cut(ROTATE_DIAG_A1H8, Bit(s) | Walk(s, south_west_step) | Walk(s, north_east_step), t.diag_shift_a1h8[s],
                   t.diag_mask_a1h8[s]);
        expect_cut(ROTATE_DIAG_A8H1, Bit(s) | Walk(s, north_west_step) | Walk(s, south_east_step), t.diag_shift_a8h1[s],
                   t.diag_mask_a8h1[s]);
    }
}

/// Every pattern of one line of `s`, its squares given in the order of their bits.
void ExpectLineAttacks(Square s, const std::vector<Square>& line, Step back, Step forth, const Bitboard (&row)[256]) {
    for (unsigned pattern = 0; pattern < 256; ++pattern) {
        if (pattern >= 1U << line.size()) {
            ASSERT_EQ(row[pattern], 0U) << "a pattern that no occupancy gives";
            continue;
        }
        Bitboard occupied = 0;
        for (std::size_t i = 0; i < line.size(); ++i)
            if ((pattern >> i & 1U) != 0) occupied |= Bit(line[i]);
        ASSERT_EQ(row[pattern], Walk(s, back, occupied) | Walk(s, forth, occupied)) << NameOf(s) << ' ' << pattern;
    }
}

/// The squares of the line through `s`, from its end in direction `back`.
std::vector<Square> LineOf(Square s, Step back, Step forth) {
    int f = FileOf(s), r = RankOf(s);
    while (OnBoard(f + back.files, r + back.ranks)) f += back.files, r += back.ranks;
    std::vector<Square> line;
    for (; OnBoard(f, r); f += forth.files, r += forth.ranks) line.push_back(r * 8 + f);
    return line;
}

TEST(BitboardTables, SliderAttacksStopBehindTheFirstBlocker) {
    for (Square s = a1; s <= h8; ++s) {
        ExpectLineAttacks(s, LineOf(s, west_step, east_step), west_step, east_step, t.attacks_rank[s]);
        ExpectLineAttacks(s, LineOf(s, south_step, north_step), south_step, north_step, t.attacks_file[s]);
        ExpectLineAttacks(s, LineOf(s, south_west_step, north_east_step), south_west_step, north_east_step,
                          t.attacks_diag_a1h8[s]);
        ExpectLineAttacks(s, LineOf(s, north_west_step, south_east_step), north_west_step, south_east_step,
                          t.attacks_diag_a8h1[s]);
    }
}

TEST(BitboardTables, LeapersAttackByTheirOffsets) {
    for (Square s = a1; s <= h8; ++s) {
        const int file = FileOf(s), rank = RankOf(s);
        ASSERT_EQ(t.knight_attacks[s],
                  SquaresWhere([=](int f, int r) { return std::abs(f - file) * std::abs(r - rank) == 2; }));
        ASSERT_EQ(t.king_attacks[s],
                  SquaresWhere([=](int f, int r) { return std::max(std::abs(f - file), std::abs(r - rank)) == 1; }));
    }
}

struct DirectionRow {
    Square from, to;
    int direction;
};
TEST(BitboardTables, DirectionsAreSeenFromTheFirstSquare) {
    constexpr DirectionRow rows[] = {{e1, h1, 2}, {h1, e1, 1}, {e1, e8, 3}, {e8, e1, 4}, {e4, h7, 6},
                                     {e4, b7, 5}, {e4, b1, 7}, {e4, h1, 8}, {a1, b3, 0}, {c3, c3, 0}};
    for (const auto& [from, to, direction] : rows)
        EXPECT_EQ(t.direction[from][to], direction) << NameOf(from) << NameOf(to);
}

TEST(BitboardTables, PairsOfSquaresFollowTheWalks) {
    for (Square from = a1; from <= h8; ++from) {
        for (Square to = a1; to <= h8; ++to) {
            int direction = 0;
            Bitboard between = 0;
            int code = 0;
            for (const Step step : {west_step, east_step, north_step, south_step, north_west_step, north_east_step,
                                    south_west_step, south_east_step}) {
                ++code;
                if (!Has(Walk(from, step), to)) continue;
                direction = code;
                between = Walk(from, step, Bit(to)) & ~Bit(to);
            }
            const int files = std::abs(FileOf(to) - FileOf(from)), ranks = std::abs(RankOf(to) - RankOf(from));
            ASSERT_EQ(t.direction[from][to], direction) << NameOf(from) << NameOf(to);
            ASSERT_EQ(t.between[from][to], between) << NameOf(from) << NameOf(to);
            ASSERT_EQ(t.distance[from][to], std::max(files, ranks)) << NameOf(from) << NameOf(to);
            ASSERT_EQ(t.manhattan_distance[from][to], files + ranks) << NameOf(from) << NameOf(to);
        }
    }
    EXPECT_EQ(t.between[a1][h8], Bit(b2) | Bit(c3) | Bit(d4) | Bit(e5) | Bit(f6) | Bit(g7));
    EXPECT_EQ(t.between[a1][b3], 0U);
}

TEST(BitboardTables, RaysLeaveTheSquareOutAndMasksHoldIt) {
    for (Square s = a1; s <= h8; ++s) {
        ASSERT_EQ(t.ray_west[s], Walk(s, west_step));
        ASSERT_EQ(t.ray_east[s], Walk(s, east_step));
        ASSERT_EQ(t.ray_north[s], Walk(s, north_step));
        ASSERT_EQ(t.ray_south[s], Walk(s, south_step));
        ASSERT_EQ(t.ray_north_west[s], Walk(s, north_west_step));
        ASSERT_EQ(t.ray_north_east[s], Walk(s, north_east_step));
        ASSERT_EQ(t.ray_south_west[s], Walk(s, south_west_step));
        ASSERT_EQ(t.ray_south_east[s], Walk(s, south_east_step));
        const int file = FileOf(s), rank = RankOf(s);
        ASSERT_EQ(t.rook_mask[s], SquaresWhere([=](int f, int r) { return f == file || r == rank; }));
        ASSERT_EQ(t.bishop_mask[s],
                  SquaresWhere([=](int f, int r) { return std::abs(f - file) == std::abs(r - rank); }));
        ASSERT_EQ(t.queen_mask[s], t.rook_mask[s] | t.bishop_mask[s]);
    }
}

TEST(BitboardTables, PawnAttacksAndSpans) {
    for (Square s = a1; s <= h8; ++s) {
        const int file = FileOf(s), rank = RankOf(s);
        const auto white_attacks = [](Square from) {
            return SquaresWhere([=](int f, int r) { return std::abs(f - FileOf(from)) == 1 && r == RankOf(from) + 1; });
        };
        const auto black_attacks = [](Square from) {
            return SquaresWhere([=](int f, int r) { return std::abs(f - FileOf(from)) == 1 && r == RankOf(from) - 1; });
        };
        ASSERT_EQ(t.white_pawn_attacks[s], white_attacks(s));
        ASSERT_EQ(t.black_pawn_attacks[s], black_attacks(s));
        ASSERT_EQ(t.pawn_attacks(white)[s], white_attacks(s));
        ASSERT_EQ(t.pawn_attacks(black)[s], black_attacks(s));
        ASSERT_EQ(t.white_pawn_front_span[s],
                  SquaresWhere([=](int f, int r) { return std::abs(f - file) <= 1 && r > rank; }));
        ASSERT_EQ(t.black_pawn_front_span[s],
                  SquaresWhere([=](int f, int r) { return std::abs(f - file) <= 1 && r < rank; }));

        Bitboard white_span = 0, black_span = 0;
        if (s < a7)
            for (int r = rank; r <= 5; ++r) white_span |= white_attacks(r * 8 + file);
        if (s >= a3)
            for (int r = rank; r >= 2; --r) black_span |= black_attacks(r * 8 + file);
        ASSERT_EQ(t.white_pawn_attack_span[s], white_span) << NameOf(s);
        ASSERT_EQ(t.black_pawn_attack_span[s], black_span) << NameOf(s);
    }
    EXPECT_EQ(t.white_pawn_attacks[a4], Bit(b5));
    EXPECT_EQ(t.white_pawn_attacks[d8], 0U);
    EXPECT_EQ(t.white_pawn_attacks[d1], Bit(c2) | Bit(e2));
    EXPECT_EQ(t.black_pawn_attacks[d1], 0U);
}

/// Corners by file and rank, as far as they lie on the board.
Bitboard Rectangle(int west_file, int bottom, int east_file, int top) {
    return SquaresWhere([=](int f, int r) { return f >= west_file && f <= east_file && r >= bottom && r <= top; });
}

TEST(BitboardTables, PawnSquaresAreTheRectanglesOfTheRule) {
    for (Square s = a1; s <= h8; ++s) {
        const int f = FileOf(s), r = RankOf(s);
        if (r == 0 || r == 7) {
            ASSERT_EQ(t.white_pawn_square[s] | t.white_pawn_square_wide[s] | t.black_pawn_square[s] |
                          t.black_pawn_square_wide[s],
                      0U);
            continue;
        }
        const int white_steps = r == 1 ? 5 : 7 - r, bottom = r == 1 ? 2 : r;
        ASSERT_EQ(t.white_pawn_square[s], Rectangle(f - white_steps, bottom, f + white_steps, 7)) << NameOf(s);
        ASSERT_EQ(t.white_pawn_square_wide[s],
                  Rectangle(f - white_steps - 1, bottom - 1, f + white_steps + 1, 7) | t.king_attacks[s]);
    }
    // The colours are mirrors of each other.
    for (Square s = a1; s <= h8; ++s) {
        ASSERT_EQ(t.black_pawn_square[s], MirrorRanks(t.white_pawn_square[MirrorVertically(s)]));
        ASSERT_EQ(t.black_pawn_square_wide[s], MirrorRanks(t.white_pawn_square_wide[MirrorVertically(s)]));
    }
    EXPECT_EQ(t.white_pawn_square[h6], Rectangle(5, 5, 7, 7));
    EXPECT_EQ(t.white_pawn_square[a2], Rectangle(0, 2, 5, 7)) << "as if it stood on a3";
    EXPECT_EQ(t.white_pawn_square_wide[h7], Rectangle(5, 5, 7, 7)) << "its own neighbours included";
}

TEST(BitboardTables, PawnsOutOfReachOfAKing) {
    for (Square king_square = a1; king_square <= h8; ++king_square) {
        Bitboard white_pawns[2] = {0, 0}, black_pawns[2] = {0, 0};
        for (Square s = a2; s <= h7; ++s) {
            if (!Has(t.white_pawn_square[s], king_square)) white_pawns[0] |= Bit(s);
            if (!Has(t.white_pawn_square_wide[s], king_square)) white_pawns[1] |= Bit(s);
            if (!Has(t.black_pawn_square_wide[s], king_square)) black_pawns[0] |= Bit(s);
            if (!Has(t.black_pawn_square[s], king_square)) black_pawns[1] |= Bit(s);
        }
        for (int entry = 0; entry < 2; ++entry) {
            ASSERT_EQ(t.outside_white_pawn_square[king_square][entry], white_pawns[entry]);
            ASSERT_EQ(t.outside_black_pawn_square[king_square][entry], black_pawns[entry]);
        }
    }
    EXPECT_TRUE(Has(t.outside_white_pawn_square[a1][0], h5));
    EXPECT_FALSE(Has(t.outside_white_pawn_square[f8][0], h5));
}

TEST(ZobristKeys, AreDrawnInTheirOrder) {
    RandomKeys random;
    std::set<std::uint64_t> drawn;
    for (Square s = a1; s <= h8; ++s) {
        for (int piece = 0; piece < 13; ++piece) {
            const std::uint64_t key = random.Next64();
            ASSERT_TRUE(drawn.insert(key).second) << "a draw that had to be repeated would shift all that follow";
            ASSERT_EQ(t.zobrist_piece[s][piece], key);
        }
    }
    for (int file = 0; file < 8; ++file) {
        ASSERT_EQ(t.zobrist_ep_third_rank[file], random.Next64());
        ASSERT_EQ(t.zobrist_ep_sixth_rank[file], random.Next64());
    }
    EXPECT_EQ(t.zobrist_ep(e3), t.zobrist_ep_third_rank[4]);
    EXPECT_EQ(t.zobrist_ep(d6), t.zobrist_ep_sixth_rank[3]);
}

// Pinned: hash keys of all builds and runs agree.
TEST(ZobristKeys, StayWhatTheyAre) {
    EXPECT_EQ(t.zobrist_piece[a1][king + 6], 0x6B1B421B82C9FFB1);
    EXPECT_EQ(t.zobrist_piece[a1][0], 0x14B8D11AF540B6D4);
    EXPECT_EQ(t.zobrist_piece[e4][pawn + 6], 0x8B35D2E48D65F915);
    EXPECT_EQ(t.zobrist_piece[h8][12], 0xCC2AEBAEBA45A174);
    EXPECT_EQ(t.zobrist_ep_third_rank[0], 0xDBC03D8FA4EC4388);
    EXPECT_EQ(t.zobrist_ep_sixth_rank[7], 0x4BF6691B50FDC04B);
}

}  // namespace
