#include "uci/commands.h"

#include <algorithm>
#include <array>

#include "frame/base/text_utilities.h"
#include "search/driver/steering.h"

namespace VorkaUci {

namespace {

bool Has(const CommandLine& line, std::string_view word) {
    return std::find(line.words.begin(), line.words.end(), word) != line.words.end();
}

constexpr std::array command_rows{
    CommandRow{"uci", true, [](CommandActions& program, const CommandLine&) { program.introduce(); }},
    CommandRow{"debug", true,
               [](CommandActions& program, const CommandLine& line) { program.setDebug(!Has(line, "off")); }},
    CommandRow{"isready", true, [](CommandActions& program, const CommandLine&) { program.getReady(); }},
    CommandRow{"setoption", false,
               [](CommandActions& program, const CommandLine& line) { program.setOption(line.text); }},
    CommandRow{"ucinewgame", false, [](CommandActions& program, const CommandLine&) { program.newGame(); }},
    CommandRow{"position", false,
               [](CommandActions& program, const CommandLine& line) { program.setPosition(line.words); }},
    CommandRow{"go", false, [](CommandActions& program, const CommandLine& line) { program.go(line.words); }},
    CommandRow{"stop", true, [](CommandActions& program, const CommandLine&) { program.stop(); }},
    CommandRow{"ponderhit", true, [](CommandActions& program, const CommandLine&) { program.ponderHit(); }},
    CommandRow{"quit", true, [](CommandActions&, const CommandLine&) { throw quit_command_received_exception(); }},
};

}  // namespace

std::span<const CommandRow> CommandRows() { return command_rows; }

const CommandRow* FindCommand(const std::string& text, CommandLine& line) {
    std::string_view rest = text;
    for (;;) {
        const std::size_t begin = rest.find_first_not_of(VorkaUtils::white_space);
        if (begin == std::string_view::npos) return nullptr;
        rest.remove_prefix(begin);
        const std::string_view word = rest.substr(0, rest.find_first_of(VorkaUtils::white_space));
        rest.remove_prefix(word.size());
        const auto* const row = std::find_if(command_rows.begin(), command_rows.end(),
                                             [word](const CommandRow& candidate) { return candidate.word == word; });
        if (row == command_rows.end()) continue;
        line = {.text = std::string(rest), .words = VorkaUtils::tokenize(rest)};
        return row;
    }
}

}  // namespace VorkaUci
