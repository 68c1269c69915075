#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "search/tournament/tournament_node.h"

namespace tournament {

/// How well the quiet moves of a node have done elsewhere: by their squares, and as answers to the move before and to
/// the one before that. After Schaeffer, The history heuristic and alpha-beta search enhancements in practice (1989);
/// the histories of answers are those of chessprogramming.org, History Heuristic (countermoves and follow-up moves).
/// Finds the places of the node once, since so many moves are asked for.
class QuietHistory {
  public:
    explicit QuietHistory(const TournamentNode& node);

    /// From -3 to 3 times HistoryScore::largest.
    [[nodiscard]] int Of(Move move) const noexcept;
    void Learn(Move move, int bonus) const noexcept;

  private:
    using Tables = TournamentState::Tables;

    std::uint32_t side_;
    decltype(Tables::by_squares)::value_type& by_squares_;
    std::array<TournamentState::PieceSquareHistory*, std::extent_v<decltype(Tables::continuation)>> as_answer_{};
};

}  // namespace tournament
