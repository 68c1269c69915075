#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// The words of `go`.
namespace VorkaUci {

/// What a `go` has said; what it has not said is not set. Times are milliseconds.
struct GoCommand {
    std::array<std::optional<std::int64_t>, 2> time;       ///< what is left, by Colour
    std::array<std::optional<std::int64_t>, 2> increment;  ///< by Colour
    std::optional<std::int64_t> moves_to_go;               ///< to the next time control
    std::optional<std::int64_t> depth;
    std::optional<std::int64_t> nodes;
    std::optional<std::int64_t> mate;  ///< in so many moves
    std::optional<std::int64_t> move_time;
    bool infinite = false;
    bool ponder = false;
    std::vector<std::string> search_moves;  ///< as they were written

    /// Whether anything says when the search is to end.
    [[nodiscard]] bool HasAnEnd() const;
};

/// Reads the words after `go`. A word that it does not know, and a word where a number should stand, are skipped.
[[nodiscard]] GoCommand ReadGo(std::span<const std::string> words);

}  // namespace VorkaUci
