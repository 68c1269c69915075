#pragma once

#include <cstdint>

#include "search/tournament/tournament_node.h"

namespace tournament {

// What every node does with a move, in quiescence and before it.

/// The key of the position after a move. What the node there will look up first is asked for now, and comes from the
/// memory while the move is thought about.
[[nodiscard]] std::uint64_t KeyAfter(const TournamentNode& node, Move move);
/// Plays a move on the board of the search. `key`: KeyAfter the move.
void MakeMove(const TournamentNode& node, Move move, std::uint64_t key);
/// The node's question to the position after a move or a pass, which is on the board. Throws what a poll throws.
[[nodiscard]] Score AskChild(const TournamentNode& node, NodeType type, Distance distance);
/// Takes over what a move has come to. Whether it cuts.
[[nodiscard]] bool Keep(TournamentNode& node, Move move, Score score);
/// Notes that a move was left out which may be worth `most`: an answer below beta is no lower.
void LeaveOut(TournamentNode& node, Score most);
/// Stores what the node has found, and gives its answer.
[[nodiscard]] Score Finish(TournamentNode& node);

}  // namespace tournament
