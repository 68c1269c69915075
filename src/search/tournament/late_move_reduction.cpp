#include "search/tournament/late_move_reduction.h"

#include <algorithm>

namespace tournament {

namespace {

bool IsKiller(const TournamentNode& node, Move move) {
    const KillerPair& killers = node.search.killers[node.ply];
    return move == killers.first || move == killers.second;
}

}  // namespace

Distance LateMoveReductionOf(const TournamentNode& node, Move move, int history) {
    const TournamentSettings& rules = node.rules();
    if (rules.late_move_reduction == 0 || node.distance < rules.late_move_reduction_distance ||
        node.moves_tried <= rules.late_move_full_moves) {
        return 0;
    }
    Distance reduction = node.state.Reduction(node.plies(), node.moves_tried);
    if (node.type == NodeType::cut) reduction += rules.cut_node_reduction;
    if (!node.is_improving) reduction += rules.worsening_reduction;
    if (node.in_check || GivesCheck(move)) reduction -= rules.check_relief;
    if (!IsQuiet(move)) {
        reduction -= rules.capture_relief;
    } else {
        if (IsKiller(node, move)) reduction -= rules.killer_relief;
        reduction -= history * rules.history_relief / HistoryScore::largest;
    }
    return std::clamp(reduction, 0, std::max(node.distance - ONE_PLY, 0));
}

}  // namespace tournament
