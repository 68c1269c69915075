// Counts the ways through the positions of a perft file, to the full depth of the file or up to a bound, and tells how
// many leaves that is in a second. Another program that understands "go perft" can run in turn with it, so that the two
// figures are taken under the same conditions.

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <limits>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "options/number_option.h"
#include "support/board_builder.h"
#include "support/perft_file.h"

namespace {

constexpr std::string_view help_text =
    "usage: perft [--file PATH] [--first N] [--largest N] [--every-leaf] [--beside COMMAND]\n"
    "       perft --uci [--every-leaf]\n"
    "\n"
    "Counts the ways through the positions of a perft file and compares them with the file.\n"
    "Leaves are counted from the length of the last list of moves.\n"
    "\n"
    "  --file PATH       positions and counts (default: " VORKA_PERFT_FILE
    ")\n"
    "  --first N         only the first N positions; the first six are the standard ones\n"
    "  --largest N       only as deep as a count is at most N\n"
    "  --every-leaf      make and unmake every leaf\n"
    "  --beside COMMAND  run COMMAND in turn, which reads \"position fen ..\" and \"go perft ..\" from its\n"
    "                    standard input, and print the ratio of the speeds\n"
    "  --uci             be such a command: for another build of this program\n"
    "  --help            print this\n"
    "\n"
    "Examples:\n"
    "  perft --first 6 --beside /usr/games/stockfish\n"
    "  perft --first 6 --every-leaf --beside /usr/games/stockfish\n"
    "  perft --first 6 --beside \"./perft_table_bits --uci\"\n"
    "\n"
    "The exit status is 0 if all counts agree, 1 if one does not, 2 for wrong options.\n";

struct Options {
    std::string file = VORKA_PERFT_FILE;
    std::string beside;
    std::size_t first = std::numeric_limits<std::size_t>::max();
    std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    bool every_leaf = false, uci = false, help = false;
};

Options ReadOptions(const std::vector<std::string>& words) {
    Options options;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const auto value = [&]() -> const std::string& {
            if (++i == words.size()) throw std::invalid_argument("value missing after " + words[i - 1]);
            return words[i];
        };
        const auto number = [&](std::uint64_t least) {
            const std::string& option = words[i];
            const auto found = NumberIn<std::uint64_t>(value(), least, std::numeric_limits<std::int64_t>::max());
            if (!found) throw std::invalid_argument(option + " takes a number, not \"" + words[i] + '"');
            return *found;
        };
        if (words[i] == "--help")
            options.help = true;
        else if (words[i] == "--uci")
            options.uci = true;
        else if (words[i] == "--every-leaf")
            options.every_leaf = true;
        else if (words[i] == "--file")
            options.file = value();
        else if (words[i] == "--beside")
            options.beside = value();
        else if (words[i] == "--first")
            options.first = number(1);
        else if (words[i] == "--largest")
            options.largest = number(0);
        else
            throw std::invalid_argument("unknown option " + words[i]);
    }
    return options;
}

class Stopwatch {
  public:
    [[nodiscard]] double Seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    }

  private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// A child process that counts; lives as long as this object.
class Companion {
  public:
    explicit Companion(const std::string& command) {
        int to_child[2], from_child[2];
        if (pipe(to_child) != 0 || pipe(from_child) != 0) throw std::runtime_error("no pipe");
        child_ = fork();
        if (child_ < 0) throw std::runtime_error("no process");
        if (child_ == 0) {
            dup2(to_child[0], STDIN_FILENO);
            dup2(from_child[1], STDOUT_FILENO);
            for (const int end : {to_child[0], to_child[1], from_child[0], from_child[1]}) close(end);
            execl("/bin/sh", "sh", "-c", command.c_str(), static_cast<char*>(nullptr));
            _exit(127);
        }
        close(to_child[0]);
        close(from_child[1]);
        input_ = fdopen(to_child[1], "w");
        output_ = fdopen(from_child[0], "r");
    }
    ~Companion() {
        std::fputs("quit\n", input_);
        std::fclose(input_);
        std::fclose(output_);
        waitpid(child_, nullptr, 0);
    }
    Companion(const Companion&) = delete;
    Companion& operator=(const Companion&) = delete;

