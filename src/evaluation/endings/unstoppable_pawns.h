#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"

/// Passed pawns that a lone king can't catch, in centipawns. All read `front_passed`.

/// Which side's pawns have to be looked at again when all attacks are known.
enum class RunnerCheck { none, white_pawns, black_pawns };

struct UNSTOPPABLE_BONUS {
    int score = 0;  ///< centipawns, White minus Black
    RunnerCheck check = RunnerCheck::none;
};

/// A pawn that a side without pieces can't catch.
template <class Context>
[[nodiscard]] UNSTOPPABLE_BONUS unstoppable_bonus(Context& context, const BOARD& board) noexcept;
/// The second look that `unstoppable_bonus` asked for, White minus Black: whether the side with pieces stops all pawns
/// that `check` names, so that its own race counts. Needs its `attacks`.
template <class Context>
[[nodiscard]] int checked_unstoppable_bonus(Context& context, const BOARD& board, RunnerCheck check) noexcept;

/// What the foremost passed pawns of `Us` are worth that would win if they alone stood on the board with the kings.
/// 400 at most.
template <Colour Us>
[[nodiscard]] int race_value(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

/// Who wins the race of the passed pawns in an ending of kings and pawns, White minus Black.
template <class Context>
[[nodiscard]] int race(Context& context, const BOARD& board) noexcept;
