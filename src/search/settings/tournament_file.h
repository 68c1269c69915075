#pragma once

#include <istream>
#include <ostream>
#include <string>

#include "search/settings/tournament_settings.h"

/// Files with settings of the tournament search: "name = value", one in a line. Blank lines and those that begin with #
/// count for nothing; what a file does not name keeps its default. So a file from an older program, or from tuning a
/// few of them, is complete.
namespace tournament_settings {

/// Throws TextException with the number of the line: "line 3: there is no setting nul_move".
[[nodiscard]] TournamentSettings Read(std::istream& input);
/// Throws TextException, also if there is no such regular file.
[[nodiscard]] TournamentSettings ReadFile(const std::string& path);
void Write(const TournamentSettings& settings, std::ostream& output);

}  // namespace tournament_settings
