#include "selfplay/state_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
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

/// Where two texts differ first, line by line.
std::string Difference(std::string_view kept, std::string_view wanted) {
    while (!wanted.empty() && FirstLine(kept) == FirstLine(wanted)) {
        kept.remove_prefix(std::min(FirstLine(kept).size() + 1, kept.size()));
        wanted.remove_prefix(FirstLine(wanted).size() + 1);
    }
    return '"' + std::string(FirstLine(kept)) + "\" there, \"" + std::string(FirstLine(wanted)) + "\" here";
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
    : path_(path), descriptor_(open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0666)) {
    if (descriptor_ < 0) Refuse(path, "can't be opened");
    if (flock(descriptor_, LOCK_EX | LOCK_NB) != 0) {
        close(descriptor_);
        Refuse(path, "another match is using it");
    }
    try {
        std::ifstream file(path, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        const std::string head = HeadOf(plan);
        if (head.starts_with(text)) {  // new, or cut off in its head
            if (ftruncate(descriptor_, 0) != 0) Refuse(path, "can't be written");
            Write(head);
            return;
        }
        if (!text.starts_with(head)) Refuse(path, "it belongs to another match: " + Difference(text, head));
        const std::size_t end = text.rfind('\n') + 1;
        if (end < text.size() && ftruncate(descriptor_, static_cast<off_t>(end)) != 0) Refuse(path, "can't be written");
        ReadGames(plan, std::string_view(text).substr(head.size(), end - head.size()));
    } catch (...) {
        close(descriptor_);
        throw;
    }
}

StateFile::~StateFile() { close(descriptor_); }

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
    while (!text.empty()) {
        const ssize_t written = write(descriptor_, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) Refuse(path_, "can't be written");
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}
