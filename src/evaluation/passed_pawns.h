#pragma once

#include "chess/board.h"
#include "evaluation/evaluation_context.h"
#include "evaluation/score_pair.h"

/// Finds the passed pawns of both sides. Those of a known structure come from the pawn hash table.
void find_passed_pawns(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

/// Sets `front_passed` and `passed_rank` of both sides from `passed`.
void find_foremost_passed_pawns(EVALUATION_CONTEXT& context) noexcept;

/// The foremost passed pawn of every file, White minus Black. It runs before everything else, on restored pawn facts
/// too. Sets `front_passed` and `passed_rank`.
[[nodiscard]] SCORE_PAIR passed_pawns(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
/// The same in an ending, in centipawns: rooks and kings count too. Adds nothing yet.
[[nodiscard]] int passed_pawns_ending(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

/// Which side's unstoppable pawn has to be looked at again when all attacks are known.
enum class RunnerCheck { none, white_pawns, black_pawns };

struct UNSTOPPABLE_BONUS {
    int score = 0;  ///< centipawns, White minus Black
    RunnerCheck check = RunnerCheck::none;
};

/// A pawn that a side without pieces can't catch. Finds none yet.
[[nodiscard]] UNSTOPPABLE_BONUS unstoppable_bonus(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
/// The second look that `unstoppable_bonus` asked for, White minus Black. Needs the `attacks` of both sides. Finds
/// nothing yet.
[[nodiscard]] int checked_unstoppable_bonus(const EVALUATION_CONTEXT& context, const BOARD& board,
                                            RunnerCheck check) noexcept;
