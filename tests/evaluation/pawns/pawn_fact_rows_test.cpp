#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "evaluation/pawns/pawn_hash_entry.h"
#include "support/row_name.h"
#include "support/term_rows.h"

/// What is known about pawns, on other squares than pawn_facts_test has: the rim, and the nearest positions in which
/// a fact does not hold.

namespace {

/// A set of squares of one side, told for White: "a2 b3".
struct SetRow {
    std::string_view name;
    Bitboard PAWN_INFO::*set;
    std::string_view position;
    std::string_view squares;
};
std::ostream& operator<<(std::ostream& out, const SetRow& row) { return out << row.name; }

std::string NamesOf(Bitboard set) {
    std::string names;
    for (int file = 0; file < 8; ++file) {
        for (int rank = 0; rank < 8; ++rank) {
            if (!Has(set, 8 * rank + file)) continue;
            if (!names.empty()) names += ' ';
            names += {static_cast<char>('a' + file), static_cast<char>('1' + rank)};
        }
    }
    return names;
}

class PawnSets : public testing::TestWithParam<SetRow> {};

TEST_P(PawnSets, HoldTheirSquares) {
    const SetRow& row = GetParam();
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        const Bitboard set = builder.context.pawns[own].*row.set;
        EXPECT_EQ(NamesOf(own == white ? set : MirrorRanks(set)), row.squares) << row.position;
    });
}

constexpr auto passed = &PAWN_INFO::passed;
constexpr auto attacks = &PAWN_INFO::attacks;
constexpr auto once = &PAWN_INFO::attacked_once;
constexpr auto twice = &PAWN_INFO::attacked_twice;
constexpr auto dominated = &PAWN_INFO::dominated;
constexpr auto defended = &PAWN_INFO::defended;
constexpr auto blocked = &PAWN_INFO::blocked;
constexpr auto restrained = &PAWN_INFO::restrained;
constexpr auto duo = &PAWN_INFO::duo;
constexpr auto doubled = &PAWN_INFO::doubled;
constexpr auto advance = &PAWN_INFO::advance_squares;
constexpr auto span = &PAWN_INFO::attack_span;
constexpr auto isolated = &PAWN_INFO::isolated;
constexpr auto backward = &PAWN_INFO::backward;
constexpr auto stuck = &PAWN_INFO::backward_stuck;
constexpr auto front = &PAWN_INFO::front_passed;
constexpr auto covered = &PAWN_INFO::covered;
constexpr auto gaps = &PAWN_INFO::centre_gaps;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Passed, PawnSets, testing::Values(
    SetRow{"beside an enemy", passed, "4k3/8/8/Pp6/8/8/8/4K3", "a5"},
    SetRow{"one rank below it", passed, "4k3/8/1p6/P7/8/8/8/4K3", ""},
    SetRow{"h-file against a7", passed, "4k3/p7/8/8/7P/8/8/4K3", "h4"},
    SetRow{"a-file against h7", passed, "4k3/7p/8/8/P7/8/8/4K3", "a4"},
    SetRow{"two on one file", passed, "4k3/8/2P5/8/8/2P5/8/4K3", "c3 c6"},
    SetRow{"the foremost of them", front, "4k3/8/2P5/8/8/2P5/8/4K3", "c6"},
    SetRow{"only the foremost is passed", passed, "4k3/8/1P6/8/p7/1P6/8/4K3", "b6"},
    SetRow{"on the seventh rank between enemies", passed, "1k6/5pPp/8/8/8/8/8/4K3", "g7"},
    SetRow{"three files, the foremost of each", front, "4k3/8/8/P6P/4P3/P6P/8/4K3", "a5 e4 h5"}), RowName<SetRow>);

