// What a probe of each bitbase costs once its pages are in memory. The folder with the files is given as
// VORKA_BITBASES; without it only the built-in table is measured.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "bitbases/bitbases.h"
#include "chess/board.h"
#include "frame/base/vocabulary.h"

namespace {

/// As many as a search might see in a row; few enough for their boards to stay in the cache.
constexpr std::size_t boards_probed = 48;

/// Legal random positions of so many pawns; with three of them a white one blocks a black one.
std::vector<BOARD> Boards(int pawns, const VorkaBitbases::Bitbases& bitbases) {
    std::mt19937 random(1);
    const auto any = [&](int first, int last) {
        return first + static_cast<int>(random() % static_cast<unsigned>(last - first + 1));
    };
    std::vector<BOARD> boards;
    while (boards.size() < boards_probed) {
        std::int8_t squares[64] = {};
        const int front = any(a2, h6);
        squares[front] = pawn;
        if (pawns > 1) squares[pawns == 3 ? front + 8 : any(a2, h7)] = -pawn;
        if (pawns > 2) squares[any(a2, h7)] = pawn;
        squares[any(a1, h8)] = king;
        squares[any(a1, h8)] = -king;
        BOARD board;
        if (!board.SetPosition(squares, any(0, 1), 0, 0)) continue;
        if (bitbases.Probe(board)) boards.push_back(board);
    }
    return boards;
}

VorkaBitbases::Bitbases LoadedFiles() {
    VorkaBitbases::Bitbases bitbases;
    if (const char* const folder = std::getenv("VORKA_BITBASES")) {
        bitbases.LoadTwoPawns((std::string(folder) + '/').append(vocabulary::two_pawns_file));
        bitbases.LoadRammedPawns((std::string(folder) + '/').append(vocabulary::rammed_pawn_file));
    }
    return bitbases;
}

void Probe(benchmark::State& state) {
    const auto pawns = static_cast<int>(state.range(0));
    const VorkaBitbases::Bitbases bitbases = LoadedFiles();
    if (!bitbases.TwoPawnsLoaded() && pawns > 1) {
        state.SkipWithError("VORKA_BITBASES names no folder with files");
        return;
    }
    const std::vector<BOARD> boards = Boards(pawns, bitbases);
    for (auto _ : state) {
        int sum = 0;
        for (const BOARD& board : boards) sum += *bitbases.Probe(board);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(boards.size()));
    state.counters["probe"] =
        benchmark::Counter(static_cast<double>(boards.size()),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(Probe)->ArgName("pawns")->DenseRange(1, 3);

}  // namespace
