#include "chess/exchange.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <string_view>

#include "support/board_builder.h"
#include "support/random_games.h"
#include "support/row_name.h"
#include "support/slow_chess.h"

namespace {

constexpr std::uint32_t seed = 60;
constexpr int slow_value[7] = {0, 100, 305, 315, 500, 1020, 32767};

Colour SideOf(int code) { return code > 0 ? white : black; }
std::size_t At(Square s) { return static_cast<std::size_t>(s); }

/// An exchange by recursion: the side to capture takes with its cheapest piece or lets it be, whatever is better.
/// Pieces that have captured are taken off the board, so that those behind them see the square; nothing else is
/// remembered. Legality plays no part: a pinned piece captures, and a king captures last, also into an attack.
class SlowExchange {
  public:
    SlowExchange(const SlowPosition& position, Square to) : position_(position), to_(to) {}

    [[nodiscard]] Bitboard touched() const { return touched_; }

    /// What `side` wins with the next capture of a piece worth `standing`, 0 if it makes none.
    int Best(Colour side, int standing) {
        const Bitboard attackers = SlowAttackers(position_, to_, white) | SlowAttackers(position_, to_, black);
        touched_ |= attackers;
        const Square from = Cheapest(attackers, side);
        if (from < 0) return 0;
        const int piece = std::abs(position_.squares[At(from)]);
        position_.squares[At(from)] = no_piece;
        return std::max(0, standing - Best(Opponent(side), slow_value[piece]));
    }

  private:
    [[nodiscard]] Square Cheapest(Bitboard attackers, Colour side) const {
        for (int piece = pawn; piece <= king; ++piece)
            for (Square s = h8; s >= a1; --s)
                if (Has(attackers, s) && position_.squares[At(s)] == (side == white ? piece : -piece)) return s;
        return -1;
    }

    SlowPosition position_;
    Square to_;
    Bitboard touched_ = 0;
};

/// The mover captures first and can't refuse to. The captured piece stays on the board in an en passant capture, and
/// the target square holds the moved piece, or for a promotion a queen.
int SlowExchangeScore(const BOARD& board, Move move, Bitboard& touched) {
    SlowPosition position = SlowFromBoard(board);
    const Colour side = position.side;
    position.squares[At(FromSquare(move))] = no_piece;
    // Any code that attacks nothing will do; whoever stands there does not block the lines to the square itself.
    position.squares[At(ToSquare(move))] = no_piece;
    SlowExchange exchange(position, ToSquare(move));
    const int standing = PromotionPiece(move) != no_piece ? int{queen} : MovingPiece(move);
    const int answer = exchange.Best(Opponent(side), slow_value[standing]);
    touched = exchange.touched();
    return slow_value[CapturedPiece(move)] - answer;
}

TEST(ExchangeScore, IsThatOfTheRecursion) {
    int captures = 0;
    ForEachRandomPosition(seed, 84, 60, [&captures](const BOARD& board, const std::vector<Move>& moves) {
        for (const Move move : moves) {
            // The rook of a castling does not jump in an exchange, and nothing can recapture: left out.
            if (IsCastling(move)) continue;
            captures += CapturedPiece(move) != no_piece;
            Bitboard touched = 0, slow_touched = 0;
            const int score = ExchangeScore(move, board, touched);
            ASSERT_EQ(score, SlowExchangeScore(board, move, slow_touched))
                << MoveToCoordinate(move) << " in " << FenOf(board);
            ASSERT_EQ(touched, slow_touched) << MoveToCoordinate(move) << " in " << FenOf(board);
        }
    });
    EXPECT_GT(captures, 1000);
}

struct Row {
    std::string_view name, fen, move;
    int score;
    Bitboard touched;
};
std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.fen << ' ' << row.move; }

class Exchanges : public testing::TestWithParam<Row> {};

TEST_P(Exchanges, HaveTheirScore) {
    const BOARD board = BoardFromFen(std::string(GetParam().fen));
    Bitboard touched = ~Bitboard{0};
    EXPECT_EQ(ExchangeScore(MoveOf(board, GetParam().move), board, touched), GetParam().score);
    EXPECT_EQ(touched, GetParam().touched);
}

