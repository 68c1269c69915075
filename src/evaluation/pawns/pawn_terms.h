#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/position_type.h"
#include "evaluation/context/score_pair.h"

/// The terms of the pawn structure that depend on nothing but the pawns. Each gives its value for one side, in the
/// opening and middle game as a pair, in an ending (`.._ending`) as one value, in centipawns. The pairs also change
/// `pawn_pressure` and `pawn_cover`, which the pawn hash table keeps with them.

/// Pawns by square.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR pawn_squares(Context& context, const BOARD& board, PositionType type) noexcept;
template <Colour Us, class Context>
[[nodiscard]] int pawn_squares_ending(Context& context, const BOARD& board) noexcept;

template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR backward_pawns(Context& context, const BOARD& board) noexcept;
template <Colour Us, class Context>
[[nodiscard]] int backward_pawns_ending(Context& context, const BOARD& board) noexcept;

/// Isolated pawns that are not doubled. The isolated queen pawn, d4 with nothing of the enemy's near, counts twice:
/// once as isolated and once more for itself.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR isolated_pawns(Context& context, const BOARD& board) noexcept;
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR isolated_queen_pawn(Context& context, const BOARD& board) noexcept;
template <Colour Us, class Context>
[[nodiscard]] int isolated_pawns_ending(Context& context, const BOARD& board) noexcept;

/// Pawns side by side and pawns that defend one another.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR duo_and_defended_pawns(Context& context, const BOARD& board) noexcept;
template <Colour Us, class Context>
[[nodiscard]] int duo_and_defended_pawns_ending(Context& context, const BOARD& board) noexcept;

/// Files with two or more own pawns.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR doubled_pawns(Context& context, const BOARD& board) noexcept;
template <Colour Us, class Context>
[[nodiscard]] int doubled_pawns_ending(Context& context, const BOARD& board) noexcept;

/// The foremost passed pawn of a file, defended by a pawn that is not passed.
template <Colour Us, class Context>
[[nodiscard]] int defended_passed_pawns_ending(Context& context, const BOARD& board) noexcept;

/// Passed pawns on neighbouring files.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR connected_passed_pawns(Context& context, const BOARD& board) noexcept;
template <Colour Us, class Context>
[[nodiscard]] int connected_passed_pawns_ending(Context& context, const BOARD& board) noexcept;

/// Defended pawns, by how firm their defenders stand.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR pawn_chains(Context& context, const BOARD& board) noexcept;
template <Colour Us, class Context>
[[nodiscard]] int pawn_chains_ending(Context& context, const BOARD& board) noexcept;

/// Majorities on the wings, and the pawns that push there.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR pawn_majorities(Context& context, const BOARD& board) noexcept;
template <Colour Us, class Context>
[[nodiscard]] int pawn_majorities_ending(Context& context, const BOARD& board) noexcept;

/// The control of d4, e4, d5 and e5, and more pawns on the d- and e-file.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR centre_squares(Context& context, const BOARD& board) noexcept;

/// Formations of the centre pawns.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR centre_patterns(Context& context, const BOARD& board) noexcept;
template <Colour Us, class Context>
[[nodiscard]] int centre_patterns_ending(Context& context, const BOARD& board) noexcept;
