#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bitbase_builder/position.h"

namespace bitbase_builder {

/// What is known of a position, for the side to move. What is not known when a table is solved is a draw.
enum Value : std::uint8_t { unknown = 0, loss = 1, win = 2 };

/// Such as "KPKP", of the men besides the kings.
[[nodiscard]] std::string name_of(const std::vector<Man>& extras);

/// All positions of some men. Up to two men besides the kings may stand anywhere; or three do, of which a white and a
/// black pawn block one another (the blocked pair) and only the third one moves.
class Table {
  public:
    /// `extras` are the men besides the kings. With three of them the first two are the blocked pair.
    explicit Table(std::vector<Man> extras);

    [[nodiscard]] bool has_blocked_pair() const noexcept { return extras_.size() == 3; }
    [[nodiscard]] const std::vector<Man>& extras() const noexcept { return extras_; }
    [[nodiscard]] std::size_t size() const noexcept { return values_.size(); }

    [[nodiscard]] Position position_of(std::size_t index) const noexcept;
    /// `position` has this table's men in this table's order.
    [[nodiscard]] std::size_t index_of(const Position& position) const noexcept;

    [[nodiscard]] Value value(std::size_t index) const noexcept;
    void set(std::size_t index, Value value) noexcept;

  private:
    std::vector<Man> extras_;
    std::vector<std::uint8_t> values_;
};

/// The tables that are solved, found by the men of a position.
class Library {
  public:
    /// Solves the table of these men and keeps it. Every table that a capture or promotion leads to must be there.
    /// Calls `progress(settled)` after each pass. `threads` work on it.
    const Table& add(std::vector<Man> extras, int threads, const std::function<void(std::size_t)>& progress = {});

    /// For the side to move. Bare kings are a draw. Throws std::logic_error for men of no table.
    [[nodiscard]] Value value(const Position& position) const;
    /// The value after a move, for the side that answers it.
    [[nodiscard]] Value value_after(const Successor& successor, const Table* solving) const;

    [[nodiscard]] const std::vector<std::unique_ptr<Table>>& tables() const noexcept { return tables_; }

  private:
    const Table* find(const Position& position, Position& arranged) const;
    std::vector<std::unique_ptr<Table>> tables_;
};

}  // namespace bitbase_builder
