#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A personality from its name, "Random" or a decimal integer. False if the text is none of them.
[[nodiscard]] bool parse_personality(std::string_view text, int& value);
/// All names, the default first.
[[nodiscard]] std::vector<std::string_view> personality_names();
/// The first name with that value; the number as text if there is none.
[[nodiscard]] std::string personality_name(int value);
