#include "interfaces/commands/keyword_table.h"

#include <algorithm>

#include "frame/base/vocabulary.h"
#include "interfaces/commands/command_families.h"
#include "interfaces/protocols/connected_game.h"
#include "interfaces/protocols/error_command.h"

namespace VorkaInterfaces {

namespace {

/// `help`: the one command that is about the table.
class Command_Help : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override { game.protocol().showHelp(helpOfAllCommands()); }
};

constexpr Keyword help_keyword{"help", alone, Make<Command_Help>, at_start_then_exit, {110, help_texts::help}};

std::vector<Keyword> JoinFamilies() {
    std::vector<Keyword> rows{help_keyword};
    for (const auto family : {gameKeywords, clockKeywords, setupKeywords, fileKeywords, displayKeywords,
                              settingsKeywords, databaseKeywords, protocolKeywords}) {
        const std::span<const Keyword> more = family();
        rows.insert(rows.end(), more.begin(), more.end());
    }
    return rows;
}

template <class Condition>
std::vector<VorkaHelpScreen::HelpText> HelpOf(Condition condition) {
    std::vector<Keyword> rows;
    std::ranges::copy_if(keywordTable(), std::back_inserter(rows),
                         [&](const Keyword& row) { return row.help.place != 0 && condition(row); });
    std::ranges::sort(rows, {}, [](const Keyword& row) { return row.help.place; });
    std::vector<VorkaHelpScreen::HelpText> texts;
    for (const Keyword& row : rows) {
        texts.push_back({row.help.shown_as.empty() ? row.word : row.help.shown_as, row.help.text});
    }
    return texts;
}

}  // namespace

std::span<const Keyword> keywordTable() {
    static const std::vector<Keyword> rows = JoinFamilies();
    return rows;
}

const Keyword* findKeyword(std::string_view word) {
    const std::span<const Keyword> rows = keywordTable();
    const auto found = std::ranges::find(rows, word, &Keyword::word);
    return found != rows.end() ? &*found : nullptr;
}

std::unique_ptr<Command> parseCommand(BasicProtocol& protocol, const TokenizedLine& input) {
    const auto refuse = [&](std::string_view reason) {
        return ErrorCommand(ErrorCommand::Kind::error, reason, input.line);
    };
    const Keyword* const found = findKeyword(input.tokens.front());
    const Keyword& row = found != nullptr ? *found : bareMove();
    if (!row.words.Fits(input.tokens.size())) throw refuse(row.words.error);
    try {
        return row.make(protocol, input);
    } catch (const string_conversion_error&) {
        throw refuse(vocabulary::integer_argument_expected);
    }
}

std::vector<VorkaHelpScreen::HelpText> helpOfAllCommands() {
    return HelpOf([](const Keyword&) { return true; });
}

std::vector<VorkaHelpScreen::HelpText> helpOfStartupCommands() {
    return HelpOf([](const Keyword& row) { return row.start_up != prompt_only; });
}

}  // namespace VorkaInterfaces
