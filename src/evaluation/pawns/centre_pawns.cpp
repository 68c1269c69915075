#include "evaluation/context/board_areas.h"
#include "evaluation/pawns/pawn_groups.h"
#include "evaluation/pawns/pawn_points.h"
#include "evaluation/pawns/pawn_terms.h"
#include "evaluation/rules/tell.h"

// What the pawns make of the centre: the squares that they hold there, and the formations that they stand in.

namespace {

/// What every square of a set counts.
template <Colour Us>
SCORE_PAIR for_each_square(EVALUATION_CONTEXT& context, Bitboard squares, const RULE_VALUES& values) {
    const int count = PopCount(squares);
    add_points(context.pawn_pressure[Us][centre], count * values.pressure);
    add_points(context.pawn_cover[Us][centre], count * values.cover);
    return {count * values.pair.positional(), count * values.pair.reckless()};
}

/// A centre square that own pawns alone attack, where an enemy pawn may still come to attack it.
template <Colour Us>
SCORE_PAIR centre_square_contested(EVALUATION_CONTEXT& context, Bitboard squares) {
    return for_each_square<Us>(context, squares, {.pair = {2, 4}, .pressure = 4});
}
/// And one that none can attack any more.
template <Colour Us>
SCORE_PAIR centre_square_held(EVALUATION_CONTEXT& context, Bitboard squares) {
    return for_each_square<Us>(context, squares, {.pair = {4, 12}, .pressure = 6});
}
/// One that only own pawns may still come to attack.
template <Colour Us>
SCORE_PAIR centre_square_within_reach(EVALUATION_CONTEXT& context, Bitboard squares) {
    return for_each_square<Us>(context, squares, {.pair = {2, 1}, .cover = 2});
}

/// More pawns on the d- and e-file than the enemy has.
template <Colour Us>
SCORE_PAIR more_centre_pawns(EVALUATION_CONTEXT& context, const BOARD& board) {
    constexpr Bitboard centre_files = files(3, 4);
    const int lead =
        PopCount(board.side(Us).pawns & centre_files) - PopCount(board.side(Opponent(Us)).pawns & centre_files);
    if (lead <= 0) return {};
    return count_of_pawns_on<Us>(centre, context, {.pair = {2, 2}, .pressure = 1});
}

// --- Formations ---

// The points are those of the centre, but for the king side where the name says so.
constexpr RULE_VALUES pawns_on_d2_and_e2 = {.pair = {-8, -20}, .pressure = -6, .cover = -4};
constexpr RULE_VALUES pawn_on_d2_before_pawn = {.pair = {-12, -20}, .pressure = -6, .cover = -6};
constexpr RULE_VALUES pawn_on_d2 = {.pair = {0, 0}, .pressure = -4, .cover = -2};
constexpr RULE_VALUES pawn_on_e2_before_pawn = {.pair = {-12, -20}, .pressure = -6, .cover = -6};
constexpr RULE_VALUES pawn_on_e2_with_d2_or_g2 = {.pair = {-7, -14}, .pressure = -5, .cover = -4};
constexpr RULE_VALUES pawns_on_d4_and_c2_against_d5 = {.pair = {-12, -20}, .pressure = -6};
constexpr RULE_VALUES pawns_on_d4_and_c2 = {.pair = {-2, -14}, .pressure = -3};
constexpr RULE_VALUES pawns_alone_on_d4_and_c_file = {.pair = {-6, 2}, .cover = -2};
constexpr RULE_VALUES pawns_on_d4_and_c3 = {.pair = {10, 8}, .cover = 3};
constexpr RULE_VALUES pawns_on_d4_and_c4 = {.pair = {8, 12}, .pressure = 3};
constexpr RULE_VALUES pawns_on_e4_and_f2_against_e5_king_side = {.pair = {-3, -16}, .pressure = -4};
constexpr RULE_VALUES pawns_on_e4_and_f2_king_side = {.pair = {0, -8}, .pressure = -3};
constexpr RULE_VALUES pawns_on_e4_and_f3 = {.pair = {3, 4}, .cover = 2};
constexpr RULE_VALUES pawns_on_e4_and_f4_king_side = {.pair = {3, 10}, .pressure = 6};

// The same in an ending.
constexpr int pawns_alone_on_d4_and_c_file_ending = -6;

/// The pawns of one side where a formation wants them, by their names as White sees them.
template <Colour Us>
class CentrePawns {
  public:
    explicit CentrePawns(const BOARD& board) : own_(board.side(Us).pawns), enemy_(board.side(Opponent(Us)).pawns) {}
    bool Own(Square s) const { return Has(own_, Seen<Us>(s)); }
    bool Enemy(Square s) const { return Has(enemy_, Seen<Us>(s)); }
    bool Any(Square s) const { return Own(s) || Enemy(s); }
    bool StandAlone() const { return stands_alone_in_centre<Us>(own_, enemy_); }

  private:
    Bitboard own_, enemy_;
};

}  // namespace

