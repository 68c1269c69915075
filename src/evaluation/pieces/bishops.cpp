#include "evaluation/pieces/bishops.h"

#include <algorithm>
#include <array>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/rule_values.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/pieces/ending_tables.h"
#include "evaluation/pieces/piece_tables.h"
#include "evaluation/rules/tell.h"

namespace {

using piece_tables::value_at;

// --- Squares ---

constexpr Bitboard a1_h8 = 0x8040201008040201;
constexpr Bitboard h1_a8 = 0x0102040810204080;
constexpr Bitboard long_diagonals = a1_h8 | h1_a8;
constexpr Bitboard border = files(0, 0) | files(7, 7) | ranks<white>(0, 0) | ranks<white>(7, 7);
constexpr Bitboard four_centre_squares = squares_seen<white>(d4, e4, d5, e5);
constexpr Bitboard ring_around_centre = squares_seen<white>(c3, d3, e3, f3, c4, f4, c5, f5, c6, d6, e6, f6);
static_assert(ring_around_centre == 0x00003C24243C0000);

/// Where pawns shut in the bishop of a square colour, seen from its side.
constexpr Bitboard light_central_set = squares_seen<white>(e2, d3, f3, c4, e4, d5);
constexpr Bitboard dark_central_set = squares_seen<white>(d2, c3, e3, d4, f4, e5);
static_assert(light_central_set == 0x0000000814281000 && dark_central_set == 0x0000001028140800);

/// All squares of the colour of `s`.
Bitboard square_colour_of(Square s) { return Has(light_squares, s) ? light_squares : ~light_squares; }

/// One bishop, with what its rules hand on.
struct BishopState {
    Square square;
    Bitboard attacks;
    bool is_free = false;  ///< on an open long diagonal
    int mobility = 0;
};

template <Colour Us>
SCORE_PAIR bishop_on_square(const BishopState& bishop) {
    return {value_at<Us>(piece_tables::bishop_positional, bishop.square),
            value_at<Us>(piece_tables::bishop_reckless, bishop.square)};
}

// --- The long diagonals ---

/// A corner that a bishop looks out of, along a long diagonal.
template <Colour Us>
struct LongDiagonal {
    Bitboard squares;
    Bitboard pawns;                ///< of both sides on it
    Wing own_wing, opposite_wing;  ///< where it begins, and where it ends
    Square front_pawn;             ///< the square before the bishop of a fianchetto, b3 or g3
    Square fianchetto;             ///< b2 or g2
};

template <Colour Us>
LongDiagonal<Us> find_long_diagonal(Square s, Bitboard every_pawn, bool on_right) {
    const Bitboard squares = Has(a1_h8, s) ? a1_h8 : h1_a8;
    return {
        .squares = squares,
        .pawns = every_pawn & squares,
        .own_wing = on_right ? king_side : queen_side,
        .opposite_wing = on_right ? queen_side : king_side,
        .front_pawn = Seen<Us>(on_right ? g3 : b3),
        .fianchetto = Seen<Us>(on_right ? g2 : b2),
    };
}

/// No own pawn stands before the bishop.
template <Colour Us>
SCORE_PAIR bishop_without_front_pawn(EVALUATION_CONTEXT& context, const LongDiagonal<Us>& diagonal) {
    return count_on<Us>(diagonal.own_wing, context, {.pair = {-6, -4}, .cover = -2});
}

/// The enemy has no bishop to set against it.
template <Colour Us>
SCORE_PAIR bishop_unopposed_on_diagonal(const BOARD& board, const BishopState& bishop) {
    const bool is_opposed = (board.side(Opponent(Us)).bishops & square_colour_of(bishop.square)) != 0;
    return is_opposed ? SCORE_PAIR{} : SCORE_PAIR{8, 10};
}

/// No pawn stands on the diagonal.
template <Colour Us>
SCORE_PAIR bishop_on_open_diagonal(EVALUATION_CONTEXT& context, BishopState& bishop, const LongDiagonal<Us>& diagonal) {
    constexpr int opposite_pressure = 6;
    bishop.is_free = true;
    add_points(context.pressure[Us][diagonal.opposite_wing], opposite_pressure);
    return count_on<Us>(diagonal.own_wing, context, {.pair = {24, 24}, .cover = 5});
}

/// By how many ranks the first pawn leaves free (an enemy pawn one less), and by how many stand behind it.
template <Colour Us>
SCORE_PAIR bishop_behind_pawns_on_diagonal(EVALUATION_CONTEXT& context, const BOARD& board, BishopState& bishop,
                                           const LongDiagonal<Us>& diagonal) {
    static constexpr std::array<SCORE_PAIR, 6> by_free_ranks = {
        {{-5, -10}, {-2, -3}, {3, 4}, {8, 8}, {11, 11}, {14, 14}}};  // n = -1, 0, ..
    static constexpr std::array<SCORE_PAIR, 6> by_more_pawns = {
        {{8, 8}, {6, 6}, {3, 4}, {0, 1}, {-2, -4}, {-6, -7}}};                   // n = 0, 1, ..
    static constexpr std::array<int, 6> cover = {-5, 1, 2, 3, 3, 3};             // by free ranks
    static constexpr std::array<int, 6> opposite_pressure = {1, 1, 1, 1, 2, 4};  // by free ranks
    const Square first = rearmost<Us>(diagonal.pawns);
    const int free_ranks = rank_seen<Us>(first) - (Has(board.side(Us).pawns, first) ? 2 : 3);
    bishop.is_free = free_ranks >= 2;
    add_points(context.cover[Us][diagonal.own_wing], at(cover, free_ranks + 1));
    add_points(context.pressure[Us][diagonal.opposite_wing], at(opposite_pressure, free_ranks + 1));
    return at(by_free_ranks, free_ranks + 1) + at(by_more_pawns, PopCount(diagonal.pawns) - 1);
}

/// What the bishop attacks through own pieces that stand on the long diagonals.
template <Colour Us>
Bitboard attacks_through_pieces(const BOARD& board, Bitboard attacks) {
    const SIDE_PIECES& own = board.side(Us);
    for (Bitboard in_the_way = attacks & long_diagonals & own.all & ~own.pawns; in_the_way != 0;) {
        attacks |= board.BishopAttacks(TakeNextBit(in_the_way)) & long_diagonals;
    }
    return attacks;
}

// --- Mobility ---

/// By the number of squares inside the rim that no pawn takes, the bishop's own one among them.
SCORE_PAIR bishop_mobility(int squares) {
    static constexpr std::array<SCORE_PAIR, 5> few_squares = {
        {{-24, -38}, {-16, -32}, {-10, -30}, {-8, -20}, {-5, -12}}};  // n = 0, 1, ..
    return squares < 5 ? at(few_squares, squares) : SCORE_PAIR{squares - 8, 2 * squares - 18};
}

/// Those of them in the centre and around it, and what it attacks far ahead.
template <Colour Us>
SCORE_PAIR bishop_aims(Bitboard reach, Bitboard attacks) {
    constexpr Bitboard far_squares = (ranks<Us>(5, 5) & files(1, 6)) | ranks<Us>(6, 7);
    const int in_centre = count_up_to_two(reach & four_centre_squares);  // of one colour
    const int in_ring = PopCount(reach & ring_around_centre);
    const int far = PopCount(attacks & far_squares);
    return {in_centre + (in_ring >> 1) + (far >> 2), 4 * in_centre + 2 * in_ring + far};
}

/// Own pawns that can't move on its central squares shut a bishop in.
template <Colour Us>
Bitboard pawns_before_bad_bishop(const EVALUATION_CONTEXT& context, const BishopState& bishop) {
    constexpr Bitboard on_light = set_seen<Us>(light_central_set);
    constexpr Bitboard on_dark = set_seen<Us>(dark_central_set);
    return context.pawns[Us].restrained & (Has(light_squares, Seen<Us>(bishop.square)) ? on_light : on_dark);
}
template <Colour Us>
bool is_bad_bishop(const BishopState& bishop, Bitboard pawns) {
    return !bishop.is_free && ((pawns & squares_seen<Us>(d4, e4)) != 0 || HasSeveral(pawns));
}

/// By its mobility.
template <Colour Us>
SCORE_PAIR bad_bishop(EVALUATION_CONTEXT& context, const BishopState& bishop) {
    static constexpr std::array<SCORE_PAIR, 3> by_squares = {{{-30, -37}, {-18, -24}, {-8, -10}}};  // 0, 1, more
    return count_on<Us>(centre, context,
                        {.pair = at(by_squares, std::min(bishop.mobility, 2)), .pressure = -8, .cover = -6});
}

// --- Bishops near home ---

/// At home or before it, with the own pawn on e3 (or d3) that shuts it in.
template <Colour Us>
SCORE_PAIR bishop_shut_in_by_pawn(EVALUATION_CONTEXT& context) {
    return count_on<Us>(centre, context, {.pair = {-6, -20}, .pressure = -5});
}
/// At home behind an own man on d2 (or e2).
template <Colour Us>
SCORE_PAIR bishop_at_home_behind_man(EVALUATION_CONTEXT& context) {
    return count_on<Us>(centre, context, {.pair = {-8, -18}, .pressure = -3});
}
template <Colour Us>
SCORE_PAIR bishop_on_e3_behind_d4(EVALUATION_CONTEXT& context) {
    return count_on<Us>(centre, context, {.pair = {-3, -6}, .pressure = -2});
}
template <Colour Us>
SCORE_PAIR bishop_on_d3_behind_e4(EVALUATION_CONTEXT& context) {
    return count_on<Us>(centre, context, {.pair = {0, -5}, .pressure = -1});
}

/// The first of these rules that holds.
template <Colour Us, class Context>
SCORE_PAIR bishop_near_home(Context& context, const BOARD& board, Square square) {
    const SIDE_PIECES& own = board.side(Us);
    const Square s = Seen<Us>(square);
    const auto own_pawn = [&](Square seen) { return Has(own.pawns, Seen<Us>(seen)); };
    const auto own_man = [&](Square seen) { return Has(own.all, Seen<Us>(seen)); };
    const auto told = [&](Rule rule, SCORE_PAIR pair) { return tell<Us>(context, rule, Bit(square), pair); };
    if (((s == c1 || s == d2) && own_pawn(e3)) || ((s == f1 || s == e2) && own_pawn(d3)))
        return told(Rule::bishop_shut_in_by_pawn, bishop_shut_in_by_pawn<Us>(context));
    if ((s == c1 && own_man(d2)) || (s == f1 && own_man(e2)))
        return told(Rule::bishop_at_home_behind_man, bishop_at_home_behind_man<Us>(context));
    if (s == e3 && own_pawn(d4)) return told(Rule::bishop_on_e3_behind_d4, bishop_on_e3_behind_d4<Us>(context));
    if (s == d3 && own_pawn(e4)) return told(Rule::bishop_on_d3_behind_e4, bishop_on_d3_behind_e4<Us>(context));
    return {};
}

// --- Trapped bishops ---

/// The enemy pawn on b6 (or g6) that holds a bishop which took on a7 (or h7); none elsewhere.
template <Colour Us>
Bitboard pawn_that_traps(const BOARD& board, Square bishop) {
    if (!Has(squares_seen<Us>(a7, h7), bishop)) return 0;
    return board.side(Opponent(Us)).pawns & (FileOf(bishop) == 0 ? squares_seen<Us>(b6) : squares_seen<Us>(g6));
}

template <Colour Us>
SCORE_PAIR trapped_bishop(const EVALUATION_CONTEXT& context, Bitboard jailer) {
    constexpr SCORE_PAIR for_good = {-180, -180};  // the pawn is defended
    constexpr SCORE_PAIR otherwise = {-110, -110};
    return (context.pawns[Opponent(Us)].defended & jailer) != 0 ? for_good : otherwise;
}

// --- All bishops of a side ---

/// What bishops add to the activity, a pair or one.
template <Colour Us>
SCORE_PAIR bishop_activity(EVALUATION_CONTEXT& context) {
    add_activity<Us>(context, context.has_bishop_pair[Us] ? 10 : -5);
    return {};
}

/// A bad bishop without the other one, by the number of knights.
template <Colour Us>
SCORE_PAIR lone_bad_bishop(EVALUATION_CONTEXT& context, const BOARD& board) {
    static constexpr std::array<RULE_VALUES, 3> by_knights = {{
        {.pair = {-15, -17}, .pressure = -4, .cover = -4},
        {.pair = {-10, -12}, .pressure = -3, .cover = -2},
        {.pair = {-5, -7}, .pressure = -2, .cover = -1},  // two or more
    }};
    return count_on<Us>(centre, context, at(by_knights, std::min(PopCount(board.side(Us).knights), 2)));
}

/// The pair again, by openness; material has counted it once.
template <Colour Us>
SCORE_PAIR bishop_pair_by_openness(EVALUATION_CONTEXT& context) {
    static constexpr std::array<SCORE_PAIR, 4> by_quarter = {{{2, 5}, {-5, 2}, {-7, -2}, {-10, -5}}};
    const int quarter = context.openness >> 2;
    add_points(context.pressure[Us][centre], quarter);
    add_points(context.cover[Us][centre], context.openness >> 3);
    return at(by_quarter, quarter);
}

/// Enemy pawns that are defended, on the squares that the bishops can reach.
template <Colour Us>
SCORE_PAIR bishops_against_firm_pawns(EVALUATION_CONTEXT& context, Bitboard firm_pawns) {
    const int count = PopCount(firm_pawns);
    add_points(context.pressure[Us][centre], -(count >> 1));
    return {0, -2 * count};
}

// --- Endings ---

template <Colour Us>
int bishop_on_square_ending(Square s) {
    return ending_tables::value_at<Us>(ending_tables::bishop_ending, s);
}

int bishop_mobility_ending(int squares) {
    static constexpr std::array<int, 4> few_squares = {-45, -32, -18, -10};  // n = 0, 1, ..
    return squares < 4 ? at(few_squares, squares) : 2 * squares - 15;
}
int bishop_aims_ending(Bitboard reach) {
    return 2 * count_up_to_two(reach & four_centre_squares) + (3 * PopCount(reach & ring_around_centre) >> 1);
}

/// Worse where a pawn on c7 (or f7) defends the jailer.
template <Colour Us>
int trapped_bishop_ending(const BOARD& board, Square bishop) {
    const Square defender = Seen<Us>(Seen<Us>(bishop) == a7 ? c7 : f7);
    return Has(board.side(Opponent(Us)).pawns, defender) ? -180 : -100;
}

/// Enemy passed pawns that one pawn alone defends, for each bishop that attacks them.
template <Colour Us>
int bishops_against_passed_pawns_ending(const EVALUATION_CONTEXT& context, int attacked) {
    return (context.has_bishop_pair[Us] ? 4 : 16) * attacked;
}

/// The squares inside the rim that a bishop can go to or stands on, without those of pawns.
Bitboard reach_of_bishop(Bitboard every_pawn, Square s, Bitboard attacks) {
    return (attacks | Bit(s)) & ~every_pawn & ~border;
}

}  // namespace

