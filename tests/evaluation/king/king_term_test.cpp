#include <gtest/gtest.h>

#include "evaluation/context/board_areas.h"
#include "evaluation/king/king_safety.h"
#include "evaluation/pieces/patterns.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

namespace {

using namespace sided;

// --- Shelter ---

/// A king, what its shelter is worth, and the inputs of its danger.
struct ShelterRow {
    std::string_view name;
    SidedTerm<SCORE_PAIR> term;
    std::string_view position;
    SCORE_PAIR pair;
    int attack, cover;
    void (*prepare)(EVALUATION_CONTEXT& context, Colour own) = nullptr;
};
std::ostream& operator<<(std::ostream& out, const ShelterRow& row) { return out << row.name; }

class Shelter : public testing::TestWithParam<ShelterRow> {};

TEST_P(Shelter, GivesItsPairAndTheDanger) {
    const ShelterRow& row = GetParam();
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        if (row.prepare != nullptr) row.prepare(builder.context, own);
        const SCORE_PAIR pair = (own == white ? row.term.of_white : row.term.of_black)(builder.context, builder.board);
        EXPECT_EQ(PairText(pair, ""), PairText(row.pair, "")) << row.position;
        EXPECT_EQ(builder.context.king_attack[own], row.attack) << row.position;
        EXPECT_EQ(builder.context.king_cover[own], row.cover) << row.position;
    });
}

template <Colour Us>
SCORE_PAIR ShelterOfKing(EVALUATION_CONTEXT& context, const BOARD& board) {
    const SCORE_PAIR pair = shelter<Us>(context, board, board.side(Us).king_square);
    EXPECT_EQ(context.attack_factor[Us], danger_of_attack(context.king_attack[Us]));
    EXPECT_EQ(context.cover_factor[Us], danger_of_cover(context.king_cover[Us]));
    return pair;
}
template <Colour Us>
SCORE_PAIR CastledShelterOfKing(EVALUATION_CONTEXT& context, const BOARD& board) {
    return castled_shelter<Us>(context, board, board.side(Us).king_square);
}
constexpr SidedTerm<SCORE_PAIR> plain{ShelterOfKing<white>, ShelterOfKing<black>};
constexpr SidedTerm<SCORE_PAIR> castled{CastledShelterOfKing<white>, CastledShelterOfKing<black>};
constexpr SidedTerm<SCORE_PAIR> trapped{trapped_king<white>, trapped_king<black>};

/// Pressure of the enemy and own cover on all wings; negative halves and quarters are cut towards zero.
void Pressed(EVALUATION_CONTEXT& context, Colour own) {
    context.pressure[Opponent(own)] = {8, 10, -6};  // queen side, king side, centre
    context.cover[own] = {3, 4, -5};
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Files, Shelter, testing::Values(
    ShelterRow{"g1 behind three pawns", plain, "4k3/8/8/8/8/8/5PPP/6K1", {6 + 60 - 9 + 15, 2 + 84 - 18 + 26}, 13, 14},
    ShelterRow{"h1 behind two pawns", plain, "4k3/8/8/8/8/8/6PP/7K", {6 + 40 - 6 + 15, 2 + 56 - 12 + 26}, 9, 14},
    ShelterRow{"a1 behind two pawns", plain, "4k3/8/8/8/8/8/PP6/K7", {2 + 40 - 6 + 15, 2 + 56 - 12 + 26}, 9, 14},
    ShelterRow{"c1 behind three pawns", plain, "4k3/8/8/8/8/8/1PPP4/2K5", {2 + 60 - 9 + 15, 2 + 84 - 18 + 26}, 13, 14},
    ShelterRow{"f1 stands with the queen side", plain, "4k3/8/8/8/8/8/4PPP1/5K2", {2 + 60 - 9 + 15, 2 + 84 - 18 + 26}, 13, 14},
    ShelterRow{"e1 behind three pawns", plain, "4k3/8/8/8/8/8/3PPP2/4K3", {-55 + 60 - 9 + 15, -80 + 84 - 18 + 26}, 13, 14},
    ShelterRow{"d1 behind three pawns", plain, "4k3/8/8/8/8/8/2PPP3/3K4", {-55 + 60 - 9 + 15, -80 + 84 - 18 + 26}, 13, 14},
    ShelterRow{"off its two ranks", plain, "4k3/8/8/8/8/6K1/5PPP/8", {-120, -200}, 10, 0},
    ShelterRow{"off its two ranks, pressed", plain, "4k3/8/8/8/8/6K1/5PPP/8", {-120, -200}, 8 + 10 - 6 + 10, -5, Pressed},
    ShelterRow{"g1 pressed", plain, "4k3/8/8/8/8/8/5PPP/6K1", {72, 94}, 13 - 1 + 10, 14 - 2 + 4, Pressed},
    ShelterRow{"c1 pressed", plain, "4k3/8/8/8/8/8/1PPP4/2K5", {68, 94}, 13 - 1 + 8, 14 - 2 + 3, Pressed},
    ShelterRow{"f1 pressed on the queen side", plain, "4k3/8/8/8/8/8/4PPP1/5K2", {68, 94}, 13 - 1 + 8, 14 - 2 + 3, Pressed},
    ShelterRow{"e1 pressed", plain, "4k3/8/8/8/8/8/3PPP2/4K3", {11, 12}, 13 + 12, 14 - 5, Pressed}), RowName<ShelterRow>);

