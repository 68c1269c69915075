// The node. The root driver asks yes/no questions with one bound, so the whole tree is searched with a null window, and
// a node has two answers: beta and beta - 1. SearchNode is the list of its steps in order; a step that may end the node
// returns its answer. The steps of quiescence are in quiescence.cpp. docs/search.md has the same numbers, and tells of
// each step why it is sound.

#include "search/node/search_node.h"

#include <array>
#include <cstdint>

#include "evaluation/context/position_type.h"
#include "frame/base/checked_assert.h"
#include "frame/base/theory.h"
#include "frame/base/vocabulary.h"
#include "search/node/child_search.h"
#include "search/node/endgame_knowledge.h"
#include "search/node/extensions.h"
#include "search/node/internal_deepening.h"
#include "search/node/move_supply.h"
#include "search/node/node_entry.h"
#include "search/node/node_result.h"
#include "search/node/node_theory.h"
#include "search/node/null_move.h"
#include "search/node/perpetual_check.h"
#include "search/node/pin_threat.h"
#include "search/node/pruning.h"
#include "search/node/quiescence.h"
#include "search/node/transposition_cutoff.h"
#include "search/state/node.h"
#include "search/tables/hash.h"

namespace {

/// The piece types that begin the game on each square, for both sides; without queens and pawns, whose moves say
/// nothing about development.
// clang-format off
constexpr std::array<std::int8_t, 64> developing_piece_from = [] {
    std::array<std::int8_t, 64> type{};
    type[a1] = rook; type[b1] = knight; type[c1] = bishop; type[e1] = king; type[f1] = bishop; type[g1] = knight; type[h1] = rook;
    type[a8] = rook; type[b8] = knight; type[c8] = bishop; type[e8] = king; type[f8] = bishop; type[g8] = knight; type[h8] = rook;
    return type;
}();
// clang-format on

/// A position may be known well enough; if not, its entry at least gives a move to try first, and what was found out
/// about it.
NodeAnswer ProbeHash(Node& node) {
    if (node.distance < node.settings().required_distance_to_probe_hashtables) return go_on;
    TranspositionHit hit;
    const TranspositionAnswer answer =
        node.search.engine.tables.transposition.Probe(node.board().key(), node.ply, node.distance, node.beta, hit);
    if (answer == TranspositionAnswer::not_found) return go_on;
    if (answer != TranspositionAnswer::undecided) {
        node.search.pv[node.ply][0] = hit.move;
        node.search.pv[node.ply][1] = INVALID;
        return answer == TranspositionAnswer::at_least_beta ? node.beta : node.beta - 1;
    }
    node.hash_move = hit.move;
    node.position_class = hit.position_class;
    node.hash_gave_class = true;
    node.flags = hit.flags;
    if (hit.move != INVALID && !node.board().IsMovePseudoLegal(hit.move)) {
        // The report is all that happens: the search goes on with the move in hand.
        ReportFailedAssertion(vocabulary::transposition_collision_condition, "search_serial", __LINE__,
                              vocabulary::transposition_collision_detected);
    }
    return go_on;
}

/// Whether the filter of quiescence lets a move pass.
bool PassesFilter(const Node& node, Move move) {
    if (!node.is_quiescence() || HasAny(node.flags, NodeFlags::single_reply)) return true;
    if (node.settings().always_search_hash_move_in_quiescence && move == node.hash_move) return true;
    return PassesQuiescenceFilter(node, move);
}

void CountMove(Node& node, Distance extended, Distance reduction) {
    SearchStatistics& statistics = node.search.statistics;
    if (extended > node.distance) ++statistics.extended_moves;
    if (reduction > 0) ++statistics.reduced_moves;
}

/// Before the move is taken over as the best: a node that has none yet has searched no other.
void CountCut(Node& node) {
    SearchStatistics& statistics = node.search.statistics;
    ++statistics.cuts;
    if (node.best == best_score_start) ++statistics.first_move_cuts;
}

/// Tries one move of the supply. Whether it cuts.
bool TryMove(Node& node, MoveSupply& supply, Move move) {
    ++node.moves_tried;
    // 18. Quiescence: let it pass?
    if (!PassesFilter(node, move)) return false;
    const std::uint64_t key = supply.KeyAfter(move);
    // 19. Extensions that the move earns.
    const Distance extended = ExtendedDistance(node, move);
    // 20. Futility: skip it?
    if (IsFutile(node, move)) return false;
    // 21. Reduce a late move.
    const Distance reduction = LateMoveReduction(node, move);
    // 22. Ask the child.
    CountMove(node, extended, reduction);
    if (node.type != NodeType::cut) supply.AskAhead();
    const Score score = SearchChild(node, move, key, extended - reduction, node.razored + reduction);
    // 23. Keep the best; cut.
    if (score > node.best) {
        if (score >= node.beta) CountCut(node);
        node.best = score;
        node.best_move = move;
        TakeLine(node, move);
        if (score >= node.beta) return true;
    }
    if (node.type == NodeType::cut) node.type = NodeType::all;
    return false;
}

Score SearchMoves(Node& node) {
    MoveSupply supply(node);
    for (Move move;;) {
        // 17. Take the next move.
        if (const auto answer = supply.Next(move)) return *answer;
        // 24. Finish: killers, history, hash entry.
        if (move == INVALID || TryMove(node, supply, move & move_bits)) return FinishNode(node);
    }
}

}  // namespace

