#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "search/settings/tournament_settings.h"
#include "uci/actions.h"

/// The options of the program: one row each, with its name, its kind, where its value stands and what it changes.
namespace VorkaUci {

/// The values, with their defaults.
struct OptionValues {
    int hash = 32;  ///< MiB, of all tables together
    bool ponder = false;
    int lines = 1;
    int contempt = 0;  ///< centipawns that a draw is worse than an even position
    std::string personality = "Default";
    int style = 0;  ///< counts instead of the personality, unless it is 0
    std::string search = "Tournament";
    std::string settings_file;
    std::string tournament_file;
    TournamentSettings tournament;
    bool own_book = false;
    std::string book_file;
    bool limit_strength = false;
    int elo = 1500;
    bool analyse_mode = false;
    std::string opponent;
    int move_overhead = 10;  ///< milliseconds
    std::string bitbase_path;
    std::string syzygy_path;
    std::string log_file;
};

// --- Kinds ---

struct CheckOption {
    bool OptionValues::*value;
};
struct SpinOption {
    int OptionValues::*value;
    int least;
    int most;
};
struct StringOption {
    std::string OptionValues::*value;
};
struct ComboOption {
    std::string OptionValues::*value;
    std::vector<std::string_view> (*choices)();
};
struct ButtonOption {};
/// A number of the tournament search.
struct TournamentOption {
    const tournament_settings::Row* row;
};

struct OptionRow {
    std::string_view name;
    std::variant<CheckOption, SpinOption, StringOption, ComboOption, ButtonOption, TournamentOption> kind;
    void (OptionActions::*took)() = nullptr;  ///< what a new value changes; called after it was taken
};

[[nodiscard]] std::span<const OptionRow> OptionRows();
/// The row of a name, of which capitals don't matter; null if there is none.
[[nodiscard]] const OptionRow* FindOption(std::string_view name);
/// The line that offers an option: "option name Hash type spin default 32 min 1 max 65536".
[[nodiscard]] std::string OptionLine(const OptionRow& row);
/// Takes a value from its text. False, with the old value kept, for a text that is no value of this option.
[[nodiscard]] bool TakeValue(const OptionRow& row, std::string_view text, OptionValues& values);

/// The words of `setoption`.
struct SetOptionCommand {
    std::string name;
    std::string value;
};
/// Reads a whole line. A value stands as it was written; "<empty>" is an empty one. A line that doesn't begin with a
/// name has none.
[[nodiscard]] SetOptionCommand ReadSetOption(std::string_view line);

}  // namespace VorkaUci
