#include "search/settings/tournament_settings.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <fstream>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

#include "frame/base/vorka_exception.h"
#include "search/settings/tournament_file.h"
#include "support/temporary_directory.h"

namespace {

using tournament_settings::Find;
using tournament_settings::Read;
using tournament_settings::ReadFile;
using tournament_settings::Row;
using tournament_settings::Table;
using tournament_settings::Take;

constexpr std::size_t member_count = sizeof(TournamentSettings) / sizeof(std::int32_t);
static_assert(member_count * sizeof(std::int32_t) == sizeof(TournamentSettings));

std::string NumberText(std::int64_t number) { return std::to_string(number); }

/// Every setting at the bound that is not its default, or at the upper one.
TournamentSettings AllChanged() {
    TournamentSettings settings;
    for (const Row& row : Table()) {
        std::int32_t& value = settings.*row.place;
        value = value == row.most ? row.least : row.most;
    }
    return settings;
}

// --- The table ---

TEST(TournamentSettings, HaveNamesOfTheirOwnAndAreFoundByThem) {
    std::set<std::string_view> names;
    for (const Row& row : Table()) {
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
        EXPECT_EQ(Find(row.name), &row);
        EXPECT_EQ(row.name.find_first_not_of("abcdefghijklmnopqrstuvwxyz_"), std::string_view::npos) << row.name;
    }
    for (const std::string_view name : {"", "null", "null_moves", "Null_Move", " null_move", "null_move "}) {
        EXPECT_EQ(Find(name), nullptr) << name;
    }
}

TEST(TournamentSettings, HaveTheirDefaultsWithinTheBounds) {
    const TournamentSettings defaults;
    for (const Row& row : Table()) {
        EXPECT_LT(row.least, row.most) << row.name;
        EXPECT_GE(defaults.*row.place, row.least) << row.name;
        EXPECT_LE(defaults.*row.place, row.most) << row.name;
    }
}

/// As many rows as members, and each of them writes a member that no other row writes.
TEST(TournamentSettings, HaveARowForEachMember) {
    ASSERT_EQ(Table().size(), member_count);
    TournamentSettings settings;
    for (const Row& row : Table()) settings.*row.place = 0;
    std::int32_t number = 0;
    for (const Row& row : Table()) settings.*row.place = ++number;
    std::set<std::int32_t> numbers;
    for (const std::int32_t value : std::bit_cast<std::array<std::int32_t, member_count>>(settings)) {
        EXPECT_GE(value, 1) << "no row writes it";
        EXPECT_LE(value, number);
        EXPECT_TRUE(numbers.insert(value).second);
    }
}

TEST(TournamentSettings, TakeTheirBoundsAndNothingBeyond) {
    TournamentSettings settings;
    for (const Row& row : Table()) {
        for (const std::int32_t good : {row.least, row.most}) {
            EXPECT_TRUE(Take(row, NumberText(good), settings)) << row.name;
            EXPECT_EQ(settings.*row.place, good) << row.name;
        }
        const TournamentSettings before = settings;
        const std::string beyond[] = {NumberText(std::int64_t{row.least} - 1),
                                      NumberText(std::int64_t{row.most} + 1),
                                      "2147483648",
                                      "-2147483649",
                                      "99999999999999999999",
                                      "",
                                      " ",
                                      "-",
                                      "x",
                                      "1x",
                                      "1.0",
                                      "1 1",
                                      " 1",
                                      "1 ",
                                      "true"};
        for (const std::string& bad : beyond) {
            EXPECT_FALSE(Take(row, bad, settings)) << row.name << " '" << bad << '\'';
            EXPECT_EQ(settings, before) << row.name << " '" << bad << '\'';
        }
    }
}

// --- The file ---

TournamentSettings Parsed(const std::string& text) {
    std::istringstream input(text);
    return Read(input);
}

std::string Written(const TournamentSettings& settings) {
    std::ostringstream output;
    tournament_settings::Write(settings, output);
    return output.str();
}

/// What reading fails with; empty if it does not.
std::string FailureOf(const std::string& text) {
    try {
        static_cast<void>(Parsed(text));
    } catch (const TextException& error) {
        return error.text();
    }
    return {};
}

std::string FailureOfFile(const std::string& path) {
    try {
        static_cast<void>(ReadFile(path));
    } catch (const TextException& error) {
        return error.text();
    }
    return {};
}

TEST(TournamentFile, MayBeginWithAByteOrderMark) {
    EXPECT_EQ(Parsed("\xEF\xBB\xBFnull_move = 0\n"), TournamentSettings{.null_move = 0});
    EXPECT_NE(FailureOf("null_move = 0\n\xEF\xBB\xBFnull_move = 0\n"), "") << "nowhere else";
}

TEST(TournamentFile, IsReadAsItWasWritten) {
    const TournamentSettings defaults;
    const TournamentSettings changed = AllChanged();
    ASSERT_NE(changed, defaults);
    EXPECT_EQ(Parsed(Written(defaults)), defaults);
    EXPECT_EQ(Parsed(Written(changed)), changed);
    const TemporaryDirectory directory;
    std::ofstream(directory.File("settings")) << Written(changed);
    EXPECT_EQ(ReadFile(directory.File("settings")), changed);
}

TEST(TournamentFile, HasOneLineForEachSettingInTheOrderOfTheTable) {
    std::istringstream lines(Written(TournamentSettings()));
    for (const Row& row : Table()) {
        std::string line;
        ASSERT_TRUE(std::getline(lines, line));
        EXPECT_EQ(line, std::string(row.name) + " = " + NumberText(TournamentSettings().*row.place));
    }
    std::string rest;
    EXPECT_FALSE(std::getline(lines, rest)) << rest;
}

TEST(TournamentFile, LeavesWhatItDoesNotNameAtTheDefaults) {
    EXPECT_EQ(Parsed(""), TournamentSettings());
    TournamentSettings one;
    one.futility_base = 7;
    EXPECT_EQ(Parsed("futility_base = 7"), one);
}

TEST(TournamentFile, MayHaveCommentsBlankLinesAndOtherLineEnds) {
    TournamentSettings two;
    two.futility_base = 7;
    two.null_move = 0;
    EXPECT_EQ(Parsed("# null_move = 1\n\n   \t\n  # 5\nfutility_base=7\n\tnull_move  =\t0  \n#"), two);
    EXPECT_EQ(Parsed("futility_base = 7\r\n\r\n# \r\nnull_move = 0\r\n"), two);
    EXPECT_EQ(Parsed("futility_base = 7\nnull_move = 0"), two) << "no end of the last line";
}

TEST(TournamentFile, TakesTheLastOfTwoLinesWithOneName) {
    EXPECT_EQ(Parsed("futility_base = 7\nfutility_base = 8\n").futility_base, 8);
}

struct BadFileRow {
    std::string text;
    std::string failure;
};

TEST(TournamentFile, SaysInWhichLineItIsWrong) {
    const Row& row = *Find("futility_base");
    const std::string limits =
        "futility_base takes a number from " + NumberText(row.least) + " to " + NumberText(row.most);
    const BadFileRow rows[] = {
        {"futility_base", "line 1: this is not NAME = VALUE: futility_base"},
        {"\n# comment\n  futility_base 7  \n", "line 3: this is not NAME = VALUE: futility_base 7"},
        {"futility_bas = 7", "line 1: there is no setting futility_bas"},
        {"Futility_Base = 7", "line 1: there is no setting Futility_Base"},
        {"futility_base = 7\nfutility_base_ = 7", "line 2: there is no setting futility_base_"},
        {"= 7", "line 1: there is no setting "},
        {"futility base = 7", "line 1: there is no setting futility base"},
        {"futility_base =", "line 1: " + limits},
        {"\n\nfutility_base = " + NumberText(row.least - 1), "line 3: " + limits},
        {"futility_base = " + NumberText(row.most + 1), "line 1: " + limits},
        {"futility_base = 7 # a comment takes a line of its own", "line 1: " + limits},
        {"futility_base == 7", "line 1: " + limits},
        {"futility_base = 7; null_move = 0", "line 1: " + limits},
    };
    for (const BadFileRow& bad : rows) EXPECT_EQ(FailureOf(bad.text), bad.failure) << bad.text;
}

TEST(TournamentFile, HugeLinesAndBinariesAreRefused) {
    const std::string huge(5'000'000, 'x');
    EXPECT_EQ(FailureOf(huge), "line 1: this is not NAME = VALUE: " + huge);
    EXPECT_NE(FailureOf("futility_base = " + std::string(1'000'000, '9')), "");
    EXPECT_NE(FailureOf(std::string("\0\xff\xfe\n", 4)), "");
}

TEST(TournamentFile, MustBeAFile) {
    const TemporaryDirectory directory;
    for (const std::string& path :
         {directory.path().string(), directory.File("none"), std::string("/dev/zero"), std::string()}) {
        EXPECT_EQ(FailureOfFile(path), "could not open " + path);
    }
}

/// Lines made of pieces of good ones and of any bytes. What is read is within the bounds, and reads the same again.
TEST(TournamentFile, AnyBytesAreReadOrRefused) {
    constexpr unsigned seed = 15;
    std::mt19937 random(seed);
    int read = 0;
    int refused = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        const std::size_t pieces = random() % 12;
        for (std::size_t i = 0; i < pieces; ++i) {
            const Row& row = Table()[random() % Table().size()];
            switch (random() % 8) {
                case 0:
                case 1:
                    text.append(row.name).append(" = ").append(NumberText(row.least)).append("\n");
                    break;
                case 2:
                case 3:
                    text.append("\n").append(row.name).append("=").append(NumberText(row.most)).append("\r\n");
                    break;
                case 4:
                    text += "# \n";
                    break;
                case 5:
                    text += '\n';
                    break;
                case 6:
                    text += row.name;
                    break;
                default:
                    text += static_cast<char>(random() & 0xFFU);
            }
        }
        try {
            const TournamentSettings settings = Parsed(text);
            ++read;
            for (const Row& row : Table()) {
                ASSERT_GE(settings.*row.place, row.least) << "seed " << seed << ", round " << round;
                ASSERT_LE(settings.*row.place, row.most) << "seed " << seed << ", round " << round;
            }
            ASSERT_EQ(Parsed(Written(settings)), settings) << "seed " << seed << ", round " << round;
        } catch (const TextException& error) {
            ++refused;
            ASSERT_EQ(error.text().substr(0, 5), "line ") << "seed " << seed << ", round " << round;
        }
    }
    EXPECT_GT(read, 1000);
    EXPECT_GT(refused, 1000);
}

}  // namespace
