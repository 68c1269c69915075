#pragma once

#include <string>
#include <string_view>

#include "selfplay/match.h"

/// Games as text.

/// In Portable Game Notation, with the score (pawns, as the mover sees it, or +M3 for a mate in three) and the depth of
/// each move as a comment, and an empty line at the end. The same game gives the same text: it has no date.
[[nodiscard]] std::string PgnOf(const MatchPlan& plan, const PlayedGame& game);

/// As a line without its end: number, result, reason, and each move with its score and depth.
///
///     17 1-0 0 e2e4/23/7 e7e5/-18/6 ..
[[nodiscard]] std::string LineOf(const PlayedGame& game);
/// Reads such a line back; the moves must be legal in the opening of the plan. Throws std::runtime_error with what is
/// wrong.
[[nodiscard]] PlayedGame GameOfLine(const MatchPlan& plan, std::string_view line);
