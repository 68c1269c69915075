#include "search/tournament/check_extension.h"

#include "search/tournament/move_pruning.h"

namespace tournament {

Distance CheckExtension(const TournamentNode& node, Move move) {
    if (!GivesCheck(move) || node.distance < 1 || LosesMoreThan(node, move, 0)) return 0;
    return node.rules().check_extension;
}

}  // namespace tournament
