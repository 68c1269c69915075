#pragma once

#include <fstream>
#include <map>

#include "selfplay/match.h"
#include "selfplay/openings.h"

/// A match that takes a moment: few nodes, from the openings of the tree.
inline MatchPlan SmallMatch(std::uint64_t games = 8) {
    MatchPlan plan;
    plan.players = {ReadPlayer("name=first"), ReadPlayer("name=second min_ply_for_null_move=1 contempt=10")};
    plan.rules.nodes = 150;
    plan.rules.hash_megabytes = 1;
    std::ifstream file(VORKA_TEST_DIRECTORY "/data/openings.epd");
    plan.openings = ReadOpenings(file, 0);
    plan.games = games;
    return plan;
}

/// All games of a match, by number.
inline std::map<std::uint64_t, PlayedGame> GamesOf(const MatchPlan& plan) {
    std::map<std::uint64_t, PlayedGame> games;
    std::atomic<bool> stop{false};
    PlayMatch(
        plan, [](std::uint64_t) { return true; }, [&](const PlayedGame& game) { games[game.number] = game; }, stop);
    return games;
}
