#include "bitbases/bitbase_generator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bitbases/bitbases.h"
#include "bitbases/checksum_file.h"
#include "bitbases/synthetic_file.h"
#include "bitbases/table_source.h"
#include "support/board_builder.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using VorkaTablebases::ProbeResult;
using VorkaTablebases::Tablebases;

/// A score that any two positions of the walks may differ in: -1, 0 or 1 times a mate far away.
int MadeUpScore(const BOARD& board) {
    int sum = static_cast<int>(board.side_to_move);
    for (Bitboard men = board.occupied; men != 0;) {
        const Square s = TakeNextBit(men);
        sum += s * board.squares[s];
    }
    return ((sum % 3) + 3) % 3 * 32000 - 32000;
}
ProbeResult MadeUp(const BOARD& board, int& score) {
    score = MadeUpScore(board);
    return ProbeResult::found;
}

template <class Action>
std::string TextOfFailure(Action action) {
    try {
        action();
    } catch (const TextException& error) {
        return error.text();
    }
    return "";
}

class Generator : public testing::Test {
  protected:
    std::string File(const std::string& name) const { return directory_.File(name); }
    /// What a verification writes, and the text that it fails with.
    template <class Verify>
    std::string Verification(Verify verify, const Tablebases& tablebases) {
        VorkaGenerator::DefaultVerificationHandler handler;
        testing::internal::CaptureStdout();
        const std::string failure = TextOfFailure([&] { verify({bitbases_, tablebases}, handler); });
        vlog.Flush();
        return testing::internal::GetCapturedStdout() + failure;
    }
    /// Turns the bit pair at the position's cell into another result; the checksum would betray it.
    static void Flip(const std::string& path, const VorkaBitbases::Cell& cell) {
        VorkaBitbases::RemoveChecksum(path);
        std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
        file.seekg(static_cast<std::streamoff>(cell.offset));
        const int byte = file.get();
        const int pair = byte >> cell.shift & 3;
        file.seekp(static_cast<std::streamoff>(cell.offset));
        file.put(static_cast<char>(byte ^ (pair == 3 ? 2 : 3) << cell.shift));
    }

    TemporaryDirectory directory_;
    VorkaBitbases::Bitbases bitbases_;
    LogCapture log_;
};

TEST_F(Generator, FailsWithoutTablesAndLeavesNoFile) {
    for (const auto generate : {VorkaGenerator::GenerateTwoPawnsBitbases, VorkaGenerator::GenerateRammedPawnBitbases}) {
        const auto failure = [&](const Tablebases& tables) {
            return TextOfFailure([&] { generate(tables, File("x")); });
        };
        EXPECT_EQ(failure({}), "tablebases not loaded");
        EXPECT_EQ(failure(TablebasesOf(Always(ProbeResult::queued))), "internal error: lookup queued");
    }
    const Tablebases unknown = TablebasesOf(Always(ProbeResult::not_found));
    EXPECT_EQ(TextOfFailure([&] { VorkaGenerator::GenerateTwoPawnsBitbases(unknown, File("x")); }),
              "endgame king+pawn vs king+pawn not available");
    EXPECT_EQ(TextOfFailure([&] { VorkaGenerator::GenerateRammedPawnBitbases(unknown, File("x")); }),
              "endgame king+pawn+pawn vs king+pawn not available");
    EXPECT_FALSE(std::filesystem::exists(File("x")));
}

TEST_F(Generator, TablesMustKnowBothSidesToMoveBeforeAFileIsTouched) {
    for (const Colour known : {white, black}) {
        for (const auto& [unknown, text] : {std::pair{ProbeResult::queued, "internal error: lookup queued"},
                                            std::pair{ProbeResult::disabled, "tablebases not loaded"}}) {
            const Tablebases tables = TablebasesOf([known = known, unknown = unknown](const BOARD& board, int& score) {
                return board.side_to_move == known ? MadeUp(board, score) : unknown;
            });
            EXPECT_EQ(TextOfFailure([&] { VorkaGenerator::GenerateTwoPawnsBitbases(tables, File("two")); }), text);
            EXPECT_EQ(TextOfFailure([&] { VorkaGenerator::GenerateRammedPawnBitbases(tables, File("ram")); }), text);
        }
        EXPECT_TRUE(std::filesystem::is_empty(directory_.path()))
            << "known with " << (known == white ? "white" : "black");
    }
}

