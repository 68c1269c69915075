#include "interfaces/commands/command.h"

#include <gtest/gtest.h>

#include "support/command_bench.h"

namespace {

using VorkaInterfaces::CheckedCommand;
using VorkaInterfaces::ConnectedGame;
using VorkaInterfaces::ErrorCommand;
using VorkaInterfaces::IgnorableErrorCommand;

TEST(ErrorCommand, PutsKindReasonAndLineTogether) {
    using enum ErrorCommand::Kind;
    EXPECT_EQ(ErrorCommand(illegal_move, "", "e2e5").text(), "Illegal move: e2e5");
    EXPECT_EQ(ErrorCommand(error, "too many parameters", "draw now").text(), "Error (too many parameters): draw now");
    EXPECT_EQ(ErrorCommand(illegal_move, "ambiguous move", "Nd2").text(), "Illegal move (ambiguous move): Nd2");
    EXPECT_EQ(ErrorCommand(error, "", "x").text(), "Error: x");
    EXPECT_EQ(ErrorCommand(plain, "reason", "x").text(), " (reason): x");
    EXPECT_EQ(ErrorCommand(plain, "", "").text(), ": ");
    EXPECT_STREQ(ErrorCommand(error, "a", "b").what(), "Error (a): b");
}

TEST(ErrorCommand, KeepsNulAndHighBytesOfTheLine) {
    const std::string line("\0\xff\xfe", 3);
    EXPECT_EQ(ErrorCommand(ErrorCommand::Kind::illegal_move, "", line).text(), "Illegal move: " + line);
}

TEST(ErrorCommand, IsTheBaseOfTheIgnorableOne) {
    try {
        throw IgnorableErrorCommand(ErrorCommand::Kind::error, "no such directory", "tb nalimov 8M nowhere");
    } catch (const ErrorCommand& error) {
        EXPECT_EQ(error.text(), "Error (no such directory): tb nalimov 8M nowhere");
    }
}

/// Counts its steps; `abort` makes its work end a running search, `ends_early` makes its check the last step.
class CountingCommand : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;
    int checks = 0;
    int works = 0;
    bool abort = false;
    bool ends_early = false;

  private:
    void check(ConnectedGame&) override {
        ++checks;
        finished = ends_early;
    }
    void work(ConnectedGame& game) override {
        ++works;
        if (abort) game.abortSearch(true);
    }
};

TEST(CheckedCommand, ChecksOnceAndWorksAgainAfterAnAbortedSearch) {
    CommandBench bench;
    CountingCommand command("line");
    command.abort = true;
    GameAccess::pretendSearch(bench.game, SearchKind::pondering);
    EXPECT_THROW(command.Execute(bench.game), search_aborted_exception);
    EXPECT_FALSE(command.finished);
    bench.game.onSearchFinished(true);
    command.Execute(bench.game);
    EXPECT_TRUE(command.finished);
    EXPECT_EQ(command.checks, 1);
    EXPECT_EQ(command.works, 2);
}

TEST(CheckedCommand, LeavesTheWorkOutIfTheCheckFinishedIt) {
    CommandBench bench;
    CountingCommand command("line");
    command.ends_early = true;
    command.Execute(bench.game);
    EXPECT_TRUE(command.finished);
    EXPECT_EQ(command.works, 0);
}

}  // namespace
