#include "chess/user_board.h"

#include <algorithm>
#include <limits>

#include "chess/board_text.h"
#include "chess/fen.h"
#include "chess/move_generator.h"
#include "frame/base/vocabulary.h"

namespace {

/// For how many moves a new game has room.
constexpr std::size_t usual_game_length = 100;
/// Occurrences of a position that make a draw.
constexpr std::ptrdiff_t repetitions_for_a_draw = 3;
/// Plies without capture and pawn move that make a draw, and the most that a board has room for in its key history.
constexpr int fifty_moves_in_plies = 100;
/// Minor points that keep a side in the game without pawns and heavy pieces. Two knights do, unlike in the
/// search: docs/oddities.md, two knights.
constexpr int two_minor_pieces = 6;

bool HasTooLittleMaterial(const BOARD& board) {
    const auto cannot_mate = [](const SIDE_PIECES& side) {
        return side.pawns == 0 && side.heavy_points == 0 && side.minor_points < two_minor_pieces;
    };
    return cannot_mate(board.white_pieces()) && cannot_mate(board.black_pieces());
}

/// Ends the game if the position does. `keys` are those of the game so far, the current one among them; a fourth
/// occurrence ends nothing, since the third one has.
void TestGameEnd(GAME_STATE& state, const std::vector<std::uint64_t>& keys) {
    const BOARD& board = state.board;
    std::vector<Move> moves;
    GenerateLegalMoves(board, moves);
    const auto end_game = [&state](GameResult result, GameEndReason reason) {
        state.result = result;
        state.reason = reason;
    };
    if (moves.empty()) {
        // Mate outranks the fifty moves.
        if (!board.in_check()) return end_game(GameResult::draw, GameEndReason::stalemate);
        const bool white_is_mated = board.side_to_move == white;
        return end_game(white_is_mated ? GameResult::black_wins : GameResult::white_wins, GameEndReason::mate);
    }
    if (board.frame().fifty_counter >= fifty_moves_in_plies) {
        return end_game(GameResult::draw, GameEndReason::fifty_moves);
    }
    if (HasTooLittleMaterial(board)) return end_game(GameResult::draw, GameEndReason::too_little_material);
    if (std::count(keys.begin(), keys.end(), board.key()) == repetitions_for_a_draw) {
        end_game(GameResult::draw, GameEndReason::threefold_repetition);
    }
}

/// Plays a move of the game: it starts from a board at ply 0 and ends at one.
void PlayMove(GAME_STATE& state, std::vector<std::uint64_t>& keys, Move move) {
    PlayGameMove(state.board, move);
    keys.push_back(state.board.key());
    TestGameEnd(state, keys);
}

}  // namespace

void PlayGameMove(BOARD& board, Move move) {
    board.MakeMove(move);
    board.ResetPly();
    // A game played on after its end would outgrow the key history.
    if (board.frame().fifty_counter > fifty_moves_in_plies) board.SetFiftyCounter(fifty_moves_in_plies);
}

std::string ResultText(GameResult result) {
    switch (result) {
        case GameResult::white_wins:
            return std::string(vocabulary::result_white_wins);
        case GameResult::black_wins:
            return std::string(vocabulary::result_black_wins);
        case GameResult::draw:
            return std::string(vocabulary::result_draw);
        case GameResult::running:
        case GameResult::aborted:
            break;
    }
    return std::string(vocabulary::result_open);
}

std::string ReasonText(GameResult result, GameEndReason reason) {
    const bool white_wins = result == GameResult::white_wins;
    switch (reason) {
        case GameEndReason::mate:
            return std::string(white_wins ? vocabulary::white_mates : vocabulary::black_mates);
        case GameEndReason::resignation:
            return std::string(white_wins ? vocabulary::black_resigns : vocabulary::white_resigns);
        case GameEndReason::flag_fell:
            return std::string(vocabulary::lost_on_time);
        case GameEndReason::stalemate:
            return std::string(vocabulary::stalemate);
        case GameEndReason::too_little_material:
            return std::string(vocabulary::insufficient_material);
        case GameEndReason::threefold_repetition:
            return std::string(vocabulary::threefold_repetition);
        case GameEndReason::agreed_draw:
            return std::string(vocabulary::mutual_agreement);
        case GameEndReason::fifty_moves:
            return std::string(vocabulary::fifty_move_rule);
        case GameEndReason::aborted:
            return std::string(vocabulary::game_aborted);
        case GameEndReason::unknown:
            break;
    }
    return std::string(vocabulary::unknown_reason);
}

