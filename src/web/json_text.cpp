#include "web/json_text.h"

#include <array>
#include <cstdio>

namespace VorkaWeb {

JsonValue::JsonValue(std::string_view plain) {
    text = '"';
    for (const char c : plain) {
        if (c == '"' || c == '\\') {
            text += '\\';
            text += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            std::array<char, 8> escaped{};
            std::snprintf(escaped.data(), escaped.size(), "\\u%04x", static_cast<unsigned>(c));
            text += escaped.data();
        } else {
            text += c;
        }
    }
    text += '"';
}

JsonValue JsonValue::Object(std::initializer_list<std::pair<std::string_view, JsonValue>> fields) {
    JsonValue object(0);
    object.text = '{';
    for (const auto& [name, value] : fields) {
        if (object.text.size() > 1) object.text += ',';
        object.text += JsonValue(name).text + ':' + value.text;
    }
    object.text += '}';
    return object;
}

}  // namespace VorkaWeb
