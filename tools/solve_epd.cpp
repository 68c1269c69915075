// Runs the positions of an EPD file through the search and tells which it solves: a position is solved when the move of
// the search is one of its best moves (bm), or none of the moves to avoid (am). Time and depth are those at which the
// search last came to its move.

#include <getopt.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "chess/notation.h"
#include "chess/user_board.h"
#include "options/number_option.h"
#include "player_setup/player_setup.h"
#include "search/driver/search_controller.h"
#include "search/driver/silent_host.h"
#include "search/engine/engine.h"

namespace {

struct Problem {
    UserBoard position;
    std::string id;
    std::vector<Move> best;   ///< of these one must be played
    std::vector<Move> avoid;  ///< of these none may
};

/// The text after an operation, up to its semicolon; empty if there is none.
std::string OperandOf(const std::string& operations, const std::string& code) {
    const std::string padded = " " + operations;
    const std::size_t at = padded.find(" " + code + " ");
    if (at == std::string::npos) return {};
    const std::size_t begin = at + code.size() + 2;
    return padded.substr(begin, std::min(padded.find(';', begin), padded.size()) - begin);
}

/// Throws std::runtime_error with what is wrong.
std::vector<Move> MovesIn(const std::string& text, const BOARD& board) {
    std::vector<Move> moves;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        MoveParseError error = MoveParseError::syntax;
        const Move move = ParseMove(word, board, error);
        if (move == INVALID) throw std::runtime_error(std::string(MoveParseErrorText(error)) + ": " + word);
        moves.push_back(move & move_bits);
    }
    return moves;
}

/// Throws std::runtime_error with what is wrong.
Problem ReadProblem(const std::string& line) {
    std::istringstream words(line);
    std::string fen;
    std::string field;
    for (int i = 0; i < 4 && words >> field; ++i) fen += field + ' ';
    std::string operations;
    std::getline(words, operations);
    Problem problem;
    try {
        problem.position.SetBoardFromFen(fen + "0 1");
    } catch (const UserBoard::user_exception&) {
        throw std::runtime_error("no position: " + fen);
    }
    problem.best = MovesIn(OperandOf(operations, "bm"), problem.position.board());
    problem.avoid = MovesIn(OperandOf(operations, "am"), problem.position.board());
    if (problem.best.empty() && problem.avoid.empty()) throw std::runtime_error("neither bm nor am");
    problem.id = OperandOf(operations, "id");
    std::erase(problem.id, '"');
    return problem;
}

bool Holds(const std::vector<Move>& moves, Move move) {
    return std::find(moves.begin(), moves.end(), move & move_bits) != moves.end();
}

/// Notes when the search last changed its mind.
class Listener : public SilentHost {
  public:
    void sendThinking(const SearchInfo& info) override {
        if (info.principal_variation.empty() || info.principal_variation.front().first == move_) return;
        move_ = info.principal_variation.front().first;
        milliseconds_ = info.Milliseconds();
        depth_ = info.depth;
    }

    [[nodiscard]] std::int64_t milliseconds() const { return milliseconds_; }
    [[nodiscard]] int depth() const { return depth_; }

  private:
    Move move_ = INVALID;
    std::int64_t milliseconds_ = 0;
    int depth_ = 0;
};

struct Totals {
    int problems = 0;
    int solved = 0;
    std::int64_t milliseconds = 0;  ///< to the moves that solve
    int depth = 0;
};

void Solve(Engine& engine, const Problem& problem, const SearchLimits& limits, Totals& totals) {
    engine.tables.Clear();
    SearchController controller(engine);
    Listener listener;
    controller.Run(limits, problem.position, listener);
    const Move move = controller.best_move();
    const bool is_solved = (problem.best.empty() || Holds(problem.best, move)) && !Holds(problem.avoid, move);
    ++totals.problems;
    if (is_solved) {
        ++totals.solved;
        totals.milliseconds += listener.milliseconds();
        totals.depth += listener.depth();
    }
    std::printf("%-6s %7lld ms  depth %2d  %-8s %s\n", is_solved ? "solved" : "-",
                static_cast<long long>(listener.milliseconds()), listener.depth(),
                move == INVALID ? "-" : MoveToSan(problem.position.board(), move).c_str(), problem.id.c_str());
    std::fflush(stdout);
}

int Usage(std::ostream& out, int status) {
    out << "usage: solve_epd [--time MILLISECONDS | --depth N] [--hash MEGABYTES]\n"
           "                 [--set NAME=VALUE].. FILE\n"
           "Searches each position of an EPD file, for a second if nothing is told, and prints which are solved, with "
           "time and depth.\n"
        << set_option_help;
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    constexpr std::uint64_t most_megabytes = 1U << 24;
    SearchLimits limits{.max_time_limit = 1000};
    std::uint64_t hash_megabytes = 32;
    std::string search;  // how it differs from the defaults
    const option long_options[] = {
        {"time", required_argument, nullptr, 't'}, {"depth", required_argument, nullptr, 'd'},
        {"hash", required_argument, nullptr, 'h'}, {"set", required_argument, nullptr, 's'},
        {"help", no_argument, nullptr, 'H'},       {nullptr, 0, nullptr, 0}};
    for (int letter = 0; (letter = getopt_long(argc, argv, "", long_options, nullptr)) != -1;) {
        switch (letter) {
            case 't':
                limits = {};
                if (!ReadNumberOption("solve_epd", "--time", optarg, 1, most, limits.max_time_limit))
                    return EXIT_FAILURE;
                break;
            case 'd':
                limits = {};
                if (!ReadNumberOption("solve_epd", "--depth", optarg, 1, most, limits.max_depth)) return EXIT_FAILURE;
                break;
            case 'h':
                if (!ReadNumberOption("solve_epd", "--hash", optarg, std::uint64_t{0}, most_megabytes,
                                      hash_megabytes)) {
                    return EXIT_FAILURE;
                }
                break;
            case 's':
                search.append(" ").append(optarg);
                break;
            case 'H':
                return Usage(std::cout, EXIT_SUCCESS);
            default:
                return Usage(std::cerr, EXIT_FAILURE);
        }
    }
    if (optind + 1 != argc) return Usage(std::cerr, EXIT_FAILURE);
    std::ifstream file(argv[optind]);
    if (!file) {
        std::cerr << "solve_epd: can't open " << argv[optind] << '\n';
        return EXIT_FAILURE;
    }
    Engine engine;
    try {
        Configure(engine, ReadSearch(search));
    } catch (const std::runtime_error& error) {
        std::cerr << "solve_epd: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    if (!engine.tables.Resize(hash_megabytes * mebibyte, usual_evaluation_bytes)) {
        std::cerr << "solve_epd: no memory for the tables\n";
        return EXIT_FAILURE;
    }

    Totals totals;
    int bad_lines = 0;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.find_first_not_of(" \t\r") == std::string::npos || line.front() == '#') continue;
        try {
            Solve(engine, ReadProblem(line), limits, totals);
        } catch (const std::runtime_error& error) {
            std::cerr << "solve_epd: line " << number << ": " << error.what() << '\n';
            ++bad_lines;
        }
    }
    const double solved = std::max(totals.solved, 1);
    std::printf("Solved: %d of %d, after %.0f ms and at depth %.1f on average\n", totals.solved, totals.problems,
                static_cast<double>(totals.milliseconds) / solved, totals.depth / solved);
    return bad_lines == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
