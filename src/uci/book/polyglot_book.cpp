#include "uci/book/polyglot_book.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

#include "chess/move_generator.h"
#include "frame/base/whole_file.h"
#include "uci/book/polyglot_keys.h"

namespace VorkaUci {

namespace {

// Where the parts of the table begin.
constexpr std::size_t castling_keys_begin = 768;
constexpr std::size_t en_passant_keys_begin = 772;
constexpr std::size_t turn_key = 780;

constexpr std::uint64_t entry_size = 16;
/// So many entries, evenly spread, must have rising keys.
constexpr std::uint64_t sample_size = 64;

/// Kinds are numbered black pawn, white pawn, black knight and so on.
std::uint64_t KeyOfPiece(int signed_piece, Square square) {
    const bool is_white = signed_piece > 0;
    const int type = is_white ? signed_piece : -signed_piece;
    const int kind = 2 * (type - pawn) + (is_white ? 1 : 0);
    return polyglot_random[static_cast<std::size_t>(64 * kind + square)];
}

/// Unlike in a FEN the file counts only if a pawn stands beside the one that has just gone two squares.
bool CanBeTakenEnPassant(const BOARD& board, Square target) {
    const Square pushed = board.mover() == white ? target - 8 : target + 8;
    const int taker = board.mover() == white ? pawn : -pawn;
    return (FileOf(pushed) > 0 && board.squares[pushed - 1] == taker) ||
           (FileOf(pushed) < 7 && board.squares[pushed + 1] == taker);
}

template <class Number>
Number BigEndian(const unsigned char* bytes) {
    return std::accumulate(bytes, bytes + sizeof(Number), Number{},
                           [](Number sum, unsigned char byte) { return static_cast<Number>(sum << 8 | byte); });
}

/// The word of a move as the book has it.
std::uint16_t BookWord(Move move) {
    const Square from = FromSquare(move);
    Square to = ToSquare(move);
    if (IsCastling(move)) to = to > from ? to + 1 : to - 2;  // the rook's corner
    const int promotion = PromotionPiece(move) == no_piece ? 0 : PromotionPiece(move) - knight + 1;
    return static_cast<std::uint16_t>(promotion << 12 | from << 6 | to);
}

/// Some programs write castling as the king's own move.
std::uint16_t PlainWord(Move move) { return static_cast<std::uint16_t>(FromSquare(move) << 6 | ToSquare(move)); }

}  // namespace

std::uint64_t PolyglotKey(const BOARD& board) {
    std::uint64_t key = 0;
    for (Square square = 0; square < 64; ++square) {
        if (board.squares[square] != no_piece) key ^= KeyOfPiece(board.squares[square], square);
    }
    for (std::size_t right = 0; right < 4; ++right) {
        if ((board.frame().castling >> right & 1) != 0) key ^= polyglot_random[castling_keys_begin + right];
    }
    const Square target = board.frame().en_passant_square;
    if (target != 0 && CanBeTakenEnPassant(board, target)) {
        key ^= polyglot_random[en_passant_keys_begin + static_cast<std::size_t>(FileOf(target))];
    }
    if (board.mover() == white) key ^= polyglot_random[turn_key];
    return key;
}

bool PolyglotBook::Open(const std::string& path) {
    Close();
    if (!OpenForReading(path, file_)) return false;
    file_.seekg(0, std::ios::end);
    const auto size = static_cast<std::uint64_t>(std::max<std::streamoff>(file_.tellg(), 0));
    count_ = size / entry_size;
    if (size % entry_size == 0 && HasOrderedKeys()) return true;
    Close();
    return false;
}

void PolyglotBook::Close() {
    file_ = {};
    count_ = 0;
}

bool PolyglotBook::HasOrderedKeys() {
    const std::uint64_t step = std::max<std::uint64_t>(count_ / sample_size, 1);
    std::uint64_t last = 0;
    for (std::uint64_t index = 0; index < count_; index += step) {
        const std::uint64_t key = Read(index).key;
        if (key < last) return false;
        last = key;
    }
    return true;
}

PolyglotBook::Entry PolyglotBook::Read(std::uint64_t index) {
    std::array<char, entry_size> text{};
    file_.clear();
    file_.seekg(static_cast<std::streamoff>(index * entry_size));
    if (!file_.read(text.data(), text.size())) return {std::numeric_limits<std::uint64_t>::max(), 0, 0};
    std::array<unsigned char, entry_size> bytes{};
    std::copy(text.begin(), text.end(), bytes.begin());
    return {.key = BigEndian<std::uint64_t>(bytes.data()),
            .move = BigEndian<std::uint16_t>(bytes.data() + 8),
            .weight = BigEndian<std::uint16_t>(bytes.data() + 10)};
}

std::vector<BookMove> PolyglotBook::Find(const BOARD& board) {
    std::vector<BookMove> found;
    if (!IsOpen()) return found;
    const std::uint64_t key = PolyglotKey(board);
    std::uint64_t first = 0;
    for (std::uint64_t end = count_; first < end;) {
        const std::uint64_t middle = first + (end - first) / 2;
        if (Read(middle).key < key) {
            first = middle + 1;
        } else {
            end = middle;
        }
    }
    std::vector<Move> moves;
    GenerateLegalMoves(board, moves);
    for (; first < count_; ++first) {
        const Entry entry = Read(first);
        if (entry.key != key) break;
        const auto fits = [&](Move move) {
            return BookWord(move) == entry.move || (IsCastling(move) && PlainWord(move) == entry.move);
        };
        const auto move = std::find_if(moves.begin(), moves.end(), fits);
        if (move != moves.end() && entry.weight != 0) found.push_back({*move, entry.weight});
    }
    return found;
}

Move PolyglotBook::Choose(const BOARD& board, std::uint64_t chance) {
    const std::vector<BookMove> moves = Find(board);
    std::uint64_t sum = 0;
    for (const BookMove& candidate : moves) sum += candidate.weight;
    if (sum == 0) return INVALID;
    std::uint64_t left = chance % sum;
    for (const BookMove& candidate : moves) {
        if (left < candidate.weight) return candidate.move;
        left -= candidate.weight;
    }
    return INVALID;
}

}  // namespace VorkaUci
