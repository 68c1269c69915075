#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "check_tables/program.h"
#include "table_builder/program.h"
#include "tablebases/nalimov/nalimov_set.h"
#include "tablebases/nalimov/table_encoder.h"
#include "tablebases/nalimov/table_values.h"
#include "tablebases/packing.h"
#include "tablebases/table_value.h"
#include "tools/table_oracles.h"

namespace {

using NalimovTablebases::first_side;
using NalimovTablebases::Placement;
using NalimovTablebases::second_side;
using NalimovTablebases::Side;
using table_builder::SolvedTable;
using table_encoder::Bytes;
using testing::HasSubstr;
using VorkaTablebases::Material;

struct Outcome {
    int status;
    std::string said;
    std::string complained;
};

template <class Program>
Outcome RunProgram(Program program, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "program");
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int status = program(static_cast<int>(arguments.size()), argv.data());
    std::fflush(stdout);
    std::string said = testing::internal::GetCapturedStdout();
    return {status, std::move(said), testing::internal::GetCapturedStderr()};
}

Outcome Check(std::vector<std::string> arguments) { return RunProgram(check_tables::RunProgram, std::move(arguments)); }

/// The position of our table that stands on these squares.
bitbase_builder::Position PositionOn(const SolvedTable& own, Side mover, const Placement& placement) {
    bitbase_builder::Position position = own.PositionOf(0);
    position.to_move = mover == first_side ? white : black;
    std::size_t next = 0;
    for (const Square king : placement.kings) position.at[next++] = king;
    for (const Colour side : {white, black}) {
        for (std::size_t i = 0; i < own.material().of(side).size(); ++i) position.at[next++] = placement.men[side][i];
    }
    return position;
}

/// What our table says of a position; nothing if it is none.
std::optional<std::int8_t> ValueIn(const SolvedTable& own, Side mover, const Placement& placement) {
    const bitbase_builder::Position position = PositionOn(own, mover, placement);
    if (!bitbase_builder::is_legal(position)) return std::nullopt;
    return NalimovTablebases::ValueOfScore(VorkaTablebases::ScoreOf(own.values[own.IndicesOf(position).first]));
}

/// Writes our table in the published format, the first file packed, the second plain or packed.
void Publish(const std::string& own_folder, const Material& material, const std::string& folder, bool packs_all) {
    const auto own = table_builder::ReadTable(own_folder, material);
    ASSERT_TRUE(own) << material.name();
    for (const Side mover : {first_side, second_side}) {
        const Bytes values = table_encoder::ValuesOf(
            material, mover, [&](const Placement& placement) { return ValueIn(*own, mover, placement); });
        const bool is_packed = packs_all || mover == first_side;
        table_encoder::WriteFile(folder + '/' + NalimovTablebases::FileNameOf({material, mover, is_packed}),
                                 is_packed ? table_encoder::Pack(values) : values);
    }
}

/// Looks every position up that our table has.
void ExpectEveryValue(const std::string& own_folder, const Material& material, const std::string& folder) {
    const auto own = table_builder::ReadTable(own_folder, material);
    ASSERT_TRUE(own) << material.name();
    NalimovTablebases::NalimovSet set(folder);
    VorkaTablebases::BlockCache cache(NalimovTablebases::block_bytes);
    ASSERT_TRUE(cache.Resize(64U << 20U));
    BOARD board;
    std::uint64_t found = 0;
    for (std::uint64_t number = 0; number < own->index().size(); ++number) {
        const bitbase_builder::Position position = own->PositionOf(number);
        if (!bitbase_builder::is_legal(position)) continue;
        std::int8_t squares[64]{};
        for (std::size_t man = 0; man < static_cast<std::size_t>(position.count); ++man) {
            const auto [colour, type] = position.men[man];
            squares[position.at[man]] = static_cast<std::int8_t>(colour == white ? type : -type);
        }
        ASSERT_TRUE(board.SetPosition(squares, static_cast<int>(position.to_move), 0, 0));
        int score = 12345;
        auto failure = VorkaTablebases::SourceFailure::none;
        ASSERT_EQ(set.LookUp(board, cache, score, failure), VorkaTablebases::ProbeResult::found)
            << material.name() << number;
        ASSERT_EQ(score, VorkaTablebases::ScoreOf(own->values[number])) << material.name() << number;
        ++found;
    }
    EXPECT_GT(found, own->index().size() / 3);
}

/// Our tables of three men and KBNK, and the same as others would have published them.
class CheckTables : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        if (!VorkaTablebases::HasPacking()) return;
        own_ = std::make_unique<TemporaryDirectory>();
        const Outcome built =
            RunProgram(table_builder::RunProgram, {"--output", own(), "--quiet", "KBNK", "KQK", "KPK"});
        ASSERT_EQ(built.status, 0) << built.complained;
        published_ = std::make_unique<TemporaryDirectory>();
        for (const Material& material : Published()) Publish(own(), material, published_->path(), false);
    }
    static void TearDownTestSuite() {
        own_.reset();
        published_.reset();
    }
    void SetUp() override {
        if (!VorkaTablebases::HasPacking()) GTEST_SKIP() << "this build was made without zstd";
    }
    static std::vector<Material> Published() {
        return {Material({bishop, knight}, {}), Material({queen}, {}), Material({pawn}, {})};
    }
    static std::string own() { return own_->path(); }
    static std::string published() { return published_->path(); }

    static std::unique_ptr<TemporaryDirectory> own_;
    static std::unique_ptr<TemporaryDirectory> published_;
};
std::unique_ptr<TemporaryDirectory> CheckTables::own_;
std::unique_ptr<TemporaryDirectory> CheckTables::published_;

}  // namespace

