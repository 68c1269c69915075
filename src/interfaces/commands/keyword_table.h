#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "interfaces/commands/keyword.h"
#include "interfaces/protocols/help_screen.h"

/// The words that begin a command: the rows of all families.
namespace VorkaInterfaces {

[[nodiscard]] std::span<const Keyword> keywordTable();

/// The row of a word; none if it is no keyword.
[[nodiscard]] const Keyword* findKeyword(std::string_view word);

/// The command of a tokenized line (at least one token). Throws ErrorCommand.
[[nodiscard]] std::unique_ptr<Command> parseCommand(BasicProtocol& protocol, const TokenizedLine& input);

/// What `help` lists, in its order, and the part of it that may stand on the command line.
[[nodiscard]] std::vector<VorkaHelpScreen::HelpText> helpOfAllCommands();
[[nodiscard]] std::vector<VorkaHelpScreen::HelpText> helpOfStartupCommands();

}  // namespace VorkaInterfaces
