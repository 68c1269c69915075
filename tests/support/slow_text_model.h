#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The slow and obvious readers, for comparison with those of frame/base/text_utilities.h.
namespace slow_model {

/// Words character by character; nothing if a quote stays open. `quotes` open and close alike.
inline std::optional<std::vector<std::string>> Words(std::string_view text, std::string_view separators,
                                                     std::string_view quotes, bool keep_quotes) {
    std::vector<std::string> words;
    std::optional<std::string> word;
    bool is_quoted = false;
    char open_quote = 0;
    for (const char c : text) {
        const bool is_quote = is_quoted ? c == open_quote : quotes.find(c) != std::string_view::npos;
        const bool is_separator = !is_quoted && separators.find(c) != std::string_view::npos;
        if (is_separator) {
            if (word) words.push_back(*word);
            word.reset();
            continue;
        }
        if (!word) word.emplace();
        if (is_quote) {
            is_quoted = !is_quoted;
            open_quote = c;
        }
        if (!is_quote || keep_quotes) *word += c;
    }
    if (is_quoted) return std::nullopt;
    if (word) words.push_back(*word);
    return words;
}

/// The decimal digits of a number without leading zeros; nothing unless the text consists of digits alone. Two such
/// texts compare like their numbers if the longer one counts as greater.
inline std::optional<std::string> Digits(std::string_view text) {
    std::string digits;
    for (const char c : text) {
        if (c < '0' || c > '9') return std::nullopt;
        if (!digits.empty() || c != '0') digits += c;
    }
    if (text.empty()) return std::nullopt;
    return digits.empty() ? "0" : digits;
}

/// The text that a number reads as when it is written back, or nothing if it has no place among the numbers up to
/// `largest`, below zero `largest_negative` (empty: no minus allowed).
inline std::optional<std::string> WrittenBack(std::string_view text, std::string_view largest,
                                              std::string_view largest_negative) {
    const bool negative = !largest_negative.empty() && !text.empty() && text.front() == '-';
    const std::optional<std::string> digits = Digits(text.substr(negative ? 1 : 0));
    const std::string_view bound = negative ? largest_negative : largest;
    if (!digits || digits->size() > bound.size() || (digits->size() == bound.size() && *digits > bound)) {
        return std::nullopt;
    }
    return (negative && *digits != "0" ? "-" : "") + *digits;
}

}  // namespace slow_model
