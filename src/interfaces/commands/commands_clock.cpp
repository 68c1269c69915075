#include "interfaces/commands/command_families.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "frame/base/logfile.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "frame/game/chess_clock.h"
#include "interfaces/commands/command.h"
#include "interfaces/commands/keyword.h"
#include "interfaces/protocols/connected_game.h"

/// Commands of the clocks and of the bounds of a search. None of them disturbs a running search, which keeps the limits
/// that it was started with.
namespace VorkaInterfaces {

namespace {

constexpr std::int32_t rest_of_the_game = -1;

/// The side that the engine plays; unless that is exactly one, the side on move stands for it.
[[nodiscard]] Colour EngineSide(const ConnectedGame& game) {
    if (game.player(white).active == game.player(black).active) return game.side_to_move();
    return game.player(white).active ? white : black;
}

[[nodiscard]] std::string_view TrueOrFalse(bool value) { return value ? "true" : "false"; }

void LogClock(std::string_view title, const ChessClock& clock, Colour side) {
    vlog << title << '\n'
         << vocabulary::clock_moves_left << clock.movesLeft(side) << '\n'
         << vocabulary::clock_milliseconds_left << clock.milliseconds(side) << '\n'
         << vocabulary::clock_out_of_time << TrueOrFalse(clock.milliseconds(side) <= 0) << '\n';
}

/// What an interface said about the clocks, for the reader of the log.
void LogClocks(const ConnectedGame& game) {
    const EchoScope log_only(vlog, Echo::off);
    const Colour active = game.clock().active();
    LogClock(vocabulary::clock_active_side, game.clock(), active);
    LogClock(vocabulary::clock_passive_side, game.clock(), Opponent(active));
    vlog << vocabulary::player1_played_by_engine << TrueOrFalse(game.player(white).active) << '\n'
         << vocabulary::player2_played_by_engine << TrueOrFalse(game.player(black).active) << '\n';
    vlog.Flush();
}

void SetClock(ConnectedGame& game, Colour side, std::int32_t centiseconds) {
    game.setMilliseconds(side, std::int64_t{centiseconds} * 10);
    LogClocks(game);
}

/// `time n`: the engine's clock, in centiseconds.
class Command_Time : public CheckedCommand {
  public:
    Command_Time(std::string input_line, std::int32_t centiseconds)
        : CheckedCommand(std::move(input_line)), centiseconds_(centiseconds) {}

  private:
    void work(ConnectedGame& game) override { SetClock(game, EngineSide(game), centiseconds_); }

    const std::int32_t centiseconds_;
};

/// `otim n`: the clock of the engine's opponent, in centiseconds.
class Command_Otim : public CheckedCommand {
  public:
    Command_Otim(std::string input_line, std::int32_t centiseconds)
        : CheckedCommand(std::move(input_line)), centiseconds_(centiseconds) {}

  private:
    void work(ConnectedGame& game) override { SetClock(game, Opponent(EngineSide(game)), centiseconds_); }

    const std::int32_t centiseconds_;
};

/// `sd n`: a bound for the depth, 0 for none.
class Command_sd : public CheckedCommand {
  public:
    Command_sd(std::string input_line, std::int32_t depth) : CheckedCommand(std::move(input_line)), depth_(depth) {}

  private:
    void check(ConnectedGame&) override {
        if (depth_ < 0) refuse(vocabulary::argument_out_of_bounds);
    }

    void work(ConnectedGame& game) override { game.setMaxDepth(depth_); }
    const std::int32_t depth_;
};

/// `st n`: a bound for the time of a move, in seconds, 0 for none.
class Command_st : public CheckedCommand {
  public:
    Command_st(std::string input_line, std::int32_t seconds)
        : CheckedCommand(std::move(input_line)), seconds_(seconds) {}

  private:
    void check(ConnectedGame&) override {
        if (seconds_ < 0) refuse(vocabulary::argument_out_of_bounds);
    }

    void work(ConnectedGame& game) override {
        // More seconds than 32 bits can hold as milliseconds (25 days) count as that many.
        constexpr std::int64_t longest = std::numeric_limits<std::int32_t>::max();
        game.setMaxTime(static_cast<std::int32_t>(std::min(std::int64_t{seconds_} * 1000, longest)));
    }

