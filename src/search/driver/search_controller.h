#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "evaluation/context/evaluation_context.h"
#include "search/driver/classic_root_search.h"
#include "search/driver/principal_variation.h"
#include "search/driver/root_search.h"
#include "search/driver/search_clock.h"
#include "search/driver/search_host.h"
#include "search/driver/steering.h"
#include "search/engine/engine.h"
#include "search/state/node_poll.h"

class TournamentRootSearch;

/// Runs one search at a time: lists the root moves, deepens iteration by iteration, and finds each score by bisection.
/// Built once; its tables (killers, history) live from search to search.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted through NodePoll.
class SearchController final : private NodePoll {
  public:
    /// `engine` must outlive the controller.
    explicit SearchController(Engine& engine);
    ~SearchController();
    SearchController(const SearchController&) = delete;
    SearchController& operator=(const SearchController&) = delete;

    /// The search entry. Reports to `host`, polls it, and as its last act calls host.onSearchFinished, with true at
    /// once if the game has a result already or no legal move. Catches search_aborted_exception; everything else passes
    /// through, and leaves the controller fit for the next search.
    void Run(const SearchLimits& limits, const UserBoard& position, SearchHost& host);
    /// The same from a position at ply 0 that may be a draw by rule already: there is no game to be over.
    void Run(const SearchLimits& limits, const BOARD& position, SearchHost& host);

    /// The opponent played the predicted move: a pondering search goes on as a normal one.
    void PonderHit();

    /// Centipawns, the worth of a draw for the engine. A new value clears the transposition and evaluation tables.
    void SetContempt(int contempt);
    [[nodiscard]] int contempt() const { return contempt_; }
    /// -1000..1000. A new value clears the transposition and evaluation tables.
    void SetPersonality(int personality);

    [[nodiscard]] const SearchInfo& info() const { return info_; }
    [[nodiscard]] bool IsRunning() const { return host_ != nullptr; }
    /// The best move of the last completed update. A search that ends before its first update gives the first legal
    /// move, so that a thinking engine always has one to play. INVALID only if no tree was searched.
    [[nodiscard]] Move best_move() const;
    [[nodiscard]] int score() const { return info_.score; }

  private:
    class RunningScope;

    void Begin(const SearchLimits& limits);
    void RunFrom(const BOARD& position, SearchHost& host);
    void ListRootMoves(const BOARD& position);
    void StartSearch(const BOARD& position);
    [[nodiscard]] RootSearch& ChosenRootSearch();
    void IterationLoop();
    [[nodiscard]] bool IsForced() const;
    void StartIteration(int depth);
    [[nodiscard]] std::size_t Lines() const;
    void SearchLine();
    void SearchOtherLines();
    void ReturnToBestLine();
    void SearchFirstMove();
    void SearchFurtherMove(std::size_t index);
    void ConfirmCandidate(std::size_t index);
    void WaitForInput();

    void NameCurrentMove(const RootMoveRecord& record);
    [[nodiscard]] Score FindScore(RootMoveRecord& record, Score lower, Score guess);
    [[nodiscard]] Score Ask(RootMoveRecord& record, const RootQuestion& question);
    void ShowLine(const RootMoveRecord& record);

    void Poll() override;
    [[nodiscard]] std::uint64_t NodesToNextPoll(std::uint64_t usual, std::uint64_t to_the_limit) const;
    [[nodiscard]] bool HasSpentNodes() const;
    [[nodiscard]] int PollInterval() const;
    [[nodiscard]] bool LeavesFirstIterationWhole() const { return limits_.poll_interval == 0; }
    [[nodiscard]] std::uint64_t UsualCountdown(std::int64_t milliseconds) const;
    void FlushCounters();
    void NoteTableUse();
    [[nodiscard]] std::int64_t Elapsed() const;
    [[nodiscard]] bool EndsByItself() const;
    void UpdateDrawScore(int contempt);

    Engine& engine_;
    SearchInfo info_;
    int contempt_ = 0;
    EVALUATION_SETTINGS evaluation_settings_;

    SearchLimits limits_;
    SearchHost* host_ = nullptr;  ///< set while a search runs
    Timestamp ponder_hit_;        ///< valid once the opponent has played the predicted move
    Colour root_side_ = white;
    std::vector<RootMoveRecord> root_moves_;  ///< the best ones in front
    std::unique_ptr<SearchBoard> search_;
    ClassicRootSearch classic_;
    std::unique_ptr<TournamentRootSearch> tournament_;  ///< once the tournament search was asked for
    RootSearch* root_search_ = &classic_;               ///< one of both, as the running search was asked for
    SearchClock clock_;
    FailState fail_state_ = FailState::none;  ///< of the bisection under way
    bool first_root_move_ = false;            ///< a bisection is under way, not a refutation test

    /// What `info_` says of one line.
    struct LineResult {
        int score;
        std::vector<std::pair<Move, std::string>> variation;
        std::size_t known_moves;
    };
    [[nodiscard]] LineResult CurrentLine() const {
        return {.score = info_.score, .variation = info_.principal_variation, .known_moves = info_.known_moves};
    }
    void TakeBack(LineResult line);

    std::optional<LineResult> best_line_;  ///< set while another line is searched
    std::vector<Score> line_scores_;       ///< of the other lines, in the last iteration that has found them
    Score most_ = infinity_bound;          ///< no move of this line is better: those that are stand in lines before it
    SearchClock clock_of_other_lines_;     ///< what happens there says nothing about the best move

    [[nodiscard]] SearchClock& ClockOfLine() { return best_line_ ? clock_of_other_lines_ : clock_; }
    [[nodiscard]] auto FirstOfLine() { return root_moves_.begin() + info_.line; }
};
