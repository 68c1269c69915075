// The king term from the two shelters to its sum, step by step.
//
// In most rows the enemy king has left its ranks, on a6: (-20, -100) and (-120, -200). Nobody attacks it, which takes
// four fifths of its reckless half. With all else neutral, an openness that leaves eight eighths and a weight of 0.2,
// it counts
// (-140, -300) -> (-139, -299) -> (-139, -60): the half that is added to round takes one from a value below zero. The
// own king is under full attack: its reckless half, if below zero, grows by a fifth.

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/king_rows.h"
#include "support/row_name.h"

namespace {

/// What the other terms have left behind.
struct Surroundings {
    double endgame_weight = 0.2;
    int openness = 8;
    WingCounters enemy_pressure = {50, 70, 40};  // queen side, king side, centre
    WingCounters own_cover = {3, 5, 8};
    WingCounters own_pressure = {-60, -60, -60};
    Bitboard enemy_attacks = 0;
};

template <class... Squares>
constexpr Surroundings UnderAttackOn(Squares... squares) {
    return {.enemy_attacks = (Bit(squares) | ...)};
}

void Surround(EVALUATION_CONTEXT& context, Colour own, const Surroundings& given) {
    context.endgame_weight = given.endgame_weight;
    context.openness = static_cast<std::int16_t>(given.openness);
    context.pressure[Opponent(own)] = given.enemy_pressure;
    context.pressure[own] = given.own_pressure;
    context.cover[own] = given.own_cover;
    context.attacks[Opponent(own)] = own == white ? given.enemy_attacks : MirrorRanks(given.enemy_attacks);
}

/// The own share is told apart from the enemy's, and its inputs are those of the own king.
struct TermRow {
    std::string_view name;
    std::string_view position;
    SCORE_PAIR own, enemy;
    int attack, cover;
    Surroundings given = {};
};
std::ostream& operator<<(std::ostream& out, const TermRow& row) { return out << row.name; }

class KingSafetySteps : public testing::TestWithParam<TermRow> {};

TEST_P(KingSafetySteps, GiveThePairAndTheDanger) {
    const TermRow& row = GetParam();
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        EVALUATION_CONTEXT& context = builder.context;
        Surround(context, own, row.given);
        const SCORE_PAIR sum = king_safety(context, builder.board);
        EXPECT_EQ(KingText(own == white ? sum : -sum, context.king_attack[own], context.king_cover[own]),
                  KingText(row.own - row.enemy, row.attack, row.cover))
            << row.position;
    });
}

constexpr SCORE_PAIR enemy_out{-139, -60};

// clang-format off

// Behind g1 and three pawns: -20 + 72 and -100 + 94 make (52, -6), and (52, -5) after the rounding, and (52, -6) at last.
// The g-file counts 40 / 4 + 70 + 13 of attack and 8 / 2 + 5 + 14 of cover.
INSTANTIATE_TEST_SUITE_P(WithoutRights, KingSafetySteps, testing::Values(
    TermRow{"castled", "3q3Q/8/k7/8/8/8/5PPP/6K1", {52, -6}, enemy_out, 93, 23},
    TermRow{"castled, attacked without effect", "3q3Q/8/k7/8/8/8/5PPP/6K1", {52, -6}, enemy_out, 93, 23, UnderAttackOn(f1, g1, h1)},
    TermRow{"castled and cut off", "3q3Q/8/k7/8/8/8/5PPP/6K1", {46, -20}, enemy_out, 93, 17, UnderAttackOn(d1)},     // (46, -18), -17 x 1.2
    TermRow{"behind food", "3q3Q/8/k7/8/8/8/6Pp/7K", {197, 160}, enemy_out, 10 + 70 + 8 - 10, 4 + 5 - 2 + 2},        // 17 and 20, 200 and 240
    TermRow{"in the centre", "3q3Q/8/k7/8/8/8/3PPP2/4K3", {-8, -104}, enemy_out, 160 + 13, 8 + 14},                 // (-9, -88), -87 x 1.2
    TermRow{"on f1 with a choice", "3q3Q/8/k7/8/8/8/5PPP/5K2", {15, -67}, enemy_out, 93, 23},                       // 35 and 43: (15, -57), -56 x 1.2
    TermRow{"rook and king at home all the same", "3q3Q/8/k7/8/8/8/3PPP2/4K2R", {-8, -104}, enemy_out, 173, 22},
    TermRow{"out", "3q3Q/8/k7/8/8/6K1/8/8", {-139, -359}, enemy_out, 170, 8}), RowName<TermRow>);                   // -299 x 1.2

