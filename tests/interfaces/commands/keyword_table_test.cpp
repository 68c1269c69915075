#include "interfaces/commands/keyword_table.h"

#include <cxxabi.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <typeinfo>
#include <vector>

#include "support/command_bench.h"
#include "support/log_capture.h"

namespace {

using namespace VorkaInterfaces;
using testing::ElementsAre;
using testing::IsEmpty;

/// Which command a line becomes, without its being run; the error's text if it becomes none.
struct Translated {
    std::unique_ptr<Command> command;
    std::string error;
};

Translated Translate(CommandBench& bench, const std::string& line) {
    try {
        return {translate(bench.game.protocol(), line), {}};
    } catch (const ErrorCommand& error) {
        return {nullptr, error.text()};
    }
}

/// The class of a command, without the namespace and "Command_".
std::string NameOf(const Command& command) {
    const std::unique_ptr<char, decltype(&std::free)> text(
        abi::__cxa_demangle(typeid(command).name(), nullptr, nullptr, nullptr), &std::free);
    constexpr std::string_view mark = "Command_";
    const std::string name = text.get();
    return name.substr(name.rfind(mark) + mark.size());
}

constexpr std::string_view too_many = "too many parameters";
constexpr std::string_view wrong_number = "wrong number of arguments";
constexpr std::string_view missing = "missing parameters";
constexpr std::string_view not_supported = "command is not supported";

/// One keyword: the numbers of words that it takes (written out up to 8), the answer to any other number, and its
/// class. `filler` is an argument that passes.
struct KeywordCase {
    std::string_view word;
    std::set<std::size_t> counts;
    std::string_view error;
    std::string_view command;  ///< the class, without its Command_
    std::string_view filler = "1";
    std::string_view command_with_arguments = {};  ///< where the word alone is another command

