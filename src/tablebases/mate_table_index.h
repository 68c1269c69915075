#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tablebases/material.h"

namespace VorkaTablebases {

/// Numbers the positions of one material, which must be in normal form.
///
/// The board may be mirrored left to right, and without pawns also turned over and flipped along its diagonal, until
/// the white king stands on the files a to d, or in the triangle a1-d1-d4. So the two kings have 1806 pairs of squares,
/// or 462. The other men follow as digits, in the order of the material, each group of like men of one side as one
/// digit: 64 for a piece, 48 for a pawn, and so many combinations for several. The side to move is the highest digit;
/// if both sides have the same men, only positions with White to move are numbered, and the others are seen with
/// colours exchanged.
///
/// Some numbers stand for no position, since two men share a square or a king could be taken.
class MateTableIndex {
  public:
    explicit MateTableIndex(const Material& material);

    [[nodiscard]] const Material& material() const { return material_; }
    /// The key of the material.
    [[nodiscard]] std::uint32_t key() const { return key_; }
    /// Numbers are below this.
    [[nodiscard]] std::uint64_t size() const { return size_of_side_ * (is_symmetric_ ? 1 : 2); }

    /// The kings must not stand beside each other.
    [[nodiscard]] std::uint64_t IndexOf(const Squares& squares, Colour to_move) const noexcept {
        return IndicesOf(squares, to_move).first;
    }
    /// With both kings on the long diagonal a position without pawns has two numbers; otherwise both are the same.
    struct Indices {
        std::uint64_t first;
        std::uint64_t second;
    };
    [[nodiscard]] Indices IndicesOf(const Squares& squares, Colour to_move) const noexcept;
    /// Whether the position of a number has a lower number too.
    [[nodiscard]] bool IsSecond(std::uint64_t index) const noexcept;
    /// The position of a number.
    void PositionOf(std::uint64_t index, Squares& squares, Colour& to_move) const noexcept;

  private:
    /// Like men of one side.
    struct Group {
        std::size_t first;  ///< the place of its first man in Squares
        std::size_t count;
        bool of_pawns;
        std::uint64_t numbers;
    };
    [[nodiscard]] std::uint64_t NumberOf(const Squares& squares, const std::uint8_t (&turned)[64],
                                         std::uint64_t kings) const noexcept;

    Material material_;
    std::uint32_t key_;
    bool is_symmetric_;
    bool has_pawns_;
    std::vector<Group> groups_;
    std::uint64_t size_of_side_ = 0;
    Squares partner_{};  ///< the place of each man if colours are exchanged, for symmetric materials
};

}  // namespace VorkaTablebases