// A right costs (65, 75), and 6 points of cover in the centre, 3 of which a king on the wing feels. Free squares between
// give (4, 8) back.
INSTANTIATE_TEST_SUITE_P(ShortCastling, KingSafetySteps, testing::Values(
    TermRow{"free", "3q3Q/8/k7/8/8/8/5PPP/4K2R w K - 0 1", {-8, -86}, enemy_out, 93, 20},                                // (-9, -73), -72 x 1.2
    TermRow{"one man between", "3q3Q/8/k7/8/8/8/5PPP/4KN1R w K - 0 1", {-16, -106}, enemy_out, 93, 20},                  // (-17, -89), -88 x 1.2
    TermRow{"one man of the enemy between", "3q3Q/8/k7/8/8/8/5PPP/4Kb1R w K - 0 1", {-16, -106}, enemy_out, 93, 20},
    TermRow{"one man on the square itself", "3q3Q/8/k7/8/8/8/5PPP/4K1NR w K - 0 1", {-16, -106}, enemy_out, 93, 20},
    TermRow{"two men between", "3q3Q/8/k7/8/8/8/5PPP/4KNNR w K - 0 1", {-20, -108}, enemy_out, 93, 20},                  // (-21, -91), -90 x 1.2
    TermRow{"men on the other side", "3q3Q/8/k7/8/8/8/5PPP/1NB1K2R w K - 0 1", {-8, -86}, enemy_out, 93, 20},
    // e1 behind f2 alone is -55 + 20 - 24 - 9 - 7 and -80 + 28 - 28 - 18 - 12: (-160, -285), -284 x 1.2
    TermRow{"f1 attacked", "3q3Q/8/k7/8/8/8/5PPP/4K2R w K - 0 1", {-159, -341}, enemy_out, 173, 2 - 20 - 9, UnderAttackOn(f1)},
    TermRow{"g1 attacked", "3q3Q/8/k7/8/8/8/5PPP/4K2R w K - 0 1", {-159, -341}, enemy_out, 173, 2 - 20 - 9, UnderAttackOn(g1)},
    TermRow{"e1 and h1 attacked", "3q3Q/8/k7/8/8/8/5PPP/4K2R w K - 0 1", {-8, -86}, enemy_out, 93, 20, UnderAttackOn(d1, e1, h1, f2, g2)}), RowName<TermRow>);

// The queen side counts 40 / 4 + 50 + 13 of attack, 2 / 2 + 3 + 14 of cover; b1 behind three pawns is worth (68, 94).
INSTANTIATE_TEST_SUITE_P(LongCastling, KingSafetySteps, testing::Values(
    TermRow{"free", "3q3Q/8/k7/8/8/8/PPP5/R3K3 w Q - 0 1", {-12, -86}, enemy_out, 73, 18},                               // (-13, -73), -72 x 1.2
    TermRow{"one man between", "3q3Q/8/k7/8/8/8/PPP5/RN2K3 w Q - 0 1", {-20, -106}, enemy_out, 73, 18},                  // (-21, -89), -88 x 1.2
    TermRow{"two men between", "3q3Q/8/k7/8/8/8/PPP5/RNB1K3 w Q - 0 1", {-24, -108}, enemy_out, 73, 18},                 // (-25, -91), -90 x 1.2
    TermRow{"three men between", "3q3Q/8/k7/8/8/8/PPP5/RNBNK3 w Q - 0 1", {-28, -113}, enemy_out, 73, 18},               // (-29, -95), -94 x 1.2
    TermRow{"two men of the enemy between", "3q3Q/8/k7/8/8/8/PPP5/R1nnK3 w Q - 0 1", {-24, -108}, enemy_out, 73, 18},
    TermRow{"men on the other side", "3q3Q/8/k7/8/8/8/PPP5/R3KNB1 w Q - 0 1", {-12, -86}, enemy_out, 73, 18},
    // e1 without a shield is -55 - 36 - 9 - 20 and -80 - 42 - 18 - 25: (-205, -340), -339 x 1.2
    TermRow{"b1 attacked", "3q3Q/8/k7/8/8/8/PPP5/R3K3 w Q - 0 1", {-204, -407}, enemy_out, 173, 2 - 30 - 16, UnderAttackOn(b1)},
    TermRow{"c1 attacked", "3q3Q/8/k7/8/8/8/PPP5/R3K3 w Q - 0 1", {-204, -407}, enemy_out, 173, 2 - 30 - 16, UnderAttackOn(c1)},
    TermRow{"d1 attacked", "3q3Q/8/k7/8/8/8/PPP5/R3K3 w Q - 0 1", {-204, -407}, enemy_out, 173, 2 - 30 - 16, UnderAttackOn(d1)},
    TermRow{"a1 and e1 attacked", "3q3Q/8/k7/8/8/8/PPP5/R3K3 w Q - 0 1", {-12, -86}, enemy_out, 73, 18, UnderAttackOn(a1, e1, f1, g1)}), RowName<TermRow>);

