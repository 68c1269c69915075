#include "evaluation/pawns/pawn_structure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string_view>
#include <vector>

#include "support/evaluation_builder.h"
#include "support/random_games.h"
#include "support/row_name.h"

namespace {

struct FilesRow {
    std::string_view name;
    std::string_view fen;
    unsigned files_without_white_pawn;
    unsigned files_without_black_pawn;
    int only_open_file;
};
std::ostream& operator<<(std::ostream& out, const FilesRow& row) { return out << row.name; }

class OpenFiles : public testing::TestWithParam<FilesRow> {};

TEST_P(OpenFiles, HaveNoPawns) {
    const FilesRow& row = GetParam();
    EvaluationBuilder position(row.fen);
    find_open_files(position.context, position.board);
    EXPECT_EQ(position.context.files_without_pawn[white], row.files_without_white_pawn);
    EXPECT_EQ(position.context.files_without_pawn[black], row.files_without_black_pawn);
    EXPECT_EQ(position.context.pawn_count[white], PopCount(position.board.white_pieces().pawns));
    EXPECT_EQ(position.context.pawn_count[black], PopCount(position.board.black_pieces().pawns));
    EXPECT_EQ(position.context.only_open_file, row.only_open_file);
}

INSTANTIATE_TEST_SUITE_P(
    Pawns, OpenFiles,
    testing::Values(FilesRow{"none", "4k3/pppppppp/8/8/8/8/PPPPPPPP/4K3 w - - 0 1", 0, 0, -1},
                    FilesRow{"half open ones", "4k3/1ppppppp/8/8/8/8/PPPPPPP1/4K3 w - - 0 1", 0b10000000, 0b1, -1},
                    FilesRow{"one", "4k3/ppp1pppp/8/8/8/8/PPP1PPP1/4K3 w - - 0 1", 0b10001000, 0b1000, 3},
                    FilesRow{"the h-file", "4k3/ppppppp1/8/8/8/8/PPPPPPP1/4K3 w - - 0 1", 0b10000000, 0b10000000, 7},
                    FilesRow{"two", "4k3/ppp1ppp1/8/8/8/8/PPP1PPP1/4K3 w - - 0 1", 0b10001000, 0b10001000, -1},
                    FilesRow{"doubled pawns", "4k3/p7/p7/8/8/7P/7P/4K3 w - - 0 1", 0b01111111, 0b11111110, -1}),
    RowName<FilesRow>);

TEST(PawnAttacks, AreThoseOfEveryPawn) {
    ForEachRandomPosition(7, 28, 60, [](BOARD& board, const std::vector<Move>& /*moves*/) {
        EVALUATION_CONTEXT context;
        find_pawn_attacks(context, board);
        for (const Colour side : {white, black}) {
            for (Square s = a1; s <= h8; ++s) {
                // A pawn attacks a square if an enemy pawn on that square would attack the pawn's.
                const Bitboard from = bitboard_tables.pawn_attacks(Opponent(side))[s] & board.side(side).pawns;
                ASSERT_EQ(Has(context.pawns[side].attacks, s), from != 0) << FenOf(board) << ' ' << s;
                ASSERT_EQ(Has(context.pawns[side].attacked_once, s), PopCount(from) == 1) << FenOf(board) << ' ' << s;
                ASSERT_EQ(Has(context.pawns[side].attacked_twice, s), PopCount(from) == 2) << FenOf(board) << ' ' << s;
            }
        }
    });
}

}  // namespace
