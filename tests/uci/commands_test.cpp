#include "uci/commands.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

using VorkaUci::CommandRow;
using VorkaUci::CommandRows;
using VorkaUci::FindCommand;

TEST(Commands, AreThoseOfTheProtocol) {
    std::set<std::string_view> words;
    for (const CommandRow& row : CommandRows()) words.insert(row.word);
    EXPECT_EQ(words, (std::set<std::string_view>{"uci", "debug", "isready", "setoption", "ucinewgame", "position", "go",
                                                 "stop", "ponderhit", "quit"}));
}

TEST(Commands, ServedInsideASearchAreThoseThatLeaveItAlone) {
    for (const CommandRow& row : CommandRows()) {
        const bool waits =
            row.word == "setoption" || row.word == "ucinewgame" || row.word == "position" || row.word == "go";
        EXPECT_EQ(row.beside_search, !waits) << row.word;
    }
}

TEST(Commands, AreFoundWithTheRestOfTheLine) {
    const auto found = FindCommand("  setoption  name  Log File value a  b \r");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->row.word, "setoption");
    EXPECT_EQ(found->line.text, "  name  Log File value a  b \r");
    EXPECT_EQ(found->line.words, (std::vector<std::string>{"name", "Log", "File", "value", "a", "b"}));
}

TEST(Commands, UnknownWordsBeforeThemAreSkipped) {
    const auto found = FindCommand("joho debug on");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->row.word, "debug");
    EXPECT_EQ(found->line.words, std::vector<std::string>{"on"});
}

TEST(Commands, LinesWithoutOneAreSkipped) {
    for (const char* text : {"", " \t\r", "nonsense", "UCI", "gogo", "stop.", "xboard protover 2"}) {
        EXPECT_FALSE(FindCommand(text)) << text;
    }
}

}  // namespace
