#include "selfplay/openings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <string>

#include "support/temporary_directory.h"

namespace {

std::vector<Opening> Read(const std::string& text, std::uint32_t most_plies = 1000) {
    std::istringstream file(text);
    return ReadOpenings(file, most_plies);
}

std::string WhyRefused(const std::string& text) {
    try {
        (void)Read(text);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing was refused";
}

constexpr const char* two_lines =
    "# a comment\n\n"
    "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq - bm Nf3; id \"open\";\n"
    "8/8/1k1p4/1P1P1p2/K4P2/8/8/8 b - - 4 60\r\n";

constexpr const char* two_games =
    "[Event \"?\"]\n\n1. e4 e5 2. Nf3 Nc6 1-0\n\n"
    "[FEN \"4k3/8/8/8/8/8/4P3/4K3 w - - 0 1\"]\n\n1. e4 {+0.10/5} Ke7 *\n";

TEST(Openings, LinesOfPositions) {
    const auto openings = Read(two_lines);
    ASSERT_EQ(openings.size(), 2U);
    EXPECT_EQ(openings[0].position.side_to_move(), white);
    EXPECT_EQ(openings[1].position.side_to_move(), black);
    EXPECT_TRUE(openings[1].position.GetFen().starts_with("8/8/1k1p4/1P1P1p2/K4P2/8/8/8 b - - "));
}

TEST(Openings, GamesWithTheirMoves) {
    const auto openings = Read(two_games);
    ASSERT_EQ(openings.size(), 2U);
    EXPECT_EQ(openings[0].position.made_moves().size(), 4U);
    EXPECT_FALSE(openings[0].position.IsGameOver()) << "the result of the game that is read counts for nothing";
    EXPECT_EQ(openings[1].position.made_moves().size(), 2U);
    EXPECT_TRUE(openings[1].position.GetFen().starts_with("8/4k3/8/8/4P3/8/8/4K3 w"));
}

TEST(Openings, MarkOfAnEditorIsNoPartOfThem) {
    EXPECT_EQ(Read(std::string("\xEF\xBB\xBF").append(two_games)).size(), 2U);
    EXPECT_EQ(Read(std::string("\xEF\xBB\xBF").append(two_lines)).size(), 2U);
}

TEST(Openings, GamesAreFollowedSoFarOnly) {
    const auto openings = Read(two_games, 3);
    EXPECT_EQ(openings[0].position.made_moves().size(), 3U);
    EXPECT_EQ(openings[1].position.made_moves().size(), 2U);
}

TEST(Openings, WhatIsNoneIsToldWithItsPlace) {
    EXPECT_EQ(WhyRefused(""), "no openings");
    EXPECT_EQ(WhyRefused("# nothing\n"), "no openings");
    EXPECT_EQ(WhyRefused("8/8/8/8/8/8/8/K1k5 w - -\n"), "line 1: the game is over");
    EXPECT_EQ(WhyRefused("4k3/8/8/8/8/8/4P3/4K3 w - -\nnonsense\n"), "line 2: no position");
    EXPECT_EQ(WhyRefused("[Event \"?\"]\n\n1. e4 e5 *\n\n[Event \"?\"]\n\n1. e5 *\n"),
              "game 2: a move in it can't be played");
    const std::string unread =
        "game 1: it can't be read: it has no result, or what is no move (variations and glyphs can't be read either)";
    EXPECT_EQ(WhyRefused("[Event \"?\"]\n\n1. e4 (1. d4) *\n"), unread);
    EXPECT_EQ(WhyRefused("[Event \"?\"]\n"), unread);
    EXPECT_EQ(WhyRefused("[FEN \"8/8/8/8/8/8/8/8 w - - 0 1\"]\n\n1. e4 *\n"), "game 1: no position");
    EXPECT_EQ(WhyRefused("\xEF\xBB\xBFnonsense\n"), "line 1: no position");
    EXPECT_EQ(WhyRefused("[Event \"?\"]\n\n1. f3 e5 2. g4 Qh4# 0-1\n"), "game 1: the game is over");
}

std::vector<std::string> FensOf(const std::vector<Opening>& openings) {
    std::vector<std::string> fens;
    for (const Opening& opening : openings) fens.push_back(opening.position.GetFen());
    return fens;
}

TEST(Openings, SeedGivesTheOrder) {
    std::ifstream file(VORKA_TEST_DIRECTORY "/data/openings.epd");
    const auto openings = ReadOpenings(file, 0);
    auto plain = openings, shuffled = openings, again = openings, other = openings;
    Shuffle(plain, 0);
    Shuffle(shuffled, 7);
    Shuffle(again, 7);
    Shuffle(other, 8);
    EXPECT_EQ(FensOf(plain), FensOf(openings));
    EXPECT_EQ(FensOf(shuffled), FensOf(again));
    EXPECT_NE(FensOf(shuffled), FensOf(openings));
    EXPECT_NE(FensOf(shuffled), FensOf(other));
    EXPECT_NE(FingerprintOf(shuffled), FingerprintOf(other)) << "the order belongs to it";
    auto in_order = FensOf(shuffled), as_read = FensOf(openings);
    std::ranges::sort(in_order);
    std::ranges::sort(as_read);
    EXPECT_EQ(in_order, as_read) << "none is lost";
    EXPECT_EQ(std::ranges::adjacent_find(as_read), as_read.end()) << "none is there twice";
}

}  // namespace
