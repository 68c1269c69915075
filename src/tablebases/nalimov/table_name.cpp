#include "tablebases/nalimov/table_name.h"

#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"

namespace NalimovTablebases {

namespace {

std::string NameOf(const Material& material) { return VorkaUtils::ToLower(material.name()); }

/// Takes the ending away if the text has it.
bool TakeEnding(std::string_view& text, std::string_view ending) {
    if (!text.ends_with(ending)) return false;
    text.remove_suffix(ending.size());
    return true;
}

}  // namespace

std::optional<Material> MaterialNamed(std::string_view name) {
    const std::optional<Material> material = Material::FromName(name);
    return material && material->is_normal() && NameOf(*material) == name ? material : std::nullopt;
}

std::optional<TableName> ReadTableName(std::string_view file_name) {
    const std::string small = VorkaUtils::ToLower(file_name);
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
    std::string text = NameOf(name.material) + '.';
    text += name.mover == first_side ? vocabulary::nalimov_first_side : vocabulary::nalimov_second_side;
    if (name.is_packed) text += vocabulary::nalimov_packed_ending;
    return text;
}

}  // namespace NalimovTablebases
