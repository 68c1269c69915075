#include "search/tournament/tournament_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "chess/exchange.h"
#include "search/tournament/capture_history.h"
#include "search/tournament/move_pruning.h"
#include "support/random_games.h"
#include "support/tournament_builder.h"

namespace {

using tournament::CaptureHistoryOf;
using tournament::HistoryScore;
using tournament::IsQuiet;
using tournament::LearnCapture;
using tournament::LearnFromCut;
using tournament::MoveOrder;
using tournament::PieceSquare;
using tournament::QuietHistory;
using tournament::TournamentNode;

using Moves = std::vector<Move>;
using Texts = std::vector<std::string>;

/// All that the order delivers; after `before_leaving_out` moves it is told to leave the quiet ones out.
Moves Delivered(TournamentNode& node, std::size_t before_leaving_out = MAX_MOVES) {
    MoveOrder order(node);
    Moves moves;
    for (;;) {
        if (moves.size() == before_leaving_out) order.LeaveOutQuietMoves();
        Move move = INVALID;
        if (order.Next(move)) return {};
        if (move == INVALID) return moves;
        moves.push_back(move);
    }
}

Texts TextsOf(const Moves& moves) {
    Texts texts;
    for (const Move move : moves) texts.push_back(MoveToCoordinate(move));
    return texts;
}

Moves Sorted(Moves moves) {
    std::sort(moves.begin(), moves.end());
    return moves;
}

// --- The groups ---
//
// d1h5 takes the queen, c3b5 a rook, and both are not protected; a1a7 takes a pawn. c3d5 and d1d5 take a pawn that is
// protected, and lose material. All others are quiet.

constexpr std::string_view mixed_fen = "6k1/p4ppp/2p5/1r1p3q/8/2N5/5PPP/R2Q2K1 w - - 0 1";

class TournamentOrder : public testing::Test {
  protected:
    [[nodiscard]] Move Named(std::string_view text) const { return search_.MoveNamed(text); }
    [[nodiscard]] Moves Order(Move hash_move = INVALID) {
        TournamentNode node = search_.NodeAt({.distance = 256});
        node.hash_move = hash_move;
        return Delivered(node);
    }
    void Learn(std::string_view text, int bonus) {
        search_.state->tables().by_squares[white][Named(text) & 0xFFFU].Learn(bonus);
    }

