#include "player_setup/player_setup.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>
#include <string>

#include "search/settings/settings_file.h"
#include "support/temporary_directory.h"

namespace {

std::string WhyRefused(const std::string& text) {
    try {
        (void)ReadPlayer(text);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing was refused";
}

TEST(PlayerSetup, NothingIsTheEngineAsItIs) {
    const PlayerSetup player = ReadPlayer("");
    EXPECT_EQ(player.settings, SearchSettings());
    EXPECT_EQ(player.name, "defaults");
}

TEST(PlayerSetup, WordsChangeIt) {
    const PlayerSetup player = ReadPlayer(
        " min_ply_for_null_move=1 enable_ettc=true  capture_move_sorting_bonus=0,1,2,3,4,5 personality=Rux "
        "contempt=-20 "
        "nodes=500 name=A");
    EXPECT_EQ(player.settings.min_ply_for_null_move, 1);
    EXPECT_TRUE(player.settings.enable_ettc);
    EXPECT_EQ(player.settings.capture_move_sorting_bonus, (std::array{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(player.personality, 1000);
    EXPECT_EQ(player.contempt, -20);
    EXPECT_EQ(player.nodes, 500U);
    EXPECT_EQ(player.name, "A");
}

TEST(PlayerSetup, DescriptionReadsBack) {
    PlayerSetup player = ReadPlayer(
        "enable_search_extensions=false capture_move_sorting_bonus=0,1,2,3,4,5 contempt=7 personality=-4 nodes=9");
    EXPECT_EQ(player.name, DescriptionOf(player));
    EXPECT_EQ(ReadPlayer(DescriptionOf(player)), player);
}

TEST(PlayerSetup, WordsChooseTheTournamentSearchAndChangeIt) {
    EXPECT_FALSE(ReadPlayer("").uses_tournament_search);
    const PlayerSetup player = ReadPlayer("search=tournament null_move=0 late_move_reduction_base=-5");
    EXPECT_TRUE(player.uses_tournament_search);
    EXPECT_EQ(player.tournament, (TournamentSettings{.null_move = 0, .late_move_reduction_base = -5}));
    EXPECT_EQ(player.settings, SearchSettings());
    EXPECT_FALSE(ReadPlayer("search=tournament search=classic").uses_tournament_search) << "the last word holds";
    EXPECT_EQ(player.name, DescriptionOf(player));
    EXPECT_EQ(ReadPlayer(DescriptionOf(player)), player);
}

TEST(PlayerSetup, EachNumberOfTheTournamentSearchTakesItsBounds) {
    for (const tournament_settings::Row& row : tournament_settings::Table()) {
        const std::string word = "search=tournament " + std::string(row.name) + '=';
        const std::string limits = std::string(row.name) + " takes a number from " + std::to_string(row.least) +
                                   " to " + std::to_string(row.most);
        for (const std::int32_t good : {row.least, row.most}) {
            const PlayerSetup player = ReadPlayer(word + std::to_string(good));
            EXPECT_EQ(player.tournament.*row.place, good);
            EXPECT_EQ(ReadPlayer(DescriptionOf(player)).tournament, player.tournament);
        }
        for (const std::string& bad : {std::to_string(row.least - 1), std::to_string(row.most + 1), std::string("x")}) {
            EXPECT_EQ(WhyRefused(word + bad), limits + ", not \"" + bad + '"');
        }
    }
}

TEST(PlayerSetup, FileComesFirstAndLaterWordsChangeIt) {
    const TemporaryDirectory folder;
    OptimizeInterface::Settings::Of({.min_ply_for_null_move = 2, .futility_pruning_margin = 99})
        .WriteFile(folder.File("tuned.txt"));
    const PlayerSetup player = ReadPlayer("settings=" + folder.File("tuned.txt") + " min_ply_for_null_move=3");
    EXPECT_EQ(player.settings.futility_pruning_margin, 99);
    EXPECT_EQ(player.settings.min_ply_for_null_move, 3);
}

TEST(PlayerSetup, QuotationMarksKeepBlanks) {
    const TemporaryDirectory folder;
    OptimizeInterface::Settings::Of({.futility_pruning_margin = 99}).WriteFile(folder.File("my own.txt"));
    const std::string path = folder.File("my own.txt");
    for (const std::string& word : {"settings=\"" + path + '"', "'settings=" + path + '\''}) {
        const PlayerSetup player = ReadPlayer(word + " name='A B'");
        EXPECT_EQ(player.settings.futility_pruning_margin, 99);
        EXPECT_EQ(player.name, "A B");
        EXPECT_EQ(ReadSearch(word).settings.futility_pruning_margin, 99);
    }
    EXPECT_EQ(WhyRefused("settings=\"a b"), "a quotation mark without its partner: settings=\"a b");
    EXPECT_EQ(WhyRefused("\"no such=1\""), "no such setting: \"no such\"");
}

TEST(PlayerSetup, TournamentFileIsReadAndLaterWordsChangeIt) {
    const TemporaryDirectory folder;
    std::ofstream(folder.File("t.txt")) << "futility = 0\nnull_move_margin = 150\n";
    const PlayerSetup player =
        ReadPlayer("search=tournament tournament=" + folder.File("t.txt") + " null_move_margin=120");
    EXPECT_EQ(player.tournament, (TournamentSettings{.null_move_margin = 120, .futility = 0}));
}

TEST(PlayerSetup, BadWordsAreTold) {
    EXPECT_EQ(WhyRefused("fast"), "not key=value: \"fast\"");
    EXPECT_EQ(WhyRefused("speed=1"), "no such setting: \"speed\"");
    EXPECT_EQ(WhyRefused("futility_pruning_margin=x"),
              "futility_pruning_margin (integer : [1] {0..32767}) can't be \"x\"");
    EXPECT_EQ(WhyRefused("futility_pruning_margin=-1"),
              "futility_pruning_margin (integer : [1] {0..32767}) can't be \"-1\"");
    EXPECT_EQ(WhyRefused("contempt=5x"), "contempt takes a number from -1000 to 1000, not \"5x\"");
    EXPECT_EQ(WhyRefused("personality=Random"), "no personality: \"Random\"");
    EXPECT_EQ(WhyRefused("personality=nobody"), "no personality: \"nobody\"");
    EXPECT_EQ(WhyRefused("nodes=0"), "nodes takes a number from 1 to 1000000000000, not \"0\"");
    EXPECT_EQ(WhyRefused("name="), "an empty name");
    EXPECT_EQ(WhyRefused("search=Tournament"), "search is classic or tournament");
    EXPECT_EQ(WhyRefused("search="), "search is classic or tournament");
    EXPECT_TRUE(WhyRefused("settings=/nowhere/x.txt").starts_with("/nowhere/x.txt: "));
    EXPECT_EQ(WhyRefused("search=tournament tournament=/nowhere/x.txt"),
              "/nowhere/x.txt: could not open /nowhere/x.txt");
    EXPECT_EQ(WhyRefused("futility=0"), "a setting of the tournament search without search=tournament changes nothing");
}

}  // namespace
