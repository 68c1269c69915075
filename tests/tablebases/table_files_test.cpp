#include "tablebases/table_files.h"

#include <gtest/gtest.h>

#include "support/temporary_directory.h"
#include "tablebases/opener/open_tables.h"

namespace VorkaTablebases {

namespace {

/// Knows, or fails, as it is told to.
class MadeUpSet : public TableSet {
  public:
    MadeUpSet(ProbeResult result, int score, SourceFailure failure)
        : result_(result), score_(score), failure_(failure) {}
    bool empty() const noexcept override { return false; }
    std::size_t largest_block() const noexcept override { return 10; }
    ProbeResult Probe(const BOARD& /*board*/, BlockCache& /*cache*/, int& score,
                      SourceFailure& failure) noexcept override {
        if (result_ == ProbeResult::found) score = score_;
        failure = failure_;
        return result_;
    }

  private:
    ProbeResult result_;
    int score_;
    SourceFailure failure_;
};

struct Answer {
    ProbeResult result;
    int score;
    SourceFailure failure;
};

std::unique_ptr<CombinedSource> SourceOf(std::initializer_list<Answer> answers) {
    std::vector<std::unique_ptr<TableSet>> sets;
    for (const auto& [result, score, failure] : answers) {
        sets.push_back(std::make_unique<MadeUpSet>(result, score, failure));
    }
    return std::make_unique<CombinedSource>(std::move(sets));
}

constexpr Answer knows_nothing{ProbeResult::not_found, 0, SourceFailure::none};
constexpr Answer is_broken{ProbeResult::not_found, 0, SourceFailure::corrupted};
constexpr Answer knows{ProbeResult::found, 17, SourceFailure::none};

}  // namespace

TEST(CombinedSource, AnswersByTheFirstSetThatKnows) {
    const BOARD board;
    for (const auto& source : {SourceOf({knows, {ProbeResult::found, 18, SourceFailure::none}}),
                               SourceOf({knows_nothing, knows}), SourceOf({is_broken, knows})}) {
        int score = 0;
        EXPECT_EQ(source->Probe(board, score), ProbeResult::found);
        EXPECT_EQ(score, 17);
    }
}

TEST(CombinedSource, TellsWhatWentWrongInTheLastProbe) {
    const BOARD board;
    int score = 5;
    const auto broken = SourceOf({knows_nothing, is_broken, knows_nothing});
    EXPECT_EQ(broken->Probe(board, score), ProbeResult::not_found);
    EXPECT_EQ(broken->last_failure(), SourceFailure::corrupted);
    const auto ignorant = SourceOf({knows_nothing});
    EXPECT_EQ(ignorant->Probe(board, score), ProbeResult::not_found);
    EXPECT_EQ(ignorant->last_failure(), SourceFailure::none);
    EXPECT_EQ(score, 5);
}

TEST(CombinedSource, TakesACacheForTheLargestBlock) {
    const auto source = SourceOf({knows});
    EXPECT_TRUE(source->UseCache(0));
    EXPECT_FALSE(source->UseCache(10));
    EXPECT_FALSE(source->UseCache(-1));
    EXPECT_TRUE(source->UseCache(1000));
    EXPECT_LE(source->cache().bytes(), 1000U);
    EXPECT_GT(source->cache().capacity(), 0U);
}

TEST(OpenTables, FindsNothingInAnEmptyFolder) {
    const TemporaryDirectory directory;
    EXPECT_EQ(OpenTables(directory.path()), nullptr);
    EXPECT_EQ(OpenTables(directory.File("nowhere")), nullptr);
}

}  // namespace VorkaTablebases
