#include "evaluation/pieces/rooks.h"

#include <array>
#include <cstdlib>

#include "chess/bitboard_tables.h"
#include "chess/position_keys.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/rule_values.h"
#include "evaluation/context/sided_squares.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/pieces/material_terms.h"
#include "evaluation/rules/tell.h"

namespace {

/// Pawns on a rook's file. Own pawns behind the rook do not close it.
enum class FileClass { open, half_open, closed, own_pawn_behind };

/// One rook, with what its steps read.
template <Colour Us>
struct RookState {
    Square square;
    int file, rank;  ///< the rank as its side counts
    Wing wing;
    Bitboard sideways;         ///< what it attacks on its rank
    Bitboard plain_attacks;    ///< and on its file too
    Bitboard vertical;         ///< on its file through own rooks and queens
    bool connected;            ///< with a rook there
    Bitboard own_pawns_ahead;  ///< on its file
    FileClass file_class;
};

template <Colour Us>
FileClass class_of_file(const BOARD& board, const RookState<Us>& rook) {
    const Bitboard file = file_mask(rook.file);
    const Bitboard enemy_pawns = board.side(Opponent(Us)).pawns & file;
    if ((board.side(Us).pawns & file) == 0) return enemy_pawns == 0 ? FileClass::open : FileClass::half_open;
    if (rook.own_pawns_ahead == 0) return FileClass::own_pawn_behind;
    const Bitboard before_own_pawn = file_behind<Us>(rearmost<Us>(rook.own_pawns_ahead));
    return (enemy_pawns & file_ahead<Us>(rook.square) & before_own_pawn) == 0 ? FileClass::closed
                                                                              : FileClass::half_open;
}

/// The squares of the file that the rook attacks, through own rooks and queens. `attacks` is what it attacks there.
template <Colour Us>
Bitboard vertical_attacks(const BOARD& board, Square s, Bitboard attacks) {
    const Bitboard own_heavy_pieces = board.side(Us).rooks | board.side(Us).queens;
    Bitboard walked = Bit(s);
    for (Bitboard next = attacks & own_heavy_pieces; next != 0; next = attacks & own_heavy_pieces & ~walked) {
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
    rook.sideways = board.RankAttacks(s);
    const Bitboard attacks_on_file = board.FileAttacks(s);
    rook.plain_attacks = rook.sideways | attacks_on_file;
    rook.vertical = vertical_attacks<Us>(board, s, attacks_on_file);
    rook.connected = (rook.vertical & board.side(Us).rooks) != 0;
    rook.own_pawns_ahead = board.side(Us).pawns & file_ahead<Us>(s);
    rook.file_class = class_of_file<Us>(board, rook);
    return rook;
}

/// Whether the enemy king stands on its first two ranks.
template <Colour Us>
bool has_enemy_king_at_home(const BOARD& board) {
    return rank_seen<Us>(board.side(Opponent(Us)).king_square) >= 6;
}

/// The fewer pawns, the better for rooks.
SCORE_PAIR rook_by_pawns(const EVALUATION_CONTEXT& context) {
    constexpr SCORE_PAIR without_pawns = {75, 45};
    const int charge = 12 * half_of_all_pawns(context);
    return without_pawns - SCORE_PAIR{charge, charge};
}

/// The squares of its file that the rook attacks, by their number.
template <Colour Us>
SCORE_PAIR rook_by_squares_on_file(const RookState<Us>& rook) {
    static constexpr std::array<SCORE_PAIR, 8> by_squares = {
        {{0, 0}, {-4, -10}, {-2, -8}, {0, -2}, {1, 4}, {2, 6}, {3, 8}, {4, 10}}};  // n = 0, 1, ..
    return at(by_squares, count_on_file(rook.vertical, rook.file));
}

// --- Rooks together ---

/// Two rooks on the seventh rank that protect one another. They press on the centre.
template <Colour Us>
SCORE_PAIR rooks_on_seventh(EVALUATION_CONTEXT& context) {
    return count_on<Us>(centre, context, {.pair = {15, 28}, .pressure = 10});
}

/// A rook that protects another one elsewhere.
template <Colour Us>
SCORE_PAIR rook_protects_rook(EVALUATION_CONTEXT& context) {
    return count_on<Us>(centre, context, {.pair = {8, 12}, .cover = 2});
}

/// A rook that is connected with another one through a queen alone.
template <Colour Us>
SCORE_PAIR rooks_apart_by_queen(EVALUATION_CONTEXT& context, const RookState<Us>& rook) {
    return count_on<Us>(rook.wing, context, {.pair = {-6, -10}, .pressure = -2, .cover = -4});
}

/// Rooks side by side at home, before which no own pawn stands on its first square. The next file is the one to the
/// right for both colours: docs/oddities.md, rook beside rook.
template <Colour Us>
SCORE_PAIR rook_beside_rook(EVALUATION_CONTEXT& context, const BOARD& board, const RookState<Us>& rook) {
    constexpr Bitboard home = ranks<Us>(0, 1);
    if (rook.rank > 1 || rook.file == 7) return {};
    if ((board.side(Us).rooks & home & file_mask(rook.file + 1)) == 0) return {};
    if ((board.side(Us).pawns & home & files(rook.file, rook.file + 1)) != 0) return {};
    return count_on<Us>(rook.wing, context, {.pair = {2, 4}, .pressure = 1, .cover = 1});
}

// --- Rooks behind their pawns ---

/// An own pawn that still stands on the second or third rank.
constexpr SCORE_PAIR rook_behind_own_pawn = {-6, -14};

/// Whether such a rook can leave its file sideways, to another file without own pawns at best.
template <Colour Us>
SCORE_PAIR rook_without_sideways_move(EVALUATION_CONTEXT& context, const RookState<Us>& rook) {
    return count_on<Us>(rook.wing, context, {.pair = {-2, -6}, .pressure = -9});
}
constexpr SCORE_PAIR rook_may_change_to_free_file = {6, 12};
template <Colour Us>
SCORE_PAIR rook_among_closed_files(EVALUATION_CONTEXT& context, const RookState<Us>& rook) {
    return count_on<Us>(rook.wing, context, {.pair = {}, .pressure = -4});
}

template <Colour Us>
bool is_shut_in_by_king(const BOARD& board, const RookState<Us>& rook) {
    constexpr Bitboard corners[2] = {squares_seen<Us>(a1, b1, c1, a2, b2, a3),
                                     squares_seen<Us>(f1, g1, h1, g2, h2, h3)};
    if ((board.frame().castling & castling_rights_of[Us]) != 0) return false;
    for (const Bitboard corner : corners) {
        if (!Has(corner, rook.square) || !Has(corner, board.side(Us).king_square)) continue;
        if ((rook.plain_attacks & ~corner & ~board.side(Us).all) == 0) return true;
    }
    return false;
}

/// A rook that can't get out of the corner of its king, which can't castle any more.
template <Colour Us>
SCORE_PAIR rook_shut_in_by_king(EVALUATION_CONTEXT& context, const BOARD& board, const RookState<Us>& rook) {
    if (!is_shut_in_by_king<Us>(board, rook)) return {};
    return count_on<Us>(rook.wing, context, {.pair = {-50, -70}, .pressure = -8, .cover = -5});
}

// --- Rooks on their files ---

/// The only own pawns of its file stand behind the rook.
template <Colour Us>
SCORE_PAIR rook_before_own_pawn(EVALUATION_CONTEXT& context, const RookState<Us>& rook) {
    return count_on<Us>(rook.wing, context, {.pair = {}, .pressure = 6, .cover = -6});
}

template <Colour Us>
SCORE_PAIR rook_on_half_open_file(EVALUATION_CONTEXT& context, const RookState<Us>& rook) {
    return count_on<Us>(rook.wing, context, {.pair = {12, 18}, .pressure = 6});
}

/// Whether enough enemy rooks stand on the file to hold it.
template <Colour Us>
bool is_file_held(const BOARD& board, const RookState<Us>& rook) {
    const Bitboard holding = board.side(Opponent(Us)).rooks & file_mask(rook.file);
    return rook.connected ? HasSeveral(holding) : holding != 0;
}

template <Colour Us>
SCORE_PAIR rook_on_only_open_file(EVALUATION_CONTEXT& context, const BOARD& board, const RookState<Us>& rook) {
    constexpr RULE_VALUES held = {.pair = {25, 30}, .pressure = 12, .cover = 4};
    constexpr RULE_VALUES won = {.pair = {35, 36}, .pressure = 8, .cover = 8};
    return is_file_held<Us>(board, rook) ? count_on<Us>(rook.wing, context, held)
                                         : count_on<Us>(rook.wing, context, won);
}

/// One of several open files: where rooks meet, the file matters more.
template <Colour Us>
SCORE_PAIR rook_on_open_file(EVALUATION_CONTEXT& context, const BOARD& board, const RookState<Us>& rook) {
    constexpr RULE_VALUES held = {.pair = {16, 25}, .pressure = 8, .cover = 2};
    constexpr RULE_VALUES won = {.pair = {7, 15}, .pressure = 6, .cover = 3};
    return is_file_held<Us>(board, rook) ? count_on<Us>(rook.wing, context, held)
                                         : count_on<Us>(rook.wing, context, won);
}

// --- What a rook that looks ahead aims at ---

/// A rook on the seventh rank while the enemy king stands there or behind it. It presses on the centre.
template <Colour Us>
SCORE_PAIR rook_on_seventh(EVALUATION_CONTEXT& context, const BOARD& board, const RookState<Us>& rook) {
    if (rook.rank != 6 || !has_enemy_king_at_home<Us>(board)) return {};
    return count_on<Us>(centre, context, {.pair = {28, 50}, .pressure = 14});
}

template <Colour Us>
SCORE_PAIR rook_on_kings_file(EVALUATION_CONTEXT& context) {
    return count_on<Us>(context.king_wing[Opponent(Us)], context, {.pair = {15, 38}, .pressure = 13});
}
template <Colour Us>
SCORE_PAIR rook_beside_kings_file(EVALUATION_CONTEXT& context) {
    return count_on<Us>(context.king_wing[Opponent(Us)], context, {.pair = {12, 33}, .pressure = 11});
}

/// An enemy queen on the file of the rook. The enemy's cover suffers too.
template <Colour Us>
SCORE_PAIR rook_against_queen(EVALUATION_CONTEXT& context, const BOARD& board, const RookState<Us>& rook) {
    constexpr int enemy_cover = -9;
    if ((board.side(Opponent(Us)).queens & file_mask(rook.file)) == 0) return {};
    add_points(context.cover[Opponent(Us)][rook.wing], enemy_cover);
    return count_on<Us>(rook.wing, context, {.pair = {8, 25}, .pressure = 4});
}

// --- Endings ---

/// The fewer pawns, the better for rooks.
int rook_by_pawns_ending(const EVALUATION_CONTEXT& context) { return 85 - 12 * half_of_all_pawns(context); }

// A file without own pawns, by the number of such files.
template <Colour Us>
int rook_on_half_open_file_ending(const EVALUATION_CONTEXT& context) {
    static constexpr std::array<int, 9> by_files = {0, 12, 9, 7, 6, 5, 5, 4, 4};
    return at(by_files, PopCount(context.files_without_pawn[Us]));
}
template <Colour Us>
int rook_on_open_file_ending(const EVALUATION_CONTEXT& context) {
    static constexpr std::array<int, 9> by_files = {0, 18, 14, 12, 10, 9, 8, 7, 7};
    return at(by_files, PopCount(context.files_without_pawn[Us]));
}
constexpr int rook_on_only_open_file_ending = 12;

constexpr int rooks_on_seventh_ending = 25;
template <Colour Us>
int rook_protects_rook_ending(const BOARD& board) {
    constexpr int otherwise = 4;
    constexpr int against_lone_queen = 12;  // the pieces that a queen can't beat stand together
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    return enemy.queens != 0 && board.side(Us).queens == 0 && enemy.rooks == 0 ? against_lone_queen : otherwise;
}

template <Colour Us>
int rook_on_seventh_ending(const BOARD& board, Square s) {
    return rank_seen<Us>(s) == 6 && has_enemy_king_at_home<Us>(board) ? 50 : 0;
}

/// Enemy pawns on their second rank that the rook attacks and an enemy rook behind must guard, out of their king's
/// reach.
template <Colour Us>
int rook_ties_rook_to_pawn_ending(const BOARD& board, Bitboard attacks) {
    constexpr Colour Them = Opponent(Us);
    const SIDE_PIECES& enemy = board.side(Them);
    Bitboard guarded = enemy.pawns & ranks<Us>(6, 6) & one_ahead<Them>(enemy.rooks) & attacks;
    if (!has_enemy_king_at_home<Us>(board)) guarded &= ~bitboard_tables.king_attacks[enemy.king_square];
    if (guarded == 0) return 0;
    return HasSeveral(guarded) ? 60 : 30;
}

/// Enemy pawns without neighbours, once for all rooks.
template <Colour Us>
int rooks_against_isolated_pawns_ending(const EVALUATION_CONTEXT& context) {
    return 4 * PopCount(context.pawns[Opponent(Us)].isolated);
}

}  // namespace

template <Colour Us, class Context>
SCORE_PAIR rooks(Context& context, const BOARD& board) noexcept {
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    SCORE_PAIR sum;
    for (Bitboard rest = board.side(Us).rooks; rest != 0;) {
        const RookState<Us> rook = look_at_rook<Us>(board, TakeNextBit(rest));
        const auto count = [&](Rule rule, SCORE_PAIR pair, Bitboard with = 0) {
            sum += tell<Us>(context, rule, Bit(rook.square) | with, pair);
        };
        add_activity<Us>(context, 24);
        context.attacks[Us] |= rook.vertical | rook.sideways;
        count(Rule::rook_by_pawns, rook_by_pawns(context));
        count(Rule::rook_by_squares_on_file, rook_by_squares_on_file<Us>(rook));

        if (const Bitboard others = rook.plain_attacks & board.side(Us).rooks; others != 0) {
            if (rook.rank == 6 && (others & ranks<Us>(6, 6)) != 0 && has_enemy_king_at_home<Us>(board))
                count(Rule::rooks_on_seventh, rooks_on_seventh<Us>(context), others);
            else
                count(Rule::rook_protects_rook, rook_protects_rook<Us>(context), others);
        } else if (rook.connected) {
            count(Rule::rooks_apart_by_queen, rooks_apart_by_queen<Us>(context, rook));
        }
        count(Rule::rook_beside_rook, rook_beside_rook<Us>(context, board, rook));

        switch (rook.file_class) {
            case FileClass::closed:
                if ((rook.own_pawns_ahead & ranks<Us>(1, 2)) != 0) {
                    count(Rule::rook_behind_own_pawn, rook_behind_own_pawn);
                    const Bitboard sideways = rook.sideways & ~board.occupied;
                    if (sideways == 0)
                        count(Rule::rook_without_sideways_move, rook_without_sideways_move<Us>(context, rook));
                    else if ((sideways & ~fill_files(board.side(Us).pawns)) != 0)
                        count(Rule::rook_may_change_to_free_file, rook_may_change_to_free_file);
                    else
                        count(Rule::rook_among_closed_files, rook_among_closed_files<Us>(context, rook));
                }
                count(Rule::rook_shut_in_by_king, rook_shut_in_by_king<Us>(context, board, rook),
                      Bit(board.side(Us).king_square));
                continue;  // it does not look ahead
            case FileClass::own_pawn_behind:
                count(Rule::rook_before_own_pawn, rook_before_own_pawn<Us>(context, rook));
                break;
            case FileClass::half_open:
                count(Rule::rook_on_half_open_file, rook_on_half_open_file<Us>(context, rook));
                break;
            case FileClass::open:
                if (rook.file == context.only_open_file)
                    count(Rule::rook_on_only_open_file, rook_on_only_open_file<Us>(context, board, rook));
                else
                    count(Rule::rook_on_open_file, rook_on_open_file<Us>(context, board, rook));
                break;
        }
        count(Rule::rook_on_seventh, rook_on_seventh<Us>(context, board, rook));
        const int files_to_king = std::abs(FileOf(enemy.king_square) - rook.file);
        if (files_to_king == 0)
            count(Rule::rook_on_kings_file, rook_on_kings_file<Us>(context), Bit(enemy.king_square));
        else if (files_to_king == 1)
            count(Rule::rook_beside_kings_file, rook_beside_kings_file<Us>(context), Bit(enemy.king_square));
        count(Rule::rook_against_queen, rook_against_queen<Us>(context, board, rook),
              enemy.queens & file_mask(rook.file));
    }
    return sum;
}

template <Colour Us, class Context>
int rooks_ending(Context& context, const BOARD& board) noexcept {
    const SIDE_PIECES& own = board.side(Us);
    int sum = 0;
    for (Bitboard rest = own.rooks; rest != 0;) {
        const Square s = TakeNextBit(rest);
        const auto count = [&](Rule rule, int value, Bitboard with = 0) {
            sum += tell<Us>(context, rule, Bit(s) | with, value);
        };
        const Bitboard attacks = board.RookAttacks(s);
        context.attacks[Us] |= attacks;
        count(Rule::rook_by_pawns, rook_by_pawns_ending(context));
        if ((own.pawns & file_mask(FileOf(s))) == 0) {
            if ((board.side(Opponent(Us)).pawns & file_mask(FileOf(s))) != 0) {
                count(Rule::rook_on_half_open_file, rook_on_half_open_file_ending<Us>(context));
            } else {
                count(Rule::rook_on_open_file, rook_on_open_file_ending<Us>(context));
                if (FileOf(s) == context.only_open_file)
                    count(Rule::rook_on_only_open_file, rook_on_only_open_file_ending);
            }
        }
        // Only those that are still to come, so that a pair counts once.
        if (const Bitboard others = attacks & rest; others != 0) {
            if (rank_seen<Us>(s) == 6 && (others & ranks<Us>(6, 6)) != 0 && has_enemy_king_at_home<Us>(board))
                count(Rule::rooks_on_seventh, rooks_on_seventh_ending, others);
            else
                count(Rule::rook_protects_rook, rook_protects_rook_ending<Us>(board), others);
        }
        count(Rule::rook_on_seventh, rook_on_seventh_ending<Us>(board, s));
        count(Rule::rook_ties_rook_to_pawn, rook_ties_rook_to_pawn_ending<Us>(board, attacks));
    }
    if (own.rooks != 0) {
        sum += tell<Us>(context, Rule::rooks_against_isolated_pawns, context.pawns[Opponent(Us)].isolated,
                        rooks_against_isolated_pawns_ending<Us>(context));
    }
    return sum;
}

template SCORE_PAIR rooks<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR rooks<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR rooks<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR rooks<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int rooks_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int rooks_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int rooks_ending<white>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int rooks_ending<black>(TRACED_CONTEXT& context, const BOARD& board) noexcept;
