#pragma once

#include <string_view>

/// Every fixed word and sentence of the program, once, byte for byte as it is printed: misspellings are the program's
/// own. No other source file holds a quoted sentence. Named after what it says, grouped by who says it.
namespace vocabulary {

// --- Words that several speakers share ---
inline constexpr std::string_view program_name = "Vorka";
inline constexpr std::string_view not_sent_to_xboard = "not sent to xboard";
inline constexpr std::string_view vorka_received_input = "Vorka received input";

// --- Diagnostics, log and system ---
inline constexpr std::string_view no_error_description = "no error description available";

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
