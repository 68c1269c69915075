#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "bitbase_builder/endings.h"
#include "bitbase_builder/program.h"
#include "bitbases/single_pawn_solver.h"
#include "support/board_builder.h"
#include "tools/builder_boards.h"

namespace {

using namespace bitbase_builder;

std::string PlacementOf(const Position& position) {
    std::string text(64, '.');
    for (std::size_t m = 0; m < static_cast<std::size_t>(position.count); ++m) {
        const char letter = " PNBRQK"[position.men[m].type];
        text[static_cast<std::size_t>(position.at[m])] =
            position.men[m].colour == white ? letter : static_cast<char>(letter - 'A' + 'a');
    }
    return text;
}

std::string PlacementOf(const BOARD& board) {
    std::string text(64, '.');
    for (std::size_t s = 0; s < 64; ++s) {
        const int man = board.squares[s];
        if (man == 0) continue;
        const char letter = " PNBRQK"[std::abs(man)];
        text[s] = man > 0 ? letter : static_cast<char>(letter - 'A' + 'a');
    }
    return text;
}

const std::vector<std::vector<Man>> materials = {
    {{white, pawn}},
    {{white, queen}, {black, rook}},
    {{white, bishop}, {black, knight}},
    {{white, rook}, {black, pawn}},
    {{white, pawn}, {black, pawn}},
    {{white, pawn}, {white, pawn}},
    {{white, pawn}, {black, pawn}, {white, pawn}},
    {{white, pawn}, {black, pawn}, {white, queen}},
};

/// Calls `visit(table, position)` for legal positions of every material, the same ones in every run.
template <class Visit>
void ForRandomPositions(int of_each, Visit visit) {
    std::mt19937_64 random(5);
    for (const std::vector<Man>& material : materials) {
        const Table table(material);
        ForRandomPositionsOf(table, of_each, random, visit);
    }
}

TEST(BitbaseBuilder, LegalPositionsAreThoseOfTheEngine) {
    std::mt19937_64 random(6);
    for (const std::vector<Man>& material : materials) {
        const Table table(material);
        for (int i = 0; i < 3000; ++i) {
            const Position position = table.position_of(random() % table.size());
            if (PopCount(position.occupied()) != position.count) {
                EXPECT_FALSE(is_legal(position));
                continue;
            }
            BOARD board;
            ASSERT_EQ(is_legal(position), PutOnBoard(board, position)) << PlacementOf(position);
        }
    }
}

TEST(BitbaseBuilder, MovesAreThoseOfTheEngine) {
    ForRandomPositions(1500, [](const Table&, const Position& position) {
        std::vector<std::string> moves;
        for_each_move(position, [&](const Successor& successor) {
            moves.push_back(PlacementOf(successor.position));
            EXPECT_EQ(successor.is_conversion,
                      successor.position.count != position.count || successor.position.men != position.men);
            return true;
        });
        std::vector<std::string> wanted;
        BOARD board;
        ASSERT_TRUE(PutOnBoard(board, position));
        for (const Move move : LegalMovesOf(board)) {
            board.MakeMove(move);
            wanted.push_back(PlacementOf(board));
            board.UnmakeMove(move);
        }
        std::sort(moves.begin(), moves.end());
        std::sort(wanted.begin(), wanted.end());
        ASSERT_EQ(moves, wanted) << FenOf(board);
        ASSERT_EQ(has_move(position), !wanted.empty());
    });
}

TEST(BitbaseBuilder, EnPassantCapturesAreThoseOfTheEngine) {
    int captures_seen = 0;
    ForRandomPositions(20000, [&](const Table&, const Position& position) {
        for_each_move(position, [&](const Successor& successor) {
            if (successor.en_passant < 0) return true;
            const EnPassantCaptures captures = en_passant_captures(successor.position, successor.en_passant);
            BOARD board;
            EXPECT_TRUE(PutOnBoard(board, successor.position, successor.en_passant));
            std::vector<std::string> wanted;
            for (const Move move : LegalMovesOf(board)) {
                if (MovingPiece(move) != pawn || ToSquare(move) != successor.en_passant) continue;
                board.MakeMove(move);
                wanted.push_back(PlacementOf(board));
                board.UnmakeMove(move);
            }
            std::vector<std::string> found;
            for (int i = 0; i < captures.count; ++i) {
                found.push_back(PlacementOf(captures.positions[static_cast<std::size_t>(i)]));
            }
            std::sort(wanted.begin(), wanted.end());
            std::sort(found.begin(), found.end());
            EXPECT_EQ(found, wanted) << FenOf(board);
            captures_seen += captures.count;
            return true;
        });
    });
    EXPECT_GT(captures_seen, 20);
}

TEST(BitbaseBuilder, AnIndexIsItsPositionOrTheMirroredOne) {
    ForRandomPositions(2000, [](const Table& table, const Position& position) {
        const std::size_t index = table.index_of(position);
        ASSERT_LT(index, table.size());
        ASSERT_EQ(PlacementOf(table.position_of(index)), PlacementOf(position));
        Position mirrored = position;
        for (int m = 0; m < mirrored.count; ++m) mirrored.at[static_cast<std::size_t>(m)] ^= 7;
        ASSERT_EQ(table.index_of(mirrored), index);
    });
}

class SolvedEndings : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        library = new Library;
        for (const int piece : {queen, rook, bishop, knight}) library->add({{white, piece}}, 2);
        library->add({{white, pawn}}, 2);
    }
    static void TearDownTestSuite() {
        delete library;
        library = nullptr;
    }
    /// Calls `visit(position, value)` for all legal positions of one man besides the kings.
    template <class Visit>
    static void ForEach(int type, Visit visit) {
        Position position;
        position.count = 3;
        position.men[2] = {white, type};
        for (const Colour to_move : {white, black}) {
            position.to_move = to_move;
            for (position.at[0] = a1; position.at[0] <= h8; ++position.at[0]) {
                for (position.at[1] = a1; position.at[1] <= h8; ++position.at[1]) {
                    for (position.at[2] = a1; position.at[2] <= h8; ++position.at[2]) {
                        if (is_legal(position)) visit(position, library->value(position));
                    }
                }
            }
        }
    }
    static Library* library;
};
Library* SolvedEndings::library = nullptr;