    TournamentBuilder search_{mixed_fen};
};

TEST_F(TournamentOrder, HasSoundCapturesFirstAndLosingOnesLast) {
    const Texts order = TextsOf(Order());
    ASSERT_GT(order.size(), 10U);
    EXPECT_EQ(Texts(order.begin(), order.begin() + 3), (Texts{"d1h5", "c3b5", "a1a7"}));
    EXPECT_EQ(Texts(order.end() - 2, order.end()), (Texts{"c3d5", "d1d5"})) << "the lesser piece first";
}

TEST_F(TournamentOrder, HasTheHashMoveBeforeAll) {
    for (const std::string_view text : {"d1h5", "g1f1", "d1d5", "c3a2"}) {
        const Moves order = Order(Named(text));
        EXPECT_EQ(order.front(), Named(text));
        EXPECT_EQ(Sorted(order), Sorted(LegalMovesOf(search_.board()))) << "and not a second time";
    }
}

TEST_F(TournamentOrder, HasKillersThenTheCounterMoveThenQuietMovesByTheirHistory) {
    search_.search().killers[0] = {.first = Named("g1f1"), .second = Named("h2h4")};
    Learn("c3a4", 900);
    Learn("f2f4", 1000);
    Learn("g1h1", -1000);
    Learn("g1f1", -1000);
    const Texts order = TextsOf(Order());
    EXPECT_EQ(Texts(order.begin() + 3, order.begin() + 7), (Texts{"g1f1", "h2h4", "f2f4", "c3a4"}));
    EXPECT_EQ(*(order.end() - 3), "g1h1");
}

TEST_F(TournamentOrder, MovesCapturesByTheirHistoryAndNotOutOfTheirGroup) {
    const auto learn = [&](std::string_view text, int bonus) {
        TournamentNode node = search_.NodeAt({});
        LearnCapture(node, Named(text), bonus);
    };
    const auto first_three = [&] {
        const Texts order = TextsOf(Order());
        return Texts(order.begin(), order.begin() + 3);
    };
    learn("c3b5", HistoryScore::largest);
    search_.rules().capture_history = piece_value[queen] - piece_value[rook] - 1;
    EXPECT_EQ(first_three(), (Texts{"d1h5", "c3b5", "a1a7"}));
    search_.rules().capture_history += 2;
    EXPECT_EQ(first_three(), (Texts{"c3b5", "d1h5", "a1a7"}));
    learn("a1a7", -HistoryScore::largest);
    learn("c3d5", HistoryScore::largest);
    EXPECT_EQ(first_three(), (Texts{"c3b5", "d1h5", "a1a7"}));
    search_.rules().capture_history = 0;
    EXPECT_EQ(first_three(), (Texts{"d1h5", "c3b5", "a1a7"}));
}

TEST_F(TournamentOrder, HasNoKillerThatIsACaptureTwice) {
    search_.search().killers[0] = {.first = Named("d1d5"), .second = Named("a1a7")};
    EXPECT_EQ(Sorted(Order()), Sorted(LegalMovesOf(search_.board())));
    EXPECT_EQ(TextsOf(Order()).back(), "d1d5");
}

/// After g8h8 White's f2f3 has cut before.
TEST(TournamentOrders, HaveTheCounterMoveAfterTheKillers) {
    TournamentBuilder search("6k1/p4ppp/2p5/1r1p3q/8/2N5/5PPP/R2Q2K1 b - - 0 1");
    const Move last = search.MoveNamed("g8h8");
    search.Make("g8h8");
    const Move counter = search.MoveNamed("f2f3");
    search.state->tables().counter_move[PieceSquare(last, black)] = counter;
    search.search().killers[1] = {.first = search.MoveNamed("g1f1"), .second = search.MoveNamed("h2h4")};
    search.state->tables().by_squares[white][search.MoveNamed("f2f4") & 0xFFFU].Learn(1000);
    const auto order = [&] {
        TournamentNode node = search.NodeAt({.distance = 256});
        const Texts texts = TextsOf(Delivered(node));
        const auto quiet = std::find(texts.begin(), texts.end(), "g1f1");
        return Texts(quiet, quiet + 4);
    };
    EXPECT_EQ(order(), (Texts{"g1f1", "h2h4", "f2f3", "f2f4"}));
    search.rules().counter_moves = 0;
    EXPECT_EQ(order()[2], "f2f4");
    search.rules().counter_moves = 1;
    search.search().moves_played[1] = INVALID;
    EXPECT_EQ(order()[2], "f2f4") << "a pass has no answer";
}

TEST_F(TournamentOrder, CanLeaveOutTheQuietMovesThatRemain) {
    TournamentNode node = search_.NodeAt({.distance = 256});
    const Moves all = Order();
    for (std::size_t tried = 0; tried <= all.size(); ++tried) {
        Moves expected(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(tried));
        std::copy_if(all.begin() + static_cast<std::ptrdiff_t>(tried), all.end(), std::back_inserter(expected),
                     [](Move move) { return (move & tactical_bits) != 0; });
        EXPECT_EQ(Delivered(node, tried), expected) << tried;
    }
}

TEST(TournamentOrders, ReportMateAndStalemate) {
    const auto answer = [](std::string_view fen, Score beta) {
        TournamentBuilder search(fen);
        TournamentNode node = search.NodeAt({.beta = beta, .distance = 256});
        MoveOrder order(node);
        Move move = INVALID;
        return order.Next(move);
    };
    EXPECT_EQ(answer("R5k1/5ppp/8/8/8/8/8/6K1 b - - 0 1", 100), NodeAnswer(99));
    EXPECT_EQ(answer("7k/5Q2/6K1/8/8/8/8/8 b - - 0 1", 0), NodeAnswer(0));
    EXPECT_EQ(answer("7k/5Q2/6K1/8/8/8/8/8 b - - 0 1", 1), NodeAnswer(0));
}

/// The group of a move, the best first.
int GroupOf(const TournamentNode& node, Move move) {
    Bitboard touched = 0;
    if (move == node.hash_move) return 0;
    if (!IsQuiet(move)) {
        if (PromotionPiece(move) != no_piece && PromotionPiece(move) != queen) return 5;
        const bool is_risky = material_units[CapturedPiece(move)] < material_units[MovingPiece(move)];
        return is_risky && ExchangeScore(move, node.board(), touched) < 0 ? 5 : 1;
    }
    const KillerPair& killers = node.search.killers[node.ply];
    if (move == killers.first) return 2;
    if (move == killers.second) return 3;
    return 4;
}

/// Random positions, hash moves, killers and histories: each legal move comes once, group by group, and quiet moves by
/// falling history.
TEST(TournamentOrders, DeliverEachLegalMoveOnceInOrder) {
    constexpr std::uint32_t seed = 77;
    std::mt19937 random(seed);
    TournamentBuilder search(start_fen);
    int positions = 0;
    ForEachRandomPosition(seed, 42, 60, [&](BOARD& board, const Moves& legal) {
        if (legal.empty()) return;
        ++positions;
        search.search().StartSearch(board, 0);
        const auto any = [&] { return legal[random() % legal.size()]; };
        for (int i = 0; i < 10; ++i) {
            const Move move = any();
            search.state->tables().by_squares[board.side_to_move][move & 0xFFFU].Learn(
                static_cast<int>(random() % 8001) - 4000);
        }
        search.search().killers[0] = {.first = any(), .second = INVALID};
        search.search().killers[0].Take(any());
        TournamentNode node = search.NodeAt({.distance = 256});
        if (random() % 2 == 0) node.hash_move = any();
        const Moves order = Delivered(node);
        ASSERT_EQ(Sorted(order), Sorted(legal)) << FenOf(board);
        for (std::size_t i = 1; i < order.size(); ++i) {
            const int before = GroupOf(node, order[i - 1]);
            const int group = GroupOf(node, order[i]);
            ASSERT_LE(before, group) << FenOf(board) << ' ' << MoveToCoordinate(order[i]);
            if (before == 4 && group == 4) {
                ASSERT_GE(QuietHistory(node).Of(order[i - 1]), QuietHistory(node).Of(order[i])) << FenOf(board);
            }
        }
    });
    EXPECT_GT(positions, 1000);
}

// --- What is learnt ---

/// White's node after 1. a2a3 a7a6: both last moves are known.
class Learning : public testing::Test {
  protected:
    Learning() {
        search_.Make("a2a3");
        search_.Make("a7a6");
    }
    /// The node's best move cuts after those of `tried` have not.
    void Cut(std::string_view best, const Moves& tried, Distance distance = 4 * ONE_PLY) {
        TournamentNode node = search_.NodeAt({.distance = distance});
        node.best_move = Named(best);
        LearnFromCut(node, tried);
    }
    [[nodiscard]] int HistoryOf(std::string_view text) { return QuietHistory(search_.NodeAt({})).Of(Named(text)); }
    [[nodiscard]] Move Named(std::string_view text) const { return search_.MoveNamed(text); }