INSTANTIATE_TEST_SUITE_P(Shield, Shelter, testing::Values(
    ShelterRow{"one file closed", plain, "4k3/8/8/8/8/8/3p1PPP/6K1", {72, 94}, 13, 14},
    ShelterRow{"second rank on an open diagonal", plain, "4k3/8/8/8/8/6P1/5PKP/8", {6 - 6 + 53 - 9 - 4, 2 - 14 + 78 - 18 - 6}, 13, -8 - 6},
    ShelterRow{"second rank with a bishop on it", plain, "4k3/8/8/8/4B3/6P1/5PKP/8", {6 - 6 + 53 - 9 + 3, 2 - 14 + 78 - 18 + 10}, 13, -8 + 8},
    ShelterRow{"second rank, all holes there", plain, "4k3/8/8/8/8/5PPP/6K1/8", {6 - 6 + 39 - 9 + 15, 2 - 14 + 66 - 18 + 26}, 13, -8 + 14},
    ShelterRow{"fianchetto hole", plain, "4k3/8/8/8/8/8/5P1P/6K1", {6 + 40 - 12 - 9 - 20, 2 + 56 - 14 - 18 - 30}, 13, -20},
    ShelterRow{"a pawn on the third square", plain, "4k3/8/8/8/6P1/8/5P1P/6K1", {6 + 40 - 10 - 9 - 20, 2 + 56 - 12 - 18 - 30}, 13, -16},
    ShelterRow{"a bishop on the first square", plain, "4k3/8/8/8/8/8/5PBP/6K1", {5 + 2, -4 + 5}, 13, -18},
    ShelterRow{"a knight on the first square", plain, "4k3/8/8/8/8/8/5PNP/6K1", {5 + 3, -4 + 6}, 13, -18},
    ShelterRow{"an enemy on the first square", plain, "4k3/8/8/8/8/8/5PnP/6K1", {5, -4}, 17, -20},
    ShelterRow{"a bishop on the second square", plain, "4k3/8/8/8/8/6B1/5P1P/6K1", {5, -4 + 2}, 13, -18},
    ShelterRow{"a knight on the second square", plain, "4k3/8/8/8/8/6N1/5P1P/6K1", {5 + 2, -4 + 4}, 13, -18},
    ShelterRow{"an enemy on the second square", plain, "4k3/8/8/8/8/6n1/5P1P/6K1", {5, -4}, 17, -20},
    ShelterRow{"a rook there counts for nothing", plain, "4k3/8/8/8/8/8/5PRP/6K1", {5, -4}, 13, -20},
    ShelterRow{"a bishop on the rim", plain, "4k3/8/8/8/8/8/5PPB/6K1", {6 + 40 - 12 - 9 + 15, 2 + 56 - 14 - 18 + 26}, 13, -10 + 14},
    ShelterRow{"doubled isolated pawns beside the hole", plain, "4k3/8/8/8/8/5P2/5P1P/6K1", {6 + 53 - 12 - 18 - 9 - 20, 2 + 78 - 14 - 25 - 18 - 30}, 13, -30},
    ShelterRow{"two holes beside g2", plain, "4k3/8/8/8/8/8/6P1/6K1", {6 + 20 - 24 - 9 - 5, 2 + 28 - 28 - 18 - 8}, 13, -27},
    ShelterRow{"two holes beside f2", plain, "4k3/8/8/8/8/8/5P2/6K1", {6 + 20 - 24 - 9 - 7, 2 + 28 - 28 - 18 - 12}, 13, -29},
    ShelterRow{"three holes", plain, "4k3/8/8/8/8/8/8/6K1", {6 - 36 - 9 - 20, 2 - 42 - 18 - 25}, 13, -46},
    ShelterRow{"one hole on an open short diagonal", plain, "4k3/8/8/8/8/5P2/6PP/6K1", {6 + 53 - 9 - 2, 2 + 78 - 18 - 3}, 13, -4},
    ShelterRow{"one hole, side by side", plain, "4k3/8/8/8/8/4PP2/6PP/6K1", {6 + 53 - 9 + 15, 2 + 78 - 18 + 26}, 13, 14},
    ShelterRow{"one hole, a bishop on the diagonal", plain, "4k3/8/1B6/8/8/5P2/6PP/6K1", {6 + 53 - 9 + 15, 2 + 78 - 18 + 26}, 13, 14},
    ShelterRow{"one hole, nothing else", plain, "4k3/8/8/8/8/6P1/5P1P/6K1", {6 + 53 - 9 + 3, 2 + 78 - 18 + 10}, 13, 8},
    ShelterRow{"one hole on an open long diagonal", plain, "4k3/8/8/8/8/6P1/7P/7K", {6 + 33 - 6 - 4, 2 + 50 - 12 - 6}, 9, -6}), RowName<ShelterRow>);

