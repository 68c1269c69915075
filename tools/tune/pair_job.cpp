#include "tune/pair_job.h"

#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <exception>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <utility>

#include "frame/base/text_utilities.h"
#include "options/number_option.h"
#include "selfplay/pair_scores.h"

namespace {

constexpr int most_lead = 2;

[[noreturn]] void Refuse(std::string_view what, std::string_view text) {
    throw std::runtime_error(std::string(what) + ": \"" + std::string(text) + '"');
}

template <class Number>
Number NumberOf(std::string_view text) {
    const auto number = NumberIn<std::int64_t>(text, std::numeric_limits<Number>::min() < 0 ? -most_lead : 0,
                                               std::numeric_limits<std::int32_t>::max() * std::int64_t{1000});
    if (!number || !std::in_range<Number>(*number)) Refuse("no number", text);
    return static_cast<Number>(*number);
}

/// The numbers of the rules with the words between them.
std::string RulesText(const GameRules& rules) {
    const AdjudicationRules& ends = rules.adjudication;
    std::ostringstream text;
    text << "nodes " << rules.nodes << " depth " << rules.depth << " hash " << rules.hash_megabytes << " resign "
         << ends.resign_moves << ' ' << ends.resign_score << " draw " << ends.draw_from_move << ' ' << ends.draw_moves
         << ' ' << ends.draw_score;
    return text.str();
}

GameRules ReadRules(std::string_view text) {
    const std::vector<std::string> words = VorkaUtils::tokenize(text);
    if (words.size() != 13) Refuse("no rules", text);
    GameRules rules;
    AdjudicationRules& ends = rules.adjudication;
    rules.nodes = NumberOf<std::uint64_t>(words[1]);
    rules.depth = NumberOf<std::int32_t>(words[3]);
    rules.hash_megabytes = NumberOf<std::uint64_t>(words[5]);
    ends.resign_moves = NumberOf<std::int32_t>(words[7]);
    ends.resign_score = NumberOf<std::int32_t>(words[8]);
    ends.draw_from_move = NumberOf<std::int32_t>(words[10]);
    ends.draw_moves = NumberOf<std::int32_t>(words[11]);
    ends.draw_score = NumberOf<std::int32_t>(words[12]);
    if (RulesText(rules) != text || (rules.nodes == 0 && rules.depth == 0)) Refuse("no rules", text);
    return rules;
}

}  // namespace

std::string LineOf(const PairJob& job) {
    return std::to_string(job.pair) + '|' + RulesText(job.rules) + '|' + DescriptionOf(job.first) + '|' +
           DescriptionOf(job.second) + '|' + job.fen;
}

PairJob JobOfLine(std::string_view line) {
    const std::vector<std::string> parts = VorkaUtils::tokenize(line, "|");
    if (parts.size() != 5) Refuse("no job", line);
    PairJob job{.pair = NumberOf<std::uint64_t>(parts[0]),
                .first = ReadPlayer(parts[2]),
                .second = ReadPlayer(parts[3]),
                .rules = ReadRules(parts[1]),
                .fen = parts[4]};
    try {
        UserBoard().SetBoardFromFen(job.fen);
    } catch (const UserBoard::user_exception&) {
        Refuse("no position", job.fen);
    }
    return job;
}

std::string LineOf(const PairResult& result) { return std::to_string(result.pair) + ' ' + std::to_string(result.lead); }

PairResult ResultOfLine(std::string_view line) {
    const std::vector<std::string> words = VorkaUtils::tokenize(line);
    if (words.size() != 2) Refuse("no result of a pair", line);
    const PairResult result{.pair = NumberOf<std::uint64_t>(words[0]), .lead = NumberOf<int>(words[1])};
    if (result.lead > most_lead) Refuse("no result of a pair", line);
    return result;
}

