#include "tune/parameters.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "tools/tune/tuned_parameters.h"

namespace {

TEST(Parameters, LineForEach) {
    const auto parameters = ParametersIn(
        "# name start min max c_end r_end\n\n"
        "min_null_move_search_reduction  128 64 512 16.5 0.002\r\n"
        "  # indented\n"
        "capture_move_sorting_bonus[2]  5 -10 60 2 0.1\n");
    ASSERT_EQ(parameters.size(), 2U);
    EXPECT_EQ(parameters[0].name, "min_null_move_search_reduction");
    EXPECT_EQ(parameters[0].start, 128);
    EXPECT_EQ(parameters[0].least, 64);
    EXPECT_EQ(parameters[0].most, 512);
    EXPECT_EQ(parameters[0].last_span, 16.5);
    EXPECT_EQ(parameters[0].last_rate, 0.002);
    EXPECT_EQ(parameters[1].index, 2U);
}

TEST(Parameters, AreRoundedForPlayWithinTheirBounds) {
    const auto parameters = ParametersIn(
        "futility_pruning_margin 300 100.5 600 40 0.02\n"
        "capture_move_sorting_bonus[2] 5 0 60 4 0.02\n");
    EXPECT_EQ(PlayedValue(parameters[0], 300.4), 300);
    EXPECT_EQ(PlayedValue(parameters[0], 300.6), 301);
    EXPECT_EQ(PlayedValue(parameters[0], 100.5), 101) << "100 would be out of bounds";
    EXPECT_EQ(PlayedValue(parameters[0], 1000), 600);
    EXPECT_EQ(PlayedValue(parameters[0], -1000), 101);
    PlayerSetup base;
    base.settings.enable_ettc = true;
    SearchSettings wanted = base.settings;
    wanted.futility_pruning_margin = 250;
    wanted.capture_move_sorting_bonus[2] = 33;
    EXPECT_EQ(PlayerWith(base, parameters, {249.9, 33.2}).settings, wanted) << "nothing else changes";
}

TEST(Parameters, MayBeThoseOfTheTournamentSearch) {
    const auto parameters = ParametersIn("null_move_reduction 250 128 512 20 0.02\n");
    TournamentSettings wanted;
    wanted.null_move_reduction = 301;
    const PlayerSetup player = PlayerWith({}, parameters, {300.6});
    EXPECT_EQ(player.tournament, wanted);
    EXPECT_EQ(player.settings, SearchSettings());
}

struct BadText {
    const char* text;
    const char* complaint;
};

TEST(Parameters, BadLinesAreToldWithTheirNumber) {
    constexpr BadText bad[] = {
        {"", "no parameters"},
        {"# nothing\n", "no parameters"},
        {"speed 1 0 2 1 0.1\n", "line 1: no such setting: \"speed\""},
        {"\nfutility_pruning_margin 300\n", "line 2: not NAME START MIN MAX C_END R_END: 2 words"},
        {"futility_pruning_margin 300 0 600 40 0.02 # good\n", "line 1: not NAME START MIN MAX C_END R_END: 8 words"},
        {"enable_ettc 0 0 1 1 0.1\n", "line 1: enable_ettc is true or false, and can't be tuned"},
        {"futility_pruning_margin x 0 600 40 0.02\n", "line 1: start takes a number from 0 to 600, not \"x\""},
        {"futility_pruning_margin 700 0 600 40 0.02\n", "line 1: start takes a number from 0 to 600, not \"700\""},
        {"futility_pruning_margin 300 -1 600 40 0.02\n", "line 1: min takes a number from 0 to 32767, not \"-1\""},
        {"futility_pruning_margin 300 0 40000 40 0.02\n", "line 1: max takes a number from 0 to 32767, not \"40000\""},
        {"futility_pruning_margin 300 300 300 40 0.02\n", "line 1: min is not below max"},
        {"futility_pruning_margin 300 0 600 0.4 0.02\n", "line 1: c_end takes a number from 0.5 to 600, not \"0.4\""},
        {"futility_pruning_margin 300 0 600 40 2\n", "line 1: r_end takes a number from 0 to 1, not \"2\""},
        {"futility_pruning_margin[0] 300 0 600 40 0.02\n", "line 1: futility_pruning_margin has no elements"},
        {"capture_move_sorting_bonus 5 0 60 4 0.02\n",
         "line 1: capture_move_sorting_bonus needs the number of an element in brackets, from 0 to 5"},
        {"capture_move_sorting_bonus[6] 5 0 60 4 0.02\n",
         "line 1: capture_move_sorting_bonus needs the number of an element in brackets, from 0 to 5"},
        {"futility_pruning_margin 300 0 600 40 0.02\nfutility_pruning_margin 300 0 600 40 0.02\n",
         "line 2: futility_pruning_margin is there already"},
        {"futility_pruning_margin 300 0 600 40 0.02\nnull_move_reduction 250 128 512 20 0.02\n",
         "line 2: null_move_reduction and futility_pruning_margin are of different searches"},
        {"null_move_reduction 250 0 512 20 0.02\n", "line 1: min takes a number from 64 to 1024, not \"0\""},
    };
    for (const BadText& row : bad) {
        try {
            (void)ParametersIn(row.text);
            ADD_FAILURE() << row.text;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), row.complaint);
        }
    }
}

}  // namespace
