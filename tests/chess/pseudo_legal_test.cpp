#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "support/board_builder.h"
#include "support/random_games.h"
#include "support/row_name.h"
#include "support/slow_chess.h"

// IsMovePseudoLegal takes a word that the generator made in some other position. It is strict about pieces, blockers
// and check bits, and deliberately blind to the safety of the own king, to castling rights and to the lines of sliders.
namespace {

std::size_t At(Square s) { return static_cast<std::size_t>(s); }

/// The rule again, in the order of its sentences, on an array of squares.
class SlowPseudoLegal {
  public:
    SlowPseudoLegal(const SlowPosition& position, Move move)
        : position_(position), move_(move), own_(position.side), enemy_(Opponent(own_)) {}

    [[nodiscard]] bool Passes() const {
        if (MovingPiece(move_) == no_piece || On(from_) != Code(own_, MovingPiece(move_))) return false;
        const bool en_passant = MovingPiece(move_) == pawn && CapturedPiece(move_) == pawn &&
                                position_.en_passant_square != 0 && to_ == position_.en_passant_square;
        if (en_passant) return EnPassantPasses();
        if (!(MovingPiece(move_) == pawn ? PawnPasses() : PiecePasses())) return false;
        return GivesDirectCheck(move_) == ChecksDirectly() && GivesDiscoveredCheck(move_) == ChecksByDiscovery();
    }

  private:
    [[nodiscard]] int On(Square s) const { return position_.squares[At(s)]; }
    [[nodiscard]] static int Code(Colour side, int piece) { return side == white ? piece : -piece; }
    [[nodiscard]] bool TakesWhatItSays() const { return On(to_) == Code(enemy_, CapturedPiece(move_)); }

    [[nodiscard]] bool PawnPasses() const {
        const int forward = own_ == white ? 8 : -8;
        if (to_ == from_ + forward) return CapturedPiece(move_) == no_piece && On(to_) == no_piece;
        if (to_ == from_ + 2 * forward)
            return CapturedPiece(move_) == no_piece && On(to_) == no_piece && On(from_ + forward) == no_piece;
        return CapturedPiece(move_) != no_piece && TakesWhatItSays();
    }

    [[nodiscard]] bool PiecePasses() const {
        if (!TakesWhatItSays()) return false;
        const int files = std::abs(FileOf(to_) - FileOf(from_)), ranks = std::abs(RankOf(to_) - RankOf(from_));
        if (MovingPiece(move_) == knight) return files * ranks == 2;
        if (MovingPiece(move_) == king) return std::max(files, ranks) == 1 || std::abs(to_ - from_) == 2;
        // A queen on `from` of an otherwise equal position sees as far as any slider.
        SlowPosition with_queen = position_;
        with_queen.squares[At(from_)] = Code(own_, queen);
        const bool is_line = files == 0 || ranks == 0 || files == ranks;
        return !is_line || SlowAttacks(with_queen, from_, to_);
    }

    /// The position with the moved piece on its new square, nothing else done.
    [[nodiscard]] SlowPosition Moved() const {
        SlowPosition moved = position_;
        moved.squares[At(from_)] = no_piece;
        moved.squares[At(to_)] = Code(own_, PromotionPiece(move_) != 0 ? PromotionPiece(move_) : MovingPiece(move_));
        return moved;
    }

    [[nodiscard]] bool ChecksDirectly() const {
        if (MovingPiece(move_) == king) {
            if (std::abs(to_ - from_) != 2) return false;
            // The rook that jumps looks along the rank through the king's old square, and along its new file.
            SlowPosition castled = position_;
            castled.squares[At(from_)] = Code(own_, rook);
            if (RankOf(enemy_king_) == RankOf(from_) && SlowAttacks(castled, from_, enemy_king_)) return true;
            const Square rook_to = (from_ + to_) / 2;
            castled = position_;
            castled.squares[At(rook_to)] = Code(own_, rook);
            return FileOf(enemy_king_) == FileOf(rook_to) && SlowAttacks(castled, rook_to, enemy_king_);
        }
        return SlowAttacks(Moved(), to_, enemy_king_);
    }

