// The node. The root driver asks yes/no questions with one bound, so the whole tree is searched with a null window, and
// a node has two answers: beta and beta - 1. SearchNode is the list of its steps in order; a step that may end the node
// returns its answer. The steps of quiescence are in quiescence.cpp.

#include "search/search_serial.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "evaluation/position_type.h"
#include "frame/checked_assert.h"
#include "frame/vocabulary.h"
#include "search/extensions.h"
#include "search/hash.h"
#include "search/move_list.h"
#include "search/move_ordering.h"
#include "search/node.h"
#include "search/node_result.h"
#include "search/pruning.h"
#include "search/quiescence.h"
#include "search/search_settings.h"
#include "search/threats.h"

namespace settings = search_settings;

namespace {

/// The piece types that begin the game on each square, for both sides; without queens and pawns, whose moves do not
/// tell development.
// clang-format off
constexpr std::array<std::int8_t, 64> developing_piece_from = [] {
    std::array<std::int8_t, 64> type{};
    type[a1] = rook; type[b1] = knight; type[c1] = bishop; type[e1] = king; type[f1] = bishop; type[g1] = knight; type[h1] = rook;
    type[a8] = rook; type[b8] = knight; type[c8] = bishop; type[e8] = king; type[f8] = bishop; type[g8] = knight; type[h8] = rook;
    return type;
}();
// clang-format on

/// The poll may throw.
void CountNode(SearchBoard& search) {
    if (--search.poll_countdown == 0) search.poll->Poll();
    ++search.nodes;
}

void EnterPly(Node& node) {
    node.search.pv[node.ply][0] = INVALID;
    node.search.history.EnterPly(node.ply);
}

/// Nothing at this ply is better than mating with the next move, or worse than being mated already.
std::optional<Score> MateDistance(const Node& node) {
    if (node.beta <= MatedScore(node.ply)) return node.beta;
    if (node.beta > -MatedScore(node.ply + 1)) return node.beta - 1;
    return std::nullopt;
}

std::optional<Score> DrawByRule(const Node& node) {
    if (!node.board().IsDraw()) return std::nullopt;
    return AsAnswer(node.draw_score(), node.beta);
}

/// A position may be known well enough; if not, its entry at least gives a move to try first, and what was found out
/// about it.
std::optional<Score> ProbeHash(Node& node) {
    if (node.distance < settings::required_distance_to_probe_hashtables) return std::nullopt;
    TranspositionHit hit;
    const TranspositionAnswer answer =
        transposition_table.Probe(node.board().key(), node.ply, node.distance, node.beta, hit);
    if (answer == TranspositionAnswer::not_found) return std::nullopt;
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
    return std::nullopt;
}

void UpdateClass(Node& node) {
    if (!node.hash_gave_class) {
        node.position_class = ClassBehindMove(node.board(), node.last_move(), node.parent_class);
    }
    node.search.position_class[node.ply] = node.position_class;
}

/// Where the moves of a node come from next.
enum class Supply { hash_move, list, sort, pick, none };

/// The moves of a node in the order in which they are tried; nothing is generated or sorted before it is needed.
struct MoveSupply {
    explicit MoveSupply(Node& owner)
        : node(owner), next(owner.hash_move != INVALID ? Supply::hash_move : Supply::list) {}

    /// Gives the next move, or INVALID behind the last. A result ends the node.
    [[nodiscard]] std::optional<Score> Next(Move& move) {
        move = INVALID;
        if (next == Supply::hash_move) {
            // One reply: its move is known, and nothing needs to be generated.
            next = HasAny(node.flags, NodeFlags::single_reply) ? Supply::none : Supply::list;
            move = node.hash_move;
            return std::nullopt;
        }
        if (next == Supply::list) {
            if (const auto answer = List(move)) return answer;
        }
        while (next == Supply::sort || next == Supply::pick) {
            if (next == Supply::sort) Sort();
            if (batch.begin != batch.end) {
                move = Pick();
                break;
            }
            next = batch.is_last ? Supply::none : Supply::sort;
        }
        return std::nullopt;
    }

  private:
    [[nodiscard]] std::optional<Score> List(Move& move) {
        next = Supply::sort;
        if (node.has_move_list) return std::nullopt;
        if (const auto answer = ListMoves(node)) return answer;
        if (node.is_quiescence() || node.moves_end - node.moves > 1) return std::nullopt;
        next = Supply::none;
        // With extensions the only move is tried again behind itself, now that it is known to be the only one.
        if (settings::enable_search_extensions || node.hash_move == INVALID) move = *node.moves;
        return std::nullopt;
    }