/// The positions that a generation asks for before it walks through all of them.
template <class Generate>
std::vector<std::string> AskedBeforeTheWalk(Generate generate, const std::string& path) {
    std::vector<std::string> asked;
    const Tablebases tables = TablebasesOf([&](const BOARD& board, int& score) {
        if (asked.size() == 2) return ProbeResult::not_found;
        asked.push_back(FenOf(board));
        return MadeUp(board, score);
    });
    EXPECT_NE(TextOfFailure([&] { generate(tables, path); }), "");
    return asked;
}

TEST_F(Generator, TheTestPositionsAreOfTheMaterialThatIsCopied) {
    EXPECT_THAT(AskedBeforeTheWalk(VorkaGenerator::GenerateTwoPawnsBitbases, File("two")),
                testing::ElementsAre("4k3/4p3/8/8/8/8/4P3/4K3 w - - 0 1", "4k3/4p3/8/8/8/8/4P3/4K3 b - - 0 1"));
    const auto is_of_three_pawns = testing::ResultOf(
        [](const std::string& fen) {
            const BOARD board = BoardFromFen(fen);
            return PopCount(board.occupied) == 5 && PopCount(board.side(white).pawns) == 2 &&
                   VorkaBitbases::HasRam(board);
        },
        true);
    EXPECT_THAT(AskedBeforeTheWalk(VorkaGenerator::GenerateRammedPawnBitbases, File("ram")),
                testing::ElementsAre(testing::AllOf(HasSubstr(" w "), is_of_three_pawns),
                                     testing::AllOf(HasSubstr(" b "), is_of_three_pawns)));
}

TEST_F(Generator, TablesThatFailAreToldFromTablesThatAreNotThere) {
    for (const auto& [failure, text] :
         {std::pair{VorkaTablebases::SourceFailure::corrupted, "Tablebase corruption detected"},
          std::pair{VorkaTablebases::SourceFailure::unreadable, "IO error"}}) {
        const Tablebases tables = TablebasesOf(Always(ProbeResult::not_found), failure);
        EXPECT_EQ(TextOfFailure([&] { VorkaGenerator::GenerateTwoPawnsBitbases(tables, File("x")); }), text);
        EXPECT_EQ(Verification(VorkaGenerator::VerifySinglePawnBitbases, tables),
                  std::string("Verifying bitbase 'single_pawn'...") + text);
    }
}

// --- Files that can't be finished ---

TEST_F(Generator, AFileThatCantBeWrittenIsAFailure) {
    const Tablebases tables = TablebasesOf(MadeUp);
    for (const std::string& path : {File("no/x"), std::string("/proc/x")}) {
        EXPECT_EQ(TextOfFailure([&] { VorkaGenerator::GenerateTwoPawnsBitbases(tables, path); }),
                  "Could not open file '" + path + "'");
    }
}

/// Mounts a file system of its own for this process at `directory`, with room for so much. Whether that is allowed.
bool MountAt(const std::string& directory, unsigned long flags, const char* options) {
    return (unshare(CLONE_NEWNS) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0) &&
           mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("vorka", directory.c_str(), "tmpfs", flags, options) == 0;
}

enum MountOutcome { refused, something_else, not_allowed };

