#include "uci/go_command.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "chess/bits.h"
#include "frame/base/text_utilities.h"
#include "support/row_name.h"

namespace {

using VorkaUci::GoCommand;

GoCommand Read(std::string_view text) { return VorkaUci::ReadGo(VorkaUtils::tokenize(text)); }

struct NumberRow {
    std::string_view name;
    std::optional<std::int64_t> (*of)(const GoCommand& go);
};

class GoNumber : public testing::TestWithParam<NumberRow> {};

TEST_P(GoNumber, IsRead) {
    const std::string word(GetParam().name);
    EXPECT_EQ(GetParam().of(Read(word + " 1234")), 1234);
    EXPECT_EQ(GetParam().of(Read("infinite nonsense " + word + " 1234 ponder")), 1234);
    EXPECT_EQ(GetParam().of(Read("")), std::nullopt);
}

TEST_P(GoNumber, IsSkippedIfItIsNone) {
    const std::string word(GetParam().name);
    for (const char* text : {"", " x", " 12x", " -", " .5", " 1.x", " 1e3", " infinite"}) {
        EXPECT_EQ(GetParam().of(Read(word + text)), std::nullopt) << text;
    }
    EXPECT_TRUE(Read(word + " infinite").infinite);
}

TEST_P(GoNumber, MayHaveAFractionOrBeTooLarge) {
    const std::string word(GetParam().name);
    EXPECT_EQ(GetParam().of(Read(word + " 1000.5")), 1000);
    EXPECT_EQ(GetParam().of(Read(word + " -20.75")), -20);
    EXPECT_EQ(GetParam().of(Read(word + " 9223372036854775807")), INT64_MAX);
    EXPECT_EQ(GetParam().of(Read(word + " 9223372036854775808")), INT64_MAX);
    EXPECT_EQ(GetParam().of(Read(word + " 99999999999999999999999")), INT64_MAX);
    EXPECT_EQ(GetParam().of(Read(word + " -99999999999999999999999")), -INT64_MAX);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Go, GoNumber, testing::Values(
    NumberRow{"wtime", [](const GoCommand& go) { return go.time[white]; }},
    NumberRow{"btime", [](const GoCommand& go) { return go.time[black]; }},
    NumberRow{"winc", [](const GoCommand& go) { return go.increment[white]; }},
    NumberRow{"binc", [](const GoCommand& go) { return go.increment[black]; }},
    NumberRow{"movestogo", [](const GoCommand& go) { return go.moves_to_go; }},
    NumberRow{"depth", [](const GoCommand& go) { return go.depth; }},
    NumberRow{"nodes", [](const GoCommand& go) { return go.nodes; }},
    NumberRow{"mate", [](const GoCommand& go) { return go.mate; }},
    NumberRow{"movetime", [](const GoCommand& go) { return go.move_time; }}),
    RowName<NumberRow>);
// clang-format on

TEST(Go, MayHaveAFallenFlag) { EXPECT_EQ(Read("wtime -20 btime 5").time[white], -20); }

TEST(Go, FlagsStandAlone) {
    EXPECT_TRUE(Read("infinite").infinite);
    EXPECT_TRUE(Read("wtime 1 ponder btime 2").ponder);
    EXPECT_EQ(Read("wtime 1 ponder btime 2").time[black], 2);
    EXPECT_FALSE(Read("wtime 1").ponder);
}

TEST(Go, SearchMovesEndAtTheFirstOtherWord) {
    const GoCommand go = Read("searchmoves e2e4 d2d4 a7a8q depth 3");
    EXPECT_EQ(go.search_moves, (std::vector<std::string>{"e2e4", "d2d4", "a7a8q"}));
    EXPECT_EQ(go.depth, 3);
    EXPECT_TRUE(Read("searchmoves infinite").search_moves.empty());
}

TEST(Go, HasAnEndIfAnythingSaysSo) {
    EXPECT_FALSE(Read("").HasAnEnd());
    EXPECT_FALSE(Read("searchmoves e2e4 winc 5 movestogo 3").HasAnEnd());
    for (const char* text : {"wtime 1", "btime 1", "depth 1", "nodes 1", "mate 1", "movetime 1"}) {
        EXPECT_TRUE(Read(text).HasAnEnd()) << text;
    }
}

}  // namespace
