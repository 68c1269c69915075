#pragma once

#include "search/node/search_node.h"
#include "search/state/node.h"

// What every node begins with, whatever it does then. They are inline, since each is a few instructions.

/// The poll may throw.
inline void CountNode(SearchBoard& search) {
    if (--search.poll_countdown == 0) search.poll->Poll();
    ++search.nodes;
}

inline void EnterPly(Node& node) {
    node.search.pv[node.ply][0] = INVALID;
    node.search.history.EnterPly(node.ply);
}

/// Nothing at this ply is better than mating with the next move, or worse than being mated already.
inline NodeAnswer MateDistance(const Node& node) {
    if (node.beta <= MatedScore(node.ply)) return node.beta;
    if (node.beta > -MatedScore(node.ply + 1)) return node.beta - 1;
    return go_on;
}

inline NodeAnswer DrawByRule(const Node& node) {
    if (!node.board().IsDraw()) return go_on;
    return AsAnswer(node.draw_score(), node.beta);
}

/// The line goes on in the class that the ply before left it in: the position-type extension notes a new one.
inline void UpdateClass(Node& node) {
    if (!node.hash_gave_class) {
        node.position_class = ClassAfterMove(node.board(), node.last_move(), node.parent_class);
    }
    if (node.ply > 0) node.search.position_class[node.ply] = node.search.position_class[node.ply - 1];
}
