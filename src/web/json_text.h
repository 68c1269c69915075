#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

/// The little of JSON that a page is answered in.
namespace VorkaWeb {

/// A value that is text of JSON already.
struct JsonValue {
    std::string text;

    // NOLINTBEGIN(google-explicit-constructor): whatever a field may hold
    JsonValue(int number) : text(std::to_string(number)) {}
    JsonValue(double number) : text(std::to_string(number)) {}
    JsonValue(bool is_true) : text(is_true ? "true" : "false") {}
    JsonValue(std::string_view plain);
    JsonValue(const std::string& plain) : JsonValue(std::string_view(plain)) {}
    JsonValue(const char* plain) : JsonValue(std::string_view(plain)) {}
    // NOLINTEND(google-explicit-constructor)

    [[nodiscard]] static JsonValue Object(std::initializer_list<std::pair<std::string_view, JsonValue>> fields);
    /// Of what `value_of` makes of each element.
    template <class Range, class Function>
    [[nodiscard]] static JsonValue Array(const Range& range, const Function& value_of) {
        JsonValue array(0);
        array.text = '[';
        for (const auto& element : range) {
            if (array.text.size() > 1) array.text += ',';
            array.text += JsonValue(value_of(element)).text;
        }
        array.text += ']';
        return array;
    }
};

}  // namespace VorkaWeb
