// Answers positions with moves, for programs that let the engine play: each line of standard input is a FEN, or a FEN,
// the word "moves" and the moves made since in coordinate notation; the answer is one line with the best move in
// coordinate notation, or "none" where there is none or the line can't be read. Unlike the protocols it can be given
// less than a second, and says whether it may use bitbases.

#include <getopt.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <optional>
#include <sstream>
#include <string>

#include "chess/notation.h"
#include "chess/user_board.h"
#include "frame/base/vocabulary.h"
#include "options/number_option.h"
#include "player_setup/player_setup.h"
#include "search/driver/search_controller.h"
#include "search/driver/silent_host.h"
#include "search/engine/engine.h"

namespace {

/// Nothing if the line can't be read.
std::optional<UserBoard> ReadGame(const std::string& line) {
    constexpr char separator[] = " moves ";
    const std::size_t end = line.find(separator);
    UserBoard game;
    try {
        game.SetBoardFromFen(line.substr(0, end));
    } catch (const UserBoard::user_exception&) {
        return std::nullopt;
    }
    if (end == std::string::npos) return game;
    std::istringstream moves(line.substr(end + sizeof separator - 1));
    for (std::string word; moves >> word;) {
        MoveParseError error = MoveParseError::syntax;
        const Move move = ParseMove(word, game.board(), error);
        if (move == INVALID) return std::nullopt;
        game.MakeMove(move);
    }
    return game;
}

/// As other programs write moves: every promotion has its letter, a small one.
std::string TextOf(Move move) {
    if (move == INVALID) return "none";
    const std::string squares = MoveToCoordinate(move).substr(0, 4);
    const int promotion = PromotionPiece(move);
    return promotion == 0 ? squares : squares + " pnbrq"[promotion];
}

int Usage(std::ostream& out, int status) {
    out << "usage: best_move [--time MILLISECONDS | --depth N] [--bitbases FOLDER] [--set NAME=VALUE]..\n"
           "Reads lines with \"FEN [moves MOVE..]\" and answers each with the engine's move, searched for 100 ms if "
           "nothing is told.\n"
        << set_option_help;
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    SearchLimits limits{.max_time_limit = 100};
    std::string bitbases;
    std::string search;  // how it differs from the defaults
    const option long_options[] = {
        {"time", required_argument, nullptr, 't'},     {"depth", required_argument, nullptr, 'd'},
        {"bitbases", required_argument, nullptr, 'b'}, {"set", required_argument, nullptr, 's'},
        {"help", no_argument, nullptr, 'H'},           {nullptr, 0, nullptr, 0}};
    for (int letter = 0; (letter = getopt_long(argc, argv, "", long_options, nullptr)) != -1;) {
        switch (letter) {
            case 't':
                limits = {};
                if (!ReadNumberOption("best_move", "--time", optarg, 1, most, limits.max_time_limit))
                    return EXIT_FAILURE;
                break;
            case 'd':
                limits = {};
                if (!ReadNumberOption("best_move", "--depth", optarg, 1, most, limits.max_depth)) return EXIT_FAILURE;
                break;
            case 'b':
                bitbases = optarg;
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
    if (optind != argc) return Usage(std::cerr, EXIT_FAILURE);
    Engine engine;
    try {
        Configure(engine, ReadSearch(search));
        if (!bitbases.empty()) {
            engine.bitbases.LoadTwoPawns((bitbases + '/').append(vocabulary::two_pawns_file));
            engine.bitbases.LoadRammedPawns((bitbases + '/').append(vocabulary::rammed_pawn_file));
        }
    } catch (const VorkaBitbases::CouldNotOpenFileException& error) {
        std::cerr << "best_move: " << error.what() << '\n';
        return EXIT_FAILURE;
    } catch (const std::runtime_error& error) {
        std::cerr << "best_move: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    if (!engine.tables.Resize(usual_transposition_bytes, usual_evaluation_bytes)) {
        std::cerr << "best_move: no memory for the tables\n";
        return EXIT_FAILURE;
    }
    SearchController controller(engine);
    SilentHost silence;
    for (std::string line; std::getline(std::cin, line);) {
        std::optional<UserBoard> game = ReadGame(line);
        Move move = INVALID;
        if (game) {
            controller.Run(limits, *game, silence);
            move = controller.best_move();
        }
        std::cout << TextOf(move) << std::endl;
    }
    return EXIT_SUCCESS;
}
