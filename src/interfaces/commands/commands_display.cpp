#include "interfaces/commands/command_families.h"

#include "evaluation/evaluate.h"
#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"
#include "interfaces/commands/command.h"
#include "interfaces/commands/keyword.h"
#include "interfaces/protocols/connected_game.h"

/// Commands that show something and change nothing.
namespace VorkaInterfaces {

namespace {

/// `.`: how far the running search is.
class Command_SendSearchStatus : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override {
        const bool search_runs = !game.IsGameOver() && game.runningSearch() && game.search().info().valid;
        game.protocol().sendSearchStatus(search_runs ? &game.search().info() : nullptr);
    }
};

/// `display`
class Command_Display : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override { game.protocol().showBoard(game.record(), true); }
};

/// `eval`: the evaluation of the current position, in centipawns for the side to move.
class Command_Eval : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override {
        // After an impossible position there is nothing to evaluate.
        if (!game.IsPositionValid()) refuse(vocabulary::command_not_legal_now);
    }

    void work(ConnectedGame& game) override {
        vlog << vocabulary::eval << ": "
             << evaluate_for_display(game.board(), game.protocol().personality, game.engine().tables,
                                     game.engine().bitbases)
             << '\n';
        vlog.Flush();
    }
};

/// `version`
class Command_Version : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override { game.protocol().showVersion(); }
};

// clang-format off
constexpr Keyword keywords[] = {
    {".",       alone, Make<Command_SendSearchStatus>, prompt_only,        {300, help_texts::search_status, "\".\""}},
    {"display", alone, Make<Command_Display>,          prompt_only,        {30, help_texts::display}},
    {"eval",    alone, Make<Command_Eval>,             at_start,           {50, help_texts::eval}},
    {"version", alone, Make<Command_Version>,          at_start_then_exit, {350, help_texts::version}},
};
// clang-format on

}  // namespace

std::span<const Keyword> displayKeywords() { return keywords; }

}  // namespace VorkaInterfaces
