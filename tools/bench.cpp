// Searches a fixed set of positions from cleared tables and counts. The node total of a run at the default depth is the
// signature of a version's search and evaluation: it is the same on every machine.

#include <getopt.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "bench_run/bench_run.h"
#include "frame/base/whole_file.h"
#include "options/number_option.h"
#include "player_setup/player_setup.h"
#include "search/driver/bench_positions.h"
#include "search/driver/bench_search.h"
#include "search/driver/silent_host.h"
#include "search/engine/engine.h"

namespace {

struct Options {
    int depth = bench_depth;
    int milliseconds = 0;  ///< for each position, instead of a depth
    std::uint64_t hash_megabytes = bench_hash_megabytes;
    std::string search;   ///< how it differs from the defaults, in the words of ReadSearch
    std::string save;     ///< keep the run in this file
    std::string compare;  ///< set the run beside the one in this file
    bool is_quiet = false;
    bool is_help = false;
};

std::uint64_t MicrosecondsSince(std::chrono::steady_clock::time_point start) {
    const auto elapsed = std::chrono::steady_clock::now() - start;
    return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(elapsed).count());
}

/// Listens to a search.
class Listener : public SilentHost {
  public:
    void sendDepthStarted(int depth) override {
        if (depth == 1) start_ = std::chrono::steady_clock::now();
        last_depth_ = depth;
        microseconds_before_it_ = MicrosecondsSince(start_);
    }
    void sendSearchStatistics(const SearchInfo&) override { microseconds_ = MicrosecondsSince(start_); }

    [[nodiscard]] BenchRow Row(std::string_view fen, const SearchInfo& info, bool is_by_time) const {
        BenchRow row{.fen = std::string(fen),
                     .nodes = info.nodes,
                     .microseconds = microseconds_,
                     .depth = static_cast<std::uint64_t>(last_depth_),
                     .microseconds_to_depth = microseconds_,
                     .statistics = info.statistics,
                     .transposition = info.transposition_table,
                     .scores = info.evaluation_hash_table,
                     .pawns = info.pawn_hash_table};
        if (is_by_time && last_depth_ > 0) {
            --row.depth;  // the last iteration was cut off
            row.microseconds_to_depth = microseconds_before_it_;
        }
        return row;
    }

  private:
    std::chrono::steady_clock::time_point start_;  ///< of the first iteration
    int last_depth_ = 0;
    std::uint64_t microseconds_before_it_ = 0;
    std::uint64_t microseconds_ = 0;
};

BenchRow SearchPosition(Engine& engine, std::string_view fen, const Options& options) {
    SearchLimits limits;
    if (options.milliseconds > 0) {
        limits.max_time_limit = options.milliseconds;
    } else {
        limits.max_depth = options.depth;
    }
    Listener listener;
    const SearchInfo info = SearchBenchPosition(engine, fen, limits, listener);
    const BenchRow row = listener.Row(fen, info, options.milliseconds > 0);
    if (options.is_quiet) return row;
    const std::string best = info.principal_variation.empty() ? "-" : info.principal_variation.front().second;
    std::cout << TableRow(row) << std::setw(7) << info.score << "  " << std::left << std::setw(8) << best << std::right
              << ' ' << fen << std::endl;
    return row;
}

void PrintTotals(const std::vector<BenchRow>& run, const Options& options) {
    BenchRow total;
    double log_branching = 0;
    for (const BenchRow& row : run) {
        total += row;
        if (row.depth > 0) log_branching += std::log(static_cast<double>(row.nodes)) / static_cast<double>(row.depth);
    }
    if (!options.is_quiet) std::cout << '\n' << TotalsText(total) << '\n';
    const double count = static_cast<double>(run.size());
    std::printf("Nodes:     %llu\n", static_cast<unsigned long long>(total.nodes));
    std::printf("Time:      %llu ms\n", static_cast<unsigned long long>(total.microseconds / 1000));
    std::printf("Nodes/s:   %.0f\n", Speed(total));
    std::printf("Depth:     %.2f on average\n", static_cast<double>(total.depth) / count);
    std::printf("Branching: %.2f\n", std::exp(log_branching / count));
    std::printf("Bench: %llu\n", static_cast<unsigned long long>(total.nodes));
}

// --- Files ---

/// Throws std::runtime_error with the name of the file.
std::vector<BenchRow> ReadRun(const std::string& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("can't open " + path);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    try {
        std::vector<BenchRow> run = ReadFileText(text);
        RequireSamePositions(run, {bench_positions.begin(), bench_positions.end()});
        return run;
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(path + ": " + error.what());
    }
}

