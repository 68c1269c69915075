// A pin is followed by its record: who is pinned, by whom, and which side pins. Most moves have nothing to do with it,
// and the record is handed on from ply to ply. A pin comes into being by a slider that moves onto a line to the king
// with one enemy piece in between, or by an interposition against a check. Only the last move can change it.

#include "search/node/pin_threat.h"

#include <cstdlib>

#include "chess/attacks.h"
#include "chess/bitboard_tables.h"

namespace {

using enum ChildFlags;

constexpr ChildFlags children_of_a_pin = NextPly(no_limited_razoring | no_extended_futility | untested);
static_assert(Word(children_of_a_pin) == 0xB00);
constexpr ChildFlags node_of_a_pin = no_limited_razoring | no_extended_futility | untested;
static_assert(Word(node_of_a_pin) == 0x58);

constexpr bool IsSlider(int piece) { return piece == bishop || piece == rook || piece == queen; }

/// What a slider of this kind attacks on an empty board.
Bitboard Rays(int piece, Square square) {
    const BITBOARD_TABLES& t = bitboard_tables;
    const Bitboard lines = piece == bishop ? t.bishop_mask[square]
                           : piece == rook ? t.rook_mask[square]
                                           : t.queen_mask[square];
    return lines & ~Bit(square);
}

int PieceOn(const BOARD& board, Square square) { return std::abs(board.squares[square]); }

// --- Whether a pin is worth following ---

/// For a queen that pins, one fixed square stands where the pinner's own is expected: docs/oddities.md, square 5. And a
/// queen is pinned for real if the square numbered like the pinner's piece code is not covered by the pinner's side:
/// docs/oddities.md, piece code as a square.
constexpr Square square_for_queen_pinners = 5;

bool IsCoveredBy(Square square, const BOARD& board, Colour side) {
    return (bitboard_tables.pawn_attacks(Opponent(side))[square] & board.side(side).pawns) != 0 ||
           IsAttackedBy(square, board, board.side(side));
}

bool IsWorthFollowing(const BOARD& board, Square pinner, Square victim, Colour pinner_side) {
    const int pinning_piece = PieceOn(board, pinner);
    switch (PieceOn(board, victim)) {
        case knight:
            return true;
        case bishop:
            return pinning_piece == rook ||
                   (pinning_piece == queen && Has(Rays(rook, victim), square_for_queen_pinners));
        case rook:
            return pinning_piece == bishop ||
                   (pinning_piece == queen && Has(Rays(bishop, victim), square_for_queen_pinners));
        case queen:
            return pinning_piece != queen && !IsCoveredBy(static_cast<Square>(pinning_piece), board, pinner_side);
        default:
            return false;  // a pawn never counts
    }
}

// --- The test ---

/// The last two moves in a position, by the side on move's opponent and by the side on move before that.
struct Situation {
    const BOARD& board;
    Move last;
    Move before;
    Colour own;    ///< the side on move
    Colour enemy;  ///< made the last move
    Square to;     ///< where the last move went
};

struct Finding {
    PinResult result;
    PinRecord record;
};

Finding NewPin(const Situation& s, Square pinned, Square pinner, Colour pinner_side) {
    if (!IsWorthFollowing(s.board, pinner, pinned, pinner_side)) return {PinResult::nothing, {}};
    return {PinResult::new_pin,
            {.pinned_square = static_cast<std::int16_t>(pinned),
             .pinner_square = static_cast<std::int16_t>(pinner),
             .pinner_side = static_cast<std::int32_t>(pinner_side)}};
}

/// A slider that moved onto a line to the king of the side on move.
Finding PinBySlider(const Situation& s) {
    const int piece = MovingPiece(s.last);
    const SIDE_PIECES& own = s.board.side(s.own);
    if (GivesDirectCheck(s.last) || !IsSlider(piece) || !Has(Rays(piece, s.to), own.king_square)) {
        return {PinResult::nothing, {}};
    }
    const Bitboard between = bitboard_tables.between[s.to][own.king_square];
    const Bitboard in_between = between & own.all;
    if ((between & s.board.side(s.enemy).all) != 0 || PopCount(in_between) != 1) return {PinResult::nothing, {}};
    return NewPin(s, FindLowestBit(in_between), s.to, s.enemy);
}

/// The piece behind a purely discovered check that was answered by a move onto its line; none as an empty set.
Bitboard DiscoveredChecker(const Situation& s, Square king) {
    const BITBOARD_TABLES& t = bitboard_tables;
    const SIDE_PIECES& own = s.board.side(s.own);
    const Bitboard checkers = (own.bishops | own.rooks | own.queens) & Rays(queen, s.to) & Rays(queen, king) &
                              Rays(queen, FromSquare(s.before));
    return PopCount(checkers) > 1 ? HiddenAttacker(s.to, t.direction[king][s.to], s.board) : checkers;
}

/// The piece that gave a direct check; after castling it is the rook.
Square DirectChecker(Move check) {
    return IsCastling(check) ? static_cast<Square>((FromSquare(check) + ToSquare(check)) / 2) : ToSquare(check);
}

/// A piece that moved between its king and the checker is pinned there.
Finding PinByInterposition(const Situation& s) {
    if (MovingPiece(s.last) == king || CapturedPiece(s.last) != no_piece) return {PinResult::nothing, {}};
    if (CheckType(s.before) != CheckKind::discovered) return NewPin(s, s.to, DirectChecker(s.before), s.own);
    const Bitboard checker = DiscoveredChecker(s, s.board.side(s.enemy).king_square);
    if (checker == 0) return {PinResult::nothing, {}};
    return NewPin(s, s.to, FindLowestBit(checker), s.own);
}

/// Only a check by a slider can be answered by a move onto its line.
bool AnswersCheckOfSlider(Move before) {
    if (!GivesCheck(before)) return false;
    return CheckType(before) == CheckKind::discovered || (MovingPiece(before) != pawn && MovingPiece(before) != knight);
}

/// The side with the pinned piece has moved.
Finding PinOfOpponent(const Situation& s, const PinRecord& pin) {
    const Square king_square = s.board.side(s.enemy).king_square;
    const bool is_gone = MovingPiece(s.last) == king || s.to == pin.pinner_square ||
                         Has(bitboard_tables.between[pin.pinner_square][king_square], s.to);
    if (is_gone) return {PinResult::gone, {}};
    return {PinResult::unchanged, pin};
}

bool AttacksOnEmptyBoard(int piece, Square from, Square target, Colour side) {
    const BITBOARD_TABLES& t = bitboard_tables;
    switch (piece) {
        case pawn:
            return Has(t.pawn_attacks(side)[from], target);
        case knight:
            return Has(t.knight_attacks[from], target);
        case king:
            return Has(t.king_attacks[from], target);
        default:
            return Has(Rays(piece, from), target);
    }
}

/// The side that pins has moved. A second attacker on the pinned piece tightens the pin.
Finding OwnPin(const Situation& s, const PinRecord& pin) {
    const BITBOARD_TABLES& t = bitboard_tables;
    const Square pinned = pin.pinned_square;
    if (s.to == pinned) return {PinResult::pinned_piece_taken, {}};
    if (FromSquare(s.last) == pin.pinner_square) return {PinResult::gone, {}};
    if (Has(t.between[pinned][s.board.side(s.own).king_square], s.to)) return {PinResult::gone, {}};
    const int piece = MovingPiece(s.last);
    const bool attacks_pinned = AttacksOnEmptyBoard(piece, s.to, pinned, s.enemy);
    if (Has(t.between[pin.pinner_square][pinned], s.to)) {
        if (!IsSlider(piece) || !attacks_pinned) return {PinResult::gone, {}};
        PinRecord closer = pin;
        closer.pinner_square = static_cast<std::int16_t>(s.to);
        return {PinResult::tightened, closer};
    }
    const bool is_in_sight = !IsSlider(piece) || (t.between[pinned][s.to] & s.board.occupied) == 0;
    return {attacks_pinned && is_in_sight ? PinResult::tightened : PinResult::unchanged, pin};
}

Finding FollowPin(const Node& node) {
    const PinRecord& pin = node.search.pins[node.ply - 1];
    if (node.last_move() == INVALID) return {PinResult::nothing, pin};
    const Colour own = node.board().mover();
    const Situation situation{.board = node.board(),
                              .last = node.last_move(),
                              .before = node.search.moves_played[node.ply - 1],
                              .own = own,
                              .enemy = Opponent(own),
                              .to = ToSquare(node.last_move())};
    if (pin.pinned_square < 0) {
        return AnswersCheckOfSlider(situation.before) ? PinByInterposition(situation) : PinBySlider(situation);
    }
    return pin.pinner_side == static_cast<std::int32_t>(own) ? PinOfOpponent(situation, pin) : OwnPin(situation, pin);
}

/// Whether a pin that was found threatens to win something.
bool IsThreat(const Node& node, const Finding& finding) {
    if (static_cast<int>(finding.result) <= 0) return false;
    const int gain = material_units[PieceOn(node.board(), finding.record.pinned_square)] -
                     material_units[PieceOn(node.board(), finding.record.pinner_square)];
    if (gain > 0) return true;
    return !node.settings().consider_only_winning_pins_as_threats && finding.result == PinResult::tightened;
}

/// The first setting hides the second: docs/oddities.md, pins and pruning.
ChildFlags KeptFromPruning(const Node& node) {
    if (node.settings().skip_pruning_at_the_next_ply_because_of_pin_threat) return children_of_a_pin;
    if (node.settings().skip_pruning_at_this_ply_because_of_pin_threat) return node_of_a_pin;
    return ChildFlags::none;
}

/// Field by field, as they come in registers: the whole record would be put together in memory and wait to be read
/// back.
void Keep(const PinRecord& found, PinRecord& place) {
    place.pinned_square = found.pinned_square;
    place.pinner_square = found.pinner_square;
    place.pinner_side = found.pinner_side;
}

}  // namespace

void DetectPinThreat(Node& node) {
    const Finding finding = FollowPin(node);
    Keep(finding.record, node.search.pins[node.ply]);
    node.pin_result = finding.result;
    if (!HasAny(node.flags, NodeFlags::pin_threat)) {
        if (!IsThreat(node, finding)) return;
        node.flags |= NodeFlags::pin_threat;
    }
    node.child_flags |= KeptFromPruning(node);
}
