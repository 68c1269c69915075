#pragma once

#include <cstdint>
#include <span>

#include "search/tournament/move_picker.h"
#include "search/tournament/tournament_node.h"

namespace tournament {

/// The moves of a node outside quiescence, best first: the hash move; captures and promotions that lose no material, by
/// what they gain; the killers; the move that has refuted the last move elsewhere (after Uiterwijk, The countermove
/// heuristic, 1992); quiet moves by their history; captures that lose material.
class MoveOrder {
  public:
    explicit MoveOrder(TournamentNode& node) : node_(node) {}

    /// Sets `move` to the next one, INVALID after the last. Mate and stalemate end the node instead.
    [[nodiscard]] NodeAnswer Next(Move& move);
    /// From here on moves that neither capture nor promote nor check are left out.
    void LeaveOutQuietMoves() { leaves_out_quiet_moves_ = true; }

  private:
    enum class Stage { hash_move, list, pick };

    [[nodiscard]] NodeAnswer List();
    [[nodiscard]] Move CounterMove() const;
    [[nodiscard]] std::int32_t CaptureScore(Move move) const;
    [[nodiscard]] Move Pick();

    TournamentNode& node_;
    Stage stage_ = Stage::hash_move;
    bool leaves_out_quiet_moves_ = false;
    MovePicker picker_;
};

/// How well a quiet move has done, from -3 to 3 times HistoryScore::largest: by its squares, and as an answer to the
/// move before and to the one before that. After Schaeffer, The history heuristic and alpha-beta search enhancements
/// in practice (1989); the histories of answers are those of chessprogramming.org, History Heuristic (countermoves and
/// follow-up moves).
[[nodiscard]] int QuietHistory(const TournamentNode& node, Move move);
/// The best move of the node is quiet and has cut, after those of `searched` have not: it gains, they lose as much.
void LearnFromCut(TournamentNode& node, std::span<const Move> searched);

}  // namespace tournament
