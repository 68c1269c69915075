// The assertions of the theory fire. Builds without NDEBUG call them at every node.

#include "search/node/node_theory.h"

#include <gtest/gtest.h>

#include "support/search_builder.h"

namespace {

TEST(NodeTheoryDeathTest, NodeThatIsNotWhereTheBoardIs) {
    SearchBuilder search("4k3/8/8/3p4/4P3/8/8/4K3 w - - 0 1");
    search.Make("e4d5");
    Node node = search.NodeAt(0, 64);
    AssertNodeEntered(node);
    node.flags = NodeFlags::mate_threat;
    EXPECT_DEATH(AssertNodeEntered(node), "") << "it knows what it has not looked for";
    search.Make("e8e7");
    EXPECT_DEATH(AssertNodeEntered(search.NodeAt(40000, 64)), "") << "no bound";
    search.Make("d5d6");
    search.board->board.frame().in_check = 0;
    EXPECT_DEATH(AssertNodeEntered(search.NodeAt(0, 64)), "") << "a check that the record does not tell of";
}

TEST(NodeTheoryDeathTest, AnswerThatIsNone) {
    AssertIsAnswer(30, 30);
    AssertIsAnswer(29, 30);
    EXPECT_DEATH(AssertIsAnswer(31, 30), "");
    EXPECT_DEATH(AssertIsAnswer(28, 30), "");
}

}  // namespace
