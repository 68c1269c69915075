#include <algorithm>
#include <iterator>

#include "chess/board_text.h"
#include "chess/move_generator.h"
#include "chess/position_keys.h"
#include "chess/user_board.h"

namespace {

struct HomeSquares {
    Square king_home, rook_home;
    int king_code, rook_code;
    CastlingRight right;
};

constexpr HomeSquares castling_homes[] = {
    {e1, h1, king, rook, white_short},
    {e1, a1, king, rook, white_long},
    {e8, h8, -king, -rook, black_short},
    {e8, a8, -king, -rook, black_long},
};

int AllRightsThatThePlacementAllows(const std::int8_t (&squares)[64]) {
    int rights = 0;
    for (const HomeSquares& home : castling_homes) {
        if (squares[home.king_home] == home.king_code && squares[home.rook_home] == home.rook_code) {
            rights |= home.right;
        }
    }
    return rights;
}

}  // namespace

void EditBoard::Clear() {
    std::fill(std::begin(squares_), std::end(squares_), std::int8_t{no_piece});
    castling_ = rights_by_placement;
    state_ = State::invalid;
}

void EditBoard::SetDefault() {
    Clear();
    squares_[e1] = king;
    squares_[e8] = -king;
    state_ = State::unchecked;
}

void EditBoard::SetSquare(Square square, PieceType piece) {
    const auto code = static_cast<std::int8_t>(SignedCode(edit_colour_, piece));
    if (squares_[square] == code) return;
    squares_[square] = code;
    castling_ = rights_by_placement;
    state_ = State::unchecked;
}

void EditBoard::SetSide(Colour side) {
    if (side_ == side) return;
    side_ = side;
    state_ = State::unchecked;
}

void EditBoard::LoadFrom(const BOARD& board) {
    std::copy(std::begin(board.squares), std::end(board.squares), std::begin(squares_));
    side_ = board.mover();
    castling_ = board.frame().castling;
    edit_colour_ = white;
    state_ = State::invalid;
    if (!board.IsValid()) return;
    board_ = board;
    state_ = State::valid;
}

bool EditBoard::IsValid() {
    if (state_ == State::unchecked)
        state_ = SetPosition(board_) && FitsMoveLists(board_) ? State::valid : State::invalid;
    return state_ == State::valid;
}

bool EditBoard::SetPosition(BOARD& board) {
    if (castling_ == rights_by_placement) castling_ = AllRightsThatThePlacementAllows(squares_);
    return board.SetPosition(squares_, static_cast<int>(side_), 0, castling_);
}

const BOARD& EditBoard::GetBoard() {
    if (!IsValid()) throw invalid_position();
    return board_;
}

void EditBoard::Print(bool with_state) {
    if (IsValid()) return PrintBoard(board_, with_state);
    BOARD shown;
    SetPosition(shown);  // an invalid position is shown too
    PrintBoard(shown, with_state);
}
