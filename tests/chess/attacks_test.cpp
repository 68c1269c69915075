#include "chess/attacks.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

#include "support/board_builder.h"
#include "support/random_games.h"
#include "support/row_name.h"
#include "support/slow_chess.h"

namespace {

constexpr std::uint32_t seed = 51;

Bitboard Straight(const SIDE_PIECES& side) { return side.rooks | side.queens; }
Bitboard Diagonal(const SIDE_PIECES& side) { return side.bishops | side.queens; }

TEST(AttackersOf, AreThoseOfSlowChess) {
    ForEachRandomPosition(seed, 28, 60, [](const BOARD& board, const std::vector<Move>&) {
        const SlowPosition position = SlowFromBoard(board);
        for (Square s = a1; s <= h8; ++s) {
            const Bitboard by_white = SlowAttackers(position, s, white), by_black = SlowAttackers(position, s, black);
            ASSERT_EQ(AttackersOf(s, board), by_white | by_black) << SquareToString(s) << " in " << FenOf(board);
            ASSERT_EQ(IsAttackedBy(s, board, board.sides[white]), by_white != 0) << SquareToString(s) << FenOf(board);
            ASSERT_EQ(IsAttackedBy(s, board, board.sides[black]), by_black != 0) << SquareToString(s) << FenOf(board);
        }
        ASSERT_EQ(IsOpponentInCheck(board), SlowInCheck(position, Opponent(position.side)));
    });
}

constexpr int file_step_of[9] = {0, -1, 1, 0, 0, -1, 1, -1, 1};
constexpr int rank_step_of[9] = {0, 0, 0, 1, -1, 1, 1, -1, -1};

/// The first piece met on a walk, if it is a slider that looks along it.
Bitboard SlowHiddenAttacker(Square s, int direction, const BOARD& board) {
    int f = FileOf(s) + file_step_of[direction], r = RankOf(s) + rank_step_of[direction];
    for (; f >= 0 && f < 8 && r >= 0 && r < 8; f += file_step_of[direction], r += rank_step_of[direction]) {
        const int piece = std::abs(board.squares[r * 8 + f]);
        if (piece == no_piece) continue;
        const int fitting = direction <= south ? int{rook} : int{bishop};
        return piece == queen || piece == fitting ? Bit(r * 8 + f) : 0;
    }
    return 0;
}

TEST(HiddenAttacker, IsTheNextPieceIfItFits) {
    ForEachRandomPosition(seed + 1, 28, 60, [](const BOARD& board, const std::vector<Move>&) {
        for (Square s = a1; s <= h8; ++s)
            for (int direction = 1; direction <= 8; ++direction)
                ASSERT_EQ(HiddenAttacker(s, direction, board), SlowHiddenAttacker(s, direction, board))
                    << SquareToString(s) << ' ' << direction << " in " << FenOf(board);
    });
}

TEST(HiddenAttacker, IsNobodyInOtherDirections) {
    const BOARD board = BoardFromFen("4k3/8/8/8/1Q6/8/8/4K3 w - - 0 1");
    for (const int direction : {-1, 0, 9, 100}) EXPECT_EQ(HiddenAttacker(b3, direction, board), 0U);
    EXPECT_EQ(HiddenAttacker(b3, north, board), Bit(b4));
}

/// The rule as it is told: each candidate that the square sees, and what it sees itself on the other side.
Bitboard SlowPins(Square square, const BOARD& board, Bitboard candidates, const SIDE_PIECES& attacker) {
    Bitboard pins = 0;
    for (Bitboard seen = board.QueenAttacks(square) & candidates; seen != 0;) {
        const Square p = TakeNextBit(seen);
        const int direction = bitboard_tables.direction[square][p];
        Bitboard attacks = 0;
        switch (direction) {
            case west:
            case east:
                attacks = board.RankAttacks(p) & Straight(attacker);
                break;
            case north:
            case south:
                attacks = board.FileAttacks(p) & Straight(attacker);
                break;
            case north_west:
            case south_east:
                attacks = board.DiagonalA8H1Attacks(p) & Diagonal(attacker);
                break;
            default:
                attacks = board.DiagonalA1H8Attacks(p) & Diagonal(attacker);
                break;
        }
        while (attacks != 0)
            if (bitboard_tables.direction[p][TakeNextBit(attacks)] == direction) pins |= Bit(p);
    }
    return pins;
}

TEST(FindPins, AreThoseOfTheRule) {
    ForEachRandomPosition(seed + 2, 42, 60, [](const BOARD& board, const std::vector<Move>&) {
        for (const SIDE_PIECES& attacker : board.sides)
            for (Square s = a1; s <= h8; ++s)
                for (const Bitboard candidates : {board.sides[white].all, board.sides[black].all, board.occupied})
                    ASSERT_EQ(FindPins(s, board, candidates, attacker), SlowPins(s, board, candidates, attacker))
                        << SquareToString(s) << " in " << FenOf(board);
    });
}

TEST(FindPins, WantsOnePieceBetween) {
    const BOARD pinned = BoardFromFen("4r2k/8/8/8/8/8/4N3/4K3 w - - 0 1");
    EXPECT_EQ(FindPins(e1, pinned, pinned.own().all, pinned.enemy()), Bit(e2));
    EXPECT_EQ(FindPins(e1, pinned, Bit(d2), pinned.enemy()), 0U) << "no candidate";
    EXPECT_EQ(FindPins(e1, pinned, pinned.own().all, pinned.own()), 0U) << "no slider of that side";
    const BOARD covered = BoardFromFen("4r2k/8/8/8/8/4N3/4N3/4K3 w - - 0 1");
    EXPECT_EQ(FindPins(e1, covered, covered.own().all, covered.enemy()), 0U);
    const BOARD wrong_kind = BoardFromFen("4b2k/8/8/8/8/8/4N3/4K3 w - - 0 1");
    EXPECT_EQ(FindPins(e1, wrong_kind, wrong_kind.own().all, wrong_kind.enemy()), 0U);
}

struct QueenRow {
    std::string_view name, fen;
    bool attacked;
};
std::ostream& operator<<(std::ostream& out, const QueenRow& row) { return out << row.fen; }

class AttackedQueens : public testing::TestWithParam<QueenRow> {};

TEST_P(AttackedQueens, AreTold) {
    EXPECT_EQ(QueenAttacked(BoardFromFen(std::string(GetParam().fen))), GetParam().attacked);
}

constexpr auto queen_rows = std::to_array<QueenRow>({
    {"no queen", "4k3/8/8/8/8/8/8/4K3 w - - 0 1", false},
    {"left alone", "4k3/8/8/8/3Q4/8/8/4K3 w - - 0 1", false},
    {"by a pawn", "4k3/8/8/4p3/3Q4/8/8/4K3 w - - 0 1", true},
    {"by a knight", "4k3/8/4n3/8/3Q4/8/8/4K3 w - - 0 1", true},
    {"by a bishop", "4k3/8/5b2/8/3Q4/8/8/4K3 w - - 0 1", true},
    {"by a rook", "3rk3/8/8/8/3Q4/8/8/4K3 w - - 0 1", true},
    {"by a queen alone", "3qk3/8/8/8/3Q4/8/8/4K3 w - - 0 1", false},
    {"by a king alone", "8/8/8/4k3/3Q4/2K5/8/8 b - - 0 1", false},
    {"by an own piece", "4k3/8/8/8/3Q4/4P3/8/3RK3 w - - 0 1", false},
    {"of the side that waits", "3rk3/8/8/8/3Q4/8/8/4K3 b - - 0 1", false},
    {"the second of two", "4k3/8/8/8/8/1n6/8/Q3K2Q w - - 0 1", true},
    {"of Black", "4k3/8/8/3q4/2P5/8/8/4K3 b - - 0 1", true},
});
INSTANTIATE_TEST_SUITE_P(Rows, AttackedQueens, testing::ValuesIn(queen_rows), RowName<QueenRow>);

TEST(KingStepsTo, CountsStepsOnAnEmptyBoard) {
    for (Square from = a1; from <= h8; ++from) {
        for (Square to = a1; to <= h8; ++to) {
            if (from == to) continue;
            ASSERT_EQ(KingStepsTo(from, Bit(to)), bitboard_tables.distance[from][to]);
        }
    }
    EXPECT_EQ(KingStepsTo(e4, Bit(e4)), 2) << "a step away and back";
    EXPECT_EQ(KingStepsTo(e4, Bit(e4) | Bit(e5)), 1);
    EXPECT_EQ(KingStepsTo(a1, Bit(h8) | Bit(d1)), 3) << "the nearest counts";
}

Bitboard NeighboursAndSelf(Bitboard set) {
    Bitboard all = set;
    for (Square s = a1; s <= h8; ++s)
        if (Has(set, s)) all |= bitboard_tables.king_attacks[s];
    return all;
}

/// The flood as it is told, square by square.
KingReach SlowReach(const BOARD& board, Bitboard white_runners, Bitboard black_runners) {
    const SlowPosition position = SlowFromBoard(board);
    Bitboard barred[2] = {0, 0}, reached[2];
    for (const Colour side : {white, black}) {
        const Colour enemy = Opponent(side);
        for (Square s = a1; s <= h8; ++s) {
            // Pawns and king of the enemy attack it, and nothing else is on the board.
            const bool is_own_pawn = position.squares[static_cast<std::size_t>(s)] == (side == white ? pawn : -pawn);
            if (is_own_pawn || SlowAttackers(position, s, enemy) != 0) barred[side] |= Bit(s);
            if (Has(white_runners, s)) barred[black] |= ~bitboard_tables.white_pawn_square[s];
            if (Has(black_runners, s)) barred[white] |= ~bitboard_tables.black_pawn_square[s];
        }
        reached[side] = Bit(SlowKingSquare(position, side));
    }
    const Colour first = position.side, second = Opponent(first);
    for (;;) {
        const Bitboard before[2] = {reached[white], reached[black]};
        const Bitboard step[2] = {NeighboursAndSelf(reached[white]), NeighboursAndSelf(reached[black])};
        reached[first] |= step[first] & ~barred[first] & ~(step[second] & board.sides[second].pawns);
        barred[second] |= step[first];
        reached[second] |= step[second] & ~barred[second] & ~(step[first] & board.sides[first].pawns);
        barred[first] |= step[second];
        if (reached[white] == before[white] && reached[black] == before[black]) return {reached[white], reached[black]};
    }
}

TEST(ReachableSquares, AreThoseOfTheRule) {
    int positions = 0;
    ForEachRandomPosition(seed + 3, 70, 60, [&positions](const BOARD& board, const std::vector<Move>&) {
        if (board.total_material != 0) return;
        ++positions;
        const Bitboard white_pawns = board.sides[white].pawns, black_pawns = board.sides[black].pawns;
        for (const auto& [white_runners, black_runners] :
             {std::pair<Bitboard, Bitboard>{0, 0}, {white_pawns, 0}, {0, black_pawns}, {white_pawns, black_pawns}}) {
            const KingReach found = ReachableSquares(board, white_runners, black_runners);
            const KingReach wanted = SlowReach(board, white_runners, black_runners);
            ASSERT_EQ(found.white, wanted.white) << FenOf(board);
            ASSERT_EQ(found.black, wanted.black) << FenOf(board);
        }
    });
    EXPECT_GT(positions, 100);
}

TEST(ReachableSquares, KingsAloneShareTheBoard) {
    const KingReach reach = ReachableSquares(BoardFromFen("4k3/8/8/8/8/8/8/4K3 w - - 0 1"), 0, 0);
    EXPECT_EQ(reach.white & reach.black, 0U);
    EXPECT_TRUE(Has(reach.white, e4)) << "White is a step ahead";
    EXPECT_FALSE(Has(reach.white, e5));
    EXPECT_TRUE(Has(reach.black, e6));
    EXPECT_FALSE(Has(reach.black, e4));
}

TEST(ReachableSquares, KingStaysInTheSquareOfARunner) {
    const BOARD board = BoardFromFen("8/8/8/P4k2/8/8/8/4K3 b - - 0 1");
    const KingReach free = ReachableSquares(board, 0, 0), bound = ReachableSquares(board, Bit(a5), 0);
    EXPECT_TRUE(Has(free.black, g6));
    EXPECT_FALSE(Has(bound.black, g6));
    EXPECT_TRUE(Has(bound.black, f5)) << "its own square counts as reached";
    EXPECT_EQ(bound.black & ~bitboard_tables.white_pawn_square[a5], Bit(f5));
}

TEST(LineThrough, GoesBothWaysWithoutTheSquare) {
    EXPECT_EQ(LineThrough(e4, east), LineThrough(e4, west));
    EXPECT_EQ(LineThrough(e4, north) | Bit(e4), Bitboard{0x1010101010101010});
    EXPECT_EQ(LineThrough(a1, south_west), bitboard_tables.ray_north_east[a1]);
    EXPECT_EQ(LineThrough(e4, north_west) | LineThrough(e4, south_west) | Bit(e4), bitboard_tables.bishop_mask[e4]);
    EXPECT_EQ(LineThrough(e4, no_line), 0U);
}

}  // namespace