// Half-sums: b1 behind three pawns has 162 / 2, g1 has 166 / 2, or (40 + 52) / 2 without h2.
INSTANTIATE_TEST_SUITE_P(BothCastlings, KingSafetySteps, testing::Values(
    TermRow{"g1 is better", "3q3Q/8/k7/8/8/8/PPP2PPP/R3K2R w KQ - 0 1", {-8, -86}, enemy_out, 93, 20},
    TermRow{"b1 is better", "3q3Q/8/k7/8/8/8/PPP2PP1/R3K2R w KQ - 0 1", {-12, -86}, enemy_out, 73, 18},
    TermRow{"a draw is for g1", "3q3Q/8/k7/8/8/1BB5/PPP2PPP/R3K2R w KQ - 0 1", {-8, -86}, enemy_out, 93, 20},            // (68, 98) on b1: 166 / 2
    // c7 leaves b1 two open files: 171 / 2. The bishops make g1 (72, 98): 170 / 2, and (-9, -69), -68 x 1.2.
    TermRow{"half a point is a draw", "3q3Q/2p5/k7/8/8/5BB1/PPP2PPP/R3K2R w KQ - 0 1", {-8, -82}, enemy_out, 93, 20 + 4},
    TermRow{"a full point decides", "3q3Q/8/k7/8/8/1N6/PPP2PPP/R3K2R w KQ - 0 1", {-10, -82}, enemy_out, 73, 20},     // (70, 98) on b1: (-11, -69), -68 x 1.2
    TermRow{"g1 counts its own men", "3q3Q/8/k7/8/8/8/PPP2PPP/RNB1K2R w KQ - 0 1", {-8, -86}, enemy_out, 93, 20},
    TermRow{"b1 counts its own men", "3q3Q/8/k7/8/8/8/PPP2PP1/RN2KNNR w KQ - 0 1", {-20, -106}, enemy_out, 73, 18},
    TermRow{"men do not change the choice", "3q3Q/8/k7/8/8/8/PPP2PPP/R3KNNR w KQ - 0 1", {-20, -108}, enemy_out, 93, 20},
    TermRow{"f1 attacked", "3q3Q/8/k7/8/8/8/PPP2PPP/R3K2R w KQ - 0 1", {-12, -86}, enemy_out, 73, 18, UnderAttackOn(f1)},
    TermRow{"b1 attacked", "3q3Q/8/k7/8/8/8/PPP2PP1/R3K2R w KQ - 0 1", {-40, -137}, enemy_out, 93, 10, UnderAttackOn(b1)},  // (-41, -115), -114 x 1.2
    TermRow{"a1 attacked", "3q3Q/8/k7/8/8/8/PPP2PP1/R3K2R w KQ - 0 1", {-12, -86}, enemy_out, 73, 18, UnderAttackOn(a1)},
    TermRow{"d1 and g1 attacked", "3q3Q/8/k7/8/8/8/PPP2PPP/R3K2R w KQ - 0 1", {-159, -341}, enemy_out, 173, 2 - 20 - 9, UnderAttackOn(d1, g1)}), RowName<TermRow>);

