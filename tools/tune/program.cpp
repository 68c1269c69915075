// Tunes settings of the search by games of the engine against itself.

#include "tune/program.h"

#include <getopt.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>

#include "frame/base/logfile.h"
#include "frame/base/whole_file.h"
#include "search/settings/settings_file.h"
#include "search/settings/tournament_file.h"
#include "selfplay/openings.h"
#include "selfplay/option_texts.h"
#include "selfplay/rule_options.h"
#include "tune/pair_job.h"
#include "tune/plot.h"
#include "tune/state_lock.h"
#include "tune/tuning_state.h"

namespace {

std::atomic<bool> stop_tuning{false};

void StopTuning(int) { stop_tuning = true; }

struct Options {
    std::string parameters_file, openings_file, state, output, plot, play_with;
    SpsaPlan plan{.pairs = 25'000, .batch = 16, .seed = 1};
    GameRules rules;
    PlayerSetup base;
    unsigned concurrency = 1;
    bool is_worker = false;
    bool is_help = false;
};

int Usage(std::ostream& out, int status) {
    out << "usage: tune PARAMETERS --openings FILE --nodes N --state FILE --output FILE [option]..\n"
           "       tune --worker [--concurrency N]\n"
           "Tunes settings of the search: pairs of games between two settings beside those reached so far pull them "
           "along.\n\n"
           "  PARAMETERS        a file with a line for each setting: name, start, min, max, c_end, r_end; # for "
           "comments\n"
           "  --nodes N         search so many nodes for each move; --depth N so many iterations\n"
           "  --openings FILE   EPD, FEN or PGN\n"
           "  --state FILE      kept after each batch; the same command goes on after it was stopped or killed\n"
           "  --output FILE     the settings reached, for read_settings or UCI's Tournament File\n"
           "  --plot FILE.svg   every parameter over the pairs\n"
           "  --base PLAYER     what else is changed in the engine, words as for selfplay's players: settings=FILE,\n"
           "                    search=tournament (tunes the settings of that search), tournament=FILE of such "
           "settings,\n"
           "                    NAME=VALUE, personality=NAME, contempt=CENTIPAWNS\n"
           "  --pairs N         in all (25000); --batch N between two steps (16)\n"
           "  --seed N          of directions and openings (1)\n"
           "  --concurrency N   pairs at a time (one for each processor)\n"
           "  --hash MEGABYTES, --resign MOVES:CENTIPAWNS, --draw FROM:MOVES:CENTIPAWNS   as in selfplay\n"
           "  --play-with COMMAND   hand the pairs to a shell command, line by line: several machines share a run by\n"
           "                    \"parallel --pipe -N1 --sshlogin 2/one,2/other tune --worker --concurrency 1\"\n"
           "  --worker          read pairs and print their results, for --play-with\n";
    return status;
}

// --- The command line ---

constexpr option long_options[] = {{"openings", required_argument, nullptr, 'o'},
                                   {"nodes", required_argument, nullptr, 'n'},
                                   {"depth", required_argument, nullptr, 'd'},
                                   {"hash", required_argument, nullptr, 'h'},
                                   {"resign", required_argument, nullptr, 'r'},
                                   {"draw", required_argument, nullptr, 'D'},
                                   {"state", required_argument, nullptr, 'k'},
                                   {"output", required_argument, nullptr, 'O'},
                                   {"plot", required_argument, nullptr, 'P'},
                                   {"base", required_argument, nullptr, 'b'},
                                   {"pairs", required_argument, nullptr, 'p'},
                                   {"batch", required_argument, nullptr, 'B'},
                                   {"seed", required_argument, nullptr, 's'},
                                   {"concurrency", required_argument, nullptr, 'c'},
                                   {"play-with", required_argument, nullptr, 'w'},
                                   {"worker", no_argument, nullptr, 'W'},
                                   {"help", no_argument, nullptr, 'H'},
                                   {nullptr, 0, nullptr, 0}};

/// Takes one option. Throws std::runtime_error with what is wrong.
void TakeOption(int letter, Options& options) {
    constexpr std::int64_t most = 1'000'000'000;
    const std::string_view value = optarg != nullptr ? optarg : "";
    if (TakeRuleOption(letter, value, options.rules)) return;
    switch (letter) {
        case 'o':
            options.openings_file = value;
            break;
        case 'k':
            options.state = value;
            break;
        case 'O':
            options.output = value;
            break;
        case 'P':
            options.plot = value;
            break;
        case 'b':
            options.base = ReadPlayer(value);
            break;
        case 'p':
            options.plan.pairs = ReadNumber<std::uint64_t>("--pairs", value, 1, most);
            break;
        case 'B':
            options.plan.batch = ReadNumber<std::uint64_t>("--batch", value, 1, most);
            break;
        case 's':
            options.plan.seed = ReadNumber<std::uint64_t>("--seed", value, 0, most);
            break;
        case 'c':
            options.concurrency = ReadNumber<unsigned>("--concurrency", value, 1, 1024);
            break;
        case 'w':
            options.play_with = value;
            break;
        case 'W':
            options.is_worker = true;
            break;
        default:
            options.is_help = true;
    }
}

/// Throws std::runtime_error if something is missing.
void CheckOptions(const Options& options) {
    CheckRules(options.rules);
    if (options.openings_file.empty()) throw std::runtime_error("--openings is missing");
    if (options.state.empty()) throw std::runtime_error("--state is missing");
    if (options.output.empty()) throw std::runtime_error("--output is missing");
}

/// Settings that the players' search doesn't read would be moved by noise alone.
void RequireTheirSearch(const std::vector<Parameter>& parameters, const PlayerSetup& player) {
    const bool are_of_tournament = parameters.front().tournament != nullptr;
    if (are_of_tournament == player.uses_tournament_search) return;
    throw std::runtime_error(
        parameters.front().name + " is of the other search: " +
        (are_of_tournament ? "--base search=tournament is missing" : "leave search=tournament out"));
}

std::vector<Parameter> ParametersOf(const std::string& path, const PlayerSetup& player) {
    std::ifstream file;
    if (!OpenForReading(path, file)) throw std::runtime_error("can't open " + path);
    try {
        std::vector<Parameter> parameters = ReadParameters(file);
        RequireTheirSearch(parameters, player);
        return parameters;
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(path + ": " + error.what());
    }
}

/// Throws std::runtime_error if nobody was told what was said.
void TestStandardOutput() {
    if (!std::cout.flush() || std::fflush(stdout) != 0) throw std::runtime_error("can't write to standard output");
}

// --- The worker ---

/// Reads jobs, plays them, and answers each as soon as it is done, in the order of the jobs that are played at a time.
void Work(const Options& options) {
    std::vector<PairJob> jobs;
    const auto play = [&] {
        const auto leads = PlayHere(jobs, options.concurrency, stop_tuning);
        for (std::size_t i = 0; leads && i < jobs.size(); ++i) {
            std::cout << LineOf(PairResult{jobs[i].pair, (*leads)[i]}) << std::endl;
        }
        TestStandardOutput();
        jobs.clear();
    };
    for (std::string line; !stop_tuning && std::getline(std::cin, line);) {
        jobs.push_back(JobOfLine(line));
        if (jobs.size() == options.concurrency) play();
    }
    if (!jobs.empty()) play();
}

// --- The run ---

void Write(const std::string& path, const std::string& text) {
    if (ReplaceFile(path, text) != FileOutcome::written) throw std::runtime_error("can't write " + path);
}

/// One run from where it stands to its end.
class Tuning {
  public:
    explicit Tuning(const Options& options)
        : options_(options),
          lock_(options.state),
          openings_(OpeningsOfFile(options.openings_file, std::numeric_limits<std::uint32_t>::max())),
          spsa_(ParametersOf(options.parameters_file, options.base), options.plan) {
        Shuffle(openings_, options.plan.seed);
        const GameRules& rules = options.rules;
        const AdjudicationRules& ends = rules.adjudication;
        std::ostringstream more;
        more << "engine " << SignatureOfEngine() << '\n'
             << "nodes " << rules.nodes << " depth " << rules.depth << " hash " << rules.hash_megabytes << '\n'
             << "resign " << ends.resign_moves << ' ' << ends.resign_score << " draw " << ends.draw_from_move << ' '
             << ends.draw_moves << ' ' << ends.draw_score << '\n'
             << "openings " << openings_.size() << ' ' << FingerprintOf(openings_) << '\n'
             << "base " << DescriptionOf(options.base) << '\n';
        head_ = TuningHead(spsa_, more.str());
        ReadState();
    }

