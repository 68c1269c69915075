#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "selfplay/game.h"

/// One pair of games as a piece of work that may be done anywhere: in a thread, in another process, on another machine.
/// It names all that it needs, so that whoever plays it has to have nothing but the program.
struct PairJob {
    std::uint64_t pair = 0;
    PlayerSetup first, second;  ///< settings and nothing else
    GameRules rules;            ///< no clock
    std::string fen;            ///< of the opening
};

/// A job as a line without its end, and back. Throws std::runtime_error with what is wrong.
///
///     17|nodes 20000 depth 0 hash 8 resign 0 1000 draw 40 0 10|futility_pruning_margin=310|defaults|rnbq.. w KQkq - 0
///     1
[[nodiscard]] std::string LineOf(const PairJob& job);
[[nodiscard]] PairJob JobOfLine(std::string_view line);

/// Plays both games. How many more the first player won than it lost, -2 to 2; nothing if `stop` is set.
[[nodiscard]] std::optional<int> PlayPair(const PairJob& job, const std::atomic<bool>& stop);

/// The answer to a job as a line without its end, "17 -2", and back: the pair and its lead.
struct PairResult {
    std::uint64_t pair = 0;
    int lead = 0;
};
[[nodiscard]] std::string LineOf(const PairResult& result);
[[nodiscard]] PairResult ResultOfLine(std::string_view line);

/// Plays jobs, so many at a time, and gives their leads in their order; nothing if `stop` was set.
[[nodiscard]] std::optional<std::vector<int>> PlayHere(const std::vector<PairJob>& jobs, unsigned concurrency,
                                                       std::atomic<bool>& stop);

/// Hands jobs to a shell command, which reads their lines and prints those of their results, in any order. What it
/// leaves out is asked for again, twice at most. Throws std::runtime_error if results are missing even then, or what it
/// prints is no result.
[[nodiscard]] std::optional<std::vector<int>> PlayWith(const std::vector<PairJob>& jobs, const std::string& command,
                                                       const std::atomic<bool>& stop);
