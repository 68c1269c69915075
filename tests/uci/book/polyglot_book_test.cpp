#include "uci/book/polyglot_book.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "support/board_builder.h"
#include "support/row_name.h"
#include "support/temporary_directory.h"

namespace {

using VorkaUci::BookMove;
using VorkaUci::PolyglotBook;
using VorkaUci::PolyglotKey;

struct KeyRow {
    std::string_view name;
    std::string_view fen;
    std::uint64_t key;
};

class PolyglotKeys : public testing::TestWithParam<KeyRow> {};

TEST_P(PolyglotKeys, AreThoseOfTheFormat) {
    EXPECT_EQ(PolyglotKey(BoardFromFen(std::string(GetParam().fen))), GetParam().key);
}

// The test data of the format's description, by the moves that lead there.
// clang-format off
INSTANTIATE_TEST_SUITE_P(Book, PolyglotKeys, testing::Values(
    KeyRow{"start", "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", 0x463b96181691fc9c},
    KeyRow{"e4", "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq e3 0 1", 0x823c9b50fd114196},
    KeyRow{"e4 d5", "rnbqkbnr/ppp1pppp/8/3p4/4P3/8/PPPP1PPP/RNBQKBNR w KQkq d6 0 2", 0x0756b94461c50fb0},
    KeyRow{"e4 d5 e5", "rnbqkbnr/ppp1pppp/8/3pP3/8/8/PPPP1PPP/RNBQKBNR b KQkq - 0 2", 0x662fafb965db29d4},
    KeyRow{"e4 d5 e5 f5", "rnbqkbnr/ppp1p1pp/8/3pPp2/8/8/PPPP1PPP/RNBQKBNR w KQkq f6 0 3", 0x22a48b5a8e47ff78},
    KeyRow{"e4 d5 e5 f5 Ke2", "rnbqkbnr/ppp1p1pp/8/3pPp2/8/8/PPPPKPPP/RNBQ1BNR b kq - 0 3", 0x652a607ca3f242c1},
    KeyRow{"e4 d5 e5 f5 Ke2 Kf7", "rnbq1bnr/ppp1pkpp/8/3pPp2/8/8/PPPPKPPP/RNBQ1BNR w - - 0 4", 0x00fdd303c946bdd9},
    KeyRow{"a4 b5 h4 b4 c4", "rnbqkbnr/p1pppppp/8/8/PpP4P/8/1P1PPPP1/RNBQKBNR b KQkq c3 0 3", 0x3c8123ea7b067637},
    KeyRow{"a4 b5 h4 b4 c4 bxc3 Ra3", "rnbqkbnr/p1pppppp/8/8/P6P/R1p5/1P1PPPP1/1NBQKBNR b Kkq - 0 4", 0x5c3f9b829b279560}),
    RowName<KeyRow>);
// clang-format on

constexpr std::uint64_t start_key = 0x463b96181691fc9c;

struct Entry {
    std::uint64_t key;
    int move;
    int weight;
};

/// origin and target as squares
constexpr int Word(Square from, Square to, int promotion = 0) { return promotion << 12 | from << 6 | to; }

class Book : public testing::Test {
  protected:
    std::string Write(const std::vector<Entry>& entries, const std::string& more = "") {
        std::string text;
        const auto append = [&](std::uint64_t number, int bytes) {
            for (int i = bytes - 1; i >= 0; --i) text += static_cast<char>(number >> (8 * i) & 255);
        };
        for (const Entry& entry : entries) {
            append(entry.key, 8);
            append(static_cast<std::uint64_t>(entry.move), 2);
            append(static_cast<std::uint64_t>(entry.weight), 2);
            append(7, 4);
        }
        std::ofstream(path_, std::ios::binary) << text << more;
        return path_;
    }
    void Open(const std::vector<Entry>& entries) { ASSERT_TRUE(book_.Open(Write(entries))); }
    [[nodiscard]] std::vector<std::string> Texts(std::string_view fen) {
        std::vector<std::string> texts;
        for (const BookMove& candidate : book_.Find(BoardFromFen(std::string(fen)))) {
            texts.push_back(MoveToCoordinate(candidate.move) + ' ' + std::to_string(candidate.weight));
        }
        return texts;
    }

