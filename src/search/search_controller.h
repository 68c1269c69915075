#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "evaluation/evaluation_context.h"
#include "search/search_host.h"
#include "search/steering.h"

class SearchRun;  // all that lives as long as one search and is no business of the caller

/// Runs one search at a time: lists the root moves, deepens iteration by iteration, and finds each score by bisection.
/// Built once; its tables (killers, history) live from search to search.
class SearchController {
  public:
    SearchController();
    ~SearchController();
    SearchController(const SearchController&) = delete;
    SearchController& operator=(const SearchController&) = delete;

    /// The search entry. Reports to `host`, polls it, and as its last act calls host.onSearchFinished, with true at once
    /// if the game has a result already. Catches search_aborted_exception; everything else passes through, and leaves
    /// the controller fit for the next search.
    void Run(const SearchLimits& limits, const UserBoard& position, SearchHost& host);

    /// The opponent played the predicted move: a pondering search goes on as a normal one.
    void PonderHit();

    /// Centipawns, the worth of a draw for the engine. A new value clears the transposition and evaluation tables.
    void SetContempt(int contempt);
    [[nodiscard]] int contempt() const { return contempt_; }
    /// -1000..1000. A new value clears the transposition and evaluation tables.
    void SetPersonality(int personality);

    [[nodiscard]] const SearchInfo& info() const { return info_; }
    [[nodiscard]] bool IsRunning() const { return running_; }
    /// The best move of the last completed update; INVALID if there is none.
    [[nodiscard]] Move best_move() const;
    [[nodiscard]] int score() const { return info_.score; }

  private:
    friend class SearchRun;
    SearchInfo info_;
    bool running_ = false;
    int contempt_ = 0;
    EVALUATION_SETTINGS evaluation_settings_;
    std::unique_ptr<SearchRun> run_;
};
