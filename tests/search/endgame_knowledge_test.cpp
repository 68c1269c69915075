#include "search/endgame_knowledge.h"

#include <gtest/gtest.h>

#include <memory>

#include "bitbases/bitbases.h"
#include "bitbases/tablebases.h"
#include "support/search_builder.h"

namespace {

constexpr std::string_view won = "4k3/8/4K3/4P3/8/8/8/8 w - - 0 1";
constexpr std::string_view lost = "4k3/8/4K3/4P3/8/8/8/8 b - - 0 1";
constexpr std::string_view drawn = "4k3/4P3/4K3/8/8/8/8/8 b - - 0 1";

/// The node of a position as if it stood at a ply.
std::optional<Score> Ask(std::string_view fen, std::uint32_t ply, Score beta, int position_class = 15) {
    SearchBuilder search{fen};
    const Node node{.search = *search.board,
                    .ply = ply,
                    .beta = beta,
                    .distance = 64,
                    .in_check = search.board->board.in_check(),
                    .type = NodeType::principal,
                    .parent_class = position_class,
                    .position_class = position_class,
                    .child_flags = root_child,
                    .moves = search.board->move_buffer,
                    .moves_end = search.board->move_buffer};
    return EndgameKnowledge(node);
}

TEST(EndgameKnowledge, AWinIsTheBetterTheSoonerItIsReached) {
    EXPECT_EQ(Ask(won, 3, 32703 + 1 - 3), 32703 + 1 - 3);
    EXPECT_EQ(Ask(won, 3, 32703 + 2 - 3), 32703 + 1 - 3) << "one below the bound";
    EXPECT_EQ(Ask(won, 5, 32703 + 1 - 5), 32703 + 1 - 5);
}

TEST(EndgameKnowledge, ALossIsAnsweredOnlyBelowTheBound) {
    EXPECT_EQ(Ask(lost, 3, 0), -1);
    EXPECT_EQ(Ask(lost, 3, -32703 + 4), -32703 + 3);
    EXPECT_EQ(Ask(lost, 3, -32703 + 3), std::nullopt) << "good enough: it is searched";
}

TEST(EndgameKnowledge, ADrawIsWorthTheDrawScore) {
    EXPECT_EQ(Ask(drawn, 3, 0), 0);
    EXPECT_EQ(Ask(drawn, 3, 1), 0);
}

TEST(EndgameKnowledge, TheFirstPliesAreSearched) {
    EXPECT_EQ(Ask(won, 2, 0), std::nullopt);
    EXPECT_EQ(Ask(won, 1, 0), std::nullopt);
}

TEST(EndgameKnowledge, OnlyEndingsAreLookedUp) {
    EXPECT_EQ(Ask(won, 3, 0, 1), std::nullopt);
    EXPECT_EQ(Ask("4k3/8/4K3/4P3/8/8/8/7N w - - 0 1", 3, 0, 17), std::nullopt);
}

/// Tables that know one score for everything.
class Tables : public VorkaTablebases::TableSource {
  public:
    explicit Tables(int score) : score_(score) {}
    VorkaTablebases::ProbeResult Probe(const BOARD& /*board*/, int& score) noexcept override {
        score = score_;
        return VorkaTablebases::ProbeResult::found;
    }
    bool UseCache(std::int32_t /*bytes*/) noexcept override { return true; }

  private:
    int score_;
};

class TablesInSearch : public testing::Test {
  protected:
    ~TablesInSearch() override { VorkaTablebases::UseSource(nullptr); }
    static void Load(int score) { VorkaTablebases::UseSource(std::make_unique<Tables>(score)); }
    static constexpr std::string_view rooks = "4k3/8/4K3/4P3/8/8/8/r6R w - - 0 1";
};

TEST_F(TablesInSearch, AnswerWhereNoBitbaseDoes) {
    EXPECT_EQ(Ask(rooks, 3, 0, 3), std::nullopt);
    Load(32767 - 20);
    EXPECT_EQ(Ask(rooks, 3, 32767 - 23, 3), 32767 - 23);
    EXPECT_EQ(Ask(rooks, 3, 32767 - 22, 3), 32767 - 23);
    EXPECT_EQ(Ask(rooks, 1, 32767 - 21, 3), 32767 - 21) << "at the first plies too";
    Load(-(32767 - 20));
    EXPECT_EQ(Ask(rooks, 3, -(32767 - 23), 3), -(32767 - 23));
    EXPECT_EQ(Ask(rooks, 3, -(32767 - 24), 3), -(32767 - 24) - 1);
    Load(0);
    EXPECT_EQ(Ask(rooks, 3, 0, 3), 0);
    EXPECT_EQ(Ask(rooks, 3, 1, 3), 0);
    EXPECT_EQ(Ask(rooks, 3, 0, 1), std::nullopt) << "endings only";
}

TEST_F(TablesInSearch, KnowBetterThanALossThatIsGoodEnough) {
    Load(-(32767 - 10));
    EXPECT_EQ(Ask(lost, 3, -32703 + 3), -32703 + 3 - 1);
}

}  // namespace
