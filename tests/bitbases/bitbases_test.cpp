#include "bitbases/bitbases.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "frame/os_dependent.h"
#include "support/board_builder.h"
#include "support/log_capture.h"
#include "support/row_name.h"
#include "support/temporary_directory.h"

namespace {

using VorkaBitbases::Cell;
using VorkaBitbases::HelperFunctions::CompactAntiMirroredSquare;

/// A file of so many bytes, all zero but for the cells that were set.
class SyntheticFile {
  public:
    explicit SyntheticFile(std::uint32_t size) : bytes_(size) {}
    SyntheticFile& Set(const Cell& cell, int value) {
        bytes_.at(cell.offset) = static_cast<char>(bytes_.at(cell.offset) | value << cell.shift);
        return *this;
    }
    void Write(const std::string& path) const {
        std::ofstream(path, std::ios::binary).write(bytes_.data(), static_cast<std::streamsize>(bytes_.size()));
    }

  private:
    std::vector<char> bytes_;
};

class Bitbases : public testing::Test {
  protected:
    ~Bitbases() override { VorkaBitbases::UnloadBitbases(); }
    std::string File(const std::string& name) const { return directory_.File(name); }
    TemporaryDirectory directory_;
};

TEST(CompactSquares, NumberTheLeftHalf) {
    EXPECT_EQ(CompactAntiMirroredSquare(a1), 0);
    EXPECT_EQ(CompactAntiMirroredSquare(d1), 3);
    EXPECT_EQ(CompactAntiMirroredSquare(a2), 4);
    EXPECT_EQ(CompactAntiMirroredSquare(d8), 31);
    EXPECT_EQ(CompactAntiMirroredSquare(d7 - 8), 23);
}

TEST(CompactSquares, CellsAreWhereTheFilesHaveThem) {
    const Cell two = VorkaBitbases::TwoPawnsCell(a2, a2, a1, a1);
    EXPECT_EQ(two.offset, 0U);
    EXPECT_EQ(two.shift, 0);
    const Cell last = VorkaBitbases::TwoPawnsCell(d7, h7, h8, h8);
    EXPECT_EQ(last.offset, VorkaBitbases::two_pawns_size - 1);
    EXPECT_EQ(last.shift, 6);
    EXPECT_EQ(VorkaBitbases::TwoPawnsCell(b2, c3, d4, e5).offset, ((1U * 48 + 10) * 64 + 27) * 16 + 4);
    EXPECT_EQ(VorkaBitbases::TwoPawnsCell(b2, c3, d4, e5).shift, 4);
    const Cell ram = VorkaBitbases::RammedPawnsCell(d6, h7, h8, h8, 1);
    EXPECT_EQ(ram.offset, VorkaBitbases::rammed_pawn_size - 1);
    EXPECT_EQ(ram.shift, 6);
    EXPECT_EQ(VorkaBitbases::RammedPawnsCell(b2, c3, d4, e5, 0).offset, ((1U * 48 + 10) * 64 + 27) * 32 + 4);
    EXPECT_EQ(VorkaBitbases::RammedPawnsCell(b2, c3, d4, e5, 0).shift, 4);
}

// --- Two pawns ---

struct TwoPawnsRow {
    std::string_view name;
    std::string_view fen;
    Cell cell;
    int value;
    int score;
};
std::ostream& operator<<(std::ostream& out, const TwoPawnsRow& row) { return out << row.name; }
class TwoPawns : public Bitbases, public testing::WithParamInterface<TwoPawnsRow> {};

TEST_P(TwoPawns, AreReadInTheViewOfTheSideToMove) {
    const TwoPawnsRow& row = GetParam();
    SyntheticFile(VorkaBitbases::two_pawns_size).Set(row.cell, row.value).Write(File("x"));
    VorkaBitbases::LoadTwoPawnsBitbases(File("x"));
    EXPECT_TRUE(VorkaBitbases::TwoPawnsLoaded());
    EXPECT_FALSE(VorkaBitbases::RammedPawnsLoaded());
    const BOARD board = BoardFromFen(std::string(row.fen));
    EXPECT_EQ(VorkaBitbases::ProbeTwoPawns(board), row.score);
    EXPECT_EQ(VorkaBitbases::ProbeBitbases(board), row.score);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Files, TwoPawns, testing::Values(
    TwoPawnsRow{"a win", "4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1", VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8), 3, 4 * 3 + 32667},
    TwoPawnsRow{"a loss", "4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1", VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8), 1, -(4 * 4 + 32667)},
    TwoPawnsRow{"a draw", "4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1", VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8), 0, 0},
    TwoPawnsRow{"two is a draw as well", "4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1", VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8), 2, 0},
    TwoPawnsRow{"from the right half", "4k3/8/6p1/8/5P2/8/8/4K3 w - - 0 1", VorkaBitbases::TwoPawnsCell(c4, b6, d1, d8), 3, 4 * 3 + 32667},
    TwoPawnsRow{"of Black", "4k3/8/1p6/8/6P1/8/8/4K3 b - - 0 1", VorkaBitbases::TwoPawnsCell(b3, g5, e1, e8), 3, 4 * 2 + 32667},
    TwoPawnsRow{"of Black from the right half", "4k3/8/6p1/8/1P6/8/8/4K3 b - - 0 1", VorkaBitbases::TwoPawnsCell(b3, g5, d1, d8), 1, -(4 * 5 + 32667)}), RowName<TwoPawnsRow>);
