#include "chess/bits.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "chess/bitboard_tables.h"

namespace {

constexpr Bitboard all_squares = ~Bitboard{0};

int SlowPopCount(Bitboard b) {
    int count = 0;
    for (Square s = a1; s <= h8; ++s) count += Has(b, s);
    return count;
}

Square SlowHighestBit(Bitboard b) {
    Square highest = 0;
    for (Square s = a1; s <= h8; ++s)
        if (Has(b, s)) highest = s;
    return highest;
}

Square SlowLowestBit(Bitboard b) {
    for (Square s = a1; s <= h8; ++s)
        if (Has(b, s)) return s;
    return 0;
}

/// Every set of one or two squares, every run of squares, sets with full chunks of 16, and random ones, dense and thin.
std::vector<Bitboard> InterestingSets() {
    std::vector<Bitboard> sets = {0,      all_squares, 0xFFFF, 0xFFFF0000, 0xFFFF00000000, 0xFFFF000000000000,
                                  0x7FFF, 0xFFFE};
    for (Square s = a1; s <= h8; ++s) {
        for (Square t = a1; t <= h8; ++t) sets.push_back(Bit(s) | Bit(t));
        sets.push_back(all_squares >> s);
        sets.push_back(all_squares << s);
    }
    std::mt19937_64 random(7);
    for (int i = 0; i < 2000; ++i) {
        sets.push_back(random());
        sets.push_back(random() & random() & random());
        sets.push_back(random() | random() | random());
        sets.push_back(random() & (Bitboard{0xFFFF} << (16 * (i % 4))));
    }
    return sets;
}

TEST(Bits, TableAndPortableFormGiveTheObviousResults) {
    for (const Bitboard b : InterestingSets()) {
        ASSERT_EQ(table_bits::PopCount(b), SlowPopCount(b)) << std::hex << b;
        ASSERT_EQ(portable_bits::PopCount(b), SlowPopCount(b)) << std::hex << b;
        ASSERT_EQ(table_bits::FindHighestBit(b), SlowHighestBit(b)) << std::hex << b;
        ASSERT_EQ(portable_bits::FindHighestBit(b), SlowHighestBit(b)) << std::hex << b;
        ASSERT_EQ(table_bits::FindLowestBit(b), SlowLowestBit(b)) << std::hex << b;
        ASSERT_EQ(portable_bits::FindLowestBit(b), SlowLowestBit(b)) << std::hex << b;
    }
}

TEST(Bits, NamesInForceGiveTheObviousResults) {
    for (const Bitboard b : InterestingSets()) {
        ASSERT_EQ(PopCount(b), SlowPopCount(b)) << std::hex << b;
        ASSERT_EQ(PopCountSparse(b), SlowPopCount(b)) << std::hex << b;
        ASSERT_EQ(FindHighestBit(b), SlowHighestBit(b)) << std::hex << b;
        ASSERT_EQ(FindNextBit(b), SlowHighestBit(b)) << std::hex << b;
        ASSERT_EQ(FindLowestBit(b), SlowLowestBit(b)) << std::hex << b;
        ASSERT_EQ(HasSeveral(b), SlowPopCount(b) > 1) << std::hex << b;
    }
}

TEST(Bits, FullChunkCountsSixteen) {
    EXPECT_EQ(bitboard_tables.bit_info[0xFFFF] >> 4, 0);
    EXPECT_EQ(table_bits::PopCount(0xFFFF), 16);
    EXPECT_EQ(table_bits::PopCount(all_squares), 64);
}

TEST(Bits, EmptySetHasItsHighestBitAtZero) {
    EXPECT_EQ(table_bits::FindHighestBit(0), 0);
    EXPECT_EQ(portable_bits::FindHighestBit(0), 0);
}

TEST(Bits, WalkGoesFromH8ToA1) {
    Bitboard rest = Bit(a1) | Bit(h1) | Bit(e4) | Bit(a8) | Bit(h8);
    std::vector<Square> walked;
    while (rest != 0) walked.push_back(TakeNextBit(rest));
    EXPECT_EQ(walked, (std::vector<Square>{h8, a8, e4, h1, a1}));
}

TEST(Bits, MirrorRanksMirrorsEverySquare) {
    for (const Bitboard b : InterestingSets()) {
        Bitboard mirrored = 0;
        for (Square s = a1; s <= h8; ++s)
            if (Has(b, s)) mirrored |= Bit(MirrorVertically(s));
        ASSERT_EQ(MirrorRanks(b), mirrored) << std::hex << b;
    }
}

TEST(Squares, AreSeenFromBothSides) {
    for (Square s = a1; s <= h8; ++s) {
        ASSERT_EQ(Seen<white>(s), s);
        ASSERT_EQ(Seen<black>(s), MirrorVertically(s));
    }
}

}  // namespace
