#include "search/extensions.h"

void DelayedExtensions(Node&) {}

Distance ExtendedDistance(Node& node, Move) { return node.distance; }
