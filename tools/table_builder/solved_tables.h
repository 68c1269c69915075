#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "bitbase_builder/position.h"
#include "tablebases/mate_table_file.h"
#include "tablebases/mate_table_index.h"
#include "tablebases/material.h"
#include "tablebases/table_value.h"

namespace table_builder {

using bitbase_builder::Man;
using bitbase_builder::Position;
using VorkaTablebases::Material;
using VorkaTablebases::MateTableIndex;
using VorkaTablebases::TableValue;

/// All values of one material in memory.
class SolvedTable {
  public:
    explicit SolvedTable(const Material& material);

    [[nodiscard]] const MateTableIndex& index() const { return index_; }
    [[nodiscard]] const Material& material() const { return index_.material(); }

    /// The men of the table in its order, on the squares of a number.
    [[nodiscard]] Position PositionOf(std::uint64_t number) const noexcept;
    /// The number or the two numbers of a position that has this table's men in this table's order.
    [[nodiscard]] MateTableIndex::Indices IndicesOf(const Position& position) const noexcept {
        return index_.IndicesOf(position.at, position.to_move);
    }

    std::vector<TableValue> values;

  private:
    MateTableIndex index_;
    Position men_;
};

/// Tables that are solved, for the values of positions with fewer or other men.
class SolvedTables {
  public:
    void Add(std::unique_ptr<SolvedTable> table);
    [[nodiscard]] bool Has(const Material& material) const;
    /// A table that is there.
    [[nodiscard]] const SolvedTable& Of(const Material& material) const;
    /// Forgets all tables but those of the list.
    void KeepOnly(const std::vector<Material>& materials);
    /// Bytes of all values.
    [[nodiscard]] std::uint64_t bytes() const;

    /// The value for the side to move. Bare kings are a draw. Throws std::logic_error for men of no table.
    [[nodiscard]] TableValue ValueOf(const Position& position) const;

  private:
    std::vector<std::unique_ptr<SolvedTable>> tables_;
};

/// Wins, draws and losses of a solved table, for either side to move.
[[nodiscard]] VorkaTablebases::MateTableHeader HeaderOf(const SolvedTable& table);

}  // namespace table_builder
