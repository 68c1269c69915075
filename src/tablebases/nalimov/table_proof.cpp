#include "tablebases/nalimov/table_proof.h"

#include <algorithm>
#include <cstdlib>

#include "chess/move_generator.h"
#include "tablebases/nalimov/table_values.h"

namespace NalimovTablebases {

namespace {

/// What a move is worth that leads to a position of this score, which is the opponent's.
int ScoreOfMoveTo(int score) {
    if (score == 0) return 0;
    return score > 0 ? -score + 1 : -score - 1;
}

/// The score of the position that a move leads to; nothing if it is not known.
std::optional<int> ScoreAfter(BOARD& board, Move move, ScoreLookup& lookup) noexcept {
    board.MakeMove(move);
    std::optional<int> score;
    if (PopCount(board.occupied) == 2) {
        score = 0;
    } else if (board.frame().en_passant_square == 0) {
        score = lookup.ScoreOf(board);
    }
    board.UnmakeMove(move);
    return score;
}

}  // namespace

Agreement CompareWithMoves(BOARD& board, int score, ScoreLookup& lookup) noexcept {
    Move moves[move_list_room];
    const Move* const end = GenerateMoves(moves, board, mode_legal);
    int best = -score_of_mate;
    bool knows_all = true;
    for (const Move* move = moves; move != end; ++move) {
        const std::optional<int> after = ScoreAfter(board, *move, lookup);
        knows_all = knows_all && after;
        if (after) best = std::max(best, ScoreOfMoveTo(*after));
    }
    if (moves == end && !board.in_check()) best = 0;
    if (knows_all) return score == best ? Agreement::proved : Agreement::impossible;
    return score >= best ? Agreement::possible : Agreement::impossible;
}

RandomPositions::RandomPositions(const Material& material, Side mover) noexcept
    : mover_(mover == first_side ? white : black) {
    for (const Side side : {first_side, second_side}) {
        const auto place = [&](int type) {
            men_[count_++] = static_cast<std::int8_t>(side == first_side ? type : -type);
        };
        place(king);
        for (const int type : MenOf(material, side)) place(type);
    }
}

Square RandomPositions::AnySquare() noexcept {
    // Knuth's numbers; the upper bits are the better ones.
    state_ = state_ * 6364136223846793005 + 1442695040888963407;
    return static_cast<Square>(state_ >> 58);
}

void RandomPositions::Next(BOARD& board) noexcept {
    for (;;) {
        std::int8_t squares[64]{};
        bool is_possible = true;
        for (std::size_t i = 0; i < count_; ++i) {
            const Square square = AnySquare();
            const bool is_misplaced_pawn = std::abs(men_[i]) == pawn && (RankOf(square) == 0 || RankOf(square) == 7);
            is_possible = is_possible && squares[square] == 0 && !is_misplaced_pawn;
            squares[square] = men_[i];
        }
        if (is_possible && board.SetPosition(squares, static_cast<int>(mover_), 0, 0)) return;
    }
}

}  // namespace NalimovTablebases