// The shield of f2, g2, h2 is worth (81, 112) with its firmness; files without enemy pawns take from that.
INSTANTIATE_TEST_SUITE_P(Storm, Shelter, testing::Values(
    ShelterRow{"in contact", plain, "4k3/8/8/8/6p1/8/5PPP/6K1", {81 - 6 - 3 - 4, 112 - 12 - 8 - 12}, 9 + 4 + 12, 14},
    ShelterRow{"a rank away", plain, "4k3/8/8/6p1/8/8/5PPP/6K1", {81 - 6 - 5 - 3, 112 - 12 - 13 - 8}, 9 + 7 + 10, 14},
    ShelterRow{"two ranks away", plain, "4k3/8/6p1/8/8/8/5PPP/6K1", {81 - 6 - 6 - 1, 112 - 12 - 12 - 5}, 9 + 8 + 8, 14},
    ShelterRow{"not begun", plain, "4k3/6p1/8/8/8/8/5PPP/6K1", {81 - 6, 112 - 12}, 9, 14},
    ShelterRow{"with a man behind", plain, "4k3/8/6n1/6p1/8/8/5PPP/6K1", {81 - 6 - 5 - 3 + 4, 112 - 12 - 13 - 8 + 8}, 9 + 7 + 10 - 2, 14},
    ShelterRow{"against a pawn that nobody helps", plain, "4k3/8/8/8/6p1/8/6P1/6K1", {6 + 20 - 24 - 6 - 5 - 3 + 2, 2 + 28 - 28 - 12 - 8 - 8 + 10}, 9 + 4 - 4, -27},
    ShelterRow{"on a free path", plain, "4k3/8/8/8/6p1/8/8/6K1", {6 - 36 - 6 - 20 - 3, 2 - 42 - 12 - 25 - 8}, 9 + 4, -46},
    ShelterRow{"three pawns at home", plain, "4k3/5ppp/8/8/8/8/5PPP/6K1", {81 + 6 - 10, 112 + 12 - 32}, -6 + 12, 14},
    ShelterRow{"a neighbour east of the walk", plain, "4k3/2pp4/8/8/8/8/PPP5/1K6", {2 + 60 + 15 - 6, 2 + 84 + 26 - 12}, 9, 14},
    ShelterRow{"a neighbour east of the b-file", plain, "4k3/1pp5/8/8/8/8/PPP5/1K6", {2 + 60 + 15 - 0 - 5, 2 + 84 + 26 - 6 - 16}, 4 + 6, 14},
    ShelterRow{"not against a king in the centre", plain, "4k3/8/8/8/4p3/8/3PPP2/4K3", {-55 + 60 - 6 + 15, -80 + 84 - 12 + 26}, 9, 14}), RowName<ShelterRow>);