TEST_F(SolvedEndings, AQueenOrARookWinsUnlessItIsLostAtOnce) {
    for (const int piece : {queen, rook}) {
        ForEach(piece, [](const Position& position, Value value) {
            if (position.to_move == white) {
                ASSERT_EQ(value, win);
                return;
            }
            bool is_lost = has_move(position) || is_attacked(position, position.at[1], white);
            for_each_move(position, [&](const Successor& successor) {
                if (successor.is_conversion) is_lost = false;
                return true;
            });
            ASSERT_EQ(value, is_lost ? loss : unknown) << PlacementOf(position);
        });
    }
}

TEST_F(SolvedEndings, AMinorPieceNeverWins) {
    for (const int piece : {bishop, knight}) {
        ForEach(piece, [](const Position&, Value value) { ASSERT_EQ(value, unknown); });
    }
}

TEST_F(SolvedEndings, APawnWinsWhereTheBuiltInTableSaysSo) {
    const std::vector<std::uint64_t> words = SolveSinglePawn();
    ForEach(pawn, [&](const Position& position, Value value) {
        const auto word =
            static_cast<std::size_t>((static_cast<int>(position.to_move) * 64 + position.at[2]) * 64 + position.at[0]);
        const bool draws = Has(words[word], position.at[1]);
        ASSERT_EQ(value, draws ? unknown : position.to_move == white ? win : loss) << PlacementOf(position);
    });
}

TEST_F(SolvedEndings, ColoursMakeNoDifference) {
    ForEach(pawn, [](const Position& position, Value value) { ASSERT_EQ(library->value(position.turned()), value); });
}

TEST(BitbaseBuilder, UnknownMenAreAnError) {
    Position position;
    position.count = 3;
    position.men[2] = {white, queen};
    position.at = {a1, c3, e5};
    EXPECT_THROW(static_cast<void>(Library().value(position)), std::logic_error);
    position.count = 2;
    EXPECT_EQ(Library().value(position), unknown) << "bare kings draw";
}

// --- The program ---

/// Exit status, standard output and standard error of a run that solves nothing.
struct Outcome {
    int status = 0;
    std::string output, errors;
};
Outcome RunProgram(std::vector<std::string> words) {
    words.insert(words.begin(), "bitbase_builder");
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    Library library;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    Outcome outcome;
    outcome.status = run_program(static_cast<int>(words.size()), arguments.data(), library);
    outcome.output = testing::internal::GetCapturedStdout();
    outcome.errors = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(library.tables().empty());
    return outcome;
}

TEST(BitbaseBuilderProgram, TellsItsUsage) {
    const Outcome outcome = RunProgram({"--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.output.starts_with("usage: bitbase_builder ")) << outcome.output;
}

TEST(BitbaseBuilderProgram, RefusesBadWordsBeforeItWorks) {
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{{"--only", "kpp_kp"},
                                                                                       {"--threads", "0"},
                                                                                       {"--threads", "257"},
                                                                                       {"--threads", "2x"},
                                                                                       {"--nonsense"},
                                                                                       {"word"}}) {
        const Outcome outcome = RunProgram(words);
        EXPECT_EQ(outcome.status, 1) << words.back();
        EXPECT_EQ(outcome.output, "");
        EXPECT_NE(outcome.errors.find("usage: bitbase_builder "), std::string::npos);
    }
}

TEST(BitbaseBuilderProgram, LooksWhereItWritesBeforeItWorks) {
    const Outcome outcome = RunProgram({"--quiet", "--output", "/no/such/folder"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "bitbase_builder: can't write into /no/such/folder\n");
}

}  // namespace
