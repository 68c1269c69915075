#include "interfaces/protocols/help_screen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "interfaces/commands/keyword_table.h"
#include "support/log_capture.h"

namespace {

using namespace VorkaHelpScreen;

struct WrapRow {
    std::string_view text;
    std::size_t width;
    std::vector<std::string> lines;
};

TEST(WrapText, BreaksAtBlanksAndLineEnds) {
    const WrapRow rows[] = {
        {"", 10, {""}},
        {"one", 10, {"one"}},
        {"one two", 7, {"one two"}},
        {"one two", 6, {"one", "two"}},
        {"one two three", 8, {"one two", "three"}},
        {"one\ntwo", 80, {"one", "two"}},
        {"one two\nthree", 5, {"one", "two", "three"}},
        {"one\n\ntwo", 80, {"one", "", "two"}},
        {"incomprehensible", 5, {"incomprehensible"}},
        {"an incomprehensible word", 5, {"an", "incomprehensible", "word"}},
        {"a b c", 1, {"a", "b", "c"}},
        {"moves  at once", 80, {"moves  at once"}},
    };
    for (const WrapRow& row : rows)
        EXPECT_EQ(WrapText(row.text, row.width), row.lines) << row.text << ", " << row.width;
}

/// The list as without a terminal.
std::string Printed(const AbstractHelpScreenFormatter& help) {
    const LogCapture log;
    testing::internal::CaptureStdout();
    help.print();
    return testing::internal::GetCapturedStdout();
}

std::string PrintedList(const std::vector<HelpText>& list) { return Printed(SimpleHelpScreenFormatter(list, true)); }

TEST(HelpScreen, HasAHeaderAndDottedKeywords) {
    const std::string full = PrintedList(VorkaInterfaces::helpOfAllCommands());
    EXPECT_TRUE(full.starts_with("command          description\nanalyze......... Enters analyze mode\n"));
    EXPECT_NE(full.find("\ndisplay_settings Displays the current values"), std::string::npos);
    const std::string edit = Printed(EditHelp());
    EXPECT_TRUE(edit.starts_with("command    description\ncancel.... Leaves edit mode")) << "at least ten characters";
}

TEST(HelpScreen, WithoutATerminalItIs80ColumnsWide) {
    std::size_t longest = 0;
    std::string line;
    for (const char c : PrintedList(VorkaInterfaces::helpOfAllCommands())) {
        if (c != '\n') {
            line += c;
            continue;
        }
        longest = std::max(longest, line.size());
        line.clear();
    }
    EXPECT_LE(longest, 80U);
    EXPECT_GT(longest, 76U);
}

TEST(HelpScreen, StartUpListIsTheFullOneWithoutTheRest) {
    const std::string startup = PrintedList(VorkaInterfaces::helpOfStartupCommands());
    std::size_t at = 0;
    for (const HelpText& entry : VorkaInterfaces::helpOfAllCommands()) {
        const VorkaInterfaces::Keyword* const keyword = VorkaInterfaces::findKeyword(entry.keyword);
        const bool belongs = keyword != nullptr && keyword->start_up != VorkaInterfaces::StartUp::prompt_only;
        std::string line(1, '\n');
        line.append(entry.keyword);
        std::size_t found = startup.find(line, at);
        // Not a longer keyword that begins alike.
        while (found != std::string::npos && startup[found + line.size()] != '.' &&
               startup[found + line.size()] != ' ') {
            found = startup.find(line, found + 1);
        }
        EXPECT_EQ(found != std::string::npos, belongs) << entry.keyword;
        if (found != std::string::npos) at = found;
    }
}

/// Every keyword has its entry, but for those that no person needs.
TEST(HelpScreen, KnowsTheKeywords) {
    const std::set<std::string_view> without{"bk", "ics", "pause", "resume", "variant", "optimize_piece"};
    const std::vector<HelpText> list = VorkaInterfaces::helpOfAllCommands();
    for (const VorkaInterfaces::Keyword& keyword : VorkaInterfaces::keywordTable()) {
        std::string quoted(1, '"');
        quoted.append(keyword.word).append(1, '"');
        const bool listed = std::ranges::any_of(
            list, [&](const HelpText& entry) { return entry.keyword == keyword.word || entry.keyword == quoted; });
        EXPECT_EQ(listed, !without.contains(keyword.word)) << keyword.word;
    }
}

}  // namespace
