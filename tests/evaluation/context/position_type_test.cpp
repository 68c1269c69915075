#include "evaluation/context/position_type.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "support/board_builder.h"
#include "support/row_name.h"

namespace {

struct TypeRow {
    std::string_view name;
    std::string_view fen;
    int type;
    int previous_type = no_position_type;
};
std::ostream& operator<<(std::ostream& out, const TypeRow& row) { return out << row.fen; }

class PositionTypes : public testing::TestWithParam<TypeRow> {};

TEST_P(PositionTypes, FollowFromTheMaterial) {
    const TypeRow& row = GetParam();
    EXPECT_EQ(classify_position(BoardFromFen(std::string(row.fen)), row.previous_type), row.type);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(OpeningOrMiddleGame, PositionTypes, testing::Values(
    TypeRow{"start position", "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", opening},
    TypeRow{"no way back from a middle game", "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", middle_game, middle_game},
    TypeRow{"an opening may be forgotten", "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", opening, opening},
    TypeRow{"white developed and castled", "rnbqkbnr/pppppppp/8/8/2B2B2/2N2N2/PPPPPPPP/R2Q1RK1 w kq - 0 1", middle_game},
    TypeRow{"white developed with a right left", "rnbqkbnr/pppppppp/8/8/2B2B2/2N2N2/PPPPPPPP/R2QK2R w KQkq - 0 1", opening},
    TypeRow{"black developed and castled", "r2q1rk1/pppppppp/2n2n2/2b2b2/8/8/PPPPPPPP/RNBQKBNR w KQ - 0 1", middle_game},
    TypeRow{"one knight at home", "rnbqkbnr/pppppppp/8/8/2B2B2/5N2/PPPPPPPP/RN1Q1RK1 w kq - 0 1", opening},
    TypeRow{"a bishop at home, eight pawns", "rnbqkbnr/pppppppp/8/8/2B5/2N2N2/PPPPPPPP/R1BQ1RK1 w kq - 0 1", opening},
    TypeRow{"a bishop at home, six pawns each", "rnbqkbnr/pp1p1ppp/8/8/2B5/2N2N2/PP1P1PPP/R1BQ1RK1 w kq - 0 1", middle_game},
    TypeRow{"a bishop at home, seven white pawns", "rnbqkbnr/pp1p1ppp/8/8/2B5/2N2N2/PP1PPPPP/R1BQ1RK1 w kq - 0 1", opening},
    TypeRow{"a bishop at home, seven black pawns", "rnbqkbnr/pp1ppppp/8/8/2B5/2N2N2/PP1P1PPP/R1BQ1RK1 w kq - 0 1", opening},
    TypeRow{"a black bishop at home, six pawns each", "r1bq1rk1/pp1p1ppp/2n2n2/2b5/8/8/PP1P1PPP/RNBQKBNR w KQ - 0 1", middle_game},
    TypeRow{"both bishops at home, no right", "rnbqkbnr/pp1p1ppp/8/8/8/2N2N2/PP1P1PPP/R1BQ1BKR w kq - 0 1", opening},
    TypeRow{"no bishop at home with rights, six pawns", "rnbqkbnr/pp1p1ppp/8/8/2B2B2/2N2N2/PP1P1PPP/R2QK2R w KQkq - 0 1", middle_game},
    TypeRow{"one bishop at home with rights, six pawns", "rnbqkbnr/pp1p1ppp/8/8/2B5/2N2N2/PP1P1PPP/R1BQK2R w KQkq - 0 1", opening},
    TypeRow{"a black knight on its square is at home", "1n4k1/pp1q1ppp/8/8/2B2B2/8/PP1P1PPP/RN1Q1RK1 w - - 0 1", opening},
    TypeRow{"a white knight on g1 is at home", "rnbqkbnr/pp1p1ppp/8/8/2B2B2/2N5/PP1P1PPP/R2Q1RNK w kq - 0 1", opening},
    TypeRow{"the bishop on f1 at home, six pawns each", "rnbqkbnr/pp1p1ppp/8/8/5B2/2N2N2/PP1P1PPP/R2Q1BKR w kq - 0 1", middle_game},
    TypeRow{"the short right suffices", "rnbqkbnr/pppppppp/8/8/2B2B2/2N2N2/PPPPPPPP/R2QK2R w Kkq - 0 1", opening},
    TypeRow{"the long right suffices", "rnbqkbnr/pppppppp/8/8/2B2B2/2N2N2/PPPPPPPP/R2QK2R w Qkq - 0 1", opening},
    TypeRow{"black developed with a right left, eight pawns", "r2qk2r/pppppppp/2n2n2/2b2b2/8/8/PPPPPPPP/RNBQKBNR w KQk - 0 1", opening},
    TypeRow{"black developed with a right left, six pawns each", "r2qk2r/pp1p1ppp/2n2n2/2b2b2/8/8/PP1P1PPP/RNBQKBNR w KQq - 0 1", middle_game},
    TypeRow{"a black bishop at home with rights, six pawns", "r1bqk2r/pp1p1ppp/2n2n2/2b5/8/8/PP1P1PPP/RNBQKBNR w KQkq - 0 1", opening},
    TypeRow{"the bishop on f8 at home, six pawns each", "r2q1bkr/pp1p1ppp/2n2n2/5b2/8/8/PP1P1PPP/RNBQKBNR w KQ - 0 1", middle_game},
    TypeRow{"a black bishop at home, seven white pawns", "r1bq1rk1/pp1p1ppp/2n2n2/2b5/8/8/PP1PPPPP/RNBQKBNR w KQ - 0 1", opening},
    TypeRow{"both black bishops at home, no right", "r1bq1bkr/pp1p1ppp/2n2n2/8/8/8/PP1P1PPP/RNBQKBNR w KQ - 0 1", opening},
    TypeRow{"a black knight on b8 is at home", "rn1q1rk1/pp1p1ppp/5n2/2b2b2/8/8/PP1P1PPP/RNBQKBNR w KQ - 0 1", opening},
    TypeRow{"a black knight on g8 is at home", "r2q1rnk/pp1p1ppp/2n5/2b2b2/8/8/PP1P1PPP/RNBQKBNR w KQ - 0 1", opening},
    TypeRow{"black developed, a white bishop at home", "r2q1rk1/pppppppp/2n2n2/2b2b2/2B5/2N2N2/PPPPPPPP/R1BQ1RK1 w - - 0 1", middle_game},
    TypeRow{"24 units of Black", "q1r1b1kn/pppp4/8/8/8/8/PPPP4/6K1 w - - 0 1", middle_game},
    TypeRow{"21 units of Black", "q1r1b1k1/pppp4/8/8/8/8/PPPP4/6K1 w - - 0 1", unbalanced_ending},
    TypeRow{"24 units are a middle game", "6k1/pppp4/8/8/8/8/PPPP4/Q1R1B1KN w - - 0 1", middle_game},
    TypeRow{"the enemy's queen counts three too", "3q2k1/pppp4/8/8/8/8/PPPP4/R1R1BBNK w - - 0 1", middle_game},
    TypeRow{"21 units are an ending", "6k1/pppp4/8/8/8/8/PPPP4/Q1R1B1K1 w - - 0 1", unbalanced_ending},
    TypeRow{"two rooks, three minors: 19", "6k1/pppp4/8/8/8/8/PPPP4/R1R1BBNK w - - 0 1", unbalanced_ending},
    TypeRow{"two rooks, four minors: 22", "6k1/pppp4/8/8/8/5N2/PPPP4/R1R1BBNK w - - 0 1", middle_game}),
    RowName<TypeRow>);

INSTANTIATE_TEST_SUITE_P(Endings, PositionTypes, testing::Values(
    TypeRow{"no pawns", "4k3/8/8/8/8/8/8/R3K2R w - - 0 1", pawnless},
    TypeRow{"no pawns behind a middle game", "rnbqkbnr/8/8/8/8/8/8/RNBQKBNR w - - 0 1", pawnless, middle_game},
    TypeRow{"kings and pawns", "4k3/4p3/8/8/8/8/4P3/4K3 w - - 0 1", pawn_ending},
    TypeRow{"knight without pawns", "4k3/4p3/8/8/8/8/8/4K1N1 w - - 0 1", lone_knight},
    TypeRow{"black knight without pawns", "4k1n1/8/8/8/8/8/4P3/4K3 w - - 0 1", lone_knight},
    TypeRow{"knight with a pawn", "4k3/4p3/8/8/8/8/4P3/4K1N1 w - - 0 1", unbalanced_ending},
    TypeRow{"knight with the only pawn", "4k3/8/8/8/8/8/4P3/4K1N1 w - - 0 1", unbalanced_ending},
    TypeRow{"bishop without pawns", "4k3/4p3/8/8/8/8/8/4K1B1 w - - 0 1", lone_bishop},
    TypeRow{"rook without pawns", "4k3/4p3/8/8/8/8/8/4K2R w - - 0 1", lone_rook},
    TypeRow{"rook with a pawn", "4k3/4p3/8/8/8/8/4P3/4K2R w - - 0 1", unbalanced_ending},
    TypeRow{"rook against a pawnless king", "4k3/8/8/8/8/8/4P3/4K2R w - - 0 1", pawnless},
    TypeRow{"black rook against a pawnless king", "4k2r/4p3/8/8/8/8/8/4K3 w - - 0 1", pawnless},
    TypeRow{"queen without pawns", "4k3/4p3/8/8/8/8/8/3QK3 w - - 0 1", lone_queen},
    TypeRow{"black bishop without pawns", "4k1b1/8/8/8/8/8/4P3/4K3 w - - 0 1", lone_bishop},
    TypeRow{"bishop with a pawn", "4k3/4p3/8/8/8/8/4P3/4K1B1 w - - 0 1", unbalanced_ending},
    TypeRow{"black rook without pawns", "4k2r/8/8/8/8/8/4P3/4K3 w - - 0 1", lone_rook},
    TypeRow{"black queen without pawns", "3qk3/8/8/8/8/8/4P3/4K3 w - - 0 1", lone_queen},
    TypeRow{"queen with a pawn", "4k3/4p3/8/8/8/8/4P3/3QK3 w - - 0 1", unbalanced_ending},
    TypeRow{"three minors have no queen", "4k3/4p3/8/8/8/8/8/2BBKN2 w - - 0 1", unbalanced_ending},
    TypeRow{"knight against knight", "4k1n1/4p3/8/8/8/8/4P3/4K1N1 w - - 0 1", knight_against_knight},
    TypeRow{"knight against bishop", "4k1b1/4p3/8/8/8/8/4P3/4K1N1 w - - 0 1", knight_against_bishop},
    TypeRow{"bishop against knight", "4k1n1/4p3/8/8/8/8/4P3/4K1B1 w - - 0 1", knight_against_bishop},
    TypeRow{"bishops on one colour", "4k1b1/4p3/8/8/8/8/4P3/4KB2 w - - 0 1", same_coloured_bishops},
    TypeRow{"bishops on different colours", "4k1b1/4p3/8/8/8/8/4P3/4K1B1 w - - 0 1", opposite_bishops},
    TypeRow{"two knights of one side", "4k3/4p3/8/8/8/8/4P3/4K1NN w - - 0 1", unbalanced_ending},
    TypeRow{"rook against bishop", "4k1b1/4p3/8/8/8/8/4P3/4K2R w - - 0 1", rook_against_minor},
    TypeRow{"knight against rook", "4k2r/4p3/8/8/8/8/4P3/4K1N1 w - - 0 1", rook_against_minor},
    TypeRow{"rook and knight of one side", "4k3/4p3/8/8/8/8/4P3/4K1NR w - - 0 1", unbalanced_ending},
    TypeRow{"rook against rook", "4k2r/4p3/8/8/8/8/4P3/4K2R w - - 0 1", rook_ending},
    TypeRow{"two rooks of one side", "4k3/4p3/8/8/8/8/4P3/R3K2R w - - 0 1", unbalanced_ending},
    TypeRow{"two rooks each", "r3k2r/4p3/8/8/8/8/4P3/R3K2R w - - 0 1", rook_ending},
    TypeRow{"three rooks against one", "4k2r/4p3/8/8/8/8/4P3/R2RK2R w - - 0 1", unbalanced_ending},
    TypeRow{"three rooks against one without pawns", "4k2r/8/8/8/8/8/4P3/R2RK2R w - - 0 1", pawnless},
    TypeRow{"queen against rook", "4k2r/4p3/8/8/8/8/4P3/3QK3 w - - 0 1", queen_against_rook},
    TypeRow{"queen and rook of one side", "4k3/4p3/8/8/8/8/4P3/3QK2R w - - 0 1", unbalanced_ending},
    TypeRow{"queen against queen", "3qk3/4p3/8/8/8/8/4P3/3QK3 w - - 0 1", queen_ending},
    TypeRow{"six minors, equal: 18 units", "1nb1kb2/4p3/8/8/8/8/4P3/1NB1KB2 w - - 0 1", balanced_ending},
    TypeRow{"rook against three minors: 14 units", "4k2r/4p3/8/8/8/8/4P3/2B1KNN1 w - - 0 1", unbalanced_ending},
    TypeRow{"two rooks against rook and bishop: 18 units", "4kb1r/4p3/8/8/8/8/4P3/R3K2R w - - 0 1", unbalanced_ending},
    TypeRow{"queen and rook against two bishops: 20 units", "2b1kb2/4p3/8/8/8/8/4P3/3QK2R w - - 0 1", unbalanced_ending},
    TypeRow{"two bishops each: 12 units", "2b1kb2/4p3/8/8/8/8/4P3/2B1KB2 w - - 0 1", balanced_ending},
    TypeRow{"rook and bishop each", "4kb1r/4p3/8/8/8/8/4P3/4KB1R w - - 0 1", balanced_ending},
    TypeRow{"white without pawns, four behind", "3rkb2/4p3/8/8/8/8/8/2B1K1N1 w - - 0 1", unbalanced_ending},
    TypeRow{"white without pawns, five behind", "2r1kb2/4p3/8/8/8/8/8/2B1K3 w - - 0 1", pawnless},
    TypeRow{"black without pawns, five behind", "2b1k3/8/8/8/8/8/4P3/2R1KB2 w - - 0 1", pawnless},
    TypeRow{"black without pawns, four behind", "2b1k1n1/8/8/8/8/8/4P3/3RKB2 w - - 0 1", unbalanced_ending}),
    RowName<TypeRow>);
// clang-format on

}  // namespace
