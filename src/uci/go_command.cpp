#include "uci/go_command.h"

#include <algorithm>
#include <string_view>

#include "chess/bits.h"
#include "frame/base/text_utilities.h"
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

Number ReadNumber(std::string_view text) try {
    return VorkaUtils::ToSigned64(text);
} catch (const string_conversion_error&) {
    return std::nullopt;
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
