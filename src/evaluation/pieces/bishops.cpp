#include "evaluation/pieces/bishops.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/pieces/ending_tables.h"
#include "evaluation/pieces/piece_tables.h"

namespace {

using piece_tables::value_at;

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

/// One bishop, with what its steps hand on.
struct BishopState {
    Square square;
    Bitboard attacks;
    bool is_free = false;  ///< on an open long diagonal
    int mobility = 0;
};

/// The pawn that stands first on a long diagonal, by how many ranks it leaves free (an enemy pawn one less), and the
/// number of pawns behind it.
constexpr std::array<SCORE_PAIR, 6> first_pawn_on_diagonal = {
    {{-5, -10}, {-2, -3}, {3, 4}, {8, 8}, {11, 11}, {14, 14}}};  // -1, 0, ..
constexpr std::array<SCORE_PAIR, 6> more_pawns_on_diagonal = {{{8, 8}, {6, 6}, {3, 4}, {0, 1}, {-2, -4}, {-6, -7}}};

template <Colour Us>
SCORE_PAIR bishop_behind_pawns(EVALUATION_CONTEXT& context, const BOARD& board, BishopState& bishop, Bitboard pawns,
                               Wing own_wing, Wing other_wing) {
    const Square first = Us == white ? FindLowestBit(pawns) : FindHighestBit(pawns);
    const int distance = rank_seen<Us>(first) - (Has(board.side(Us).pawns, first) ? 2 : 3);
    static constexpr std::array<int, 3> cover = {-5, 1, 2};  // -1, 0, 1
    add_points(context.cover[Us][own_wing], distance >= 2 ? 3 : cover[static_cast<std::size_t>(distance + 1)]);
    add_points(context.pressure[Us][other_wing], distance == 4 ? 4 : distance == 3 ? 2 : 1);
    bishop.is_free = distance >= 2;
    return first_pawn_on_diagonal[static_cast<std::size_t>(distance + 1)] +
           more_pawns_on_diagonal[static_cast<std::size_t>(PopCount(pawns) - 1)];
}

/// A bishop in the corner of a long diagonal.
template <Colour Us>
SCORE_PAIR bishop_on_long_diagonal(EVALUATION_CONTEXT& context, const BOARD& board, BishopState& bishop) {
    const bool on_right = Has(squares_seen<Us>(g2, h1), bishop.square);
    if (!on_right && !Has(squares_seen<Us>(a1, b2), bishop.square)) return {};
    const Bitboard diagonal = Has(a1_h8, bishop.square) ? a1_h8 : h1_a8;
    const Wing own_wing = on_right ? king_side : queen_side;
    const Wing other_wing = on_right ? queen_side : king_side;
    const Bitboard every_pawn = board.side(white).pawns | board.side(black).pawns;

    SCORE_PAIR sum;
    if (!Has(board.side(Us).pawns, Seen<Us>(on_right ? g3 : b3))) {
        sum += {-6, -4};
        add_points(context.cover[Us][own_wing], -2);
    }
    if (!Has(every_pawn, Seen<Us>(on_right ? g2 : b2))) {
        if ((board.side(Opponent(Us)).bishops & square_colour_of(bishop.square)) == 0) sum += {8, 10};
        if (const Bitboard pawns = every_pawn & diagonal; pawns != 0) {
            sum += bishop_behind_pawns<Us>(context, board, bishop, pawns, own_wing, other_wing);
        } else {
            sum += {24, 24};
            add_points(context.cover[Us][own_wing], 5);
            add_points(context.pressure[Us][other_wing], 6);
            bishop.is_free = true;
        }
    }
    const SIDE_PIECES& own = board.side(Us);
    for (Bitboard in_the_way = bishop.attacks & long_diagonals & own.all & ~own.pawns; in_the_way != 0;) {
        bishop.attacks |= board.BishopAttacks(TakeNextBit(in_the_way)) & long_diagonals;
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR bishop_mobility(const BOARD& board, BishopState& bishop) {
    constexpr Bitboard far_squares = (ranks<Us>(5, 5) & files(1, 6)) | ranks<Us>(6, 7);
    static constexpr std::array<SCORE_PAIR, 5> few_squares = {
        {{-24, -38}, {-16, -32}, {-10, -30}, {-8, -20}, {-5, -12}}};
    const Bitboard every_pawn = board.side(white).pawns | board.side(black).pawns;
    const Bitboard reach = (bishop.attacks | Bit(bishop.square)) & ~every_pawn & ~border;
    const int n = PopCount(reach);
    const int in_centre = PopCount(reach & four_centre_squares);
    const int in_ring = PopCount(reach & ring_around_centre);
    const int far = PopCount(bishop.attacks & far_squares);
    bishop.mobility = n;
    const SCORE_PAIR by_count = n < 5 ? few_squares[static_cast<std::size_t>(n)] : SCORE_PAIR{n - 8, 2 * n - 18};
    return by_count + SCORE_PAIR{in_centre + (in_ring >> 1) + (far >> 2), 4 * in_centre + 2 * in_ring + far};
}

/// Own pawns that can't move on its central squares shut a bishop in.
template <Colour Us>
bool is_bad_bishop(const EVALUATION_CONTEXT& context, const BishopState& bishop) {
    if (bishop.is_free) return false;
    const Bitboard seen_from_white = Has(light_squares, Seen<Us>(bishop.square)) ? light_central_set : dark_central_set;
    const Bitboard central_set = Us == white ? seen_from_white : MirrorRanks(seen_from_white);
    const Bitboard pawns = context.pawns[Us].restrained & central_set;
    return (pawns & squares_seen<Us>(d4, e4)) != 0 || PopCount(pawns) >= 2;
}

template <Colour Us>
SCORE_PAIR bad_bishop(EVALUATION_CONTEXT& context, const BishopState& bishop) {
    add_points(context.pressure[Us][centre], -8);
    add_points(context.cover[Us][centre], -6);
    if (bishop.mobility == 0) return {-30, -37};
    return bishop.mobility == 1 ? SCORE_PAIR{-18, -24} : SCORE_PAIR{-8, -10};
}

/// A bishop that its own men keep near home, or that stands in their way.
template <Colour Us>
SCORE_PAIR bishop_near_home(EVALUATION_CONTEXT& context, const BOARD& board, const BishopState& bishop) {
    const SIDE_PIECES& own = board.side(Us);
    const Square s = Seen<Us>(bishop.square);
    const auto own_pawn = [&](Square seen) { return Has(own.pawns, Seen<Us>(seen)); };
    const auto own_man = [&](Square seen) { return Has(own.all, Seen<Us>(seen)); };
    const auto charge = [&](SCORE_PAIR pair, int pressure) {
        add_points(context.pressure[Us][centre], pressure);
        return pair;
    };
    if (((s == c1 || s == d2) && own_pawn(e3)) || ((s == f1 || s == e2) && own_pawn(d3))) return charge({-6, -20}, -5);
    if ((s == c1 && own_man(d2)) || (s == f1 && own_man(e2))) return charge({-8, -18}, -3);
    if (s == e3 && own_pawn(d4)) return charge({-3, -6}, -2);
    if (s == d3 && own_pawn(e4)) return charge({0, -5}, -1);
    return {};
}

/// A bishop that took on a7 or h7 and can't come back.
template <Colour Us>
SCORE_PAIR trapped_bishop(const EVALUATION_CONTEXT& context, const BOARD& board, const BishopState& bishop) {
    const Square s = Seen<Us>(bishop.square);
    if (s != a7 && s != h7) return {};
    const Square jailer = Seen<Us>(s == a7 ? b6 : g6);
    if (!Has(board.side(Opponent(Us)).pawns, jailer)) return {};
    return Has(context.pawns[Opponent(Us)].defended, jailer) ? SCORE_PAIR{-180, -180} : SCORE_PAIR{-110, -110};
}

/// A bad bishop that no other stands beside, by the number of knights.
template <Colour Us>
SCORE_PAIR lone_bad_bishop(EVALUATION_CONTEXT& context, const BOARD& board) {
    struct Row {
        SCORE_PAIR pair;
        int pressure, cover;
    };
    static constexpr std::array<Row, 3> rows = {{{{-15, -17}, -4, -4}, {{-10, -12}, -3, -2}, {{-5, -7}, -2, -1}}};
    const Row& row = rows[static_cast<std::size_t>(std::min(PopCount(board.side(Us).knights), 2))];
    add_points(context.pressure[Us][centre], row.pressure);
    add_points(context.cover[Us][centre], row.cover);
    return row.pair;
}

/// The pair again, by openness; material has counted it once.
template <Colour Us>
SCORE_PAIR pair_by_openness(EVALUATION_CONTEXT& context) {
    static constexpr std::array<SCORE_PAIR, 4> by_openness = {{{2, 5}, {-5, 2}, {-7, -2}, {-10, -5}}};
    const int quarter = context.openness >> 2;
    add_points(context.pressure[Us][centre], quarter);
    add_points(context.cover[Us][centre], context.openness >> 3);
    return by_openness[static_cast<std::size_t>(quarter)];
}

/// What can be said when all bishops are known.
template <Colour Us>
SCORE_PAIR bishops_together(EVALUATION_CONTEXT& context, const BOARD& board, bool some_bad_bishop) {
    const bool is_pair = context.has_bishop_pair[Us];
    add_points(context.activity, (is_pair ? 10 : -5) * (Us == white ? 1 : -1));
    SCORE_PAIR sum;
    if (is_pair)
        sum += pair_by_openness<Us>(context);
    else if (some_bad_bishop)
        sum += lone_bad_bishop<Us>(context, board);

    const Bitboard on_their_squares = is_pair ? ~Bitboard{0} : square_colour_of(FindLowestBit(board.side(Us).bishops));
    const int firm_pawns = PopCount(context.pawns[Opponent(Us)].defended & on_their_squares);
    add_points(context.pressure[Us][centre], -(firm_pawns >> 1));
    return sum - SCORE_PAIR{0, 2 * firm_pawns};
}

// --- Endings ---

int bishop_mobility_ending(const BOARD& board, Square s, Bitboard attacks) {
    static constexpr std::array<int, 4> few_squares = {-45, -32, -18, -10};
    const Bitboard every_pawn = board.side(white).pawns | board.side(black).pawns;
    const Bitboard reach = (attacks | Bit(s)) & ~border & ~every_pawn;
    const int n = PopCount(reach);
    const int by_count = n < 4 ? few_squares[static_cast<std::size_t>(n)] : 2 * n - 15;
    return by_count + 2 * PopCount(reach & four_centre_squares) + (3 * PopCount(reach & ring_around_centre) >> 1);
}

/// On a7 behind b6, or on h7 behind g6; worse where another pawn defends the jailer.
template <Colour Us>
int trapped_bishop_ending(const BOARD& board, Square square) {
    const Square s = Seen<Us>(square);
    if (s != a7 && s != h7) return 0;
    const auto enemy_pawn = [&](Square seen) { return Has(board.side(Opponent(Us)).pawns, Seen<Us>(seen)); };
    if (!enemy_pawn(s == a7 ? b6 : g6)) return 0;
    return enemy_pawn(s == a7 ? c7 : f7) ? -180 : -100;
}

}  // namespace

template <Colour Us>
SCORE_PAIR bishops(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    bool some_bad_bishop = false;
    for (Bitboard rest = board.side(Us).bishops; rest != 0;) {
        const Square s = TakeNextBit(rest);
        BishopState bishop{.square = s, .attacks = board.BishopAttacks(s)};
        sum += {value_at<Us>(piece_tables::bishop_positional, s), value_at<Us>(piece_tables::bishop_reckless, s)};
        sum += bishop_on_long_diagonal<Us>(context, board, bishop);
        context.attacks[Us] |= bishop.attacks;
        sum += bishop_mobility<Us>(board, bishop);
        if (is_bad_bishop<Us>(context, bishop)) {
            some_bad_bishop = true;
            sum += bad_bishop<Us>(context, bishop);
        }
        sum += bishop_near_home<Us>(context, board, bishop);
        sum += trapped_bishop<Us>(context, board, bishop);
    }
    return sum + bishops_together<Us>(context, board, some_bad_bishop);
}

template SCORE_PAIR bishops<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR bishops<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

template <Colour Us>
int bishops_ending(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const PAWN_INFO& enemy = context.pawns[Opponent(Us)];
    const Bitboard targets = enemy.passed & enemy.attacked_once & ~enemy.duo;
    int attacked_targets = 0;
    int sum = 0;
    for (Bitboard rest = board.side(Us).bishops; rest != 0;) {
        const Square s = TakeNextBit(rest);
        const Bitboard attacks = board.BishopAttacks(s);
        context.attacks[Us] |= attacks;
        sum += ending_tables::value_at<Us>(ending_tables::bishop_ending, s);
        sum += bishop_mobility_ending(board, s, attacks);
        sum += trapped_bishop_ending<Us>(board, s);
        attacked_targets += PopCount(attacks & targets);
    }
    return sum + (context.has_bishop_pair[Us] ? 4 : 16) * attacked_targets;
}
template int bishops_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int bishops_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

bool has_opposite_bishops(const BOARD& board) noexcept {
    const Bitboard w = board.white_pieces().bishops;
    const Bitboard b = board.black_pieces().bishops;
    if (w == 0 || b == 0) return false;
    return ((w & light_squares) == 0 && (b & ~light_squares) == 0) ||
           ((w & ~light_squares) == 0 && (b & light_squares) == 0);
}
