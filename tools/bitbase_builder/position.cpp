#include "bitbase_builder/position.h"

#include <cstddef>

#include "chess/bitboard_tables.h"

namespace bitbase_builder {

namespace {

/// A ray up to and including the first man on it; `upwards` if its squares have higher numbers.
Bitboard along(const Bitboard* rays, Square square, Bitboard occupied, bool upwards) {
    const Bitboard ray = rays[square];
    const Bitboard blockers = ray & occupied;
    if (blockers == 0) return ray;
    return ray & ~rays[upwards ? FindLowestBit(blockers) : FindHighestBit(blockers)];
}

Bitboard straight(Square s, Bitboard occupied) {
    const BITBOARD_TABLES& t = bitboard_tables;
    return along(t.ray_north, s, occupied, true) | along(t.ray_east, s, occupied, true) |
           along(t.ray_south, s, occupied, false) | along(t.ray_west, s, occupied, false);
}

Bitboard diagonal(Square s, Bitboard occupied) {
    const BITBOARD_TABLES& t = bitboard_tables;
    return along(t.ray_north_west, s, occupied, true) | along(t.ray_north_east, s, occupied, true) |
           along(t.ray_south_west, s, occupied, false) | along(t.ray_south_east, s, occupied, false);
}

}  // namespace

Bitboard Position::occupied() const noexcept {
    Bitboard set = 0;
    for (int man = 0; man < count; ++man) set |= Bit(at[static_cast<std::size_t>(man)]);
    return set;
}

int Position::man_on(Square square) const noexcept {
    for (int man = 0; man < count; ++man) {
        if (at[static_cast<std::size_t>(man)] == square) return man;
    }
    return -1;
}

void Position::remove(int man) noexcept {
    --count;
    for (auto m = static_cast<std::size_t>(man); m < static_cast<std::size_t>(count); ++m) {
        men[m] = men[m + 1];
        at[m] = at[m + 1];
    }
}

Position Position::turned() const noexcept {
    Position other = *this;
    other.to_move = Opponent(to_move);
    other.at[0] = MirrorVertically(at[1]);
    other.at[1] = MirrorVertically(at[0]);
    for (std::size_t m = 2; m < static_cast<std::size_t>(count); ++m) {
        other.men[m].colour = Opponent(men[m].colour);
        other.at[m] = MirrorVertically(at[m]);
    }
    return other;
}

Bitboard attacks_of(const Man& man, Square square, Bitboard occupied) noexcept {
    switch (man.type) {
        case pawn:
            return bitboard_tables.pawn_attacks(man.colour)[square];
        case knight:
            return bitboard_tables.knight_attacks[square];
        case bishop:
            return diagonal(square, occupied);
        case rook:
            return straight(square, occupied);
        case queen:
            return straight(square, occupied) | diagonal(square, occupied);
        default:
            return bitboard_tables.king_attacks[square];
    }
}

bool is_attacked(const Position& position, Square square, Colour by) noexcept {
    if (Has(bitboard_tables.king_attacks[position.at[by]], square)) return true;
    if (position.count == 2) return false;
    const Bitboard occupied = position.occupied();
    for (std::size_t m = 2; m < static_cast<std::size_t>(position.count); ++m) {
        if (position.men[m].colour != by) continue;
        if (Has(attacks_of(position.men[m], position.at[m], occupied), square)) return true;
    }
    return false;
}

bool is_legal(const Position& position) noexcept {
    if (PopCount(position.occupied()) != position.count) return false;
    for (std::size_t m = 2; m < static_cast<std::size_t>(position.count); ++m) {
        const int rank = RankOf(position.at[m]);
        if (position.men[m].type == pawn && (rank == 0 || rank == 7)) return false;
    }
    return !is_attacked(position, position.at[Opponent(position.to_move)], position.to_move);
}

EnPassantCaptures en_passant_captures(const Position& position, Square en_passant) noexcept {
    EnPassantCaptures captures;
    const Square jumped = en_passant + (position.to_move == white ? -8 : 8);
    for (std::size_t m = 2; m < static_cast<std::size_t>(position.count); ++m) {
        const Man man = position.men[m];
        if (man != Man{position.to_move, pawn}) continue;
        if (!Has(bitboard_tables.pawn_attacks(man.colour)[position.at[m]], en_passant)) continue;
        Position next = position;
        next.at[m] = en_passant;
        next.remove(position.man_on(jumped));
        next.to_move = Opponent(position.to_move);
        if (is_attacked(next, next.at[position.to_move], next.to_move)) continue;
        captures.positions[static_cast<std::size_t>(captures.count++)] = next;
    }
    return captures;
}

bool has_move(const Position& position) noexcept {
    return !for_each_move(position, [](const Successor&) { return false; });
}

}  // namespace bitbase_builder
