#include "evaluation/endings/unstoppable_pawns.h"

#include <algorithm>
#include <array>

#include "bitbases/bitbases.h"
#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/sided_squares.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/context/view.h"
#include "evaluation/rules/tell.h"

namespace {

/// By the rank of the foremost pawn that runs, the second rank first.
template <Colour Us>
int runner_against_king(const BOARD& board, Bitboard runners) {
    static constexpr std::array<int, 6> with_the_move = {640, 640, 720, 760, 800, 920};
    static constexpr std::array<int, 6> without_the_move = {520, 520, 640, 720, 760, 800};
    const int rank = rank_seen<Us>(foremost<Us>(runners));
    return at(board.side_to_move == Us ? with_the_move : without_the_move, rank - 1);
}

/// A pawn that wins if it alone stands on the board with the kings, by its rank, the second one first.
constexpr std::array<int, 6> pawns_that_win_alone = {210, 210, 215, 225, 240, 250};

bool has_pieces(const SIDE_PIECES& side) { return side.heavy_points + side.minor_points != 0; }

/// The foremost passed pawns of `Us` whose square the enemy king does not reach.
template <Colour Us>
Bitboard uncaught_pawns(const EVALUATION_CONTEXT& context, const BOARD& board) {
    return context.pawns[Us].front_passed &
           pawns_out_of_reach<Us>(board.side(Opponent(Us)).king_square, board.side_to_move);
}

template <Colour Us, class Context>
int tell_pawns_that_win_alone(Context& context, const BOARD& board, int times = 1) {
    return tell<Us>(context, Rule::pawns_that_win_alone, context.pawns[Us].front_passed,
                    times * race_value<Us>(context, board));
}

// --- Against a king without pieces ---

constexpr RunnerCheck check_of_pawns[2] = {RunnerCheck::white_pawns, RunnerCheck::black_pawns};

/// The bonus of `Us`, in its own view, against an enemy without pieces.
template <Colour Us, class Context>
UNSTOPPABLE_BONUS bonus_against_bare_king(Context& context, const BOARD& board) {
    constexpr Colour Them = Opponent(Us);
    if (context.pawns[Us].front_passed == 0) return {};
    if (const Bitboard runners = uncaught_pawns<Us>(context, board); runners != 0) {
        const int value = runner_against_king<Us>(board, runners);
        return {.score = tell<Us>(context, Rule::runner_against_king, runners, value)};
    }
    if (context.pawns[Them].passed != 0) return {.check = check_of_pawns[Them]};
    return {.score = tell_pawns_that_win_alone<Us>(context, board)};
}

/// `Us` has pieces: whether they stop every passed pawn of the enemy.
template <Colour Us>
bool stops_all_pawns(const EVALUATION_CONTEXT& context, const BOARD& board) {
    const Bitboard watched = context.attacks[Us] & ~bitboard_tables.king_attacks[board.side(Us).king_square];
    for (Bitboard pawns = context.pawns[Opponent(Us)].front_passed; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        const Bitboard path = file_ahead<Opponent(Us)>(s);
        if ((path & (board.side(Us).all | watched)) == 0) return false;
    }
    return true;
}

template <Colour Us, class Context>
int checked_bonus(Context& context, const BOARD& board) {
    return stops_all_pawns<Us>(context, board) ? tell_pawns_that_win_alone<Us>(context, board) : 0;
}

// --- The race of an ending of kings and pawns ---

/// The result of one white pawn against one black pawn, White minus Black, as the table of two pawns knows it. What it
/// stores for a win becomes a value; every other stored number counts as it stands.
int race_of_two(const EVALUATION_CONTEXT& context, const BOARD& board, Square white_pawn, Square black_pawn) {
    constexpr int won = 150;
    constexpr int stored_win = 1;  // of the side to move
    constexpr int stored_loss = 3;
    const int result = context.bitbases->ProbeTwoPawnsRaw(board.mover(), board.side(white).king_square,
                                                          board.side(black).king_square, white_pawn, black_pawn);
    if (result == stored_win) return turned(board, won);
    if (result == stored_loss) return turned(board, -won);
    return result;
}

/// Both sides have passed pawns: pawn by pawn. Of White's pawns the least result counts, of Black's the greatest.
int race_of_both_sides(const EVALUATION_CONTEXT& context, const BOARD& board) {
    constexpr int beyond_all = 300;
    if (context.bitbases == nullptr || !context.bitbases->TwoPawnsLoaded()) return 0;
    int best = -beyond_all;
    for (Bitboard black_pawns = context.pawns[black].front_passed; black_pawns != 0;) {
        const Square black_pawn = TakeNextBit(black_pawns);
        int least = beyond_all;
        for (Bitboard white_pawns = context.pawns[white].front_passed; white_pawns != 0 && least > best;) {
            least = std::min(least, race_of_two(context, board, TakeNextBit(white_pawns), black_pawn));
        }
        best = std::max(best, least);
    }
    return best;
}

template <Colour Us, class Context>
int race_of_one_side(Context& context, const BOARD& board) {
    constexpr int times = 2;  // nothing but pawns is left to stop them
    if (const Bitboard runners = uncaught_pawns<Us>(context, board); runners != 0) {
        const int value = times * runner_against_king<Us>(board, runners);
        return tell<Us>(context, Rule::runner_against_king, runners, value);
    }
    return tell_pawns_that_win_alone<Us>(context, board, times);
}

}  // namespace

