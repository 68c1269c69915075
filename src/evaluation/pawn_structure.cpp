#include "evaluation/pawn_structure.h"

#include <cstddef>

namespace {

constexpr Bitboard a_file = 0x0101010101010101;
constexpr Bitboard h_file = a_file << 7;

template <Colour Us>
void build_pawn_list(EVALUATION_CONTEXT& context, const BOARD& board) {
    PAWN_INFO& info = context.pawns[Us];
    std::size_t count = 0;
    for (Bitboard pawns = board.side(Us).pawns; pawns != 0; ++count) {
        info.squares[count] = static_cast<std::uint8_t>(TakeNextBit(pawns));
    }
    info.pawn_count = static_cast<std::int16_t>(count);
}

std::uint8_t files_of(Bitboard squares) {
    squares |= squares >> 32;
    squares |= squares >> 16;
    squares |= squares >> 8;
    return static_cast<std::uint8_t>(squares & 0xFF);
}

std::int8_t count_of(std::uint8_t files) { return static_cast<std::int8_t>(PopCount(files)); }

template <Colour Us>
void find_attacks_of_pawns(EVALUATION_CONTEXT& context, const BOARD& board) {
    const Bitboard pawns = board.side(Us).pawns;
    const Bitboard to_the_left = Us == white ? (pawns & ~a_file) << 7 : (pawns & ~a_file) >> 9;
    const Bitboard to_the_right = Us == white ? (pawns & ~h_file) << 9 : (pawns & ~h_file) >> 7;
    PAWN_INFO& info = context.pawns[Us];
    info.attacks = to_the_left | to_the_right;
    info.attacked_once = to_the_left ^ to_the_right;
    info.attacked_twice = to_the_left & to_the_right;
}

}  // namespace

void build_pawn_lists(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    build_pawn_list<white>(context, board);
    build_pawn_list<black>(context, board);
}

void find_open_files(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    for (const Colour side : {white, black}) {
        const auto closed = static_cast<unsigned>(files_of(board.side(side).pawns));
        context.files_without_pawn[side] = static_cast<std::uint8_t>(~closed);
        context.count_of_files_without_pawn[side] = count_of(context.files_without_pawn[side]);
    }
    const auto open = static_cast<std::uint8_t>(context.files_without_pawn[white] & context.files_without_pawn[black]);
    context.only_open_file = static_cast<std::int8_t>(count_of(open) == 1 ? FindLowestBit(open) : -1);
}

void find_pawn_attacks(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    find_attacks_of_pawns<white>(context, board);
    find_attacks_of_pawns<black>(context, board);
}

void find_pawn_facts(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept {}

SCORE_PAIR pawn_structure(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/, PositionType /*type*/) noexcept {
    return {};
}

int pawn_structure_ending(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept { return 0; }
