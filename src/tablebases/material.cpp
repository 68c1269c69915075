#include "tablebases/material.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <utility>

namespace VorkaTablebases {

namespace {

constexpr std::string_view letters = " PNBRQK";

std::string SideName(const std::vector<int>& types) {
    std::string text = "K";
    for (const int type : types) text += letters[static_cast<std::size_t>(type)];
    return text;
}

bool IsStronger(const std::vector<int>& one, const std::vector<int>& other) {
    return one.size() != other.size() ? one.size() > other.size() : one > other;
}

/// Appends `material` after what it needs, unless it is there.
void AppendWithSuccessors(const Material& material, std::vector<Material>& list) {
    if (std::ranges::find(list, material) != list.end()) return;
    for (const Material& next : material.Successors()) AppendWithSuccessors(next, list);
    list.push_back(material);
}

/// All ways to choose so many types, each list with the strongest first.
std::vector<std::vector<int>> ListsOf(std::size_t count, int strongest) {
    if (count == 0) return {{}};
    std::vector<std::vector<int>> lists;
    for (int type = strongest; type >= pawn; --type) {
        for (const std::vector<int>& rest : ListsOf(count - 1, type)) {
            std::vector<int>& list = lists.emplace_back(1, type);
            list.insert(list.end(), rest.begin(), rest.end());
        }
    }
    return lists;
}

}  // namespace

Material::Material(std::vector<int> of_white, std::vector<int> of_black)
    : of_white_(std::move(of_white)), of_black_(std::move(of_black)) {
    std::ranges::sort(of_white_, std::greater());
    std::ranges::sort(of_black_, std::greater());
}

std::optional<Material> Material::FromName(std::string_view name) {
    std::vector<int> sides[2];
    int kings = 0;
    for (const char c : name) {
        const std::size_t type = letters.find(static_cast<char>(std::toupper(static_cast<unsigned char>(c))));
        if (type == std::string_view::npos || type == no_piece) return std::nullopt;
        if (type == king) {
            if (++kings > 2) return std::nullopt;
            continue;
        }
        if (kings == 0) return std::nullopt;
        sides[kings - 1].push_back(static_cast<int>(type));
    }
    Material material(sides[0], sides[1]);
    if (kings != 2 || material.men() < fewest_men || material.men() > most_men) return std::nullopt;
    return material;
}

std::string Material::name() const { return SideName(of_white_) + SideName(of_black_); }

Material Material::Normal() const { return IsStronger(of_black_, of_white_) ? Material(of_black_, of_white_) : *this; }

bool Material::has_pawns() const {
    return std::ranges::count(of_white_, int{pawn}) != 0 || std::ranges::count(of_black_, int{pawn}) != 0;
}

bool Material::both_have_pawns() const {
    return std::ranges::count(of_white_, int{pawn}) != 0 && std::ranges::count(of_black_, int{pawn}) != 0;
}

std::uint32_t Material::key() const {
    std::uint32_t key = 0;
    for (const int type : of_white_) key += KeyOf(white, type);
    for (const int type : of_black_) key += KeyOf(black, type);
    return key;
}

std::uint32_t Material::KeyOf(const BOARD& board, Colour first) noexcept {
    std::uint32_t key = 0;
    for (const Colour side : {white, black}) {
        const SIDE_PIECES& men = board.side(side == white ? first : Opponent(first));
        for (int type = pawn; type <= queen; ++type) {
            key += KeyOf(side, type) * static_cast<std::uint32_t>(PopCountSparse(MenOf(men, type)));
        }
    }
    return key;
}

std::vector<Material> Material::Successors() const {
    std::vector<Material> found;
    const auto add = [&](const std::vector<int>& mover, const std::vector<int>& other) {
        const Material next = Material(mover, other).Normal();
        if (next.men() > 2 && std::ranges::find(found, next) == found.end()) found.push_back(next);
    };
    for (const Colour side : {white, black}) {
        const std::vector<int>& own = of(side);
        const std::vector<int>& enemy = of(Opponent(side));
        // What the mover has after his move: the same men, or a pawn promoted.
        std::vector<std::vector<int>> after;
        if (std::ranges::count(own, int{pawn}) != 0) {
            for (const int type : {queen, rook, bishop, knight}) {
                after.push_back(own);
                *std::ranges::find(after.back(), int{pawn}) = type;
                add(after.back(), enemy);
            }
        }
        after.push_back(own);
        for (std::size_t i = 0; i < enemy.size(); ++i) {
            std::vector<int> rest = enemy;
            rest.erase(rest.begin() + static_cast<std::ptrdiff_t>(i));
            for (const std::vector<int>& mover : after) add(mover, rest);
        }
    }
    return found;
}

std::vector<Material> MaterialsOf(std::size_t men) {
    std::vector<Material> list;
    for (std::size_t of_black = 0; 2 * of_black <= men - 2; ++of_black) {
        for (const std::vector<int>& strong : ListsOf(men - 2 - of_black, queen)) {
            for (const std::vector<int>& weak : ListsOf(of_black, queen)) {
                const Material material(strong, weak);
                if (material.is_normal()) AppendWithSuccessors(material, list);
            }
        }
    }
    std::erase_if(list, [men](const Material& material) { return material.men() != men; });
    return list;
}

std::vector<Material> WithSuccessors(const Material& material) {
    std::vector<Material> list;
    AppendWithSuccessors(material, list);
    return list;
}

}  // namespace VorkaTablebases
