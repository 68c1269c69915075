#pragma once

#include <string_view>

/// Every fixed word and sentence of the program, once, byte for byte as it is printed: misspellings are the program's
/// own. No other source file holds a quoted sentence. Named after what it says, grouped by who says it.
namespace vocabulary {

// --- Words that several speakers share ---
inline constexpr std::string_view program_name = "Vorka";
inline constexpr std::string_view not_sent_to_xboard = "not sent to xboard";
inline constexpr std::string_view vorka_received_input = "Vorka received input";
inline constexpr std::string_view quit = "quit";

// --- Diagnostics, log and system ---
inline constexpr std::string_view no_error_description = "no error description available";
inline constexpr std::string_view checked_assert_failed = "CHECKED_ASSERT failed:";
inline constexpr std::string_view assertion_file = "file: ";
inline constexpr std::string_view assertion_line = ", line: ";
inline constexpr std::string_view bit_functions_failed = "bit-twiddling functions in basic.h failed the checks";
inline constexpr std::string_view rounding_functions_failed = "rounding functions in utility.h failed the checks";
inline constexpr std::string_view logfile_created_at = "Vorka logfile created at: ";
inline constexpr std::string_view stdin_set_to_raw_mode = "Stdin has been set to raw mode (OS: Unix compatible).";
inline constexpr std::string_view random_source_used_often =
    "Note: NonDeterministicRand_16bit seems to be used more often than originally intended. This could be a problem, "
    "because its implementation is bad.";
inline constexpr std::string_view size_byte = "byte";
inline constexpr std::string_view size_kilobyte = "kilobyte";
inline constexpr std::string_view size_megabyte = "megabyte";
inline constexpr std::string_view size_gigabyte = "gigabyte";

// --- Board and notation ---
inline constexpr std::string_view board_separator_line = "    +---+---+---+---+---+---+---+---+\n";
inline constexpr std::string_view board_files_line = "      a   b   c   d   e   f   g   h\n";
inline constexpr std::string_view castle_possibilities = "castle possibilities";
inline constexpr std::string_view side_on_move = "side on move";
inline constexpr std::string_view en_passant_square = "en-passant square";
inline constexpr std::string_view side_white = "white";
inline constexpr std::string_view side_black = "black";
inline constexpr std::string_view no_castling_and_no_square = "none";
inline constexpr std::string_view short_castling = "O-O";
inline constexpr std::string_view long_castling = "O-O-O";
inline constexpr std::string_view start_position_fen = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";
inline constexpr std::string_view ambiguous_move = "ambiguous move";
inline constexpr std::string_view no_correspondence = "no correspondence";
inline constexpr std::string_view invalid_move = "invalid move";
inline constexpr std::string_view syntax_error = "syntax error";

// --- Results and reasons ---
inline constexpr std::string_view result_white_wins = "1-0";
inline constexpr std::string_view result_black_wins = "0-1";
inline constexpr std::string_view result_draw = "1/2-1/2";
inline constexpr std::string_view result_open = "*";
inline constexpr std::string_view white_mates = "White mates";
inline constexpr std::string_view black_mates = "Black mates";
inline constexpr std::string_view white_resigns = "White resigns";
inline constexpr std::string_view black_resigns = "Black resigns";
inline constexpr std::string_view lost_on_time = "Lost on time";
inline constexpr std::string_view stalemate = "Stalemate";
inline constexpr std::string_view insufficient_material = "Insufficient material";
inline constexpr std::string_view threefold_repetition = "Threefold repetition";
inline constexpr std::string_view mutual_agreement = "Mutual agreement";
inline constexpr std::string_view fifty_move_rule = "Fifthy move rule";
inline constexpr std::string_view game_aborted = "aborted";
inline constexpr std::string_view unknown_reason = "unknown reason";

// --- Search ---

// --- Start-up and main loop ---

// --- Game control ---

// --- Protocol operations common to all ---

// --- Console protocol ---

// --- XBoard protocols ---

// --- Errors of commands ---

// --- Commands ---

}  // namespace vocabulary
