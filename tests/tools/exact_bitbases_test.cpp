// The whole way from the rules of chess to the two files, solved once and looked at from all sides. Some minutes of
// work, so it runs as one test. The folder that VORKA_BITBASES names keeps the files for the tests of the real program.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "bitbase_builder/program.h"
#include "bitbases/bitbase_generator.h"
#include "bitbases/bitbases.h"
#include "bitbases/checksum_file.h"
#include "bitbases/table_source.h"
#include "chess/board_text.h"
#include "frame/base/os_dependent.h"
#include "frame/base/vocabulary.h"
#include "support/board_builder.h"
#include "support/command_bench.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"
#include "tools/builder_boards.h"

namespace {

using bitbase_builder::Library;
using bitbase_builder::Position;
using bitbase_builder::Table;
using bitbase_builder::Value;
using testing::HasSubstr;
using testing::MatchesRegex;
using VorkaTablebases::ProbeResult;

/// The men of the engine's board; nothing if there are more than the builder knows.
std::optional<Position> PositionOf(const BOARD& board) {
    if (PopCount(board.occupied) > Position::most_men) return std::nullopt;
    Position position;
    position.to_move = static_cast<Colour>(board.side_to_move);
    position.at[0] = board.side(white).king_square;
    position.at[1] = board.side(black).king_square;
    for (Bitboard rest = board.occupied; rest != 0;) {
        const Square square = TakeNextBit(rest);
        const int man = board.squares[square];
        if (std::abs(man) == king) continue;
        position.men[static_cast<std::size_t>(position.count)] = {man > 0 ? white : black, std::abs(man)};
        position.at[static_cast<std::size_t>(position.count++)] = square;
    }
    return position;
}

BOARD BoardOf(const Position& position) {
    BOARD board;
    EXPECT_TRUE(PutOnBoard(board, position));
    return board;
}

/// A score of tablebases: a mate in an unknown number of plies.
int ScoreOf(Value value) {
    return value == bitbase_builder::unknown ? 0 : value == bitbase_builder::win ? 32700 : -32700;
}

class ExactBitbases : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        library_ = new Library;
        folder_ = new TemporaryDirectory;
        ExecutableDirectory(folder_->File("vorka"));
        std::vector<std::string> words{"bitbase_builder", "--quiet", "--output", folder_->path().string()};
        std::vector<char*> arguments;
        for (std::string& word : words) arguments.push_back(word.data());
        arguments.push_back(nullptr);
        ASSERT_EQ(bitbase_builder::run_program(static_cast<int>(words.size()), arguments.data(), *library_), 0);
        bench_ = new CommandBench;
        bench_->engine.bitbases.Init();
    }
    static void TearDownTestSuite() {
        delete bench_;
        delete library_;
        delete folder_;
    }

    /// The solved tables in the place of tablebases. A position of `wrong` gets a wrong answer.
    static FakeTables::Answer Solved(const std::string& wrong = {}) {
        return [=](const BOARD& board, int& score) {
            const std::optional<Position> position = PositionOf(board);
            if (!position) return ProbeResult::not_found;
            try {
                score = ScoreOf(library_->value(*position));
            } catch (const std::logic_error&) {
                return ProbeResult::not_found;
            }
            if (!wrong.empty() && FenOf(board) == wrong) score = score == 0 ? 32700 : 0;
            return ProbeResult::found;
        };
    }
    static std::string FileText(std::string_view name) { return TextOf(folder_->File(name)); }
    static bool RemoveFiles() {
        return std::filesystem::remove(folder_->File(vocabulary::two_pawns_file)) &&
               std::filesystem::remove(folder_->File(vocabulary::rammed_pawn_file));
    }

    /// What a line says on the screen, an error after it.
    static std::string Say(const std::string& line) {
        testing::internal::CaptureStdout();
        const CommandOutcome outcome = bench_->Send(line);
        return testing::internal::GetCapturedStdout() + outcome.error;
    }
    /// Changes one bit of a file beside the program, which reads it again. The checksum would betray it.
    static void FlipLowBit(std::string_view name, const VorkaBitbases::Cell& cell) {
        VorkaBitbases::RemoveChecksum(folder_->File(name));
        std::fstream file(folder_->File(name), std::ios::binary | std::ios::in | std::ios::out);
        file.seekg(static_cast<std::streamoff>(cell.offset));
        const int byte = file.get();
        file.seekp(static_cast<std::streamoff>(cell.offset));
        file.put(static_cast<char>(byte ^ 1 << cell.shift));
        file.close();
        bench_->engine.bitbases.Init();
    }

    ~ExactBitbases() override { bench_->engine.tablebases = {}; }
    static void UseTables(FakeTables::Answer answer) { bench_->engine.tablebases = TablebasesOf(std::move(answer)); }

    static CommandBench* bench_;
    static Library* library_;
    static TemporaryDirectory* folder_;
    LogCapture log_;
};
CommandBench* ExactBitbases::bench_ = nullptr;
Library* ExactBitbases::library_ = nullptr;
TemporaryDirectory* ExactBitbases::folder_ = nullptr;

