#include "interfaces/commands/command_families.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "evaluation/personality.h"
#include "frame/base/logfile.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "interfaces/commands/command.h"
#include "interfaces/commands/keyword.h"
#include "interfaces/protocols/connected_game.h"
#include "interfaces/protocols/error_command.h"
#include "search/settings/settings_file.h"
#include "search/tables/hash.h"

/// Commands that show and change what the search depends on: its settings, tables, personality and contempt.
namespace VorkaInterfaces {

namespace {

using OptimizeInterface::Settings;

/// The parts between semicolons, empty ones included.
std::vector<std::string_view> SplitAtSemicolons(std::string_view text) {
    std::vector<std::string_view> pieces;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(';', begin), text.size());
        pieces.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return pieces;
}

/// What the search depends on may change only in force mode, where none runs.
bool IsForced(const ConnectedGame& game) { return game.mode() == EngineMode::force; }

ABSTRACT_HASH_TABLE* TableNamed(std::string_view type, HashTables& tables) {
    if (type == vocabulary::hash_word_transposition) return &tables.transposition;
    if (type == vocabulary::hash_word_pawn) return &tables.pawn;
    if (type == vocabulary::hash_word_evaluation) return &tables.evaluation;
    return nullptr;
}

/// `display_settings [all|name;name..]`
class Command_DisplaySettingVariables : public CheckedCommand {
  public:
    Command_DisplaySettingVariables(std::string input_line, std::string names)
        : CheckedCommand(std::move(input_line)), names_(std::move(names)) {}

  private:
    void check(ConnectedGame& game) override {
        const Settings settings = Settings::Of(game.engine().settings);
        std::ostringstream text;
        try {
            if (names_.empty() || names_ == vocabulary::all) {
                settings.Write(text);
            } else {
                for (const std::string_view name : SplitAtSemicolons(names_)) {
                    text << name << '=' << settings.Find(name).Text() << '\n';
                }
            }
        } catch (const Settings::SettingsException& error) {
            refuse(error.text());
        }
        text_ = text.str();
    }

    void work(ConnectedGame&) override {
        vlog << text_;
        vlog.Flush();
    }

    const std::string names_;  ///< empty for all
    std::string text_;
};

/// Settings are changed in a private copy first: all or nothing.
class Command_ChangeSettings : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) final {
        if (!IsForced(game)) refuse(vocabulary::must_be_in_force_mode);
        Settings changed = Settings::Of(game.engine().settings);
        try {
            change(changed);
        } catch (const TextException& error) {
            refuse(error.text());
        }
        settings_.emplace(std::move(changed));
    }

    void work(ConnectedGame& game) final { settings_->ApplyTo(game.engine().settings); }
    /// May throw the exceptions of settings.
    virtual void change(OptimizeInterface::Settings& settings) const = 0;

    std::optional<OptimizeInterface::Settings> settings_;
};

/// `modify_settings name=value;name=value..`
class Command_ModifySettingVariables : public Command_ChangeSettings {
  public:
    Command_ModifySettingVariables(std::string input_line, std::string assignments)
        : Command_ChangeSettings(std::move(input_line)), assignments_(std::move(assignments)) {}

  private:
    void change(Settings& settings) const override {
        const std::vector<std::string_view> pieces = SplitAtSemicolons(assignments_);
        // Every part must be an assignment before any of them is carried out.
        const auto is_assignment = [](std::string_view piece) {
            const std::size_t sign = piece.find('=');
            return sign != std::string_view::npos && sign > 0 && sign + 1 < piece.size();
        };
        if (!std::all_of(pieces.begin(), pieces.end(), is_assignment)) refuse(vocabulary::separator_missing);
        for (const std::string_view piece : pieces) {
            const std::size_t sign = piece.find('=');
            settings.Set(piece.substr(0, sign), piece.substr(sign + 1));
        }
    }

    const std::string assignments_;
};

/// `read_settings file`
class Command_ReadSearchSettings : public Command_ChangeSettings {
  public:
    Command_ReadSearchSettings(std::string input_line, std::string path)
        : Command_ChangeSettings(std::move(input_line)), path_(std::move(path)) {}

  private:
    void change(Settings& settings) const override { settings.ReadFile(path_); }
    const std::string path_;
};

/// `write_settings file`
class Command_WriteSearchSettings : public CheckedCommand {
  public:
    Command_WriteSearchSettings(std::string input_line, std::string path)
        : CheckedCommand(std::move(input_line)), path_(std::move(path)) {}

