#include "uci/go_command.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "chess/bits.h"
#include "uci/move_text.h"

namespace VorkaUci {

namespace {

using Number = std::optional<std::int64_t>;

/// A word with a number after it.
struct NumberWord {
    std::string_view word;
    Number GoCommand::*number;
};

constexpr std::array number_words{
    NumberWord{"movestogo", &GoCommand::moves_to_go}, NumberWord{"depth", &GoCommand::depth},
    NumberWord{"nodes", &GoCommand::nodes},           NumberWord{"mate", &GoCommand::mate},
    NumberWord{"movetime", &GoCommand::move_time},
};

/// The same for one side.
struct ClockWord {
    std::string_view word;
    std::array<Number, 2> GoCommand::*numbers;
    Colour side;
};

constexpr std::array clock_words{
    ClockWord{"wtime", &GoCommand::time, white},
    ClockWord{"btime", &GoCommand::time, black},
    ClockWord{"winc", &GoCommand::increment, white},
    ClockWord{"binc", &GoCommand::increment, black},
};

struct FlagWord {
    std::string_view word;
    bool GoCommand::*flag;
};

constexpr std::array flag_words{FlagWord{"infinite", &GoCommand::infinite}, FlagWord{"ponder", &GoCommand::ponder}};

constexpr std::string_view search_moves_word = "searchmoves";

bool HasDigitsOnly(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return '0' <= c && c <= '9'; });
}

/// A fraction is dropped, since some interfaces write one, and a number that is too large is the largest there is.
Number ReadNumber(std::string_view text) {
    const bool is_negative = text.starts_with('-');
    if (is_negative) text.remove_prefix(1);
    const std::string_view whole = text.substr(0, text.find('.'));
    std::string_view fraction = text.substr(whole.size());
    if (!fraction.empty()) fraction.remove_prefix(1);
    if (whole.empty() || !HasDigitsOnly(whole) || !HasDigitsOnly(fraction)) return std::nullopt;
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    std::int64_t number = 0;
    for (const char digit : whole) {
        const std::int64_t value = digit - '0';
        number = number > (largest - value) / 10 ? largest : 10 * number + value;
    }
    return is_negative ? -number : number;
}

template <class Rows>
auto FindRow(const Rows& rows, std::string_view word) {
    return std::find_if(rows.begin(), rows.end(), [word](const auto& row) { return row.word == word; });
}

/// Where the number after a word goes; null if none belongs there.
Number* PlaceOfNumber(GoCommand& go, std::string_view word) {
    if (const auto row = FindRow(number_words, word); row != number_words.end()) return &(go.*(row->number));
    const auto clock = FindRow(clock_words, word);
    return clock == clock_words.end() ? nullptr : &(go.*(clock->numbers))[clock->side];
}

}  // namespace

bool GoCommand::HasAnEnd() const { return time[white] || time[black] || depth || nodes || mate || move_time; }

GoCommand ReadGo(std::span<const std::string> words) {
    GoCommand go;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (Number* const place = PlaceOfNumber(go, words[i])) {
            const Number number = i + 1 < words.size() ? ReadNumber(words[i + 1]) : std::nullopt;
            if (!number) continue;
            *place = number;
            ++i;
        } else if (const auto flag = FindRow(flag_words, words[i]); flag != flag_words.end()) {
            go.*(flag->flag) = true;
        } else if (words[i] == search_moves_word) {
            for (; i + 1 < words.size() && LooksLikeMove(words[i + 1]); ++i) go.search_moves.push_back(words[i + 1]);
        }
    }
    return go;
}

}  // namespace VorkaUci