    const std::int32_t seconds_;
};

/// Gives both clocks new time controls, the running one at once.
class Command_SetTimeControl : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  protected:
    using Controls = std::array<std::vector<TimeControl>, 2>;  ///< by colour

  private:
    void check(ConnectedGame&) final { controls_ = readControls(); }
    void work(ConnectedGame& game) final {
        for (const Colour side : {white, black}) game.setTimeControls(side, controls_[side]);
    }

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
    [[nodiscard]] Controls readControls() const override {
        if (moves_ < 0 || base_ <= 0 || increment_ < 0) refuse(vocabulary::argument_out_of_bounds);
        const TimeControl control{moves_ == 0 ? rest_of_the_game : moves_, base_, increment_, -1};
        return {std::vector{control}, std::vector{control}};
    }

    const std::int32_t moves_;
    const std::int32_t base_;
    const std::int32_t increment_;
};

/// `tc spec`: a list of triples (moves, time, increment) for both sides, or two lists, for White and for Black,
/// separated by ';'. The last triple of a list stands for the rest of the game (moves 0).
class Command_Tc : public Command_SetTimeControl {
  public:
    Command_Tc(std::string input_line, std::string specification)
        : Command_SetTimeControl(std::move(input_line)), specification_(std::move(specification)) {}

  private:
    [[nodiscard]] Controls readControls() const override {
        const std::string_view text = specification_;
        const std::size_t semicolon = text.find(';');
        if (semicolon == std::string_view::npos) {
            const std::vector<TimeControl> both = readList(text);
            return {both, both};
        }
        if (text.find(';', semicolon + 1) != std::string_view::npos) refuse(vocabulary::too_many_parameters);
        return {readList(text.substr(0, semicolon)), readList(text.substr(semicolon + 1))};
    }

    [[nodiscard]] std::vector<TimeControl> readList(std::string_view text) const;
    const std::string specification_;
};

std::vector<TimeControl> Command_Tc::readList(std::string_view text) const {
    const std::vector<std::string> words = VorkaUtils::tokenize(text);
    if (words.empty()) refuse(vocabulary::missing_parameters);
    if (words.size() % 3 != 0) refuse(vocabulary::separator_missing);

    std::vector<TimeControl> list;
    try {
        for (std::size_t i = 0; i < words.size(); i += 3) {
            const std::int32_t moves = VorkaUtils::ToInteger(words[i]);
            list.push_back({.moves = moves == 0 ? rest_of_the_game : moves,
                            .base = VorkaUtils::ParseClockTime(words[i + 1]),
                            .increment = VorkaUtils::ParseIncrement(words[i + 2]),
                            .next = 0});
        }
    } catch (const string_conversion_error&) {
        refuse(vocabulary::integer_argument_expected);
    }
    if (list.back().moves != rest_of_the_game) refuse(vocabulary::last_time_control_must_not_terminate);
    list.back().next = -1;
    for (const TimeControl& control : list) {
        if (control.moves < rest_of_the_game || control.base < 0 || control.increment < 0) {
            refuse(vocabulary::argument_out_of_bounds);
        }
    }
    return list;
}

struct ClockTime {
    static std::int32_t Read(const TokenizedLine& input, std::size_t place) {
        return VorkaUtils::ParseClockTime(input.tokens[place]);
    }
};

struct Increment {
    static std::int32_t Read(const TokenizedLine& input, std::size_t place) {
        return VorkaUtils::ParseIncrement(input.tokens[place]);
    }
};

// clang-format off
constexpr Keyword keywords[] = {
    {"time",  exactly(2), Make<Command_Time, Integer>,                        prompt_only, {320, help_texts::time}},  // centiseconds
    {"otim",  exactly(2), Make<Command_Otim, Integer>,                        prompt_only, {180, help_texts::otim}},
    {"sd",    exactly(2), Make<Command_sd, Integer>,                          at_start,    {290, help_texts::sd}},  // plies
    {"st",    exactly(2), Make<Command_st, Integer>,                          at_start,    {310, help_texts::st}},  // seconds
    {"level", exactly(4), Make<Command_Level, Integer, ClockTime, Increment>, at_start,    {470, help_texts::level}},
    {"tc",    any,        Make<Command_Tc, Rest>,                             at_start,    {490, help_texts::tc}},
};
// clang-format on

}  // namespace

std::span<const Keyword> clockKeywords() { return keywords; }

}  // namespace VorkaInterfaces
