#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// The settings of the tournament search: what its own techniques read. They stand beside those of SearchSettings,
/// which the steps shared by both searches go on reading. Distances are in 1/64 ply, margins in centipawns; a switch is
/// 0 or 1.
struct TournamentSettings {
    // --- Root ---
    std::int32_t aspiration_window = 40;  ///< bounds so close together are good enough, in centipawns
    std::int32_t root_order = 1;          ///< by the size of the subtrees
    std::int32_t root_memory = 25;        ///< percent of the size of a subtree that counts in the next iteration
    std::int32_t root_reduction = 32;     ///< of late root moves, in 1/64 of what other nodes reduce
    std::int32_t root_full_moves = 3;     ///< so many root moves are never reduced

    // --- Horizon and quiescence ---
    std::int32_t horizon = 32;             ///< a smaller distance counts as none
    std::int32_t quiescence_checks = 64;   ///< so far below the horizon quiet checks are searched
    std::int32_t quiescence_levels = 1;    ///< two distances only, with checks and without: the table answers more
    std::int32_t delta_margin = 320;       ///< what a capture may lack to beta; 5000: all are searched
    std::int32_t exchange_tolerance = 10;  ///< what a capture may lose; 5000: all are searched

    // --- Static score ---
    std::int32_t table_estimate = 1;   ///< the bounds of the table correct it
    std::int32_t farthest_bet = 3000;  ///< so far away from it nothing is bet on it: the question is about a mate
    std::int32_t fail_soft = 1;        ///< bets answer as far as they reach, not by the bound that was asked for

    // --- Reverse futility: so far above beta, near the horizon, that no reply will bring it below ---
    std::int32_t reverse_futility = 1;
    std::int32_t reverse_futility_distance = 448;
    std::int32_t reverse_futility_margin = 100;    ///< for each ply left
    std::int32_t reverse_futility_improving = 20;  ///< less if the side stands better than at its last move

    // --- Razoring: so far below beta that only captures can help ---
    std::int32_t razoring = 1;
    std::int32_t razoring_distance = 192;
    std::int32_t razoring_margin = 220;  ///< for each ply left

    // --- Null move ---
    std::int32_t null_move = 1;
    std::int32_t null_move_distance = 128;          ///< least one
    std::int32_t null_move_reduction = 256;         ///< the ply of the pass among it
    std::int32_t null_move_growth = 16;             ///< more for each ply left
    std::int32_t null_move_margin = 200;            ///< a ply more for so much above beta
    std::int32_t null_move_margin_limit = 192;      ///< at most so much more, in 1/64 ply
    std::int32_t null_move_verification = 640;      ///< from this distance on a cut is verified without passing
    std::int32_t null_move_verification_least = 0;  ///< distance of a verification, where the pass was asked less deep
    std::int32_t null_move_pieces = 1;              ///< fewest pieces besides pawns of the side that passes

    // --- Internal reduction: without a hash move the node is not worth its distance ---
    std::int32_t internal_reduction = 1;
    std::int32_t internal_reduction_distance = 256;
    std::int32_t internal_reduction_amount = 64;

    // --- Pruning of moves ---
    std::int32_t futility = 1;
    std::int32_t futility_distance = 448;
    std::int32_t futility_base = 90;
    std::int32_t futility_margin = 70;  ///< for each ply left
    std::int32_t late_move_pruning = 1;
    std::int32_t late_move_pruning_distance = 512;
    std::int32_t late_move_pruning_base = 3;    ///< moves; more with the square of the plies left
    std::int32_t late_move_pruning_share = 70;  ///< percent of that square; twice both if the side stands better
    std::int32_t loss_pruning = 1;
    std::int32_t loss_pruning_distance = 448;
    std::int32_t quiet_loss_margin = 50;     ///< for each ply left
    std::int32_t capture_loss_margin = 100;  ///< for each ply left
    std::int32_t history_pruning = 1;
    std::int32_t history_pruning_distance = 256;
    std::int32_t history_pruning_limit = 1500;  ///< for each ply left

    // --- Late move reductions ---
    std::int32_t late_move_reduction = 1;
    std::int32_t late_move_reduction_distance = 128;  ///< least one
    std::int32_t late_move_full_moves = 1;            ///< so many moves are never reduced
    std::int32_t late_move_reduction_base = 40;
    std::int32_t late_move_reduction_factor = 28;  ///< times ln(plies left) * ln(number of the move)
    std::int32_t cut_node_reduction = 48;          ///< more where a cut is expected
    std::int32_t worsening_reduction = 32;         ///< more if the side stands no better than at its last move
    std::int32_t killer_relief = 48;
    std::int32_t check_relief = 64;
    std::int32_t capture_relief = 64;
    std::int32_t history_relief = 96;  ///< at most, for the best history; the worst takes as much more

