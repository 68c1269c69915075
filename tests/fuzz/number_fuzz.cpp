// Any text, given to the readers of numbers, times and sizes: what one accepts is the number that the slow model reads,
// and nothing but string_conversion_error comes out of them.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "frame/base/text_utilities.h"
#include "support/slow_text_model.h"

namespace {

template <class Reader>
std::optional<std::string> WrittenBack(Reader reader, std::string_view text) {
    try {
        return VorkaUtils::ToString(reader(text));
    } catch (const string_conversion_error&) {
        return std::nullopt;
    }
}

void Require(bool holds) {
    if (!holds) abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace VorkaUtils;
    const std::string_view text(reinterpret_cast<const char*>(data), size);

    const auto unsigned64 = slow_model::WrittenBack(text, "18446744073709551615", "");
    Require(WrittenBack(ToUnsigned64, text) == unsigned64);
    Require(WrittenBack(ToSigned64, text) ==
            slow_model::WrittenBack(text, "9223372036854775807", "9223372036854775808"));
    const auto integer = slow_model::WrittenBack(text, "2147483647", "2147483647");
    Require(WrittenBack(ToInteger, text) == integer);

    const auto bytes = WrittenBack(ParseSize, text);
    if (unsigned64) Require(bytes == unsigned64);
    if (bytes) (void)SizeToString(ToUnsigned64(*bytes));

    // Whole numbers are minutes and seconds, if their milliseconds fit.
    const auto clock = WrittenBack(ParseClockTime, text);
    const auto increment = WrittenBack(ParseIncrement, text);
    if (clock && text.find(':') == std::string_view::npos) {
        Require(integer && ToInteger(*clock) == ToInteger(*integer) * 60000);
    }
    if (increment && text.find('.') == std::string_view::npos) {
        Require(integer && ToInteger(*increment) == ToInteger(*integer) * 1000);
    }
    return 0;
}
