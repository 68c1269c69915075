#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "support/temporary_directory.h"
#include "table_builder/program.h"
#include "table_builder/solve.h"
#include "table_builder/storage.h"
#include "tablebases/opener/open_tables.h"
#include "tablebases/packing.h"
#include "tablebases/table_value.h"
#include "tools/table_proof.h"

namespace {

using namespace VorkaTablebases;
using table_builder::SolvedTable;
using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

Material Named(std::string_view name) { return Material::FromName(name).value(); }

/// Runs the program; what it says is told apart.
struct Outcome {
    int status;
    std::string said;
    std::string complained;
};
Outcome RunBuilder(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "table_builder");
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    CaptureStdout();
    CaptureStderr();
    const int status = table_builder::RunProgram(static_cast<int>(arguments.size()), argv.data());
    return {status, GetCapturedStdout(), GetCapturedStderr()};
}

/// All tables of three men, computed once by the program, and KPKP, whose pawns take each other en passant.
class TableBuilderTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        if (!HasPacking()) return;
        folder_ = std::make_unique<TemporaryDirectory>();
        ASSERT_EQ(RunBuilder({"--output", folder_->path().string(), "--men", "3", "--quiet"}).status, 0);
    }
    static void TearDownTestSuite() { folder_.reset(); }
    void SetUp() override {
        if (!HasPacking()) GTEST_SKIP() << "this build was made without zstd";
    }
    static std::unique_ptr<TableSource> Open() {
        auto tables = OpenTables(folder_->path());
        EXPECT_TRUE(tables->UseCache(1 << 20));
        return tables;
    }

    static inline std::unique_ptr<TemporaryDirectory> folder_;
};

TEST_F(TableBuilderTest, FindsTheLongestMates) {
    // The moves to the longest win of the stronger side; distances that have been published.
    const std::map<std::string, int> longest = {{"KQK", 10}, {"KRK", 16}, {"KBK", 0}, {"KNK", 0}, {"KPK", 28}};
    for (const auto& [name, moves] : longest) {
        const auto file = MateTableFile::Open(table_builder::PathOf(folder_->path(), Named(name)));
        ASSERT_NE(file, nullptr);
        const TableCounts& white_to_move = file->header().counts[0];
        const TableCounts& black_to_move = file->header().counts[1];
        EXPECT_EQ(white_to_move.longest_win, static_cast<std::uint32_t>(std::max(2 * moves - 1, 0))) << name;
        EXPECT_EQ(black_to_move.longest_loss, static_cast<std::uint32_t>(2 * moves)) << name;
        EXPECT_EQ(white_to_move.losses + black_to_move.wins, 0U) << name;
    }
}

TEST_F(TableBuilderTest, GivesEachPositionTheScoreOfItsBestMove) {
    const auto tables = Open();
    std::uint64_t positions = 0;
    for (const Material& material : MaterialsOf(3)) {
        ForEachPositionOf(material, 1, [&](const BOARD& board) {
            ++positions;
            ASSERT_EQ(ScoreIn(*tables, board), ScoreOfBestMove(*tables, board)) << FenOf(board);
        });
    }
    EXPECT_EQ(positions, 372162U);
}

TEST_F(TableBuilderTest, KeepsTablesThatAreThereAndSound) {
    const std::string path = table_builder::PathOf(folder_->path(), Named("KRK"));
    const std::string before = TextOf(path);
    std::string in_a_block = before;
    in_a_block.back() = static_cast<char>(in_a_block.back() ^ 1);
    for (const auto& [text, complaint] : {std::pair(std::string("no table"), " - file broken\n"),
                                          std::pair(TextOf(folder_->File("KQK.vdm")), "*** Unable to register "),
                                          std::pair(in_a_block, "KRK.vdm corrupted ")}) {
        std::ofstream(path, std::ios::binary) << text;
        const Outcome run = RunBuilder({"--output", folder_->path().string(), "--men", "3"});
        EXPECT_EQ(run.status, 0) << run.complained;
        EXPECT_THAT(run.said, testing::AllOf(testing::HasSubstr(complaint), testing::HasSubstr("KRK\n"),
                                             testing::HasSubstr("done"), testing::Not(testing::HasSubstr("KQK\n"))));
        EXPECT_EQ(TextOf(path), before);
    }
}

// Bain's set of this ending (1994, in the repository of the University of California at Irvine) has the positions with
// Black to move once each, whatever way the board is turned, with the moves to the mate.
TEST_F(TableBuilderTest, HasAsManyPositionsOfEachDistanceAsPublished) {
    //                              n = 0,  1,   2,  3,   4,   5,   6,   7,    8,    9,   10,   11,   12,   13,   14,
    //                              15,  16
    constexpr std::array mated_in = {27,   78,   246,  81,   198,  471,  592,  683, 1433,
                                     1712, 1985, 2854, 3597, 4194, 4553, 2166, 390};
    const auto table = table_builder::ReadTable(folder_->path(), Named("KRK"));
    ASSERT_NE(table, nullptr);
    std::array<int, mated_in.size()> found{};
    for (std::uint64_t number = table->index().size() / 2; number < table->index().size(); ++number) {
        const bitbase_builder::Position position = table->PositionOf(number);
        const TableValue value = table->values[number];
        if (!is_legal(position) || table->index().IsSecond(number) || value == table_draw) continue;
        ++found.at(static_cast<std::size_t>(PliesOf(value) / 2));
    }
    EXPECT_EQ(found, mated_in);
}

