// The engine's search with tables plays won endings to mate, against the longest resistance, and never takes longer
// than the tables say. With VORKA_TABLES and VORKA_PROOF=all, 50 positions of each ending at 0.1 s a move; otherwise
// some.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "chess/user_board.h"
#include "search/driver/search_controller.h"
#include "search/driver/silent_host.h"
#include "search/engine/engine.h"
#include "tools/table_oracles.h"

namespace {

using namespace VorkaTablebases;

class TablePlay : public TableOracles {
  protected:
    void SetUp() override {
        TableOracles::SetUp();
        if (IsSkipped()) return;
        NalimovTablebases::Initialize(engine_.tablebases, 1 << 26, folder_, OpenTables);
        ASSERT_TRUE(engine_.tables.Resize(1 << 22, 1 << 20));
    }

    static bool IsWhole() { return Environment("VORKA_PROOF") == "all"; }

    /// The enemy's best move: one after which the mate is furthest away.
    Move LongestResistance(const BOARD& board) {
        Move best = INVALID;
        int longest = -score_of_mate;
        for (const Move move : LegalMovesOf(board)) {
            BOARD child = board;
            child.MakeMove(move);
            child.ResetPly();
            const int score = -ScoreIn(*tables_, child).value();
            if (best == INVALID || score > longest) {
                best = move;
                longest = score;
            }
        }
        return best;
    }

    /// Plays until the game is over. How many plies the mate took; -1 if there was none.
    int PliesToMate(const BOARD& start) {
        UserBoard game;
        game.SetBoardFromFen(FenOf(start));
        SilentHost silence;
        SearchController controller(engine_);
        for (int plies = 0;; ++plies) {
            if (LegalMovesOf(game.board()).empty()) return game.board().in_check() && plies % 2 == 1 ? plies : -1;
            if (plies > 300) return -1;
            if (plies % 2 == 0) {
                controller.Run({.max_time_limit = IsWhole() ? 100 : 10}, game, silence);
                game.MakeMove(controller.best_move());
            } else {
                game.MakeMove(LongestResistance(game.board()));
            }
        }
    }

    void Play(const std::string& name, int games) {
        const Material material = *Material::FromName(name);
        const MateTableIndex index(material);
        std::mt19937_64 random(name.size() + static_cast<unsigned char>(name[1]));
        int played = 0;
        int plies_played = 0;
        while (played < games) {
            const std::uint64_t number = random() % index.size();
            ForEachPositionOf(material, number, number + 1, 1, [&](const BOARD& board) {
                const int score = ScoreIn(*tables_, board).value();
                if (score <= 0) return;
                ++played;
                const int plies = PliesToMate(board);
                plies_played += plies;
                EXPECT_NE(plies, -1) << FenOf(board);
                EXPECT_LE(plies, score_of_mate - score) << FenOf(board);
            });
        }
        std::printf("%-5s %d games, %d plies\n", name.c_str(), played, plies_played);
        std::fflush(stdout);
    }

    Engine engine_;
};

TEST_F(TablePlay, ThreeMen) {
    for (const std::string name : {"KQK", "KRK", "KPK"}) Play(name, IsWhole() ? 50 : 5);
}

TEST_F(TablePlay, FourMen) {
    const std::vector<Material> there = FourMen();
    bool any = false;
    for (const std::string name :
         {"KBNK", "KQKR", "KBBK", "KRKP", "KQQK", "KQRK", "KQBK", "KQNK", "KQPK", "KRRK", "KRBK", "KRNK", "KRPK",
          "KBPK", "KNPK", "KPPK", "KQKQ", "KQKB", "KQKN", "KQKP", "KRKR", "KRKB", "KRKN", "KBKP", "KNKP", "KPKP"}) {
        if (std::ranges::find(there, *Material::FromName(name)) == there.end()) continue;
        any = true;
        Play(name, IsWhole() ? 50 : 5);
    }
    if (!any) GTEST_SKIP() << "there are no tables of four men that can be won, see VORKA_TABLES";
}

}  // namespace