TEST_F(ExactBitbases, GeneratedFilesAreThoseOfTheBuilder) {
    const std::string two_pawns = FileText(vocabulary::two_pawns_file);
    const std::string rammed_pawn = FileText(vocabulary::rammed_pawn_file);
    ASSERT_TRUE(RemoveFiles());
    UseTables(Solved());
    EXPECT_THAT(Say("generate all"),
                MatchesRegex("Generating king\\+pawn vs king\\+pawn bitbases data file\\.\\.\\. done \\([0-9]+ sec\\)\n"
                             "Generating rammed pawn bitbases data file\\.\\.\\. done \\([0-9]+ sec\\)\n"
                             "Generation finished\\. Reloading bitbases\\.\n"));
    EXPECT_TRUE(FileText(vocabulary::two_pawns_file) == two_pawns);
    EXPECT_TRUE(FileText(vocabulary::rammed_pawn_file) == rammed_pawn);
    EXPECT_THAT(Say("tb"), HasSubstr("King+pawn vs king+pawn bitbases (loaded)\n"
                                     "King+pawn+pawn vs king+pawn with pawn ram bitbases (loaded)\n"));
    if (const char* const keep = std::getenv("VORKA_BITBASES")) {
        std::filesystem::create_directories(keep);
        for (const std::string_view name : {vocabulary::two_pawns_file, vocabulary::rammed_pawn_file}) {
            for (const std::string_view ending : {std::string_view{}, vocabulary::checksum_ending}) {
                const std::string file = std::string(name).append(ending);
                std::filesystem::copy_file(folder_->File(file), std::filesystem::path(keep) / file,
                                           std::filesystem::copy_options::overwrite_existing);
            }
        }
    }
}

TEST_F(ExactBitbases, FilesThatStandThereAreKept) {
    EXPECT_EQ(Say("generate rammed_pawn two_pawns"),
              "Generating rammed pawn bitbases data file... skipped (file already exists)\n"
              "Generating king+pawn vs king+pawn bitbases data file... skipped (file already exists)\n"
              "Generation finished. Reloading bitbases.\n");
}

TEST_F(ExactBitbases, AGenerationThatFailsOnTheWayIsSkippedNextTime) {
    const std::string sound = FileText(vocabulary::two_pawns_file);
    std::filesystem::remove(folder_->File(vocabulary::two_pawns_file));
    int probes = 0;
    const FakeTables::Answer solved = Solved();
    UseTables([&](const BOARD& board, int& score) {
        return ++probes > 1000 ? ProbeResult::not_found : solved(board, score);
    });
    EXPECT_EQ(Say("generate two_pawns"),
              "Generating king+pawn vs king+pawn bitbases data file... failed\n"
              "Error (endgame king+pawn vs king+pawn not available): generate two_pawns");
    EXPECT_EQ(Say("generate two_pawns"),
              "Generating king+pawn vs king+pawn bitbases data file... skipped (file already exists)\n"
              "Generation finished. Reloading bitbases.\n");
    bench_->engine.bitbases = {};
    std::ofstream(folder_->File(vocabulary::two_pawns_file), std::ios::binary) << sound;
    bench_->engine.bitbases.Init();
}

TEST_F(ExactBitbases, SoundFilesAreVerified) {
    UseTables(Solved());
    EXPECT_THAT(Say("verify all"),
                MatchesRegex("Verifying bitbase 'single_pawn'\\.\\.\\.passed \\(331352 positions\\)\n"
                             "Verifying bitbase 'two_pawns'\\.\\.\\.passed \\(3718044 positions\\)\n"
                             "Verifying bitbase 'rammed_pawn'\\.\\.\\.passed \\(5783175 positions\\)\n"
                             "Verification finished \\([0-9]+ms total\\)\\.\n"));
}

