#include "evaluation/pieces/rooks.h"

#include <array>
#include <cstddef>
#include <cstdlib>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/pieces/material_terms.h"

namespace {

/// Pawns on a rook's file. Own pawns behind the rook do not close it.
enum class FileClass { open, half_open, closed, own_pawn_behind };

/// One rook, with what its steps read.
template <Colour Us>
struct RookState {
    Square square;
    int file, rank;  ///< the rank as its side counts
    Wing wing;
    Bitboard plain_attacks;  ///< on the present occupancy
    Bitboard vertical;       ///< on its file through own rooks and queens
    bool connected;          ///< with a rook there
    int first_own_pawn;      ///< the rank of the first own pawn ahead, 0 if there is none
    FileClass file_class;
};

template <Colour Us>
int rank_of_first_ahead(Bitboard pawns, Square s) {
    const Bitboard ahead = pawns & (Us == white ? bitboard_tables.ray_north[s] : bitboard_tables.ray_south[s]);
    if (ahead == 0) return 0;
    return rank_seen<Us>(Us == white ? FindLowestBit(ahead) : FindHighestBit(ahead));
}

template <Colour Us>
FileClass class_of_file(const BOARD& board, int file, int first_own_pawn, int first_enemy_pawn) {
    if ((board.side(Us).pawns & file_mask(file)) == 0) {
        return (board.side(Opponent(Us)).pawns & file_mask(file)) == 0 ? FileClass::open : FileClass::half_open;
    }
    if (first_own_pawn == 0) return FileClass::own_pawn_behind;
    return first_enemy_pawn == 0 || first_enemy_pawn > first_own_pawn ? FileClass::closed : FileClass::half_open;
}

/// The squares of the file that the rook attacks, through own rooks and queens.
template <Colour Us>
Bitboard vertical_attacks(const BOARD& board, Square s) {
    const Bitboard own_heavy_pieces = board.side(Us).rooks | board.side(Us).queens;
    Bitboard walked = Bit(s);
    Bitboard attacks = board.FileAttacks(s);
    for (Bitboard next = attacks & own_heavy_pieces & ~walked; next != 0; next = attacks & own_heavy_pieces & ~walked) {
        const Square through = FindLowestBit(next);
        walked |= Bit(through);
        attacks |= board.FileAttacks(through);
    }
    return attacks & ~Bit(s);
}

template <Colour Us>
RookState<Us> look_at_rook(const BOARD& board, Square s) {
    RookState<Us> rook{};
    rook.square = s;
    rook.file = FileOf(s);
    rook.rank = rank_seen<Us>(s);
    rook.wing = wide_wing(rook.file);
    rook.plain_attacks = board.RookAttacks(s);
    rook.vertical = vertical_attacks<Us>(board, s);
    rook.connected = (rook.vertical & board.side(Us).rooks) != 0;
    rook.first_own_pawn = rank_of_first_ahead<Us>(board.side(Us).pawns, s);
    const int first_enemy_pawn = rank_of_first_ahead<Us>(board.side(Opponent(Us)).pawns, s);
    rook.file_class = class_of_file<Us>(board, rook.file, rook.first_own_pawn, first_enemy_pawn);
    return rook;
}

/// The fewer pawns, the better for rooks; and the squares of its file, by their number.
template <Colour Us>
SCORE_PAIR rook_by_pawns_and_file(const BOARD& board, const RookState<Us>& rook) {
    static constexpr std::array<SCORE_PAIR, 8> by_squares = {
        {{0, 0}, {-4, -10}, {-2, -8}, {0, -2}, {1, 4}, {2, 6}, {3, 8}, {4, 10}}};
    const int pawns = 12 * half_of_all_pawns(board);
    return by_squares[static_cast<std::size_t>(PopCount(rook.vertical))] + SCORE_PAIR{75 - pawns, 45 - pawns};
}

/// Whether the enemy king stands on its first two ranks.
template <Colour Us>
bool has_enemy_king_at_home(const BOARD& board) {
    return rank_seen<Us>(board.side(Opponent(Us)).king_square) >= 6;
}

/// A rook that protects another one, or is connected with it through a queen alone.
template <Colour Us>
SCORE_PAIR rooks_together(EVALUATION_CONTEXT& context, const BOARD& board, const RookState<Us>& rook) {
    const Bitboard protected_rooks = rook.plain_attacks & board.side(Us).rooks;
    if (protected_rooks == 0) {
        if (!rook.connected) return {};
        add_points(context.pressure[Us][rook.wing], -2);
        add_points(context.cover[Us][rook.wing], -4);
        return {-6, -10};
    }
    if (rook.rank == 6 && (protected_rooks & ranks<Us>(6, 6)) != 0 && has_enemy_king_at_home<Us>(board)) {
        add_points(context.pressure[Us][centre], 10);
        return {15, 28};
    }
    add_points(context.cover[Us][centre], 2);
    return {8, 12};
}

/// Rooks side by side at home, before which no own pawn stands on its first square. The next file is the one to the
/// right for both colours.
template <Colour Us>
SCORE_PAIR rook_beside_rook(EVALUATION_CONTEXT& context, const BOARD& board, const RookState<Us>& rook) {
    constexpr Bitboard home = ranks<Us>(0, 1);
    if (rook.rank > 1 || rook.file == 7) return {};
    if ((board.side(Us).rooks & home & file_mask(rook.file + 1)) == 0) return {};
    if ((board.side(Us).pawns & home & files(rook.file, rook.file + 1)) != 0) return {};
    add_points(context.pressure[Us][rook.wing], 1);
    add_points(context.cover[Us][rook.wing], 1);
    return {2, 4};
}

template <Colour Us>
bool is_shut_in_by_king(const BOARD& board, const RookState<Us>& rook) {
    constexpr Bitboard corners[2] = {squares_seen<Us>(a1, b1, c1, a2, b2, a3),
                                     squares_seen<Us>(f1, g1, h1, g2, h2, h3)};
    constexpr int own_rights = Us == white ? white_short | white_long : black_short | black_long;
    if ((board.frame().castling & own_rights) != 0) return false;
    for (const Bitboard corner : corners) {
        if (!Has(corner, rook.square) || !Has(corner, board.side(Us).king_square)) continue;
        if ((rook.plain_attacks & ~corner & ~board.side(Us).all) == 0) return true;
    }
    return false;
}

template <Colour Us>
SCORE_PAIR rook_behind_pawn(EVALUATION_CONTEXT& context, const BOARD& board, const RookState<Us>& rook) {
    std::int16_t& pressure = context.pressure[Us][rook.wing];
    SCORE_PAIR sum;
    if (rook.first_own_pawn < 3) {
        sum += {-6, -14};
        const Bitboard sideways = board.RankAttacks(rook.square) & ~board.occupied;
        const Bitboard own_closed_files = fill_files(board.side(Us).pawns);
        if (sideways == 0) {
            sum += {-2, -6};
            add_points(pressure, -9);
        } else if ((sideways & ~own_closed_files) != 0) {
            sum += {6, 12};
        } else {
            add_points(pressure, -4);
        }
    }
    if (is_shut_in_by_king<Us>(board, rook)) {
        sum += {-50, -70};
        add_points(pressure, -8);
        add_points(context.cover[Us][rook.wing], -5);
    }
    return sum;
}

template <Colour Us>
SCORE_PAIR rook_on_open_file(EVALUATION_CONTEXT& context, const BOARD& board, const RookState<Us>& rook) {
    const int against = PopCount(board.side(Opponent(Us)).rooks & file_mask(rook.file));
    const bool is_held = against >= (rook.connected ? 2 : 1);
    const auto count = [&](SCORE_PAIR pair, int pressure, int cover) {
        add_points(context.pressure[Us][rook.wing], pressure);
        add_points(context.cover[Us][rook.wing], cover);
        return pair;
    };
    if (rook.file == context.only_open_file) return is_held ? count({25, 30}, 12, 4) : count({35, 36}, 8, 8);
    return is_held ? count({16, 25}, 8, 2) : count({7, 15}, 6, 3);
}

template <Colour Us>
SCORE_PAIR rook_by_file_class(EVALUATION_CONTEXT& context, const BOARD& board, const RookState<Us>& rook) {
    switch (rook.file_class) {
        case FileClass::closed:
            return rook_behind_pawn<Us>(context, board, rook);
        case FileClass::own_pawn_behind:
            add_points(context.pressure[Us][rook.wing], 6);
            add_points(context.cover[Us][rook.wing], -6);
            return {};
        case FileClass::half_open:
            add_points(context.pressure[Us][rook.wing], 6);
            return {12, 18};
        default:
            return rook_on_open_file<Us>(context, board, rook);
    }
}

/// What a rook that looks ahead aims at.
template <Colour Us>
SCORE_PAIR rook_and_targets(EVALUATION_CONTEXT& context, const BOARD& board, const RookState<Us>& rook) {
    constexpr Colour Them = Opponent(Us);
    if (rook.file_class == FileClass::closed) return {};
    SCORE_PAIR sum;
    if (rook.rank == 6 && has_enemy_king_at_home<Us>(board)) {
        sum += {28, 50};
        add_points(context.pressure[Us][centre], 14);
    }
    const int files_to_king = std::abs(FileOf(board.side(Them).king_square) - rook.file);
    if (files_to_king == 0) {
        sum += {15, 38};
        add_points(context.pressure[Us][context.king_wing[Them]], 13);
    } else if (files_to_king == 1) {
        sum += {12, 33};
        add_points(context.pressure[Us][context.king_wing[Them]], 11);
    }
    if ((board.side(Them).queens & file_mask(rook.file)) != 0) {
        sum += {8, 25};
        add_points(context.pressure[Us][rook.wing], 4);
        add_points(context.cover[Them][rook.wing], -9);
    }
    return sum;
}

// --- Endings ---

/// A file without own pawns, by the number of such files.
template <Colour Us>
int rook_on_free_file_ending(const EVALUATION_CONTEXT& context, const BOARD& board, int file) {
    static constexpr std::array<int, 9> open = {0, 18, 14, 12, 10, 9, 8, 7, 7};
    static constexpr std::array<int, 9> half_open = {0, 12, 9, 7, 6, 5, 5, 4, 4};
    if ((board.side(Us).pawns & file_mask(file)) != 0) return 0;
    const auto count = static_cast<std::size_t>(context.count_of_files_without_pawn[Us]);
    if ((board.side(Opponent(Us)).pawns & file_mask(file)) != 0) return half_open[count];
    return open[count] + (file == context.only_open_file ? 12 : 0);
}

/// One rook and those it protects that are still to come, so that a pair counts once.
template <Colour Us>
int rooks_together_ending(const BOARD& board, Square s, Bitboard protected_rooks) {
    if (protected_rooks == 0) return 0;
    const bool on_seventh_rank = rank_seen<Us>(s) == 6 && (protected_rooks & ranks<Us>(6, 6)) != 0;
    if (on_seventh_rank && has_enemy_king_at_home<Us>(board)) return 25;
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    return enemy.queens != 0 && board.side(Us).queens == 0 && enemy.rooks == 0 ? 12 : 4;
}

/// Enemy pawns on their second rank that the rook attacks and an enemy rook behind must guard, out of their king's
/// reach.
template <Colour Us>
int rook_and_tied_rook(const BOARD& board, Bitboard attacks) {
    constexpr Colour Them = Opponent(Us);
    const SIDE_PIECES& enemy = board.side(Them);
    Bitboard guarded = enemy.pawns & ranks<Us>(6, 6) & one_ahead<Them>(enemy.rooks) & attacks;
    if (!has_enemy_king_at_home<Us>(board)) guarded &= ~bitboard_tables.king_attacks[enemy.king_square];
    if (guarded == 0) return 0;
    return PopCount(guarded) == 1 ? 30 : 60;
}

}  // namespace

