// The node. The root driver asks yes/no questions with one bound, so the whole tree is searched with a null window, and
// a node has two answers: beta and beta - 1. SearchNode is the list of its steps in order; a step that may end the node
// returns its answer. The steps of quiescence are in quiescence.cpp.

#include "search/search_serial.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "chess/move_generator.h"
#include "evaluation/position_type.h"
#include "search/node.h"
#include "search/quiescence.h"

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

void UpdateClass(Node& node) {
    node.position_class = ClassBehindMove(node.board(), node.last_move(), node.position_class);
    node.search.position_class[node.ply] = node.position_class;
}

/// Lists the moves behind node.moves. Mate and stalemate end the node, and so does a quiescence node without a move to
/// try, which tells nothing about mate.
std::optional<Score> ListMoves(Node& node) {
    const unsigned mode = node.is_quiescence() ? QuiescenceMode(node) : mode_legal;
    node.moves_end = GenerateMoves(node.moves, node.board(), mode);
    const auto count = node.moves_end - node.moves;
    if (node.is_quiescence()) {
        if (count == 0) return node.beta - 1;
        return std::nullopt;
    }
    if (count == 0) return AsAnswer(node.in_check ? MatedScore(node.ply) : node.draw_score(), node.beta);
    if (count == 1) node.flags |= NodeFlags::single_reply;
    return std::nullopt;
}

/// Plays a move and asks the child the opposite question.
Score SearchChild(Node& node, Move move, bool is_first) {
    SearchBoard& search = node.search;
    search.moves_played[node.ply + 1] = move;
    search.board.MakeMove(move);
    const Score score =
        -SearchNode(search, node.moves_end, 1 - node.beta, node.distance - ONE_PLY,
                    is_first ? -node.type : NodeType::cut, node.position_class, Inherited(node.child_flags));
    search.board.UnmakeMove(move);
    return score;
}

/// The line from this node: the move, then the child's line.
void TakeLine(Node& node, Move move) {
    Move* line = node.search.pv[node.ply];
    const Move* rest = node.search.pv[node.ply + 1];
    *line++ = move;
    while ((*line++ = *rest++) != INVALID) {
    }
}

Score SearchMoves(Node& node) {
    if (const auto answer = ListMoves(node)) return *answer;
    Score best = best_score_start;
    for (const Move* next = node.moves; next != node.moves_end; ++next) {
        const Move move = *next & move_bits;
        if (node.is_quiescence() && !PassesQuiescenceFilter(node, move)) continue;
        const Score score = SearchChild(node, move, next == node.moves);
        if (score > best) {
            best = score;
            TakeLine(node, move);
            if (score >= node.beta) break;
        }
        if (node.type == NodeType::cut) node.type = NodeType::all;
    }
    return best == best_score_start ? node.beta - 1 : best;
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
              .position_class = position_class,
              .child_flags = child_flags,
              .moves = move_buffer,
              .moves_end = move_buffer};
    EnterPly(node);
    if (const auto answer = MateDistance(node)) return *answer;
    if (const auto answer = DrawByRule(node)) return *answer;
    UpdateClass(node);
    if (!node.in_check) {
        if (const auto answer = StandPat(node)) return *answer;
    }
    return SearchMoves(node);
}
