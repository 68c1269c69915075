#include "search/settings/settings_file.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "frame/base/logfile.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "frame/base/whole_file.h"

namespace OptimizeInterface {

namespace {

std::string Joined(std::string_view front, std::string_view back) { return std::string(front).append(back); }

DataType::DataTypeException Error(std::string_view text, std::string_view value = {}) {
    return DataType::DataTypeException(Joined(text, value));
}

}  // namespace

// --- One variable ---

std::string DataType::Description() const {
    return Joined(type_name(), " : [") + VorkaUtils::ToString(std::uint64_t{size()}) + "] {" + lower_bound() + ".." +
           upper_bound() + '}';
}

std::string DataType::Text() const {
    std::ostringstream text;
    write(text);
    return text.str();
}

const DataType::Elements& DataType::elements() const {
    if (!values_) throw Error(vocabulary::not_initialized);
    return *values_;
}

void DataType::CheckBounds(std::int32_t value) const {
    if (value < row_->lower_bound || value > row_->upper_bound) throw Error(vocabulary::value_out_of_bounds);
}

std::int32_t DataType::Get(std::size_t index) const {
    if (index >= size()) throw Error(vocabulary::index_out_of_bounds);
    return elements()[index];
}

void DataType::Set(std::size_t index, std::int32_t value) {
    if (index >= size()) throw Error(vocabulary::index_out_of_bounds);
    CheckBounds(value);
    Elements changed = values_.value_or(row_->defaults);
    changed[index] = value;
    values_ = changed;
}

void DataType::TakeFrom(const SearchSettings& settings) {
    Elements taken{};
    for (std::size_t i = 0; i < size(); ++i) taken[i] = row_->Get(settings, i);
    values_ = taken;
}

void DataType::TakeDefault() { values_ = row_->defaults; }

void DataType::ApplyTo(SearchSettings& settings) const {
    for (std::size_t i = 0; i < size(); ++i) row_->Set(settings, i, elements()[i]);
}

void Integer::read(std::string_view input) {
    if (input.empty()) throw Error(vocabulary::not_initialized);
    Elements values{};
    std::size_t count = 0;
    for (std::size_t begin = 0; begin <= input.size(); ++count) {
        const std::size_t end = std::min(input.find(' ', begin), input.size());
        const std::string_view element = input.substr(begin, end - begin);
        if (count >= size()) throw Error(vocabulary::invalid_size);
        try {
            values[count] = VorkaUtils::ToInteger(element);
        } catch (const string_conversion_error&) {
            throw Error(vocabulary::could_not_parse_integer, element);
        }
        CheckBounds(values[count]);
        begin = end + 1;
    }
    if (count != size()) throw Error(vocabulary::invalid_size);
    SetElements(values);
}

void Integer::write(std::ostream& output) const {
    for (std::size_t i = 0; i < size(); ++i) {
        if (i != 0) output << ' ';
        output << VorkaUtils::ToString(elements()[i]);
    }
}

std::string_view Integer::type_name() const { return vocabulary::type_integer; }
std::string Integer::lower_bound() const { return VorkaUtils::ToString(row().lower_bound); }
std::string Integer::upper_bound() const { return VorkaUtils::ToString(row().upper_bound); }

void Boolean::read(std::string_view input) {
    if (input.empty()) throw Error(vocabulary::not_initialized);
    if (input == vocabulary::boolean_true) {
        SetElements({1});
    } else if (input == vocabulary::boolean_false) {
        SetElements({0});
    } else {
        throw Error(vocabulary::could_not_parse_boolean, input);
    }
}

void Boolean::write(std::ostream& output) const {
    output << (elements()[0] != 0 ? vocabulary::boolean_true : vocabulary::boolean_false);
}

std::string_view Boolean::type_name() const { return vocabulary::type_boolean; }
std::string Boolean::lower_bound() const { return std::string(vocabulary::boolean_false); }
std::string Boolean::upper_bound() const { return std::string(vocabulary::boolean_true); }

// --- All variables ---

Settings::Settings() {
    for (const search_settings::SettingRow& row : search_settings::Table()) {
        if (row.is_boolean()) {
            variables_.push_back(std::make_unique<Boolean>(row));
        } else {
            variables_.push_back(std::make_unique<Integer>(row));
        }
        by_name_.emplace(row.name, variables_.back().get());
    }
}

Settings Settings::Descriptions() { return {}; }

Settings Settings::Of(const SearchSettings& values) {
    Settings settings;
    for (const auto& variable : settings.variables_) variable->TakeFrom(values);
    return settings;
}

DataType* Settings::Lookup(std::string_view name) const {
    const auto found = by_name_.find(name);
    if (found == by_name_.end()) throw UnknownVariable(Joined(vocabulary::unknown_variable_of_settings, name));
    return found->second;
}

void Settings::Set(std::string_view name, std::string_view value) {
    DataType* const variable = Lookup(name);
    try {
        variable->read(value);
    } catch (const DataType::DataTypeException& error) {
        throw InvalidData(Joined(vocabulary::could_not_parse_new_value, error.text()));
    }
}

namespace {

/// A file may come from a system that ends its lines with two characters.
void DropCarriageReturn(std::string& line) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
}

void ReadLineInto(DataType& variable, std::string_view line) {
    const std::size_t sign = line.find('=');
    if (sign == std::string_view::npos) throw Error(vocabulary::separator_equals_missing);
    const std::string_view name = line.substr(0, sign);
    if (name != variable.name()) {
        throw Error(Joined(vocabulary::expected_variable, variable.name()) +
                    Joined(vocabulary::received_variable, name));
    }
    variable.read(line.substr(sign + 1));
}

void LogMissing(const DataType& variable) {
    const EchoScope file_only(vlog, Echo::off);
    vlog << vocabulary::initialized_missing_variable << variable.name() << vocabulary::with_default_value
         << variable.Text() << vocabulary::end_of_default_value;
}

}  // namespace

void Settings::Read(std::istream& input) {
    std::uint64_t line_number = 0;
    std::string line;
    for (const auto& variable : variables_) {
        if (!std::getline(input, line)) {
            variable->TakeDefault();
            LogMissing(*variable);
            continue;
        }
        ++line_number;
        DropCarriageReturn(line);
        try {
            ReadLineInto(*variable, line);
        } catch (const DataType::DataTypeException& error) {
            throw InvalidData(Joined(vocabulary::parse_error_in_line, VorkaUtils::ToString(line_number)) + ": " +
                              error.text());
        }
    }
}

void Settings::ReadFile(const std::string& path) {
    std::ifstream file;
    if (!OpenForReading(path, file)) throw IO_Exception(Joined(vocabulary::could_not_open_settings, path));
    Read(file);
    if (file.bad()) throw IO_Exception(Joined(vocabulary::could_not_open_settings, path));
}

void Settings::Write(std::ostream& output) const {
    for (const auto& variable : variables_) output << variable->name() << '=' << variable->Text() << '\n';
}

void Settings::WriteFile(const std::string& path) const {
    std::ostringstream text;
    Write(text);
    if (ReplaceFile(path, text.str()) != FileOutcome::written) {
        throw IO_Exception(Joined(vocabulary::could_not_write_settings, path));
    }
}

void Settings::ApplyTo(SearchSettings& values) const {
    for (const auto& variable : variables_) variable->ApplyTo(values);
}

}  // namespace OptimizeInterface
