#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "evaluation/pawns/front_distance.h"
#include "support/row_name.h"
#include "support/squares_text.h"
#include "support/term_rows.h"

/// What is known about pawns: squares of one side, told for White; how open the structure is; majorities. Each fact has
/// rows in which it holds and the nearest ones in which it does not.

namespace {

using FactOf = Bitboard (*)(const EVALUATION_CONTEXT& context, Colour side);

struct FactRow {
    std::string_view name;
    FactOf fact;
    std::string_view position;
    std::string_view squares;  ///< as SquaresText writes them
};
std::ostream& operator<<(std::ostream& out, const FactRow& row) { return out << row.name; }

template <Bitboard PAWN_INFO::*Field>
Bitboard Fact(const EVALUATION_CONTEXT& context, Colour side) {
    return context.pawns[side].*Field;
}
Bitboard OfBothSides(const EVALUATION_CONTEXT& context, Colour /*side*/) { return context.rams; }

constexpr FactOf passed = Fact<&PAWN_INFO::passed>;
constexpr FactOf attacks = Fact<&PAWN_INFO::attacks>;
constexpr FactOf once = Fact<&PAWN_INFO::attacked_once>;
constexpr FactOf twice = Fact<&PAWN_INFO::attacked_twice>;
constexpr FactOf dominated = Fact<&PAWN_INFO::dominated>;
constexpr FactOf defended = Fact<&PAWN_INFO::defended>;
constexpr FactOf blocked = Fact<&PAWN_INFO::blocked>;
constexpr FactOf restrained = Fact<&PAWN_INFO::restrained>;
constexpr FactOf duo = Fact<&PAWN_INFO::duo>;
constexpr FactOf doubled = Fact<&PAWN_INFO::doubled>;
constexpr FactOf advance = Fact<&PAWN_INFO::advance_squares>;
constexpr FactOf span = Fact<&PAWN_INFO::attack_span>;
constexpr FactOf isolated = Fact<&PAWN_INFO::isolated>;
constexpr FactOf backward = Fact<&PAWN_INFO::backward>;
constexpr FactOf stuck = Fact<&PAWN_INFO::backward_stuck>;
constexpr FactOf front = Fact<&PAWN_INFO::front_passed>;
constexpr FactOf covered = Fact<&PAWN_INFO::covered>;
constexpr FactOf gaps = Fact<&PAWN_INFO::centre_gaps>;
constexpr FactOf rams = OfBothSides;

class PawnFacts : public testing::TestWithParam<FactRow> {};

TEST_P(PawnFacts, AreFound) {
    const FactRow& row = GetParam();
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        const Bitboard found = row.fact(builder.context, own);
        EXPECT_EQ(SquaresText(own == white ? found : MirrorRanks(found)), row.squares) << row.position;
    });
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Passed, PawnFacts, testing::Values(
    FactRow{"passed alone", passed, "4k3/8/8/8/4P3/8/8/4K3", "e4"},
    FactRow{"not passed before a pawn", passed, "4k3/4p3/8/8/4P3/8/8/4K3", ""},
    FactRow{"not passed beside a pawn ahead", passed, "4k3/3p4/8/8/4P3/8/8/4K3", ""},
    FactRow{"passed beside a pawn of its rank", passed, "4k3/8/8/8/3pP3/8/8/4K3", "e4"},
    FactRow{"passed before a pawn behind", passed, "4k3/8/8/8/4P3/3p4/8/4K3", "e4"},
    FactRow{"passed two files away", passed, "4k3/2p3p1/8/8/4P3/8/8/4K3", "e4"},
    FactRow{"front passed is the foremost", front, "4k3/8/P7/8/P7/8/8/4K3", "a6"},
    FactRow{"beside an enemy", passed, "4k3/8/8/Pp6/8/8/8/4K3", "a5"},
    FactRow{"one rank below it", passed, "4k3/8/1p6/P7/8/8/8/4K3", ""},
    FactRow{"h-file against a7", passed, "4k3/p7/8/8/7P/8/8/4K3", "h4"},
    FactRow{"a-file against h7", passed, "4k3/7p/8/8/P7/8/8/4K3", "a4"},
    FactRow{"two on one file", passed, "4k3/8/2P5/8/8/2P5/8/4K3", "c3 c6"},
    FactRow{"the foremost of them", front, "4k3/8/2P5/8/8/2P5/8/4K3", "c6"},
    FactRow{"only the foremost is passed", passed, "4k3/8/1P6/8/p7/1P6/8/4K3", "b6"},
    FactRow{"on the seventh rank between enemies", passed, "1k6/5pPp/8/8/8/8/8/4K3", "g7"},
    FactRow{"three files, the foremost of each", front, "4k3/8/8/P6P/4P3/P6P/8/4K3", "a5 e4 h5"}),
    RowName<FactRow>);

