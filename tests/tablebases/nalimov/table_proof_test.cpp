#include "tablebases/nalimov/table_proof.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <utility>

#include "support/board_builder.h"
#include "tablebases/nalimov/table_values.h"

namespace NalimovTablebases {

namespace {

/// Knows what a test says.
class MadeUpScores final : public ScoreLookup {
  public:
    using Answer = std::function<std::optional<int>(const BOARD& board)>;
    explicit MadeUpScores(Answer answer) : answer_(std::move(answer)) {}
    std::optional<int> ScoreOf(const BOARD& board) noexcept override { return answer_(board); }

  private:
    Answer answer_;
};

Agreement Compare(const std::string& fen, int score, MadeUpScores::Answer answer) {
    BOARD board = BoardFromFen(fen);
    MadeUpScores scores(std::move(answer));
    const Agreement agreement = CompareWithMoves(board, score, scores);
    EXPECT_EQ(FenOf(board), FenOf(BoardFromFen(fen))) << "the board is as before";
    return agreement;
}

const auto knows_nothing = [](const BOARD& /*board*/) { return std::optional<int>(); };
/// Mate where it is mate, draws elsewhere.
const auto knows_mates = [](const BOARD& board) {
    return std::optional(board.in_check() && LegalMovesOf(board).empty() ? ScoreOfMatedIn(0) : 0);
};

constexpr const char* mated = "k7/1Q6/1K6/8/8/8/8/8 b - - 0 1";
constexpr const char* stalemated = "k7/2Q5/1K6/8/8/8/8/8 b - - 0 1";
constexpr const char* mates_in_one = "k7/8/1K6/8/8/8/8/6Q1 w - - 0 1";
constexpr const char* takes_the_queen = "8/8/8/8/8/8/1Qk5/7K b - - 0 1";

}  // namespace

TEST(CompareWithMoves, KnowsTheEndOfAGame) {
    EXPECT_EQ(Compare(mated, ScoreOfMatedIn(0), knows_nothing), Agreement::proved);
    EXPECT_EQ(Compare(mated, 0, knows_nothing), Agreement::impossible);
    EXPECT_EQ(Compare(stalemated, 0, knows_nothing), Agreement::proved);
    EXPECT_EQ(Compare(stalemated, ScoreOfMatedIn(0), knows_nothing), Agreement::impossible);
}

TEST(CompareWithMoves, TakesTheBestMove) {
    EXPECT_EQ(Compare(mates_in_one, ScoreOfMateIn(1), knows_mates), Agreement::proved);
    EXPECT_EQ(Compare(mates_in_one, ScoreOfMateIn(2), knows_mates), Agreement::impossible);
    EXPECT_EQ(Compare(mates_in_one, 0, knows_mates), Agreement::impossible);
}

TEST(CompareWithMoves, CountsOneMoveMore) {
    const auto all_lost = [](const BOARD& /*board*/) { return std::optional(ScoreOfMatedIn(5)); };
    EXPECT_EQ(Compare("k7/8/8/8/8/8/5Q2/6K1 w - - 0 1", ScoreOfMateIn(6), all_lost), Agreement::proved);
    EXPECT_EQ(Compare("k7/8/8/8/8/8/5Q2/6K1 w - - 0 1", ScoreOfMateIn(5), all_lost), Agreement::impossible);
    const auto all_won = [](const BOARD& /*board*/) { return std::optional(ScoreOfMateIn(5)); };
    EXPECT_EQ(Compare("k7/8/8/8/8/8/5Q2/6K1 b - - 0 1", ScoreOfMatedIn(5), all_won), Agreement::proved);
    EXPECT_EQ(Compare("k7/8/8/8/8/8/5Q2/6K1 b - - 0 1", ScoreOfMatedIn(4), all_won), Agreement::impossible);
}

TEST(CompareWithMoves, KnowsThatBareKingsAreADraw) {
    const auto all_won = [](const BOARD& /*board*/) { return std::optional(ScoreOfMateIn(5)); };
    EXPECT_EQ(Compare(takes_the_queen, 0, all_won), Agreement::proved);
    EXPECT_EQ(Compare(takes_the_queen, ScoreOfMatedIn(5), all_won), Agreement::impossible);
}

TEST(CompareWithMoves, FindsPossibleWhatUnknownMovesMayGive) {
    EXPECT_EQ(Compare(mates_in_one, ScoreOfMateIn(1), knows_nothing), Agreement::possible);
    EXPECT_EQ(Compare(takes_the_queen, ScoreOfMateIn(3), knows_nothing), Agreement::possible);
    EXPECT_EQ(Compare(takes_the_queen, ScoreOfMatedIn(3), knows_nothing), Agreement::impossible);
}

TEST(RandomPositions, AreLegalAndTheSameInEveryRun) {
    for (const Side mover : {first_side, second_side}) {
        RandomPositions positions(*MaterialNamed("krpkp"), mover);
        RandomPositions same(*MaterialNamed("krpkp"), mover);
        std::set<std::string> seen;
        BOARD board;
        BOARD again;
        for (int i = 0; i < 200; ++i) {
            positions.Next(board);
            same.Next(again);
            EXPECT_TRUE(board.IsValid());
            EXPECT_EQ(board.mover(), mover == first_side ? white : black);
            EXPECT_EQ(Material::KeyOf(board, white), MaterialNamed("krpkp")->key());
            EXPECT_EQ(FenOf(board), FenOf(again));
            seen.insert(FenOf(board));
        }
        EXPECT_EQ(seen.size(), 200U);
    }
}

}  // namespace NalimovTablebases
