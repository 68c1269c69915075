#include "frame/base/zeroed_pages.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <utility>
#include <vector>

namespace {

std::span<unsigned char> BytesOf(const ZeroedPages& pages) {
    return {static_cast<unsigned char*>(pages.data()), pages.size()};
}

bool AreAllZero(const ZeroedPages& pages) {
    return std::ranges::all_of(BytesOf(pages), [](unsigned char byte) { return byte == 0; });
}

class ZeroedPagesOfSize : public testing::TestWithParam<std::size_t> {};

TEST_P(ZeroedPagesOfSize, AreZeroAtFirstAndAfterClear) {
    ZeroedPages pages(GetParam());
    ASSERT_NE(pages.data(), nullptr);
    EXPECT_EQ(pages.size(), GetParam());
    EXPECT_TRUE(AreAllZero(pages));
    std::ranges::fill(BytesOf(pages), static_cast<unsigned char>(0xFF));
    pages.Clear();
    EXPECT_TRUE(AreAllZero(pages));
    BytesOf(pages).back() = 1;  // still there to be written
}

/// How many of the pages the system has given already.
std::size_t PagesInMemory(const ZeroedPages& pages) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    std::vector<unsigned char> is_there((pages.size() + page - 1) / page);
    EXPECT_EQ(mincore(pages.data(), pages.size(), is_there.data()), 0);
    return static_cast<std::size_t>(
        std::ranges::count_if(is_there, [](unsigned char flags) { return (flags & 1U) != 0; }));
}

TEST_P(ZeroedPagesOfSize, AreInMemoryAfterTouchAndKeepWhatStandsThere) {
    ZeroedPages pages(GetParam());
    EXPECT_EQ(PagesInMemory(pages), 0U) << "they cost nothing before";
    BytesOf(pages).back() = 9;
    EXPECT_FALSE(pages.Touch(Deadline::min())) << "there is no time";
    EXPECT_LE(PagesInMemory(pages), std::size_t{2} << 8U)
        << "but for the one that was written, which may be a large one";
    EXPECT_TRUE(pages.Touch(Deadline::max()));
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    EXPECT_EQ(PagesInMemory(pages), (GetParam() + page - 1) / page);
    EXPECT_EQ(BytesOf(pages).back(), 9);
    BytesOf(pages).back() = 0;
    EXPECT_TRUE(AreAllZero(pages));
}

// A byte, a page and a byte beside it, and as much as asks for large pages.
INSTANTIATE_TEST_SUITE_P(Sizes, ZeroedPagesOfSize, testing::Values(1, 4095, 4096, 4097, std::size_t{33} << 20));

TEST(ZeroedPages, StartAtALineOfTheCache) {
    const ZeroedPages pages(100);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pages.data()) % 64, 0U);
}

TEST(ZeroedPages, AreNullWithoutMemory) {
    ZeroedPages pages(std::numeric_limits<std::size_t>::max() / 2);
    EXPECT_EQ(pages.data(), nullptr);
    EXPECT_EQ(pages.size(), 0U);
    pages.Clear();
    EXPECT_TRUE(pages.Touch(Deadline::max()));
}

TEST(ZeroedPages, MoveFromOneOwnerToAnother) {
    ZeroedPages pages(64);
    BytesOf(pages)[0] = 7;
    ZeroedPages other(std::move(pages));
    EXPECT_EQ(BytesOf(other)[0], 7);
    EXPECT_EQ(pages.data(), nullptr);  // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(pages.size(), 0U);
    pages = std::move(other);
    EXPECT_EQ(BytesOf(pages)[0], 7);
}

}  // namespace