INSTANTIATE_TEST_SUITE_P(Castled, Shelter, testing::Values(
    ShelterRow{"c1 looks at both sides", castled, "4k3/8/8/8/8/8/PPP5/2K5", {(-75 + 3 * 68) / 4, (-110 + 3 * 94) / 4}, 13, 14},
    ShelterRow{"f1 looks at both sides", castled, "4k3/8/8/8/8/8/5PPP/5K2", {(-75 + 3 * 72) / 4, (-110 + 3 * 94) / 4}, 13, 14},
    ShelterRow{"g1 looks at itself", castled, "4k3/8/8/8/8/8/5PPP/6K1", {72, 94}, 13, 14},
    ShelterRow{"e1 looks at itself", castled, "4k3/8/8/8/8/8/3PPP2/4K3", {11, 12}, 13, 14},
    ShelterRow{"off home there is no choice", castled, "4k3/8/8/8/8/5K2/5PPP/8", {-120, -200}, 10, 0}), RowName<ShelterRow>);

template <Square At>
void Attacked(EVALUATION_CONTEXT& context, Colour own) {
    context.attacks[Opponent(own)] = Bit(own == white ? At : MirrorVertically(At));
}

INSTANTIATE_TEST_SUITE_P(Trapped, Shelter, testing::Values(
    ShelterRow{"a rook reaches the back rank", trapped, "3rk3/8/8/8/8/8/5PPP/6K1", {-6, -12}, 0, -6, Attacked<d1>},
    ShelterRow{"a queen reaches it", trapped, "4k3/8/8/6q1/8/8/5PPP/6K1", {-6, -12}, 0, -6, Attacked<c1>},
    ShelterRow{"a bishop does not count", trapped, "4k3/8/8/6b1/8/8/5PPP/6K1", {0, 0}, 0, 0, Attacked<c1>},
    ShelterRow{"the way out is not attacked", trapped, "3rk3/8/8/8/8/8/5PPP/6K1", {0, 0}, 0, 0, Attacked<f1>},
    ShelterRow{"from h1 the f-file counts", trapped, "4kr2/8/8/8/8/8/6PP/7K", {-6, -12}, 0, -6, Attacked<f1>},
    ShelterRow{"from b1 it is the other side", trapped, "3rk3/8/8/8/8/8/PPP5/1K6", {-6, -12}, 0, -6, Attacked<d1>},
    ShelterRow{"from b1 the c-file does not count", trapped, "2r1k3/8/8/8/8/8/PPP5/1K6", {0, 0}, 0, 0, Attacked<c1>},
    ShelterRow{"there is air", trapped, "3rk3/8/8/8/8/7P/5PP1/6K1", {0, 0}, 0, 0, Attacked<d1>},
    ShelterRow{"not in the corner", trapped, "3rk3/8/8/8/8/8/4PPP1/5K2", {0, 0}, 0, 0, Attacked<d1>},
    ShelterRow{"a lone pawn is food", trapped, "4k3/8/8/8/8/8/6Pp/7K", {200, 240}, -10, 2},
    ShelterRow{"a defended one is not", trapped, "4k3/8/8/8/8/6p1/6Pp/7K", {0, 0}, 0, 0},
    ShelterRow{"nor one beside a way out", trapped, "4k3/8/8/8/8/8/7p/7K", {0, 0}, 0, 0}), RowName<ShelterRow>);
// clang-format on

// --- The king term ---

struct KingTermRow {
    std::string_view name;
    std::string_view position;
    double endgame_weight;
    SCORE_PAIR pair;
};
std::ostream& operator<<(std::ostream& out, const KingTermRow& row) { return out << row.name; }
class KingTerm : public testing::TestWithParam<KingTermRow> {};

TEST_P(KingTerm, WeighsBothShelters) {
    const KingTermRow& row = GetParam();
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        builder.context.endgame_weight = row.endgame_weight;
        const SCORE_PAIR sum = king_safety(builder.context, builder.board);
        EXPECT_EQ(PairText(own == white ? sum : -sum, ""), PairText(row.pair, "")) << row.position;
    });
}

