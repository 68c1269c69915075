// The node of the tournament search, as a list of its steps. Like the classic one it is asked with one bound only;
// its answer bounds the score as far as it knows, which the table remembers for other questions.

#include "search/tournament/search_tournament_node.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "evaluation/evaluate.h"
#include "search/node/endgame_knowledge.h"
#include "search/node/node_entry.h"
#include "search/tournament/adaptive_null_move.h"
#include "search/tournament/check_extension.h"
#include "search/tournament/internal_reduction.h"
#include "search/tournament/late_move_reduction.h"
#include "search/tournament/move_pruning.h"
#include "search/tournament/move_search.h"
#include "search/tournament/quiescence_search.h"
#include "search/tournament/razoring.h"
#include "search/tournament/reverse_futility.h"
#include "search/tournament/singular_extension.h"
#include "search/tournament/tournament_node.h"
#include "search/tournament/tournament_order.h"

namespace tournament {

namespace {

/// The distance that a node is searched and kept with.
Distance RoundedDistance(Distance distance, const TournamentSettings& rules) {
    if (distance >= rules.horizon) return distance;
    if (rules.quiescence_levels == 0) return std::min(distance, 0);
    // Quiescence differs by whether it looks for checks, and by nothing else.
    return distance > -rules.quiescence_checks ? 0 : -rules.quiescence_checks;
}

/// Both bounds of an entry hold by themselves, each as far as its own distance reaches.
NodeAnswer ProbeHash(TournamentNode& node) {
    const TranspositionEntry* const entry = node.search.engine.tables.transposition.Find(node.board().key());
    if (entry == nullptr) return go_on;
    const Move move = entry->move();
    if (move != INVALID && node.board().IsMovePseudoLegal(move)) node.hash_move = move;
    node.position_class = entry->position_class();
    node.hash_gave_class = true;
    node.hash_lower_bound = entry->LowerBoundAt(node.ply);
    node.hash_lower_distance = entry->lower_distance;
    node.hash_upper_bound = entry->UpperBoundAt(node.ply);
    if (node.excluded != INVALID) return go_on;
    if (entry->lower_distance >= node.distance && node.hash_lower_bound >= node.beta) {
        node.search.pv[node.ply][0] = node.hash_move;
        node.search.pv[node.ply][1] = INVALID;
        return node.hash_lower_bound;
    }
    if (entry->upper_distance >= node.distance && node.hash_upper_bound < node.beta) return node.hash_upper_bound;
    return go_on;
}

/// The root has no static score: nobody asks it a question.
constexpr std::uint32_t first_ply_of_comparison = 3;

void FindStaticScore(TournamentNode& node) {
    auto& scores = node.state.static_score;
    if (!node.in_check) {
        // What a null move would look up comes from the memory while the position is evaluated.
        if (node.may_pass) node.search.engine.tables.transposition.Prefetch(node.board().HashKeyAfterNullMove());
        node.static_score = full_evaluation(node.search.evaluation, node.board(), node.position_class);
        node.estimate = node.static_score;
        if (node.rules().table_estimate != 0) {
            node.estimate = std::clamp(node.estimate, std::min(node.hash_lower_bound, node.hash_upper_bound),
                                       node.hash_upper_bound);
        }
    }
    scores[node.ply] = node.static_score;
    node.is_improving =
        !node.in_check && (node.ply < first_ply_of_comparison || node.static_score > scores[node.ply - 2]);
}

/// Searches a move, which leads to the position of `key`. Whether it cuts.
bool SearchMove(TournamentNode& node, Move move, std::uint64_t key, int history) {
    const Distance singular = move == node.hash_move ? node.hash_move_extension : 0;
    const Distance extension = singular > 0 ? singular : CheckExtension(node, move);
    const Distance reduction = LateMoveReductionOf(node, move, history);
    SearchBoard& search = node.search;
    if (extension > 0) ++search.statistics.extended_moves;
    if (reduction > 0) ++search.statistics.reduced_moves;
    const NodeType type = node.moves_tried == 1 ? -node.type : NodeType::cut;
    const Distance distance = node.distance - ONE_PLY + extension;
    MakeMove(node, move, key);
    Score score = AskChild(node, type, distance - reduction);
    if (reduction > 0 && score >= node.beta) {
        ++search.statistics.verifications;
        score = AskChild(node, NodeType::all, distance);
    }
    search.board.UnmakeMove(move);
    return Keep(node, move, score);
}

/// What the moves that are left out may be worth.
Score MostOf(const TournamentNode& node, Pruning pruning) {
    return pruning == Pruning::quiet_moves ? node.estimate + node.rules().futility_base : best_score_start;
}

Score SearchMoves(TournamentNode& node) {
    MoveOrder order(node);
    std::array<Move, MAX_MOVES> searched;  // for their histories
    std::size_t count = 0;
    for (Move move = INVALID;;) {
        if (const auto answer = order.Next(move)) return *answer;
        if (move == INVALID) return Finish(node);
        if (move == node.excluded) continue;
        ++node.moves_tried;
        const std::uint64_t key = KeyAfter(node, move);
        const int history = IsQuiet(move) ? order.HistoryOf(move) : 0;
        if (const Pruning pruning = PruningOf(node, move, history); pruning != Pruning::none) {
            if (pruning == Pruning::quiet_moves) order.LeaveOutQuietMoves();
            LeaveOut(node, MostOf(node, pruning));
            continue;
        }
        if (SearchMove(node, move, key, history)) {
            LearnFromCut(node, {searched.data(), count});
            return Finish(node);
        }
        searched[count++] = move;
    }
}

}  // namespace

Score SearchNode(SearchBoard& search, TournamentState& state, Move* move_buffer, Score beta, Distance distance,
                 NodeType type, int position_class, bool may_pass) {
    const std::uint32_t ply = search.board.ply;
    // 1. Stop at the last ply.
    if (ply >= last_ply) return beta - 1;
    // 2. Count the node, look for input.
    CountNode(search);
    TournamentNode node{{.search = search,
                         .ply = ply,
                         .beta = beta,
                         .distance = RoundedDistance(distance, state.settings),
                         .in_check = search.board.in_check(),
                         .type = type,
                         .parent_class = position_class,
                         .position_class = position_class,
                         .child_flags = ChildFlags::none,
                         .moves = move_buffer,
                         .moves_end = move_buffer},
                        state,
                        may_pass,
                        std::exchange(state.excluded[ply], INVALID)};
    if (node.is_quiescence()) ++search.statistics.quiescence_nodes;
    // 3. Enter the ply.
    EnterPly(node);
    // 4. Mate distance.
    if (const auto answer = MateDistance(node)) return *answer;
    // 5. Draws by rule.
    if (node.board().IsDraw()) return node.draw_score();
    // 6. Hash table.
    if (const auto answer = ProbeHash(node)) return *answer;
    // 7. Class of the position.
    UpdateClass(node);
    // 8. Bitbases and tablebases.
    if (const auto answer = EndgameKnowledge(node)) return *answer;
    // 9. Quiescence.
    if (node.is_quiescence()) return SearchQuiescence(node);
    // 10. Static score.
    FindStaticScore(node);
    // 11. Razoring.
    if (const auto answer = Razoring(node)) return *answer;
    // 12. Reverse futility.
    if (const auto answer = ReverseFutility(node)) return *answer;
    // 13. Null move.
    if (const auto answer = AdaptiveNullMove(node)) return *answer;
    // 14. Internal reduction.
    InternalReduction(node);
    // 15. Singular extension of the hash move.
    if (const auto answer = SingularExtension(node)) return *answer;
    // 16. The moves.
    return SearchMoves(node);
}

}  // namespace tournament
