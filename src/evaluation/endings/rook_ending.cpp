#include "evaluation/endings/rook_ending.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/view.h"
#include "evaluation/endings/ending.h"
#include "evaluation/rules/tell.h"

namespace {

// --- Rook and pawn against rook ---

/// The men, told from the pawn's side, its pawn going up.
struct SinglePawn {
    Square pawn, own_rook, enemy_rook, own_king, enemy_king;

    [[nodiscard]] int files_from_pawn(Square s) const { return FileOf(s) - FileOf(pawn); }
    /// Whether none of the other four men stands on the file of `man`.
    [[nodiscard]] bool is_alone_on_file(Square man) const {
        int men = 0;
        for (const Square other : {pawn, own_rook, enemy_rook, own_king, enemy_king}) {
            if (FileOf(other) == FileOf(man)) ++men;
        }
        return men == 1;
    }
    [[nodiscard]] Square queening_square() const { return a8 + FileOf(pawn); }
    [[nodiscard]] bool is_ahead_of_pawn(Square s) const { return Has(bitboard_tables.white_pawn_front_span[pawn], s); }
};

/// On the pawn's file or the next one.
bool is_on_file_beside(int files_from_pawn) { return files_from_pawn < 2 && files_from_pawn >= -1; }

bool lies_between(int file, int one_end, int other_end) {
    return file >= std::min(one_end, other_end) && file <= std::max(one_end, other_end);
}

/// By how many ranks the enemy king has stayed behind the pawn.
int ranks_passed(const SinglePawn& men) { return RankOf(men.pawn) - RankOf(men.enemy_king); }

/// By how many files the rook cuts the enemy king off; 0 if it does not.
int files_cut_off(const SinglePawn& men) {
    const int away = men.files_from_pawn(men.enemy_king);
    if (is_on_file_beside(away)) return 0;
    if (!lies_between(FileOf(men.own_rook), FileOf(men.pawn), FileOf(men.enemy_king))) return 0;
    return men.is_alone_on_file(men.own_rook) ? std::abs(away) : 0;
}

/// The king before its pawn on the seventh rank, the enemy rook keeping it there: the rook builds a bridge from the
/// fourth rank.
bool can_build_bridge(const SinglePawn& men, int cut_off) {
    const int file = FileOf(men.pawn);
    return cut_off >= 2 && men.own_king == men.queening_square() && RankOf(men.pawn) == 6 && file > 0 && file < 7 &&
           std::abs(men.files_from_pawn(men.enemy_rook)) == 1;
}

/// The pawn is far and the enemy king too far away.
bool is_far_and_king_cut_off(const SinglePawn& men, int cut_off) { return cut_off > 2 && RankOf(men.pawn) >= 5; }

/// The own king stands beside the pawn and the enemy rook between them keeps it there.
bool is_kept_aside(const SinglePawn& men) {
    return !is_on_file_beside(men.files_from_pawn(men.own_king)) &&
           lies_between(FileOf(men.enemy_rook), FileOf(men.pawn), FileOf(men.own_king)) &&
           men.is_alone_on_file(men.enemy_rook);
}

// What the score is, by itself.
constexpr int king_on_queening_square = 10;
constexpr int bridge_before_king = 350;
int bridge_by_files_cut_off(int cut_off) { return 4 * cut_off; }
/// Eight for each rank.
int bridge_rook_off_fourth_rank(Square rook) { return -std::abs(8 * RankOf(rook) - 24); }
constexpr int far_pawn_and_king_cut_off = 250;
int far_pawn_by_files_cut_off(int cut_off) { return 8 * cut_off; }

// Or a sum.
constexpr int rook_and_pawn = 15;
int enemy_rook_far_from_king(const SinglePawn& men) { return -bitboard_tables.distance[men.enemy_rook][men.own_king]; }
int pawn_by_rank(Square pawn) { return 4 * RankOf(pawn); }
int enemy_king_not_ahead(const SinglePawn& men, int cut_off) { return 32 * (cut_off + RankOf(men.pawn) - 6) + 45; }
int enemy_king_passed_by_pawn(const SinglePawn& men) { return 8 * std::max(ranks_passed(men), 0); }
/// The own king beside the pawn's way.
int king_kept_aside_by_rook(const SinglePawn& men) { return -8 * std::abs(men.files_from_pawn(men.own_king)) - 16; }
/// And on it.
int king_before_pawn(const SinglePawn& men, int cut_off) {
    constexpr int enemy_king_cut_off = 220;
    constexpr int enemy_king_level_or_ahead = 60;
    if (cut_off > 0) return enemy_king_cut_off;
    const int passed = ranks_passed(men);
    return passed <= 0 ? enemy_king_level_or_ahead : std::max(32 * passed + 100, enemy_king_cut_off);
}
constexpr int rook_and_pawn_is_no_less = 0;

template <Colour Us>
SinglePawn seen_from(const BOARD& board) {
    const SIDE_PIECES& own = board.side(Us);
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    return {.pawn = Seen<Us>(FindLowestBit(own.pawns)),
            .own_rook = Seen<Us>(FindLowestBit(own.rooks)),
            .enemy_rook = Seen<Us>(FindLowestBit(enemy.rooks)),
            .own_king = Seen<Us>(own.king_square),
            .enemy_king = Seen<Us>(enemy.king_square)};
}

/// The value for the side of the pawn.
template <Colour Us, class Context>
int value_for_pawn_side(Context& context, const BOARD& board) {
    const SinglePawn men = seen_from<Us>(board);
    int sum = 0;
    const auto count = [&](Rule rule, int value, auto... squares) {
        sum += tell<Us>(context, rule, squares_seen<Us>(squares...), value);
    };
    if (men.enemy_king == men.queening_square()) {
        count(Rule::king_on_queening_square, king_on_queening_square, men.pawn, men.enemy_king);
        return sum;
    }
    const int cut_off = files_cut_off(men);
    if (can_build_bridge(men, cut_off)) {
        count(Rule::bridge_before_king, bridge_before_king, men.pawn, men.own_king);
        count(Rule::bridge_by_files_cut_off, bridge_by_files_cut_off(cut_off), men.own_rook, men.enemy_king);
        count(Rule::bridge_rook_off_fourth_rank, bridge_rook_off_fourth_rank(men.own_rook), men.own_rook);
        return sum;
    }
    if (is_far_and_king_cut_off(men, cut_off)) {
        count(Rule::far_pawn_and_king_cut_off, far_pawn_and_king_cut_off, men.pawn, men.enemy_king);
        count(Rule::far_pawn_by_files_cut_off, far_pawn_by_files_cut_off(cut_off), men.own_rook, men.enemy_king);
        return sum;
    }

    count(Rule::rook_and_pawn, rook_and_pawn, men.own_rook, men.pawn);
    count(Rule::enemy_rook_far_from_king, enemy_rook_far_from_king(men), men.enemy_rook, men.own_king);
    count(Rule::pawn_by_rank, pawn_by_rank(men.pawn), men.pawn);
    if (!men.is_ahead_of_pawn(men.enemy_king))
        count(Rule::enemy_king_not_ahead, enemy_king_not_ahead(men, cut_off), men.pawn, men.enemy_king);

    if (men.is_ahead_of_pawn(men.own_king))
        count(Rule::king_before_pawn, king_before_pawn(men, cut_off), men.pawn, men.own_king);
    else if (is_kept_aside(men))
        count(Rule::king_kept_aside_by_rook, king_kept_aside_by_rook(men), men.own_king, men.enemy_rook);
    else
        count(Rule::enemy_king_passed_by_pawn, enemy_king_passed_by_pawn(men), men.pawn, men.enemy_king);
    return tell_limited(context, Us, Rule::rook_and_pawn_is_no_less, sum, std::max(sum, rook_and_pawn_is_no_less));
}

// --- Rooks and pawns ---

/// A pawn that only a rook protects against a rook, away from its king.
constexpr int rook_tied_to_pawn = -30;

template <Colour Us, class Context>
int rooks_tied_to_pawns_of(Context& context, const BOARD& board) {
    const SIDE_PIECES& own = board.side(Us);
    int sum = 0;
    Bitboard pawns = own.pawns & ~bitboard_tables.king_attacks[own.king_square] & ~context.pawns[Us].attacks;
    while (pawns != 0) {
        const Square s = TakeNextBit(pawns);
        const Bitboard seen = board.RookAttacks(s);
        if ((seen & own.rooks) != 0 && (seen & board.side(Opponent(Us)).rooks) != 0)
            sum += tell<Us>(context, Rule::rook_tied_to_pawn, Bit(s), rook_tied_to_pawn);
    }
    return sum;
}

}  // namespace

