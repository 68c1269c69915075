#include <algorithm>
#include <array>

#include "evaluation/context/board_areas.h"
#include "evaluation/context/sided_squares.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/king/king_safety.h"
#include "evaluation/rules/tell.h"

// The shelter of one king: its pawns, the holes between them, and the enemy pawns that storm it.

namespace {

/// The numbers of a rule about a king.
struct KingValues {
    SCORE_PAIR pair;  ///< centipawns
    int attack = 0;   ///< points of king_attack
    int cover = 0;    ///< points of king_cover
};

// --- Where the king stands ---

// What attacks and covers it there is read from the counters of the wings.
constexpr KingValues king_off_home = {.pair = {-120, -200}, .attack = 10};
constexpr SCORE_PAIR king_on_d_or_e_file = {-55, -80};
constexpr SCORE_PAIR king_on_g_or_h_file = {6, 2};
constexpr SCORE_PAIR king_on_other_file = {2, 2};
constexpr KingValues king_on_second_rank = {.pair = {-6, -14}, .cover = -8};

// --- The shield on one file ---

constexpr SCORE_PAIR shield_pawn_on_second_rank = {20, 28};
constexpr SCORE_PAIR shield_pawn_on_third_rank = {13, 22};

// Instead of a pawn, on its square.
constexpr KingValues enemy_in_shield = {.pair = {}, .attack = 4};
constexpr KingValues bishop_in_shield_on_second_rank = {.pair = {2, 5}, .cover = 2};
constexpr KingValues bishop_in_shield_on_third_rank = {.pair = {0, 2}, .cover = 2};
constexpr KingValues knight_in_shield_on_second_rank = {.pair = {3, 6}, .cover = 2};
constexpr KingValues knight_in_shield_on_third_rank = {.pair = {2, 4}, .cover = 2};

// No pawn on either square; it may have gone one farther.
constexpr KingValues shield_pawn_on_fourth_rank = {.pair = {-10, -12}, .cover = -6};
constexpr KingValues no_shield_on_file = {.pair = {-12, -14}, .cover = -10};
/// And beside the b- or g-file doubled isolated pawns.
constexpr KingValues doubled_pawns_beside_hole = {.pair = {-18, -25}, .cover = -10};

/// Files without an enemy pawn, by their number.
constexpr std::array<KingValues, 4> open_files_at_king = {{
    {.pair = {6, 12}, .attack = -6},
    {.pair = {0, -6}, .attack = 4},
    {.pair = {-6, -12}, .attack = 9},
    {.pair = {-9, -18}, .attack = 13},
}};

// --- Holes: files without a shield pawn on the second rank ---

constexpr KingValues shield_without_hole = {.pair = {15, 26}, .cover = 14};
// One hole: the first of these that applies.
constexpr KingValues hole_in_fianchetto = {.pair = {-20, -30}, .cover = -10};
constexpr KingValues hole_on_long_diagonal = {.pair = {-4, -6}, .cover = -6};
constexpr KingValues hole_on_short_diagonal = {.pair = {-2, -3}, .cover = -4};
constexpr KingValues hole_beside_two_pawns = shield_without_hole;
constexpr KingValues hole_elsewhere = {.pair = {3, 10}, .cover = 8};
// Two holes, with the pawn before the knight's square left, or not; and three.
constexpr KingValues two_holes_with_knight_pawn = {.pair = {-5, -8}, .cover = -7};
constexpr KingValues two_holes = {.pair = {-7, -12}, .cover = -9};
constexpr KingValues three_holes = {.pair = {-20, -25}, .cover = -16};

// --- The storm on one file ---

/// The foremost enemy pawn, by ranks from the king's fourth rank on.
constexpr std::array<KingValues, 4> storm_pawn = {{
    {.pair = {-3, -8}, .attack = 4},
    {.pair = {-5, -13}, .attack = 7},
    {.pair = {-6, -12}, .attack = 8},
    {.pair = {0, 0}},
}};
/// A square in its path that an own pawn attacks, by the ranks between.
constexpr std::array<KingValues, 4> storm_pawn_makes_contact = {{
    {.pair = {-4, -12}, .attack = 12},
    {.pair = {-3, -8}, .attack = 10},
    {.pair = {-1, -5}, .attack = 8},
    {.pair = {0, 0}},
}};
/// An own pawn in its path.
constexpr KingValues storm_pawn_stopped = {.pair = {2, 10}, .attack = -4};
/// Another one beside it to the right; of the a-, b-, f- and g-file alone.
constexpr KingValues storm_pawn_with_neighbour = {.pair = {-5, -16}, .attack = 6};
/// Anything on the square behind it.
constexpr KingValues storm_pawn_obstructed_behind = {.pair = {4, 8}, .attack = -2};

/// The walk over the files around one king. A file is a set of squares, so that every question about it is one mask.
template <Colour Us, class Context>
class ShelterWalk {
  public:
    ShelterWalk(Context& context, const BOARD& board, Square square)
        : context_(context), board_(board), stands_on_(square), king_(square) {}