// (52, -6) and (-140, -300), or three eighths of them: (19, -2) and (-52, -112).
INSTANTIATE_TEST_SUITE_P(Queens, KingSafetySteps, testing::Values(
    TermRow{"both", "3q3Q/8/k7/8/8/8/5PPP/6K1", {52, -6}, {-139, -60}, 93, 23},
    TermRow{"none of the enemy", "7Q/8/k7/8/8/8/5PPP/6K1", {19, -1}, {-139, -60}, 93, 23},
    TermRow{"none of the own side", "3q4/8/k7/8/8/8/5PPP/6K1", {52, -6}, {-51, -22}, 93, 23},
    TermRow{"none at all", "8/8/k7/8/8/8/5PPP/6K1", {19, -1}, {-51, -22}, 93, 23},
    TermRow{"two of the enemy", "2qq3Q/8/k7/8/8/8/5PPP/6K1", {52, -6}, {-139, -60}, 93, 23}), RowName<TermRow>);

INSTANTIATE_TEST_SUITE_P(Openness, KingSafetySteps, testing::Values(
    TermRow{"1", "3q3Q/8/k7/8/8/8/5PPP/6K1", {39, -4}, {-104, -45}, 93, 23, {.openness = 1}},       // 6 / 8: (39, -4), (-105, -225)
    TermRow{"2", "3q3Q/8/k7/8/8/8/5PPP/6K1", {39, -4}, {-104, -45}, 93, 23, {.openness = 2}},
    TermRow{"3", "3q3Q/8/k7/8/8/8/5PPP/6K1", {39, -4}, {-104, -45}, 93, 23, {.openness = 3}},
    TermRow{"4", "3q3Q/8/k7/8/8/8/5PPP/6K1", {45, -5}, {-121, -52}, 93, 23, {.openness = 4}},       // 7 / 8: (45, -5), (-122, -262)
    TermRow{"5", "3q3Q/8/k7/8/8/8/5PPP/6K1", {45, -5}, {-121, -52}, 93, 23, {.openness = 5}},
    TermRow{"6", "3q3Q/8/k7/8/8/8/5PPP/6K1", {52, -6}, {-139, -60}, 93, 23, {.openness = 6}},
    TermRow{"7", "3q3Q/8/k7/8/8/8/5PPP/6K1", {52, -6}, {-139, -60}, 93, 23, {.openness = 7}},
    TermRow{"9", "3q3Q/8/k7/8/8/8/5PPP/6K1", {52, -6}, {-139, -60}, 93, 23, {.openness = 9}},
    TermRow{"10", "3q3Q/8/k7/8/8/8/5PPP/6K1", {58, -6}, {-156, -67}, 93, 23, {.openness = 10}},     // 9 / 8: (58, -6), (-157, -337)
    TermRow{"11", "3q3Q/8/k7/8/8/8/5PPP/6K1", {58, -6}, {-156, -67}, 93, 23, {.openness = 11}},
    TermRow{"12", "3q3Q/8/k7/8/8/8/5PPP/6K1", {65, -7}, {-174, -75}, 93, 23, {.openness = 12}},     // 10 / 8: (65, -7), (-175, -375)
    TermRow{"13", "3q3Q/8/k7/8/8/8/5PPP/6K1", {65, -7}, {-174, -75}, 93, 23, {.openness = 13}},
    TermRow{"14", "3q3Q/8/k7/8/8/8/5PPP/6K1", {71, -8}, {-191, -82}, 93, 23, {.openness = 14}},     // 11 / 8: (71, -8), (-192, -412)
    TermRow{"15", "3q3Q/8/k7/8/8/8/5PPP/6K1", {71, -8}, {-191, -82}, 93, 23, {.openness = 15}}), RowName<TermRow>);

INSTANTIATE_TEST_SUITE_P(EndgameWeight, KingSafetySteps, testing::Values(
    // x 1.2: 62.4, -7.2, -168, -360; then -6 x 1.2 and -359 x 0.2
    TermRow{"0", "3q3Q/8/k7/8/8/8/5PPP/6K1", {62, -7}, {-167, -72}, 93, 23, {.endgame_weight = 0.0}},
    // x 0.7: 36.4, -4.2, -98, -210; then -3 x 1.2 and -209 x 0.2
    TermRow{"0_5", "3q3Q/8/k7/8/8/8/5PPP/6K1", {36, -4}, {-97, -42}, 93, 23, {.endgame_weight = 0.5}},
    // x 0.5: 26, -3, -70, -150; then -2 x 1.2 and -149 x 0.2
    TermRow{"0_7", "3q3Q/8/k7/8/8/8/5PPP/6K1", {26, -2}, {-69, -30}, 93, 23, {.endgame_weight = 0.7}},
    // ten eighths x 0.5: 32.5, -3.5, -87.5, -187.5; then -3 x 1.2 and -187 x 0.2
    TermRow{"0_7 with halves", "3q3Q/8/k7/8/8/8/5PPP/6K1", {33, -4}, {-87, -37}, 93, 23, {.endgame_weight = 0.7, .openness = 12}},
    // x 0.2: 10.4, -1.2, -28, -60; then nothing and -59 x 0.2
    TermRow{"1", "3q3Q/8/k7/8/8/8/5PPP/6K1", {10, 0}, {-27, -12}, 93, 23, {.endgame_weight = 1.0}}), RowName<TermRow>);

