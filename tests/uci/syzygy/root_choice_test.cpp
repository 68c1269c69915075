#include "uci/syzygy/root_choice.h"

#include <gtest/gtest.h>

#include "search/tables/score.h"

namespace {

using VorkaUci::BestTableMoves;
using enum VorkaUci::TableResult;
using VorkaUci::KnownScore;
using Moves = std::vector<Move>;

TEST(RootChoice, OfNothingIsNothing) { EXPECT_EQ(BestTableMoves({}), Moves{}); }

TEST(RootChoice, OfWinsTakesTheShortest) {
    EXPECT_EQ(BestTableMoves({{1, win, 9}, {2, win, 3}, {3, draw, 0}, {4, win, 3}, {5, loss, 1}}), (Moves{2, 4}));
}

TEST(RootChoice, OfLossesTakesTheLongest) {
    EXPECT_EQ(BestTableMoves({{1, loss, 9}, {2, loss, 30}, {3, loss, 4}}), Moves{2});
}

TEST(RootChoice, OfDrawsTakesAll) {
    EXPECT_EQ(BestTableMoves({{1, draw, 9}, {2, loss, 30}, {3, draw, 0}}), (Moves{1, 3}));
}

TEST(RootChoice, PrefersAWinThatIsADrawByTheFiftyMovesToADraw) {
    EXPECT_EQ(BestTableMoves({{1, draw, 0},
                              {2, win_drawn_by_fifty_moves, 120},
                              {3, win_drawn_by_fifty_moves, 130},
                              {4, loss_drawn_by_fifty_moves, 110}}),
              Moves{2});
    EXPECT_EQ(BestTableMoves({{1, loss_drawn_by_fifty_moves, 101}, {2, loss, 30}, {3, loss_drawn_by_fifty_moves, 120}}),
              Moves{3});
}

TEST(RootChoice, FindsWhatIsSaidOfAMove) {
    const std::vector<VorkaUci::TableMove> moves{{1, win, 9}, {2, draw, 0}};
    EXPECT_EQ(VorkaUci::FindTableMove(moves, 2), &moves[1]);
    EXPECT_EQ(VorkaUci::FindTableMove(moves, 3), nullptr);
}

TEST(KnownScore, OfAWinIsTheHigherTheNearerItIs) {
    EXPECT_GT(KnownScore({1, win, 3}, 50, 0), KnownScore({1, win, 9}, 900, 0));
    EXPECT_GE(KnownScore({1, win, 9999}, 50, 0), mate_score_limit);
    EXPECT_EQ(KnownScore({1, loss, 3}, 50, 0), -KnownScore({1, win, 3}, 50, 0));
}

TEST(KnownScore, LeavesAMateThatTheSearchHasFound) {
    EXPECT_EQ(KnownScore({1, win, 3}, infinity_bound - 5, 0), infinity_bound - 5);
    EXPECT_EQ(KnownScore({1, loss, 3}, 6 - infinity_bound, 0), 6 - infinity_bound);
    EXPECT_NE(KnownScore({1, win, 3}, infinity_bound - 56, 0), infinity_bound - 56);
}

TEST(KnownScore, OfADrawIsWhatADrawIsWorth) {
    for (const auto result : {draw, win_drawn_by_fifty_moves, loss_drawn_by_fifty_moves}) {
        EXPECT_EQ(KnownScore({1, result, 7}, 300, -20), -20);
    }
}

}  // namespace
