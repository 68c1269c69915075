#include "uci/uci_bench.h"

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <string_view>

#include "frame/base/wall_clock.h"
#include "search/driver/bench_positions.h"
#include "search/driver/bench_search.h"
#include "search/driver/silent_host.h"
#include "uci/uci_texts.h"

namespace VorkaUci {

bool RunBench(Engine& engine, int depth) {
    if (!engine.tables.Resize(bench_hash_megabytes * mebibyte, usual_evaluation_bytes)) return false;
    std::uint64_t nodes = 0;
    const Timestamp start = Timestamp::Now();
    SilentHost silence;
    for (const std::string_view fen : bench_positions) {
        nodes += SearchBenchPosition(engine, fen, SearchLimits{.max_depth = depth}, silence).nodes;
    }
    const auto milliseconds =
        static_cast<std::uint64_t>(std::max<std::int64_t>(ElapsedMilliseconds(start, Timestamp::Now()), 1));
    const std::uint64_t speed = nodes * 1000 / milliseconds;
    std::cout << uci_texts::total_time << milliseconds << '\n'
              << uci_texts::nodes_searched << nodes << '\n'
              << uci_texts::nodes_per_second << speed << '\n'
              << nodes << " nodes " << speed << " nps" << std::endl;
    if (std::cout) return true;
    std::cerr << uci_texts::could_not_write;
    return false;
}

}  // namespace VorkaUci