    TournamentBuilder search_{start_fen,
                              {.history_malus = 1,
                               .continuation_history = 1,
                               .counter_moves = 1,
                               .history_bonus_factor = 10,
                               .history_bonus_limit = 400}};
};

TEST_F(Learning, RewardsTheBestMoveAndBlamesThoseBefore) {
    Cut("e2e4", {Named("d2d4"), Named("h2h4")});
    EXPECT_EQ(HistoryOf("e2e4"), 3 * 250) << "by its squares, and after the last move and the one before";
    EXPECT_EQ(HistoryOf("d2d4"), -3 * 250);
    EXPECT_EQ(HistoryOf("h2h4"), -3 * 250);
    EXPECT_EQ(HistoryOf("e2e3"), 0);
}

TEST_F(Learning, BlamesNobodyIfTheMalusIsOff) {
    search_.rules().history_malus = 0;
    Cut("e2e4", {Named("d2d4")});
    EXPECT_EQ(HistoryOf("e2e4"), 3 * 250);
    EXPECT_EQ(HistoryOf("d2d4"), 0);
}

TEST_F(Learning, CountsForThesePreviousMovesOnly) {
    Cut("e2e4", {});
    TournamentBuilder& search = search_;
    search.search().moves_played[2] = MakeWord(62, 45, knight);
    EXPECT_EQ(HistoryOf("e2e4"), 2 * 250) << "after another last move";
    search.search().moves_played[2] = INVALID;
    EXPECT_EQ(HistoryOf("e2e4"), 2 * 250) << "after a pass";
    search.search().moves_played[1] = INVALID;
    EXPECT_EQ(HistoryOf("e2e4"), 250);
    search.rules().continuation_history = 0;
    EXPECT_EQ(HistoryOf("e2e4"), 250);
}

TEST_F(Learning, WithoutContinuationKnowsTheSquaresAlone) {
    search_.rules().continuation_history = 0;
    Cut("e2e4", {Named("d2d4")});
    EXPECT_EQ(HistoryOf("e2e4"), 250);
    search_.rules().continuation_history = 1;
    EXPECT_EQ(HistoryOf("e2e4"), 250);
}

TEST_F(Learning, TakesMoreFromDeeperNodesUpToALimit) {
    int before = 0;
    for (int plies = 0; plies < 6; ++plies) {
        search_.state->Clear();
        Cut("e2e4", {}, plies * ONE_PLY);
        EXPECT_EQ(HistoryOf("e2e4"), 3 * std::min(10 * (plies + 1) * (plies + 1), 400)) << plies;
        EXPECT_GT(HistoryOf("e2e4"), before);
        before = HistoryOf("e2e4");
    }
    search_.state->Clear();
    Cut("e2e4", {}, 60 * ONE_PLY);
    EXPECT_EQ(HistoryOf("e2e4"), 3 * 400);
    search_.state->Clear();
    Cut("e2e4", {}, -3 * ONE_PLY);
    EXPECT_EQ(HistoryOf("e2e4"), 3 * 10) << "below the horizon as at it";
}

/// White may take a pawn with the rook or the knight.
class LearningOfCaptures : public testing::Test {
  protected:
    void Cut(std::string_view best, const Texts& tried) {
        TournamentNode node = search_.NodeAt({.distance = 4 * ONE_PLY});
        node.best_move = search_.MoveNamed(best);
        Moves moves;
        for (const std::string& text : tried) moves.push_back(search_.MoveNamed(text));
        LearnFromCut(node, moves);
    }
    /// In the units of what is learnt.
    [[nodiscard]] int HistoryOf(std::string_view text) {
        return CaptureHistoryOf(search_.NodeAt({}), search_.MoveNamed(text));
    }

