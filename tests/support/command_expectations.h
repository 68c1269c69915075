#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/command_bench.h"

/// What came of a command, as the tests of commands expect it.

/// Which sides the engine plays, and the mode that follows.
inline void ExpectPlayers(const GameControl& game, bool white_active, bool black_active, EngineMode mode) {
    EXPECT_EQ(game.player(white).active, white_active);
    EXPECT_EQ(game.player(black).active, black_active);
    EXPECT_EQ(game.mode(), mode);
}

/// The command ended with a request for a search of this position.
inline void ExpectRequest(const CommandOutcome& outcome, SearchKind kind, const std::string& fen) {
    EXPECT_EQ(outcome.error, "");
    EXPECT_TRUE(outcome.finished) << "a request would be repeated";
    ASSERT_TRUE(outcome.request);
    EXPECT_EQ(outcome.request->limits.kind, kind);
    EXPECT_EQ(outcome.request->position.GetFen(), fen);
}

/// The command has run to its end and asked for nothing.
inline void ExpectDone(const CommandOutcome& outcome) {
    EXPECT_EQ(outcome.error, "");
    EXPECT_TRUE(outcome.finished);
    EXPECT_FALSE(outcome.request);
    EXPECT_FALSE(outcome.quit);
}

inline const std::string after_e4 = "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq e3 0 1";
inline const std::string after_e4_e5 = "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6 0 2";
inline const std::vector<std::string> fools_mate{"force", "f3", "e5", "g4", "Qh4"};
