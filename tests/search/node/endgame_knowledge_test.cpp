#include "search/node/endgame_knowledge.h"

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

#include "bitbases/bitbases.h"
#include "bitbases/synthetic_file.h"
#include "bitbases/table_source.h"
#include "bitbases/tablebases.h"
#include "search/state/node.h"
#include "search/state/search_board.h"
#include "support/board_builder.h"
#include "support/row_name.h"

namespace {

constexpr std::string_view won = "4k3/8/4K3/4P3/8/8/8/8 w - - 0 1";
constexpr std::string_view lost = "4k3/8/4K3/4P3/8/8/8/8 b - - 0 1";
constexpr std::string_view drawn = "4k3/4P3/4K3/8/8/8/8/8 b - - 0 1";

class EndgameKnowledge : public testing::Test {
  protected:
    [[nodiscard]] std::unique_ptr<SearchBoard> At(std::string_view fen, Score contempt = 0) {
        auto search = std::make_unique<SearchBoard>(engine_);
        search->StartSearch(BoardFromFen(std::string(fen)), contempt);
        return search;
    }
    /// Asks a node of a position as if it stood at a ply.
    [[nodiscard]] static NodeAnswer Ask(SearchBoard& search, std::uint32_t ply, Score beta, int position_class = 15) {
        const Node node{.search = search,
                        .ply = ply,
                        .beta = beta,
                        .distance = 64,
                        .in_check = search.board.in_check(),
                        .type = NodeType::principal,
                        .parent_class = position_class,
                        .position_class = position_class,
                        .child_flags = root_child,
                        .moves = search.move_buffer,
                        .moves_end = search.move_buffer};
        return ::EndgameKnowledge(node);
    }
    [[nodiscard]] NodeAnswer Ask(std::string_view fen, std::uint32_t ply, Score beta, int position_class = 15) {
        return Ask(*At(fen), ply, beta, position_class);
    }
    /// The score of a draw that the node stands for: the highest bound that it reaches, found by asking.
    [[nodiscard]] static NodeAnswer DrawScoreOf(SearchBoard& search, std::uint32_t ply) {
        for (const Score score : {-30, 0, 30}) {
            if (Ask(search, ply, score) == score && Ask(search, ply, score + 1) == score) return score;
        }
        return go_on;
    }

    Engine engine_;
};

TEST_F(EndgameKnowledge, AWinIsTheBetterTheSoonerItIsReached) {
    EXPECT_EQ(Ask(won, 3, 32703 + 1 - 3), 32703 + 1 - 3);
    EXPECT_EQ(Ask(won, 3, 32703 + 2 - 3), 32703 + 1 - 3) << "one below the bound";
    EXPECT_EQ(Ask(won, 5, 32703 + 1 - 5), 32703 + 1 - 5);
}

TEST_F(EndgameKnowledge, ALossIsAnsweredOnlyBelowTheBound) {
    EXPECT_EQ(Ask(lost, 3, 0), -1);
    EXPECT_EQ(Ask(lost, 3, -32703 + 4), -32703 + 3);
    EXPECT_EQ(Ask(lost, 3, -32703 + 3), go_on) << "good enough: it is searched";
}

TEST_F(EndgameKnowledge, ADrawIsWorthTheDrawScore) {
    EXPECT_EQ(Ask(drawn, 3, 0), 0);
    EXPECT_EQ(Ask(drawn, 3, 1), 0);
}

TEST_F(EndgameKnowledge, ADrawIsWorthTheContemptOfTheSideOnMove) {
    engine_.tablebases = TablebasesOf(Always(VorkaTablebases::ProbeResult::found, 0));
    for (const Score contempt : {30, 0, -30}) {
        // A bitbase answers from the third ply on, the tables before.
        for (const std::uint32_t ply : {1U, 3U}) {
            EXPECT_EQ(DrawScoreOf(*At(drawn, contempt), ply), contempt);
            const auto after_move = At("4k3/4P3/8/5K2/8/8/8/8 w - - 0 1", contempt);
            after_move->board.MakeMove(MoveOf(after_move->board, "f5e6"));
            EXPECT_EQ(DrawScoreOf(*after_move, ply), -contempt) << "to the opponent";
        }
    }
}

TEST_F(EndgameKnowledge, TheFirstPliesAreSearched) {
    EXPECT_EQ(Ask(won, 2, 0), go_on);
    EXPECT_EQ(Ask(won, 1, 0), go_on);
}

TEST_F(EndgameKnowledge, OnlyEndingsAreLookedUp) {
    EXPECT_EQ(Ask(won, 3, 0, 2), 0);
    EXPECT_EQ(Ask(won, 3, 0, 1), go_on);
    EXPECT_EQ(Ask("4k3/8/4K3/4P3/8/8/8/7N w - - 0 1", 3, 0, 17), go_on);
}

// --- Files ---

constexpr std::string_view two_pawns = "4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1";
constexpr std::string_view rammed_pawn = "4k3/8/8/2p5/2P3P1/8/8/4K3 w - - 0 1";
constexpr auto two_pawns_cell = VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8);
constexpr auto rammed_pawn_cell = VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 0);

