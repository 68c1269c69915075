#include "chess/board.h"

#include <algorithm>

namespace {

/// The longest history that a draw by fifty moves can't have ended; what is older can't be repeated.
constexpr std::ptrdiff_t max_keys_before_ply_0 = max_keys - max_frames;

/// At most a minor piece or two knights on each side. A game goes on with two knights: docs/oddities.md, two knights.
bool HasTooLittleMaterial(const SIDE_PIECES& side) {
    if (side.pawns != 0 || side.heavy_points != 0) return false;
    return side.minor_points < 6 || (side.minor_points == 6 && side.bishops == 0);
}

}  // namespace

BOARD::BOARD()
    : ply(0),
      side_to_move(white),
      total_material(0),
      occupied(0),
      occupied_a1h8(0),
      occupied_file(0),
      occupied_a8h1(0),
      sides{},
      squares{},
      key_history(key_store),
      frames{},
      key_store{} {}

BOARD::BOARD(const BOARD& other) { *this = other; }

BOARD& BOARD::operator=(const BOARD& other) {
    if (this == &other) return *this;
    ply = other.ply;
    side_to_move = other.side_to_move;
    total_material = other.total_material;
    occupied = other.occupied;
    occupied_a1h8 = other.occupied_a1h8;
    occupied_file = other.occupied_file;
    occupied_a8h1 = other.occupied_a8h1;
    std::copy(std::begin(other.sides), std::end(other.sides), sides);
    std::copy(std::begin(other.squares), std::end(other.squares), squares);
    std::copy(std::begin(other.frames), std::end(other.frames), frames);
    std::copy(std::begin(other.key_store), std::end(other.key_store), key_store);
    key_history = key_store + (other.key_history - other.key_store);
    return *this;
}

void BOARD::ResetPly() {
    frames[0] = frame();
    if (frames[0].fifty_counter == 0) {
        key_store[0] = key();
        key_history = key_store;
    } else {
        key_history += ply;
        // A game that goes on beyond the fifty moves drops its oldest keys: the search needs the room after it.
        if (const std::ptrdiff_t surplus = key_history - key_store - max_keys_before_ply_0; surplus > 0) {
            std::copy(key_store + surplus, key_history + 1, key_store);
            key_history -= surplus;
        }
    }
    ply = 0;
}

void BOARD::SetFiftyCounter(int n) {
    const std::uint64_t current = key();
    frame().fifty_counter = static_cast<std::uint16_t>(n);
    for (int i = 0; i < n; ++i) key_store[i] = static_cast<std::uint64_t>(i) + 1;
    key_history = key_store + n;
    key_history[ply] = current;
}

bool BOARD::IsDraw() const noexcept {
    if (HasTooLittleMaterial(sides[white]) && HasTooLittleMaterial(sides[black])) return true;
    const int plies = frame().fifty_counter;
    if (plies < 4) return false;
    if (plies > 99) return true;
    const std::uint64_t* const current = key_history + ply;
    for (int back = 2; back <= plies; back += 2)
        if (*(current - back) == *current) return true;
    return false;
}
