#include "search/driver/classic_root_search.h"

#include "search/node/search_node.h"

Score ClassicRootSearch::AskBelow(SearchBoard& search, const RootQuestion& question) {
    const ChildFlags flags = search.settings.skip_null_move_at_the_root ? root_child_without_null_move : root_child;
    return SearchNode(search, search.move_buffer, 1 - question.test, DistanceBelow(search, question),
                      NodeType::principal, search.position_class[0], flags);
}