/// How a generation ends where nothing can be written. In a process of its own, as a mount stays to its end.
int GenerateInMount(const std::string& directory, unsigned long flags, const char* options) {
    const pid_t child = fork();
    if (child == 0) {
        if (!MountAt(directory, flags, options)) _exit(not_allowed);
        const Tablebases tables = TablebasesOf(MadeUp);
        const std::string path = directory + "/x";
        const std::string text = TextOfFailure([&] { VorkaGenerator::GenerateTwoPawnsBitbases(tables, path); });
        const bool is_told = text == "Could not open file '" + path + "'";
        _exit(is_told && std::filesystem::is_empty(directory) ? refused : something_else);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(Generator, AFullDiskIsAFailure) {
    const int outcome = GenerateInMount(directory_.path(), 0, "size=256k");
    if (outcome == not_allowed) GTEST_SKIP() << "no mount is allowed here";
    EXPECT_EQ(outcome, refused);
}

TEST_F(Generator, AReadOnlyFolderIsAFailure) {
    const int outcome = GenerateInMount(directory_.path(), MS_RDONLY, nullptr);
    if (outcome == not_allowed) GTEST_SKIP() << "no mount is allowed here";
    EXPECT_EQ(outcome, refused);
}

TEST_F(Generator, AFailureOnTheWayLeavesTheFileAsItStands) {
    int probes = 0;
    const Tablebases tables = TablebasesOf([&](const BOARD& board, int& score) {
        return ++probes > 1000 ? ProbeResult::not_found : MadeUp(board, score);
    });
    EXPECT_EQ(TextOfFailure([&] { VorkaGenerator::GenerateTwoPawnsBitbases(tables, File("x")); }),
              "endgame king+pawn vs king+pawn not available");
    const std::string text = TextOf(File("x"));
    ASSERT_EQ(text.size(), VorkaBitbases::two_pawns_size);
    EXPECT_NE(text.find_first_not_of('\0'), std::string::npos) << "what was written";
    EXPECT_EQ(text.find_last_not_of('\0') * 100 / text.size(), 0U) << "and nothing after it";
}

TEST_F(Generator, AKilledGenerationLeavesNoFile) {
    int probes = 0;
    const Tablebases tables = TablebasesOf([&](const BOARD& board, int& score) {
        if (++probes > 1000) raise(SIGKILL);
        return MadeUp(board, score);
    });
    EXPECT_EXIT(VorkaGenerator::GenerateTwoPawnsBitbases(tables, File("x")), testing::KilledBySignal(SIGKILL), "");
    EXPECT_TRUE(std::filesystem::is_empty(directory_.path())) << "nothing that could be taken for a bitbase";
}

// --- What is written ---

// Boards as a report shows them.
constexpr std::string_view b4_against_g6 =
    "    +---+---+---+---+---+---+---+---+\n"
    "  8 |   |   |   |   | K |   |   |   |\n"
    "  7 |   |   |   |   |   |   |   |   |\n"
    "  6 |   |   |   |   |   |   | P |   |\n"
    "  5 |   |   |   |   |   |   |   |   |\n"
    "  4 |   | *P|   |   |   |   |   |   |\n"
    "  3 |   |   |   |   |   |   |   |   |\n"
    "  2 |   |   |   |   |   |   |   |   |\n"
    "  1 |   |   |   |   | *K|   |   |   |\n"
    "    +---+---+---+---+---+---+---+---+\n"
    "      a   b   c   d   e   f   g   h\n"
    "castle possibilities: none\n"
    "side on move: white; en-passant square: none\n";
constexpr std::string_view blocked_c4_with_g4 =
    "    +---+---+---+---+---+---+---+---+\n"
    "  8 |   |   |   |   | K |   |   |   |\n"
    "  7 |   |   |   |   |   |   |   |   |\n"
    "  6 |   |   |   |   |   |   |   |   |\n"
    "  5 |   |   | P |   |   |   |   |   |\n"
    "  4 |   |   | *P|   |   |   | *P|   |\n"
    "  3 |   |   |   |   |   |   |   |   |\n"
    "  2 |   |   |   |   |   |   |   |   |\n"
    "  1 |   |   |   |   | *K|   |   |   |\n"
    "    +---+---+---+---+---+---+---+---+\n"
    "      a   b   c   d   e   f   g   h\n"
    "castle possibilities: none\n"
    "side on move: black; en-passant square: none\n";

TEST_F(Generator, TwoPawnsAreCopiedAndVerified) {
    const Tablebases tables = TablebasesOf(MadeUp);
    VorkaGenerator::GenerateTwoPawnsBitbases(tables, File("x"));
    ASSERT_EQ(std::filesystem::file_size(File("x")), VorkaBitbases::two_pawns_size);
    bitbases_.LoadTwoPawns(File("x"));
    EXPECT_EQ(bitbases_.TwoPawnsState().checksum, VorkaBitbases::Checksum::fits);
    const BOARD board = BoardFromFen("4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1");
    const int wanted = MadeUpScore(board);
    EXPECT_EQ(bitbases_.ProbeTwoPawns(board) > 0, wanted > 0);
    EXPECT_EQ(bitbases_.ProbeTwoPawns(board) < 0, wanted < 0);
    EXPECT_EQ(bitbases_.ProbeTwoPawnsRaw(white, e1, e2, b4, g6), 0) << "no legal position";
    EXPECT_THAT(Verification(VorkaGenerator::VerifyTwoPawnsBitbases, tables),
                MatchesRegex("Verifying bitbase 'two_pawns'...passed \\([0-9]+ positions\\)\n"));

    Flip(File("x"), VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8));
    bitbases_.LoadTwoPawns(File("x"));
    EXPECT_EQ(Verification(VorkaGenerator::VerifyTwoPawnsBitbases, tables),
              "Verifying bitbase 'two_pawns'...Error in two_pawns bitbase.\nPosition reports wrong result.\n" +
                  std::string(b4_against_g6) + "failed\n");
    VorkaGenerator::SilentVerificationHandler silent;
    testing::internal::CaptureStdout();
    EXPECT_EQ(TextOfFailure([&] {
                  VorkaGenerator::VerifyTwoPawnsBitbases({bitbases_, tables}, silent);
              }),
              "Verification failed (reason: invalid result):\n");
    vlog.Flush();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Corrupted position found:\n" + std::string(b4_against_g6))
        << "and it ends there";
}

TEST_F(Generator, RammedPawnsAreCopiedAndVerified) {
    const Tablebases tables = TablebasesOf(MadeUp);
    VorkaGenerator::GenerateRammedPawnBitbases(tables, File("x"));
    ASSERT_EQ(std::filesystem::file_size(File("x")), VorkaBitbases::rammed_pawn_size);
    Flip(File("x"), VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 1));
    bitbases_.LoadRammedPawns(File("x"));
    // With White's pawn giving check only Black can be on move.
    for (const char* const fen : {"8/8/2k5/1P1p4/3P4/8/8/4K3 b - - 0 1", "8/8/k7/1P1p4/3P4/8/8/5K2 b - - 0 1",
                                  "8/8/2k5/1P1p4/3P4/8/8/6K1 b - - 0 1"}) {
        const BOARD board = BoardFromFen(fen);
        const int probed = bitbases_.ProbeRammedPawns(board);
        const int wanted = MadeUpScore(board);
        EXPECT_EQ((probed > 0) - (probed < 0), (wanted > 0) - (wanted < 0)) << fen;
    }
    EXPECT_EQ(Verification(VorkaGenerator::VerifyRammedPawnBitbases, tables),
              "Verifying bitbase 'rammed_pawn'...Error in rammed_pawn bitbase.\nPosition reports wrong result.\n" +
                  std::string(blocked_c4_with_g4) + "failed\n")
        << "one bit, one position";
}

