#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "frame/shell/startup_options.h"
#include "interfaces/commands/command.h"
#include "interfaces/protocols/connected_game.h"
#include "search/driver/search_host.h"
#include "search/driver/steering.h"

/// The top object: the queues, the main loop, and what a search asks of the world. main owns it.
///
/// Beware of re-entrancy: pollInput runs commands inside a search.
class EngineShell : private SearchHost {
  public:
    /// Starts the console protocol, then carries out the command line. `arguments` without the program's name;
    /// `engine` must outlive the shell.
    EngineShell(Engine& engine, const std::vector<std::string>& arguments);

    /// The main loop; returns the exit status of the program when `quit` arrives, or at once if the command line has
    /// ended the program already.
    [[nodiscard]] int run();
    /// Runs queued work and reads the lines that are ready. Leaves by an exception if something ends the search.
    void pollInput() override;

  private:
    /// Carries out one option after the other until one of them ends the program.
    void carryOutOptions(const std::vector<std::string>& arguments);
    void carryOut(const StartupOption& option);
    /// Translates a line and runs its command to the end.
    void executeAtOnce(const std::string& line);
    /// An option that can't be carried out ends the program.
    void stopAt(const std::string& word);

    void readStep();
    /// Queues the next line of the input; one that is too long is refused.
    void hearLine();
    void translateStep();
    void executeStep();
    /// The one place that starts a search.
    void startSearch(const SearchRequest& request);
    void writeSearchHeader(const SearchRequest& request) const;

    void sendThinking(const SearchInfo& info) override { game_->protocol().sendThinking(info); }
    void sendDepthStarted(int depth) override { game_->protocol().sendDepthStarted(depth); }
    void sendNewPvMove(const std::string& move) override { game_->protocol().sendNewPvMove(move); }
    void sendSearchInstability() override { game_->protocol().sendSearchInstability(); }
    void sendSearchStatistics(const SearchInfo& info) override { game_->protocol().sendSearchStatistics(info); }
    void onSearchFinished(bool discard) override { game_->onSearchFinished(discard); }

    std::deque<std::unique_ptr<VorkaInterfaces::Command>> commands_;
    std::deque<std::string> input_;
    std::unique_ptr<VorkaInterfaces::ConnectedGame> game_;
    std::optional<SearchRequest> requested_;  ///< the search that the main loop starts next
    std::optional<int> exit_status_;          ///< set once the program is to end
};