INSTANTIATE_TEST_SUITE_P(Attacks, PawnFacts, testing::Values(
    FactRow{"attacks stay on the board", attacks, "4k3/8/8/8/P6P/8/8/4K3", "b5 g5"},
    FactRow{"attacked once and twice", once, "4k3/8/8/8/2P1P3/8/8/4K3", "b5 f5"},
    FactRow{"attacked twice", twice, "4k3/8/8/8/2P1P3/8/8/4K3", "d5"},
    FactRow{"dominated without the enemy", dominated, "4k3/8/8/8/4P3/8/8/4K3", "d5 f5"},
    FactRow{"one against one is not dominated", dominated, "4k3/8/4p3/8/4P3/8/8/4K3", ""},
    FactRow{"two against one is dominated", dominated, "4k3/8/4p3/8/2P1P3/8/8/4K3", "b5 d5"},
    FactRow{"two against two is not dominated", dominated, "4k3/8/2p1p3/8/2P1P3/8/8/4K3", ""},
    FactRow{"defended", defended, "4k3/8/8/8/4P3/3P4/8/4K3", "e4"},
    FactRow{"a neighbour does not defend", defended, "4k3/8/8/8/3PP3/8/8/4K3", ""},
    FactRow{"three pawns", attacks, "4k3/8/8/8/8/1P1P3P/8/4K3", "a4 c4 e4 g4"},
    FactRow{"once", once, "4k3/8/8/8/8/1P1P3P/8/4K3", "a4 e4 g4"},
    FactRow{"twice", twice, "4k3/8/8/8/8/1P1P3P/8/4K3", "c4"},
    FactRow{"from the seventh rank", attacks, "1k6/6P1/8/8/8/8/8/4K3", "f8 h8"},
    FactRow{"two against one", dominated, "4k3/8/8/5p2/8/5P1P/8/4K3", "g4"},
    FactRow{"one against two", dominated, "4k3/8/8/5p1p/8/5P2/8/4K3", ""},
    FactRow{"one against none", dominated, "4k3/8/8/8/6p1/7P/8/4K3", "g4"},
    FactRow{"defended", defended, "4k3/8/8/8/1P6/2P4P/6P1/4K3", "b4 h3"},
    FactRow{"rims don't defend", defended, "4k3/8/8/8/P7/7P/8/4K3", ""},
    FactRow{"an enemy in reach is not defended", defended, "4k3/8/8/8/6p1/7P/8/4K3", ""}),
    RowName<FactRow>);

