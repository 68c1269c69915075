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

// --- Results and reasons ---

// --- Search ---

// --- Start-up and main loop ---

// --- Game control ---

// --- Protocol operations common to all ---

// --- Console protocol ---

// --- XBoard protocols ---

// --- Errors of commands ---

// --- Commands ---

}  // namespace vocabulary
