#include "search/pruning.h"

std::optional<Score> EnhancedTranspositionCutoff(Node&) { return std::nullopt; }

std::optional<Score> NullMove(Node&) { return std::nullopt; }

void SelectiveGates(Node&) {}

std::optional<Score> InternalDeepening(Node&) { return std::nullopt; }

bool IsFutile(const Node&, Move) { return false; }

Distance LateMoveReduction(const Node&, Move) { return 0; }
