#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "chess/move.h"
#include "frame/base/zeroed_pages.h"
#include "search/state/sort_score.h"
#include "search/tables/score.h"

/// How often quiet moves have cut, in bands of eight plies. An entry counts only while its generation is its band's, so
/// a band is emptied by counting its generation up.
struct HistoryEntry {
    std::uint16_t generation;  ///< wraps
    std::uint16_t value;
};

struct HistoryBand {
    static constexpr std::size_t entry_count = 12 << 12;  ///< side and piece, from and to square

    [[nodiscard]] static constexpr std::size_t Index(Move move, Colour side) {
        return (move & 0xFFFU) + (static_cast<std::size_t>(MovingPiece(move) - 1 + static_cast<int>(side) * 6) << 12);
    }

    /// The band's own generation stands in entry 0: no move goes from a1 to a1.
    [[nodiscard]] std::uint16_t& generation() { return entries[0].generation; }
    [[nodiscard]] std::uint16_t generation() const { return entries[0].generation; }
    [[nodiscard]] bool IsCurrent(const HistoryEntry& entry) const { return entry.generation == generation(); }
    [[nodiscard]] std::uint32_t Value(std::size_t index) const {
        return IsCurrent(entries[index]) ? entries[index].value : 0;
    }
    void Add(std::size_t index, std::uint32_t bonus) noexcept;

    std::array<HistoryEntry, entry_count> entries;
};
static_assert(sizeof(HistoryBand) == 0x30000);

/// All bands, zeroed when built, kept from search to search. Few searches reach the last ones.
class HistoryTable {
  public:
    static constexpr std::size_t band_count = 11;

    /// Throws std::bad_alloc.
    HistoryTable();

    /// Empties the bands of all plies.
    void NewSearch() noexcept;
    /// Empties the band of `ply` if the search enters it from above.
    void EnterPly(std::uint32_t ply) noexcept {
        if (ply % plies_per_band == 0) ++Band(ply).generation();
    }
    /// Tells the table of a move that cut. `distance` is the node's. The band of the ply learns of it and the one
    /// before; the first band has none before it, and the second takes its place.
    void UpdateHistory(Move move, Colour side, Distance distance, std::uint32_t ply) noexcept;
    /// The sort score of a move by what the band of the ply and the one before know of it, from 1; 0 if they know
    /// nothing. In the first band it alone is asked.
    [[nodiscard]] std::int32_t Score(Move move, Colour side, std::uint32_t ply) const noexcept {
        const std::size_t index = HistoryBand::Index(move, side);
        const std::uint32_t band = ply / plies_per_band;
        std::uint32_t sum = bands()[band == 0 ? 0 : band - 1].Value(index);
        if (band != 0) sum += bands()[band].Value(index);
        if (sum == 0) return 0;
        if (sum > largest_value) return max_sort_score;
        return std::max(static_cast<std::int32_t>(sum >> value_to_score_shift), 1);
    }
    [[nodiscard]] HistoryBand& Band(std::uint32_t ply) noexcept { return bands()[ply / plies_per_band]; }

  private:
    static constexpr std::uint32_t plies_per_band = 8;
    static constexpr std::uint32_t largest_value = 65535;
    static constexpr int value_to_score_shift = 7;
    static_assert(largest_value >> value_to_score_shift == max_sort_score);
    using Bands = std::array<HistoryBand, band_count>;
    static_assert(sizeof(Bands) == 0x210000);
    [[nodiscard]] Bands& bands() noexcept { return *static_cast<Bands*>(pages_.data()); }
    [[nodiscard]] const Bands& bands() const noexcept { return *static_cast<const Bands*>(pages_.data()); }

    ZeroedPages pages_;
};