    [[nodiscard]] bool ChecksByDiscovery() const {
        SlowPosition opened = position_;
        opened.squares[At(from_)] = no_piece;
        const auto vector_to = [this](Square s) {
            return std::pair(FileOf(s) - FileOf(enemy_king_), RankOf(s) - RankOf(enemy_king_));
        };
        const auto [from_files, from_ranks] = vector_to(from_);
        const auto [to_files, to_ranks] = vector_to(to_);
        const bool stays_on_line = from_files * to_ranks == from_ranks * to_files;
        const Bitboard before = SlowAttackers(position_, enemy_king_, own_);
        return !stays_on_line && (SlowAttackers(opened, enemy_king_, own_) & ~before) != 0;
    }

    [[nodiscard]] bool EnPassantPasses() const {
        const Bitboard checkers = SlowAttackers(position_, SlowKingSquare(position_, own_), enemy_);
        const Square taken = own_ == white ? to_ - 8 : to_ + 8;
        if (checkers != 0 && checkers != Bit(taken)) return false;
        return !SlowInCheck(SlowAfter(position_, move_), own_) &&
               (move_ & check_bits) == SlowCheckBits(position_, move_);
    }

    const SlowPosition& position_;
    const Move move_;
    const Colour own_, enemy_;
    const Square from_ = FromSquare(move_), to_ = ToSquare(move_);
    const Square enemy_king_ = SlowKingSquare(position_, enemy_);
};

/// Every word that the generator made in the random games of a seed, and each with other check bits.
std::vector<Move> WordsOfGames(std::uint32_t seed) {
    std::set<Move> words;
    ForEachRandomPosition(seed, 14, 60, [&words](const BOARD&, const std::vector<Move>& moves) {
        words.insert(moves.begin(), moves.end());
    });
    std::vector<Move> all;
    for (const Move word : words)
        for (const Move bits : {Move{0}, direct_check_bit, discovered_check_bit, check_bits})
            all.push_back((word & ~check_bits) | bits);
    return all;
}

TEST(MovesOfOtherPositions, PassAsTheRuleSays) {
    constexpr std::uint32_t seed = 99;
    const std::vector<Move> words = WordsOfGames(seed);
    ASSERT_GT(words.size(), 5000U);
    std::size_t next = 0;
    int passed = 0, en_passant = 0;
    ForEachRandomPosition(seed + 1, 70, 60, [&](const BOARD& board, const std::vector<Move>& moves) {
        const SlowPosition position = SlowFromBoard(board);
        const auto expect_rule = [&](Move word) {
            const bool passes = board.IsMovePseudoLegal(word);
            ASSERT_EQ(passes, SlowPseudoLegal(position, word).Passes())
                << MoveToCoordinate(word) << std::hex << " 0x" << word << " in " << FenOf(board);
            passed += passes;
            en_passant += passes && CapturedPiece(word) == pawn && board.squares[ToSquare(word)] == no_piece;
        };
        for (int i = 0; i < 150; ++i) expect_rule(words[next++ % words.size()]);
        for (const Move move : moves)
            for (const Move bits : {Move{0}, direct_check_bit, discovered_check_bit, check_bits})
                expect_rule((move & ~check_bits) | bits);
    });
    EXPECT_GT(passed, 5000);
    EXPECT_GT(en_passant, 20);
}

struct Row {
    std::string_view name, fen;
    Move move;
    bool passes;
};
std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.fen; }

class PseudoLegal : public testing::TestWithParam<Row> {};

TEST_P(PseudoLegal, IsTold) {
    EXPECT_EQ(BoardFromFen(std::string(GetParam().fen)).IsMovePseudoLegal(GetParam().move), GetParam().passes);
}

