#include "tablebases/mate_table_set.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

#include "frame/base/text_utilities.h"
#include "tablebases/table_file.h"
#include "tablebases/table_messages.h"
#include "tablebases/table_value.h"

namespace VorkaTablebases {

namespace {

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

/// What the name of a file says, in capitals or small letters; nothing if it is no name of a table.
std::optional<Material> MaterialOfFile(const std::filesystem::path& file) {
    const std::string name = VorkaUtils::ToLower(file.filename().string());
    const std::optional<Material> material = Material::FromName(file.stem().string());
    if (!material || !material->is_normal()) return std::nullopt;
    return name == VorkaUtils::ToLower(material->name()).append(mate_table_ending) ? material : std::nullopt;
}

}  // namespace

MateTableSet::MateTableSet(const std::string& folder) {
    for (const std::filesystem::path& path : FilesIn(folder)) {
        const std::optional<Material> named = MaterialOfFile(path);
        if (!named || std::ranges::find(by_key_, named->key(), &Entry::key) != by_key_.end()) continue;
        std::unique_ptr<MateTableFile> file = MateTableFile::Open(path.string());
        if (!file) continue;
        const Material& material = file->header().material;
        if (material != *named) {
            TellUnableToRegister(path.string());
            continue;
        }
        most_men_ = std::max(most_men_, static_cast<int>(material.men()));
        const auto number = static_cast<std::uint32_t>(tables_.size());
        by_key_.push_back({material.key(), number, false});
        if (!material.is_symmetric()) {
            by_key_.push_back({Material(material.of(black), material.of(white)).key(), number, true});
        }
        tables_.push_back({MateTableIndex(material), std::move(file)});
    }
    std::ranges::sort(by_key_, {}, &Entry::key);
}

std::size_t MateTableSet::largest_block() const noexcept {
    std::size_t largest = 0;
    for (const Table& table : tables_) largest = std::max<std::size_t>(largest, table.file->header().block_bytes);
    return largest;
}

ProbeResult MateTableSet::Probe(const BOARD& board, BlockCache& cache, int& score, SourceFailure& failure) noexcept {
    if (PopCount(board.occupied) > most_men_) return ProbeResult::not_found;
    const std::uint32_t key = Material::KeyOf(board, white);
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