std::optional<int> PlayPair(const PairJob& job, const std::atomic<bool>& stop) {
    Player first(job.first, job.rules.hash_megabytes), second(job.second, job.rules.hash_megabytes);
    Opening opening;
    opening.position.SetBoardFromFen(job.fen);
    int half_points = 0;
    for (const std::uint64_t game : {0U, 1U}) {
        const bool first_has_white = FirstHasWhite(game);
        const auto played =
            PlayGame(first_has_white ? first : second, first_has_white ? second : first, opening, job.rules, stop);
        if (!played) return std::nullopt;
        half_points += HalfPointsOfFirst(game, played->result);
    }
    return half_points - 2;  // of four
}

std::optional<std::vector<int>> PlayHere(const std::vector<PairJob>& jobs, unsigned concurrency,
                                         std::atomic<bool>& stop) {
    std::vector<int> leads(jobs.size());
    std::atomic<std::size_t> next{0};
    std::mutex mutex;
    std::exception_ptr failure;
    const auto play_all = [&] {
        try {
            for (std::size_t i = 0; !stop && (i = next++) < jobs.size();) {
                leads[i] = PlayPair(jobs[i], stop).value_or(0);
            }
        } catch (...) {
            const std::lock_guard lock(mutex);
            if (!failure) failure = std::current_exception();
            stop = true;
        }
    };
    std::vector<std::thread> threads;
    for (unsigned i = 1; i < concurrency; ++i) threads.emplace_back(play_all);
    play_all();
    for (std::thread& thread : threads) thread.join();
    if (failure) std::rethrow_exception(failure);
    if (stop) return std::nullopt;
    return leads;
}

// --- Another program ---

namespace {

/// A file with the jobs' lines, gone at the end of its scope.
class JobFile {
  public:
    explicit JobFile(const std::string& text) {
        const int descriptor = mkstemp(name_.data());
        if (descriptor < 0) throw std::runtime_error("no temporary file");
        std::string_view rest = text;
        while (!rest.empty()) {
            const ssize_t written = write(descriptor, rest.data(), rest.size());
            if (written <= 0) break;
            rest.remove_prefix(static_cast<std::size_t>(written));
        }
        close(descriptor);
        if (!rest.empty()) {
            unlink(name_.c_str());
            throw std::runtime_error("can't write " + name_);
        }
    }
    ~JobFile() { unlink(name_.c_str()); }
    JobFile(const JobFile&) = delete;
    JobFile& operator=(const JobFile&) = delete;

    [[nodiscard]] const std::string& name() const { return name_; }

  private:
    std::string name_ = "/tmp/vorka_pairs_XXXXXX";
};

/// All that a shell command prints, its standard input being the file. Its status is left alone: what counts is which
/// results came.
std::string OutputOf(const std::string& command, const JobFile& input) {
    const std::string line = "{ " + command + "\n} < " + input.name();
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(line.c_str(), "r"), pclose);
    if (!pipe) throw std::runtime_error("can't start " + command);
    std::string output;
    std::array<char, 4096> part{};
    while (const std::size_t count = fread(part.data(), 1, part.size(), pipe.get())) output.append(part.data(), count);
    return output;
}

}  // namespace

std::optional<std::vector<int>> PlayWith(const std::vector<PairJob>& jobs, const std::string& command,
                                         const std::atomic<bool>& stop) {
    constexpr int attempts = 3;
    std::map<std::uint64_t, std::optional<int>> leads;
    for (const PairJob& job : jobs) leads[job.pair];
    for (int attempt = 0; attempt < attempts; ++attempt) {
        std::string lines;
        for (const PairJob& job : jobs) {
            if (!leads[job.pair]) lines += LineOf(job) + '\n';
        }
        if (lines.empty()) break;
        std::istringstream output(OutputOf(command, JobFile(lines)));
        if (stop) return std::nullopt;
        for (std::string line; std::getline(output, line);) {
            const PairResult result = ResultOfLine(line);
            if (!leads.contains(result.pair)) Refuse("a result that was not asked for", line);
            leads[result.pair] = result.lead;
        }
    }
    std::vector<int> in_order;
    for (const PairJob& job : jobs) {
        if (!leads[job.pair])
            throw std::runtime_error("no result of pair " + std::to_string(job.pair) + " from: " + command);
        in_order.push_back(*leads[job.pair]);
    }
    return in_order;
}
