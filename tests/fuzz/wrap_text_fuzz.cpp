// Any text, broken into lines of any width: no line is too long unless it is one word, no word is lost, and no line
// could have taken the first word of the next one.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "interfaces/protocols/help_screen.h"

namespace {

void Require(bool holds) {
    if (!holds) abort();
}

/// What stands between two blanks, as a blank joins them: blanks are kept, only some of them become line ends.
std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += (&line == &lines.front() ? "" : " ") + line;
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::size_t width = data[0];
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::vector<std::string> lines = VorkaHelpScreen::WrapText(text, width);

    std::string in_one_line = text;
    std::replace(in_one_line.begin(), in_one_line.end(), '\n', ' ');
    Require(Joined(lines) == in_one_line);
    std::size_t end = 0;  // of the present line in the text
    for (std::size_t i = 0; i < lines.size(); ++i) {
        Require(lines[i].find('\n') == std::string::npos);
        Require(lines[i].size() <= width || lines[i].find(' ') == std::string::npos);
        end += lines[i].size();
        if (i + 1 < lines.size() && text[end] != '\n') {
            Require(lines[i].size() + 1 + std::min(lines[i + 1].find(' '), lines[i + 1].size()) > width);
        }
        ++end;
    }
    return 0;
}
