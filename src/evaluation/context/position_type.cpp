#include "evaluation/context/position_type.h"

#include <algorithm>
#include <optional>

#include "chess/bits.h"
#include "chess/position_keys.h"
#include "evaluation/context/evaluation_context.h"

namespace {

/// Above this much material of the stronger side a position is an opening or a middle game.
constexpr int most_ending_material = 21;

/// How far a side has brought out its minor pieces.
enum class Development { at_home, partial, complete };

template <Colour Us>
Development development_of(const BOARD& board) {
    const SIDE_PIECES& own = board.side(Us);
    constexpr Bitboard knight_homes = Bit(Seen<Us>(b1)) | Bit(Seen<Us>(g1));
    constexpr Bitboard bishop_homes = Bit(Seen<Us>(c1)) | Bit(Seen<Us>(f1));
    constexpr unsigned castling_rights = castling_rights_of[Us];

    if ((own.knights & knight_homes) != 0) return Development::at_home;
    const int bishops_at_home = PopCount(own.bishops & bishop_homes);
    if ((board.frame().castling & castling_rights) == 0) {
        if (bishops_at_home == 0) return Development::complete;
        return bishops_at_home == 1 ? Development::partial : Development::at_home;
    }
    return bishops_at_home == 0 ? Development::partial : Development::at_home;
}

int opening_or_middle_game(const BOARD& board, int previous_type) {
    if (previous_type == middle_game) return middle_game;
    const Development white_development = development_of<white>(board);
    const Development black_development = development_of<black>(board);
    if (white_development == Development::complete || black_development == Development::complete) return middle_game;
    if (white_development == Development::at_home && black_development == Development::at_home) return opening;
    // One side half-way, and no more than six pawns of either colour left.
    const bool lines_are_open = PopCount(board.white_pieces().pawns) <= 6 && PopCount(board.black_pieces().pawns) < 7;
    return lines_are_open ? middle_game : opening;
}

bool has_no_pawns(const SIDE_PIECES& side) { return side.pawns == 0; }

/// Six units, one minor piece on each side.
std::optional<int> minor_against_minor(const BOARD& board) {
    const SIDE_PIECES& one = board.white_pieces();
    const SIDE_PIECES& other = board.black_pieces();
    if (one.minor_points != 3 || other.minor_points != 3) return std::nullopt;
    if (one.knights != 0 && other.knights != 0) return knight_against_knight;
    if (one.knights != 0 || other.knights != 0) return knight_against_bishop;
    const Bitboard bishops = one.bishops | other.bishops;
    const bool on_one_colour = (bishops & light_squares) == 0 || (bishops & ~light_squares) == 0;
    return on_one_colour ? same_coloured_bishops : opposite_bishops;
}

/// A side without pawns that has a piece of this kind.
bool is_lone(const SIDE_PIECES& side, Bitboard SIDE_PIECES::*kind) { return has_no_pawns(side) && side.*kind != 0; }
bool has_lone(const BOARD& board, Bitboard SIDE_PIECES::*kind) {
    return is_lone(board.white_pieces(), kind) || is_lone(board.black_pieces(), kind);
}

/// Whether one side has the one kind and the other side the other.
bool oppose(const BOARD& board, Bitboard SIDE_PIECES::*kind, Bitboard SIDE_PIECES::*other_kind) {
    const SIDE_PIECES& w = board.white_pieces();
    const SIDE_PIECES& b = board.black_pieces();
    return (w.*kind != 0 && b.*other_kind != 0) || (w.*other_kind != 0 && b.*kind != 0);
}

bool is_rook_against_minor(const SIDE_PIECES& one, const SIDE_PIECES& other) {
    return one.heavy_points == 1 && other.minor_points == 3;
}

/// A pawnless side that is five units behind has nothing left to play for.
int unbalanced_type(const BOARD& board) {
    const SIDE_PIECES& w = board.white_pieces();
    const SIDE_PIECES& b = board.black_pieces();
    const int white_lead = w.minor_points - b.minor_points + 5 * (w.heavy_points - b.heavy_points);
    if (has_no_pawns(w)) return white_lead > -5 ? unbalanced_ending : pawnless;
    if (has_no_pawns(b)) return white_lead < 5 ? unbalanced_ending : pawnless;
    return unbalanced_ending;
}

/// The endings with a name of their own, by the material units on the board.
std::optional<int> named_ending(const BOARD& board) {
    const SIDE_PIECES& w = board.white_pieces();
    const SIDE_PIECES& b = board.black_pieces();
    switch (board.total_material) {
        case 0:
            return pawn_ending;
        case 3:
            if (has_lone(board, &SIDE_PIECES::knights)) return lone_knight;
            if (has_lone(board, &SIDE_PIECES::bishops)) return lone_bishop;
            break;
        case 5:
            if (has_lone(board, &SIDE_PIECES::rooks)) return lone_rook;
            break;
        case 6:
            return minor_against_minor(board);
        case 8:
            if (is_rook_against_minor(w, b) || is_rook_against_minor(b, w)) return rook_against_minor;
            break;
        case 9:
            if (has_lone(board, &SIDE_PIECES::queens)) return lone_queen;
            break;
        case 10:
        case 20:
            if (!oppose(board, &SIDE_PIECES::rooks, &SIDE_PIECES::rooks)) break;
            return w.heavy_points == b.heavy_points ? rook_ending : unbalanced_type(board);
        case 14:
            if (oppose(board, &SIDE_PIECES::queens, &SIDE_PIECES::rooks)) return queen_against_rook;
            break;
        case 18:
            if (oppose(board, &SIDE_PIECES::queens, &SIDE_PIECES::queens)) return queen_ending;
            break;
        default:
            break;
    }
    return std::nullopt;
}

}  // namespace

int stronger_side_units(const BOARD& board) noexcept {
    const SIDE_PIECES& w = board.white_pieces();
    const SIDE_PIECES& b = board.black_pieces();
    const bool any_queen = (w.queens | b.queens) != 0;
    return std::max(5 * w.heavy_points + w.minor_points, 5 * b.heavy_points + b.minor_points) + (any_queen ? 3 : 0);
}

int classify_position(const BOARD& board, int previous_type) noexcept {
    const SIDE_PIECES& w = board.white_pieces();
    const SIDE_PIECES& b = board.black_pieces();
    if ((w.pawns | b.pawns) == 0) return pawnless;

    if (stronger_side_units(board) > most_ending_material) return opening_or_middle_game(board, previous_type);

    if (const auto type = named_ending(board)) return *type;
    const bool equal_pieces = w.heavy_points == b.heavy_points && w.minor_points == b.minor_points;
    return equal_pieces ? balanced_ending : unbalanced_type(board);
}
