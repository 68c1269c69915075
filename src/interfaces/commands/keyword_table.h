#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <string_view>

#include "interfaces/commands/command.h"
#include "interfaces/protocols/basic_protocol.h"
#include "interfaces/protocols/input_line.h"

/// The words that begin a command, one row each: how many words the line may have, and what is made of it.
namespace VorkaInterfaces {

/// Which numbers of words a keyword takes, itself included, and the error that answers any other number.
struct WordCount {
    std::uint32_t accepted;  ///< bit n for n words, the highest bit for all numbers from 31 on
    std::string_view error;

    [[nodiscard]] constexpr bool Fits(std::size_t words) const {
        return ((accepted >> std::min<std::size_t>(words, 31)) & 1U) != 0;
    }
};

/// Makes the command of a line whose number of words fits. Throws ErrorCommand, and string_conversion_error for an
/// argument that is no number.
using CommandMaker = std::unique_ptr<Command> (*)(BasicProtocol& protocol, const TokenizedLine& input);

struct Keyword {
    std::string_view word;
    WordCount words;
    CommandMaker make;
};

[[nodiscard]] std::span<const Keyword> KeywordTable();

/// The command of a tokenized line (at least one token). Throws ErrorCommand.
[[nodiscard]] std::unique_ptr<Command> parseCommand(BasicProtocol& protocol, const TokenizedLine& input);

}  // namespace VorkaInterfaces
