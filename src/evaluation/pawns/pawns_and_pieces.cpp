#include "evaluation/pawns/pawns_and_pieces.h"

#include <array>
#include <cstdlib>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/rule_values.h"
#include "evaluation/context/sided_squares.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/pawns/pawn_groups.h"
#include "evaluation/rules/tell.h"

namespace {

/// Whether the king stands on the half of the board where the wing is not.
bool is_on_other_half(Square king_square, Wing wing) { return (FileOf(king_square) >= 4) == (wing == queen_side); }

bool is_four_against_three(const MAJORITY_INFO& majority) { return majority.count_a == 4 && majority.count_b == 3; }

// --- Majorities ---

/// The enemy king stands far from it.
template <Colour Us>
SCORE_PAIR majority_away_from_king(EVALUATION_CONTEXT& context, Wing wing) {
    add_activity<Us>(context, 12);
    return count_on<Us>(wing, context, {.pair = {20, 7}, .pressure = 2});
}
template <Colour Us>
SCORE_PAIR majority_of_four_against_three(EVALUATION_CONTEXT& context, Wing wing) {
    add_activity<Us>(context, 20);
    return count_on<Us>(wing, context, {.pair = {5, 14}, .pressure = 5});
}

constexpr int majority_away_from_king_ending = 18;
constexpr int majority_of_four_against_three_ending = 14;

// --- Blocked centre pawns ---

/// On d2 or e2, with any piece in front.
template <Colour Us>
SCORE_PAIR centre_pawn_blocked_at_home(EVALUATION_CONTEXT& context, const BOARD& board, Square s) {
    if (!Has(board.side(Us).pawns, s) || !Has(board.occupied, square_ahead<Us>(s))) return {};
    return count_on<Us>(centre, context, {.pair = {-18, -28}, .pressure = -6, .cover = -4});
}

/// On c2 behind an own piece, which is worse where the pawns on d4 and d5 close the centre.
template <Colour Us>
SCORE_PAIR c_pawn_behind_piece(EVALUATION_CONTEXT& context, const BOARD& board) {
    constexpr RULE_VALUES closed = {.pair = {-25, -25}, .pressure = -4};
    constexpr RULE_VALUES otherwise = {.pair = {-8, -10}, .pressure = -2};
    const SIDE_PIECES& own = board.side(Us);
    if (!Has(own.pawns, Seen<Us>(c2)) || !Has(own.all & ~own.pawns, Seen<Us>(c3))) return {};
    const bool is_closed = Has(own.pawns, Seen<Us>(d4)) && Has(board.side(Opponent(Us)).pawns, Seen<Us>(d5));
    return count_on<Us>(centre, context, is_closed ? closed : otherwise);
}

// --- The isolated queen pawn ---

template <Colour Us>
bool has_isolated_queen_pawn(const EVALUATION_CONTEXT& context) {
    return Has(context.pawns[Us].isolated & ~context.pawns[Us].doubled, Seen<Us>(d4));
}

/// Both sides have one: that only weakens the centre.
template <Colour Us>
SCORE_PAIR isolated_queen_pawns_of_both(EVALUATION_CONTEXT& context) {
    return count_on<Us>(centre, context, {.pair = {}, .cover = -6});
}

/// By the material that is left, in units of both sides: pieces make it an asset.
SCORE_PAIR isolated_queen_pawn_by_material(int total_material) {
    if (total_material > 58) return {0, 25};
    if (total_material > 48) return {-6, 10};
    if (total_material > 38) return {0, 0};
    if (total_material > 28) return {-12, -4};
    return {-18, -16};
}

/// A bishop on the colour of the pawn's square, on a diagonal with it or elsewhere.
template <Colour Us>
SCORE_PAIR isolated_queen_pawn_and_bishop(EVALUATION_CONTEXT& context, Bitboard bishops) {
    constexpr RULE_VALUES on_its_diagonal = {.pair = {0, -2}, .cover = 2};
    constexpr RULE_VALUES elsewhere = {.pair = {0, 1}, .cover = 1};
    if (bishops == 0) return {};
    const bool on_diagonal = (bishops & bitboard_tables.bishop_mask[Seen<Us>(d4)]) != 0;
    return count_on<Us>(centre, context, on_diagonal ? on_its_diagonal : elsewhere);
}

/// A rook behind the pawn, on d1, d2 or d3.
template <Colour Us>
SCORE_PAIR isolated_queen_pawn_and_rook(EVALUATION_CONTEXT& context, Bitboard rooks) {
    return rooks == 0 ? SCORE_PAIR{} : count_on<Us>(centre, context, {.pair = {6, 6}, .cover = 2});
}

// --- Passed pawns ---

constexpr SCORE_PAIR rook_behind_passed_pawn = {5, 5};
constexpr SCORE_PAIR enemy_rook_behind_passed_pawn = {-4, -2};
constexpr SCORE_PAIR enemy_rook_ahead_of_passed_pawn = {-2, 0};

/// An enemy piece in front of it, by the piece and by the rank of the pawn. The enemy stands firmer on that wing.
template <Colour Us>
SCORE_PAIR passed_pawn_blocked(EVALUATION_CONTEXT& context, int piece, int rank, Wing wing) {
    static constexpr std::array<int, 7> weight_of_piece = {0, 0, 8, 7, 6, 4, 10};  // by code, knight 2 to king 6
    static constexpr std::array<SCORE_PAIR, 7> eighths_by_rank = {{
        {0, 0},
        {2, 3},  // the second rank
        {4, 4},
        {6, 5},
        {12, 10},
        {28, 30},
        {72, 83},
    }};
    constexpr int enemy_cover = 2;
    const int weight = at(weight_of_piece, piece);
    const SCORE_PAIR pair = at(eighths_by_rank, rank);
    add_points(context.cover[Opponent(Us)][wing], enemy_cover);
    return -SCORE_PAIR{weight * pair.positional() / 8, weight * pair.reckless() / 8};
}

/// On the fifth rank or beyond, with nothing in front.
template <Colour Us>
SCORE_PAIR passed_pawn_free_to_advance(EVALUATION_CONTEXT& context, Wing wing) {
    return count_on<Us>(wing, context, {.pair = {6, 8}, .pressure = 1});
}

}  // namespace