template <Colour Us>
SCORE_PAIR rooks(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    SCORE_PAIR sum;
    for (Bitboard rest = board.side(Us).rooks; rest != 0;) {
        const RookState<Us> rook = look_at_rook<Us>(board, TakeNextBit(rest));
        add_points(context.activity, Us == white ? 24 : -24);
        context.attacks[Us] |= rook.vertical | board.RankAttacks(rook.square);
        sum += rook_by_pawns_and_file<Us>(board, rook);
        sum += rooks_together<Us>(context, board, rook);
        sum += rook_beside_rook<Us>(context, board, rook);
        sum += rook_by_file_class<Us>(context, board, rook);
        sum += rook_and_targets<Us>(context, board, rook);
    }
    return sum;
}
template SCORE_PAIR rooks<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR rooks<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

template <Colour Us>
int rooks_ending(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const int by_pawns = 85 - 12 * half_of_all_pawns(board);
    int sum = 0;
    for (Bitboard rest = board.side(Us).rooks; rest != 0;) {
        const Square s = TakeNextBit(rest);
        const Bitboard attacks = board.RookAttacks(s);
        context.attacks[Us] |= attacks;
        sum += by_pawns;
        sum += rook_on_free_file_ending<Us>(context, board, FileOf(s));
        sum += rooks_together_ending<Us>(board, s, attacks & rest);
        if (rank_seen<Us>(s) == 6 && has_enemy_king_at_home<Us>(board)) sum += 50;
        sum += rook_and_tied_rook<Us>(board, attacks);
    }
    if (board.side(Us).rooks != 0) sum += 4 * PopCount(context.pawns[Opponent(Us)].isolated);
    return sum;
}
template int rooks_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int rooks_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
