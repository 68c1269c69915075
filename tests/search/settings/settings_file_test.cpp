#include "search/settings/settings_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace {

using OptimizeInterface::DataType;
using OptimizeInterface::Settings;
using search_settings::SettingRow;
using search_settings::Table;

std::string Written(const Settings& settings) {
    std::ostringstream text;
    settings.Write(text);
    return text.str();
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

std::string Joined(const std::vector<std::string>& lines, std::string_view line_end = "\n") {
    std::string text;
    for (const std::string& line : lines) text.append(line).append(line_end);
    return text;
}

/// What the exception says; empty if there is none.
template <class Exception>
std::string FailureOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const Exception& error) {
        return error.text();
    }
    return {};
}

std::string FailureOfReading(const std::string& text) {
    return FailureOf<Settings::InvalidData>([&] {
        Settings settings = Settings::Descriptions();
        std::istringstream stream(text);
        settings.Read(stream);
    });
}

std::string ValueOf(const SettingRow& row, std::int32_t number) {
    if (row.is_boolean()) return number != 0 ? "true" : "false";
    std::string value = std::to_string(number);
    for (std::size_t i = 1; i < row.size; ++i) value += ' ' + std::to_string(number);
    return value;
}

class SettingsFile : public testing::Test {
  protected:
    SearchSettings current_;
    TemporaryDirectory directory_;
};

// --- One variable ---

TEST_F(SettingsFile, VariablesDescribeThemselves) {
    const Settings settings = Settings::Descriptions();
    EXPECT_EQ(settings.Find("root_distance_multiplier").Description(), "integer : [1] {1..6400}");
    EXPECT_EQ(settings.Find("enable_ettc").Description(), "boolean : [1] {false..true}");
    EXPECT_EQ(settings.Find("capture_move_sorting_bonus").Description(), "integer : [6] {-511..511}");
}

TEST_F(SettingsFile, DescriptionsHaveNoValues) {
    const Settings settings = Settings::Descriptions();
    for (const SettingRow& row : Table()) {
        const DataType& variable = settings.Find(row.name);
        EXPECT_EQ(FailureOf<DataType::DataTypeException>([&] { (void)variable.Text(); }), "not initialized");
        EXPECT_EQ(FailureOf<DataType::DataTypeException>([&] { (void)variable.Get(0); }), "not initialized");
    }
}

TEST_F(SettingsFile, ElementsHaveIndicesAndBounds) {
    OptimizeInterface::Integer variable(*std::find_if(Table().begin(), Table().end(), [](const SettingRow& row) {
        return row.name == "capture_move_sorting_bonus";
    }));
    variable.TakeDefault();
    variable.Set(5, -511);
    EXPECT_EQ(variable.Text(), "0 4 5 5 6 -511");
    EXPECT_EQ(FailureOf<DataType::DataTypeException>([&] { variable.Set(5, 512); }), "value out of bounds");
    EXPECT_EQ(FailureOf<DataType::DataTypeException>([&] { variable.Set(6, 0); }), "index out of bounds");
    EXPECT_EQ(FailureOf<DataType::DataTypeException>([&] { (void)variable.Get(6); }), "index out of bounds");
    EXPECT_EQ(variable.Get(5), -511);
}

TEST_F(SettingsFile, BothBoundsPassAndOneBeyondFails) {
    Settings settings = Settings::Of(current_);
    for (const SettingRow& row : Table()) {
        settings.Set(row.name, ValueOf(row, row.lower_bound));
        EXPECT_EQ(settings.Find(row.name).Get(row.size - 1), row.lower_bound) << row.name;
        settings.Set(row.name, ValueOf(row, row.upper_bound));
        EXPECT_EQ(settings.Find(row.name).Get(row.size - 1), row.upper_bound) << row.name;
        if (row.is_boolean()) continue;
        for (const std::int32_t beyond : {row.lower_bound - 1, row.upper_bound + 1}) {
            EXPECT_EQ(FailureOf<Settings::InvalidData>([&] { settings.Set(row.name, ValueOf(row, beyond)); }),
                      "could not parse new value: value out of bounds")
                << row.name;
            EXPECT_EQ(settings.Find(row.name).Get(0), row.upper_bound) << "kept";
        }
    }
}

struct ValueRow {
    std::string_view name;
    std::string_view value;
    std::string_view failure;
};

