#pragma once

#include <cstddef>

/// The entry of a small table by a count, a rank or a file, which are plain numbers elsewhere.
template <class Table>
[[nodiscard]] constexpr auto at(const Table& table, int index) noexcept {
    return table[static_cast<std::size_t>(index)];
}
