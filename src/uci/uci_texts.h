#pragma once

#include <string_view>

/// What vorka-uci says beyond the words of the protocol, once; the vocabulary of the layer.
namespace uci_texts {

// --- Words of the protocol that stand together ---
inline constexpr std::string_view id_name = "id name ";
inline constexpr std::string_view id_author = "id author the Vorka developers";
inline constexpr std::string_view option_name = "option name ";
inline constexpr std::string_view check_default = "check default ";
inline constexpr std::string_view spin_default = "spin default ";
inline constexpr std::string_view string_default = "string default ";
inline constexpr std::string_view combo_default = "combo default ";
inline constexpr std::string_view info_depth = "info depth ";
inline constexpr std::string_view info_string = "info string ";
inline constexpr std::string_view score_of_mate = "info depth 0 score mate 0";
inline constexpr std::string_view score_of_stalemate = "info depth 0 score cp 0";

// --- The command line ---
inline constexpr std::string_view usage =
    "usage: vorka-uci [bench [DEPTH]]\n"
    "Speaks the UCI protocol, or searches the positions of the bench and tells the nodes and the speed.\n";
inline constexpr std::string_view total_time = "Total time (ms) : ";
inline constexpr std::string_view nodes_searched = "Nodes searched  : ";
inline constexpr std::string_view nodes_per_second = "Nodes/second    : ";

// --- The log ---
inline constexpr std::string_view sent = "sent: ";

// --- Names of options ---
inline constexpr std::string_view clear_hash = "Clear Hash";
inline constexpr std::string_view settings_file = "Settings File";
inline constexpr std::string_view tournament_file = "Tournament File";
inline constexpr std::string_view book_file = "Book File";
inline constexpr std::string_view move_overhead = "Move Overhead";
inline constexpr std::string_view bitbase_path = "Bitbase Path";
inline constexpr std::string_view syzygy_path = "Syzygy Path";
inline constexpr std::string_view log_file = "Log File";

// --- Values of the option Search ---
inline constexpr std::string_view classic_search = "Classic";
inline constexpr std::string_view tournament_search = "Tournament";

// --- What went wrong; said as info string ---
inline constexpr std::string_view line_too_long = "skipped a line longer than 1048576 bytes: ";
inline constexpr std::string_view no_such_option = "there is no option ";
inline constexpr std::string_view refused_value = "refused value of ";
inline constexpr std::string_view impossible_position = "there is no such position, and no move in it";
inline constexpr std::string_view impossible_move = "this move can't be played, nor those after it: ";
inline constexpr std::string_view setoption_lacks_name = "setoption goes on with name NAME value VALUE";
inline constexpr std::string_view no_value = "(none)";
inline constexpr std::string_view looked_for_in = "; it was looked for in ";
inline constexpr std::string_view tables_take = "the numbers of entries are powers of two, so the tables take ";
inline constexpr std::string_view of_the_hash = " MiB of ";
inline constexpr std::string_view could_not_write = "vorka-uci: can't write to standard output\n";
inline constexpr std::string_view no_memory = "no memory for so large tables, the last ones stay";
inline constexpr std::string_view could_not_open = "could not open ";
inline constexpr std::string_view log_in_use = ": another program writes its log there";
inline constexpr std::string_view few_settings_count =
    "the tournament search plays, which takes few of these settings; with Search set to Classic they all count";
inline constexpr std::string_view no_settings = "no settings were read, the last ones stay: ";
inline constexpr std::string_view no_book = "could not open as a book in Polyglot's format: ";
inline constexpr std::string_view no_syzygy = "this build can't read Syzygy tablebases: it was made without Fathom";
inline constexpr std::string_view no_tables = "no tablebases were found in ";
inline constexpr std::string_view tables_found = "tablebases found, with men up to ";
inline constexpr std::string_view opponent = "opponent: ";

}  // namespace uci_texts
