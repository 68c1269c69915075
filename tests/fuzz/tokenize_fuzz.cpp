// Any line, split with and without its quotes kept, gives the words of the slow model or the same failure.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/base/text_utilities.h"
#include "support/slow_text_model.h"

namespace {

constexpr std::string_view quotes = "\"'";

std::optional<std::vector<std::string>> Words(std::string_view text, bool keep_quotes) {
    try {
        return VorkaUtils::tokenize(text, VorkaUtils::white_space, quotes, quotes, keep_quotes);
    } catch (const VorkaUtils::unterminated_embedded_string_exception&) {
        return std::nullopt;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const bool keep_quotes : {false, true}) {
        if (Words(text, keep_quotes) != slow_model::Words(text, VorkaUtils::white_space, quotes, keep_quotes)) abort();
    }
    return 0;
}
