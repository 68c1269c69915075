#include <gtest/gtest.h>

#include <array>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>

#include "chess/user_board.h"
#include "frame/base/logfile.h"
#include "support/board_builder.h"
#include "support/game_checks.h"
#include "support/row_name.h"

namespace {

using enum GameResult;

// What fails changes nothing, and the position after SetInvalid fails at everything.

struct Failure {
    std::string_view name;
    UserBoard (*game)();
    bool (*fails)(UserBoard& game);  ///< whether the call throws what it should
};
std::ostream& operator<<(std::ostream& out, const Failure& row) { return out << row.name; }

template <class Exception>
bool Throws(const auto& call) {
    try {
        call();
    } catch (const Exception&) {
        return true;
    }
    return false;
}

template <MoveParseError error>
bool RefusesMove(UserBoard& game, const std::string& text) {
    try {
        game.MakeMoveFromText(text);
    } catch (const UserBoard::invalid_move& refused) {
        return refused.error() == error;
    }
    return false;
}

UserBoard MiddleOfAGame() {
    UserBoard game = GameFrom("r1bqkbnr/pppp1ppp/2n5/4p3/4P3/5N2/PPPP1PPP/RNBQKB1R w KQkq - 2 3",
                              {"Bb5", "a6", "Ba4", "Nf6", "O-O"});
    game.UndoMove();
    game.UndoMove();
    return game;
}
UserBoard Start() { return UserBoard(); }
UserBoard Mated() { return NewGame({"f3", "e5", "g4", "Qh4#"}); }
UserBoard Resigned() {
    UserBoard game = MiddleOfAGame();
    game.EndGame(black_wins, GameEndReason::resignation);
    return game;
}
UserBoard AfterADoubleStep() { return NewGame({"e4"}); }
UserBoard InCheck() { return NewGame({"e4", "f6", "Qh5+"}); }
UserBoard Invalid() {
    UserBoard game = MiddleOfAGame();
    game.SetInvalid();
    return game;
}

class FailingCalls : public testing::TestWithParam<Failure> {};

TEST_P(FailingCalls, ThrowAndChangeNothing) {
    const UserBoard before = GetParam().game();
    UserBoard game = before;
    EXPECT_TRUE(GetParam().fails(game));
    ExpectSameGame(game, before);
}

const auto failures = std::to_array<Failure>({
    {"ambiguous move", MiddleOfAGame, [](UserBoard& g) { return RefusesMove<MoveParseError::ambiguous>(g, "N"); }},
    {"no such move", MiddleOfAGame,
     [](UserBoard& g) { return RefusesMove<MoveParseError::no_correspondence>(g, "e8"); }},
    {"barred castling", Start, [](UserBoard& g) { return RefusesMove<MoveParseError::invalid_castling>(g, "O-O"); }},
    {"text that is no move", MiddleOfAGame,
     [](UserBoard& g) { return RefusesMove<MoveParseError::syntax>(g, "hello"); }},
    {"empty text", MiddleOfAGame, [](UserBoard& g) { return RefusesMove<MoveParseError::syntax>(g, ""); }},
    {"move after mate", Mated, [](UserBoard& g) { return RefusesMove<MoveParseError::no_correspondence>(g, "Kf2"); }},
    {"move after resignation", Resigned,
     [](UserBoard& g) { return RefusesMove<MoveParseError::no_correspondence>(g, "Nf6"); }},
    {"undo at the start", Start,
     [](UserBoard& g) { return Throws<UserBoard::no_moves_to_undo>([&] { g.UndoMove(); }); }},
    {"next at the end", Mated, [](UserBoard& g) { return Throws<UserBoard::next_moves_empty>([&] { g.NextMove(); }); }},
    {"no FEN", MiddleOfAGame,
     [](UserBoard& g) {
         return Throws<UserBoard::io_error>([&] { g.SetBoardFromFen("4k3/8/8/8/8/8/8/4K3 w - - 0"); });
     }},
    {"FEN of an impossible position", MiddleOfAGame,
     [](UserBoard& g) {
         return Throws<UserBoard::invalid_position>([&] { g.SetBoardFromFen("8/8/8/8/8/8/8/8 w - - 0 1"); });
     }},
    {"impossible board", MiddleOfAGame,
     [](UserBoard& g) { return Throws<UserBoard::invalid_position>([&] { g.SetBoard(BOARD()); }); }},
    {"change of side after a double step", AfterADoubleStep,
     [](UserBoard& g) { return Throws<UserBoard::invalid_board_after_changing_side>([&] { g.ChangeSide(); }); }},
    {"change of side in check", InCheck,
     [](UserBoard& g) { return Throws<UserBoard::invalid_board_after_changing_side>([&] { g.ChangeSide(); }); }},
    {"move in the invalid position", Invalid,
     [](UserBoard& g) { return RefusesMove<MoveParseError::no_correspondence>(g, "e4"); }},
    {"word in the invalid position", Invalid,
     [](UserBoard& g) { return RefusesMove<MoveParseError::no_correspondence>(g, "hello"); }},
    {"move word in the invalid position", Invalid,
     [](UserBoard& g) { return Throws<UserBoard::invalid_move>([&] { g.MakeMove(MakeWord(e2, e4, pawn)); }); }},
    {"undo in the invalid position", Invalid,
     [](UserBoard& g) { return Throws<UserBoard::no_moves_to_undo>([&] { g.UndoMove(); }); }},
    {"next in the invalid position", Invalid,
     [](UserBoard& g) { return Throws<UserBoard::next_moves_empty>([&] { g.NextMove(); }); }},
    {"change of side in the invalid position", Invalid,
     [](UserBoard& g) { return Throws<UserBoard::invalid_board_after_changing_side>([&] { g.ChangeSide(); }); }},
});
INSTANTIATE_TEST_SUITE_P(UserBoard, FailingCalls, testing::ValuesIn(failures), RowName<Failure>);

TEST(Exceptions, ShareTheirBase) {
    EXPECT_TRUE((std::is_base_of_v<UserBoard::user_exception, UserBoard::invalid_move>));
    EXPECT_TRUE((std::is_base_of_v<UserBoard::user_exception, UserBoard::invalid_position>));
    EXPECT_TRUE((std::is_base_of_v<UserBoard::user_exception, UserBoard::next_moves_empty>));
    EXPECT_TRUE((std::is_base_of_v<UserBoard::user_exception, UserBoard::no_moves_to_undo>));
    EXPECT_TRUE((std::is_base_of_v<UserBoard::user_exception, UserBoard::invalid_board_after_changing_side>));
    EXPECT_TRUE((std::is_base_of_v<UserBoard::user_exception, UserBoard::io_error>));
    EXPECT_FALSE((std::is_base_of_v<UserBoard::user_exception, EditBoard::invalid_position>));
}

TEST(SetInvalid, LeavesAnEmptyBoard) {
    const UserBoard game = Invalid();
    EXPECT_FALSE(game.IsPositionValid());
    EXPECT_EQ(game.GetFen(), "8/8/8/8/8/8/8/8 w - - 0 1");
    EXPECT_EQ(game.FullMoveNumber(), 1);
    EXPECT_EQ(game.result(), aborted);
    EXPECT_EQ(game.reason(), GameEndReason::aborted);
    EXPECT_TRUE(game.made_moves().empty());
    EXPECT_TRUE(game.next_moves().empty());
    testing::internal::CaptureStdout();
    game.Print(true);
    vlog.Flush();
    EXPECT_NE(testing::internal::GetCapturedStdout().find("castle possibilities: none"), std::string::npos);
}

TEST(SetInvalid, EndsWithTheNextPosition) {
    for (void (*repair)(UserBoard&) : std::initializer_list<void (*)(UserBoard&)>{
             [](UserBoard& game) { game.Reset(); },
             [](UserBoard& game) { game.SetBoardFromFen(start_fen); },
             [](UserBoard& game) { game.SetBoard(BoardFromFen(start_fen)); },
             [](UserBoard& game) { game = UserBoard(); },
         }) {
        UserBoard game = Invalid();
        repair(game);
        EXPECT_TRUE(game.IsPositionValid());
        EXPECT_EQ(game.result(), running);
        EXPECT_NO_THROW(game.MakeMoveFromText("e4"));
    }
    UserBoard game = Invalid();
    game.Clear();
    EXPECT_TRUE(game.IsPositionValid());
}

}  // namespace
