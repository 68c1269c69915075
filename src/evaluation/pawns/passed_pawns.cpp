#include "evaluation/pawns/passed_pawns.h"

#include <array>
#include <cstddef>
#include <cstdlib>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/table_lookup.h"

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

// --- Endings ---

int by_file_and_rank_ending(int file, int rank) {
    static constexpr std::array<int, 8> by_file = {9, 9, 8, 7, 7, 8, 9, 9};
    static constexpr std::array<int, 7> by_rank = {0, 30, 35, 53, 85, 115, 200};
    return at(by_file, file) * at(by_rank, rank) / 8;
}

/// Rooks of both sides on the pawn's file: they belong behind it.
template <Colour Us>
int rooks_on_file(const BOARD& board, Square s) {
    const Bitboard behind = Us == white ? bitboard_tables.ray_south[s] : bitboard_tables.ray_north[s];
    const Bitboard on_file = file_mask(FileOf(s));
    const auto by_place = [&](Bitboard rooks, int if_behind, int otherwise) {
        if ((rooks & on_file) == 0) return 0;
        return (rooks & behind) != 0 ? if_behind : otherwise;
    };
    return by_place(board.side(Us).rooks, 12, -8) - by_place(board.side(Opponent(Us)).rooks, 10, 4);
}

/// The square in front of the pawn: what stands in the way, or the way is free.
template <Colour Us>
int way_ahead(const BOARD& board, Square s, int rank) {
    static constexpr std::array<int, 7> by_piece = {0, 0, 8, 7, 4, 4, 9};
    static constexpr std::array<int, 7> by_rank = {0, 4, 5, 12, 27, 40, 85};
    const Square next = square_ahead<Us>(s);
    if (Has(board.side(Opponent(Us)).all, next)) {
        return -(at(by_piece, std::abs(board.squares[next])) * at(by_rank, rank) / 8);
    }
    return !Has(board.occupied, next) && rank >= 4 ? 6 : 0;
}

/// How near both kings are to the pawn and to the square where it promotes.
template <Colour Us>
int kings_near_pawn(const BOARD& board, Square s) {
    // By distance, that of a king to the pawn at least 1.
    static constexpr std::array<int, 8> own_to_pawn = {0, 4, 3, 0, -2, -3, -5, -6};
    static constexpr std::array<int, 8> enemy_to_pawn = {0, 5, 3, 1, 0, -3, -6, -9};
    static constexpr std::array<int, 8> own_to_end = {6, 6, 3, 0, -3, -4, -5, -6};
    static constexpr std::array<int, 8> enemy_to_end = {5, 5, 3, -1, -5, -12, -16, -20};
    const Square end = Seen<Us>(a8 + FileOf(s));
    const auto& own = bitboard_tables.distance[board.side(Us).king_square];
    const auto& enemy = bitboard_tables.distance[board.side(Opponent(Us)).king_square];
    return at(own_to_pawn, own[s]) - at(enemy_to_pawn, enemy[s]) + at(own_to_end, own[end]) -
           at(enemy_to_end, enemy[end]);
}

template <Colour Us>
int sum_ending(const PAWN_INFO& info, const BOARD& board) {
    int sum = 0;
    for (Bitboard pawns = info.front_passed; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        const int rank = rank_seen<Us>(s);
        sum += by_file_and_rank_ending(FileOf(s), rank);
        sum += rooks_on_file<Us>(board, s);
        sum += way_ahead<Us>(board, s, rank);
        sum += kings_near_pawn<Us>(board, s);
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

int passed_pawns_ending(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    find_foremost_passed_pawns(context);
    return sum_ending<white>(context.pawns[white], board) - sum_ending<black>(context.pawns[black], board);
}