template <class Context>
UNSTOPPABLE_BONUS unstoppable_bonus(Context& context, const BOARD& board) noexcept {
    const bool white_has_pieces = has_pieces(board.side(white));
    if (!has_pieces(board.side(black))) return bonus_against_bare_king<white>(context, board);
    if (white_has_pieces) return {};
    const UNSTOPPABLE_BONUS of_black = bonus_against_bare_king<black>(context, board);
    return {.score = -of_black.score, .check = of_black.check};
}

template <class Context>
int checked_unstoppable_bonus(Context& context, const BOARD& board, RunnerCheck check) noexcept {
    if (check == RunnerCheck::black_pawns) return checked_bonus<white>(context, board);
    if (check == RunnerCheck::white_pawns) return -checked_bonus<black>(context, board);
    return 0;
}

template <Colour Us>
int race_value(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    constexpr int most = 400;
    const Colour to_move = board.mover();
    const Square white_king = board.side(white).king_square;
    const Square black_king = board.side(black).king_square;
    int sum = 0;
    for (int file = 0; file < 8; ++file) {
        const Bitboard pawn = context.pawns[Us].front_passed & file_mask(file);
        if (pawn == 0) continue;
        const Square s = FindLowestBit(pawn);
        if (!VorkaBitbases::IsSinglePawnWin(to_move, Us, s, white_king, black_king)) continue;
        sum += at(pawns_that_win_alone, rank_seen<Us>(s) - 1);
        if (sum >= most) return most;
    }
    return sum;
}
template int race_value<white>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int race_value<black>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

template <class Context>
int race(Context& context, const BOARD& board) noexcept {
    const Bitboard of_white = context.pawns[white].front_passed;
    const Bitboard of_black = context.pawns[black].front_passed;
    if (of_white != 0 && of_black != 0) {
        return tell<white>(context, Rule::race_of_both_sides, of_white | of_black, race_of_both_sides(context, board));
    }
    if (of_white != 0) return race_of_one_side<white>(context, board);
    return of_black != 0 ? -race_of_one_side<black>(context, board) : 0;
}

template UNSTOPPABLE_BONUS unstoppable_bonus(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template UNSTOPPABLE_BONUS unstoppable_bonus(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int checked_unstoppable_bonus(EVALUATION_CONTEXT& context, const BOARD& board, RunnerCheck check) noexcept;
template int checked_unstoppable_bonus(TRACED_CONTEXT& context, const BOARD& board, RunnerCheck check) noexcept;
template int race(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int race(TRACED_CONTEXT& context, const BOARD& board) noexcept;
