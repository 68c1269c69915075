#pragma once

#include <string_view>

#include "selfplay/game.h"

/// The options about the rules of a game, which the programs that play matches have in common, under these letters:
/// n --nodes, d --depth, t --time, h --hash, r --resign, D --draw.

/// Takes the value of an option if it is one of them; false if not. Throws std::runtime_error with what is wrong.
[[nodiscard]] bool TakeRuleOption(int letter, std::string_view value, GameRules& rules);
/// Throws std::runtime_error if nothing bounds the search.
void CheckRules(const GameRules& rules);
