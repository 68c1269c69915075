// Any lines, read as vorka-uci reads them: a command or none, and of its words a position that can stand, limits that a
// search can have, an option that takes a value within its bounds.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "search/driver/steering.h"
#include "uci/commands.h"
#include "uci/go_command.h"
#include "uci/move_text.h"
#include "uci/options.h"
#include "uci/position_command.h"
#include "uci/time_use.h"

namespace {

using namespace VorkaUci;

void Require(bool holds) {
    if (!holds) abort();
}

void ReadAsPosition(const CommandLine& line) {
    const std::optional<PositionCommand> command = ReadPosition(line.words);
    if (!command) return;
    const BOARD& board = command->board;
    Require(board.IsValid() && board.ply == 0 && board.frame().fifty_counter <= 100);
}

void ReadAsGo(const CommandLine& line) {
    const GoCommand go = ReadGo(line.words);
    for (const std::string& move : go.search_moves) Require(LooksLikeMove(move));
    for (const Colour side : {white, black}) {
        const SearchLimits limits = LimitsFor(go, side, 10);
        Require(limits.max_depth >= 0 && limits.max_time_limit >= 0 && limits.poll_interval > 0);
        // A move time is to be used up: it bounds the hard limit alone.
        if (!go.move_time) {
            Require(limits.max_time_limit == 0 || limits.variable_time_limit <= limits.max_time_limit);
        }
        if (go.time[side] && *go.time[side] > 0) Require(limits.max_time_limit <= *go.time[side]);
    }
}

void ReadAsOption(const CommandLine& line) {
    const SetOptionCommand command = ReadSetOption(line.text);
    const OptionRow* const row = FindOption(command.name);
    if (row == nullptr) return;
    OptionValues values;
    (void)TakeValue(*row, command.value, values);
    for (const OptionRow& any : OptionRows()) {
        const auto* const spin = std::get_if<SpinOption>(&any.kind);
        if (spin == nullptr) continue;
        Require(values.*spin->value >= spin->least && values.*spin->value <= spin->most);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find('\n', from), text.size());
        const std::optional<FoundCommand> command = FindCommand(text.substr(from, end - from));
        from = end + 1;
        if (!command) continue;
        // Whatever the word: each reader has to stand the words of the others.
        ReadAsPosition(command->line);
        ReadAsGo(command->line);
        ReadAsOption(command->line);
    }
    return 0;
}
