#include "evaluation/king/king_safety.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/pieces/ending_tables.h"

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

/// The danger to a king as one shelter finds it.
struct KingDanger {
    std::int16_t attack, cover;  ///< points
    double attack_factor, cover_factor;
};

template <Colour Us>
void set_danger_factors(EVALUATION_CONTEXT& context) {
    context.cover_factor[Us] = danger_of_cover(context.king_cover[Us]);
    context.attack_factor[Us] = danger_of_attack(context.king_attack[Us]);
}

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

/// What a king pays for files without an enemy pawn, by their number.
constexpr std::array<SCORE_PAIR, 4> open_files_charge = {{{-6, -12}, {0, 6}, {6, 12}, {9, 18}}};
constexpr std::array<int, 4> open_files_attack = {-6, 4, 9, 13};

/// What it pays for the foremost enemy pawn of a file, by ranks from the king's fourth rank on.
constexpr std::array<SCORE_PAIR, 4> storm_charge = {{{3, 8}, {5, 13}, {6, 12}, {0, 0}}};
constexpr std::array<int, 4> storm_attack = {4, 7, 8, 0};
/// And for a square in its path that an own pawn attacks, by the ranks between.
constexpr std::array<SCORE_PAIR, 4> contact_charge = {{{4, 12}, {3, 8}, {1, 5}, {0, 0}}};
constexpr std::array<int, 4> contact_attack = {12, 10, 8, 0};

/// The walk over the files around one king.
template <Colour Us>
class ShelterWalk {
  public:
    ShelterWalk(const EVALUATION_CONTEXT& context, const BOARD& board, Square square)
        : context_(context), board_(board), stands_on_(square), king_(square) {}

    SCORE_PAIR Run() {
        if (rank_seen<Us>(king_) > 1) {
            OffHome();
            return sum_;
        }
        StartByFile();
        if (rank_seen<Us>(king_) == 1) OnSecondRank();
        for (int file = first_file(); file <= last_file(); ++file) ShieldOnFile(file);
        OpenFiles();
        Holes();
        if (FileOf(king_) < 2 || FileOf(king_) > 5) {
            for (int file = first_file(); file <= last_file(); ++file) StormOnFile(file);
        }
        return sum_;
    }

    int attack() const { return attack_; }
    int cover() const { return cover_; }

  private:
    static constexpr Colour Them = Opponent(Us);

    int first_file() const { return std::max(FileOf(king_) - 1, 0); }
    int last_file() const { return std::min(FileOf(king_) + 1, 7); }
    Bitboard own_pawns() const { return board_.side(Us).pawns; }
    Bitboard enemy_pawns() const { return board_.side(Them).pawns; }
    bool own_pawn_on(Square seen_from_white) const { return Has(own_pawns(), Seen<Us>(seen_from_white)); }
    static Square square_of(int file, int rank) { return Seen<Us>(rank * 8 + file); }

    void OffHome() {
        const WingCounters& pressure = context_.pressure[Them];
        attack_ = pressure[queen_side] + pressure[king_side] + pressure[centre] + 10;
        cover_ = context_.cover[Us][centre];
        sum_ = {-120, -200};
    }

    void StartByFile() {
        const WingCounters& pressure = context_.pressure[Them];
        const WingCounters& cover = context_.cover[Us];
        const int file = FileOf(king_);
        if (file == 3 || file == 4) {
            sum_ = {-55, -80};
            attack_ = pressure[queen_side] + pressure[king_side] + pressure[centre];
            cover_ = cover[centre];
            return;
        }
        // The f-file counts with the queen side: deliberate.
        const Wing wing = file > 5 ? king_side : queen_side;
        sum_ = {wing == king_side ? 6 : 2, 2};
        attack_ = pressure[centre] / 4 + pressure[wing];
        cover_ = cover[centre] / 2 + cover[wing];
    }

    /// A king on its second rank is walked around as if it stood behind.
    void OnSecondRank() {
        sum_ -= {6, 14};
        cover_ -= 8;
        king_ = Us == white ? king_ - 8 : king_ + 8;
    }

    void ShieldOnFile(int file) {
        if ((enemy_pawns() & file_mask(file)) == 0) ++open_count_;
        const bool first = Has(own_pawns(), square_of(file, 1));
        const bool second = Has(own_pawns(), square_of(file, 2));
        if (first) {
            sum_ += {20, 28};
            if (file != first_file() && Has(own_pawns(), square_of(file - 1, 1))) side_by_side_ = true;
        } else {
            ++holes_first_;
            ManInHole(square_of(file, 1), {2, 5}, {3, 6});
        }
        if (second) {
            sum_ += {13, 22};
        } else {
            ++holes_second_;
            ManInHole(square_of(file, 2), {0, 2}, {2, 4});
        }
        if (!first && !second) NoShieldOnFile(file);
    }

