#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "chess/move.h"
#include "search/score.h"

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

    std::array<HistoryEntry, entry_count> entries;
};
static_assert(sizeof(HistoryBand) == 0x30000);

/// All bands, zeroed when built, kept from search to search.
class HistoryTable {
  public:
    static constexpr std::size_t band_count = 11;

    HistoryTable();

    /// Empties the bands of all plies.
    void NewSearch() noexcept;
    /// Empties the band of `ply` if the search enters it from above.
    void EnterPly(std::uint32_t ply) noexcept {
        if (ply % plies_per_band == 0) ++Band(ply).generation();
    }
    /// Tells the table of a move that cut. `distance` is the node's.
    void UpdateHistory(Move move, Colour side, Distance distance, std::uint32_t ply) noexcept;
    [[nodiscard]] HistoryBand& Band(std::uint32_t ply) noexcept { return (*bands_)[ply / plies_per_band]; }

  private:
    static constexpr std::uint32_t plies_per_band = 8;
    using Bands = std::array<HistoryBand, band_count>;
    static_assert(sizeof(Bands) == 0x210000);
    std::unique_ptr<Bands> bands_;
};