    SCORE_PAIR Run() {
        if (rank_seen<Us>(king_) > 1) {
            OffHome();
            return sum_;
        }
        StartByFile();
        if (rank_seen<Us>(king_) == 1) OnSecondRank();
        const int king_file = FileOf(king_);
        around_king_ = file_mask(king_file) | one_left(file_mask(king_file)) | one_right(file_mask(king_file));
        const Bitboard first_file = file_mask(std::max(king_file - 1, 0));
        for (Bitboard file = first_file; (file & around_king_) != 0; file <<= 1) ShieldOnFile(file);
        Count(Rule::open_files_at_king, 0, at(open_files_at_king, open_count_));
        Holes();
        const Bitboard storm = enemy_pawns() & around_king_ & ranks<Us>(3, 6);
        if (storm == 0 || (king_file >= 2 && king_file <= 5)) return sum_;
        for (Bitboard file = first_file; (file & around_king_) != 0; file <<= 1) {
            if ((storm & file) != 0) StormPawn(rearmost<Us>(storm & file));
        }
        return sum_;
    }

    int attack() const { return attack_; }
    int cover() const { return cover_; }

  private:
    static constexpr Colour Them = Opponent(Us);
    static constexpr Bitboard second_rank = ranks<Us>(1, 1);
    static constexpr Bitboard third_rank = ranks<Us>(2, 2);
    static constexpr Bitboard fourth_rank = ranks<Us>(3, 3);

    Bitboard own_pawns() const { return board_.side(Us).pawns; }
    Bitboard enemy_pawns() const { return board_.side(Them).pawns; }
    bool own_pawn_on(Square seen_from_white) const { return Has(own_pawns(), Seen<Us>(seen_from_white)); }

    [[gnu::always_inline]] void Count(Rule rule, Bitboard squares, SCORE_PAIR pair) {
        sum_ += tell<Us>(context_, rule, Bit(stands_on_) | squares, pair);
    }
    [[gnu::always_inline]] void Count(Rule rule, Bitboard squares, const KingValues& values) {
        Count(rule, squares, values.pair);
        attack_ += values.attack;
        cover_ += values.cover;
    }

    void OffHome() {
        const WingCounters& pressure = context_.pressure[Them];
        attack_ = pressure[queen_side] + pressure[king_side] + pressure[centre];
        cover_ = context_.cover[Us][centre];
        Count(Rule::king_off_home, 0, king_off_home);
    }

    void StartByFile() {
        const WingCounters& pressure = context_.pressure[Them];
        const WingCounters& cover = context_.cover[Us];
        const int file = FileOf(king_);
        if (file == 3 || file == 4) {
            attack_ = pressure[queen_side] + pressure[king_side] + pressure[centre];
            cover_ = cover[centre];
            Count(Rule::king_on_d_or_e_file, 0, king_on_d_or_e_file);
            return;
        }
        // The f-file counts with the queen side: docs/oddities.md, shelter on the f-file.
        const Wing wing = file > 5 ? king_side : queen_side;
        attack_ = pressure[centre] / 4 + pressure[wing];
        cover_ = cover[centre] / 2 + cover[wing];
        if (file > 5)
            Count(Rule::king_on_g_or_h_file, 0, king_on_g_or_h_file);
        else
            Count(Rule::king_on_other_file, 0, king_on_other_file);
    }

    /// A king on its second rank is walked around as if it stood on the first.
    void OnSecondRank() {
        Count(Rule::king_on_second_rank, 0, king_on_second_rank);
        king_ = square_behind<Us>(king_);
    }

    void ShieldOnFile(Bitboard file) {
        if ((enemy_pawns() & file) == 0) ++open_count_;
        const Bitboard first = own_pawns() & file & second_rank;
        const Bitboard second = own_pawns() & file & third_rank;
        if (first != 0) {
            Count(Rule::shield_pawn_on_second_rank, first, shield_pawn_on_second_rank);
        } else {
            ++holes_first_;
            MenInShield(file & second_rank, bishop_in_shield_on_second_rank, knight_in_shield_on_second_rank);
        }
        if (second != 0) {
            Count(Rule::shield_pawn_on_third_rank, second, shield_pawn_on_third_rank);
        } else {
            ++holes_second_;
            MenInShield(file & third_rank, bishop_in_shield_on_third_rank, knight_in_shield_on_third_rank);
        }
        if ((first | second) == 0) NoShieldOnFile(file);
    }

