#pragma once

#include <cstdint>
#include <string_view>

/// The terms in the order in which they are computed. Each reads what those before it left in the counters. An ending
/// has some of them, with values of its own, and a few more.
enum class Term : std::uint8_t {
    passed_pawns,
    material_imbalance,
    unstoppable_pawns,  ///< endings only
    bishop_pair,
    // What the pawn hash table keeps.
    pawn_squares,
    backward_pawns,
    isolated_pawns,
    isolated_queen_pawn,
    duo_and_defended_pawns,
    doubled_pawns,
    defended_passed_pawns,  ///< endings only
    connected_passed_pawns,
    pawn_chains,
    pawn_majorities,
    centre_squares,
    centre_patterns,
    pawns_alone,  ///< the sum of these
    // Pawns with pieces.
    majority_and_king,
    blocked_centre_pawns,
    isolated_queen_pawn_and_pieces,
    passed_pawns_and_pieces,
    // Pieces.
    knights,
    bishops,
    rooks,
    queens,
    patterns,
    space,
    activity,
    king_safety,
    knight_mobility,
    pawn_balance,
    // Endings.
    king_placement,
    checked_unstoppable_pawns,
    // Kings and pawns alone.
    pawn_race,
    spare_pawn_moves,
    passed_pawns_on_both_rims,
    reach_of_kings,
    number_of_terms  ///< none itself
};

/// The name as it stands above.
[[nodiscard]] std::string_view name_of(Term term) noexcept;