// Each king starts at (-20, -100). The openness is 15 in all these, which makes 11 eighths of a half; weight 0.2 leaves
// them as they are, but for the half that is added and cut off. At last the reckless halves below 0 are weighed by the
// attack: 0.2 and 0.5718 at 13 points, 0.2149 at 4.
// clang-format off
INSTANTIATE_TEST_SUITE_P(Kings, KingTerm, testing::Values(
    // White (52, -6), Black (-70, -177)
    KingTermRow{"a shelter against none", "3q2k1/8/8/8/8/8/5PPP/3Q2K1", 0.2, {71 + 95, -5 + 100}},
    KingTermRow{"nobody to attack White", "6k1/8/8/8/8/8/5PPP/3Q2K1", 0.2, {26 + 95, -1 + 100}},
    KingTermRow{"nobody to attack Black", "3q2k1/8/8/8/8/8/5PPP/6K1", 0.2, {71 + 34, -5 + 37}},
    KingTermRow{"equal", "3q2k1/5ppp/8/8/8/8/5PPP/3Q2K1", 0.2, {0, 0}},
    // White -20 - 65 + 81 + 4 and -100 - 75 + 100 + 8, Black (61, 0): a rook
    // stands behind h2
    KingTermRow{"still to castle", "3q2k1/5ppp/8/8/8/8/5PPP/3QK2R w K - 0 1", 0.2, {0 - 83, -38}}), RowName<KingTermRow>);
// clang-format on

// --- Patterns, space, activity ---

