#pragma once

#include <array>
#include <string_view>

/// Every fixed word and sentence of the program, once, byte for byte as it is printed: misspellings are the program's
/// own. No other source file holds a quoted sentence. Named after what it says, grouped by who says it.
namespace vocabulary {

// --- Words that several parts share ---
inline constexpr std::string_view program_name = "Vorka";
inline constexpr std::string_view not_sent_to_xboard = "not sent to xboard";
inline constexpr std::string_view vorka_received_input = "Vorka received input";
inline constexpr std::string_view quit = "quit";
inline constexpr std::string_view force = "force";
inline constexpr std::string_view game_over = "game over";
inline constexpr std::string_view no_search_running = "no search running";

// --- Diagnostics, log and system ---
inline constexpr std::string_view no_error_description = "no error description available";
inline constexpr std::string_view checked_assert_failed = "CHECKED_ASSERT failed:";
inline constexpr std::string_view assertion_file = "file: ";
inline constexpr std::string_view assertion_line = ", line: ";
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

// --- Launcher ---
inline constexpr std::string_view launcher_says = "vorka: ";
inline constexpr std::string_view no_level_of_this_name = "VORKA_LEVEL names no level: ";
inline constexpr std::string_view levels_are = "; the levels are ";
inline constexpr std::string_view level_above_processor = "VORKA_LEVEL is above this processor: ";
inline constexpr std::string_view levels_it_has = "; it has ";
inline constexpr std::string_view own_folder_unknown = "can't tell the own folder: ";
inline constexpr std::string_view can_not_start = "can't start ";
inline constexpr std::string_view nothing_to_start = "found nothing to start at ";
inline constexpr std::string_view or_there = " or ";

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
inline constexpr std::string_view pseudo_legal_test_of_invalid_move =
    "IsMovePseudoLegal: move == INVALID test is necessary!";
inline constexpr std::string_view too_many_moves = "Increase the constant MAX_MOVES!";
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

// --- Tags of games ---
inline constexpr std::string_view tag_event = "Event";
inline constexpr std::string_view tag_site = "Site";
inline constexpr std::string_view tag_date = "Date";
inline constexpr std::string_view tag_round = "Round";
inline constexpr std::string_view tag_white = "White";
inline constexpr std::string_view tag_black = "Black";
inline constexpr std::string_view tag_result = "Result";
inline constexpr std::string_view tag_time_control = "TimeControl";
inline constexpr std::string_view tag_fen = "FEN";

// --- Search ---
inline constexpr std::string_view transposition_collision_detected = "collision in transposition table detected";
inline constexpr std::string_view transposition_collision_condition =
    "hash_entry_found == false || board.IsMovePseudoLegal(hash_move)";
inline constexpr std::string_view hash_move_of_line_condition = "local_board.VerifyMove(hash_move) == true";
inline constexpr std::string_view pawn_hash_collision_detected = "pawnhashtable collision detected";
inline constexpr std::string_view unexpected_position_type = "PAWN_HASH_ENTRY::Construct: unexpected position_type";
inline constexpr std::string_view pawn_hash_type_condition = "entry.position_type != 16";
inline constexpr std::string_view pawn_hash_subset_condition = "(stored & ~pawns) == 0";
inline constexpr std::string_view bounds_crossed = "error: lowerbound and upperbound crossed!\n";
inline constexpr std::string_view lowerbound_is = "lowerbound=";
inline constexpr std::string_view upperbound_is = ", upperbound=";
inline constexpr std::string_view illegal_move_detected = "Illegal move detected: ";

// --- Search settings ---
inline constexpr std::string_view type_integer = "integer";
inline constexpr std::string_view type_boolean = "boolean";
inline constexpr std::string_view boolean_true = "true";
inline constexpr std::string_view boolean_false = "false";
inline constexpr std::string_view all = "all";
inline constexpr std::string_view separator_equals_missing = "seperator missing ('=')";
inline constexpr std::string_view expected_variable = "Expected variable: ";
inline constexpr std::string_view received_variable = ";\nReceived variable: ";
inline constexpr std::string_view could_not_parse_boolean = "could not parse boolean: ";
inline constexpr std::string_view could_not_parse_integer = "could not parse integer: ";
inline constexpr std::string_view value_out_of_bounds = "value out of bounds";
inline constexpr std::string_view index_out_of_bounds = "index out of bounds";
inline constexpr std::string_view invalid_size = "invalid size";
inline constexpr std::string_view not_initialized = "not initialized";
inline constexpr std::string_view parse_error_in_line = "Parse error in line #";
inline constexpr std::string_view initialized_missing_variable = "Warning: Initialized missing variable <";
inline constexpr std::string_view with_default_value = "> with default value ('";
inline constexpr std::string_view end_of_default_value = "')\n";
inline constexpr std::string_view could_not_open_settings = "could not open file: ";
inline constexpr std::string_view could_not_write_settings = "could not write file: ";
inline constexpr std::string_view unknown_variable_of_settings = "unknown variable: ";
inline constexpr std::string_view could_not_parse_new_value = "could not parse new value: ";

// --- Files with settings of the tournament search ---
inline constexpr std::string_view in_line = "line ";
inline constexpr std::string_view no_assignment = "this is not NAME = VALUE: ";
inline constexpr std::string_view no_tournament_setting = "there is no setting ";
inline constexpr std::string_view takes_a_number_from = " takes a number from ";
inline constexpr std::string_view to_bound = " to ";
inline constexpr std::string_view could_not_open_tournament_file = "could not open ";
inline constexpr std::string_view could_not_read_tournament_file = "could not read ";

// --- Start-up and main loop ---
inline constexpr std::string_view log_file_prefix = "logfile.";
inline constexpr std::string_view log_file_of_last_resort = "logfile.max";
// The bit algorithms, as the log names them: fixed, whatever the implementation does.
inline constexpr std::string_view bitboard_algorithms = "Bitboard algorithms";
inline constexpr std::string_view popcount_algorithm = "popcount:         Table lookup PopCount";
inline constexpr std::string_view popcount_sparse_algorithm = "popcount_sparse:  Table lookup PopCount";
inline constexpr std::string_view find_lowest_bit_algorithm = "find_lowest_bit:  FindLowestBitViaFindHighestBit";
inline constexpr std::string_view find_highest_bit_algorithm = "find_highest_bit: Table lookup (not inlined)";
inline constexpr std::string_view find_next_bit_algorithm = "find_next_bit:    FindHighestBit";
inline constexpr std::string_view expecting_dash_before_option = "Warning: Expecting '-' before option \"";
inline constexpr std::string_view continuing_without_dash = "\"! Continuing...\n";
inline constexpr std::string_view executing_startup_command = "Executing startup command: ";
inline constexpr std::string_view error_while_parsing_startup_commands = "Error while parsing startup commands";
inline constexpr std::string_view stopped_at = "stopped at";
inline constexpr std::string_view startup_command_failed_safely =
    "Execution of the command failed, but it is safe to proceed and ignore this error:\n";
inline constexpr std::string_view warning_startup_command_failed = "Warning: Startup command failed!\n";
inline constexpr std::string_view entering_analyze_compatibility_mode = "Entering analyze compatibility mode";
inline constexpr std::string_view starting_search = "starting search";
inline constexpr std::string_view search_header_fen = "FEN";
inline constexpr std::string_view search_settings = "search settings";
inline constexpr std::string_view search_setting_type = "type";
inline constexpr std::string_view search_setting_max_depth = "max_depth";
inline constexpr std::string_view search_setting_max_time_limit = "max_time_limit";
inline constexpr std::string_view search_setting_variable_time_limit = "variable_time_limit";

// --- Game control ---
inline constexpr std::string_view default_opponent_name = "Incognito";
inline constexpr std::string_view engine_rejects_draw_offer = "Engine rejects draw offer";

// --- Protocol operations common to all ---
inline constexpr std::string_view search_kind_normal = "normal";
inline constexpr std::string_view search_kind_analyze = "analyze";
inline constexpr std::string_view search_kind_pondering = "pondering";
inline constexpr std::string_view search_kind_puzzle = "puzzle";
inline constexpr std::string_view id_override_mark = "##";
inline constexpr std::string_view rejects_the_draw_offer = " rejects the draw offer and wants to play on.";
inline constexpr std::string_view is_thinking_about_the_draw_offer =
    " is thinking about the draw offer and will decide after the next move.";
inline constexpr std::string_view personality = "Personality: ";
inline constexpr std::string_view program_version = "v2.0.1";
// What was built, as showVersion prints it: fixed, except for the platform.
inline constexpr std::string_view build_extensions = "build: Vorka with variable search extensions\n";
inline constexpr std::string_view build_inline_assembler = "\ninline assembler:       disabled\n";
inline constexpr std::string_view build_move_generator_cache = "move generator cache:   disabled\n";
inline constexpr std::string_view build_tablebase_support = "tablebase support:      enabled\n";
inline constexpr std::string_view build_architecture = "architecture:           i386 compatible\n";
inline constexpr std::string_view build_platform = "platform:               ";
inline constexpr std::string_view platform_word = "Unix compatible";
inline constexpr std::string_view predicted_move_made = "Predicted move made";
inline constexpr std::string_view command_ignored = "Command ignored";
inline constexpr std::string_view search_status = "stat01: ";
inline constexpr std::string_view statistics_time = "time: ";
inline constexpr std::string_view statistics_seconds = " sec (";
inline constexpr std::string_view statistics_knodes = " knodes, ";
inline constexpr std::string_view statistics_knps = " knps)\n";
inline constexpr std::string_view statistics_hit_ratio_trans = "hit ratio: trans=";
inline constexpr std::string_view statistics_hit_ratio_pawn = ", pawn=";
inline constexpr std::string_view statistics_hit_ratio_eval = ", eval=";
inline constexpr std::string_view statistics_ettc_tries = "ETTC tries=";
inline constexpr std::string_view statistics_ettc_cutoffs = ", cutoffs=";
inline constexpr std::string_view statistics_ettc_efficiency = ", efficiency=";
inline constexpr std::string_view help = "help";

inline constexpr std::string_view transposition_table = "transposition table";
inline constexpr std::string_view pawn_hashtable = "pawn hashtable";
inline constexpr std::string_view evaluation_hashtable = "evaluation hashtable";
inline constexpr std::string_view hash_total_slots = "#total slots:    ";
inline constexpr std::string_view hash_free_slots = "#free  slots:    ";
inline constexpr std::string_view hash_fill_percentage = "fill percentage: ";
// The words that name a table.
inline constexpr std::string_view hash_word_transposition = "trans";
inline constexpr std::string_view hash_word_pawn = "pawn";
inline constexpr std::string_view hash_word_evaluation = "eval";

// --- Help screens (their texts are in help_texts.h) ---
inline constexpr std::string_view help_command = "command";
inline constexpr std::string_view help_description = " description\n";
inline constexpr std::string_view press_enter_to_continue = "press enter to continue...";

// --- Endgame databases ---
inline constexpr std::string_view supported_databases = "Supported bitbases/tablebases:\n";
inline constexpr std::string_view nalimov_tablebases = "Nalimov tablebases (type=nalimov)\n";
inline constexpr std::string_view single_pawn_bitbases = "King+pawn vs king bitbases (built-in)\n";
inline constexpr std::string_view two_pawns_bitbases = "King+pawn vs king+pawn bitbases (";
inline constexpr std::string_view rammed_pawn_bitbases = "King+pawn+pawn vs king+pawn with pawn ram bitbases (";
inline constexpr std::string_view bitbase_not = "not ";
inline constexpr std::string_view bitbase_loaded = "loaded)\n";
inline constexpr std::string_view tablebase_type_nalimov = "nalimov";
inline constexpr std::string_view nalimov_size_overflow =
    "NalimovInitializer: Cannot allocate the requested memory, because of an integer overflow. Allocating maximum "
    "memory instead.";
inline constexpr std::string_view initializing_nalimov = "Initializing Nalimov tablebases... '";
inline constexpr std::string_view could_not_initialize_tablebases =
    "Error! Could not initialize tablebases!\nIs the path correct?";
inline constexpr std::string_view increase_the_cache_size =
    "Error! Could not initialize tablebases!\nIncrease the cache size.";
inline constexpr std::string_view cache_size_too_small = "Increase the cache size, because it is too small.";
inline constexpr std::string_view could_not_open_tablebases = "Could not open tablebases. Is the path correct?";
inline constexpr std::string_view could_not_initialize_nalimov = "Could not initialize Nalimov tablebases.\nReason: ";
// What is told of the files of tables, after "*** ".
inline constexpr std::string_view cannot_allocate = "Cannot allocate ";
inline constexpr std::string_view bytes_of_memory = " bytes of memory";
inline constexpr std::string_view unable_to_register = "Unable to register ";
inline constexpr std::string_view unable_to_read = "Unable to read ";
inline constexpr std::string_view reason_read_error = "read error";
inline constexpr std::string_view reason_file_broken = "file broken";
inline constexpr std::string_view reason_out_of_memory = "out of memory";
inline constexpr std::string_view seek_in = "Seek in ";
inline constexpr std::string_view read_from = "Read from ";
inline constexpr std::string_view seek_or_read_failed = " failed";
inline constexpr std::string_view unsupported_block_size = ": Unsupported block size ";
inline constexpr std::string_view cannot_find_length = "Cannot find length of ";
inline constexpr std::string_view corrupted = " corrupted ";
inline constexpr std::string_view nalimov_untested =
    "Nalimov's format is untested on original files; the checksums of packed ones protect from wrong answers.\n";
// How the files of the published tables are called, and the head of the packed ones.
inline constexpr std::string_view nalimov_first_side = "nbw";
inline constexpr std::string_view nalimov_second_side = "nbb";
inline constexpr std::string_view nalimov_packed_ending = ".emd";
inline constexpr std::string_view nalimov_packer_banner(
    "Compressed by DATACOMP v 1.0 (c) 1991--1998 Andrew Kadatch\r\n\0\0\0\0", 64);
inline constexpr std::string_view probing_bitbases = "\nProbing bitbases: ";
inline constexpr std::string_view probing_tablebases = "\nProbing tablebases: ";
inline constexpr std::string_view probe_not_found = "not found";
inline constexpr std::string_view probe_result = "result=";
inline constexpr std::string_view probe_queued = "queued (this should never happen!)";
inline constexpr std::string_view probe_disabled = "disabled (not loaded)";
inline constexpr std::string_view tablebases_not_loaded = "tablebases not loaded";
inline constexpr std::string_view available_generation_jobs = "List of available generation jobs:\n";
inline constexpr std::string_view available_verification_jobs = "List of available verification jobs:\n";
inline constexpr std::string_view could_not_parse_generation_job = "Could not parse generation job description '";
inline constexpr std::string_view could_not_parse_verify_job = "Could not parse verify job description '";
inline constexpr std::string_view job_two_pawns = "two_pawns";
inline constexpr std::string_view job_rammed_pawn = "rammed_pawn";
inline constexpr std::string_view job_single_pawn = "single_pawn";
inline constexpr std::string_view job_generic = "generic";
inline constexpr std::string_view single_pawn_generation_disabled =
    "Support for single pawn bitbase generation disabled";
inline constexpr std::string_view generic_generation_disabled = "Support for generic bitbase generation disabled";
inline constexpr std::string_view generic_verification_not_supported = "Generic bitbases verification not supported";
inline constexpr std::string_view generating_two_pawns = "Generating king+pawn vs king+pawn bitbases data file";
inline constexpr std::string_view generating_rammed_pawn = "Generating rammed pawn bitbases data file";
inline constexpr std::string_view job_dots = "... ";
inline constexpr std::string_view job_failed = "failed\n";
inline constexpr std::string_view job_skipped = "skipped\n";
inline constexpr std::string_view job_skipped_file_exists = "skipped (file already exists)\n";
inline constexpr std::string_view two_pawns_file = "kp_kp.vbb";
inline constexpr std::string_view rammed_pawn_file = "kpp_kp_ram.vbb";
inline constexpr std::string_view checksum_ending = ".sha256";
// Lines that follow what is said of a file.
inline constexpr std::string_view checksum_missing = "  the checksum of this file is missing: ";
inline constexpr std::string_view checksum_does_not_fit = "  the checksum of this file does not fit, it is not used: ";
inline constexpr std::string_view it_is_no_regular_file = "it is no regular file";
inline constexpr std::string_view it_has_another_size = "it has another size than it should";
inline constexpr std::string_view it_cannot_be_read = "it can't be read";
inline constexpr std::string_view its_checksum_does_not_fit = "its checksum does not fit";
inline constexpr std::string_view loading_bitbases = "Loading bitbases (executables directory='";
inline constexpr std::string_view loading_bitbases_end = "'):\n";
inline constexpr std::string_view two_pawns_found = "- two pawns bitbases found\n";
inline constexpr std::string_view two_pawns_not_found = "- two pawns bitbases not found ('";
inline constexpr std::string_view two_pawns_not_found_end = "')\n";
inline constexpr std::string_view rammed_pawn_found = "- rammed pawn bitbases found\n";
inline constexpr std::string_view rammed_pawn_not_found = "- rammed pawn bitbases not found ('";
inline constexpr std::string_view rammed_pawn_not_found_end = "').\n";
inline constexpr std::string_view generic_bitbases_disabled = "- generic bitbases disabled\n";
inline constexpr std::string_view failed_to_open_two_pawns = "Warning: Failed to open two pawns bitbases.\n";
inline constexpr std::string_view failed_to_open_rammed_pawn = "Warning: Failed to open rammed pawn bitbases\n";
inline constexpr std::string_view could_not_open_bitbase_file = "Could not open file '";
inline constexpr std::string_view verifying_bitbase = "Verifying bitbase '";
inline constexpr std::string_view verifying_dots = "'...";
inline constexpr std::string_view verification_passed = "passed (";
inline constexpr std::string_view verification_positions = " positions)\n";
inline constexpr std::string_view error_in_bitbase = "Error in ";
inline constexpr std::string_view error_in_bitbase_end = " bitbase.\n";
inline constexpr std::string_view position_reports_wrong_result = "Position reports wrong result.\n";
inline constexpr std::string_view position_was_not_found = "Position not found.\n";
inline constexpr std::string_view corrupted_position_found = "Corrupted position found:\n";
inline constexpr std::string_view verification_failed_reason = "Verification failed (reason: ";
inline constexpr std::string_view verification_failed_end = "):\n";
inline constexpr std::string_view position_not_found = "position not found";
inline constexpr std::string_view invalid_result = "invalid result";
inline constexpr std::string_view generation_lookup_queued = "internal error: lookup queued";
inline constexpr std::string_view verification_lookup_queued = "Internal error: lookup queued";
inline constexpr std::string_view tablebase_corruption = "Tablebase corruption detected";
inline constexpr std::string_view tablebase_io_error = "IO error";
inline constexpr std::string_view single_pawn_not_available = "endgame king+pawn vs king not available";
inline constexpr std::string_view two_pawns_not_available = "endgame king+pawn vs king+pawn not available";
inline constexpr std::string_view three_pawns_not_available = "endgame king+pawn+pawn vs king+pawn not available";
inline constexpr std::string_view generation_done = "done (";
inline constexpr std::string_view generation_seconds = " sec)\n";
inline constexpr std::string_view generation_finished = "Generation finished. Reloading bitbases.";
inline constexpr std::string_view job_aborted = "aborted\n";
inline constexpr std::string_view verification_finished = "Verification finished (";
inline constexpr std::string_view milliseconds_total = "ms total).\n";

// --- The best square of a piece ---
inline constexpr std::string_view optimize_piece = "Piece:\n";
inline constexpr std::string_view optimize_invalid_square = "Error: Invalid square\n";
inline constexpr std::string_view optimize_new_best_square = "New best square: ";
inline constexpr std::string_view optimize_best_square = "Best square: ";
inline constexpr std::string_view optimize_value = " (val=";

// --- Console protocol ---
inline constexpr std::string_view greeting_hallo = "Hallo";
inline constexpr std::string_view greeting_guten_tag = "Guten Tag";
inline constexpr std::string_view greeting_welcome = "Welcome";
inline constexpr std::string_view greeting_vorka_welcomes_you = "Vorka welcomes you";
inline constexpr std::string_view greeting_vorka_ist_bereit = "Vorka ist bereit";
inline constexpr std::string_view greeting_ave = "Ave und beim Jupiter";
inline constexpr std::string_view vorka_suggests = "Vorka suggests";
inline constexpr std::string_view hint_without_legal_move =
    "Hint request could not be responded, because no legal move was found";
inline constexpr std::string_view vorka_played = "Vorka played";
inline constexpr std::string_view edit_mode_aborted = "Edit mode aborted";
inline constexpr std::string_view prompt_white = "White";
inline constexpr std::string_view prompt_black = "Black";
inline constexpr std::string_view prompt_end = "> ";
inline constexpr std::string_view over_the_open_line = " \r";
inline constexpr std::string_view ok = "OK";
inline constexpr std::string_view new_move_on_screen = "!? ";
inline constexpr std::string_view new_move_found = "New move found: ";
inline constexpr std::string_view warning_search_instability_found = "#warning: Search instability found!\n";
inline constexpr std::string_view vorka_accepts_draw_offer = "Vorka accepts draw offer";
inline constexpr std::string_view congratulations_vorka_resigns = "Congratulations! Vorka resigns.";
inline constexpr std::string_view vorka_offers_draw = "Vorka offers draw. (Note: type \"draw\" to accept)";
inline constexpr std::string_view edit_mode_prompt = "edit mode> ";
inline constexpr std::string_view depth = "Depth";
inline constexpr std::string_view knodes_searched = " knodes searched\n";

// --- XBoard protocols ---
inline constexpr std::string_view xboard_hint = "Hint";
inline constexpr std::string_view xboard_move = "move";
inline constexpr std::string_view xboard_offer_draw = "offer draw";
inline constexpr std::string_view xboard_resign = "resign";
inline constexpr std::string_view xboard_tell_user = "telluser";
inline constexpr std::string_view new_pv_move_candidate_found = "New pv-move candidate found: ";
inline constexpr std::string_view search_instability_found = "Search instability found!";
inline constexpr std::string_view search_status_idle = "stat01: 0 0 0 0 0\n";
inline constexpr std::string_view feature = "feature";

// --- Errors of commands ---
// The forms that an interface expects, then the reasons in brackets.
inline constexpr std::string_view error = "Error";
inline constexpr std::string_view out_of_memory = "Error (out of memory): the program has to end\n";
inline constexpr std::string_view line_too_long = "line longer than 1048576 bytes";
inline constexpr std::string_view illegal_move = "Illegal move";
inline constexpr std::string_view argument_out_of_bounds = "argument out of bounds";
inline constexpr std::string_view cannot_change_sides = "cannot change sides";
inline constexpr std::string_view command_is_not_supported = "command is not supported";
inline constexpr std::string_view command_not_legal_now = "command not legal now";
inline constexpr std::string_view could_not_open_file = "could not open file";
inline constexpr std::string_view could_not_read_fen_file = "could not read FEN file";
inline constexpr std::string_view could_not_read_pgn_file = "could not read PGN file";
inline constexpr std::string_view could_not_write_fen_file = "could not write FEN file";
inline constexpr std::string_view could_not_write_pgn_file = "could not write PGN file";
inline constexpr std::string_view could_not_parse_new_size = "could not parse new size";
inline constexpr std::string_view could_not_parse_type = "could not parse type";
inline constexpr std::string_view unknown_hashtable_type = "unknown hashtable type";
inline constexpr std::string_view could_not_parse_personality = "could not parse personality";
inline constexpr std::string_view could_not_tokenize_the_input_string = "could not tokenize the input string";
inline constexpr std::string_view input_inconsistent_with_fen_standard = "input inconsistent with FEN standard";
inline constexpr std::string_view integer_argument_expected = "integer argument expected";
inline constexpr std::string_view invalid_arguments = "invalid argument(s)";
inline constexpr std::string_view it_is_not_your_turn_now = "it is not your turn now";
inline constexpr std::string_view last_time_control_must_not_terminate = "last time control must not terminate";
inline constexpr std::string_view missing_parameters = "missing parameters";
inline constexpr std::string_view must_be_in_analyze_mode = "must be in analyze mode";
inline constexpr std::string_view must_be_in_force_mode = "must be in force mode";
inline constexpr std::string_view next_move_buffer_is_empty = "next move buffer is empty";
inline constexpr std::string_view no_move_to_undo = "no move to undo";
inline constexpr std::string_view no_moves_to_remove = "no moves to remove";
inline constexpr std::string_view separator_missing = "seperator missing (';')";
inline constexpr std::string_view too_many_parameters = "too many parameters";
inline constexpr std::string_view unknown_command = "unknown command";
inline constexpr std::string_view unrecognized_command = "unrecognized command";
inline constexpr std::string_view wrong_number_of_arguments = "wrong number of arguments";

// --- Commands ---
inline constexpr std::string_view unfinished_hint_request = "Unfinished hint request detected!";
inline constexpr std::string_view could_not_undo = "could not undo";
inline constexpr std::string_view moves_not_undone_at_start_position =
    "move(s), because start position has been reached";
inline constexpr std::string_view moves_not_made_next_move_buffer_is_empty =
    "move(s) could not be made, because next move buffer is empty";
inline constexpr std::string_view unexpected_protocol_version =
    "Unexpected xboard protocol version. Executing command \"xboard\" instead";
inline constexpr std::string_view future_protocol_version =
    "Future XBoard protocol version not support, falling back to version 2";
inline constexpr std::string_view illegal_position = "Illegal position";
inline constexpr std::string_view current_position_is = "Current position is";
inline constexpr std::string_view position_valid = "valid";
inline constexpr std::string_view position_invalid = "invalid";
inline constexpr std::string_view eval = "eval";
inline constexpr std::string_view pong = "pong";
inline constexpr std::string_view clock_active_side = "time (active side):";
inline constexpr std::string_view clock_passive_side = "time (passive side):";
inline constexpr std::string_view clock_moves_left = "moves_left: ";
inline constexpr std::string_view clock_milliseconds_left = "milliseconds_left: ";
inline constexpr std::string_view clock_out_of_time = "out_of_time: ";
inline constexpr std::string_view player1_played_by_engine = "player1 played by engine: ";
inline constexpr std::string_view player2_played_by_engine = "player2 played by engine: ";

}  // namespace vocabulary