// clang-format on

TEST_F(Bitbases, RawResultsNeedNoPosition) {
    SyntheticFile(VorkaBitbases::two_pawns_size)
        .Set(VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8), 3)
        .Set(VorkaBitbases::TwoPawnsCell(b3, g5, d1, d8), 1)
        .Write(File("x"));
    VorkaBitbases::LoadTwoPawnsBitbases(File("x"));
    EXPECT_EQ(VorkaBitbases::ProbeTwoPawnsRaw(white, e1, e8, b4, g6), 3);
    EXPECT_EQ(VorkaBitbases::ProbeTwoPawnsRaw(black, e1, e8, b4, g6), 1);
    EXPECT_EQ(VorkaBitbases::ProbeTwoPawnsRaw(white, e1, e7, b4, g6), 0);
}

// --- Rammed pawns ---

class RammedPawns : public Bitbases, public testing::WithParamInterface<TwoPawnsRow> {};

TEST_P(RammedPawns, AreReadInTheViewOfTheSideWithTwo) {
    const TwoPawnsRow& row = GetParam();
    SyntheticFile(VorkaBitbases::rammed_pawn_size).Set(row.cell, row.value).Write(File("x"));
    VorkaBitbases::LoadRammedPawnBitbases(File("x"));
    const BOARD board = BoardFromFen(std::string(row.fen));
    EXPECT_EQ(VorkaBitbases::ProbeRammedPawns(board), row.score);
    EXPECT_EQ(VorkaBitbases::ProbeBitbases(board), row.score);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Files, RammedPawns, testing::Values(
    TwoPawnsRow{"a win", "4k3/8/8/2p5/2P3P1/8/8/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 0), 3, 4 * 3 + 32667},
    TwoPawnsRow{"a win of the side not to move", "4k3/8/8/2p5/2P3P1/8/8/4K3 b - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 1), 3, -(4 * 3 + 32667)},
    TwoPawnsRow{"a loss", "4k3/8/8/2p5/2P3P1/8/8/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 0), 1, 4 * 4 - 32637},
    TwoPawnsRow{"a loss of the side not to move", "4k3/8/8/2p5/2P3P1/8/8/4K3 b - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 1), 1, 32637 - 4 * 4},
    TwoPawnsRow{"from the right half", "4k3/8/8/5p2/1P3P2/8/8/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, d1, d8, 0), 3, 4 * 3 + 32667},
    TwoPawnsRow{"behind the ram", "4k3/8/8/2p5/2P5/8/2P5/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, c2, e1, e8, 0), 3, 4 * 1 + 32667},
    TwoPawnsRow{"of Black", "4k3/8/8/2p3p1/2P5/8/8/4K3 b - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 0), 3, 4 * 3 + 32667},
    TwoPawnsRow{"of Black, White to move", "4k3/8/8/2p3p1/2P5/8/8/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 1), 3, -(4 * 3 + 32667)}), RowName<TwoPawnsRow>);
// clang-format on

TEST_F(Bitbases, OtherPositionsAreNotLookedUp) {
    SyntheticFile(VorkaBitbases::rammed_pawn_size).Write(File("ram"));
    VorkaBitbases::LoadRammedPawnBitbases(File("ram"));
    SyntheticFile(VorkaBitbases::two_pawns_size).Write(File("two"));
    VorkaBitbases::LoadTwoPawnsBitbases(File("two"));
    const auto known = [](const std::string& fen) { return VorkaBitbases::ProbeBitbases(BoardFromFen(fen)); };
    EXPECT_EQ(known("4k3/8/8/2p5/2P3P1/8/8/4K3 w - - 0 1"), 0);
    EXPECT_EQ(known("4k3/8/8/2p5/8/2P3P1/8/4K3 w - - 0 1"), std::nullopt) << "no ram";
    EXPECT_EQ(known("4k3/8/8/8/2p3Pp/2P5/8/4K3 b - g3 0 1"), std::nullopt) << "four pawns";
    EXPECT_EQ(known("4k3/8/8/6p1/5pP1/8/8/4K3 w - - 0 1"), 0) << "the strong side may be Black";
    EXPECT_EQ(known("4k3/8/8/6p1/5pP1/8/8/4K3 b - g3 0 1"), std::nullopt) << "en passant";
    EXPECT_EQ(known("4k3/8/8/8/2P3P1/8/8/4K3 w - - 0 1"), std::nullopt) << "both pawns on one side";
    EXPECT_EQ(known("4k3/8/8/8/2P5/8/8/4KN2 w - - 0 1"), std::nullopt) << "a piece";
    EXPECT_EQ(known("4k3/8/8/8/8/8/8/4K3 w - - 0 1"), std::nullopt) << "no pawn";
}

// --- Loading ---

TEST_F(Bitbases, FilesOfAnotherSizeAreRefused) {
    const std::string path = File("x");
    SyntheticFile(VorkaBitbases::two_pawns_size - 1).Write(path);
    try {
        VorkaBitbases::LoadTwoPawnsBitbases(path);
        FAIL();
    } catch (const VorkaBitbases::CouldNotOpenFileException& error) {
        EXPECT_EQ(error.what(), "Could not open file '" + path + "'");
    }
    EXPECT_FALSE(VorkaBitbases::TwoPawnsLoaded());
    EXPECT_THROW(VorkaBitbases::LoadRammedPawnBitbases(path), VorkaBitbases::CouldNotOpenFileException);
    EXPECT_THROW(VorkaBitbases::LoadTwoPawnsBitbases(File("nothing")), VorkaBitbases::CouldNotOpenFileException);
    std::filesystem::create_directory(File("folder"));
    EXPECT_THROW(VorkaBitbases::LoadTwoPawnsBitbases(File("folder")), VorkaBitbases::CouldNotOpenFileException);
}

TEST_F(Bitbases, ASecondFileReplacesTheFirst) {
    const Cell cell = VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8);
    SyntheticFile(VorkaBitbases::two_pawns_size).Set(cell, 3).Write(File("one"));
    SyntheticFile(VorkaBitbases::two_pawns_size).Set(cell, 1).Write(File("two"));
    VorkaBitbases::LoadTwoPawnsBitbases(File("one"));
    EXPECT_EQ(VorkaBitbases::ProbeTwoPawnsRaw(white, e1, e8, b4, g6), 3);
    VorkaBitbases::LoadTwoPawnsBitbases(File("two"));
    EXPECT_EQ(VorkaBitbases::ProbeTwoPawnsRaw(white, e1, e8, b4, g6), 1);
    EXPECT_THROW(VorkaBitbases::LoadTwoPawnsBitbases(File("none")), VorkaBitbases::CouldNotOpenFileException);
    EXPECT_EQ(VorkaBitbases::ProbeTwoPawnsRaw(white, e1, e8, b4, g6), 1) << "the old file is still in use";
}

TEST_F(Bitbases, InitTellsTheLogAndNotTheScreen) {
    const std::string folder = std::filesystem::path(File("vorka")).parent_path();
    ExecutableDirectory(File("vorka"));
    const LogCapture log;
    testing::internal::CaptureStdout();
    VorkaBitbases::InitBitbases();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    const std::string head = "Loading bitbases (executables directory='" + folder + "'):\n";
    const std::string none = head + "- two pawns bitbases not found ('" + folder + "/kp_kp.vbb')\n" +
                             "- rammed pawn bitbases not found ('" + folder + "/kpp_kp_ram.vbb').\n" +
                             "- generic bitbases disabled\n";
    EXPECT_EQ(log.text(), none);

    SyntheticFile(VorkaBitbases::two_pawns_size).Write(File("kp_kp.vbb"));
    SyntheticFile(VorkaBitbases::rammed_pawn_size).Write(File("kpp_kp_ram.vbb"));
    VorkaBitbases::InitBitbases();
    const std::string found =
        head + "- two pawns bitbases found\n- rammed pawn bitbases found\n- generic bitbases disabled\n";
    EXPECT_EQ(log.text(), none + found);
    EXPECT_TRUE(VorkaBitbases::TwoPawnsLoaded());
    EXPECT_TRUE(VorkaBitbases::RammedPawnsLoaded());

    VorkaBitbases::UnloadBitbases();
    SyntheticFile(VorkaBitbases::two_pawns_size - 1).Write(File("kp_kp.vbb"));
    SyntheticFile(VorkaBitbases::rammed_pawn_size + 1).Write(File("kpp_kp_ram.vbb"));
    VorkaBitbases::InitBitbases();
    EXPECT_EQ(log.text(), none + found + head +
                              "Warning: Failed to open two pawns bitbases.\n"
                              "Warning: Failed to open rammed pawn bitbases\n- generic bitbases disabled\n");
    EXPECT_FALSE(VorkaBitbases::TwoPawnsLoaded());
    EXPECT_FALSE(VorkaBitbases::RammedPawnsLoaded());
}

}  // namespace