TEST_F(SettingsFile, ValuesThatAreNoneAreRefused) {
    constexpr ValueRow rows[] = {
        {"root_distance_multiplier", "", "not initialized"},
        {"root_distance_multiplier", "x", "could not parse integer: x"},
        {"root_distance_multiplier", "64x", "could not parse integer: 64x"},
        {"root_distance_multiplier", "true", "could not parse integer: true"},
        {"root_distance_multiplier", "99999999999", "could not parse integer: 99999999999"},
        {"root_distance_multiplier", "64 64", "invalid size"},
        {"root_distance_multiplier", " 64", "could not parse integer: "},
        {"root_distance_multiplier", "64 ", "invalid size"},
        {"root_distance_multiplier", "0", "value out of bounds"},
        {"enable_ettc", "", "not initialized"},
        {"enable_ettc", "1", "could not parse boolean: 1"},
        {"enable_ettc", "TRUE", "could not parse boolean: TRUE"},
        {"enable_ettc", "true ", "could not parse boolean: true "},
        {"capture_move_sorting_bonus", "1 2 3 4 5", "invalid size"},
        {"capture_move_sorting_bonus", "1 2 3 4 5 6 7", "invalid size"},
        {"capture_move_sorting_bonus", "1 2 3 4 5 x", "could not parse integer: x"},
        {"capture_move_sorting_bonus", "1  2 3 4 5 6", "could not parse integer: "},
        {"capture_move_sorting_bonus", "1 2 3 4 5 512", "value out of bounds"},
    };
    for (const ValueRow& row : rows) {
        Settings settings = Settings::Of(current_);
        const std::string before = Written(settings);
        EXPECT_EQ(FailureOf<Settings::InvalidData>([&] { settings.Set(row.name, row.value); }),
                  "could not parse new value: " + std::string(row.failure))
            << row.name << '=' << row.value;
        EXPECT_EQ(Written(settings), before);
    }
}

TEST_F(SettingsFile, UnknownNamesAreRefused) {
    Settings settings = Settings::Of(current_);
    for (const std::string name : {"", "foo", "enable_ETTC", "enable_ettc "}) {
        EXPECT_EQ(FailureOf<Settings::UnknownVariable>([&] { settings.Set(name, "true"); }),
                  "unknown variable: " + name);
        EXPECT_EQ(FailureOf<Settings::UnknownVariable>([&] { (void)settings.Find(name); }),
                  "unknown variable: " + name);
    }
}

TEST_F(SettingsFile, ChangesReachTheSearchWhenTheyAreApplied) {
    Settings settings = Settings::Of(current_);
    settings.Set("futility_pruning_margin", "250");
    settings.Set("enable_ettc", "true");
    settings.Set("capture_move_sorting_bonus", "1 2 3 4 5 6");
    EXPECT_EQ(current_.futility_pruning_margin, 300) << "a private copy so far";
    settings.ApplyTo(current_);
    EXPECT_EQ(current_.futility_pruning_margin, 250);
    EXPECT_TRUE(current_.enable_ettc);
    EXPECT_EQ(current_.capture_move_sorting_bonus, (std::array<std::int32_t, 6>{1, 2, 3, 4, 5, 6}));
}

// --- Files ---

TEST_F(SettingsFile, HoldsOneVariableALineInOrder) {
    const std::vector<std::string> lines = LinesOf(Written(Settings::Of(current_)));
    ASSERT_EQ(lines.size(), Table().size());
    EXPECT_EQ(lines[0], "root_distance_multiplier=64");
    EXPECT_EQ(lines[1], "enable_search_extensions=true");
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].substr(0, lines[i].find('=')), Table()[i].name);
    }
    EXPECT_NE(std::find(lines.begin(), lines.end(), "capture_move_sorting_bonus=0 4 5 5 6 10"), lines.end());
}

TEST_F(SettingsFile, IsWrittenAndReadBack) {
    // Every variable gets another value.
    for (const SettingRow& row : Table()) {
        for (std::size_t i = 0; i < row.size; ++i)
            row.Set(current_, i, row.is_boolean() ? 1 - row.Get(current_, i) : row.upper_bound);
    }
    const std::string changed = Written(Settings::Of(current_));
    const std::string path = directory_.File("settings");
    Settings::Of(current_).WriteFile(path);
    EXPECT_EQ(TextOf(path), changed);
    current_ = {};
    Settings read = Settings::Of(current_);
    read.ReadFile(path);
    EXPECT_EQ(Written(read), changed);
    read.ApplyTo(current_);
    EXPECT_EQ(Written(Settings::Of(current_)), changed);
}

