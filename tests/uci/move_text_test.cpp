#include "uci/move_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>

#include "support/random_games.h"

namespace {

using VorkaUci::FindMove;
using VorkaUci::LooksLikeMove;
using VorkaUci::MoveText;

TEST(MoveText, OfEveryLegalMoveIsItsOwnAndLeadsBackToIt) {
    constexpr std::uint32_t seed = 11;
    ForEachRandomPosition(seed, 40, 80, [&](const BOARD& board, const std::vector<Move>& moves) {
        std::set<std::string> texts;
        for (const Move move : moves) {
            const std::string text = MoveText(move);
            EXPECT_TRUE(texts.insert(text).second) << text << ", seed " << seed;
            EXPECT_TRUE(LooksLikeMove(text)) << text;
            EXPECT_EQ(FindMove(text, board), move) << text << ", seed " << seed;
        }
    });
}

TEST(MoveText, OfNoMoveIsTheNullMove) { EXPECT_EQ(MoveText(INVALID), "0000"); }

TEST(MoveText, FormIsTwoSquaresAndPerhapsAPromotion) {
    for (const char* text : {"e2e4", "a1h8", "E2E4", "e7e8q", "e7e8N"}) EXPECT_TRUE(LooksLikeMove(text)) << text;
    for (const char* text : {"", "e2", "e2e", "e2e9", "i2e4", "e2e4x", "e7e8k", "e7e8qq", "0000", "depth", "O-O"}) {
        EXPECT_FALSE(LooksLikeMove(text)) << text;
    }
}

}  // namespace