/// Both kings are out, and all pressure on the own one, with the 10 points that this brings, is `attack`.
constexpr Surroundings Attack(int attack) {
    return {.enemy_pressure = {static_cast<std::int16_t>(attack - 10), 0, 0}};
}
// -299 times the factor and 0.2
INSTANTIATE_TEST_SUITE_P(AttackFactor, KingSafetySteps, testing::Values(
    TermRow{"none", "3q3Q/8/k7/8/8/6K1/8/8", {-139, -60}, enemy_out, -5, 8, Attack(-5)},          // 0.2: 59.8
    TermRow{"hardly any", "3q3Q/8/k7/8/8/6K1/8/8", {-139, -62}, enemy_out, -2, 8, Attack(-2)},    // 0.20642: 61.7
    TermRow{"at zero", "3q3Q/8/k7/8/8/6K1/8/8", {-139, -81}, enemy_out, 0, 8, Attack(0)},         // 0.27127: 81.1
    TermRow{"at 5", "3q3Q/8/k7/8/8/6K1/8/8", {-139, -135}, enemy_out, 5, 8, Attack(5)},           // 0.45307: 135.47
    TermRow{"at 10", "3q3Q/8/k7/8/8/6K1/8/8", {-139, -195}, enemy_out, 10, 8, Attack(10)},        // 0.65118: 194.7
    TermRow{"at 20", "3q3Q/8/k7/8/8/6K1/8/8", {-139, -310}, enemy_out, 20, 8, Attack(20)},        // 1.03743: 310.2
    TermRow{"at 25", "3q3Q/8/k7/8/8/6K1/8/8", {-139, -358}, enemy_out, 25, 8, Attack(25)},        // 1.19609: 357.6
    TermRow{"at 26", "3q3Q/8/k7/8/8/6K1/8/8", {-139, -359}, enemy_out, 26, 8, Attack(26)},        // 1.2: 358.8
    TermRow{"at 30", "3q3Q/8/k7/8/8/6K1/8/8", {-139, -359}, enemy_out, 30, 8, Attack(30)},
    // six pawns: -20 + 6 + 99 - 9 + 15 and -100 + 2 + 150 - 18 + 26
    TermRow{"a reckless half above zero stays", "3q3Q/8/k7/8/8/5PPP/5PPP/6K1", {91, 60}, enemy_out, 93, 23}), RowName<TermRow>);
// clang-format on

// --- Castling rights and the counters ---

struct RightsRow {
    std::string_view name;
    std::string_view position;
    int own_centre, enemy_centre;  // points that are taken from the pressure of each side there
    int own_cover, enemy_cover;    // and from its cover
};
std::ostream& operator<<(std::ostream& out, const RightsRow& row) { return out << row.name; }

class RightsAndCounters : public testing::TestWithParam<RightsRow> {};

