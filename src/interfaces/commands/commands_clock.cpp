#include "interfaces/commands/commands_clock.h"

#include <algorithm>
#include <limits>

#include "frame/base/logfile.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "interfaces/protocols/connected_game.h"

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

}  // namespace

void Command_Time::work(ConnectedGame& game) { SetClock(game, EngineSide(game), centiseconds_); }
void Command_Otim::work(ConnectedGame& game) { SetClock(game, Opponent(EngineSide(game)), centiseconds_); }

void Command_sd::check(ConnectedGame&) {
    if (depth_ < 0) refuse(vocabulary::argument_out_of_bounds);
}

void Command_sd::work(ConnectedGame& game) { game.setMaxDepth(depth_); }

void Command_st::check(ConnectedGame&) {
    if (seconds_ < 0) refuse(vocabulary::argument_out_of_bounds);
}

void Command_st::work(ConnectedGame& game) {
    // More seconds than 32 bits hold as milliseconds (25 days) are as good as that.
    constexpr std::int64_t longest = std::numeric_limits<std::int32_t>::max();
    game.setMaxTime(static_cast<std::int32_t>(std::min(std::int64_t{seconds_} * 1000, longest)));
}

void Command_SetTimeControl::check(ConnectedGame&) { controls_ = readControls(); }

void Command_SetTimeControl::work(ConnectedGame& game) {
    for (const Colour side : {white, black}) game.setTimeControls(side, controls_[side]);
}

Command_SetTimeControl::Controls Command_Level::readControls() const {
    if (moves_ < 0 || base_ <= 0 || increment_ < 0) refuse(vocabulary::argument_out_of_bounds);
    const TimeControl control{moves_ == 0 ? rest_of_the_game : moves_, base_, increment_, -1};
    return {std::vector{control}, std::vector{control}};
}

Command_SetTimeControl::Controls Command_Tc::readControls() const {
    const std::string_view text = specification_;
    const std::size_t semicolon = text.find(';');
    if (semicolon == std::string_view::npos) {
        const std::vector<TimeControl> both = readList(text);
        return {both, both};
    }
    if (text.find(';', semicolon + 1) != std::string_view::npos) refuse(vocabulary::too_many_parameters);
    return {readList(text.substr(0, semicolon)), readList(text.substr(semicolon + 1))};
}

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

}  // namespace VorkaInterfaces