    // --- Extensions ---
    std::int32_t check_extension = 48;
    std::int32_t singular_extension = 64;  ///< 0: none
    std::int32_t singular_distance = 448;
    std::int32_t singular_margin = 2;   ///< for each ply left
    std::int32_t singular_entry = 192;  ///< so much less deep an entry of the table still names the move
    std::int32_t longest_line = 2;      ///< plies for each ply of the iteration; beyond them no move is singular
    std::int32_t multi_cut = 1;

    // --- Order of moves ---
    std::int32_t history_malus = 1;
    std::int32_t continuation_history = 1;
    std::int32_t counter_moves = 1;
    std::int32_t capture_history = 150;  ///< centipawns that a capture is moved by it at most; 0: none
    std::int32_t history_bonus_factor = 16;
    std::int32_t history_bonus_limit = 1600;

    // --- Time: the only move takes none ---
    std::int32_t only_move_depth = 6;  ///< iterations, to know what to ponder on; 80: as many as for others

    // --- Time: the share of its nodes that went to the best move tells how sure the search is of it ---
    std::int32_t time_by_effort = 0;
    std::int32_t effort_time = 150;    ///< percent of the time, if no node went to the best move
    std::int32_t effort_saving = 120;  ///< percent less, if all did

    bool operator==(const TournamentSettings&) const = default;
};

