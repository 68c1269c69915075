#pragma once

#include <array>
#include <cstdint>
#include <type_traits>

#include "chess/bits.h"

struct HashTables;
struct PAWN_HASH_ENTRY;
namespace VorkaBitbases {
class Bitbases;
}

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

/// Counters wrap at 16 bits.
constexpr void add_points(std::int16_t& counter, int points) noexcept {
    counter = static_cast<std::int16_t>(counter + points);
}

/// Two ways to cut the files into wings. Pawns and kings go by the narrow wings a, b and g, h; pieces and passed pawns
/// by the wide ones a to c and f to h.
[[nodiscard]] constexpr Wing narrow_wing(int file) noexcept {
    return file < 2 ? queen_side : file < 6 ? centre : king_side;
}
[[nodiscard]] constexpr Wing wide_wing(int file) noexcept {
    return file < 3 ? queen_side : file < 5 ? centre : king_side;
}

/// What is known about the pawns of one side. "Ahead" and ranks are seen from that side.
struct PAWN_INFO {
    // Found after the lazy test, never kept.
    Bitboard attacks;         ///< squares attacked by own pawns
    Bitboard attacked_once;   ///< by exactly one of them
    Bitboard attacked_twice;  ///< by two
    Bitboard dominated;       ///< squares that own pawns attack more often than enemy pawns do
    Bitboard defended;        ///< own pawns that an own pawn attacks
    Bitboard blocked;         ///< own pawns with any piece on the square in front
    Bitboard restrained;      ///< blocked ones, and those whose next square an enemy pawn attacks
    Bitboard duo;             ///< own pawns with an own pawn beside them
    Bitboard doubled;         ///< all own pawns on files that hold more than one of them

    // Found before the lazy test, from `passed`.
    Bitboard front_passed;                    ///< the foremost passed pawn of each file
    std::array<std::int16_t, 8> passed_rank;  ///< by file its rank index (1 is where a pawn starts), 0 if there is none

    // Kept in the pawn hash table.
    Bitboard passed;           ///< no enemy pawn ahead on its file or a neighbouring one
    Bitboard isolated;         ///< no own pawn on a neighbouring file
    Bitboard backward;         ///< can't advance without loss, nor be supported from behind
    Bitboard backward_stuck;   ///< of these, the ones still at home that have no neighbour
    Bitboard covered;          ///< pawns with a front_distance; no term reads them
    Bitboard advance_squares;  ///< where pawns can go as far as pawns are concerned
    Bitboard centre_gaps;      ///< d4, e4, d5, e5 without a pawn, outside the attack_span; no term reads them

    // Found afresh with these, and not kept.
    Bitboard attack_span;  ///< squares diagonally ahead of own pawns and of their advance_squares
};

/// More pawns on a wing than the enemy has there.
enum class Majority : std::uint8_t { none = 0, white = 1, black = 2 };
struct MAJORITY_INFO {
    Majority kind;
    std::uint8_t count_a;  ///< files that hold the pawns of the side that has it
    std::uint8_t count_b;  ///< enemy pawns against them
};

/// What the rules count up, and what is found out once for an evaluation: clear at its start. Arrays of two are by
/// Colour.
struct EVALUATION_FINDINGS {
    Bitboard rams = 0;                   ///< pawns of both sides with a pawn directly in front
    MAJORITY_INFO majority[2] = {};      ///< by Wing, queen side and king side
    std::int16_t openness = 0;           ///< of the pawn structure, 1 to 15
    std::int16_t pawn_positional = 0;    ///< centipawns, White minus Black: what the pawn structure adds by itself,
    std::int16_t pawn_reckless = 0;      ///<   in the opening and middle game
    std::int16_t pawn_ending = 0;        ///<   and in an ending
    WingCounters pawn_pressure[2] = {};  ///< its part of pressure and cover, kept apart for the pawn hash table
    WingCounters pawn_cover[2] = {};
    bool pawn_entry_from_table = false;  ///< the pawn facts came from the pawn hash table
    bool pawn_facts_found = false;       ///< or were found afresh: a rule may give its score without them

    std::uint8_t files_without_pawn[2] = {};  ///< bit 0 is the a-file
    std::int8_t pawn_count[2] = {};
    std::int8_t only_open_file = 0;  ///< the one file without any pawn, -1 if there is none or several

    bool has_bishop_pair[2] = {};  ///< bishops on both square colours
    Wing king_wing[2] = {};

    Bitboard attacks[2] = {};           ///< squares attacked so far: each piece routine extends them
    Bitboard attacks_no_queen[2] = {};  ///< as they were before the queens

    double endgame_weight = 0.0;  ///< 0.0 to 1.0
    std::int16_t activity = 0;    ///< points, White minus Black, middle game only

    WingCounters pressure[2] = {};  ///< how much this side presses on a wing
    WingCounters cover[2] = {};     ///< how solid this side stands there

    // The danger to this side's king.
    std::int16_t king_attack[2] = {};  ///< points
    std::int16_t king_cover[2] = {};   ///< points
    double attack_factor[2] = {};      ///< 0.0 to 1.0, from king_attack
    double cover_factor[2] = {};       ///< 0.0 to 1.0, from king_cover
};

/// The working record of one evaluation.
struct EVALUATION_CONTEXT : EVALUATION_FINDINGS {
    EVALUATION_CONTEXT() noexcept = default;
    explicit EVALUATION_CONTEXT(const EVALUATION_SETTINGS* its_settings, HashTables* its_tables = nullptr,
                                const VorkaBitbases::Bitbases* its_bitbases = nullptr) noexcept
        : settings(its_settings), tables(its_tables), bitbases(its_bitbases) {}

    // What the caller sets. Not owned.
    const EVALUATION_SETTINGS* settings = nullptr;
    HashTables* tables = nullptr;                       ///< needed by evaluate, not by the terms
    const VorkaBitbases::Bitbases* bitbases = nullptr;  ///< null: none is loaded

    /// What the table knows of these pawns, for an evaluation that was not settled by its first terms. Null if nothing.
    const PAWN_HASH_ENTRY* pawn_entry = nullptr;
    /// Not cleared: every fact is found before it is read.
    PAWN_INFO pawns[2] = {};

    /// For a new evaluation: what the caller has set stays.
    void Clear() noexcept { static_cast<EVALUATION_FINDINGS&>(*this) = {}; }
};
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
