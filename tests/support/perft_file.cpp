#include "support/perft_file.h"

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "chess/move_generator.h"
#include "chess/notation.h"

namespace {

constexpr std::string_view between_fields = " | ";

/// The text before the next separator, which it takes off `rest` with it.
std::string TakeField(std::string_view& rest) {
    const std::size_t end = rest.find(between_fields);
    if (end == std::string_view::npos) throw std::runtime_error("field missing");
    const std::string field(rest.substr(0, end));
    rest.remove_prefix(end + between_fields.size());
    return field;
}

PerftRow ReadRow(std::string_view line) {
    PerftRow row;
    row.id = TakeField(line);
    row.fen = TakeField(line);
    row.source = TakeField(line);
    std::istringstream counts{std::string(line)};
    for (std::uint64_t count = 0; counts >> count;) row.counts.push_back(count);
    if (!counts.eof() || row.counts.empty()) throw std::runtime_error("count expected");
    return row;
}

}  // namespace

std::vector<PerftRow> ReadPerftFile(const std::string& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("can't read " + path);
    std::vector<PerftRow> rows;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.empty() || line[0] == '#') continue;
        try {
            rows.push_back(ReadRow(line));
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(path + ":" + std::to_string(number) + ": " + error.what());
        }
    }
    return rows;
}

std::uint64_t PerftByLists(BOARD& board, int depth) {
    Move buffer[MAX_MOVES];
    const Move* const end = GenerateMoves(buffer, board, mode_legal);
    if (depth == 1) return static_cast<std::uint64_t>(end - buffer);
    std::uint64_t count = 0;
    for (const Move* move = buffer; move != end; ++move) {
        board.MakeMove(*move);
        count += PerftByLists(board, depth - 1);
        board.UnmakeMove(*move);
    }
    return count;
}

std::uint64_t PerftByMoves(BOARD& board, int depth) {
    Move buffer[MAX_MOVES];
    const Move* const end = GenerateMoves(buffer, board, mode_legal);
    std::uint64_t count = 0;
    for (const Move* move = buffer; move != end; ++move) {
        board.MakeMove(*move);
        count += depth == 1 ? 1 : PerftByMoves(board, depth - 1);
        board.UnmakeMove(*move);
    }
    return count;
}

std::string PerftByFirstMove(BOARD& board, int depth) {
    Move buffer[MAX_MOVES];
    const Move* const end = GenerateMoves(buffer, board, mode_legal);
    std::string text;
    for (const Move* move = buffer; move != end; ++move) {
        board.MakeMove(*move);
        const std::uint64_t count = depth == 1 ? 1 : PerftByLists(board, depth - 1);
        board.UnmakeMove(*move);
        text += MoveToCoordinate(*move) + ": " + std::to_string(count) + '\n';
    }
    return text;
}
