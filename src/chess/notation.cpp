#include "chess/notation.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "chess/attacks.h"
#include "chess/move_generator.h"
#include "frame/base/vocabulary.h"

namespace {

/// What is read of a text; a longer text is cut off.
constexpr std::size_t read_length = 16;

constexpr char ToUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

/// no_piece for a letter that no pawn can promote to.
constexpr int PromotionFromChar(char c) {
    switch (ToUpper(c)) {
        case 'B':
            return bishop;
        case 'N':
            return knight;
        case 'R':
            return rook;
        case 'Q':
            return queen;
        default:
            return no_piece;
    }
}

/// The piece letters at the head of a move. A small "b" is a file.
constexpr int PieceFromChar(char c) {
    switch (c) {
        case 'B':
            return bishop;
        case 'K':
        case 'k':
            return king;
        case 'N':
        case 'n':
            return knight;
        case 'P':
        case 'p':
            return pawn;
        case 'Q':
        case 'q':
            return queen;
        case 'R':
        case 'r':
            return rook;
        default:
            return no_piece;
    }
}

constexpr int FileFromChar(char c) { return ToUpper(c) - 'A'; }
constexpr int RankFromChar(char c) { return c - '1'; }

/// The character at `index`, or the zero that a text ends with.
constexpr char At(std::string_view text, std::size_t index) { return index < text.size() ? text[index] : '\0'; }

constexpr int MovingType(const BOARD& board, Square square) {
    const int piece = board.squares[square];
    return piece < 0 ? -piece : piece;
}

/// An empty board has no king to generate moves for.
std::vector<Move> LegalMoves(const BOARD& board) {
    std::vector<Move> moves;
    if (board.own().all != 0) GenerateLegalMoves(board, moves);
    return moves;
}

/// Coordinate form, such as "e7e8q" or "e7e8=Q": INVALID if the text is of another form or no such move is legal.
Move ParseCoordinateForm(std::string_view text, const BOARD& board, const std::vector<Move>& moves) {
    if (!IsFileChar(At(text, 0)) || !IsRankChar(At(text, 1)) || !IsFileChar(At(text, 2)) || !IsRankChar(At(text, 3))) {
        return INVALID;
    }
    const Square from = SquareFromChars(text[0], text[1]);
    const Square to = SquareFromChars(text[2], text[3]);
    int promotion = PromotionFromChar(At(text, 4) == '=' ? At(text, 5) : At(text, 4));
    const bool reaches_last_rank = RankOf(to) == 0 || RankOf(to) == 7;
    if (promotion == no_piece && MovingType(board, from) == pawn && reaches_last_rank) promotion = queen;

    for (const Move move : moves) {
        if (FromSquare(move) != from || ToSquare(move) != to) continue;
        if (promotion != no_piece && PromotionPiece(move) != promotion) continue;
        if (!LeavesKingInCheck(move, board)) return move;
    }
    return INVALID;
}

constexpr bool IsCastlingChar(char c) { return c == 'o' || c == 'O' || c == '0'; }

constexpr bool HasCastlingForm(std::string_view text) {
    return IsCastlingChar(At(text, 0)) && At(text, 1) == '-' && At(text, 2) == text[0];
}

Move ParseCastlingForm(std::string_view text, const std::vector<Move>& moves, MoveParseError& error) {
    const bool is_long = At(text, 3) == '-';
    const char behind = At(text, is_long ? 5 : 3);
    const bool ends_well = behind == '\0' || behind == ' ' || behind == '#' || behind == '+';
    if ((is_long && At(text, 4) != text[0]) || !ends_well) {
        error = MoveParseError::syntax;
        return INVALID;
    }
    const int file = FileOf(is_long ? c1 : g1);
    const auto castling = std::find_if(
        moves.begin(), moves.end(), [file](Move move) { return IsCastling(move) && FileOf(ToSquare(move)) == file; });
    if (castling != moves.end()) return *castling;
    error = MoveParseError::invalid_castling;
    return INVALID;
}

/// What an algebraic text says about a move; what it leaves open is not set.
struct MoveDescription {
    int piece = no_piece;
    int promotion = no_piece;
    bool must_check = false;
    bool must_capture = false;
    std::optional<int> from_file, from_rank, to_file, to_rank;

