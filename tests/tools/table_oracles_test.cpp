// Tables of up to four men against the rules of chess, and their signs against Syzygy's. Whoever has all tables of four
// men proves them by
//
//     VORKA_TABLES=<their folder> VORKA_SYZYGY=<folder of .rtbw files> VORKA_PROOF=all table_oracles_test
//
// Without VORKA_PROOF only a sample of the positions of four men is looked at. Without VORKA_TABLES the tables are some
// that CTest has had computed, without VORKA_SYZYGY Syzygy's are those that lie beside the checkout, if there are any.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "tablebases/mate_table_file.h"
#include "tools/table_oracles.h"

#ifdef VORKA_FATHOM
#include <tbprobe.h>
#endif

namespace {

using namespace VorkaTablebases;

constexpr const char* no_tables = "there are no tables of four men, see VORKA_TABLES";

/// Every so many numbers of a material of four men are looked at.
std::uint64_t Step() { return Environment("VORKA_PROOF") == "all" ? 1 : 1999; }

TEST_F(TableOracles, FourMenHaveTheScoresOfTheirBestMoves) {
    if (FourMen().empty()) GTEST_SKIP() << no_tables;
    for (const Material& material : FourMen()) {
        std::uint64_t positions = 0;
        ForEachPositionOf(material, Step(), [&](const BOARD& board) {
            ++positions;
            ASSERT_EQ(ScoreIn(*tables_, board), ScoreOfBestMove(*tables_, board)) << FenOf(board);
        });
        std::printf("%-5s %10llu positions\n", material.name().c_str(), static_cast<unsigned long long>(positions));
        if (HasFatalFailure()) return;
    }
}

/// Moves to the longest mates that have been published, for either side.
TEST_F(TableOracles, FourMenHaveTheLongestMatesKnown) {
    if (FourMen().empty()) GTEST_SKIP() << no_tables;
    struct Longest {
        std::uint32_t of_white, of_black;
    };
    const std::map<std::string_view, Longest> longest = {
        {"KQQK", {4, 0}},  {"KRRK", {7, 0}},   {"KBBK", {19, 0}},  {"KBNK", {33, 0}},
        {"KNNK", {1, 0}},  {"KQKR", {35, 19}}, {"KQKB", {17, 0}},  {"KQKN", {21, 0}},
        {"KRKB", {29, 0}}, {"KRKN", {40, 1}},  {"KQKP", {28, 29}}, {"KRKP", {26, 43}},
        {"KPPK", {32, 0}}, {"KBPK", {31, 0}},  {"KNPK", {27, 0}},  {"KPKP", {33, 33}}};
    for (const Material& material : FourMen()) {
        const auto known = longest.find(material.name());
        if (known == longest.end()) continue;
        const auto& [name, moves] = *known;
        const auto file = MateTableFile::Open(table_builder::PathOf(folder_, material));
        ASSERT_NE(file, nullptr);
        const MateTableHeader& header = file->header();
        EXPECT_EQ((header.counts[0].longest_win + 1) / 2, moves.of_white) << name;
        if (header.material.is_symmetric()) continue;
        EXPECT_EQ((header.counts[1].longest_win + 1) / 2, moves.of_black) << name;
    }
}

#ifdef VORKA_FATHOM

/// 1 for a win, -1 for a loss, whatever the fifty moves make of them.
std::optional<int> SignOfSyzygy(const BOARD& board) {
    const SIDE_PIECES& w = board.white_pieces();
    const SIDE_PIECES& b = board.black_pieces();
    const unsigned result =
        tb_probe_wdl(w.all, b.all, Bit(w.king_square) | Bit(b.king_square), w.queens | b.queens, w.rooks | b.rooks,
                     w.bishops | b.bishops, w.knights | b.knights, w.pawns | b.pawns, 0, 0, 0, board.mover() == white);
    if (result == TB_RESULT_FAILED) return std::nullopt;
    return result == TB_DRAW ? 0 : result < TB_DRAW ? -1 : 1;
}

/// The folder of the variable, otherwise the one beside the checkout. Empty if there is none.
std::string FolderOfSyzygy() {
    const std::string named = Environment("VORKA_SYZYGY");
    const std::string beside_checkout = VORKA_TEST_DIRECTORY "/../../shared/tables/syzygy";
    if (!named.empty() || !std::filesystem::is_directory(beside_checkout)) return named;
    return beside_checkout;
}

TEST_F(TableOracles, SignsAreAsSyzygyKnowsThem) {
    const std::string folder = FolderOfSyzygy();
    if (folder.empty()) GTEST_SKIP() << "VORKA_SYZYGY names no folder of Syzygy tablebases";
    ASSERT_TRUE(tb_init(folder.c_str()));
    ASSERT_GE(TB_LARGEST, 3U) << "no tables in " << folder;
    for (const std::size_t men : {3, 4}) {
        if (men > TB_LARGEST) break;
        for (const Material& material : MaterialsIn(folder_, men)) {
            std::uint64_t positions = 0;
            ForEachPositionOf(material, men == 3 ? 1 : Step(), [&](const BOARD& board) {
                ++positions;
                const std::optional<int> score = ScoreIn(*tables_, board);
                ASSERT_TRUE(score.has_value()) << FenOf(board);
                ASSERT_EQ((*score > 0) - (*score < 0), SignOfSyzygy(board)) << FenOf(board);
            });
            std::printf("%-5s %10llu positions\n", material.name().c_str(), static_cast<unsigned long long>(positions));
            std::fflush(stdout);
            if (HasFatalFailure()) return;
        }
    }
}

#else

TEST_F(TableOracles, SignsAreAsSyzygyKnowsThem) {
    GTEST_SKIP() << "Debian's package libfathom-dev was not installed when this was built";
}

#endif

}  // namespace
