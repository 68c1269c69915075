#include "interfaces/protocols/help_screen.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "frame/base/logfile.h"
#include "frame/base/os_dependent.h"
#include "frame/base/vocabulary.h"
#include "interfaces/protocols/input_line.h"

namespace VorkaHelpScreen {

namespace {

constexpr std::size_t narrowest_keywords = 10;
/// Columns if there is no terminal to ask.
constexpr int usual_columns = 80;

std::string Padded(std::string_view text, std::size_t width, char fill) {
    return std::string(text).append(width - std::min(width, text.size()), fill);
}

}  // namespace

std::vector<std::string> WrapText(std::string_view text, std::size_t width) {
    std::vector<std::string> lines{{}};
    bool is_fresh = true;  // the last line is still empty
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find_first_of(" \n", begin), text.size());
        const std::string_view word = text.substr(begin, end - begin);
        if (!is_fresh && lines.back().size() + 1 + word.size() > width) {
            lines.emplace_back();
            is_fresh = true;
        }
        if (!is_fresh) lines.back() += ' ';
        lines.back() += word;
        is_fresh = false;
        if (end < text.size() && text[end] == '\n') {
            lines.emplace_back();
            is_fresh = true;
        }
        begin = end + 1;
    }
    return lines;
}

AbstractHelpScreenFormatter::AbstractHelpScreenFormatter(std::vector<HelpText> entries) : entries_(std::move(entries)) {
    for (const HelpText& entry : entries_) {
        longest_keyword_ = std::max(longest_keyword_, static_cast<std::int32_t>(entry.keyword.size()));
    }
}

namespace {

/// Counts the lines of a page, and stops at its end.
class Pager {
  public:
    explicit Pager(int lines_of_page) : lines_of_page_(lines_of_page) {}

    /// Called before `lines` lines are written.
    void Announce(int lines) {
        count_ += lines;
        if (count_ < lines_of_page_) return;
        vlog << vocabulary::press_enter_to_continue;
        vlog.Flush();
        (void)VorkaInterfaces::readInputLine();
        count_ = lines;
    }

  private:
    int lines_of_page_;
    int count_ = 0;
};

void WriteEntry(const HelpText& entry, const std::vector<std::string>& lines, std::size_t key_width) {
    vlog << Padded(entry.keyword, key_width, '.') << ' ' << lines.front();
    for (auto line = std::next(lines.begin()); line != lines.end(); ++line) {
        vlog << '\n' << std::string(key_width + 1, ' ') << *line;
    }
    vlog << '\n';
}

}  // namespace

void SimpleHelpScreenFormatter::print() const {
    const std::optional<TerminalSize> terminal = SizeOfTerminal();
    const int columns = terminal ? terminal->columns : usual_columns;
    const std::size_t key_width = std::max(static_cast<std::size_t>(longest_keyword()), narrowest_keywords);
    const int text_width = std::max(columns - 1 - static_cast<int>(key_width), 1);
    Pager pager(terminal ? terminal->rows - 1 : 0);

    vlog << Padded(vocabulary::help_command, key_width, ' ') << vocabulary::help_description;
    for (const HelpText& entry : entries()) {
        const std::vector<std::string> lines = WrapText(entry.description, static_cast<std::size_t>(text_width));
        if (paging_ && terminal) pager.Announce(static_cast<int>(lines.size()));
        WriteEntry(entry, lines, key_width);
    }
    vlog.Flush();
}

const SimpleHelpScreenFormatter& EditHelp() {
    static const SimpleHelpScreenFormatter help({std::begin(edit_commands), std::end(edit_commands)}, true);
    return help;
}

}  // namespace VorkaHelpScreen
