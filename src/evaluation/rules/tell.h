#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "chess/bits.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/score_pair.h"
#include "evaluation/rules/rule.h"

/// Every rule of a term is counted through `tell`, which says its name, its side and the squares that it is about:
///
///     sum += tell<Us>(context, Rule::rook_on_seventh, Bit(rook.square), rook_on_seventh<Us>(context, board, rook));
///
/// The terms are templates on their context. In the EVALUATION_CONTEXT of the engine `tell` gives back the value and
/// nothing else, so that a rule costs what it computes. A TRACED_CONTEXT remembers what was told.

/// What changed in the counters of both sides, in points. Arrays of two are by Colour.
struct COUNTER_POINTS {
    std::array<WingCounters, 2> pressure = {};
    std::array<WingCounters, 2> cover = {};
    std::int16_t activity = 0;  ///< White minus Black
    bool operator==(const COUNTER_POINTS&) const = default;
};

/// What a rule does to the score. Most add to it; some endings turn the sum into something else.
enum class Effect : std::uint8_t { adds, scales, limits, sets };

/// The part of the score that a rule leaves, such as 5 of 8.
struct SHARE {
    int part, whole;
    [[nodiscard]] constexpr int of(int score) const noexcept { return part * score / whole; }
};

/// What one rule gave.
struct TOLD_RULE {
    Rule rule;
    Colour side;       ///< whose view the values are told in
    Bitboard squares;  ///< 0 for the whole board
    /// Centipawns. They are plain numbers: a correction may be greater than what it corrects. A rule that does not add
    /// tells the score as it leaves it.
    int positional, reckless;
    COUNTER_POINTS points;  ///< what the rule added to the counters
    Effect effect = Effect::adds;
    SHARE share = {1, 1};  ///< of a rule that scales
};

/// A context that remembers the rules. One that gave nothing and changed no counter is left out.
struct TRACED_CONTEXT : EVALUATION_CONTEXT {
    std::vector<TOLD_RULE> told;

    void Tell(Colour side, Rule rule, Bitboard squares, SCORE_PAIR pair) {
        Tell({rule, side, squares, pair.positional(), pair.reckless(), PointsSinceLast()});
    }
    /// In an ending both values are one.
    void Tell(Colour side, Rule rule, Bitboard squares, int value) {
        Tell({rule, side, squares, value, value, PointsSinceLast()});
    }
    void TellScore(Colour side, Rule rule, Bitboard squares, Effect effect, int score, SHARE share = {1, 1}) {
        told.push_back({rule, side, squares, score, score, {}, effect, share});
    }
    /// Counters that change between two rules belong to none of them.
    void ForgetPoints() { counters_ = Counters(); }

  private:
    void Tell(const TOLD_RULE& rule) {
        if (rule.positional != 0 || rule.reckless != 0 || rule.points != COUNTER_POINTS{}) told.push_back(rule);
    }
    /// Those of the pawn structure, which are kept apart, added in.
    [[nodiscard]] COUNTER_POINTS Counters() const;
    COUNTER_POINTS PointsSinceLast();

    COUNTER_POINTS counters_;
};

template <Colour Us, class Value>
Value tell(const EVALUATION_CONTEXT& /*context*/, Rule /*rule*/, Bitboard /*squares*/, Value value) noexcept {
    return value;
}
template <Colour Us, class Value>
Value tell(TRACED_CONTEXT& context, Rule rule, Bitboard squares, Value value) {
    context.Tell(Us, rule, squares, value);
    return value;
}

/// For a side that is known when it runs.
template <class Value>
Value tell(const EVALUATION_CONTEXT& /*context*/, Colour /*side*/, Rule /*rule*/, Bitboard /*squares*/,
           Value value) noexcept {
    return value;
}
template <class Value>
Value tell(TRACED_CONTEXT& context, Colour side, Rule rule, Bitboard squares, Value value) {
    context.Tell(side, rule, squares, value);
    return value;
}

/// Rules of endings that do not add to the score of `side`. Each gives the score as it leaves it.
inline int tell_scaled(const EVALUATION_CONTEXT& /*context*/, Colour /*side*/, Rule /*rule*/, Bitboard /*squares*/,
                       SHARE share, int score) noexcept {
    return share.of(score);
}
inline int tell_scaled(TRACED_CONTEXT& context, Colour side, Rule rule, Bitboard squares, SHARE share, int score) {
    if (share.part != share.whole) {
        context.TellScore(side, rule, squares, Effect::scales, share.of(score), share);
    }
    return share.of(score);
}
inline int tell_limited(const EVALUATION_CONTEXT& /*context*/, Colour /*side*/, Rule /*rule*/, int /*score*/,
                        int limited) noexcept {
    return limited;
}
inline int tell_limited(TRACED_CONTEXT& context, Colour side, Rule rule, int score, int limited) {
    if (score != limited) context.TellScore(side, rule, 0, Effect::limits, limited);
    return limited;
}
inline int tell_set(const EVALUATION_CONTEXT& /*context*/, Colour /*side*/, Rule /*rule*/, Bitboard /*squares*/,
                    int score) noexcept {
    return score;
}
inline int tell_set(TRACED_CONTEXT& context, Colour side, Rule rule, Bitboard squares, int score) {
    context.TellScore(side, rule, squares, Effect::sets, score);
    return score;
}

/// Of two ways that were tried, the one not taken is forgotten.
inline std::size_t told_so_far(const EVALUATION_CONTEXT& /*context*/) noexcept { return 0; }
inline std::size_t told_so_far(const TRACED_CONTEXT& context) noexcept { return context.told.size(); }
inline void forget_told(const EVALUATION_CONTEXT& /*context*/, std::size_t /*first*/, std::size_t /*last*/) noexcept {}
inline void forget_told(TRACED_CONTEXT& context, std::size_t first, std::size_t last) {
    const auto begin = context.told.begin();
    context.told.erase(begin + static_cast<std::ptrdiff_t>(first), begin + static_cast<std::ptrdiff_t>(last));
}
