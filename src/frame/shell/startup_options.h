#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "frame/base/vorka_exception.h"

/// The words of the command line, as options. An option is a command that a person could type at the prompt:
///
///     vorka --hash trans 64M -personality=Rux xboard
///
/// It begins with one or two dashes, and the words up to the next one with a dash are its parameters; so a negative
/// number has to be joined with '=', as in --contempt=-5.

/// Thrown for dashes with nothing after them.
class could_not_parse_exception : public VorkaException {
  public:
    explicit could_not_parse_exception(std::string argument) : argument_(std::move(argument)) {}
    [[nodiscard]] const std::string& argument() const { return argument_; }

  private:
    std::string argument_;
};

struct StartupOption {
    std::string argument;  ///< the word as it was given
    bool has_dash = true;
    std::string name;
    std::vector<std::string> parameters;

    /// The command line for the prompt: name and parameters, separated by single blanks.
    [[nodiscard]] std::string line() const;

    bool operator==(const StartupOption&) const = default;
};

/// Reads the option at arguments[next], which must exist, and sets `next` to the argument after its parameters.
/// Throws could_not_parse_exception.
[[nodiscard]] StartupOption TakeStartupOption(const std::vector<std::string>& arguments, std::size_t& next);
