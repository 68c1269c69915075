#include "uci/options.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "evaluation/personality.h"
#include "frame/base/text_utilities.h"
#include "uci/strength.h"
#include "uci/uci_texts.h"

namespace VorkaUci {

namespace {

constexpr int largest_hash = 65536;  // MiB
constexpr int most_lines = 8;
constexpr int largest_contempt = 1000;
constexpr int largest_style = 1000;
constexpr int largest_overhead = 5000;

std::vector<std::string_view> SearchNames() { return {uci_texts::classic_search, uci_texts::tournament_search}; }

// clang-format off
constexpr std::array plain_rows{
    OptionRow{"Hash", SpinOption{&OptionValues::hash, 1, largest_hash}, &OptionActions::ResizeTables},
    OptionRow{uci_texts::clear_hash, ButtonOption{}, &OptionActions::ClearTables},
    OptionRow{"Ponder", CheckOption{&OptionValues::ponder}},
    OptionRow{"MultiPV", SpinOption{&OptionValues::lines, 1, most_lines}},
    OptionRow{"Contempt", SpinOption{&OptionValues::contempt, -largest_contempt, largest_contempt}, &OptionActions::WeighDraws},
    OptionRow{"Personality", ComboOption{&OptionValues::personality, personality_names}, &OptionActions::TakeStyle},
    OptionRow{"Style", SpinOption{&OptionValues::style, -largest_style, largest_style}, &OptionActions::TakeStyle},
    OptionRow{"Search", ComboOption{&OptionValues::search, SearchNames}},
    OptionRow{uci_texts::settings_file, StringOption{&OptionValues::settings_file}, &OptionActions::ReadSettings},
    OptionRow{uci_texts::tournament_file, StringOption{&OptionValues::tournament_file}, &OptionActions::ReadTournamentFile},
    OptionRow{"OwnBook", CheckOption{&OptionValues::own_book}},
    OptionRow{uci_texts::book_file, StringOption{&OptionValues::book_file}, &OptionActions::OpenBook},
    OptionRow{"UCI_LimitStrength", CheckOption{&OptionValues::limit_strength}},
    OptionRow{"UCI_Elo", SpinOption{&OptionValues::elo, weakest_elo, strongest_elo}},
    OptionRow{"UCI_AnalyseMode", CheckOption{&OptionValues::analyse_mode}, &OptionActions::WeighDraws},
    OptionRow{"UCI_Opponent", StringOption{&OptionValues::opponent}, &OptionActions::NoteOpponent},
    OptionRow{uci_texts::move_overhead, SpinOption{&OptionValues::move_overhead, 0, largest_overhead}},
    OptionRow{uci_texts::bitbase_path, StringOption{&OptionValues::bitbase_path}, &OptionActions::LoadBitbases},
    OptionRow{uci_texts::syzygy_path, StringOption{&OptionValues::syzygy_path}, &OptionActions::OpenSyzygy},
    OptionRow{uci_texts::log_file, StringOption{&OptionValues::log_file}, &OptionActions::OpenLog},
};
// clang-format on

/// The plain options, and after them the numbers of the tournament search.
template <std::size_t... Plain, std::size_t... Numbers>
constexpr auto AllRows(std::index_sequence<Plain...> /*plain*/, std::index_sequence<Numbers...> /*numbers*/) {
    using tournament_settings::rows;
    return std::array{plain_rows[Plain]..., OptionRow{rows[Numbers].name, TournamentOption{&rows[Numbers]},
                                                      &OptionActions::TakeTournamentSettings}...};
}
constexpr auto option_rows = AllRows(std::make_index_sequence<plain_rows.size()>{},
                                     std::make_index_sequence<std::size(tournament_settings::rows)>{});

constexpr std::string_view empty_value = "<empty>";

std::string_view TextOf(bool value) { return value ? "true" : "false"; }
std::string_view ShownString(const std::string& value) { return value.empty() ? empty_value : value; }

/// The kind with its default and limits, as the offer has it.
class Offer {
  public:
    std::string operator()(const CheckOption& option) const {
        return std::string(uci_texts::check_default) + std::string(TextOf(defaults_.*option.value));
    }
    std::string operator()(const SpinOption& option) const {
        return Spin(defaults_.*option.value, option.least, option.most);
    }
    std::string operator()(const TournamentOption& option) const {
        return Spin(defaults_.tournament.*option.row->place, option.row->least, option.row->most);
    }
    std::string operator()(const StringOption& option) const {
        return std::string(uci_texts::string_default) + std::string(ShownString(defaults_.*option.value));
    }
    std::string operator()(const ComboOption& option) const {
        std::string text = std::string(uci_texts::combo_default) + defaults_.*option.value;
        for (const std::string_view choice : option.choices()) (text += " var ") += choice;
        return text;
    }
    std::string operator()(const ButtonOption&) const { return "button"; }