    /// On the rim own men shield nothing.
    [[gnu::always_inline]] void MenInShield(Bitboard square, const KingValues& of_bishop, const KingValues& of_knight) {
        if ((board_.occupied & square) == 0) return;
        const Bitboard off_rim = square & files(1, 6);
        if ((board_.side(Them).all & square) != 0)
            Count(Rule::enemy_in_shield, square, enemy_in_shield);
        else if ((board_.side(Us).bishops & off_rim) != 0)
            Count(Rule::bishop_in_shield, square, of_bishop);
        else if ((board_.side(Us).knights & off_rim) != 0)
            Count(Rule::knight_in_shield, square, of_knight);
    }

    void NoShieldOnFile(Bitboard file) {
        if (const Bitboard pawn = own_pawns() & file & fourth_rank; pawn != 0)
            Count(Rule::shield_pawn_on_fourth_rank, pawn, shield_pawn_on_fourth_rank);
        else
            Count(Rule::no_shield_on_file, file & (second_rank | third_rank), no_shield_on_file);
        if ((file & (files(1, 1) | files(6, 6))) == 0) return;
        fianchetto_hole_ = true;
        const PAWN_INFO& own = context_.pawns[Us];
        if (const Bitboard pawns = own.doubled & own.isolated & (one_left(file) | one_right(file)); pawns != 0)
            Count(Rule::doubled_pawns_beside_hole, pawns, doubled_pawns_beside_hole);
    }

    void Holes() {
        const int holes = stands_on_ != king_ && holes_first_ == 3 ? holes_second_ : holes_first_;
        if (holes == 0) Count(Rule::shield_without_hole, 0, shield_without_hole);
        if (holes == 1) OneHole();
        if (holes == 2) TwoHoles();
        if (holes == 3) Count(Rule::three_holes, 0, three_holes);
    }

    void OneHole() {
        if (fianchetto_hole_)
            Count(Rule::hole_in_fianchetto, 0, hole_in_fianchetto);
        else if (IsOnOpenLongDiagonal())
            Count(Rule::hole_on_long_diagonal, 0, hole_on_long_diagonal);
        else if (IsOnOpenShortDiagonal())
            Count(Rule::hole_on_short_diagonal, 0, hole_on_short_diagonal);
        else if (HasPawnsSideBySide())
            Count(Rule::hole_beside_two_pawns, 0, hole_beside_two_pawns);
        else
            Count(Rule::hole_elsewhere, 0, hole_elsewhere);
    }

    /// Two on the second rank.
    bool HasPawnsSideBySide() const {
        const Bitboard pawns = own_pawns() & around_king_ & second_rank;
        return (pawns & pawns << 1) != 0;
    }

    bool IsOnOpenLongDiagonal() const {
        constexpr Bitboard a1_h8 = squares_seen<Us>(a1, b2, c3, d4, e5, f6, g7, h8);
        constexpr Bitboard h1_a8 = squares_seen<Us>(h1, g2, f3, e4, d5, c6, b7, a8);
        const Bitboard bishops = board_.side(Us).bishops;
        if (Has(squares_seen<Us>(a1, b2), stands_on_)) {
            return (own_pawns() & squares_seen<Us>(b2, c3, d4)) == 0 && (bishops & a1_h8) == 0;
        }
        if (Has(squares_seen<Us>(h1, g2), stands_on_)) {
            return (own_pawns() & squares_seen<Us>(g2, f3, e4)) == 0 && (bishops & h1_a8) == 0;
        }
        return false;
    }
    /// Of the square asked about, like the long one: not of the square behind it, where the walk begins.
    bool IsOnOpenShortDiagonal() const {
        constexpr Bitboard b1_h7 = squares_seen<Us>(b1, c2, d3, e4, f5, g6, h7);
        constexpr Bitboard g1_a7 = squares_seen<Us>(g1, f2, e3, d4, c5, b6, a7);
        const Bitboard closing = own_pawns() | board_.side(Us).bishops;
        if (stands_on_ == Seen<Us>(b1)) return (closing & b1_h7) == 0;
        if (stands_on_ == Seen<Us>(g1)) return (closing & g1_a7) == 0;
        return false;
    }

    void TwoHoles() {
        const int file = FileOf(king_);
        if ((file < 2 && own_pawn_on(b2)) || (file > 5 && own_pawn_on(g2)))
            Count(Rule::two_holes_with_knight_pawn, 0, two_holes_with_knight_pawn);
        else
            Count(Rule::two_holes, 0, two_holes);
    }