INSTANTIATE_TEST_SUITE_P(Attacks, PawnSets, testing::Values(
    SetRow{"three pawns", attacks, "4k3/8/8/8/8/1P1P3P/8/4K3", "a4 c4 e4 g4"},
    SetRow{"once", once, "4k3/8/8/8/8/1P1P3P/8/4K3", "a4 e4 g4"},
    SetRow{"twice", twice, "4k3/8/8/8/8/1P1P3P/8/4K3", "c4"},
    SetRow{"from the seventh rank", attacks, "1k6/6P1/8/8/8/8/8/4K3", "f8 h8"},
    SetRow{"two against one", dominated, "4k3/8/8/5p2/8/5P1P/8/4K3", "g4"},
    SetRow{"one against two", dominated, "4k3/8/8/5p1p/8/5P2/8/4K3", ""},
    SetRow{"one against none", dominated, "4k3/8/8/8/6p1/7P/8/4K3", "g4"},
    SetRow{"defended", defended, "4k3/8/8/8/1P6/2P4P/6P1/4K3", "b4 h3"},
    SetRow{"rims don't defend", defended, "4k3/8/8/8/P7/7P/8/4K3", ""},
    SetRow{"an enemy in reach is not defended", defended, "4k3/8/8/8/6p1/7P/8/4K3", ""}), RowName<SetRow>);

INSTANTIATE_TEST_SUITE_P(Neighbours, PawnSets, testing::Values(
    SetRow{"blocked by the own king", blocked, "4k3/8/8/8/8/6K1/6P1/8", "g2"},
    SetRow{"the king beside its way", blocked, "4k3/8/8/8/8/5K2/6P1/8", ""},
    SetRow{"blocked on the last rank", blocked, "2n1k3/2P5/8/8/8/8/8/4K3", "c7"},
    SetRow{"blocked one behind another", blocked, "4k3/8/8/8/8/7P/7P/4K3", "h2"},
    SetRow{"restrained from g4", restrained, "4k3/8/8/8/6p1/8/7P/4K3", "h2"},
    SetRow{"not restrained from g5", restrained, "4k3/8/8/6p1/8/8/7P/4K3", ""},
    SetRow{"not restrained from the other rim", restrained, "4k3/8/8/8/p7/8/7P/4K3", ""},
    SetRow{"three in a row", duo, "4k3/8/8/8/8/5PPP/8/4K3", "f3 g3 h3"},
    SetRow{"rims are no neighbours", duo, "4k3/8/8/P7/7P/8/8/4K3", ""},
    SetRow{"an enemy is no partner", duo, "4k3/8/8/8/8/6Pp/8/4K3", ""},
    SetRow{"three on a file", doubled, "4k3/8/8/8/7P/7P/7P/4K3", "h2 h3 h4"},
    SetRow{"an enemy on the file", doubled, "4k3/8/8/7p/7P/8/8/4K3", ""},
    SetRow{"isolated on one file", isolated, "4k3/8/8/8/6P1/8/6P1/4K3", "g2 g4"},
    SetRow{"a neighbour far ahead", isolated, "4k3/7P/8/8/8/8/6P1/4K3", ""},
    SetRow{"isolated on both rims", isolated, "4k3/8/8/8/8/8/P6P/4K3", "a2 h2"}), RowName<SetRow>);

