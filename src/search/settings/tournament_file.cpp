#include "search/settings/tournament_file.h"

#include <fstream>
#include <string_view>

#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "frame/base/vorka_exception.h"
#include "frame/base/whole_file.h"

namespace tournament_settings {

namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

[[noreturn]] void Refuse(int line, std::string_view what, std::string_view which) {
    throw TextException(std::string(vocabulary::in_line) + std::to_string(line) + ": " +
                        std::string(what).append(which));
}

void TakeLine(std::string_view text, int line, TournamentSettings& settings) {
    const std::size_t sign = text.find('=');
    if (sign == std::string_view::npos) Refuse(line, vocabulary::no_assignment, text);
    const std::string_view name = VorkaUtils::Trimmed(text.substr(0, sign));
    const Row* const row = Find(name);
    if (row == nullptr) Refuse(line, vocabulary::no_tournament_setting, name);
    if (Take(*row, VorkaUtils::Trimmed(text.substr(sign + 1)), settings)) return;
    std::string bounds = std::to_string(row->least);
    bounds.append(vocabulary::to_bound) += std::to_string(row->most);
    Refuse(line, name, std::string(vocabulary::takes_a_number_from) + bounds);
}

}  // namespace

TournamentSettings Read(std::istream& input) {
    TournamentSettings settings;
    int number = 0;
    for (std::string line; std::getline(input, line);) {
        // Some editors put it in front of what they save as UTF-8.
        if (++number == 1 && line.starts_with(byte_order_mark)) line.erase(0, byte_order_mark.size());
        const std::string_view text = VorkaUtils::Trimmed(line);
        if (!text.empty() && text.front() != '#') TakeLine(text, number, settings);
    }
    return settings;
}

TournamentSettings ReadFile(const std::string& path) {
    std::ifstream file;
    if (!OpenForReading(path, file))
        throw TextException(std::string(vocabulary::could_not_open_tournament_file) + path);
    const TournamentSettings settings = Read(file);
    if (file.bad()) throw TextException(std::string(vocabulary::could_not_read_tournament_file) + path);
    return settings;
}

void Write(const TournamentSettings& settings, std::ostream& output) {
    for (const Row& row : Table()) output << row.name << " = " << settings.*row.place << '\n';
}

}  // namespace tournament_settings
