#include "chess/board_text.h"

#include <cstddef>
#include <string_view>

#include "chess/notation.h"
#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"

std::string CastlingText(const BOARD& board) {
    constexpr std::string_view letters = "KQkq";
    std::string text;
    for (std::size_t right = 0; right < letters.size(); ++right)
        if ((board.frame().castling >> right & 1) != 0) text += letters[right];
    return text.empty() ? std::string(vocabulary::no_castling_and_no_square) : text;
}

std::string EnPassantText(const BOARD& board) {
    const Square s = board.frame().en_passant_square;
    return s == 0 ? std::string(vocabulary::no_castling_and_no_square) : SquareToString(s);
}

void PrintBoard(const BOARD& board, bool with_state) {
    vlog << vocabulary::board_separator_line;
    for (int r = 7; r >= 0; --r) {
        vlog << "  " << r + 1 << " |";
        for (int f = 0; f < 8; ++f) {
            const int code = board.squares[r * 8 + f];
            const char letter = piece_letters[static_cast<std::size_t>(code > 0 ? code : -code)];
            vlog << ' ' << (code > 0 ? "*" : "") << letter << (code > 0 ? "" : " ") << '|';
        }
        vlog << '\n';
    }
    vlog << vocabulary::board_separator_line << vocabulary::board_files_line;
    if (!with_state) return;
    vlog << vocabulary::castle_possibilities << ": " << CastlingText(board) << '\n'
         << vocabulary::side_on_move << ": "
         << (board.side_to_move == white ? vocabulary::side_white : vocabulary::side_black) << "; "
         << vocabulary::en_passant_square << ": " << EnPassantText(board) << '\n';
}
