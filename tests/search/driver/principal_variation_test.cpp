#include "search/driver/principal_variation.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "evaluation/context/position_type.h"
#include "search/tables/hash.h"
#include "support/board_builder.h"
#include "support/log_capture.h"
#include "support/row_name.h"
#include "support/search_builder.h"

namespace {

constexpr RootQuestion some_question{.test = 20, .depth = 3};

/// A line given by its moves in coordinate notation.
std::vector<Move> LineOf(BOARD board, const std::vector<std::string_view>& moves) {
    std::vector<Move> line;
    for (const std::string_view text : moves) {
        line.push_back(MoveOf(board, text));
        board.MakeMove(line.back());
    }
    return line;
}

RootMoveRecord RecordOf(const BOARD& board, const std::vector<std::string_view>& moves) {
    const std::vector<Move> line = LineOf(board, moves);
    return {.move = line.front(), .text = "", .line = line};
}

class PrincipalVariation : public testing::Test {
  protected:
    /// What the table knows about a position.
    struct Known {
        bool found = false;
        TranspositionHit hit;
    };
    [[nodiscard]] Known Look(const BOARD& board) {
        Known known;
        known.found = table_.Probe(board.key(), 0, 0, 0, known.hit) != TranspositionAnswer::not_found;
        return known;
    }

