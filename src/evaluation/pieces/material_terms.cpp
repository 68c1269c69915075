#include "evaluation/pieces/material_terms.h"

#include <numeric>

#include "evaluation/rules/tell.h"

namespace {

// --- The bishop pair ---

bool has_bishops_on_both_colours(const SIDE_PIECES& side) {
    return (side.bishops & light_squares) != 0 && (side.bishops & ~light_squares) != 0;
}

constexpr SCORE_PAIR pair_of_bishops = {50, 50};
constexpr int pair_of_bishops_ending = 55;

template <Colour Us, class Context, class Value>
Value pair_of_bishops_of(Context& context, const BOARD& board, Value value) {
    if (!context.has_bishop_pair[Us]) return {};
    return tell<Us>(context, Rule::pair_of_bishops, board.side(Us).bishops, value);
}

// --- Unequal pieces ---

// In material units: heavy_points count a rook 1 and a queen 2, minor_points a knight or bishop 3.
constexpr SCORE_PAIR rook_or_more_ahead = {400, 180};
constexpr SCORE_PAIR minor_piece_ahead = {160, 160};
constexpr SCORE_PAIR minor_piece_ahead_without_pawns = {-120, -120};
constexpr SCORE_PAIR two_minor_pieces_for_rook = {130, 180};
constexpr SCORE_PAIR three_minor_pieces_for_two_rooks = {50, 100};

/// For the side that is ahead, or that has more minor pieces where the leads balance.
template <Colour Us, class Context>
SCORE_PAIR imbalance_of(Context& context, const BOARD& board, int heavy_lead, int minor_lead) {
    const SIDE_PIECES& own = board.side(Us);
    const Bitboard pieces = own.all & ~own.pawns & ~Bit(own.king_square);
    const auto told = [&](Rule rule, SCORE_PAIR pair) { return tell<Us>(context, rule, pieces, pair); };
    if (5 * heavy_lead + minor_lead >= 4) return told(Rule::rook_or_more_ahead, rook_or_more_ahead);

    // What is left has a lead of three units at most.
    if (minor_lead == 3 && heavy_lead == 0) {
        return own.pawns == 0 ? told(Rule::minor_piece_ahead_without_pawns, minor_piece_ahead_without_pawns)
                              : told(Rule::minor_piece_ahead, minor_piece_ahead);
    }
    if (minor_lead == 6 && heavy_lead == -1) return told(Rule::two_minor_pieces_for_rook, two_minor_pieces_for_rook);
    if (minor_lead == 9 && heavy_lead == -2) {
        return told(Rule::three_minor_pieces_for_two_rooks, three_minor_pieces_for_two_rooks);
    }
    return {};
}

// --- One pawn more ---

int total(const WingCounters& counters) { return std::accumulate(counters.begin(), counters.end(), 0); }

/// For the side that is a pawn up, by the pressure of both sides over the whole board.
template <Colour Us>
SCORE_PAIR pawn_ahead(const EVALUATION_CONTEXT& context) {
    const int own_pressure = total(context.pressure[Us]);
    const int enemy_pressure = total(context.pressure[Opponent(Us)]);
    if (enemy_pressure < 0) return {20, 12};
    if (own_pressure < enemy_pressure >> 1 && enemy_pressure > own_pressure + 20) return {4, -10};
    if (enemy_pressure > own_pressure + 10) return {13, -4};
    return {16, 0};
}

}  // namespace

void find_bishop_pairs(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    context.has_bishop_pair[white] = has_bishops_on_both_colours(board.white_pieces());
    context.has_bishop_pair[black] = has_bishops_on_both_colours(board.black_pieces());
}

template <class Context>
SCORE_PAIR bishop_pair(Context& context, const BOARD& board) noexcept {
    const SCORE_PAIR of_white = pair_of_bishops_of<white>(context, board, pair_of_bishops);
    return of_white - pair_of_bishops_of<black>(context, board, pair_of_bishops);
}

template <class Context>
int bishop_pair_ending(Context& context, const BOARD& board) noexcept {
    const int of_white = pair_of_bishops_of<white>(context, board, pair_of_bishops_ending);
    return of_white - pair_of_bishops_of<black>(context, board, pair_of_bishops_ending);
}

template <class Context>
SCORE_PAIR material_imbalance(Context& context, const BOARD& board) noexcept {
    const int heavy_lead = board.side(white).heavy_points - board.side(black).heavy_points;
    const int minor_lead = board.side(white).minor_points - board.side(black).minor_points;
    const int lead = 5 * heavy_lead + minor_lead;
    const bool is_decisive = lead >= 4 || lead <= -4;
    if (!is_decisive && minor_lead == 0) return {};
    return (is_decisive ? lead : minor_lead) > 0 ? imbalance_of<white>(context, board, heavy_lead, minor_lead)
                                                 : -imbalance_of<black>(context, board, -heavy_lead, -minor_lead);
}

template <class Context>
SCORE_PAIR pawn_balance(Context& context, const BOARD& board) noexcept {
    const int lead = context.pawn_count[white] - context.pawn_count[black];
    if (lead == 1) return tell<white>(context, Rule::pawn_ahead, board.side(white).pawns, pawn_ahead<white>(context));
    if (lead == -1) return -tell<black>(context, Rule::pawn_ahead, board.side(black).pawns, pawn_ahead<black>(context));
    return {};
}

template SCORE_PAIR bishop_pair(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR bishop_pair(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int bishop_pair_ending(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int bishop_pair_ending(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR material_imbalance(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR material_imbalance(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR pawn_balance(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR pawn_balance(TRACED_CONTEXT& context, const BOARD& board) noexcept;
