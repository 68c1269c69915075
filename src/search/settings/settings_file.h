#pragma once

#include <array>
#include <cstdint>
#include <istream>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "frame/base/vorka_exception.h"
#include "search/settings/search_settings.h"

/// The search settings as text: shown, changed by name, and kept in files.
///
/// A file is plain text, one variable per line, `name=value`, in the order of the table. The elements of an array are
/// separated by single blanks; booleans are `true` and `false`. The order is part of the format.
///
///     Settings settings = Settings::Of(engine.settings);
///     settings.Set("futility_pruning_margin", "250");       // a private copy until it is applied
///     settings.ApplyTo(engine.settings);
namespace OptimizeInterface {

/// A copy of one variable with its elements: changing it does not change the setting. It may have no value yet.
class DataType {
  public:
    /// A text that is no value, a value out of bounds, a bad index or length, or no value at all.
    class DataTypeException : public TextException {
      public:
        using TextException::TextException;
    };

    explicit DataType(const search_settings::SettingRow& row) : row_(&row) {}
    virtual ~DataType() = default;
    DataType(const DataType&) = delete;
    DataType& operator=(const DataType&) = delete;

    /// Takes all elements from a text. Throws DataTypeException, with the old value kept.
    virtual void read(std::string_view input) = 0;
    /// Throws DataTypeException if there is no value.
    virtual void write(std::ostream& output) const = 0;
    [[nodiscard]] virtual std::string_view type_name() const = 0;
    [[nodiscard]] virtual std::string lower_bound() const = 0;
    [[nodiscard]] virtual std::string upper_bound() const = 0;

    [[nodiscard]] std::string_view name() const { return row_->name; }
    [[nodiscard]] std::size_t size() const { return row_->size; }
    /// Type, size and bounds: "integer : [1] {1..6400}".
    [[nodiscard]] std::string Description() const;
    /// The value as it stands in a file. Throws DataTypeException if there is none.
    [[nodiscard]] std::string Text() const;

    /// Throw DataTypeException for an index beyond the size, no value, or a value out of bounds.
    [[nodiscard]] std::int32_t Get(std::size_t index) const;
    void Set(std::size_t index, std::int32_t value);

    void TakeFrom(const SearchSettings& settings);
    void TakeDefault();
    /// There must be a value.
    void ApplyTo(SearchSettings& settings) const;

  protected:
    using Elements = std::array<std::int32_t, search_settings::max_setting_size>;

    [[nodiscard]] const search_settings::SettingRow& row() const { return *row_; }
    void CheckBounds(std::int32_t value) const;
    /// Throws DataTypeException if there is no value.
    [[nodiscard]] const Elements& elements() const;
    void SetElements(const Elements& values) { values_ = values; }

  private:
    const search_settings::SettingRow* row_;
    std::optional<Elements> values_;
};

class Integer final : public DataType {
  public:
    using DataType::DataType;
    void read(std::string_view input) override;
    void write(std::ostream& output) const override;
    [[nodiscard]] std::string_view type_name() const override;
    [[nodiscard]] std::string lower_bound() const override;
    [[nodiscard]] std::string upper_bound() const override;
};

class Boolean final : public DataType {
  public:
    using DataType::DataType;
    void read(std::string_view input) override;
    void write(std::ostream& output) const override;
    [[nodiscard]] std::string_view type_name() const override;
    [[nodiscard]] std::string lower_bound() const override;
    [[nodiscard]] std::string upper_bound() const override;
};

/// All variables in their order.
class Settings {
  public:
    class SettingsException : public TextException {
      public:
        using TextException::TextException;
    };
    /// A file that is no settings file, or a value that is none.
    class InvalidData : public SettingsException {
      public:
        using SettingsException::SettingsException;
    };
    class IO_Exception : public SettingsException {
      public:
        using SettingsException::SettingsException;
    };
    class UnknownVariable : public SettingsException {
      public:
        using SettingsException::SettingsException;
    };

    /// The variables without values.
    [[nodiscard]] static Settings Descriptions();
    [[nodiscard]] static Settings Of(const SearchSettings& values);

    /// Throws UnknownVariable.
    [[nodiscard]] const DataType& Find(std::string_view name) const { return *Lookup(name); }
    /// Throws UnknownVariable or InvalidData.
    void Set(std::string_view name, std::string_view value);

    /// Takes all values from a text in the format of a file. Variables missing at its end take their defaults, and the
    /// log says so. Throws InvalidData, and can't be used any more then.
    void Read(std::istream& input);
    /// Throws IO_Exception or InvalidData.
    void ReadFile(const std::string& path);
    void Write(std::ostream& output) const;
    /// Throws IO_Exception; an older file is replaced as a whole or not at all.
    void WriteFile(const std::string& path) const;

    void ApplyTo(SearchSettings& values) const;

  private:
    Settings();
    [[nodiscard]] DataType* Lookup(std::string_view name) const;

    std::vector<std::unique_ptr<DataType>> variables_;
    std::map<std::string_view, DataType*> by_name_;
};

}  // namespace OptimizeInterface
