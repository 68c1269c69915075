#include "table_builder/solved_tables.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <utility>

namespace table_builder {

namespace {

std::uint32_t KeyOf(const Position& position, bool exchanged) {
    std::uint32_t key = 0;
    for (std::size_t m = 2; m < static_cast<std::size_t>(position.count); ++m) {
        const Man man = position.men[m];
        key += Material::KeyOf(exchanged ? Opponent(man.colour) : man.colour, man.type);
    }
    return key;
}

/// The order of the men in a table: White's before Black's, the strongest first.
bool StandsBefore(const Man& a, const Man& b) { return a.colour != b.colour ? a.colour < b.colour : a.type > b.type; }

void SortMen(Position& position) {
    for (std::size_t m = 3; m < static_cast<std::size_t>(position.count); ++m) {
        for (std::size_t n = m; n > 2 && StandsBefore(position.men[n], position.men[n - 1]); --n) {
            std::swap(position.men[n], position.men[n - 1]);
            std::swap(position.at[n], position.at[n - 1]);
        }
    }
}

}  // namespace

SolvedTable::SolvedTable(const Material& material) : index_(material) {
    men_.count = static_cast<int>(material.men());
    std::size_t place = 2;
    for (const Colour side : {white, black}) {
        for (const int type : material.of(side)) men_.men[place++] = {side, type};
    }
}

Position SolvedTable::PositionOf(std::uint64_t number) const noexcept {
    Position position = men_;
    index_.PositionOf(number, position.at, position.to_move);
    return position;
}

void SolvedTables::Add(std::unique_ptr<SolvedTable> table) { tables_.push_back(std::move(table)); }

bool SolvedTables::Has(const Material& material) const {
    return std::ranges::any_of(tables_, [&](const auto& table) { return table->material() == material; });
}

const SolvedTable& SolvedTables::Of(const Material& material) const {
    for (const auto& table : tables_) {
        if (table->material() == material) return *table;
    }
    throw std::logic_error("no table of " + material.name());
}

void SolvedTables::KeepOnly(const std::vector<Material>& materials) {
    std::erase_if(
        tables_, [&](const auto& table) { return std::ranges::find(materials, table->material()) == materials.end(); });
}

std::uint64_t SolvedTables::bytes() const {
    std::uint64_t sum = 0;
    for (const auto& table : tables_) sum += table->values.size();
    return sum;
}

TableValue SolvedTables::ValueOf(const Position& position) const {
    if (position.count == 2) return VorkaTablebases::table_draw;
    for (const bool exchanged : {false, true}) {
        const std::uint32_t key = KeyOf(position, exchanged);
        for (const auto& table : tables_) {
            if (table->index().key() != key) continue;
            Position arranged = exchanged ? position.turned() : position;
            SortMen(arranged);
            return table->values[static_cast<std::size_t>(table->IndicesOf(arranged).first)];
        }
    }
    throw std::logic_error("men of no table");
}

VorkaTablebases::MateTableHeader HeaderOf(const SolvedTable& table) {
    using namespace VorkaTablebases;
    MateTableHeader header;
    header.material = table.material();
    header.entries = table.values.size();
    const std::size_t of_one_side = table.values.size() / (table.material().is_symmetric() ? 1 : 2);
    for (std::size_t number = 0; number < table.values.size(); ++number) {
        const TableValue value = table.values[number];
        if (value == table_illegal || table.index().IsSecond(number)) continue;
        TableCounts& counts = header.counts[number / of_one_side];
        const auto plies = static_cast<std::uint32_t>(PliesOf(value));
        if (value == table_draw) {
            ++counts.draws;
        } else if (IsWin(value)) {
            ++counts.wins;
            counts.longest_win = std::max(counts.longest_win, plies);
        } else if (IsLoss(value)) {
            ++counts.losses;
            counts.longest_loss = std::max(counts.longest_loss, plies);
        }
    }
    return header;
}

}  // namespace table_builder