  private:
    const OptionValues defaults_{};

    static std::string Spin(int value, int least, int most) {
        return std::string(uci_texts::spin_default) + std::to_string(value) + " min " + std::to_string(least) +
               " max " + std::to_string(most);
    }
};

/// Takes a value; whether the text is one.
struct Take {
    std::string_view text;
    OptionValues& values;

    bool operator()(const CheckOption& option) const {
        const std::string word = VorkaUtils::ToLower(text);
        if (word != TextOf(true) && word != TextOf(false)) return false;
        values.*option.value = word == TextOf(true);
        return true;
    }
    bool operator()(const SpinOption& option) const try {
        const int number = VorkaUtils::ToInteger(text);
        if (number < option.least || number > option.most) return false;
        values.*option.value = number;
        return true;
    } catch (const string_conversion_error&) {
        return false;
    }
    bool operator()(const StringOption& option) const {
        values.*option.value = text == empty_value ? std::string() : std::string(text);
        return true;
    }
    bool operator()(const ComboOption& option) const {
        for (const std::string_view choice : option.choices()) {
            if (VorkaUtils::ToLower(choice) != VorkaUtils::ToLower(text)) continue;
            values.*option.value = choice;
            return true;
        }
        return false;
    }
    bool operator()(const ButtonOption&) const { return true; }
    bool operator()(const TournamentOption& option) const {
        return tournament_settings::Take(*option.row, text, values.tournament);
    }
};

/// Where `word` stands in the text, with white space or the ends of the text around it; npos if it doesn't.
std::size_t FindWord(std::string_view text, std::string_view word) {
    const auto is_edge = [&](std::size_t at) {
        return at >= text.size() || VorkaUtils::white_space.find(text[at]) != std::string_view::npos;
    };
    std::size_t at = text.find(word);
    while (at != std::string_view::npos && !((at == 0 || is_edge(at - 1)) && is_edge(at + word.size()))) {
        at = text.find(word, at + 1);
    }
    return at;
}

}  // namespace

std::span<const OptionRow> OptionRows() { return option_rows; }

const OptionRow* FindOption(std::string_view name) {
    const std::string wanted = VorkaUtils::ToLower(name);
    const auto* const row = std::find_if(option_rows.begin(), option_rows.end(), [&](const OptionRow& candidate) {
        return VorkaUtils::ToLower(candidate.name) == wanted;
    });
    return row == option_rows.end() ? nullptr : row;
}

std::string OptionLine(const OptionRow& row) {
    return std::string(uci_texts::option_name) + std::string(row.name) + " type " + std::visit(Offer{}, row.kind);
}

bool TakeValue(const OptionRow& row, std::string_view text, OptionValues& values) {
    return std::visit(Take{text, values}, row.kind);
}

SetOptionCommand ReadSetOption(std::string_view line) {
    constexpr std::string_view name_word = "name";
    constexpr std::string_view value_word = "value";
    SetOptionCommand command;
    const std::size_t name = FindWord(line, name_word);
    if (name == std::string_view::npos || FindWord(line, value_word) < name) return command;
    line.remove_prefix(name + name_word.size());
    const std::size_t value = FindWord(line, value_word);
    if (value != std::string_view::npos) command.value = VorkaUtils::Trimmed(line.substr(value + value_word.size()));
    for (const std::string& word : VorkaUtils::tokenize(line.substr(0, value))) {
        command.name += (command.name.empty() ? "" : " ") + word;
    }
    return command;
}

}  // namespace VorkaUci
