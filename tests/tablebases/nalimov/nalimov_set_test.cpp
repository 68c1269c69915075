#include "tablebases/nalimov/nalimov_set.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "frame/base/vocabulary.h"
#include "support/board_builder.h"
#include "support/temporary_directory.h"
#include "tablebases/nalimov/table_encoder.h"
#include "tablebases/nalimov/table_values.h"
#include "tablebases/nalimov/three_men.h"
#include "tablebases/opener/open_tables.h"

namespace NalimovTablebases {

namespace {

using table_encoder::Bytes;
using testing::HasSubstr;
using VorkaTablebases::OpenTables;
using VorkaTablebases::ProbeResult;
using VorkaTablebases::SourceFailure;
using VorkaTablebases::Tablebases;

/// All of three men, solved once for all tests.
const ThreeMen& Solved(PieceType kind) {
    static std::map<PieceType, ThreeMen> solved;
    const auto found = solved.find(kind);
    return found != solved.end() ? found->second : solved.emplace(kind, ThreeMen(kind)).first->second;
}

Bytes ValuesOf(PieceType kind, Side mover) {
    const Material material({kind}, {});
    const ThreeMen& solved = Solved(kind);
    const auto who = mover == first_side ? ThreeMen::strong : ThreeMen::bare;
    return table_encoder::ValuesOf(material, mover, [&](const Placement& position) -> std::optional<std::int8_t> {
        const Square man = position.men[first_side][0];
        const auto [king, bare_king] = position.kings;
        if (!solved.IsLegal(who, king, man, bare_king)) return std::nullopt;
        return ValueOfScore(solved.ScoreOf(who, king, man, bare_king));
    });
}

/// A table of king and queen against king, the queen's side to move.
const Bytes& QueenValues() {
    static const Bytes values = ValuesOf(queen, first_side);
    return values;
}

/// The same, the bare king to move.
const Bytes& BareKingValues() {
    static const Bytes values = ValuesOf(queen, second_side);
    return values;
}

BOARD BoardOf(Colour strong_side, bool strong_moves, Square king, PieceType kind, Square man, Square bare_king) {
    std::int8_t squares[64]{};
    const int sign = strong_side == white ? 1 : -1;
    const auto seen = [&](Square square) { return Seen(strong_side, square); };
    squares[seen(king)] = static_cast<std::int8_t>(sign * ::king);
    squares[seen(man)] = static_cast<std::int8_t>(sign * kind);
    squares[seen(bare_king)] = static_cast<std::int8_t>(-sign * ::king);
    BOARD board;
    const Colour mover = strong_moves ? strong_side : Opponent(strong_side);
    EXPECT_TRUE(board.SetPosition(squares, static_cast<int>(mover), 0, 0));
    return board;
}

/// A folder for tables, and what is said when they are opened.
class NalimovTables : public testing::Test {
  protected:
    void Write(const std::string& name, const Bytes& bytes) { table_encoder::WriteFile(folder_.File(name), bytes); }
    /// What standard output is told, but for the remark that nobody has tested original files.
    std::string Open(std::int32_t cache = 1 << 20) {
        testing::internal::CaptureStdout();
        auto source = OpenTables(folder_.path());
        EXPECT_TRUE(!source || source->UseCache(cache));
        tables_.Use(std::move(source));
        std::string said = testing::internal::GetCapturedStdout();
        has_remark_ = said.ends_with(vocabulary::nalimov_untested);
        if (has_remark_) said.resize(said.size() - vocabulary::nalimov_untested.size());
        return said;
    }
    ProbeResult Probe(const std::string& fen, int& score) { return tables_.Probe(BoardFromFen(fen), score); }
    /// The score of a position that is found.
    int ScoreOf(const std::string& fen) {
        int score = 12345;
        EXPECT_EQ(Probe(fen, score), ProbeResult::found) << fen;
        return score;
    }