    [[nodiscard]] bool Fits(Move move) const {
        const auto differs = [](const std::optional<int>& wanted, int found) { return wanted && *wanted != found; };
        if (piece != no_piece && MovingPiece(move) != piece) return false;
        if (must_capture && CapturedPiece(move) == no_piece) return false;
        if (must_check && !GivesCheck(move)) return false;
        if (promotion != no_piece && PromotionPiece(move) != promotion) return false;
        return !differs(to_file, FileOf(ToSquare(move))) && !differs(to_rank, RankOf(ToSquare(move))) &&
               !differs(from_file, FileOf(FromSquare(move))) && !differs(from_rank, RankOf(FromSquare(move)));
    }
};

/// Takes a rank off the end of the text, then a file; both are optional.
void TakeSquareFromEnd(std::string& text, std::optional<int>& file, std::optional<int>& rank) {
    if (!text.empty() && IsRankChar(text.back())) {
        rank = RankFromChar(text.back());
        text.pop_back();
    }
    if (!text.empty() && IsFileChar(text.back())) {
        file = FileFromChar(text.back());
        text.pop_back();
    }
}

/// Where `first` stands in the text, or `second` if `first` does not occur; npos if neither does.
std::size_t FindMark(const std::string& text, char first, char second) {
    const std::size_t position = text.find(first);
    return position != std::string::npos ? position : text.find(second);
}

/// Takes off the text what is understood, part by part. Nothing if something is left over.
std::optional<MoveDescription> ReadAlgebraicForm(std::string text) {
    // An empty text is no move. Otherwise it would fit the only legal move and play it.
    if (text.empty()) return std::nullopt;
    MoveDescription move;

    if (const std::size_t mark = FindMark(text, '+', '#'); mark != std::string::npos) {
        text.erase(mark);
        move.must_check = true;
    }
    if (const std::size_t mark = FindMark(text, 'x', ':'); mark != std::string::npos) {
        text.erase(mark, 1);
        move.must_capture = true;
    }
    if (const std::size_t mark = text.find('='); mark != std::string::npos) {
        move.promotion = PromotionFromChar(At(text, mark + 1));
        if (move.promotion == no_piece) return std::nullopt;
        text.erase(mark, 2);
    }
    TakeSquareFromEnd(text, move.to_file, move.to_rank);
    if (!text.empty()) {
        move.piece = PieceFromChar(text.front());
        if (move.piece != no_piece) text.erase(0, 1);
    }
    TakeSquareFromEnd(text, move.from_file, move.from_rank);
    if (!text.empty()) return std::nullopt;
    return move;
}

Move ParseAlgebraicForm(std::string_view text, const BOARD& board, std::vector<Move> moves, MoveParseError& error) {
    const std::optional<MoveDescription> description = ReadAlgebraicForm(std::string(text));
    if (!description) {
        error = MoveParseError::syntax;
        return INVALID;
    }
    std::erase_if(moves, [&](Move move) { return !description->Fits(move) || LeavesKingInCheck(move, board); });
    if (moves.empty()) {
        error = MoveParseError::no_correspondence;
        return INVALID;
    }
    // "d4" means the pawn.
    if (moves.size() > 1 && description->piece == no_piece) {
        std::erase_if(moves, [](Move move) { return MovingPiece(move) != pawn; });
    }
    if (moves.size() == 1) return moves.front();
    error = MoveParseError::ambiguous;
    return INVALID;
}

std::string CastlingText(Move move) {
    const bool is_short = ToSquare(move) > FromSquare(move);
    std::string text(is_short ? vocabulary::short_castling : vocabulary::long_castling);
    if (GivesCheck(move)) text += '+';
    return text;
}

std::string PromotionSuffix(Move move) {
    if (PromotionPiece(move) == no_piece) return {};
    return {'=', piece_letters[static_cast<std::size_t>(PromotionPiece(move))]};
}

bool Mates(const BOARD& board, Move move) {
    BOARD after(board);
    // Forgets the game so far, so that there is room for one more ply wherever in a search the board stands.
    after.frame().fifty_counter = 0;
    after.ResetPly();
    after.MakeMove(move);
    Move replies[move_list_room];
    return GenerateMoves(replies, after, mode_legal) == replies;
}

std::string CheckSuffix(const BOARD& board, Move move) {
    if (!GivesCheck(move)) return {};
    return Mates(board, move) ? "#" : "+";
}

/// The part of the from square that tells `move` apart from those of like pieces to the same square. A piece that may
/// not go there because it is pinned needs no telling apart, so the legal moves decide, not the attacks.
std::string Disambiguation(const BOARD& board, Move move) {
    const Square from = FromSquare(move);
    bool alone = true;
    bool own_file = true;
    bool own_rank = true;
    for (const Move other : LegalMoves(board)) {
        const Square square = FromSquare(other);
        if (MovingPiece(other) != MovingPiece(move) || ToSquare(other) != ToSquare(move) || square == from) continue;
        alone = false;
        own_file = own_file && FileOf(square) != FileOf(from);
        own_rank = own_rank && RankOf(square) != RankOf(from);
    }
    if (alone) return {};
    if (own_file) return {FileChar(FileOf(from))};
    if (own_rank) return {RankChar(RankOf(from))};
    return SquareToString(from);
}

}  // namespace

