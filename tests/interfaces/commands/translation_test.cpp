#include "interfaces/commands/translation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

#include "support/command_bench.h"

namespace {

using namespace VorkaInterfaces;
using testing::ElementsAre;

TEST(Translation, AnswersAnEmptyLineAndDoesNothing) {
    CommandBench bench;
    for (const std::string line : {"", " ", " \t \r"}) {
        bench.calls.clear();
        const auto command = translate(bench.game.protocol(), line);
        EXPECT_THAT(bench.calls, ElementsAre("sendEmptyLineReply"));
        ASSERT_NE(dynamic_cast<Command_DoNothing*>(command.get()), nullptr);
        EXPECT_FALSE(command->finished);
        command->Execute(bench.game);
        EXPECT_TRUE(command->finished);
    }
}

TEST(Translation, RefusesALineThatCanNotBeSplit) {
    CommandBench bench;
    for (const std::string line : {"\"", "'", "setboard \"8/8", "name O'Brien", "\"'", "ping 1 \"a' 'b"}) {
        EXPECT_EQ(bench.Send(line).error, "Error (could not tokenize the input string): " + line);
    }
}

TEST(Translation, TakesAQuotedTextAsOneWord) {
    CommandBench bench;
    EXPECT_EQ(bench.Send("\"force\"").error, "");
    EXPECT_EQ(bench.game.mode(), EngineMode::force);
    EXPECT_EQ(bench.Send("setboard \"8/8/8/4k3/8/4K3/4P3/8 w - - 0 1\"").error, "");
    EXPECT_EQ(bench.fen(), "8/8/8/4k3/8/4K3/4P3/8 w - - 0 2");
}

TEST(Translation, SurvivesWordsOfAMegabyte) {
    CommandBench bench;
    const std::size_t megabyte = 1U << 20U;
    const std::string word(megabyte, 'a');
    EXPECT_EQ(bench.Send(word).error, "Illegal move: " + word);
    EXPECT_EQ(bench.Send("usermove " + word).error, "Illegal move: usermove " + word);
    EXPECT_EQ(bench.Send("ping 1 " + word).error, "Error (wrong number of arguments): ping 1 " + word);
    EXPECT_EQ(bench.Send("sd " + word).error, "Error (integer argument expected): sd " + word);
    const std::string digits(megabyte, '1');
    EXPECT_EQ(bench.Send("sd " + digits).error, "Error (integer argument expected): sd " + digits);
    EXPECT_EQ(bench.Send("result " + word).error, "Error (invalid argument(s)): result " + word);
    EXPECT_EQ(bench.Send("id " + word).error, "");
    EXPECT_EQ(bench.game.protocol().id, word);

    std::string many_words = "foo";
    while (many_words.size() < megabyte) many_words += " a";
    EXPECT_EQ(bench.Send(many_words).error, "Error (unrecognized command): " + many_words);
    EXPECT_EQ(bench.Send("name " + many_words).error, "");
    EXPECT_EQ(bench.game.playerDefaults().opponentName, many_words);
    EXPECT_EQ(bench.Send("draw " + many_words).error, "Error (too many parameters): draw " + many_words);
}

TEST(Translation, SurvivesNulAndHighBytes) {
    CommandBench bench;
    const std::string nul(1, '\0');
    for (const std::string& line : {nul, "go" + nul, nul + "go", std::string("\xff\xfe"), std::string("\x80")}) {
        EXPECT_EQ(bench.Send(line).error, "Illegal move: " + line);
    }
    EXPECT_EQ(bench.Send("sd 5" + nul).error, "Error (integer argument expected): sd 5" + nul);
    EXPECT_EQ(bench.Send(nul + " \xff").error, "Error (unrecognized command): " + nul + " \xff");
    EXPECT_EQ(bench.Send("id \xc3\xa4" + nul).error, "");
    EXPECT_EQ(bench.game.protocol().id, "\xc3\xa4" + nul);
}

TEST(Translation, NeverFailsInAnyOtherWay) {
    constexpr unsigned seed = 20260614;
    std::mt19937 random(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    const std::array<std::string, 8> pieces{"tc ", "level ", "setboard ", "\"", "'", " ", ";", "0:1"};
    CommandBench bench;
    for (int i = 0; i < 20000; ++i) {
        std::string line;
        for (auto length = random() % 12; length > 0; --length) {
            if (random() % 2 == 0) {
                line += pieces[random() % pieces.size()];
            } else {
                line += static_cast<char>(random() % 256);
            }
        }
        try {
            EXPECT_NE(translate(bench.game.protocol(), line), nullptr);
        } catch (const ErrorCommand& error) {
            EXPECT_TRUE(error.text().ends_with(line));
        }
    }
}

}  // namespace
