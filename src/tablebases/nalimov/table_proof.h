#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "chess/board.h"
#include "tablebases/nalimov/table_name.h"

/// What is known of a position against what is known of those that its moves lead to: a reader that takes the wrong
/// values can't agree with itself.
namespace NalimovTablebases {

/// Says what positions are worth.
class ScoreLookup {
  public:
    ScoreLookup() = default;
    virtual ~ScoreLookup() = default;
    ScoreLookup(const ScoreLookup&) = delete;
    ScoreLookup& operator=(const ScoreLookup&) = delete;

    /// 0 a draw, else score_of_mate - |score| plies to the mate, for the side to move; nothing for a position that is
    /// not known. It has no castling right and no en passant square.
    [[nodiscard]] virtual std::optional<int> ScoreOf(const BOARD& board) noexcept = 0;
};

enum class Agreement {
    proved,      ///< all moves lead to known positions, and the best of them gives this score
    possible,    ///< some don't, and the others give nothing better
    impossible,  ///< the score can't be right
};

/// Compares `score` with what the moves of `board` lead to. The board is the same afterwards.
[[nodiscard]] Agreement CompareWithMoves(BOARD& board, int score, ScoreLookup& lookup) noexcept;

/// Positions of one material with its men on squares of chance, the same in every run. The first side is White.
class RandomPositions {
  public:
    RandomPositions(const Material& material, Side mover) noexcept;

    /// Loads the next legal position.
    void Next(BOARD& board) noexcept;

  private:
    [[nodiscard]] Square AnySquare() noexcept;

    std::array<std::int8_t, most_men> men_{};  ///< as a board codes them
    std::size_t count_ = 0;
    Colour mover_;
    std::uint64_t state_ = 1;
};

}  // namespace NalimovTablebases
