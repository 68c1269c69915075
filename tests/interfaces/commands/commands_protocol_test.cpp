#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <typeinfo>
#include <vector>

#include "interfaces/protocols/console_protocol.h"
#include "interfaces/protocols/xboard_protocols.h"
#include "support/command_bench.h"
#include "support/log_capture.h"

namespace {

using namespace VorkaInterfaces;
using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<SearchKind> searches{SearchKind::normal, SearchKind::pondering, SearchKind::analyze,
                                       SearchKind::puzzle};

// --- The protocol in force ---

const std::type_info& TypeOfProtocol(const CommandBench& bench) {
    const BasicProtocol& protocol = bench.game.protocol();
    return typeid(protocol);
}

struct InstallCase {
    std::string line;
    const std::type_info& type;
    bool post;
};

class InstallProtocol : public testing::TestWithParam<InstallCase> {};

TEST_P(InstallProtocol, ReplacesTheObjectAndKeepsItsState) {
    const LogCapture log;
    testing::internal::CaptureStdout();
    CommandBench bench;
    bench.game.protocol().id = "##Foo";
    bench.game.protocol().personality = 7;
    bench.game.protocol().post = !GetParam().post;
    const auto outcome = bench.Send(GetParam().line);
    (void)testing::internal::GetCapturedStdout();
    EXPECT_TRUE(outcome.finished);
    EXPECT_EQ(TypeOfProtocol(bench), GetParam().type);
    EXPECT_EQ(bench.game.protocol().id, "##Foo");
    EXPECT_EQ(bench.game.protocol().personality, 7);
    EXPECT_EQ(bench.game.protocol().post, GetParam().post) << "the default of the class, not what was in force";
}

INSTANTIATE_TEST_SUITE_P(Protocols, InstallProtocol,
                         testing::Values(InstallCase{"console", typeid(ConsoleProtocol), true},
                                         InstallCase{"xboard", typeid(XBoardProtocol_1), false},
                                         InstallCase{"protover 2", typeid(XBoardProtocol_2), false},
                                         InstallCase{"protover 3", typeid(XBoardProtocol_2), false},
                                         InstallCase{"protover 1", typeid(XBoardProtocol_1), false},
                                         InstallCase{"fritz", typeid(XBoardFritzAdapter), false}));

TEST(InstallProtocol, StartsTheNewOne) {
    CommandBench bench;
    bench.Prepare({"id ##Foo"});
    const LogCapture log;
    testing::internal::CaptureStdout();
    bench.Send("xboard");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    testing::internal::CaptureStdout();
    bench.Send("protover 2");
    const std::string features = testing::internal::GetCapturedStdout();
    EXPECT_THAT(features, testing::HasSubstr("feature myname=\"Foo\"\n"));
    EXPECT_TRUE(features.ends_with("feature done=1\n"));
}

TEST(InstallProtocol, WorksBesideASearch) {
    for (const SearchKind kind : searches) {
        const LogCapture log;
        testing::internal::CaptureStdout();
        CommandBench bench;
        GameAccess::pretendSearch(bench.game, kind);
        const auto outcome = bench.Send("protover 2");
        (void)testing::internal::GetCapturedStdout();
        EXPECT_TRUE(outcome.finished);
        EXPECT_FALSE(outcome.aborted);
    }
}

TEST(Post, IsAnswerOfTheProtocolInForce) {
    CommandBench bench;
    EXPECT_TRUE(bench.Send("nopost").finished);
    EXPECT_FALSE(bench.game.protocol().post);
    EXPECT_TRUE(bench.Send("post").finished);
    EXPECT_TRUE(bench.game.protocol().post);
}

TEST(Id, IsTheRestOfTheLine) {
    CommandBench bench;
    bench.Send("id  my   own");
    EXPECT_EQ(bench.game.protocol().id, "my own");
    bench.Send("id ##Foo");
    EXPECT_EQ(bench.game.protocol().id, "##Foo");
    bench.Send("id");
    EXPECT_EQ(bench.game.protocol().id, "");
}

// --- Answers ---

TEST(Ping, IsAnsweredAtOnce) {
    for (const SearchKind kind : searches) {
        CommandBench bench;
        GameAccess::pretendSearch(bench.game, kind);
        const LogCapture log;
        testing::internal::CaptureStdout();
        const auto outcome = bench.Send("ping 5");
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "pong 5\n");
        EXPECT_EQ(log.text(), "pong 5\n");
        EXPECT_TRUE(outcome.finished);
        EXPECT_FALSE(outcome.aborted);
    }
}

