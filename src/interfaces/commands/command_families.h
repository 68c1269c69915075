#pragma once

#include <span>

#include "interfaces/commands/keyword.h"

/// The commands by subject, with a file commands_*.cpp for each of these functions. The file holds the classes, which
/// no other file sees, and at its end their rows. A new command is one class and one row there.
namespace VorkaInterfaces {

[[nodiscard]] std::span<const Keyword> gameKeywords();
[[nodiscard]] std::span<const Keyword> clockKeywords();
[[nodiscard]] std::span<const Keyword> setupKeywords();
[[nodiscard]] std::span<const Keyword> fileKeywords();
[[nodiscard]] std::span<const Keyword> displayKeywords();
[[nodiscard]] std::span<const Keyword> settingsKeywords();
[[nodiscard]] std::span<const Keyword> databaseKeywords();
[[nodiscard]] std::span<const Keyword> protocolKeywords();

/// The row of any other word, which is taken as a move; the reader of moves finds out if it is none.
[[nodiscard]] const Keyword& bareMove();

}  // namespace VorkaInterfaces
