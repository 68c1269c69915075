// Engines share nothing that changes: two of them search at the same time in two threads, with other settings, tables
// of other sizes and other bitbases, and visit the nodes that each visits alone. A race that happens to go well is what
// the thread sanitizer finds: scripts/test --thread-sanitizer.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "bitbases/synthetic_file.h"
#include "search/driver/search_controller.h"
#include "search/engine/engine.h"
#include "support/fake_search_host.h"

namespace {

// An opening, a sharp middle game, an ending that evaluates pawns alone, and one that the file of two pawns knows.
constexpr std::string_view positions[] = {
    "r1bqkbnr/pppp1ppp/2n5/1B2p3/4P3/5N2/PPPP1PPP/RNBQK2R b KQkq - 3 3",
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
    "8/pp3k2/2p1pp2/3p4/3P1P1p/2P1P2P/PP2K3/8 w - - 0 30",
    "4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1",
};
constexpr std::int32_t depth = 4;

struct EngineSetup {
    SearchSettings settings;
    std::uint64_t transposition_bytes;
    std::uint64_t evaluation_bytes;
    bool has_bitbases;
    std::int32_t contempt;
};

/// The nodes of each position, searched one after the other by one engine.
std::vector<std::uint64_t> NodesOf(const EngineSetup& setup) {
    Engine engine{.settings = setup.settings};
    EXPECT_TRUE(engine.tables.Resize(setup.transposition_bytes, setup.evaluation_bytes));
    const BitbaseFiles files;
    if (setup.has_bitbases) files.LoadTwoPawns(engine.bitbases);
    SearchController controller(engine);
    controller.SetContempt(setup.contempt);
    std::vector<std::uint64_t> nodes;
    for (const std::string_view fen : positions) {
        UserBoard game;
        game.SetBoardFromFen(std::string(fen));
        FakeSearchHost host;
        controller.Run({.max_depth = depth}, game, host);
        nodes.push_back(controller.info().nodes);
    }
    return nodes;
}

TEST(TwoEngines, SearchAtTheSameTimeAsEachDoesAlone) {
    const EngineSetup small{.settings = {},
                            .transposition_bytes = 1 << 16,
                            .evaluation_bytes = 1 << 14,
                            .has_bitbases = false,
                            .contempt = 0};
    const EngineSetup large{.settings = {.enable_search_extensions = false,
                                         .min_ply_for_null_move = 0,
                                         .enable_ettc = true,
                                         .only_use_ettc_in_endgames = false,
                                         .max_pieces_left_for_ettc = 64},
                            .transposition_bytes = 1 << 24,
                            .evaluation_bytes = 1 << 22,
                            .has_bitbases = true,
                            .contempt = 25};
    const std::vector<std::uint64_t> small_alone = NodesOf(small);
    const std::vector<std::uint64_t> large_alone = NodesOf(large);
    for (std::size_t i = 0; i < std::size(positions); ++i) {
        ASSERT_NE(small_alone[i], large_alone[i]) << positions[i] << ": the two would not tell each other's state";
    }

    std::vector<std::uint64_t> small_nodes;
    std::vector<std::uint64_t> large_nodes;
    std::thread beside([&] { large_nodes = NodesOf(large); });
    small_nodes = NodesOf(small);
    beside.join();
    EXPECT_EQ(small_nodes, small_alone);
    EXPECT_EQ(large_nodes, large_alone);
}

}  // namespace