TEST_P(RightsAndCounters, ShiftOnlyTheCentre) {
    const RightsRow& row = GetParam();
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        EVALUATION_CONTEXT& context = builder.context;
        const Colour enemy = Opponent(own);
        context.pressure[own] = {1, 2, 40};
        context.pressure[enemy] = {3, 4, 80};
        context.cover[own] = {5, 6, 60};
        context.cover[enemy] = {7, 8, 100};
        static_cast<void>(king_safety(context, builder.board));
        const auto less = [](int points, int taken) { return static_cast<std::int16_t>(points - taken); };
        EXPECT_EQ(context.pressure[own], (WingCounters{1, 2, less(40, row.own_centre)}));
        EXPECT_EQ(context.pressure[enemy], (WingCounters{3, 4, less(80, row.enemy_centre)}));
        EXPECT_EQ(context.cover[own], (WingCounters{5, 6, less(60, row.own_cover)}));
        EXPECT_EQ(context.cover[enemy], (WingCounters{7, 8, less(100, row.enemy_cover)}));
        // The kings on g1 and g8, or on their way there, feel what is left: pressure / 4 + 4 or 2, and cover / 2.
        EXPECT_EQ(context.king_attack[own], (80 - row.enemy_centre) / 4 + 4 + 13);
        EXPECT_EQ(context.king_attack[enemy], (40 - row.own_centre) / 4 + 2 + 13);
        EXPECT_EQ(context.king_cover[own], (60 - row.own_cover) / 2 + 6 - 46);
        EXPECT_EQ(context.king_cover[enemy], (100 - row.enemy_cover) / 2 + 8 - 46);
    });
}

INSTANTIATE_TEST_SUITE_P(KingSafety, RightsAndCounters,
                         testing::Values(RightsRow{"none", "6k1/8/8/8/8/8/8/6K1", 0, 0, 0, 0},
                                         RightsRow{"own short", "6k1/8/8/8/8/8/8/4K2R w K - 0 1", 4, 0, 6, 0},
                                         RightsRow{"own both", "6k1/8/8/8/8/8/8/R3K2R w KQ - 0 1", 4, 0, 6, 0},
                                         RightsRow{"of the enemy", "4k2r/8/8/8/8/8/8/6K1 w k - 0 1", 0, 4, 0, 6},
                                         RightsRow{"of both", "4k2r/8/8/8/8/8/8/4K2R w Kk - 0 1", 4, 4, 6, 6}),
                         RowName<RightsRow>);

// --- Both kings at once ---

// Both at home behind three pawns: 6 + 60 + 6 - 10 + 4 + 15 and 2 + 84 + 12 - 32 + 8 + 26, since three unmoved pawns
// are two neighbours of a storm and the king stands behind one of them; with the (-20, -100) of each, (61, 0).
// clang-format off
INSTANTIATE_TEST_SUITE_P(BothAtHome, KingSafetySteps, testing::Values(
    TermRow{"equal", "3q2k1/5ppp/8/8/8/8/5PPP/3Q2K1", {61, 0}, {61, 0}, 10 + 70 - 6 + 12 - 2, 23},
    TermRow{"without queens", "6k1/5ppp/8/8/8/8/5PPP/6K1", {22, 0}, {22, 0}, 84, 23},
    TermRow{"without the own queen", "3q2k1/5ppp/8/8/8/8/5PPP/6K1", {61, 0}, {22, 0}, 84, 23}), RowName<TermRow>);

// No pressure and no cover. The openness is 15 in all these, which makes 11 eighths of a half. At last the reckless
// halves below 0 are weighed by the attack: 0.2 and 0.5718 at 13 points, 0.2149 at 4.
constexpr Surroundings calm{.openness = 15, .enemy_pressure = {}, .own_cover = {}, .own_pressure = {}};
INSTANTIATE_TEST_SUITE_P(CalmBoard, KingSafetySteps, testing::Values(
    // White (52, -6), Black (-70, -177)
    TermRow{"a shelter against none", "3q2k1/8/8/8/8/8/5PPP/3Q2K1", {71, -5}, {-95, -100}, 13, 14, calm},
    TermRow{"nobody to attack White", "6k1/8/8/8/8/8/5PPP/3Q2K1", {26, -1}, {-95, -100}, 13, 14, calm},
    TermRow{"nobody to attack Black", "3q2k1/8/8/8/8/8/5PPP/6K1", {71, -5}, {-34, -37}, 13, 14, calm},
    TermRow{"equal", "3q2k1/5ppp/8/8/8/8/5PPP/3Q2K1", {0, 0}, {0, 0}, 4, 14, calm},
    // White -20 - 65 + 81 + 4 and -100 - 75 + 100 + 8, Black (61, 0): a rook stands behind h2
    TermRow{"still to castle", "3q2k1/5ppp/8/8/8/8/5PPP/3QK2R w K - 0 1", {0, -38}, {83, 0}, 4, 14 - 3, calm}), RowName<TermRow>);
// clang-format on

}  // namespace
