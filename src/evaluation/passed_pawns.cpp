#include "evaluation/passed_pawns.h"

#include <array>
#include <cstddef>

#include "chess/bitboard_tables.h"
#include "evaluation/board_areas.h"

namespace {

/// By file, in eighths of the value by rank.
constexpr std::array<int, 8> passed_by_file = {7, 8, 7, 5, 5, 7, 8, 7};
constexpr std::array<SCORE_PAIR, 7> passed_by_rank = {{
    {0, 0},
    {10, 5},  // the second rank
    {12, 7},
    {18, 10},
    {30, 20},
    {55, 46},
    {140, 140},
}};

/// The enemy pawns that could still stop or take a pawn are those in the three files ahead of it.
template <Colour Us>
void find_passed(EVALUATION_CONTEXT& context, const BOARD& board) {
    const Bitboard enemy_pawns = board.side(Opponent(Us)).pawns;
    PAWN_INFO& info = context.pawns[Us];
    info.passed = 0;
    for (Bitboard pawns = board.side(Us).pawns; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        const Bitboard ahead =
            Us == white ? bitboard_tables.white_pawn_front_span[s] : bitboard_tables.black_pawn_front_span[s];
        if ((ahead & enemy_pawns) == 0) info.passed |= Bit(s);
    }
    info.passed_count = static_cast<std::int16_t>(PopCount(info.passed));
}

template <Colour Us>
void find_foremost(PAWN_INFO& info) {
    info.front_passed = 0;
    info.passed_rank = {};
    for (Bitboard rest = info.passed; rest != 0;) {
        const int file = FileOf(FindLowestBit(rest));
        const Square s = foremost<Us>(rest & file_mask(file));
        rest &= ~file_mask(file);
        info.front_passed |= Bit(s);
        info.passed_rank[static_cast<std::size_t>(file)] = static_cast<std::int16_t>(rank_seen<Us>(s));
    }
}

SCORE_PAIR sum_by_file_and_rank(const PAWN_INFO& info) {
    SCORE_PAIR sum;
    for (Bitboard pawns = info.front_passed; pawns != 0;) {
        const auto file = static_cast<std::size_t>(FileOf(TakeNextBit(pawns)));
        const SCORE_PAIR pair = passed_by_rank[static_cast<std::size_t>(info.passed_rank[file])];
        sum += {passed_by_file[file] * pair.positional() / 8, passed_by_file[file] * pair.reckless() / 8};
    }
    return sum;
}

}  // namespace

void find_passed_pawns(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    find_passed<white>(context, board);
    find_passed<black>(context, board);
}

void find_foremost_passed_pawns(EVALUATION_CONTEXT& context) noexcept {
    find_foremost<white>(context.pawns[white]);
    find_foremost<black>(context.pawns[black]);
}

SCORE_PAIR passed_pawns(EVALUATION_CONTEXT& context, const BOARD& /*board*/) noexcept {
    find_foremost_passed_pawns(context);
    return sum_by_file_and_rank(context.pawns[white]) - sum_by_file_and_rank(context.pawns[black]);
}

int passed_pawns_ending(EVALUATION_CONTEXT& context, const BOARD& /*board*/) noexcept {
    find_foremost_passed_pawns(context);
    return 0;
}

UNSTOPPABLE_BONUS unstoppable_bonus(const EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept {
    return {};
}

int checked_unstoppable_bonus(const EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/,
                              RunnerCheck /*check*/) noexcept {
    return 0;
}
