#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "interfaces/commands/command.h"
#include "interfaces/protocols/basic_protocol.h"
#include "interfaces/protocols/help_texts.h"
#include "interfaces/protocols/input_line.h"

/// The row of a keyword, which says everything about its command except what it does, and the terms that rows use.
///
///     {"level", exactly(4), Make<Command_Level, Integer, ClockTime, Increment>, at_start, {470, help_texts::level}},
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

/// Whether a word may stand on the command line, and what it entails there.
enum class StartUp : std::uint8_t {
    prompt_only,
    at_start,
    at_start_in_force_mode,  ///< after a `force`, so that the engine in a freshly started game does not move
    at_start_then_exit,      ///< the program ends after it
};
using enum StartUp;

/// What `help` says about a word. The numbers of places leave room for new words in between.
struct HelpEntry {
    int place = 0;  ///< in the list; 0: it isn't listed
    std::string_view text = {};
    std::string_view shown_as = {};  ///< in place of the word, if not empty
};

struct Keyword {
    std::string_view word;
    WordCount words;
    CommandMaker make;
    StartUp start_up = prompt_only;
    HelpEntry help = {};
};

// --- How many words ---

inline constexpr std::uint32_t every_number = ~0U;
[[nodiscard]] consteval std::uint32_t From(unsigned n) { return every_number << n; }

inline constexpr WordCount alone{1U << 1, vocabulary::too_many_parameters};
inline constexpr WordCount any{every_number, {}};
inline constexpr WordCount one_or_two{1U << 1 | 1U << 2, vocabulary::wrong_number_of_arguments};
inline constexpr WordCount one_or_three{1U << 1 | 1U << 3, vocabulary::wrong_number_of_arguments};
inline constexpr WordCount one_or_at_least_four{1U << 1 | From(4), vocabulary::missing_parameters};
inline constexpr WordCount at_most_two{1U << 1 | 1U << 2, vocabulary::too_many_parameters};
inline constexpr WordCount at_least_two{From(2), vocabulary::missing_parameters};
[[nodiscard]] consteval WordCount exactly(unsigned n) { return {1U << n, vocabulary::wrong_number_of_arguments}; }

// --- Arguments of a command: each is read from its place in the line ---

struct Word {
    static const std::string& Read(const TokenizedLine& input, std::size_t place) { return input.tokens[place]; }
};

/// All words to the end of the line.
struct Rest {
    static std::string Read(const TokenizedLine& input, std::size_t place) {
        return joinTokens(input.tokens, place, input.tokens.size());
    }
};

struct Integer {
    static std::int32_t Read(const TokenizedLine& input, std::size_t place) {
        return VorkaUtils::ToInteger(input.tokens[place]);
    }
};

// --- Makers ---

/// A command that is given its line and these arguments, one after the other.
template <class C, class... Arguments>
std::unique_ptr<Command> Make(BasicProtocol&, const TokenizedLine& input) {
    return [&]<std::size_t... Place>(std::index_sequence<Place...>)->std::unique_ptr<Command> {
        return std::make_unique<C>(input.line, Arguments::Read(input, Place + 1)...);
    }
    (std::index_sequence_for<Arguments...>{});
}

/// Alone the word shows something; with parameters it changes it.
template <class Display, class Change, class... Arguments>
std::unique_ptr<Command> MakeDisplayOrChange(BasicProtocol& protocol, const TokenizedLine& input) {
    return input.tokens.size() == 1 ? Make<Display>(protocol, input) : Make<Change, Arguments...>(protocol, input);
}

}  // namespace VorkaInterfaces