    TRANSPOSITION_TABLE table_;
};

TEST_F(PrincipalVariation, EveryPositionButTheRootIsWritten) {
    BOARD board = BoardFromFen(start_fen);
    const RootMoveRecord record = RecordOf(board, {"e2e4", "e7e5", "g1f3"});
    WriteLineToHash(board, record, opening, table_);
    EXPECT_FALSE(Look(board).found);
    for (std::size_t i = 0; i < 2; ++i) {
        board.MakeMove(record.line[i]);
        const Known known = Look(board);
        ASSERT_TRUE(known.found) << i;
        EXPECT_EQ(known.hit.move, record.line[i + 1]);
        EXPECT_EQ(known.hit.position_class, opening);
        EXPECT_EQ(known.hit.flags, NodeFlags::queen_not_attacked);
    }
    board.MakeMove(record.line[2]);
    EXPECT_FALSE(Look(board).found) << "after the line";
}

TEST_F(PrincipalVariation, WrittenEntriesDecideNothing) {
    BOARD board = BoardFromFen(start_fen);
    const RootMoveRecord record = RecordOf(board, {"e2e4", "e7e5"});
    WriteLineToHash(board, record, opening, table_);
    board.MakeMove(record.line[0]);
    for (const Score beta : {-32000, -500, 0, 500, 32000}) {
        TranspositionHit hit;
        EXPECT_EQ(table_.Probe(board.key(), 1, -64000, beta, hit), TranspositionAnswer::undecided) << beta;
    }
}

TEST_F(PrincipalVariation, PresentEntriesStayAsTheyAre) {
    BOARD board = BoardFromFen(start_fen);
    WriteLineToHash(board, RecordOf(board, {"e2e4", "c7c5"}), opening, table_);
    WriteLineToHash(board, RecordOf(board, {"e2e4", "e7e5", "g1f3"}), opening, table_);
    board.MakeMove(MoveOf(board, "e2e4"));
    EXPECT_EQ(Look(board).hit.move, MoveOf(board, "c7c5"));
    board.MakeMove(MoveOf(board, "e7e5"));
    EXPECT_EQ(Look(board).hit.move, MoveOf(board, "g1f3"));
}

/// What the line writer notes about the position after the first move of a line.
TranspositionHit NotedAfterFirstMove(std::string_view fen, const std::vector<std::string_view>& moves) {
    TRANSPOSITION_TABLE table;
    BOARD board = BoardFromFen(std::string(fen));
    const RootMoveRecord record = RecordOf(board, moves);
    WriteLineToHash(board, record, unbalanced_ending, table);
    board.MakeMove(record.line.front());
    TranspositionHit hit;
    (void)table.Probe(board.key(), 0, 0, 0, hit);
    return hit;
}

TEST_F(PrincipalVariation, EntriesTellASingleReply) {
    using enum NodeFlags;
    EXPECT_EQ(NotedAfterFirstMove("1q5k/8/8/8/8/8/8/K7 b - - 0 1", {"b8b2", "a1b2"}).flags,
              single_reply | queen_not_attacked)
        << "in check";
    EXPECT_EQ(NotedAfterFirstMove("1q5k/8/8/8/8/8/8/K7 b - - 0 1", {"b8h2", "a1b1"}).flags,
              single_reply | queen_not_attacked)
        << "not in check";
    EXPECT_EQ(NotedAfterFirstMove("1q5k/8/8/8/8/8/8/K7 b - - 0 1", {"b8f8", "a1b1"}).flags, queen_not_attacked);
}

TEST_F(PrincipalVariation, EntriesTellAnAttackedQueen) {
    EXPECT_EQ(NotedAfterFirstMove("4k3/4p3/8/8/3Q4/8/8/4K3 b - - 0 1", {"e7e5", "d4a4"}).flags,
              NodeFlags::queen_attacked);
}

TEST_F(PrincipalVariation, EntriesTellTheClassOfTheirPosition) {
    EXPECT_EQ(NotedAfterFirstMove("4k3/8/8/3r4/4P3/8/8/4K3 w - - 0 1", {"e4d5", "e8d7"}).position_class, pawn_ending);
    EXPECT_EQ(NotedAfterFirstMove("4k3/8/8/3r4/4P3/8/8/4K3 w - - 0 1", {"e1e2", "e8d7"}).position_class,
              unbalanced_ending)
        << "kept after a quiet move";
}

TEST_F(PrincipalVariation, LineIsReadFromTheSearch) {
    SearchBuilder search(start_fen);
    const std::vector<Move> line = LineOf(search.board->board, {"e2e4", "e7e5", "g1f3"});
    std::copy(line.begin(), line.end(), search.board->pv[0]);
    search.board->pv[0][3] = INVALID;
    RootMoveRecord record{.move = line[0], .text = "", .line = {line[0], line[0]}};
    ReadLineBack(*search.board, some_question, record);
    EXPECT_EQ(record.line, line);
    EXPECT_EQ(FenOf(search.board->board), start_fen) << "on a private copy";
}

TEST_F(PrincipalVariation, LineGoesOnWithWhatTheTableKnows) {
    SearchBuilder search(start_fen);
    const BOARD& board = search.board->board;
    const RootMoveRecord written = RecordOf(board, {"e2e4", "e7e5", "g1f3", "b8c6"});
    WriteLineToHash(board, written, opening, search.tables.transposition);
    search.board->pv[0][0] = written.line[0];
    search.board->pv[0][1] = INVALID;
    RootMoveRecord record{.move = written.line[0], .text = "", .line = {}};
    ReadLineBack(*search.board, some_question, record);
    EXPECT_EQ(record.line, written.line);
}

TEST_F(PrincipalVariation, LineFromTheTableEndsAtADraw) {
    SearchBuilder search(start_fen);
    const BOARD& board = search.board->board;
    const RootMoveRecord circle = RecordOf(board, {"g1f3", "g8f6", "f3g1", "f6g8", "g1f3"});
    WriteLineToHash(board, circle, opening, search.tables.transposition);
    search.board->pv[0][0] = circle.line[0];
    search.board->pv[0][1] = INVALID;
    RootMoveRecord record{.move = circle.line[0], .text = "", .line = {}};
    ReadLineBack(*search.board, some_question, record);
    EXPECT_EQ(record.line.size(), 4U) << "back in the start position, for the second time";
}

TEST_F(PrincipalVariation, LineFromTheTableEndsAtTheDeepestPly) {
    // A chain of table moves that is longer than the search may reach: pawns and kings, each position a new one.
    SearchBuilder search("k7/8/8/8/8/8/8/K6R w - - 0 1");
    BOARD board = search.board->board;
    std::vector<Move> chain;
    std::uint32_t step = 0;
    while (board.ply < 79) {
        const std::vector<Move> moves = LegalMovesOf(board);
        ASSERT_FALSE(moves.empty());
        Move chosen = INVALID;
        for (std::size_t i = 0; i < moves.size() && chosen == INVALID; ++i) {
            const Move move = moves[(i + step) % moves.size()];
            BOARD after = board;
            after.MakeMove(move);
            Move known;
            Distance distance;
            const bool seen = search.tables.transposition.ProbeMove(after.key(), known, distance);
            if (!seen && !after.IsDraw() && CapturedPiece(move) == no_piece && !LegalMovesOf(after).empty())
                chosen = move;
        }
        ASSERT_NE(chosen, INVALID) << FenOf(board);
        search.tables.transposition.Store(
            TranspositionEntry::Make(board.key(), chosen, true, pawnless, NodeFlags::none));
        chain.push_back(chosen);
        board.MakeMove(chosen);
        step += 3;
    }
    search.board->pv[0][0] = chain[0];
    search.board->pv[0][1] = INVALID;
    RootMoveRecord record{.move = chain[0], .text = "", .line = {}};
    ReadLineBack(*search.board, some_question, record);
    EXPECT_EQ(record.line, chain) << "79 moves lead to ply 79";
}

TEST_F(PrincipalVariation, TableMoveThatCantBePlayedIsReported) {
    SearchBuilder search(start_fen);
    BOARD board = search.board->board;
    const Move first = MoveOf(board, "e2e4");
    board.MakeMove(first);
    search.tables.transposition.Store(
        TranspositionEntry::Make(board.key(), MakeWord(a1, a8, rook), true, opening, NodeFlags::none));
    search.board->pv[0][0] = first;
    search.board->pv[0][1] = INVALID;
    RootMoveRecord record{.move = first, .text = "", .line = {}};
    LogCapture log;
    testing::internal::CaptureStdout();
    ReadLineBack(*search.board, some_question, record);
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(record.line, std::vector<Move>{first});
    const std::string text = log.text();
    EXPECT_NE(text.find("local_board.VerifyMove(hash_move) == true"), std::string::npos) << text;
    EXPECT_NE(text.find("file: search_serial, "), std::string::npos) << text;
    EXPECT_NE(text.find("collision in transposition table detected"), std::string::npos) << text;
}

// --- Where the knowledge ends ---

/// What the table has for the position after some moves of e2e4 e7e5 g1f3 b8c6 from the start.
struct Entry {
    std::size_t after;  ///< moves
    Score lower = -infinity_bound;
    Score upper = infinity_bound;
    Distance distance = no_distance;  ///< of the bound that is given
};

struct KnownRow {
    std::string_view name;
    std::vector<Entry> entries;  ///< besides those that only note the moves of the line
    std::size_t known;
};

class KnownMoves : public testing::TestWithParam<KnownRow> {};

/// The search itself has left the first move. The question: at least 20, in the third iteration?
TEST_P(KnownMoves, EndWithTheAnswersOfTheTable) {
    SearchBuilder search(start_fen);
    const RootMoveRecord written = RecordOf(search.board->board, {"e2e4", "e7e5", "g1f3", "b8c6"});
    BOARD board = search.board->board;
    for (std::size_t i = 0; i < written.line.size(); ++i) {
        auto note = TranspositionEntry::Make(board.key(), written.line[i], true, opening, NodeFlags::none);
        for (const Entry& entry : GetParam().entries) {
            if (entry.after != i) continue;
            const auto distance = static_cast<std::int16_t>(entry.distance);
            if (entry.lower > -infinity_bound) note.lower_distance = distance;
            if (entry.upper < infinity_bound) note.upper_distance = distance;
            note.lower_bound = static_cast<std::int16_t>(entry.lower);
            note.upper_bound = static_cast<std::int16_t>(entry.upper);
        }
        search.tables.transposition.Store(note);
        board.MakeMove(written.line[i]);
    }
    search.board->pv[0][0] = written.line[0];
    search.board->pv[0][1] = INVALID;
    const std::uint64_t probes = search.tables.transposition.probes();
    RootMoveRecord record{.move = written.line[0], .text = ""};
    ReadLineBack(*search.board, some_question, record);
    EXPECT_EQ(record.line, written.line) << "the line goes on all the same";
    EXPECT_EQ(record.known, GetParam().known);
    EXPECT_EQ(search.tables.transposition.probes() - probes, 4U) << "who looks for answers is not counted";
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(PrincipalVariation, KnownMoves, testing::Values(
    KnownRow{"notes of moves", {}, 1},
    KnownRow{"good enough for White", {{.after = 1, .upper = -20, .distance = 128}}, 2},
    KnownRow{"one point too little", {{.after = 1, .upper = -19, .distance = 128}}, 1},
    KnownRow{"not good enough for White", {{.after = 1, .lower = -19, .distance = 128}}, 2},
    KnownRow{"one point too much", {{.after = 1, .lower = -20, .distance = 128}}, 1},
    KnownRow{"too shallow", {{.after = 1, .upper = -20, .distance = 127}}, 1},
    KnownRow{"a ply later a ply less", {{.after = 1, .upper = -20, .distance = 128},
                                        {.after = 2, .lower = 20, .distance = 64}}, 3},
    KnownRow{"too shallow a ply later", {{.after = 1, .upper = -20, .distance = 128},
                                         {.after = 2, .lower = 20, .distance = 63}}, 2},
    KnownRow{"the other answer a ply later", {{.after = 1, .upper = -20, .distance = 128},
                                              {.after = 2, .upper = 20, .distance = 128}}, 2},
    KnownRow{"to the end", {{.after = 1, .upper = -20, .distance = 128}, {.after = 2, .lower = 20, .distance = 64},
                            {.after = 3, .upper = -20, .distance = 1}}, 4},
    KnownRow{"captures alone", {{.after = 1, .upper = -20, .distance = 128}, {.after = 2, .lower = 20, .distance = 64},
                                {.after = 3, .upper = -20, .distance = 0}}, 3},
    KnownRow{"answers after a gap", {{.after = 2, .lower = 20, .distance = 640}}, 1}),
    RowName<KnownRow>);
// clang-format on

TEST_F(PrincipalVariation, IsRenderedInStandardNotation) {
    const BOARD board = BoardFromFen("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1");
    const auto rendered = RenderLine(board, LineOf(board, {"e1g1", "a8a1", "f1a1", "e8g8"}));
    ASSERT_EQ(rendered.size(), 3U + 1U);
    EXPECT_EQ(rendered[0].second, "O-O");
    EXPECT_EQ(rendered[1].second, "Rxa1");
    EXPECT_EQ(rendered[2].second, "Rxa1");
    EXPECT_EQ(rendered[3].second, "O-O");
    EXPECT_EQ(rendered[3].first, MoveOf(BoardFromFen("4k2r/8/8/8/8/8/8/R5K1 b k - 0 1"), "e8g8"));
}

TEST_F(PrincipalVariation, RefusedMoveEndsTheRenderingAndIsLogged) {
    const BOARD board = BoardFromFen(start_fen);
    std::vector<Move> line = LineOf(board, {"e2e4", "e7e5"});
    line.push_back(MakeWord(a1, a4, rook));
    line.push_back(MakeWord(a7, a6, pawn));
    LogCapture log;
    testing::internal::CaptureStdout();
    const auto rendered = RenderLine(board, line);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "") << "an interface must not see it";
    EXPECT_EQ(rendered.size(), 2U);
    EXPECT_EQ(log.text(), "Illegal move detected: a1a4\n");
}

}  // namespace