    [[nodiscard]] std::string_view CommandOf(std::size_t n) const {
        return n > 1 && !command_with_arguments.empty() ? command_with_arguments : command;
    }
};

const std::set<std::size_t> every_count{1, 2, 3, 4, 5, 6, 7, 8};
const std::set<std::size_t> from_two{2, 3, 4, 5, 6, 7, 8};
const std::set<std::size_t> one_or_from_four{1, 4, 5, 6, 7, 8};

// clang-format off
const std::vector<KeywordCase> keyword_cases{
    {".",                {1},              too_many,      "SendSearchStatus"},
    {"protover",         {2},              wrong_number,  "Protover2", "2"},
    {"bk",               {},               not_supported, ""},
    {"ics",              {},               not_supported, ""},
    {"pause",            {},               not_supported, ""},
    {"resume",           {},               not_supported, ""},
    {"variant",          {},               not_supported, ""},
    {"random",           every_count,      "",            "DoNothing"},
    {"accepted",         every_count,      "",            "DoNothing"},
    {"rejected",         every_count,      "",            "DoNothing"},
    {"?",                {1},              too_many,      "MoveNow"},
    {"analyze",          {1},              too_many,      "Analyze"},
    {"black",            {1},              too_many,      "Black"},
    {"computer",         {1},              too_many,      "Computer"},
    {"console",          {1},              too_many,      "Console"},
    {"contempt",         {2},              wrong_number,  "Contempt"},
    {"display",          {1},              too_many,      "Display"},
    {"display_settings", every_count,      "",            "DisplaySettingVariables"},
    {"draw",             {1},              too_many,      "Draw"},
    {"easy",             {1},              too_many,      "Easy"},
    {"edit",             {1},              too_many,      "Edit"},
    {"eval",             {1},              too_many,      "Eval"},
    {"exit",             {1},              too_many,      "Exit"},
    {"force",            {1},              too_many,      "Force"},
    {"fritz",            {1},              too_many,      "Fritz"},
    {"generate",         every_count,      "",            "Generate"},
    {"go",               {1},              too_many,      "Go"},
    {"hard",             {1},              too_many,      "Hard"},
    {"hash",             {1, 3},           wrong_number,  "DisplayHashtableStatus", "1", "ResizeHashtable"},
    {"help",             {1},              too_many,      "Help"},
    {"hint",             {1},              too_many,      "Hint"},
    {"id",               every_count,      "",            "Id"},
    {"level",            {4},              wrong_number,  "Level"},
    {"modify_settings",  from_two,         missing,       "ModifySettingVariables"},
    {"name",             from_two,         missing,       "Name"},
    {"new",              {1},              too_many,      "New"},
    {"next",             {1, 2},           too_many,      "Next"},
    {"nopost",           {1},              too_many,      "Nopost"},
    {"optimize_piece",   every_count,      "",            "OptimizePiece"},
    {"otim",             {2},              wrong_number,  "Otim"},
    {"personality",      {1, 2},           wrong_number,  "DisplayPersonality", "1", "SetPersonality"},
    {"ping",             {2},              wrong_number,  "Ping"},
    {"probe",            from_two,         missing,       "Probe"},
    {"playother",        {1},              too_many,      "Playother"},
    {"post",             {1},              too_many,      "Post"},
    {"read_fen",         {2},              wrong_number,  "ReadFEN"},
    {"read_pgn",         {2},              wrong_number,  "ReadPGN"},
    {"read_settings",    {2},              wrong_number,  "ReadSearchSettings"},
    {"quit",             {1},              too_many,      "Quit"},
    {"rating",           {3},              wrong_number,  "Rating"},
    {"remove",           {1},              too_many,      "Remove"},
    {"result",           from_two,         missing,       "Result"},
    {"sd",               {2},              wrong_number,  "sd"},
    {"setboard",         from_two,         missing,       "Setboard"},
    {"st",               {2},              wrong_number,  "st"},
    {"tb",               one_or_from_four, missing,       "DisplayTablebasesStatus", "1", "InitTablebases"},
    {"tc",               every_count,      "",            "Tc"},
    {"time",             {2},              wrong_number,  "Time"},
    {"undo",             {1, 2},           too_many,      "Undo"},
    {"verify",           every_count,      "",            "Verify"},
    {"version",          {1},              too_many,      "Version"},
    {"white",            {1},              too_many,      "White"},
    {"write_fen",        {2},              wrong_number,  "WriteFEN"},
    {"write_pgn",        {2},              wrong_number,  "WritePGN"},
    {"write_settings",   {2},              wrong_number,  "WriteSearchSettings"},
    {"xboard",           {1},              too_many,      "Xboard"},
    {"usermove",         {2},              wrong_number,  "Move"},
};
// clang-format on

TEST(KeywordTable, HoldsEachKeywordOnce) {
    std::multiset<std::string_view> expected;
    for (const KeywordCase& row : keyword_cases) expected.insert(row.word);
    std::multiset<std::string_view> actual;
    for (const Keyword& row : keywordTable()) actual.insert(row.word);
    EXPECT_EQ(actual, expected);
    for (const KeywordCase& row : keyword_cases) {
        const Keyword* const found = findKeyword(row.word);
        ASSERT_NE(found, nullptr) << row.word;
        EXPECT_EQ(found->word, row.word);
    }
    for (const std::string_view word : {"", "foo", "e2e4", "HELP", "help "}) EXPECT_EQ(findKeyword(word), nullptr);
}

TEST(KeywordTable, GivesEachPlaceOfTheHelpOnce) {
    std::set<int> places;
    for (const Keyword& row : keywordTable()) {
        EXPECT_EQ(row.help.place == 0, row.help.text.empty()) << row.word;
        if (row.help.place == 0) continue;
        EXPECT_TRUE(places.insert(row.help.place).second) << row.word;
    }
}

/// The words that may stand on the command line, and what comes with them.
TEST(KeywordTable, KnowsTheCommandsOfTheCommandLine) {
    // clang-format off
    const std::map<std::string_view, StartUp> expected{
        {"xboard", at_start}, {"protover", at_start}, {"easy", at_start}, {"eval", at_start}, {"id", at_start},
        {"level", at_start}, {"probe", at_start}, {"quit", at_start}, {"sd", at_start}, {"st", at_start},
        {"tc", at_start},
        {"contempt", at_start_in_force_mode}, {"hash", at_start_in_force_mode}, {"tb", at_start_in_force_mode},
        {"modify_settings", at_start_in_force_mode}, {"personality", at_start_in_force_mode},
        {"read_fen", at_start_in_force_mode}, {"read_pgn", at_start_in_force_mode},
        {"read_settings", at_start_in_force_mode}, {"setboard", at_start_in_force_mode},
        {"generate", at_start_in_force_mode}, {"verify", at_start_in_force_mode},
        {"help", at_start_then_exit}, {"version", at_start_then_exit},
    };
    // clang-format on
    std::map<std::string_view, StartUp> actual;
    for (const Keyword& row : keywordTable()) {
        if (row.start_up != prompt_only) actual.emplace(row.word, row.start_up);
    }
    EXPECT_EQ(actual, expected);
}

/// A keyword and n - 1 arguments that pass.
std::string LineOf(const KeywordCase& row, std::size_t n) {
    std::string line(row.word);
    for (std::size_t i = 1; i < n; ++i) line.append(" ").append(row.filler);
    return line;
}

class EachKeyword : public testing::TestWithParam<KeywordCase> {};

TEST_P(EachKeyword, TakesItsNumbersOfWordsAndNoOther) {
    const KeywordCase& row = GetParam();
    CommandBench bench;
    for (std::size_t n = 1; n <= 8; ++n) {
        const std::string line = LineOf(row, n);
        const Translated translated = Translate(bench, line);
        if (row.counts.contains(n)) {
            if (row.word == "probe") {
                // It reads its position while it is translated, and the filler is none.
                EXPECT_EQ(translated.error, "Error (input inconsistent with FEN standard): " + line);
                continue;
            }
            ASSERT_EQ(translated.error, "") << line;
            const Command& command = *translated.command;
            EXPECT_EQ(NameOf(command), row.CommandOf(n)) << line;
            EXPECT_EQ(command.line, line);
            EXPECT_FALSE(command.finished);
        } else {
            EXPECT_EQ(translated.error, "Error (" + std::string(row.error) + "): " + line);
        }
    }
}

TEST_P(EachKeyword, CountsEmptyAndQuotedWords) {
    const KeywordCase& row = GetParam();
    if (row.error.empty()) return;
    CommandBench bench;
    // 40 words are more than the table counts one by one.
    std::string line(row.word);
    for (int i = 1; i < 40; ++i) line += " \"\"";
    const bool fits = row.counts.contains(8);
    if (fits && row.word == "probe") return;  // no position in these words
    EXPECT_EQ(Translate(bench, line).error, fits ? "" : "Error (" + std::string(row.error) + "): " + line);
}

TEST_P(EachKeyword, RefusesABrokenQuote) {
    CommandBench bench;
    for (const char quote : {'"', '\''}) {
        const std::string line = std::string(GetParam().word) + " 1" + quote;
        EXPECT_EQ(Translate(bench, line).error, "Error (could not tokenize the input string): " + line);
    }
}

TEST_P(EachKeyword, IsCaseSensitive) {
    std::string line(GetParam().word);
    for (char& c : line) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    if (line == GetParam().word) return;
    CommandBench bench;
    const Translated translated = Translate(bench, line);
    ASSERT_TRUE(translated.command);
    const Command& command = *translated.command;
    EXPECT_EQ(NameOf(command), "Move");
    EXPECT_EQ(bench.Send(line).error, "Illegal move: " + line);
}

TEST_P(EachKeyword, IsRecognisedBetweenBlanksAndInQuotes) {
    const KeywordCase& row = GetParam();
    if (row.counts.empty() || row.word == "probe") return;
    CommandBench bench;
    const std::size_t n = *row.counts.begin();
    for (const std::string& line : {"\t  " + LineOf(row, n) + " \r",
                                    "'" + std::string(row.word) + "'" + LineOf(row, n).substr(row.word.size())}) {
        const Translated translated = Translate(bench, line);
        ASSERT_TRUE(translated.command) << line << translated.error;
        const Command& command = *translated.command;
        EXPECT_EQ(NameOf(command), row.CommandOf(n)) << line;
        EXPECT_EQ(command.line, line);
    }
}

INSTANTIATE_TEST_SUITE_P(KeywordTable, EachKeyword, testing::ValuesIn(keyword_cases), [](const auto& tested) {
    const std::string word(tested.param.word);
    return word == "." ? "dot" : word == "?" ? "question_mark" : word;
});

TEST(WordCount, CountsUpToThirtyAndTakesAllBeyondAsOne) {
    for (std::size_t n = 0; n <= 30; ++n) {
        const WordCount count{1U << n, {}};
        for (std::size_t words = 0; words <= 40; ++words) EXPECT_EQ(count.Fits(words), words == n);
    }
    const WordCount many{1U << 31, {}};
    for (std::size_t words = 0; words <= 40; ++words) EXPECT_EQ(many.Fits(words), words > 30);
    EXPECT_TRUE(many.Fits(1U << 20U));
}

// --- Arguments of the wrong type ---

/// Lines with X where an integer belongs.
constexpr std::array lines_with_an_integer{
    "protover X", "contempt X", "level X 5 0", "next X", "otim X", "rating X 1",
    "rating 1 X", "sd X",       "st X",        "time X", "undo X",
};

constexpr std::array no_integers{"x",           "1.5",  "12x", "--5",  "+5",      "-",   "2147483648",
                                 "-2147483649", "0x10", "1e3", "\"\"", "\"1 2\"", "\xff"};

TEST(KeywordArguments, MustBeIntegers) {
    CommandBench bench;
    for (const std::string pattern : lines_with_an_integer) {
        for (const std::string text : no_integers) {
            std::string line = pattern;
            line.replace(line.find('X'), 1, text);
            EXPECT_EQ(Translate(bench, line).error, "Error (integer argument expected): " + line);
        }
        std::string line = pattern;
        line.replace(line.find('X'), 1, "007");
        EXPECT_EQ(Translate(bench, line).error, "") << line;
    }
}

TEST(KeywordArguments, TimesOfALevelMustBeTimes) {
    CommandBench bench;
    for (const std::string line :
         {"level 40 x 0", "level 40 5 x", "level 40 5:60 0", "level 40 :30 0", "level 40 5: 0", "level 40 5:3:0 0",
          "level 40 \"\" 0", "level 40 5 1:0", "level 40 5 .", "level 40 99999999 0", "level 40 5 99999999"}) {
        EXPECT_EQ(Translate(bench, line).error, "Error (integer argument expected): " + line);
    }
    for (const std::string line :
         {"level 40 5 0", "level 40 0:30 0", "level 0 5:00 12", "level 0 1 0.1", "level 0 0:30.5 0"}) {
        EXPECT_EQ(Translate(bench, line).error, "") << line;
    }
}

TEST(KeywordArguments, PersonalityMustBeKnown) {
    CommandBench bench;
    for (const std::string line : {"personality foo", "personality 1x", "personality \"\""}) {
        EXPECT_EQ(Translate(bench, line).error, "Error (could not parse personality): " + line);
    }
    for (const std::string line : {"personality", "personality Rux", "personality -3"}) {
        EXPECT_EQ(Translate(bench, line).error, "") << line;
    }
}

TEST(KeywordArguments, AllIsANumberOfMoves) {
    CommandBench bench;
    EXPECT_EQ(Translate(bench, "undo all").error, "");
    EXPECT_EQ(Translate(bench, "next all").error, "");
    EXPECT_EQ(Translate(bench, "undo All").error, "Error (integer argument expected): undo All");
}

// --- Words that are no keywords ---

TEST(OtherWords, AreMovesIfTheyStandAlone) {
    CommandBench bench;
    for (const std::string line : {"foo", "e2e4", "O-O", "..", "??", "\"\"", "quit!"}) {
        const Translated translated = Translate(bench, line);
        ASSERT_TRUE(translated.command) << line;
        const Command& command = *translated.command;
        EXPECT_EQ(NameOf(command), "Move") << line;
    }
    EXPECT_EQ(bench.Send("foo").error, "Illegal move: foo");
    EXPECT_EQ(bench.Send("\"\"").error, "Illegal move: \"\"");
}

TEST(OtherWords, AreUnrecognizedWithOthersAfterThem) {
    CommandBench bench;
    for (const std::string line : {"foo bar", "e2e4 e7e5", "e2e4 \"\"", "\"\" \"\"", "undo1 2 3"}) {
        EXPECT_EQ(Translate(bench, line).error, "Error (unrecognized command): " + line);
    }
}

// --- Rows that do something while the line is translated ---

TEST(ProtocolVersion, SelectsTheClassAndRemarksOnOddOnes) {
    const LogCapture log;
    CommandBench bench;
    const auto name_of = [&](const std::string& line) { return NameOf(*translate(bench.game.protocol(), line)); };
    const std::string before =
        "Unexpected xboard protocol version. Executing command \"xboard\" instead"
        " (not sent to xboard)\n";
    const std::string beyond =
        "Future XBoard protocol version not support, falling back to version 2"
        " (not sent to xboard)\n";
    testing::internal::CaptureStdout();
    EXPECT_EQ(name_of("protover 2"), "Protover2");
    EXPECT_EQ(log.text(), "");
    EXPECT_EQ(name_of("protover 1"), "Xboard");
    EXPECT_EQ(log.text(), before);
    EXPECT_EQ(name_of("protover -7"), "Xboard");
    EXPECT_EQ(log.text(), before + before);
    EXPECT_EQ(name_of("protover 3"), "Protover2");
    EXPECT_EQ(log.text(), before + before + beyond);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(IgnoredWords, AreToldToTheProtocolWhileTheyAreTranslated) {
    CommandBench bench;
    for (const std::string line : {"random", "accepted usermove", "rejected a b c"}) {
        bench.calls.clear();
        const Translated translated = Translate(bench, line);
        EXPECT_THAT(bench.calls, ElementsAre("sendCommandIgnored(command is not supported)")) << line;
        translated.command->Execute(bench.game);
        EXPECT_TRUE(translated.command->finished);
        EXPECT_EQ(bench.calls.size(), 1U);
    }
}

}  // namespace
