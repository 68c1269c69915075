#include "web/desk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>
#include <string_view>

#include "web/json_text.h"

namespace VorkaWeb {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

// --- JSON ---

TEST(JsonText, EscapesWhatWouldEndAString) { EXPECT_EQ(JsonValue("a \"b\" \\ \n").text, R"("a \"b\" \\ \u000a")"); }

TEST(JsonText, BuildsObjectsAndArrays) {
    const std::array numbers{1, -2};
    EXPECT_EQ(JsonValue::Object({{"n", JsonValue::Array(numbers, [](int n) { return n; })}, {"b", true}}).text,
              R"({"n":[1,-2],"b":true})");
}

// --- Games ---

TEST(Desk, TellsThePositionAfterTheMoves) {
    EXPECT_THAT(Answer("game\n\ne2e4 e7e5"),
                AllOf(HasSubstr(R"("fen":"rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6 0 2")"),
                      HasSubstr(R"("notation":["e4","e5"])"), HasSubstr(R"({"uci":"g1f3","san":"Nf3"})"),
                      HasSubstr(R"("isOver":false)")));
}

TEST(Desk, KeepsTheNumberOfTheMoveOfAPosition) {
    EXPECT_THAT(Answer("game\n8/8/8/4k3/8/4K3/4P3/8 b - - 3 41\ne5d5"),
                HasSubstr(R"("fen":"8/8/8/3k4/8/4K3/4P3/8 w - - 4 42")"));
}

TEST(Desk, GivesEveryPromotionItsLetter) {
    EXPECT_THAT(Answer("game\n8/P7/8/8/8/8/8/k1K5 w - - 0 1\n"),
                AllOf(HasSubstr(R"("uci":"a7a8q")"), HasSubstr(R"("uci":"a7a8n")")));
}

TEST(Desk, TellsTheEndOfAGame) {
    EXPECT_THAT(Answer("game\n\nf2f3 e7e5 g2g4 d8h4"),
                AllOf(HasSubstr(R"("isOver":true)"), HasSubstr(R"("result":"0-1")"),
                      HasSubstr(R"("reason":"Black mates")"), HasSubstr(R"("legal":[])")));
}

TEST(Desk, CountsRepetitions) {
    EXPECT_THAT(Answer("game\n\ng1f3 g8f6 f3g1 f6g8 g1f3 g8f6 f3g1 f6g8"), HasSubstr(R"("result":"1/2-1/2")"));
}

constexpr std::string_view threefold = "g1f3 g8f6 f3g1 f6g8 g1f3 g8f6 f3g1 f6g8";

TEST(Desk, LetsAGameGoOnAfterARepetition) {
    EXPECT_THAT(Answer("game\n\n" + std::string(threefold) + " e2e4"),
                AllOf(HasSubstr(R"("isOver":false)"), HasSubstr(R"("result":"*")"), HasSubstr(R"("uci":"e7e5")")));
}

TEST(Desk, LetsAGameGoOnAfterFiftyMoves) {
    const std::string game = "game\n4k3/8/8/8/8/8/4P3/R3K3 w - - 99 90\n";
    EXPECT_THAT(Answer(game + "a1a2"), AllOf(HasSubstr(R"("isOver":true)"), HasSubstr(R"("uci":"e8e7")")));
    EXPECT_THAT(Answer(game + "a1a2 e8e7 e2e4"), HasSubstr(R"("isOver":false)"));
}

// --- Why ---

TEST(Desk, ExplainsTermByTerm) {
    EXPECT_THAT(
        Answer("evaluation\nDefault\n\ne2e4"),
        AllOf(HasSubstr(R"("isBlended":true)"), HasSubstr(R"("name":"knights")"), HasSubstr(R"("mover":"black")"),
              HasSubstr(R"("term":"pawn_squares","name":"pawn_on_square","side":"white","squares":["e4"])")));
}

TEST(Desk, ExplainsAnEndingByItsSteps) {
    EXPECT_THAT(Answer("evaluation\n0\n8/7k/4P3/4K3/8/8/2r5/5R2 b - - 0 1\n"),
                AllOf(HasSubstr(R"("isBlended":false)"), Not(HasSubstr(R"("steps":[])"))));
}

// --- Settings ---

TEST(Desk, ShowsTheTableOfSettings) {
    EXPECT_THAT(
        Answer("settings"),
        HasSubstr(R"({"name":"futility_pruning_margin","isBoolean":false,"least":0,"most":32767,"defaults":[300]})"));
}

// --- Text ---

TEST(Desk, WritesAGame) {
    EXPECT_EQ(Answer("write_pgn\n\ne2e4 e7e5\n1-0\nECO C20\nWhite A \"B\"\nBlack Vorka"),
              JsonValue::Object({{"pgn",
                                  "[Event \"?\"]\n[Site \"?\"]\n[Date \"????.??.??\"]\n[Round \"-\"]\n"
                                  "[White \"A \\\"B\\\"\"]\n[Black \"Vorka\"]\n[Result \"1-0\"]\n[ECO \"C20\"]\n\n"
                                  "1. e4 e5 1-0\n"}})
                  .text);
}

TEST(Desk, WritesTheResultThatIsGivenExceptAtMate) {
    EXPECT_THAT(Answer("write_pgn\n\n" + std::string(threefold) + "\n1-0"), HasSubstr(R"([Result \"1-0\"])"));
    EXPECT_THAT(Answer("write_pgn\n\n" + std::string(threefold) + "\n*"), HasSubstr(R"([Result \"1/2-1/2\"])"));
    EXPECT_THAT(Answer("write_pgn\n\n" + std::string(threefold) + " e2e4\n1-0"), HasSubstr("1-0\\u000a"));
    EXPECT_THAT(Answer("write_pgn\n\nf2f3 e7e5 g2g4 d8h4\n1-0"), HasSubstr(R"([Result \"0-1\"])"));
}

TEST(Desk, WritesTheTrueNumberOfAMove) {
    EXPECT_THAT(Answer("write_pgn\n8/8/8/4k3/8/4K3/4P3/8 b - - 3 41\ne5d5 e3d3\n*"),
                AllOf(HasSubstr(R"([SetUp \"1\"]\u000a[FEN \"8/8/8/4k3/8/4K3/4P3/8 b - - 3 41\"])"),
                      HasSubstr(R"(\u000a\u000a41... Kd5 42. Kd3 *\u000a")")));
}

TEST(Desk, WritesNoStartForTheUsualOne) {
    EXPECT_THAT(Answer("write_pgn\nrnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1\ne2e4\n*"),
                AllOf(Not(HasSubstr("SetUp")), Not(HasSubstr("FEN"))));
}

TEST(Desk, WritesLinesOfLessThanEightyCharacters) {
    std::string moves;
    for (int i = 0; i < 24; ++i) moves += "g1f3 g8f6 f3g1 f6g8 ";
    const std::string answer = Answer("write_pgn\n\n" + moves + "\n*");
    const std::string line_end = "\\u000a";
    std::size_t begin = answer.rfind(line_end + line_end) + 2 * line_end.size();
    for (std::size_t end = 0; (end = answer.find(line_end, begin)) != std::string::npos;
         begin = end + line_end.size()) {
        EXPECT_LT(end - begin, 80U);
        EXPECT_NE(answer[end - 1], ' ');
    }
}

TEST(Desk, ReadsAGame) {
    EXPECT_THAT(Answer("read_pgn\n[White \"A\"]\n\n1. e4 e5 2. Nf3 1/2-1/2\n"),
                AllOf(HasSubstr(R"("fen":"")"), HasSubstr(R"("moves":["e2e4","e7e5","g1f3"])"),
                      HasSubstr(R"("result":"1/2-1/2")")));
}

TEST(Desk, ReadsTheTrueNumberOfAMove) {
    EXPECT_THAT(Answer("read_pgn\n[FEN \"8/8/8/4k3/8/4K3/4P3/8 b - - 3 41\"]\n\n41... Kd5 *\n"),
                AllOf(HasSubstr(R"("fen":"8/8/8/4k3/8/4K3/4P3/8 b - - 3 41")"), HasSubstr(R"("moves":["e5d5"])")));
}

TEST(Desk, ReadsTheStartOfAGameAsLenientlyAsAPosition) {
    EXPECT_THAT(Answer("read_pgn\n[FEN \"8/8/8/4k3/8/4K3/4P3/8 b\"]\n\nKd5 *\n"),
                HasSubstr(R"("fen":"8/8/8/4k3/8/4K3/4P3/8 b - - 0 1")"));
}

// --- Who could mate ---

struct MateCase {
    std::string_view name;
    std::string_view placement;
    bool white_can;
    bool black_can;
};

std::ostream& operator<<(std::ostream& out, const MateCase& row) { return out << row.name; }

class DeskTellsWhoCanMate : public testing::TestWithParam<MateCase> {};

TEST_P(DeskTellsWhoCanMate, ByThePieces) {
    const std::string wanted =
        "\"canMate\":" + JsonValue::Object({{"white", GetParam().white_can}, {"black", GetParam().black_can}}).text;
    EXPECT_THAT(Answer("game\n" + std::string(GetParam().placement) + " w - - 0 1\n"), HasSubstr(wanted));
}

// clang-format off
constexpr std::array mate_cases{
    MateCase{"LoneKingAgainstQueen",          "4k3/8/8/8/8/8/8/Q3K3",   true,  false},
    MateCase{"Pawn",                          "4k3/8/8/8/8/8/P7/4K3",   true,  false},
    MateCase{"Rook",                          "4k3/8/8/8/8/8/8/R3K3",   true,  false},
    MateCase{"LoneKnight",                    "4k3/8/8/8/8/8/8/N3K3",   false, false},
    MateCase{"KnightAgainstQueen",            "4k3/8/8/8/8/8/8/n2QK3",  true,  false},
    MateCase{"KnightAgainstRook",             "4k3/8/8/8/8/8/8/n2RK3",  true,  true},
    MateCase{"KnightAgainstPawn",             "4k3/8/8/8/8/8/P7/n3K3",  true,  true},
    MateCase{"TwoKnights",                    "4k3/8/8/8/8/8/8/NN2K3",  true,  false},
    MateCase{"KnightAndBishop",               "4k3/8/8/8/8/8/8/NB2K3",  true,  false},
    MateCase{"LoneBishop",                    "4k3/8/8/8/8/8/8/B3K3",   false, false},
    MateCase{"BishopAgainstQueen",            "4k3/8/8/8/8/8/8/b2QK3",  true,  false},
    MateCase{"BishopAgainstPawn",             "4k3/8/8/8/8/8/P7/b3K3",  true,  true},
    MateCase{"BishopAgainstKnight",           "4k3/8/8/8/8/8/8/bN2K3",  true,  true},
    MateCase{"BishopsOfOneColour",            "4k3/8/8/8/8/8/1b6/B3K3", false, false},
    MateCase{"BishopsOfBothColours",          "4k3/8/8/8/8/8/b7/B3K3",  true,  true},
    MateCase{"TwoBishopsOfOneSideAndColour",  "4k3/8/8/8/8/8/1B6/B3K3", false, false},
    MateCase{"PairOfBishops",                 "4k3/8/8/8/8/8/B7/B3K3",  true,  false},
};
// clang-format on
INSTANTIATE_TEST_SUITE_P(Endings, DeskTellsWhoCanMate, testing::ValuesIn(mate_cases),
                         [](const auto& row) { return std::string(row.param.name); });

// --- Refusals ---

struct RefusedCase {
    std::string_view name;
    std::string_view question;
    std::string_view word;
};

std::ostream& operator<<(std::ostream& out, const RefusedCase& refused) { return out << refused.name; }

class DeskRefuses : public testing::TestWithParam<RefusedCase> {};

TEST_P(DeskRefuses, ByAWord) {
    EXPECT_EQ(Answer(GetParam().question), JsonValue::Object({{"error", GetParam().word}}).text);
}

constexpr std::array refused_cases{
    RefusedCase{"NoQuestion", "", "no_such_question"},
    RefusedCase{"UnknownQuestion", "weather", "no_such_question"},
    RefusedCase{"NoPosition", "game\nrubbish", "no_such_position"},
    RefusedCase{"IllegalMove", "game\n\ne2e5", "illegal_move"},
    RefusedCase{"NoPersonality", "evaluation\nnobody\n\n", "no_such_personality"},
    RefusedCase{"PersonalityBeyondAll", "evaluation\n1001\n\n", "no_such_personality"},
    RefusedCase{"NoTag", "write_pgn\n\n\n*\ncolour! red", "no_such_tag"},
    RefusedCase{"TagOfTheGameItself", "write_pgn\n\n\n*\nFEN 8", "no_such_tag"},
    RefusedCase{"NoStart", "read_pgn\n[FEN \"rubbish\"]\n\n*\n", "no_such_position"},
    RefusedCase{"NoGame", "read_pgn\n", "unreadable_game"},
    RefusedCase{"IllegalMoveInGame", "read_pgn\n1. e5 *\n", "illegal_move_in_game"},
};
INSTANTIATE_TEST_SUITE_P(Questions, DeskRefuses, testing::ValuesIn(refused_cases),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace VorkaWeb
