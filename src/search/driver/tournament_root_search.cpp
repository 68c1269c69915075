#include "search/driver/tournament_root_search.h"

#include <algorithm>
#include <cstdint>

#include "search/driver/aspiration_search.h"
#include "search/tournament/search_tournament_node.h"

namespace {

/// The first iterations say too little about the moves: until then they keep their order, and none is reduced.
constexpr int first_telling_iteration = 3;

}  // namespace

void TournamentRootSearch::NewSearch() {
    state_.Prepare(settings_);
    state_.NewSearch();
}

void TournamentRootSearch::OrderMoves(std::span<RootMoveRecord> moves, std::size_t lines, int depth) const {
    if (rules().root_order == 0 || depth < first_telling_iteration) return;
    const auto more_nodes = [](const RootMoveRecord& a, const RootMoveRecord& b) { return a.nodes > b.nodes; };
    std::stable_sort(moves.begin() + static_cast<std::ptrdiff_t>(lines), moves.end(), more_nodes);
    const auto percent = static_cast<std::uint64_t>(rules().root_memory);
    for (RootMoveRecord& record : moves) record.nodes = record.nodes * percent / 100;
}

Distance TournamentRootSearch::Reduction(int place, int depth) const {
    if (rules().late_move_reduction == 0 || depth < first_telling_iteration || place < rules().root_full_moves) {
        return 0;
    }
    return state_.Reduction(depth - 1, place) * rules().root_reduction / ONE_PLY;
}

Score TournamentRootSearch::FindScore(const BoundSearchTask& task, SearchClock& clock, FailState& fail_state,
                                      const BoundQuestion& ask) const {
    return AspirationSearch(task, rules().aspiration_window, clock, fail_state, ask);
}

/// The more of the nodes went to the best move, the less time: the others were refuted cheaply.
void TournamentRootSearch::NoteEffort(std::span<const RootMoveRecord> moves, SearchClock& clock) const {
    if (rules().time_by_effort == 0) return;
    std::uint64_t nodes = 0;
    for (const RootMoveRecord& record : moves) nodes += record.nodes;
    if (nodes == 0) return;
    const double share = static_cast<double>(moves.front().nodes) / static_cast<double>(nodes);
    clock.SetWant(std::max(0.0, rules().effort_time - share * rules().effort_saving) / 100);
}

/// A few plies, to know what to ponder on.
bool TournamentRootSearch::IsEnoughForOnlyMove(int depth) const { return depth >= rules().only_move_depth; }

Score TournamentRootSearch::AskBelow(SearchBoard& search, const RootQuestion& question) {
    return tournament::SearchNode(search, state_, search.move_buffer, 1 - question.test,
                                  DistanceBelow(search, question), question.expected, search.position_class[0], true);
}
