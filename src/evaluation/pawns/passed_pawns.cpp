#include "evaluation/pawns/passed_pawns.h"

#include <array>
#include <cstddef>
#include <cstdlib>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/sided_squares.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/rules/tell.h"

namespace {

/// The enemy pawns that could still stop or take a pawn are those in the three files ahead of it.
template <Colour Us>
void find_passed(EVALUATION_CONTEXT& context, const BOARD& board) {
    const Bitboard enemy_pawns = board.side(Opponent(Us)).pawns;
    PAWN_INFO& info = context.pawns[Us];
    info.passed = 0;
    for (Bitboard pawns = board.side(Us).pawns; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        if ((front_span<Us>(s) & enemy_pawns) == 0) info.passed |= Bit(s);
    }
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

/// The foremost passed pawn of a file, by file and rank.
SCORE_PAIR passed_pawn(int file, int rank) {
    static constexpr std::array<int, 8> eighths_by_file = {7, 8, 7, 5, 5, 7, 8, 7};
    static constexpr std::array<SCORE_PAIR, 7> by_rank = {{
        {0, 0},
        {10, 5},  // the second rank
        {12, 7},
        {18, 10},
        {30, 20},
        {55, 46},
        {140, 140},
    }};
    const SCORE_PAIR pair = at(by_rank, rank);
    return {at(eighths_by_file, file) * pair.positional() / 8, at(eighths_by_file, file) * pair.reckless() / 8};
}

template <Colour Us, class Context>
SCORE_PAIR passed_pawns_of(Context& context) {
    SCORE_PAIR sum;
    for (Bitboard pawns = context.pawns[Us].front_passed; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        sum += tell<Us>(context, Rule::passed_pawn, Bit(s), passed_pawn(FileOf(s), rank_seen<Us>(s)));
    }
    return sum;
}

// --- Endings ---

int passed_pawn_ending(int file, int rank) {
    static constexpr std::array<int, 8> eighths_by_file = {9, 9, 8, 7, 7, 8, 9, 9};
    static constexpr std::array<int, 7> by_rank = {0, 30, 35, 53, 85, 115, 200};
    return at(eighths_by_file, file) * at(by_rank, rank) / 8;
}

// Rooks on the pawn's file belong behind it.
constexpr int rook_behind_passed_pawn_ending = 12;
constexpr int rook_ahead_of_passed_pawn_ending = -8;
constexpr int enemy_rook_behind_passed_pawn_ending = -10;
constexpr int enemy_rook_ahead_of_passed_pawn_ending = -4;

/// An enemy piece in front of it.
int passed_pawn_blocked_ending(int piece, int rank) {
    static constexpr std::array<int, 7> weight_of_piece = {0, 0, 8, 7, 4, 4, 9};  // by code, knight 2 to king 6
    static constexpr std::array<int, 7> eighths_by_rank = {0, 4, 5, 12, 27, 40, 85};
    return -(at(weight_of_piece, piece) * at(eighths_by_rank, rank) / 8);
}
/// On the fifth rank or beyond, with nothing in front.
constexpr int passed_pawn_free_to_advance_ending = 6;

/// How near both kings are to the pawn and to the square where it promotes.
template <Colour Us>
int kings_near_passed_pawn_ending(const BOARD& board, Square s) {
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

template <Colour Us, class Context>
int passed_pawns_ending_of(Context& context, const BOARD& board) {
    const SIDE_PIECES& own = board.side(Us);
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    int sum = 0;
    for (Bitboard pawns = context.pawns[Us].front_passed; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        const int rank = rank_seen<Us>(s);
        const auto count = [&](Rule rule, int value, Bitboard with = 0) {
            sum += tell<Us>(context, rule, Bit(s) | with, value);
        };
        count(Rule::passed_pawn, passed_pawn_ending(FileOf(s), rank));

        const Bitboard behind = file_behind<Us>(s);
        if (const Bitboard rooks = own.rooks & file_mask(FileOf(s)); (rooks & behind) != 0)
            count(Rule::rook_behind_passed_pawn, rook_behind_passed_pawn_ending, rooks);
        else if (rooks != 0)
            count(Rule::rook_ahead_of_passed_pawn, rook_ahead_of_passed_pawn_ending, rooks);
        if (const Bitboard rooks = enemy.rooks & file_mask(FileOf(s)); (rooks & behind) != 0)
            count(Rule::enemy_rook_behind_passed_pawn, enemy_rook_behind_passed_pawn_ending, rooks);
        else if (rooks != 0)
            count(Rule::enemy_rook_ahead_of_passed_pawn, enemy_rook_ahead_of_passed_pawn_ending, rooks);

        const Square next = square_ahead<Us>(s);
        if (Has(enemy.all, next))
            count(Rule::passed_pawn_blocked, passed_pawn_blocked_ending(std::abs(board.squares[next]), rank),
                  Bit(next));
        else if (!Has(board.occupied, next) && rank >= 4)
            count(Rule::passed_pawn_free_to_advance, passed_pawn_free_to_advance_ending, Bit(next));
        count(Rule::kings_near_passed_pawn, kings_near_passed_pawn_ending<Us>(board, s),
              Bit(own.king_square) | Bit(enemy.king_square));
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

template <class Context>
SCORE_PAIR passed_pawns(Context& context, const BOARD& /*board*/) noexcept {
    find_foremost_passed_pawns(context);
    const SCORE_PAIR of_white = passed_pawns_of<white>(context);
    return of_white - passed_pawns_of<black>(context);
}

template <class Context>
int passed_pawns_ending(Context& context, const BOARD& board) noexcept {
    find_foremost_passed_pawns(context);
    const int of_white = passed_pawns_ending_of<white>(context, board);
    return of_white - passed_pawns_ending_of<black>(context, board);
}

template SCORE_PAIR passed_pawns(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR passed_pawns(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int passed_pawns_ending(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int passed_pawns_ending(TRACED_CONTEXT& context, const BOARD& board) noexcept;
