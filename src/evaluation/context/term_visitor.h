#pragma once

#include <cstdint>

#include "chess/bits.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/score_pair.h"

/// The terms of the opening and middle game, in the order in which they are computed. Each reads what those before it
/// left in the counters.
enum class Term : std::uint8_t {
    passed_pawns,
    material_imbalance,
    bishop_pair,
    // What the pawn hash table keeps.
    pawn_squares,
    backward_pawns,
    isolated_pawns,
    isolated_queen_pawn,
    duo_and_defended_pawns,
    doubled_pawns,
    connected_passed_pawns,
    pawn_chains,
    pawn_majorities,
    centre_squares,
    centre_patterns,
    pawns_alone,  ///< the sum of these
    // Pawns with pieces.
    majority_and_king,
    blocked_centre_pawns,
    isolated_queen_pawn_and_pieces,
    passed_pawns_and_pieces,
    // Pieces.
    knights,
    bishops,
    rooks,
    queens,
    patterns,
    space,
    activity,
    king_safety,
    knight_mobility,
    pawn_balance,
};

/// The values of a term for both sides. In braces White's is computed first.
struct SIDE_PAIRS {
    SCORE_PAIR of_white, of_black;
    [[nodiscard]] SCORE_PAIR sum() const noexcept { return of_white - of_black; }
};

/// Who walks over the terms hands in a visitor, which is told of each as soon as it is known. This one adds them up,
/// White minus Black; the other one prints them (tools/eval_trace).
class TermSum {
  public:
    void OfSides(Term /*term*/, const SIDE_PAIRS& pairs) noexcept { sum_ += pairs.sum(); }
    /// White minus Black.
    void OfBoth(Term /*term*/, SCORE_PAIR pair) noexcept { sum_ += pair; }
    /// A part of `pawns_alone`, which follows.
    void OfPawnsAlone(Term /*term*/, const SIDE_PAIRS& /*pairs*/) noexcept {}

    [[nodiscard]] SCORE_PAIR sum() const noexcept { return sum_; }

  private:
    SCORE_PAIR sum_;
};
