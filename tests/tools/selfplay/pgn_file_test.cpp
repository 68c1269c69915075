#include "selfplay/pgn_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <stdexcept>
#include <string>

#include "support/temporary_directory.h"

namespace {

std::string Game(int number) {
    return "[Event \"Self-play\"]\n[Round \"" + std::to_string(number) + "\"]\n\n1. e4 {+0.30/5} " +
           std::string(static_cast<std::size_t>(100 * number), '*') + "\n\n";
}

std::string Games(int first, int last) {
    std::string text;
    for (int number = first; number <= last; ++number) text += Game(number);
    return text;
}

TEST(LengthKept, IsHowMuchOfTheGamesStandsAtTheEnd) {
    EXPECT_EQ(LengthKept("", Games(1, 3)), 0U);
    EXPECT_EQ(LengthKept(Games(1, 3), ""), 0U);
    EXPECT_EQ(LengthKept(Games(4, 6), Games(1, 3)), 0U);
    const std::string known = Games(1, 4);
    for (std::size_t length = 0; length <= known.size(); ++length) {
        EXPECT_EQ(LengthKept(known.substr(0, length), known), length);
        EXPECT_EQ(LengthKept(Games(5, 6) + known.substr(0, length), known), length);
    }
    EXPECT_EQ(LengthKept(Games(1, 6), known), known.size()) << "more than is known stands there";
}

class GamesInPgn : public testing::Test {
  protected:
    [[nodiscard]] std::string WhyRefused(const std::string& place) const {
        try {
            const PgnFile file(place, "");
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "nothing was refused";
    }

    TemporaryDirectory folder;
    std::string path = folder.File("games.pgn");
};

TEST_F(GamesInPgn, AreAddedToWhatStandsThere) {
    PgnFile(path, "").Add(Game(1));
    PgnFile(path, "").Add(Game(2));
    EXPECT_EQ(TextOf(path), Games(1, 2));
}

TEST_F(GamesInPgn, ThatWereCutOffAreCompleted) {
    const std::string whole = Game(9) + Games(1, 3);
    std::ofstream(path, std::ios::binary) << whole.substr(0, whole.size() - 150);
    PgnFile(path, Games(1, 3)).Add(Game(4));
    EXPECT_EQ(TextOf(path), Game(9) + Games(1, 4));
}

TEST_F(GamesInPgn, NeedARegularFile) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(WhyRefused(path), "can't write " + path + ": no regular file");
    EXPECT_EQ(WhyRefused(folder.File("none/games.pgn")), "can't write " + folder.File("none/games.pgn"));
}

}  // namespace
