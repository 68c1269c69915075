#pragma once

#include "search/state/node.h"

/// What must hold at the entry of a node and of its answers; a failure ends the program. For debug builds: see
/// theory.h.

/// The position is legal and is the one that the last move led to; ply, class, bound and move buffer are within bounds.
void AssertNodeEntered(const Node& node);
/// A question has two answers: `bound` and `bound - 1`.
void AssertIsAnswer(Score answer, Score bound);
/// The list of a node: no move twice, none without a mover, and room for the next ply.
void AssertListIsSound(const Node& node);