    [[nodiscard]] std::uint64_t Count(const std::string& fen, std::size_t depth) {
        std::fprintf(input_, "position fen %s\ngo perft %zu\n", fen.c_str(), depth);
        std::fflush(input_);
        char line[4096];
        while (std::fgets(line, sizeof line, output_) != nullptr) {
            constexpr std::string_view head = "Nodes searched: ";
            if (std::string_view(line).starts_with(head)) return std::strtoull(line + head.size(), nullptr, 10);
        }
        throw std::runtime_error("the program beside has ended");
    }

  private:
    pid_t child_;
    std::FILE* input_;
    std::FILE* output_;
};

std::uint64_t Count(BOARD& board, std::size_t depth, bool every_leaf) {
    const int plies = static_cast<int>(depth);
    return every_leaf ? PerftByMoves(board, plies) : PerftByLists(board, plies);
}

constexpr std::uint64_t most_plies = 100;

/// Answers "position fen ..", "go perft .." and "quit".
void AnswerLines(bool every_leaf) {
    BOARD board = BoardFromFen(start_fen);
    for (std::string line; std::getline(std::cin, line);) {
        constexpr std::string_view position = "position fen ", go = "go perft ";
        if (line.starts_with(position)) board = BoardFromFen(line.substr(position.size()));
        if (line.starts_with(go)) {
            const auto depth = NumberIn<std::uint64_t>(line.substr(go.size()), 0, most_plies);
            if (depth)
                std::cout << "Nodes searched: " << Count(board, *depth, every_leaf) << std::endl;
            else
                std::cerr << "perft: go perft takes a number from 0 to " << most_plies << std::endl;
        }
        if (line == "quit") return;
    }
}

/// The largest depth of a row that the options allow, 0 for none.
std::size_t DepthOf(const PerftRow& row, const Options& options) {
    std::size_t depth = 0;
    while (depth < row.counts.size() && row.counts[depth] <= options.largest) ++depth;
    return depth;
}

std::string Speed(double leaves, double seconds) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << leaves / seconds / 1e6 << " million/s";
    return text.str();
}

/// Runs all positions. False if a count is wrong.
bool RunFile(const Options& options) {
    std::vector<PerftRow> rows = ReadPerftFile(options.file);
    if (rows.size() > options.first) rows.resize(options.first);
    std::unique_ptr<Companion> companion;
    if (!options.beside.empty()) companion = std::make_unique<Companion>(options.beside);

    bool all_agree = true;
    double leaves = 0, own_seconds = 0, other_seconds = 0;
    for (const PerftRow& row : rows) {
        const std::size_t depth = DepthOf(row, options);
        if (depth == 0) continue;
        BOARD board = BoardFromFen(row.fen);
        const std::uint64_t wanted = row.counts[depth - 1];

        const Stopwatch own_watch;
        const std::uint64_t found = Count(board, depth, options.every_leaf);
        const double seconds = own_watch.Seconds();
        leaves += static_cast<double>(wanted);
        own_seconds += seconds;
        std::cout << std::left << std::setw(40) << row.id << std::right << " depth " << depth << std::setw(12) << found
                  << "  " << Speed(static_cast<double>(found), seconds);
        if (companion) {
            const Stopwatch other_watch;
            const std::uint64_t other = companion->Count(row.fen, depth);
            other_seconds += other_watch.Seconds();
            std::cout << ", beside " << Speed(static_cast<double>(other), other_watch.Seconds());
            if (other != wanted) std::cout << " (counts " << other << ')';
        }
        std::cout << std::endl;
        if (found == wanted) continue;
        all_agree = false;
        std::cout << row.fen << "\nwanted " << wanted << " (" << row.source << "), count per move:\n"
                  << PerftByFirstMove(board, static_cast<int>(depth));
    }
    std::cout << "all: " << Speed(leaves, own_seconds);
    if (companion)
        std::cout << ", beside " << Speed(leaves, other_seconds) << ", ratio " << std::fixed << std::setprecision(3)
                  << other_seconds / own_seconds;
    std::cout << '\n';
    return all_agree;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    try {
        options = ReadOptions({argv + 1, argv + argc});
    } catch (const std::logic_error& error) {
        std::cerr << error.what() << '\n' << help_text;
        return 2;
    }
    if (options.help) {
        std::cout << help_text;
        return 0;
    }
    try {
        if (options.uci)
            AnswerLines(options.every_leaf);
        else if (!RunFile(options))
            return 1;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
