#include "tablebases/mate_table_set.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "support/board_builder.h"
#include "support/temporary_directory.h"
#include "tablebases/opener/open_tables.h"
#include "tablebases/packing.h"
#include "tablebases/table_value.h"

namespace VorkaTablebases {

namespace {

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

constexpr std::uint32_t block_bytes = 4096;

/// A table of one material whose values are made up.
MateTableHeader HeaderOf(const std::string& name) {
    MateTableHeader header;
    header.material = *Material::FromName(name);
    header.entries = MateTableIndex(header.material).size();
    header.block_bytes = block_bytes;
    return header;
}

TableValue MadeUp(std::uint64_t index) { return static_cast<TableValue>(index * 31 % 251); }

/// The bytes of its file, with a value for each number.
std::string TextOfTable(const MateTableHeader& header, const std::function<TableValue(std::uint64_t)>& value = MadeUp) {
    Packer packer;
    std::vector<std::vector<std::uint8_t>> packed;
    for (std::uint32_t block = 0; block < header.blocks(); ++block) {
        std::vector<std::uint8_t> plain(header.BytesOf(block));
        for (std::size_t i = 0; i < plain.size(); ++i) plain[i] = value(std::uint64_t{block} * block_bytes + i);
        packed.push_back(packer.Pack(plain));
    }
    return MateTableText(header, packed);
}

class MateTableSetTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!HasPacking()) GTEST_SKIP() << "this build was made without zstd";
    }
    void Write(const std::string& name, const std::string& text) {
        std::ofstream(directory_.File(name), std::ios::binary) << text;
    }
    void WriteTable(const std::string& name) { Write(name + ".vdm", TextOfTable(HeaderOf(name))); }
    [[nodiscard]] std::unique_ptr<TableSource> Open() const { return OpenTables(directory_.path()); }
    /// What is said while the tables are opened; whether there are any.
    std::pair<bool, std::string> WhatIsSaid() {
        CaptureStdout();
        const bool any = Open() != nullptr;
        return {any, GetCapturedStdout()};
    }

    TemporaryDirectory directory_;
};

}  // namespace

TEST_F(MateTableSetTest, FindThePositionsOfTheirMaterial) {
    WriteTable("KQKR");
    const auto tables = Open();
    ASSERT_NE(tables, nullptr);
    const MateTableIndex index(*Material::FromName("KQKR"));
    struct Case {
        std::string fen;
        std::uint64_t index;
    };
    const std::vector<Case> cases = {
        {"8/8/3k4/8/8/1Q6/7r/K7 b - - 0 1", index.IndexOf({a1, d6, b3, h2, 0}, black)},
        {"8/8/3k4/8/8/1Q6/7r/K7 w - - 0 1", index.IndexOf({a1, d6, b3, h2, 0}, white)},
        // The same with colours exchanged, and mirrored.
        {"k7/7R/1q6/8/8/3K4/8/8 w - - 0 1", index.IndexOf({a1, d6, b3, h2, 0}, black)},
        {"8/8/4k3/8/8/6Q1/r7/7K b - - 0 1", index.IndexOf({a1, d6, b3, h2, 0}, black)},
    };
    for (const auto& [fen, number] : cases) {
        int score = 0;
        EXPECT_EQ(tables->Probe(BoardFromFen(fen), score), ProbeResult::found) << fen;
        EXPECT_EQ(score, ScoreOf(MadeUp(number))) << fen;
    }
    int score = 77;
    EXPECT_EQ(tables->Probe(BoardFromFen("8/8/3k4/8/8/1Q6/7b/K7 b - - 0 1"), score), ProbeResult::not_found);
    EXPECT_EQ(tables->Probe(BoardFromFen("8/8/3k4/8/8/1Q6/8/K7 b - - 0 1"), score), ProbeResult::not_found);
    EXPECT_EQ(tables->Probe(BoardFromFen(start_fen), score), ProbeResult::not_found);
    EXPECT_EQ(score, 77);
    EXPECT_EQ(tables->last_failure(), SourceFailure::none);
}

TEST_F(MateTableSetTest, AnswerTheSameWithAnyCache) {
    WriteTable("KQK");
    const auto tables = Open();
    const MateTableIndex index(*Material::FromName("KQK"));
    for (const std::int32_t cache : {0, 5000, 1 << 20}) {
        ASSERT_TRUE(tables->UseCache(cache));
        for (std::uint64_t number = 0; number < index.size(); number += 61) {
            Squares squares{};
            Colour to_move{};
            index.PositionOf(number, squares, to_move);
            std::int8_t men[64] = {};
            men[squares[2]] = queen;
            men[squares[0]] = king;
            men[squares[1]] = -king;
            BOARD board;
            if (PopCount(Bit(squares[0]) | Bit(squares[1]) | Bit(squares[2])) != 3 ||
                !board.SetPosition(men, static_cast<int>(to_move), 0, 0)) {
                continue;
            }
            int score = 0;
            ASSERT_EQ(tables->Probe(board, score), ProbeResult::found);
            ASSERT_EQ(score, ScoreOf(MadeUp(index.IndexOf(squares, to_move))));
        }
    }
    EXPECT_FALSE(tables->UseCache(1000));
}

