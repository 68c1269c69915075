#include "tablebases/mate_tables.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "tablebases/table_messages.h"
#include "tablebases/table_value.h"

namespace VorkaTablebases {

namespace {

Bitboard MenOf(const SIDE_PIECES& side, int type) {
    switch (type) {
        case queen:
            return side.queens;
        case rook:
            return side.rooks;
        case bishop:
            return side.bishops;
        case knight:
            return side.knights;
        default:
            return side.pawns;
    }
}

std::uint32_t KeyOf(const BOARD& board) {
    std::uint32_t key = 0;
    for (const Colour side : {white, black}) {
        for (int type = pawn; type <= queen; ++type) {
            key += Material::KeyOf(side, type) * static_cast<std::uint32_t>(PopCount(MenOf(board.side(side), type)));
        }
    }
    return key;
}

/// The men in the order of a table, whose White is Black on the board if colours are exchanged.
Squares SquaresOf(const BOARD& board, const Material& material, bool exchanged) {
    const int mirror = exchanged ? 56 : 0;
    Squares squares{};
    std::size_t place = 2;
    for (const Colour side : {white, black}) {
        const SIDE_PIECES& men = board.side(exchanged ? Opponent(side) : side);
        squares[side] = men.king_square ^ mirror;
        int before = no_piece;
        for (const int type : material.of(side)) {
            if (type == before) continue;
            before = type;
            for (Bitboard set = MenOf(men, type); set != 0;) squares[place++] = TakeNextBit(set) ^ mirror;
        }
    }
    return squares;
}

/// The files of the folder that are named after a material, in the order of their names.
std::vector<std::string> TablesIn(const std::string& folder) {
    std::vector<std::string> paths;
    std::error_code error;
    for (std::filesystem::directory_iterator file(folder, error), end; !error && file != end; file.increment(error)) {
        const std::filesystem::path& path = file->path();
        if (path.extension() != mate_table_ending) continue;
        const std::optional<Material> material = Material::FromName(path.stem().string());
        if (material && material->is_normal() && material->name() == path.stem()) paths.push_back(path.string());
    }
    std::ranges::sort(paths);
    return paths;
}

}  // namespace

MateTables::MateTables(const std::string& folder) {
    for (const std::string& path : TablesIn(folder)) {
        std::unique_ptr<MateTableFile> file = MateTableFile::Open(path);
        if (!file) continue;
        const Material& material = file->header().material;
        if (material.name() != std::filesystem::path(path).stem()) {
            TellUnableToRegister(path);
            continue;
        }
        most_men_ = std::max(most_men_, static_cast<int>(material.men()));
        const auto number = static_cast<std::uint32_t>(tables_.size());
        by_key_.push_back({material.key(), number, false});
        if (!material.is_symmetric()) {
            by_key_.push_back({Material(material.of(black), material.of(white)).key(), number, true});
        }
        tables_.push_back({TableIndex(material), std::move(file)});
    }
    std::ranges::sort(by_key_, {}, &Entry::key);
}

std::size_t MateTables::largest_block() const noexcept {
    std::size_t largest = 0;
    for (const Table& table : tables_) largest = std::max<std::size_t>(largest, table.file->header().block_bytes);
    return largest;
}

ProbeResult MateTables::Probe(const BOARD& board, BlockCache& cache, int& score, SourceFailure& failure) noexcept {
    if (PopCount(board.occupied) > most_men_) return ProbeResult::not_found;
    const std::uint32_t key = KeyOf(board);
    const auto entry = std::ranges::lower_bound(by_key_, key, {}, &Entry::key);
    if (entry == by_key_.end() || entry->key != key) return ProbeResult::not_found;
    Table& table = tables_[entry->table];
    failure = table.failure;
    if (failure != SourceFailure::none) return ProbeResult::not_found;
    const Squares squares = SquaresOf(board, table.index.material(), entry->exchanged);
    const Colour to_move = entry->exchanged ? Opponent(board.mover()) : board.mover();
    const std::uint64_t index = table.index.IndexOf(squares, to_move);
    const std::uint32_t block_bytes = table.file->header().block_bytes;
    TableValue value = table_draw;
    failure = cache.Find(*table.file, static_cast<std::uint32_t>(index / block_bytes), index % block_bytes, value);
    table.failure = failure;
    if (failure != SourceFailure::none) return ProbeResult::not_found;
    score = ScoreOf(value);
    return ProbeResult::found;
}

}  // namespace VorkaTablebases
