#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

#include "interfaces/commands/commands_protocol.h"
#include "interfaces/protocols/basic_protocol.h"
#include "support/command_bench.h"
#include "support/standard_input.h"

namespace {

using namespace VorkaInterfaces;
using testing::ElementsAre;

TEST(Translation, AnswersAnEmptyLineAndDoesNothing) {
    CommandBench bench;
    for (const std::string line : {"", " ", " \t \r"}) {
        bench.calls.clear();
        const auto command = bench.game.protocol->translate(line);
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
    EXPECT_EQ(bench.game.engineMode, EngineMode::force);
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
    EXPECT_EQ(bench.game.protocol->id, word);

    std::string many_words = "foo";
    while (many_words.size() < megabyte) many_words += " a";
    EXPECT_EQ(bench.Send(many_words).error, "Error (unrecognized command): " + many_words);
    EXPECT_EQ(bench.Send("name " + many_words).error, "");
    EXPECT_EQ(playerDefaults().opponentName, many_words);
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
    EXPECT_EQ(bench.game.protocol->id, "\xc3\xa4" + nul);
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
            EXPECT_NE(bench.game.protocol->translate(line), nullptr);
        } catch (const ErrorCommand& error) {
            EXPECT_TRUE(error.text().ends_with(line));
        }
    }
}

TEST(JoinedTokens, StandWithSingleBlanksBetweenThem) {
    const std::vector<std::string> tokens{"a", "b c", "", "d"};
    EXPECT_EQ(BasicProtocol::joinTokens(tokens, 0, 4), "a b c  d");
    EXPECT_EQ(BasicProtocol::joinTokens(tokens, 1, 2), "b c");
    EXPECT_EQ(BasicProtocol::joinTokens(tokens, 4, 4), "");
    EXPECT_EQ(BasicProtocol::joinTokens({}, 0, 0), "");
}

// --- Lines of edit mode ---

struct EditLine {
    const char* text;
    EditCommand command;
    Square square = a1;
    PieceType piece = no_piece;
};

// clang-format off
const std::array edit_lines{
    EditLine{"#",       EditCommand::clear},
    EditLine{"c",       EditCommand::switch_colour},
    EditLine{"s",       EditCommand::switch_side},
    EditLine{".",       EditCommand::done},
    EditLine{"cancel",  EditCommand::cancel},
    EditLine{"help",    EditCommand::help},
    EditLine{"verify",  EditCommand::verify},
    EditLine{"display", EditCommand::display},
    EditLine{"quit",    EditCommand::quit},
    EditLine{" \"#\" ", EditCommand::clear},
    EditLine{"Pe4",     EditCommand::place, e4, pawn},
    EditLine{"na1",     EditCommand::place, a1, knight},
    EditLine{"BH8",     EditCommand::place, h8, bishop},
    EditLine{"bb2",     EditCommand::place, b2, bishop},
    EditLine{"rA8",     EditCommand::place, a8, rook},
    EditLine{"Qh1",     EditCommand::place, h1, queen},
    EditLine{"kd5",     EditCommand::place, d5, king},
    EditLine{"Xe4",     EditCommand::place, e4, no_piece},
    EditLine{"xe4\r",   EditCommand::place, e4, no_piece},
    EditLine{"restore", EditCommand::unknown},
    EditLine{"",        EditCommand::unknown},
    EditLine{" ",       EditCommand::unknown},
    EditLine{"\"\"",    EditCommand::unknown},
    EditLine{"C",       EditCommand::unknown},
    EditLine{"# #",     EditCommand::unknown},
    EditLine{"Pe4 c",   EditCommand::unknown},
    EditLine{"Pe",      EditCommand::unknown},
    EditLine{"Pe9",     EditCommand::unknown},
    EditLine{"Pe0",     EditCommand::unknown},
    EditLine{"Pi4",     EditCommand::unknown},
    EditLine{"Pe44",    EditCommand::unknown},
    EditLine{"Ze4",     EditCommand::unknown},
    EditLine{"' e4'",   EditCommand::unknown},
    EditLine{"4e4",     EditCommand::unknown},
    EditLine{"\xff\xff\xff", EditCommand::unknown},
};
// clang-format on

TEST(EditLines, AskForOneThingEach) {
    for (const EditLine& row : edit_lines) {
        const StandardInputText input(std::string(row.text) + "\n");
        std::string line;
        Square square = a1;
        PieceType piece = no_piece;
        EXPECT_EQ(BasicProtocol::readEditCommand(line, square, piece), row.command) << '<' << row.text << '>';
        EXPECT_EQ(line, row.text);
        EXPECT_EQ(square, row.square) << row.text;
        EXPECT_EQ(piece, row.piece) << row.text;
        EXPECT_EQ(BasicProtocol::readEditCommand(line, square, piece), EditCommand::quit) << "at the end of input";
    }
}

TEST(EditLines, MustBeSplittable) {
    const StandardInputText input("Pe4\"\n");
    std::string line;
    Square square = a1;
    PieceType piece = no_piece;
    try {
        (void)BasicProtocol::readEditCommand(line, square, piece);
        ADD_FAILURE() << "no error";
    } catch (const ErrorCommand& error) {
        EXPECT_EQ(error.text(), "Error (could not tokenize the input string): Pe4\"");
    }
    EXPECT_EQ(BasicProtocol::readEditCommand(line, square, piece), EditCommand::quit);
}

}  // namespace
