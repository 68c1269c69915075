#include "search/tournament/capture_history.h"

#include <cstddef>

#include "search/tournament/move_picker.h"

namespace tournament {

namespace {

HistoryScore& PlaceOf(const TournamentNode& node, Move move) {
    auto& by_taken_piece = node.state.tables().by_capture[PieceSquare(move, node.board().side_to_move)];
    return by_taken_piece[static_cast<std::size_t>(CapturedPiece(move))];
}

}  // namespace

std::int32_t CaptureHistoryOf(const TournamentNode& node, Move tactical_move) {
    const std::int32_t most = node.rules().capture_history * score_of_centipawn;
    return most == 0 ? 0 : PlaceOf(node, tactical_move).value() * most / HistoryScore::largest;
}

void LearnCapture(const TournamentNode& node, Move tactical_move, int bonus) {
    PlaceOf(node, tactical_move).Learn(bonus);
}

}  // namespace tournament
