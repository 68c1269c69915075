#pragma once

#include <array>
#include <cstdint>

#include "chess/bits.h"

/// The small world of the builder: up to five men on a board, with the plain rules of chess. No castling.
namespace bitbase_builder {

struct Man {
    Colour colour;
    int type;  ///< a PieceType

    bool operator==(const Man&) const = default;
};

/// Men 0 and 1 are the white and the black king.
struct Position {
    static constexpr int most_men = 5;

    int count = 2;
    std::array<Man, most_men> men{{{white, king}, {black, king}}};
    std::array<Square, most_men> at{};
    Colour to_move = white;

    [[nodiscard]] Bitboard occupied() const noexcept;
    /// The man on a square, -1 for none.
    [[nodiscard]] int man_on(Square square) const noexcept;
    void remove(int man) noexcept;
    /// The same with colours exchanged and the board turned.
    [[nodiscard]] Position turned() const noexcept;
};

/// The squares that a man attacks.
[[nodiscard]] Bitboard attacks_of(const Man& man, Square square, Bitboard occupied) noexcept;
[[nodiscard]] bool is_attacked(const Position& position, Square square, Colour by) noexcept;
/// Men on squares of their own, pawns off the outer ranks, and no king that could be taken.
[[nodiscard]] bool is_legal(const Position& position) noexcept;

/// A legal move: the position after it. `en_passant` is the square that was jumped over if an enemy pawn stands beside
/// the pawn that jumped, otherwise -1.
struct Successor {
    Position position;
    Square en_passant = -1;
    bool is_conversion = false;  ///< other men than before
};

/// Calls `visit(successor)` for every legal move until it returns false. Says whether it never did.
template <class Visit>
bool for_each_move(const Position& position, Visit visit);
/// The same for captures and promotions alone.
template <class Visit>
bool for_each_conversion(const Position& position, Visit visit);

/// The positions after legal captures of the pawn that has just jumped over `en_passant`, at most two.
struct EnPassantCaptures {
    std::array<Position, 2> positions;
    int count = 0;
};
[[nodiscard]] EnPassantCaptures en_passant_captures(const Position& position, Square en_passant) noexcept;

[[nodiscard]] bool has_move(const Position& position) noexcept;

// --- Implementation ---

namespace detail {

/// One man goes to a square, taking what stands there. False if that leaves its king in check.
inline bool make(const Position& before, int man, Square to, int type, Successor& after) noexcept {
    after.position = before;
    after.en_passant = -1;
    after.is_conversion = type != before.men[static_cast<std::size_t>(man)].type;
    Position& position = after.position;
    position.at[static_cast<std::size_t>(man)] = to;
    position.men[static_cast<std::size_t>(man)].type = type;
    for (int other = 0; other < before.count; ++other) {
        if (other == man || before.at[static_cast<std::size_t>(other)] != to) continue;
        position.remove(other);
        after.is_conversion = true;
        break;
    }
    position.to_move = Opponent(before.to_move);
    return !is_attacked(position, position.at[before.to_move], position.to_move);
}

inline bool is_beside_enemy_pawn(const Position& position, Square square, Colour own) noexcept {
    for (int man = 2; man < position.count; ++man) {
        const auto m = static_cast<std::size_t>(man);
        if (position.men[m] == Man{Opponent(own), pawn} && RankOf(position.at[m]) == RankOf(square) &&
            (position.at[m] - square == 1 || square - position.at[m] == 1)) {
            return true;
        }
    }
    return false;
}

enum class Moves : bool { all, conversions };

template <Moves Wanted, class Visit>
bool for_each_pawn_move(const Position& position, int man, Bitboard occupied, Bitboard enemies, Visit visit) {
    const auto m = static_cast<std::size_t>(man);
    const Colour own = position.men[m].colour;
    const Square from = position.at[m];
    const int step = own == white ? 8 : -8;
    const int last_rank = own == white ? 7 : 0;
    Successor next;
    const auto go = [&](Square to) {
        if (RankOf(to) != last_rank) return !make(position, man, to, pawn, next) || visit(next);
        for (const int type : {queen, rook, bishop, knight}) {
            if (make(position, man, to, type, next) && !visit(next)) return false;
        }
        return true;
    };
    for (Bitboard targets = attacks_of(position.men[m], from, occupied) & enemies; targets != 0;) {
        if (!go(TakeNextBit(targets))) return false;
    }
    if (Has(occupied, from + step)) return true;
    if (Wanted == Moves::conversions && RankOf(from + step) != last_rank) return true;
    if (!go(from + step)) return false;
    if (RankOf(from) != (own == white ? 1 : 6) || Has(occupied, from + 2 * step)) return true;
    if (!make(position, man, from + 2 * step, pawn, next)) return true;
    if (is_beside_enemy_pawn(position, from + 2 * step, own)) next.en_passant = from + step;
    return visit(next);
}

template <Moves Wanted, class Visit>
bool for_each_move_of(const Position& position, Visit visit) {
    const Bitboard occupied = position.occupied();
    Bitboard own = 0;
    for (int man = 0; man < position.count; ++man) {
        const auto m = static_cast<std::size_t>(man);
        if (position.men[m].colour == position.to_move) own |= Bit(position.at[m]);
    }
    const Bitboard enemies = occupied & ~own & ~Bit(position.at[Opponent(position.to_move)]);
    Successor next;
    for (int man = 0; man < position.count; ++man) {
        const auto m = static_cast<std::size_t>(man);
        if (position.men[m].colour != position.to_move) continue;
        if (position.men[m].type == pawn) {
            if (!for_each_pawn_move<Wanted>(position, man, occupied, enemies, visit)) return false;
            continue;
        }
        const Bitboard goals = Wanted == Moves::conversions ? enemies : enemies | ~occupied;
        for (Bitboard targets = attacks_of(position.men[m], position.at[m], occupied) & goals; targets != 0;) {
            if (make(position, man, TakeNextBit(targets), position.men[m].type, next) && !visit(next)) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace detail

template <class Visit>
bool for_each_move(const Position& position, Visit visit) {
    return detail::for_each_move_of<detail::Moves::all>(position, visit);
}

template <class Visit>
bool for_each_conversion(const Position& position, Visit visit) {
    return detail::for_each_move_of<detail::Moves::conversions>(position, visit);
}

}  // namespace bitbase_builder