    /// The foremost enemy pawn of a file.
    void StormPawn(Square s) {
        const int rank = rank_seen<Us>(s);
        Count(Rule::storm_pawn, Bit(s), at(storm_pawn, rank - 3));
        PathOfStormPawn(s, rank);
        constexpr Bitboard may_have_neighbour = files(0, 1) | files(5, 6);
        if (const Bitboard neighbour = (Bit(s) & may_have_neighbour) << 1 & enemy_pawns(); neighbour != 0)
            Count(Rule::storm_pawn_with_neighbour, Bit(s) | neighbour, storm_pawn_with_neighbour);
        if (const Bitboard behind = one_ahead<Us>(Bit(s)) & board_.occupied; behind != 0)
            Count(Rule::storm_pawn_obstructed_behind, Bit(s) | behind, storm_pawn_obstructed_behind);
    }

    /// Looks for the first square on the way to the king's side that an own pawn attacks or stands on.
    void PathOfStormPawn(Square storming, int storm_rank) {
        const Bitboard attacked = context_.pawns[Us].attacks;
        const Bitboard met = (attacked | own_pawns()) & file_behind<Us>(storming) & ranks<Us>(1, 6);
        if (met == 0) return;
        const Square s = foremost<Us>(met);
        if (Has(attacked, s))
            Count(Rule::storm_pawn_makes_contact, Bit(s),
                  at(storm_pawn_makes_contact, storm_rank - 1 - rank_seen<Us>(s)));
        else
            Count(Rule::storm_pawn_stopped, Bit(s), storm_pawn_stopped);
    }

    Context& context_;
    const BOARD& board_;
    const Square stands_on_;
    Square king_;               ///< on the back rank, where the walk starts from
    Bitboard around_king_ = 0;  ///< the files of the walk, two or three
    SCORE_PAIR sum_;
    int attack_ = 0;
    int cover_ = 0;
    int open_count_ = 0;  ///< files of the walk without an enemy pawn
    int holes_first_ = 0;
    int holes_second_ = 0;
    bool fianchetto_hole_ = false;
};

}  // namespace

template <Colour Us, class Context>
SCORE_PAIR shelter(Context& context, const BOARD& board, Square square) noexcept {
    ShelterWalk<Us, Context> walk(context, board, square);
    const SCORE_PAIR sum = walk.Run();
    context.king_attack[Us] = static_cast<std::int16_t>(walk.attack());
    context.king_cover[Us] = static_cast<std::int16_t>(walk.cover());
    set_danger_factors<Us>(context);
    return sum;
}

template <Colour Us, class Context>
SCORE_PAIR castled_shelter(Context& context, const BOARD& board, Square square) noexcept {
    const int file = FileOf(square);
    if (rank_seen<Us>(square) > 1 || (file != 2 && file != 5)) return shelter<Us>(context, board, square);
    const int towards_centre = file == 2 ? 1 : -1;
    // What is told are the rules of the second one, which counts for more, and what the first makes of its sum.
    const SCORE_PAIR first = shelter<Us>(static_cast<EVALUATION_CONTEXT&>(context), board, square + towards_centre);
    const SCORE_PAIR second = shelter<Us>(context, board, square - towards_centre);
    const SCORE_PAIR both = {(first.positional() + 3 * second.positional()) / 4,
                             (first.reckless() + 3 * second.reckless()) / 4};
    tell<Us>(context, Rule::shelter_towards_centre, Bit(square + towards_centre), both - second);
    return both;
}

template SCORE_PAIR shelter<white>(EVALUATION_CONTEXT& context, const BOARD& board, Square square) noexcept;
template SCORE_PAIR shelter<black>(EVALUATION_CONTEXT& context, const BOARD& board, Square square) noexcept;
template SCORE_PAIR shelter<white>(TRACED_CONTEXT& context, const BOARD& board, Square square) noexcept;
template SCORE_PAIR shelter<black>(TRACED_CONTEXT& context, const BOARD& board, Square square) noexcept;
template SCORE_PAIR castled_shelter<white>(EVALUATION_CONTEXT& context, const BOARD& board, Square square) noexcept;
template SCORE_PAIR castled_shelter<black>(EVALUATION_CONTEXT& context, const BOARD& board, Square square) noexcept;
template SCORE_PAIR castled_shelter<white>(TRACED_CONTEXT& context, const BOARD& board, Square square) noexcept;
template SCORE_PAIR castled_shelter<black>(TRACED_CONTEXT& context, const BOARD& board, Square square) noexcept;
