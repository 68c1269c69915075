#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "search/engine/engine.h"
#include "search/settings/search_settings.h"
#include "search/settings/tournament_settings.h"

/// What makes one player of a match: the defaults of the engine, and what is changed in them.
///
///     PlayerSetup second = ReadPlayer("settings=tuned.txt min_ply_for_null_move=1 contempt=20");
struct PlayerSetup {
    std::string name;
    SearchSettings settings;
    bool uses_tournament_search = false;
    TournamentSettings tournament;
    std::int32_t personality = 0;
    std::int32_t contempt = 0;  ///< centipawns
    std::uint64_t nodes = 0;    ///< a bound of its own for each move; 0: that of the match

    bool operator==(const PlayerSetup&) const = default;
};

/// Reads a player from words with blanks between them, each `key=value`: `name`, `settings` (a settings file), `search`
/// (classic or tournament), `tournament` (a file of its settings), `personality` (a name or a number), `contempt`,
/// `nodes`, or the name of a setting; the elements of an array have commas between them. What stands between
/// quotation marks of either kind keeps its blanks, such as those of a path. The later of two words wins. An empty
/// text, or `defaults`, is the engine as it is. Without a name the player is called as it is described. Throws
/// std::runtime_error with what is wrong.
[[nodiscard]] PlayerSetup ReadPlayer(std::string_view text);

/// The words of ReadPlayer that change how the engine searches: no name, personality, contempt, or bound of nodes.
/// Throws std::runtime_error with what is wrong.
[[nodiscard]] PlayerSetup ReadSearch(std::string_view text);

/// What the help of a program says that takes such words by --set.
inline constexpr std::string_view set_option_help =
    "--set changes a setting; search=tournament, settings=FILE and tournament=FILE are known too.\n";

/// Lets the engine search as the player does. Its personality and contempt are a matter of each search.
void Configure(Engine& engine, const PlayerSetup& player);

/// Changes one setting by name. Throws std::runtime_error with what is wrong.
void ChangeSetting(SearchSettings& settings, std::string_view name, std::string_view value);

/// All in which the player isn't the engine as it is, in the words that ReadPlayer reads; "defaults" if nothing.
[[nodiscard]] std::string DescriptionOf(const PlayerSetup& player);
