#include "bitbases/tablebases.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "bitbases/table_source.h"
#include "support/board_builder.h"
#include "support/log_capture.h"

namespace {

using NalimovTablebases::NalimovException;
using testing::HasSubstr;
using VorkaTablebases::ProbeResult;

const std::string rook_ending = "4k3/8/8/8/8/8/8/4K2R w - - 0 1";

TEST(Tablebases, AnswerZeroBeforeTheyAreLoaded) {
    const VorkaTablebases::Tablebases tables;
    int score = 7;
    EXPECT_EQ(tables.Probe(BoardFromFen(rook_ending), score), ProbeResult::disabled);
    EXPECT_EQ(score, 7);
    EXPECT_FALSE(tables.IsLossFarAway(BoardFromFen(rook_ending)));
}

TEST(Tablebases, NeverSeeCastlingOrEnPassant) {
    const VorkaTablebases::Tablebases tables = TablebasesOf(Always(ProbeResult::found, 32740));
    int score = 0;
    EXPECT_EQ(tables.Probe(BoardFromFen(rook_ending), score), ProbeResult::found);
    EXPECT_EQ(score, 32740);
    EXPECT_EQ(tables.Probe(BoardFromFen("4k3/8/8/8/8/8/8/4K2R w K - 0 1"), score), ProbeResult::not_found);
    EXPECT_EQ(tables.Probe(BoardFromFen("4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1"), score), ProbeResult::not_found);
}

TEST(Tablebases, ALossIsFarAwayFromThirtyPliesOn) {
    const auto far_away = [](int score) {
        const VorkaTablebases::Tablebases tables = TablebasesOf(Always(ProbeResult::found, score));
        return tables.IsLossFarAway(BoardFromFen(rook_ending));
    };
    EXPECT_TRUE(far_away(-(32767 - 30)));
    EXPECT_FALSE(far_away(-(32767 - 29)));
    EXPECT_FALSE(far_away(32767 - 40));
    EXPECT_FALSE(far_away(0));
    const VorkaTablebases::Tablebases tables = TablebasesOf(Always(ProbeResult::not_found, -32000));
    EXPECT_FALSE(tables.IsLossFarAway(BoardFromFen(rook_ending)));
}

/// Opens tables that need a cache of so many bytes.
VorkaTablebases::SourceOpener Opening(std::int32_t smallest_cache) {
    return [=](const std::string& path) -> std::unique_ptr<VorkaTablebases::TableSource> {
        if (path != "here") return nullptr;
        return std::make_unique<FakeTables>(Always(ProbeResult::found, 0), smallest_cache);
    };
}

class Initialising : public testing::Test {
  protected:
    bool IsLoaded() const {
        int score = 0;
        return tablebases_.Probe(BoardFromFen(rook_ending), score) != ProbeResult::disabled;
    }
    std::string Failure(std::uint64_t size, const std::string& path, std::int32_t smallest_cache) {
        try {
            NalimovTablebases::Initialize(tablebases_, size, path, Opening(smallest_cache));
        } catch (const NalimovException& error) {
            return error.what();
        }
        return "";
    }
    VorkaTablebases::Tablebases tablebases_;
    LogCapture log_;
};

TEST_F(Initialising, TakesTablesIntoUse) {
    EXPECT_EQ(Failure(8 << 20, "here", 1 << 20), "");
    EXPECT_TRUE(IsLoaded());
    EXPECT_EQ(log_.text(), "Initializing Nalimov tablebases... 'here'\n");
}

TEST_F(Initialising, FindsNoTables) {
    EXPECT_EQ(Failure(8 << 20, "here", 0), "");
    EXPECT_EQ(Failure(8 << 20, "there", 0), "Could not open tablebases. Is the path correct?");
    EXPECT_FALSE(IsLoaded());
    EXPECT_THAT(log_.text(), HasSubstr("Error! Could not initialize tablebases!\nIs the path correct?\n"));
    EXPECT_THROW(NalimovTablebases::Initialize(tablebases_, 0, "here", NalimovTablebases::OpenNothing),
                 NalimovException);
}

TEST_F(Initialising, NeedsEnoughCacheOrNone) {
    EXPECT_EQ(Failure(100, "here", 200), "Increase the cache size, because it is too small.");
    EXPECT_FALSE(IsLoaded());
    EXPECT_THAT(log_.text(), HasSubstr("Error! Could not initialize tablebases!\nIncrease the cache size.\n"));
    EXPECT_EQ(Failure(0, "here", 200), "") << "without a cache";
    EXPECT_TRUE(IsLoaded());
}

TEST_F(Initialising, AsksForNoLargerCacheWhereMemoryIsWanting) {
    const auto open = [](const std::string& /*path*/) {
        auto tables = std::make_unique<FakeTables>(Always(ProbeResult::found, 0), 1 << 30);
        tables->lacks_memory = true;
        return tables;
    };
    try {
        NalimovTablebases::Initialize(tablebases_, 8 << 20, "here", open);
        FAIL() << "there is no memory";
    } catch (const NalimovException& error) {
        EXPECT_STREQ(error.what(), "out of memory");
    }
    EXPECT_FALSE(IsLoaded());
    EXPECT_EQ(log_.text(), "Initializing Nalimov tablebases... 'here'\n");
}

TEST_F(Initialising, CutsASizeThatDoesNotFit) {
    constexpr std::uint64_t largest = 0x7FFFFFFF;
    const std::string initialising = "Initializing Nalimov tablebases... 'here'\n";
    const std::string overflow =
        "NalimovInitializer: Cannot allocate the requested memory, because of an integer overflow. Allocating maximum "
        "memory instead.\n";
    EXPECT_EQ(Failure(largest, "here", largest), "");
    EXPECT_EQ(log_.text(), initialising) << "the largest that fits";
    EXPECT_EQ(Failure(largest + 1, "here", largest), "");
    EXPECT_EQ(log_.text(), initialising + overflow + initialising);
    // The lower half of this number is small.
    EXPECT_EQ(Failure((std::uint64_t{1} << 32) + 5, "here", largest), "");
    EXPECT_EQ(log_.text(), initialising + overflow + initialising + overflow + initialising);
}

}  // namespace
