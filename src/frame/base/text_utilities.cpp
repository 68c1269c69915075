#include "frame/base/text_utilities.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "frame/base/checked_assert.h"
#include "frame/base/vocabulary.h"

namespace VorkaUtils {

namespace {

[[nodiscard]] constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// A decimal number of nothing but digits.
template <class Number>
[[nodiscard]] Number FromDigits(std::string_view text) {
    if (text.empty() || !std::all_of(text.begin(), text.end(), IsDigit)) throw string_conversion_error();
    Number value{};
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc()) {
        throw string_conversion_error();
    }
    return value;
}

template <class Number>
[[nodiscard]] std::string Decimal(Number value) {
    std::array<char, 24> text;
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

/// Takes a leading minus off `text`.
[[nodiscard]] bool TakeMinus(std::string_view& text) {
    if (!StartsWith(text, "-")) return false;
    text.remove_prefix(1);
    return true;
}

/// Milliseconds in a number of seconds, whole or with a fraction; what is finer than a millisecond is cut off.
[[nodiscard]] std::int64_t MillisecondsInSeconds(std::string_view text) {
    const std::size_t point = text.find('.');
    std::int64_t milliseconds = std::int64_t{FromDigits<std::int32_t>(text.substr(0, point))} * 1000;
    if (point == std::string_view::npos) return milliseconds;
    const std::string_view fraction = text.substr(point + 1);
    if (fraction.empty() || !std::all_of(fraction.begin(), fraction.end(), IsDigit)) throw string_conversion_error();
    std::int64_t unit = 100;
    for (const char digit : fraction.substr(0, 3)) {
        milliseconds += (digit - '0') * unit;
        unit /= 10;
    }
    return milliseconds;
}

[[nodiscard]] std::int32_t CheckedMilliseconds(std::int64_t milliseconds, bool negative) {
    if (milliseconds > std::numeric_limits<std::int32_t>::max()) throw string_conversion_error();
    return static_cast<std::int32_t>(negative ? -milliseconds : milliseconds);
}

}  // namespace

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(white_space);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(white_space) - begin + 1);
}

std::vector<std::string> tokenize(std::string_view text, std::string_view separators, std::string_view opening_quotes,
                                  std::string_view closing_quotes, bool keep_quotes) {
    CHECKED_ASSERT(opening_quotes.size() == closing_quotes.size(), vocabulary::no_error_description);
    std::string word_ends(separators);
    word_ends += opening_quotes;

    std::vector<std::string> words;
    std::size_t p = text.find_first_not_of(separators);
    while (p < text.size()) {
        std::string& word = words.emplace_back();
        while (p < text.size() && separators.find(text[p]) == std::string_view::npos) {
            const std::size_t pair = opening_quotes.find(text[p]);
            if (pair == std::string_view::npos) {
                const std::size_t end = std::min(text.find_first_of(word_ends, p), text.size());
                word += text.substr(p, end - p);
                p = end;
                continue;
            }
            const std::size_t closing = text.find(closing_quotes[pair], p + 1);
            if (closing == std::string_view::npos) throw unterminated_embedded_string_exception();
            word += keep_quotes ? text.substr(p, closing + 1 - p) : text.substr(p + 1, closing - p - 1);
            p = closing + 1;
        }
        p = text.find_first_not_of(separators, p);
    }
    return words;
}

std::string ToString(std::uint64_t value) { return Decimal(value); }
std::string ToString(std::int64_t value) { return Decimal(value); }
std::string ToString(std::int32_t value) { return Decimal(value); }

std::uint64_t ToUnsigned64(std::string_view text) { return FromDigits<std::uint64_t>(text); }

std::int64_t ToSigned64(std::string_view text) {
    const bool negative = TakeMinus(text);
    const std::uint64_t magnitude = ToUnsigned64(text);
    const auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) + (negative ? 1 : 0);
    if (magnitude > largest) throw string_conversion_error();
    return static_cast<std::int64_t>(negative ? 0 - magnitude : magnitude);
}

std::int32_t ToInteger(std::string_view text) {
    // The number after the minus is read by itself, so that the smallest of all, whose magnitude is too large for 32
    // bits, is refused: docs/oddities.md, smallest integer.
    const bool negative = TakeMinus(text);
    const auto magnitude = FromDigits<std::int32_t>(text);
    return negative ? -magnitude : magnitude;
}

std::uint64_t ParseSize(std::string_view text) {
    constexpr std::string_view letters = "KkMmGgTt";
    const std::size_t letter = text.empty() ? std::string_view::npos : letters.find(text.back());
    if (letter == std::string_view::npos) return ToUnsigned64(text);

    const int shift = 10 * (static_cast<int>(letter / 2) + 1);
    text.remove_suffix(1);
    const std::uint64_t count = ToUnsigned64(text);
    if (count > std::numeric_limits<std::uint64_t>::max() >> shift) throw string_conversion_error();
    return count << shift;
}

std::string SizeToString(std::uint64_t bytes) {
    constexpr std::uint64_t kilobyte = 1024, megabyte = 1024 * kilobyte, gigabyte = 1024 * megabyte;
    const auto with_word = [](std::string number, std::string_view word) {
        return (std::move(number) + ' ').append(word);
    };
    const auto in_units = [&](std::uint64_t unit, std::string_view word) {
        return with_word(ToString(bytes / unit) + '.' + ToString(bytes % unit * 100 / unit), word);
    };
    if (bytes < kilobyte) return with_word(ToString(bytes), vocabulary::size_byte);
    if (bytes < megabyte) return in_units(kilobyte, vocabulary::size_kilobyte);
    if (bytes < gigabyte) return in_units(megabyte, vocabulary::size_megabyte);
    return in_units(gigabyte, vocabulary::size_gigabyte);
}

std::int32_t ParseClockTime(std::string_view text) {
    const bool negative = TakeMinus(text);
    const std::size_t colon = text.find(':');
    std::int64_t milliseconds = std::int64_t{FromDigits<std::int32_t>(text.substr(0, colon))} * 60000;
    if (colon != std::string_view::npos) {
        const std::int64_t after_colon = MillisecondsInSeconds(text.substr(colon + 1));
        if (after_colon >= 60000) throw string_conversion_error();
        milliseconds += after_colon;
    }
    return CheckedMilliseconds(milliseconds, negative);
}

std::int32_t ParseIncrement(std::string_view text) {
    const bool negative = TakeMinus(text);
    return CheckedMilliseconds(MillisecondsInSeconds(text), negative);
}

std::string ReplaceAll(std::string_view text, char from_char, char to_char) {
    std::string result(text);
    std::replace(result.begin(), result.end(), from_char, to_char);
    return result;
}

bool StartsWith(std::string_view text, std::string_view prefix) { return text.starts_with(prefix); }

std::string ToLower(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

std::int64_t RoundToInteger(double value) { return std::llround(value); }

}  // namespace VorkaUtils
