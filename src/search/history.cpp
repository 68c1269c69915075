#include "search/history.h"

#include "chess/board.h"

HistoryTable::HistoryTable() : bands_(std::make_unique<Bands>()) {}

void HistoryTable::NewSearch() noexcept {
    for (std::uint32_t ply = 0; ply < max_frames; ply += plies_per_band) ++Band(ply).generation();
}

void HistoryTable::UpdateHistory(Move, Colour, Distance, std::uint32_t) noexcept {}
