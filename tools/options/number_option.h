#pragma once

#include <concepts>
#include <cstdint>
#include <iostream>
#include <optional>
#include <string_view>
#include <utility>

#include "frame/base/text_utilities.h"

/// Numbers on the command line of a program, read strictly: nothing but digits, and a minus before them where a number
/// may be negative.

/// Nothing if `text` is no whole number from `least` to `most`.
template <std::integral Number>
[[nodiscard]] std::optional<Number> NumberIn(std::string_view text, Number least, Number most) {
    try {
        const std::int64_t number = VorkaUtils::ToSigned64(text);
        if (std::cmp_less(number, least) || std::cmp_greater(number, most)) return std::nullopt;
        return static_cast<Number>(number);
    } catch (const string_conversion_error&) {
        return std::nullopt;
    }
}

/// Reads the value of an option; 64 bits with a sign are as far as it goes. False, with a message of `program` on
/// standard error, if it is no number from `least` to `most`; `number` is as before then.
template <std::integral Number>
[[nodiscard]] bool ReadNumberOption(std::string_view program, std::string_view option, std::string_view text,
                                    Number least, Number most, Number& number) {
    if (const std::optional<Number> found = NumberIn(text, least, most)) {
        number = *found;
        return true;
    }
    std::cerr << program << ": " << option << " takes a number from " << least << " to " << most << ", not \"" << text
              << "\"\n";
    return false;
}
