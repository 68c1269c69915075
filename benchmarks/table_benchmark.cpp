// What a probe of a table costs: with its block in the cache, and with a block that has to be read and unpacked. The
// folder with the tables of four men is given as VORKA_TABLES; their pages should be in memory.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <vector>

#include "chess/board.h"
#include "tablebases/opener/open_tables.h"

namespace {

/// Legal random positions of kings and these men.
std::vector<BOARD> Boards(std::size_t count, int of_white, int other) {
    std::mt19937 random(1);
    std::vector<BOARD> boards;
    while (boards.size() < count) {
        std::int8_t squares[64] = {};
        const auto any = [&] { return 8 + random() % 48; };
        squares[any()] = static_cast<std::int8_t>(of_white);
        squares[any()] = static_cast<std::int8_t>(other);
        squares[any()] = king;
        squares[any()] = -king;
        BOARD board;
        if (board.SetPosition(squares, static_cast<int>(random() % 2), 0, 0) && PopCount(board.occupied) == 4) {
            boards.push_back(board);
        }
    }
    return boards;
}

std::unique_ptr<VorkaTablebases::TableSource> OpenedTables(benchmark::State& state, std::int32_t cache) {
    const char* const folder = std::getenv("VORKA_TABLES");
    auto tables = folder != nullptr ? VorkaTablebases::OpenTables(folder) : nullptr;
    if (!tables || !tables->UseCache(cache)) {
        state.SkipWithError("VORKA_TABLES names no folder with tables");
        return nullptr;
    }
    return tables;
}

void Probe(benchmark::State& state, std::size_t positions, std::int32_t cache, int of_white, int other) {
    const auto tables = OpenedTables(state, cache);
    if (!tables) return;
    const std::vector<BOARD> boards = Boards(positions, of_white, other);
    int score = 0;
    for (const BOARD& board : boards) {
        if (tables->Probe(board, score) != VorkaTablebases::ProbeResult::found) {
            state.SkipWithError("the table of this ending is missing");
            return;
        }
    }
    for (auto _ : state) {
        int sum = 0;
        for (const BOARD& board : boards) {
            benchmark::DoNotOptimize(tables->Probe(board, score));
            sum += score;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(boards.size()));
    state.counters["probe"] =
        benchmark::Counter(static_cast<double>(boards.size()),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// As many as a search might see in a row; few enough for their boards to stay in the processor's cache.
constexpr std::size_t few = 48;
/// Far more blocks than there is room for.
constexpr std::size_t many = 1000;
constexpr std::int32_t roomy = 1 << 28;
constexpr std::int32_t narrow = 1 << 15;

BENCHMARK_CAPTURE(Probe, cached_KRKP, few, roomy, rook, -pawn);
BENCHMARK_CAPTURE(Probe, cached_KBNK, few, roomy, bishop, knight);
BENCHMARK_CAPTURE(Probe, cached_KRKP_many, many, roomy, rook, -pawn);
BENCHMARK_CAPTURE(Probe, missed_KRKP, many, narrow, rook, -pawn);
BENCHMARK_CAPTURE(Probe, missed_KBNK, many, narrow, bishop, knight);
BENCHMARK_CAPTURE(Probe, missed_KBPK, many, narrow, bishop, pawn);
BENCHMARK_CAPTURE(Probe, without_cache_KRKP, many, 0, rook, -pawn);

}  // namespace
