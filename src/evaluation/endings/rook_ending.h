#pragma once

#include <optional>

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"

/// The routine of rook against rook and rooks against rooks, of equal number: a plain ending, and a rule for a
/// single pawn.
[[nodiscard]] EVALUATION_RESULT evaluate_rook_ending(EVALUATION_CONTEXT& context, const BOARD& board,
                                                     int bound) noexcept;

/// Rook and pawn against rook: the final score, for the side to move. Applies to no other material.
template <class Context>
[[nodiscard]] std::optional<int> single_rook_and_pawn(Context& context, const BOARD& board) noexcept;

/// What the rook ending adds to the score of a plain ending: pawns that tie a rook down, White minus Black.
template <class Context>
[[nodiscard]] int rooks_tied_to_pawns(Context& context, const BOARD& board) noexcept;