template <Colour Us, class Context>
SCORE_PAIR bishops(Context& context, const BOARD& board) noexcept {
    constexpr Colour Them = Opponent(Us);
    const SIDE_PIECES& own = board.side(Us);
    const Bitboard every_pawn = board.side(white).pawns | board.side(black).pawns;
    SCORE_PAIR sum;
    bool some_bad_bishop = false;
    for (Bitboard rest = own.bishops; rest != 0;) {
        const Square square = TakeNextBit(rest);
        BishopState bishop{.square = square, .attacks = board.BishopAttacks(square)};
        const auto count = [&](Rule rule, SCORE_PAIR pair, Bitboard with = 0) {
            sum += tell<Us>(context, rule, Bit(square) | with, pair);
        };
        count(Rule::bishop_on_square, bishop_on_square<Us>(bishop));

        if (Has(squares_seen<Us>(a1, b2, g2, h1), square)) {
            const bool on_right = FileOf(square) >= 6;
            const LongDiagonal<Us> diagonal = find_long_diagonal<Us>(square, every_pawn, on_right);
            if (!Has(own.pawns, diagonal.front_pawn)) {
                count(Rule::bishop_without_front_pawn, bishop_without_front_pawn<Us>(context, diagonal),
                      Bit(diagonal.front_pawn));
            }
            if (!Has(every_pawn, diagonal.fianchetto)) {
                count(Rule::bishop_unopposed_on_diagonal, bishop_unopposed_on_diagonal<Us>(board, bishop));
                if (diagonal.pawns == 0)
                    count(Rule::bishop_on_open_diagonal, bishop_on_open_diagonal<Us>(context, bishop, diagonal));
                else
                    count(Rule::bishop_behind_pawns_on_diagonal,
                          bishop_behind_pawns_on_diagonal<Us>(context, board, bishop, diagonal), diagonal.pawns);
            }
            bishop.attacks = attacks_through_pieces<Us>(board, bishop.attacks);
        }
        context.attacks[Us] |= bishop.attacks;

        const Bitboard reach = reach_of_bishop(every_pawn, square, bishop.attacks);
        bishop.mobility = PopCount(reach);
        count(Rule::bishop_mobility, bishop_mobility(bishop.mobility), reach);
        count(Rule::bishop_aims, bishop_aims<Us>(reach, bishop.attacks));
        if (const Bitboard pawns = pawns_before_bad_bishop<Us>(context, bishop); is_bad_bishop<Us>(bishop, pawns)) {
            some_bad_bishop = true;
            count(Rule::bad_bishop, bad_bishop<Us>(context, bishop), pawns);
        }

        if (Has(squares_seen<Us>(c1, d2, e3, f1, e2, d3), square)) sum += bishop_near_home<Us>(context, board, square);
        if (const Bitboard jailer = pawn_that_traps<Us>(board, square); jailer != 0)
            count(Rule::trapped_bishop, trapped_bishop<Us>(context, jailer), jailer);
    }

    const auto count = [&](Rule rule, SCORE_PAIR pair, Bitboard with = 0) {
        sum += tell<Us>(context, rule, own.bishops | with, pair);
    };
    const bool is_pair = context.has_bishop_pair[Us];
    count(Rule::bishop_activity, bishop_activity<Us>(context));
    if (is_pair)
        count(Rule::bishop_pair_by_openness, bishop_pair_by_openness<Us>(context));
    else if (some_bad_bishop)
        count(Rule::lone_bad_bishop, lone_bad_bishop<Us>(context, board));
    const Bitboard their_squares = is_pair ? ~Bitboard{0} : square_colour_of(FindLowestBit(own.bishops));
    const Bitboard firm_pawns = context.pawns[Them].defended & their_squares;
    count(Rule::bishops_against_firm_pawns, bishops_against_firm_pawns<Us>(context, firm_pawns), firm_pawns);
    return sum;
}

