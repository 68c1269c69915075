#include "bitbases/bitbases.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bitbases/checksum_file.h"
#include "bitbases/synthetic_file.h"
#include "frame/base/os_dependent.h"
#include "support/board_builder.h"
#include "support/log_capture.h"
#include "support/row_name.h"
#include "support/temporary_directory.h"

namespace {

using VorkaBitbases::Cell;
using VorkaBitbases::HelperFunctions::CompactAntiMirroredSquare;
using enum VorkaBitbases::StoredResult;

class Bitbases : public testing::Test {
  protected:
    std::string File(const std::string& name) const { return directory_.File(name); }
    TemporaryDirectory directory_;
    VorkaBitbases::Bitbases bitbases_;
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
    EXPECT_EQ(VorkaBitbases::TwoPawnsCell(b2, c3, d4, e3).offset, ((1U * 48 + 10) * 64 + 27) * 16 + 4);
    EXPECT_EQ(VorkaBitbases::TwoPawnsCell(b2, c3, d4, e3).shift, 2);
    const Cell ram = VorkaBitbases::RammedPawnsCell(d6, h7, h8, h8, 1);
    EXPECT_EQ(ram.offset, VorkaBitbases::rammed_pawn_size - 1);
    EXPECT_EQ(ram.shift, 6);
    EXPECT_EQ(VorkaBitbases::RammedPawnsCell(b2, c3, d4, e5, 0).offset, ((1U * 48 + 10) * 64 + 27) * 32 + 4);
    EXPECT_EQ(VorkaBitbases::RammedPawnsCell(b2, c3, d4, e5, 0).shift, 4);
    EXPECT_EQ(VorkaBitbases::RammedPawnsCell(b2, c3, d4, e4, 0).offset, ((1U * 48 + 10) * 64 + 27) * 32 + 28);
    EXPECT_EQ(VorkaBitbases::RammedPawnsCell(b2, c3, d4, e4, 0).shift, 0);
    EXPECT_EQ(VorkaBitbases::RammedPawnsCell(b2, c3, d4, e4, 1).shift, 2);
}

/// The positions that docs/bitbases.md works out.
TEST(CompactSquares, CellsAreThoseOfTheDocumentedExamples) {
    const Cell two = VorkaBitbases::TwoPawnsCell(b5, h6, f3, d8);
    EXPECT_EQ(two.offset, 679259U);
    EXPECT_EQ(two.shift, 6);
    EXPECT_EQ(two.offset, 13U * 49152 + 39 * 1024 + 21 * 16 + 11);
    const Cell rammed = VorkaBitbases::RammedPawnsCell(b2, c3, d4, e5, 1);
    EXPECT_EQ(rammed.offset, 1U * 98304 + 10 * 2048 + 27 * 32 + 4);
    EXPECT_EQ(rammed.shift, 6) << "weak to move, ranks 5 to 8";
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
    bitbases_.LoadTwoPawns(File("x"));
    EXPECT_TRUE(bitbases_.TwoPawnsLoaded());
    EXPECT_FALSE(bitbases_.RammedPawnsLoaded());
    const BOARD board = BoardFromFen(std::string(row.fen));
    EXPECT_EQ(bitbases_.ProbeTwoPawns(board), row.score);
    EXPECT_EQ(bitbases_.Probe(board), row.score);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Files, TwoPawns, testing::Values(
    TwoPawnsRow{"a win", "4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1", VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8), stored_win, 4 * 3 + 32667},
    TwoPawnsRow{"a loss", "4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1", VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8), stored_loss, -(4 * 4 + 32667)},
    TwoPawnsRow{"a draw", "4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1", VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8), stored_draw, 0},
    TwoPawnsRow{"two is a draw as well", "4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1", VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8), stored_draw_too, 0},
    TwoPawnsRow{"from the right half", "4k3/8/6p1/8/5P2/8/8/4K3 w - - 0 1", VorkaBitbases::TwoPawnsCell(c4, b6, d1, d8), stored_win, 4 * 3 + 32667},
    TwoPawnsRow{"of Black", "4k3/8/1p6/8/6P1/8/8/4K3 b - - 0 1", VorkaBitbases::TwoPawnsCell(b3, g5, e1, e8), stored_win, 4 * 2 + 32667},
    TwoPawnsRow{"of Black from the right half", "4k3/8/6p1/8/1P6/8/8/4K3 b - - 0 1", VorkaBitbases::TwoPawnsCell(b3, g5, d1, d8), stored_loss, -(4 * 5 + 32667)}), RowName<TwoPawnsRow>);
