#include <gtest/gtest.h>

#include <memory>
#include <regex>
#include <string>

#include "frame/game/game_control.h"
#include "interfaces/commands/command.h"
#include "interfaces/protocols/console_protocol.h"
#include "interfaces/protocols/xboard_protocols.h"
#include "search/tables/hash.h"
#include "support/log_capture.h"
#include "support/row_name.h"

// What the protocols say, byte for byte: on standard output and in the log.

namespace {

using namespace VorkaInterfaces;

struct Said {
    std::string screen;
    std::string log;
};

template <class Action>
Said Capture(Action action) {
    const LogCapture log;
    testing::internal::CaptureStdout();
    action();
    Said said;
    said.screen = testing::internal::GetCapturedStdout();
    said.log = log.text();
    return said;
}

// --- What is talked about ---

const std::string start_board =
    "    +---+---+---+---+---+---+---+---+\n"
    "  8 | R | N | B | Q | K | B | N | R |\n"
    "  7 | P | P | P | P | P | P | P | P |\n"
    "  6 |   |   |   |   |   |   |   |   |\n"
    "  5 |   |   |   |   |   |   |   |   |\n"
    "  4 |   |   |   |   |   |   |   |   |\n"
    "  3 |   |   |   |   |   |   |   |   |\n"
    "  2 | *P| *P| *P| *P| *P| *P| *P| *P|\n"
    "  1 | *R| *N| *B| *Q| *K| *B| *N| *R|\n"
    "    +---+---+---+---+---+---+---+---+\n"
    "      a   b   c   d   e   f   g   h\n";
const std::string start_state =
    "castle possibilities: KQkq\n"
    "side on move: white; en-passant square: none\n";
const std::string edit_board =
    "    +---+---+---+---+---+---+---+---+\n"
    "  8 |   |   |   |   | K |   |   |   |\n"
    "  7 |   |   |   |   |   |   |   |   |\n"
    "  6 |   |   |   |   |   |   |   |   |\n"
    "  5 |   |   |   |   |   |   |   |   |\n"
    "  4 |   |   |   |   |   |   |   |   |\n"
    "  3 |   |   |   |   |   |   |   |   |\n"
    "  2 |   |   |   |   |   |   |   |   |\n"
    "  1 |   |   |   |   | *K|   |   |   |\n"
    "    +---+---+---+---+---+---+---+---+\n"
    "      a   b   c   d   e   f   g   h\n"
    "castle possibilities: none\n"
    "side on move: white; en-passant square: none\n";

/// A search of 2.5 seconds that is at the third of twenty root moves.
SearchInfo SomeSearch() {
    SearchInfo info;
    info.valid = true;
    info.root_moves = 20;
    info.moves_to_search = 18;
    info.depth = 7;
    info.nodes = 100000;
    info.root_move_text = "Nf3";
    info.principal_variation = {{1, "e4"}, {2, "e5"}, {3, "Nf3"}};
    info.score = -35;
    info.start = {.valid = true, .seconds = 1000, .microseconds = 900000};
    info.end = {.valid = true, .seconds = 1003, .microseconds = 400000};
    return info;
}

SearchInfo SearchWith(std::uint64_t nodes, int score) {
    SearchInfo info = SomeSearch();
    info.nodes = nodes;
    info.score = score;
    return info;
}

UserBoard GameAfter(const std::vector<std::string>& moves) {
    UserBoard game;
    for (const std::string& move : moves) game.MakeMoveFromText(move);
    return game;
}

// --- Every operation, in both protocols ---

/// The texts are as on the screen and in the log; `same` stands for a log text that equals that of the screen.
const std::string same = "=";

struct Row {
    std::string name;
    void (*operate)(BasicProtocol& protocol);
    std::string console_screen, console_log;
    std::string xboard_screen, xboard_log;
};

class Operation : public testing::TestWithParam<Row> {};

void Check(BasicProtocol& protocol, const Row& row, const std::string& screen, const std::string& log) {
    const Said said = Capture([&] { row.operate(protocol); });
    EXPECT_EQ(said.screen, screen);
    EXPECT_EQ(said.log, log == same ? screen : log);
}

TEST_P(Operation, InTheConsole) {
    ConsoleProtocol protocol;
    Check(protocol, GetParam(), GetParam().console_screen, GetParam().console_log);
}

TEST_P(Operation, UnderXBoard) {
    XBoardProtocol_2 protocol;
    Check(protocol, GetParam(), GetParam().xboard_screen, GetParam().xboard_log);
}

TEST_P(Operation, LeavesTheEchoAsItWas) {
    for (const bool xboard : {false, true}) {
        std::unique_ptr<BasicProtocol> protocol;
        if (xboard) {
            protocol = std::make_unique<XBoardProtocol_1>();
        } else {
            protocol = std::make_unique<ConsoleProtocol>();
        }
        for (const bool echo : {true, false}) {
            bool before = !echo;
            Capture([&] {
                vlog.SetEcho(echo);
                GetParam().operate(*protocol);
                before = vlog.SetEcho(true);
            });
            EXPECT_EQ(before, echo) << protocol->claimsResultItself();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Answers, Operation,
    testing::Values(
        Row{"Hint", [](BasicProtocol& p) { p.sendHint("Nf3"); }, "Vorka suggests Nf3\n", same, "Hint: Nf3\n", same},
        Row{"HintWithoutMove", [](BasicProtocol& p) { p.sendHint(""); },
            "Hint request could not be responded, because no legal move was found\n", same, "", ""},
        Row{"EngineMove", [](BasicProtocol& p) { p.sendEngineMove("e8=Q+"); }, "Vorka played: e8=Q+\n", same,
            "move e8=Q+\n", same},
        Row{"ResultWithOneEngineSide",
            [](BasicProtocol& p) {
                p.sendGameResult(UserBoard(), GameResult::white_wins, GameEndReason::mate, EngineMode::one_side);
            },
            "game over: 1-0 (White mates)\n", same, "1-0 {White mates}\n", same},
        Row{"ResultWithTwoEngineSides",
            [](BasicProtocol& p) {
                p.sendGameResult(UserBoard(), GameResult::draw, GameEndReason::fifty_moves, EngineMode::both_sides);
            },
            "game over: 1/2-1/2 (Fifthy move rule)\n", same, "1/2-1/2 {Fifthy move rule}\n", same},
        Row{"ResultInForceMode",
            [](BasicProtocol& p) {
                p.sendGameResult(UserBoard(), GameResult::black_wins, GameEndReason::mate, EngineMode::force);
            },
            "game over: 0-1 (Black mates)\n", same, "", ""},
        Row{"ResultInAnalyzeMode",
            [](BasicProtocol& p) {
                p.sendGameResult(UserBoard(), GameResult::draw, GameEndReason::stalemate, EngineMode::analyze);
            },
            "game over: 1/2-1/2 (Stalemate)\n", same, "", ""},
        Row{"PredictedMoveMade", [](BasicProtocol& p) { p.sendPredictedMoveMade("e5"); }, "Predicted move made (e5)\n",
            same, "", "Predicted move made (e5) (not sent to xboard)\n"},
        Row{"CommandIgnored", [](BasicProtocol& p) { p.sendCommandIgnored("game over"); },
            "Command ignored (game over)\n", same, "", "Command ignored (game over) (not sent to xboard)\n"},
        Row{"EditModeAborted", [](BasicProtocol& p) { p.sendEditModeAborted(); }, "Edit mode aborted\n", same, "", ""},
        Row{"Error", [](BasicProtocol& p) { p.sendError("Illegal move: foo"); }, "Illegal move: foo\n", same,
            "Illegal move: foo\n", same},
        Row{"EmptyLine", [](BasicProtocol& p) { p.sendEmptyLineReply(); }, "OK.\n", same, "", ""},
        Row{"TellUser", [](BasicProtocol& p) { p.tellUser("one\ntwo\nthree"); }, "one\ntwo\nthree\n", same,
            "telluser one\ttwo\tthree\n", same},
        Row{"EditPrompt", [](BasicProtocol& p) { p.sendEditPrompt(); }, "edit mode> ", same, "", ""}),
    RowName<Row>);

INSTANTIATE_TEST_SUITE_P(Prompt, Operation,
                         testing::Values(Row{"AtTheStart", [](BasicProtocol& p) { p.sendPrompt(UserBoard()); },
                                             " \rWhite 1> ", "White 1> ", "", ""},
                                         Row{"BlackToMove", [](BasicProtocol& p) { p.sendPrompt(GameAfter({"e4"})); },
                                             " \rBlack 1> ", "Black 1> ", "", ""},
                                         Row{"SecondMove",
                                             [](BasicProtocol& p) {
                                                 p.sendPrompt(GameAfter({"e4", "e5"}));
                                             },
                                             " \rWhite 2> ", "White 2> ", "", ""},
                                         Row{"AfterTheHalfMovesOfTheStartPosition",
                                             [](BasicProtocol& p) {
                                                 UserBoard game;
                                                 game.SetBoardFromFen("4k3/8/8/8/8/8/8/4K2R b - - 0 10");
                                                 p.sendPrompt(game);
                                             },
                                             " \rBlack 11> ", "Black 11> ", "", ""},
                                         Row{"ImpossiblePosition",
                                             [](BasicProtocol& p) {
                                                 UserBoard game;
                                                 game.SetInvalid();
                                                 p.sendPrompt(game);
                                             },
                                             " \rWhite 1> ", "White 1> ", "", ""}),
                         RowName<Row>);

INSTANTIATE_TEST_SUITE_P(
    Draws, Operation,
    testing::Values(Row{"Accepted", [](BasicProtocol& p) { p.sendDrawAccepted(); }, "Vorka accepts draw offer\n", same,
                        "offer draw\n", same},
                    Row{"RejectedToAPerson", [](BasicProtocol& p) { p.sendDrawRejected(false); },
                        "Vorka rejects the draw offer and wants to play on.\n", same,
                        "telluser Vorka rejects the draw offer and wants to play on.\n", same},
                    Row{"RejectedToAComputer", [](BasicProtocol& p) { p.sendDrawRejected(true); }, "", "", "", ""},
                    Row{"Resignation", [](BasicProtocol& p) { p.sendResign(); }, "Congratulations! Vorka resigns.\n",
                        same, "resign\n", same},
                    Row{"Offer", [](BasicProtocol& p) { p.sendDrawOffer(); },
                        "Vorka offers draw. (Note: type \"draw\" to accept)\n", same, "offer draw\n", same},
                    Row{"DeferredToAPerson", [](BasicProtocol& p) { p.sendDrawOfferDeferred(false); },
                        "Vorka is thinking about the draw offer and will decide after the next move.\n", same,
                        "telluser Vorka is thinking about the draw offer and will decide after the next move.\n", same},
                    Row{"DeferredToAComputer", [](BasicProtocol& p) { p.sendDrawOfferDeferred(true); }, "", "", "", ""},
                    Row{"RejectedUnderAnotherName",
                        [](BasicProtocol& p) {
                            p.id = "##Foo";
                            p.sendDrawRejected(false);
                        },
                        "Foo rejects the draw offer and wants to play on.\n", same,
                        "telluser Foo rejects the draw offer and wants to play on.\n", same}),
    RowName<Row>);

INSTANTIATE_TEST_SUITE_P(Boards, Operation,
                         testing::Values(Row{"Changed", [](BasicProtocol& p) { p.onBoardChanged(UserBoard()); },
                                             start_board, same, "", start_board},
                                         Row{"ChangedInEditMode",
                                             [](BasicProtocol& p) {
                                                 EditBoard board;
                                                 p.onEditBoardChanged(board);
                                             },
                                             edit_board, same, "", edit_board},
                                         Row{"Shown", [](BasicProtocol& p) { p.showBoard(UserBoard(), false); },
                                             start_board, same, start_board, same},
                                         Row{"ShownWithState", [](BasicProtocol& p) { p.showBoard(UserBoard(), true); },
                                             start_board + start_state, same, start_board + start_state, same},
                                         Row{"MoveList",
                                             [](BasicProtocol& p) {
                                                 p.onGameLoaded(GameAfter({"e4", "e5", "Nf3"}));
                                             },
                                             "1. e4 e5 2. Nf3 \n", same, "", "1. e4 e5 2. Nf3 \n"},
                                         Row{"MoveListFromBlack",
                                             [](BasicProtocol& p) {
                                                 UserBoard game;
                                                 game.SetBoardFromFen("4k3/8/8/8/8/8/8/4K2R b K - 0 1");
                                                 for (const char* const move : {"Kd7", "O-O", "Ke6"})
                                                     game.MakeMoveFromText(move);
                                                 for (int i = 0; i < 3; ++i) game.UndoMove();
                                                 p.onGameLoaded(game);
                                             },
                                             "2... Kd7 3. O-O Ke6 \n", same, "", "2... Kd7 3. O-O Ke6 \n"},
                                         Row{"MoveListInLines",
                                             [](BasicProtocol& p) {
                                                 p.onGameLoaded(
                                                     GameAfter({"Nc3", "Nc6", "Nf3", "Nf6", "Rb1", "Rb8", "Rg1", "Rg8",
                                                                "e3", "e6", "d3", "d6", "Be2", "Be7", "Bd2", "Bd7"}));
                                             },
                                             "1. Nc3 Nc6 2. Nf3 Nf6 3. Rb1 Rb8 4. Rg1 Rg8 5. e3 e6 6. d3 d6 7. Be2 \n"
                                             "Be7 8. Bd2 Bd7 \n",
                                             same, "",
                                             "1. Nc3 Nc6 2. Nf3 Nf6 3. Rb1 Rb8 4. Rg1 Rg8 5. e3 e6 6. d3 d6 7. Be2 \n"
                                             "Be7 8. Bd2 Bd7 \n"}),
                         RowName<Row>);

INSTANTIATE_TEST_SUITE_P(
    Search, Operation,
    testing::Values(
        Row{"Status",
            [](BasicProtocol& p) {
                const SearchInfo search = SomeSearch();
                p.sendSearchStatus(&search);
            },
            "stat01: 250 100000 7 17 20 Nf3\n", same, "stat01: 250 100000 7 17 20 Nf3\n", same},
        Row{"StatusWithoutSearch", [](BasicProtocol& p) { p.sendSearchStatus(nullptr); },
            "Command ignored (no search running)\n", same, "stat01: 0 0 0 0 0\n", same},
        Row{"ThinkingByDefault", [](BasicProtocol& p) { p.sendThinking(SomeSearch()); },
            "\rDepth: 7. e4 e5 Nf3 (-35)\n", "Depth: 7. e4 e5 Nf3 (-35)\n", "",
            "7 -35 250 100000 e4 e5 Nf3 \n (not sent to xboard)\n"},
        Row{"ThinkingPosted",
            [](BasicProtocol& p) {
                p.post = true;
                p.sendThinking(SomeSearch());
            },
            "\rDepth: 7. e4 e5 Nf3 (-35)\n", "Depth: 7. e4 e5 Nf3 (-35)\n", "7 -35 250 100000 e4 e5 Nf3 \n", same},
        Row{"ThinkingNotPosted",
            [](BasicProtocol& p) {
                p.post = false;
                p.sendThinking(SomeSearch());
            },
            "", "Depth: 7. e4 e5 Nf3 (-35)\n (not sent to xboard)\n", "",
            "7 -35 250 100000 e4 e5 Nf3 \n (not sent to xboard)\n"},
        Row{"ThinkingWithManyNodes",
            [](BasicProtocol& p) {
                p.post = true;
                p.sendThinking(SearchWith(100001, 12));
            },
            "\rDepth: 7. e4 e5 Nf3 (12)\n100 knodes searched\n", "Depth: 7. e4 e5 Nf3 (12)\n100 knodes searched\n",
            "7 12 250 100001 e4 e5 Nf3 \n", same},
        Row{"ThinkingOfAMate",
            [](BasicProtocol& p) {
                p.post = true;
                p.sendThinking(SearchWith(10, -32763));
            },
            "\rDepth: 7. e4 e5 Nf3 (-#2)\n", "Depth: 7. e4 e5 Nf3 (-#2)\n", "7 -32763 250 10 e4 e5 Nf3 \n", same},
        Row{"DepthStarted", [](BasicProtocol& p) { p.sendDepthStarted(12); }, "Depth: 12.",
            "Depth: 12. (not sent to xboard)\n", "", ""},
        Row{"DepthStartedNotPosted",
            [](BasicProtocol& p) {
                p.post = false;
                p.sendDepthStarted(12);
            },
            "", "Depth: 12. (not sent to xboard)\n", "", ""},
        Row{"NewPvMovePosted",
            [](BasicProtocol& p) {
                p.post = true;
                p.sendNewPvMove("Nf3");
            },
            "!? Nf3\n", "New move found: Nf3\n", "", "New pv-move candidate found: Nf3 (not sent to xboard)\n"},
        Row{"NewPvMoveNotPosted",
            [](BasicProtocol& p) {
                p.post = false;
                p.sendNewPvMove("Nf3");
            },
            "", "New move found: Nf3\n", "", "New pv-move candidate found: Nf3 (not sent to xboard)\n"},
        Row{"Instability", [](BasicProtocol& p) { p.sendSearchInstability(); }, "#warning: Search instability found!\n",
            same, "", "Search instability found! (not sent to xboard)\n"}),
    RowName<Row>);

INSTANTIATE_TEST_SUITE_P(Displays, Operation,
                         testing::Values(Row{"Personality", [](BasicProtocol& p) { p.showPersonality(); },
                                             "Personality: Default (0)\n", same, "Personality: Default (0)\n", same},
                                         Row{"AnotherPersonality",
                                             [](BasicProtocol& p) {
                                                 p.personality = -1000;
                                                 p.showPersonality();
                                             },
                                             "Personality: Sedrimo (-1000)\n", same, "Personality: Sedrimo (-1000)\n",
                                             same}),
                         RowName<Row>);

// --- Scores and greetings of the console ---

struct ScoreRow {
    std::string name;
    int score;
    std::string text;
};

class ConsoleScore : public testing::TestWithParam<ScoreRow> {};

TEST_P(ConsoleScore, IsCentipawnsOrMoves) { EXPECT_EQ(ScoreText(GetParam().score), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(Console, ConsoleScore,
                         testing::Values(ScoreRow{"Even", 0, "0"}, ScoreRow{"Behind", -123, "-123"},
                                         ScoreRow{"HighestNumber", 31767, "31767"},
                                         ScoreRow{"LowestNumber", -31767, "-31767"},
                                         ScoreRow{"LongestMate", 31768, "#500"},
                                         ScoreRow{"LongestLostMate", -31768, "-#500"},
                                         ScoreRow{"MateInOne", 32766, "#1"}, ScoreRow{"MateInOneToo", 32765, "#1"},
                                         ScoreRow{"MateInTwo", 32764, "#2"}, ScoreRow{"Mated", -32766, "-#1"},
                                         ScoreRow{"MatedOnTheBoard", -32767, "-#1"}),
                         RowName<ScoreRow>);

TEST(Greeting, NamesTheOpponentIfHeIsKnown) {
    const std::vector<std::string> words{
        "Hallo", "Guten Tag", "Welcome", "Vorka welcomes you", "Vorka ist bereit", "Ave und beim Jupiter"};
    for (int i = 0; i < 6; ++i) {
        const std::string& word = words[static_cast<std::size_t>(i)];
        EXPECT_EQ(GreetingText(i, "Incognito"), word + "!");
        EXPECT_EQ(GreetingText(i, "Anna"), word + ", Anna!");
    }
}

TEST(Greeting, StartsTheConsole) {
    ConsoleProtocol protocol;
    const Said said = Capture([&] { protocol.start("Anna"); });
    EXPECT_TRUE(std::regex_match(said.screen, std::regex("[A-Za-z ]+, Anna!\n"))) << said.screen;
    EXPECT_EQ(said.log, said.screen);
}

// --- The statistics of a search ---

struct Statistics {
    double seconds, knps, trans, pawn, eval, efficiency;
    long knodes, tries, cutoffs;
};

/// Reads the block; its doubles are compared as numbers, since their form is that of the stream.
Statistics Read(const std::string& text) {
    static const std::regex block(
        "time: (\\S+) sec \\((\\d+) knodes, (\\S+) knps\\)\n"
        "hit ratio: trans=(\\S+), pawn=(\\S+), eval=(\\S+)\n"
        "ETTC tries=(\\d+), cutoffs=(\\d+), efficiency=(\\S+)\n");
    std::smatch match;
    if (!std::regex_match(text, match, block)) {
        ADD_FAILURE() << "no statistics: " << text;
        return {};
    }
    return {.seconds = std::stod(match[1]),
            .knps = std::stod(match[3]),
            .trans = std::stod(match[4]),
            .pawn = std::stod(match[5]),
            .eval = std::stod(match[6]),
            .efficiency = std::stod(match[9]),
            .knodes = std::stol(match[2]),
            .tries = std::stol(match[7]),
            .cutoffs = std::stol(match[8])};
}

TEST(SearchStatistics, CountTimeNodesAndHits) {
    SearchInfo info = SearchWith(5000999, 0);
    info.evaluation_hash_table = {.probes = 4, .hits = 1};
    info.ettc_tries = 2000;
    info.ettc_cutoffs = 500;
    for (const bool posted : {true, false}) {
        ConsoleProtocol protocol;
        protocol.post = posted;
        const Said said = Capture([&] { protocol.sendSearchStatistics(info); });
        EXPECT_EQ(said.log, said.screen);
        const Statistics found = Read(said.screen);
        EXPECT_DOUBLE_EQ(found.seconds, 2.5);
        EXPECT_EQ(found.knodes, 5000);
        EXPECT_NEAR(found.knps, 5000999 / 2500.0, 0.01);
        EXPECT_EQ(found.trans, 0);  // without a probe
        EXPECT_EQ(found.pawn, 0);
        EXPECT_DOUBLE_EQ(found.eval, 0.25);
        EXPECT_EQ(found.tries, 2000);
        EXPECT_EQ(found.cutoffs, 500);
        EXPECT_DOUBLE_EQ(found.efficiency, 0.25);
    }
}

TEST(SearchStatistics, AreZeroWhereNothingWasTried) {
    SearchInfo info = SomeSearch();
    info.nodes = 0;
    info.end = info.start;
    ConsoleProtocol protocol;
    const Statistics found = Read(Capture([&] { protocol.sendSearchStatistics(info); }).screen);
    EXPECT_EQ(found.seconds, 0);
    EXPECT_EQ(found.knps, 0);
    EXPECT_EQ(found.efficiency, 0);
}

TEST(SearchStatistics, StayInTheLogUnderXBoard) {
    XBoardProtocol_1 protocol;
    protocol.post = true;
    const Said said = Capture([&] { protocol.sendSearchStatistics(SomeSearch()); });
    EXPECT_EQ(said.screen, "");
    EXPECT_EQ(Read(said.log).knodes, 100);
}

TEST(SearchStatistics, AppearInTheConsoleWhateverTheEcho) {
    ConsoleProtocol protocol;
    const Said said = Capture([&] {
        const EchoScope off(vlog, Echo::off);
        protocol.sendSearchStatistics(SomeSearch());
    });
    EXPECT_EQ(Read(said.screen).knodes, 100);
}

// --- Names and state ---

struct NameRow {
    std::string name;
    std::string id;
    std::int16_t personality;
    std::string full_name, short_name;
};

class EngineName : public testing::TestWithParam<NameRow> {};

TEST_P(EngineName, FollowsIdAndPersonality) {
    ConsoleProtocol protocol;
    protocol.id = GetParam().id;
    protocol.personality = GetParam().personality;
    EXPECT_EQ(protocol.getMyName(), GetParam().full_name);
    EXPECT_EQ(protocol.getShortName(), GetParam().short_name);
}

INSTANTIATE_TEST_SUITE_P(Protocol, EngineName,
                         testing::Values(NameRow{"Plain", "", 0, "\"Vorka\"", "Vorka"},
                                         NameRow{"Id", "x86", 0, "\"Vorka x86\"", "Vorka"},
                                         NameRow{"Personality", "", -8, "\"Lumbrik Vorka\"", "Vorka"},
                                         NameRow{"UnnamedPersonality", "", 3, "\"3 Vorka\"", "Vorka"},
                                         NameRow{"PersonalityAndId", "x86", 1000, "\"Rux Vorka x86\"", "Vorka"},
                                         NameRow{"Override", "##Foo", 1000, "\"Foo\"", "Foo"},
                                         NameRow{"ShortestOverride", "##F", 0, "\"F\"", "F"},
                                         NameRow{"NoOverride", "##", 0, "\"Vorka ##\"", "Vorka"},
                                         NameRow{"OneMark", "#Foo", 0, "\"Vorka #Foo\"", "Vorka"}),
                         RowName<NameRow>);

TEST(Protocol, TakesOverEverythingButPost) {
    ConsoleProtocol console;
    console.id = "x86";
    console.personality = 4;
    XBoardProtocol_2 xboard;
    xboard.copyStateFrom(console);
    EXPECT_EQ(xboard.id, "x86");
    EXPECT_EQ(xboard.personality, 4);
    EXPECT_FALSE(xboard.post);
    console.post = false;
    ConsoleProtocol again;
    again.copyStateFrom(xboard);
    EXPECT_TRUE(again.post);
}

TEST(Protocol, AnswersItsTwoQuestions) {
    const ConsoleProtocol console;
    EXPECT_TRUE(console.claimsResultItself());
    EXPECT_FALSE(console.analyzesFinishedGames());
    const XBoardFritzAdapter adapter;
    EXPECT_FALSE(adapter.claimsResultItself());
    EXPECT_TRUE(adapter.analyzesFinishedGames());
}

TEST(Protocol, KnowsTheKindsOfSearches) {
    struct Kind {
        int kind;
        std::string name;
    };
    for (const Kind& row : {Kind{0, "normal"}, Kind{1, "analyze"}, Kind{2, "pondering"}, Kind{3, "puzzle"},
                            Kind{4, "normal"}, Kind{-1, "normal"}}) {
        EXPECT_EQ(BasicProtocol::nameOfSearchKind(static_cast<SearchKind>(row.kind)), row.name);
    }
}

TEST(Protocol, ShowsItsVersionEverywhere) {
    const std::regex version(
        "Vorka v2\\.0\\.1 \\([A-Z][a-z]{2} [ \\d]\\d \\d{4}, \\d\\d:\\d\\d:\\d\\d\\)\n"
        "build: Vorka with variable search extensions\n"
        "\n"
        "inline assembler:       disabled\n"
        "move generator cache:   disabled\n"
        "tablebase support:      enabled\n"
        "architecture:           i386 compatible\n"
        "platform:               Unix compatible\n"
        "\n");
    ConsoleProtocol console;
    XBoardProtocol_1 xboard;
    for (BasicProtocol* protocol : {static_cast<BasicProtocol*>(&console), static_cast<BasicProtocol*>(&xboard)}) {
        const Said said = Capture([&] { protocol->showVersion(); });
        EXPECT_TRUE(std::regex_match(said.screen, version)) << said.screen;
        EXPECT_EQ(said.log, said.screen);
    }
}

// --- The start of XBoard's protocols ---

TEST(XBoardStart, FirstVersionAndAdapterWriteNothing) {
    XBoardProtocol_1 first;
    XBoardFritzAdapter adapter;
    EXPECT_EQ(Capture([&] { first.start(""); }).screen, "");
    EXPECT_EQ(Capture([&] { adapter.start(""); }).screen, "");
}

TEST(XBoardStart, SecondVersionTellsItsFeatures) {
    XBoardProtocol_2 protocol;
    protocol.id = "##Foo";
    (void)Capture([&] { protocol.start(""); });  // raw mode is logged by the first start alone
    const Said said = Capture([&] { protocol.start(""); });
    EXPECT_EQ(said.screen,
              "feature analyze=1\n"
              "feature colors=0\n"
              "feature draw=1\n"
              "feature ics=0\n"
              "feature myname=\"Foo\"\n"
              "feature name=1\n"
              "feature pause=0\n"
              "feature ping=1\n"
              "feature playother=1\n"
              "feature resume=0\n"
              "feature reuse=1\n"
              "feature san=1\n"
              "feature setboard=1\n"
              "feature sigint=0\n"
              "feature sigterm=0\n"
              "feature time=0\n"
              "feature usermove=1\n"
              "feature variants=normal\n"
              "feature done=1\n");
    EXPECT_EQ(said.log, said.screen);
}

}  // namespace