template <Colour Us, class Context>
int bishops_ending(Context& context, const BOARD& board) noexcept {
    const PAWN_INFO& enemy = context.pawns[Opponent(Us)];
    const Bitboard targets = enemy.passed & enemy.attacked_once & ~enemy.duo;
    const Bitboard every_pawn = board.side(white).pawns | board.side(black).pawns;
    int attacked_targets = 0;
    int sum = 0;
    for (Bitboard rest = board.side(Us).bishops; rest != 0;) {
        const Square s = TakeNextBit(rest);
        const auto count = [&](Rule rule, int value, Bitboard with = 0) {
            sum += tell<Us>(context, rule, Bit(s) | with, value);
        };
        const Bitboard attacks = board.BishopAttacks(s);
        const Bitboard reach = reach_of_bishop(every_pawn, s, attacks);
        context.attacks[Us] |= attacks;
        count(Rule::bishop_on_square, bishop_on_square_ending<Us>(s));
        count(Rule::bishop_mobility, bishop_mobility_ending(PopCount(reach)), reach);
        count(Rule::bishop_aims, bishop_aims_ending(reach));
        if (const Bitboard jailer = pawn_that_traps<Us>(board, s); jailer != 0)
            count(Rule::trapped_bishop, trapped_bishop_ending<Us>(board, s), jailer);
        attacked_targets += PopCount(attacks & targets);
    }
    return sum + tell<Us>(context, Rule::bishops_against_passed_pawns, board.side(Us).bishops | targets,
                          bishops_against_passed_pawns_ending<Us>(context, attacked_targets));
}

bool has_opposite_bishops(const BOARD& board) noexcept {
    const Bitboard w = board.white_pieces().bishops;
    const Bitboard b = board.black_pieces().bishops;
    if (w == 0 || b == 0) return false;
    return ((w & light_squares) == 0 && (b & ~light_squares) == 0) ||
           ((w & ~light_squares) == 0 && (b & light_squares) == 0);
}

template SCORE_PAIR bishops<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR bishops<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR bishops<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR bishops<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int bishops_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int bishops_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int bishops_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int bishops_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
