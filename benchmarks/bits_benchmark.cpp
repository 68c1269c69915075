// The bit primitives in both forms, on dense and on thin sets. What they mean for the generator is measured by running
// perft and perft_table_bits in turn (perft --help).

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "chess/bits.h"

namespace {

std::vector<Bitboard> Sets(bool thin) {
    std::mt19937_64 random(1);
    std::vector<Bitboard> sets(4096);
    for (Bitboard& set : sets) set = thin ? random() & random() & random() & random() : random();
    return sets;
}

template <auto Operation>
void OnSets(benchmark::State& state) {
    const std::vector<Bitboard> sets = Sets(state.range(0) != 0);
    for (auto _ : state) {
        int sum = 0;
        for (const Bitboard set : sets) sum += Operation(set);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(sets.size()));
    state.SetLabel(state.range(0) != 0 ? "thin sets" : "dense sets");
}

/// Visits every square of a set, as the generator does.
template <auto FindBit>
void Walk(benchmark::State& state) {
    const std::vector<Bitboard> sets = Sets(state.range(0) != 0);
    for (auto _ : state) {
        int sum = 0;
        for (Bitboard set : sets) {
            while (set != 0) {
                const Square s = FindBit(set);
                sum += s;
                set ^= Bit(s);
            }
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(sets.size()));
    state.SetLabel(state.range(0) != 0 ? "thin sets" : "dense sets");
}

BENCHMARK(OnSets<table_bits::PopCount>)->Arg(0)->Arg(1);
BENCHMARK(OnSets<portable_bits::PopCount>)->Arg(0)->Arg(1);
BENCHMARK(OnSets<table_bits::FindHighestBit>)->Arg(0)->Arg(1);
BENCHMARK(OnSets<portable_bits::FindHighestBit>)->Arg(0)->Arg(1);
BENCHMARK(OnSets<table_bits::FindLowestBit>)->Arg(0)->Arg(1);
BENCHMARK(OnSets<portable_bits::FindLowestBit>)->Arg(0)->Arg(1);
BENCHMARK(Walk<table_bits::FindHighestBit>)->Arg(0)->Arg(1);
BENCHMARK(Walk<portable_bits::FindHighestBit>)->Arg(0)->Arg(1);

}  // namespace
