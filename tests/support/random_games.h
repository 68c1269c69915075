#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "chess/board.h"
#include "support/board_builder.h"

/// Where random games start: random moves alone rarely meet castling, promotions, pins and en passant often enough.
inline const std::array<std::string, 14> random_game_starts = {
    start_fen,
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
    "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1",
    "r3k2r/Pppp1ppp/1b3nbN/nP6/BBP1P3/q4N2/Pp1P2PP/R2Q1RK1 w kq - 0 1",
    "rnbq1k1r/pp1Pbppp/2p5/8/2B5/8/PPP1NnPP/RNBQK2R w KQ - 1 8",
    "r4rk1/1pp1qppp/p1np1n2/2b1p1B1/2B1P1b1/P1NP1N2/1PP1QPPP/R4RK1 w - - 0 10",
    "n1n5/PPPk4/8/8/8/8/4Kppp/5N1N b - - 0 1",
    "r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1",
    "8/pppppppp/k7/6r1/1R6/7K/PPPPPPPP/8 w - - 0 1",
    "4k3/ppp2ppp/8/3pp3/3PP3/8/PPP2PPP/4K3 b - - 0 1",
    "3k4/1q6/2n1n3/8/8/3N1N2/6Q1/4K3 w - - 0 1",
    "r1b1k2r/ppp2ppp/2n5/1B1qN3/3P4/4B3/PP3bPP/R2QK2R w KQkq - 0 1",
    "8/1P1k2P1/2q5/8/8/5Q2/1p2K1p1/8 w - - 0 1",
    "b2rk2r/1P3P2/8/3pP3/2b2Pp1/8/2p1p3/B2RK2R b Kk f3 0 1",
};

/// Plays `games` random games of up to `plies` half moves, the same ones for a seed in every run, and calls
/// `visit(board, legal_moves)` for every position on the way. The board is the walker's own: what a visitor changes it
/// has to change back. A failure should name the seed.
template <class Visit>
void ForEachRandomPosition(std::uint32_t seed, int games, int plies, Visit visit) {
    std::mt19937 random(seed);
    for (int game = 0; game < games; ++game) {
        BOARD board = BoardFromFen(random_game_starts[static_cast<std::size_t>(game) % random_game_starts.size()]);
        for (int ply = 0; ply <= plies; ++ply) {
            const std::vector<Move> moves = LegalMovesOf(board);
            visit(board, moves);
            if (moves.empty() || board.frame().fifty_counter > 99) break;
            // By remainder: the distributions of <random> differ between libraries.
            board.MakeMove(moves[random() % moves.size()]);
            // A game is longer than the frames of a search.
            if (board.ply == max_frames / 2) board.ResetPly();
        }
    }
}