INSTANTIATE_TEST_SUITE_P(Advance, PawnSets, testing::Values(
    SetRow{"to a square that h7 holds", advance, "4k3/7p/8/8/6P1/8/8/4K3", "g5 g6"},
    SetRow{"past a square that f5 fights for", advance, "4k3/7p/8/5P2/6P1/8/8/4K3", "f6 f7 f8 g5 g6 g7 g8"},
    SetRow{"the first square is held", advance, "4k3/8/8/8/6p1/8/7P/4K3", "h3"},
    SetRow{"rammed", advance, "4k3/8/8/1p6/1P6/8/8/4K3", ""},
    SetRow{"behind an own pawn", advance, "4k3/8/8/8/8/1P6/1P6/4K3", "b4 b5 b6 b7 b8"},
    SetRow{"from the seventh rank", advance, "4k3/1P6/8/8/8/8/8/4K3", "b8"},
    SetRow{"span on the left rim", span, "4k3/8/8/8/P7/8/8/4K3", "b5 b6 b7 b8"},
    SetRow{"span up to a held square", span, "4k3/8/8/8/6p1/8/7P/4K3", "g3 g4"},
    SetRow{"span of a rammed pawn", span, "4k3/8/8/8/8/6p1/6P1/4K3", "f3 h3"},
    SetRow{"span of a pawn before the last rank", span, "4k3/1P6/8/8/8/8/8/4K3", "a8 c8"},
    SetRow{"gaps beside g3", gaps, "4k3/8/8/4p3/8/6P1/8/4K3", "d4 d5 e4"},
    SetRow{"gaps beside f2 up to g5", gaps, "4k3/8/8/6p1/8/8/5P2/4K3", "d4 d5"},
    SetRow{"gaps beside f2 before f4", gaps, "4k3/8/8/8/5p2/8/5P2/4K3", "d4 d5 e5"},
    SetRow{"gaps beside f2 up to g4", gaps, "4k3/8/8/8/6p1/8/5P2/4K3", "d4 d5 e5"},
    SetRow{"no gaps between c2 and f2", gaps, "4k3/8/8/8/8/8/2P2P2/4K3", ""}), RowName<SetRow>);

INSTANTIATE_TEST_SUITE_P(Backward, PawnSets, testing::Values(
    SetRow{"a2 against b4", backward, "4k3/8/8/8/1p6/8/P7/4K3", "a2"},
    SetRow{"a2 against b4, stuck", stuck, "4k3/8/8/8/1p6/8/P7/4K3", "a2"},
    SetRow{"a2 against b5", backward, "4k3/8/8/1p6/8/8/P7/4K3", "a2"},
    SetRow{"a2 against b6", backward, "4k3/8/1p6/8/8/8/P7/4K3", ""},
    SetRow{"a2 before a3", backward, "4k3/8/8/1p6/8/p7/P7/4K3", ""},
    SetRow{"a2 before a4", backward, "4k3/8/8/1p6/p7/8/P7/4K3", ""},
    SetRow{"b2 behind b3", backward, "4k3/8/8/p7/8/1P6/1P6/4K3", "b3"},
    SetRow{"g3 helped from f2", backward, "4k3/8/8/7p/8/6P1/5P2/4K3", ""},
    SetRow{"g3 with e2 too far", stuck, "4k3/8/8/7p/8/6P1/4P3/4K3", "g3"},
    SetRow{"e4, the way of d2 closed", backward, "4k3/8/3p4/8/4P3/3p4/3P4/4K3", "e4"},
    SetRow{"e4, the way of d2 open", backward, "4k3/8/3p4/8/4P3/8/3P4/4K3", ""},
    SetRow{"e4, d2 comes no further than d3", backward, "4k3/8/3p4/8/2p1P3/8/3P4/4K3", "d2"},
    SetRow{"g4 beside h4", backward, "4k3/8/5p1p/8/6PP/8/8/4K3", ""},
    SetRow{"g3 beside h3", backward, "4k3/8/8/5p1p/8/6PP/8/4K3", "g3"},
    SetRow{"g3 beside h3 is not stuck", stuck, "4k3/8/8/5p1p/8/6PP/8/4K3", ""},
    SetRow{"g2 beside h2", backward, "4k3/8/8/8/5p1p/8/6PP/4K3", "g2"},
    SetRow{"g2 beside h2 is not stuck", stuck, "4k3/8/8/8/5p1p/8/6PP/4K3", ""},
    SetRow{"g2 beside h2, one step on", backward, "4k3/8/8/5p1p/8/8/6PP/4K3", ""},
    SetRow{"b5 against a7", backward, "4k3/p7/8/1P6/8/8/8/4K3", "b5"},
    SetRow{"b5 against a7 is not stuck", stuck, "4k3/p7/8/1P6/8/8/8/4K3", ""},
    SetRow{"one against one", backward, "4k3/p7/8/1PP5/8/8/8/4K3", ""},
    SetRow{"b3 two steps from a6", backward, "4k3/8/p7/8/8/1P6/8/4K3", ""},
    SetRow{"rammed", backward, "4k3/8/3p4/4p3/4P3/8/8/4K3", ""},
    SetRow{"covered by a defended pawn", covered, "4k3/8/8/1P6/2P5/8/1P6/4K3", "b2"},
    SetRow{"covered by a loose pawn", covered, "4k3/8/8/1P6/3P4/8/1P6/4K3", ""},
    SetRow{"an enemy behind covers nothing", covered, "4k3/8/8/8/1P6/8/1p6/4K3", ""}), RowName<SetRow>);
