#include "selfplay/openings.h"

#include <fstream>
#include <stdexcept>
#include <utility>

#include "chess/pgn.h"
#include "frame/base/text_utilities.h"
#include "frame/base/whole_file.h"
#include "selfplay/random_numbers.h"

namespace {

/// The first four fields are the position; an EPD line goes on with operations, a FEN with two clocks.
UserBoard PositionOfLine(const std::string& line) {
    const std::vector<std::string> words = VorkaUtils::tokenize(line);
    std::string fen;
    for (std::size_t i = 0; i < 4 && i < words.size(); ++i) fen += words[i] + ' ';
    UserBoard position;
    position.SetBoardFromFen(fen + "0 1");
    return position;
}

[[noreturn]] void Refuse(std::string_view kind, std::size_t number, std::string_view what) {
    throw std::runtime_error(std::string(kind) + ' ' + std::to_string(number) + ": " + std::string(what));
}

std::vector<Opening> ReadLines(std::istream& file) {
    std::vector<Opening> openings;
    std::size_t number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.find_first_not_of(VorkaUtils::white_space) == std::string::npos || line.front() == '#') continue;
        try {
            openings.push_back({PositionOfLine(line)});
        } catch (const UserBoard::user_exception&) {
            Refuse("line", number, "no position");
        }
        if (openings.back().position.IsGameOver()) Refuse("line", number, "the game is over");
    }
    return openings;
}

/// The game read stands at its start, with its moves as next moves and its result; a game without it can be played on.
UserBoard FollowMoves(const UserBoard& game, std::uint32_t most_plies) {
    UserBoard position;
    position.SetBoard(game.start().board, game.ply_offset());
    for (const Move move : game.next_moves()) {
        if (position.made_moves().size() >= most_plies) break;
        position.MakeMove(move);
    }
    return position;
}

std::vector<Opening> ReadGames(std::istream& file, std::uint32_t most_plies) {
    std::vector<Opening> openings;
    while (file >> std::ws && file.peek() != std::istream::traits_type::eof()) {
        const std::size_t number = openings.size() + 1;
        UserBoard game;
        PGN_TAGS tags;
        try {
            ReadPgn(game, file, tags);
        } catch (const UserBoard::invalid_position&) {
            Refuse("game", number, "no position");
        } catch (const UserBoard::invalid_move&) {
            Refuse("game", number, "a move in it can't be played");
        } catch (const UserBoard::user_exception&) {
            Refuse(
                "game", number,
                "it can't be read: it has no result, or what is no move (variations and glyphs can't be read either)");
        }
        openings.push_back({FollowMoves(game, most_plies)});
        if (openings.back().position.IsGameOver()) Refuse("game", number, "the game is over");
    }
    return openings;
}

}  // namespace

std::vector<Opening> ReadOpenings(std::istream& file, std::uint32_t most_plies) {
    // Some editors mark a text as UTF-8 by its first bytes.
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    for (const char c : mark) {
        if (file.peek() != std::char_traits<char>::to_int_type(c)) break;
        file.ignore();
    }
    file >> std::ws;
    auto openings = file.peek() == '[' ? ReadGames(file, most_plies) : ReadLines(file);
    if (openings.empty()) throw std::runtime_error("no openings");
    return openings;
}

std::vector<Opening> OpeningsOfFile(const std::string& path, std::uint32_t most_plies) {
    std::ifstream file;
    if (!OpenForReading(path, file)) throw std::runtime_error("can't open " + path);
    try {
        return ReadOpenings(file, most_plies);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(path + ": " + error.what());
    }
}

void Shuffle(std::vector<Opening>& openings, std::uint64_t seed) {
    if (seed == 0) return;
    RandomNumbers random(seed);
    for (std::size_t i = openings.size(); i > 1; --i) std::swap(openings[i - 1], openings[random.Below(i)]);
}

std::uint64_t FingerprintOf(const std::vector<Opening>& openings) {
    // Fowler, Noll and Vo's hash of the texts, 64 bits.
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const Opening& opening : openings) {
        std::string text = opening.position.GetFen();
        for (const Move move : opening.position.made_moves()) text += ' ' + std::to_string(move & move_bits);
        for (const char c : text + '\n') hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    }
    return hash;
}