    void ManInHole(Square s, SCORE_PAIR bishop_pair, SCORE_PAIR knight_pair) {
        const bool on_rim = FileOf(s) == 0 || FileOf(s) == 7;
        if (Has(board_.side(Them).all, s)) {
            attack_ += 4;
        } else if (!on_rim && Has(board_.side(Us).bishops, s)) {
            sum_ += bishop_pair;
            cover_ += 2;
        } else if (!on_rim && Has(board_.side(Us).knights, s)) {
            sum_ += knight_pair;
            cover_ += 2;
        }
    }

    void NoShieldOnFile(int file) {
        const bool third = Has(own_pawns(), square_of(file, 3));
        sum_ -= third ? SCORE_PAIR{10, 12} : SCORE_PAIR{12, 14};
        cover_ -= third ? 6 : 10;
        if (file != 1 && file != 6) return;
        fianchetto_hole_ = true;
        const PAWN_INFO& own = context_.pawns[Us];
        if ((own.doubled & own.isolated & neighbouring_files(file)) != 0) {
            sum_ -= {18, 25};
            cover_ -= 10;
        }
    }

    void OpenFiles() {
        sum_ -= at(open_files_charge, open_count_);
        attack_ += at(open_files_attack, open_count_);
    }

    void Holes() {
        const int holes = stands_on_ != king_ && holes_first_ == 3 ? holes_second_ : holes_first_;
        if (holes == 0) Firm();
        if (holes == 1) OneHole();
        if (holes == 2) TwoHoles();
        if (holes == 3) Add({-20, -25}, -16);
    }

    void Add(SCORE_PAIR pair, int cover) {
        sum_ += pair;
        cover_ += cover;
    }
    void Firm() { Add({15, 26}, 14); }

    void OneHole() {
        if (fianchetto_hole_)
            Add({-20, -30}, -10);
        else if (IsOnOpenLongDiagonal())
            Add({-4, -6}, -6);
        else if (IsOnOpenShortDiagonal())
            Add({-2, -3}, -4);
        else if (side_by_side_)
            Firm();
        else
            Add({3, 10}, 8);
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
        const bool knight_pawn_left = (file < 2 && own_pawn_on(b2)) || (file > 5 && own_pawn_on(g2));
        if (knight_pawn_left)
            Add({-5, -8}, -7);
        else
            Add({-7, -12}, -9);
    }

    void StormOnFile(int file) {
        int rank = 3;
        while (rank < 7 && !Has(enemy_pawns(), square_of(file, rank))) ++rank;
        if (rank == 7) return;
        const Square s = square_of(file, rank);
        sum_ -= at(storm_charge, rank - 3);
        attack_ += at(storm_attack, rank - 3);
        PathOfStormPawn(file, rank);
        const bool may_have_neighbour = file == 0 || file == 1 || file == 5 || file == 6;
        if (may_have_neighbour && Has(enemy_pawns(), s + 1)) {
            sum_ -= {5, 16};
            attack_ += 6;
        }
        if (Has(board_.occupied, square_of(file, rank + 1))) {
            sum_ += {4, 8};
            attack_ -= 2;
        }
    }

    /// Looks for the first square on the way to the king's side that an own pawn attacks or stands on.
    void PathOfStormPawn(int file, int storm_rank) {
        for (int rank = storm_rank - 1; rank > 0; --rank) {
            const Square s = square_of(file, rank);
            if (Has(context_.pawns[Us].attacks, s)) {
                sum_ -= at(contact_charge, storm_rank - 1 - rank);
                attack_ += at(contact_attack, storm_rank - 1 - rank);
                return;
            }
            if (Has(own_pawns(), s)) {
                sum_ += {2, 10};
                attack_ -= 4;
                return;
            }
        }
    }

    const EVALUATION_CONTEXT& context_;
    const BOARD& board_;
    const Square stands_on_;
    Square king_;  ///< on the back rank, where the walk starts from
    SCORE_PAIR sum_;
    int attack_ = 0;
    int cover_ = 0;
    int open_count_ = 0;  ///< files of the walk without an enemy pawn
    int holes_first_ = 0;
    int holes_second_ = 0;
    bool side_by_side_ = false;
    bool fianchetto_hole_ = false;
};

