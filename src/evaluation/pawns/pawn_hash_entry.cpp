#include "evaluation/pawns/pawn_hash_entry.h"

#include <cstddef>
#include <cstdlib>

#include "evaluation/context/position_type.h"
#include "frame/base/checked_assert.h"
#include "frame/base/vocabulary.h"

// The packed word, from the lowest bit on:
//
//   bits    queen side          bits     king side
//   0-1     kind                11-12    kind
//   2-4     count_a             13-15    count_a
//   5-7     count_b             16-18    count_b
//   8-10    the rim file, 0     19-21    the rim file, 7       (0 where there is no majority)
//   22-     openness
//
// A word of counters holds three numbers, for the wings 0, 1 and 2, ten bits each: the sign, then nine bits of
// magnitude. They never come near that size.

namespace {

constexpr unsigned king_side_shift = 11;
constexpr unsigned openness_shift = 22;
constexpr unsigned rim_file[2] = {0, 7};

constexpr unsigned counter_bits = 10;
constexpr std::uint32_t magnitude_mask = 0x1FF;

/// Reported as an assertion of `hash`, as everything that is wrong with a table is.
void expect_type_with_pawns(int position_type) {
    if (position_type != pawnless) return;
    FailAssertion(vocabulary::pawn_hash_type_condition, "hash", __LINE__, vocabulary::unexpected_position_type);
}

void expect_pawns_of(const PAWN_HASH_ENTRY& entry, Bitboard pawns) {
    const Bitboard stored = entry.passed | entry.isolated | entry.backward | entry.backward_stuck | entry.covered;
    if ((stored & ~pawns) == 0) return;
    FailAssertion(vocabulary::pawn_hash_subset_condition, "hash", __LINE__, vocabulary::pawn_hash_collision_detected);
}

std::uint32_t pack_majority(const MAJORITY_INFO& majority, Wing wing) {
    if (majority.kind == Majority::none) return 0;
    return static_cast<std::uint32_t>(majority.kind) | static_cast<std::uint32_t>(majority.count_a) << 2 |
           static_cast<std::uint32_t>(majority.count_b) << 5 | rim_file[wing] << 8;
}

MAJORITY_INFO unpack_majority(std::uint32_t word) {
    return {.kind = static_cast<Majority>(word & 3U),
            .count_a = static_cast<std::uint8_t>(word >> 2 & 7U),
            .count_b = static_cast<std::uint8_t>(word >> 5 & 7U)};
}

std::uint32_t pack_counters(const WingCounters& counters) {
    std::uint32_t word = 0;
    for (unsigned wing = 0; wing < counters.size(); ++wing) {
        const int points = counters[wing];
        const std::uint32_t magnitude = static_cast<std::uint32_t>(std::abs(points)) & magnitude_mask;
        word |= ((points < 0 ? 1U : 0U) | magnitude << 1) << counter_bits * wing;
    }
    return word;
}

WingCounters unpack_counters(std::uint32_t word) {
    WingCounters counters{};
    for (unsigned wing = 0; wing < counters.size(); ++wing) {
        const std::uint32_t bits = word >> counter_bits * wing;
        const int magnitude = static_cast<int>(bits >> 1 & magnitude_mask);
        counters[wing] = static_cast<std::int16_t>((bits & 1U) != 0 ? -magnitude : magnitude);
    }
    return counters;
}

}  // namespace

PAWN_HASH_ENTRY construct_pawn_entry(const EVALUATION_CONTEXT& context, const BOARD& board,
                                     int position_type) noexcept {
    expect_type_with_pawns(position_type);
    const PAWN_INFO& w = context.pawns[white];
    const PAWN_INFO& b = context.pawns[black];
    PAWN_HASH_ENTRY entry{
        .pawn_key = board.frame().pawn_key,
        .position_type = static_cast<std::uint8_t>(position_type),
        .packed = pack_majority(context.majority[queen_side], queen_side) |
                  pack_majority(context.majority[king_side], king_side) << king_side_shift |
                  static_cast<std::uint32_t>(context.openness) << openness_shift,
        .passed = w.passed | b.passed,
        .isolated = w.isolated | b.isolated,
        .backward = w.backward | b.backward,
        .backward_stuck = w.backward_stuck | b.backward_stuck,
        .covered = w.covered | b.covered,
        .advance_squares = {w.advance_squares, b.advance_squares},
        .centre_gaps = {w.centre_gaps, b.centre_gaps},
        .ending = context.pawn_ending,
    };
    if (position_type <= middle_game) {
        entry.positional = context.pawn_positional;
        entry.reckless = context.pawn_reckless;
        for (const Colour side : {white, black}) {
            entry.counters[2 * side] = pack_counters(context.pawn_pressure[side]);
            entry.counters[2 * side + 1] = pack_counters(context.pawn_cover[side]);
        }
    }
    return entry;
}

void restore_passed_pawns(const PAWN_HASH_ENTRY& entry, EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    expect_type_with_pawns(entry.position_type);
    expect_pawns_of(entry, board.side(white).pawns | board.side(black).pawns);
    for (const Colour side : {white, black}) context.pawns[side].passed = entry.passed & board.side(side).pawns;
}

void restore_pawn_entry(const PAWN_HASH_ENTRY& entry, EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    restore_passed_pawns(entry, context, board);
    context.pawn_entry_from_table = true;
    context.majority[queen_side] = unpack_majority(entry.packed);
    context.majority[king_side] = unpack_majority(entry.packed >> king_side_shift);
    context.openness = static_cast<std::int16_t>(entry.packed >> openness_shift);
    for (const Colour side : {white, black}) {
        const Bitboard pawns = board.side(side).pawns;
        PAWN_INFO& info = context.pawns[side];
        info.isolated = entry.isolated & pawns;
        info.backward = entry.backward & pawns;
        info.backward_stuck = entry.backward_stuck & pawns;
        info.covered = entry.covered & pawns;
        info.advance_squares = entry.advance_squares[side];
        info.centre_gaps = entry.centre_gaps[side];
    }
    context.pawn_ending = entry.ending;
    if (entry.position_type > middle_game) return;
    context.pawn_positional = entry.positional;
    context.pawn_reckless = entry.reckless;
    for (const Colour side : {white, black}) {
        context.pawn_pressure[side] = unpack_counters(entry.counters[2 * side]);
        context.pawn_cover[side] = unpack_counters(entry.counters[2 * side + 1]);
    }
}
