#include "evaluation/king/king_safety.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/rule_values.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/rules/tell.h"

namespace {

// clang-format off
constexpr std::array<Wing, 8> wing_of_king_file = {
    //  a           b           c       d       e       f       g          h
    queen_side, queen_side, centre, centre, centre, centre, king_side, king_side,
};
// clang-format on

template <Colour Us>
void place_king(EVALUATION_CONTEXT& context, const BOARD& board) {
    const Square s = board.side(Us).king_square;
    context.king_wing[Us] = wing_of_king_file[static_cast<std::size_t>(FileOf(s))];
    context.attacks[Us] = bitboard_tables.king_attacks[s];
}

// --- The factors, by points ---

constexpr int least_cover = -9;
constexpr int enough_cover = 5;
constexpr int least_attack = -4;
constexpr int full_attack = 30;

consteval std::array<double, enough_cover - least_cover> DangerByCover() {
    std::array<double, enough_cover - least_cover> danger{};
    for (int points = least_cover; points < enough_cover; ++points) {
        const double x = points;
        danger[static_cast<std::size_t>(points - least_cover)] =
            std::clamp(-1.71074236e-05 * x * x - 0.0347771834536 * x + 0.172185814, 0.0, 1.0);
    }
    return danger;
}
constexpr auto danger_by_cover = DangerByCover();

consteval std::array<double, full_attack - least_attack> DangerByAttack() {
    std::array<double, full_attack - least_attack> danger{};
    for (int points = least_attack; points < full_attack; ++points) {
        const double x = points;
        const double factor = -1.9645048633650176e-05 * x * x * x + 0.0006210098320527342 * x * x +
                              0.0337458699134167 * x + 0.07126673933070571;
        danger[static_cast<std::size_t>(points - least_attack)] = std::clamp(factor, 0.0, 1.0);
    }
    return danger;
}
constexpr auto danger_by_attack = DangerByAttack();

/// The danger to a king as one shelter finds it.
struct KingDanger {
    std::int16_t attack, cover;  ///< points
    double attack_factor, cover_factor;
};

template <Colour Us>
KingDanger danger_of(const EVALUATION_CONTEXT& context) {
    return {context.king_attack[Us], context.king_cover[Us], context.attack_factor[Us], context.cover_factor[Us]};
}

template <Colour Us>
void set_danger(EVALUATION_CONTEXT& context, const KingDanger& danger) {
    context.king_attack[Us] = danger.attack;
    context.king_cover[Us] = danger.cover;
    context.attack_factor[Us] = danger.attack_factor;
    context.cover_factor[Us] = danger.cover_factor;
}

SCORE_PAIR scaled(SCORE_PAIR pair, int numerator, int denominator) {
    return {pair.positional() * numerator / denominator, pair.reckless() * numerator / denominator};
}

// --- The king term ---

constexpr int short_right = 1;
constexpr int long_right = 2;

template <Colour Us>
int castling_rights(const BOARD& board) {
    constexpr int first_bit = 2 * Us;
    return board.frame().castling >> first_bit & (short_right | long_right);
}

/// What every king starts from.
constexpr SCORE_PAIR king_at_start = {-20, -100};

/// A king that may still castle; the centre is weaker until it does.
template <Colour Us>
SCORE_PAIR uncastled_king(EVALUATION_CONTEXT& context, const BOARD& board) {
    if (castling_rights<Us>(board) == 0) return {};
    return count_on<Us>(centre, context, {.pair = {-65, -75}, .pressure = -4, .cover = -6});
}

/// Rights to castle over squares that the enemy does not attack.
template <Colour Us>
int usable_rights(const EVALUATION_CONTEXT& context, const BOARD& board) {
    const Bitboard attacked = context.attacks[Opponent(Us)];
    int rights = castling_rights<Us>(board);
    if ((attacked & squares_seen<Us>(f1, g1)) != 0) rights &= ~short_right;
    if ((attacked & squares_seen<Us>(b1, c1, d1)) != 0) rights &= ~long_right;
    return rights;
}

/// What stands between king and rook costs time.
SCORE_PAIR men_between_king_and_rook(Bitboard men) {
    static constexpr std::array<SCORE_PAIR, 4> by_count = {{{4, 8}, {-4, -8}, {-8, -10}, {-12, -14}}};  // n = 0, 1, ..
    return at(by_count, PopCount(men));
}

int half_sum(SCORE_PAIR pair) { return (pair.positional() + pair.reckless()) / 2; }

/// The shelter that a king may still castle to; of two, the better one.
template <Colour Us, class Context>
SCORE_PAIR shelter_after_castling(Context& context, const BOARD& board, int rights) {
    SCORE_PAIR pair;
    bool goes_long = rights == long_right;
    if (rights == (short_right | long_right)) {
        const std::size_t before = told_so_far(context);
        const SCORE_PAIR long_pair = castled_shelter<Us>(context, board, Seen<Us>(b1));
        const KingDanger long_danger = danger_of<Us>(context);
        const std::size_t between = told_so_far(context);
        pair = castled_shelter<Us>(context, board, Seen<Us>(g1));
        goes_long = half_sum(long_pair) > half_sum(pair);
        if (goes_long) {
            pair = long_pair;
            set_danger<Us>(context, long_danger);
            forget_told(context, between, told_so_far(context));
        } else {
            forget_told(context, before, between);
        }
    } else {
        pair = castled_shelter<Us>(context, board, Seen<Us>(goes_long ? b1 : g1));
    }
    const Bitboard between = goes_long ? squares_seen<Us>(b1, c1, d1) : squares_seen<Us>(f1, g1);
    const Bitboard men = board.occupied & between;
    return pair + tell<Us>(context, Rule::men_between_king_and_rook, men, men_between_king_and_rook(men));
}

template <Colour Us, class Context>
SCORE_PAIR shelter_where_it_goes(Context& context, const BOARD& board) {
    const int rights = usable_rights<Us>(context, board);
    if (rights != 0) return shelter_after_castling<Us>(context, board, rights);
    const SCORE_PAIR pair = castled_shelter<Us>(context, board, board.side(Us).king_square);
    return pair + trapped_king<Us>(context, board);
}

/// The closer the position, the less; by openness.
int scaled_by_openness(int half, int openness) {
    static constexpr std::array<int, 8> eighths = {6, 6, 7, 8, 8, 9, 10, 11};
    return half * at(eighths, openness >> 1) / 8;
}

/// The closer the ending, the less; and a weak king counts by the attack on it.
template <Colour Us>
SCORE_PAIR weighed(const EVALUATION_CONTEXT& context, SCORE_PAIR pair) {
    const double still_to_play = 1.2 - context.endgame_weight;
    const auto weigh = [&](int half) {
        return static_cast<int>(scaled_by_openness(half, context.openness) * still_to_play + 0.5);
    };
    const int positional = weigh(pair.positional());
    int reckless = weigh(pair.reckless());
    if (reckless < 0) {
        reckless = static_cast<int>(std::round(reckless * std::min(0.2 + context.attack_factor[Us], 1.2)));
    }
    return {positional, reckless};
}

/// Where a castled king in the corner has to leave through, if its pawns hem it in.
template <Colour Us>
Bitboard back_rank_behind(Square king) {
    if (king == Seen<Us>(a1)) return squares_seen<Us>(c1, d1, e1, f1, g1, h1);
    if (king == Seen<Us>(b1)) return squares_seen<Us>(d1, e1, f1, g1, h1);
    if (king == Seen<Us>(g1)) return squares_seen<Us>(a1, b1, c1, d1, e1);
    return squares_seen<Us>(a1, b1, c1, d1, e1, f1);
}

bool is_reached_by_heavy_piece(Square s, const BOARD& board, const SIDE_PIECES& side) {
    return (board.RookAttacks(s) & (side.rooks | side.queens)) != 0 || (board.BishopAttacks(s) & side.queens) != 0;
}

/// A lone enemy pawn in front of the king, which the king can take: it shields him for now.
template <Colour Us>
SCORE_PAIR lone_pawn_before_king(EVALUATION_CONTEXT& context, const BOARD& board, Bitboard ways_out) {
    constexpr Colour Them = Opponent(Us);
    constexpr SCORE_PAIR pair = {200, 240};
    constexpr int attack = -10;
    constexpr int cover = 2;
    const Bitboard front = Bit(square_ahead<Us>(board.side(Us).king_square));
    if ((board.side(Them).pawns & front) == 0) return {};
    if ((context.pawns[Them].attacks & front) != 0 || ways_out != front) return {};
    add_points(context.king_attack[Us], attack);
    add_points(context.king_cover[Us], cover);
    return pair;
}

/// A rook or queen that can check on the back rank behind a king that has no way out.
template <Colour Us>
SCORE_PAIR weak_back_rank(EVALUATION_CONTEXT& context, const BOARD& board) {
    constexpr Colour Them = Opponent(Us);
    constexpr SCORE_PAIR pair = {-6, -12};
    constexpr int cover = -6;
    Bitboard attacked = back_rank_behind<Us>(board.side(Us).king_square) & context.attacks[Them];
    while (attacked != 0) {
        if (!is_reached_by_heavy_piece(TakeNextBit(attacked), board, board.side(Them))) continue;
        add_points(context.king_cover[Us], cover);
        return pair;
    }
    return {};
}

}  // namespace

