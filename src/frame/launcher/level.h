#pragma once

#include <array>
#include <string>
#include <string_view>

/// The launcher of a package for all x86-64 machines. The engine is built once for each level of that architecture,
/// as `vorka-x86-64`, `vorka-x86-64-v2` and `vorka-x86-64-v3`, and `vorka` is a small program that asks the processor
/// and replaces itself by the best of them that is there. It serves every program of that form: it starts those of its
/// own name.

/// The lowest level first; a processor of one level runs the programs of all levels before it. Named as the x86-64
/// psABI names them.
enum class Level { x86_64, x86_64_v2, x86_64_v3 };
inline constexpr std::array<std::string_view, 3> level_names{"x86-64", "x86-64-v2", "x86-64-v3"};

[[nodiscard]] constexpr std::string_view NameOf(Level level) { return level_names[static_cast<std::size_t>(level)]; }

struct LevelChoice {
    Level level;          ///< to begin with
    std::string refusal;  ///< what is wrong with the wish; empty if it can be met
};

/// The level to start: the best one of the processor, unless `wish` (the value of VORKA_LEVEL) names another; an empty
/// wish is none.
[[nodiscard]] LevelChoice ChooseLevel(Level best_of_processor, std::string_view wish);

/// Where the program for a level may lie, the first place first: beside the launcher, and in lib/vorka beside the
/// launcher's folder. `launcher` is its full path.
[[nodiscard]] std::array<std::string, 2> PlacesOfProgram(std::string_view launcher, Level level);