// Positions as above, with any number of men that is counted once. In Bain's set 2796 of 28056 are draws; Beal and
// Clark (1980) found 62480 wins of the pawn's side on the move, and 48802 with the other on the move.
TEST_F(TableBuilderTest, CountsPositionsAsPublished) {
    const auto counts_of = [](const char* name) {
        return MateTableFile::Open(table_builder::PathOf(folder_->path(), Named(name)))->header().counts;
    };
    const auto [rook_to_move, bare_king_to_move] = counts_of("KRK");
    EXPECT_EQ(bare_king_to_move.draws, 2796U);
    EXPECT_EQ(bare_king_to_move.losses, 28056U - 2796U);
    EXPECT_EQ(bare_king_to_move.longest_loss, 32U);
    EXPECT_EQ(rook_to_move.draws + rook_to_move.losses, 0U);
    const auto [pawn_to_move, other_to_move] = counts_of("KPK");
    EXPECT_EQ(pawn_to_move.wins, 62480U);
    EXPECT_EQ(pawn_to_move.wins + pawn_to_move.draws, 81664U);
    EXPECT_EQ(other_to_move.losses, 48802U);
    EXPECT_EQ(other_to_move.losses + other_to_move.draws, 84012U);
}

TEST(TableSolver, TellsHowFarItIs) {
    table_builder::SolvedTables tables;
    for (const Material& material : {Named("KQK"), Named("KRK"), Named("KBK"), Named("KNK")}) {
        tables.Add(Solve(material, tables, 1));
    }
    std::vector<table_builder::SolveState> told;
    (void)Solve(Named("KPK"), tables, 2, [&](const table_builder::SolveState& state) { told.push_back(state); });
    ASSERT_GT(told.size(), 28U);
    EXPECT_EQ(told.front().plies, 0);
    EXPECT_GE(told.back().plies, 2 * 28);
    EXPECT_GT(told.back().share, 0.5);
    for (std::size_t i = 1; i < told.size(); ++i) {
        EXPECT_GE(told[i].plies, told[i - 1].plies);
        EXPECT_TRUE(told[i].share >= told[i - 1].share || told[i].plies > told[i - 1].plies);
        EXPECT_LE(told[i].share, 1);
    }
}

TEST_F(TableBuilderTest, ComputesTheSameWithAnyNumberOfThreads) {
    for (const std::string threads : {"1", "5"}) {
        const TemporaryDirectory other;
        ASSERT_EQ(RunBuilder({"--output", other.path().string(), "--threads", threads, "--quiet", "KPK"}).status, 0);
        for (const std::string name : {"KQK.vdm", "KPK.vdm"}) {
            EXPECT_EQ(TextOf(other.File(name)), TextOf(folder_->File(name)));
        }
    }
}

TEST_F(TableBuilderTest, TakesNoMoreMemoryThanItIsTold) {
    const TemporaryDirectory other;
    const Outcome refused =
        RunBuilder({"--output", other.path().string(), "--threads", "1", "--memory", "100K", "KQK", "KPK"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.complained, "table_builder: KQK takes 8 MiB of memory, see --memory\n");
    EXPECT_TRUE(std::filesystem::is_empty(other.path()));
    const Outcome listed = RunBuilder({"--list", "KRPKR"});
    EXPECT_EQ(listed.status, 0);
    EXPECT_THAT(listed.said, testing::HasSubstr("KRPKR     710148096 positions"));
}

TEST_F(TableBuilderTest, RefusesWhatItCannotDo) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"KXK"},
                                                      {"KQKQQQ"},
                                                      {"--men", "6"},
                                                      {"--memory", "much"},
                                                      {"--threads", "0"},
                                                      {"-z"}}) {
        const Outcome run = RunBuilder(arguments);
        EXPECT_EQ(run.status, 1);
        EXPECT_THAT(run.complained, testing::HasSubstr("usage: table_builder"));
    }
    const Outcome nowhere = RunBuilder({"--output", folder_->File("nowhere"), "KQK"});
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_EQ(nowhere.complained,
              "table_builder: can't write into " + folder_->File("nowhere") + ": No such file or directory\n");
}

