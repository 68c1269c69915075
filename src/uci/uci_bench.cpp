#include "uci/uci_bench.h"

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <string>

#include "chess/fen.h"
#include "frame/base/wall_clock.h"
#include "search/driver/bench_positions.h"
#include "search/driver/search_controller.h"
#include "search/driver/silent_host.h"
#include "uci/uci_texts.h"

namespace VorkaUci {

namespace {

std::uint64_t NodesOf(Engine& engine, std::string_view fen, int depth) {
    engine.tables.Clear();
    BOARD board;
    std::uint32_t ignored_offset = 0;
    ReadFen(board, std::string(fen), ignored_offset);
    SearchController controller(engine);
    SilentHost silence;
    controller.Run(SearchLimits{.max_depth = depth}, board, silence);
    return controller.info().nodes;
}

}  // namespace

bool RunBench(Engine& engine, int depth) {
    if (!engine.tables.Resize(bench_hash_megabytes * mebibyte, usual_evaluation_bytes)) return false;
    std::uint64_t nodes = 0;
    const Timestamp start = Timestamp::Now();
    for (const std::string_view fen : bench_positions) nodes += NodesOf(engine, fen, depth);
    const auto milliseconds =
        static_cast<std::uint64_t>(std::max<std::int64_t>(ElapsedMilliseconds(start, Timestamp::Now()), 1));
    const std::uint64_t speed = nodes * 1000 / milliseconds;
    std::cout << uci_texts::total_time << milliseconds << '\n'
              << uci_texts::nodes_searched << nodes << '\n'
              << uci_texts::nodes_per_second << speed << '\n'
              << nodes << " nodes " << speed << " nps" << std::endl;
    return true;
}

}  // namespace VorkaUci