TEST_F(Generator, TheBuiltInTableIsVerified) {
    const Tablebases tables = TablebasesOf([](const BOARD& board, int& score) {
        const Colour strong = board.side(white).pawns != 0 ? white : black;
        const bool wins = VorkaBitbases::IsSinglePawnWin(static_cast<Colour>(board.side_to_move), strong,
                                                         FindLowestBit(board.side(strong).pawns),
                                                         board.side(white).king_square, board.side(black).king_square);
        score = !wins ? 0 : board.side_to_move == strong ? 32700 : -32700;
        return ProbeResult::found;
    });
    EXPECT_THAT(Verification(VorkaGenerator::VerifySinglePawnBitbases, tables),
                MatchesRegex("Verifying bitbase 'single_pawn'...passed \\([0-9]+ positions\\)\n"));
}

TEST_F(Generator, AMissingFileIsSkippedAndMissingTablesEndIt) {
    const Tablebases none;
    EXPECT_EQ(Verification(VorkaGenerator::VerifyTwoPawnsBitbases, none), "Verifying bitbase 'two_pawns'...skipped\n");
    EXPECT_EQ(Verification(VorkaGenerator::VerifyRammedPawnBitbases, none),
              "Verifying bitbase 'rammed_pawn'...skipped\n");
    EXPECT_EQ(Verification(VorkaGenerator::VerifySinglePawnBitbases, none),
              "Verifying bitbase 'single_pawn'...tablebases not loaded");
    const Tablebases unknown = TablebasesOf(Always(ProbeResult::not_found));
    EXPECT_EQ(Verification(VorkaGenerator::VerifySinglePawnBitbases, unknown),
              "Verifying bitbase 'single_pawn'...endgame king+pawn vs king not available");
    const Tablebases queued = TablebasesOf(Always(ProbeResult::queued));
    EXPECT_EQ(Verification(VorkaGenerator::VerifySinglePawnBitbases, queued),
              "Verifying bitbase 'single_pawn'...Internal error: lookup queued");
}

