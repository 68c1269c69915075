#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "search/settings/settings_file.h"
#include "search/tables/hash.h"
#include "support/command_bench.h"
#include "support/log_capture.h"

namespace {

/// What a line says on the screen.
std::string ScreenOf(CommandBench& bench, const std::string& line) {
    testing::internal::CaptureStdout();
    const CommandOutcome outcome = bench.Send(line);
    std::string screen = testing::internal::GetCapturedStdout();
    return outcome.error.empty() ? screen : screen + outcome.error;
}

class MaintenanceCommands : public testing::Test {
  protected:
    MaintenanceCommands() { bench_.Prepare({"force"}); }
    /// The error that the line gets; empty if it gets none.
    std::string ErrorOf(const std::string& line) { return bench_.Send(line).error; }

    TemporaryDirectory directory_;
    LogCapture log_;
    CommandBench bench_;
    HashTables& tables_ = bench_.engine.tables;
    SearchSettings& settings_ = bench_.engine.settings;
};

struct RefusedRow {
    std::string_view line, reason;
    bool also_out_of_force_mode;  ///< the reason comes before the question of the mode
};

TEST_F(MaintenanceCommands, AreRefusedForTheFirstReasonInOrder) {
    const RefusedRow rows[] = {
        {"hash foo 1M", "unknown hashtable type", true},
        {"hash trans 0x", "could not parse new size", true},
        {"hash trans -1", "could not parse new size", true},
        {"hash foo 0x", "unknown hashtable type", true},
        {"hash trans 99999999G", "argument out of bounds", false},
        {"personality foo", "could not parse personality", true},
        {"personality 1.5", "could not parse personality", true},
        {"contempt x", "integer argument expected", true},
        {"modify_settings a", "seperator missing (';')", false},
        {"modify_settings =1", "seperator missing (';')", false},
        {"modify_settings enable_ettc=", "seperator missing (';')", false},
        {"modify_settings enable_ettc=true;", "seperator missing (';')", false},
        {"modify_settings enable_ettc=true;;enable_ettc=true", "seperator missing (';')", false},
        {"modify_settings foo=1", "unknown variable: foo", false},
        {"modify_settings enable_ettc=1", "could not parse new value: could not parse boolean: 1", false},
        {"modify_settings root_distance_multiplier=6401", "could not parse new value: value out of bounds", false},
        {"read_settings /nowhere/x", "could not open file: /nowhere/x", false},
        {"display_settings foo", "unknown variable: foo", true},
        {"display_settings enable_ettc;", "unknown variable: ", true},
        {"write_settings /nowhere/x", "could not write file: /nowhere/x", true},
    };
    for (const RefusedRow& row : rows) {
        const std::string line(row.line);
        EXPECT_EQ(ErrorOf(line), "Error (" + std::string(row.reason) + "): " + line);
        CommandBench playing;
        EXPECT_EQ(
            playing.Send(line).error,
            "Error (" + std::string(row.also_out_of_force_mode ? row.reason : "must be in force mode") + "): " + line);
    }
}

TEST_F(MaintenanceCommands, NeedForceMode) {
    for (const std::string line : {"hash trans 1M", "personality 3", "contempt 5", "modify_settings enable_ettc=true",
                                   "read_settings x", "tb nalimov 1M x"}) {
        for (const std::string mode : {"new", "analyze"}) {
            CommandBench bench;
            bench.Prepare({mode});
            EXPECT_EQ(bench.Send(line).error, "Error (must be in force mode): " + line) << mode;
        }
    }
    EXPECT_FALSE(settings_.enable_ettc);
}

// --- hash ---

TEST_F(MaintenanceCommands, HashResizesTheNamedTable) {
    EXPECT_EQ(ErrorOf("hash trans 1M"), "");
    EXPECT_EQ(ErrorOf("hash pawn 2000K"), "");
    EXPECT_EQ(ErrorOf("hash eval 65536"), "");
    EXPECT_EQ(tables_.transposition.totalSlots(), 32768U);
    EXPECT_EQ(tables_.pawn.totalSlots(), 16384U);
    EXPECT_EQ(tables_.evaluation.totalSlots(), 4096U);
    EXPECT_NE(ErrorOf("hash trans 99999999G"), "");
    EXPECT_EQ(tables_.transposition.totalSlots(), 32768U) << "the old table stays";
}

TEST_F(MaintenanceCommands, HashShowsSizesAndFilling) {
    bench_.Prepare({"hash trans 32M", "hash pawn 4M", "hash eval 4M"});
    tables_.evaluation.Store({.key = 77, .score = 5});
    EXPECT_EQ(ScreenOf(bench_, "hash"),
              "transposition table: 24.0 megabyte\n#total slots:    1048576\n#free  slots:    1048576\n"
              "fill percentage: 0.0%\n\n"
              "pawn hashtable: 3.50 megabyte\n#total slots:    32768\n#free  slots:    32768\n"
              "fill percentage: 0.0%\n\n"
              "evaluation hashtable: 4.0 megabyte\n#total slots:    262144\n#free  slots:    262143\n"
              "fill percentage: 0.0%\n\n");
    bench_.Prepare({"hash eval 32"});
    for (std::uint64_t key : {2U, 5U}) tables_.evaluation.Store({.key = key, .score = 5});
    EXPECT_THAT(ScreenOf(bench_, "hash"), testing::EndsWith("evaluation hashtable: 32 byte\n#total slots:    2\n"
                                                            "#free  slots:    0\nfill percentage: 100.0%\n\n"));
}

// --- personality, contempt ---

TEST_F(MaintenanceCommands, PersonalityIsClampedAndShown) {
    EXPECT_EQ(ErrorOf("personality 1001"), "");
    EXPECT_EQ(bench_.game.protocol().personality, 1000);
    EXPECT_EQ(ErrorOf("personality -99999"), "");
    EXPECT_EQ(bench_.game.protocol().personality, -1000);
    EXPECT_EQ(ErrorOf("personality Rux"), "");
    EXPECT_EQ(ScreenOf(bench_, "personality"), "Personality: Rux (1000)\n");
    EXPECT_EQ(ErrorOf("personality 1"), "");
    EXPECT_EQ(ScreenOf(bench_, "personality"), "Personality: 1 (1)\n");
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(ErrorOf("personality Random"), "");
        EXPECT_LE(std::abs(bench_.game.protocol().personality), 20);
    }
}