template <class Context>
std::optional<int> single_rook_and_pawn(Context& context, const BOARD& board) noexcept {
    constexpr int two_rooks = 10;  // material units
    const Bitboard pawns = board.side(white).pawns | board.side(black).pawns;
    if (board.total_material != two_rooks || PopCount(pawns) != 1) return std::nullopt;
    return board.side(white).pawns != 0 ? turned_from(white, board, value_for_pawn_side<white>(context, board))
                                        : turned_from(black, board, value_for_pawn_side<black>(context, board));
}

template <class Context>
int rooks_tied_to_pawns(Context& context, const BOARD& board) noexcept {
    const int of_white = rooks_tied_to_pawns_of<white>(context, board);
    return of_white - rooks_tied_to_pawns_of<black>(context, board);
}

EVALUATION_RESULT evaluate_rook_ending(EVALUATION_CONTEXT& context, const BOARD& board, int bound) noexcept {
    if (const auto value = single_rook_and_pawn(context, board)) return {.score = *value};
    EVALUATION_RESULT result = evaluate_ending(context, board, bound);
    if (!result.lazy) result.score += turned(board, rooks_tied_to_pawns(context, board));
    return result;
}

template std::optional<int> single_rook_and_pawn(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template std::optional<int> single_rook_and_pawn(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int rooks_tied_to_pawns(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int rooks_tied_to_pawns(TRACED_CONTEXT& context, const BOARD& board) noexcept;
