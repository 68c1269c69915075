#include "chess/board_theory.h"

#include <cstdlib>
#include <memory>

#include "chess/attacks.h"
#include "chess/special_moves.h"
#include "frame/base/checked_assert.h"
#include "frame/base/vocabulary.h"

namespace {

using vocabulary::no_error_description;

/// The same position, set up anew. It need not be a legal one: to see whether a move leaves the king in check, it is
/// made.
std::unique_ptr<BOARD> FromScratch(const BOARD& board) {
    auto fresh = std::make_unique<BOARD>();
    const PLY_FRAME& frame = board.frame();
    static_cast<void>(fresh->SetPosition(board.squares, static_cast<int>(board.side_to_move), frame.en_passant_square,
                                         frame.castling));
    return fresh;
}

/// To set a position up anew costs as much as fifty moves, and more with the sanitizers: one position in 128 is looked
/// at. The key decides which, so that every run looks at the same ones.
bool IsLookedAt(const BOARD& board) { return board.key() % 128 == 0; }

}  // namespace

void AssertMoveFits(const BOARD& board, Move move) {
    const Square from = FromSquare(move), to = ToSquare(move);
    const Colour us = board.mover(), them = Opponent(us);
    const int captured = CapturedPiece(move), promotion = PromotionPiece(move);
    CHECKED_ASSERT(board.ply + 1 < max_frames, no_error_description);
    CHECKED_ASSERT(from != to, no_error_description);
    CHECKED_ASSERT(board.squares[from] == SignedCode(us, MovingPiece(move)), no_error_description);
    CHECKED_ASSERT(!Has(board.own().all, to), no_error_description);
    CHECKED_ASSERT(captured != king, no_error_description);
    const bool is_en_passant = captured == pawn && MovingPiece(move) == pawn && board.squares[to] == no_piece;
    CHECKED_ASSERT(is_en_passant || board.squares[to] == SignedCode(them, captured), no_error_description);
    CHECKED_ASSERT(!is_en_passant || to == board.frame().en_passant_square, no_error_description);
    CHECKED_ASSERT(promotion == no_piece || MovingPiece(move) == pawn, no_error_description);
    const bool reaches_last_rank = MovingPiece(move) == pawn && (RankOf(to) == 0 || RankOf(to) == 7);
    CHECKED_ASSERT((promotion != no_piece) == reaches_last_rank, no_error_description);
}

void AssertKeyIsForetold(const BOARD& board, Move move, std::uint64_t key_after_move) {
    CHECKED_ASSERT(key_after_move == board.HashKeyAfterMove(move), no_error_description);
}

void AssertMoveMade(const BOARD& board, Move move) {
    CHECKED_ASSERT(board.in_check() == GivesCheck(move), no_error_description);
    const bool is_irreversible = CapturedPiece(move) != no_piece || MovingPiece(move) == pawn;
    CHECKED_ASSERT((board.frame().fifty_counter == 0) == is_irreversible, no_error_description);
    CHECKED_ASSERT(board.occupied == (board.sides[white].all | board.sides[black].all), no_error_description);
    CHECKED_ASSERT((board.sides[white].all & board.sides[black].all) == 0, no_error_description);
    if (IsLookedAt(board)) AssertBoardAgrees(board);
}

void AssertMoveUndone(const BOARD& board, Move move) {
    AssertMoveFits(board, move);
    CHECKED_ASSERT(board.occupied == (board.sides[white].all | board.sides[black].all), no_error_description);
    if (IsLookedAt(board)) AssertBoardAgrees(board);
}

void AssertMoveWasMade(const BOARD& board, Move move) {
    const Colour mover = Opponent(board.mover());
    const int promotion = PromotionPiece(move);
    CHECKED_ASSERT(board.ply > 0, no_error_description);
    CHECKED_ASSERT(board.squares[FromSquare(move)] == no_piece, no_error_description);
    CHECKED_ASSERT(
        board.squares[ToSquare(move)] == SignedCode(mover, promotion != no_piece ? promotion : MovingPiece(move)),
        no_error_description);
}

void AssertNullMoveFits(const BOARD& board) { CHECKED_ASSERT(board.ply + 1 < max_frames, no_error_description); }

void AssertNullMoveMade(const BOARD& board) {
    const PLY_FRAME& frame = board.frame();
    const PLY_FRAME& before = board.frames[board.ply - 1];
    CHECKED_ASSERT(frame.en_passant_square == 0, no_error_description);
    CHECKED_ASSERT(frame.fifty_counter == 0, no_error_description);
    CHECKED_ASSERT(frame.castling == before.castling, no_error_description);
    CHECKED_ASSERT(frame.pawn_key == before.pawn_key, no_error_description);
    CHECKED_ASSERT(frame.material_balance == -before.material_balance, no_error_description);
    // Out of check it is a position of its own; whoever passes in check wants the moves of the other side alone.
    if (before.in_check == 0 && IsLookedAt(board)) AssertBoardAgrees(board);
}

void AssertBoardAgrees(const BOARD& board) {
    const auto fresh = FromScratch(board);
    const PLY_FRAME& frame = board.frame();
    CHECKED_ASSERT(board.sides[white] == fresh->sides[white], no_error_description);
    CHECKED_ASSERT(board.sides[black] == fresh->sides[black], no_error_description);
    CHECKED_ASSERT(board.occupied == fresh->occupied, no_error_description);
    CHECKED_ASSERT(board.occupied_a1h8 == fresh->occupied_a1h8, no_error_description);
    CHECKED_ASSERT(board.occupied_file == fresh->occupied_file, no_error_description);
    CHECKED_ASSERT(board.occupied_a8h1 == fresh->occupied_a8h1, no_error_description);
    CHECKED_ASSERT(board.total_material == fresh->total_material, no_error_description);
    CHECKED_ASSERT(frame.material_balance == fresh->frame().material_balance, no_error_description);
    CHECKED_ASSERT(frame.pawn_key == fresh->frame().pawn_key, no_error_description);
    CHECKED_ASSERT(board.key() == fresh->key(), no_error_description);
}
