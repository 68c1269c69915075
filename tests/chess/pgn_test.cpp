#include "chess/pgn.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "support/board_builder.h"
#include "support/random_games.h"
#include "support/row_name.h"

namespace {

/// What came of the reading of a text.
struct Outcome {
    std::string failure;  ///< empty for a game
    UserBoard game;
    PGN_TAGS tags;
    std::string rest;  ///< what was not read
};

Outcome Read(const std::string& text) {
    Outcome outcome;
    outcome.game.SetBoardFromFen("4k3/8/8/8/8/8/4P3/4K3 w - - 3 9");
    std::istringstream stream(text);
    try {
        ReadPgn(outcome.game, stream, outcome.tags);
    } catch (const UserBoard::io_error&) {
        outcome.failure = "io";
    } catch (const UserBoard::invalid_move&) {
        outcome.failure = "move";
    } catch (const UserBoard::invalid_position&) {
        outcome.failure = "position";
    }
    stream.clear();
    std::getline(stream, outcome.rest, '\0');
    return outcome;
}

/// The moves that are to be replayed, in coordinate notation.
std::string MovesOf(const UserBoard& game) {
    std::string text;
    for (const Move move : game.next_moves()) {
        if (!text.empty()) text += ' ';
        text += MoveToCoordinate(move);
    }
    return text;
}

std::string Written(const UserBoard& game, const PGN_TAGS& tags = {}) {
    std::ostringstream stream;
    WritePgn(game, stream, tags);
    return stream.str();
}

/// The part of a written game between the tags and the result.
std::string MoveTextOf(const std::string& written) {
    const std::size_t begin = written.find("\n\n") + 2;
    return written.substr(begin, written.rfind("\n\n") - begin);
}

// --- Reading moves ---

struct MovesRow {
    std::string_view name;
    std::string text;
    std::string failure;
    std::string moves;  ///< all of them, if there is no failure
    GameResult result = GameResult::aborted;
};
std::ostream& operator<<(std::ostream& out, const MovesRow& row) { return out << row.name; }

class MoveTexts : public testing::TestWithParam<MovesRow> {};

TEST_P(MoveTexts, AreReadOrRefused) {
    const MovesRow& row = GetParam();
    const Outcome outcome = Read(row.text);
    EXPECT_EQ(outcome.failure, row.failure);
    if (!row.failure.empty()) {
        EXPECT_EQ(outcome.game.GetFen().substr(0, 34), "4k3/8/8/8/8/8/4P3/4K3 w - - 3 10") << "left as it was";
        EXPECT_FALSE(outcome.game.IsGameOver());
        return;
    }
    EXPECT_EQ(MovesOf(outcome.game), row.moves);
    EXPECT_TRUE(outcome.game.made_moves().empty());
    EXPECT_EQ(outcome.game.GetFen(), start_fen);
    EXPECT_EQ(outcome.game.result(), row.result);
    EXPECT_EQ(outcome.game.reason(), GameEndReason::unknown);
}

const std::string blanks(990, ' ');

// clang-format off
INSTANTIATE_TEST_SUITE_P(Pgn, MoveTexts, testing::Values(
    MovesRow{"no tags", "1. e4 e5 *", "", "e2e4 e7e5"},
    MovesRow{"number and move in one word", "1.e4 e5 2.Nf3 *", "", "e2e4 e7e5 g1f3"},
    MovesRow{"number and result in one word", "1.e4 e5 2.*", "", "e2e4 e7e5"},
    MovesRow{"number and comment in one word", "1.{a} e4 e5 2.;d e\n Nf3 *", "", "e2e4 e7e5 g1f3"},
    MovesRow{"no numbers", "e4 e5 Nf3 *", "", "e2e4 e7e5 g1f3"},
    MovesRow{"number by itself and with many dots", "1 . e4 *", "move", ""},
    MovesRow{"a number with two dots", "1.. e4 *", "", "e2e4"},
    MovesRow{"digits without a dot are no number", "1 e4 *", "move", ""},
    MovesRow{"white wins", "e4 1-0", "", "e2e4", GameResult::white_wins},
    MovesRow{"black wins", "e4 0-1", "", "e2e4", GameResult::black_wins},
    MovesRow{"draw", "e4 1/2-1/2", "", "e2e4", GameResult::draw},
    MovesRow{"no moves", "*", "", ""},
    MovesRow{"end without a result", "1. e4 e5", "io", ""},
    MovesRow{"nothing at all", "", "io", ""},
    MovesRow{"line ends of another system", "1. e4\r\ne5\r\n\r\n*\r\n", "", "e2e4 e7e5"},
    MovesRow{"comment", "1. e4 {best by test} e5 *", "", "e2e4 e7e5"},
    MovesRow{"comment without blanks around", "1. e4 {best}e5 *", "", "e2e4 e7e5"},
    MovesRow{"comment that is one word", "{hello} e4 *", "", "e2e4"},
    MovesRow{"comment over lines", "e4 {a\nb\n} e5 *", "", "e2e4 e7e5"},
    MovesRow{"comment with a result in it", "e4 {1-0 x} e5 *", "", "e2e4 e7e5"},
    MovesRow{"comment just short enough", "e4 {" + blanks + "123456789} e5 *", "", "e2e4 e7e5"},
    MovesRow{"comment too long to be skipped to its end", "e4 {" + blanks + "12345678901234 Zz} e5 *", "io", ""},
    MovesRow{"comment that does not end", "e4 {best", "io", ""},
    MovesRow{"rest of the line", "e4 ; e5 is next\ne5 *", "", "e2e4 e7e5"},
    MovesRow{"rest of the line too long", "e4 ;" + blanks + "12345678901234 Zz\ne5 *", "io", ""},
    MovesRow{"a comment in a number's word with more after it", "1.{a}e4 *", "io", ""},
    MovesRow{"glyph", "e4 $1 e5 *", "io", ""},
    MovesRow{"variation", "e4 (d4) e5 *", "io", ""},
    MovesRow{"variation with blanks", "e4 ( d4 d5 ) e5 *", "io", ""},
    MovesRow{"no move of the game", "e4 Nf3 *", "move", ""},
    MovesRow{"ambiguous move", "Nf3 e6 d3 e5 Nd2 *", "move", ""},
    MovesRow{"castling through pieces", "O-O *", "move", ""},
    MovesRow{"a word that is no move", "hello *", "io", ""},
    MovesRow{"dots for a move by Black in the middle", "1. e4 1... e5 *", "io", ""},
    MovesRow{"dots for a move by Black at the start", "1... e5 *", "io", ""},
    MovesRow{"a move after the mate", "f3 e5 g4 Qh4# a3 *", "move", ""},
    MovesRow{"mate", "1. f3 e5 2. g4 Qh4# 0-1", "", "f2f3 e7e5 g2g4 d8h4", GameResult::black_wins}),
    RowName<MovesRow>);
// clang-format on

TEST(Pgn, NothingIsReadAfterTheFirstGame) {
    const Outcome outcome = Read("[White \"a\"]\n1. e4 1-0 {dropped}\n[White \"b\"]\n1. d4 0-1\n");
    EXPECT_EQ(outcome.failure, "");
    EXPECT_EQ(outcome.tags.white, "a");
    EXPECT_EQ(outcome.rest, "[White \"b\"]\n1. d4 0-1\n");
}

TEST(Pgn, MovesAreReplayedOneByOneAndTheResultStays) {
    Outcome outcome = Read("1. e4 e5 2. Nf3 1-0");
    outcome.game.NextMove();
    outcome.game.NextMove();
    EXPECT_EQ(outcome.game.result(), GameResult::white_wins);
    EXPECT_EQ(MovesOf(outcome.game), "g1f3");
    outcome.game.NextMove();
    EXPECT_THROW(outcome.game.NextMove(), UserBoard::next_moves_empty);
    outcome.game.UndoMove();
    EXPECT_EQ(outcome.game.result(), GameResult::running) << "a game taken back goes on";
}

// --- Reading tags ---

TEST(Pgn, TagsHaveTheirDefaults) {
    const PGN_TAGS tags = Read("*").tags;
    EXPECT_EQ(tags, (PGN_TAGS{.event = "?",
                              .site = "?",
                              .date = "????.??.??",
                              .round = "-",
                              .white = "?",
                              .black = "?",
                              .time_control = "?",
                              .fen = ""}));
}

TEST(Pgn, KnownTagsAreTakenAndOthersDropped) {
    const Outcome outcome = Read(
        "[Event \"A b\"]\n[Site \"C\"][Date \"2026.11.21\"]\n  [Round \"3\"]\n[White \"D [x] \"]\r\n[Black\"E\"]\n"
        "[Result \"1-0\"]\n[TimeControl \"40/300\"]\n[ECO \"C00\"]\n[event \"f\"]\n[Annotator]\n\n1. e4 0-1");
    EXPECT_EQ(outcome.failure, "");
    EXPECT_EQ(outcome.tags, (PGN_TAGS{.event = "A b",
                                      .site = "C",
                                      .date = "2026.11.21",
                                      .round = "3",
                                      .white = "D [x] ",
                                      .black = "E",
                                      .time_control = "40/300",
                                      .fen = ""}));
    EXPECT_EQ(outcome.game.result(), GameResult::black_wins) << "the result is what the moves end with";
}

TEST(Pgn, TagsOfTheCallBeforeAreForgotten) {
    std::istringstream stream("e4 *");
    PGN_TAGS tags;
    tags.event = tags.white = tags.fen = "old";
    ReadPgnTags(stream, tags);
    EXPECT_EQ(tags, PGN_TAGS{});
    std::string word;
    stream >> word;
    EXPECT_EQ(word, "e4") << "the stream stands after the tags";
}

TEST(Pgn, QuotesInAValueAreEscaped) {
    EXPECT_EQ(Read("[White \"the \\\"k\\\\ing\\\"\"] *").tags.white, "the \"k\\ing\"");
}

TEST(Pgn, TagsThatDoNotEndAreRefused) {
    for (const std::string text :
         {"[", "[Event", "[Event \"a\"", "[Event \"a", "[Event \"a]\n1. e4 *", "[Event \"a\\"}) {
        EXPECT_EQ(Read(text).failure, "io") << text;
    }
}

TEST(Pgn, FenTagSetsTheStart) {
    const Outcome outcome = Read("[FEN \"4k3/4p3/8/8/8/8/4P3/4K3 b - - 0 1\"]\n1... e5 2. e4 *");
    EXPECT_EQ(outcome.failure, "");
    EXPECT_EQ(MovesOf(outcome.game), "e7e5 e2e4");
    EXPECT_EQ(outcome.game.side_to_move(), black);
    EXPECT_EQ(Read("[FEN \"4k3/4p3/8/8/8/8/4P3/4K3 b - - 0 1\"]\n1...e5 *").failure, "") << "in one word";
    EXPECT_EQ(Read("[FEN \"4k3/4p3/8/8/8/8/4P3/4K3 b - - 0 1\"]\ne5 1... e4 *").failure, "io") << "not at the start";
    EXPECT_EQ(Read("[FEN \"4k3/4p3/8/8/8/8/4P3/4K3 w - - 0 1\"]\n1... e3 *").failure, "io") << "White is on move";
    EXPECT_EQ(Read("[FEN \"4k3/4p3\"]\n*").failure, "io");
    EXPECT_EQ(Read("[FEN \"8/8/8/8/8/8/8/8 w - - 0 1\"]\n*").failure, "position");
}

// --- Writing ---

TEST(Pgn, DatesHaveLeadingZerosAndQuestionMarks) {
    EXPECT_EQ(DateToPgn(2026, 11, 21), "2026.11.21");
    EXPECT_EQ(DateToPgn(987, 1, 2), "0987.01.02");
    EXPECT_EQ(DateToPgn(-1, -1, -1), "????.??.??");
    EXPECT_EQ(DateToPgn(2026, -1, 5), "2026.??.05");
}

UserBoard Play(const std::vector<std::string>& moves, const std::string& fen = start_fen) {
    UserBoard game;
    if (fen != start_fen) game.SetBoardFromFen(fen);
    for (const std::string& move : moves) game.MakeMoveFromText(move);
    return game;
}

TEST(Pgn, GameIsWrittenWithItsTags) {
    const UserBoard game = Play({"f3", "e5", "g4", "Qh4"});
    EXPECT_EQ(Written(game, {.event = "E",
                             .site = "S",
                             .date = "D",
                             .round = "R",
                             .white = "a \"b\" \\",
                             .black = "B",
                             .time_control = "T",
                             .fen = "ignored"}),
              "[Event \"E\"]\n[Site \"S\"]\n[Date \"D\"]\n[Round \"R\"]\n[White \"a \\\"b\\\" \\\\\"]\n[Black \"B\"]\n"
              "[Result \"0-1\"]\n[TimeControl \"T\"]\n\n1. f3 e5 2. g4 Qh4# \n\n0-1\n");
}

TEST(Pgn, ResultWordFollowsTheGame) {
    UserBoard game = Play({"e4"});
    EXPECT_NE(Written(game).find("[Result \"*\"]"), std::string::npos) << "it still goes on";
    game.EndGame(GameResult::draw, GameEndReason::agreed_draw);
    EXPECT_NE(Written(game).find("[Result \"1/2-1/2\"]"), std::string::npos);
    game.EndGame(GameResult::aborted, GameEndReason::aborted);
    EXPECT_TRUE(Written(game).ends_with("\n\n*\n"));
    game.EndGame(static_cast<GameResult>(5), GameEndReason::unknown);
    EXPECT_TRUE(Written(game).ends_with("\n\n*\n"));
}

TEST(Pgn, MovesTakenBackAreNotWritten) {
    UserBoard game = Play({"e4", "e5", "Nf3"});
    game.UndoMove();
    EXPECT_EQ(MoveTextOf(Written(game)), "1. e4 e5 ");
}

TEST(Pgn, NumbersFollowTheSetPosition) {
    const UserBoard game = Play({"Kd7", "e4"}, "4k3/8/8/8/8/8/4P3/4K3 b - - 0 7");
    const std::string number = std::to_string((game.ply_offset()) / 2 + 1);
    const std::string text = Written(game);
    EXPECT_EQ(MoveTextOf(text), number + "... Kd7 " + std::to_string(std::stoi(number) + 1) + ". e4 ");
    EXPECT_NE(text.find("\n[FEN \"4k3/8/8/8/8/8/4P3/4K3 b - - 0 7\"]\n\n"), std::string::npos) << text;
}

TEST(Pgn, UsualStartNeedsNoFen) { EXPECT_EQ(Written(Play({"e4"})).find("FEN"), std::string::npos); }

TEST(Pgn, NoLineIsLongerThanSeventy) {
    UserBoard game;
    for (int round = 0; round < 20; ++round) {
        for (const std::string move : {"g1f3", "g8f6", "f3g1", "f6g8"}) {
            game.EndGame(GameResult::running, GameEndReason::unknown);
            game.MakeMoveFromText(move);
        }
    }
    std::istringstream lines(MoveTextOf(Written(game)));
    std::size_t longest = 0;
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) longest = std::max(longest, line.size());
    EXPECT_LE(longest, 70U);
    EXPECT_GT(longest, 60U);
    EXPECT_GT(count, 5);
}