    void Sort() {
        batch = node.is_quiescence() ? SortQuiescence(node) : StagedMoveSorter(sorter, node);
        next = Supply::pick;
    }

    [[nodiscard]] Move Pick() {
        if (!batch.is_ordered) std::iter_swap(batch.begin, std::max_element(batch.begin, batch.end));
        return *batch.begin++;
    }

    Node& node;
    Supply next;
    MoveSortState sorter;
    MoveBatch batch{};
};

ChildFlags FlagsForChild(const Node& node, Move move) {
    ChildFlags flags = Inherited(node.child_flags);
    if (HasAny(node.extended, ExtensionCauses::double_check)) flags |= ChildFlags::no_recapture_extension;
    if (GivesCheck(move)) {
        if (settings::skip_razoring_when_last_move_was_a_check) flags |= NextPly(ChildFlags::no_limited_razoring);
        if (settings::skip_extended_futility_pruning_when_last_move_was_a_check) {
            flags |= NextPly(ChildFlags::no_extended_futility);
        }
    }
    return flags;
}

/// Plays a move and asks the child the opposite question. A move that cuts at a reduced distance has to confirm it
/// without the reduction.
Score SearchChild(Node& node, Move move, Distance new_distance, Distance reduced) {
    SearchBoard& search = node.search;
    const ChildFlags flags = FlagsForChild(node, move);
    const NodeType type = node.moves_tried == 1 ? -node.type : NodeType::cut;
    search.moves_played[node.ply + 1] = move;
    search.board.MakeMove(move);
    transposition_table.Prefetch(search.board.key());
    Score score =
        -SearchNode(search, node.moves_end, 1 - node.beta, new_distance - ONE_PLY, type, node.position_class, flags);
    if (settings::enable_verification_search && score >= node.beta && reduced > 0) {
        score = -SearchNode(search, node.moves_end, 1 - node.beta, new_distance - ONE_PLY + reduced,
                            node.is_principal() ? NodeType::principal : NodeType::all, node.position_class, flags);
    }
    search.board.UnmakeMove(move);
    return score;
}

/// Whether the filter of quiescence lets a move pass.
bool PassesFilter(const Node& node, Move move) {
    if (!node.is_quiescence() || HasAny(node.flags, NodeFlags::single_reply)) return true;
    if (settings::always_search_hash_move_in_quiescence && move == node.hash_move) return true;
    return PassesQuiescenceFilter(node, move);
}

/// Tries one move. Whether it cuts.
bool TryMove(Node& node, Move move) {
    ++node.moves_tried;
    if (!PassesFilter(node, move)) return false;
    const Distance extended = ExtendedDistance(node, move);
    if (IsFutile(node, move)) return false;
    const Distance reduction = LateMoveReduction(node, move);
    const Score score = SearchChild(node, move, extended - reduction, node.razored + reduction);
    if (score > node.best) {
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
        if (const auto answer = supply.Next(move)) return *answer;
        if (move == INVALID || TryMove(node, move & move_bits)) return FinishNode(node);
    }
}

}  // namespace

int ClassBehindMove(const BOARD& board, Move last_move, int parent_class) noexcept {
    const bool changed_material = (last_move & capture_or_promotion_bits) != 0;
    const bool developed =
        parent_class == opening && last_move != INVALID &&
        developing_piece_from[static_cast<std::size_t>(FromSquare(last_move))] == MovingPiece(last_move);
    return changed_material || developed ? classify_position(board, parent_class) : parent_class;
}

Score SearchNode(SearchBoard& search, Move* move_buffer, Score beta, Distance distance, NodeType type,
                 int position_class, ChildFlags child_flags) {
    const std::uint32_t ply = search.board.ply;
    if (ply >= last_ply) return beta - 1;
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
    EnterPly(node);
    if (const auto answer = MateDistance(node)) return *answer;
    if (const auto answer = DrawByRule(node)) return *answer;
    if (const auto answer = ProbeHash(node)) return *answer;
    UpdateClass(node);
    if (settings::enable_pin_threat_detection && ply >= 2) DetectPinThreat(node);
    if (!node.in_check) {
        if (const auto answer = StandPat(node)) return *answer;
    } else if (settings::enable_perpetual_check_detection) {
        PerpetualCheckTest(node);
    }
    if (const auto answer = EnhancedTranspositionCutoff(node)) return *answer;
    if (const auto answer = NullMove(node)) return *answer;
    DelayedExtensions(node);
    SelectiveGates(node);
    if (const auto answer = InternalDeepening(node)) return *answer;
    return SearchMoves(node);
}
