#include "tablebases/block_cache.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <list>
#include <random>
#include <utility>

namespace VorkaTablebases {

namespace {

constexpr std::size_t block_bytes = 64;
/// What the cache spends on a block besides its bytes: its record and a bucket.
constexpr std::uint64_t record_bytes = 24 + 4;

/// A table whose bytes tell where they stand.
class CountingReader : public BlockReader {
  public:
    explicit CountingReader(std::uint8_t number) : number_(number) {}
    SourceFailure ReadBlock(std::uint32_t block, std::span<std::uint8_t> to) noexcept override {
        ++reads;
        if (failure != SourceFailure::none) return failure;
        for (std::size_t i = 0; i < to.size(); ++i) to[i] = ByteAt(block, i);
        return SourceFailure::none;
    }
    [[nodiscard]] std::uint8_t ByteAt(std::uint32_t block, std::size_t offset) const {
        return static_cast<std::uint8_t>(number_ * 101 + block * 17 + offset);
    }

    int reads = 0;
    SourceFailure failure = SourceFailure::none;

  private:
    std::uint8_t number_;
};

/// The byte of a block that can be read.
std::uint8_t Found(BlockCache& cache, CountingReader& reader, std::uint32_t block, std::size_t offset = 0) {
    std::uint8_t value = 0;
    EXPECT_EQ(cache.Find(reader, block, offset, value), SourceFailure::none);
    EXPECT_EQ(value, reader.ByteAt(block, offset));
    return value;
}

std::uint64_t BytesFor(std::uint64_t blocks) { return blocks * (block_bytes + record_bytes); }

}  // namespace

TEST(BlockCache, WithoutMemoryReadsEachTime) {
    BlockCache cache(block_bytes);
    CountingReader reader(1);
    for (int i = 0; i < 3; ++i) Found(cache, reader, 5, 7);
    EXPECT_EQ(reader.reads, 3);
    ASSERT_TRUE(cache.Resize(BytesFor(1)));
    ASSERT_TRUE(cache.Resize(0));
    for (int i = 0; i < 3; ++i) Found(cache, reader, 5, 7);
    EXPECT_EQ(reader.reads, 6);
    EXPECT_EQ(cache.bytes(), 0U);
}

TEST(BlockCache, KeepsItsSizeExactly) {
    BlockCache cache(block_bytes);
    for (std::uint64_t bytes = 1; bytes < BytesFor(4); ++bytes) {
        EXPECT_EQ(cache.Resize(bytes), bytes >= BytesFor(1));
        EXPECT_EQ(cache.capacity(), bytes / BytesFor(1));
        EXPECT_LE(cache.bytes(), bytes);
        EXPECT_EQ(cache.bytes(), BytesFor(cache.capacity()));
    }
}

TEST(BlockCache, TellsThatThereIsNotSoMuchMemory) {
    BlockCache cache(block_bytes);
    CountingReader reader(1);
    testing::internal::CaptureStdout();
    EXPECT_FALSE(cache.Resize(BytesFor(1) - 1));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "") << "here it is the size that is too small";
    // No more slots than a number of 32 bits counts, which are too many for any memory.
    testing::internal::CaptureStdout();
    EXPECT_FALSE(cache.Resize(std::uint64_t{1} << 62));
    EXPECT_THAT(testing::internal::GetCapturedStdout(),
                testing::ContainsRegex("^\\*\\*\\* Cannot allocate [0-9]+ bytes of memory\n$"));
    EXPECT_TRUE(cache.lacks_memory());
    Found(cache, reader, 1);
    EXPECT_FALSE(cache.Resize(BytesFor(1) - 1));
    EXPECT_FALSE(cache.lacks_memory());
}

TEST(BlockCache, GivesUpTheBlockNotAskedForTheLongest) {
    BlockCache cache(block_bytes);
    CountingReader reader(1);
    ASSERT_TRUE(cache.Resize(BytesFor(3)));
    for (const std::uint32_t block : {1, 2, 3, 1}) Found(cache, reader, block);
    EXPECT_EQ(reader.reads, 3);
    Found(cache, reader, 4);  // instead of 2
    for (const std::uint32_t block : {1, 3, 4}) Found(cache, reader, block);
    EXPECT_EQ(reader.reads, 4);
    Found(cache, reader, 2);
    EXPECT_EQ(reader.reads, 5);
}

TEST(BlockCache, OfOneBlockKeepsTheLast) {
    BlockCache cache(block_bytes);
    CountingReader reader(1);
    ASSERT_TRUE(cache.Resize(BytesFor(1)));
    for (const std::uint32_t block : {1, 1, 2, 2, 1}) Found(cache, reader, block);
    EXPECT_EQ(reader.reads, 3);
}

TEST(BlockCache, TellsTablesApart) {
    BlockCache cache(block_bytes);
    CountingReader one(1);
    CountingReader other(2);
    ASSERT_TRUE(cache.Resize(BytesFor(2)));
    EXPECT_NE(Found(cache, one, 0), Found(cache, other, 0));
    EXPECT_NE(Found(cache, one, 0), Found(cache, other, 0));
    EXPECT_EQ(one.reads + other.reads, 2);
}

TEST(BlockCache, KeepsNothingOfABlockThatFails) {
    BlockCache cache(block_bytes);
    CountingReader reader(1);
    ASSERT_TRUE(cache.Resize(BytesFor(2)));
    Found(cache, reader, 1);
    Found(cache, reader, 2);
    for (const SourceFailure failure : {SourceFailure::corrupted, SourceFailure::unreadable}) {
        reader.failure = failure;
        std::uint8_t value = 77;
        EXPECT_EQ(cache.Find(reader, 3, 0, value), failure);
        EXPECT_EQ(value, 77);
    }
    reader.failure = SourceFailure::none;
    reader.reads = 0;
    Found(cache, reader, 2);  // 1 had to make room
    EXPECT_EQ(reader.reads, 0);
    Found(cache, reader, 3);
    Found(cache, reader, 2);
    EXPECT_EQ(reader.reads, 1);
}

/// The same order of blocks as a list that is searched from its head has.
class ListModel {
  public:
    explicit ListModel(std::size_t capacity) : capacity_(capacity) {}
    /// Whether the block has to be read.
    bool Ask(int table, std::uint32_t block) {
        const std::pair key(table, block);
        const auto found = std::ranges::find(list_, key);
        const bool missing = found == list_.end();
        if (!missing) list_.erase(found);
        list_.push_front(key);
        if (list_.size() > capacity_) list_.pop_back();
        return missing;
    }

  private:
    std::size_t capacity_;
    std::list<std::pair<int, std::uint32_t>> list_;
};

TEST(BlockCache, DoesAsAListWould) {
    std::mt19937 random(18);
    for (const std::size_t capacity : {1, 2, 3, 7, 20}) {
        BlockCache cache(block_bytes);
        ASSERT_TRUE(cache.Resize(BytesFor(capacity)));
        ListModel model(capacity);
        std::array<CountingReader, 3> readers{CountingReader(1), CountingReader(2), CountingReader(3)};
        for (int i = 0; i < 5000; ++i) {
            const auto table = static_cast<int>(random() % readers.size());
            const auto block = static_cast<std::uint32_t>(random() % (1 + capacity));
            CountingReader& reader = readers[static_cast<std::size_t>(table)];
            const int before = reader.reads;
            Found(cache, reader, block, random() % block_bytes);
            ASSERT_EQ(reader.reads - before, model.Ask(table, block) ? 1 : 0) << "capacity " << capacity;
        }
    }
}

}  // namespace VorkaTablebases
