#include "selfplay/option_texts.h"

#include <cmath>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "frame/base/text_utilities.h"

namespace {

[[noreturn]] void Refuse(std::string_view option, const std::string& wanted, std::string_view text) {
    throw std::runtime_error(std::string(option) + " takes " + wanted + ", not \"" + std::string(text) + '"');
}

/// Digits with at most one point among them, and a minus before them at most.
std::optional<double> RealIn(std::string_view text) {
    const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::string_view whole = digits.substr(0, point);
    const std::string_view fraction = digits.substr(std::min(point + 1, digits.size()));
    const auto is_number = [](std::string_view part) {
        return !part.empty() && part.size() < 16 && part.find_first_not_of("0123456789") == std::string_view::npos;
    };
    if (!is_number(whole) || (point != digits.size() && !is_number(fraction))) return std::nullopt;
    return std::strtod(std::string(text).c_str(), nullptr);
}

std::string Shown(double number) {
    std::ostringstream text;
    text << number;
    return text.str();
}

}  // namespace

std::int64_t ReadWholeNumber(std::string_view option, std::string_view text, std::int64_t least, std::int64_t most) {
    if (const std::optional<std::int64_t> number = NumberIn(text, least, most)) return *number;
    Refuse(option, "a number from " + std::to_string(least) + " to " + std::to_string(most), text);
}

double ReadReal(std::string_view option, std::string_view text, double least, double most) {
    const std::optional<double> number = RealIn(text);
    if (number && *number >= least && *number <= most) return *number;
    Refuse(option, "a number from " + Shown(least) + " to " + Shown(most), text);
}

void ReadTimeControl(std::string_view text, std::int64_t& base, std::int64_t& increment) {
    constexpr double most_seconds = 1e6;
    const std::size_t plus = std::min(text.find('+'), text.size());
    const std::optional<double> seconds = RealIn(text.substr(0, plus));
    const std::optional<double> more = plus == text.size() ? 0 : RealIn(text.substr(plus + 1));
    const auto is_good = [](const std::optional<double>& value) {
        return value && *value >= 0 && *value <= most_seconds;
    };
    if (!is_good(seconds) || !is_good(more) || *seconds < 0.001) {
        Refuse("--time", "seconds and an increment, as 10+0.1", text);
    }
    base = std::llround(*seconds * 1000);
    increment = std::llround(*more * 1000);
}

void ReadNumberRow(std::string_view option, std::string_view text, std::int32_t* numbers, std::size_t count) {
    const std::vector<std::string> parts = VorkaUtils::tokenize(text, ":");
    bool is_good = parts.size() == count;
    for (std::size_t i = 0; is_good && i < count; ++i) {
        const auto number = NumberIn(parts[i], 0, 1'000'000);
        is_good = number.has_value();
        numbers[i] = number.value_or(0);
    }
    if (!is_good) Refuse(option, std::to_string(count) + " numbers with colons between them", text);
}