    void Run() {
        const auto start = std::chrono::steady_clock::now();
        const std::uint64_t first = spsa_.pairs_done();
        while (!spsa_.IsDone() && !stop_tuning) {
            const std::vector<Trial> batch = spsa_.NextBatch();
            const auto leads = Play(batch);
            if (!leads) break;
            spsa_.Take(*leads);
            way_.push_back({spsa_.pairs_done(), spsa_.values()});
            Keep();
            const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
            Tell(spsa_.pairs_done() - first, elapsed.count());
        }
        if (spsa_.IsDone()) Keep();
    }

  private:
    void ReadState() {
        std::ifstream file;
        if (!OpenForReading(options_.state, file)) {
            way_ = {{0, spsa_.values()}};
            Keep();  // what can't be written is told before the first game
            return;
        }
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        try {
            way_ = ReadTuning(text, head_, spsa_);
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(options_.state + ": " + error.what());
        }
        std::cout << "went on after " << spsa_.pairs_done() << " pairs" << std::endl;
    }

    [[nodiscard]] std::optional<std::vector<int>> Play(const std::vector<Trial>& batch) const {
        std::vector<PairJob> jobs;
        for (const Trial& trial : batch) {
            jobs.push_back({.pair = trial.pair,
                            .first = PlayerWith(options_.base, spsa_.parameters(), trial.plus),
                            .second = PlayerWith(options_.base, spsa_.parameters(), trial.minus),
                            .rules = options_.rules,
                            .fen = openings_[trial.pair % openings_.size()].position.GetFen()});
        }
        return options_.play_with.empty() ? PlayHere(jobs, options_.concurrency, stop_tuning)
                                          : PlayWith(jobs, options_.play_with, stop_tuning);
    }

