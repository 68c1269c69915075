#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "frame/game/chess_clock.h"
#include "interfaces/commands/command.h"

/// Commands of the clocks and of the bounds of a search. None of them disturbs a running search, which keeps the limits
/// that it was started with.
namespace VorkaInterfaces {

/// `time n`: the engine's clock, in centiseconds.
class Command_Time : public CheckedCommand {
  public:
    Command_Time(std::string input_line, std::int32_t centiseconds)
        : CheckedCommand(std::move(input_line)), centiseconds_(centiseconds) {}

  private:
    void work(ConnectedGame& game) override;
    const std::int32_t centiseconds_;
};

/// `otim n`: the clock of the engine's opponent, in centiseconds.
class Command_Otim : public CheckedCommand {
  public:
    Command_Otim(std::string input_line, std::int32_t centiseconds)
        : CheckedCommand(std::move(input_line)), centiseconds_(centiseconds) {}

  private:
    void work(ConnectedGame& game) override;
    const std::int32_t centiseconds_;
};

/// `sd n`: a bound for the depth, 0 for none.
class Command_sd : public CheckedCommand {
  public:
    Command_sd(std::string input_line, std::int32_t depth) : CheckedCommand(std::move(input_line)), depth_(depth) {}

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
    const std::int32_t depth_;
};

/// `st n`: a bound for the time of a move, in seconds, 0 for none.
class Command_st : public CheckedCommand {
  public:
    Command_st(std::string input_line, std::int32_t seconds)
        : CheckedCommand(std::move(input_line)), seconds_(seconds) {}

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
    const std::int32_t seconds_;
};

/// Gives both clocks new time controls, the running one at once.
class Command_SetTimeControl : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  protected:
    using Controls = std::array<std::vector<TimeControl>, 2>;  ///< by colour

  private:
    void check(ConnectedGame& game) final;
    void work(ConnectedGame& game) final;
    /// The controls of both sides. Refuses what is out of bounds.
    [[nodiscard]] virtual Controls readControls() const = 0;
    Controls controls_;
};

/// `level moves time increment`: one control for both sides, repeated for ever.
class Command_Level : public Command_SetTimeControl {
  public:
    /// `moves` 0 stands for the rest of the game; the times are milliseconds.
    Command_Level(std::string input_line, std::int32_t moves, std::int32_t base, std::int32_t increment)
        : Command_SetTimeControl(std::move(input_line)), moves_(moves), base_(base), increment_(increment) {}

  private:
    [[nodiscard]] Controls readControls() const override;
    const std::int32_t moves_;
    const std::int32_t base_;
    const std::int32_t increment_;
};

/// `tc spec`: a list of triples (moves, time, increment) for both sides, or two lists, for White and for Black, parted
/// by ';'. The last triple of a list stands for the rest of the game (moves 0).
class Command_Tc : public Command_SetTimeControl {
  public:
    Command_Tc(std::string input_line, std::string specification)
        : Command_SetTimeControl(std::move(input_line)), specification_(std::move(specification)) {}

  private:
    [[nodiscard]] Controls readControls() const override;
    [[nodiscard]] std::vector<TimeControl> readList(std::string_view text) const;
    const std::string specification_;
};

}  // namespace VorkaInterfaces