TEST_F(EndgameKnowledge, FilesAreReadWhereTheyAreLoaded) {
    EXPECT_EQ(Ask(two_pawns, 3, 0), go_on);
    EXPECT_EQ(Ask(rammed_pawn, 3, 0), go_on);
    const BitbaseFiles files;
    files.LoadTwoPawns(engine_.bitbases);
    EXPECT_EQ(Ask(two_pawns, 3, 0), 0);
    EXPECT_EQ(Ask(rammed_pawn, 3, 0), go_on);
    engine_.bitbases = {};
    files.LoadRammedPawn(engine_.bitbases);
    EXPECT_EQ(Ask(two_pawns, 3, 0), go_on);
    EXPECT_EQ(Ask(rammed_pawn, 3, 0), 0);
}

/// One position of a file, and what is won and lost by it before the ply counts.
struct FileRow {
    std::string_view name;
    std::string_view fen;
    void (*load)(const BitbaseFiles& files, VorkaBitbases::Bitbases& bitbases, int value);
    Score win;
    Score loss;
};
std::ostream& operator<<(std::ostream& out, const FileRow& row) { return out << row.name; }
class FilesInSearch : public EndgameKnowledge, public testing::WithParamInterface<FileRow> {
  protected:
    /// Puts a file in use where the position has such a result.
    void Load(int value) { GetParam().load(files_, engine_.bitbases, value); }

  private:
    BitbaseFiles files_;
};

TEST_P(FilesInSearch, AnswerFromTheThirdPlyOn) {
    const FileRow& row = GetParam();
    Load(VorkaBitbases::stored_win);
    for (const std::uint32_t ply : {3U, 6U}) {
        const Score score = row.win + 1 - static_cast<Score>(ply);
        EXPECT_EQ(Ask(row.fen, ply, score), score);
        EXPECT_EQ(Ask(row.fen, ply, score + 1), score);
    }
    EXPECT_EQ(Ask(row.fen, 2, 0), go_on);
    EXPECT_EQ(Ask(row.fen, 3, 0, 1), go_on) << "no ending";
}

TEST_P(FilesInSearch, SearchALossThatIsGoodEnough) {
    const FileRow& row = GetParam();
    Load(VorkaBitbases::stored_loss);
    for (const std::uint32_t ply : {3U, 6U}) {
        const Score score = row.loss + static_cast<Score>(ply);
        EXPECT_EQ(Ask(row.fen, ply, score + 1), score);
        EXPECT_EQ(Ask(row.fen, ply, score), go_on);
    }
}

TEST_P(FilesInSearch, AnswerADrawWithTheDrawScore) {
    for (const int value : {0, 2}) {
        Load(value);
        EXPECT_EQ(DrawScoreOf(*At(GetParam().fen, 30), 3), 30) << value;
    }
}

TEST_P(FilesInSearch, AreAskedBeforeTheTables) {
    engine_.tablebases = TablebasesOf(Always(VorkaTablebases::ProbeResult::found, 32767 - 20));
    EXPECT_EQ(Ask(GetParam().fen, 3, 32767 - 23), 32767 - 23) << "no file yet";
    Load(VorkaBitbases::stored_draw);
    EXPECT_EQ(Ask(GetParam().fen, 3, 32767 - 23), 32767 - 24) << "drawn";
    EXPECT_EQ(Ask(GetParam().fen, 2, 32767 - 22), 32767 - 22) << "at the first plies there are tables alone";
    Load(VorkaBitbases::stored_loss);
    EXPECT_EQ(Ask(GetParam().fen, 3, -32767), -32767) << "lost, good enough, and the tables know it as won";
}