INSTANTIATE_TEST_SUITE_P(Neighbours, PawnFacts, testing::Values(
    FactRow{"blocked by an enemy", blocked, "4k3/8/8/4n3/4P3/8/8/4K3", "e4"},
    FactRow{"blocked by a friend", blocked, "4k3/8/8/4N3/4P3/8/8/4K3", "e4"},
    FactRow{"not blocked", blocked, "4k3/8/4n3/8/4P3/8/8/4K3", ""},
    FactRow{"restrained by an attack on the next square", restrained, "4k3/8/3p4/8/4P3/8/8/4K3", "e4"},
    FactRow{"restrained when blocked", restrained, "4k3/8/8/4n3/4P3/8/8/4K3", "e4"},
    FactRow{"not restrained", restrained, "4k3/3p4/8/8/4P3/8/8/4K3", ""},
    FactRow{"duo", duo, "4k3/8/8/8/3PP3/8/8/4K3", "d4 e4"},
    FactRow{"no duo over a file", duo, "4k3/8/8/8/3P1P2/8/8/4K3", ""},
    FactRow{"no duo around the edge", duo, "4k3/8/8/8/P7/7P/8/4K3", ""},
    FactRow{"doubled", doubled, "4k3/8/8/8/4P3/2P5/4P3/4K3", "e2 e4"},
    FactRow{"isolated", isolated, "4k3/8/8/8/P3P2P/8/8/4K3", "a4 e4 h4"},
    FactRow{"not isolated beside a pawn far behind", isolated, "4k3/8/4P3/8/8/8/3P4/4K3", ""},
    FactRow{"blocked by the own king", blocked, "4k3/8/8/8/8/6K1/6P1/8", "g2"},
    FactRow{"the king beside its way", blocked, "4k3/8/8/8/8/5K2/6P1/8", ""},
    FactRow{"blocked on the last rank", blocked, "2n1k3/2P5/8/8/8/8/8/4K3", "c7"},
    FactRow{"blocked one behind another", blocked, "4k3/8/8/8/8/7P/7P/4K3", "h2"},
    FactRow{"restrained from g4", restrained, "4k3/8/8/8/6p1/8/7P/4K3", "h2"},
    FactRow{"not restrained from g5", restrained, "4k3/8/8/6p1/8/8/7P/4K3", ""},
    FactRow{"not restrained from the other rim", restrained, "4k3/8/8/8/p7/8/7P/4K3", ""},
    FactRow{"three in a row", duo, "4k3/8/8/8/8/5PPP/8/4K3", "f3 g3 h3"},
    FactRow{"rims are no neighbours", duo, "4k3/8/8/P7/7P/8/8/4K3", ""},
    FactRow{"an enemy is no partner", duo, "4k3/8/8/8/8/6Pp/8/4K3", ""},
    FactRow{"three on a file", doubled, "4k3/8/8/8/7P/7P/7P/4K3", "h2 h3 h4"},
    FactRow{"an enemy on the file", doubled, "4k3/8/8/7p/7P/8/8/4K3", ""},
    FactRow{"isolated on one file", isolated, "4k3/8/8/8/6P1/8/6P1/4K3", "g2 g4"},
    FactRow{"a neighbour far ahead", isolated, "4k3/7P/8/8/8/8/6P1/4K3", ""},
    FactRow{"isolated on both rims", isolated, "4k3/8/8/8/8/8/P6P/4K3", "a2 h2"}),
    RowName<FactRow>);