// clang-format on

TEST_F(Bitbases, RawResultsNeedNoPosition) {
    SyntheticFile(VorkaBitbases::two_pawns_size)
        .Set(VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8), stored_win)
        .Set(VorkaBitbases::TwoPawnsCell(b3, g5, d1, d8), stored_loss)
        .Write(File("x"));
    bitbases_.LoadTwoPawns(File("x"));
    EXPECT_EQ(bitbases_.ProbeTwoPawnsRaw(white, e1, e8, b4, g6), stored_win);
    EXPECT_EQ(bitbases_.ProbeTwoPawnsRaw(black, e1, e8, b4, g6), stored_loss);
    EXPECT_EQ(bitbases_.ProbeTwoPawnsRaw(white, e1, e7, b4, g6), stored_draw);
}

// --- Rammed pawns ---

class RammedPawns : public Bitbases, public testing::WithParamInterface<TwoPawnsRow> {};

TEST_P(RammedPawns, AreReadInTheViewOfTheSideWithTwo) {
    const TwoPawnsRow& row = GetParam();
    SyntheticFile(VorkaBitbases::rammed_pawn_size).Set(row.cell, row.value).Write(File("x"));
    bitbases_.LoadRammedPawns(File("x"));
    const BOARD board = BoardFromFen(std::string(row.fen));
    EXPECT_EQ(bitbases_.ProbeRammedPawns(board), row.score);
    EXPECT_EQ(bitbases_.Probe(board), row.score);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Files, RammedPawns, testing::Values(
    TwoPawnsRow{"a win", "4k3/8/8/2p5/2P3P1/8/8/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 0), stored_win, 4 * 3 + 32667},
    TwoPawnsRow{"a win of the side not to move", "4k3/8/8/2p5/2P3P1/8/8/4K3 b - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 1), stored_win, -(4 * 3 + 32667)},
    TwoPawnsRow{"a loss", "4k3/8/8/2p5/2P3P1/8/8/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 0), stored_loss, 4 * 4 - 32637},
    TwoPawnsRow{"a loss of the side not to move", "4k3/8/8/2p5/2P3P1/8/8/4K3 b - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 1), stored_loss, 32637 - 4 * 4},
    TwoPawnsRow{"from the right half", "4k3/8/8/5p2/1P3P2/8/8/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, d1, d8, 0), stored_win, 4 * 3 + 32667},
    TwoPawnsRow{"behind the ram", "4k3/8/8/2p5/2P5/8/2P5/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, c2, e1, e8, 0), stored_win, 4 * 1 + 32667},
    TwoPawnsRow{"of Black", "4k3/8/8/2p3p1/2P5/8/8/4K3 b - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 0), stored_win, 4 * 3 + 32667},
    TwoPawnsRow{"of Black, White to move", "4k3/8/8/2p3p1/2P5/8/8/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 1), stored_win, -(4 * 3 + 32667)}), RowName<TwoPawnsRow>);
// clang-format on

// A loss counts the way of the weak king to the blocked pawn, which is not that to the free one in any of these rows.
// clang-format off
INSTANTIATE_TEST_SUITE_P(KingsAndColours, RammedPawns, testing::Values(
    TwoPawnsRow{"a loss, far from the blocked pawn", "7k/8/8/2p5/2P3P1/8/8/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, h8, 0), stored_loss, 4 * 5 - 32637},
    TwoPawnsRow{"and of the side not to move", "7k/8/8/2p5/2P3P1/8/8/4K3 b - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, h8, 1), stored_loss, 32637 - 4 * 5},
    TwoPawnsRow{"a loss, near the blocked pawn", "8/8/1k6/2p5/2P3P1/8/8/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, b6, 0), stored_loss, 4 * 2 - 32637},
    TwoPawnsRow{"a loss, the weak king on the lower half", "8/8/8/2p5/2P3P1/4K3/8/7k w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e3, h1, 0), stored_loss, 4 * 5 - 32637},
    TwoPawnsRow{"a win, the weak king on the lower half", "8/8/8/2p5/2P3P1/4K3/8/7k b - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e3, h1, 1), stored_win, -(4 * 3 + 32667)},
    TwoPawnsRow{"a loss from the right half", "k7/8/8/5p2/1P3P2/8/8/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, d1, h8, 0), stored_loss, 4 * 5 - 32637},
    TwoPawnsRow{"a loss of Black", "4k3/8/8/2p3p1/2P5/8/8/7K b - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, h8, 0), stored_loss, 4 * 5 - 32637},
    TwoPawnsRow{"a loss of Black, White to move", "4k3/8/8/2p3p1/2P5/8/8/7K w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, h8, 1), stored_loss, 32637 - 4 * 5},
    TwoPawnsRow{"a loss of Black from the right half", "4k3/8/8/1p3p2/5P2/8/8/K7 b - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, d1, h8, 0), stored_loss, 4 * 5 - 32637},
    TwoPawnsRow{"and White to move", "4k3/8/8/1p3p2/5P2/8/8/K7 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, d1, h8, 1), stored_loss, 32637 - 4 * 5},
    TwoPawnsRow{"a loss of Black, the weak king on the lower half", "K7/4k3/8/1p3p2/5P2/8/8/8 b - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, d2, h1, 0), stored_loss, 4 * 5 - 32637},
    TwoPawnsRow{"a win of Black from the right half", "4k3/8/8/5p2/5P2/1p6/8/K7 b - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g6, d1, h8, 0), stored_win, 4 * 5 + 32667},
    TwoPawnsRow{"a win of Black, White to move", "4k3/8/8/5p2/5P2/1p6/8/K7 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g6, d1, h8, 1), stored_win, -(4 * 5 + 32667)},
    TwoPawnsRow{"a win of Black, blocked on the h file", "4k3/8/7p/6pP/8/8/8/4K3 b - - 0 1", VorkaBitbases::RammedPawnsCell(a3, b4, d1, d8, 0), stored_win, 4 * 3 + 32667},
    TwoPawnsRow{"a win of Black, blocked on the e file", "6k1/8/8/p3p3/4P3/8/8/6K1 b - - 0 1", VorkaBitbases::RammedPawnsCell(d4, h4, b1, b8, 0), stored_win, 4 * 3 + 32667},
    TwoPawnsRow{"of Black, behind the ram", "4k3/5p2/8/5p2/5P2/8/8/4K3 b - - 0 1", VorkaBitbases::RammedPawnsCell(c4, c2, d1, d8, 0), stored_win, 4 * 1 + 32667},
    TwoPawnsRow{"of Black, ahead of the ram", "4k3/8/8/5p2/5P2/8/5p2/7K b - - 0 1", VorkaBitbases::RammedPawnsCell(c4, c7, d1, a8, 0), stored_win, 4 * 6 + 32667},
    TwoPawnsRow{"ahead of the ram", "7k/2P5/8/2p5/2P5/8/8/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, c7, e1, h8, 0), stored_win, 4 * 6 + 32667},
    TwoPawnsRow{"two is a draw as well", "7k/8/8/2p5/2P3P1/8/8/4K3 w - - 0 1", VorkaBitbases::RammedPawnsCell(c4, g4, e1, h8, 0), stored_draw_too, 0}), RowName<TwoPawnsRow>);
// clang-format on

// --- Turned boards ---

/// The position with every man on `square ^ turn`; 56 exchanges the colours as well.
BOARD Turned(const BOARD& board, int turn) {
    const bool exchanges_colours = (turn & 56) != 0;
    std::int8_t squares[64] = {};
    for (Square s = a1; s <= h8; ++s) {
        squares[s ^ turn] = static_cast<std::int8_t>(exchanges_colours ? -board.squares[s] : board.squares[s]);
    }
    BOARD turned;
    EXPECT_TRUE(
        turned.SetPosition(squares, static_cast<int>(board.side_to_move ^ (exchanges_colours ? 1U : 0U)), 0, 0));
    return turned;
}

/// A legal position of kings and these pawns on random squares, if that is what comes of it.
std::optional<BOARD> RandomPosition(std::mt19937& random, bool with_ram) {
    std::int8_t squares[64] = {};
    const auto put = [&](int code, Square square) {
        return std::exchange(squares[square], static_cast<std::int8_t>(code)) == 0;
    };
    const auto any = [&](Square first, Square last) {
        return std::uniform_int_distribution<Square>(first, last)(random);
    };
    const Square blocked = any(a2, h6);
    bool fits = put(pawn, with_ram ? blocked : any(a2, h7)) && put(-pawn, with_ram ? blocked + 8 : any(a2, h7));
    if (with_ram) fits = put(pawn, any(a2, h7)) && fits;
    fits = put(king, any(a1, h8)) && put(-king, any(a1, h8)) && fits;
    BOARD board;
    if (!fits || !board.SetPosition(squares, static_cast<int>(random() % 2), 0, 0)) return std::nullopt;
    return board;
}

TEST_F(Bitbases, ATurnedBoardHasTheSameScore) {
    std::mt19937 random(20);
    const auto write_random = [&](const std::string& path, std::size_t size) {
        std::vector<char> bytes(size);
        for (char& byte : bytes) byte = static_cast<char>(random());
        SyntheticFile(std::move(bytes)).Write(path);
    };
    write_random(File("two"), VorkaBitbases::two_pawns_size);
    write_random(File("ram"), VorkaBitbases::rammed_pawn_size);
    bitbases_.LoadTwoPawns(File("two"));
    bitbases_.LoadRammedPawns(File("ram"));
    std::set<int> scores;
    for (int positions = 0; positions < 4000;) {
        const std::optional<BOARD> board = RandomPosition(random, positions % 2 == 0);
        if (!board) continue;
        ++positions;
        const std::optional<int> score = bitbases_.Probe(*board);
        ASSERT_TRUE(score) << FenOf(*board);
        scores.insert(*score);
        for (const int turn : {7, 56, 63}) {
            const BOARD turned = Turned(*board, turn);
            ASSERT_EQ(bitbases_.Probe(turned), score) << FenOf(*board) << " turned " << FenOf(turned);
        }
    }
    EXPECT_EQ(scores.size(), 13U + 14U) << "draws, six ranks of either side, seven distances of either side";
}

TEST_F(Bitbases, OtherPositionsAreNotLookedUp) {
    SyntheticFile(VorkaBitbases::rammed_pawn_size).Write(File("ram"));
    bitbases_.LoadRammedPawns(File("ram"));
    SyntheticFile(VorkaBitbases::two_pawns_size).Write(File("two"));
    bitbases_.LoadTwoPawns(File("two"));
    const auto known = [this](const std::string& fen) { return bitbases_.Probe(BoardFromFen(fen)); };
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
        bitbases_.LoadTwoPawns(path);
        FAIL();
    } catch (const VorkaBitbases::CouldNotOpenFileException& error) {
        EXPECT_EQ(error.what(), "Could not open file '" + path + "'");
        EXPECT_EQ(error.reason(), "it has another size than it should");
    }
    EXPECT_EQ(ChecksumLine(bitbases_.TwoPawnsState(), "x"), "");
    EXPECT_FALSE(bitbases_.TwoPawnsLoaded());
    EXPECT_THROW(bitbases_.LoadRammedPawns(path), VorkaBitbases::CouldNotOpenFileException);
    EXPECT_THROW(bitbases_.LoadTwoPawns(File("nothing")), VorkaBitbases::CouldNotOpenFileException);
    std::filesystem::create_directory(File("folder"));
    EXPECT_THROW(bitbases_.LoadTwoPawns(File("folder")), VorkaBitbases::CouldNotOpenFileException);
    EXPECT_EQ(bitbases_.TwoPawnsState().failure, VorkaUtils::FileInMemory::Failure::no_regular_file);
    ASSERT_EQ(mkfifo(File("pipe").c_str(), 0600), 0);
    EXPECT_THROW(bitbases_.LoadTwoPawns(File("pipe")), VorkaBitbases::CouldNotOpenFileException);
    EXPECT_EQ(bitbases_.TwoPawnsState().failure, VorkaUtils::FileInMemory::Failure::no_regular_file);
}

TEST_F(Bitbases, ASecondFileReplacesTheFirst) {
    const Cell cell = VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8);
    SyntheticFile(VorkaBitbases::two_pawns_size).Set(cell, stored_win).Write(File("one"));
    SyntheticFile(VorkaBitbases::two_pawns_size).Set(cell, stored_loss).Write(File("two"));
    bitbases_.LoadTwoPawns(File("one"));
    EXPECT_EQ(bitbases_.ProbeTwoPawnsRaw(white, e1, e8, b4, g6), stored_win);
    bitbases_.LoadTwoPawns(File("two"));
    EXPECT_EQ(bitbases_.ProbeTwoPawnsRaw(white, e1, e8, b4, g6), stored_loss);
    EXPECT_THROW(bitbases_.LoadTwoPawns(File("none")), VorkaBitbases::CouldNotOpenFileException);
    EXPECT_EQ(bitbases_.ProbeTwoPawnsRaw(white, e1, e8, b4, g6), 1) << "the old file is still in use";
}

// --- The folder of the program ---

/// The program's folder stays the same for a whole run.
class InitBitbases : public Bitbases {
  protected:
    static void SetUpTestSuite() {
        folder_ = new TemporaryDirectory;
        ExecutableDirectory(folder_->File("vorka"));
    }
    static void TearDownTestSuite() { delete folder_; }
    ~InitBitbases() override {
        for (const std::string& path : {two_pawns_, rammed_pawn_}) {
            std::filesystem::remove(path);
            VorkaBitbases::RemoveChecksum(path);
        }
    }

    /// A file of its own in the place of the one before.
    static void Replace(const std::string& path, const SyntheticFile& file) {
        std::filesystem::remove(path);
        file.Write(path);
    }

    static TemporaryDirectory* folder_;
    const std::string two_pawns_ = folder_->File("kp_kp.vbb");
    const std::string rammed_pawn_ = folder_->File("kpp_kp_ram.vbb");
    const LogCapture log_;
};
TemporaryDirectory* InitBitbases::folder_ = nullptr;

TEST_F(InitBitbases, TellsTheLogAndNotTheScreen) {
    const std::string folder = folder_->path();
    testing::internal::CaptureStdout();
    bitbases_.Init();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    const std::string head = "Loading bitbases (executables directory='" + folder + "'):\n";
    const std::string none = head + "- two pawns bitbases not found ('" + folder + "/kp_kp.vbb')\n" +
                             "- rammed pawn bitbases not found ('" + folder + "/kpp_kp_ram.vbb').\n" +
                             "- generic bitbases disabled\n";
    EXPECT_EQ(log_.text(), none);

    SyntheticFile(VorkaBitbases::two_pawns_size).WriteWithChecksum(two_pawns_);
    SyntheticFile(VorkaBitbases::rammed_pawn_size).WriteWithChecksum(rammed_pawn_);
    bitbases_.Init();
    const std::string found =
        head + "- two pawns bitbases found\n- rammed pawn bitbases found\n- generic bitbases disabled\n";
    EXPECT_EQ(log_.text(), none + found);
    EXPECT_TRUE(bitbases_.TwoPawnsLoaded());
    EXPECT_TRUE(bitbases_.RammedPawnsLoaded());

    bitbases_ = {};
    SyntheticFile(VorkaBitbases::two_pawns_size - 1).Write(two_pawns_);
    SyntheticFile(VorkaBitbases::rammed_pawn_size + 1).Write(rammed_pawn_);
    bitbases_.Init();
    EXPECT_EQ(log_.text(), none + found + head +
                               "Warning: Failed to open two pawns bitbases.\n"
                               "Warning: Failed to open rammed pawn bitbases\n"
                               "- generic bitbases disabled\n");
    EXPECT_FALSE(bitbases_.TwoPawnsLoaded());
    EXPECT_FALSE(bitbases_.RammedPawnsLoaded());
}

TEST_F(InitBitbases, ANewFileIsUsedOnceItIsLookedFor) {
    const Cell two = VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8);
    const Cell ram = VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 0);
    const BOARD two_pawns = BoardFromFen("4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1");
    const BOARD rammed_pawn = BoardFromFen("4k3/8/8/2p5/2P3P1/8/8/4K3 w - - 0 1");
    SyntheticFile(VorkaBitbases::two_pawns_size).Set(two, stored_win).Write(two_pawns_);
    SyntheticFile(VorkaBitbases::rammed_pawn_size).Set(ram, stored_win).Write(rammed_pawn_);
    bitbases_.Init();
    EXPECT_GT(bitbases_.ProbeTwoPawns(two_pawns), 0);
    EXPECT_GT(bitbases_.ProbeRammedPawns(rammed_pawn), 0);

    Replace(two_pawns_, SyntheticFile(VorkaBitbases::two_pawns_size).Set(two, stored_loss));
    Replace(rammed_pawn_, SyntheticFile(VorkaBitbases::rammed_pawn_size).Set(ram, stored_loss));
    EXPECT_GT(bitbases_.ProbeTwoPawns(two_pawns), 0) << "not before the files are looked for again";
    bitbases_.Init();
    EXPECT_LT(bitbases_.ProbeTwoPawns(two_pawns), 0);
    EXPECT_LT(bitbases_.ProbeRammedPawns(rammed_pawn), 0);
}

TEST_F(InitBitbases, AFileThatCantBeUsedLeavesTheOneInUse) {
    const Cell two = VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8);
    const BOARD two_pawns = BoardFromFen("4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1");
    SyntheticFile(VorkaBitbases::two_pawns_size).Set(two, stored_win).Write(two_pawns_);
    bitbases_.Init();
    Replace(two_pawns_, SyntheticFile(VorkaBitbases::two_pawns_size - 1));
    SyntheticFile(VorkaBitbases::rammed_pawn_size).Write(rammed_pawn_);
    bitbases_.Init();
    EXPECT_THAT(log_.text(), testing::EndsWith("Warning: Failed to open two pawns bitbases.\n"
                                               "- rammed pawn bitbases found\n"
                                               "  the checksum of this file is missing: kpp_kp_ram.vbb.sha256\n"
                                               "- generic bitbases disabled\n"));
    ASSERT_TRUE(bitbases_.TwoPawnsLoaded());
    EXPECT_GT(bitbases_.ProbeTwoPawns(two_pawns), 0);
    EXPECT_TRUE(bitbases_.RammedPawnsLoaded()) << "the other file is looked for all the same";
}

TEST_F(InitBitbases, AFileThatItsChecksumDoesNotFitIsNotUsed) {
    SyntheticFile(VorkaBitbases::two_pawns_size).WriteWithChecksum(two_pawns_);
    std::fstream(two_pawns_, std::ios::in | std::ios::out).seekp(70000).put('x');
    bitbases_.Init();
    EXPECT_FALSE(bitbases_.TwoPawnsLoaded());
    EXPECT_EQ(bitbases_.TwoPawnsState().checksum, VorkaBitbases::Checksum::does_not_fit);
    EXPECT_THAT(
        log_.text(),
        testing::HasSubstr("Warning: Failed to open two pawns bitbases.\n  the checksum of this file does not fit, "
                           "it is not used: kp_kp.vbb.sha256\n- rammed"));
    EXPECT_THROW(bitbases_.LoadTwoPawns(two_pawns_), VorkaBitbases::CouldNotOpenFileException);
}

TEST_F(InitBitbases, AFileThatIsCutWhileItIsUsedDoesNoHarm) {
    const Cell two = VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8);
    SyntheticFile(VorkaBitbases::two_pawns_size).Set(two, stored_win).Write(two_pawns_);
    bitbases_.Init();
    std::filesystem::resize_file(two_pawns_, 0);
    EXPECT_EQ(bitbases_.ProbeTwoPawnsRaw(white, e1, e8, b4, g6), stored_win);
}

TEST_F(InitBitbases, APipeInThePlaceOfAFileIsNotWaitedFor) {
    ASSERT_EQ(mkfifo(two_pawns_.c_str(), 0600), 0);
    bitbases_.Init();
    EXPECT_FALSE(bitbases_.TwoPawnsLoaded());
    EXPECT_THAT(log_.text(), testing::HasSubstr("Warning: Failed to open two pawns bitbases.\n"));
}

}  // namespace