INSTANTIATE_TEST_SUITE_P(EndgameKnowledge, FilesInSearch,
                         testing::Values(FileRow{"two pawns", two_pawns,
                                                 [](const BitbaseFiles& files, VorkaBitbases::Bitbases& bitbases,
                                                    int value) { files.LoadTwoPawns(bitbases, two_pawns_cell, value); },
                                                 4 * 3 + 32667, -(4 * 4 + 32667)},
                                         FileRow{
                                             "rammed pawn", rammed_pawn,
                                             [](const BitbaseFiles& files, VorkaBitbases::Bitbases& bitbases,
                                                int value) { files.LoadRammedPawn(bitbases, rammed_pawn_cell, value); },
                                             4 * 3 + 32667, 4 * 4 - 32637}),
                         RowName<FileRow>);

TEST_F(EndgameKnowledge, EnPassantRulesTheBlockedPawnsOut) {
    const BitbaseFiles files;
    files.LoadRammedPawn(engine_.bitbases);
    EXPECT_EQ(Ask("4k3/8/8/6p1/5pP1/8/8/4K3 b - - 0 1", 3, 0), 0);
    EXPECT_EQ(Ask("4k3/8/8/6p1/5pP1/8/8/4K3 b - g3 0 1", 3, 0), go_on);
    EXPECT_EQ(Ask("4k3/8/8/2p5/8/2P3P1/8/4K3 w - - 0 1", 3, 0), go_on) << "no pawn is blocked";
}

// --- Tables ---

class TablesInSearch : public EndgameKnowledge {
  protected:
    void Load(int score) { Answer(VorkaTablebases::ProbeResult::found, score); }
    void Answer(VorkaTablebases::ProbeResult result, int score) {
        engine_.tablebases = TablebasesOf(Always(result, score));
    }
    static constexpr std::string_view rooks = "4k3/8/4K3/4P3/8/8/8/r6R w - - 0 1";
};

TEST_F(TablesInSearch, AnswerWhereNoBitbaseDoes) {
    EXPECT_EQ(Ask(rooks, 3, 0, 3), go_on);
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
    EXPECT_EQ(Ask(rooks, 3, 0, 1), go_on) << "endings only";
}

TEST_F(TablesInSearch, AreBoundsWhereTheyKnowNoDistances) {
    const auto load = [&](int score) {
        engine_.tablebases = TablebasesWithoutDistances(Always(VorkaTablebases::ProbeResult::found, score));
    };
    load(32767 - 300);
    EXPECT_EQ(Ask(rooks, 3, 32767 - 303, 3), 32767 - 303);
    EXPECT_EQ(Ask(rooks, 3, 32767 - 302, 3), go_on) << "a mate may be nearer";
    load(-(32767 - 300));
    EXPECT_EQ(Ask(rooks, 3, -(32767 - 303) + 1, 3), -(32767 - 303));
    EXPECT_EQ(Ask(rooks, 3, -(32767 - 303), 3), go_on) << "the mate may be nearer";
    load(0);
    EXPECT_EQ(Ask(rooks, 3, 0, 3), 0);
    EXPECT_EQ(Ask(rooks, 3, 1, 3), 0);
}

TEST_F(TablesInSearch, OtherAnswersAreNone) {
    for (const auto result : {VorkaTablebases::ProbeResult::disabled, VorkaTablebases::ProbeResult::not_found,
                              VorkaTablebases::ProbeResult::queued}) {
        Answer(result, 32767 - 20);
        EXPECT_EQ(Ask(rooks, 3, 0, 3), go_on) << static_cast<int>(result);
        EXPECT_EQ(Ask(won, 2, 0), go_on) << static_cast<int>(result);
    }
    Load(32767 - 20);
    EXPECT_EQ(Ask("r3k3/8/8/8/8/8/8/4K3 w q - 0 1", 3, 0, 3), go_on) << "a right to castle";
}

TEST_F(TablesInSearch, AnswerAtTheFirstPliesOfWhatABitbaseKnows) {
    Load(-(32767 - 20));
    for (const std::uint32_t ply : {1U, 2U}) {
        EXPECT_EQ(Ask(won, ply, -(32767 - 20) + static_cast<Score>(ply) + 1), -(32767 - 20) + static_cast<Score>(ply));
    }
    EXPECT_EQ(Ask(won, 3, 32703 - 2), 32703 - 2) << "no longer asked";
}

TEST_F(TablesInSearch, KnowBetterThanALossThatIsGoodEnough) {
    Load(-(32767 - 10));
    EXPECT_EQ(Ask(lost, 3, -32703 + 3), -32703 + 3 - 1);
}

}  // namespace
