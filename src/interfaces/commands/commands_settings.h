#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "interfaces/commands/command.h"
#include "search/settings/settings_file.h"
#include "search/tables/hash.h"

/// Commands that show and change what the search relies on: its settings, tables, personality and contempt.
namespace VorkaInterfaces {

/// `display_settings [all|name;name..]`
class Command_DisplaySettingVariables : public CheckedCommand {
  public:
    Command_DisplaySettingVariables(std::string input_line, std::string names)
        : CheckedCommand(std::move(input_line)), names_(std::move(names)) {}

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
    const std::string names_;  ///< empty for all
    std::string text_;
};

/// Settings are changed in a private copy first: all or nothing.
class Command_ChangeSettings : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) final;
    void work(ConnectedGame& game) final;
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
    void change(OptimizeInterface::Settings& settings) const override;
    const std::string assignments_;
};

/// `read_settings file`
class Command_ReadSearchSettings : public Command_ChangeSettings {
  public:
    Command_ReadSearchSettings(std::string input_line, std::string path)
        : Command_ChangeSettings(std::move(input_line)), path_(std::move(path)) {}

  private:
    void change(OptimizeInterface::Settings& settings) const override;
    const std::string path_;
};

/// `write_settings file`
class Command_WriteSearchSettings : public CheckedCommand {
  public:
    Command_WriteSearchSettings(std::string input_line, std::string path)
        : CheckedCommand(std::move(input_line)), path_(std::move(path)) {}

  private:
    void work(ConnectedGame& game) override;
    const std::string path_;
};

/// `hash type size`
class Command_ResizeHashtable : public CheckedCommand {
  public:
    Command_ResizeHashtable(std::string input_line, std::string type, std::string size)
        : CheckedCommand(std::move(input_line)), type_(std::move(type)), size_(std::move(size)) {}

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
    const std::string type_;
    const std::string size_;
    ABSTRACT_HASH_TABLE* table_ = nullptr;
    std::uint64_t bytes_ = 0;
};

/// `personality word`
class Command_SetPersonality : public CheckedCommand {
  public:
    Command_SetPersonality(std::string input_line, std::int32_t value)
        : CheckedCommand(std::move(input_line)), value_(value) {}

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
    const std::int32_t value_;
};

/// `contempt n`, in centipawns
class Command_Contempt : public CheckedCommand {
  public:
    Command_Contempt(std::string input_line, std::int32_t value)
        : CheckedCommand(std::move(input_line)), value_(value) {}

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
    const std::int32_t value_;
};

}  // namespace VorkaInterfaces
