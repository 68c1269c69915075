#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tablebases/material.h"

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

using VorkaTablebases::Material;
using VorkaTablebases::most_men;

inline constexpr std::size_t most_men_of_a_side = 3;  ///< beside the king

/// The types of a side's men beside the king, the strongest first.
[[nodiscard]] inline const std::vector<int>& MenOf(const Material& material, Side side) {
    return material.of(side == first_side ? white : black);
}

/// Nothing if it is no list of two kings and 1 to 3 other men in small letters and in the right order: "kbnk".
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
