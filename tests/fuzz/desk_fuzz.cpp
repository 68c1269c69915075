// Any text as a question of the page: the answer is one line of JSON, an object, and every string in it ends.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "web/desk.h"

namespace {

void Require(bool holds) {
    if (!holds) abort();
}

/// Whether strings end and brackets close in their order.
bool IsClosed(std::string_view json) {
    std::string open;
    bool is_string = false;
    for (std::size_t i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (is_string) {
            if (c == '\\') ++i;
            is_string = c != '"';
        } else if (c == '"') {
            is_string = true;
        } else if (c == '{' || c == '[') {
            open += c == '{' ? '}' : ']';
        } else if (c == '}' || c == ']') {
            if (open.empty() || open.back() != c) return false;
            open.pop_back();
        }
    }
    return !is_string && open.empty();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t longest = 4096;  // each move of a game looks back at all positions
    if (size > longest) return 0;
    const std::string answer = VorkaWeb::Answer({reinterpret_cast<const char*>(data), size});
    Require(answer.size() > 2 && answer.front() == '{' && answer.back() == '}');
    for (const char c : answer) Require(static_cast<unsigned char>(c) >= 0x20);
    Require(IsClosed(answer));
    return 0;
}
