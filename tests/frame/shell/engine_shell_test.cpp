#include "frame/shell/engine_shell.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/row_name.h"

// The command line: what is carried out in the constructor. The main loop and the searches are tested with the real
// program over pipes.

namespace {

/// A start that ends without a look at the input.
struct Start {
    int status;
    std::string screen;  ///< standard output after the greeting
    std::string warnings;
    std::string log;  ///< after the greeting
};

Start StartWith(const std::vector<std::string>& arguments) {
    Start start;
    const LogCapture log;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    {
        Engine engine;
        EngineShell shell(engine, arguments);
        start.status = shell.run();
    }
    start.warnings = testing::internal::GetCapturedStderr();
    const auto after_greeting = [](const std::string& text) { return text.substr(text.find("!\n") + 2); };
    start.screen = after_greeting(testing::internal::GetCapturedStdout());
    start.log = after_greeting(log.text());
    return start;
}

struct StartRow {
    std::string name;
    std::vector<std::string> arguments;
    int status;
    std::string screen;
    std::string log;
};

class CommandLine : public testing::TestWithParam<StartRow> {};

TEST_P(CommandLine, IsCarriedOut) {
    const StartRow& row = GetParam();
    const Start start = StartWith(row.arguments);
    EXPECT_EQ(start.status, row.status);
    EXPECT_EQ(start.screen, row.screen);
    EXPECT_EQ(start.log, row.log);
    EXPECT_EQ(start.warnings, "");
}

std::string Stopped(const std::string& word) {
    return "Error while parsing startup commands (stopped at \"" + word + "\")\n";
}

std::string Executing(const std::string& line) {
    return "Executing startup command: " + line + " (not sent to xboard)\n";
}

INSTANTIATE_TEST_SUITE_P(
    Shell, CommandLine,
    testing::Values(
        StartRow{"Quit", {"--quit"}, 0, "", Executing("quit")},
        StartRow{"NothingAfterQuit", {"--quit", "--nonsense"}, 0, "", Executing("quit")},
        StartRow{"UnknownWord", {"-unknownword"}, 1, Stopped("unknownword"), Stopped("unknownword")},
        StartRow{"DashesAlone", {"--"}, 1, Stopped("--"), Stopped("--")},
        StartRow{"UnknownWordHidesItsParameters", {"--foo", "bar"}, 1, Stopped("foo"), Stopped("foo")},
        StartRow{"CommandsBeforeTheUnknownWordCount",
                 {"--eval", "--foo"},
                 1,
                 "eval: 6\n" + Stopped("foo"),
                 Executing("eval") + "eval: 6\n" + Stopped("foo")},
        StartRow{"NothingAfterTheUnknownWordCounts", {"--foo", "--eval"}, 1, Stopped("foo"), Stopped("foo")},
        StartRow{"WrongArgument",
                 {"--st", "abc"},
                 1,
                 Stopped("Error (integer argument expected): st abc"),
                 Executing("st abc") + Stopped("Error (integer argument expected): st abc")},
        StartRow{"NegativeNumberNeedsAnEqualsSign",
                 {"--contempt", "-5"},
                 1,
                 Stopped("Error (wrong number of arguments): contempt"),
                 Executing("contempt") + Stopped("Error (wrong number of arguments): contempt")},
        StartRow{"BoardIsSetInForceMode",
                 {"--setboard", "k7/8/8/8/8/8/8/8 w - - 0 1", "-quit"},
                 0,
                 "Command ignored (Illegal position)\n",
                 Executing("setboard k7/8/8/8/8/8/8/8 w - - 0 1") + "Command ignored (Illegal position)\n" +
                     Executing("quit")},
        StartRow{"MessagesFollowTheProtocolInForce",
                 {"--xboard", "--foo"},
                 1,
                 "telluser " + Stopped("foo"),
                 Executing("xboard") + "Stdin has been set to raw mode (OS: Unix compatible). (not sent to xboard)\n" +
                     "telluser " + Stopped("foo")}),
    RowName<StartRow>);

TEST(CommandLine, WordWithoutDashIsCarriedOutWithAWarning) {
    const Start start = StartWith({"eval", "-quit"});
    EXPECT_EQ(start.status, 0);
    EXPECT_EQ(start.warnings, "Warning: Expecting '-' before option \"eval\"! Continuing...\n");
    EXPECT_EQ(start.screen, "eval: 6\n");
}

TEST(CommandLine, VersionEndsTheProgram) {
    const Start start = StartWith({"--version", "--nonsense"});
    EXPECT_EQ(start.status, 0);
    EXPECT_TRUE(std::regex_match(start.screen, std::regex("Vorka v2\\.0\\.1 \\(.*\\)\n"
                                                          "build: Vorka with variable search extensions\n"
                                                          "\n"
                                                          "inline assembler:       disabled\n"
                                                          "move generator cache:   disabled\n"
                                                          "tablebase support:      enabled\n"
                                                          "architecture:           i386 compatible\n"
                                                          "platform:               [^\n]+\n"
                                                          "\n")))
        << start.screen;
}

TEST(CommandLine, GreetingComesBeforeTheOptions) {
    const LogCapture log;
    testing::internal::CaptureStdout();
    Engine engine;
    EngineShell shell(engine, {"--eval", "--quit"});
    const std::string screen = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(std::regex_match(screen, std::regex("[^\n]+!\neval: 6\n"))) << screen;
    EXPECT_EQ(shell.run(), 0);
}

}  // namespace
