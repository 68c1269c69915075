#pragma once

#include <string_view>

/// The texts of the help screens, byte for byte as they are shown: misspellings are the program's own.

/// What `help` says about the commands, each text named after its word.
namespace help_texts {

inline constexpr std::string_view analyze = "Enters analyze mode";
inline constexpr std::string_view contempt =
    "Sets the contempt value. A positive value will encourage the engine to draw, where a negative "
    "value will force the engine to avoid draws.";
inline constexpr std::string_view display = "Displays the current board";
inline constexpr std::string_view draw = "Accept a draw offer, or propose a draw if no offer has been received";
inline constexpr std::string_view eval = "Evaluates the current position";
inline constexpr std::string_view exit = "Leaves analyze mode";
inline constexpr std::string_view force = "Enters force mode";
inline constexpr std::string_view generate =
    "Generates vorka bitbases by using the results from the tablebases. Therefore, tablebases must "
    "be loaded, otherwise the command will fail. The generated bitbases will be stored in the "
    "executable's directory (*.vbb). They will be automatically loaded during startup.\nIf given no "
    "parameters, a list of all types of bitbases, which are supported by the generator, will be "
    "displayed. To generate all supported bitbases, use \"generate all\".";
inline constexpr std::string_view go = "Engine plays side on move and begins thinking immediately";
inline constexpr std::string_view hash =
    "If given no parameters, it will display the status of all hashtables (used memory, fill "
    "percentage). Otherwise it modifies the size of the specified table (trans, pawn, "
    "eval).\nExample: \"hash trans 256M\"";
inline constexpr std::string_view help = "Displays this help screen";
inline constexpr std::string_view hint = "Makes the engine propose a move";
inline constexpr std::string_view id = "Overwrites the engine's id (for testing only)";
inline constexpr std::string_view move_now = "Forces the engine to move immediately";
inline constexpr std::string_view name = "Set the name of the engine's opponent";
inline constexpr std::string_view new_game = "Starts a new game";
inline constexpr std::string_view next =
    "Makes the next move in the previous move buffer (if there is one). Additionally, \"next all\" "
    "will make all moves  at once, and \"next <number>\" will make up to <number> moves.";
inline constexpr std::string_view otim = "Sets the remaining time of the side which has not to move next";
inline constexpr std::string_view personality =
    "Controls the engine's personality:\nA positive (integer) value will make the engine play more "
    "reckless, where a negative value will result in a more positional and material playing style. "
    "Reasonable values are between -20 and 20. 0 is the default value, which is the best compromise, "
    "because the engine will adjust according to the situation.\nThere are some predefined "
    "personalities that you can use: \"Rux\" likes to sacrifice material and will attack the enemy "
    "king at all costs. \"Sedrimo\", in contrast, prefers to keep things simple. He will try to "
    "achieve small positional advantages without much risk and generally keeps a solid pawn "
    "structure without weaknesses. \"Random\" will choose a random personality between -20 and 20.";
inline constexpr std::string_view ping = "The engine will respond by sending \"pong\"";
inline constexpr std::string_view probe = "Probes bitbases and tablebases for the given (FEN-)position";
inline constexpr std::string_view playother = "Makes the engine switch sides";
inline constexpr std::string_view quit = "Leaves the program";
inline constexpr std::string_view rating = "Sets the rating of the engine's opponent";
inline constexpr std::string_view read_fen = "Reads a FEN-position and sets it as the current position";
inline constexpr std::string_view read_pgn = "Reads a PGN-position into the previous moves buffer";
inline constexpr std::string_view remove = "Undos the last two moves";
inline constexpr std::string_view result = "Sets the result of the current game";
inline constexpr std::string_view sd = "Sets a bound for the maximum depth of the engine";
inline constexpr std::string_view search_status = "Sends a request for the current search status";
inline constexpr std::string_view st = "Sets a bound for the maximum thinking time of the engine (in seconds)";
inline constexpr std::string_view time = "Sets the remaining time of the side which has to move next";
inline constexpr std::string_view undo =
    "Undos the last move and save it into the previous moves buffer.\nExtensions: \"undo all\" will "
    "undo all moves at once, furthermore \"undo <number>\" will undo up to <number> moves.";
inline constexpr std::string_view verify =
    "Verifies loaded bitbases by comparing their results with the results from the tablebases. "
    "Therefore, it is required that tablebases are available, otherwise the command will fail.\nTo "
    "verify all bitbases, use \"verify all\", but it is also possible to verify only specific "
    "bitbases:\n\"verify <type1> <type2> ...\"\nIf given no parameters, \"verify\" will list of all "
    "available verification jobs.";
inline constexpr std::string_view version = "Displays informations about the current program version";
inline constexpr std::string_view write_fen = "Saves the current position as FEN";
inline constexpr std::string_view write_pgn = "Saves the current game as PGN";
inline constexpr std::string_view black = "Sets Black on move. Sets the engine to play White. Stop clocks.";
inline constexpr std::string_view white = "Sets White on move. Sets the engine to play Black. Stop clocks.";
inline constexpr std::string_view easy = "Turns off pondering";
inline constexpr std::string_view hard = "Turns on pondering";
inline constexpr std::string_view nopost = "Turns off thinking/pondering output";
inline constexpr std::string_view post = "Turns on thinking/pondering output";
inline constexpr std::string_view usermove = "Can be used to send a move to the engine (e.g. \"usermove Nf3\")";
inline constexpr std::string_view edit = "Enters edit mode";
inline constexpr std::string_view setboard = "Sets up a new (FEN-)position";
inline constexpr std::string_view level = "Sets time controls";
inline constexpr std::string_view tb =
    "If given no parameters, it will display the status of all available tablebases and bitbases. "
    "Otherwise \"tb <type> <size> <path>\" initializes (or resizes) a tablebase or bitbase of the "
    "given <type> (nalimov), where <size> controls how much memory is being allocated (0 turns off "
    "caching, but will prevent then engine from accessing tablebases that are not loaded into "
    "memory) and <path> specifies the location on the disk.\nExample: \"tb nalimov 8M "
    "path/to/nalimov_tb\"";
inline constexpr std::string_view tc = "Sets time controls (this command is not included in the xboard protocol)";
inline constexpr std::string_view modify_settings = "Modifies one or more search settings";
inline constexpr std::string_view display_settings = "Displays the current values of one or more search settings";
inline constexpr std::string_view read_settings = "Reads search settings from a file";
inline constexpr std::string_view write_settings = "Writes search settings to a file";
inline constexpr std::string_view console = "Enters console mode";
inline constexpr std::string_view xboard = "Enters XBoard mode (protocol 1)";
inline constexpr std::string_view protover = "Enters XBoard mode using the given protocol (e.g., \"protover 2\").";
inline constexpr std::string_view fritz = "Activates Fritz mode (not really supported)";
inline constexpr std::string_view not_supported = "unsupported (will be ignored for compatibility reasons)";

}  // namespace help_texts

namespace VorkaHelpScreen {

struct HelpText {
    std::string_view keyword;
    std::string_view description;  ///< may contain line breaks
};

// clang-format off
/// What `help` lists in edit mode.
inline constexpr HelpText edit_commands[] = {
    {"cancel", "Leaves edit mode and discards the changes that were made"},
    {"#", "Clears the board"},
    {"\".\"", "Leaves edit mode and confirms the changes that were made"},
    {"restore", "Undos all changes and restores the original position"},
    {"c", "Changes current piece color"},
    {"s", "Changes side to move"},
    {"verify", "Checks if the current position is legal"},
    {"help", "Displays this help screen"},
    {"display", "Displays the current board"},
    {"quit", "Leaves the program"},
};
// clang-format on

}  // namespace VorkaHelpScreen
