#pragma once

#include "search/state/search_board.h"
#include "search/tables/node_flags.h"
#include "search/tables/score.h"

namespace tournament {

struct TournamentState;

/// The question of SearchNode, asked of the tournament search: whether the position of `search` is worth at least
/// `beta`. What it returns is at least beta if so, and below it if not, and bounds the score on that side.
[[nodiscard]] Score SearchNode(SearchBoard& search, TournamentState& state, Move* move_buffer, Score beta,
                               Distance distance, NodeType type, int position_class, bool may_pass);

}  // namespace tournament
