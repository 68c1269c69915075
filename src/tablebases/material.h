#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chess/board.h"

namespace VorkaTablebases {

/// Men of a table, kings included.
inline constexpr std::size_t fewest_men = 3;
inline constexpr std::size_t most_men = 5;

/// The men of one type.
[[nodiscard]] inline Bitboard MenOf(const SIDE_PIECES& side, int type) noexcept {
    switch (type) {
        case queen:
            return side.queens;
        case rook:
            return side.rooks;
        case bishop:
            return side.bishops;
        case knight:
            return side.knights;
        default:
            return side.pawns;
    }
}

/// The squares of the men of a table in its order: white king, black king, the other white men, the other black men.
using Squares = std::array<Square, most_men>;

/// Which men each side has besides its king. The numbers of men of each type and colour make up its `key`, by which
/// tables are found.
class Material {
  public:
    Material() = default;
    /// The types of the men besides the kings, in any order.
    Material(std::vector<int> of_white, std::vector<int> of_black);

    /// Reads names such as "KRPKB", in any case; nothing for a text that names no material of at most five men.
    [[nodiscard]] static std::optional<Material> FromName(std::string_view name);
    [[nodiscard]] std::string name() const;

    /// With the stronger side as White: the one with more men, else the one whose strongest men come first.
    [[nodiscard]] Material Normal() const;
    [[nodiscard]] bool is_normal() const { return key() == Normal().key(); }
    [[nodiscard]] bool is_symmetric() const { return of_white_ == of_black_; }
    [[nodiscard]] bool has_pawns() const;
    [[nodiscard]] bool both_have_pawns() const;
    /// Kings included.
    [[nodiscard]] std::size_t men() const { return 2 + of_white_.size() + of_black_.size(); }

    /// The types of the men besides the kings, the strongest first.
    [[nodiscard]] const std::vector<int>& of(Colour side) const { return side == white ? of_white_ : of_black_; }

    [[nodiscard]] std::uint32_t key() const;
    /// What one man adds to the key.
    [[nodiscard]] static constexpr std::uint32_t KeyOf(Colour side, int type) {
        return std::uint32_t{1} << ((side == white ? 0 : 15) + 3 * (type - pawn));
    }
    /// The key of the material on a board with at most five men, if the men of `first` are taken for White's.
    [[nodiscard]] static std::uint32_t KeyOf(const BOARD& board, Colour first) noexcept;

    /// The materials, in normal form, that a capture or a promotion leads to; bare kings are left out.
    [[nodiscard]] std::vector<Material> Successors() const;

    bool operator==(const Material&) const = default;

  private:
    std::vector<int> of_white_;
    std::vector<int> of_black_;
};

/// All materials of so many men in normal form, each after those that its moves lead to.
[[nodiscard]] std::vector<Material> MaterialsOf(std::size_t men);
/// A material after all that its moves lead to.
[[nodiscard]] std::vector<Material> WithSuccessors(const Material& material);

}  // namespace VorkaTablebases
