#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

enum class SearchKind : std::int32_t;

namespace VorkaInterfaces {

class ConnectedGame;

/// One input line, ready to run. Execute may be unwound by an exception and run again from its top: a command that
/// can't run during a search aborts it, and the main loop calls Execute once more. Checks therefore run once, while the
/// search is still undisturbed, and a flag remembers that they have passed.
///
/// Constructors run while a line is translated, perhaps inside a search: they take their arguments and touch no game.
class Command {
  public:
    explicit Command(std::string input_line) : line(std::move(input_line)) {}
    virtual ~Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    virtual void Execute(ConnectedGame& game) = 0;

    const std::string line;  ///< the whole input line; quoted in error messages
    bool finished = false;   ///< the main loop deletes the command when it finds this set

  protected:
    /// Answers the line with an error. Nothing may have been changed yet.
    [[noreturn]] void refuse(std::string_view reason) const;
};

/// A command in two steps: the one place that makes sure that checks run once.
class CheckedCommand : public Command {
  public:
    using Command::Command;
    void Execute(ConnectedGame& game) final;

  protected:
    /// Refuses what can't be done now; the search, if one runs, goes on. May set `finished` to leave the work out.
    virtual void check(ConnectedGame&) {}
    /// Does it. Runs again from its top if it aborts a search, so it sets nothing before that would change the second
    /// run.
    virtual void work(ConnectedGame& game) = 0;
    /// The last act of a command that wants the current position searched: it is finished before the request leaves.
    [[noreturn]] void finishWithSearch(ConnectedGame& game, SearchKind kind);

  private:
    bool checked_ = false;
};

/// An empty line, or a word that is ignored for compatibility.
class Command_DoNothing : public Command {
  public:
    using Command::Command;
    void Execute(ConnectedGame&) override { finished = true; }
};

}  // namespace VorkaInterfaces
