#include "tablebases/nalimov/table_name.h"

#include <algorithm>
#include <cctype>

#include "frame/base/vocabulary.h"

namespace NalimovTablebases {

namespace {

std::size_t StrengthOf(char letter) { return letters_of_kinds.find(letter); }

bool IsStronger(char one, char other) { return StrengthOf(one) < StrengthOf(other); }

/// Whether `men` is a list of kinds, the better ones first.
bool IsListOfMen(std::string_view men) {
    return men.find_first_not_of(letters_of_kinds) == std::string_view::npos &&
           std::is_sorted(men.begin(), men.end(), IsStronger);
}

/// Whether the men of the first side make it the first one.
bool AreInOrder(std::string_view first, std::string_view second) {
    if (first.size() != second.size()) return first.size() > second.size();
    return !std::lexicographical_compare(second.begin(), second.end(), first.begin(), first.end(), IsStronger);
}

/// All lists of so many men.
std::vector<std::string> ListsOf(std::size_t length) {
    if (length == 0) return {std::string()};
    std::vector<std::string> lists;
    for (const std::string& shorter : ListsOf(length - 1)) {
        for (const char letter : letters_of_kinds) {
            if (IsListOfMen(shorter + letter)) lists.push_back(shorter + letter);
        }
    }
    return lists;
}

/// Two bits for each kind.
std::uint32_t KeyOfMen(std::string_view men) {
    std::uint32_t key = 0;
    for (const char letter : men) key += 1U << (2 * StrengthOf(letter));
    return key;
}

std::uint32_t KeyOfMen(const SIDE_PIECES& side) noexcept {
    const std::array sets{side.queens, side.rooks, side.bishops, side.knights, side.pawns};
    std::uint32_t key = 0;
    for (std::size_t kind = 0; kind < sets.size(); ++kind) {
        key += static_cast<std::uint32_t>(PopCountSparse(sets[kind])) << (2 * kind);
    }
    return key;
}

constexpr unsigned bits_of_a_side = 2 * kinds.size();

/// Takes the ending away if the text has it.
bool TakeEnding(std::string_view& text, std::string_view ending) {
    if (!text.ends_with(ending)) return false;
    text.remove_suffix(ending.size());
    return true;
}

}  // namespace

bool Material::has_pawns() const {
    return std::any_of(men.begin(), men.end(), [](const std::string& side) { return side.ends_with('p'); });
}

std::string Material::name() const { return 'k' + men[first_side] + 'k' + men[second_side]; }

std::uint32_t Material::key() const { return KeyOfMen(men[first_side]) | KeyOfMen(men[second_side]) << bits_of_a_side; }

std::uint32_t KeyOf(const BOARD& board, Colour first) noexcept {
    return KeyOfMen(board.side(first)) | KeyOfMen(board.side(Opponent(first))) << bits_of_a_side;
}

std::vector<Material> MaterialsOf(int men) {
    std::vector<Material> materials;
    const auto others = static_cast<std::size_t>(men - 2);
    for (std::size_t of_second = 0; 2 * of_second <= others; ++of_second) {
        for (const std::string& first : ListsOf(others - of_second)) {
            for (const std::string& second : ListsOf(of_second)) {
                if (AreInOrder(first, second)) materials.push_back({{first, second}});
            }
        }
    }
    return materials;
}

std::optional<Material> MaterialNamed(std::string_view name) {
    if (name.size() < fewest_men || name.size() > most_men || name[0] != 'k') return std::nullopt;
    const std::size_t second_king = name.find('k', 1);
    if (second_king == std::string_view::npos) return std::nullopt;
    const std::string_view first = name.substr(1, second_king - 1);
    const std::string_view second = name.substr(second_king + 1);
    if (!IsListOfMen(first) || !IsListOfMen(second) || !AreInOrder(first, second)) return std::nullopt;
    return Material{{std::string(first), std::string(second)}};
}

std::optional<TableName> ReadTableName(std::string_view file_name) {
    std::string small(file_name);
    std::transform(small.begin(), small.end(), small.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    std::string_view rest = small;
    TableName name;
    name.is_packed = TakeEnding(rest, vocabulary::nalimov_packed_ending);
    if (TakeEnding(rest, vocabulary::nalimov_second_side)) {
        name.mover = second_side;
    } else if (!TakeEnding(rest, vocabulary::nalimov_first_side)) {
        return std::nullopt;
    }
    if (rest.ends_with('.') || rest.ends_with('_')) rest.remove_suffix(1);
    const std::optional<Material> material = MaterialNamed(rest);
    if (!material) return std::nullopt;
    name.material = *material;
    return name;
}

std::string FileNameOf(const TableName& name) {
    std::string text = name.material.name() + '.';
    text += name.mover == first_side ? vocabulary::nalimov_first_side : vocabulary::nalimov_second_side;
    if (name.is_packed) text += vocabulary::nalimov_packed_ending;
    return text;
}

}  // namespace NalimovTablebases
