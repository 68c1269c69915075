#pragma once

#include <string>
#include <string_view>

/// What a page asks beside the search: it knows no rules of chess itself. A question is a few lines, its word first;
/// the answer is one JSON object, {"error": <word>} if there is no answer. docs/web.md describes them.
///
///     game                    the position after the moves, its legal moves, the notation and the result
///     evaluation              the same position's evaluation, term by term and rule by rule
///     settings                the settings of the classic search, from their table
///     read_pgn, write_pgn     a game as text, and back
///
/// A game is two lines: the FEN of its start, empty for the usual one, and its moves as UCI writes them.
namespace VorkaWeb {

/// Throws nothing but what memory throws.
[[nodiscard]] std::string Answer(std::string_view question);

}  // namespace VorkaWeb
