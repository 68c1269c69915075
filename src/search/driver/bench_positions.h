#pragma once

#include <array>
#include <cstdint>
#include <string_view>

/// What the signature of a version is made of: these positions, each searched to this depth from cleared tables. The
/// sum of the nodes is the same on every machine.

inline constexpr int bench_depth = 6;
/// Of the transposition table; the two others have their usual size.
inline constexpr std::uint64_t bench_hash_megabytes = 16;

/// Openings, middle games quiet and sharp, endings of several kinds; moves that promote, castle and take en passant.
// clang-format off
inline constexpr std::array<std::string_view, 20> bench_positions = {
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",
    "r1bqkbnr/pppp1ppp/2n5/1B2p3/4P3/5N2/PPPP1PPP/RNBQK2R b KQkq - 3 3",
    "rnbqk2r/pp2ppbp/3p1np1/2p5/2PPP3/2N2N2/PP2BPPP/R1BQK2R b KQkq - 1 6",
    "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N2NP1/PP3PBP/R1BQ1RK1 w - - 4 10",
    "r2q1rk1/pb1nbppp/1p2pn2/2p5/2BP4/P1N1PN2/1P2QPPP/R1B2RK1 w - - 0 12",
    "r1b1k2r/2qnbppp/p2ppn2/1p4B1/3NPPP1/2N2Q2/PPP4P/2KR1B1R b kq - 0 11",
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
    "2rq1rk1/pp1bppbp/3p1np1/8/2BNP3/2N1BP2/PPPQ2PP/2KR3R w - - 7 13",
    "r4rk1/1pp1qppp/p1np1n2/2b1p1B1/2B1P1b1/P1NP1N2/1PP1QPPP/R4RK1 w - - 0 10",
    "1r3rk1/3bbppp/1qn1p3/p2pP3/1p1P4/1P1B1N2/P2Q1PPP/R1B2RK1 w - - 2 18",
    "r1b2r1k/4qp1p/p2ppb1Q/4nP2/1p1NP3/2N5/PPP4P/2KR1BR1 w - - 4 18",
    "3r2k1/pp3pp1/2p1q2p/4P3/2P2Q2/1P4P1/P4P1P/3R2K1 w - - 3 27",
    "8/5pk1/1p2p1p1/1P1rP2p/3R1P1P/4K1P1/8/8 w - - 5 45",
    "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1",
    "8/1p3pk1/p2p2p1/3Pn2p/1P2P2P/P3B1P1/5K2/8 w - - 2 38",
    "6k1/5pp1/p3q2p/1p6/3Q4/2P3P1/PP3P1P/6K1 w - - 0 32",
    "8/pp3k2/2p1pp2/3p4/3P1P1p/2P1P2P/PP2K3/8 w - - 0 30",
    "8/8/1k1p4/1P1P1p2/K4P2/8/8/8 w - - 4 60",
    "n1n5/PPPk4/8/8/8/8/4Kppp/5N1N b - - 0 1",
    "4k2r/1b1n1p2/p2bp1p1/1p1p3p/3P1P1P/2PBPN2/PP1K2P1/1R4R1 w k - 1 24",
};
// clang-format on