template <Colour Us, class Context>
SCORE_PAIR majority_and_king(Context& context, const BOARD& board) noexcept {
    const Square enemy_king = board.side(Opponent(Us)).king_square;
    SCORE_PAIR sum;
    for (const Wing wing : {queen_side, king_side}) {
        const MAJORITY_INFO& majority = context.majority[wing];
        if (majority.kind != majority_of[Us]) continue;
        const Bitboard pawns = board.side(Us).pawns & half_of_wing(wing);
        if (is_on_other_half(enemy_king, wing))
            sum += tell<Us>(context, Rule::majority_away_from_king, pawns | Bit(enemy_king),
                            majority_away_from_king<Us>(context, wing));
        else if (is_four_against_three(majority))
            sum += tell<Us>(context, Rule::majority_of_four_against_three, pawns,
                            majority_of_four_against_three<Us>(context, wing));
    }
    return sum;
}

template <Colour Us, class Context>
int majority_and_king_ending(Context& context, const BOARD& board) noexcept {
    const Square enemy_king = board.side(Opponent(Us)).king_square;
    int sum = 0;
    for (const Wing wing : {queen_side, king_side}) {
        const MAJORITY_INFO& majority = context.majority[wing];
        if (majority.kind != majority_of[Us]) continue;
        const Bitboard pawns = board.side(Us).pawns & half_of_wing(wing);
        if (is_on_other_half(enemy_king, wing))
            sum += tell<Us>(context, Rule::majority_away_from_king, pawns | Bit(enemy_king),
                            majority_away_from_king_ending);
        else if (is_four_against_three(majority))
            sum +=
                tell<Us>(context, Rule::majority_of_four_against_three, pawns, majority_of_four_against_three_ending);
    }
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR blocked_centre_pawns(Context& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    for (const Square s : {Seen<Us>(d2), Seen<Us>(e2)}) {
        sum += tell<Us>(context, Rule::centre_pawn_blocked_at_home, Bit(s),
                        centre_pawn_blocked_at_home<Us>(context, board, s));
    }
    sum +=
        tell<Us>(context, Rule::c_pawn_behind_piece, squares_seen<Us>(c2, c3), c_pawn_behind_piece<Us>(context, board));
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR isolated_queen_pawn_and_pieces(Context& context, const BOARD& board) noexcept {
    constexpr Bitboard colour_of_queen_pawn = Has(light_squares, Seen<Us>(d4)) ? light_squares : ~light_squares;
    constexpr Bitboard queen_pawn = squares_seen<Us>(d4);
    if (!has_isolated_queen_pawn<Us>(context)) return {};
    SCORE_PAIR sum;
    const auto count = [&](Rule rule, SCORE_PAIR pair, Bitboard with = 0) {
        sum += tell<Us>(context, rule, queen_pawn | with, pair);
    };
    if (has_isolated_queen_pawn<Opponent(Us)>(context)) {
        count(Rule::isolated_queen_pawns_of_both, isolated_queen_pawns_of_both<Us>(context));
        return sum;
    }
    const Bitboard bishops = board.side(Us).bishops & colour_of_queen_pawn;
    const Bitboard rooks = board.side(Us).rooks & squares_seen<Us>(d1, d2, d3);
    count(Rule::isolated_queen_pawn_by_material, isolated_queen_pawn_by_material(board.total_material));
    count(Rule::isolated_queen_pawn_and_bishop, isolated_queen_pawn_and_bishop<Us>(context, bishops), bishops);
    count(Rule::isolated_queen_pawn_and_rook, isolated_queen_pawn_and_rook<Us>(context, rooks), rooks);
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR passed_pawns_and_pieces(Context& context, const BOARD& board) noexcept {
    const SIDE_PIECES& own = board.side(Us);
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    SCORE_PAIR sum;
    for (Bitboard pawns = context.pawns[Us].front_passed; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        const Wing wing = narrow_wing(FileOf(s));
        const int rank = rank_seen<Us>(s);
        const auto count = [&](Rule rule, SCORE_PAIR pair, Bitboard with) {
            sum += tell<Us>(context, rule, Bit(s) | with, pair);
        };
        const Bitboard ahead = file_ahead<Us>(s);
        const Bitboard behind = file_behind<Us>(s);
        if ((own.rooks & behind) != 0)
            count(Rule::rook_behind_passed_pawn, rook_behind_passed_pawn, own.rooks & behind);
        if ((enemy.rooks & behind) != 0)
            count(Rule::enemy_rook_behind_passed_pawn, enemy_rook_behind_passed_pawn, enemy.rooks & behind);
        else if ((enemy.rooks & ahead) != 0)
            count(Rule::enemy_rook_ahead_of_passed_pawn, enemy_rook_ahead_of_passed_pawn, enemy.rooks & ahead);

        const Square next = square_ahead<Us>(s);
        if (Has(enemy.all, next))
            count(Rule::passed_pawn_blocked,
                  passed_pawn_blocked<Us>(context, std::abs(board.squares[next]), rank, wing), Bit(next));
        else if (!Has(board.occupied, next) && rank >= 4)
            count(Rule::passed_pawn_free_to_advance, passed_pawn_free_to_advance<Us>(context, wing), Bit(next));
    }
    return sum;
}

template SCORE_PAIR majority_and_king<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR majority_and_king<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR majority_and_king<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR majority_and_king<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int majority_and_king_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int majority_and_king_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int majority_and_king_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int majority_and_king_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR blocked_centre_pawns<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR blocked_centre_pawns<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR blocked_centre_pawns<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR blocked_centre_pawns<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_queen_pawn_and_pieces<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_queen_pawn_and_pieces<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_queen_pawn_and_pieces<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR isolated_queen_pawn_and_pieces<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR passed_pawns_and_pieces<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR passed_pawns_and_pieces<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR passed_pawns_and_pieces<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR passed_pawns_and_pieces<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
