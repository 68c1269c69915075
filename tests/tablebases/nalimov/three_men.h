#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "chess/bits.h"

/// King and one man against king, solved slowly from the rules: round after round, each position is looked at through
/// its moves.
class ThreeMen {
  public:
    /// The side with the man, and the bare one.
    enum Mover : std::size_t { strong = 0, bare = 1 };

    explicit ThreeMen(PieceType kind) : kind_(kind), results_(2 * 64 * 64 * 64, unknown) {
        if (kind == pawn) {
            for (const PieceType piece : {queen, rook, bishop, knight}) promoted_.emplace(piece, ThreeMen(piece));
        }
        Solve();
    }

    /// Whether these squares can occur with `mover` to move.
    [[nodiscard]] bool IsLegal(Mover mover, Square king, Square man, Square bare_king) const {
        if (king == man || bare_king == man || AreNeighbours(king, bare_king)) return false;
        if (kind_ == pawn && (RankOf(man) == 0 || RankOf(man) == 7)) return false;
        return mover == bare || !Attacks(man, bare_king, king);
    }
    /// The result for the side to move as the program scores it: 0 a draw, else 32767 - |result| plies to the mate.
    [[nodiscard]] int ScoreOf(Mover mover, Square king, Square man, Square bare_king) const {
        const int result = results_[PlaceOf(mover, king, man, bare_king)];
        if (result == unknown) return 0;
        return result > 0 ? 32767 - (result - 1) : -32767 + (-result - 1);
    }

  private:
    static constexpr std::int16_t unknown = 0;  ///< others: plies + 1, negative for a loss

    static bool AreNeighbours(Square one, Square other) {
        return std::abs(FileOf(one) - FileOf(other)) <= 1 && std::abs(RankOf(one) - RankOf(other)) <= 1;
    }
    /// Turned boards have one place: the king stands on the files a to d, without a pawn in the triangle a1-d1-d4.
    [[nodiscard]] std::size_t PlaceOf(Mover mover, Square king, Square man, Square bare_king) const {
        const auto turn = [&](auto&& turned) {
            king = turned(king);
            man = turned(man);
            bare_king = turned(bare_king);
        };
        if (FileOf(king) > 3) turn(MirrorHorizontally);
        if (kind_ != pawn && RankOf(king) > 3) turn(MirrorVertically);
        if (kind_ != pawn && RankOf(king) > FileOf(king)) turn([](Square s) { return FileOf(s) * 8 + RankOf(s); });
        return ((mover * 64 + static_cast<std::size_t>(king)) * 64 + static_cast<std::size_t>(man)) * 64 +
               static_cast<std::size_t>(bare_king);
    }

    /// Calls `visit` with each square that the man attacks past one blocker, until it returns true.
    template <class Visit>
    bool EachAttacked(Square man, Square blocker, Visit&& visit) const {
        using Step = std::pair<int, int>;
        static constexpr std::array<Step, 8> steps{
            {{1, 0}, {-1, 0}, {0, 1}, {0, -1}, {1, 1}, {1, -1}, {-1, 1}, {-1, -1}}};
        static constexpr std::array<Step, 8> jumps{
            {{1, 2}, {2, 1}, {-1, 2}, {-2, 1}, {1, -2}, {2, -1}, {-1, -2}, {-2, -1}}};
        const bool slides = kind_ == queen || kind_ == rook || kind_ == bishop;
        const std::size_t begin = kind_ == bishop ? 4 : 0;
        const std::size_t end = kind_ == rook ? 4 : 8;
        for (std::size_t i = begin; i < end; ++i) {
            const auto [file_step, rank_step] = kind_ == knight ? jumps[i] : steps[i];
            if (kind_ == pawn && (rank_step != 1 || file_step == 0)) continue;
            int file = FileOf(man) + file_step;
            int rank = RankOf(man) + rank_step;
            for (; file >= 0 && file < 8 && rank >= 0 && rank < 8; file += file_step, rank += rank_step) {
                const Square to = rank * 8 + file;
                if (visit(to)) return true;
                if (!slides || to == blocker) break;
            }
        }
        return false;
    }
    [[nodiscard]] bool Attacks(Square man, Square target, Square blocker) const {
        return EachAttacked(man, blocker, [&](Square to) { return to == target; });
    }

    template <class Visit>
    static void EachKingMove(Square king, Visit&& visit) {
        for (Square to = a1; to <= h8; ++to) {
            if (to != king && AreNeighbours(to, king)) visit(to);
        }
    }