void place_kings(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    place_king<white>(context, board);
    place_king<black>(context, board);
}

double danger_of_cover(int king_cover) noexcept {
    if (king_cover < least_cover) return 1.0;
    return king_cover >= enough_cover ? 0.0 : at(danger_by_cover, king_cover - least_cover);
}

double danger_of_attack(int king_attack) noexcept {
    if (king_attack < least_attack) return 0.0;
    return king_attack >= full_attack ? 1.0 : at(danger_by_attack, king_attack - least_attack);
}

template <Colour Us>
void set_danger_factors(EVALUATION_CONTEXT& context) noexcept {
    context.cover_factor[Us] = danger_of_cover(context.king_cover[Us]);
    context.attack_factor[Us] = danger_of_attack(context.king_attack[Us]);
}

template <Colour Us, class Context>
SCORE_PAIR trapped_king(Context& context, const BOARD& board) noexcept {
    const Square king = board.side(Us).king_square;
    if (!Has(squares_seen<Us>(a1, b1, g1, h1), king)) return {};
    const Bitboard ways_out = bitboard_tables.king_attacks[king] & ranks<Us>(1, 1) & ~board.side(Us).pawns;
    if (ways_out != 0) {
        return tell<Us>(context, Rule::lone_pawn_before_king, Bit(king) | ways_out,
                        lone_pawn_before_king<Us>(context, board, ways_out));
    }
    return tell<Us>(context, Rule::weak_back_rank, Bit(king) | back_rank_behind<Us>(king),
                    weak_back_rank<Us>(context, board));
}

