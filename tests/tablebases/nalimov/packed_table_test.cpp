#include "tablebases/nalimov/packed_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tablebases/nalimov/table_encoder.h"

namespace NalimovTablebases {

namespace {

using table_encoder::BitWriter;
using table_encoder::Bytes;
using testing::ElementsAre;
using testing::Optional;

Bytes LengthsReadBack(const Bytes& lengths) {
    BitWriter bits;
    table_encoder::PutCodeLengths(bits, lengths);
    BitReader reader(bits.bytes());
    const auto read = ReadCodeLengths(reader, lengths.size());
    return read ? *read : Bytes();
}

/// Unpacks all blocks; empty if anything is wrong.
Bytes UnpackAll(const Bytes& file) {
    const FixedHeader fixed = FixedHeader::From(file);
    const auto layout = PackedLayout::FromHeader(std::span(file).first(fixed.header_bytes));
    if (!layout || layout->file_bytes() != file.size()) return {};
    Bytes plain;
    for (std::size_t i = 0; i < layout->blocks(); ++i) {
        const auto packed = std::span(file).subspan(layout->OffsetOf(i), layout->PackedSizeOf(i));
        if (PackerChecksum(packed) != layout->ChecksumsOf(i).packed) return {};
        Bytes block(layout->PlainSizeOf(i));
        if (!layout->Unpack(packed, block)) return {};
        if (PackerChecksum(block) != layout->ChecksumsOf(i).plain) return {};
        plain.insert(plain.end(), block.begin(), block.end());
    }
    return plain;
}

/// Bytes in runs, as values of a table are.
Bytes RunsOfBytes(std::size_t size, std::uint32_t seed) {
    std::mt19937 random(seed);
    Bytes bytes;
    while (bytes.size() < size) {
        const std::size_t run = random() % 4 == 0 ? random() % 400 : random() % 5;
        bytes.insert(bytes.end(), run, static_cast<std::uint8_t>(100 + random() % 28));
    }
    bytes.resize(size);
    return bytes;
}

Bytes RandomBytes(std::size_t size) {
    std::mt19937 random(4);
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    return bytes;
}

}  // namespace

TEST(BitReader, TakesTheHighestBitsFirst) {
    const Bytes bytes{0b1010'0000, 0xFF, 0x12, 0x34, 0x56, 0x78, 0x9A};
    BitReader bits(bytes);
    EXPECT_EQ(bits.Take(3), 0b101U);
    EXPECT_EQ(bits.Take(0), 0U);
    bits.SkipToByte();
    EXPECT_EQ(bits.Peek(8), 0xFFU);
    EXPECT_EQ(bits.TakeLong(40), 0xFF12345678U);
    EXPECT_FALSE(bits.is_beyond_end());
    EXPECT_EQ(bits.Take(8), 0x9AU);
    EXPECT_FALSE(bits.is_beyond_end());
    EXPECT_EQ(bits.Take(1), 0U);
    EXPECT_TRUE(bits.is_beyond_end());
}

TEST(PackerChecksum, HasThePolynomialWhereTheBitIsZero) {
    EXPECT_EQ(PackerChecksum(Bytes{}), 0U);
    // From 1: the bit that leaves is 1 once, then 0 seven times.
    std::uint32_t rest = 0;
    for (int bit = 0; bit < 7; ++bit) rest = (rest & 1U) != 0 ? rest >> 1 : rest >> 1 ^ 0xEDB88320;
    EXPECT_EQ(PackerChecksum(Bytes{1}), rest);
}

TEST(CanonicalCode, IsOrderedByLengthThenBySymbol) {
    // Codes: symbol 1 is 0, symbol 3 is 10, symbol 0 is 110, symbol 4 is 111.
    const auto code = CanonicalCode::FromLengths(Bytes{3, 1, 0, 2, 3});
    ASSERT_TRUE(code);
    const Bytes bytes{0b0'10'110'11, 0b1'0000000};
    BitReader bits(bytes);
    for (const unsigned symbol : {1U, 3U, 0U, 4U}) EXPECT_THAT(code->Read(bits), Optional(symbol));
}

TEST(CanonicalCode, OfOneSymbolTakesNoBits) {
    const auto code = CanonicalCode::FromLengths(Bytes{0, 0, 1});
    ASSERT_TRUE(code);
    BitReader bits(Bytes{});
    EXPECT_THAT(code->Read(bits), Optional(2U));
    EXPECT_FALSE(bits.is_beyond_end());
}

TEST(CanonicalCode, MayBeLong) {
    Bytes lengths;
    for (std::uint8_t length = 1; length <= 31; ++length) lengths.push_back(length);
    lengths.push_back(31);
    const auto code = CanonicalCode::FromLengths(lengths);
    ASSERT_TRUE(code);
    const std::vector<std::uint32_t> codes = table_encoder::CanonicalCodes(lengths);
    BitWriter writer;
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) writer.Put(codes[symbol], lengths[symbol]);
    BitReader bits(writer.bytes());
    for (unsigned symbol = 0; symbol < lengths.size(); ++symbol) EXPECT_THAT(code->Read(bits), Optional(symbol));
}

TEST(CanonicalCode, HasNoMoreCodesThanThereIsRoomFor) {
    EXPECT_FALSE(CanonicalCode::FromLengths(Bytes{1, 1, 1}));
    EXPECT_FALSE(CanonicalCode::FromLengths(Bytes{1, 2, 2, 31}));
    EXPECT_FALSE(CanonicalCode::FromLengths(Bytes{32}));
    EXPECT_TRUE(CanonicalCode::FromLengths(Bytes{1, 2, 2}));
}

TEST(CanonicalCode, DoesNotReadWhatIsNoCode) {
    const auto code = CanonicalCode::FromLengths(Bytes{2, 2});
    ASSERT_TRUE(code);
    const Bytes bytes{0xFF};
    BitReader bits(bytes);
    EXPECT_FALSE(code->Read(bits));
    BitReader none(bytes);
    EXPECT_FALSE(CanonicalCode::FromLengths(Bytes(10, 0))->Read(none));
}

TEST(CodeLengths, AreReadBack) {
    std::vector<Bytes> cases{Bytes(1024, 0), Bytes(128, 0), Bytes(64, 3), Bytes(1024, 10)};
    std::mt19937 random(7);
    for (const std::size_t size : {1U, 64U, 128U, 129U, 200U, 1024U}) {
        Bytes runs;
        while (runs.size() < size) {
            const std::size_t run = random() % 3 == 0 ? random() % 300 : 1;
            runs.insert(runs.end(), run, static_cast<std::uint8_t>(random() % 32));
        }
        runs.resize(size);
        cases.push_back(runs);
        Bytes alone(size, 0);
        alone[size / 2] = 1;
        cases.push_back(alone);
    }
    for (const Bytes& lengths : cases) EXPECT_EQ(LengthsReadBack(lengths), lengths);
}

TEST(CodeLengths, ThatAreDamagedAreRefused) {
    std::mt19937 random(8);
    int refused = 0;
    for (int i = 0; i < 2000; ++i) {
        Bytes bytes(1 + random() % 60);
        for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
        bytes[0] &= 127;
        BitReader bits(bytes);
        const auto lengths = ReadCodeLengths(bits, i % 2 == 0 ? 1024 : 128);
        EXPECT_TRUE(!lengths || lengths->size() == (i % 2 == 0 ? 1024U : 128U));
        if (!lengths) ++refused;
    }
    EXPECT_GT(refused, 1000);
}

TEST(PackedTable, IsUnpackedToWhatWasPacked) {
    std::vector<Bytes> cases{Bytes(1, 5), Bytes(2, 5), Bytes(8192, 0), Bytes(8193, 127), Bytes(20000, 1)};
    for (const std::size_t size : {100U, 8191U, 8192U, 16384U, 50000U}) {
        cases.push_back(RunsOfBytes(size, static_cast<std::uint32_t>(size)));
        cases.push_back(RandomBytes(size));
    }
    Bytes mixed = RunsOfBytes(8192, 3);
    const Bytes noise = RandomBytes(8192);
    mixed.insert(mixed.end(), noise.begin(), noise.end());
    cases.push_back(mixed);
    for (const Bytes& plain : cases) {
        EXPECT_EQ(UnpackAll(table_encoder::Pack(plain)), plain);
        EXPECT_EQ(UnpackAll(table_encoder::Pack(plain, {.longest_copy = 0})), plain);
        EXPECT_EQ(UnpackAll(table_encoder::Pack(plain, {.longest_copy = 14})), plain);
        EXPECT_EQ(UnpackAll(table_encoder::Pack(plain, {.stores_all = true})), plain);
    }
}

TEST(PackedTable, IsSmallerWhereThereAreRuns) {
    const Bytes plain = RunsOfBytes(80'000, 9);
    EXPECT_LT(table_encoder::Pack(plain).size(), plain.size() / 5);
}

TEST(PackedTable, WithADamagedBlockIsNoticed) {
    const Bytes plain = RunsOfBytes(30'000, 10);
    const Bytes file = table_encoder::Pack(plain);
    const std::size_t header = FixedHeader::From(file).header_bytes;
    std::mt19937 random(11);
    for (int i = 0; i < 300; ++i) {
        Bytes damaged = file;
        damaged[header + random() % (file.size() - header)] ^= static_cast<std::uint8_t>(1U << random() % 8);
        EXPECT_EQ(UnpackAll(damaged), Bytes());
    }
}

// With checksums that fit, so that they are no help.
TEST(PackedTable, IsNeverReadOrWrittenBeyondItsEnds) {
    const Bytes plain = RunsOfBytes(8192, 12);
    const Bytes file = table_encoder::Pack(plain);
    const auto layout = PackedLayout::FromHeader(std::span(file).first(FixedHeader::From(file).header_bytes));
    ASSERT_TRUE(layout);
    std::mt19937 random(13);
    int refused = 0;
    for (int i = 0; i < 2000; ++i) {
        Bytes packed(1 + random() % layout->PackedSizeOf(0));
        for (std::uint8_t& byte : packed) byte = static_cast<std::uint8_t>(random());
        Bytes block(8192);
        if (!layout->Unpack(packed, block)) ++refused;
    }
    EXPECT_GT(refused, 1900);
}

struct HeaderDamage {
    const char* name;
    void (*damage)(Bytes& file);
};

TEST(PackedTable, WithADamagedHeaderIsRefused) {
    const HeaderDamage rows[] = {
        {"banner", [](Bytes& file) { file[3] ^= 1; }},
        {"end of the banner", [](Bytes& file) { file[63] = 1; }},
        {"header too small", [](Bytes& file) { table_encoder::SetNumber(file, 64, 79); }},
        {"no header", [](Bytes& file) { table_encoder::SetNumber(file, 64, 0); }},
        {"header too large", [](Bytes& file) { table_encoder::SetNumber(file, 64, ~0U); }},
        {"block size", [](Bytes& file) { file[70] = 12; }},
        {"distances", [](Bytes& file) { file[71] = 25; }},
        {"no blocks", [](Bytes& file) { table_encoder::SetNumber(file, 72, 0); }},
        {"one block less", [](Bytes& file) { --file[75]; }},
        {"too many blocks", [](Bytes& file) { table_encoder::SetNumber(file, 72, ~0U); }},
        {"more bytes than there are", [](Bytes& file) { table_encoder::SetNumber(file, 72, 1U << 29); }},
        {"parameters", [](Bytes& file) { file[79] ^= 1; }},
    };
    const Bytes good = table_encoder::Pack(RunsOfBytes(30'000, 14));
    const std::size_t header = FixedHeader::From(good).header_bytes;
    ASSERT_TRUE(PackedLayout::FromHeader(std::span(good).first(header)));
    for (const HeaderDamage& row : rows) {
        Bytes file = good;
        row.damage(file);
        table_encoder::RenewHeaderChecksum(file);
        EXPECT_FALSE(PackedLayout::FromHeader(std::span(file).first(header))) << row.name;
    }
    for (std::size_t at = 64; at < header; ++at) {
        Bytes file = good;
        file[at] ^= 16;
        EXPECT_FALSE(PackedLayout::FromHeader(std::span(file).first(header))) << "no checksum tells of byte " << at;
    }
    for (std::size_t size = 0; size < header; ++size) {
        EXPECT_FALSE(PackedLayout::FromHeader(std::span(good).first(size))) << "cut off after " << size;
    }
}

}  // namespace NalimovTablebases
