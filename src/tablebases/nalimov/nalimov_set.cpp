#include "tablebases/nalimov/nalimov_set.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

#include "tablebases/nalimov/table_proof.h"
#include "tablebases/nalimov/table_values.h"
#include "tablebases/table_file.h"

namespace NalimovTablebases {

using VorkaTablebases::ProbeResult;
using VorkaTablebases::SourceFailure;

NalimovSet::NalimovSet(const std::string& folder) {
    for (std::size_t men = VorkaTablebases::fewest_men; men <= most_men; ++men) {
        for (Material& material : VorkaTablebases::MaterialsOf(men)) {
            const std::uint32_t key = material.key();
            materials_.push_back({std::move(material), key});
        }
    }
    std::sort(materials_.begin(), materials_.end(),
              [](const MaterialTables& one, const MaterialTables& other) { return one.key < other.key; });
    for (const std::filesystem::path& file : VorkaTablebases::FilesIn(folder)) {
        const std::optional<TableName> name = ReadTableName(file.filename().string());
        if (!name) continue;
        std::unique_ptr<NalimovTable>& table = TablesOf(name->material.key())->tables[name->mover];
        if (!table) table = NalimovTable::Open(file.string(), *name);
    }
    std::erase_if(materials_, [](const MaterialTables& tables) {
        return tables.tables[first_side] == nullptr && tables.tables[second_side] == nullptr;
    });
}

std::vector<TableName> NalimovSet::Names() const {
    std::vector<TableName> names;
    for (const MaterialTables& tables : materials_) {
        for (const Side mover : {first_side, second_side}) {
            const auto& table = tables.tables[mover];
            if (table) names.push_back({tables.material, mover, table->is_packed()});
        }
    }
    return names;
}

NalimovSet::MaterialTables* NalimovSet::TablesOf(std::uint32_t key) noexcept {
    const auto found =
        std::lower_bound(materials_.begin(), materials_.end(), key,
                         [](const MaterialTables& tables, std::uint32_t wanted) { return tables.key < wanted; });
    return found != materials_.end() && found->key == key ? &*found : nullptr;
}

NalimovSet::Seat NalimovSet::SeatOf(const BOARD& board) noexcept {
    const auto men = static_cast<std::size_t>(PopCount(board.occupied));
    if (men < VorkaTablebases::fewest_men || men > most_men) return {};
    // Where both sides have the same men, either can be the first, and a table for one of them is enough.
    for (const Side mover : {first_side, second_side}) {
        const Colour first = mover == first_side ? board.mover() : Opponent(board.mover());
        MaterialTables* const tables = TablesOf(Material::KeyOf(board, first));
        if (tables == nullptr || !tables->tables[mover] || tables->trust[mover] == Trust::left_out) continue;
        return {tables, first, mover};
    }
    return {};
}

Placement PlacementOf(const BOARD& board, Colour first, const Material& material) noexcept {
    Placement placement;
    for (const Side side : {first_side, second_side}) {
        const SIDE_PIECES& pieces = board.side(side == first_side ? first : Opponent(first));
        placement.kings[side] = Seen(first, pieces.king_square);
        const std::vector<int>& men = MenOf(material, side);
        for (std::size_t i = 0; i < men.size();) {
            Bitboard set = VorkaTablebases::MenOf(pieces, men[i]);
            while (set != 0) placement.men[side][i++] = Seen(first, TakeNextBit(set));
        }
    }
    return placement;
}

ProbeResult NalimovSet::Probe(const BOARD& board, VorkaTablebases::BlockCache& cache, int& score,
                              SourceFailure& failure) noexcept {
    const Seat seat = SeatOf(board);
    if (seat.tables == nullptr || !Prove(seat, cache, failure)) return ProbeResult::not_found;
    return LookUp(seat, board, cache, score, failure);
}

ProbeResult NalimovSet::LookUp(const BOARD& board, VorkaTablebases::BlockCache& cache, int& score,
                               SourceFailure& failure) noexcept {
    const Seat seat = SeatOf(board);
    return seat.tables != nullptr ? LookUp(seat, board, cache, score, failure) : ProbeResult::not_found;
}

ProbeResult NalimovSet::LookUp(const Seat& seat, const BOARD& board, VorkaTablebases::BlockCache& cache, int& score,
                               SourceFailure& failure) noexcept {
    NalimovTable& table = *seat.tables->tables[seat.mover];
    const auto number = table.index().Of(PlacementOf(board, seat.first, seat.tables->material));
    if (!number || *number >= table.size()) return ProbeResult::not_found;

    std::uint8_t value = 0;
    failure = cache.Find(table, static_cast<std::uint32_t>(*number / block_bytes),
                         static_cast<std::size_t>(*number % block_bytes), value);
    if (failure != SourceFailure::none) {
        seat.tables->trust[seat.mover] = Trust::left_out;
        return ProbeResult::not_found;
    }
    const std::optional<int> found = ScoreOfValue(static_cast<std::int8_t>(value));
    if (!found) return ProbeResult::not_found;
    score = *found;
    return ProbeResult::found;
}

std::optional<int> NalimovSet::ScoreOf(const BOARD& board, VorkaTablebases::BlockCache& cache) noexcept {
    int score = 0;
    SourceFailure failure = SourceFailure::none;
    if (LookUp(board, cache, score, failure) != ProbeResult::found) return std::nullopt;
    return score;
}

namespace {

/// Positions of a table that are tested before it is believed.
constexpr int tested_positions = 16;

/// The tables as they are.
class UnprovedTables final : public ScoreLookup {
  public:
    UnprovedTables(NalimovSet& set, VorkaTablebases::BlockCache& cache) : set_(set), cache_(cache) {}
    [[nodiscard]] std::optional<int> ScoreOf(const BOARD& board) noexcept override {
        return set_.ScoreOf(board, cache_);
    }

  private:
    NalimovSet& set_;
    VorkaTablebases::BlockCache& cache_;
};

}  // namespace

bool NalimovSet::Prove(const Seat& seat, VorkaTablebases::BlockCache& cache, SourceFailure& failure) noexcept {
    Trust& trust = seat.tables->trust[seat.mover];
    if (trust != Trust::untested) return trust == Trust::proved;
    UnprovedTables tables(*this, cache);
    RandomPositions positions(seat.tables->material, seat.mover);
    BOARD board;
    bool is_proved = false;
    for (int i = 0; i < tested_positions; ++i) {
        positions.Next(board);
        int score = 0;
        const Seat same{seat.tables, white, seat.mover};
        const bool is_known = LookUp(same, board, cache, score, failure) == ProbeResult::found;
        if (failure != SourceFailure::none) return false;
        const Agreement agreement = is_known ? CompareWithMoves(board, score, tables) : Agreement::impossible;
        is_proved |= agreement == Agreement::proved;
        if (agreement != Agreement::impossible) continue;
        seat.tables->tables[seat.mover]->TellUnbelievable();
        trust = Trust::left_out;
        failure = SourceFailure::corrupted;
        return false;
    }
    // A table whose neighbours are missing may be sound; nothing shows it, so that it counts as not there.
    trust = is_proved ? Trust::proved : Trust::left_out;
    return is_proved;
}

}  // namespace NalimovTablebases