TEST_F(MateTableSetTest, ReadOnlyFilesThatAreNamedAfterTheirMaterial) {
    const std::string table = TextOfTable(HeaderOf("KQK"));
    for (const std::string name : {"KQK.txt", "KKQ.vdm", "other.vdm", "KQK.vdm.old"}) Write(name, table);
    EXPECT_EQ(WhatIsSaid(), std::pair(false, std::string()));
    Write("KRK.vdm", table);
    EXPECT_EQ(WhatIsSaid(), std::pair(false, "*** Unable to register " + directory_.File("KRK.vdm") + '\n'));
}

TEST_F(MateTableSetTest, ReadNamesInSmallLettersToo) {
    const std::string fen = "8/8/8/8/8/1k6/8/K6Q w - - 0 1";
    for (const std::string name : {"kqk.vdm", "KqK.VDM"}) {
        Write(name, TextOfTable(HeaderOf("KQK")));
        EXPECT_EQ(WhatIsSaid(), std::pair(true, std::string()));
        int score = 0;
        EXPECT_EQ(Open()->Probe(BoardFromFen(fen), score), ProbeResult::found) << name;
        // Of two names for one table the first counts.
        Write("zqk.vdm", "nothing");
        Write("KQK.vdm", TextOfTable(HeaderOf("KQK")));
        EXPECT_EQ(WhatIsSaid(), std::pair(true, std::string()));
        for (const char* const file : {"KQK.vdm", "zqk.vdm"}) std::filesystem::remove(directory_.File(file));
        std::filesystem::remove(directory_.File(name));
    }
}

TEST_F(MateTableSetTest, TellABlockSizeThatIsNoneAsItStands) {
    std::string text = TextOfTable(HeaderOf("KQK"));
    text.replace(12, 4, std::string("\x00\x00\x00\x80", 4));
    Write("KQK.vdm", text);
    EXPECT_EQ(WhatIsSaid(),
              std::pair(false, "*** " + directory_.File("KQK.vdm") + ": Unsupported block size 2147483648\n"));
}

TEST_F(MateTableSetTest, RefuseAFileThatIsNone) {
    const std::string path = directory_.File("KQK.vdm");
    const std::string sound = TextOfTable(HeaderOf("KQK"));
    std::vector<std::string> broken = {"", "VorkaDTM", std::string(5000, '\0'), sound.substr(0, 200),
                                       sound.substr(0, sound.size() - 1)};
    // Any byte of the head and the places counts.
    for (std::size_t at = 0; at < 112 + 16 * HeaderOf("KQK").blocks(); at += at < 112 ? 1 : 13) {
        broken.push_back(sound);
        broken.back()[at] = static_cast<char>(broken.back()[at] ^ 0x40);
    }
    for (const std::string& text : broken) {
        Write("KQK.vdm", text);
        const auto [any, said] = WhatIsSaid();
        EXPECT_FALSE(any);
        EXPECT_TRUE(said == "*** Unable to read " + path + " - file broken\n" ||
                    said.starts_with("*** " + path + ": Unsupported block size "))
            << said;
    }
    Write("KQK.vdm", sound);
    EXPECT_EQ(WhatIsSaid(), std::pair(true, std::string()));
}

TEST_F(MateTableSetTest, RefuseAFolderByTheNameOfATable) {
    std::filesystem::create_directory(directory_.File("KQK.vdm"));
    WriteTable("KRK");
    EXPECT_EQ(WhatIsSaid(), std::pair(true, "*** Unable to register " + directory_.File("KQK.vdm") + '\n'));
}

TEST_F(MateTableSetTest, LeaveOutATableWithABadBlock) {
    WriteTable("KRK");
    std::string text = TextOfTable(HeaderOf("KQK"));
    text.back() = static_cast<char>(text.back() ^ 1);  // in the last block
    Write("KQK.vdm", text);
    const auto tables = Open();
    ASSERT_NE(tables, nullptr);
    const BOARD in_first_block = BoardFromFen("8/8/8/8/8/1k6/8/K6Q w - - 0 1");
    const BOARD in_last_block = BoardFromFen("7k/8/8/8/3K4/8/8/6Q1 b - - 0 1");
    int score = 0;
    EXPECT_EQ(tables->Probe(in_first_block, score), ProbeResult::found);
    CaptureStdout();
    for (const BOARD* board : {&in_last_block, &in_last_block, &in_first_block}) {
        EXPECT_EQ(tables->Probe(*board, score), ProbeResult::not_found);
        EXPECT_EQ(tables->last_failure(), SourceFailure::corrupted);
    }
    const std::string said = GetCapturedStdout();
    EXPECT_TRUE(said.starts_with("*** " + directory_.File("KQK.vdm") + " corrupted 14 ")) << said;
    EXPECT_EQ(std::ranges::count(said, '\n'), 1) << "it is told once";
    EXPECT_EQ(tables->Probe(BoardFromFen("7k/8/8/8/3K4/8/8/6R1 b - - 0 1"), score), ProbeResult::found);
    EXPECT_EQ(tables->last_failure(), SourceFailure::none);
}

TEST_F(MateTableSetTest, LeaveOutATableThatHasBecomeShort) {
    WriteTable("KQK");
    const auto tables = Open();
    std::filesystem::resize_file(directory_.File("KQK.vdm"), 1000);
    CaptureStdout();
    int score = 0;
    EXPECT_EQ(tables->Probe(BoardFromFen("7k/8/8/8/3K4/8/8/6Q1 b - - 0 1"), score), ProbeResult::not_found);
    EXPECT_EQ(tables->last_failure(), SourceFailure::unreadable);
    EXPECT_EQ(GetCapturedStdout(), "*** Read from " + directory_.File("KQK.vdm") + " failed\n");
}

}  // namespace VorkaTablebases
