#include "search/state/search_board.h"

#include <gtest/gtest.h>

#include "evaluation/context/position_type.h"
#include "support/search_builder.h"

namespace {

constexpr std::string_view pinned_knight = "4r1k1/8/8/8/8/8/4N3/4K3 w - - 0 1";

TEST(SearchBoard, StartsASearchWithEverythingSetUp) {
    SearchBuilder search(start_fen);
    SearchBoard& board = *search.board;
    board.nodes = board.ettc_tries = board.ettc_cutoffs = 5;
    board.statistics.cuts = board.statistics.extended_moves = 5;
    board.poll_countdown = 1;
    board.check_runs[40].threat = 1;
    board.pins[40].pinned_square = 3;
    board.killers[40].first = MakeWord(a2, a3, pawn);
    const auto generation = board.history.Band(72).generation();

    board.StartSearch(BoardFromFen(std::string(pinned_knight)), 25);
    EXPECT_EQ(FenOf(board.board), pinned_knight);
    EXPECT_EQ(board.board.key_history, board.board.key_store) << "its own keys";
    EXPECT_EQ(board.nodes + board.ettc_tries + board.ettc_cutoffs, 0U);
    EXPECT_EQ(board.statistics, SearchStatistics{});
    EXPECT_EQ(board.poll_countdown, 100U);
    EXPECT_EQ(board.check_runs[40].threat, 0);
    EXPECT_EQ(board.pins[40], PinRecord{});
    EXPECT_EQ(board.pins[0].pinned_square, e2);
    EXPECT_EQ(board.position_class[0], pawnless);
    EXPECT_EQ(board.history.Band(72).generation(), generation + 1);
    EXPECT_EQ(board.killers[40].first, MakeWord(a2, a3, pawn)) << "killers are kept";
}

TEST(SearchBoard, SeesADrawFromBothSides) {
    SearchBuilder white_root(start_fen, 25);
    EXPECT_EQ(white_root.board->draw_score[white], 25);
    EXPECT_EQ(white_root.board->draw_score[black], -25);
    SearchBuilder black_root("4k3/pppp4/8/8/8/8/PPPP4/4K3 b - - 0 1", 25);
    EXPECT_EQ(black_root.board->draw_score[white], -25);
    EXPECT_EQ(black_root.board->draw_score[black], 25);
}

TEST(SearchBoard, KnowsTheDeepestPlyThatAMoveHasLedTo) {
    SearchBuilder search(start_fen);
    EXPECT_EQ(search.board->DeepestPly(), 0);
    search.board->moves_played[3] = MakeWord(a2, a3, pawn);
    search.board->moves_played[1] = MakeWord(a7, a6, pawn);
    EXPECT_EQ(search.board->DeepestPly(), 3);
    search.board->ForgetMovesPlayed();
    EXPECT_EQ(search.board->DeepestPly(), 0);
}

TEST(SearchBoard, EmptyPinRecordHasItsOwnNumbers) {
    EXPECT_EQ(PinRecord{}.pinned_square, -1);
    EXPECT_EQ(PinRecord{}.pinner_square, -2);
    EXPECT_EQ(PinRecord{}.pinner_side, -1);
}

}  // namespace
