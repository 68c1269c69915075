// The shield of a king. Values stand in the order in which they are found: by file, second rank, the files from the
// left with their squares, open files, holes. Three pawns at home are 3 x (20, 28), a file without a shield is (-12,
// -14) and 10 points of cover; without enemy pawns three open files are (-9, -18) and 13 points of attack, two are (-6,
// -12) and 9.

#include <gtest/gtest.h>

#include "support/king_rows.h"
#include "support/row_name.h"

namespace {

class ShelterRules : public testing::TestWithParam<KingRow> {};
TEST_P(ShelterRules, GivePairAndDanger) {
    ExpectShelter<shelter<white, EVALUATION_CONTEXT>, shelter<black, EVALUATION_CONTEXT>>(GetParam());
}

class CastledShelterRules : public testing::TestWithParam<KingRow> {};
TEST_P(CastledShelterRules, GivePairAndDanger) {
    ExpectShelter<castled_shelter<white, EVALUATION_CONTEXT>, castled_shelter<black, EVALUATION_CONTEXT>>(GetParam());
}

/// Pressure of the enemy and own cover on all wings; negative halves and quarters are cut towards zero.
void Pressed(EVALUATION_CONTEXT& context, Colour own) {
    context.pressure[Opponent(own)] = {8, 10, -6};  // queen side, king side, centre
    context.cover[own] = {3, 4, -5};
}

// clang-format off

// --- Where the king stands ---

INSTANTIATE_TEST_SUITE_P(Files, ShelterRules, testing::Values(
    KingRow{"a counts the queen side", a1, "4k3/8/8/8/8/8/PP6/K7", {2 + 40 - 6 + 15, 2 + 56 - 12 + 26}, 41 / 4 + 100 + 9, 7 / 2 + 30 + 14, OnAllWings},
    KingRow{"b counts the queen side", b1, "4k3/8/8/8/8/8/PPP5/1K6", {2 + 60 - 9 + 15, 2 + 84 - 18 + 26}, 10 + 100 + 13, 3 + 30 + 14, OnAllWings},
    KingRow{"c counts the queen side", c1, "4k3/8/8/8/8/8/1PPP4/2K5", {2 + 60 - 9 + 15, 2 + 84 - 18 + 26}, 10 + 100 + 13, 3 + 30 + 14, OnAllWings},
    KingRow{"d counts all pressure", d1, "4k3/8/8/8/8/8/2PPP3/3K4", {-55 + 60 - 9 + 15, -80 + 84 - 18 + 26}, 100 + 200 + 41 + 13, 7 + 14, OnAllWings},
    KingRow{"e counts all pressure", e1, "4k3/8/8/8/8/8/3PPP2/4K3", {-55 + 60 - 9 + 15, -80 + 84 - 18 + 26}, 100 + 200 + 41 + 13, 7 + 14, OnAllWings},
    KingRow{"f counts the queen side", f1, "4k3/8/8/8/8/8/4PPP1/5K2", {2 + 60 - 9 + 15, 2 + 84 - 18 + 26}, 10 + 100 + 13, 3 + 30 + 14, OnAllWings},
    KingRow{"g counts the king side", g1, "4k3/8/8/8/8/8/5PPP/6K1", {6 + 60 - 9 + 15, 2 + 84 - 18 + 26}, 10 + 200 + 13, 3 + 50 + 14, OnAllWings},
    KingRow{"h counts the king side", h1, "4k3/8/8/8/8/8/6PP/7K", {6 + 40 - 6 + 15, 2 + 56 - 12 + 26}, 10 + 200 + 9, 3 + 50 + 14, OnAllWings},
    KingRow{"b cuts towards zero", b1, "4k3/8/8/8/8/8/PPP5/1K6", {2 + 60 - 9 + 15, 2 + 84 - 18 + 26}, -10 + 10 + 13, -3 + 3 + 14, WeakCentre},
    KingRow{"g cuts towards zero", g1, "4k3/8/8/8/8/8/5PPP/6K1", {6 + 60 - 9 + 15, 2 + 84 - 18 + 26}, -10 + 20 + 13, -3 + 5 + 14, WeakCentre},
    KingRow{"e cuts nothing", e1, "4k3/8/8/8/8/8/3PPP2/4K3", {-55 + 60 - 9 + 15, -80 + 84 - 18 + 26}, 10 + 20 - 41 + 13, -7 + 14, WeakCentre},
    KingRow{"a square that the king has yet to reach", g1, "4k3/8/8/8/8/8/5PPP/4K2R", {6 + 60 - 9 + 15, 2 + 84 - 18 + 26}, 13, 14}), RowName<KingRow>);

INSTANTIATE_TEST_SUITE_P(Ranks, ShelterRules, testing::Values(
    KingRow{"third rank is out", g3, "4k3/8/8/8/8/6K1/5PPP/8", {-120, -200}, 100 + 200 + 41 + 10, 7, OnAllWings},
    KingRow{"last rank is out", g8, "6K1/8/8/8/k7/8/5PPP/8", {-120, -200}, 351, 7, OnAllWings},
    KingRow{"out in the centre", e4, "4k3/8/8/8/4K3/8/8/8", {-120, -200}, 10, 0},
    KingRow{"out against a storm", g3, "4k3/8/8/8/6pp/6K1/8/8", {-120, -200}, 10, 0},
    KingRow{"out with a weak centre", b5, "4k3/8/8/1K6/8/8/8/8", {-120, -200}, 10 + 20 - 41 + 10, -7, WeakCentre},
    KingRow{"second rank", e2, "4k3/8/8/8/8/4P3/3PKP2/8", {-55 - 6 + 53 - 9 + 3, -80 - 14 + 78 - 18 + 10}, 13, -8 + 8},
    KingRow{"second rank of the f-file", f2, "4k3/8/8/8/8/5P2/4PKP1/8", {2 - 6 + 53 - 9 + 3, 2 - 14 + 78 - 18 + 10}, 13, -8 + 8},
    KingRow{"second rank, all three pawns on the third", c2, "4k3/8/8/8/8/1PPP4/2K5/8", {2 - 6 + 39 - 9 + 15, 2 - 14 + 66 - 18 + 26}, 13, -8 + 14},
    KingRow{"second rank, two on the third and a fianchetto hole", g2, "4k3/8/8/8/8/5P1P/6K1/8", {6 - 6 + 26 - 12 - 9 - 20, 2 - 14 + 44 - 14 - 18 - 30}, 13, -8 - 10 - 10},
    KingRow{"second rank, two on the third", c2, "4k3/8/8/8/8/1PP5/2K5/8", {2 - 6 + 26 - 12 - 9 + 3, 2 - 14 + 44 - 14 - 18 + 10}, 13, -8 - 10 + 8},
    KingRow{"second rank, one on the third", g2, "4k3/8/8/8/8/5P2/6K1/8", {6 - 6 + 13 - 24 - 9 - 7, 2 - 14 + 22 - 28 - 18 - 12}, 13, -8 - 20 - 9},
    KingRow{"second rank without a shield", e2, "4k3/8/8/8/8/8/4K3/8", {-55 - 6 - 36 - 9 - 20, -80 - 14 - 42 - 18 - 25}, 13, -8 - 30 - 16},
    KingRow{"two holes of the first row are not looked at again", g2, "4k3/8/8/8/8/6PP/5PK1/8", {6 - 6 + 20 + 26 - 9 - 7, 2 - 14 + 28 + 44 - 18 - 12}, 13, -8 - 9},
    KingRow{"first rank, all three pawns on the third", g1, "4k3/8/8/8/8/5PPP/8/6K1", {6 + 39 - 9 - 20, 2 + 66 - 18 - 25}, 13, -16}), RowName<KingRow>);

// --- The squares ahead ---

// The e-file between pawns d2 and f2 that are worth (-55 + 40 - 9, -80 + 56 - 18); one hole is another (3, 10) and 8.
INSTANTIATE_TEST_SUITE_P(InnerFile, ShelterRules, testing::Values(
    KingRow{"nothing", e1, "k7/8/8/8/8/8/3P1P2/4K3", {-21 - 12, -32 - 14}, 13, 8 - 10},
    KingRow{"pawn on the first square", e1, "k7/8/8/8/8/8/3PPP2/4K3", {-24 + 20 + 15, -42 + 28 + 26}, 13, 14},
    KingRow{"pawn on the second square", e1, "k7/8/8/8/8/4P3/3P1P2/4K3", {-21 + 13, -32 + 22}, 13, 8},
    KingRow{"pawns on both squares", e1, "k7/8/8/8/8/4P3/3PPP2/4K3", {-24 + 20 + 13 + 15, -42 + 28 + 22 + 26}, 13, 14},
    KingRow{"pawn on the third square", e1, "k7/8/8/8/4P3/8/3P1P2/4K3", {-21 - 10, -32 - 12}, 13, 8 - 6},
    KingRow{"pawn on the fourth square", e1, "k7/8/8/4P3/8/8/3P1P2/4K3", {-21 - 12, -32 - 14}, 13, 8 - 10},
    KingRow{"pawns on the second and third squares", e1, "k7/8/8/8/4P3/4P3/3P1P2/4K3", {-21 + 13, -32 + 22}, 13, 8},
    KingRow{"pawns on the first and third squares", e1, "k7/8/8/8/4P3/8/3PPP2/4K3", {-24 + 20 + 15, -42 + 28 + 26}, 13, 14},
    KingRow{"enemy pawn on the third square", e1, "k7/8/8/8/4p3/8/3P1P2/4K3", {-21 - 12 + 3, -32 - 14 + 6}, 9, 8 - 10},
    KingRow{"bishop on the first square", e1, "k7/8/8/8/8/8/3PBP2/4K3", {-33 + 2, -46 + 5}, 13, -2 + 2},
    KingRow{"bishop on the second square", e1, "k7/8/8/8/8/4B3/3P1P2/4K3", {-33, -46 + 2}, 13, -2 + 2},
    KingRow{"bishops on both squares", e1, "k7/8/8/8/8/4B3/3PBP2/4K3", {-33 + 2, -46 + 5 + 2}, 13, -2 + 4},
    KingRow{"bishop on the third square", e1, "7k/8/8/8/4B3/8/3P1P2/4K3", {-33, -46}, 13, -2},
    KingRow{"knight on the first square", e1, "k7/8/8/8/8/8/3PNP2/4K3", {-33 + 3, -46 + 6}, 13, -2 + 2},
    KingRow{"knight on the second square", e1, "k7/8/8/8/8/4N3/3P1P2/4K3", {-33 + 2, -46 + 4}, 13, -2 + 2},
    KingRow{"knight on the third square", e1, "k7/8/8/8/4N3/8/3P1P2/4K3", {-33, -46}, 13, -2},
    KingRow{"rook on the first square", e1, "k7/8/8/8/8/8/3PRP2/4K3", {-33, -46}, 13, -2},
    KingRow{"queen on the second square", e1, "k7/8/8/8/8/4Q3/3P1P2/4K3", {-33, -46}, 13, -2},
    KingRow{"pawn behind a bishop", e1, "k7/8/8/8/8/4B3/3PPP2/4K3", {11, 12 + 2}, 13, 14 + 2},
    KingRow{"pawn behind a knight", e1, "k7/8/8/8/8/4N3/3PPP2/4K3", {11 + 2, 12 + 4}, 13, 14 + 2},
    KingRow{"pawn before a bishop", e1, "k7/8/8/8/8/4P3/3PBP2/4K3", {-21 + 13 + 2, -32 + 22 + 5}, 13, 8 + 2},
    KingRow{"enemy on the first square", e1, "k7/8/8/8/8/8/3PnP2/4K3", {-33, -46}, 13 + 4, -2},
    KingRow{"enemy on the second square", e1, "k7/8/8/8/8/4n3/3P1P2/4K3", {-33, -46}, 13 + 4, -2},
    KingRow{"enemies on both squares", e1, "k7/8/8/8/8/4n3/3PbP2/4K3", {-33, -46}, 13 + 8, -2},
    KingRow{"enemy on the third square", e1, "k7/8/8/8/4n3/8/3P1P2/4K3", {-33, -46}, 13, -2},
    KingRow{"enemy pawn on the first square", e1, "k7/8/8/8/8/8/3PpP2/4K3", {-33 + 3, -46 + 6}, 9 + 4, -2},
    KingRow{"enemy before a pawn", e1, "k7/8/8/8/8/4q3/3PPP2/4K3", {11, 12}, 13 + 4, 14}), RowName<KingRow>);

// The a-file beside b2 and c2, worth (2 + 40 - 9 + 15, 2 + 56 - 18 + 26) and 14; the h-file beside f2 and g2 likewise.
INSTANTIATE_TEST_SUITE_P(RimFile, ShelterRules, testing::Values(
    KingRow{"nothing on the a-file", b1, "4k3/8/8/8/8/8/1PP5/1K6", {48 - 12, 66 - 14}, 13, 14 - 10},
    KingRow{"bishop on the first square of the a-file", b1, "4k3/8/8/8/8/8/BPP5/1K6", {48 - 12, 66 - 14}, 13, 14 - 10},
    KingRow{"bishop on the second square of the a-file", b1, "4k3/8/8/8/8/B7/1PP5/1K6", {48 - 12, 66 - 14}, 13, 14 - 10},
    KingRow{"knight on the first square of the a-file", b1, "4k3/8/8/8/8/8/NPP5/1K6", {48 - 12, 66 - 14}, 13, 14 - 10},
    KingRow{"knight on the second square of the a-file", b1, "4k3/8/8/8/8/N7/1PP5/1K6", {48 - 12, 66 - 14}, 13, 14 - 10},
    KingRow{"enemy on the first square of the a-file", b1, "4k3/8/8/8/8/8/nPP5/1K6", {48 - 12, 66 - 14}, 13 + 4, 14 - 10},
    KingRow{"enemy on the second square of the a-file", b1, "4k3/8/8/8/8/n7/1PP5/1K6", {48 - 12, 66 - 14}, 13 + 4, 14 - 10},
    KingRow{"bishop on the first square of the h-file", g1, "4k3/8/8/8/8/8/5PPB/6K1", {52 - 12, 66 - 14}, 13, 14 - 10},
    KingRow{"knight on the second square of the h-file", g1, "4k3/8/8/8/8/7N/5PP1/6K1", {52 - 12, 66 - 14}, 13, 14 - 10},
    KingRow{"pawn on the second square of the h-file", g1, "4k3/8/8/8/8/7P/5PP1/6K1", {52 + 13, 66 + 22}, 13, 14},
    KingRow{"pawn on the third square of the h-file", g1, "4k3/8/8/8/7P/8/5PP1/6K1", {52 - 10, 66 - 12}, 13, 14 - 6}), RowName<KingRow>);

// --- Files and shields on a plain board ---

INSTANTIATE_TEST_SUITE_P(PlainBoard, ShelterRules, testing::Values(
    KingRow{"g1 behind three pawns", g1, "4k3/8/8/8/8/8/5PPP/6K1", {6 + 60 - 9 + 15, 2 + 84 - 18 + 26}, 13, 14},
    KingRow{"c1 behind three pawns", c1, "4k3/8/8/8/8/8/1PPP4/2K5", {2 + 60 - 9 + 15, 2 + 84 - 18 + 26}, 13, 14},
    KingRow{"f1 stands with the queen side", f1, "4k3/8/8/8/8/8/4PPP1/5K2", {2 + 60 - 9 + 15, 2 + 84 - 18 + 26}, 13, 14},
    KingRow{"e1 behind three pawns", e1, "4k3/8/8/8/8/8/3PPP2/4K3", {-55 + 60 - 9 + 15, -80 + 84 - 18 + 26}, 13, 14},
    KingRow{"d1 behind three pawns", d1, "4k3/8/8/8/8/8/2PPP3/3K4", {-55 + 60 - 9 + 15, -80 + 84 - 18 + 26}, 13, 14},
    KingRow{"off its two ranks", g3, "4k3/8/8/8/8/6K1/5PPP/8", {-120, -200}, 10, 0},
    KingRow{"off its two ranks, pressed", g3, "4k3/8/8/8/8/6K1/5PPP/8", {-120, -200}, 8 + 10 - 6 + 10, -5, Pressed},
    KingRow{"g1 pressed", g1, "4k3/8/8/8/8/8/5PPP/6K1", {72, 94}, 13 - 1 + 10, 14 - 2 + 4, Pressed},
    KingRow{"c1 pressed", c1, "4k3/8/8/8/8/8/1PPP4/2K5", {68, 94}, 13 - 1 + 8, 14 - 2 + 3, Pressed},
    KingRow{"f1 pressed on the queen side", f1, "4k3/8/8/8/8/8/4PPP1/5K2", {68, 94}, 13 - 1 + 8, 14 - 2 + 3, Pressed},
    KingRow{"e1 pressed", e1, "4k3/8/8/8/8/8/3PPP2/4K3", {11, 12}, 13 + 12, 14 - 5, Pressed}), RowName<KingRow>);

INSTANTIATE_TEST_SUITE_P(Shields, ShelterRules, testing::Values(
    KingRow{"one file closed", g1, "4k3/8/8/8/8/8/3p1PPP/6K1", {72, 94}, 13, 14},
    KingRow{"second rank with a bishop on it", g2, "4k3/8/8/8/4B3/6P1/5PKP/8", {6 - 6 + 53 - 9 + 3, 2 - 14 + 78 - 18 + 10}, 13, -8 + 8},
    KingRow{"second rank, all holes there", g2, "4k3/8/8/8/8/5PPP/6K1/8", {6 - 6 + 39 - 9 + 15, 2 - 14 + 66 - 18 + 26}, 13, -8 + 14},
    KingRow{"a pawn on the third square", g1, "4k3/8/8/8/6P1/8/5P1P/6K1", {6 + 40 - 10 - 9 - 20, 2 + 56 - 12 - 18 - 30}, 13, -16},
    KingRow{"a bishop on the first square", g1, "4k3/8/8/8/8/8/5PBP/6K1", {5 + 2, -4 + 5}, 13, -18},
    KingRow{"a knight on the first square", g1, "4k3/8/8/8/8/8/5PNP/6K1", {5 + 3, -4 + 6}, 13, -18},
    KingRow{"an enemy on the first square", g1, "4k3/8/8/8/8/8/5PnP/6K1", {5, -4}, 17, -20},
    KingRow{"a bishop on the second square", g1, "4k3/8/8/8/8/6B1/5P1P/6K1", {5, -4 + 2}, 13, -18},
    KingRow{"a knight on the second square", g1, "4k3/8/8/8/8/6N1/5P1P/6K1", {5 + 2, -4 + 4}, 13, -18},
    KingRow{"an enemy on the second square", g1, "4k3/8/8/8/8/6n1/5P1P/6K1", {5, -4}, 17, -20},
    KingRow{"a rook there counts for nothing", g1, "4k3/8/8/8/8/8/5PRP/6K1", {5, -4}, 13, -20},
    KingRow{"two holes beside f2", g1, "4k3/8/8/8/8/8/5P2/6K1", {6 + 20 - 24 - 9 - 7, 2 + 28 - 28 - 18 - 12}, 13, -29},
    KingRow{"three holes", g1, "4k3/8/8/8/8/8/8/6K1", {6 - 36 - 9 - 20, 2 - 42 - 18 - 25}, 13, -46},
    KingRow{"one hole, side by side", g1, "4k3/8/8/8/8/4PP2/6PP/6K1", {6 + 53 - 9 + 15, 2 + 78 - 18 + 26}, 13, 14},
    KingRow{"one hole, a bishop on the diagonal", g1, "4k3/8/1B6/8/8/5P2/6PP/6K1", {6 + 53 - 9 + 15, 2 + 78 - 18 + 26}, 13, 14},
    KingRow{"one hole, nothing else", g1, "4k3/8/8/8/8/6P1/5P1P/6K1", {6 + 53 - 9 + 3, 2 + 78 - 18 + 10}, 13, 8}), RowName<KingRow>);

// --- Open files ---

INSTANTIATE_TEST_SUITE_P(OpenFiles, ShelterRules, testing::Values(
    KingRow{"none", e1, "k7/3ppp2/8/8/8/8/3PPP2/4K3", {-55 + 60 + 6 + 15, -80 + 84 + 12 + 26}, -6, 14},
    KingRow{"one", e1, "k7/4pp2/8/8/8/8/3PPP2/4K3", {-55 + 60 - 0 + 15, -80 + 84 - 6 + 26}, 4, 14},
    KingRow{"two", e1, "k7/5p2/8/8/8/8/3PPP2/4K3", {-55 + 60 - 6 + 15, -80 + 84 - 12 + 26}, 9, 14},
    KingRow{"three", e1, "k7/8/8/8/8/8/3PPP2/4K3", {-55 + 60 - 9 + 15, -80 + 84 - 18 + 26}, 13, 14},
    KingRow{"three beside pawns of other files", e1, "k7/2p3p1/8/8/8/8/3PPP2/4K3", {11, 12}, 13, 14},
    KingRow{"a file with two pawns is one", e1, "k7/5p2/5p2/8/8/8/3PPP2/4K3", {14, 18}, 9, 14},
    KingRow{"own pawns open nothing", e1, "k7/8/8/4P3/8/8/3P1P2/4K3", {-33, -46}, 13, -2},
    KingRow{"two of the rim", h1, "4k3/8/8/8/8/8/6PP/7K", {6 + 40 - 6 + 15, 2 + 56 - 12 + 26}, 9, 14},
    KingRow{"one of the rim", h1, "4k3/7p/8/8/8/8/6PP/7K", {6 + 40 - 0 + 15, 2 + 56 - 6 + 26}, 4, 14},
    KingRow{"far from the rim", h1, "4k3/5p2/8/8/8/8/6PP/7K", {6 + 40 - 6 + 15, 2 + 56 - 12 + 26}, 9, 14}), RowName<KingRow>);

// --- One hole ---

INSTANTIATE_TEST_SUITE_P(FianchettoHole, ShelterRules, testing::Values(
    KingRow{"g seen from g", g1, "4k3/8/8/8/8/8/5P1P/6K1", {6 + 40 - 12 - 9 - 20, 2 + 56 - 14 - 18 - 30}, 13, -10 - 10},
    KingRow{"g seen from f", f1, "4k3/8/8/8/8/8/4PP2/5K2", {2 + 40 - 12 - 9 - 20, 2 + 56 - 14 - 18 - 30}, 13, -10 - 10},
    KingRow{"g seen from h", h1, "4k3/8/8/8/8/8/7P/7K", {6 + 20 - 12 - 6 - 20, 2 + 28 - 14 - 12 - 30}, 9, -10 - 10},
    KingRow{"b seen from a", a1, "4k3/8/8/8/8/8/P7/K7", {2 + 20 - 12 - 6 - 20, 2 + 28 - 14 - 12 - 30}, 9, -10 - 10},
    KingRow{"b seen from b", b1, "4k3/8/8/8/8/8/P1P5/1K6", {2 + 40 - 12 - 9 - 20, 2 + 56 - 14 - 18 - 30}, 13, -10 - 10},
    KingRow{"b seen from c", c1, "4k3/8/8/8/8/8/2PP4/2K5", {2 + 40 - 12 - 9 - 20, 2 + 56 - 14 - 18 - 30}, 13, -10 - 10},
    KingRow{"with a pawn on the third square", b1, "4k3/8/8/8/1P6/8/P1P5/1K6", {2 + 40 - 10 - 9 - 20, 2 + 56 - 12 - 18 - 30}, 13, -6 - 10},
    KingRow{"filled by a pawn on the second square", b1, "4k3/8/8/8/8/1P6/P1P5/1K6", {2 + 40 + 13 - 9 + 3, 2 + 56 + 22 - 18 + 10}, 13, 8},
    KingRow{"not filled by a bishop", b1, "4k3/8/8/8/8/8/PBP5/1K6", {2 + 40 + 2 - 12 - 9 - 20, 2 + 56 + 5 - 14 - 18 - 30}, 13, 2 - 10 - 10},
    KingRow{"f is none", e1, "4k3/8/8/8/8/8/3PP3/4K3", {-55 + 40 - 12 - 9 + 15, -80 + 56 - 14 - 18 + 26}, 13, -10 + 14},
    KingRow{"c is none", d1, "4k3/8/8/8/8/8/3PP3/3K4", {-55 + 40 - 12 - 9 + 15, -80 + 56 - 14 - 18 + 26}, 13, -10 + 14}), RowName<KingRow>);

INSTANTIATE_TEST_SUITE_P(DoubledIsolatedPawns, ShelterRules, testing::Values(
    KingRow{"on f beside g", g1, "4k3/8/8/8/8/5P2/5P1P/6K1", {6 + 33 + 20 - 12 - 18 - 9 - 20, 2 + 50 + 28 - 14 - 25 - 18 - 30}, 13, -10 - 10 - 10},
    KingRow{"on h beside g", g1, "4k3/8/8/8/8/7P/5P1P/6K1", {6 + 20 + 33 - 12 - 18 - 9 - 20, 2 + 28 + 50 - 14 - 25 - 18 - 30}, 13, -10 - 10 - 10},
    KingRow{"on both files at once", g1, "4k3/8/8/8/8/5P1P/5P1P/6K1", {6 + 66 - 12 - 18 - 9 - 20, 2 + 100 - 14 - 25 - 18 - 30}, 13, -10 - 10 - 10},
    KingRow{"on f outside the walk of h", h1, "4k3/8/8/8/8/5P2/5P1P/7K", {6 + 20 - 12 - 18 - 6 - 20, 2 + 28 - 14 - 25 - 12 - 30}, 9, -10 - 10 - 10},
    KingRow{"on a outside the walk of c", c1, "4k3/8/8/8/8/P7/P1PP4/2K5", {2 + 40 - 12 - 18 - 9 - 20, 2 + 56 - 14 - 25 - 18 - 30}, 13, -10 - 10 - 10},
    KingRow{"on c outside the walk of a", a1, "4k3/8/8/8/8/2P5/P1P5/K7", {2 + 20 - 12 - 18 - 6 - 20, 2 + 28 - 14 - 25 - 12 - 30}, 9, -10 - 10 - 10},
    KingRow{"doubled far ahead", g1, "4k3/8/7P/7P/8/8/5P1P/6K1", {6 + 40 - 12 - 18 - 9 - 20, 2 + 56 - 14 - 25 - 18 - 30}, 13, -10 - 10 - 10},
    KingRow{"doubled beside a neighbour", g1, "4k3/8/8/8/4P3/5P2/5P1P/6K1", {6 + 33 + 20 - 12 - 9 - 20, 2 + 50 + 28 - 14 - 18 - 30}, 13, -10 - 10},
    KingRow{"doubled beside a pawn of the hole's own file", g1, "4k3/8/8/6P1/8/7P/5P1P/6K1", {6 + 20 + 33 - 12 - 9 - 20, 2 + 28 + 50 - 14 - 18 - 30}, 13, -10 - 10},
    KingRow{"isolated but single", g1, "4k3/8/8/8/8/8/5P1P/6K1", {5, -4}, 13, -20},
    KingRow{"doubled two files away", g1, "4k3/8/8/8/3P4/3P4/5P1P/6K1", {5, -4}, 13, -20},
    KingRow{"of the enemy", g1, "4k3/5p2/5p2/8/8/8/5P1P/6K1", {5 + 3 - 6 + 2 + 4, -4 + 6 - 12 + 10 + 8}, 9 + 8 - 4 - 2, -20},
    KingRow{"beside a hole that is no fianchetto", e1, "k7/8/8/8/8/2P5/2PP1P2/4K3", {-33, -46}, 13, -2}), RowName<KingRow>);

// Kings on b2 and c2 with the walk (20, 28), (13, 22), (20, 28), or in the corner with (20, 28), (13, 22).
INSTANTIATE_TEST_SUITE_P(LongDiagonal, ShelterRules, testing::Values(
    KingRow{"open from b2", b2, "4k3/8/8/8/8/1P6/PKP5/8", {2 - 6 + 53 - 9 - 4, 2 - 14 + 78 - 18 - 6}, 13, -8 - 6},
    KingRow{"pawn on c3", b2, "4k3/8/8/8/8/1PP5/PKP5/8", {2 - 6 + 66 - 9 + 3, 2 - 14 + 100 - 18 + 10}, 13, -8 + 8},
    KingRow{"pawn on d4", b2, "4k3/8/8/8/3P4/1P6/PKP5/8", {2 - 6 + 53 - 9 + 3, 2 - 14 + 78 - 18 + 10}, 13, -8 + 8},
    KingRow{"pawn on e5", b2, "4k3/8/8/4P3/8/1P6/PKP5/8", {36, 42}, 13, -14},
    KingRow{"pawn of the enemy on c3", b2, "4k3/8/8/8/8/1Pp5/PKP5/8", {36 + 3, 42 + 6}, 9 + 4, -14},
    KingRow{"rook on c3", b2, "4k3/8/8/8/8/1PR5/PKP5/8", {36, 42}, 13, -14},
    KingRow{"bishop on d4", b2, "4k3/8/8/8/3B4/1P6/PKP5/8", {43, 58}, 13, 0},
    KingRow{"bishop on h8", b2, "4k2B/8/8/8/8/1P6/PKP5/8", {43, 58}, 13, 0},
    KingRow{"bishop behind on a1", b2, "4k3/8/8/8/8/1P6/PKP5/B7", {43, 58}, 13, 0},
    KingRow{"bishop beside it", b2, "4k3/8/8/8/4B3/1P6/PKP5/8", {36, 42}, 13, -14},
    KingRow{"bishop of the enemy on h8", b2, "4k2b/8/8/8/8/1P6/PKP5/8", {36, 42}, 13, -14},
    KingRow{"bishop on the other long diagonal", g2, "4k3/8/8/8/3B4/6P1/5PKP/8", {6 - 6 + 53 - 9 - 4, 2 - 14 + 78 - 18 - 6}, 13, -8 - 6},
    KingRow{"open from g2", g2, "4k3/8/8/8/8/6P1/5PKP/8", {6 - 6 + 53 - 9 - 4, 2 - 14 + 78 - 18 - 6}, 13, -8 - 6},
    KingRow{"pawn on e4 before g2", g2, "4k3/8/8/8/4P3/6P1/5PKP/8", {6 - 6 + 53 - 9 + 3, 2 - 14 + 78 - 18 + 10}, 13, -8 + 8},
    KingRow{"pawn on d5 before g2", g2, "4k3/8/8/3P4/8/6P1/5PKP/8", {6 - 6 + 53 - 9 - 4, 2 - 14 + 78 - 18 - 6}, 13, -8 - 6},
    KingRow{"nothing of it for c2", c2, "4k3/8/8/8/8/2P5/1PKP4/8", {2 - 6 + 53 - 9 + 3, 2 - 14 + 78 - 18 + 10}, 13, -8 + 8},
    KingRow{"open from a1", a1, "4k3/8/8/8/8/1P6/P7/K7", {2 + 33 - 6 - 4, 2 + 50 - 12 - 6}, 9, -6},
    KingRow{"pawn on b2", a1, "4k3/8/8/8/8/P7/1P6/K7", {2 + 33 - 6 + 3, 2 + 50 - 12 + 10}, 9, 8},
    KingRow{"open from h1", h1, "4k3/8/8/8/8/6P1/7P/7K", {6 + 33 - 6 - 4, 2 + 50 - 12 - 6}, 9, -6},
    KingRow{"pawn on f3", h1, "4k3/8/8/8/8/5PP1/7P/7K", {6 + 33 - 6 + 3, 2 + 50 - 12 + 10}, 9, 8},
    KingRow{"pawn on e4", h1, "4k3/8/8/8/4P3/6P1/7P/7K", {36, 50}, 9, 8},
    KingRow{"pawn on d5", h1, "4k3/8/8/3P4/8/6P1/7P/7K", {29, 34}, 9, -6},
    KingRow{"bishop on a8", h1, "B3k3/8/8/8/8/6P1/7P/7K", {36, 50}, 9, 8},
    KingRow{"bishop on g2", h1, "4k3/8/8/8/8/6P1/6BP/7K", {36 + 2, 50 + 5}, 9, 8 + 2}), RowName<KingRow>);

// A king on c2 or f2 is also looked at on the square beside it, where a pawn may stand.
INSTANTIATE_TEST_SUITE_P(ShortDiagonal, ShelterRules, testing::Values(
    KingRow{"none from b2, though open behind it", b2, "4k3/8/8/8/8/8/PPK5/8", {2 - 6 + 40 - 12 - 9 + 15, 2 - 14 + 56 - 14 - 18 + 26}, 13, -8 - 10 + 14},
    KingRow{"none from g2, though open behind it", g2, "4k3/8/8/8/8/8/5KPP/8", {6 - 6 + 40 - 12 - 9 + 15, 2 - 14 + 56 - 14 - 18 + 26}, 13, -8 - 10 + 14},
    KingRow{"open from b1", b1, "4k3/8/8/8/8/2P5/PP6/1K6", {2 + 53 - 9 - 2, 2 + 78 - 18 - 3}, 13, -4},
    KingRow{"pawn far ahead on g6", b1, "4k3/8/6P1/8/8/2P5/PP6/1K6", {2 + 53 - 9 + 15, 2 + 78 - 18 + 26}, 13, 14},
    KingRow{"pawn beside it on g5", b1, "4k3/8/8/6P1/8/2P5/PP6/1K6", {2 + 53 - 9 - 2, 2 + 78 - 18 - 3}, 13, -4},
    KingRow{"bishop on its end", b1, "4k3/7B/8/8/8/2P5/PP6/1K6", {61, 88}, 13, 14},
    KingRow{"bishop on its first square", b1, "4k3/8/8/8/8/2P5/PPB5/1K6", {61 + 2, 88 + 5}, 13, 14 + 2},
    KingRow{"knight on it", b1, "4k3/8/8/8/8/2PN4/PP6/1K6", {2 + 53 - 9 - 2, 2 + 78 - 18 - 3}, 13, -4},
    KingRow{"bishop of the enemy on it", b1, "4k3/8/8/8/4b3/2P5/PP6/1K6", {2 + 53 - 9 - 2, 2 + 78 - 18 - 3}, 13, -4},
    KingRow{"open from g1", g1, "4k3/8/8/8/8/5P2/6PP/6K1", {6 + 53 - 9 - 2, 2 + 78 - 18 - 3}, 13, -4},
    KingRow{"pawn on a7", g1, "4k3/P7/8/8/8/5P2/6PP/6K1", {6 + 53 - 9 + 15, 2 + 78 - 18 + 26}, 13, 14},
    KingRow{"pawn on a6", g1, "4k3/8/P7/8/8/5P2/6PP/6K1", {6 + 53 - 9 - 2, 2 + 78 - 18 - 3}, 13, -4},
    KingRow{"bishop on e3", g1, "4k3/8/8/8/8/4BP2/6PP/6K1", {65, 88}, 13, 14},
    KingRow{"none from f1", f1, "4k3/8/8/8/8/4P3/5PP1/5K2", {2 + 53 - 9 + 15, 2 + 78 - 18 + 26}, 13, 14}), RowName<KingRow>);

INSTANTIATE_TEST_SUITE_P(SideBySide, ShelterRules, testing::Values(
    KingRow{"right pair", e1, "k7/8/8/8/8/8/4PP2/4K3", {-36 + 15, -56 + 26}, 13, -10 + 14},
    KingRow{"left pair", e1, "k7/8/8/8/8/8/3PP3/4K3", {-36 + 15, -56 + 26}, 13, -10 + 14},
    KingRow{"apart", e1, "k7/8/8/8/8/8/3P1P2/4K3", {-36 + 3, -56 + 10}, 13, -10 + 8},
    KingRow{"a neighbour left of the walk", f1, "4k3/8/8/8/8/5P2/3PP1P1/5K2", {2 + 53 - 9 + 3, 2 + 78 - 18 + 10}, 13, 8},
    KingRow{"a neighbour right of the walk", d1, "4k3/8/8/8/8/3P4/2P1PP2/3K4", {-55 + 53 - 9 + 3, -80 + 78 - 18 + 10}, 13, 8},
    KingRow{"on the second squares", d1, "4k3/8/8/8/8/2PP4/4P3/3K4", {-55 + 46 - 9 - 7, -80 + 72 - 18 - 12}, 13, -9}), RowName<KingRow>);

// --- No hole, several holes ---

INSTANTIATE_TEST_SUITE_P(Holes, ShelterRules, testing::Values(
    KingRow{"none in the corner", a1, "4k3/8/8/8/8/8/PP6/K7", {2 + 40 - 6 + 15, 2 + 56 - 12 + 26}, 9, 14},
    KingRow{"two in the corner", a1, "4k3/8/8/8/8/8/8/K7", {2 - 24 - 6 - 7, 2 - 28 - 12 - 12}, 9, -20 - 9},
    KingRow{"two in the other corner", h1, "4k3/8/8/8/8/8/8/7K", {6 - 24 - 6 - 7, 2 - 28 - 12 - 12}, 9, -20 - 9},
    KingRow{"two around b2", b1, "4k3/8/8/8/8/8/1P6/1K6", {2 + 20 - 24 - 9 - 5, 2 + 28 - 28 - 18 - 8}, 13, -20 - 7},
    KingRow{"two beside a2", b1, "4k3/8/8/8/8/8/P7/1K6", {2 + 20 - 24 - 9 - 7, 2 + 28 - 28 - 18 - 12}, 13, -20 - 9},
    KingRow{"two beside b2 seen from c", c1, "4k3/8/8/8/8/8/1P6/2K5", {2 + 20 - 24 - 9 - 7, 2 + 28 - 28 - 18 - 12}, 13, -20 - 9},
    KingRow{"two beside g2 seen from f", f1, "4k3/8/8/8/8/8/6P1/5K2", {2 + 20 - 24 - 9 - 7, 2 + 28 - 28 - 18 - 12}, 13, -20 - 9},
    KingRow{"two around g2", g1, "4k3/8/8/8/8/8/6P1/6K1", {6 + 20 - 24 - 9 - 5, 2 + 28 - 28 - 18 - 8}, 13, -20 - 7},
    KingRow{"two beside h2", g1, "4k3/8/8/8/8/8/7P/6K1", {6 + 20 - 24 - 9 - 7, 2 + 28 - 28 - 18 - 12}, 13, -20 - 9},
    KingRow{"two around e2", e1, "k7/8/8/8/8/8/4P3/4K3", {-55 + 20 - 24 - 9 - 7, -80 + 28 - 28 - 18 - 12}, 13, -20 - 9},
    KingRow{"three on the queen side", b1, "4k3/8/8/8/8/8/8/1K6", {2 - 36 - 9 - 20, 2 - 42 - 18 - 25}, 13, -30 - 16},
    KingRow{"three in the centre", d1, "4k3/8/8/8/8/8/8/3K4", {-55 - 36 - 9 - 20, -80 - 42 - 18 - 25}, 13, -30 - 16}), RowName<KingRow>);

// --- A king that may still choose ---

// c1 bare is (-120, -165) on d1 and (-63, -83) on b1; f1 bare is the first on e1 and (-59, -83) on g1.
INSTANTIATE_TEST_SUITE_P(Choice, CastledShelterRules, testing::Values(
    KingRow{"a stays", a1, "4k3/8/8/8/8/8/PP6/K7", {51, 72}, 10 + 100 + 9, 3 + 30 + 14, OnAllWings},
    KingRow{"b stays", b1, "4k3/8/8/8/8/8/PPP5/1K6", {68, 94}, 10 + 100 + 13, 3 + 30 + 14, OnAllWings},
    KingRow{"c prefers b", c1, "4k3/8/8/8/8/8/PPP5/2K5", {(-75 + 3 * 68) / 4, (-110 + 3 * 94) / 4}, 10 + 100 + 13, 3 + 30 + 14, OnAllWings},
    KingRow{"d stays", d1, "4k3/8/8/8/8/8/2PPP3/3K4", {11, 12}, 341 + 13, 7 + 14, OnAllWings},
    KingRow{"e stays", e1, "4k3/8/8/8/8/8/3PPP2/4K3", {11, 12}, 341 + 13, 7 + 14, OnAllWings},
    KingRow{"f prefers g", f1, "4k3/8/8/8/8/8/5PPP/5K2", {(-75 + 3 * 72) / 4, (-110 + 3 * 94) / 4}, 10 + 200 + 13, 3 + 50 + 14, OnAllWings},
    KingRow{"g stays", g1, "4k3/8/8/8/8/8/5PPP/6K1", {72, 94}, 10 + 200 + 13, 3 + 50 + 14, OnAllWings},
    KingRow{"h stays", h1, "4k3/8/8/8/8/8/6PP/7K", {55, 72}, 10 + 200 + 9, 3 + 50 + 14, OnAllWings},
    KingRow{"c is cut towards zero", c1, "4k3/8/8/8/8/8/8/2K5", {-77, -103}, 13, -46},    // -309 / 4, -414 / 4
    KingRow{"f is cut towards zero", f1, "4k3/8/8/8/8/8/8/5K2", {-74, -103}, 13, -46},    // -297 / 4, -414 / 4
    // d2 is -55 - 6 + 20 - 24 - 9 - 7 and -80 - 14 + 28 - 28 - 18 - 12, b2 is 2 - 6 + 33 - 12 - 9 - 7 and 2 - 14 + 50 - 14 - 18 - 12.
    KingRow{"on the second rank", c2, "4k3/8/8/8/8/1P6/P1KP4/8", {(-81 + 3 * 1) / 4, (-124 - 3 * 6) / 4}, 13, -8 - 10 - 9},
    KingRow{"on the third rank there is none", c3, "4k3/8/8/8/8/2K5/1PPP4/8", {-120, -200}, 341 + 10, 7, OnAllWings}), RowName<KingRow>);

INSTANTIATE_TEST_SUITE_P(WithoutPressure, CastledShelterRules, testing::Values(
    KingRow{"c1 looks at both sides", c1, "4k3/8/8/8/8/8/PPP5/2K5", {(-75 + 3 * 68) / 4, (-110 + 3 * 94) / 4}, 13, 14},
    KingRow{"f1 looks at both sides", f1, "4k3/8/8/8/8/8/5PPP/5K2", {(-75 + 3 * 72) / 4, (-110 + 3 * 94) / 4}, 13, 14},
    KingRow{"g1 looks at itself", g1, "4k3/8/8/8/8/8/5PPP/6K1", {72, 94}, 13, 14},
    KingRow{"e1 looks at itself", e1, "4k3/8/8/8/8/8/3PPP2/4K3", {11, 12}, 13, 14},
    KingRow{"off home there is no choice", f3, "4k3/8/8/8/8/5K2/5PPP/8", {-120, -200}, 10, 0}), RowName<KingRow>);
// clang-format on

// --- The curves of danger ---

struct FactorRow {
    int points;
    double factor;
};

TEST(DangerCurves, CoverFallsFromOneToZero) {
    for (const FactorRow& row :
         {FactorRow{-24, 1.0}, FactorRow{-11, 1.0}, FactorRow{-10, 1.0}, FactorRow{-9, 0.4837947637708},
          FactorRow{-8, 0.4493084065184}, FactorRow{-1, 0.20694589003}, FactorRow{0, 0.172185814},
          FactorRow{1, 0.1373915231228}, FactorRow{3, 0.0677002968268}, FactorRow{4, 0.032803361408}, FactorRow{5, 0.0},
          FactorRow{6, 0.0}, FactorRow{32767, 0.0}, FactorRow{-32768, 1.0}}) {
        EXPECT_NEAR(danger_of_cover(row.points), row.factor, 1e-12) << row.points;
    }
}

/// The polynomial is below zero at -4 and above one at 29.
TEST(DangerCurves, AttackRisesFromZeroToOne) {
    for (const FactorRow& row :
         {FactorRow{-5, 0.0}, FactorRow{-4, 0.0}, FactorRow{-3, 0.0}, FactorRow{-2, 0.0064161992212},
          FactorRow{-1, 0.0381615242980}, FactorRow{0, 0.0712667393307}, FactorRow{1, 0.1056139740275},
          FactorRow{5, 0.2530657036199}, FactorRow{10, 0.4511813730365}, FactorRow{20, 0.8374276813509},
          FactorRow{24, 0.9672961282035}, FactorRow{25, 0.9960907472983}, FactorRow{26, 1.0}, FactorRow{29, 1.0},
          FactorRow{30, 1.0}, FactorRow{31, 1.0}}) {
        EXPECT_NEAR(danger_of_attack(row.points), row.factor, 1e-12) << row.points;
    }
}

}  // namespace
