#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "options/number_option.h"

/// Values on the command line of the programs that play matches, read strictly. All throw std::runtime_error with the
/// option and what it takes.

[[nodiscard]] std::int64_t ReadWholeNumber(std::string_view option, std::string_view text, std::int64_t least,
                                           std::int64_t most);

template <std::integral Number>
[[nodiscard]] Number ReadNumber(std::string_view option, std::string_view text, std::int64_t least, std::int64_t most) {
    return static_cast<Number>(ReadWholeNumber(option, text, least, most));
}
[[nodiscard]] inline int ReadNumber(std::string_view option, std::string_view text, int least, int most) {
    return static_cast<int>(ReadWholeNumber(option, text, least, most));
}

/// Decimal, with a point or without: "-2.5".
[[nodiscard]] double ReadReal(std::string_view option, std::string_view text, double least, double most);

/// "10+0.1", seconds; into milliseconds.
void ReadTimeControl(std::string_view text, std::int64_t& base, std::int64_t& increment);

/// Whole numbers from 0 to 1000000 with colons between them.
void ReadNumberRow(std::string_view option, std::string_view text, std::int32_t* numbers, std::size_t count);

template <std::size_t Count>
[[nodiscard]] std::array<std::int32_t, Count> ReadNumbers(std::string_view option, std::string_view text) {
    std::array<std::int32_t, Count> numbers{};
    ReadNumberRow(option, text, numbers.data(), Count);
    return numbers;
}
