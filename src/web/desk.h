#pragma once

#include <string>
#include <string_view>

/// What a page asks beside the search: it knows no rules of chess itself. A question is a few lines, its word first;
/// the answer is one JSON object, {"error": <word>} if there is no answer.
///
///     game          the position after the moves: FEN, side, legal moves, the notation of the game, its result, and
///                   which side could mate at all; a draw by rule counts where the game ends, and has legal moves
///     evaluation    a line with the personality, a name or a number, and then the game: the evaluation of the position
///                   after the moves, term by term and rule by rule
///     settings      no more lines: the settings that both searches share and those of the classic one
///     read_pgn      the text of a game, of whose tags only FEN is read: its start, its moves and its result
///     write_pgn     the game, a line with its result, and its tags, one a line: the text of it; mate and stalemate
///                   outrank the result
///
/// Where it says "the game", and for `game` itself, two lines stand: the FEN of its start, empty for the usual one, and
/// its moves as UCI writes them.
namespace VorkaWeb {

/// Throws nothing but what memory throws.
[[nodiscard]] std::string Answer(std::string_view question);

}  // namespace VorkaWeb