TEST(Pgn, WhatIsWrittenReadsBackTheSame) {
    constexpr std::uint32_t seed = 20261121;
    std::mt19937 random(seed);
    int moves_in_all = 0;
    for (int number = 0; number < 420; ++number) {
        UserBoard game;
        const std::string& start = random_game_starts[static_cast<std::size_t>(number) % random_game_starts.size()];
        if (start != start_fen) game.SetBoardFromFen(start);
        const std::size_t length = random() % 120;
        while (game.made_moves().size() < length && !game.IsGameOver()) {
            const std::vector<Move> moves = LegalMovesOf(game.board());
            game.MakeMove(moves[random() % moves.size()]);
        }
        PGN_TAGS tags;
        tags.white = "W\"" + std::to_string(number);
        tags.black = "B\\";
        const std::string text = Written(game, tags);
        const Outcome outcome = Read(text);
        ASSERT_EQ(outcome.failure, "") << "seed " << seed << "\n" << text;
        EXPECT_EQ(outcome.tags.white, tags.white);
        EXPECT_EQ(outcome.tags.black, tags.black);
        const std::vector<Move> read(outcome.game.next_moves().begin(), outcome.game.next_moves().end());
        EXPECT_EQ(read, game.made_moves()) << "seed " << seed << "\n" << text;
        EXPECT_EQ(outcome.game.board().key(), game.start().board.key());
        EXPECT_EQ(outcome.game.ply_offset(), game.ply_offset()) << text;
        EXPECT_EQ(ResultText(outcome.game.result()), ResultText(game.result()));
        moves_in_all += static_cast<int>(read.size());
        // And what was read is written the same again.
        UserBoard again = outcome.game;
        while (!again.next_moves().empty()) again.NextMove();
        if (!game.IsGameOver()) again.EndGame(game.result(), game.reason());
        EXPECT_EQ(Written(again, tags), text);
    }
    EXPECT_GT(moves_in_all, 10000);
}

}  // namespace