INSTANTIATE_TEST_SUITE_P(Advance, PawnFacts, testing::Values(
    FactRow{"advance to the end", advance, "4k3/8/8/8/8/8/4P3/4K3", "e3 e4 e5 e6 e7 e8"},
    FactRow{"advance stops before a pawn", advance, "4k3/8/4p3/8/8/8/4P3/4K3", "e3 e4 e5"},
    FactRow{"advance stops before an own pawn", advance, "4k3/8/8/4P3/8/8/4P3/4K3", "e3 e4 e6 e7 e8"},
    FactRow{"advance stops on a dominated square", advance, "4k3/8/3p4/8/8/8/4P3/4K3", "e3 e4 e5"},
    FactRow{"pieces do not stop it", advance, "4k3/8/8/8/4n3/8/4P3/4K3", "e3 e4 e5 e6 e7 e8"},
    FactRow{"attack span", span, "4k3/8/8/4P3/8/8/8/4K3", "d6 d7 d8 f6 f7 f8"},
    FactRow{"attack span of a blocked pawn", span, "4k3/8/4p3/4P3/8/8/8/4K3", "d6 f6"},
    FactRow{"centre gaps without pawns", gaps, "4k3/8/8/8/8/8/8/4K3", "d4 d5 e4 e5"},
    FactRow{"centre gaps beside a span", gaps, "4k3/8/8/8/8/8/2P5/4K3", "e4 e5"},
    FactRow{"no gap under a pawn", gaps, "4k3/8/8/3p4/4P3/8/8/4K3", "d4 e5"},
    FactRow{"to a square that h7 holds", advance, "4k3/7p/8/8/6P1/8/8/4K3", "g5 g6"},
    FactRow{"past a square that f5 fights for", advance, "4k3/7p/8/5P2/6P1/8/8/4K3", "f6 f7 f8 g5 g6 g7 g8"},
    FactRow{"the first square is held", advance, "4k3/8/8/8/6p1/8/7P/4K3", "h3"},
    FactRow{"rammed", advance, "4k3/8/8/1p6/1P6/8/8/4K3", ""},
    FactRow{"behind an own pawn", advance, "4k3/8/8/8/8/1P6/1P6/4K3", "b4 b5 b6 b7 b8"},
    FactRow{"from the seventh rank", advance, "4k3/1P6/8/8/8/8/8/4K3", "b8"},
    FactRow{"span on the left rim", span, "4k3/8/8/8/P7/8/8/4K3", "b5 b6 b7 b8"},
    FactRow{"span up to a held square", span, "4k3/8/8/8/6p1/8/7P/4K3", "g3 g4"},
    FactRow{"span of a rammed pawn", span, "4k3/8/8/8/8/6p1/6P1/4K3", "f3 h3"},
    FactRow{"span of a pawn before the last rank", span, "4k3/1P6/8/8/8/8/8/4K3", "a8 c8"},
    FactRow{"gaps beside g3", gaps, "4k3/8/8/4p3/8/6P1/8/4K3", "d4 d5 e4"},
    FactRow{"gaps beside f2 up to g5", gaps, "4k3/8/8/6p1/8/8/5P2/4K3", "d4 d5"},
    FactRow{"gaps beside f2 before f4", gaps, "4k3/8/8/8/5p2/8/5P2/4K3", "d4 d5 e5"},
    FactRow{"gaps beside f2 up to g4", gaps, "4k3/8/8/8/6p1/8/5P2/4K3", "d4 d5 e5"},
    FactRow{"no gaps between c2 and f2", gaps, "4k3/8/8/8/8/8/2P2P2/4K3", ""}),
    RowName<FactRow>);

