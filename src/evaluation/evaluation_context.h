#pragma once

#include <array>
#include <cstdint>
#include <type_traits>

#include "chess/bits.h"

inline constexpr Bitboard light_squares = 0x55AA55AA55AA55AA;  // b1, d1, ..

/// What shifts every evaluation of a search. Owned by the search, shared by pointer with every context. The evaluation
/// table holds scores that depend on it: who changes it clears the table.
struct EVALUATION_SETTINGS {
    std::int16_t draw_score = 0;   ///< centipawns, White's view
    std::int16_t personality = 0;  ///< -1000..1000
};

/// The thirds of the board that the counters of pressure and cover are kept by.
enum Wing : std::uint8_t { queen_side = 0, king_side = 1, centre = 2 };

using WingCounters = std::array<std::int16_t, 3>;  ///< points, by Wing

/// What is known about the pawns of one side.
struct PAWN_INFO {
    Bitboard attacks;         ///< squares attacked by own pawns
    Bitboard attacked_once;   ///< by exactly one of them
    Bitboard attacked_twice;  ///< by two
    std::int16_t pawn_count;
    std::array<std::uint8_t, 16> squares;  ///< the first pawn_count entries, from h8 to a1
};

/// The working record of one evaluation. Every evaluation starts by clearing it. Arrays of two are by Colour.
struct EVALUATION_CONTEXT {
    const EVALUATION_SETTINGS* settings = nullptr;  ///< not owned; what the caller sets, and all that is kept

    PAWN_INFO pawns[2] = {};
    std::int16_t openness = 0;           ///< of the pawn structure, 1 to 15
    bool pawn_entry_from_table = false;  ///< the pawn facts came from the pawn hash table

    std::uint8_t files_without_pawn[2] = {};  ///< bit 0 is the a-file
    std::int8_t count_of_files_without_pawn[2] = {};
    std::int8_t only_open_file = 0;  ///< the one file without any pawn, -1 if there is none or several

    bool has_bishop_pair[2] = {};  ///< bishops on both square colours
    Wing king_wing[2] = {};

    Bitboard attacks[2] = {};           ///< squares attacked so far: each piece routine extends them
    Bitboard attacks_no_queen[2] = {};  ///< as they were before the queens

    double endgame_weight = 0.0;  ///< 0.0 to 1.0
    std::int16_t activity = 0;    ///< points, middle game only

    WingCounters pressure[2] = {};  ///< how much this side presses on a wing
    WingCounters cover[2] = {};     ///< how solid this side stands there

    // The danger to this side's king.
    std::int16_t king_attack[2] = {};  ///< points
    std::int16_t king_cover[2] = {};   ///< points
    double attack_factor[2] = {};      ///< 0.0 to 1.0, from king_attack
    double cover_factor[2] = {};       ///< 0.0 to 1.0, from king_cover
};
// It is cleared by a plain fill, some hundreds of bytes, for every position that is looked at.
static_assert(std::is_trivially_copyable_v<EVALUATION_CONTEXT>);

/// What a routine found out for the side to move.
struct EVALUATION_RESULT {
    int score;  ///< centipawns
    /// The score is so far from the bound that its side is all that was found out: it is the bound itself or one below.
    bool lazy = false;
};

/// The answer to "is it worth at least `bound`?" of a routine that stops early.
[[nodiscard]] constexpr EVALUATION_RESULT lazy_answer(bool at_least, int bound) noexcept {
    return {.score = at_least ? bound : bound - 1, .lazy = true};
}
