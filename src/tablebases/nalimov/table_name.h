#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chess/board.h"

/// Which tables there are, and what their files are called: for each material with 3 to 5 men two files, one for each
/// side that may have the move.
///
///     kbnk.nbw.emd    king, bishop and knight against king, the stronger side to move
///     kbnk.nbb.emd    the same, the bare king to move
///
/// Without ".emd" the values are not packed. Older files have "_" in place of the first dot, and those with names of 8
/// and 3 letters have nothing there: kbnknbw.emd.
namespace NalimovTablebases {

/// The first side of a material has more men, or as many and better ones. It need not be White.
enum Side : std::size_t { first_side = 0, second_side = 1 };
[[nodiscard]] constexpr Side Other(Side side) { return side == first_side ? second_side : first_side; }

inline constexpr int fewest_men = 3;
inline constexpr int most_men = 5;
inline constexpr int most_men_of_a_side = 3;  ///< beside the king

/// The kinds of men beside the king, as names list them.
inline constexpr std::array kinds{queen, rook, bishop, knight, pawn};
inline constexpr std::string_view letters_of_kinds = "qrbnp";

/// The men of both sides beside the kings, by letters in the order of `letters_of_kinds`: {"bn", ""}.
struct Material {
    std::array<std::string, 2> men;

    [[nodiscard]] bool has_pawns() const;
    [[nodiscard]] bool is_symmetric() const { return men[first_side] == men[second_side]; }
    /// "kbnk"
    [[nodiscard]] std::string name() const;
    /// A number of its own for each material.
    [[nodiscard]] std::uint32_t key() const;
    bool operator==(const Material&) const = default;
};

/// All materials with so many men.
[[nodiscard]] std::vector<Material> MaterialsOf(int men);
/// The key of the material that `board` has, if the first side has the men of `first`. No side may have more than 3 men
/// of a kind.
[[nodiscard]] std::uint32_t KeyOf(const BOARD& board, Colour first) noexcept;
/// Nothing if it is no list of two kings and 1 to 3 other men in the right order.
[[nodiscard]] std::optional<Material> MaterialNamed(std::string_view name);

/// What the name of a file says.
struct TableName {
    Material material;
    Side mover = first_side;
    bool is_packed = false;  ///< has the ending of packed files
    bool operator==(const TableName&) const = default;
};

/// Reads any form of the name, in small letters or capitals; nothing if it is none.
[[nodiscard]] std::optional<TableName> ReadTableName(std::string_view file_name);
/// The usual form.
[[nodiscard]] std::string FileNameOf(const TableName& name);

}  // namespace NalimovTablebases