template <Colour Us, class Context>
SCORE_PAIR centre_squares(Context& context, const BOARD& board) noexcept {
    constexpr Bitboard centre_square_set = squares_seen<Us>(d4, e4, d5, e5);
    const PAWN_INFO& own = context.pawns[Us];
    const PAWN_INFO& enemy = context.pawns[Opponent(Us)];
    const Bitboard empty = centre_square_set & ~(board.side(Us).pawns | board.side(Opponent(Us)).pawns);
    const Bitboard attacked = empty & own.attacks & ~enemy.attacks;
    const Bitboard contested = attacked & enemy.attack_span;
    const Bitboard held = attacked & ~enemy.attack_span;
    const Bitboard reachable = empty & ~own.attacks & ~enemy.attacks & own.attack_span & ~enemy.attack_span;
    SCORE_PAIR sum;
    const auto count = [&](Rule rule, Bitboard squares, SCORE_PAIR pair) {
        sum += tell<Us>(context, rule, squares, pair);
    };
    count(Rule::centre_square_contested, contested, centre_square_contested<Us>(context, contested));
    count(Rule::centre_square_held, held, centre_square_held<Us>(context, held));
    count(Rule::centre_square_within_reach, reachable, centre_square_within_reach<Us>(context, reachable));
    count(Rule::more_centre_pawns, board.side(Us).pawns & files(3, 4), more_centre_pawns<Us>(context, board));
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR centre_patterns(Context& context, const BOARD& board) noexcept {
    const CentrePawns<Us> pawns(board);
    SCORE_PAIR sum;
    const auto count = [&](Rule rule, Bitboard squares, const RULE_VALUES& values, Wing wing = centre) {
        sum += tell<Us>(context, rule, squares, count_of_pawns_on<Us>(wing, context, values));
    };
    // Rules that do not exclude one another all count.
    if (pawns.Own(d2)) {
        if (pawns.Own(e2)) count(Rule::pawns_on_d2_and_e2, squares_seen<Us>(d2, e2), pawns_on_d2_and_e2);
        if (pawns.Any(d3))
            count(Rule::pawn_on_d2_before_pawn, squares_seen<Us>(d2, d3), pawn_on_d2_before_pawn);
        else
            count(Rule::pawn_on_d2, squares_seen<Us>(d2), pawn_on_d2);
    }
    if (pawns.Own(e2)) {
        if (pawns.Any(e3))
            count(Rule::pawn_on_e2_before_pawn, squares_seen<Us>(e2, e3), pawn_on_e2_before_pawn);
        else if (pawns.Own(g2) || pawns.Own(d2))
            count(Rule::pawn_on_e2_with_d2_or_g2, squares_seen<Us>(e2), pawn_on_e2_with_d2_or_g2);
    }
    if (pawns.Own(d4)) {
        if (pawns.Own(c2)) {
            if (pawns.Enemy(d5))
                count(Rule::pawns_on_d4_and_c2_against_d5, squares_seen<Us>(d4, c2, d5), pawns_on_d4_and_c2_against_d5);
            else
                count(Rule::pawns_on_d4_and_c2, squares_seen<Us>(d4, c2), pawns_on_d4_and_c2);
        } else if (pawns.StandAlone()) {
            count(Rule::pawns_alone_on_d4_and_c_file, board.side(Us).pawns & files(2, 3), pawns_alone_on_d4_and_c_file);
        } else {
            if (pawns.Own(c3)) count(Rule::pawns_on_d4_and_c3, squares_seen<Us>(d4, c3), pawns_on_d4_and_c3);
            if (pawns.Own(c4)) count(Rule::pawns_on_d4_and_c4, squares_seen<Us>(d4, c4), pawns_on_d4_and_c4);
        }
    }
    if (pawns.Own(e4)) {
        if (pawns.Own(f2)) {
            if (pawns.Enemy(e5))
                count(Rule::pawns_on_e4_and_f2_against_e5, squares_seen<Us>(e4, f2, e5),
                      pawns_on_e4_and_f2_against_e5_king_side, king_side);
            else
                count(Rule::pawns_on_e4_and_f2, squares_seen<Us>(e4, f2), pawns_on_e4_and_f2_king_side, king_side);
        }
        if (pawns.Own(f3)) count(Rule::pawns_on_e4_and_f3, squares_seen<Us>(e4, f3), pawns_on_e4_and_f3);
        if (pawns.Own(f4))
            count(Rule::pawns_on_e4_and_f4, squares_seen<Us>(e4, f4), pawns_on_e4_and_f4_king_side, king_side);
    }
    return sum;
}

template <Colour Us, class Context>
int centre_patterns_ending(Context& context, const BOARD& board) noexcept {
    if (!CentrePawns<Us>(board).StandAlone()) return 0;
    return tell<Us>(context, Rule::pawns_alone_on_d4_and_c_file, board.side(Us).pawns & files(2, 3),
                    pawns_alone_on_d4_and_c_file_ending);
}

template SCORE_PAIR centre_squares<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR centre_squares<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR centre_squares<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR centre_squares<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR centre_patterns<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR centre_patterns<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR centre_patterns<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR centre_patterns<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int centre_patterns_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int centre_patterns_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int centre_patterns_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int centre_patterns_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
