#include "selfplay/state_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <stdexcept>

#include "selfplay/game_text.h"

namespace {

[[noreturn]] void Refuse(const std::string& path, const std::string& what) {
    throw std::runtime_error(path + ": " + what);
}

std::string_view FirstLine(std::string_view text) { return text.substr(0, text.find('\n')); }

/// What a terminal may be shown of a line that anybody may have written.
std::string Shown(std::string_view line) {
    constexpr std::size_t longest = 200;
    std::string shown(line.substr(0, longest));
    std::replace_if(
        shown.begin(), shown.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    return line.size() > longest ? shown + ".." : shown;
}

/// Where two texts differ first, line by line.
std::string Difference(std::string_view kept, std::string_view wanted) {
    while (!wanted.empty() && FirstLine(kept) == FirstLine(wanted)) {
        kept.remove_prefix(std::min(FirstLine(kept).size() + 1, kept.size()));
        wanted.remove_prefix(FirstLine(wanted).size() + 1);
    }
    return '"' + Shown(FirstLine(kept)) + "\" there, \"" + Shown(FirstLine(wanted)) + "\" here";
}

}  // namespace

std::string HeadOf(const MatchPlan& plan) {
    static const std::uint64_t signature = SignatureOfEngine();
    const GameRules& rules = plan.rules;
    const AdjudicationRules& ends = rules.adjudication;
    std::ostringstream head;
    head << "selfplay 1\n"
         << "engine " << signature << '\n'
         << "first " << DescriptionOf(plan.players[0]) << '\n'
         << "second " << DescriptionOf(plan.players[1]) << '\n'
         << "nodes " << rules.nodes << " depth " << rules.depth << " time " << rules.base_time << '+' << rules.increment
         << " hash " << rules.hash_megabytes << '\n'
         << "resign " << ends.resign_moves << ' ' << ends.resign_score << " draw " << ends.draw_from_move << ' '
         << ends.draw_moves << ' ' << ends.draw_score << '\n'
         << "openings " << plan.openings.size() << ' ' << FingerprintOf(plan.openings) << "\n\n";
    return head.str();
}

StateFile::StateFile(const std::string& path, const MatchPlan& plan)
    // Without waiting for whoever writes a pipe.
    : path_(path), file_(open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666)) {
    if (!file_.is_open()) Refuse(path, "can't be opened");
    if (!file_.is_regular()) Refuse(path, "no regular file");
    if (!file_.TakeLock()) Refuse(path, "another match is using it");
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::string head = HeadOf(plan);
    if (head.starts_with(text)) {  // new, or cut off in its head
        Cut(0);
        Write(head);
        return;
    }
    if (FirstLine(text) != FirstLine(head)) Refuse(path, "it holds no match");
    if (!text.starts_with(head)) Refuse(path, "it belongs to another match: " + Difference(text, head));
    const std::size_t end = text.rfind('\n') + 1;
    if (end < text.size()) Cut(end);
    ReadGames(plan, std::string_view(text).substr(head.size(), end - head.size()));
}

void StateFile::ReadGames(const MatchPlan& plan, std::string_view text) {
    const std::string head = HeadOf(plan);
    auto number = std::count(head.begin(), head.end(), '\n');
    std::set<std::uint64_t> seen;
    while (!text.empty()) {
        const std::string_view line = FirstLine(text);
        text.remove_prefix(line.size() + 1);
        ++number;
        try {
            games_.push_back(GameOfLine(plan, line));
        } catch (const std::runtime_error& error) {
            Refuse(path_, "line " + std::to_string(number) + ": " + error.what());
        }
        if (!seen.insert(games_.back().number).second) {
            Refuse(path_, "line " + std::to_string(number) + ": this game is there already");
        }
    }
}

void StateFile::Add(const PlayedGame& game) { Write(LineOf(game) + '\n'); }

void StateFile::Write(std::string_view text) const {
    if (!file_.Write(text)) Refuse(path_, "can't be written");
}

void StateFile::Cut(std::size_t size) const {
    if (ftruncate(file_.descriptor(), static_cast<off_t>(size)) != 0) Refuse(path_, "can't be written");
}
