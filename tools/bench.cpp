// Searches a fixed set of positions from cleared tables and counts. The node total of a run at the default depth is the
// signature of a version's search and evaluation: it is the same on every machine.

#include <getopt.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include "chess/user_board.h"
#include "search/driver/search_controller.h"
#include "search/engine/engine.h"
#include "silent_host.h"

namespace {

constexpr int default_depth = 6;

/// Openings, middle games quiet and sharp, endings of several kinds; moves that promote, castle and take en passant.
// clang-format off
constexpr std::string_view positions[] = {
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",
    "r1bqkbnr/pppp1ppp/2n5/1B2p3/4P3/5N2/PPPP1PPP/RNBQK2R b KQkq - 3 3",
    "rnbqk2r/pp2ppbp/3p1np1/2p5/2PPP3/2N2N2/PP2BPPP/R1BQK2R b KQkq - 1 6",
    "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N2NP1/PP3PBP/R1BQ1RK1 w - - 4 10",
    "r2q1rk1/pb1nbppp/1p2pn2/2p5/2BP4/P1N1PN2/1P2QPPP/R1B2RK1 w - - 0 12",
    "r1b1k2r/2qnbppp/p2ppn2/1p4B1/3NPPP1/2N2Q2/PPP4P/2KR1B1R b kq - 0 11",
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
    "2rq1rk1/pp1bppbp/3p1np1/8/2BNP3/2N1BP2/PPPQ2PP/2KR3R w - - 7 13",
    "r4rk1/1pp1qppp/p1np1n2/2b1p1B1/2B1P1b1/P1NP1N2/1PP1QPPP/R4RK1 w - - 0 10",
    "1r3rk1/3bbppp/1qn1p3/p2pP3/1p1P4/1P1B1N2/P2Q1PPP/R1B2RK1 w - - 2 18",
    "r1b2r1k/4qp1p/p2ppb1Q/4nP2/1p1NP3/2N5/PPP4P/2KR1BR1 w - - 4 18",
    "3r2k1/pp3pp1/2p1q2p/4P3/2P2Q2/1P4P1/P4P1P/3R2K1 w - - 3 27",
    "8/5pk1/1p2p1p1/1P1rP2p/3R1P1P/4K1P1/8/8 w - - 5 45",
    "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1",
    "8/1p3pk1/p2p2p1/3Pn2p/1P2P2P/P3B1P1/5K2/8 w - - 2 38",
    "6k1/5pp1/p3q2p/1p6/3Q4/2P3P1/PP3P1P/6K1 w - - 0 32",
    "8/pp3k2/2p1pp2/3p4/3P1P1p/2P1P2P/PP2K3/8 w - - 0 30",
    "8/8/1k1p4/1P1P1p2/K4P2/8/8/8 w - - 4 60",
    "n1n5/PPPk4/8/8/8/8/4Kppp/5N1N b - - 0 1",
    "4k2r/1b1n1p2/p2bp1p1/1p1p3p/3P1P1P/2PBPN2/PP1K2P1/1R4R1 w k - 1 24",
};
// clang-format on

struct Options {
    int depth = default_depth;
    int milliseconds = 0;  ///< for each position, instead of a depth
    bool is_quiet = false;
};

/// Listens to a search.
class Listener : public SilentHost {
  public:
    void sendDepthStarted(int depth) override { last_depth_ = depth; }
    void sendSearchStatistics(const SearchInfo& info) override { info_ = info; }

    [[nodiscard]] const SearchInfo& info() const { return info_; }
    /// Completed iterations.
    [[nodiscard]] int completed(bool by_time) const { return by_time ? last_depth_ - 1 : last_depth_; }