/// Tables in memory, found as the files are.
class TablesInMemory : public TableSource {
  public:
    explicit TablesInMemory(const table_builder::SolvedTables& tables) : tables_(tables) {}
    ProbeResult Probe(const BOARD& board, int& score) noexcept override {
        bitbase_builder::Position position;
        position.to_move = board.mover();
        for (Square s = a1; s <= h8; ++s) {
            const int man = board.squares[s];
            if (man == 0) continue;
            const Colour side = man > 0 ? white : black;
            const int place = std::abs(man) == king ? static_cast<int>(side) : position.count++;
            position.men[static_cast<std::size_t>(place)] = {side, std::abs(man)};
            position.at[static_cast<std::size_t>(place)] = s;
        }
        score = ScoreOf(tables_.ValueOf(position));
        return ProbeResult::found;
    }
    bool UseCache(std::int32_t /*bytes*/) noexcept override { return true; }

  private:
    const table_builder::SolvedTables& tables_;
};

TEST(TableSolver, EndsAfterTwoIdlePassesOrTheLongestMateOfAByte) {
    using table_builder::NeedsPass;
    EXPECT_TRUE(NeedsPass(1, 0, 0));
    EXPECT_TRUE(NeedsPass(33, 1, 0));
    EXPECT_FALSE(NeedsPass(34, 2, 0));
    EXPECT_TRUE(NeedsPass(34, 5, 33));
    EXPECT_FALSE(NeedsPass(35, 5, 33));
    EXPECT_TRUE(NeedsPass(254, 0, 253));
    EXPECT_FALSE(NeedsPass(255, 0, 254));
}

/// A pawn whose promotion to a queen leads to the table that is given; all other promotions are draws.
std::unique_ptr<SolvedTable> SolvePawnBefore(std::unique_ptr<SolvedTable> queen) {
    table_builder::SolvedTables tables;
    tables.Add(std::move(queen));
    for (const std::string_view name : {"KRK", "KBK", "KNK"}) {
        auto draws = std::make_unique<SolvedTable>(Named(name));
        draws->values.resize(draws->index().size());
        tables.Add(std::move(draws));
    }
    return Solve(Named("KPK"), tables, 2);
}

constexpr TableValue longest_loss_of_a_byte = 254;

TEST(TableSolver, FindsTheLongestMateOfAByte) {
    auto queen = std::make_unique<SolvedTable>(Named("KQK"));
    queen->values.resize(queen->index().size());
    bitbase_builder::Position position = queen->PositionOf(0);
    position.at = {c1, e5, b8};
    position.to_move = black;
    const auto [first, second] = queen->IndicesOf(position);
    queen->values[first] = queen->values[second] = longest_loss_of_a_byte;
    const auto pawn = SolvePawnBefore(std::move(queen));
    // Wherever Black comes from, another move draws.
    EXPECT_EQ(std::ranges::count(pawn->values, longest_win), 1);
    EXPECT_EQ(std::ranges::count_if(pawn->values, [](TableValue value) { return IsWin(value); }), 1);
}

TEST(TableSolver, RefusesLongerMatesThanAByteHolds) {
    auto queen = std::make_unique<SolvedTable>(Named("KQK"));
    queen->values.resize(queen->index().size(), longest_loss_of_a_byte);
    EXPECT_THROW(SolvePawnBefore(std::move(queen)), std::overflow_error);
}

/// Pawn against pawn needs many tables of four men, which would take a minute. Here promotions to them are draws, so
/// that all depends on who stops or takes the other's pawn.
TEST(TableSolver, KnowsCapturesEnPassant) {
    table_builder::SolvedTables tables;
    for (const Material& material : MaterialsOf(3)) tables.Add(Solve(material, tables, 2));
    for (const std::string_view name : {"KQKP", "KRKP", "KBKP", "KNKP"}) {
        auto draws = std::make_unique<SolvedTable>(Named(name));
        draws->values.resize(draws->index().size());
        tables.Add(std::move(draws));
    }
    for (const std::string_view name :
         {"KQKQ", "KQKR", "KQKB", "KQKN", "KRKR", "KRKB", "KRKN", "KBKB", "KBKN", "KNKN"}) {
        auto draws = std::make_unique<SolvedTable>(Named(name));
        draws->values.resize(draws->index().size());
        tables.Add(std::move(draws));
    }
    tables.Add(Solve(Named("KPKP"), tables, 2));
    TablesInMemory source(tables);
    int with_double_step = 0;
    const auto check = [&](const BOARD& board) {
        ASSERT_EQ(ScoreIn(source, board), ScoreOfBestMove(source, board)) << FenOf(board);
    };
    ForEachPositionOf(Named("KPKP"), 1, [&](const BOARD& board) {
        // A pawn at home and an enemy one on the file beside it, two ranks ahead.
        const Bitboard home = board.white_pieces().pawns & 0xFF00;
        const Bitboard enemy = board.black_pieces().pawns & 0xFF000000;
        if (home == 0 || enemy == 0) return;
        const int files = FindLowestBit(enemy) - FindLowestBit(home) - 16;
        if (files != 1 && files != -1) return;
        if (++with_double_step % 5 == 0) check(board);
    });
    EXPECT_GT(with_double_step, 10000);
    ForEachPositionOf(Named("KPKP"), 101, check);
}

}  // namespace