INSTANTIATE_TEST_SUITE_P(Backward, PawnFacts, testing::Values(
    FactRow{"backward at home", backward, "4k3/8/8/3p4/3P4/4P3/8/4K3", "e3"},
    FactRow{"stuck at home", stuck, "4k3/8/8/3p4/3P4/4P3/8/4K3", "e3"},
    FactRow{"not backward with help from behind", backward, "4k3/8/8/3p4/8/4P3/3P4/4K3", ""},
    FactRow{"backward one step on", backward, "4k3/8/8/3p4/8/8/4P3/4K3", "e2"},
    FactRow{"stuck one step on", stuck, "4k3/8/8/3p4/8/8/4P3/4K3", "e2"},
    FactRow{"two steps on is far enough", backward, "4k3/8/3p4/8/8/8/4P3/4K3", ""},
    FactRow{"backward on the fourth rank", backward, "4k3/8/3p1p2/8/4P3/8/8/4K3", "e4"},
    FactRow{"not stuck on the fourth rank", stuck, "4k3/8/3p1p2/8/4P3/8/8/4K3", ""},
    FactRow{"not backward in a duo on the fourth rank", backward, "4k3/8/3p1p2/8/3PP3/8/8/4K3", ""},
    FactRow{"backward in a duo on the third rank", backward, "4k3/8/8/3p1p2/8/3PP3/8/4K3", "e3"},
    FactRow{"not stuck in a duo", stuck, "4k3/8/8/3p1p2/8/3PP3/8/4K3", ""},
    FactRow{"a2 against b4", backward, "4k3/8/8/8/1p6/8/P7/4K3", "a2"},
    FactRow{"a2 against b4, stuck", stuck, "4k3/8/8/8/1p6/8/P7/4K3", "a2"},
    FactRow{"a2 against b5", backward, "4k3/8/8/1p6/8/8/P7/4K3", "a2"},
    FactRow{"a2 against b6", backward, "4k3/8/1p6/8/8/8/P7/4K3", ""},
    FactRow{"a2 before a3", backward, "4k3/8/8/1p6/8/p7/P7/4K3", ""},
    FactRow{"a2 before a4", backward, "4k3/8/8/1p6/p7/8/P7/4K3", ""},
    FactRow{"b2 behind b3", backward, "4k3/8/8/p7/8/1P6/1P6/4K3", "b3"},
    FactRow{"g3 helped from f2", backward, "4k3/8/8/7p/8/6P1/5P2/4K3", ""},
    FactRow{"g3 with e2 too far", stuck, "4k3/8/8/7p/8/6P1/4P3/4K3", "g3"},
    FactRow{"e4, the way of d2 closed", backward, "4k3/8/3p4/8/4P3/3p4/3P4/4K3", "e4"},
    FactRow{"e4, the way of d2 open", backward, "4k3/8/3p4/8/4P3/8/3P4/4K3", ""},
    FactRow{"e4, d2 comes no further than d3", backward, "4k3/8/3p4/8/2p1P3/8/3P4/4K3", "d2"},
    FactRow{"g4 beside h4", backward, "4k3/8/5p1p/8/6PP/8/8/4K3", ""},
    FactRow{"g3 beside h3", backward, "4k3/8/8/5p1p/8/6PP/8/4K3", "g3"},
    FactRow{"g3 beside h3 is not stuck", stuck, "4k3/8/8/5p1p/8/6PP/8/4K3", ""},
    FactRow{"g2 beside h2", backward, "4k3/8/8/8/5p1p/8/6PP/4K3", "g2"},
    FactRow{"g2 beside h2 is not stuck", stuck, "4k3/8/8/8/5p1p/8/6PP/4K3", ""},
    FactRow{"g2 beside h2, one step on", backward, "4k3/8/8/5p1p/8/8/6PP/4K3", ""},
    FactRow{"b5 against a7", backward, "4k3/p7/8/1P6/8/8/8/4K3", "b5"},
    FactRow{"b5 against a7 is not stuck", stuck, "4k3/p7/8/1P6/8/8/8/4K3", ""},
    FactRow{"one against one", backward, "4k3/p7/8/1PP5/8/8/8/4K3", ""},
    FactRow{"b3 two steps from a6", backward, "4k3/8/p7/8/8/1P6/8/4K3", ""},
    FactRow{"rammed", backward, "4k3/8/3p4/4p3/4P3/8/8/4K3", ""}),
    RowName<FactRow>);

INSTANTIATE_TEST_SUITE_P(Covered, PawnFacts, testing::Values(
    FactRow{"covered before an enemy pawn", covered, "4k3/8/4p3/8/4P3/8/8/4K3", "e4"},
    FactRow{"covered behind a defended pawn", covered, "4k3/8/8/8/4P3/3P4/4P3/4K3", "e2"},
    FactRow{"not covered behind a loose pawn", covered, "4k3/8/8/8/4P3/8/4P3/4K3", ""},
    FactRow{"covered by a defended pawn", covered, "4k3/8/8/1P6/2P5/8/1P6/4K3", "b2"},
    FactRow{"covered by a loose pawn", covered, "4k3/8/8/1P6/3P4/8/1P6/4K3", ""},
    FactRow{"an enemy behind covers nothing", covered, "4k3/8/8/8/1P6/8/1p6/4K3", ""}),
    RowName<FactRow>);