bool IsFileChar(char c) { return ToUpper(c) >= 'A' && ToUpper(c) <= 'H'; }
bool IsRankChar(char c) { return c >= '1' && c <= '8'; }
char FileChar(int file) { return static_cast<char>('a' + file); }
char RankChar(int rank) { return static_cast<char>('1' + rank); }
Square SquareFromChars(char file, char rank) { return FileFromChar(file) + 8 * RankFromChar(rank); }
std::string SquareToString(Square square) { return {FileChar(FileOf(square)), RankChar(RankOf(square))}; }

std::string_view MoveParseErrorText(MoveParseError error) {
    switch (error) {
        case MoveParseError::ambiguous:
            return vocabulary::ambiguous_move;
        case MoveParseError::no_correspondence:
            return vocabulary::no_correspondence;
        case MoveParseError::invalid_castling:
            return vocabulary::invalid_move;
        case MoveParseError::syntax:
            break;
    }
    return vocabulary::syntax_error;
}

Move ParseMove(std::string_view text, const BOARD& board, MoveParseError& error) {
    text = text.substr(0, read_length);
    text = text.substr(0, text.find('\0'));
    const std::vector<Move> moves = LegalMoves(board);
    if (const Move move = ParseCoordinateForm(text, board, moves); move != INVALID) return move;
    if (HasCastlingForm(text)) return ParseCastlingForm(text, moves, error);
    return ParseAlgebraicForm(text, board, moves, error);
}

std::string MoveToCoordinate(Move move) {
    std::string text = SquareToString(FromSquare(move)) + SquareToString(ToSquare(move));
    const int promotion = PromotionPiece(move);
    if (promotion != no_piece && promotion != queen) text += piece_letters[static_cast<std::size_t>(promotion)];
    return text;
}

std::string MoveToLongAlgebraic(const BOARD& board, Move move) {
    if (IsCastling(move)) return CastlingText(move);
    std::string text(1, piece_letters[static_cast<std::size_t>(MovingPiece(move))]);
    text += SquareToString(FromSquare(move));
    text += CapturedPiece(move) != no_piece ? 'x' : '-';
    return text + SquareToString(ToSquare(move)) + PromotionSuffix(move) + CheckSuffix(board, move);
}

std::string MoveToSan(const BOARD& board, Move move) {
    if (IsCastling(move)) return CastlingText(move);
    const bool captures = CapturedPiece(move) != no_piece;
    std::string text;
    if (MovingPiece(move) == pawn) {
        if (captures) text += FileChar(FileOf(FromSquare(move)));
    } else {
        text += piece_letters[static_cast<std::size_t>(MovingPiece(move))];
        text += Disambiguation(board, move);
    }
    if (captures) text += 'x';
    return text + SquareToString(ToSquare(move)) + PromotionSuffix(move) + CheckSuffix(board, move);
}