    TemporaryDirectory folder_;
    Tablebases tables_;
    bool has_remark_ = false;
};

constexpr const char* bare_king_is_mated = "8/8/8/8/8/2K5/1Q6/k7 b - - 0 1";

}  // namespace

TEST(ThreeMenSolved, HaveTheLongestMatesThatArePublished) {
    const std::map<PieceType, int> longest_mates{{queen, 10}, {rook, 16}, {bishop, 0}, {knight, 0}, {pawn, 28}};
    for (const auto& [kind, moves] : longest_mates) {
        int longest = 0;
        for (Square man = a1; man <= h8; ++man) {
            for (Square bare_king = a1; bare_king <= h8; ++bare_king) {
                for (Square king = a1; king <= h8; ++king) {
                    if (!Solved(kind).IsLegal(ThreeMen::strong, king, man, bare_king)) continue;
                    const int score = Solved(kind).ScoreOf(ThreeMen::strong, king, man, bare_king);
                    if (score > 0) longest = std::max(longest, (32767 - score + 1) / 2);
                }
            }
        }
        EXPECT_EQ(longest, moves);
    }
}

TEST_F(NalimovTables, GiveBackEveryValueOfThreeMen) {
    for (const PieceType kind : {queen, rook, bishop, knight, pawn}) {
        const Material material({kind}, {});
        // One of the two packed.
        const bool packs_first = kind % 2 == 0;
        const Bytes first = ValuesOf(kind, first_side);
        const Bytes second = ValuesOf(kind, second_side);
        Write(FileNameOf({material, first_side, packs_first}), packs_first ? table_encoder::Pack(first) : first);
        Write(FileNameOf({material, second_side, !packs_first}), packs_first ? second : table_encoder::Pack(second));
    }
    EXPECT_EQ(Open(), "");
    for (const PieceType kind : {queen, rook, bishop, knight, pawn}) {
        std::uint64_t found = 0;
        // With a step that meets all squares of each man.
        for (int place = 0; place < 64 * 64 * 64; place += kind == pawn || kind == rook ? 1 : 5) {
            const Square king = place / 4096;
            const Square man = place / 64 % 64;
            const Square bare_king = place % 64;
            for (const auto mover : {ThreeMen::strong, ThreeMen::bare}) {
                if (!Solved(kind).IsLegal(mover, king, man, bare_king)) continue;
                ++found;
                const Colour strong_side = (place / 7) % 2 == 0 ? white : black;
                const BOARD board = BoardOf(strong_side, mover == ThreeMen::strong, king, kind, man, bare_king);
                int score = 12345;
                ASSERT_EQ(tables_.Probe(board, score), ProbeResult::found) << FenOf(board);
                ASSERT_EQ(score, Solved(kind).ScoreOf(mover, king, man, bare_king)) << FenOf(board);
            }
        }
        EXPECT_GT(found, 50'000U);
    }
}

TEST_F(NalimovTables, AnswerTheSameWithAnyCache) {
    Write("kqk.nbw.emd", table_encoder::Pack(QueenValues()));
    Write("kqk.nbb.emd", table_encoder::Pack(BareKingValues()));
    for (const std::int32_t cache : {0, 10'000, 1 << 20}) {
        EXPECT_EQ(Open(cache), "");
        EXPECT_EQ(ScoreOf("8/8/8/8/8/2K5/7Q/k7 w - - 0 1"), ScoreOfMateIn(1));
        EXPECT_EQ(ScoreOf("8/8/8/8/8/2k5/7q/K7 b - - 0 1"), ScoreOfMateIn(1));
    }
}

TEST_F(NalimovTables, AreSaidToBeUntestedIfThereAreAny) {
    EXPECT_EQ(Open(), "");
    EXPECT_FALSE(has_remark_);
    Write("kqk.nbw", QueenValues());
    EXPECT_EQ(Open(), "");
    EXPECT_TRUE(has_remark_);
}

TEST_F(NalimovTables, KnowOnlyTheMenThatTheyHave) {
    Write("kqk.nbw", QueenValues());
    Write("kqk.nbb", BareKingValues());
    EXPECT_EQ(Open(), "");
    int score = 0;
    for (const std::string& fen :
         {std::string("8/8/8/8/8/2K5/7R/k7 w - - 0 1"), std::string("8/8/8/8/8/2K5/8/k7 w - - 0 1"), start_fen}) {
        EXPECT_EQ(Probe(fen, score), ProbeResult::not_found) << fen;
    }
    EXPECT_EQ(ScoreOf("8/8/8/8/8/2K5/7Q/k7 w - - 0 1"), ScoreOfMateIn(1));
    EXPECT_EQ(ScoreOf("8/8/8/8/8/1K6/1Q6/k7 b - - 0 1"), -32767) << "it is mate";
    EXPECT_EQ(ScoreOf("8/8/8/8/8/1Q6/2K5/k7 b - - 0 1"), 0) << "it is stalemate";
    EXPECT_EQ(ScoreOf("8/8/8/8/8/8/1Qk5/7K b - - 0 1"), 0) << "the queen is lost";
}

// Every move with a queen leads to the other file, and nearly every move of the bare king.
TEST_F(NalimovTables, AreLeftOutIfNothingShowsThatTheyAreRight) {
    const std::pair<const char*, const Bytes*> files[] = {{"kqk.nbw", &QueenValues()}, {"kqk.nbb", &BareKingValues()}};
    for (const auto& [name, values] : files) {
        Write(name, *values);
        EXPECT_EQ(Open(), "");
        for (const char* const fen : {"8/8/8/8/8/2K5/7Q/k7 w - - 0 1", bare_king_is_mated}) {
            int score = 0;
            testing::internal::CaptureStdout();
            EXPECT_EQ(Probe(fen, score), ProbeResult::not_found) << name << ' ' << fen;
            EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
            EXPECT_EQ(tables_.LastFailure(), SourceFailure::none);
        }
        std::filesystem::remove(folder_.File(name));
    }
}

struct Disorder {
    const char* name;
    void (*disturb)(Bytes& values);
};

/// Values that are no table, as a reader finds them that mistakes the index or the values.
class DisturbedValues : public NalimovTables, public testing::WithParamInterface<Disorder> {};

constexpr Disorder disorders[] = {
    {"NoPositions", [](Bytes& values) { std::fill(values.begin(), values.end(), std::uint8_t{127}); }},
    {"Draws", [](Bytes& values) { std::fill(values.begin(), values.end(), std::uint8_t{0}); }},
    {"Backwards", [](Bytes& values) { std::reverse(values.begin(), values.end()); }},
    {"OneOn", [](Bytes& values) { std::rotate(values.begin(), values.begin() + 1, values.end()); }},
    {"OneMoveMore",
     [](Bytes& values) {
         for (std::uint8_t& value : values) value = static_cast<std::uint8_t>(value == 127 ? 127 : value - 1);
     }},
    {"OtherSign",
     [](Bytes& values) {
         for (std::uint8_t& value : values) value = static_cast<std::uint8_t>(value == 127 ? 127 : -value);
     }},
};
INSTANTIATE_TEST_SUITE_P(Nalimov, DisturbedValues, testing::ValuesIn(disorders),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(DisturbedValues, AreNotBelieved) {
    Bytes disturbed = QueenValues();
    GetParam().disturb(disturbed);
    Write("kqk.nbw", disturbed);
    Write("kqk.nbb", BareKingValues());
    EXPECT_EQ(Open(), "");
    int score = 0;
    testing::internal::CaptureStdout();
    EXPECT_EQ(Probe("8/8/8/8/8/2K5/7Q/k7 w - - 0 1", score), ProbeResult::not_found);
    const SourceFailure failure = tables_.LastFailure();
    EXPECT_EQ(Probe("8/8/8/8/8/2K5/6Q1/k7 w - - 0 1", score), ProbeResult::not_found);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "*** Unable to read " + folder_.File("kqk.nbw") + " - file broken\n");
    EXPECT_EQ(failure, SourceFailure::corrupted);
}

TEST_F(NalimovTables, TakeAValueOfNoPositionForNoAnswer) {
    const BOARD board = BoardFromFen("8/8/8/8/8/2K5/7Q/k7 w - - 0 1");
    Bytes values = QueenValues();
    const NalimovIndex index(*MaterialNamed("kqk"), first_side);
    const auto number = index.Of(PlacementOf(board, white, *MaterialNamed("kqk")));
    ASSERT_TRUE(number);
    values[static_cast<std::size_t>(*number)] = 127;
    Write("kqk.nbw", values);
    Write("kqk.nbb", BareKingValues());
    EXPECT_EQ(Open(), "");
    int score = 0;
    EXPECT_EQ(tables_.Probe(board, score), ProbeResult::not_found);
    EXPECT_EQ(tables_.LastFailure(), SourceFailure::none);
    EXPECT_EQ(ScoreOf("8/8/8/8/8/2K5/6Q1/k7 w - - 0 1"), ScoreOfMateIn(1)) << "the others are there";
}

TEST_F(NalimovTables, WithoutTheirLastPositionsAreTables) {
    Bytes values = QueenValues();
    values.resize(values.size() - 20);
    Write("kqk.nbw", values);
    Write("kqk.nbb", BareKingValues());
    EXPECT_EQ(Open(), "");
    EXPECT_EQ(ScoreOf("8/8/8/8/8/2K5/7Q/k7 w - - 0 1"), ScoreOfMateIn(1));
}

TEST_F(NalimovTables, OfOneSideStandForBothWhereTheMenAreTheSame) {
    const Material material = *MaterialNamed("kqkq");
    // A value that turning the board does not change.
    const auto value_of = [](const Placement& position) {
        const auto [own, enemy] = std::pair(position.men[first_side][0], position.men[second_side][0]);
        const int files = FileOf(own) - FileOf(enemy);
        const int ranks = RankOf(own) - RankOf(enemy);
        return std::optional(static_cast<std::int8_t>(files * files + ranks * ranks));
    };
    for (const Side mover : {first_side, second_side}) {
        const TemporaryDirectory folder;
        table_encoder::WriteFile(folder.File(FileNameOf({material, mover, false})),
                                 table_encoder::ValuesOf(material, mover, value_of));
        NalimovSet set(folder.path());
        VorkaTablebases::BlockCache cache(block_bytes);
        for (const char* const fen : {"7q/8/2k5/8/8/8/K7/6Q1 w - - 0 1", "6q1/k7/8/8/8/2K5/8/7Q b - - 0 1"}) {
            int score = 0;
            SourceFailure failure = SourceFailure::none;
            EXPECT_EQ(set.LookUp(BoardFromFen(fen), cache, score, failure), ProbeResult::found) << fen;
            EXPECT_EQ(score, ScoreOfValue(50)) << fen;
        }
    }
}

TEST_F(NalimovTables, AreTakenOnceIfTheyLieThereTwice) {
    Write("kqk.nbw", QueenValues());
    Write("kqk.nbw.emd", table_encoder::Pack(QueenValues()));
    Write("kqk_nbw", QueenValues());
    const NalimovSet set(folder_.path());
    ASSERT_EQ(set.Names().size(), 1U);
    EXPECT_EQ(FileNameOf(set.Names().front()), "kqk.nbw");
}

TEST_F(NalimovTables, ThatAreDamagedGiveWayToAnotherFile) {
    Write("kqk.nbw", Bytes(10, 0));
    Write("kqk.nbw.emd", table_encoder::Pack(QueenValues()));
    Write("kqk.nbb", BareKingValues());
    EXPECT_THAT(Open(), HasSubstr("*** Unable to register "));
    EXPECT_EQ(ScoreOf("8/8/8/8/8/2K5/7Q/k7 w - - 0 1"), ScoreOfMateIn(1));
}

struct FileDamage {
    const char* name;
    const char* file;
    void (*damage)(Bytes& file);
    const char* before;  ///< what is said, before and after the path
    const char* after;
};

/// Files that are refused when they are opened.
class DamagedFile : public NalimovTables, public testing::WithParamInterface<FileDamage> {};

constexpr FileDamage damages[] = {
    {"Empty", "kqk.nbw.emd", [](Bytes& file) { file.clear(); }, "*** Unable to read ", " - file broken\n"},
    {"EmptyPlain", "kqk.nbw", [](Bytes& file) { file.clear(); }, "*** Unable to register ", "\n"},
    {"PlainTooShort", "kqk.nbw", [](Bytes& file) { file = Bytes(20'000, 0); }, "*** Unable to register ", "\n"},
    {"PlainTooLong", "kqk.nbw", [](Bytes& file) { file = Bytes(30'000, 0); }, "*** Unable to register ", "\n"},
    {"OfAnotherMaterial", "kqkr.nbw.emd", [](Bytes&) {}, "*** Unable to register ", "\n"},
    {"Banner", "kqk.nbw.emd", [](Bytes& file) { file[0] = 'c'; }, "*** Unable to read ", " - file broken\n"},
    {"BannerAlone", "kqk.nbw.emd", [](Bytes& file) { file.resize(64); }, "*** Unable to read ", " - file broken\n"},
    {"FixedHeaderAlone", "kqk.nbw.emd", [](Bytes& file) { file.resize(80); }, "*** Unable to read ",
     " - file broken\n"},
    {"HeaderCut", "kqk.nbw.emd", [](Bytes& file) { file.resize(120); }, "*** Unable to read ", " - file broken\n"},
    {"BlocksCut", "kqk.nbw.emd", [](Bytes& file) { file.pop_back(); }, "*** Unable to read ", " - file broken\n"},
    {"Checksum", "kqk.nbw.emd", [](Bytes& file) { file[85] ^= 1; }, "*** Unable to read ", " - file broken\n"},
    {"BlockSize", "kqk.nbw.emd", [](Bytes& file) { file[70] = 12; }, "*** ", ": Unsupported block size 4096\n"},
    {"LargestBlockSize", "kqk.nbw.emd", [](Bytes& file) { file[70] = 255; }, "*** ",
     ": Unsupported block size 1073741824\n"},
    {"SizesBeyondAllBounds", "kqk.nbw.emd",
     [](Bytes& file) {
         table_encoder::SetNumber(file, 64, 0xFFFFFFFF);
         table_encoder::SetNumber(file, 72, 0x1A000000);
     },
     "*** Unable to read ", " - file broken\n"},
};
INSTANTIATE_TEST_SUITE_P(Nalimov, DamagedFile, testing::ValuesIn(damages),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(DamagedFile, IsRefusedWithAMessage) {
    const FileDamage& row = GetParam();
    Bytes file = table_encoder::Pack(QueenValues());
    row.damage(file);
    Write(row.file, file);
    EXPECT_EQ(Open(), row.before + folder_.File(row.file) + row.after);
    int score = 0;
    EXPECT_EQ(Probe("8/8/8/8/8/2K5/7Q/k7 w - - 0 1", score), ProbeResult::disabled);
}

TEST_F(NalimovTables, ThatAreNoFilesAreRefused) {
    std::filesystem::create_directory(folder_.File("kqk.nbw.emd"));
    ASSERT_EQ(mkfifo(folder_.File("krk.nbw.emd").c_str(), 0600), 0);
    EXPECT_EQ(Open(), "*** Unable to read " + folder_.File("kqk.nbw.emd") + " - read error\n*** Unable to read " +
                          folder_.File("krk.nbw.emd") + " - read error\n");
}

TEST_F(NalimovTables, WithADamagedBlockAreLeftOut) {
    Bytes file = table_encoder::Pack(QueenValues());
    const std::size_t header = FixedHeader::From(file).header_bytes;
    for (std::size_t at = header; at < file.size(); at += 100) file[at] ^= 2;
    Write("kqk.nbw.emd", file);
    EXPECT_EQ(Open(), "");
    int score = 0;
    testing::internal::CaptureStdout();
    EXPECT_EQ(Probe("8/8/8/8/8/2K5/7Q/k7 w - - 0 1", score), ProbeResult::not_found);
    const SourceFailure failure = tables_.LastFailure();
    EXPECT_EQ(Probe("8/8/8/8/8/2K5/6Q1/k7 w - - 0 1", score), ProbeResult::not_found);
    const std::string said = testing::internal::GetCapturedStdout();
    EXPECT_EQ(failure, SourceFailure::corrupted);
    EXPECT_THAT(said, testing::ContainsRegex("\\*\\*\\* .*kqk.nbw.emd corrupted [0-9]+ [0-9]+ [0-9]+\n"));
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << "the second probe says nothing more";
}

TEST_F(NalimovTables, ThatShrinkWhileInUseAreLeftOut) {
    Write("kqk.nbw.emd", table_encoder::Pack(QueenValues()));
    EXPECT_EQ(Open(0), "");
    std::filesystem::resize_file(folder_.File("kqk.nbw.emd"), 100);
    int score = 0;
    testing::internal::CaptureStdout();
    EXPECT_EQ(Probe("8/8/8/8/8/2K5/7Q/k7 w - - 0 1", score), ProbeResult::not_found);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "*** Read from " + folder_.File("kqk.nbw.emd") + " failed\n");
    EXPECT_EQ(tables_.LastFailure(), SourceFailure::unreadable);
}

}  // namespace NalimovTablebases