  private:
    SearchInfo info_;
    int last_depth_ = 0;
};

struct Totals {
    std::uint64_t nodes = 0;
    std::int64_t milliseconds = 0;
    int depth = 0;
    double log_branching = 0;
};

void SearchPosition(Engine& engine, std::string_view fen, const Options& options, Totals& totals) {
    engine.tables.Clear();
    UserBoard game;
    game.SetBoardFromFen(std::string(fen));
    SearchController controller(engine);
    Listener listener;
    SearchLimits limits;
    if (options.milliseconds > 0) {
        limits.max_time_limit = options.milliseconds;
    } else {
        limits.max_depth = options.depth;
    }
    controller.Run(limits, game, listener);
    const SearchInfo& info = listener.info();
    const int depth = listener.completed(options.milliseconds > 0);
    const std::int64_t milliseconds = info.Milliseconds();
    totals.nodes += info.nodes;
    totals.milliseconds += milliseconds;
    totals.depth += depth;
    if (depth > 0) totals.log_branching += std::log(static_cast<double>(info.nodes)) / depth;
    if (options.is_quiet) return;
    const std::string best = info.principal_variation.empty() ? "-" : info.principal_variation.front().second;
    std::printf("%12llu nodes %7lld ms  depth %2d  %6d  %-8s %s\n", static_cast<unsigned long long>(info.nodes),
                static_cast<long long>(milliseconds), depth, info.score, best.c_str(), std::string(fen).c_str());
}

/// `name=value` with a search setting and a number, or true or false. False, with a message, if there is none such.
bool Set(SearchSettings& settings, std::string_view assignment) {
    const std::size_t sign = std::min(assignment.find('='), assignment.size());
    const std::string_view name = assignment.substr(0, sign);
    const std::string value(assignment.substr(std::min(sign + 1, assignment.size())));
    for (const search_settings::SettingRow& row : search_settings::Table()) {
        if (row.name != name || row.size != 1) continue;
        const int number = value == "true" ? 1 : std::atoi(value.c_str());
        if (number < row.lower_bound || number > row.upper_bound) break;
        row.Set(settings, 0, number);
        return true;
    }
    std::cerr << "bench: no such setting or value: " << assignment << '\n';
    return false;
}

int Usage(std::ostream& out, int status) {
    out << "usage: bench [--depth N | --time MILLISECONDS] [--hash MEGABYTES] [--set NAME=VALUE].. [--quiet]\n"
           "Searches "
        << std::size(positions) << " fixed positions from cleared tables, to depth " << default_depth
        << " if nothing is told.\nPrints nodes, time, and nodes per second; the node total at the default depth is the "
           "signature of the search.\n";
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    Engine engine;
    Options options;
    std::uint64_t hash_megabytes = 16;
    const option long_options[] = {{"depth", required_argument, nullptr, 'd'},
                                   {"time", required_argument, nullptr, 't'},
                                   {"hash", required_argument, nullptr, 'h'},
                                   {"set", required_argument, nullptr, 's'},
                                   {"quiet", no_argument, nullptr, 'q'},
                                   {"help", no_argument, nullptr, 'H'},
                                   {nullptr, 0, nullptr, 0}};
    for (int letter = 0; (letter = getopt_long(argc, argv, "", long_options, nullptr)) != -1;) {
        switch (letter) {
            case 'd':
                options.depth = std::atoi(optarg);
                break;
            case 't':
                options.milliseconds = std::atoi(optarg);
                break;
            case 'h':
                hash_megabytes = std::strtoull(optarg, nullptr, 10);
                break;
            case 's':
                if (!Set(engine.settings, optarg)) return EXIT_FAILURE;
                break;
            case 'q':
                options.is_quiet = true;
                break;
            case 'H':
                return Usage(std::cout, EXIT_SUCCESS);
            default:
                return Usage(std::cerr, EXIT_FAILURE);
        }
    }
    if (optind != argc || options.depth < 1 || options.milliseconds < 0) return Usage(std::cerr, EXIT_FAILURE);
    if (!engine.tables.Resize(hash_megabytes * mebibyte, usual_evaluation_bytes)) {
        std::cerr << "bench: no memory for the tables\n";
        return EXIT_FAILURE;
    }

    Totals totals;
    for (const std::string_view fen : positions) SearchPosition(engine, fen, options, totals);
    const double count = static_cast<double>(std::size(positions));
    const double seconds = static_cast<double>(totals.milliseconds > 0 ? totals.milliseconds : 1) / 1000;
    std::printf("Nodes:     %llu\n", static_cast<unsigned long long>(totals.nodes));
    std::printf("Time:      %lld ms\n", static_cast<long long>(totals.milliseconds));
    std::printf("Nodes/s:   %.0f\n", static_cast<double>(totals.nodes) / seconds);
    std::printf("Depth:     %.2f on average\n", totals.depth / count);
    std::printf("Branching: %.2f\n", std::exp(totals.log_branching / count));
    std::printf("Bench: %llu\n", static_cast<unsigned long long>(totals.nodes));
    return EXIT_SUCCESS;
}
