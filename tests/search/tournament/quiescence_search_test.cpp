#include "search/tournament/quiescence_search.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "evaluation/evaluate.h"
#include "support/tournament_builder.h"

namespace {

using tournament::TournamentNode;

class TournamentQuiescence : public testing::Test {
  protected:
    struct Outcome {
        Score score;
        std::uint64_t nodes;  ///< below the node itself
        int tried;
        Move best_move;
    };

    /// A quiescence node off the principal variation.
    static Outcome Search(std::string_view fen, Score beta, Distance distance = 0,
                          const TournamentSettings& with = {}) {
        TournamentBuilder search(fen, with);
        TournamentNode node = search.NodeAt({.beta = beta, .distance = distance});
        EXPECT_TRUE(node.is_quiescence());
        const Score score = SearchQuiescence(node);
        EXPECT_EQ(FenOf(search.board()), fen);
        return {.score = score, .nodes = search.search().nodes, .tried = node.moves_tried, .best_move = node.best_move};
    }
    static Score Static(std::string_view fen) {
        TournamentBuilder search(fen);
        return full_evaluation(search.search().evaluation, search.board(), search.search().position_class[0]);
    }
};

/// A pawn takes a knight that nobody protects.
constexpr std::string_view free_knight = "6k1/5ppp/8/3n4/2P5/8/5PPP/6K1 w - - 0 1";
/// The queen may take a pawn that a pawn protects.
constexpr std::string_view protected_pawn = "6k1/5ppp/2p5/3p4/8/8/5PPP/3Q2K1 w - - 0 1";
/// Nothing to take; a1a8 checks and mates.
constexpr std::string_view back_rank = "6k1/5ppp/8/8/8/8/5PPP/R5K1 w - - 0 1";

TEST_F(TournamentQuiescence, StandsPatAtBeta) {
    const Score score = Static(free_knight);
    const Outcome at = Search(free_knight, score);
    EXPECT_EQ(at.score, score);
    EXPECT_EQ(at.nodes, 0U);
    EXPECT_EQ(at.tried, 0);
    EXPECT_GT(Search(free_knight, score + 1).tried, 0);
}

TEST_F(TournamentQuiescence, TakesWhatIsFree) {
    const Outcome outcome = Search(free_knight, Static(free_knight) + 200);
    EXPECT_GE(outcome.score, Static(free_knight) + 200);
    EXPECT_EQ(MoveToCoordinate(outcome.best_move), "c4d5");
}

/// A capture is tried if its gain and the margin reach beta, and not if they lack a centipawn.
TEST_F(TournamentQuiescence, LeavesOutCapturesThatGainTooLittle) {
    for (const int margin : {0, 100, 333}) {
        const Score reach = Static(free_knight) + piece_value[knight] + margin;
        EXPECT_GT(Search(free_knight, reach, -10 * ONE_PLY, {.delta_margin = margin}).nodes, 0U);
        const Outcome out = Search(free_knight, reach + 1, -10 * ONE_PLY, {.delta_margin = margin});
        EXPECT_EQ(out.nodes, 0U);
        EXPECT_LT(out.score, reach + 1);
    }
}

TEST_F(TournamentQuiescence, LeavesOutCapturesThatLoseMaterial) {
    const Score beta = Static(protected_pawn) + 50;
    for (const int fail_soft : {0, 1}) {
        const Outcome outcome = Search(protected_pawn, beta, -10 * ONE_PLY, {.fail_soft = fail_soft});
        EXPECT_EQ(outcome.tried, 0);
        EXPECT_EQ(outcome.nodes, 0U);
        EXPECT_EQ(outcome.score, fail_soft != 0 ? beta - 50 : beta - 1);
    }
    constexpr std::string_view bare_pawn = "6k1/5ppp/8/3p4/8/8/5PPP/3Q2K1 w - - 0 1";
    EXPECT_GT(Search(bare_pawn, Static(bare_pawn) + 50, -10 * ONE_PLY).nodes, 0U);
}

TEST_F(TournamentQuiescence, TakesAKnightWithABishop) {
    constexpr std::string_view bishop_for_knight = "6k1/5ppp/2p5/3n4/8/8/5PBP/6K1 w - - 0 1";
    EXPECT_GT(Search(bishop_for_knight, Static(bishop_for_knight) + 50, -10 * ONE_PLY).nodes, 0U);
}

/// What is left out may be worth its gain and the margin; below beta the answer is no lower than that.
TEST_F(TournamentQuiescence, AnswersAsFarAsWhatIsLeftOutMayReach) {
    const Score most = Static(free_knight) + piece_value[knight] + 100;
    const auto score = [&](Score beta, int fail_soft) {
        return Search(free_knight, beta, -10 * ONE_PLY, {.delta_margin = 100, .fail_soft = fail_soft}).score;
    };
    EXPECT_EQ(score(most + 500, 1), most);
    EXPECT_EQ(score(most + 1, 1), most);
    EXPECT_EQ(score(most + 500, 0), most + 499);
}

TEST_F(TournamentQuiescence, LooksForChecksNearTheHorizon) {
    const Score beta = Static(back_rank) + 300;
    const auto tried = [&](Distance distance, int checks) {
        return Search(back_rank, beta, distance, {.quiescence_checks = checks}).tried;
    };
    EXPECT_EQ(tried(0, 64), 1);
    EXPECT_EQ(tried(-63, 64), 1);
    EXPECT_EQ(tried(-64, 64), 0);
    EXPECT_EQ(tried(0, 1), 1);
    EXPECT_EQ(tried(0, 0), 0);
    EXPECT_EQ(tried(-1023, 1024), 1);
    EXPECT_EQ(tried(-1024, 1024), 0);
}

TEST_F(TournamentQuiescence, ChecksNeedNoGain) {
    const Outcome outcome = Search(back_rank, 20000, 0, {.quiescence_checks = 64});
    EXPECT_GE(outcome.score, 20000) << "mate";
    EXPECT_EQ(MoveToCoordinate(outcome.best_move), "a1a8");
}

TEST_F(TournamentQuiescence, SaysNothingAboutMateWithoutAMoveToTry) {
    constexpr std::string_view stalemate = "7k/5Q2/6K1/8/8/8/8/8 b - - 0 1";
    EXPECT_LT(Search(stalemate, 0).score, 0) << "it does not look";
}

TEST_F(TournamentQuiescence, PromotesToQueensAlone) {
    constexpr std::string_view promotes = "8/1P4k1/8/8/8/6K1/r7/8 w - - 0 1";
    const Outcome outcome = Search(promotes, Static(promotes) + 300, -10 * ONE_PLY);
    EXPECT_EQ(outcome.tried, 1);
    EXPECT_EQ(MoveToCoordinate(outcome.best_move), "b7b8");
    EXPECT_EQ(PromotionPiece(outcome.best_move), queen);
}

TEST_F(TournamentQuiescence, TriesTheGreatestGainFirst) {
    // The pawn may take a queen or a rook.
    constexpr std::string_view both = "6k1/8/8/2r1q3/3P4/8/8/6K1 w - - 0 1";
    const Outcome outcome = Search(both, Static(both) + 200, -10 * ONE_PLY);
    EXPECT_EQ(MoveToCoordinate(outcome.best_move), "d4e5");
    EXPECT_EQ(outcome.tried, 1);
}

/// Below the horizon a node in check is no quiescence node: every move is searched.
TEST_F(TournamentQuiescence, IsNotForNodesInCheck) {
    constexpr std::string_view smothered = "6rk/5Npp/8/8/8/8/8/6K1 b - - 0 1";
    TournamentBuilder mated(smothered);
    EXPECT_LT(mated.Ask({.beta = -mate_score_limit, .distance = -5 * ONE_PLY}), -mate_score_limit) << "mate is seen";
    constexpr std::string_view escape = "7k/5N1p/8/8/8/8/8/6K1 b - - 0 1";
    TournamentBuilder search(escape);
    const auto moves = LegalMovesOf(search.board()).size();
    ASSERT_GT(moves, 1U);
    static_cast<void>(search.Ask({.beta = 20000, .distance = -5 * ONE_PLY}));
    EXPECT_GE(search.search().nodes, 1 + moves) << "the quiet moves too";
}

/// The answer is on the side of beta that the move tells: a bound, never a contradiction to the captures.
TEST_F(TournamentQuiescence, AnswersEachBoundInTheSameSense) {
    for (const std::string_view fen :
         {free_knight, protected_pawn,
          std::string_view("r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1")}) {
        bool was_below = false;
        for (Score beta = -1500; beta <= 1500; beta += 25) {
            const bool is_below = Search(fen, beta, -10 * ONE_PLY, {.delta_margin = 5000}).score < beta;
            EXPECT_TRUE(is_below || !was_below) << fen << ' ' << beta;
            was_below = is_below;
        }
        EXPECT_TRUE(was_below);
    }
}

}  // namespace