    TournamentBuilder search_{
        "4k3/8/8/1p3p2/3N4/8/2P5/1R2K3 w - - 0 1",
        {.capture_history = HistoryScore::largest / 8, .history_bonus_factor = 10, .history_bonus_limit = 400}};
};

TEST_F(LearningOfCaptures, RewardsTheBestMoveAndBlamesThoseBefore) {
    Cut("b1b5", {"d4f5", "d4c6"});
    EXPECT_EQ(HistoryOf("b1b5"), 250);
    EXPECT_EQ(HistoryOf("d4f5"), -250);
    EXPECT_EQ(HistoryOf("d4b5"), 0) << "another piece on the same square";
    Cut("d4c6", {"b1b5"});
    EXPECT_LE(HistoryOf("b1b5"), 0) << "a quiet move was better";
}

TEST_F(LearningOfCaptures, LeavesQuietMovesAndTheAnswerAlone) {
    TournamentNode node = search_.NodeAt({});
    Cut("b1b5", {"d4c6"});
    EXPECT_EQ(QuietHistory(node).Of(search_.MoveNamed("d4c6")), 0);
    EXPECT_EQ(search_.search().killers[0].first, INVALID);
}

TEST_F(LearningOfCaptures, MayBeOff) {
    search_.rules().capture_history = 0;
    Cut("b1b5", {});
    search_.rules().capture_history = HistoryScore::largest / 8;
    EXPECT_EQ(HistoryOf("b1b5"), 0);
}

TEST_F(Learning, KeepsTheAnswerToTheLastMove) {
    Cut("e2e4", {});
    const std::size_t place = PieceSquare(search_.search().moves_played[2], black);
    EXPECT_EQ(search_.state->tables().counter_move[place], Named("e2e4"));
    Cut("d2d4", {});
    EXPECT_EQ(search_.state->tables().counter_move[place], Named("d2d4")) << "the latest";
    search_.rules().counter_moves = 0;
    Cut("h2h4", {});
    EXPECT_EQ(search_.state->tables().counter_move[place], Named("d2d4"));
}

TEST(QuietHistories, OfTheRootHaveNoMovesBefore) {
    TournamentBuilder search(start_fen);
    TournamentNode node = search.NodeAt({.distance = 4 * ONE_PLY});
    node.best_move = search.MoveNamed("e2e4");
    LearnFromCut(node, {});
    EXPECT_GT(QuietHistory(node).Of(node.best_move), 0);
}

}  // namespace
