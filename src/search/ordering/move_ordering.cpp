// The groups of a list, in the order in which they are tried, with what the defaults put there:
//
//     promising tactical moves and killers   Qxa7+  killer 1  killer 2
//     (the best history moves)               not by default
//     the remaining tactical moves           Rxa7
//     history moves                          Nf3
//     the rest                               Kh1, by the squares
//
// One pass brings the tactical moves to the front with their scores; each further group is split off when it is needed.
// Words are unique, so that any way of sorting gives the same order.

#include "search/ordering/move_ordering.h"

#include <algorithm>
#include <cstddef>

#include "search/ordering/hopeless_margin.h"
#include "search/ordering/static_order.h"
#include "search/ordering/tactical_scores.h"
#include "search/state/sort_score.h"

namespace {

/// A node that is likely to cut, and has no hash move to do it, sorts a list of this size or more stage by stage.
constexpr std::ptrdiff_t staged_list_size = 7;

/// The word that is `move`, whatever its score; `end` if there is none.
Move* Find(Move* begin, Move* end, Move move) {
    return std::find_if(begin, end, [move](Move word) { return (word & move_bits) == move; });
}

void TakeOutHashMove(Node& node) {
    if (node.hash_move == INVALID) return;
    Move* const found = Find(node.moves, node.moves_end, node.hash_move);
    if (found != node.moves_end) std::iter_swap(found, --node.moves_end);
}

/// Brings the words that `belongs` takes to the front, where it may change them; gives their end. Works like
/// std::partition.
template <class Belongs>
Move* BringForward(Move* begin, Move* end, Belongs belongs) {
    for (Move* at = begin; at != end; ++at) {
        if (belongs(*at)) std::iter_swap(begin++, at);
    }
    return begin;
}

/// Takes the move at `from` to `to`, which lies before it; the moves from there on give way.
void Insert(Move* to, Move* from) {
    const Move word = *from;
    std::move_backward(to, from, from + 1);
    *to = word;
}

/// Moves each word to its place among those `gap` apart before it.
void InsertionSort(Move* begin, Move* end, std::ptrdiff_t gap) {
    for (Move* at = begin + gap; at < end; ++at) {
        const Move word = *at;
        Move* hole = at;
        for (; hole - begin >= gap && hole[-gap] < word; hole -= gap) *hole = hole[-gap];
        *hole = word;
    }
}

/// The groups are small; what is longer is brought into rough order first.
void SortLargestFirst(Move* begin, Move* end) {
    constexpr std::ptrdiff_t small_group = 6;
    if (end - begin > small_group) InsertionSort(begin, end, 3);
    InsertionSort(begin, end, 1);
}

/// Scores the tactical moves and brings them to the front of the list.
void SplitOffTacticals(MoveSortState& state, const Node& node) {
    state.tacticals_end = BringForward(node.moves, node.moves_end, [&node](Move& word) {
        if (!IsTactical(word)) return false;
        word = WithSortScore(word, TacticalScore(node, word));
        return true;
    });
}

/// The end of the promising moves, which are in order then.
Move* SortPromising(const MoveSortState& state, const Node& node) {
    Move* const end = BringForward(node.moves, state.tacticals_end, [&node](Move word) {
        return SortScore(word) >= node.settings().promising_move_minimum_sorting_value;
    });
    SortLargestFirst(node.moves, end);
    return end;
}

/// Where a killer stands in the list; its end if nowhere.
Move* FindKiller(const MoveSortState& state, const Node& node, Move killer) {
    if (killer == INVALID || killer == node.hash_move) return node.moves_end;
    if (!IsTactical(killer)) return Find(state.tacticals_end, node.moves_end, killer);
    Move* const found = Find(node.moves, state.tacticals_end, killer);
    return found == state.tacticals_end ? node.moves_end : found;
}

/// Makes the move at `found` a member of the first group.
void Join(MoveSortState& state, Move*& group_end, Move* place, Move* found) {
    if (found >= state.tacticals_end) ++state.tacticals_end;
    ++group_end;
    Insert(place, found);
}

/// Puts the killers into the first group, which ends at `group_end`; gives its new end. A killer that is promising
/// itself never loses its place there.
Move* PlaceKillers(MoveSortState& state, const Node& node, Move* group_end) {
    const KillerPair& killers = node.search.killers[node.ply];
    if (Move* const first = FindKiller(state, node, killers.first); first != node.moves_end) {
        const bool is_promising = first < group_end;
        const bool goes_first = is_promising && node.settings().if_killer1_is_promising_tactical_move_then_search_first;
        const std::ptrdiff_t before = goes_first ? 0 : node.settings().max_promising_tacticals_before_killer_one;
        if (!is_promising) {
            Join(state, group_end, node.moves + std::min(before, group_end - node.moves), first);
        } else if (before < first - node.moves) {
            Insert(node.moves + before, first);
        }
    }
    if (Move* const second = FindKiller(state, node, killers.second); second != node.moves_end && second >= group_end) {
        Join(state, group_end, group_end, second);
    }
    return group_end;
}

/// Gives the end of the first group.
Move* MakeFirstGroup(MoveSortState& state, Node& node) {
    TakeOutHashMove(node);
    state.next = node.moves;
    SplitOffTacticals(state, node);
    Move* const promising_end = SortPromising(state, node);
    return node.settings().enable_killer_heuristic_for_move_ordering ? PlaceKillers(state, node, promising_end)
                                                                     : promising_end;
}

/// Splits the moves that history knows off the quiet ones, once for a node.
void ReadHistory(MoveSortState& state, const Node& node) {
    if (state.history_end != nullptr) return;
    const Colour side = node.board().mover();
    state.history_end = BringForward(state.tacticals_end, node.moves_end, [&node, side](Move& word) {
        const std::int32_t score = node.search.history.Score(word, side, node.ply);
        if (score == 0) return false;
        word = WithSortScore(word, score);
        return true;
    });
}

/// Whether the best history moves go before the tactical moves that do not promise much: material must be near enough
/// to what a quiet move may bring to beta.
bool HistoryGoesFirst(const Node& node) {
    if (!node.settings().enable_best_history_moves_before_remaining_tacticals ||
        node.settings().max_history_moves_before_remaining_tacticals == 0 ||
        (node.settings().search_all_tacticals_first_if_playing_for_mate && node.is_searching_for_mate())) {
        return false;
    }
    const Score missing =
        node.beta - node.material_balance() - hopeless_margin[static_cast<std::size_t>(node.position_class)];
    const Score most = node.settings().max_material_margin_to_search_history_moves_before_tacticals;
    return -most <= missing && missing <= most;
}

/// Moves the best history moves in front of the remaining tactical moves; gives their end. Their number is limited by
/// the setting that limits the promising moves before the first killer: docs/oddities.md, best history moves.
Move* MakeBestHistory(MoveSortState& state, const Node& node) {
    if (!HistoryGoesFirst(node)) return state.next;
    ReadHistory(state, node);
    SortLargestFirst(state.tacticals_end, state.history_end);
    state.history_is_sorted = true;
    const std::ptrdiff_t count = std::min<std::ptrdiff_t>(state.history_end - state.tacticals_end,
                                                          node.settings().max_promising_tacticals_before_killer_one);
    std::rotate(state.next, state.tacticals_end, state.tacticals_end + count);
    state.tacticals_end += count;
    return state.next + count;
}

Move* MakeTacticals(const MoveSortState& state) {
    SortLargestFirst(state.next, state.tacticals_end);
    return state.tacticals_end;
}

Move* MakeRemainingHistory(MoveSortState& state, const Node& node) {
    ReadHistory(state, node);
    if (!state.history_is_sorted) SortLargestFirst(state.next, state.history_end);
    return state.history_end;
}

/// Scores what is left, without sorting it; whether it did.
bool ScoreRest(const MoveSortState& state, const Node& node) {
    const StaticMoveOrder order(node);
    if (!order.Exists()) return false;
    std::transform(state.next, node.moves_end, state.next,
                   [&order](Move word) { return WithSortScore(word, order.ScoreOf(word)); });
    return true;
}

/// Whether all moves from this stage on are sure to be skipped: futility spares nothing but captures, promotions and
/// checks, which lie before.
bool IsFutileFromHereOn(const MoveSortState& state, const Node& node) {
    return node.is_futile && state.stage == SortStage::remaining_history;
}

/// Leaves the quiet moves out. The noise goes on as if they had been scored, so that no other node is ordered
/// differently.
void PassOverQuietMoves(MoveSortState& state, const Node& node) {
    state.stage = SortStage::done;
    if (node.settings().randomize_move_ordering_of_remaining_moves == 0) return;
    const Colour side = node.board().mover();
    const auto is_unknown = [&node, side](Move word) { return node.search.history.Score(word, side, node.ply) == 0; };
    const auto unknown = state.history_end != nullptr ? node.moves_end - state.history_end
                                                      : std::count_if(state.tacticals_end, node.moves_end, is_unknown);
    node.search.noise.PassOver(static_cast<std::uint32_t>(unknown));
}

/// Prepares the moves of the next stage; they begin at state.next. Gives their end.
Move* MakeStage(MoveSortState& state, Node& node) {
    switch (state.stage) {
        case SortStage::first_group:
            return MakeFirstGroup(state, node);
        case SortStage::best_history:
            return MakeBestHistory(state, node);
        case SortStage::tacticals:
            return MakeTacticals(state);
        case SortStage::remaining_history:
            return MakeRemainingHistory(state, node);
        default:
            return node.moves_end;
    }
}

void GoOn(MoveSortState& state, Move* delivered) {
    state.next = delivered;
    state.stage = static_cast<SortStage>(static_cast<int>(state.stage) + 1);
}

/// A node that will hardly cut is sorted at once. So is one whose hash move failed to cut.
bool IsSortedAtOnce(const Node& node) {
    return node.type == NodeType::all || node.hash_move != INVALID || node.moves_end - node.moves < staged_list_size;
}

MoveBatch SortAtOnce(MoveSortState& state, Node& node) {
    while (state.stage != SortStage::rest) {
        if (IsFutileFromHereOn(state, node)) {
            PassOverQuietMoves(state, node);
            return {.begin = node.moves, .end = state.next, .is_ordered = true, .is_last = true};
        }
        GoOn(state, MakeStage(state, node));
    }
    if (ScoreRest(state, node)) SortLargestFirst(state.next, node.moves_end);
    GoOn(state, node.moves_end);
    return {.begin = node.moves, .end = node.moves_end, .is_ordered = true, .is_last = true};
}

}  // namespace

MoveBatch StagedMoveSorter(MoveSortState& state, Node& node) noexcept {
    if (state.stage == SortStage::first_group && IsSortedAtOnce(node)) return SortAtOnce(state, node);
    while (state.stage != SortStage::rest) {
        if (IsFutileFromHereOn(state, node)) {
            PassOverQuietMoves(state, node);
            return {.begin = state.next, .end = state.next, .is_ordered = true, .is_last = true};
        }
        Move* const end = MakeStage(state, node);
        const MoveBatch batch{.begin = state.next, .end = end, .is_ordered = true, .is_last = false};
        GoOn(state, end);
        if (batch.begin != batch.end) return batch;
    }
    return {.begin = state.next, .end = node.moves_end, .is_ordered = !ScoreRest(state, node), .is_last = true};
}

MoveBatch SortQuiescence(Node& node) noexcept {
    TakeOutHashMove(node);
    std::transform(node.moves, node.moves_end, node.moves, [&node](Move word) {
        const Move move = word & move_bits;
        return WithSortScore(move, QuiescenceScore(node, move));
    });
    return {.begin = node.moves, .end = node.moves_end, .is_ordered = false, .is_last = true};
}
