#pragma once

#include "evaluation/context/score_pair.h"
#include "evaluation/rules/term.h"

/// The values of a term for both sides. In braces White's is computed first.
template <class Value>
struct SIDES {
    Value of_white, of_black;
    [[nodiscard]] Value sum() const noexcept { return of_white - of_black; }
};
using SIDE_PAIRS = SIDES<SCORE_PAIR>;
using SIDE_VALUES = SIDES<int>;  ///< of an ending

/// Who walks over the terms hands in a visitor, which is told of each as soon as it is known. This one adds them up,
/// White minus Black; the other one writes them down (evaluation_trace). A term may count several times.
template <class Value>
class TermSum {
  public:
    void OfSides(Term /*term*/, const SIDES<Value>& values) noexcept { sum_ += values.sum(); }
    void OfSides(Term /*term*/, const SIDES<Value>& values, int times) noexcept { sum_ += times * values.sum(); }
    /// White minus Black.
    void OfBoth(Term /*term*/, Value value) noexcept { sum_ += value; }
    void OfBoth(Term /*term*/, Value value, int times) noexcept { sum_ += times * value; }
    /// A part of `pawns_alone`, which follows.
    void OfPawnsAlone(Term /*term*/, const SIDES<Value>& /*values*/, int /*times*/ = 1) noexcept {}

    [[nodiscard]] Value sum() const noexcept { return sum_; }

  private:
    Value sum_{};
};
