#include "evaluation/pawns/pawn_structure.h"

#include <algorithm>
#include <cstddef>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/pawns/front_distance.h"
#include "evaluation/pawns/pawn_groups.h"

// By whole sets of squares: nearly all facts are two or three shifts.

namespace {

constexpr Bitboard centre_square_set = squares_seen<white>(d4, e4, d5, e5);
constexpr Bitboard centre_files = files(2, 5);  // c to f

Bitboard all_pawns(const BOARD& board) { return board.side(white).pawns | board.side(black).pawns; }

std::uint8_t files_of(Bitboard squares) {
    squares |= squares >> 32;
    squares |= squares >> 16;
    squares |= squares >> 8;
    return static_cast<std::uint8_t>(squares & 0xFF);
}

template <Colour Us>
void find_attacked_squares(EVALUATION_CONTEXT& context, const BOARD& board) {
    const Bitboard ahead = one_ahead<Us>(board.side(Us).pawns);
    PAWN_INFO& info = context.pawns[Us];
    info.attacks = one_left(ahead) | one_right(ahead);
    info.attacked_once = one_left(ahead) ^ one_right(ahead);
    info.attacked_twice = one_left(ahead) & one_right(ahead);
}

/// The pawns with another one of their own on the same file.
Bitboard find_doubled(Bitboard pawns) {
    Bitboard north = pawns << 8;
    Bitboard south = pawns >> 8;
    for (const int ranks : {1, 2, 4}) {
        north |= north << 8 * ranks;
        south |= south >> 8 * ranks;
    }
    return pawns & (north | south);
}

/// Needs the attacked squares of both sides.
template <Colour Us>
void find_neighbourhood(EVALUATION_CONTEXT& context, const BOARD& board) {
    constexpr Colour Them = Opponent(Us);
    const Bitboard pawns = board.side(Us).pawns;
    const PAWN_INFO& enemy = context.pawns[Them];
    PAWN_INFO& info = context.pawns[Us];
    info.dominated = (info.attacks & ~enemy.attacks) | (info.attacked_twice & enemy.attacked_once);
    info.defended = pawns & info.attacks;
    info.blocked = pawns & one_ahead<Them>(board.occupied);
    info.restrained = info.blocked | (pawns & one_ahead<Them>(enemy.attacks));
    info.duo = pawns & (one_left(pawns) | one_right(pawns));
    info.doubled = find_doubled(pawns);
}

/// Where the pawns can go: step by step, all pawns at once. A square that the enemy dominates is the last of its run.
template <Colour Us>
Bitboard find_advance_squares(Bitboard pawns, Bitboard every_pawn, Bitboard dominated_by_enemy) {
    Bitboard found = 0;
    Bitboard step = one_ahead<Us>(pawns) & ~every_pawn;
    while (step != 0) {
        found |= step;
        step = one_ahead<Us>(step & ~dominated_by_enemy) & ~every_pawn;
    }
    return found;
}

template <Colour Us>
void find_spans(EVALUATION_CONTEXT& context, const BOARD& board) {
    const Bitboard pawns = board.side(Us).pawns;
    PAWN_INFO& info = context.pawns[Us];
    info.advance_squares = find_advance_squares<Us>(pawns, all_pawns(board), context.pawns[Opponent(Us)].dominated);
    const Bitboard ahead = one_ahead<Us>(pawns | info.advance_squares);
    info.attack_span = one_left(ahead) | one_right(ahead);
    info.centre_gaps = centre_square_set & ~all_pawns(board) & ~info.attack_span;
}

Bitboard find_isolated(Bitboard pawns) {
    const Bitboard occupied_files = fill_files(pawns);
    return pawns & ~(one_left(occupied_files) | one_right(occupied_files));
}

/// Pawns whose next square the enemy dominates while no own pawn can come to its help. A pawn on its first square that
/// could step forward is also tried one square ahead, where it has no neighbour, and is charged on its own square.
template <Colour Us>
void find_backward(EVALUATION_CONTEXT& context, const BOARD& board) {
    constexpr Colour Them = Opponent(Us);
    constexpr Bitboard own_second_rank = ranks<Us>(1, 1);
    const Bitboard pawns = board.side(Us).pawns;
    const Bitboard every_pawn = all_pawns(board);
    PAWN_INFO& info = context.pawns[Us];
    const auto keep = [&](Bitboard candidates) {
        return candidates & one_ahead<Them>(context.pawns[Them].dominated & ~every_pawn) & ~info.attack_span;
    };
    const Bitboard where_they_stand = keep(pawns);
    const Bitboard one_step_on = one_ahead<Them>(keep(one_ahead<Us>(pawns & own_second_rank) & ~every_pawn));
    info.backward = (where_they_stand & ~(info.duo & ranks<Us>(3, 7))) | one_step_on;
    info.backward_stuck = (where_they_stand & ranks<Us>(1, 2) & ~info.duo) | one_step_on;
}

template <Colour Us>
void find_covered(EVALUATION_CONTEXT& context, const BOARD& board) {
    PAWN_INFO& info = context.pawns[Us];
    info.covered = 0;
    for (Bitboard pawns = board.side(Us).pawns; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        if (front_distance<Us>(context, board, s) != 0) info.covered |= Bit(s);
    }
}

Bitboard find_rams(const BOARD& board) {
    const Bitboard every_pawn = all_pawns(board);
    return (board.side(white).pawns & (every_pawn >> 8)) | (board.side(black).pawns & (every_pawn << 8));
}

int loosening_by(int files_without_pawn) { return std::min(files_without_pawn, 2); }

std::int16_t find_openness(const EVALUATION_CONTEXT& context, const BOARD& board) {
    const Bitboard every_pawn = all_pawns(board);
    int openness = 12;
    openness += loosening_by(PopCount(context.files_without_pawn[white]));
    openness += loosening_by(PopCount(context.files_without_pawn[black]));
    if ((context.files_without_pawn[white] & context.files_without_pawn[black]) == 0) openness -= 2;
    openness -=
        ((context.pawn_count[white] + context.pawn_count[black]) >> 3) + (PopCount(every_pawn & centre_files) >> 1);
    if (context.rams != 0) openness += 2 - PopCount(context.rams) - 2 * PopCount(context.rams & centre_files);
    return static_cast<std::int16_t>(std::clamp(openness, 1, 15));
}

/// The walk from the rim of a wing over five files towards the other. A side has the majority as soon as its pawns
/// stand on more files than the enemy has pawns there and on the next file.
MAJORITY_INFO find_majority(const BOARD& board, int rim, int step) {
    int pawns[2] = {};
    int files_with_pawn[2] = {};
    const auto pawns_on = [&](Colour side, int file) {
        return count_on_file(board.side(side).pawns & file_mask(file), file);
    };
    for (int n = 0; n <= 4; ++n) {
        const int file = rim + n * step;
        for (const Colour side : {white, black}) {
            pawns[side] += pawns_on(side, file);
            if (pawns_on(side, file) != 0) ++files_with_pawn[side];
        }
        if (n == 0) continue;
        if (n == 3 && pawns[white] <= 1 && pawns[black] < 2) break;
        if (n == 4 && pawns[white] <= 3 && pawns[black] < 4) break;
        for (const Colour side : {white, black}) {
            const int against = pawns[Opponent(side)] + pawns_on(Opponent(side), file + step);
            if (files_with_pawn[side] <= against) continue;
            return {.kind = majority_of[side],
                    .count_a = static_cast<std::uint8_t>(files_with_pawn[side]),
                    .count_b = static_cast<std::uint8_t>(against)};
        }
    }
    return {};
}

}  // namespace

