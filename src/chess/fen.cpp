#include "chess/fen.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <vector>

#include "chess/board_text.h"
#include "chess/game_errors.h"
#include "chess/move_generator.h"
#include "chess/notation.h"
#include "frame/base/text_utilities.h"

namespace {

constexpr std::size_t field_count = 6;
constexpr std::uint64_t max_half_move_clock = 100;
/// Twice the number, plus one, still fits into a ply offset.
constexpr std::uint64_t max_full_move_number = std::numeric_limits<std::uint32_t>::max() / 2;

constexpr std::string_view castling_letters = "KQkq";
constexpr std::string_view nothing = "-";

constexpr int no_square = -1;

/// What the fields say, before it is tested whether such a position is possible.
struct FenFields {
    std::int8_t squares[64] = {};
    Colour side = white;
    int castling = 0;
    int en_passant_square = no_square;
    int half_move_clock = 0;
    std::uint32_t full_move_number = 0;
};

/// The signed code of a piece letter, upper case for White; 0 for any other character.
int PieceCodeFromChar(char c) {
    const std::size_t index = signed_piece_letters.find(c);
    return index == std::string_view::npos ? no_piece : static_cast<int>(index) - king;
}

/// Eight ranks from the eighth down, each of exactly eight squares.
void ReadSquares(std::string_view text, std::int8_t (&squares)[64]) {
    int rank = 7;
    int file = 0;
    for (const char c : text) {
        if (c == '/') {
            if (file != 8 || rank == 0) throw game_errors::io_error();
            --rank;
            file = 0;
        } else if (IsRankChar(c)) {
            file += c - '0';
            if (file > 8) throw game_errors::io_error();
        } else {
            const int piece = PieceCodeFromChar(c);
            if (piece == no_piece || file == 8) throw game_errors::io_error();
            squares[8 * rank + file] = static_cast<std::int8_t>(piece);
            ++file;
        }
    }
    if (file != 8 || rank != 0) throw game_errors::io_error();
}

Colour ReadSide(std::string_view text) {
    if (text == "w") return white;
    if (text == "b") return black;
    throw game_errors::io_error();
}

/// The letters stand in one order only, each at most once.
int ReadCastling(std::string_view text) {
    if (text == nothing) return 0;
    int rights = 0;
    std::size_t first_allowed = 0;
    for (const char c : text) {
        const std::size_t index = castling_letters.find(c, first_allowed);
        if (index == std::string_view::npos) throw game_errors::io_error();
        rights |= 1 << index;
        first_allowed = index + 1;
    }
    return rights;
}

int ReadEnPassantSquare(std::string_view text) {
    if (text == nothing) return no_square;
    if (text.size() != 2 || !IsFileChar(text[0]) || !IsRankChar(text[1])) throw game_errors::io_error();
    return SquareFromChars(text[0], text[1]);
}

std::uint64_t ReadNumber(std::string_view text, std::uint64_t highest) try {
    const std::uint64_t number = VorkaUtils::ToUnsigned64(text);
    if (number > highest) throw game_errors::io_error();
    return number;
} catch (const string_conversion_error&) {
    throw game_errors::io_error();
}

FenFields ReadFields(const std::string& text) {
    const std::vector<std::string> words = VorkaUtils::tokenize(text);
    if (words.size() != field_count) throw game_errors::io_error();
    FenFields fields;
    ReadSquares(words[0], fields.squares);
    fields.side = ReadSide(words[1]);
    fields.castling = ReadCastling(words[2]);
    fields.en_passant_square = ReadEnPassantSquare(words[3]);
    fields.half_move_clock = static_cast<int>(ReadNumber(words[4], max_half_move_clock));
    fields.full_move_number = static_cast<std::uint32_t>(ReadNumber(words[5], max_full_move_number));
    return fields;
}

/// A run of empty squares as a digit, every other square as its letter.
std::string RankToText(const BOARD& board, int rank) {
    std::string text;
    int empty = 0;
    for (Square square = 8 * rank; square < 8 * rank + 8; ++square) {
        const int piece = board.squares[square];
        if (piece == no_piece) {
            ++empty;
            continue;
        }
        if (empty > 0) text += static_cast<char>('0' + empty);
        empty = 0;
        text += signed_piece_letters[static_cast<std::size_t>(piece + king)];
    }
    if (empty > 0) text += static_cast<char>('0' + empty);
    return text;
}

}  // namespace

void ReadFen(BOARD& board, const std::string& text, std::uint32_t& ply_offset) {
    const FenFields fields = ReadFields(text);
    // On a board a1 means no en passant square; named in a text, it is one on the wrong rank.
    if (fields.en_passant_square == a1) throw game_errors::invalid_position();
    const int en_passant_square = std::max(fields.en_passant_square, 0);
    if (!board.SetPosition(fields.squares, static_cast<int>(fields.side), en_passant_square, fields.castling)) {
        throw game_errors::invalid_position();
    }
    if (!FitsMoveLists(board)) throw game_errors::invalid_position();
    ply_offset = 2 * fields.full_move_number + (fields.side == black ? 1 : 0);
    board.SetFiftyCounter(fields.half_move_clock);
}

std::string WriteFen(const BOARD& board, int full_move_number) {
    std::string text;
    for (int rank = 7; rank >= 0; --rank) {
        text += RankToText(board, rank);
        if (rank > 0) text += '/';
    }
    const PLY_FRAME& frame = board.frame();
    text += board.side_to_move == white ? " w " : " b ";
    text += frame.castling == 0 ? std::string(nothing) : CastlingText(board);
    text += ' ';
    text += frame.en_passant_square == 0 ? std::string(nothing) : EnPassantText(board);
    text += ' ';
    text += VorkaUtils::ToString(std::int32_t{frame.fifty_counter});
    text += ' ';
    return text + VorkaUtils::ToString(std::int32_t{full_move_number});
}