constexpr auto rows = std::to_array<Row>({
    {"nobody else attacks", "4k3/8/8/3r4/8/8/8/3RK3 w - - 0 1", "d1d5", 500, 0},
    {"quiet move, nobody attacks", "4k3/8/8/8/8/8/8/3RK3 w - - 0 1", "d1d5", 0, 0},
    {"pawn takes a guarded queen", "4k3/8/2p5/3q4/4P3/8/8/4K3 w - - 0 1", "e4d5", 920, Bit(c6)},
    {"queen takes a guarded pawn", "4k3/8/2p5/3p4/8/8/8/3QK3 w - - 0 1", "d1d5", -920, Bit(c6)},
    {"rook behind a rook", "3rk3/8/8/3p4/8/8/3R4/3RK3 w - - 0 1", "d2d5", 100, Bit(d1) | Bit(d8)},
    {"one rook against one", "3rk3/8/8/3p4/8/8/3R4/4K3 w - - 0 1", "d2d5", -400, Bit(d8)},
    {"two rooks on each side", "3rk3/3r4/8/3p4/8/8/3R4/3RK3 w - - 0 1", "d2d5", -400, Bit(d1) | Bit(d7) | Bit(d8)},
    {"pawn steps onto a pawn's square", "4k3/8/2p5/8/3P4/8/8/4K3 w - - 0 1", "d4d5", -100, Bit(c6)},
    {"guarded pawn step", "4k3/8/2p5/8/2PP4/8/8/4K3 w - - 0 1", "d4d5", 0, Bit(c6) | Bit(c4)},
    {"black capture", "3qk3/8/8/3p4/4P3/8/8/4K3 b - - 0 1", "d5e4", 100, 0},
    {"black quiet move into a capture", "3qk3/8/8/8/4P3/8/8/4K3 b - - 0 1", "d8d5", -1020, Bit(e4)},
    {"promotion, unguarded", "8/4P3/8/8/8/7k/8/7K w - - 0 1", "e7e8", 0, 0},
    {"promotion by capture, unguarded", "3r4/4P3/8/8/8/7k/8/7K w - - 0 1", "e7d8", 500, 0},
    {"promotion, recaptured as a queen", "r7/4P3/8/8/8/7k/8/7K w - - 0 1", "e7e8", -1020, Bit(a8)},
    {"underpromotion counts as a queen", "r7/4P3/8/8/8/7k/8/7K w - - 0 1", "e7e8N", -1020, Bit(a8)},
    {"en passant", "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1", "e5d6", 100, 0},
    {"en passant, recaptured", "4k3/2p5/8/3pP3/8/8/8/4K3 w - d6 0 1", "e5d6", 0, Bit(c7)},
    {"king guards", "8/8/3k4/3p4/8/8/8/3RK3 w - - 0 1", "d1d5", -400, Bit(d6)},
    {"king does not recapture a guarded piece", "8/8/3k4/3p4/8/1B6/8/3RK3 w - - 0 1", "d1d5", 100, Bit(b3) | Bit(d6)},
    {"what the move uncovers joins", "4k3/8/2p5/3p4/2P5/1B6/8/4K3 w - - 0 1", "c4d5", 100, Bit(b3) | Bit(c6)},
});
INSTANTIATE_TEST_SUITE_P(Rows, Exchanges, testing::ValuesIn(rows), RowName<Row>);

struct GainRow {
    std::string_view name, fen, move;
    int gain, gain_without_minor_trade;
};
std::ostream& operator<<(std::ostream& out, const GainRow& row) { return out << row.fen << ' ' << row.move; }

class AttackGains : public testing::TestWithParam<GainRow> {};

TEST_P(AttackGains, AreTold) {
    const BOARD board = BoardFromFen(std::string(GetParam().fen));
    const Move move = MoveOf(board, GetParam().move);
    EXPECT_EQ(AttackGain(move, board, false), GetParam().gain);
    EXPECT_EQ(AttackGain(move, board, true), GetParam().gain_without_minor_trade);
}

