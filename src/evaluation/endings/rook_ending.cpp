#include "evaluation/endings/rook_ending.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/endings/ending.h"

namespace {

/// Rook and pawn against rook, told from the pawn's side, its pawn going up.
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

bool lies_between(int file, int one_end, int other_end) {
    return file >= std::min(one_end, other_end) && file <= std::max(one_end, other_end);
}

/// By how many files the rook cuts the enemy king off; 0 if it does not.
int files_cut_off(const SinglePawn& men) {
    const int away = men.files_from_pawn(men.enemy_king);
    if (away < 2 && away >= -1) return 0;
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

int value_with_king_aside(const SinglePawn& men, int value) {
    const int lead = RankOf(men.pawn) - RankOf(men.enemy_king);
    const int with_lead = lead > 0 ? value + 8 * lead : value;
    const int king_aside = men.files_from_pawn(men.own_king);
    const bool on_file_beside = king_aside < 2 && king_aside >= -1;
    const bool rook_in_the_way = lies_between(FileOf(men.enemy_rook), FileOf(men.pawn), FileOf(men.own_king));
    if (!on_file_beside && rook_in_the_way && men.is_alone_on_file(men.enemy_rook)) {
        return std::max(value - 8 * std::abs(king_aside) - 16, 0);
    }
    return std::max(with_lead, 0);
}

int value_with_king_ahead(const SinglePawn& men, int value, int cut_off) {
    const int lead = RankOf(men.pawn) - RankOf(men.enemy_king);
    if (cut_off > 0)
        value += 220;
    else
        value += lead <= 0 ? 60 : std::max(32 * lead + 100, 220);
    return std::max(value, 0);
}

int value_for_pawn_side(const SinglePawn& men) {
    if (men.enemy_king == men.queening_square()) return 10;
    const int cut_off = files_cut_off(men);
    if (can_build_bridge(men, cut_off)) return 350 + 4 * cut_off - std::abs(8 * RankOf(men.own_rook) - 24);
    if (cut_off > 2 && RankOf(men.pawn) >= 5) return 250 + 8 * cut_off;

    int value = 15 - bitboard_tables.distance[men.enemy_rook][men.own_king] + 4 * RankOf(men.pawn);
    if (!men.is_ahead_of_pawn(men.enemy_king)) value += 32 * (cut_off + RankOf(men.pawn) - 6) + 45;
    return men.is_ahead_of_pawn(men.own_king) ? value_with_king_ahead(men, value, cut_off)
                                              : value_with_king_aside(men, value);
}

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

/// The value of rook and pawn against rook, for the side to move.
std::optional<int> single_rook_and_pawn(const BOARD& board) {
    constexpr int two_rooks = 10;  // material units
    const Bitboard pawns = board.side(white).pawns | board.side(black).pawns;
    if (board.total_material != two_rooks || PopCount(pawns) != 1) return std::nullopt;
    const Colour owner = board.side(white).pawns != 0 ? white : black;
    const int value = value_for_pawn_side(owner == white ? seen_from<white>(board) : seen_from<black>(board));
    return board.side_to_move == owner ? value : -value;
}

/// Pawns that only a rook protects against a rook, away from their king.
template <Colour Us>
int tied_rooks(const EVALUATION_CONTEXT& context, const BOARD& board) {
    const SIDE_PIECES& own = board.side(Us);
    Bitboard pawns = own.pawns & ~bitboard_tables.king_attacks[own.king_square] & ~context.pawns[Us].attacks;
    int count = 0;
    while (pawns != 0) {
        const Bitboard seen = board.RookAttacks(TakeNextBit(pawns));
        if ((seen & own.rooks) != 0 && (seen & board.side(Opponent(Us)).rooks) != 0) ++count;
    }
    return -30 * count;
}

}  // namespace

EVALUATION_RESULT evaluate_rook_ending(EVALUATION_CONTEXT& context, const BOARD& board, int bound) noexcept {
    if (const auto value = single_rook_and_pawn(board)) return {.score = *value};
    EVALUATION_RESULT result = evaluate_ending(context, board, bound);
    if (result.lazy) return result;
    const int tied = tied_rooks<white>(context, board) - tied_rooks<black>(context, board);
    result.score += board.side_to_move == white ? tied : -tied;
    return result;
}
