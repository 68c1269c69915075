#include "chess/user_board.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "support/board_builder.h"
#include "support/game_checks.h"
#include "support/row_name.h"

namespace {

const std::string back_and_forth[] = {"g1f3", "g8f6", "f3g1", "f6g8"};
/// The knights go back and forth until the start position stands on the board for the third time.
const std::vector<std::string> threefold = {"g1f3", "g8f6", "f3g1", "f6g8", "g1f3", "g8f6", "f3g1", "f6g8"};

// --- The start ---

TEST(UserBoard, StartsWithTheNormalPosition) {
    const UserBoard game;
    EXPECT_EQ(game.GetFen(), start_fen);
    EXPECT_EQ(game.ply_offset(), 0U);
    EXPECT_EQ(game.FullMoveNumber(), 1);
    EXPECT_EQ(game.result(), GameResult::running);
    EXPECT_EQ(game.reason(), GameEndReason::unknown);
    EXPECT_FALSE(game.IsGameOver());
    EXPECT_TRUE(game.IsPositionValid());
    EXPECT_TRUE(game.made_moves().empty());
    EXPECT_TRUE(game.next_moves().empty());
    EXPECT_EQ(game.side_to_move(), white);
    ExpectSamePosition(game.start().board, game.board());
}

TEST(UserBoard, ResetForgetsEverything) {
    UserBoard game = GameFrom("4k3/8/8/8/8/8/4P3/4K3 b - - 7 30", {"Kd7", "e4", "Kd6"});
    game.UndoMove();
    game.EndGame(GameResult::draw, GameEndReason::agreed_draw);
    game.Reset();
    ExpectSameGame(game, UserBoard());
}

TEST(UserBoard, SetBoardEmptiesTheLists) {
    UserBoard game = NewGame({"e4", "e5", "Nf3"});
    game.UndoMove();
    const BOARD board = BoardFromFen("4k3/8/8/8/8/8/4P3/4K3 w - - 7 30");
    game.SetBoard(board, 12);
    EXPECT_TRUE(game.made_moves().empty());
    EXPECT_TRUE(game.next_moves().empty());
    EXPECT_EQ(game.ply_offset(), 12U);
    ExpectSamePosition(game.board(), board);
    ExpectSamePosition(game.start().board, board);
}

TEST(UserBoard, SetBoardTakesABoardOutOfASearch) {
    BOARD board = BoardFromFen(start_fen);
    board.MakeMove(MoveOf(board, "e2e4"));
    board.MakeMove(MoveOf(board, "e7e5"));
    UserBoard game;
    game.SetBoard(board);
    EXPECT_EQ(game.board().ply, 0U);
    EXPECT_EQ(game.GetFen(), "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6 0 1");
}

TEST(UserBoard, ClearLeavesTheKingsAndTheSide) {
    UserBoard game = NewGame({"e4"});
    game.Clear();
    EXPECT_EQ(game.GetFen(), "4k3/8/8/8/8/8/8/4K3 b - - 0 1");
    EXPECT_EQ(game.reason(), GameEndReason::too_little_material);
    EXPECT_TRUE(game.made_moves().empty());
    game.Reset();
    game.Clear();
    EXPECT_EQ(game.GetFen(), "4k3/8/8/8/8/8/8/4K3 w - - 0 1");
}

TEST(UserBoard, IsAValue) {
    UserBoard game = NewGame({"e4", "e5", "Nf3"});
    game.UndoMove();
    const UserBoard copy = game;
    ExpectSameGame(copy, game);
    game.MakeMoveFromText("d4");
    EXPECT_EQ(copy.next_moves().size(), 1U);
    EXPECT_EQ(copy.GetFen(), "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6 0 2");
    EXPECT_EQ(copy.board().key_history, copy.board().key_store);
    game = copy;
    ExpectSameGame(game, copy);
}

// --- FEN and move numbers ---

TEST(UserBoard, CountsOneMoveMoreThanTheFen) {
    UserBoard game = GameFrom("4k3/8/8/8/8/8/4P3/4K3 w - - 7 30");
    EXPECT_EQ(game.ply_offset(), 60U);
    EXPECT_EQ(game.FullMoveNumber(), 31);
    EXPECT_EQ(game.GetFen(), "4k3/8/8/8/8/8/4P3/4K3 w - - 7 31");
    game.MakeMoveFromText("e4");
    EXPECT_EQ(game.FullMoveNumber(), 31);
    game.MakeMoveFromText("Kd7");
    EXPECT_EQ(game.FullMoveNumber(), 32);
}

TEST(UserBoard, CountsOneMoveMoreThanTheFenWithBlackToMove) {
    UserBoard game = GameFrom("4k3/8/8/8/8/8/4P3/4K3 b - - 7 30");
    EXPECT_EQ(game.ply_offset(), 61U);
    EXPECT_EQ(game.FullMoveNumber(), 31);
    game.MakeMoveFromText("Kd7");
    EXPECT_EQ(game.GetFen(), "8/3k4/8/8/8/8/4P3/4K3 w - - 8 32");
}

TEST(UserBoard, CountsFullMoves) {
    UserBoard game;
    int plies = 0;
    for (const std::string& move : threefold) {
        EXPECT_EQ(game.FullMoveNumber(), plies / 2 + 1);
        game.MakeMoveFromText(move);
        ++plies;
    }
}

TEST(UserBoard, CountsFromAPositionWithBlackToMove) {
    UserBoard game;
    game.SetBoard(BoardFromFen("4k3/8/8/8/8/8/4P3/4K3 b - - 0 1"));
    EXPECT_EQ(game.FullMoveNumber(), 1);
    game.MakeMoveFromText("Kd7");
    EXPECT_EQ(game.FullMoveNumber(), 2);
}

TEST(UserBoard, SurvivesTheLargestMoveNumber) {
    const UserBoard game = GameFrom("4k3/8/8/8/8/8/4P3/4K3 b - - 0 2147483647", {"Kd7", "e4", "Kd6"});
    EXPECT_EQ(game.FullMoveNumber(), 2147483647);
}

// --- The end of a game ---

struct EndRow {
    std::string_view name;
    std::string_view fen;
    GameResult result;
    GameEndReason reason;
};
std::ostream& operator<<(std::ostream& out, const EndRow& row) { return out << row.fen; }

class GameEnds : public testing::TestWithParam<EndRow> {};

TEST_P(GameEnds, AreSeenInThePosition) {
    const UserBoard game = GameFrom(std::string(GetParam().fen));
    EXPECT_EQ(game.result(), GetParam().result);
    EXPECT_EQ(game.reason(), GetParam().reason);
    EXPECT_EQ(game.IsGameOver(), GetParam().result != GameResult::running);
}

using enum GameResult;
constexpr GameEndReason on = GameEndReason::unknown;
constexpr auto game_ends = std::to_array<EndRow>({
    {"White mates", "4k3/4Q3/4K3/8/8/8/8/8 b - - 0 1", white_wins, GameEndReason::mate},
    {"Black mates", "8/8/8/8/8/4k3/4q3/4K3 w - - 0 1", black_wins, GameEndReason::mate},
    {"mate outranks the fifty moves", "4k3/4Q3/4K3/8/8/8/8/8 b - - 100 90", white_wins, GameEndReason::mate},
    {"stalemate", "4k3/4P3/4K3/8/8/8/8/8 b - - 0 1", draw, GameEndReason::stalemate},
    {"stalemate of White", "7k/8/8/8/8/8/5q2/7K w - - 0 1", draw, GameEndReason::stalemate},
    {"stalemate outranks the fifty moves", "4k3/4P3/4K3/8/8/8/8/8 b - - 100 90", draw, GameEndReason::stalemate},
    {"stalemate outranks material", "k7/8/1K6/8/8/6B1/8/8 b - - 0 1", draw, GameEndReason::stalemate},
    {"check is no mate", "4k3/8/4K3/8/8/8/8/4Q3 w - - 0 1", running, on},
    {"fifty moves", "4k3/8/8/8/8/8/4P3/4K3 w - - 100 90", draw, GameEndReason::fifty_moves},
    {"fifty moves less a ply", "4k3/8/8/8/8/8/4P3/4K3 w - - 99 90", running, on},
    {"fifty moves outrank material", "4k3/8/8/8/8/8/8/4K3 w - - 100 90", draw, GameEndReason::fifty_moves},
    {"kings", "4k3/8/8/8/8/8/8/4K3 w - - 0 1", draw, GameEndReason::too_little_material},
    {"bishop", "4k3/8/8/8/8/8/8/4KB2 w - - 0 1", draw, GameEndReason::too_little_material},
    {"black bishop", "4kb2/8/8/8/8/8/8/4K3 b - - 0 1", draw, GameEndReason::too_little_material},
    {"knight", "4k3/8/8/8/8/8/8/4KN2 w - - 0 1", draw, GameEndReason::too_little_material},
    {"bishop and knight", "4kn2/8/8/8/8/8/8/4KB2 w - - 0 1", draw, GameEndReason::too_little_material},
    {"two knights", "4k3/8/8/8/8/8/8/3NKN2 w - - 0 1", running, on},
    {"two knights of Black", "3nkn2/8/8/8/8/8/8/4K3 w - - 0 1", running, on},
    {"bishop pair", "4k3/8/8/8/8/8/8/2B1KB2 w - - 0 1", running, on},
    {"pawn", "4k3/8/8/8/8/8/4P3/4K3 w - - 0 1", running, on},
    {"black pawn", "4k3/4p3/8/8/8/8/8/4KB2 w - - 0 1", running, on},
    {"rook", "4k3/8/8/8/8/8/8/4K2R w - - 0 1", running, on},
    {"black queen", "3qk3/8/8/8/8/8/8/4K3 b - - 0 1", running, on},
});
INSTANTIATE_TEST_SUITE_P(UserBoard, GameEnds, testing::ValuesIn(game_ends), RowName<EndRow>);

TEST(GameEnd, MateOnTheBoard) {
    const UserBoard game = NewGame({"f3", "e5", "g4", "Qh4#"});
    EXPECT_EQ(game.result(), black_wins);
    EXPECT_EQ(game.reason(), GameEndReason::mate);
    EXPECT_EQ(game.start().result, running);
}

TEST(GameEnd, TheFiftiethMove) {
    UserBoard game = GameFrom("4k3/8/8/8/8/8/4P3/4K3 w - - 98 90", {"Kd1"});
    EXPECT_FALSE(game.IsGameOver());
    game.MakeMoveFromText("Kd8");
    EXPECT_EQ(game.result(), draw);
    EXPECT_EQ(game.reason(), GameEndReason::fifty_moves);
}

TEST(GameEnd, APawnMoveStartsTheFiftyMovesAfresh) {
    const UserBoard game = GameFrom("4k3/8/8/8/8/8/4P3/4K3 w - - 99 90", {"e4"});
    EXPECT_FALSE(game.IsGameOver());
}

TEST(GameEnd, MateByTheFiftiethMove) {
    const UserBoard game = GameFrom("4k3/8/4K3/8/8/8/8/Q7 w - - 99 90", {"Qa8#"});
    EXPECT_EQ(game.result(), white_wins);
    EXPECT_EQ(game.reason(), GameEndReason::mate);
}

TEST(GameEnd, TheLastPieceIsTaken) {
    const UserBoard game = GameFrom("4k3/8/8/8/8/8/4q3/4K3 w - - 0 1", {"Kxe2"});
    EXPECT_EQ(game.result(), draw);
    EXPECT_EQ(game.reason(), GameEndReason::too_little_material);
}

TEST(GameEnd, ThirdOccurrence) {
    UserBoard game;
    for (const std::string& move : threefold) {
        EXPECT_FALSE(game.IsGameOver());
        game.MakeMoveFromText(move);
    }
    EXPECT_EQ(game.result(), draw);
    EXPECT_EQ(game.reason(), GameEndReason::threefold_repetition);
}

TEST(GameEnd, OccurrencesBeforeTheStartDoNotCount) {
    UserBoard game = NewGame({"g1f3", "g8f6", "f3g1", "f6g8"});
    game.SetBoard(game.board());
    for (const std::string& move : back_and_forth) game.MakeMoveFromText(move);
    EXPECT_FALSE(game.IsGameOver());
    for (const std::string& move : back_and_forth) game.MakeMoveFromText(move);
    EXPECT_EQ(game.reason(), GameEndReason::threefold_repetition);
}

// The square is kept after every double step, so that the position right after it is another one.
TEST(GameEnd, TheEnPassantSquareCountsInARepetition) {
    UserBoard game = NewGame({"e4"});
    const std::vector<std::string> cycle = {"g8f6", "g1f3", "f6g8", "f3g1"};
    for (int times = 0; times < 2; ++times) {
        for (const std::string& move : cycle) game.MakeMoveFromText(move);
    }
    EXPECT_FALSE(game.IsGameOver());  // pieces as after e4 for the third time, with the square for the first alone
    game.MakeMoveFromText("g8f6");
    EXPECT_EQ(game.reason(), GameEndReason::threefold_repetition);
}

TEST(GameEnd, CastlingRightsCountInARepetition) {
    UserBoard game = GameFrom("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1");
    const std::vector<std::string> cycle = {"a1b1", "a8b8", "b1a1", "b8a8"};
    for (int times = 0; times < 2; ++times) {
        for (const std::string& move : cycle) game.MakeMoveFromText(move);
    }
    EXPECT_FALSE(game.IsGameOver());
    game.MakeMoveFromText("a1b1");
    EXPECT_FALSE(game.IsGameOver());  // Black still had his right the first time
    game.MakeMoveFromText("a8b8");
    EXPECT_EQ(game.reason(), GameEndReason::threefold_repetition);
}

TEST(GameEnd, AFourthOccurrenceEndsNothing) {
    UserBoard game = NewGame(threefold);
    // Taken out of the game, so that it is over by nothing but the position.
    game.EndGame(running, GameEndReason::unknown);
    for (const std::string& move : back_and_forth) {
        game.EndGame(running, GameEndReason::unknown);
        game.MakeMoveFromText(move);
    }
    EXPECT_FALSE(game.IsGameOver());
}

TEST(GameEnd, AGamePlayedOnKeepsItsEnd) {
    UserBoard game = NewGame(threefold);
    for (const std::string& move : back_and_forth) game.MakeMove(MoveOf(game.board(), move));
    EXPECT_EQ(game.reason(), GameEndReason::threefold_repetition);
    const UserBoard before = game;
    game.UndoMove();
    game.NextMove();
    ExpectSameGame(game, before);
}

TEST(GameEnd, AGamePlayedFarBeyondTheFiftyMovesStaysSound) {
    UserBoard game = GameFrom("4k3/8/8/8/8/8/4P3/4K3 w - - 90 90");
    const std::string cycle[] = {"e1d1", "e8d8", "d1e1", "d8e8"};
    for (int times = 0; times < 60; ++times) {
        for (const std::string& move : cycle) game.MakeMove(MoveOf(game.board(), move));
    }
    EXPECT_EQ(game.result(), draw);
    EXPECT_LE(game.board().key_history + max_frames, game.board().key_store + max_keys);
    EXPECT_NO_THROW(static_cast<void>(BoardFromFen(game.GetFen())));
    game.UndoMove();
    EXPECT_EQ(game.made_moves().size(), 239U);
}

TEST(EndGame, SetsResultAndReason) {
    UserBoard game = NewGame({"e4"});
    game.EndGame(white_wins, GameEndReason::resignation);
    EXPECT_EQ(game.result(), white_wins);
    EXPECT_EQ(game.reason(), GameEndReason::resignation);
    EXPECT_TRUE(game.IsGameOver());
    EXPECT_EQ(game.start().result, running);
}

TEST(EndGame, StaysUntilANewPosition) {
    UserBoard game = NewGame({"e4"});
    game.EndGame(aborted, GameEndReason::aborted);
    EXPECT_THROW(game.MakeMoveFromText("e5"), UserBoard::invalid_move);
    EXPECT_EQ(game.result(), aborted);
    game.SetBoardFromFen(start_fen);
    EXPECT_EQ(game.result(), running);
    EXPECT_EQ(game.reason(), GameEndReason::unknown);
}

TEST(EndGame, IsTakenBackWithAMove) {
    UserBoard game = NewGame({"e4", "e5"});
    game.EndGame(black_wins, GameEndReason::flag_fell);
    game.UndoMove();
    EXPECT_EQ(game.result(), running);
    EXPECT_EQ(game.reason(), GameEndReason::unknown);
    game.NextMove();
    EXPECT_EQ(game.result(), running);
}

TEST(EndGame, StaysWhenAKnownGameIsLeafedThrough) {
    UserBoard game = NewGame({"e4", "e5"});
    game.UndoMove();
    game.UndoMove();
    game.EndGame(white_wins, GameEndReason::unknown);
    game.NextMove();
    game.NextMove();
    EXPECT_EQ(game.result(), white_wins);
    EXPECT_EQ(game.made_moves().size(), 2U);
}

// --- Moves, back and forth ---

TEST(MakeMove, KeepsTheRecord) {
    const UserBoard game = NewGame({"e4", "e5", "Nf3"});
    EXPECT_EQ(MovesToText(game.made_moves()), "e2e4 e7e5 g1f3 ");
    EXPECT_EQ(game.board().ply, 0U);
    EXPECT_EQ(game.side_to_move(), black);
    EXPECT_EQ(game.GetFen(), "rnbqkbnr/pppp1ppp/8/4p3/4P3/5N2/PPPP1PPP/RNBQKB1R b KQkq - 1 2");
    EXPECT_EQ(FenOf(game.start().board), start_fen);
}

TEST(MakeMove, DropsTheSortScore) {
    UserBoard game;
    game.MakeMove(MoveOf(game.board(), "e2e4") | 0x5A800000U);
    game.UndoMove();
    EXPECT_EQ(game.next_moves().front(), MoveOf(game.board(), "e2e4"));
}

TEST(UndoMove, LeadsBackToTheStart) {
    UserBoard game = NewGame({"e4", "e5", "Nf3"});
    const UserBoard two_moves = NewGame({"e4", "e5"});
    game.UndoMove();
    ExpectSamePosition(game.board(), two_moves.board());
    EXPECT_EQ(MovesToText(game.made_moves()), "e2e4 e7e5 ");
    EXPECT_EQ(MovesToText(game.next_moves()), "g1f3 ");
    game.UndoMove();
    game.UndoMove();
    EXPECT_EQ(MovesToText(game.next_moves()), "e2e4 e7e5 g1f3 ");
    ExpectSamePosition(game.board(), UserBoard().board());
}

TEST(UndoMove, TwiceThenNextOnce) {
    UserBoard game = NewGame({"e4", "e5", "Nf3"});
    game.UndoMove();
    game.UndoMove();
    game.NextMove();
    EXPECT_EQ(MovesToText(game.made_moves()), "e2e4 e7e5 ");
    EXPECT_EQ(MovesToText(game.next_moves()), "g1f3 ");
    ExpectSamePosition(game.board(), NewGame({"e4", "e5"}).board());
}

TEST(UndoMove, ThenAnotherMove) {
    UserBoard game = NewGame({"e4", "e5", "Nf3"});
    game.UndoMove();
    game.UndoMove();
    game.MakeMoveFromText("c5");
    EXPECT_TRUE(game.next_moves().empty());
    EXPECT_THROW(game.NextMove(), UserBoard::next_moves_empty);
}

TEST(UndoMove, ThenTheSameMove) {
    UserBoard game = NewGame({"e4", "e5", "Nf3"});
    game.UndoMove();
    game.UndoMove();
    game.MakeMoveFromText("e5");
    EXPECT_EQ(MovesToText(game.next_moves()), "g1f3 ");
}

TEST(UndoMove, TakesBackTheEnd) {
    UserBoard game = NewGame({"f3", "e5", "g4", "Qh4#"});
    const UserBoard mated = game;
    game.UndoMove();
    EXPECT_EQ(game.result(), running);
    EXPECT_EQ(game.reason(), GameEndReason::unknown);
    game.NextMove();
    ExpectSameGame(game, mated);
}

TEST(UndoMove, TakesBackARepetition) {
    UserBoard game = NewGame(threefold);
    game.UndoMove();
    EXPECT_FALSE(game.IsGameOver());
    game.MakeMoveFromText("f6g8");
    EXPECT_EQ(game.reason(), GameEndReason::threefold_repetition);
    game.UndoMove();
    game.MakeMoveFromText("h7h6");
    EXPECT_FALSE(game.IsGameOver());
}

TEST(UndoMove, ReturnsToAStartThatIsAnEnd) {
    UserBoard game = GameFrom("4k3/8/8/8/8/8/4P3/4K3 w - - 100 90");
    game.MakeMove(MoveOf(game.board(), "e2e4"));
    game.UndoMove();
    EXPECT_EQ(game.reason(), GameEndReason::fifty_moves);
}

TEST(UndoMove, EqualsTheGamePlayedSoFar) {
    const std::vector<std::string> moves = {"e4",   "d5",  "exd5",  "Nf6", "Bb5+",  "c6",
                                            "dxc6", "Qd3", "cxb7+", "Qd7", "bxa8=Q"};
    for (std::size_t taken_back = 1; taken_back <= moves.size(); ++taken_back) {
        UserBoard game = NewGame(moves);
        for (std::size_t i = 0; i < taken_back; ++i) game.UndoMove();
        const UserBoard played = NewGame({moves.begin(), moves.end() - static_cast<std::ptrdiff_t>(taken_back)});
        ExpectSamePosition(game.board(), played.board());
        for (std::size_t i = 0; i < taken_back; ++i) game.NextMove();
        ExpectSameGame(game, NewGame(moves));
    }
}

// --- Changing sides ---

TEST(ChangeSide, MakesANewStart) {
    UserBoard game = NewGame({"e4", "e5", "Nf3"});
    game.UndoMove();
    game.MakeMoveFromText("a3");
    game.ChangeSide();
    EXPECT_EQ(game.GetFen(), "rnbqkbnr/pppp1ppp/8/4p3/4P3/P7/1PPP1PPP/RNBQKBNR w KQkq - 0 1");
    EXPECT_TRUE(game.made_moves().empty());
    EXPECT_TRUE(game.next_moves().empty());
    ExpectSamePosition(game.start().board, game.board());
    EXPECT_THROW(game.UndoMove(), UserBoard::no_moves_to_undo);
}

TEST(ChangeSide, FindsTheEndOfTheNewPosition) {
    UserBoard game = GameFrom("k7/8/1K6/8/8/6B1/8/8 w - - 0 1");
    EXPECT_EQ(game.reason(), GameEndReason::too_little_material);
    game.ChangeSide();
    EXPECT_EQ(game.reason(), GameEndReason::stalemate);
}

TEST(ChangeSide, LetsAnEndedGameRunAgain) {
    UserBoard game;
    game.EndGame(draw, GameEndReason::agreed_draw);
    game.ChangeSide();
    EXPECT_EQ(game.result(), running);
    EXPECT_EQ(game.side_to_move(), black);
}

// --- Texts ---

TEST(ResultText, ByCode) {
    EXPECT_EQ(ResultText(white_wins), "1-0");
    EXPECT_EQ(ResultText(black_wins), "0-1");
    EXPECT_EQ(ResultText(draw), "1/2-1/2");
    EXPECT_EQ(ResultText(aborted), "*");
    EXPECT_EQ(ResultText(running), "*");
}

TEST(ReasonText, ByCodeAndResult) {
    struct Row {
        int code;
        GameResult result;
        std::string_view text;
    };
    for (const Row& row : {
             Row{0, white_wins, "White mates"},
             Row{0, black_wins, "Black mates"},
             Row{1, black_wins, "White resigns"},
             Row{1, white_wins, "Black resigns"},
             Row{2, white_wins, "Lost on time"},
             Row{2, black_wins, "Lost on time"},
             Row{3, draw, "Stalemate"},
             Row{4, draw, "Insufficient material"},
             Row{5, draw, "Threefold repetition"},
             Row{6, draw, "Mutual agreement"},
             Row{7, draw, "Fifthy move rule"},
             Row{8, aborted, "aborted"},
             Row{9, running, "unknown reason"},
             Row{9, white_wins, "unknown reason"},
         }) {
        EXPECT_EQ(ReasonText(row.result, static_cast<GameEndReason>(row.code)), row.text) << row.code;
    }
}

TEST(ResultCodes, AreThoseOfTheGameRecord) {
    EXPECT_EQ(static_cast<int>(running), 0);
    EXPECT_EQ(static_cast<int>(white_wins), 1);
    EXPECT_EQ(static_cast<int>(black_wins), 2);
    EXPECT_EQ(static_cast<int>(draw), 3);
    EXPECT_EQ(static_cast<int>(aborted), 4);
}

}  // namespace
