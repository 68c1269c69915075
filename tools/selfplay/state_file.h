#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "frame/base/open_file.h"
#include "selfplay/match.h"

/// The games of a match, kept as they end, so that a match that was cut off at any moment goes on where it was.
///
/// A text file: what the match is, line by line, an empty line, and a line for each game, in the order in which they
/// ended. A last line without its end was cut off, and that game is played again.
///
///     selfplay 1
///     engine 61345
///     first min_ply_for_null_move=1
///     second defaults
///     ..
///
///     0 1-0 0 e2e4/23/7 ..
class StateFile {
  public:
    /// Opens the file, or makes it. Throws std::runtime_error if it belongs to another match (the first line that
    /// differs is told), holds no match or what is no game, is no regular file, is in use, or can't be read or
    /// written.
    StateFile(const std::string& path, const MatchPlan& plan);

    /// The games that were kept before.
    [[nodiscard]] const std::vector<PlayedGame>& games() const { return games_; }
    /// Throws std::runtime_error if the file can't be written.
    void Add(const PlayedGame& game);

  private:
    void ReadGames(const MatchPlan& plan, std::string_view text);
    void Write(std::string_view text) const;
    void Cut(std::size_t size) const;

    std::string path_;
    OpenFile file_;
    std::vector<PlayedGame> games_;
};

/// All on which the games of a match depend, as the lines of the head.
[[nodiscard]] std::string HeadOf(const MatchPlan& plan);
