#include "search/state/history.h"

#include <algorithm>
#include <limits>
#include <new>

#include "chess/board.h"
#include "frame/base/checked_assert.h"
#include "frame/base/theory.h"
#include "frame/base/vocabulary.h"

void HistoryBand::Add(std::size_t index, std::uint32_t bonus) noexcept {
    constexpr std::uint32_t most = std::numeric_limits<std::uint16_t>::max();
    entries[index] = {.generation = generation(),
                      .value = static_cast<std::uint16_t>(std::min(Value(index) + bonus, most))};
}

HistoryTable::HistoryTable() : pages_(sizeof(Bands)) {
    if (pages_.data() == nullptr) throw std::bad_alloc();
}

void HistoryTable::NewSearch() noexcept {
    for (std::uint32_t ply = 0; ply < max_frames; ply += plies_per_band) ++Band(ply).generation();
}

void HistoryTable::UpdateHistory(Move move, Colour side, Distance distance, std::uint32_t ply) noexcept {
    if constexpr (theory_is_checked) {
        CHECKED_ASSERT(FromSquare(move) != ToSquare(move), vocabulary::no_error_description);  // entry 0 is no move's
        CHECKED_ASSERT(pawn <= MovingPiece(move) && MovingPiece(move) <= king, vocabulary::no_error_description);
        CHECKED_ASSERT(ply < max_frames, vocabulary::no_error_description);
    }
    // Deep cuts tell more: the square of the full plies left.
    const std::uint32_t plies = distance >= ONE_PLY ? static_cast<std::uint32_t>(distance / ONE_PLY) : 0;
    const std::uint32_t bonus = plies * plies + 1;
    const std::size_t index = HistoryBand::Index(move, side);
    const std::uint32_t band = std::max(ply / plies_per_band, 1U);
    bands()[band].Add(index, bonus);
    bands()[band - 1].Add(index, bonus);
}
