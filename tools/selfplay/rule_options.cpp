#include "selfplay/rule_options.h"

#include <cstdint>
#include <stdexcept>

#include "selfplay/option_texts.h"

bool TakeRuleOption(int letter, std::string_view value, GameRules& rules) {
    constexpr std::int64_t most_nodes = 1'000'000'000'000;
    AdjudicationRules& ends = rules.adjudication;
    switch (letter) {
        case 'n':
            rules.nodes = ReadNumber<std::uint64_t>("--nodes", value, 1, most_nodes);
            return true;
        case 'd':
            rules.depth = ReadNumber("--depth", value, 1, 80);
            return true;
        case 't':
            ReadTimeControl(value, rules.base_time, rules.increment);
            return true;
        case 'h':
            rules.hash_megabytes = ReadNumber<std::uint64_t>("--hash", value, 1, 1 << 20);
            return true;
        case 'r': {
            const auto numbers = ReadNumbers<2>("--resign", value);
            ends.resign_moves = numbers[0];
            ends.resign_score = numbers[1];
            return true;
        }
        case 'D': {
            const auto numbers = ReadNumbers<3>("--draw", value);
            ends.draw_from_move = numbers[0];
            ends.draw_moves = numbers[1];
            ends.draw_score = numbers[2];
            return true;
        }
        default:
            return false;
    }
}

void CheckRules(const GameRules& rules) {
    if (rules.nodes == 0 && rules.depth == 0 && rules.base_time == 0) {
        throw std::runtime_error("one of --nodes, --depth and --time is missing");
    }
}
