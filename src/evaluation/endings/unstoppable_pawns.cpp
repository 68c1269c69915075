#include "evaluation/endings/unstoppable_pawns.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "bitbases/bitbases.h"
#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/sided_squares.h"

namespace {

// By the rank of the pawn, from where it starts on.
constexpr std::array<int, 6> runner_with_the_move = {640, 640, 720, 760, 800, 920};
constexpr std::array<int, 6> runner_without_the_move = {520, 520, 640, 720, 760, 800};
constexpr std::array<int, 6> winning_runner = {210, 210, 215, 225, 240, 250};

int by_rank(const std::array<int, 6>& table, int rank) { return table[static_cast<std::size_t>(rank - 1)]; }

bool has_pieces(const SIDE_PIECES& side) { return side.heavy_points + side.minor_points != 0; }

/// The foremost passed pawns of `Us` whose square the enemy king does not reach.
template <Colour Us>
Bitboard uncaught_pawns(const EVALUATION_CONTEXT& context, const BOARD& board) {
    const auto& outside =
        Us == white ? bitboard_tables.outside_white_pawn_square : bitboard_tables.outside_black_pawn_square;
    return context.pawns[Us].front_passed & outside[board.side(Opponent(Us)).king_square][board.side_to_move];
}

/// The most advanced of some pawns that nobody catches.
template <Colour Us>
int runner_value(const BOARD& board, Bitboard runners) {
    int rank = 1;
    while (rank < 6 && (runners & ranks<Us>(rank + 1, 6)) != 0) ++rank;
    return by_rank(board.side_to_move == Us ? runner_with_the_move : runner_without_the_move, rank);
}

template <Colour Us>
constexpr RunnerCheck check_of_pawns = Us == white ? RunnerCheck::white_pawns : RunnerCheck::black_pawns;

/// The bonus of `Us`, in its own view, against an enemy without pieces.
template <Colour Us>
UNSTOPPABLE_BONUS bonus_against_bare_king(const EVALUATION_CONTEXT& context, const BOARD& board) {
    constexpr Colour Them = Opponent(Us);
    if (context.pawns[Us].front_passed == 0) return {};
    const Bitboard runners = uncaught_pawns<Us>(context, board);
    if (runners != 0) return {.score = runner_value<Us>(board, runners)};
    if (context.pawns[Them].passed != 0) return {.check = check_of_pawns<Them>};
    return {.score = race_value<Us>(context, board)};
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

template <Colour Us>
int checked_bonus(const EVALUATION_CONTEXT& context, const BOARD& board) {
    return stops_all_pawns<Us>(context, board) ? race_value<Us>(context, board) : 0;
}

/// Both sides have passed pawns: the pawn by pawn results of their race, as the table of two pawns knows them. Of
/// White's pawns the least counts, of Black's the greatest.
int race_of_both(const EVALUATION_CONTEXT& context, const BOARD& board) {
    if (context.bitbases == nullptr || !context.bitbases->TwoPawnsLoaded()) return 0;
    const auto to_move = static_cast<Colour>(board.side_to_move);
    constexpr int won = 150;
    const auto result_of = [&](Square white_pawn, Square black_pawn) {
        const int result = context.bitbases->ProbeTwoPawnsRaw(to_move, board.side(white).king_square,
                                                              board.side(black).king_square, white_pawn, black_pawn);
        if (result == 1) return to_move == white ? won : -won;
        if (result == 3) return to_move == white ? -won : won;
        return result;
    };
    int best = -2 * won;
    for (Bitboard black_pawns = context.pawns[black].front_passed; black_pawns != 0;) {
        const Square black_pawn = TakeNextBit(black_pawns);
        int least = 2 * won;
        for (Bitboard white_pawns = context.pawns[white].front_passed; white_pawns != 0 && least > best;) {
            least = std::min(least, result_of(TakeNextBit(white_pawns), black_pawn));
        }
        best = std::max(best, least);
    }
    return best;
}

template <Colour Us>
int race_of_one(const EVALUATION_CONTEXT& context, const BOARD& board) {
    const Bitboard runners = uncaught_pawns<Us>(context, board);
    return 2 * (runners != 0 ? runner_value<Us>(board, runners) : race_value<Us>(context, board));
}

}  // namespace

UNSTOPPABLE_BONUS unstoppable_bonus(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const bool white_has_pieces = has_pieces(board.side(white));
    if (!has_pieces(board.side(black))) return bonus_against_bare_king<white>(context, board);
    if (white_has_pieces) return {};
    const UNSTOPPABLE_BONUS of_black = bonus_against_bare_king<black>(context, board);
    return {.score = -of_black.score, .check = of_black.check};
}

int checked_unstoppable_bonus(const EVALUATION_CONTEXT& context, const BOARD& board, RunnerCheck check) noexcept {
    if (check == RunnerCheck::black_pawns) return checked_bonus<white>(context, board);
    if (check == RunnerCheck::white_pawns) return -checked_bonus<black>(context, board);
    return 0;
}

template <Colour Us>
int race_value(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    constexpr int most = 400;
    const auto to_move = static_cast<Colour>(board.side_to_move);
    const Square white_king = board.side(white).king_square;
    const Square black_king = board.side(black).king_square;
    int sum = 0;
    for (int file = 0; file < 8; ++file) {
        const Bitboard pawn = context.pawns[Us].front_passed & file_mask(file);
        if (pawn == 0) continue;
        const Square s = FindLowestBit(pawn);
        if (!VorkaBitbases::IsSinglePawnWin(to_move, Us, s, white_king, black_king)) continue;
        sum += by_rank(winning_runner, rank_seen<Us>(s));
        if (sum >= most) return most;
    }
    return sum;
}
template int race_value<white>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int race_value<black>(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

int race(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const bool of_white = context.pawns[white].front_passed != 0;
    const bool of_black = context.pawns[black].front_passed != 0;
    if (of_white && of_black) return race_of_both(context, board);
    if (of_white) return race_of_one<white>(context, board);
    return of_black ? -race_of_one<black>(context, board) : 0;
}
