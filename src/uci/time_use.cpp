// The clock of the interface gives two numbers: a hard limit that no search may exceed, and the variable limit, which
// the search stretches and shrinks by what it meets. A quiet search ends at a third of the variable limit, a usual one
// near it, and one whose score falls into a hole goes up to ten times as far, or to the hard limit.
//
// With 60 s left, 0.6 s for each move and no time control ahead: 59.89 s can be used, the variable limit is a fiftieth
// of that and most of the increment, 1.6 s, and the hard limit is a quarter and as much, 15.4 s.

#include "uci/time_use.h"

#include <algorithm>
#include <limits>

namespace VorkaUci {

namespace {

/// The rest of a game is taken for so many moves.
constexpr std::int64_t moves_to_the_end = 25;
/// A time control that is further away than this is shared out as if it stood here.
constexpr std::int64_t most_moves_to_go = 50;
/// The most that one move may take: this part of what is left for the rest of the game, or so many even shares where a
/// time control is ahead.
constexpr std::int64_t part_for_one_move = 4;
constexpr std::int64_t shares_for_one_move = 4;
/// The part of the increment that a usual search takes, and the most that it takes for it of what is left: a clock that
/// is nearly empty is filled first.
constexpr std::int64_t increment_tenths = 7;
constexpr std::int64_t part_for_increment = 20;
/// What no move uses, in milliseconds: a busy machine stops a program for so long. With less than this on the clock the
/// engine shares out a small part of it, which means an answer at once, until increments have filled it.
constexpr std::int64_t kept_back = 100;
constexpr std::int64_t part_below_it = 8;
/// The last move before a time control may take nearly all.
constexpr std::int64_t tenths_for_last_move = 9;

/// How often the search looks at the clock and for input: twenty times within the hard limit, but at least at these
/// times.
constexpr std::int64_t longest_poll_interval = 10;
constexpr std::int64_t shortest_poll_interval = 1;
constexpr std::int64_t polls_in_hard_limit = 20;

std::int32_t Milliseconds(std::int64_t value) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, 1, std::numeric_limits<std::int32_t>::max()));
}

struct Budget {
    std::int64_t hard;
    std::int64_t variable;
};

/// `left` and `increment` are not negative.
Budget BudgetOf(std::int64_t left, std::int64_t increment, const std::optional<std::int64_t>& moves_to_go) {
    const std::int64_t extra = std::min(increment * increment_tenths / 10, left / part_for_increment);
    if (moves_to_go) {
        const std::int64_t moves = std::clamp<std::int64_t>(*moves_to_go, 1, most_moves_to_go);
        const std::int64_t shares = left / moves * std::min(moves, shares_for_one_move);
        const std::int64_t hard = std::min(shares + extra, left * tenths_for_last_move / 10);
        return {.hard = hard, .variable = left / (2 * moves) + extra};
    }
    const std::int64_t hard = std::min(left / part_for_one_move + extra, left * tenths_for_last_move / 10);
    return {.hard = hard, .variable = left / (2 * moves_to_the_end) + extra};
}

void SetTime(SearchLimits& limits, const GoCommand& go, Colour side, std::int64_t overhead) {
    constexpr std::int64_t longest = std::numeric_limits<std::int32_t>::max();
    // Where the side on move has no clock, it thinks as if the other's were its own.
    const std::size_t clock = go.time[side] ? side : Opponent(side);
    if (go.time[clock]) {
        const std::int64_t left = std::clamp<std::int64_t>(*go.time[clock], 0, longest);
        const std::int64_t increment = std::clamp<std::int64_t>(go.increment[clock].value_or(0), 0, longest);
        const std::int64_t arriving = left - overhead;
        const std::int64_t usable = std::max(arriving - kept_back, arriving / part_below_it);
        const Budget budget = BudgetOf(std::max<std::int64_t>(usable, 1), increment, go.moves_to_go);
        limits.max_time_limit = Milliseconds(budget.hard);
        limits.variable_time_limit = Milliseconds(std::min(budget.variable, budget.hard));
    }
    if (go.move_time) {
        const std::int32_t limit = Milliseconds(std::clamp<std::int64_t>(*go.move_time, 0, longest) - overhead);
        limits.max_time_limit = limits.max_time_limit == 0 ? limit : std::min(limits.max_time_limit, limit);
    }
}

constexpr std::int64_t deepest = std::numeric_limits<std::int16_t>::max();

/// The iteration that has refuted a mate in so many moves: the last of its half moves, and two more, for lines that the
/// search has looked at less deeply.
std::int64_t DepthOfMate(std::int64_t moves) {
    constexpr std::int64_t more = 2;
    return 2 * std::clamp<std::int64_t>(moves, 1, deepest) - 1 + more;
}

}  // namespace

SearchLimits LimitsFor(const GoCommand& go, Colour side, std::int64_t overhead) {
    SearchLimits limits;
    if (go.ponder) {
        limits.kind = SearchKind::pondering;
    } else if (go.infinite || !go.HasAnEnd()) {
        limits.kind = SearchKind::analyze;
    }
    if (go.depth || go.mate) {
        const std::int64_t depth = std::min(go.depth.value_or(deepest), go.mate ? DepthOfMate(*go.mate) : deepest);
        limits.max_depth = static_cast<std::int32_t>(std::clamp<std::int64_t>(depth, 1, deepest));
    }
    if (go.nodes) limits.max_nodes = static_cast<std::uint64_t>(std::max<std::int64_t>(*go.nodes, 1));
    SetTime(limits, go, side, overhead);
    limits.poll_interval = static_cast<std::int32_t>(longest_poll_interval);
    if (limits.max_time_limit != 0) {
        limits.poll_interval = static_cast<std::int32_t>(std::clamp<std::int64_t>(
            limits.max_time_limit / polls_in_hard_limit, shortest_poll_interval, longest_poll_interval));
    }
    return limits;
}

}  // namespace VorkaUci