template <class Context>
SCORE_PAIR king_safety(Context& context, const BOARD& board) noexcept {
    constexpr int queenless_numerator = 3;  // of 8: the attacker is gone
    constexpr int queenless_denominator = 8;
    const Bitboard white_king = Bit(board.side(white).king_square);
    const Bitboard black_king = Bit(board.side(black).king_square);
    SCORE_PAIR w = tell<white>(context, Rule::king_at_start, white_king, king_at_start);
    SCORE_PAIR b = tell<black>(context, Rule::king_at_start, black_king, king_at_start);
    w += tell<white>(context, Rule::uncastled_king, white_king, uncastled_king<white>(context, board));
    b += tell<black>(context, Rule::uncastled_king, black_king, uncastled_king<black>(context, board));
    w += shelter_where_it_goes<white>(context, board);
    b += shelter_where_it_goes<black>(context, board);
    const SCORE_PAIR w_told = w;
    const SCORE_PAIR b_told = b;
    if (board.side(white).queens == 0) b = scaled(b, queenless_numerator, queenless_denominator);
    if (board.side(black).queens == 0) w = scaled(w, queenless_numerator, queenless_denominator);
    w = weighed<white>(context, w);
    b = weighed<black>(context, b);
    // What the weights take away from the rules, or add to them.
    tell<white>(context, Rule::king_weighed, white_king, w - w_told);
    tell<black>(context, Rule::king_weighed, black_king, b - b_told);
    set_danger_factors<white>(context);  // once more: a trapped king has changed its points after its shelter
    set_danger_factors<black>(context);
    return w - b;
}

template SCORE_PAIR trapped_king<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR trapped_king<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR trapped_king<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR trapped_king<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR king_safety(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR king_safety(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template void set_danger_factors<white>(EVALUATION_CONTEXT& context) noexcept;
template void set_danger_factors<black>(EVALUATION_CONTEXT& context) noexcept;
