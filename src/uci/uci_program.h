#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "chess/board.h"
#include "frame/base/wall_clock.h"
#include "search/driver/search_controller.h"
#include "search/driver/search_host.h"
#include "search/driver/steering.h"
#include "search/engine/engine.h"
#include "uci/actions.h"
#include "uci/book/polyglot_book.h"
#include "uci/go_command.h"
#include "uci/options.h"
#include "uci/output.h"
#include "uci/strength.h"
#include "uci/syzygy/syzygy.h"

/// The UCI protocol in force: reads lines, answers them, and runs searches. docs/uci.md describes every word.
namespace VorkaUci {

/// There is no thread: while a search runs it asks for input, and the lines that have come are carried out inside it.
/// Those that can't be (a new position, an option) wait for its end.
class UciProgram final : private SearchHost, private CommandActions, private OptionActions {
  public:
    /// `engine` must outlive the program.
    explicit UciProgram(Engine& engine);
    ~UciProgram() final = default;
    UciProgram(const UciProgram&) = delete;
    UciProgram& operator=(const UciProgram&) = delete;

    /// Reads standard input until `quit` or its end.
    void run();

  private:
    // --- What the commands do ---

    void send(std::string_view line) override { output_.send(line); }
    void introduce() override;
    void getReady() override;
    void newGame() override;
    void setPosition(const std::vector<std::string>& words) override;
    void go(const std::vector<std::string>& words) override;
    void stop() override;
    void ponderHit() override;
    void setOption(const std::string& line) override;
    void setDebug(bool on) override { output_.setDebug(on); }

    // --- What the options change ---

    void resizeTables() override;
    void clearTables() override;
    void weighDraws() override;
    void takeStyle() override;
    void readSettings() override;
    void openBook() override;
    void loadBitbases() override;
    void openSyzygy() override;
    void noteOpponent() override;
    void openLog() override;

    // --- What the search tells and asks ---

    void pollInput() override;
    void sendThinking(const SearchInfo& info) override;
    void sendDepthStarted(int /*depth*/) override {}
    void sendNewPvMove(const std::string& /*move*/) override {}
    void sendSearchInstability() override {}
    void sendCurrentMove(const SearchInfo& info, Move move) override;
    void sendBound(const SearchInfo& info, int score, ScoreBound bound, const std::vector<Move>& line) override;
    void sendSearchStatistics(const SearchInfo& info) override;
    void onSearchFinished(bool discard) override;

    /// The line that has waited longest, or else the next one of the input. Throws at its end.
    [[nodiscard]] std::string nextLine();
    /// The next line of the input, an empty one for a line that was too long; nothing at its end.
    [[nodiscard]] std::optional<std::string> readLine();
    void handle(const std::string& text);
    [[nodiscard]] bool hasMemoryForTables() const;
    void runSearch();
    /// Carries out the lines that have come. At the end of the input it ends the program, unless a search is under way
    /// that ends by itself: its answer is still wanted, as are those to the lines that wait for it.
    void hearInput();
    /// Waits for the word that ends a search which does not end by itself: `ponderhit`, or `stop`, which throws.
    void waitForWord();
    [[nodiscard]] bool hasSpentStrength() const;
    /// A move of the book instead of a search; INVALID if there is none, or none is wanted.
    [[nodiscard]] Move bookMove(const GoCommand& go);
    /// Few nodes and several lines to choose from, if the strength is limited.
    void limitStrength(SearchLimits& limits) const;
    /// The search as it is told: with the score and the count of the tables, where they know the root.
    [[nodiscard]] SearchInfo told(const SearchInfo& info) const;
    [[nodiscard]] bool hasFoundMate(const SearchInfo& info) const;
    void noteCandidate(const SearchInfo& info);
    /// The answer where there is nothing to search: at once, or when the word comes that ends the search.
    void sendNoMove();
    void sendBestMove();

    /// A search that has been asked for.
    struct Request {
        SearchLimits limits;
        std::int64_t mate = 0;  ///< ends with a mate in so many moves; 0: does not
        bool is_weakened = false;
        std::vector<TableMove> known{};  ///< what the tables say of the root moves
    };

    Engine& engine_;
    Output output_;
    OptionValues values_;
    std::optional<SearchController> controller_;
    std::optional<BOARD> position_;  ///< at ply 0; nothing after a position that is none
    std::deque<std::string> waiting_;
    std::optional<Request> request_;
    bool is_searching_ = false;
    bool has_input_ended_ = false;
    std::int64_t next_status_ = 0;               ///< milliseconds of the search
    Move last_shown_ = INVALID;                  ///< with which the last line began whose score is known
    std::vector<Candidate> candidates_;          ///< of the iteration, the best one in front
    std::vector<Candidate> earlier_candidates_;  ///< of the last iteration that had several
    PolyglotBook book_;
    SyzygyTables syzygy_;
    std::mt19937_64 chance_;
};

}  // namespace VorkaUci
