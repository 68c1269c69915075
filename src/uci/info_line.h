#pragma once

#include <span>
#include <string>

#include "chess/board.h"
#include "search/driver/search_host.h"
#include "search/tables/hash.h"

/// The lines with which a search tells what it is doing.
namespace VorkaUci {

/// "cp 23", "mate 4" or "mate -3". A win that is known without its way is told as a hundred pawns and less.
[[nodiscard]] std::string ScoreText(int score);
/// "nodes .. nps .. hashfull .. tbhits .. time ..".
[[nodiscard]] std::string StatusText(const SearchInfo& info, const HashTables& tables);
/// The line of a score: info.score with the moves of info.principal_variation that it rests on.
[[nodiscard]] std::string ThinkingLine(const SearchInfo& info, const HashTables& tables);
/// The line of a bound. `line` is shown as far as it can be played.
[[nodiscard]] std::string BoundLine(const SearchInfo& info, const HashTables& tables, int score, ScoreBound bound,
                                    const BOARD& root, std::span<const Move> line);
/// "info depth .. currmove .. currmovenumber ..".
[[nodiscard]] std::string CurrentMoveLine(const SearchInfo& info, Move move);

}  // namespace VorkaUci