TEST_F(ExactBitbases, AFlippedBitIsFoundInEveryClass) {
    // The built-in table can't be changed, so its tablebase is.
    const std::string single_pawn = "4k3/8/4K3/4P3/8/8/8/8 b - - 0 1";
    const BOARD two_pawns = BoardFromFen("4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1");
    const BOARD rammed_pawn = BoardFromFen("8/5k2/3p4/3P4/1P6/8/8/4K3 b - - 0 1");
    const VorkaBitbases::Cell two_pawns_cell = VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8);
    const VorkaBitbases::Cell rammed_pawn_cell = VorkaBitbases::RammedPawnsCell(d5, b4, e1, f7, 1);
    FlipLowBit(vocabulary::two_pawns_file, two_pawns_cell);
    FlipLowBit(vocabulary::rammed_pawn_file, rammed_pawn_cell);
    UseTables(Solved(single_pawn));
    const std::string text = Say("verify 'single_pawn' two_pawns rammed_pawn");
    const auto report = [](const std::string& name, const BOARD& board) {
        testing::internal::CaptureStdout();
        vlog << "Verifying bitbase '" << name << "'...Error in " << name
             << " bitbase.\nPosition reports wrong result.\n";
        PrintBoard(board, true);
        vlog << "failed\n";
        return testing::internal::GetCapturedStdout();
    };
    EXPECT_THAT(text,
                testing::StartsWith(report("single_pawn", BoardFromFen(single_pawn)) + report("two_pawns", two_pawns) +
                                    report("rammed_pawn", rammed_pawn) + "Verification finished ("));
    FlipLowBit(vocabulary::two_pawns_file, two_pawns_cell);
    FlipLowBit(vocabulary::rammed_pawn_file, rammed_pawn_cell);
}

// --- The results against other facts ---

/// Calls `visit(table, position)` for so many random legal positions of every table, the same ones in every run.
template <class Visit>
void ForRandomPositions(const Library& library, int of_each, Visit visit) {
    std::mt19937_64 random(11);
    for (const auto& table : library.tables()) ForRandomPositionsOf(*table, of_each, random, visit);
}

int SignOf(Value value) { return value == bitbase_builder::unknown ? 0 : value == bitbase_builder::win ? 1 : -1; }

/// The value that the moves of the engine's own generator give, one ply deep: for the side to move. Taking in passing
/// needs one more ply; without `passing` it is forgotten.
int ValueOfMoves(const Library& library, BOARD& board, bool passing = true) {
    const std::vector<Move> moves = LegalMovesOf(board);
    if (moves.empty()) return board.in_check() ? -1 : 0;
    int best = -1;
    for (const Move move : moves) {
        board.MakeMove(move);
        const int value = passing && board.frame().en_passant_square != 0 ? -ValueOfMoves(library, board)
                                                                          : -SignOf(library.value(*PositionOf(board)));
        board.UnmakeMove(move);
        best = std::max(best, value);
    }
    return best;
}

TEST_F(ExactBitbases, EveryValueFollowsFromItsMoves) {
    ForRandomPositions(*library_, 3000, [](const Table& table, const Position& position) {
        BOARD board = BoardOf(position);
        ASSERT_EQ(SignOf(library_->value(position)), ValueOfMoves(*library_, board))
            << name_of(table.extras()) << ' ' << FenOf(board);
    });
}

/// A plain search with the engine's rules to mate, stalemate, bare kings, or what every player knows: a minor piece
/// alone draws, and who is on move with a queen or a rook alone wins.
class PlainSearch {
  public:
    struct Bounds {
        int at_least;
        int at_most;
    };
    /// What can be shown within `plies`: -1 lost, 0 drawn, 1 won.
    Bounds Search(BOARD& board, int plies) {
        if (const std::optional<int> known = Known(board)) return {*known, *known};
        const std::vector<Move> moves = LegalMovesOf(board);
        if (moves.empty()) return board.in_check() ? Bounds{-1, -1} : Bounds{0, 0};
        if (plies == 0) return {-1, 1};
        Bounds best{-1, -1};
        for (const Move move : moves) {
            board.MakeMove(move);
            const Bounds answer = Search(board, plies - 1);
            board.UnmakeMove(move);
            best = {std::max(best.at_least, -answer.at_most), std::max(best.at_most, -answer.at_least)};
            if (best.at_least == 1) break;
        }
        return best;
    }

  private:
    static std::optional<int> Known(const BOARD& board) {
        const int extras = PopCount(board.occupied) - 2;
        if (extras == 0 || (extras == 1 && board.total_material == 3)) return 0;
        const SIDE_PIECES& own = board.side(static_cast<Colour>(board.side_to_move));
        if (extras == 1 && (own.queens | own.rooks) != 0) return 1;
        return std::nullopt;
    }
};