// clang-format on

struct RamsRow {
    std::string_view name;
    std::string_view position;
    std::string_view squares;
};
std::ostream& operator<<(std::ostream& out, const RamsRow& row) { return out << row.name; }
class PawnRams : public testing::TestWithParam<RamsRow> {};

TEST_P(PawnRams, HaveAPawnInFront) {
    ForBothColours(GetParam().position, [&](EvaluationBuilder& builder, Colour own) {
        const Bitboard rams = builder.context.rams;
        EXPECT_EQ(NamesOf(own == white ? rams : MirrorRanks(rams)), GetParam().squares);
    });
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Pawns, PawnRams, testing::Values(
    RamsRow{"two on the rim", "4k3/8/7P/7P/8/8/8/4K3", "h5"},
    RamsRow{"two of the enemy", "4k3/p7/p7/8/8/8/8/4K3", "a7"},
    RamsRow{"three on a file", "4k3/8/8/8/1P6/1P6/1P6/4K3", "b2 b3"},
    RamsRow{"two before an enemy", "4k3/8/8/1p6/1P6/1P6/8/4K3", "b3 b4 b5"},
    RamsRow{"two back to back", "4k3/8/8/8/1P6/1p6/8/4K3", ""},
    RamsRow{"a rank between them", "4k3/8/1p6/8/1P6/8/8/4K3", ""}), RowName<RamsRow>);
// clang-format on

struct OpenRow {
    std::string_view name;
    std::string_view position;
    int openness;
};
std::ostream& operator<<(std::ostream& out, const OpenRow& row) { return out << row.name; }
class PawnOpenness : public testing::TestWithParam<OpenRow> {};

TEST_P(PawnOpenness, IsCounted) {
    ForBothColours(GetParam().position, [&](EvaluationBuilder& builder, Colour /*own*/) {
        EXPECT_EQ(builder.context.openness, GetParam().openness) << GetParam().position;
    });
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Pawns, PawnOpenness, testing::Values(
    OpenRow{"one pawn", "4k3/8/8/8/8/8/P7/4K3", 15},
    OpenRow{"a side without pawns", "4k3/pppppppp/8/8/8/8/8/4K3", 12 + 2 - 2 - 1 - 2},
    OpenRow{"seven pawns of a side", "4k3/ppppppp1/8/8/8/8/8/4K3", 12 + 2 + 1 - 2},
    OpenRow{"rams on both rims", "4k3/8/8/p6p/P6P/8/8/4K3", 12 + 2 + 2 + 2 - 4},
    OpenRow{"nothing but rams", "4k3/8/8/pppppppp/PPPPPPPP/8/8/4K3", 1},
    OpenRow{"rams on b and g", "4k3/8/8/1p4p1/1P4P1/8/8/4K3", 12 + 2 + 2 + 2 - 4},
    OpenRow{"b and g are no centre", "4k3/pppppppp/8/8/8/8/1P4P1/4K3", 12 + 2 - 2 - 1 - 2},
    OpenRow{"rams on the d-file", "4k3/8/8/3p4/3P4/8/8/4K3", 12 + 2 + 2 - 1 + 2 - 2 - 4},
    OpenRow{"an own ram on the rim", "4k3/pppppppp/8/8/8/1P6/1P6/4K3", 12 + 2 - 2 - 1 - 2 + 2 - 1},
    OpenRow{"two on a file apart", "4k3/pppppppp/8/8/1P6/8/1P6/4K3", 12 + 2 - 2 - 1 - 2},
    OpenRow{"three pawns in the centre", "4k3/2p5/8/8/8/8/3PP3/4K3", 12 + 2 + 2 - 1}), RowName<OpenRow>);