INSTANTIATE_TEST_SUITE_P(Rams, PawnFacts, testing::Values(
    FactRow{"rams face one another", rams, "4k3/8/8/4p3/4P3/8/8/4K3", "e4 e5"},
    FactRow{"a pawn behind its own is a ram", rams, "4k3/8/8/8/4P3/4P3/8/4K3", "e3"},
    FactRow{"a piece makes no ram", rams, "4k3/8/8/4n3/4P3/8/8/4K3", ""},
    FactRow{"two on the rim", rams, "4k3/8/7P/7P/8/8/8/4K3", "h5"},
    FactRow{"two of the enemy", rams, "4k3/p7/p7/8/8/8/8/4K3", "a7"},
    FactRow{"three on a file", rams, "4k3/8/8/8/1P6/1P6/1P6/4K3", "b2 b3"},
    FactRow{"two before an enemy", rams, "4k3/8/8/1p6/1P6/1P6/8/4K3", "b3 b4 b5"},
    FactRow{"two back to back", rams, "4k3/8/8/8/1P6/1p6/8/4K3", ""},
    FactRow{"a rank between them", rams, "4k3/8/1p6/8/1P6/8/8/4K3", ""}),
    RowName<FactRow>);
// clang-format on

TEST(PawnFacts, FrontDistanceGoesToTheFirstStop) {
    struct Row {
        std::string_view position;
        int distance;
    };
    for (const Row& row :
         {Row{"4k3/8/4p3/8/8/8/4P3/4K3", 4}, Row{"4k3/8/8/8/4P3/3P4/4P3/4K3", 2}, Row{"4k3/8/8/8/4P3/8/4P3/4K3", 0},
          Row{"4k3/4p3/8/8/8/8/4P3/4K3", 5}, Row{"4k3/8/8/8/8/4p3/4P3/4K3", 1}, Row{"4k3/8/8/3p4/8/8/4P3/4K3", 0}}) {
        ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
            const int distance = own == white ? front_distance<white>(builder.context, builder.board, e2)
                                              : front_distance<black>(builder.context, builder.board, e7);
            EXPECT_EQ(distance, row.distance) << row.position;
        });
    }
}

TEST(PawnFacts, PassedRankIsThatOfTheForemost) {
    ForBothColours("4k3/8/P7/8/P6P/8/8/4K3", [](EvaluationBuilder& builder, Colour own) {
        const PAWN_INFO& info = builder.context.pawns[own];
        EXPECT_EQ(info.passed_rank, (std::array<std::int16_t, 8>{5, 0, 0, 0, 0, 0, 0, 3}));
        EXPECT_EQ(PopCount(info.passed), 3);
    });
}

struct OpennessRow {
    std::string_view name;
    std::string_view position;
    int openness;
};
std::ostream& operator<<(std::ostream& out, const OpennessRow& row) { return out << row.name; }
class Openness : public testing::TestWithParam<OpennessRow> {};

