#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frame/base/vorka_exception.h"

/// A text that is not a number of the wanted kind.
class string_conversion_error : public VorkaException {};

namespace VorkaUtils {

class tokenize_exception : public VorkaException {};
/// An opening quote without its closing partner.
class unterminated_embedded_string_exception : public tokenize_exception {};

inline constexpr std::string_view white_space = " \t\r\n";

/// The text without the white space around it.
[[nodiscard]] std::string_view Trimmed(std::string_view text);

/// Splits a text into words at the characters of `separators`. `opening_quotes` and `closing_quotes` are pairs,
/// position by position, and an embedded string between a pair belongs to the word around it, separators and all:
/// with "`" as the pair, "a `b c`d e" gives "a", "b cd" and "e". `keep_quotes` leaves the quote characters in.
/// Throws unterminated_embedded_string_exception.
[[nodiscard]] std::vector<std::string> tokenize(std::string_view text, std::string_view separators = white_space,
                                                std::string_view opening_quotes = {},
                                                std::string_view closing_quotes = {}, bool keep_quotes = false);

[[nodiscard]] std::string ToString(std::uint64_t value);
[[nodiscard]] std::string ToString(std::int64_t value);
[[nodiscard]] std::string ToString(std::int32_t value);

/// Strict decimal readers; all throw string_conversion_error.
[[nodiscard]] std::uint64_t ToUnsigned64(std::string_view text);
[[nodiscard]] std::int64_t ToSigned64(std::string_view text);
[[nodiscard]] std::int32_t ToInteger(std::string_view text);

/// Bytes from a number with an optional unit letter K, M, G or T of either case ("64M").
/// Throws string_conversion_error, also for a product beyond 64 bits.
[[nodiscard]] std::uint64_t ParseSize(std::string_view text);
/// Bytes in their largest fitting unit, truncated to hundredths; the second decimal has no leading zero, so that
/// 24 MiB read "24.0 megabyte": docs/oddities.md, hundredths.
[[nodiscard]] std::string SizeToString(std::uint64_t bytes);

/// A time of a time control in milliseconds: minutes ("5"), or minutes and seconds ("0:30"). Seconds are whole, or
/// carry a decimal fraction as several interfaces send it ("0:30.5"). Throws string_conversion_error.
[[nodiscard]] std::int32_t ParseClockTime(std::string_view text);
/// An increment in milliseconds, from seconds that are whole or have a decimal fraction ("0.1"). Throws
/// string_conversion_error.
[[nodiscard]] std::int32_t ParseIncrement(std::string_view text);

[[nodiscard]] std::string ReplaceAll(std::string_view text, char from_char, char to_char);
[[nodiscard]] bool StartsWith(std::string_view text, std::string_view prefix);
/// ASCII letters in lower case, everything else untouched.
[[nodiscard]] std::string ToLower(std::string_view text);
/// Half away from zero.
[[nodiscard]] std::int64_t RoundToInteger(double value);

}  // namespace VorkaUtils