TEST(Ping, GivesItsWordBackAsItCame) {
    CommandBench bench;
    for (const auto& [line, answer] : std::vector<std::pair<std::string, std::string>>{{"ping 007", "pong 007\n"},
                                                                                       {"ping x", "pong x\n"},
                                                                                       {"ping 'a b'", "pong a b\n"},
                                                                                       {"ping \"\"", "pong \n"}}) {
        testing::internal::CaptureStdout();
        bench.Send(line);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), answer);
    }
}

// --- The opponent ---

TEST(Name, IsTheOpponentsNowAndInGamesToCome) {
    CommandBench bench;
    EXPECT_TRUE(bench.Send("name Some  Body").finished);
    EXPECT_EQ(bench.game.player(white).name, "Some Body");
    EXPECT_EQ(bench.game.player(black).name, "Vorka");
    EXPECT_EQ(bench.game.defaultHuman().name, "Some Body");
    bench.Prepare({"go"});
    EXPECT_EQ(bench.game.player(white).name, "Vorka");
    EXPECT_EQ(bench.game.player(black).name, "Some Body");
    bench.Prepare({"force"});
    bench.Send("name Else");
    EXPECT_EQ(bench.game.player(white).name, "Vorka");
    EXPECT_EQ(bench.game.player(black).name, "Else");
}

TEST(Rating, IsEnginesThenOpponents) {
    CommandBench bench;
    EXPECT_TRUE(bench.Send("rating 2500 1800").finished);
    EXPECT_EQ(bench.game.player(black).rating, 2500);
    EXPECT_EQ(bench.game.player(white).rating, 1800);
    EXPECT_EQ(bench.game.defaultEngine(true).rating, 2500);
    EXPECT_EQ(bench.game.defaultHuman().rating, 1800);
}

TEST(Rating, ChangesTheDefaultsAloneUnlessTheEnginePlaysOneSide) {
    CommandBench bench;
    bench.Prepare({"force"});
    bench.Send("rating 2500 1800");
    EXPECT_EQ(bench.game.player(black).rating, 0);
    EXPECT_EQ(bench.game.player(white).rating, 0);
    EXPECT_EQ(bench.game.defaultEngine(true).rating, 2500);
    bench.Prepare({"new"});
    EXPECT_EQ(bench.game.player(black).rating, 2500);
    EXPECT_EQ(bench.game.player(white).rating, 1800);
}

TEST(Rating, IsNotNegative) {
    CommandBench bench;
    EXPECT_EQ(bench.Send("rating -1 1800").error, "Error (argument out of bounds): rating -1 1800");
    EXPECT_EQ(bench.Send("rating 2500 -1").error, "Error (argument out of bounds): rating 2500 -1");
    EXPECT_EQ(bench.game.defaultEngine(true).rating, 0);
    EXPECT_EQ(bench.Send("rating 0 0").error, "");
}

TEST(Computer, IsRememberedForEver) {
    CommandBench bench;
    EXPECT_FALSE(bench.game.advisor().opponentIsComputer);
    bench.Send("computer");
    EXPECT_TRUE(bench.game.advisor().opponentIsComputer);
    bench.Prepare({"new", "force", "setboard 4k3/8/8/8/8/8/4P3/4K3 w - - 0 1", "go", "playother"});
    EXPECT_TRUE(bench.game.advisor().opponentIsComputer);
}

// --- The end ---

TEST(Quit, EndsTheProgram) {
    CommandBench bench;
    const auto outcome = bench.Send("quit");
    EXPECT_TRUE(outcome.quit);
    EXPECT_FALSE(outcome.aborted);
}

TEST(Quit, EndsTheSearchFirst) {
    for (const SearchKind kind : searches) {
        CommandBench bench;
        GameAccess::pretendSearch(bench.game, kind);
        const auto outcome = bench.Send("quit");
        EXPECT_EQ(outcome.aborted, true);
        EXPECT_TRUE(outcome.quit);
        EXPECT_EQ(outcome.runs, 2);
    }
}

TEST(DoNothing, DoesNothing) {
    CommandBench bench;
    Command_DoNothing command("");
    command.Execute(bench.game);
    EXPECT_TRUE(command.finished);
    EXPECT_THAT(bench.calls, IsEmpty());
}

}  // namespace