void find_open_files(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    for (const Colour side : {white, black}) {
        const Bitboard pawns = board.side(side).pawns;
        const auto closed = static_cast<unsigned>(files_of(pawns));
        context.files_without_pawn[side] = static_cast<std::uint8_t>(~closed);
        context.pawn_count[side] = static_cast<std::int8_t>(PopCount(pawns));
    }
    const auto open = static_cast<std::uint8_t>(context.files_without_pawn[white] & context.files_without_pawn[black]);
    context.only_open_file = static_cast<std::int8_t>(open != 0 && !HasSeveral(open) ? FindLowestBit(open) : -1);
}

void find_pawn_attacks(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    find_attacked_squares<white>(context, board);
    find_attacked_squares<black>(context, board);
    find_neighbourhood<white>(context, board);
    find_neighbourhood<black>(context, board);
}

void find_pawn_facts(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    context.pawn_facts_found = true;
    context.rams = find_rams(board);
    context.openness = find_openness(context, board);
    context.pawns[white].isolated = find_isolated(board.side(white).pawns);
    context.pawns[black].isolated = find_isolated(board.side(black).pawns);
    find_spans<white>(context, board);
    find_spans<black>(context, board);
    find_backward<white>(context, board);
    find_backward<black>(context, board);
    find_covered<white>(context, board);
    find_covered<black>(context, board);
    context.majority[queen_side] = find_majority(board, 0, +1);
    context.majority[king_side] = find_majority(board, 7, -1);
}