namespace tournament_settings {

struct Row {
    std::string_view name;
    std::int32_t TournamentSettings::*place;
    std::int32_t least;
    std::int32_t most;
};

/// All of them, in the order in which they are shown and filed.
// clang-format off
inline constexpr Row rows[] = {
    {"aspiration_window", &TournamentSettings::aspiration_window, 1, 400},
    {"root_order", &TournamentSettings::root_order, 0, 1},
    {"root_memory", &TournamentSettings::root_memory, 0, 100},
    {"root_reduction", &TournamentSettings::root_reduction, 0, 64},
    {"root_full_moves", &TournamentSettings::root_full_moves, 1, 255},
    {"horizon", &TournamentSettings::horizon, 1, 64},
    {"quiescence_checks", &TournamentSettings::quiescence_checks, 0, 1024},
    {"quiescence_levels", &TournamentSettings::quiescence_levels, 0, 1},
    {"delta_margin", &TournamentSettings::delta_margin, 0, 5000},
    {"exchange_tolerance", &TournamentSettings::exchange_tolerance, 0, 5000},
    {"table_estimate", &TournamentSettings::table_estimate, 0, 1},
    {"farthest_bet", &TournamentSettings::farthest_bet, 0, 32767},
    {"fail_soft", &TournamentSettings::fail_soft, 0, 1},
    {"reverse_futility", &TournamentSettings::reverse_futility, 0, 1},
    {"reverse_futility_distance", &TournamentSettings::reverse_futility_distance, 0, 1024},
    {"reverse_futility_margin", &TournamentSettings::reverse_futility_margin, 0, 1000},
    {"reverse_futility_improving", &TournamentSettings::reverse_futility_improving, 0, 1000},
    {"razoring", &TournamentSettings::razoring, 0, 1},
    {"razoring_distance", &TournamentSettings::razoring_distance, 0, 1024},
    {"razoring_margin", &TournamentSettings::razoring_margin, 0, 2000},
    {"null_move", &TournamentSettings::null_move, 0, 1},
    {"null_move_distance", &TournamentSettings::null_move_distance, 1, 1024},
    {"null_move_reduction", &TournamentSettings::null_move_reduction, 64, 1024},
    {"null_move_growth", &TournamentSettings::null_move_growth, 0, 64},
    {"null_move_margin", &TournamentSettings::null_move_margin, 1, 2000},
    {"null_move_margin_limit", &TournamentSettings::null_move_margin_limit, 0, 1024},
    {"null_move_verification", &TournamentSettings::null_move_verification, 0, 64000},
    {"null_move_verification_least", &TournamentSettings::null_move_verification_least, 0, 640},
    {"null_move_pieces", &TournamentSettings::null_move_pieces, 0, 15},
    {"internal_reduction", &TournamentSettings::internal_reduction, 0, 1},
    {"internal_reduction_distance", &TournamentSettings::internal_reduction_distance, 64, 1024},
    {"internal_reduction_amount", &TournamentSettings::internal_reduction_amount, 0, 256},
    {"futility", &TournamentSettings::futility, 0, 1},
    {"futility_distance", &TournamentSettings::futility_distance, 0, 1024},
    {"futility_base", &TournamentSettings::futility_base, 0, 1000},
    {"futility_margin", &TournamentSettings::futility_margin, 0, 1000},
    {"late_move_pruning", &TournamentSettings::late_move_pruning, 0, 1},
    {"late_move_pruning_distance", &TournamentSettings::late_move_pruning_distance, 0, 1024},
    {"late_move_pruning_base", &TournamentSettings::late_move_pruning_base, 1, 64},
    {"late_move_pruning_share", &TournamentSettings::late_move_pruning_share, 0, 400},
    {"loss_pruning", &TournamentSettings::loss_pruning, 0, 1},
    {"loss_pruning_distance", &TournamentSettings::loss_pruning_distance, 0, 1024},
    {"quiet_loss_margin", &TournamentSettings::quiet_loss_margin, 0, 1000},
    {"capture_loss_margin", &TournamentSettings::capture_loss_margin, 0, 1000},
    {"history_pruning", &TournamentSettings::history_pruning, 0, 1},
    {"history_pruning_distance", &TournamentSettings::history_pruning_distance, 0, 1024},
    {"history_pruning_limit", &TournamentSettings::history_pruning_limit, 0, 64000},
    {"late_move_reduction", &TournamentSettings::late_move_reduction, 0, 1},
    {"late_move_reduction_distance", &TournamentSettings::late_move_reduction_distance, 64, 1024},
    {"late_move_full_moves", &TournamentSettings::late_move_full_moves, 1, 255},
    {"late_move_reduction_base", &TournamentSettings::late_move_reduction_base, -256, 256},
    {"late_move_reduction_factor", &TournamentSettings::late_move_reduction_factor, 0, 128},
    {"cut_node_reduction", &TournamentSettings::cut_node_reduction, 0, 256},
    {"worsening_reduction", &TournamentSettings::worsening_reduction, 0, 256},
    {"killer_relief", &TournamentSettings::killer_relief, 0, 256},
    {"check_relief", &TournamentSettings::check_relief, 0, 256},
    {"capture_relief", &TournamentSettings::capture_relief, 0, 256},
    {"history_relief", &TournamentSettings::history_relief, 0, 256},
    {"check_extension", &TournamentSettings::check_extension, 0, 128},
    {"singular_extension", &TournamentSettings::singular_extension, 0, 128},
    {"singular_distance", &TournamentSettings::singular_distance, 256, 1024},
    {"singular_margin", &TournamentSettings::singular_margin, 0, 64},
    {"singular_entry", &TournamentSettings::singular_entry, 0, 1024},
    {"longest_line", &TournamentSettings::longest_line, 0, 80},
    {"multi_cut", &TournamentSettings::multi_cut, 0, 1},
    {"history_malus", &TournamentSettings::history_malus, 0, 1},
    {"continuation_history", &TournamentSettings::continuation_history, 0, 1},
    {"counter_moves", &TournamentSettings::counter_moves, 0, 1},
    {"capture_history", &TournamentSettings::capture_history, 0, 2000},
    {"history_bonus_factor", &TournamentSettings::history_bonus_factor, 1, 256},
    {"history_bonus_limit", &TournamentSettings::history_bonus_limit, 1, 8000},
    {"only_move_depth", &TournamentSettings::only_move_depth, 1, 80},
    {"time_by_effort", &TournamentSettings::time_by_effort, 0, 1},
    {"effort_time", &TournamentSettings::effort_time, 100, 400},
    {"effort_saving", &TournamentSettings::effort_saving, 0, 400},
};
// clang-format on

[[nodiscard]] constexpr std::span<const Row> Table() noexcept { return rows; }
/// Null if there is no setting of that name.
[[nodiscard]] const Row* Find(std::string_view name) noexcept;
/// Takes a value from its text. False, with the old value kept, for what is no whole number within the row's bounds.
[[nodiscard]] bool Take(const Row& row, std::string_view text, TournamentSettings& settings);

}  // namespace tournament_settings
