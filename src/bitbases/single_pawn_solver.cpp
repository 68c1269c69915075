#include "bitbases/single_pawn_solver.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdlib>

#include "chess/bits.h"

// A win is a position from which the pawn promotes and the new queen or rook stays on the board. The set of wins starts
// empty and grows: with the strong side to move a position joins it when one move leads into it, with the weak side to
// move when every move does. When nothing joins any more, all other possible positions are draws. This program runs
// when the engine is built, before its tables exist, so it computes its own attacks.

namespace {

Bitboard KingAttacks(Square s) {
    const Bitboard row = Bit(s) | (FileOf(s) > 0 ? Bit(s - 1) : 0) | (FileOf(s) < 7 ? Bit(s + 1) : 0);
    return (row | row << 8 | row >> 8) & ~Bit(s);
}

const std::array<Bitboard, 64> king_attacks = [] {
    std::array<Bitboard, 64> attacks{};
    for (Square s = a1; s <= h8; ++s) attacks[static_cast<std::size_t>(s)] = KingAttacks(s);
    return attacks;
}();

Bitboard AttacksOfKing(Square s) { return king_attacks[static_cast<std::size_t>(s)]; }

Bitboard PawnAttacks(Square pawn) {
    return (FileOf(pawn) > 0 ? Bit(pawn + 7) : 0) | (FileOf(pawn) < 7 ? Bit(pawn + 9) : 0);
}

/// What a rook (and, with `diagonals`, a queen) attacks from `from`, the squares of `occupied` included and not passed.
Bitboard SliderAttacks(Square from, bool diagonals, Bitboard occupied) {
    Bitboard attacks = 0;
    for (int rank_step = -1; rank_step <= 1; ++rank_step) {
        for (int file_step = -1; file_step <= 1; ++file_step) {
            if ((rank_step == 0 && file_step == 0) || (!diagonals && rank_step != 0 && file_step != 0)) continue;
            int rank = RankOf(from) + rank_step;
            int file = FileOf(from) + file_step;
            for (; rank >= 0 && rank < 8 && file >= 0 && file < 8; rank += rank_step, file += file_step) {
                attacks |= Bit(rank * 8 + file);
                if (Has(occupied, rank * 8 + file)) break;
            }
        }
    }
    return attacks;
}

struct Position {
    bool strong_to_move;
    Square pawn, strong_king, weak_king;

    [[nodiscard]] bool IsPossible() const {
        if (strong_king == weak_king || strong_king == pawn || weak_king == pawn) return false;
        if (Has(AttacksOfKing(strong_king), weak_king)) return false;
        return !(strong_to_move && Has(PawnAttacks(pawn), weak_king));
    }
    [[nodiscard]] std::size_t Word() const {
        return static_cast<std::size_t>(((strong_to_move ? 0 : 1) * 64 + pawn) * 64 + strong_king);
    }
};

/// The weak side is to move against a new queen or rook. It does not lose if it takes it or is stalemated.
bool IsWonWith(bool queen, Square piece, Square strong_king, Square weak_king) {
    const Bitboard behind_king = SliderAttacks(piece, queen, Bit(strong_king));
    const Bitboard guarded = AttacksOfKing(strong_king);
    const Bitboard moves = AttacksOfKing(weak_king) & ~guarded & ~behind_king;
    if (Has(moves, piece)) return false;
    return moves != 0 || Has(behind_king, weak_king);
}

class Solver {
  public:
    std::vector<std::uint64_t> Solve() {
        while (Grow()) {
        }
        std::vector<std::uint64_t> draws(2 * 64 * 64);
        ForEachPosition([&](const Position& position) {
            if (!IsWin(position)) draws[position.Word()] |= Bit(position.weak_king);
        });
        return draws;
    }

  private:
    template <class Visit>
    static void ForEachPosition(Visit visit) {
        for (const bool strong_to_move : {true, false}) {
            for (Square pawn = a2; pawn <= h7; ++pawn) {
                for (Square strong_king = a1; strong_king <= h8; ++strong_king) {
                    for (Square weak_king = a1; weak_king <= h8; ++weak_king) {
                        const Position position{strong_to_move, pawn, strong_king, weak_king};
                        if (position.IsPossible()) visit(position);
                    }
                }
            }
        }
    }

    [[nodiscard]] bool IsWin(const Position& position) const { return Has(wins_[position.Word()], position.weak_king); }
    void Add(const Position& position) { wins_[position.Word()] |= Bit(position.weak_king); }

    /// Whether a position joined the wins.
    bool Grow() {
        bool has_grown = false;
        ForEachPosition([&](const Position& position) {
            if (IsWin(position)) return;
            if (position.strong_to_move ? !StrongSideWins(position) : !WeakSideLoses(position)) return;
            Add(position);
            has_grown = true;
        });
        return has_grown;
    }

    [[nodiscard]] bool StrongSideWins(const Position& now) const {
        for (Bitboard moves = AttacksOfKing(now.strong_king) & ~AttacksOfKing(now.weak_king) & ~Bit(now.pawn);
             moves != 0; moves &= moves - 1) {
            if (IsWin({false, now.pawn, std::countr_zero(moves), now.weak_king})) return true;
        }
        return PawnWins(now);
    }

    [[nodiscard]] bool PawnWins(const Position& now) const {
        const Bitboard kings = Bit(now.strong_king) | Bit(now.weak_king);
        const Square next = now.pawn + 8;
        if (Has(kings, next)) return false;
        if (RankOf(next) == 7) {
            return IsWonWith(true, next, now.strong_king, now.weak_king) ||
                   IsWonWith(false, next, now.strong_king, now.weak_king);
        }
        if (IsWin({false, next, now.strong_king, now.weak_king})) return true;
        return RankOf(now.pawn) == 1 && !Has(kings, next + 8) &&
               IsWin({false, next + 8, now.strong_king, now.weak_king});
    }

    [[nodiscard]] bool WeakSideLoses(const Position& now) const {
        const Bitboard attacked = AttacksOfKing(now.strong_king) | PawnAttacks(now.pawn);
        const Bitboard moves = AttacksOfKing(now.weak_king) & ~attacked;
        if (Has(moves, now.pawn)) return false;
        for (Bitboard rest = moves; rest != 0; rest &= rest - 1) {
            if (!IsWin({true, now.pawn, now.strong_king, std::countr_zero(rest)})) return false;
        }
        return moves != 0 || Has(PawnAttacks(now.pawn), now.weak_king);
    }

    std::vector<std::uint64_t> wins_ = std::vector<std::uint64_t>(2 * 64 * 64);
};

}  // namespace

std::vector<std::uint64_t> SolveSinglePawn() { return Solver().Solve(); }
