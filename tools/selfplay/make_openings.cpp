// Makes openings for matches: positions after a few random moves, none of which gave much away, that are about level by
// a longer search. The same options give the same file on every machine. From the whole checkout:
//
//     build/release/tools/selfplay/make_openings --count 4000 > tests/data/openings.epd

#include <getopt.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "chess/move_generator.h"
#include "frame/base/logfile.h"
#include "selfplay/game.h"
#include "selfplay/option_texts.h"
#include "selfplay/random_numbers.h"

namespace {

struct Options {
    std::uint64_t count = 4000;
    std::uint64_t seed = 1;
    std::int32_t plies = 8;
    unsigned concurrency = 1;
};

constexpr std::uint64_t nodes_of_a_move = 3000;
constexpr std::uint64_t nodes_of_the_last_position = 100'000;
constexpr Score most_given_away = 50;  ///< centipawns, by one move
constexpr Score widest_score = 60;     ///< centipawns either way, of an opening
constexpr std::uint64_t hash_megabytes = 2;

/// Four fields: EPD.
std::string EpdOf(const UserBoard& game) {
    const std::string fen = game.GetFen();
    return fen.substr(0, fen.rfind(' ', fen.rfind(' ') - 1));
}

/// The score for the side on move.
Score ScoreOf(Player& player, const UserBoard& game, std::uint64_t nodes) {
    const std::atomic<bool> never{false};
    return player.Think(game, {.max_nodes = nodes}, never).value_or(PlayedMove()).score;
}

/// Takes moves by chance until one is good enough. False if none is.
bool MakeRandomMove(UserBoard& game, Player& player, RandomNumbers& random) {
    const Score best = ScoreOf(player, game, nodes_of_a_move);
    std::vector<Move> moves;
    GenerateLegalMoves(game.board(), moves);
    while (!moves.empty()) {
        std::swap(moves[random.Below(moves.size())], moves.back());
        UserBoard after = game;
        after.MakeMove(moves.back() & move_bits);
        moves.pop_back();
        if (after.IsGameOver() || -ScoreOf(player, after, nodes_of_a_move) < best - most_given_away) continue;
        game = after;
        return true;
    }
    return false;
}

/// The opening of this number, or nothing if its moves did not lead to one.
std::optional<std::string> TryOpening(std::uint64_t number, Player& player, const Options& options) {
    RandomNumbers random(RandomNumbers(options.seed).Next() + number);
    UserBoard game;
    player.StartGame();
    for (std::int32_t ply = 0; ply < options.plies; ++ply) {
        if (!MakeRandomMove(game, player, random)) return std::nullopt;
    }
    if (game.board().in_check()) return std::nullopt;
    player.StartGame();
    const Score score = ScoreOf(player, game, nodes_of_the_last_position);
    if (score < -widest_score || score > widest_score) return std::nullopt;
    return EpdOf(game);
}

/// Prints openings in the order of their numbers, whatever the number of threads.
void MakeOpenings(const Options& options) {
    constexpr std::uint64_t share = 16;  // of a thread in one go
    std::vector<Player> players;
    for (unsigned i = 0; i < options.concurrency; ++i) players.emplace_back(PlayerSetup(), hash_megabytes);
    std::set<std::string> seen;
    for (std::uint64_t first = 0; seen.size() < options.count; first += share * options.concurrency) {
        std::vector<std::optional<std::string>> found(share * options.concurrency);
        std::vector<std::thread> threads;
        for (unsigned i = 0; i < options.concurrency; ++i) {
            threads.emplace_back([&, i] {
                for (std::uint64_t k = i * share; k < (i + 1) * share; ++k) {
                    found[k] = TryOpening(first + k, players[i], options);
                }
            });
        }
        for (std::thread& thread : threads) thread.join();
        for (const auto& opening : found) {
            if (opening && seen.size() < options.count && seen.insert(*opening).second) {
                std::cout << *opening << std::endl;
            }
        }
    }
}

int Usage(std::ostream& out, int status) {
    out << "usage: make_openings [--count N] [--plies N] [--seed N] [--concurrency N]\n"
           "Prints so many different openings as EPD: positions after random moves from the start position, none of "
           "which gave away\nmore than half a pawn, that are about level.\n";
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    const EchoScope silent(vlog, Echo::off);
    const option long_options[] = {
        {"count", required_argument, nullptr, 'n'}, {"plies", required_argument, nullptr, 'p'},
        {"seed", required_argument, nullptr, 's'},  {"concurrency", required_argument, nullptr, 'c'},
        {"help", no_argument, nullptr, 'H'},        {nullptr, 0, nullptr, 0}};
    Options options;
    try {
        for (int letter = 0; (letter = getopt_long(argc, argv, "", long_options, nullptr)) != -1;) {
            switch (letter) {
                case 'n':
                    options.count = ReadNumber<std::uint64_t>("--count", optarg, 1, 1'000'000);
                    break;
                case 'p':
                    options.plies = ReadNumber("--plies", optarg, 2, 40);
                    break;
                case 's':
                    options.seed = ReadNumber<std::uint64_t>("--seed", optarg, 0, 1'000'000'000);
                    break;
                case 'c':
                    options.concurrency = ReadNumber<unsigned>("--concurrency", optarg, 1, 1024);
                    break;
                case 'H':
                    return Usage(std::cout, EXIT_SUCCESS);
                default:
                    return Usage(std::cerr, EXIT_FAILURE);
            }
        }
        if (optind != argc) return Usage(std::cerr, EXIT_FAILURE);
        std::cout << "# Openings for matches: positions after " << options.plies
                  << " random moves, each within half a pawn of the best, and level within " << widest_score
                  << " centipawns.\n# Made by: make_openings --count " << options.count << " --plies " << options.plies
                  << " --seed " << options.seed << '\n';
        MakeOpenings(options);
    } catch (const std::exception& error) {
        std::cerr << "make_openings: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
