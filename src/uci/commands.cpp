#include "uci/commands.h"

#include <algorithm>
#include <array>

#include "frame/base/text_utilities.h"

namespace VorkaUci {

namespace {

constexpr std::array command_rows{
    CommandRow{"uci", true, &CommandActions::Introduce},
    CommandRow{"debug", true, &CommandActions::SetDebug},
    CommandRow{"isready", true, &CommandActions::GetReady},
    CommandRow{"setoption", false, &CommandActions::SetOption},
    CommandRow{"ucinewgame", false, &CommandActions::NewGame},
    CommandRow{"position", false, &CommandActions::SetPosition},
    CommandRow{"go", false, &CommandActions::Go},
    CommandRow{"stop", true, &CommandActions::Stop},
    CommandRow{"ponderhit", true, &CommandActions::PonderHit},
    CommandRow{"quit", true, &CommandActions::Quit},
};

}  // namespace

std::span<const CommandRow> CommandRows() { return command_rows; }

std::optional<FoundCommand> FindCommand(std::string_view text) {
    for (;;) {
        const std::size_t begin = text.find_first_not_of(VorkaUtils::white_space);
        if (begin == std::string_view::npos) return std::nullopt;
        text.remove_prefix(begin);
        const std::string_view word = text.substr(0, text.find_first_of(VorkaUtils::white_space));
        text.remove_prefix(word.size());
        const auto* const row = std::find_if(command_rows.begin(), command_rows.end(),
                                             [word](const CommandRow& candidate) { return candidate.word == word; });
        if (row == command_rows.end()) continue;
        return FoundCommand{.row = *row, .line = {.text = std::string(text), .words = VorkaUtils::tokenize(text)}};
    }
}

}  // namespace VorkaUci
