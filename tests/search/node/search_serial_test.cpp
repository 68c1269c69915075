#include "search/node/search_node.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "evaluation/context/position_type.h"
#include "search/driver/steering.h"
#include "support/board_builder.h"
#include "support/row_name.h"
#include "support/search_builder.h"

namespace {

/// Black to move with nothing to do; any first move brings the tree to ply 1.
constexpr std::string_view kings_and_pawns = "4k3/pppp4/8/8/8/8/PPPP4/4K3 w - - 0 1";

// --- Steps 1 to 3: ply, poll, row ---

void GoToPly(SearchBuilder& search, std::uint32_t ply) {
    constexpr std::string_view round[] = {"e1f1", "e8f8", "f1e1", "f8e8"};
    while (search.board->board.ply < ply) search.Make(round[search.board->board.ply % 4]);
}

TEST(SearchNode, EndsTheLineAtPly78) {
    SearchBuilder search(kings_and_pawns);
    GoToPly(search, 78);
    search.board->poll_countdown = 1;
    search.board->pv[78][0] = MakeWord(a2, a3, pawn);
    for (const Score beta : {-32767, -500, 0, 500, 32767}) EXPECT_EQ(search.Ask(beta, 640), beta - 1);
    EXPECT_EQ(search.board->nodes, 0U) << "nothing else happens at such a node";
    EXPECT_EQ(search.polls, 0);
    EXPECT_EQ(search.board->pv[78][0], MakeWord(a2, a3, pawn));
}

TEST(SearchNode, CountsItselfAndPollsWhenTheCountdownEnds) {
    SearchBuilder search(kings_and_pawns);
    search.Make("e1f1");
    search.board->poll_countdown = 3;
    search.reload = 5;
    (void)search.Ask(0, 0);
    EXPECT_EQ(search.board->nodes, 1U) << "stand pat";
    EXPECT_EQ(search.board->poll_countdown, 2U);
    EXPECT_EQ(search.polls, 0);
    (void)search.Ask(0, 0);
    (void)search.Ask(0, 0);
    EXPECT_EQ(search.polls, 1);
    EXPECT_EQ(search.board->poll_countdown, 5U);
    EXPECT_EQ(search.board->nodes, 3U);
}

struct ThrowingPoll : NodePoll {
    void Poll() override { throw search_aborted_exception{.discard = false}; }
};

TEST(SearchNode, LetsThePollThrowFromTheMiddleOfTheTree) {
    SearchBuilder search(start_fen);
    search.Make("e2e4");
    ThrowingPoll thrower;
    search.board->poll = &thrower;
    search.board->poll_countdown = 100;
    EXPECT_THROW((void)search.Ask(0, 256), search_aborted_exception);
    EXPECT_EQ(search.board->nodes, 99U);

    // The board is set up again by the next search, and then answers as a new one does; the killers are meant to stay.
    SearchBuilder fresh(start_fen);
    search.board->StartSearch(BoardFromFen(start_fen), 0);
    search.tables.Clear();
    std::copy(std::begin(search.board->killers), std::end(search.board->killers), fresh.board->killers);
    search.board->poll_countdown = fresh.board->poll_countdown = 1000000;
    search.Make("e2e4");
    fresh.Make("e2e4");
    const Score answer = search.Ask(-20, 192);
    EXPECT_EQ(answer, fresh.Ask(-20, 192));
    EXPECT_EQ(search.board->nodes, fresh.board->nodes);
}

TEST(SearchNode, BumpsTheHistoryBandThatItEnters) {
    SearchBuilder search(kings_and_pawns);
    GoToPly(search, 7);
    const auto before = search.board->history.Band(8).generation();
    (void)search.Ask(0, 0);
    EXPECT_EQ(search.board->history.Band(8).generation(), before);
    GoToPly(search, 8);
    (void)search.Ask(0, 0);
    EXPECT_EQ(search.board->history.Band(8).generation(), before + 1);
}

TEST(SearchNode, ClearsItsRowOfTheLine) {
    SearchBuilder search(kings_and_pawns);
    search.Make("e1f1");
    search.board->pv[1][0] = MakeWord(a2, a3, pawn);
    (void)search.Ask(-32767, 640);
    EXPECT_EQ(search.board->pv[1][0], INVALID);
}

// --- Steps 4 and 5: what is known without a search ---

struct KnownRow {
    std::string_view name;
    std::string_view fen;
    std::string_view move;  ///< leads to ply 1
    Score beta;
    Score answer;
    Score contempt = 0;  ///< for the side that makes `move`
};
std::ostream& operator<<(std::ostream& out, const KnownRow& row) { return out << row.name; }

class KnownAnswers : public testing::TestWithParam<KnownRow> {};

TEST_P(KnownAnswers, EndTheNodeAtOnce) {
    SearchBuilder search(GetParam().fen, GetParam().contempt);
    search.Make(GetParam().move);
    for (const Distance distance : {0, 64, 256}) {
        search.board->nodes = 0;
        EXPECT_EQ(search.Ask(GetParam().beta, distance), GetParam().answer) << "distance " << distance;
        EXPECT_EQ(search.board->nodes, 1U) << "distance " << distance;
    }
}

constexpr std::string_view too_little = "4k3/8/8/8/8/8/4p3/4K1N1 w - - 0 1";
constexpr std::string_view fifty = "4k3/pppp4/8/8/8/8/PPPP4/4K3 w - - 99 80";

// clang-format off
INSTANTIATE_TEST_SUITE_P(SearchNode, KnownAnswers, testing::Values(
    KnownRow{"worse than being mated here", kings_and_pawns, "e1f1", -32767, -32767},
    KnownRow{"being mated here", kings_and_pawns, "e1f1", 1 - 32767, 1 - 32767},
    KnownRow{"better than mating at once", kings_and_pawns, "e1f1", 32767 - 1, 32767 - 2},
    KnownRow{"infinity", kings_and_pawns, "e1f1", 32767, 32766},
    KnownRow{"too little material, beta 0", too_little, "e1e2", 0, 0},
    KnownRow{"too little material, beta 1", too_little, "e1e2", 1, 0},
    KnownRow{"fifty moves, beta 0", fifty, "e1f1", 0, 0},
    KnownRow{"fifty moves, beta 1", fifty, "e1f1", 1, 0},
    // The root side sees a draw as 30; the side on move after its move as -30.
    KnownRow{"contempt, on the bound", too_little, "e1e2", -30, -30, 30},
    KnownRow{"contempt, one point more", too_little, "e1e2", -29, -30, 30},
    KnownRow{"mated with the fifty moves over", "k7/8/1K6/8/8/8/8/7R w - - 99 80", "h1h8", 0, 0}),
    RowName<KnownRow>);
// clang-format on

TEST(SearchNode, AnswersMateDistancesThatMatterBySearch) {
    SearchBuilder search(kings_and_pawns);
    search.Make("e1f1");
    for (const Score beta : {2 - 32767, 32767 - 2}) {
        search.board->nodes = 0;
        (void)search.Ask(beta, 64);
        EXPECT_GT(search.board->nodes, 1U) << beta;
    }
}

TEST(SearchNode, OneRepetitionIsADraw) {
    SearchBuilder search("4k3/pppp4/8/8/8/8/PPPPP3/4K3 w - - 0 1", 15);
    GoToPly(search, 3);
    EXPECT_EQ(search.Ask(-99, 0), -100) << "Black is a pawn down, it is no draw yet";
    GoToPly(search, 4);
    EXPECT_EQ(search.Ask(15, 256), 15) << "White, the root side, is on move";
    EXPECT_EQ(search.Ask(16, 256), 15);
}

// --- Step 7: the class ---

struct ClassRow {
    std::string_view name;
    std::string_view fen;
    std::string_view move;
    int parent_class;
    int expected;
};
std::ostream& operator<<(std::ostream& out, const ClassRow& row) { return out << row.name; }

class ClassUpdates : public testing::TestWithParam<ClassRow> {};

TEST_P(ClassUpdates, HappenWhenTheMoveMayChangeIt) {
    BOARD board = BoardFromFen(std::string(GetParam().fen));
    const Move move = MoveOf(board, GetParam().move);
    board.MakeMove(move);
    EXPECT_EQ(ClassAfterMove(board, move, GetParam().parent_class), GetParam().expected);
}

/// A middle game by its material; the parent's class is given as something else, so that a new look is noticed.
constexpr std::string_view developed = "r1bqkbnr/pppp1ppp/2n5/4p3/2B1P3/5N2/PPPP1PPP/RNBQK2R w KQkq - 0 1";
constexpr std::string_view last_piece = "r2q1rk1/pp1b1ppp/2n2n2/2b5/2B5/2N2N2/PP3PPP/R1BQR1K1 w - - 0 1";
constexpr std::string_view bishop_away = "r2q1rk1/pp1b1ppp/2n2n2/2b5/2B2B2/2N2N2/PP3PPP/R2QR1K1 w - - 0 1";

// clang-format off
INSTANTIATE_TEST_SUITE_P(SearchNode, ClassUpdates, testing::Values(
    ClassRow{"capture", "4k3/8/8/3p4/4P3/8/8/4K3 w - - 0 1", "e4d5", 3, pawn_ending},
    ClassRow{"promotion", "8/4P1k1/8/8/8/8/8/4K3 w - - 0 1", "e7e8", 3, pawnless},
    ClassRow{"quiet move in an ending", "4k3/8/8/3p4/4P3/8/8/4K3 w - - 0 1", "e1f1", 3, 3},
    ClassRow{"last bishop from home", last_piece, "c1g5", opening, middle_game},
    ClassRow{"bishop from elsewhere", bishop_away, "f4g5", opening, opening},
    ClassRow{"queen from home", bishop_away, "d1d3", opening, opening},
    ClassRow{"rook from home", bishop_away, "a1c1", opening, middle_game},
    ClassRow{"pawn from home", bishop_away, "a2a3", opening, opening},
    ClassRow{"piece from home, no opening", last_piece, "c1g5", unbalanced_ending, unbalanced_ending},
    ClassRow{"castling is a king's move from home", "r1bq1rk1/pp1b1ppp/2n2n2/8/2B2B2/2N2N2/PP3PPP/R2QK2R w KQ - 0 1", "e1g1", opening, middle_game},
    ClassRow{"developing one of many", developed, "b1c3", opening, opening}),
    RowName<ClassRow>);
// clang-format on

TEST(SearchNode, NullMoveKeepsTheClass) {
    BOARD board = BoardFromFen(std::string(last_piece));
    board.MakeNullMove();
    EXPECT_EQ(ClassAfterMove(board, INVALID, opening), opening);
}

TEST(SearchNode, WritesItsClassOnItsPly) {
    SearchBuilder search("4k3/8/8/3p4/4P3/8/8/4K3 w - - 0 1");
    search.Make("e4d5");
    (void)search.Ask(0, 0);
    EXPECT_EQ(search.board->position_class[1], pawn_ending);
}

// --- Step 10 and the moves ---

struct EndRow {
    std::string_view name;
    std::string_view fen;
    std::string_view move;
    Distance distance;
    Score beta;
    bool is_at_least;
    Score contempt = 0;
};
std::ostream& operator<<(std::ostream& out, const EndRow& row) { return out << row.name; }

class Ends : public testing::TestWithParam<EndRow> {};

TEST_P(Ends, AreAnsweredAsBetaOrOneBelow) {
    const EndRow& row = GetParam();
    SearchBuilder search(row.fen, row.contempt);
    search.Make(row.move);
    EXPECT_EQ(search.Ask(row.beta, row.distance), row.is_at_least ? row.beta : row.beta - 1);
}

constexpr std::string_view rook_mates = "k7/8/1K6/8/8/8/P7/7R w - - 0 1";
constexpr std::string_view stalemates = "7k/8/5K2/5Q2/8/8/P7/8 w - - 0 1";

// clang-format off
INSTANTIATE_TEST_SUITE_P(SearchNode, Ends, testing::Values(
    EndRow{"mated at ply 1, full width", rook_mates, "h1h8", 64, 2 - 32767, false},
    EndRow{"mated at ply 1, quiescence", rook_mates, "h1h8", 0, 2 - 32767, false},
    EndRow{"stalemate on the draw score", stalemates, "f5g6", 64, 0, true},
    EndRow{"stalemate above the draw score", stalemates, "f5g6", 64, 1, false},
    EndRow{"stalemate with contempt on it", stalemates, "f5g6", 64, 25, true, -25},
    EndRow{"stalemate with contempt above it", stalemates, "f5g6", 64, 26, false, -25},
    EndRow{"quiescence sees no stalemate", stalemates, "f5g6", 0, 0, false},
    EndRow{"stand pat is not for a node in check", "4k2q/8/8/8/8/8/8/R5K1 w - - 0 1", "a1a8", 0, 0, false}),
    RowName<EndRow>);
// clang-format on

TEST(SearchNode, LeavesTheLineOfItsAnswer) {
    SearchBuilder search("6k1/5ppp/8/8/8/8/5PPP/R5K1 w - - 0 1");
    search.Make("g1f1");
    search.Make("g8h8");
    // Mate with the next move: the row holds it, and ends there.
    EXPECT_EQ(search.Ask(32767 - 3, 64), 32767 - 3);
    EXPECT_EQ(search.board->pv[2][0], MoveOf(search.board->board, "a1a8"));
    EXPECT_EQ(search.board->pv[2][1], INVALID);
}

TEST(SearchNode, LeavesTheFirstOfEqualMovesOnAFailLow) {
    // As they are generated.
    SearchBuilder search(kings_and_pawns, {.enable_static_move_ordering_from_sq_malus = false,
                                           .enable_static_move_ordering_to_sq_bonus = false,
                                           .enable_static_move_ordering_piece_dependent_bonus = false,
                                           .randomize_move_ordering_of_remaining_moves = 0});
    search.Make("e1f1");
    EXPECT_EQ(search.Ask(500, 64), 499);
    EXPECT_EQ(search.board->pv[1][0], LegalMovesOf(search.board->board).front());
}

TEST(SearchNode, GivesTheBoardBackAsItWas) {
    SearchBuilder search("r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1");
    search.Make("e1g1");
    const std::string fen = FenOf(search.board->board);
    const auto key = search.board->board.key();
    (void)search.Ask(0, 128);
    EXPECT_EQ(FenOf(search.board->board), fen);
    EXPECT_EQ(search.board->board.key(), key);
    EXPECT_EQ(search.board->board.ply, 1U);
}

TEST(SearchNode, VisitsTheSameNodesTwice) {
    std::uint64_t nodes[2];
    for (std::uint64_t& count : nodes) {
        SearchBuilder search("r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1");
        search.Make("e1g1");
        (void)search.Ask(-50, 256);
        count = search.board->nodes;
    }
    EXPECT_EQ(nodes[0], nodes[1]);
    EXPECT_GT(nodes[0], 1000U);
}

// --- Words of flags ---

TEST(ChildFlags, AreHandedOnOnePlyLater) {
    using enum ChildFlags;
    EXPECT_EQ(Word(Inherited(root_child)), 0x020U);
    EXPECT_EQ(Inherited(NextPly(no_limited_razoring | no_late_move_reduction)),
              no_limited_razoring | no_late_move_reduction);
    EXPECT_EQ(Inherited(no_null_move | no_ettc | no_limited_razoring | no_late_move_reduction), ChildFlags::none);
}

TEST(NodeTypes, ACutNodeExpectsAnAllNode) {
    EXPECT_EQ(-NodeType::cut, NodeType::all);
    EXPECT_EQ(-NodeType::all, NodeType::cut);
    EXPECT_EQ(-NodeType::principal, NodeType::principal);
}

}  // namespace
