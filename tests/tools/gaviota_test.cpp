// Tables of three men against Gaviota's, distance by distance. Its library and the one for Syzygy have functions of the
// same names, and so are used by two programs.

#include <gtest/gtest.h>

#include <cstdio>
#include <optional>

#include "tools/table_oracles.h"

#ifdef VORKA_GAVIOTA
extern "C" {
#include <gtb-probe.h>
}
#endif

namespace {

using namespace VorkaTablebases;

#ifdef VORKA_GAVIOTA

/// The men of one side, as Gaviota's lists want them.
struct GaviotaSide {
    explicit GaviotaSide(const BOARD& board, Colour side) {
        std::size_t count = 0;
        for (Square s = a1; s <= h8; ++s) {
            const int man = side == white ? board.squares[s] : -board.squares[s];
            if (man <= 0) continue;
            squares[count] = static_cast<unsigned>(s);
            pieces[count++] = static_cast<unsigned char>(man);
        }
        squares[count] = tb_NOSQUARE;
        pieces[count] = tb_NOPIECE;
    }
    unsigned squares[17];
    unsigned char pieces[17];
};

/// The score as our tables tell it; nothing if Gaviota doesn't know.
std::optional<int> ScoreOfGaviota(const BOARD& board) {
    const GaviotaSide of_white(board, white);
    const GaviotaSide of_black(board, black);
    unsigned info = 0;
    unsigned plies = 0;
    if (tb_probe_hard(board.side_to_move, tb_NOSQUARE, tb_NOCASTLE, of_white.squares, of_black.squares, of_white.pieces,
                      of_black.pieces, &info, &plies) == 0) {
        return std::nullopt;
    }
    if (info == tb_DRAW) return 0;
    const int score = 32767 - static_cast<int>(plies);
    return (info == tb_WMATE) == (board.mover() == white) ? score : -score;
}

TEST_F(TableOracles, ThreeMenAreAsGaviotaKnowsThem) {
    const char* const folder = "/usr/share/gaviotatb/gtb4";
    if (!std::filesystem::exists(folder)) GTEST_SKIP() << "Debian's package gaviotatb is not installed";
    const char* paths[] = {folder, nullptr};
    tb_init(0, tb_CP4, paths);
    tbcache_init(1 << 20, 0);
    std::uint64_t positions = 0;
    for (const Material& material : MaterialsOf(3)) {
        ForEachPositionOf(material, 1, [&](const BOARD& board) {
            ++positions;
            ASSERT_EQ(ScoreIn(*tables_, board), ScoreOfGaviota(board)) << FenOf(board);
        });
    }
    tbcache_done();
    tb_done();
    std::printf("%llu positions\n", static_cast<unsigned long long>(positions));
    EXPECT_GT(positions, 300000U);
}

#else

TEST_F(TableOracles, ThreeMenAreAsGaviotaKnowsThem) {
    GTEST_SKIP() << "Debian's package libgaviotatb-dev was not installed when this was built";
}

#endif

}  // namespace
