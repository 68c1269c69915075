#include "search/tournament/quiet_history.h"

namespace tournament {

namespace {

constexpr unsigned both_squares = 0xFFF;

}  // namespace

QuietHistory::QuietHistory(const TournamentNode& node)
    : side_(node.board().side_to_move), by_squares_(node.state.tables().by_squares[side_]) {
    if (node.rules().continuation_history == 0) return;
    for (std::uint32_t plies = 1; plies <= as_answer_.size() && plies <= node.ply; ++plies) {
        const Move before = node.search.moves_played[node.ply + 1 - plies];
        if (before == INVALID) continue;  // a pass
        const std::uint32_t its_side = plies % 2 == 0 ? side_ : side_ ^ 1U;
        as_answer_[plies - 1] = &node.state.tables().continuation[plies - 1][PieceSquare(before, its_side)];
    }
}

int QuietHistory::Of(Move move) const noexcept {
    int sum = by_squares_[move & both_squares].value();
    const std::size_t place = PieceSquare(move, side_);
    for (const auto* const answers : as_answer_) {
        if (answers != nullptr) sum += (*answers)[place].value();
    }
    return sum;
}

void QuietHistory::Learn(Move move, int bonus) const noexcept {
    by_squares_[move & both_squares].Learn(bonus);
    const std::size_t place = PieceSquare(move, side_);
    for (auto* const answers : as_answer_) {
        if (answers != nullptr) (*answers)[place].Learn(bonus);
    }
}

}  // namespace tournament
