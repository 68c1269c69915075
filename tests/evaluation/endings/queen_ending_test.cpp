#include <gtest/gtest.h>

#include <ostream>
#include <string_view>

#include "evaluation/endings/ending.h"
#include "evaluation/endings/queen_ending.h"
#include "evaluation/pawns/passed_pawns.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

/// Queen against queen.

namespace {

enum class Checks { not_needed, none, own_alone, both };  ///< not_needed: the side to move stands no worse

struct QueenRow {
    std::string_view name;
    std::string_view fen;
    int shift;  ///< what the queens' places, passed pawns and half of the material add to the plain ending
    Checks checks = Checks::not_needed;
    int pawns = 0;  ///< next to the king of the side that is not to move, on the files b to g
};
std::ostream& operator<<(std::ostream& out, const QueenRow& row) { return out << row.name; }

int QueenEndingFromPlain(const QueenRow& row, int plain) {
    const int sum = plain + row.shift;
    if (row.checks == Checks::not_needed) {
        EXPECT_GE(sum, 0);
        return sum;
    }
    EXPECT_LT(sum, 0);
    if (row.checks == Checks::none) return sum;
    const int times = sum * (row.checks == Checks::both ? 5 : 3);
    return (row.pawns == 0 ? 4 : 6 + row.pawns) * (times / 8) / 8;
}

class QueenEndings : public testing::TestWithParam<QueenRow> {};
TEST_P(QueenEndings, AreAPlainEndingAndTheQueens) {
    for (const bool exchange : {false, true}) {
        SCOPED_TRACE(exchange ? "colours exchanged" : "as written");
        const BOARD as_written = BoardFromFen(FenOfRow(GetParam().fen));
        EvaluationBuilder position{exchange ? WithColoursExchanged(as_written) : as_written, {}};
        ASSERT_EQ(position.Type(), 4);
        const auto result = [&](auto routine, int bound) {
            position.context = EVALUATION_CONTEXT(&position.settings);
            find_passed_pawns(position.context, position.board);
            return routine(position.context, position.board, bound);
        };
        int bound = -1000;
        while (result(evaluate_ending, bound).lazy) ASSERT_LE(bound += 200, 1000);
        const EVALUATION_RESULT plain = result(evaluate_ending, bound), found = result(evaluate_queen_ending, bound);
        EXPECT_FALSE(found.lazy);
        EXPECT_EQ(found.score, QueenEndingFromPlain(GetParam(), plain.score));
        for (const int far : {-5000, 5000}) {
            EXPECT_TRUE(result(evaluate_queen_ending, far).lazy);
            EXPECT_EQ(result(evaluate_queen_ending, far).score, result(evaluate_ending, far).score);
        }
    }
}

// clang-format off
// Queens on d5 and a2 are worth 7 and -4, those on d5 and b8 too; a foremost passed pawn -50, -52, -30, 10, 75 or 160 by
// rank, none -45.
INSTANTIATE_TEST_SUITE_P(QueensAndChecks, QueenEndings, testing::Values(
    QueenRow{"no passed pawns", "6k1/5ppp/8/3Q4/8/8/q4PPP/6K1", 24 + 7 + 4},
    QueenRow{"a2", "1q4k1/5pp1/8/3Q4/8/8/P4PP1/6K1", -50 + 24 + 7 + 4 - 50 + 45},
    QueenRow{"a3", "1q4k1/5pp1/8/3Q4/8/P7/5PP1/6K1", -50 + 24 + 7 + 4 - 52 + 45},
    QueenRow{"a4", "1q4k1/5pp1/8/3Q4/P7/8/5PP1/6K1", -50 + 24 + 7 + 4 - 30 + 45},
    QueenRow{"a5", "1q4k1/5pp1/8/P2Q4/8/8/5PP1/6K1", -50 + 24 + 7 + 4 + 10 + 45},
    QueenRow{"a6", "1q4k1/5pp1/P7/3Q4/8/8/5PP1/6K1", -50 + 24 + 7 + 4 + 75 + 45},
    QueenRow{"a7", "1q4k1/P4pp1/8/3Q4/8/8/5PP1/6K1", -50 + 24 + 7 + 4 + 160 + 45},
    QueenRow{"the foremost of two", "1q4k1/5pp1/2P5/3Q4/8/P7/5PP1/6K1", -100 + 24 + 7 + 4 + 75 + 45},
    QueenRow{"passed pawns of both", "6k1/5p2/P7/3Q4/8/7p/q4P2/6K1", 24 + 7 + 4 + 75 - 75},
    QueenRow{"no check helps", "6k1/5ppp/6q1/ppp5/8/8/1Q3PPP/6K1", 150 + 24 - 3 + 1 - 45 + 30, Checks::none},
    QueenRow{"the other side alone has checks", "6k1/5ppp/7Q/ppp5/8/8/2q2PPP/6K1", 150 + 24 - 4 + 1 - 45 + 30, Checks::none},
    QueenRow{"checks of the side to move", "6k1/1Q3ppp/8/ppp5/8/7q/5PPP/6K1", 150 + 24 - 3 + 4 - 45 + 30, Checks::own_alone, 2},
    QueenRow{"both have checks", "6k1/5ppp/8/ppp1Q3/2q5/8/5PPP/6K1", 150 + 24 + 7 - 5 - 45 + 30, Checks::both, 2},
    QueenRow{"a pawn before the king", "6k1/6pp/7q/ppp5/8/8/5PPP/3Q2K1", 100 + 24 - 4 + 4 - 45 + 30, Checks::own_alone, 1},
    QueenRow{"a pawn two ranks before it", "6k1/2Q2p1p/6p1/ppp5/8/5q2/5PPP/6K1", 150 + 24 - 1 - 3 - 45 + 30, Checks::both, 1},
    QueenRow{"a pawn guards the only check", "6k1/q5p1/5p1p/ppp5/8/8/5PPP/2Q3K1", 150 + 24 - 4 + 4 - 45 + 30, Checks::none},
    QueenRow{"a pawn of the checking side", "8/8/3Q1ppp/ppp3k1/6P1/1q6/5P1P/6K1", 150 + 24 + 5 + 1 - 45 + 30, Checks::both, 2},
    QueenRow{"a rook pawn", "6k1/7p/1q6/ppp5/8/Q7/5PPP/6K1", 50 + 24 - 4 + 1 - 50 + 30, Checks::own_alone, 0},
    QueenRow{"the king in the corner, a7 and b7", "k7/pp6/8/5ppp/8/5q2/PPP5/1K2Q3", 100 + 24 - 4 - 3 - 45 + 30, Checks::own_alone, 1},
    QueenRow{"the king in the corner, a7", "k7/p6Q/8/5ppp/8/5q2/PPP5/1K6", 50 + 24 - 4 - 3 - 50 + 30, Checks::both, 0},
    QueenRow{"doubled b-pawns", "k7/1p6/1p5Q/5ppp/3q4/8/PPP5/1K6", 100 + 24 - 4 - 7 - 45 + 30, Checks::both, 1}), RowName<QueenRow>);
// clang-format on

}  // namespace