TEST_F(SettingsFile, MissingLinesTakeTheirDefaultsAndTheLogIsTold) {
    current_.randomize_quiescence_move_ordering = 77;
    const std::vector<std::string> lines = LinesOf(Written(Settings::Of(current_)));
    const auto place = static_cast<std::size_t>(
        std::ranges::find(Table(), "randomize_quiescence_move_ordering", &SettingRow::name) - Table().begin());
    for (std::size_t kept = 0; kept <= lines.size(); ++kept) {
        const LogCapture log;
        testing::internal::CaptureStdout();
        std::istringstream stream(Joined({lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(kept)}));
        Settings settings = Settings::Of(current_);
        settings.Read(stream);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        const std::string text = log.text();
        ASSERT_EQ(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')), Table().size() - kept);
        if (kept <= place) {
            EXPECT_EQ(settings.Find("randomize_quiescence_move_ordering").Get(0), 8) << "the default, not what it was";
        }
        if (kept == Table().size() - 1) {
            const std::string last = LinesOf(Written(Settings::Of(SearchSettings{}))).back();
            const std::size_t sign = last.find('=');
            EXPECT_EQ(text, "Warning: Initialized missing variable <" + last.substr(0, sign) +
                                "> with default value ('" + last.substr(sign + 1) + "')\n");
        }
    }
}

TEST_F(SettingsFile, LinesInAnotherOrderAreRefused) {
    std::vector<std::string> lines = LinesOf(Written(Settings::Of(current_)));
    std::swap(lines[0], lines[1]);
    EXPECT_EQ(FailureOfReading(Joined(lines)),
              "Parse error in line #1: Expected variable: root_distance_multiplier;\n"
              "Received variable: enable_search_extensions");
    std::swap(lines[0], lines[1]);
    std::swap(lines[170], lines[171]);
    EXPECT_EQ(FailureOfReading(Joined(lines)).substr(0, 26), "Parse error in line #171: ");
}

TEST_F(SettingsFile, EveryLineCanBeTheOneThatFails) {
    const std::vector<std::string> lines = LinesOf(Written(Settings::Of(current_)));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string number = "Parse error in line #" + std::to_string(i + 1) + ": ";
        const auto with = [&](const std::string& line) {
            std::vector<std::string> changed = lines;
            changed[i] = line;
            return FailureOfReading(Joined(changed));
        };
        const std::string name(Table()[i].name);
        EXPECT_EQ(with(name), number + "seperator missing ('=')");
        EXPECT_EQ(with(""), number + "seperator missing ('=')");
        EXPECT_EQ(with(name + "="), number + "not initialized");
        EXPECT_EQ(with(name + "x=1"), number + "Expected variable: " + name + ";\nReceived variable: " + name + "x");
        EXPECT_EQ(with(" " + name + "=1"), number + "Expected variable: " + name + ";\nReceived variable:  " + name);
        EXPECT_EQ(with(name + "=?"),
                  number + (Table()[i].is_boolean() ? "could not parse boolean: ?" : "could not parse integer: ?"));
        if (!Table()[i].is_boolean()) {
            EXPECT_EQ(with(name + '=' + ValueOf(Table()[i], Table()[i].upper_bound + 1)),
                      number + "value out of bounds");
        }
    }
}

TEST_F(SettingsFile, LineEndsOfAnotherSystemAreRead) {
    const std::string text = Written(Settings::Of(current_));
    EXPECT_EQ(FailureOfReading(Joined(LinesOf(text), "\r\n")), "");
    EXPECT_EQ(FailureOfReading(text.substr(0, text.size() - 1)), "") << "no end of the last line";
    EXPECT_EQ(FailureOfReading(text + "anything\n"), "") << "what stands after the last variable is not read";
}

TEST_F(SettingsFile, HugeLinesAndBinariesAreRefused) {
    EXPECT_EQ(FailureOfReading(std::string(5000000, 'x')), "Parse error in line #1: seperator missing ('=')");
    EXPECT_EQ(FailureOfReading("root_distance_multiplier=" + std::string(1000000, '9')).substr(0, 50),
              "Parse error in line #1: could not parse integer: 9");
    EXPECT_EQ(FailureOfReading(std::string("\0\xff\xfe\n", 4)), "Parse error in line #1: seperator missing ('=')");
}

TEST_F(SettingsFile, FilesThatCanNotBeOpenedAreRefused) {
    for (const std::string& path : {directory_.path().string(), directory_.File("none"), std::string("/dev/zero")}) {
        EXPECT_EQ(FailureOf<Settings::IO_Exception>([&] { Settings::Of(current_).ReadFile(path); }),
                  "could not open file: " + path);
    }
    for (const std::string& path : {directory_.path().string(), directory_.File("none/x"), std::string("/dev/full")}) {
        EXPECT_EQ(FailureOf<Settings::IO_Exception>([&] { Settings::Of(current_).WriteFile(path); }),
                  "could not write file: " + path);
    }
}

TEST_F(SettingsFile, LargeFileIsNoSettingsFile) {
    const std::string path = directory_.File("large");
    std::ofstream(path) << "x";
    std::filesystem::resize_file(path, 100U << 20U);
    EXPECT_EQ(FailureOf<Settings::InvalidData>([&] { Settings::Of(current_).ReadFile(path); }),
              "Parse error in line #1: seperator missing ('=')");
}

}  // namespace
