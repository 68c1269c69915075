// What takes the search longer than a unit test may: the three seconds of the first iteration.

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "chess/move_generator.h"
#include "search/driver/search_controller.h"
#include "support/board_builder.h"
#include "support/fake_search_host.h"

namespace {

/// Checks without end in quiescence, and so many queens that the first root move alone takes much longer than three
/// seconds.
constexpr std::string_view many_queens = "q2k2q1/2nqn2b/1n1P1n1b/2rnr2Q/1NQ1QN1Q/3Q3B/2RQR2B/Q2K2Q1 w - - 0 1";

constexpr SearchSettings endless_checks{.generate_checking_moves_min_distance = -64000,
                                        .search_every_normal_check_in_quiescence_min_distance = -64000};

UserBoard GameFrom(std::string_view fen) {
    UserBoard game;
    game.SetBoardFromFen(std::string(fen));
    return game;
}

TEST(LongFirstIteration, ServesInputAfterThreeSecondsAndStillHasAMove) {
    Engine engine{.settings = endless_checks};
    SearchController controller(engine);
    FakeSearchHost host;
    std::int64_t first_poll = 0;
    host.on_poll = [&] {
        first_poll = controller.info().Milliseconds();
        throw search_aborted_exception{false};
    };
    const UserBoard game = GameFrom(many_queens);
    controller.Run({.max_time_limit = 100, .variable_time_limit = 100}, game, host);
    EXPECT_EQ(controller.info().depth, 1);
    EXPECT_GE(first_poll, 3000);
    EXPECT_EQ(host.finished, false);
    EXPECT_TRUE(VerifyMove(controller.best_move(), game.board()));
    EXPECT_TRUE(host.thinking.empty());
}

TEST(LongFirstIteration, EndsAPuzzleAfterThreeSeconds) {
    Engine engine{.settings = endless_checks};
    SearchController controller(engine);
    FakeSearchHost host;
    controller.Run({.kind = SearchKind::puzzle}, GameFrom(many_queens), host);
    EXPECT_EQ(host.finished, false);
    EXPECT_EQ(host.polls, 0);
    EXPECT_GT(controller.info().Milliseconds(), 3000);
}

TEST(LongFirstIteration, EndsByTheHardLimitWhereTheClockIsLookedAtOften) {
    Engine engine{.settings = endless_checks};
    SearchController controller(engine);
    FakeSearchHost host;
    const UserBoard game = GameFrom(many_queens);
    controller.Run({.max_time_limit = 20, .variable_time_limit = 1, .poll_interval = 1}, game, host);
    EXPECT_EQ(controller.info().depth, 1);
    EXPECT_EQ(host.finished, false);
    EXPECT_TRUE(VerifyMove(controller.best_move(), game.board()));
    EXPECT_GE(controller.info().Milliseconds(), 20) << "which the variable limit does not";
    EXPECT_LT(controller.info().Milliseconds(), 3000);
}

}  // namespace
