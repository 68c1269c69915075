#include "selfplay/state_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <stdexcept>

#include "selfplay/game_text.h"
#include "support/temporary_directory.h"
#include "tools/selfplay/small_match.h"

namespace {

std::string WhyRefused(const std::string& path, const MatchPlan& plan) {
    try {
        const StateFile state(path, plan);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing was refused";
}

class StateOfMatch : public testing::Test {
  protected:
    void Keep() {
        StateFile state(path, plan);
        for (const auto& [number, game] : games) state.Add(game);
    }
    void Rewrite(const std::string& text) const { std::ofstream(path, std::ios::binary) << text; }

    TemporaryDirectory folder;
    std::string path = folder.File("state");
    MatchPlan plan = SmallMatch(4);
    std::map<std::uint64_t, PlayedGame> games = GamesOf(plan);
};

TEST_F(StateOfMatch, GivesTheGamesBack) {
    Keep();
    const StateFile state(path, plan);
    ASSERT_EQ(state.games().size(), games.size());
    for (const PlayedGame& game : state.games()) EXPECT_EQ(game, games.at(game.number));
}

TEST_F(StateOfMatch, CutOffAnywhereLosesOneGameAtMost) {
    Keep();
    const std::string whole = TextOf(path);
    const std::size_t head = HeadOf(plan).size();
    for (std::size_t length = 0; length <= whole.size(); length += length < head + 40 ? 1 : 97) {
        Rewrite(whole.substr(0, length));
        const auto complete = length < head ? 0
                                            : std::count(whole.begin() + static_cast<std::ptrdiff_t>(head),
                                                         whole.begin() + static_cast<std::ptrdiff_t>(length), '\n');
        {
            StateFile state(path, plan);
            ASSERT_EQ(state.games().size(), static_cast<std::size_t>(complete)) << length;
            if (!games.contains(static_cast<std::uint64_t>(complete))) continue;
            state.Add(games.at(static_cast<std::uint64_t>(complete)));
        }
        EXPECT_EQ(StateFile(path, plan).games().size(), static_cast<std::size_t>(complete) + 1) << length;
    }
}

TEST_F(StateOfMatch, AnotherMatchIsRefused) {
    Keep();
    MatchPlan other = plan;
    other.rules.nodes = 151;
    EXPECT_EQ(WhyRefused(path, other),
              path +
                  ": it belongs to another match: \"nodes 150 depth 0 time 0+0 hash 1\" there, "
                  "\"nodes 151 depth 0 time 0+0 hash 1\" here");
    other = plan;
    Shuffle(other.openings, 3);
    EXPECT_NE(WhyRefused(path, other), "nothing was refused");
    other = plan;
    other.games = 400;
    other.concurrency = 2;
    EXPECT_EQ(WhyRefused(path, other), "nothing was refused") << "a longer match goes on with the same games";
}

TEST_F(StateOfMatch, WhatIsNoStateFileIsRefusedWithoutAByteOfIt) {
    Rewrite(
        "\x7F"
        "ELF\x02\x01\x1B[2J\n");
    EXPECT_EQ(WhyRefused(path, plan), path + ": it holds no match");
    EXPECT_EQ(TextOf(path),
              "\x7F"
              "ELF\x02\x01\x1B[2J\n");
    Rewrite("selfplay 1\n\x1B[2J" + std::string(300, 'x') + "\n");
    EXPECT_THAT(WhyRefused(path, plan), testing::StartsWith(path + ": it belongs to another match: \"?[2J" +
                                                            std::string(196, 'x') + "..\" there, "));
}

TEST_F(StateOfMatch, WaitsForNobodyWhoWritesAPipe) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(WhyRefused(path, plan), path + ": no regular file");
    EXPECT_EQ(WhyRefused("/dev/null", plan), "/dev/null: no regular file");
}

TEST_F(StateOfMatch, WhatIsNoGameIsToldWithItsLine) {
    Keep();
    const std::string whole = TextOf(path);
    Rewrite(whole + "nonsense\n");
    EXPECT_EQ(WhyRefused(path, plan), path + ": line 13: no game: \"nonsense\"");
    Rewrite(whole + LineOf(games.at(2)) + '\n');
    EXPECT_EQ(WhyRefused(path, plan), path + ": line 13: this game is there already");
}

TEST_F(StateOfMatch, HasOneUserAtATime) {
    const StateFile state(path, plan);
    EXPECT_EQ(WhyRefused(path, plan), path + ": another match is using it");
}

TEST_F(StateOfMatch, PlaceThatCannotBeWrittenIsTold) {
    const std::string nowhere = folder.File("none/state");
    EXPECT_EQ(WhyRefused(nowhere, plan), nowhere + ": can't be opened");
}

}  // namespace
