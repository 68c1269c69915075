#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chess/user_board.h"
#include "support/board_builder.h"

/// The game from a FEN, or from the start, with moves as typed.
[[nodiscard]] inline UserBoard GameFrom(const std::string& fen, const std::vector<std::string>& moves = {}) {
    UserBoard game;
    game.SetBoardFromFen(fen);
    for (const std::string& move : moves) game.MakeMoveFromText(move);
    return game;
}

[[nodiscard]] inline UserBoard NewGame(const std::vector<std::string>& moves) {
    UserBoard game;
    for (const std::string& move : moves) game.MakeMoveFromText(move);
    return game;
}

/// The moves of a list in coordinates, each with a blank after it.
[[nodiscard]] inline std::string MovesToText(const auto& moves) {
    std::string text;
    for (const Move move : moves) text += MoveToCoordinate(move) + " ";
    return text;
}

inline void ExpectSamePosition(const BOARD& a, const BOARD& b) {
    EXPECT_EQ(FenOf(a), FenOf(b));
    EXPECT_EQ(a.ply, b.ply);
    EXPECT_EQ(a.key(), b.key());
    EXPECT_EQ(a.frame(), b.frame());
    EXPECT_EQ(a.key_history - a.key_store, b.key_history - b.key_store);
}

/// All that can be seen of a game.
inline void ExpectSameGame(const UserBoard& a, const UserBoard& b) {
    ExpectSamePosition(a.board(), b.board());
    ExpectSamePosition(a.start().board, b.start().board);
    EXPECT_EQ(a.result(), b.result());
    EXPECT_EQ(a.reason(), b.reason());
    EXPECT_EQ(a.start().result, b.start().result);
    EXPECT_EQ(a.start().reason, b.start().reason);
    EXPECT_EQ(a.IsGameOver(), b.IsGameOver());
    EXPECT_EQ(a.IsPositionValid(), b.IsPositionValid());
    EXPECT_EQ(a.side_to_move(), b.side_to_move());
    EXPECT_EQ(a.ply_offset(), b.ply_offset());
    EXPECT_EQ(MovesToText(a.made_moves()), MovesToText(b.made_moves()));
    EXPECT_EQ(MovesToText(a.next_moves()), MovesToText(b.next_moves()));
    EXPECT_EQ(a.FullMoveNumber(), b.FullMoveNumber());
    EXPECT_EQ(a.GetFen(), b.GetFen());
}