// One test, since the tables of the suite take the time.
TEST_F(CheckTables, TellsWhetherPublishedTablesAgree) {
    for (const Material& material : Published()) ExpectEveryValue(own(), material, published());

    const Outcome good = Check({"--own", own(), published()});
    EXPECT_EQ(good.status, 0) << good.said;
    EXPECT_THAT(good.said, testing::ContainsRegex("kbnk.nbw.emd +2000 positions: 2000 as in our table, "));
    EXPECT_THAT(good.said, testing::ContainsRegex("kpk.nbb +2000 positions: 2000 as in our table, "));
    EXPECT_THAT(good.said, testing::EndsWith("All 6 tables agree.\n"));

    const Outcome alone = Check({"--positions", "100", published()});
    EXPECT_EQ(alone.status, 0) << alone.said;
    EXPECT_THAT(alone.said, HasSubstr("There are no tables of our own: only moves are compared."));
    EXPECT_THAT(alone.said,
                testing::ContainsRegex("kqk.nbw.emd +100 positions: 0 as in our table, [1-9][0-9]+ proved"));

    EXPECT_EQ(Check({"--quiet", "--own", own(), published()}).said, "All 6 tables agree.\n");

    const TemporaryDirectory nothing;
    for (const std::string& folder : {nothing.path().string(), nothing.File("nowhere")}) {
        const Outcome without = Check({"--quiet", "--own", folder, published()});
        EXPECT_EQ(without.status, 2) << without.said;
        EXPECT_EQ(without.complained, "program: there are no tables of this program in " + folder + "\n");
    }

    // The values of another side, of as many positions.
    const std::string file = published() + "/kqk.nbw.emd";
    const std::string kept = TextOf(file);
    const Bytes wrong =
        table_encoder::ValuesOf(Material({queen}, {}), first_side, [](const Placement&) { return std::int8_t{100}; });
    table_encoder::WriteFile(file, table_encoder::Pack(wrong));
    const Outcome bad = Check({"--own", own(), published()});
    EXPECT_EQ(bad.status, 1);
    EXPECT_THAT(bad.said, HasSubstr("WRONG: "));
    EXPECT_THAT(bad.said, HasSubstr("our table says mate in "));
    EXPECT_THAT(bad.said, testing::EndsWith("1 of 6 tables are wrong or can't be read. Please don't use them.\n"));
    EXPECT_EQ(Check({"--quiet", published()}).status, 1) << "the moves tell it as well";

    table_encoder::WriteFile(file, Bytes(kept.begin(), kept.end() - 1));
    const Outcome cut = Check({"--own", own(), published()});
    EXPECT_EQ(cut.status, 1);
    EXPECT_THAT(cut.said, HasSubstr("*** Unable to read " + file + " - file broken\n"));
    table_encoder::WriteFile(file, Bytes(kept.begin(), kept.end()));

    const TemporaryDirectory lonely;
    std::filesystem::copy(file, lonely.File("kqk.nbw.emd"));
    const Outcome untold = Check({"--quiet", lonely.path()});
    EXPECT_EQ(untold.status, 1);
    EXPECT_EQ(untold.said, "1 of 1 tables can't be told right or wrong: what their moves lead to is missing.\n");
    EXPECT_EQ(Check({"--own", own(), lonely.path()}).status, 0) << "our table tells";
}

TEST(CheckTablesProgram, TellsWhatIsWrongWithItsCall) {
    const TemporaryDirectory folder;
    EXPECT_EQ(Check({"--help"}).status, 0);
    EXPECT_THAT(Check({"--help"}).said, HasSubstr("usage: program [--own "));
    EXPECT_EQ(Check({}).status, 2);
    EXPECT_EQ(Check({"--positions", "0", folder.path()}).status, 2);
    EXPECT_EQ(Check({"--nothing", folder.path()}).status, 2);
    const Outcome none = Check({folder.path()});
    EXPECT_EQ(none.status, 2);
    EXPECT_THAT(none.complained, HasSubstr("there are no tables in the published format in "));
}

// Of the tables that CTest has had computed just those with like men, with the same men on both sides, and with a pawn
// of the other side, since to write a table takes a second or more; all of those that VORKA_TABLES names.
TEST(CheckTablesProgram, FindsEveryTableOfFourMenInOrder) {
    const std::string folder = FolderOfTables();
    std::vector<Material> materials = MaterialsIn(folder, 4);
    if (materials.empty()) GTEST_SKIP() << "there are no tables of four men, see VORKA_TABLES";
    if (Environment("VORKA_TABLES").empty()) {
        const std::vector<Material> some = {Material({knight, knight}, {}), Material({knight}, {knight}),
                                            Material({knight}, {pawn})};
        std::erase_if(materials,
                      [&](const Material& material) { return std::ranges::find(some, material) == some.end(); });
    }
    std::ranges::copy(MaterialsIn(folder, 3), std::back_inserter(materials));
    const TemporaryDirectory published;
    for (const Material& material : materials) {
        Publish(folder, material, published.path(), true);
        ExpectEveryValue(folder, material, published.path());
    }
    const Outcome outcome = Check({"--own", folder, published.path()});
    EXPECT_EQ(outcome.status, 0) << outcome.said;
}