/// Throws std::runtime_error with the name of the file.
void SaveRun(const std::string& path, const std::vector<BenchRow>& run) {
    if (ReplaceFile(path, FileText(run)) != FileOutcome::written) throw std::runtime_error("can't write " + path);
}

// --- Options ---

int Usage(std::ostream& out, int status) {
    out << "usage: bench [--depth N | --time MILLISECONDS] [--hash MEGABYTES] [--set NAME=VALUE].. [--quiet]\n"
           "             [--save FILE] [--compare FILE]\n"
           "Searches "
        << bench_positions.size() << " fixed positions from cleared tables, to depth " << bench_depth
        << " if nothing is told.\nPrints nodes, time, and nodes per second; the node total at the default depth is the "
           "signature of the search.\nFor each position and in all: the depth that was reached, and after how many ms; "
           "the share of quiescence nodes; how many\ncuts were made by the first move; how often the transposition "
           "table, the table of scores, and that of pawns knew the\nanswer; extended moves, reduced moves, and "
           "verifications of reduced ones, for each node.\n"
           "--save keeps the run in a file, --compare sets it beside a kept one.\n"
        << set_option_help;
    return status;
}

/// False, with a message, if the command line can't be understood.
bool ReadOptions(int argc, char** argv, Options& options) {
    constexpr int most_milliseconds = std::numeric_limits<std::int32_t>::max();
    constexpr int deepest = std::numeric_limits<std::int16_t>::max();
    constexpr std::uint64_t most_megabytes = 1U << 24;
    const option long_options[] = {{"depth", required_argument, nullptr, 'd'},
                                   {"time", required_argument, nullptr, 't'},
                                   {"hash", required_argument, nullptr, 'h'},
                                   {"set", required_argument, nullptr, 's'},
                                   {"save", required_argument, nullptr, 'w'},
                                   {"compare", required_argument, nullptr, 'c'},
                                   {"quiet", no_argument, nullptr, 'q'},
                                   {"help", no_argument, nullptr, 'H'},
                                   {nullptr, 0, nullptr, 0}};
    for (int letter = 0; (letter = getopt_long(argc, argv, "", long_options, nullptr)) != -1;) {
        bool is_good = true;
        switch (letter) {
            case 'd':
                is_good = ReadNumberOption("bench", "--depth", optarg, 1, deepest, options.depth);
                break;
            case 't':
                is_good = ReadNumberOption("bench", "--time", optarg, 1, most_milliseconds, options.milliseconds);
                break;
            case 'h':
                is_good = ReadNumberOption("bench", "--hash", optarg, std::uint64_t{0}, most_megabytes,
                                           options.hash_megabytes);
                break;
            case 's':
                options.search.append(" ").append(optarg);
                break;
            case 'w':
                options.save = optarg;
                break;
            case 'c':
                options.compare = optarg;
                break;
            case 'q':
                options.is_quiet = true;
                break;
            case 'H':
                options.is_help = true;
                break;
            default:
                is_good = false;
        }
        if (!is_good) return false;
    }
    return optind == argc;
}

/// Throws std::runtime_error for a file that can't be read or written, and if nobody can be told.
void RunAll(Engine& engine, const Options& options) {
    std::vector<BenchRow> kept;
    if (!options.compare.empty()) kept = ReadRun(options.compare);
    if (!options.is_quiet) std::cout << TableHead() << "  score  move     position" << std::endl;
    std::vector<BenchRow> run;
    for (const std::string_view fen : bench_positions) run.push_back(SearchPosition(engine, fen, options));
    if (!options.save.empty()) SaveRun(options.save, run);
    if (!kept.empty()) std::cout << '\n' << ComparisonText(run, kept, !options.is_quiet) << std::flush;
    PrintTotals(run, options);
    if (!std::cout.flush() || std::fflush(stdout) != 0) throw std::runtime_error("can't write to standard output");
}

}  // namespace

int main(int argc, char** argv) {
    Engine engine;
    Options options;
    if (!ReadOptions(argc, argv, options)) return Usage(std::cerr, EXIT_FAILURE);
    if (options.is_help) return Usage(std::cout, EXIT_SUCCESS);
    if (!engine.tables.Resize(options.hash_megabytes * mebibyte, usual_evaluation_bytes)) {
        std::cerr << "bench: no memory for the tables\n";
        return EXIT_FAILURE;
    }
    try {
        Configure(engine, ReadSearch(options.search));
        RunAll(engine, options);
    } catch (const std::runtime_error& error) {
        std::cerr << "bench: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
