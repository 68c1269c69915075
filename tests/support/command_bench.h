#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "interfaces/commands/command.h"
#include "interfaces/commands/translation.h"
#include "interfaces/protocols/connected_game.h"
#include "interfaces/protocols/error_command.h"
#include "support/game_access.h"
#include "support/recording_protocol.h"

/// What came of one line.
struct CommandOutcome {
    std::string error;                     ///< the text of the ErrorCommand
    std::optional<SearchRequest> request;  ///< the search that was asked for
    std::optional<bool> aborted;           ///< a running search was ended: whether it was discarded
    bool quit = false;
    bool finished = false;
    int runs = 0;  ///< how often Execute was called
};

/// A game with a recording protocol, and a main loop in small: commands are run, unwound and run again as in the
/// engine, but no search ever runs. GameAccess::pretendSearch makes the game take one for
/// running.
class CommandBench {
  public:
    explicit CommandBench(RecordingProtocol::Like model = RecordingProtocol::Like::console)
        : game(engine, std::make_unique<RecordingProtocol>(model, calls)) {}

    std::vector<std::string> calls;  ///< what the protocol was told, in order
    Engine engine;
    VorkaInterfaces::ConnectedGame game;

    CommandOutcome Send(const std::string& line) {
        CommandOutcome outcome;
        calls.clear();
        try {
            const auto command = VorkaInterfaces::translate(game.protocol(), line);
            while (!command->finished && !outcome.quit && outcome.runs < 3) RunOnce(*command, outcome);
            outcome.finished = command->finished;
        } catch (const VorkaInterfaces::ErrorCommand& error) {
            outcome.error = error.text();
        }
        return outcome;
    }

    /// Sends lines that prepare a test, and forgets what the protocol was told.
    void Prepare(const std::vector<std::string>& lines) {
        for (const std::string& line : lines) {
            Send(line);
            GameAccess::pretendSearch(game, std::nullopt);
        }
        calls.clear();
    }

    [[nodiscard]] std::string fen() const { return game.GetFen(); }

  private:
    void RunOnce(VorkaInterfaces::Command& command, CommandOutcome& outcome) {
        ++outcome.runs;
        try {
            command.Execute(game);
        } catch (const search_aborted_exception& aborted) {
            outcome.aborted = aborted.discard;
            if (aborted.discard) game.onSearchFinished(true);
        } catch (const search_request_received_exception& received) {
            outcome.request = received.request;
        } catch (const quit_command_received_exception&) {
            outcome.quit = true;
        }
    }
};
