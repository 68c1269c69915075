#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>
#include <vector>

#include "player_setup/player_setup.h"
#include "search/settings/search_settings.h"
#include "search/settings/tournament_settings.h"

/// A setting to be tuned: a whole number, or one element of an array of them; or a number of the tournament search.
struct Parameter {
    std::string name;  ///< as in the file: "futility_pruning_margin", "capture_move_sorting_bonus[2]"
    const search_settings::SettingRow* row = nullptr;      ///< null for one of the tournament search
    const tournament_settings::Row* tournament = nullptr;  ///< null for all others
    std::size_t index = 0;                                 ///< in an array
    double start = 0;
    double least = 0, most = 0;
    double last_span = 1;  ///< c_end: how far from its value it is tried at the end of the run
    double last_rate = 0;  ///< r_end: how many spans a game of lead moves it at the end
};

/// Reads the parameters of a file, one in a line, the words with blanks between them:
///
///     # name                        start   min   max   c_end   r_end
///     min_null_move_search_reduction  128    64   512      16   0.002
///     capture_move_sorting_bonus[2]     5     0    60       2   0.002
///
/// Lines that are blank or begin with # count for nothing. Throws std::runtime_error with the line and what is wrong; a
/// span below half a point would vanish when values are rounded for play, and is refused. So are parameters of both
/// searches in one file: what is written at the end is a file of the one or of the other.
[[nodiscard]] std::vector<Parameter> ReadParameters(std::istream& file);

/// A whole number within the bounds.
[[nodiscard]] std::int32_t PlayedValue(const Parameter& parameter, double value);

/// `base` with the values of the parameters, as they are played.
[[nodiscard]] PlayerSetup PlayerWith(const PlayerSetup& base, const std::vector<Parameter>& parameters,
                                     const std::vector<double>& values);