// clang-format on

struct WingRow {
    std::string_view name;
    std::string_view position;
    Wing wing;
    bool is_own;  // if there is one
    int count_a, count_b;
};
std::ostream& operator<<(std::ostream& out, const WingRow& row) { return out << row.name; }
class PawnMajority : public testing::TestWithParam<WingRow> {};

TEST_P(PawnMajority, IsFound) {
    const WingRow& row = GetParam();
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        const MAJORITY_INFO& majority = builder.context.majority[row.wing];
        const Majority of_own = own == white ? Majority::white : Majority::black;
        const Majority of_enemy = own == white ? Majority::black : Majority::white;
        EXPECT_EQ(majority.kind, row.count_a == 0 ? Majority::none : row.is_own ? of_own : of_enemy);
        EXPECT_EQ(majority.count_a, row.count_a);
        EXPECT_EQ(majority.count_b, row.count_b);
    });
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Pawns, PawnMajority, testing::Values(
    WingRow{"a and c against b", "4k3/1p6/8/8/8/8/P1P5/4K3", queen_side, true, 2, 1},
    WingRow{"doubled enemies count twice", "4k3/p7/p7/8/8/8/PPP5/4K3", queen_side, true, 3, 2},
    WingRow{"two files against doubled pawns", "4k3/1pp5/8/8/8/2P5/2P5/4K3", queen_side, true, 0, 0},
    WingRow{"a and d against a", "4k3/p7/8/8/8/8/P2P4/4K3", queen_side, true, 2, 1},
    WingRow{"d alone", "4k3/8/8/8/8/8/3P4/4K3", queen_side, true, 0, 0},
    WingRow{"c alone", "4k3/8/8/8/8/8/2P5/4K3", queen_side, true, 1, 0},
    WingRow{"c alone, of the enemy", "4k3/2p5/8/8/8/8/8/4K3", queen_side, false, 1, 0},
    WingRow{"the f-file is too far", "4k3/pppp4/8/8/8/8/PPPP1P2/4K3", queen_side, true, 0, 0},
    WingRow{"a alone, c7 against it", "4k3/2p5/8/8/8/8/P7/4K3", queen_side, true, 0, 0},
    WingRow{"four to three with e2", "4k3/ppp5/8/8/8/8/PP1PP3/4K3", queen_side, true, 4, 3},
    WingRow{"four to three with e2, f7 against it", "4k3/ppp2p2/8/8/8/8/PP1PP3/4K3", queen_side, true, 0, 0},
    WingRow{"three to two with e2 comes too late", "4k3/pp6/8/8/8/8/PP2P3/4K3", queen_side, true, 0, 0},
    WingRow{"four enemies open the e-file", "4k3/pp1pp3/8/8/8/8/PPP5/4K3", queen_side, false, 4, 3},
    WingRow{"g and h against h", "4k3/7p/8/8/8/8/6PP/4K3", king_side, true, 2, 1},
    WingRow{"g and h against f and h", "4k3/5p1p/8/8/8/8/6PP/4K3", king_side, true, 0, 0},
    WingRow{"e and h against h", "4k3/7p/8/8/8/8/4P2P/4K3", king_side, true, 2, 1},
    WingRow{"e alone", "4k3/8/8/8/8/8/4P3/4K3", king_side, true, 0, 0},
    WingRow{"f alone", "4k3/8/8/8/8/8/5P2/4K3", king_side, true, 1, 0},
    WingRow{"four to three with d2", "4k3/5ppp/8/8/8/8/3PP1PP/4K3", king_side, true, 4, 3},
    WingRow{"four to three with d2, c7 against it", "4k3/2p2ppp/8/8/8/8/3PP1PP/4K3", king_side, true, 0, 0},
    WingRow{"f and g of the enemy against h", "4k3/5pp1/8/8/8/8/7P/4K3", king_side, false, 2, 1},
    WingRow{"f and g of the enemy against e and h", "4k3/5pp1/8/8/8/8/4P2P/4K3", king_side, false, 0, 0}),
    RowName<WingRow>);
