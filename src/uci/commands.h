#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "uci/actions.h"

/// The commands of the protocol: one row each.
namespace VorkaUci {

/// A line from its command on.
struct CommandLine {
    std::string text;                ///< what stands after the command, as it was written
    std::vector<std::string> words;  ///< the same, split
};

struct CommandRow {
    std::string_view word;
    bool beside_search;  ///< carried out at once while a search runs; the others wait for its end
    void (*carry_out)(CommandActions& program, const CommandLine& line);
};

[[nodiscard]] std::span<const CommandRow> CommandRows();

/// Finds the command of a line, which may stand after words that nobody knows. Null if there is none.
[[nodiscard]] const CommandRow* FindCommand(const std::string& text, CommandLine& line);

}  // namespace VorkaUci