  private:
    void work(ConnectedGame& game) override {
        try {
            Settings::Of(game.engine().settings).WriteFile(path_);
        } catch (const Settings::SettingsException& error) {
            refuse(error.text());
        }
    }

    const std::string path_;
};

/// `hash`
class Command_DisplayHashtableStatus : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override { game.protocol().showHashtableStatus(game.engine().tables, true); }
};

/// `hash type size`
class Command_ResizeHashtable : public CheckedCommand {
  public:
    Command_ResizeHashtable(std::string input_line, std::string type, std::string size)
        : CheckedCommand(std::move(input_line)), type_(std::move(type)), size_(std::move(size)) {}

  private:
    void check(ConnectedGame& game) override {
        table_ = TableNamed(type_, game.engine().tables);
        if (table_ == nullptr) refuse(vocabulary::unknown_hashtable_type);
        try {
            bytes_ = VorkaUtils::ParseSize(size_);
        } catch (const string_conversion_error&) {
            refuse(vocabulary::could_not_parse_new_size);
        }
        if (!IsForced(game)) refuse(vocabulary::must_be_in_force_mode);
    }

    void work(ConnectedGame&) override {
        // If the memory is not available the old table stays.
        if (!table_->resize(bytes_)) refuse(vocabulary::argument_out_of_bounds);
    }

    const std::string type_;
    const std::string size_;
    ABSTRACT_HASH_TABLE* table_ = nullptr;
    std::uint64_t bytes_ = 0;
};

/// `personality`
class Command_DisplayPersonality : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override { game.protocol().showPersonality(); }
};

/// `personality word`
class Command_SetPersonality : public CheckedCommand {
  public:
    Command_SetPersonality(std::string input_line, std::int32_t value)
        : CheckedCommand(std::move(input_line)), value_(value) {}

  private:
    void check(ConnectedGame& game) override {
        if (!IsForced(game)) refuse(vocabulary::must_be_in_force_mode);
    }

    void work(ConnectedGame& game) override {
        constexpr std::int32_t most = 1000;
        const std::int32_t value = std::clamp(value_, -most, most);
        if (value == game.protocol().personality) return;
        game.setPersonality(static_cast<std::int16_t>(value));
    }

    const std::int32_t value_;
};

/// `contempt n`, in centipawns
class Command_Contempt : public CheckedCommand {
  public:
    Command_Contempt(std::string input_line, std::int32_t value)
        : CheckedCommand(std::move(input_line)), value_(value) {}

  private:
    void check(ConnectedGame& game) override {
        if (!IsForced(game)) refuse(vocabulary::must_be_in_force_mode);
    }

    void work(ConnectedGame& game) override {
        constexpr std::int32_t most = 32767;
        game.setContempt(std::clamp(value_, -most, most));
    }

    const std::int32_t value_;
};

struct Personality {
    static int Read(const TokenizedLine& input, std::size_t place) {
        int value = 0;
        if (!parse_personality(input.tokens[place], value)) {
            throw ErrorCommand(ErrorCommand::Kind::error, vocabulary::could_not_parse_personality, input.line);
        }
        return value;
    }
};

constexpr auto MakeHash = MakeDisplayOrChange<Command_DisplayHashtableStatus, Command_ResizeHashtable, Word, Word>;
constexpr auto MakePersonality = MakeDisplayOrChange<Command_DisplayPersonality, Command_SetPersonality, Personality>;

// clang-format off
constexpr Keyword keywords[] = {
    {"display_settings", any,          Make<Command_DisplaySettingVariables, Rest>, prompt_only,            {510, help_texts::display_settings}},
    {"modify_settings",  at_least_two, Make<Command_ModifySettingVariables, Rest>,  at_start_in_force_mode, {500, help_texts::modify_settings}},
    {"read_settings",    exactly(2),   Make<Command_ReadSearchSettings, Word>,      at_start_in_force_mode, {520, help_texts::read_settings}},
    {"write_settings",   exactly(2),   Make<Command_WriteSearchSettings, Word>,     prompt_only,            {530, help_texts::write_settings}},
    {"hash",             one_or_three, MakeHash,                                    at_start_in_force_mode, {100, help_texts::hash}},
    {"personality",      one_or_two,   MakePersonality,                             at_start_in_force_mode, {190, help_texts::personality}},
    {"contempt",         exactly(2),   Make<Command_Contempt, Integer>,             at_start_in_force_mode, {20, help_texts::contempt}},
};
// clang-format on

}  // namespace

std::span<const Keyword> settingsKeywords() { return keywords; }

}  // namespace VorkaInterfaces