    void Keep() const {
        Write(options_.state, TuningText(head_, spsa_, way_));
        Write(options_.output, SettingsReached());
        if (!options_.plot.empty()) Write(options_.plot, PlotSvg(spsa_, way_));
    }

    /// In the format of the search that was tuned.
    [[nodiscard]] std::string SettingsReached() const {
        const PlayerSetup player = PlayerWith(options_.base, spsa_.parameters(), spsa_.values());
        std::ostringstream text;
        if (spsa_.parameters().front().tournament != nullptr) {
            tournament_settings::Write(player.tournament, text);
        } else {
            OptimizeInterface::Settings::Of(player.settings).Write(text);
        }
        return text.str();
    }

    /// What is left is told by the speed of this process so far, the pauses of the machine included.
    void Tell(std::uint64_t pairs, double seconds) const {
        const std::uint64_t all = options_.plan.pairs;
        const double left = seconds / static_cast<double>(pairs) * static_cast<double>(all - spsa_.pairs_done());
        std::printf("%llu of %llu pairs, %.1f games a minute, about %.1f hours more\n",
                    static_cast<unsigned long long>(spsa_.pairs_done()), static_cast<unsigned long long>(all),
                    120 * static_cast<double>(pairs) / std::max(seconds, 1e-3), left / 3600);
        TestStandardOutput();
    }

    const Options& options_;
    StateLock lock_;
    std::vector<Opening> openings_;
    Spsa spsa_;
    std::string head_;
    std::vector<TuningPoint> way_;
};

}  // namespace

int RunTune(int argc, char** argv) {
    // Searches of other settings than the usual ones say odd things to the log.
    const EchoScope silent(vlog, Echo::off);
    Options options;
    options.concurrency = std::max(std::thread::hardware_concurrency(), 1U);
    try {
        for (int letter = 0; (letter = getopt_long(argc, argv, "", long_options, nullptr)) != -1;) {
            if (letter == '?') return Usage(std::cerr, EXIT_FAILURE);
            TakeOption(letter, options);
        }
        if (options.is_help) return Usage(std::cout, EXIT_SUCCESS);
        if (optind + (options.is_worker ? 0 : 1) != argc) return Usage(std::cerr, EXIT_FAILURE);
        std::signal(SIGINT, StopTuning);
        std::signal(SIGTERM, StopTuning);
        if (options.is_worker) {
            Work(options);
        } else {
            options.parameters_file = argv[optind];
            CheckOptions(options);
            Tuning(options).Run();
        }
    } catch (const std::exception& error) {
        std::cerr << "tune: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
