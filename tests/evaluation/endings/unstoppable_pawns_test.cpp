#include <gtest/gtest.h>

#include <fstream>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "bitbases/bitbases.h"
#include "evaluation/endings/unstoppable_pawns.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/temporary_directory.h"
#include "support/term_rows.h"

/// Passed pawns that run, and races of passed pawns.

namespace {

using namespace sided;

constexpr int sign(Colour us) { return us == white ? 1 : -1; }

template <Colour Us>
int Unstoppable(EVALUATION_CONTEXT& context, const BOARD& board) {
    const UNSTOPPABLE_BONUS bonus = unstoppable_bonus(context, board);
    EXPECT_EQ(bonus.check, RunnerCheck::none);
    return sign(Us) * bonus.score;
}
/// The enemy's passed pawns looked at again, with all that the pieces attack.
template <Colour Us>
int SecondLook(EVALUATION_CONTEXT& context, const BOARD& board) {
    const UNSTOPPABLE_BONUS bonus = unstoppable_bonus(context, board);
    EXPECT_EQ(bonus.score, 0);
    EXPECT_EQ(bonus.check, Us == white ? RunnerCheck::black_pawns : RunnerCheck::white_pawns);
    static_cast<void>(knights_ending<Us>(context, board));
    static_cast<void>(bishops_ending<Us>(context, board));
    static_cast<void>(rooks_ending<Us>(context, board));
    static_cast<void>(queens_ending<Us>(context, board));
    return sign(Us) * checked_unstoppable_bonus(context, board, bonus.check);
}
constexpr SidedTerm<int> unstoppable{Unstoppable<white>, Unstoppable<black>};
constexpr SidedTerm<int> second_look{SecondLook<white>, SecondLook<black>};

class UnstoppablePawns : public testing::TestWithParam<ValueRow> {};
TEST_P(UnstoppablePawns, GiveTheirValue) { ExpectValue(GetParam()); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rules, UnstoppablePawns, testing::Values(
    ValueRow{"with the move", unstoppable, "8/8/8/7k/P7/8/8/K6N", 720},
    ValueRow{"without the move", unstoppable, "8/8/8/7k/8/P7/8/K6N b - - 0 1", 520},
    ValueRow{"on the seventh rank", unstoppable, "8/P7/8/7k/8/8/8/K6N", 920},
    ValueRow{"the most advanced counts", unstoppable, "8/8/P7/7k/8/1P6/8/K6N", 800},
    ValueRow{"caught but won all the same", unstoppable, "4k3/8/4K3/4P3/8/8/8/N7", 225},
    ValueRow{"caught and drawn", unstoppable, "4k3/4P3/4K3/8/8/8/8/8 b - - 0 1", 0},
    ValueRow{"none", unstoppable, "4k3/8/8/8/8/8/8/4K3", 0},
    ValueRow{"both sides have pieces", unstoppable, "8/8/8/7k/P6n/8/8/K6N", 0}),
    RowName<ValueRow>);

// The enemy king just out of the square of the pawn, and just in it; caught rook pawns are drawn here.
INSTANTIATE_TEST_SUITE_P(BySquare, UnstoppablePawns, testing::Values(
    ValueRow{"a2", unstoppable, "8/8/8/6k1/8/8/P7/K6N", 640},
    ValueRow{"a2 caught", unstoppable, "8/8/8/5k2/8/8/P7/K6N", 0},
    ValueRow{"a2, not to move", unstoppable, "8/8/8/7k/8/8/P7/K6N b - - 0 1", 520},
    ValueRow{"a2 caught, not to move", unstoppable, "8/8/8/6k1/8/8/P7/K6N b - - 0 1", 0},
    ValueRow{"a2, the king behind it", unstoppable, "8/8/8/8/8/8/P7/1k1K3N", 640},
    ValueRow{"a2 caught from behind", unstoppable, "8/8/8/8/8/8/P7/1k1K3N b - - 0 1", 0},
    ValueRow{"a3", unstoppable, "8/8/8/8/6k1/P7/8/K6N", 640},
    ValueRow{"a3, not to move", unstoppable, "8/8/8/8/8/P6k/8/K6N b - - 0 1", 520},
    ValueRow{"a3 caught, not to move", unstoppable, "8/8/8/8/8/P5k1/8/K6N b - - 0 1", 0},
    ValueRow{"a4", unstoppable, "5k2/8/8/8/P7/8/8/K6N", 720},
    ValueRow{"a4 caught", unstoppable, "4k3/8/8/8/P7/8/8/K6N", 0},
    ValueRow{"a4, not to move", unstoppable, "6k1/8/8/8/P7/8/8/K6N b - - 0 1", 640},
    ValueRow{"a4 caught, not to move", unstoppable, "5k2/8/8/8/P7/8/8/K6N b - - 0 1", 0},
    ValueRow{"a5", unstoppable, "4k3/8/8/P7/8/8/8/K6N", 760},
    ValueRow{"a5 caught", unstoppable, "3k4/8/8/P7/8/8/8/K6N", 0},
    ValueRow{"a5, not to move", unstoppable, "5k2/8/8/P7/8/8/8/K6N b - - 0 1", 720},
    ValueRow{"a5 caught, not to move", unstoppable, "4k3/8/8/P7/8/8/8/K6N b - - 0 1", 0},
    ValueRow{"a6", unstoppable, "3k4/8/P7/8/8/8/8/K6N", 800},
    ValueRow{"a6 caught", unstoppable, "2k5/8/P7/8/8/8/8/K6N", 0},
    ValueRow{"a6, not to move", unstoppable, "4k3/8/P7/8/8/8/8/K6N b - - 0 1", 760},
    ValueRow{"a6 caught, not to move", unstoppable, "3k4/8/P7/8/8/8/8/K6N b - - 0 1", 0},
    ValueRow{"a7", unstoppable, "2k5/P7/8/8/8/8/8/K6N", 920},
    ValueRow{"a7, not to move", unstoppable, "3k4/P7/8/8/8/8/8/K6N b - - 0 1", 800},
    ValueRow{"a7 caught, not to move", unstoppable, "2k5/P7/8/8/8/8/8/K6N b - - 0 1", 0},
    ValueRow{"the caught pawn ahead does not count", unstoppable, "2k5/8/P7/8/7P/8/8/K6N", 720},
    ValueRow{"neither does a pawn that is not passed", unstoppable, "7k/8/1p6/P7/8/8/8/K6N", 0},
    ValueRow{"the enemy's passed pawn does not stop it", unstoppable, "8/8/8/7k/P7/8/6p1/K6N", 720},
    ValueRow{"the enemy's passed pawn alone", unstoppable, "8/8/8/7k/8/8/6p1/K6N", 0},
    ValueRow{"pieces on both sides", unstoppable, "n7/8/8/6k1/8/8/P7/K6N", 0}),
    RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(RaceValue, UnstoppablePawns, testing::Values(
    ValueRow{"b2", unstoppable, "1k6/8/1K6/8/8/8/1P6/7N", 210},
    ValueRow{"b3", unstoppable, "1k6/8/1K6/8/8/1P6/8/7N", 210},
    ValueRow{"b4", unstoppable, "1k6/8/1K6/8/1P6/8/8/7N", 215},
    ValueRow{"b5", unstoppable, "1k6/8/1K6/1P6/8/8/8/7N", 225},
    ValueRow{"b6 to move", unstoppable, "1k6/8/1PK5/8/8/8/8/7N", 240},
    ValueRow{"b6, not to move", unstoppable, "1k6/8/1PK5/8/8/8/8/7N b - - 0 1", 0},
    ValueRow{"d7", unstoppable, "8/2KPk3/8/8/8/8/8/N7", 250},
    ValueRow{"d7, not to move", unstoppable, "8/2KPk3/8/8/8/8/8/N7 b - - 0 1", 250},
    ValueRow{"two that win", unstoppable, "1k6/8/1K6/8/8/8/1PP5/N7", 400},
    ValueRow{"one that wins, one that draws", unstoppable, "1k6/8/2K5/8/8/8/P1P5/7N", 210}),
    RowName<ValueRow>);
// clang-format on

TEST(UnstoppablePawnsOfBoth, AreWhitesAloneIfNeitherSideHasPieces) {
    EvaluationBuilder of_white("8/8/8/6k1/8/8/P7/K7 w - - 0 1"), of_black(WithColoursExchanged(of_white.board), {});
    of_white.PrepareTerms();
    of_black.PrepareTerms();
    EXPECT_EQ(unstoppable_bonus(of_white.context, of_white.board).score, 640);
    EXPECT_EQ(unstoppable_bonus(of_black.context, of_black.board).score, 0);
}

class SecondLooks : public testing::TestWithParam<ValueRow> {};
TEST_P(SecondLooks, GiveTheirValue) { ExpectValue(GetParam()); }

// clang-format off
// A pawn on c2 or c3 that wins if nothing else runs.
INSTANTIATE_TEST_SUITE_P(Rules, SecondLooks, testing::Values(
    ValueRow{"a rook stops the enemy's pawn", second_look, "8/8/8/1k6/1P5p/8/1K6/7R", 0},
    ValueRow{"a rook watches the enemy's pawn and nothing wins", second_look, "8/8/8/1k6/7p/1P6/1K6/3R4", 0},
    ValueRow{"a rook stands before the pawn", second_look, "2k5/8/2K5/8/7p/8/2P5/7R", 210},
    ValueRow{"a bishop watches its way", second_look, "2k5/8/2K5/8/7p/8/2P3B1/8", 210},
    ValueRow{"a bishop does not watch its way", second_look, "2k5/8/2K5/8/7p/8/2P5/B7", 0},
    ValueRow{"a knight watches it", second_look, "3k4/8/3KpN2/8/8/2P5/8/8", 210},
    ValueRow{"a knight watches it beside its king alone", second_look, "3k4/8/3Kp1N1/8/8/2P5/8/8", 0},
    ValueRow{"the king stands before the pawn", second_look, "4k3/4p3/4K3/8/6P1/8/8/N7", 215},
    ValueRow{"a queen watches it", second_look, "2k5/8/2K5/8/7p/8/2P5/Q7", 210},
    ValueRow{"one of two is stopped", second_look, "2k5/8/2K5/8/p6p/8/2P5/7R", 210},
    ValueRow{"one of two runs", second_look, "2k5/8/2K5/8/p6p/8/2P5/7N", 0},
    ValueRow{"the last step is watched", second_look, "2k5/8/2K5/8/8/8/2P4p/4R3", 210}),
    RowName<ValueRow>);
// clang-format on

// --- Races with the file of two pawns ---

/// A file of results in which every pair of pawns has a result of its own.
class TwoPawnsFile {
  public:
    explicit TwoPawnsFile(int everywhere)
        : bytes_(VorkaBitbases::two_pawns_size, static_cast<char>(everywhere * 0x55)) {}

    /// For the side to move, which is the one that the squares are own to.
    void Set(Colour to_move, Square own_pawn, Square enemy_pawn, Square own_king, Square enemy_king, int value) {
        const int turn = (to_move == white ? 0 : 56) ^ ((own_pawn & 7) > 3 ? 7 : 0);
        const VorkaBitbases::Cell cell =
            VorkaBitbases::TwoPawnsCell(own_pawn ^ turn, enemy_pawn ^ turn, own_king ^ turn, enemy_king ^ turn);
        auto& byte = bytes_.at(cell.offset);
        byte = static_cast<char>((byte & ~(3 << cell.shift)) | value << cell.shift);
    }
    void LoadInto(VorkaBitbases::Bitbases& bitbases) {
        const std::string path = directory_.File("two_pawns");
        std::ofstream(path, std::ios::binary).write(bytes_.data(), static_cast<std::streamsize>(bytes_.size()));
        bitbases.LoadTwoPawns(path);
    }

  private:
    TemporaryDirectory directory_;
    std::vector<char> bytes_;
};

/// White's pawns on a5 and h5 against the black ones on d3 and f3; kings on e1 and e8.
struct RaceRow {
    std::string_view name;
    int d3_a5, d3_h5, f3_a5, f3_h5;  ///< stored results for the side to move
    int white_to_move, black_to_move;
};
std::ostream& operator<<(std::ostream& out, const RaceRow& row) { return out << row.name; }

class Races : public testing::TestWithParam<RaceRow> {};
TEST_P(Races, TakeTheBestOfBlacksPawnsAgainstTheWorstOfWhites) {
    const RaceRow& row = GetParam();
    for (const Colour to_move : {white, black}) {
        SCOPED_TRACE(to_move == white ? "White to move" : "Black to move");
        TwoPawnsFile file(0);
        for (const auto& [white_pawn, black_pawn, value] :
             {std::tuple{a5, d3, row.d3_a5}, std::tuple{h5, d3, row.d3_h5}, std::tuple{a5, f3, row.f3_a5},
              std::tuple{h5, f3, row.f3_h5}}) {
            if (to_move == white) file.Set(white, white_pawn, black_pawn, e1, e8, value);
            if (to_move == black) file.Set(black, black_pawn, white_pawn, e8, e1, value);
        }
        EvaluationBuilder position(to_move == white ? "4k3/8/8/P6P/8/3p1p2/8/4K3 w - - 0 1"
                                                    : "4k3/8/8/P6P/8/3p1p2/8/4K3 b - - 0 1");
        file.LoadInto(position.bitbases);
        position.PrepareTerms();
        EXPECT_EQ(race(position.context, position.board), to_move == white ? row.white_to_move : row.black_to_move);
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(StoredResults, Races, testing::Values(
    RaceRow{"all zero", 0, 0, 0, 0, 0, 0},
    RaceRow{"all one", 1, 1, 1, 1, 150, -150},
    RaceRow{"all two", 2, 2, 2, 2, 2, 2},
    RaceRow{"all three", 3, 3, 3, 3, -150, 150},
    RaceRow{"each of Black's has a bad one", 1, 3, 3, 1, -150, -150},
    RaceRow{"one of Black's is the same against both", 1, 1, 3, 3, 150, 150},
    RaceRow{"its other pawn", 3, 3, 1, 1, 150, 150},
    RaceRow{"zero and two", 0, 2, 3, 1, 0, 0},
    RaceRow{"two alone against zero", 2, 2, 0, 0, 2, 2},
    RaceRow{"mixed", 1, 0, 2, 1, 2, -150}), RowName<RaceRow>);
// clang-format on

TEST(Races, CountOnceInThePawnEnding) {
    constexpr std::string_view to_move[] = {"6k1/8/8/p2P4/P2p4/8/8/6K1 w - - 0 1",
                                            "6k1/8/8/p2P4/P2p4/8/8/6K1 b - - 0 1"};
    for (const std::string_view fen : to_move) {
        const int without = EvaluationBuilder(fen).AskAfresh(0);
        TwoPawnsFile file(1);
        EvaluationBuilder position(fen);
        file.LoadInto(position.bitbases);
        EXPECT_EQ(position.AskAfresh(0), without + 150) << fen;
    }
}

}  // namespace