TEST_P(Openness, CountsFilesAndRams) {
    ForBothColours(GetParam().position, [&](EvaluationBuilder& builder, Colour /*own*/) {
        EXPECT_EQ(builder.context.openness, GetParam().openness);
    });
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Pawns, Openness, testing::Values(
    OpennessRow{"all pawns at home", "4k3/pppppppp/8/8/8/8/PPPPPPPP/4K3", 12 - 2 - 2 - 4},
    OpennessRow{"fifteen at most", "4k3/8/8/8/8/8/8/4K3", 15},
    OpennessRow{"one at least", "4k3/ppp2ppp/8/3pp3/3PP3/8/PPP2PPP/4K3", 1},
    OpennessRow{"one file without a white pawn", "4k3/pppppppp/8/8/8/8/PPPP1PPP/4K3", 12 + 1 - 2 - 1 - 3},
    OpennessRow{"two files without one", "4k3/pppppppp/8/8/8/8/PPP2PPP/4K3", 12 + 2 - 2 - 1 - 3},
    OpennessRow{"three files count as two", "4k3/pppppppp/8/8/8/8/PP3PPP/4K3", 12 + 2 - 2 - 1 - 2},
    OpennessRow{"an open file", "4k3/pppp1ppp/8/8/8/8/PPPP1PPP/4K3", 12 + 1 + 1 - 1 - 3},
    OpennessRow{"rams on the rim", "4k3/1ppppppp/8/p7/P7/8/1PPPPPPP/4K3", 12 - 2 - 2 - 4 + 2 - 2},
    OpennessRow{"rams in the centre", "4k3/pp1ppppp/8/2p5/2P5/8/PP1PPPPP/4K3", 1},
    OpennessRow{"one pawn", "4k3/8/8/8/8/8/P7/4K3", 15},
    OpennessRow{"a side without pawns", "4k3/pppppppp/8/8/8/8/8/4K3", 12 + 2 - 2 - 1 - 2},
    OpennessRow{"seven pawns of a side", "4k3/ppppppp1/8/8/8/8/8/4K3", 12 + 2 + 1 - 2},
    OpennessRow{"rams on both rims", "4k3/8/8/p6p/P6P/8/8/4K3", 12 + 2 + 2 + 2 - 4},
    OpennessRow{"nothing but rams", "4k3/8/8/pppppppp/PPPPPPPP/8/8/4K3", 1},
    OpennessRow{"rams on b and g", "4k3/8/8/1p4p1/1P4P1/8/8/4K3", 12 + 2 + 2 + 2 - 4},
    OpennessRow{"b and g are no centre", "4k3/pppppppp/8/8/8/8/1P4P1/4K3", 12 + 2 - 2 - 1 - 2},
    OpennessRow{"rams on the d-file", "4k3/8/8/3p4/3P4/8/8/4K3", 12 + 2 + 2 - 1 + 2 - 2 - 4},
    OpennessRow{"an own ram on the rim", "4k3/pppppppp/8/8/8/1P6/1P6/4K3", 12 + 2 - 2 - 1 - 2 + 2 - 1},
    OpennessRow{"two on a file apart", "4k3/pppppppp/8/8/1P6/8/1P6/4K3", 12 + 2 - 2 - 1 - 2},
    OpennessRow{"three pawns in the centre", "4k3/2p5/8/8/8/8/3PP3/4K3", 12 + 2 + 2 - 1}),
    RowName<OpennessRow>);
// clang-format on

struct MajorityRow {
    std::string_view name;
    std::string_view position;
    Wing wing;
    bool is_own;  // if any
    int count_a, count_b;
};
std::ostream& operator<<(std::ostream& out, const MajorityRow& row) { return out << row.name; }
class Majorities : public testing::TestWithParam<MajorityRow> {};

