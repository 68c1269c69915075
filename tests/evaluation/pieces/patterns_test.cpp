// Patterns, space and activity: every rule where it holds and where it just does not.

#include <gtest/gtest.h>

#include "evaluation/pieces/patterns.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

namespace {

using namespace sided;

class Patterns : public testing::TestWithParam<PairRow> {};
TEST_P(Patterns, GiveTheirPairAndPoints) { ExpectPair(GetParam()); }

class Space : public testing::TestWithParam<PairRow> {};
TEST_P(Space, GivesItsPairAndPoints) { ExpectPair(GetParam()); }

class Activity : public testing::TestWithParam<PairRow> {};
TEST_P(Activity, GivesItsPairAndPoints) { ExpectPair(GetParam()); }

// clang-format off
// The right to move is worth (6, 14) and "pc4 cc6" to its side.
INSTANTIATE_TEST_SUITE_P(Rules, Patterns, testing::Values(
    PairRow{"the enemy to move", game_patterns, "4k3/8/8/8/8/8/8/4K3 b - - 0 1", {-6, -14}, "Pc4 Cc6"},
    PairRow{"g1 without f1", game_patterns, "4k3/8/8/8/8/8/8/4K1N1", {6, 14}, "pc4 cc6"},
    PairRow{"b1 and f1", game_patterns, "4k3/8/8/8/8/8/8/1N2KB2", {6, 14}, "pc4 cc6"},
    PairRow{"all four at home", game_patterns, "4k3/8/8/8/8/8/8/1NB1KBN1", {6 - 18 - 14, 14 - 45 - 40}, "pc4 cc6 pq-4 cq-8 pk-4 ck-6"},
    PairRow{"all four at home in the opening", early_patterns, "4k3/8/8/8/8/8/8/1NB1KBN1", {6 - 18 - 14, 14 - 45 - 40}, "pc4 cc6 pq-4 cq-8 pk-4 ck-6"},
    PairRow{"two of the enemy at home", game_patterns, "1nb1k3/8/8/8/8/8/8/4K3", {6 + 18, 14 + 45}, "pc4 cc6 Pq-4 Cq-8"},
    PairRow{"g3 and h2", game_patterns, "4k3/8/8/8/8/6P1/7P/4KB2", {6 - 8, 14 - 14}, "pc4 cc6 ck-4"},
    PairRow{"g3 with f2 and h2", game_patterns, "4k3/8/8/8/8/6P1/5P1P/4KB2", {6 - 8, 14 - 14}, "pc4 cc6 ck-4"},
    PairRow{"g3 and an enemy pawn on g2", game_patterns, "4k3/8/8/8/8/6P1/5Pp1/4KB2", {6 - 8, 14 - 14}, "pc4 cc6 ck-4"},
    PairRow{"g3 with the bishop on g2", game_patterns, "4k3/8/8/8/8/6P1/5PB1/4K3", {6, 14}, "pc4 cc6"},
    PairRow{"g4 is no g3", game_patterns, "4k3/8/8/8/6P1/8/5P2/4KB2", {6, 14}, "pc4 cc6"},
    PairRow{"b3 and c2", game_patterns, "4k3/8/8/8/8/1P6/2P5/2B1K3", {6 - 5, 14 - 8}, "pc4 cc6 cq-3"},
    PairRow{"b3, b2 and c2", game_patterns, "4k3/8/8/8/8/1P6/1PP5/2B1K3", {6, 14}, "pc4 cc6"},
    PairRow{"b3 alone", game_patterns, "4k3/8/8/8/8/1P6/8/2B1K3", {6, 14}, "pc4 cc6"},
    PairRow{"knights without f2", early_patterns, "4k3/8/8/8/8/2N2N2/2P5/4K3", {6, 14}, "pc4 cc6"},
    PairRow{"knights without c2", early_patterns, "4k3/8/8/8/8/2N2N2/5P2/4K3", {6, 14}, "pc4 cc6"},
    PairRow{"one knight", early_patterns, "4k3/8/8/8/8/5N2/2P2P2/4K3", {6, 14}, "pc4 cc6"},
    PairRow{"knights of the enemy", early_patterns, "4k3/2p2p2/2n2n2/8/8/8/8/4K3", {6 + 4, 14 + 8}, "pc4 cc6 Pc-3 Cc3"},
    PairRow{"e3, d5 and d4", early_patterns, "4k3/8/8/3p4/3P4/2N1PN2/2P2P2/4K3", {6 - 4 - 10, 14 - 8 - 20}, "pc1 cc9"},
    PairRow{"e3, d5 and e4", early_patterns, "4k3/8/8/3p4/4p3/2N1PN2/2P2P2/4K3", {6 - 4 - 10, 14 - 8 - 20}, "pc1 cc9"},
    PairRow{"e3 alone", early_patterns, "4k3/8/8/8/8/2N1PN2/2P2P2/4K3", {6 - 4, 14 - 8}, "pc1 cc9"},
    PairRow{"d5 alone", early_patterns, "4k3/8/8/3p4/8/2N2N2/2P2P2/4K3", {6 - 4, 14 - 8}, "pc1 cc9"},
    PairRow{"a locked centre", early_patterns, "4k3/8/8/3p4/3Pp3/2N1PN2/PPP2PPP/4K3", {6 - 4 - 25, 14 - 8 - 35}, "pc1 cc9"},
    PairRow{"all but d5", early_patterns, "4k3/8/8/8/3Pp3/2N1PN2/2P2P2/4K3", {6 - 4, 14 - 8}, "pc1 cc9"},
    PairRow{"all but e3", early_patterns, "4k3/8/8/3p4/3Pp3/2N2N2/2P2P2/4K3", {6 - 4, 14 - 8}, "pc1 cc9"},
    PairRow{"e3 and d5 without the knights", early_patterns, "4k3/8/8/3p4/8/4P3/2P2P2/4K3", {6, 14}, "pc4 cc6"},
    PairRow{"knights and g3", early_patterns, "4k3/8/8/8/8/2N2NP1/2P2P2/4KB2", {6 - 4 - 8, 14 - 8 - 14}, "pc1 cc9 ck-4"},
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
// clang-format on

template <class... Squares>
constexpr Bitboard On(Squares... squares) {
    return (Bit(squares) | ...);
}

/// The squares attacked by the own side and by the enemy, as the own side sees the board.
template <Bitboard Own, Bitboard Enemy>
void Attacked(EVALUATION_CONTEXT& context, Colour own) {
    context.attacks[own] = own == white ? Own : MirrorRanks(Own);
    context.attacks[Opponent(own)] = own == white ? Enemy : MirrorRanks(Enemy);
}
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
constexpr Bitboard forty = 0xFF000000FFFFFFFF;  // all ranks but those where the own attacks count
constexpr Bitboard forty_of_enemy = 0xFFFFFFFF000000FF;

// clang-format off
// With no square of a wing attacked by either side: "pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6".
INSTANTIATE_TEST_SUITE_P(Rules, Space, testing::Values(
    PairRow{"8 squares against 7", of_space, "4k3/8/8/8/8/8/8/4K3", {2, 4}, "pc12 pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0xFF, 0x7F00000000000000>},
    PairRow{"7 squares against 8", of_space, "4k3/8/8/8/8/8/8/4K3", {-2, -4}, "Pc12 pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0x7F, 0xFF00000000000000>},
    PairRow{"16 squares against 14", of_space, "4k3/8/8/8/8/8/8/4K3", {4, 8}, "pc12 pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0xFFFF, 0xFFFC000000000000>},
    PairRow{"17 squares against 14", of_space, "4k3/8/8/8/8/8/8/4K3", {6, 12}, "pc20 pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0x1FFFF, 0xFFFC000000000000>},
    PairRow{"14 squares against 17", of_space, "4k3/8/8/8/8/8/8/4K3", {-6, -12}, "Pc20 pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0x3FFF, 0xFFFF800000000000>},
    PairRow{"42 squares against 40", of_space, "4k3/8/8/8/8/8/8/4K3", {4, 8}, "pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<forty | On(d5, e5), forty_of_enemy>},
    PairRow{"43 squares against 40", of_space, "4k3/8/8/8/8/8/8/4K3", {6, 12}, "pc12 pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<forty | On(d5, e5, d6), forty_of_enemy>},
    PairRow{"a4", of_space, "4k3/8/8/8/8/8/8/4K3", {2, 4}, "pc20 pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<On(a4), 0>},
    PairRow{"a5", of_space, "4k3/8/8/8/8/8/8/4K3", {2, 4}, "pc20 pq4 pk-4 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<On(a5), 0>},
    PairRow{"c7", of_space, "4k3/8/8/8/8/8/8/4K3", {2, 4}, "pc20 pq4 pk-4 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<On(c7), 0>},
    PairRow{"c8", of_space, "4k3/8/8/8/8/8/8/4K3", {2, 4}, "pc20 pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<On(c8), 0>},
    PairRow{"d6 and e6", of_space, "4k3/8/8/8/8/8/8/4K3", {4, 8}, "pc20 pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<On(d6, e6), 0>},
    PairRow{"f5", of_space, "4k3/8/8/8/8/8/8/4K3", {2, 4}, "pc20 pk4 pq-4 Cq6 Pq-4 Pk-4 cq6 ck6", Attacked<On(f5), 0>},
    PairRow{"f5 and h7", of_space, "4k3/8/8/8/8/8/8/4K3", {4, 8}, "pc20 pk6 pq-4 Cq6 Pq-4 Pk-4 cq6 ck6", Attacked<On(f5, h7), 0>},
    PairRow{"f5, g6 and h7", of_space, "4k3/8/8/8/8/8/8/4K3", {6, 12}, "pc20 pk8 pq-4 Cq6 Pq-4 Pk-4 cq6 ck6", Attacked<On(f5, g6, h7), 0>},
    PairRow{"f5, g5, h5 and h7", of_space, "4k3/8/8/8/8/8/8/4K3", {8, 16}, "pc20 pk8 pq-4 Cq6 Pq-4 Pk-4 cq6 ck6", Attacked<On(f5, g5, h5, h7), 0>},
    PairRow{"b4 of the enemy", of_space, "4k3/8/8/8/8/8/8/4K3", {-2, -4}, "Pc20 pq-4 pk-4 Cq6 Ck6 Pq4 Pk-4 ck6", Attacked<0, On(b4)>},
    PairRow{"b5 of the enemy", of_space, "4k3/8/8/8/8/8/8/4K3", {-2, -4}, "Pc20 pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, On(b5)>},
    PairRow{"g2 of the enemy", of_space, "4k3/8/8/8/8/8/8/4K3", {-2, -4}, "Pc20 pq-4 pk-4 Cq6 Ck6 Pq-4 Pk4 cq6", Attacked<0, On(g2)>},
    PairRow{"f1 of the enemy", of_space, "4k3/8/8/8/8/8/8/4K3", {-2, -4}, "Pc20 pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, On(f1)>},
    PairRow{"each on a wing", of_space, "4k3/8/8/8/8/8/8/4K3", {-2, -4}, "Pc20 pq6 pk-4 Ck6 Pk8 Pq-4 cq6", Attacked<On(a5, b6), On(f2, h3, g4)>},
    PairRow{"a knight on d3", of_space, "4k3/8/8/8/8/3N4/8/4K3", {0, 0}, "pq-4 pk-6 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"a knight on e3", of_space, "4k3/8/8/8/8/4N3/8/4K3", {0, 0}, "pq-6 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"a knight on d4", of_space, "4k3/8/8/8/3N4/8/8/4K3", {0, 0}, "pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"a knight on d5", of_space, "4k3/8/8/3N4/8/8/8/4K3", {0, 0}, "pq-2 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"a knight on e5", of_space, "4k3/8/8/4N3/8/8/8/4K3", {0, 0}, "pq-4 pk-2 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"a knight on a8", of_space, "N3k3/8/8/8/8/8/8/4K3", {0, 0}, "pq-2 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"a rook on h3", of_space, "4k3/8/8/8/8/7R/8/4K3", {0, 0}, "pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"a rook on h2", of_space, "4k3/8/8/8/8/8/7R/4K3", {0, 0}, "pq-6 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"a rook on a6", of_space, "4k3/8/R7/8/8/8/8/4K3", {0, 0}, "pq-2 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"a queen on g3", of_space, "4k3/8/8/8/8/6Q1/8/4K3", {0, 0}, "pq-6 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"three at home", of_space, "4k3/8/8/8/8/8/8/4KBNR", {0, 0}, "pq-10 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"the king on b6", of_space, "7k/8/1K6/8/8/8/8/8", {0, 0}, "pq-2 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"the king on g5", of_space, "7k/8/8/6K1/8/8/8/8", {0, 0}, "pq-4 pk-2 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"the king on b4", of_space, "7k/8/8/8/1K6/8/8/8", {0, 0}, "pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"the king at home on c1", of_space, "4k3/8/8/8/8/8/8/2K5", {0, 0}, "pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"a rook of the enemy on h6", of_space, "4k3/8/7r/8/8/8/8/4K3", {0, 0}, "pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-4 cq6 ck6", Attacked<0, 0>},
    PairRow{"a knight of the enemy on g4", of_space, "4k3/8/8/8/6n1/8/8/4K3", {0, 0}, "pq-4 pk-4 Cq6 Ck6 Pq-4 Pk-2 cq6 ck6", Attacked<0, 0>},
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

/// What the pieces have left behind, and the weight of an ending in percent.
template <int Points, int Weight>
void Active(EVALUATION_CONTEXT& context, Colour own) {
    context.activity = own == white ? Points : -Points;
    context.endgame_weight = Weight / 100.0;
}
INSTANTIATE_TEST_SUITE_P(Rules, Activity, testing::Values(
    PairRow{"15 points", of_activity, "4k3/8/8/8/8/8/8/4K3", {15, 1}, "a15", Active<15, 100>},
    PairRow{"16 points", of_activity, "4k3/8/8/8/8/8/8/4K3", {16, 2}, "a16", Active<16, 100>},
    PairRow{"15 points less", of_activity, "4k3/8/8/8/8/8/8/4K3", {-15, -1}, "a-15", Active<-15, 100>},
    PairRow{"a half away from zero", of_activity, "4k3/8/8/8/8/8/8/4K3", {3, 0}, "a10", Active<10, 25>},
    PairRow{"a half away from zero below it", of_activity, "4k3/8/8/8/8/8/8/4K3", {-3, 0}, "a-10", Active<-10, 25>},
    PairRow{"less than a half", of_activity, "4k3/8/8/8/8/8/8/4K3", {2, 0}, "a9", Active<9, 25>},
    PairRow{"nothing early in the game", of_activity, "4k3/8/8/8/8/8/8/4K3", {0, 0}, "a40", Active<40, 0>},
    PairRow{"a pawn up with the enemy to move", of_activity, "4k3/8/8/8/8/8/P7/4K3 b - - 0 1", {50, 6}, "a50", Active<0, 100>},
    PairRow{"a pawn down", of_activity, "4k3/p7/8/8/8/8/8/4K3", {-50, -6}, "a-50", Active<0, 100>},
    PairRow{"two pawns up", of_activity, "4k3/8/8/8/8/8/PP6/4K3", {75 + 5, 10}, "a80", Active<5, 100>},
    PairRow{"none", of_activity, "4k3/8/8/8/8/8/8/4K3", {0, 0}, "", Active<0, 50>},
    PairRow{"rounded up", of_activity, "4k3/8/8/8/8/8/8/4K3", {13, 1}, "a25", Active<25, 50>},
    PairRow{"rounded down", of_activity, "4k3/8/8/8/8/8/8/4K3", {-13, -1}, "a-25", Active<-25, 50>},
    PairRow{"with a pawn", of_activity, "4k3/8/8/8/8/8/P7/4K3", {25, 3}, "a50", Active<0, 50>},
    PairRow{"material is cut at 150", of_activity, "4k3/8/8/8/8/8/8/Q3K3", {38, 4}, "a75", Active<0, 50>},
    PairRow{"and at -150", of_activity, "q3k3/8/8/8/8/8/8/4K3", {-38, -4}, "a-75", Active<0, 50>}), RowName<PairRow>);
// clang-format on

}  // namespace