constexpr auto rows = std::to_array<Row>({
    {"single step", "4k3/8/8/8/8/8/4P3/4K3 w - - 0 1", MakeWord(e2, e3, pawn), true},
    {"single step onto a piece", "4k3/8/8/8/8/4n3/4P3/4K3 w - - 0 1", MakeWord(e2, e3, pawn), false},
    {"double step", "4k3/8/8/8/8/8/4P3/4K3 w - - 0 1", MakeWord(e2, e4, pawn), true},
    {"double step over a piece", "4k3/8/8/8/8/4n3/4P3/4K3 w - - 0 1", MakeWord(e2, e4, pawn), false},
    {"double step onto a piece", "4k3/8/8/8/4n3/8/4P3/4K3 w - - 0 1", MakeWord(e2, e4, pawn), false},
    {"capture", "4k3/8/8/8/8/3n4/4P3/4K3 w - - 0 1", MakeWord(e2, d3, pawn, knight), true},
    {"capture of another piece", "4k3/8/8/8/8/3b4/4P3/4K3 w - - 0 1", MakeWord(e2, d3, pawn, knight), false},
    {"capture of nothing", "4k3/8/8/8/8/8/4P3/4K3 w - - 0 1", MakeWord(e2, d3, pawn, knight), false},
    {"capture of an own piece", "4k3/8/8/8/8/3N4/4P3/4K3 w - - 0 1", MakeWord(e2, d3, pawn, knight), false},
    {"step backwards of the other side's pawn", "4k3/8/8/8/4P3/8/8/4K3 w - - 0 1", MakeWord(e4, e3, pawn), false},
    {"piece of the enemy", "4k3/8/8/8/8/8/4n3/1K6 w - - 0 1", MakeWord(e2, c1, knight), false},
    {"another piece than it says", "4k3/8/8/8/8/8/4N3/1K6 w - - 0 1", MakeWord(e2, c1, bishop), false},
    {"empty square", "4k3/8/8/8/8/8/8/1K6 w - - 0 1", MakeWord(e2, e3, pawn), false},
    {"no piece named", "4k3/8/8/8/8/8/8/1K6 w - - 0 1", MakeWord(e2, e3, no_piece), false},
    {"knight", "4k3/8/8/8/8/8/4N3/1K6 w - - 0 1", MakeWord(e2, c1, knight), true},
    {"knight that jumps too far", "4k3/8/8/8/8/8/4N3/1K6 w - - 0 1", MakeWord(e2, c4, knight), false},
    {"rook behind a blocker", "4k3/8/8/8/8/8/R1N5/1K6 w - - 0 1", MakeWord(a2, e2, rook), false},
    {"rook off its lines, deliberate", "4k3/8/8/8/8/8/R7/1K6 w - - 0 1", MakeWord(a2, c3, rook), true},
    {"pinned knight, deliberate", "4k3/8/8/8/8/4r3/4N3/4K3 w - - 0 1", MakeWord(e2, c1, knight), true},
    {"king into check, deliberate", "4k3/8/8/8/8/7r/4K3/8 w - - 0 1", MakeWord(e2, e3, king), true},
    {"king too far", "4k3/8/8/8/8/8/4K3/8 w - - 0 1", MakeWord(e2, e4, king), false},
    {"castling without right, deliberate", "4k3/8/8/8/8/8/8/4K2R w - - 0 1", castling_word[white][0], true},
    {"castling through pieces, deliberate", "4k3/8/8/8/8/8/8/RN2K3 w - - 0 1", castling_word[white][1], true},
    {"castling onto a piece", "4k3/8/8/8/8/8/8/R1B1K3 w Q - 0 1", castling_word[white][1], false},
    {"castling with check", "5k2/8/8/8/8/8/8/4K2R w K - 0 1", castling_word[white][0] | direct_check_bit, true},
    {"castling with check left out", "5k2/8/8/8/8/8/8/4K2R w K - 0 1", castling_word[white][0], false},
    {"black castling", "r3k3/8/8/8/8/8/8/4K3 b q - 0 1", castling_word[black][1], true},
    {"check left out", "4k3/8/8/8/8/8/8/R6K w - - 0 1", MakeWord(a1, a8, rook), false},
    {"check told", "4k3/8/8/8/8/8/8/R6K w - - 0 1", MakeWord(a1, a8, rook) | direct_check_bit, true},
    {"check made up", "4k3/8/8/8/8/8/8/R6K w - - 0 1", MakeWord(a1, a7, rook) | direct_check_bit, false},
    {"discovered check told", "4k3/8/8/4N3/8/8/8/4R2K w - - 0 1", MakeWord(e5, g4, knight) | discovered_check_bit,
     true},
    {"discovered check left out", "4k3/8/8/4N3/8/8/8/4R2K w - - 0 1", MakeWord(e5, g4, knight), false},
    {"step along the line discovers nothing", "4k3/8/8/8/4P3/8/8/4R2K w - - 0 1", MakeWord(e4, e5, pawn), true},
    {"promotion looks through its old square", "8/4P3/8/4k3/8/8/8/7K w - - 0 1",
     MakeWord(e7, e8, pawn, 0, rook) | direct_check_bit, true},
    {"bishop does not", "8/4P3/8/4k3/8/8/8/7K w - - 0 1", MakeWord(e7, e8, pawn, 0, bishop), true},
    {"en passant", "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1", MakeWord(e5, d6, pawn, pawn), true},
    {"en passant too late", "4k3/8/8/3pP3/8/8/8/4K3 w - - 0 1", MakeWord(e5, d6, pawn, pawn), false},
    {"en passant exposes the king on the rank", "7k/8/8/K2pP2r/8/8/8/8 w - d6 0 1", MakeWord(e5, d6, pawn, pawn),
     false},
    {"en passant exposes the king on a diagonal", "6bk/8/8/3pP3/8/1K6/8/8 w - d6 0 1", MakeWord(e5, d6, pawn, pawn),
     false},
    {"en passant opens a line", "7k/8/b7/8/2Pp4/3K4/8/8 b - c3 0 1",
     MakeWord(d4, c3, pawn, pawn) | discovered_check_bit, true},
    {"en passant opens a line and does not say so", "7k/8/b7/8/2Pp4/3K4/8/8 b - c3 0 1", MakeWord(d4, c3, pawn, pawn),
     false},
    {"en passant by a pinned pawn", "4r2k/8/8/3pP3/8/8/8/4K3 w - d6 0 1", MakeWord(e5, d6, pawn, pawn), false},
    {"en passant takes the checker", "7k/8/8/3pP3/4K3/8/8/8 w - d6 0 1", MakeWord(e5, d6, pawn, pawn), true},
    {"en passant in another check", "7k/8/8/3pP3/8/8/8/r3K3 w - d6 0 1", MakeWord(e5, d6, pawn, pawn), false},
    {"en passant with check", "8/2k5/8/3pP3/8/8/8/4K3 w - d6 0 1", MakeWord(e5, d6, pawn, pawn) | direct_check_bit,
     true},
    {"en passant with check left out", "8/2k5/8/3pP3/8/8/8/4K3 w - d6 0 1", MakeWord(e5, d6, pawn, pawn), false},
});
INSTANTIATE_TEST_SUITE_P(Rows, PseudoLegal, testing::ValuesIn(rows), RowName<Row>);

// No game leads here, but a FEN may: a check from a piece whose line the jumped square is on. The generator lets a pawn
// close the line by capturing; for a word from elsewhere only the jumped pawn counts as a checker.
TEST(PseudoLegal, RefusesAnEnPassantCaptureThatClosesALine) {
    const BOARD board = BoardFromFen("5b1k/8/8/3pP3/8/K7/8/8 w - d6 0 1");
    const Move capture = MoveOf(board, "e5d6");
    EXPECT_EQ(capture, MakeWord(e5, d6, pawn, pawn));
    EXPECT_FALSE(board.IsMovePseudoLegal(capture));
}

TEST(PseudoLegalDeathTest, InvalidIsACallersFault) {
    const BOARD board = BoardFromFen(start_fen);
    // The report goes to standard output, and a death test watches the error stream.
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            static_cast<void>(board.IsMovePseudoLegal(INVALID));
        },
        testing::KilledBySignal(SIGABRT), "IsMovePseudoLegal: move == INVALID test is necessary!");
}

}  // namespace