// clang-format on

// How the facts are packed: three against two files of White on the queen side, of Black on the king side, openness
// 14 (nobody stands on two files, ten pawns, three of them in the centre).
constexpr std::string_view two_majorities = "4k3/pp3ppp/8/8/8/8/PPP2PP1/4K3";
constexpr std::uint32_t word_of_two_majorities =
    (1U | 3U << 2 | 2U << 5 | 0U << 8) | (2U | 3U << 2 | 2U << 5 | 7U << 8) << 11 | 14U << 22;

TEST(PawnEntry, PacksMajoritiesAndOpenness) {
    EvaluationBuilder position(FenOfRow(two_majorities));
    position.PrepareTerms();
    for (const int type : {0, 1, 2, 15}) {
        EXPECT_EQ(construct_pawn_entry(position.context, position.board, type).packed, word_of_two_majorities) << type;
    }
}

TEST(PawnEntry, UnpacksMajoritiesAndOpenness) {
    EvaluationBuilder position(FenOfRow(two_majorities));
    PAWN_HASH_ENTRY entry;
    entry.packed = word_of_two_majorities;
    restore_pawn_entry(entry, position.context, position.board);
    const auto& [on_queen_side, on_king_side] = position.context.majority;
    EXPECT_EQ(on_queen_side.kind, Majority::white);
    EXPECT_EQ(on_queen_side.count_a, 3);
    EXPECT_EQ(on_queen_side.count_b, 2);
    EXPECT_EQ(on_king_side.kind, Majority::black);
    EXPECT_EQ(on_king_side.count_a, 3);
    EXPECT_EQ(on_king_side.count_b, 2);
    EXPECT_EQ(position.context.openness, 14);
}

constexpr std::array<std::uint32_t, 4> counter_words = {
    5U << 1 | (1U | 3U << 1) << 10 | 511U << 21,         // White's pressure: 5, -3, 511
    (1U | 511U << 1) | 1U << 11 | (1U | 1U << 1) << 20,  // its cover: -511, 1, -1
    256U << 1,                                           // Black's pressure: 256, 0, 0
    (1U | 2U << 1) << 20,                                // its cover: 0, 0, -2
};

/// A context whose counters are those of counter_words.
EVALUATION_CONTEXT ContextWithCounters(const EvaluationBuilder& position) {
    EVALUATION_CONTEXT context = position.context;
    context.pawn_positional = -1234;
    context.pawn_reckless = 567;
    context.pawn_ending = -89;
    context.pawn_pressure[white] = {5, -3, 511};
    context.pawn_cover[white] = {-511, 1, -1};
    context.pawn_pressure[black] = {256, 0, 0};
    context.pawn_cover[black] = {0, 0, -2};
    return context;
}

TEST(PawnEntry, PacksScoresAndCounters) {
    const EvaluationBuilder position(FenOfRow(two_majorities));
    for (const int type : {0, 1}) {
        const PAWN_HASH_ENTRY entry = construct_pawn_entry(ContextWithCounters(position), position.board, type);
        EXPECT_EQ(entry.positional, -1234);
        EXPECT_EQ(entry.reckless, 567);
        EXPECT_EQ(entry.ending, -89);
        EXPECT_EQ(entry.counters, counter_words);
    }
}

