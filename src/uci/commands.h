#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "uci/actions.h"

/// The commands of the protocol: one row each.
namespace VorkaUci {

struct CommandRow {
    std::string_view word;
    bool beside_search;  ///< carried out at once while a search runs; the others wait for its end
    void (CommandActions::*carry_out)(const CommandLine& line);
};

[[nodiscard]] std::span<const CommandRow> CommandRows();

struct FoundCommand {
    const CommandRow& row;
    CommandLine line;
};
/// Finds the command of a line, which may stand after words that nobody knows. Nothing if there is none.
[[nodiscard]] std::optional<FoundCommand> FindCommand(std::string_view text);

}  // namespace VorkaUci
