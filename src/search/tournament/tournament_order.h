#pragma once

#include <cstdint>
#include <span>

#include "search/tournament/move_picker.h"
#include "search/tournament/quiet_history.h"
#include "search/tournament/tournament_node.h"

namespace tournament {

/// The moves of a node outside quiescence, best first: the hash move; captures and promotions that lose no material, by
/// what they gain; the killers; the move that has refuted the last move elsewhere (after Uiterwijk, The countermove
/// heuristic, 1992); quiet moves by their history; captures that lose material.
class MoveOrder {
  public:
    explicit MoveOrder(TournamentNode& node) : node_(node), history_(node) {}

    /// Sets `move` to the next one, INVALID after the last. Mate and stalemate end the node instead.
    [[nodiscard]] NodeAnswer Next(Move& move);
    /// From here on moves that neither capture nor promote nor check are left out.
    void LeaveOutQuietMoves() { leaves_out_quiet_moves_ = true; }
    /// What has become of a quiet move elsewhere.
    [[nodiscard]] int HistoryOf(Move quiet_move) const noexcept { return history_.Of(quiet_move); }

  private:
    enum class Stage { hash_move, list, pick };

    [[nodiscard]] NodeAnswer List();
    [[nodiscard]] Move CounterMove() const;
    [[nodiscard]] std::int32_t CaptureScore(Move move) const;
    [[nodiscard]] Move Pick();

    TournamentNode& node_;
    QuietHistory history_;
    Stage stage_ = Stage::hash_move;
    bool leaves_out_quiet_moves_ = false;
    MovePicker picker_;
};

/// The best move of the node has cut, after those of `searched` have not: it gains, they lose as much.
void LearnFromCut(TournamentNode& node, std::span<const Move> searched);

}  // namespace tournament
