#include "tools/table_proof.h"

#include <algorithm>

std::optional<int> ScoreIn(VorkaTablebases::TableSource& tables, const BOARD& board) {
    if (PopCount(board.occupied) == 2) return 0;
    if (board.frame().en_passant_square != 0) return ScoreOfBestMove(tables, board);
    int score = 0;
    if (tables.Probe(board, score) != VorkaTablebases::ProbeResult::found) return std::nullopt;
    return score;
}

std::optional<int> ScoreOfBestMove(VorkaTablebases::TableSource& tables, const BOARD& board) {
    constexpr int mated = -32767;
    const std::vector<Move> moves = LegalMovesOf(board);
    if (moves.empty()) return board.in_check() ? mated : 0;
    int best = mated;
    for (const Move move : moves) {
        BOARD child = board;
        child.MakeMove(move);
        const std::optional<int> score = ScoreIn(tables, child);
        if (!score) return std::nullopt;
        // A mate is one ply further away.
        best = std::max(best, *score == 0 ? 0 : *score > 0 ? 1 - *score : -*score - 1);
    }
    return best;
}