int ClassAfterMove(const BOARD& board, Move last_move, int parent_class) noexcept {
    const bool changed_material = (last_move & capture_or_promotion_bits) != 0;
    const bool developed =
        parent_class == opening && last_move != INVALID &&
        developing_piece_from[static_cast<std::size_t>(FromSquare(last_move))] == MovingPiece(last_move);
    return changed_material || developed ? classify_position(board, parent_class) : parent_class;
}

Score SearchNode(SearchBoard& search, Move* move_buffer, Score beta, Distance distance, NodeType type,
                 int position_class, ChildFlags child_flags) {
    const std::uint32_t ply = search.board.ply;
    // 1. Stop at the last ply.
    if (ply >= last_ply) return beta - 1;
    // 2. Count the node, look for input.
    CountNode(search);
    Node node{.search = search,
              .ply = ply,
              .beta = beta,
              .distance = distance,
              .in_check = search.board.in_check(),
              .type = type,
              .parent_class = position_class,
              .position_class = position_class,
              .child_flags = child_flags,
              .moves = move_buffer,
              .moves_end = move_buffer};
    if constexpr (theory_is_checked) AssertNodeEntered(node);
    if (node.is_quiescence()) ++search.statistics.quiescence_nodes;
    // 3. Enter the ply.
    EnterPly(node);
    // 4. Mate distance.
    if (const auto answer = MateDistance(node)) return *answer;
    // 5. Draws by rule.
    if (const auto answer = DrawByRule(node)) return *answer;
    // 6. Hash table.
    if (const auto answer = ProbeHash(node)) return *answer;
    // 7. Class of the position.
    UpdateClass(node);
    // 8. Bitbases and tablebases.
    if (const auto answer = EndgameKnowledge(node)) return *answer;
    // 9. Follow the pin.
    if (node.settings().enable_pin_threat_detection && ply >= 2) DetectPinThreat(node);
    if (!node.in_check) {
        // 10. Out of check: stand pat.
        if (const auto answer = StandPat(node)) return *answer;
    } else if (node.settings().enable_perpetual_check_detection) {
        // 11. In check: perpetual check test.
        PerpetualCheckTest(node);
    }
    // 12. Enhanced transposition cutoff.
    if (const auto answer = EnhancedTranspositionCutoff(node)) return *answer;
    // 13. Null move, mate threat test.
    if (const auto answer = NullMove(node)) return *answer;
    // 14. Extensions that the position earns.
    DelayedExtensions(node);
    // 15. Razoring, futility: decide.
    SelectiveGates(node);
    // 16. Internal iterative deepening.
    if (const auto answer = InternalDeepening(node)) return *answer;
    return SearchMoves(node);
}
