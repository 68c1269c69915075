// The assertions of the theory fire. Builds without NDEBUG call them at every move.

#include "chess/board_theory.h"

#include <gtest/gtest.h>

#include "support/board_builder.h"

namespace {

class BoardTheoryDeathTest : public testing::Test {
  protected:
    BOARD board_ = BoardFromFen("4k3/8/8/3p4/4P3/8/8/4K3 w - - 0 1");
};

TEST_F(BoardTheoryDeathTest, MoveOfNobody) {
    EXPECT_DEATH(AssertMoveFits(board_, MakeWord(a3, a4, pawn)), "");
    EXPECT_DEATH(AssertMoveFits(board_, MakeWord(d5, d4, pawn)), "") << "the other side's";
}

TEST_F(BoardTheoryDeathTest, CaptureOfWhatIsNotThere) {
    AssertMoveFits(board_, MakeWord(e4, d5, pawn, pawn));
    EXPECT_DEATH(AssertMoveFits(board_, MakeWord(e4, d5, pawn, knight)), "");
    EXPECT_DEATH(AssertMoveFits(board_, MakeWord(e4, d5, pawn)), "");
}

TEST_F(BoardTheoryDeathTest, UndoneMoveThatWasNotMade) {
    board_.MakeMove(MoveOf(board_, "e4e5"));
    EXPECT_DEATH(AssertMoveWasMade(board_, MakeWord(e1, e2, king)), "");
}

TEST_F(BoardTheoryDeathTest, NullMoveThatCantBeMade) {
    AssertNullMoveFits(board_);
    AssertNullMoveFits(BoardFromFen("4k3/8/8/8/8/8/8/K3r3 w - - 0 1"));  // in check, to see the other side's moves
    BOARD full = board_;
    full.ply = max_frames - 1;
    full.frame() = board_.frame();
    EXPECT_DEATH(AssertNullMoveFits(full), "") << "no room";
}

TEST_F(BoardTheoryDeathTest, NullMoveThatWasMadeWrongly) {
    board_.MakeMove(MoveOf(board_, "e1e2"));
    board_.MakeNullMove();
    AssertNullMoveMade(board_);
    BOARD wrong = board_;
    wrong.frame().en_passant_square = e3;
    EXPECT_DEATH(AssertNullMoveMade(wrong), "");
    wrong = board_;
    ++wrong.frame().fifty_counter;
    EXPECT_DEATH(AssertNullMoveMade(wrong), "");
}

TEST_F(BoardTheoryDeathTest, RecordThatDisagreesWithItsSquares) {
    AssertBoardAgrees(board_);
    BOARD wrong = board_;
    wrong.occupied_file ^= 1;
    EXPECT_DEATH(AssertBoardAgrees(wrong), "");
    wrong = board_;
    wrong.key_history[wrong.ply] ^= 1;
    EXPECT_DEATH(AssertBoardAgrees(wrong), "");
    wrong = board_;
    ++wrong.frame().material_balance;
    EXPECT_DEATH(AssertBoardAgrees(wrong), "");
}

}  // namespace
