#include "interfaces/protocols/input_line.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "interfaces/protocols/error_command.h"
#include "support/standard_input.h"

namespace {

using namespace VorkaInterfaces;

TEST(JoinedTokens, StandWithSingleBlanksBetweenThem) {
    const std::vector<std::string> tokens{"a", "b c", "", "d"};
    EXPECT_EQ(joinTokens(tokens, 0, 4), "a b c  d");
    EXPECT_EQ(joinTokens(tokens, 1, 2), "b c");
    EXPECT_EQ(joinTokens(tokens, 4, 4), "");
    EXPECT_EQ(joinTokens({}, 0, 0), "");
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
        EXPECT_EQ(readEditCommand(line, square, piece), row.command) << '<' << row.text << '>';
        EXPECT_EQ(line, row.text);
        EXPECT_EQ(square, row.square) << row.text;
        EXPECT_EQ(piece, row.piece) << row.text;
        EXPECT_EQ(readEditCommand(line, square, piece), EditCommand::quit) << "at the end of input";
    }
}

TEST(EditLines, MustBeSplittable) {
    const StandardInputText input("Pe4\"\n");
    std::string line;
    Square square = a1;
    PieceType piece = no_piece;
    try {
        (void)readEditCommand(line, square, piece);
        ADD_FAILURE() << "no error";
    } catch (const ErrorCommand& error) {
        EXPECT_EQ(error.text(), "Error (could not tokenize the input string): Pe4\"");
    }
    EXPECT_EQ(readEditCommand(line, square, piece), EditCommand::quit);
}

}  // namespace