TEST_F(Generator, TablesThatLackAClassEndItsVerification) {
    const BitbaseFiles files;
    files.LoadTwoPawns(bitbases_);
    files.LoadRammedPawn(bitbases_);
    const Tablebases unknown = TablebasesOf(Always(ProbeResult::not_found));
    EXPECT_EQ(Verification(VorkaGenerator::VerifyTwoPawnsBitbases, unknown),
              "Verifying bitbase 'two_pawns'...endgame king+pawn vs king+pawn not available");
    EXPECT_EQ(Verification(VorkaGenerator::VerifyRammedPawnBitbases, unknown),
              "Verifying bitbase 'rammed_pawn'...endgame king+pawn+pawn vs king+pawn not available");
}

TEST_F(Generator, ABitbaseThatGoesAwayKnowsNothing) {
    const BitbaseFiles files;
    files.LoadTwoPawns(bitbases_);
    const Tablebases tables = TablebasesOf([this](const BOARD& /*board*/, int& score) {
        bitbases_ = {};
        score = 0;
        return ProbeResult::found;
    });
    VorkaGenerator::SilentVerificationHandler silent;
    testing::internal::CaptureStdout();
    EXPECT_EQ(TextOfFailure([&] {
                  VorkaGenerator::VerifyTwoPawnsBitbases({bitbases_, tables}, silent);
              }),
              "Verification failed (reason: position not found):\n");
    vlog.Flush();
    EXPECT_THAT(testing::internal::GetCapturedStdout(), testing::StartsWith("Corrupted position found:\n"));
}

TEST_F(Generator, AnUnknownPositionIsReported) {
    const BOARD board = BoardFromFen("4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1");
    VorkaGenerator::SilentVerificationHandler silent;
    testing::internal::CaptureStdout();
    EXPECT_EQ(TextOfFailure([&] { silent.positionNotFound(board); }),
              "Verification failed (reason: position not found):\n");
    vlog.Flush();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Corrupted position found:\n" + std::string(b4_against_g6));

    VorkaGenerator::DefaultVerificationHandler handler;
    testing::internal::CaptureStdout();
    handler.started("x");
    handler.positionNotFound(board);
    handler.finished();
    handler.aborted();
    vlog.Flush();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Verifying bitbase 'x'...Error in x bitbase.\nPosition not found.\n" + std::string(b4_against_g6) +
                  "failed\naborted\n");
}

}  // namespace