TEST_F(ExactBitbases, AgreeWithAPlainSearchToTheEnd) {
    int positions = 0;
    ForRandomPositions(*library_, 250, [&](const Table& table, const Position& position) {
        BOARD board = BoardOf(position);
        const bool has_pawns_alone = board.total_material == 0;
        const PlainSearch::Bounds bounds = PlainSearch().Search(board, has_pawns_alone ? 5 : 3);
        const int value = SignOf(library_->value(position));
        ASSERT_GE(value, bounds.at_least) << name_of(table.extras()) << ' ' << FenOf(board);
        ASSERT_LE(value, bounds.at_most) << name_of(table.extras()) << ' ' << FenOf(board);
        if (bounds.at_least != -1 || bounds.at_most != 1) ++positions;
    });
    EXPECT_GT(positions, 2000) << "positions of which the search shows something";
}

TEST_F(ExactBitbases, TakingInPassingIsKnown) {
    int decided = 0;
    Position position;
    position.count = 4;
    position.men[2] = {white, pawn};
    position.men[3] = {black, pawn};
    for (position.at[2] = a2; position.at[2] <= h2; ++position.at[2]) {
        for (const int beside : {-1, 1}) {
            position.at[3] = position.at[2] + 16 + beside;
            if (RankOf(position.at[3]) != 3) continue;
            for (position.at[0] = a1; position.at[0] <= h8; ++position.at[0]) {
                for (position.at[1] = a1; position.at[1] <= h8; ++position.at[1]) {
                    if (!is_legal(position)) continue;
                    BOARD board = BoardOf(position);
                    const int value = SignOf(library_->value(position));
                    ASSERT_EQ(value, ValueOfMoves(*library_, board)) << FenOf(board);
                    if (value != ValueOfMoves(*library_, board, false)) ++decided;
                }
            }
        }
    }
    EXPECT_GT(decided, 500) << "positions that have another value without it";
}

struct Totals {
    std::uint64_t won = 0;
    std::uint64_t drawn = 0;
    std::uint64_t lost = 0;

    bool operator==(const Totals&) const = default;
    [[nodiscard]] std::uint64_t all() const { return won + drawn + lost; }
    friend std::ostream& operator<<(std::ostream& out, const Totals& totals) {
        return out << totals.won << " won, " << totals.drawn << " drawn, " << totals.lost << " lost";
    }
};

const Table& TableOf(const Library& library, const std::string& name) {
    for (const auto& table : library.tables()) {
        if (name_of(table->extras()) == name) return *table;
    }
    throw std::invalid_argument(name);
}

/// Of the legal positions with this side to move, left and right taken together.
Totals TotalsOf(const Table& table, Colour to_move) {
    Totals totals;
    for (std::size_t index = 0; index < table.size(); ++index) {
        const Position position = table.position_of(index);
        if (position.to_move != to_move || !is_legal(position)) continue;
        const Value value = table.value(index);
        ++(value == bitbase_builder::win ? totals.won : value == bitbase_builder::loss ? totals.lost : totals.drawn);
    }
    return totals;
}

TEST_F(ExactBitbases, TotalsAreThePublishedOnes) {
    // King and pawn against king: M. R. B. Clarke, A Quantitative Study of King and Pawn Against King (1977).
    const Table& pawn_ending = TableOf(*library_, "KPK");
    EXPECT_EQ(TotalsOf(pawn_ending, white), (Totals{62480, 19184, 0}));
    EXPECT_EQ(TotalsOf(pawn_ending, black), (Totals{0, 35210, 48802}));
    // Rook against minor piece, won with the rook's side to move, in per cent, as books on endings give it.
    for (const auto& [name, share] : {std::pair{"KRKN", 48}, std::pair{"KRKB", 35}}) {
        const Totals totals = TotalsOf(TableOf(*library_, name), white);
        EXPECT_EQ(totals.won * 100 / totals.all(), share) << name << ": " << totals;
    }
}

TEST_F(ExactBitbases, EqualMenHaveEqualTotals) {
    for (const std::string name : {"KQKQ", "KRKR", "KBKB", "KNKN", "KPKP"}) {
        const Table& table = TableOf(*library_, name);
        EXPECT_EQ(TotalsOf(table, white), TotalsOf(table, black)) << name;
    }
}

TEST_F(ExactBitbases, TwoKnightsWinByMateInOneAlone) {
    const Table& table = TableOf(*library_, "KNNK");
    int wins = 0;
    for (std::size_t index = 0; index < table.size(); ++index) {
        const Position position = table.position_of(index);
        if (!is_legal(position) || table.value(index) != bitbase_builder::win) continue;
        BOARD board = BoardOf(position);
        bool mates = false;
        for (const Move move : LegalMovesOf(board)) {
            board.MakeMove(move);
            mates = mates || (board.in_check() && LegalMovesOf(board).empty());
            board.UnmakeMove(move);
        }
        ASSERT_TRUE(mates) << FenOf(board);
        ++wins;
    }
    EXPECT_GT(wins, 0);
}

}  // namespace
