#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

#include "chess/board.h"
#include "chess/move.h"
#include "frame/base/zeroed_pages.h"
#include "search/settings/tournament_settings.h"
#include "search/tables/score.h"

namespace tournament {

/// How well a move has done, from -largest to largest. It moves the less the farther out it is, so that it never leaves
/// its range and newer results count for more.
class HistoryScore {
  public:
    static constexpr int largest = 16384;

    void Learn(int bonus) noexcept {
        value_ = static_cast<std::int16_t>(value_ + bonus - value_ * std::abs(bonus) / largest);
    }
    [[nodiscard]] int value() const noexcept { return value_; }

  private:
    std::int16_t value_ = 0;
};

/// Side, piece and target square of a move, as one number.
inline constexpr std::size_t piece_square_count = 12 * 64;
[[nodiscard]] inline std::size_t PieceSquare(Move move, std::uint32_t side) {
    return (static_cast<std::size_t>(MovingPiece(move) - 1) + 6U * side) * 64 + ((move >> 6) & 63U);
}

/// What the tournament search keeps besides the SearchBoard: from search to search its knowledge of moves, and for each
/// ply what a node leaves to those below it.
struct TournamentState {
    using PieceSquareHistory = std::array<HistoryScore, piece_square_count>;
    struct Tables {
        std::array<std::array<HistoryScore, 4096>, 2> by_squares;            ///< by side, then from and to square
        std::array<PieceSquareHistory, piece_square_count> continuation[2];  ///< after the move one and two plies ago
        std::array<Move, piece_square_count> counter_move;
        std::array<std::array<HistoryScore, 8>, piece_square_count>
            by_capture;  ///< by the move, then the piece it takes
    };

    /// Throws std::bad_alloc.
    TournamentState();

    [[nodiscard]] Tables& tables() noexcept { return *static_cast<Tables*>(pages_.data()); }
    /// Takes new settings over, and works out the table of reductions.
    void Prepare(const TournamentSettings& new_settings);
    /// Forgets what an aborted search has left behind; what is known of moves stays.
    void NewSearch() noexcept { excluded.fill(INVALID); }
    void Clear() noexcept { pages_.Clear(); }
    /// In 1/64 ply; `moves` counts from 1.
    [[nodiscard]] Distance Reduction(int plies, int moves) const noexcept {
        return reductions_[static_cast<std::size_t>(std::min(plies, 63))]
                          [static_cast<std::size_t>(std::min(moves, 63))];
    }

    TournamentSettings settings;
    std::array<Move, max_frames> excluded{};  ///< the move that the search at a ply is to do without
    std::array<Score, max_frames> static_score{};

  private:
    ZeroedPages pages_;
    std::array<std::array<std::int16_t, 64>, 64> reductions_{};
};

}  // namespace tournament
