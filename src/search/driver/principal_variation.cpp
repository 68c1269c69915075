#include "search/driver/principal_variation.h"

#include <algorithm>

#include "chess/attacks.h"
#include "chess/move_generator.h"
#include "chess/notation.h"
#include "frame/base/checked_assert.h"
#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"
#include "search/node/search_node.h"

namespace {

/// A private copy of the root position that walks along a line, its class with it.
struct LineWalk {
    BOARD board;
    int position_class;

    void Make(Move move) {
        board.MakeMove(move);
        position_class = ClassAfterMove(board, move, position_class);
    }
};

NodeFlags FlagsOf(const BOARD& board) {
    Move moves[move_list_room];
    const bool single_reply = GenerateMoves(moves, board, mode_legal) - moves == 1;
    const NodeFlags queen_test = QueenAttacked(board) ? NodeFlags::queen_attacked : NodeFlags::queen_not_attacked;
    return single_reply ? queen_test | NodeFlags::single_reply : queen_test;
}

/// The move that the table has for a position. INVALID if there is none that can be played.
Move HashMove(const LineWalk& walk, TRANSPOSITION_TABLE& table) {
    TranspositionHit hit;
    const auto answer = table.Probe(walk.board.key(), walk.board.ply, 0, infinity_bound, hit);
    if (answer == TranspositionAnswer::not_found || hit.move == INVALID) return INVALID;
    if (VerifyMove(hit.move, walk.board)) return hit.move;
    ReportFailedAssertion(vocabulary::hash_move_of_line_condition, "search_serial", __LINE__,
                          vocabulary::transposition_collision_detected);
    return INVALID;
}

/// Whether the search would have taken the table's word for this position, at the depth that the iteration leaves here
/// to a line without extensions. What it has looked at for captures alone does not count.
bool AnswersQuestion(const SearchBoard& search, const BOARD& board, const RootQuestion& question) {
    const auto plies_below_root_move = static_cast<Distance>(board.ply - search.board.ply) - 1;
    const Distance left =
        (question.depth - 1) * search.settings.root_distance_multiplier - plies_below_root_move * ONE_PLY;
    const Score beta = board.mover() == search.board.mover() ? question.test : 1 - question.test;
    TranspositionHit ignored;
    const auto answer =
        search.engine.tables.transposition.Look(board.key(), board.ply, std::max(left, 1), beta, ignored);
    return answer == TranspositionAnswer::at_least_beta || answer == TranspositionAnswer::below_beta;
}

}  // namespace

void WriteLineToHash(const BOARD& root, const RootMoveRecord& record, int root_class, TRANSPOSITION_TABLE& table) {
    LineWalk walk{.board = root, .position_class = root_class};
    for (const Move move : record.line) {
        Move known_move = INVALID;
        Distance known_distance = 0;
        const bool is_root_move = walk.board.ply == root.ply;
        if (!is_root_move && !table.ProbeMove(walk.board.key(), known_move, known_distance)) {
            table.Store(
                TranspositionEntry::Make(walk.board.key(), move, true, walk.position_class, FlagsOf(walk.board)));
        }
        walk.Make(move);
    }
}

void ReadLineBack(const SearchBoard& search, const RootQuestion& question, RootMoveRecord& record) {
    LineWalk walk{.board = search.board, .position_class = search.position_class[0]};
    const auto append = [&](Move move) {
        record.line.push_back(move);
        walk.Make(move);
    };
    record.line.clear();
    for (const Move* move = search.pv[search.board.ply]; *move != INVALID; ++move) append(*move);
    record.known = record.line.size();
    while (!walk.board.IsDraw() && walk.board.ply <= last_ply) {
        const Move move = HashMove(walk, search.engine.tables.transposition);
        if (move == INVALID) return;
        if (record.known == record.line.size() && AnswersQuestion(search, walk.board, question)) ++record.known;
        append(move);
    }
}

std::vector<std::pair<Move, std::string>> RenderLine(const BOARD& root, const std::vector<Move>& line) {
    BOARD board = root;
    std::vector<std::pair<Move, std::string>> rendered;
    rendered.reserve(line.size());
    for (const Move move : line) {
        if (!VerifyMove(move, board)) {
            const EchoScope file_only(vlog, Echo::off);
            vlog << vocabulary::illegal_move_detected << MoveToCoordinate(move) << '\n';
            break;
        }
        rendered.emplace_back(move, MoveToSan(board, move));
        board.MakeMove(move);
    }
    return rendered;
}
