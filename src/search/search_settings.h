#pragma once

#include <cstdint>

/// The settings of the search, with their defaults. A node reads them as plain values. Distances are in 1/64 ply.
namespace search_settings {

inline std::int32_t root_distance_multiplier = 64;  ///< distance for each iteration behind the first
inline bool skip_null_move_at_the_root = true;

inline std::int32_t generate_checking_moves_min_distance = -384;
inline std::int32_t search_every_normal_check_in_quiescence_min_distance = -51;
inline std::int32_t search_every_discovered_check_in_quiescence_min_distance = -51;
inline std::int32_t search_every_double_check_in_quiescence_min_distance = -64000;
inline std::int32_t generate_castling_moves_in_quiescence_min_distance = -64000;
inline std::int32_t max_distance_for_stand_pat_checks = 0;
inline bool no_stand_pat_check_if_full_searching_simple_endgames = true;
inline bool skip_stand_pat_because_of_pin_threat = false;

inline bool score_checking_move_should_neglect_trade_knight_vs_bishop = true;

}  // namespace search_settings
