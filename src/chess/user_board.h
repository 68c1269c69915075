#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "chess/board.h"
#include "chess/game_errors.h"
#include "chess/notation.h"

enum class GameResult : std::int32_t { running = 0, white_wins = 1, black_wins = 2, draw = 3, aborted = 4 };

enum class GameEndReason : std::int32_t {
    mate = 0,
    resignation = 1,
    flag_fell = 2,
    stalemate = 3,
    too_little_material = 4,
    threefold_repetition = 5,
    agreed_draw = 6,
    fifty_moves = 7,
    aborted = 8,
    unknown = 9,
};

/// "1-0", "0-1", "1/2-1/2" and, for a game that was aborted or still goes on, "*".
[[nodiscard]] std::string ResultText(GameResult result);
/// "White mates", "Black resigns" and so on; who did it follows from the result.
[[nodiscard]] std::string ReasonText(GameResult result, GameEndReason reason);

/// Plays a legal move of a game: from a board at ply 0 to one at ply 0.
void PlayGameMove(BOARD& board, Move move);

struct GAME_STATE {
    BOARD board;
    GameResult result = GameResult::running;
    GameEndReason reason = GameEndReason::unknown;
};

/// A game: the current position with its game-end state, the start position, the moves made, the moves taken back
/// (which can be replayed) and the keys in which a threefold repetition is counted. A failing call throws one of the
/// exceptions below and leaves the game as it was.
///
/// A finished game keeps its result and reason until a new position is set or a move is taken back; taking back plays
/// the game again from its start.
class UserBoard {
  public:
    using user_exception = game_errors::user_exception;
    using invalid_position = game_errors::invalid_position;
    using io_error = game_errors::io_error;
    class invalid_move : public user_exception {
      public:
        explicit invalid_move(MoveParseError error) : error_(error) {}
        [[nodiscard]] MoveParseError error() const { return error_; }

      private:
        MoveParseError error_;
    };
    class next_moves_empty : public user_exception {};
    class no_moves_to_undo : public user_exception {};
    class invalid_board_after_changing_side : public user_exception {};

    /// The normal start position.
    UserBoard();
    virtual ~UserBoard() = default;
    UserBoard(const UserBoard&) = default;
    UserBoard& operator=(const UserBoard&) = default;

    void Reset();
    /// A position as the new start; `ply_offset` is the number of half moves before it, made odd if Black is to move.
    /// Throws invalid_position.
    void SetBoard(const BOARD& board, std::uint32_t ply_offset = 0);
    /// An empty, invalid position with no legal moves: what is left after an interface sent an impossible one. The game
    /// counts as aborted, and every move is refused until the next position.
    void SetInvalid();
    /// Kings alone on e1 and e8, the side to move kept.
    void Clear();
    /// Throws io_error for a text that is no FEN, and invalid_position.
    void SetBoardFromFen(const std::string& text);

    /// Throws invalid_move, also for every move after the end of the game and in the invalid position.
    void MakeMoveFromText(const std::string& text);
    /// `move` is legal here. If it is the first of the moves taken back, the others can still be replayed. A game that
    /// is over may be played on in this way and keeps its result. Throws invalid_move in the invalid position only.
    void MakeMove(Move move);
    /// Throws no_moves_to_undo.
    void UndoMove();
    /// Throws next_moves_empty.
    void NextMove();
    /// What NextMove will play, in order; each must be legal after those before it.
    void SetNextMoves(const std::deque<Move>& moves);
    /// The position with the other side to move as a new start. Throws invalid_board_after_changing_side if it can't
    /// be, as with an en passant square.
    void ChangeSide();
    /// Ends the game from outside the board: resignation, time, agreement, abort.
    void EndGame(GameResult result, GameEndReason reason);

    [[nodiscard]] const BOARD& board() const { return current_.board; }
    [[nodiscard]] const GAME_STATE& current() const { return current_; }
    [[nodiscard]] const GAME_STATE& start() const { return start_; }
    [[nodiscard]] GameResult result() const { return current_.result; }
    [[nodiscard]] GameEndReason reason() const { return current_.reason; }
    [[nodiscard]] bool IsGameOver() const { return current_.result != GameResult::running; }
    /// False only after SetInvalid.
    [[nodiscard]] bool IsPositionValid() const { return valid_; }
    [[nodiscard]] Colour side_to_move() const { return current_.board.mover(); }
    [[nodiscard]] std::uint32_t ply_offset() const { return ply_offset_; }
    [[nodiscard]] const std::vector<Move>& made_moves() const { return made_moves_; }
    [[nodiscard]] const std::deque<Move>& next_moves() const { return next_moves_; }
    /// (ply_offset + moves made) / 2 + 1.
    [[nodiscard]] int FullMoveNumber() const;
    [[nodiscard]] std::string GetFen() const;
    void Print(bool with_state) const;

  private:
    void StartFrom(const GAME_STATE& state, std::uint32_t ply_offset);

    std::uint32_t ply_offset_ = 0;
    GAME_STATE current_;
    GAME_STATE start_;
    std::vector<Move> made_moves_;
    std::deque<Move> next_moves_;
    std::vector<std::uint64_t> position_keys_;  ///< of every position from the start to the current one
    bool valid_ = true;
};

/// The position under construction in edit mode. Its squares may be nonsense until a board is asked for.
class EditBoard {
  public:
    class invalid_position {};

    EditBoard() { SetDefault(); }
    /// All squares empty.
    void Clear();
    /// The kings alone on e1 and e8.
    void SetDefault();
    /// Puts a piece of the edit colour on a square, or empties it (no_piece).
    void SetSquare(Square square, PieceType piece);
    void SetColour(Colour colour) { edit_colour_ = colour; }
    void SetSide(Colour side);
    void LoadFrom(const BOARD& board);
    [[nodiscard]] Colour edit_colour() const { return edit_colour_; }
    [[nodiscard]] Colour side() const { return side_; }
    [[nodiscard]] bool IsValid();
    /// Throws EditBoard::invalid_position.
    [[nodiscard]] const BOARD& GetBoard();
    /// Shows an invalid position too.
    void Print(bool with_state);

  private:
    enum class State : std::int32_t { valid = 0, invalid = 1, unchecked = 2 };
    static constexpr std::int32_t rights_by_placement = -1;

    /// The squares as a position without en passant square; works out the castling rights first.
    bool SetPosition(BOARD& board);

    State state_ = State::unchecked;
    BOARD board_;  ///< means something in the state `valid` only
    std::int8_t squares_[64] = {};
    Colour side_ = white;
    Colour edit_colour_ = white;
    std::int32_t castling_ = rights_by_placement;
};