    /// Calls `visit` with the result of each position that the strong side can move to, for the side that has the move
    /// there.
    template <class Visit>
    void EachStrongMove(Square king, Square man, Square bare_king, Visit&& visit) const {
        EachKingMove(king, [&](Square to) {
            if (IsLegal(bare, to, man, bare_king)) visit(results_[PlaceOf(bare, to, man, bare_king)]);
        });
        if (kind_ == pawn) return EachPawnMove(king, man, bare_king, visit);
        (void)EachAttacked(man, king, [&](Square to) {
            if (to == bare_king) return true;
            if (to != king) visit(results_[PlaceOf(bare, king, to, bare_king)]);
            return false;
        });
    }
    template <class Visit>
    void EachPawnMove(Square king, Square man, Square bare_king, Visit&& visit) const {
        for (Square to = man + 8; to == man + 8 || (to == man + 16 && RankOf(man) == 1); to += 8) {
            if (to == king || to == bare_king) return;
            if (RankOf(to) < 7) {
                visit(results_[PlaceOf(bare, king, to, bare_king)]);
                continue;
            }
            for (const auto& [piece, solved] : promoted_)
                visit(solved.results_[solved.PlaceOf(bare, king, to, bare_king)]);
        }
    }

    /// The result by the moves, as far as they are known; unknown too where nobody wins.
    [[nodiscard]] std::int16_t Strong(Square king, Square man, Square bare_king) const {
        std::int16_t best = unknown;
        EachStrongMove(king, man, bare_king, [&](std::int16_t after) {
            if (after < 0 && (best == unknown || -after + 1 < best)) best = static_cast<std::int16_t>(-after + 1);
        });
        return best;
    }
    [[nodiscard]] std::int16_t Bare(Square king, Square man, Square bare_king) const {
        bool has_move = false;
        bool is_lost = true;
        std::int16_t longest = 0;
        EachKingMove(bare_king, [&](Square to) {
            if (AreNeighbours(to, king)) return;
            if (to != man && Attacks(man, to, king)) return;
            has_move = true;
            const std::int16_t after = to == man ? unknown : results_[PlaceOf(strong, king, man, to)];
            is_lost = is_lost && after > 0;
            longest = std::max(longest, after);
        });
        if (!has_move) return Attacks(man, bare_king, king) ? std::int16_t{-1} : unknown;
        return is_lost ? static_cast<std::int16_t>(-longest - 1) : unknown;
    }

    struct Place {
        Square king;
        Square man;
        Square bare_king;
    };
    [[nodiscard]] std::vector<Place> LegalPlaces(Mover mover) const {
        std::vector<Place> places;
        for (Square king = a1; king <= h8; ++king) {
            for (Square man = a1; man <= h8; ++man) {
                for (Square bare_king = a1; bare_king <= h8; ++bare_king) {
                    const auto itself = static_cast<std::size_t>((((mover * 64 + king) * 64) + man) * 64 + bare_king);
                    if (PlaceOf(mover, king, man, bare_king) != itself) continue;
                    if (IsLegal(mover, king, man, bare_king)) places.push_back({king, man, bare_king});
                }
            }
        }
        return places;
    }

    /// In round n the positions become known whose mate is n - 1 plies away.
    void Solve() {
        std::array<std::vector<Place>, 2> open{LegalPlaces(strong), LegalPlaces(bare)};
        constexpr int rounds_of_promotion = 40;  // the mates with a new piece are no further away
        int idle = 0;
        for (std::int16_t round = 1; idle <= 2 || (kind_ == pawn && round < rounds_of_promotion); ++round) {
            // The bare king is mated after an even number of plies.
            idle = Round(round, round % 2 == 0 ? strong : bare, open) ? 0 : idle + 1;
        }
    }
    /// Whether anything was found.
    bool Round(std::int16_t round, Mover mover, std::array<std::vector<Place>, 2>& open) {
        std::vector<Place> found;
        std::vector<Place> rest;
        for (const Place& place : open[mover]) {
            const auto [king, man, bare_king] = place;
            const int result = mover == strong ? Strong(king, man, bare_king) : Bare(king, man, bare_king);
            (std::abs(result) == round ? found : rest).push_back(place);
        }
        for (const auto& [king, man, bare_king] : found) {
            results_[PlaceOf(mover, king, man, bare_king)] =
                static_cast<std::int16_t>(mover == strong ? round : -round);
        }
        open[mover] = std::move(rest);
        return !found.empty();
    }

    PieceType kind_;
    std::vector<std::int16_t> results_;
    std::map<PieceType, ThreeMen> promoted_;
};
