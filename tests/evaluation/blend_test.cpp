#include "evaluation/blend.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <ostream>
#include <string_view>

#include "support/evaluation_builder.h"
#include "support/row_name.h"

namespace {

// --- Endgame weight ---

struct WeightRow {
    int units;
    double weight;
};

// clang-format off
constexpr std::array weights{
    WeightRow{22, 1.0},    WeightRow{23, 0.9416}, WeightRow{24, 0.8211}, WeightRow{25, 0.7094}, WeightRow{26, 0.6058},
    WeightRow{27, 0.5097}, WeightRow{28, 0.4203}, WeightRow{29, 0.3369}, WeightRow{30, 0.2590}, WeightRow{31, 0.1857},
    WeightRow{32, 0.1165}, WeightRow{33, 0.0507}, WeightRow{34, 0.0},    WeightRow{35, 0.0},    WeightRow{36, 0.0},
    WeightRow{60, 0.0},
};
// clang-format on

TEST(EndgameWeight, FallsWithTheMaterialOfTheStrongerSide) {
    for (const WeightRow& row : weights) {
        for (const Colour stronger : {white, black}) {
            BOARD board;
            board.sides[stronger].heavy_points = 3;
            board.sides[stronger].minor_points = row.units - 15;
            board.sides[Opponent(stronger)].heavy_points = 4;
            board.sides[Opponent(stronger)].minor_points = 0;
            EXPECT_NEAR(endgame_weight(board), row.weight, 0.00005) << row.units;
        }
    }
}

TEST(EndgameWeight, FollowsItsCurve) {
    // With x = (35 - units) / 13: 0.24875006018 x^3 + 0.11095692200031873 x^2 + 0.7854795236172942 x -
    // 0.07369495345398903.
    for (const WeightRow& row : {WeightRow{22, 1.0}, WeightRow{23, 0.9415549035654}, WeightRow{26, 0.6058183775244},
                                 WeightRow{29, 0.3369259338664}, WeightRow{33, 0.0506800303458}, WeightRow{34, 0.0}}) {
        BOARD board;
        board.sides[white].minor_points = row.units;
        EXPECT_NEAR(endgame_weight(board), row.weight, 1e-12) << row.units;
    }
}

TEST(EndgameWeight, AnyQueenCountsThreeUnitsMore) {
    for (const Colour side : {white, black}) {
        BOARD board;
        board.sides[white].minor_points = 25;
        board.sides[side].queens = Bit(d4);
        EXPECT_NEAR(endgame_weight(board), 0.4203, 0.00005);
    }
}

// --- Blend ---

/// What is changed in a quiet position without queens: both kings castled, and nobody in danger. Its weight is
/// quiet_weight.
using Change = std::function<void(EvaluationBuilder&)>;

constexpr std::string_view quiet_position = "6k1/8/8/8/8/8/8/6K1 w - - 0 1";
constexpr int material_near_balance = -3;
constexpr int no_queens = -3;
constexpr int danger_without_attacks = 1;  // a quarter of 4.0, rounded
constexpr int quiet_weight = material_near_balance + no_queens + danger_without_attacks;

/// The sixteenths of the reckless value, which are too few or too many to be seen outside 1 to 15.
int WeightOf(EvaluationBuilder& position, bool is_middle_game = false) {
    return blend({0, 16}, is_middle_game, position.context, position.board);
}

struct WeightChangeRow {
    std::string_view name;
    Change change;
    int weight;  // less quiet_weight
    bool is_middle_game = false;
};
std::ostream& operator<<(std::ostream& out, const WeightChangeRow& row) { return out << row.name; }

class BlendWeight : public testing::TestWithParam<WeightChangeRow> {};

TEST_P(BlendWeight, AddsUp) {
    const WeightChangeRow& row = GetParam();
    const int personality = 8 - quiet_weight - row.weight;
    EvaluationBuilder position(quiet_position, {.personality = static_cast<std::int16_t>(personality)});
    row.change(position);
    EXPECT_EQ(WeightOf(position, row.is_middle_game), 8);
}

void Nothing(EvaluationBuilder& /*position*/) {}

Change Material(int balance) {
    return [balance](EvaluationBuilder& position) {
        position.board.frame().material_balance = static_cast<std::int16_t>(balance);
    };
}

INSTANTIATE_TEST_SUITE_P(Material, BlendWeight,
                         testing::Values(WeightChangeRow{"nothing", Nothing, 0},
                                         WeightChangeRow{"middle game", Nothing, 2, true},
                                         WeightChangeRow{"near balance", Material(49), 0},
                                         WeightChangeRow{"behind but near balance", Material(-49), 0},
                                         WeightChangeRow{"half a pawn", Material(50), 2},
                                         WeightChangeRow{"half a pawn in the middle game", Material(50), 4, true},
                                         WeightChangeRow{"behind by half a pawn", Material(-50), 2},
                                         WeightChangeRow{"not yet a clear lead", Material(254), 2},
                                         WeightChangeRow{"a clear lead", Material(255), 7},
                                         WeightChangeRow{"clearly behind", Material(-255), 7},
                                         WeightChangeRow{"a clear lead in the middle game", Material(255), 9, true}),
                         RowName<WeightChangeRow>);

Change Queens(bool of_white, bool of_black, int white_minors, int black_minors) {
    return [=](EvaluationBuilder& position) {
        position.board.sides[white].queens = of_white ? Bit(d1) : 0;
        position.board.sides[black].queens = of_black ? Bit(d8) : 0;
        position.board.sides[white].minor_points = white_minors;
        position.board.sides[black].minor_points = black_minors;
    };
}

INSTANTIATE_TEST_SUITE_P(
    Queens, BlendWeight,
    testing::Values(WeightChangeRow{"no queens and many pieces", Queens(false, false, 12, 12), 0},
                    WeightChangeRow{"all minor pieces", Queens(true, true, 12, 12), 3 + 1},
                    WeightChangeRow{"23 points", Queens(true, true, 12, 11), 3},
                    WeightChangeRow{"18 points", Queens(true, true, 6, 12), 3},
                    WeightChangeRow{"17 points", Queens(true, true, 6, 11), 3 - 1},
                    WeightChangeRow{"12 points", Queens(true, true, 0, 12), 3 - 1},
                    WeightChangeRow{"11 points", Queens(true, true, 6, 5), 3 - 2},
                    WeightChangeRow{"white queen alone", Queens(true, false, 12, 6), 3 + 2},
                    WeightChangeRow{"black queen alone", Queens(false, true, 12, 6), 3 + 2},
                    WeightChangeRow{"one queen and all minor pieces", Queens(false, true, 12, 12), 3 + 2 + 1},
                    WeightChangeRow{"one queen and no minor piece", Queens(true, false, 0, 0), 3 + 2 - 2}),
    RowName<WeightChangeRow>);

Change Openness(int openness) {
    return [openness](EvaluationBuilder& position) { position.context.openness = static_cast<std::int16_t>(openness); };
}

INSTANTIATE_TEST_SUITE_P(Openness, BlendWeight,
                         testing::Values(WeightChangeRow{"closed", Openness(3), 0},
                                         WeightChangeRow{"less closed", Openness(4), 1},
                                         WeightChangeRow{"half open", Openness(7), 1},
                                         WeightChangeRow{"a little more than half", Openness(8), 2},
                                         WeightChangeRow{"quite open", Openness(11), 2},
                                         WeightChangeRow{"very open", Openness(12), 3},
                                         WeightChangeRow{"wide open", Openness(15), 3}),
                         RowName<WeightChangeRow>);

/// The factors of one side's danger, the other king being safe.
Change Danger(Colour side, double cover_factor, double attack_factor) {
    return [=](EvaluationBuilder& position) {
        position.context.cover_factor[side] = cover_factor;
        position.context.attack_factor[side] = attack_factor;
    };
}
Change DangerOfBoth(double of_white, double of_black) {
    return [=](EvaluationBuilder& position) {
        Danger(white, of_white, 1.0)(position);
        Danger(black, 1.0, of_black)(position);
    };
}

INSTANTIATE_TEST_SUITE_P(
    Danger, BlendWeight,
    testing::Values(
        WeightChangeRow{"half a cover under half an attack", Danger(white, 0.5, 0.5), 2 - 1},    // 0.25 x 6 = 1.5
        WeightChangeRow{"an attack on a good cover", Danger(white, 0.0, 1.0), 0},                // 0.25 x 4
        WeightChangeRow{"no cover and no attack", Danger(black, 1.0, 0.0), 0},                   // 0.25 x 4
        WeightChangeRow{"white king naked", Danger(white, 1.0, 1.0), 12 - 1},                    // 1 x 12
        WeightChangeRow{"black king naked", Danger(black, 1.0, 1.0), 12 - 1},                    // 1 x 12
        WeightChangeRow{"both kings in some danger", DangerOfBoth(0.5, 0.5), 7 - 1},             // 0.5 x 14
        WeightChangeRow{"the two dangers count together", DangerOfBoth(0.7, 0.7), 14 - 1},       // 0.74 x 19.12
        WeightChangeRow{"the larger danger leads", DangerOfBoth(0.9, 0.2), 13 - 1},              // 0.9 x 14.24 = 12.8
        WeightChangeRow{"both kings naked is twenty at most", DangerOfBoth(1.0, 1.0), 20 - 1}),  // 1.25 x 28
    RowName<WeightChangeRow>);

/// Moves the kings of a position whose white king is in such danger that their places show.
Change Kings(Square of_white, Square of_black, double weight = 0.0) {
    return [=](EvaluationBuilder& position) {
        position.board.sides[white].king_square = of_white;
        position.board.sides[black].king_square = of_black;
        position.context.endgame_weight = weight;
        Danger(white, 0.97, 1.0)(position);
    };
}

/// Finer dangers, under which a tenth of an exposure shows.
Change KingOnD1In(double danger) {
    return [=](EvaluationBuilder& position) {
        Kings(d1, h8)(position);
        Danger(white, danger, 1.0)(position);
    };
}

INSTANTIATE_TEST_SUITE_P(CentreExposure, BlendWeight,
                         testing::Values(WeightChangeRow{"not below 0_8", KingOnD1In(0.94), 12 - 1},    // 11.58
                                         WeightChangeRow{"not above 0_8", KingOnD1In(0.985), 12 - 1}),  // 12.49
                         RowName<WeightChangeRow>);

// In the comments the exposure x; the danger is 0.97 (x + 7.76).
INSTANTIATE_TEST_SUITE_P(
    Exposure, BlendWeight,
    testing::Values(WeightChangeRow{"both castled", Kings(g1, g8), 11 - 1},                         // 4.0
                    WeightChangeRow{"both castled long", Kings(c1, a8), 11 - 1},                    // 4.0
                    WeightChangeRow{"white king on d1", Kings(d1, h8), 12 - 1},                     // 4.8
                    WeightChangeRow{"white king on f1", Kings(f1, h8), 12 - 1},                     // 4.8
                    WeightChangeRow{"white king on e1", Kings(e1, h8), 12 - 1},                     // 4.8
                    WeightChangeRow{"white king on f1, no wing", Kings(f1, a8), 12 - 1},            // 4.8
                    WeightChangeRow{"black king on d8", Kings(h1, d8), 12 - 1},                     // 4.8
                    WeightChangeRow{"black king on e8", Kings(h1, e8), 12 - 1},                     // 4.8
                    WeightChangeRow{"black king on f8", Kings(h1, f8), 12 - 1},                     // 4.8
                    WeightChangeRow{"both in the centre, on no wing", Kings(d1, f8), 13 - 1},       // 5.6
                    WeightChangeRow{"white long and black short", Kings(c1, g8), 13 - 1},           // 5.2
                    WeightChangeRow{"white short and black long", Kings(h1, a8), 13 - 1},           // 5.2
                    WeightChangeRow{"white on b1 and black on h8", Kings(b1, h8), 13 - 1},          // 5.2
                    WeightChangeRow{"white on g1 and black on c8", Kings(g1, c8), 13 - 1},          // 5.2
                    WeightChangeRow{"second rank is home", Kings(g2, g7), 11 - 1},                  // 4.0
                    WeightChangeRow{"white king on the third rank", Kings(g3, g8), 14 - 1},         // 7.0
                    WeightChangeRow{"black king on the sixth rank", Kings(g1, g6), 14 - 1},         // 7.0
                    WeightChangeRow{"both kings out", Kings(h8, g1), 17 - 1},                       // 10.0
                    WeightChangeRow{"a king out in the centre", Kings(e4, g8), 15 - 1},             // 7.8
                    WeightChangeRow{"it counts half near the ending", Kings(g3, g8, 0.5), 13 - 1},  // 5.5
                    WeightChangeRow{"and nothing in it", Kings(e4, d4, 1.0), 11 - 1},               // 4.0
                    WeightChangeRow{"wings count all the same", Kings(c1, g8, 1.0), 13 - 1}),       // 5.2
    RowName<WeightChangeRow>);

// --- From the weight to the score ---

int Blend(int personality, SCORE_PAIR pair) {
    EvaluationBuilder position(quiet_position, {.personality = static_cast<std::int16_t>(personality)});
    return blend(pair, false, position.context, position.board);
}

TEST(Blend, ExtremePersonalitiesTakeOneValue) {
    EvaluationBuilder reckless(quiet_position, {.personality = 1000});
    EXPECT_EQ(blend({-300, 77}, false, reckless.context, reckless.board), 77);
    EvaluationBuilder positional(quiet_position, {.personality = -1000});
    DangerOfBoth(1.0, 1.0)(positional);
    EXPECT_EQ(blend({-300, 77}, true, positional.context, positional.board), -300);
}

TEST(Blend, WeightsOutsideOneToFifteenTakeOneValue) {
    EXPECT_EQ(Blend(-quiet_weight, {160, -160}), 160);
    EXPECT_EQ(Blend(1 - quiet_weight, {160, -160}), 140);
    EXPECT_EQ(Blend(15 - quiet_weight, {160, -160}), -140);
    EXPECT_EQ(Blend(16 - quiet_weight, {160, -160}), -160);
    EXPECT_EQ(Blend(17 - quiet_weight, {160, -160}), -160);
    EXPECT_EQ(Blend(0, {160, -160}), 160) << "a quiet position";
}

TEST(Blend, DivisionTruncatesTowardsZero) {
    EXPECT_EQ(Blend(3 - quiet_weight, {-7, 10}), -3);  // -61 / 16
    EXPECT_EQ(Blend(3 - quiet_weight, {7, -10}), 3);
    EXPECT_EQ(Blend(8 - quiet_weight, {1, 0}), 0);
    EXPECT_EQ(Blend(8 - quiet_weight, {-1, 0}), 0);
}

}  // namespace