TEST_P(Majorities, AreFound) {
    const MajorityRow& row = GetParam();
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        const MAJORITY_INFO& majority = builder.context.majority[row.wing];
        const Colour owner = row.is_own ? own : Opponent(own);
        const Majority kind = row.count_a == 0 ? Majority::none : owner == white ? Majority::white : Majority::black;
        EXPECT_EQ(majority.kind, kind);
        EXPECT_EQ(majority.count_a, row.count_a);
        EXPECT_EQ(majority.count_b, row.count_b);
    });
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Pawns, Majorities, testing::Values(
    MajorityRow{"three against two", "4k3/pp6/8/8/8/8/PPP5/4K3", queen_side, true, 3, 2},
    MajorityRow{"the next file counts against it", "4k3/pp1p4/8/8/8/8/PPP5/4K3", queen_side, true, 0, 0},
    MajorityRow{"four against three", "4k3/ppp5/8/8/8/8/PPPP4/4K3", queen_side, true, 4, 3},
    MajorityRow{"a lone pawn", "4k3/8/8/8/8/8/1P6/4K3", queen_side, true, 1, 0},
    MajorityRow{"one against one ends at d", "4k3/1p6/8/8/8/8/P3P3/4K3", queen_side, true, 0, 0},
    MajorityRow{"of the enemy", "4k3/ppp5/8/8/8/8/PP6/4K3", queen_side, false, 3, 2},
    MajorityRow{"doubled pawns are one file", "4k3/p7/8/8/8/P7/P7/4K3", queen_side, true, 0, 0},
    MajorityRow{"king side", "4k3/5ppp/8/8/8/8/4PPPP/4K3", king_side, true, 4, 3},
    MajorityRow{"king side of the enemy", "4k3/5ppp/8/8/8/8/6PP/4K3", king_side, false, 3, 2},
    MajorityRow{"equal", "4k3/pppppppp/8/8/8/8/PPPPPPPP/4K3", king_side, true, 0, 0},
    MajorityRow{"a and c against b", "4k3/1p6/8/8/8/8/P1P5/4K3", queen_side, true, 2, 1},
    MajorityRow{"doubled enemies count twice", "4k3/p7/p7/8/8/8/PPP5/4K3", queen_side, true, 3, 2},
    MajorityRow{"two files against doubled pawns", "4k3/1pp5/8/8/8/2P5/2P5/4K3", queen_side, true, 0, 0},
    MajorityRow{"a and d against a", "4k3/p7/8/8/8/8/P2P4/4K3", queen_side, true, 2, 1},
    MajorityRow{"d alone", "4k3/8/8/8/8/8/3P4/4K3", queen_side, true, 0, 0},
    MajorityRow{"c alone", "4k3/8/8/8/8/8/2P5/4K3", queen_side, true, 1, 0},
    MajorityRow{"c alone, of the enemy", "4k3/2p5/8/8/8/8/8/4K3", queen_side, false, 1, 0},
    MajorityRow{"the f-file is too far", "4k3/pppp4/8/8/8/8/PPPP1P2/4K3", queen_side, true, 0, 0},
    MajorityRow{"a alone, c7 against it", "4k3/2p5/8/8/8/8/P7/4K3", queen_side, true, 0, 0},
    MajorityRow{"four to three with e2", "4k3/ppp5/8/8/8/8/PP1PP3/4K3", queen_side, true, 4, 3},
    MajorityRow{"four to three with e2, f7 against it", "4k3/ppp2p2/8/8/8/8/PP1PP3/4K3", queen_side, true, 0, 0},
    MajorityRow{"three to two with e2 comes too late", "4k3/pp6/8/8/8/8/PP2P3/4K3", queen_side, true, 0, 0},
    MajorityRow{"four enemies open the e-file", "4k3/pp1pp3/8/8/8/8/PPP5/4K3", queen_side, false, 4, 3},
    MajorityRow{"g and h against h", "4k3/7p/8/8/8/8/6PP/4K3", king_side, true, 2, 1},
    MajorityRow{"g and h against f and h", "4k3/5p1p/8/8/8/8/6PP/4K3", king_side, true, 0, 0},
    MajorityRow{"e and h against h", "4k3/7p/8/8/8/8/4P2P/4K3", king_side, true, 2, 1},
    MajorityRow{"e alone", "4k3/8/8/8/8/8/4P3/4K3", king_side, true, 0, 0},
    MajorityRow{"f alone", "4k3/8/8/8/8/8/5P2/4K3", king_side, true, 1, 0},
    MajorityRow{"four to three with d2", "4k3/5ppp/8/8/8/8/3PP1PP/4K3", king_side, true, 4, 3},
    MajorityRow{"four to three with d2, c7 against it", "4k3/2p2ppp/8/8/8/8/3PP1PP/4K3", king_side, true, 0, 0},
    MajorityRow{"f and g of the enemy against h", "4k3/5pp1/8/8/8/8/7P/4K3", king_side, false, 2, 1},
    MajorityRow{"f and g of the enemy against e and h", "4k3/5pp1/8/8/8/8/4P2P/4K3", king_side, false, 0, 0}),
    RowName<MajorityRow>);
// clang-format on

}  // namespace