    TemporaryDirectory directory_;
    std::string path_ = directory_.File("book.bin");
    PolyglotBook book_;
};

using Lines = std::vector<std::string>;

TEST_F(Book, GivesLegalMovesWithTheirWeights) {
    Open({{1, Word(e2, e4), 1},
          {start_key, Word(e2, e4), 30},
          {start_key, Word(e2, e5), 20},
          {start_key, Word(d2, d4), 0},
          {start_key, 0, 5},
          {start_key, Word(g1, f3), 10},
          {~0ULL, Word(a2, a3), 1}});
    EXPECT_EQ(Texts(start_fen), (Lines{"e2e4 30", "g1f3 10"}));
    EXPECT_EQ(Texts("4k3/8/8/8/8/8/8/4K3 w - - 0 1"), Lines{});
}

TEST_F(Book, FindsTheFirstAndTheLastEntry) {
    for (const int before : {0, 1, 2, 5, 100}) {
        for (const int after : {0, 1, 3, 100}) {
            std::vector<Entry> entries;
            for (int i = 0; i < before; ++i) entries.push_back({static_cast<std::uint64_t>(i), Word(a2, a3), 1});
            entries.push_back({start_key, Word(e2, e4), 9});
            for (int i = 0; i < after; ++i)
                entries.push_back({start_key + 1 + static_cast<std::uint64_t>(i), Word(a2, a3), 1});
            Open(entries);
            EXPECT_EQ(Texts(start_fen), Lines{"e2e4 9"}) << before << ' ' << after;
        }
    }
}

TEST_F(Book, CastlesByTakingTheRookOrPlainly) {
    constexpr std::string_view fen = "r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1";
    const std::uint64_t key = PolyglotKey(BoardFromFen(std::string(fen)));
    Open({{key, Word(e1, h1), 1}, {key, Word(e1, a1), 2}, {key, Word(e1, g1), 3}});
    EXPECT_EQ(Texts(fen), (Lines{"e1g1 1", "e1c1 2", "e1g1 3"}));
    constexpr std::string_view black_fen = "r3k2r/8/8/8/8/8/8/R3K2R b KQkq - 0 1";
    const std::uint64_t black_key = PolyglotKey(BoardFromFen(std::string(black_fen)));
    Open({{black_key, Word(e8, h8), 1}, {black_key, Word(e8, a8), 2}});
    EXPECT_EQ(Texts(black_fen), (Lines{"e8g8 1", "e8c8 2"}));
}

TEST_F(Book, RookThatGoesToTheCornerIsNoCastling) {
    constexpr std::string_view fen = "3k4/8/8/8/8/8/8/4R1K1 w - - 0 1";
    Open({{PolyglotKey(BoardFromFen(std::string(fen))), Word(e1, a1), 2}});
    EXPECT_EQ(Texts(fen), Lines{"e1a1 2"});
}

TEST_F(Book, Promotes) {
    constexpr std::string_view fen = "8/P6k/8/8/8/8/7K/8 w - - 0 1";
    const std::uint64_t key = PolyglotKey(BoardFromFen(std::string(fen)));
    Open({{key, Word(a7, a8, 1), 1}, {key, Word(a7, a8, 4), 2}, {key, Word(a7, a8), 3}});
    EXPECT_EQ(Texts(fen), (Lines{"a7a8N 1", "a7a8 2"}));
}

TEST_F(Book, ChoosesByWeight) {
    Open({{start_key, Word(e2, e4), 3}, {start_key, Word(d2, d4), 0}, {start_key, Word(g1, f3), 1}});
    std::map<std::string, int> times;
    for (std::uint64_t chance = 0; chance < 40; ++chance) {
        ++times[MoveToCoordinate(book_.Choose(BoardFromFen(start_fen), chance))];
    }
    EXPECT_EQ(times, (std::map<std::string, int>{{"e2e4", 30}, {"g1f3", 10}}));
    EXPECT_EQ(book_.Choose(BoardFromFen("4k3/8/8/8/8/8/8/4K3 w - - 0 1"), 5), INVALID);
}

TEST_F(Book, ThatIsNoneIsRefused) {
    EXPECT_FALSE(book_.Open(directory_.File("none")));
    EXPECT_FALSE(book_.Open(directory_.path()));
    EXPECT_FALSE(book_.Open(Write({{start_key, Word(e2, e4), 3}}, "x"))) << "no whole number of entries";
    EXPECT_FALSE(book_.Open(Write({{5, 1, 1}, {4, 1, 1}}))) << "keys out of order";
    EXPECT_FALSE(book_.IsOpen());
    EXPECT_TRUE(book_.Find(BoardFromFen(start_fen)).empty());
    EXPECT_EQ(book_.Choose(BoardFromFen(start_fen), 0), INVALID);
}

TEST_F(Book, OfNoEntriesKnowsNothing) {
    EXPECT_TRUE(book_.Open(Write({})));
    EXPECT_TRUE(book_.Find(BoardFromFen(start_fen)).empty());
}

TEST_F(Book, CutShortWhileInUseKnowsNothingMore) {
    Open({{1, 1, 1}, {2, 1, 1}, {start_key, Word(e2, e4), 3}});
    Write({{1, 1, 1}});
    EXPECT_TRUE(book_.Find(BoardFromFen(start_fen)).empty());
}

}  // namespace
