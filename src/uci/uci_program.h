#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <random>
#include <span>
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
#include "uci/limited_strength.h"
#include "uci/options.h"
#include "uci/output.h"
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
    void Run();

  private:
    /// A search that has been asked for.
    struct Request {
        SearchLimits limits;
        std::int64_t mate = 0;  ///< ends with a mate in so many moves; 0: does not
        bool is_weakened = false;
        bool is_stopped = false;         ///< before it began: it ends at once
        std::vector<TableMove> known{};  ///< what the tables say of the root moves
    };

    /// A line that waits for the end of the search.
    struct WaitingLine {
        std::string text;
        bool is_stopped = false;     ///< `stop` came after it, and ends the search that it asks for as well
        bool is_ponder_hit = false;  ///< `ponderhit` came after it, for the search that it asks for
    };

    // --- What the commands do ---

    void Introduce(const CommandLine& line) override;
    void GetReady(const CommandLine& line) override;
    void NewGame(const CommandLine& line) override;
    void SetPosition(const CommandLine& line) override;
    void Go(const CommandLine& line) override;
    void Stop(const CommandLine& line) override;
    void PonderHit(const CommandLine& line) override;
    void SetOption(const CommandLine& line) override;
    void SetDebug(const CommandLine& line) override;
    void Quit(const CommandLine& line) override;

    // --- What the options change ---

    void ResizeTables() override;
    void ClearTables() override;
    void WeighDraws() override;
    void TakeStyle() override;
    void ReadSettings() override;
    void ReadTournamentFile() override;
    void TakeTournamentSettings() override;
    void OpenBook() override;
    void LoadBitbases() override;
    void OpenSyzygy() override;
    void NoteOpponent() override;
    void OpenLog() override;

    // --- What the search tells and asks ---

    void pollInput() override;
    void sendThinking(const SearchInfo& info) override;
    void sendDepthStarted(int /*depth*/) override {}
    void sendNewPvMove(const std::string& /*move*/) override {}
    void sendSearchInstability() override {}
    void sendCurrentMove(const SearchInfo& info, Move move) override;
    void sendBound(const SearchInfo& info, int score, ScoreBound bound, std::span<const Move> line) override;
    void sendSearchStatistics(const SearchInfo& info) override;
    void onSearchFinished(bool discard) override;

    void Send(std::string_view line) { output_.Send(line); }
    /// The line that has waited longest, or else the next one of the input. Throws at its end.
    [[nodiscard]] WaitingLine NextLine();
    /// The next line of the input, an empty one for a line that was too long; nothing at its end.
    [[nodiscard]] std::optional<std::string> ReadLine();
    void Handle(const std::string& text);
    [[nodiscard]] bool HasMemoryForTables() const;
    void UseSearch(bool tournament);
    /// What is wrong with the files of bitbases that are in use, or should be.
    void TellOfBitbases();
    void RunSearch();
    /// Carries out the lines that have come. At the end of the input it ends the program, unless a search is under way
    /// that ends by itself: its answer is still wanted, as are those to the lines that wait for it.
    void HearInput();
    /// Waits for the word that ends a search which does not end by itself: `ponderhit`, or `stop`, which throws.
    void WaitForWord();
    /// Turns a request to ponder into one of a usual search. False if it was none.
    [[nodiscard]] bool EndPondering();
    /// A move of the book instead of a search; INVALID if there is none, or none is wanted.
    [[nodiscard]] Move MoveOfBook(const GoCommand& go);
    /// A search of the position that is set.
    [[nodiscard]] Request RequestFor(const GoCommand& go);
    /// The search as it is told: with the score and the count of the tables, where they know the root.
    [[nodiscard]] SearchInfo Told(const SearchInfo& info) const;
    [[nodiscard]] bool HasFoundMate(const SearchInfo& info) const;
    /// The answer where there is nothing to search: at once, or when the word comes that ends the search.
    void SendNoMove();
    void SendBestMove();

    Engine& engine_;
    Output output_;
    OptionValues values_;
    std::optional<SearchController> controller_;
    std::optional<BOARD> position_;  ///< at ply 0; nothing after a position that is none
    std::deque<WaitingLine> waiting_;
    std::optional<Request> request_;
    bool is_searching_ = false;
    bool has_input_ended_ = false;
    bool has_told_of_bitbases_ = false;
    std::int64_t next_status_ = 0;  ///< milliseconds of the search
    Move last_shown_ = INVALID;     ///< with which the last line began whose score is known
    LimitedStrength strength_;
    PolyglotBook book_;
    SyzygyTables syzygy_;
    std::mt19937_64 chance_;
};

}  // namespace VorkaUci