TEST(PawnEntry, OfAnEndingHasNoPairAndNoCounters) {
    const EvaluationBuilder position(FenOfRow(two_majorities));
    for (const int type : {2, 15, 17}) {
        const PAWN_HASH_ENTRY entry = construct_pawn_entry(ContextWithCounters(position), position.board, type);
        EXPECT_EQ(entry.positional, 0);
        EXPECT_EQ(entry.reckless, 0);
        EXPECT_EQ(entry.ending, -89);
        EXPECT_EQ(entry.counters, (std::array<std::uint32_t, 4>{}));
    }
}

TEST(PawnEntry, UnpacksScoresAndCounters) {
    EvaluationBuilder position(FenOfRow(two_majorities));
    PAWN_HASH_ENTRY entry;
    entry.position_type = 1;
    entry.positional = -1234;
    entry.reckless = 567;
    entry.ending = -89;
    entry.counters = counter_words;
    restore_pawn_entry(entry, position.context, position.board);
    const EVALUATION_CONTEXT wanted = ContextWithCounters(position);
    for (const Colour side : {white, black}) {
        EXPECT_EQ(position.context.pawn_pressure[side], wanted.pawn_pressure[side]);
        EXPECT_EQ(position.context.pawn_cover[side], wanted.pawn_cover[side]);
    }
    EXPECT_EQ(position.context.pawn_positional, -1234);
    EXPECT_EQ(position.context.pawn_reckless, 567);
    EXPECT_EQ(position.context.pawn_ending, -89);
}

TEST(PawnEntry, SplitsTheColours) {
    EvaluationBuilder position("4k3/p7/8/1p6/P7/8/6P1/4K3 w - - 0 1");
    PAWN_HASH_ENTRY entry;
    entry.passed = Bit(g2) | Bit(b5);
    entry.isolated = Bit(a4) | Bit(g2);
    entry.backward = Bit(a4) | Bit(a7);
    entry.backward_stuck = Bit(a7);
    entry.covered = Bit(a4) | Bit(a7) | Bit(b5);
    entry.advance_squares = {Bit(g3), Bit(b4)};
    entry.centre_gaps = {Bit(d4) | Bit(e5), Bit(e4)};
    restore_pawn_entry(entry, position.context, position.board);
    const PAWN_INFO& of_white = position.context.pawns[white];
    const PAWN_INFO& of_black = position.context.pawns[black];
    EXPECT_EQ(NamesOf(of_white.passed), "g2");
    EXPECT_EQ(NamesOf(of_black.passed), "b5");
    EXPECT_EQ(PopCount(of_white.passed), 1);
    EXPECT_EQ(PopCount(of_black.passed), 1);
    EXPECT_EQ(NamesOf(of_white.isolated), "a4 g2");
    EXPECT_EQ(NamesOf(of_black.isolated), "");
    EXPECT_EQ(NamesOf(of_white.backward), "a4");
    EXPECT_EQ(NamesOf(of_black.backward), "a7");
    EXPECT_EQ(NamesOf(of_white.backward_stuck), "");
    EXPECT_EQ(NamesOf(of_black.backward_stuck), "a7");
    EXPECT_EQ(NamesOf(of_white.covered), "a4");
    EXPECT_EQ(NamesOf(of_black.covered), "a7 b5");
    EXPECT_EQ(NamesOf(of_white.advance_squares), "g3");
    EXPECT_EQ(NamesOf(of_black.advance_squares), "b4");
    EXPECT_EQ(NamesOf(of_white.centre_gaps), "d4 e5");
    EXPECT_EQ(NamesOf(of_black.centre_gaps), "e4");
}

}  // namespace