TEST_F(MaintenanceCommands, NewPersonalityOrContemptClearsTheTablesThatDependOnIt) {
    const auto fill = [this] {
        tables_.transposition.Store(TranspositionEntry::Make(5, INVALID, false, 0, NodeFlags::none));
        tables_.evaluation.Store({.key = 77, .score = 5});
        tables_.pawn.Store({.pawn_key = 9});
    };
    for (const std::string line : {"personality 5", "contempt 50"}) {
        fill();
        EXPECT_EQ(ErrorOf(line), "");
        EXPECT_EQ(tables_.transposition.freeSlots(), tables_.transposition.totalSlots()) << line;
        EXPECT_EQ(tables_.evaluation.freeSlots(), tables_.evaluation.totalSlots()) << line;
        EXPECT_LT(tables_.pawn.freeSlots(), tables_.pawn.totalSlots()) << "pawns do not depend on it";
        fill();
        EXPECT_EQ(ErrorOf(line), "");
        EXPECT_LT(tables_.transposition.freeSlots(), tables_.transposition.totalSlots()) << "nothing new";
    }
}

TEST_F(MaintenanceCommands, ContemptIsClampedAndToldToTheAdvisor) {
    GameAccess::advisor(bench_.game).hopelessRun = 3;
    EXPECT_EQ(ErrorOf("contempt 99999"), "");
    EXPECT_EQ(bench_.game.search().contempt(), 32767);
    EXPECT_EQ(bench_.game.advisor().drawValue, 32767);
    EXPECT_EQ(bench_.game.advisor().hopelessRun, 0) << "it starts anew";
    EXPECT_EQ(ErrorOf("contempt -99999"), "");
    EXPECT_EQ(bench_.game.search().contempt(), -32767);
}

// --- Settings ---

TEST_F(MaintenanceCommands, SettingsAreShownByName) {
    EXPECT_EQ(ScreenOf(bench_, "display_settings enable_ettc"), "enable_ettc=false\n");
    EXPECT_EQ(ScreenOf(bench_, "display_settings capture_move_sorting_bonus;root_distance_multiplier"),
              "capture_move_sorting_bonus=0 4 5 5 6 10\nroot_distance_multiplier=64\n");
    const std::string all = ScreenOf(bench_, "display_settings all");
    EXPECT_EQ(ScreenOf(bench_, "display_settings"), all);
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), std::ssize(search_settings::Table()));
    EXPECT_TRUE(all.starts_with("root_distance_multiplier=64\nenable_search_extensions=true\n"));
}

TEST_F(MaintenanceCommands, SettingsAreChangedAllOrNone) {
    EXPECT_EQ(ErrorOf("modify_settings enable_ettc=true;futility_pruning_margin=250"), "");
    EXPECT_TRUE(settings_.enable_ettc);
    EXPECT_EQ(settings_.futility_pruning_margin, 250);
    EXPECT_EQ(ErrorOf("modify_settings capture_move_sorting_bonus=1 2 3 4 5 6"), "");
    EXPECT_EQ(settings_.capture_move_sorting_bonus[5], 6);
    for (const std::string bad : {"foo=1", "enable_ettc=2", "x"}) {
        EXPECT_NE(ErrorOf("modify_settings futility_pruning_margin=100;" + bad), "");
        EXPECT_EQ(settings_.futility_pruning_margin, 250) << bad;
    }
}

TEST_F(MaintenanceCommands, SettingsAreWrittenAndReadBack) {
    const std::string path = directory_.File("settings");
    bench_.Prepare({"modify_settings futility_pruning_margin=123"});
    EXPECT_EQ(ErrorOf("write_settings " + path), "");
    bench_.Prepare({"modify_settings futility_pruning_margin=456"});
    EXPECT_EQ(ErrorOf("read_settings " + path), "");
    EXPECT_EQ(settings_.futility_pruning_margin, 123);

    std::string text = TextOf(path);
    text.replace(text.find("enable_ettc=false"), 17, "enable_ettc=maybe");
    std::ofstream(path) << text;
    bench_.Prepare({"modify_settings futility_pruning_margin=456"});
    EXPECT_EQ(ErrorOf("read_settings " + path),
              "Error (Parse error in line #79: could not parse boolean: maybe): read_settings " + path);
    EXPECT_EQ(settings_.futility_pruning_margin, 456) << "a failing file changes nothing";
}

}  // namespace