UserBoard::UserBoard() {
    made_moves_.reserve(usual_game_length);
    position_keys_.reserve(usual_game_length);
    Reset();
}

void UserBoard::Reset() {
    BOARD board;
    std::uint32_t ignored_offset = 0;
    ReadFen(board, std::string(vocabulary::start_position_fen), ignored_offset);
    SetBoard(board);
}

void UserBoard::SetBoard(const BOARD& board, std::uint32_t ply_offset) {
    if (!board.IsValid()) throw invalid_position();
    GAME_STATE state{.board = board};
    state.board.ResetPly();
    TestGameEnd(state, {});
    StartFrom(state, ply_offset);
}

void UserBoard::SetInvalid() {
    // Nothing can be played or searched: for every caller this game is over.
    GAME_STATE empty;
    empty.result = GameResult::aborted;
    empty.reason = GameEndReason::aborted;
    StartFrom(empty, 0);
    valid_ = false;
}

void UserBoard::StartFrom(const GAME_STATE& state, std::uint32_t ply_offset) {
    std::vector<std::uint64_t> keys;
    keys.reserve(usual_game_length);
    keys.push_back(state.board.key());

    current_ = state;
    start_ = state;
    // With Black to move half a move is already played; otherwise the number would not rise after Black's move.
    ply_offset_ = ply_offset | state.board.side_to_move;
    made_moves_.clear();
    next_moves_.clear();
    position_keys_.swap(keys);
    valid_ = true;
}

void UserBoard::Clear() {
    EditBoard kings;
    kings.SetSide(side_to_move());
    SetBoard(kings.GetBoard());
}

void UserBoard::SetBoardFromFen(const std::string& text) {
    BOARD board;
    std::uint32_t ply_offset = 0;
    ReadFen(board, text, ply_offset);
    SetBoard(board, ply_offset);
}

void UserBoard::MakeMoveFromText(const std::string& text) {
    if (!valid_ || IsGameOver()) throw invalid_move(MoveParseError::no_correspondence);
    MoveParseError error = MoveParseError::syntax;
    const Move move = ParseMove(text, current_.board, error);
    if (move == INVALID) throw invalid_move(error);
    MakeMove(move);
}

void UserBoard::MakeMove(Move move) {
    if (!valid_) throw invalid_move(MoveParseError::no_correspondence);
    move &= move_bits;
    made_moves_.push_back(move);
    PlayMove(current_, position_keys_, move);
    if (!next_moves_.empty() && next_moves_.front() == move) {
        next_moves_.pop_front();
    } else {
        next_moves_.clear();
    }
}

void UserBoard::UndoMove() {
    if (made_moves_.empty()) throw no_moves_to_undo();
    GAME_STATE state = start_;
    std::vector<std::uint64_t> keys{state.board.key()};
    keys.reserve(position_keys_.capacity());
    for (std::size_t i = 0; i + 1 < made_moves_.size(); ++i) PlayMove(state, keys, made_moves_[i]);

    next_moves_.push_front(made_moves_.back());
    made_moves_.pop_back();
    position_keys_.swap(keys);
    current_ = state;
}

void UserBoard::NextMove() {
    if (next_moves_.empty()) throw next_moves_empty();
    MakeMove(next_moves_.front());
}

void UserBoard::SetNextMoves(const std::deque<Move>& moves) { next_moves_ = moves; }

void UserBoard::ChangeSide() {
    BOARD board(current_.board);
    if (!valid_ || !board.ChangeSide()) throw invalid_board_after_changing_side();
    SetBoard(board);
}

void UserBoard::EndGame(GameResult result, GameEndReason reason) {
    current_.result = result;
    current_.reason = reason;
}

int UserBoard::FullMoveNumber() const {
    const std::uint64_t number = (std::uint64_t{ply_offset_} + made_moves_.size()) / 2 + 1;
    return static_cast<int>(std::min<std::uint64_t>(number, std::numeric_limits<int>::max()));
}

std::string UserBoard::GetFen() const { return WriteFen(current_.board, FullMoveNumber()); }

void UserBoard::Print(bool with_state) const { PrintBoard(current_.board, with_state); }
