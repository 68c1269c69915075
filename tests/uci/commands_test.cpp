#include "uci/commands.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using VorkaUci::CommandLine;
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
    CommandLine line;
    const CommandRow* const row = FindCommand("  setoption  name  Log File value a  b \r", line);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->word, "setoption");
    EXPECT_EQ(line.text, "  name  Log File value a  b \r");
    EXPECT_EQ(line.words, (std::vector<std::string>{"name", "Log", "File", "value", "a", "b"}));
}

TEST(Commands, UnknownWordsBeforeThemAreSkipped) {
    CommandLine line;
    const CommandRow* const row = FindCommand("joho debug on", line);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->word, "debug");
    EXPECT_EQ(line.words, std::vector<std::string>{"on"});
}

TEST(Commands, LinesWithoutOneAreSkipped) {
    CommandLine line;
    for (const char* text : {"", " \t\r", "nonsense", "UCI", "gogo", "stop.", "xboard protover 2"}) {
        EXPECT_EQ(FindCommand(text, line), nullptr) << text;
    }
}

}  // namespace