SCORE_PAIR scaled(SCORE_PAIR pair, int numerator, int denominator) {
    return {pair.positional() * numerator / denominator, pair.reckless() * numerator / denominator};
}

// --- The king term ---

constexpr int short_right = 1;
constexpr int long_right = 2;

template <Colour Us>
int castling_rights(const BOARD& board) {
    return Us == white ? board.frame().castling & 3 : board.frame().castling >> 2 & 3;
}

template <Colour Us>
SCORE_PAIR uncastled(EVALUATION_CONTEXT& context, const BOARD& board) {
    if (castling_rights<Us>(board) == 0) return {};
    add_points(context.pressure[Us][centre], -4);
    add_points(context.cover[Us][centre], -6);
    return {-65, -75};
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
constexpr std::array<SCORE_PAIR, 4> pieces_between_charge = {{{-4, -8}, {4, 8}, {8, 10}, {12, 14}}};

int half_sum(SCORE_PAIR pair) { return (pair.positional() + pair.reckless()) / 2; }

/// The shelter that a king may still castle to; of two, the better one.
template <Colour Us>
SCORE_PAIR shelter_after_castling(EVALUATION_CONTEXT& context, const BOARD& board, int rights) {
    SCORE_PAIR pair;
    bool goes_long = rights == long_right;
    if (rights == (short_right | long_right)) {
        const SCORE_PAIR long_pair = castled_shelter<Us>(context, board, Seen<Us>(b1));
        const KingDanger long_danger = danger_of<Us>(context);
        pair = castled_shelter<Us>(context, board, Seen<Us>(g1));
        goes_long = half_sum(long_pair) > half_sum(pair);
        if (goes_long) {
            pair = long_pair;
            set_danger<Us>(context, long_danger);
        }
    } else {
        pair = castled_shelter<Us>(context, board, Seen<Us>(goes_long ? b1 : g1));
    }
    const Bitboard between = goes_long ? squares_seen<Us>(b1, c1, d1) : squares_seen<Us>(f1, g1);
    return pair - at(pieces_between_charge, PopCount(board.occupied & between));
}

template <Colour Us>
SCORE_PAIR shelter_where_it_goes(EVALUATION_CONTEXT& context, const BOARD& board) {
    const int rights = usable_rights<Us>(context, board);
    if (rights != 0) return shelter_after_castling<Us>(context, board, rights);
    const SCORE_PAIR pair = castled_shelter<Us>(context, board, board.side(Us).king_square);
    return pair + trapped_king<Us>(context, board);
}

/// The closer the position, the less; by openness.
int scaled_by_openness(int half, int openness) {
    constexpr std::array<int, 8> eighths = {6, 6, 7, 8, 8, 9, 10, 11};
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

/// A lone pawn in front of the king is food.
template <Colour Us>
SCORE_PAIR pawn_in_front_of_king(EVALUATION_CONTEXT& context, const BOARD& board, Bitboard ways_out) {
    constexpr Colour Them = Opponent(Us);
    const Bitboard front = Bit(square_ahead<Us>(board.side(Us).king_square));
    if ((board.side(Them).pawns & front) == 0) return {};
    if ((context.pawns[Them].attacks & front) != 0 || ways_out != front) return {};
    add_points(context.king_attack[Us], -10);
    add_points(context.king_cover[Us], 2);
    return {200, 240};
}

template <Colour Us>
SCORE_PAIR weak_back_rank(EVALUATION_CONTEXT& context, const BOARD& board) {
    constexpr Colour Them = Opponent(Us);
    Bitboard attacked = back_rank_behind<Us>(board.side(Us).king_square) & context.attacks[Them];
    while (attacked != 0) {
        if (!is_reached_by_heavy_piece(TakeNextBit(attacked), board, board.side(Them))) continue;
        add_points(context.king_cover[Us], -6);
        return {-6, -12};
    }
    return {};
}

// --- Endings ---

template <Colour Us>
int king_in_ending(const BOARD& board) {
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    const Square king = board.side(Us).king_square;
    if (5 * enemy.heavy_points + enemy.minor_points > 8)
        return ending_tables::value_at(ending_tables::king_normal, king);
    return 2 * ending_tables::value_at(ending_tables::king_late, king);
}

/// A queen or two rooks against a king, by the men that stand around it.
template <Colour Us>
int heavy_pieces_against_king(const BOARD& board) {
    static constexpr std::array<int, 9> by_guards = {-10, 15, 30, 40, 45, 50, 55, 60, 65};
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    if (board.side(Us).heavy_points < 2) return 0;
    const int guards = PopCount(bitboard_tables.king_attacks[enemy.king_square] & enemy.all);
    return (board.side(Us).queens != 0 ? 100 : 20) - at(by_guards, guards);
}

}  // namespace

void place_kings(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    place_king<white>(context, board);
    place_king<black>(context, board);
}

double danger_of_cover(int king_cover) noexcept {
    if (king_cover < -9) return 1.0;
    if (king_cover >= 5) return 0.0;
    const double x = king_cover;
    return std::clamp(-1.71074236e-05 * x * x - 0.0347771834536 * x + 0.172185814, 0.0, 1.0);
}

double danger_of_attack(int king_attack) noexcept {
    if (king_attack >= 30) return 1.0;
    if (king_attack < -4) return 0.0;
    const double x = king_attack;
    const double factor = -1.9645048633650176e-05 * x * x * x + 0.0006210098320527342 * x * x + 0.0337458699134167 * x +
                          0.07126673933070571;
    return std::clamp(factor, 0.0, 1.0);
}

template <Colour Us>
SCORE_PAIR shelter(EVALUATION_CONTEXT& context, const BOARD& board, Square square) noexcept {
    ShelterWalk<Us> walk(context, board, square);
    const SCORE_PAIR sum = walk.Run();
    context.king_attack[Us] = static_cast<std::int16_t>(walk.attack());
    context.king_cover[Us] = static_cast<std::int16_t>(walk.cover());
    set_danger_factors<Us>(context);
    return sum;
}

template <Colour Us>
SCORE_PAIR castled_shelter(EVALUATION_CONTEXT& context, const BOARD& board, Square square) noexcept {
    const int file = FileOf(square);
    if (rank_seen<Us>(square) > 1 || (file != 2 && file != 5)) return shelter<Us>(context, board, square);
    const int towards_centre = file == 2 ? 1 : -1;
    const SCORE_PAIR first = shelter<Us>(context, board, square + towards_centre);
    const SCORE_PAIR second = shelter<Us>(context, board, square - towards_centre);
    return {(first.positional() + 3 * second.positional()) / 4, (first.reckless() + 3 * second.reckless()) / 4};
}

template <Colour Us>
SCORE_PAIR trapped_king(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const Square king = board.side(Us).king_square;
    if (!Has(squares_seen<Us>(a1, b1, g1, h1), king)) return {};
    const Bitboard ways_out = bitboard_tables.king_attacks[king] & ranks<Us>(1, 1) & ~board.side(Us).pawns;
    return ways_out != 0 ? pawn_in_front_of_king<Us>(context, board, ways_out) : weak_back_rank<Us>(context, board);
}

SCORE_PAIR king_safety(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    constexpr SCORE_PAIR base = {-20, -100};
    SCORE_PAIR w = base + uncastled<white>(context, board);
    SCORE_PAIR b = base + uncastled<black>(context, board);
    w += shelter_where_it_goes<white>(context, board);
    b += shelter_where_it_goes<black>(context, board);
    if (board.side(white).queens == 0) b = scaled(b, 3, 8);
    if (board.side(black).queens == 0) w = scaled(w, 3, 8);
    const SCORE_PAIR sum = weighed<white>(context, w) - weighed<black>(context, b);
    set_danger_factors<white>(context);  // once more: a trapped king has changed its points behind its shelter
    set_danger_factors<black>(context);
    return sum;
}

int king_placement_ending(const EVALUATION_CONTEXT& /*context*/, const BOARD& board) noexcept {
    return king_in_ending<white>(board) - king_in_ending<black>(board) + heavy_pieces_against_king<white>(board) -
           heavy_pieces_against_king<black>(board);
}

template SCORE_PAIR shelter<white>(EVALUATION_CONTEXT& context, const BOARD& board, Square square) noexcept;
template SCORE_PAIR shelter<black>(EVALUATION_CONTEXT& context, const BOARD& board, Square square) noexcept;
template SCORE_PAIR castled_shelter<white>(EVALUATION_CONTEXT& context, const BOARD& board, Square square) noexcept;
template SCORE_PAIR castled_shelter<black>(EVALUATION_CONTEXT& context, const BOARD& board, Square square) noexcept;
template SCORE_PAIR trapped_king<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR trapped_king<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
