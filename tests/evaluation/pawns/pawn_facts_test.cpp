#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "evaluation/pawns/front_distance.h"
#include "support/row_name.h"
#include "support/term_rows.h"

namespace {

using FactOf = Bitboard (*)(const EVALUATION_CONTEXT& context, Colour side);

struct FactRow {
    std::string_view name;
    FactOf fact;
    std::string_view position;
    std::string_view squares;
};
std::ostream& operator<<(std::ostream& out, const FactRow& row) { return out << row.name; }

Bitboard SquaresIn(std::string_view names) {
    Bitboard set = 0;
    for (std::size_t i = 0; i + 1 < names.size(); i += 3) set |= Bit((names[i] - 'a') + 8 * (names[i + 1] - '1'));
    return set;
}

template <Bitboard PAWN_INFO::*Field>
Bitboard Fact(const EVALUATION_CONTEXT& context, Colour side) {
    return context.pawns[side].*Field;
}
Bitboard Rams(const EVALUATION_CONTEXT& context, Colour /*side*/) { return context.rams; }

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

class PawnFacts : public testing::TestWithParam<FactRow> {};

TEST_P(PawnFacts, AreFound) {
    const FactRow& row = GetParam();
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        const Bitboard wanted = SquaresIn(row.squares);
        EXPECT_EQ(row.fact(builder.context, own), own == white ? wanted : MirrorRanks(wanted)) << row.position;
    });
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Pawns, PawnFacts, testing::Values(
    FactRow{"passed alone", passed, "4k3/8/8/8/4P3/8/8/4K3", "e4"},
    FactRow{"not passed before a pawn", passed, "4k3/4p3/8/8/4P3/8/8/4K3", ""},
    FactRow{"not passed beside a pawn ahead", passed, "4k3/3p4/8/8/4P3/8/8/4K3", ""},
    FactRow{"passed beside a pawn of its rank", passed, "4k3/8/8/8/3pP3/8/8/4K3", "e4"},
    FactRow{"passed before a pawn behind", passed, "4k3/8/8/8/4P3/3p4/8/4K3", "e4"},
    FactRow{"passed two files away", passed, "4k3/2p3p1/8/8/4P3/8/8/4K3", "e4"},
    FactRow{"attacks stay on the board", attacks, "4k3/8/8/8/P6P/8/8/4K3", "b5 g5"},
    FactRow{"attacked once and twice", once, "4k3/8/8/8/2P1P3/8/8/4K3", "b5 f5"},
    FactRow{"attacked twice", twice, "4k3/8/8/8/2P1P3/8/8/4K3", "d5"},
    FactRow{"dominated without the enemy", dominated, "4k3/8/8/8/4P3/8/8/4K3", "d5 f5"},
    FactRow{"one against one is not dominated", dominated, "4k3/8/4p3/8/4P3/8/8/4K3", ""},
    FactRow{"two against one is dominated", dominated, "4k3/8/4p3/8/2P1P3/8/8/4K3", "b5 d5"},
    FactRow{"two against two is not dominated", dominated, "4k3/8/2p1p3/8/2P1P3/8/8/4K3", ""},
    FactRow{"defended", defended, "4k3/8/8/8/4P3/3P4/8/4K3", "e4"},
    FactRow{"a neighbour does not defend", defended, "4k3/8/8/8/3PP3/8/8/4K3", ""},
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
    FactRow{"advance to the end", advance, "4k3/8/8/8/8/8/4P3/4K3", "e3 e4 e5 e6 e7 e8"},
    FactRow{"advance stops before a pawn", advance, "4k3/8/4p3/8/8/8/4P3/4K3", "e3 e4 e5"},
    FactRow{"advance stops before an own pawn", advance, "4k3/8/8/4P3/8/8/4P3/4K3", "e3 e4 e6 e7 e8"},
    FactRow{"advance stops on a dominated square", advance, "4k3/8/3p4/8/8/8/4P3/4K3", "e3 e4 e5"},
    FactRow{"pieces do not stop it", advance, "4k3/8/8/8/4n3/8/4P3/4K3", "e3 e4 e5 e6 e7 e8"},
    FactRow{"attack span", span, "4k3/8/8/4P3/8/8/8/4K3", "d6 f6 d7 f7 d8 f8"},
    FactRow{"attack span of a blocked pawn", span, "4k3/8/4p3/4P3/8/8/8/4K3", "d6 f6"},
    FactRow{"isolated", isolated, "4k3/8/8/8/P3P2P/8/8/4K3", "a4 e4 h4"},
    FactRow{"not isolated beside a pawn far behind", isolated, "4k3/8/4P3/8/8/8/3P4/4K3", ""},
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
    FactRow{"front passed is the foremost", front, "4k3/8/P7/8/P7/8/8/4K3", "a6"},
    FactRow{"covered before an enemy pawn", covered, "4k3/8/4p3/8/4P3/8/8/4K3", "e4"},
    FactRow{"covered behind a defended pawn", covered, "4k3/8/8/8/4P3/3P4/4P3/4K3", "e2"},
    FactRow{"not covered behind a loose pawn", covered, "4k3/8/8/8/4P3/8/4P3/4K3", ""},
    FactRow{"centre gaps without pawns", gaps, "4k3/8/8/8/8/8/8/4K3", "d4 e4 d5 e5"},
    FactRow{"centre gaps beside a span", gaps, "4k3/8/8/8/8/8/2P5/4K3", "e4 e5"},
    FactRow{"no gap under a pawn", gaps, "4k3/8/8/3p4/4P3/8/8/4K3", "d4 e5"},
    FactRow{"rams face one another", Rams, "4k3/8/8/4p3/4P3/8/8/4K3", "e4 e5"},
    FactRow{"a pawn behind its own is a ram", Rams, "4k3/8/8/8/4P3/4P3/8/4K3", "e3"},
    FactRow{"a piece makes no ram", Rams, "4k3/8/8/4n3/4P3/8/8/4K3", ""}), RowName<FactRow>);
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
    OpennessRow{"rams in the centre", "4k3/pp1ppppp/8/2p5/2P5/8/PP1PPPPP/4K3", 1}), RowName<OpennessRow>);
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
    MajorityRow{"equal", "4k3/pppppppp/8/8/8/8/PPPPPPPP/4K3", king_side, true, 0, 0}), RowName<MajorityRow>);
// clang-format on

}  // namespace
