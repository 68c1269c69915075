#include "uci/go_command.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "chess/bits.h"
#include "uci/move_text.h"

namespace VorkaUci {

namespace {

/// A word with a number after it.
struct NumberWord {
    std::string_view word;
    std::optional<std::int64_t>& (*of)(GoCommand& go);
};

using Number = std::optional<std::int64_t>;

constexpr std::array number_words{
    NumberWord{"wtime", [](GoCommand& go) -> Number& { return go.time[white]; }},
    NumberWord{"btime", [](GoCommand& go) -> Number& { return go.time[black]; }},
    NumberWord{"winc", [](GoCommand& go) -> Number& { return go.increment[white]; }},
    NumberWord{"binc", [](GoCommand& go) -> Number& { return go.increment[black]; }},
    NumberWord{"movestogo", [](GoCommand& go) -> Number& { return go.moves_to_go; }},
    NumberWord{"depth", [](GoCommand& go) -> Number& { return go.depth; }},
    NumberWord{"nodes", [](GoCommand& go) -> Number& { return go.nodes; }},
    NumberWord{"mate", [](GoCommand& go) -> Number& { return go.mate; }},
    NumberWord{"movetime", [](GoCommand& go) -> Number& { return go.move_time; }},
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

}  // namespace

bool GoCommand::hasAnEnd() const { return time[white] || time[black] || depth || nodes || mate || move_time; }

GoCommand ReadGo(std::span<const std::string> words) {
    GoCommand go;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (const auto row = FindRow(number_words, words[i]); row != number_words.end()) {
            const Number number = i + 1 < words.size() ? ReadNumber(words[i + 1]) : std::nullopt;
            if (!number) continue;
            row->of(go) = number;
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