constexpr auto gain_rows = std::to_array<GainRow>({
    {"attacks nothing", "4k3/8/8/8/8/8/8/1N2K3 w - - 0 1", "b1c3", 0, 0},
    {"knight attacks a rook", "4k3/8/8/3r4/8/8/8/1N2K3 w - - 0 1", "b1c3", 500, 500},
    {"knight forks, the larger counts", "4k3/8/8/1q6/4r3/8/8/1N4K1 w - - 0 1", "b1c3", 1020, 1020},
    {"enemy king does not count", "4k3/8/8/8/4N3/8/8/4K3 w - - 0 1", "e4f6", 0, 0},
    {"guarded pawn is no gain", "4k3/8/4p3/3p4/8/8/8/1N2K3 w - - 0 1", "b1c3", 0, 0},
    {"knight attacks a guarded bishop", "4k3/8/4p3/3b4/8/8/8/1N2K3 w - - 0 1", "b1c3", 10, 0},
    {"pawn attacks a knight", "4k3/8/8/2n5/8/3P4/8/4K3 w - - 0 1", "d3d4", 305, 305},
    {"pawn of Black attacks a knight", "4k3/8/3p4/8/4N3/8/8/4K3 b - - 0 1", "d6d5", 305, 305},
    {"king attacks a pawn", "7k/8/8/8/4p3/8/8/3K4 w - - 0 1", "d1e2", 0, 0},
    {"king attacks a pawn nearby", "7k/8/8/8/4p3/8/3K4/8 w - - 0 1", "d2e3", 100, 100},
    {"rook saw it before, along its line", "4r2k/8/8/8/8/8/4R3/3K4 w - - 0 1", "e2e4", 0, 0},
    {"rook sees it across its line", "r6k/8/8/8/8/8/4R3/3K4 w - - 0 1", "e2a2", 500, 500},
    {"rook captures and sees on", "4r2k/8/8/8/4p3/8/4R3/3K4 w - - 0 1", "e2e4", 500, 500},
    {"bishop across its diagonal", "7k/8/8/1r6/8/8/6B1/K7 w - - 0 1", "g2f1", 500, 500},
    {"queen across", "r4k2/8/8/8/8/8/7Q/3K4 w - - 0 1", "h2g2", 500, 500},
});
INSTANTIATE_TEST_SUITE_P(Rows, AttackGains, testing::ValuesIn(gain_rows), RowName<GainRow>);

/// The rule again: the targets square by square, each exchange asked for.
TEST(AttackGain, IsTheBestExchangeThatTheRuleLeaves) {
    int gains = 0;
    ForEachRandomPosition(seed + 1, 56, 60, [&gains](const BOARD& board, const std::vector<Move>& moves) {
        const SlowPosition position = SlowFromBoard(board);
        for (const Move move : moves) {
            const Square from = FromSquare(move), to = ToSquare(move);
            // The piece looks from its new square while it still stands on the old one.
            SlowPosition looking = position;
            looking.squares[At(to)] = position.squares[At(from)];
            const bool is_slider = MovingPiece(move) >= bishop && MovingPiece(move) <= queen;
            int best = 0;
            for (Square target = a1; target <= h8; ++target) {
                const int code = position.squares[At(target)];
                if (code == no_piece || SideOf(code) == position.side || std::abs(code) == king) continue;
                if (!SlowAttacks(looking, to, target)) continue;
                const int files = FileOf(to) - FileOf(from), ranks = RankOf(to) - RankOf(from);
                const bool on_line = files * (RankOf(target) - RankOf(to)) == ranks * (FileOf(target) - FileOf(to));
                if (is_slider && CapturedPiece(move) == no_piece && on_line) continue;
                Bitboard touched;
                best = std::max(best,
                                ExchangeScore(MakeWord(to, target, MovingPiece(move), std::abs(code)), board, touched));
            }
            ASSERT_EQ(AttackGain(move, board, false), best) << MoveToCoordinate(move) << " in " << FenOf(board);
            ASSERT_EQ(AttackGain(move, board, true), best < 11 ? 0 : best);
            gains += best > 0;
        }
    });
    EXPECT_GT(gains, 500);
}

}  // namespace