class WholeBoard : public testing::TestWithParam<PairRow> {};
TEST_P(WholeBoard, GivesItsPairAndPoints) { ExpectPair(GetParam()); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(Patterns, WholeBoard, testing::Values(
    PairRow{"the right to move", game_patterns, "4k3/8/8/8/8/8/8/4K3", {6, 14}, "pc4 cc6"},
    PairRow{"b1 and c1 at home", game_patterns, "4k3/8/8/8/8/8/8/1NB1K3", {6 - 18, 14 - 45}, "pc4 cc6 pq-4 cq-8"},
    PairRow{"b1 alone", game_patterns, "4k3/8/8/8/8/8/8/1N2K3", {6, 14}, "pc4 cc6"},
    PairRow{"f1 and g1 at home", game_patterns, "4k3/8/8/8/8/8/8/4KBN1", {6 - 14, 14 - 40}, "pc4 cc6 pk-4 ck-6"},
    PairRow{"g3 before f1", game_patterns, "4k3/8/8/8/8/6P1/5P2/4KB2", {6 - 8, 14 - 14}, "pc4 cc6 ck-4"},
    PairRow{"g3 and g2", game_patterns, "4k3/8/8/8/8/6P1/5PP1/4KB2", {6, 14}, "pc4 cc6"},
    PairRow{"g3 alone", game_patterns, "4k3/8/8/8/8/6P1/8/4KB2", {6, 14}, "pc4 cc6"},
    PairRow{"b3 before c1", game_patterns, "4k3/8/8/8/8/1P6/P7/2B1K3", {6 - 5, 14 - 8}, "pc4 cc6 cq-3"},
    PairRow{"knights before pawns", early_patterns, "4k3/8/8/8/8/2N2N2/2P2P2/4K3", {6 - 4, 14 - 8}, "pc1 cc9"},
    PairRow{"not in the middle game", game_patterns, "4k3/8/8/8/8/2N2N2/2P2P2/4K3", {6, 14}, "pc4 cc6"},
    PairRow{"three knights are not exactly two", early_patterns, "4k3/8/8/8/8/2N2N2/2P2P2/N3K3", {6, 14}, "pc4 cc6"},
    PairRow{"behind e3 against d5", early_patterns, "4k3/8/8/3p4/8/2N1PN2/2P2P2/4K3", {6 - 4 - 10, 14 - 8 - 20}, "pc1 cc9"},
    PairRow{"in a locked centre", early_patterns, "4k3/8/8/3p4/3Pp3/2N1PN2/2P2P2/4K3", {6 - 4 - 25, 14 - 8 - 35}, "pc1 cc9"}), RowName<PairRow>);

/// `Own` squares of the first ranks, `Enemy` squares of the last ones.
template <int Own, int Enemy>
void Attack(EVALUATION_CONTEXT& context, Colour own) {
    const Bitboard low_own = (Bitboard{1} << Own) - 1;
    const Bitboard low_enemy = (Bitboard{1} << Enemy) - 1;
    context.attacks[own] = own == white ? low_own : MirrorRanks(low_own);
    context.attacks[Opponent(own)] = own == white ? MirrorRanks(low_enemy) : low_enemy;
}
/// So many squares of the own view's sixth rank from the a-file on.
template <int Count>
void AttackAhead(EVALUATION_CONTEXT& context, Colour own) {
    const Bitboard row = ((Bitboard{1} << Count) - 1) << 40;
    context.attacks[own] = own == white ? row : MirrorRanks(row);
    context.attacks[Opponent(own)] = own == white ? MirrorRanks(0xFF) : 0xFF;
}

INSTANTIATE_TEST_SUITE_P(Space, WholeBoard, testing::Values(
    PairRow{"equal", of_space, "4k3/8/8/8/8/8/8/4K3", {0, 0}, "pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attack<16, 16>},
    PairRow{"twice as much", of_space, "4k3/8/8/8/8/8/8/4K3", {16, 32}, "pc20 pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attack<16, 8>},
    PairRow{"a little more", of_space, "4k3/8/8/8/8/8/8/4K3", {4, 8}, "pc12 pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attack<22, 20>},
    PairRow{"hardly more", of_space, "4k3/8/8/8/8/8/8/4K3", {2, 4}, "pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attack<21, 20>},
    PairRow{"one square of the wing", of_space, "4k3/8/8/8/8/8/8/4K3", {-14, -28}, "Pc20 pq4 pk-4 Ck6 Pq-4 Pk-4 cq6 ck6", AttackAhead<1>},
    PairRow{"two squares of the wing", of_space, "4k3/8/8/8/8/8/8/4K3", {-12, -24}, "Pc20 pq6 pk-4 Ck6 Pq-4 Pk-4 cq6 ck6", AttackAhead<2>},
    PairRow{"three squares of the wing", of_space, "4k3/8/8/8/8/8/8/4K3", {-10, -20}, "Pc20 pq8 pk-4 Ck6 Pq-4 Pk-4 cq6 ck6", AttackAhead<3>},
    PairRow{"a piece at home on the right", of_space, "4k3/8/8/8/8/8/4N3/4K3", {0, 0}, "pq-6 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attack<16, 16>},
    PairRow{"a piece at home on the left", of_space, "4k3/8/8/8/8/8/1N6/4K3", {0, 0}, "pq-4 pk-6 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attack<16, 16>},
    PairRow{"a rook on the third rank", of_space, "4k3/8/8/8/8/1R6/8/4K3", {0, 0}, "pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attack<16, 16>},
    PairRow{"a piece ahead on the left", of_space, "4k3/8/1N6/8/8/8/8/4K3", {0, 0}, "pq-2 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attack<16, 16>},
    PairRow{"a piece ahead on the right", of_space, "4k3/8/6N1/8/8/8/8/4K3", {0, 0}, "pq-4 pk-2 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attack<16, 16>},
    PairRow{"pawns and a king at home don't count", of_space, "4k3/8/1P6/8/8/8/6P1/4K3", {0, 0}, "pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attack<16, 16>}), RowName<PairRow>);

template <int Points>
void Active(EVALUATION_CONTEXT& context, Colour own) {
    context.activity = own == white ? Points : -Points;
    context.endgame_weight = 0.5;
}
INSTANTIATE_TEST_SUITE_P(Activity, WholeBoard, testing::Values(
    PairRow{"none", of_activity, "4k3/8/8/8/8/8/8/4K3", {0, 0}, "", Active<0>},
    PairRow{"rounded up", of_activity, "4k3/8/8/8/8/8/8/4K3", {13, 1}, "a25", Active<25>},
    PairRow{"rounded down", of_activity, "4k3/8/8/8/8/8/8/4K3", {-13, -1}, "a-25", Active<-25>},
    PairRow{"with a pawn", of_activity, "4k3/8/8/8/8/8/P7/4K3", {25, 3}, "a50", Active<0>},
    PairRow{"material is cut at 150", of_activity, "4k3/8/8/8/8/8/8/Q3K3", {38, 4}, "a75", Active<0>},
    PairRow{"and at -150", of_activity, "q3k3/8/8/8/8/8/8/4K3", {-38, -4}, "a-75", Active<0>}), RowName<PairRow>);
// clang-format on

}  // namespace
