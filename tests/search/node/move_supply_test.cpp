#include "search/node/move_supply.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "search/node/move_list.h"
#include "support/board_builder.h"
#include "support/random_games.h"
#include "support/search_builder.h"

namespace {

constexpr std::string_view middle_game_fen = "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N2NP1/PP3PBP/R1BQ1RK1 w - - 4 10";
/// White's king must take.
constexpr std::string_view one_reply_fen = "7k/p7/8/8/8/8/6q1/7K w - - 0 1";
/// Not in check: only the pawn can move.
constexpr std::string_view one_move_fen = "1b4rk/8/8/8/p7/8/P7/7K w - - 0 1";
constexpr std::string_view mate_fen = "7k/8/8/8/8/8/8/r5K1 w - - 0 1";

struct Supplied {
    std::vector<Move> moves;
    NodeAnswer answer;
};

Supplied SupplyOf(Node& node) {
    Supplied supplied;
    MoveSupply supply(node);
    for (;;) {
        Move move = INVALID;
        supplied.answer = supply.Next(move);
        if (supplied.answer || move == INVALID) return supplied;
        supplied.moves.push_back(move & move_bits);
    }
}

TEST(MoveSupply, GivesEveryMoveOnce) {
    for (const std::string& fen : random_game_starts) {
        SearchBuilder search(fen);
        std::vector<Move> legal = LegalMovesOf(search.board->board);
        if (legal.size() < 2) continue;
        for (const Move hash_move : {INVALID, legal.front(), legal.back(), legal[legal.size() / 2]}) {
            Node node = search.NodeAt(0, 256);
            node.hash_move = hash_move;
            Supplied supplied = SupplyOf(node);
            EXPECT_FALSE(supplied.answer);
            ASSERT_EQ(supplied.moves.size(), legal.size()) << fen;
            if (hash_move != INVALID) {
                EXPECT_EQ(supplied.moves.front(), hash_move) << fen;
            }
            EXPECT_TRUE(std::is_permutation(legal.begin(), legal.end(), supplied.moves.begin())) << fen;
        }
    }
}

TEST(MoveSupply, GeneratesNothingForTheHashMove) {
    SearchBuilder search(middle_game_fen);
    Node node = search.NodeAt(0, 256);
    node.hash_move = MoveOf(search.board->board, "c4d5");
    MoveSupply supply(node);
    Move move = INVALID;
    EXPECT_FALSE(supply.Next(move));
    EXPECT_EQ(move, node.hash_move);
    EXPECT_FALSE(node.has_move_list);
    EXPECT_EQ(node.moves, node.moves_end);
}

TEST(MoveSupply, KnownSingleReplyIsTheHashMoveAlone) {
    SearchBuilder search(middle_game_fen);
    Node node = search.NodeAt(0, 256);
    node.hash_move = MoveOf(search.board->board, "c4d5");
    node.flags = NodeFlags::single_reply;
    EXPECT_EQ(SupplyOf(node).moves, std::vector<Move>{node.hash_move});
    EXPECT_FALSE(node.has_move_list);
}

TEST(MoveSupply, SingleMoveIsFoundInCheckAndOutOfIt) {
    for (const std::string_view fen : {one_reply_fen, one_move_fen}) {
        SearchBuilder search(fen);
        Node node = search.NodeAt(0, 256);
        const Supplied supplied = SupplyOf(node);
        EXPECT_EQ(supplied.moves.size(), 1U);
        EXPECT_TRUE(HasAny(node.flags, NodeFlags::single_reply));
    }
}

TEST(MoveSupply, SingleMoveIsTriedAgainAfterItselfWithExtensions) {
    SearchBuilder search(one_reply_fen);
    const Move only = LegalMovesOf(search.board->board).front();
    for (const bool extensions : {true, false}) {
        search.settings.enable_search_extensions = extensions;
        Node node = search.NodeAt(0, 256);
        node.hash_move = only;
        EXPECT_EQ(SupplyOf(node).moves.size(), extensions ? 2U : 1U) << extensions;
        EXPECT_TRUE(HasAny(node.flags, NodeFlags::single_reply));
    }
}

TEST(MoveSupply, ListThatStandsIsNotGeneratedAgain) {
    SearchBuilder search(middle_game_fen);
    Node node = search.NodeAt(0, 256);
    ASSERT_FALSE(ListMoves(node));
    node.moves_end -= 3;
    const auto left = static_cast<std::size_t>(node.moves_end - node.moves);
    EXPECT_EQ(SupplyOf(node).moves.size(), left);
}

TEST(MoveSupply, MateEndsTheNode) {
    SearchBuilder search(mate_fen);
    Node node = search.NodeAt(0, 256);
    // Not quite: the king can step up.
    EXPECT_FALSE(SupplyOf(node).answer);
    SearchBuilder mated("8/8/8/8/8/6k1/8/r5K1 w - - 0 1");
    Node end = mated.NodeAt(0, 0);
    const Supplied supplied = SupplyOf(end);
    ASSERT_TRUE(supplied.answer);
    EXPECT_EQ(*supplied.answer, -1);
    EXPECT_TRUE(supplied.moves.empty());
    Node lost = mated.NodeAt(-infinity_bound, 0);
    EXPECT_EQ(SupplyOf(lost).answer, -infinity_bound) << "on its own mate score";
}

TEST(MoveSupply, QuiescenceWithNothingToTryIsBelowBeta) {
    SearchBuilder search("7k/8/8/8/8/8/P7/7K w - - 0 1");
    Node node = search.NodeAt(400, -400);
    EXPECT_EQ(SupplyOf(node).answer, 399);
}

TEST(MoveSupply, OneMoveOfAQuiescenceSelectionIsNoSingleReply) {
    SearchBuilder search("7k/8/8/3p4/4P3/8/8/7K w - - 0 1");
    Node node = search.NodeAt(400, -400);
    EXPECT_EQ(SupplyOf(node).moves.size(), 1U);
    EXPECT_FALSE(HasAny(node.flags, NodeFlags::single_reply));
}

}  // namespace
