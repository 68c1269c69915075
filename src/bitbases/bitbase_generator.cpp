#include "bitbases/bitbase_generator.h"

#include <unistd.h>

#include <filesystem>
#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

#include "bitbases/bitbases.h"
#include "bitbases/checksum_file.h"
#include "chess/board_text.h"
#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"
#include "frame/base/whole_file.h"

// Generation and verification use the same walk for each class. It puts the men of every cell on an empty board, always
// with the side that the table names as White, and leaves out what is no position.

namespace VorkaGenerator {

namespace {

using VorkaTablebases::ProbeResult;
using VorkaTablebases::Tablebases;

struct Man {
    Square square;
    int code;  ///< a piece type, negated for Black
};

/// False if two men share a square, or this is no legal position.
bool SetUp(BOARD& board, std::initializer_list<Man> men, Colour to_move) {
    std::int8_t squares[64] = {};
    for (const Man& man : men) {
        if (squares[man.square] != 0) return false;
        squares[man.square] = static_cast<std::int8_t>(man.code);
    }
    return board.SetPosition(squares, static_cast<int>(to_move), 0, 0);
}

template <class Visit>
void ForEachSquareOnLeftHalf(int first_rank, int last_rank, Visit visit) {
    for (int rank = first_rank; rank <= last_rank; ++rank) {
        for (int file = 0; file < 4; ++file) visit(rank * 8 + file);
    }
}

template <class Visit>
void ForBothKings(Visit visit) {
    for (Square own_king = a1; own_king <= h8; ++own_king) {
        for (Square enemy_king = a1; enemy_king <= h8; ++enemy_king) visit(own_king, enemy_king);
    }
}

/// Calls `visit(board)`.
template <class Visit>
void ForEachSinglePawn(Visit visit) {
    BOARD board;
    for (const Colour to_move : {white, black}) {
        for (Square own_pawn = a2; own_pawn <= h7; ++own_pawn) {
            ForBothKings([&](Square own_king, Square enemy_king) {
                if (SetUp(board, {{own_pawn, pawn}, {own_king, king}, {enemy_king, -king}}, to_move)) visit(board);
            });
        }
    }
}

/// Calls `visit(board, cell)`.
template <class Visit>
void ForEachTwoPawns(Visit visit) {
    BOARD board;
    ForEachSquareOnLeftHalf(1, 6, [&](Square own_pawn) {
        for (Square enemy_pawn = a2; enemy_pawn <= h7; ++enemy_pawn) {
            ForBothKings([&](Square own_king, Square enemy_king) {
                if (!SetUp(board, {{own_pawn, pawn}, {enemy_pawn, -pawn}, {own_king, king}, {enemy_king, -king}},
                           white)) {
                    return;
                }
                visit(board, VorkaBitbases::TwoPawnsCell(own_pawn, enemy_pawn, own_king, enemy_king));
            });
        }
    });
}

/// Calls `visit(board, cell)`, with either side to move.
template <class Visit>
void ForEachRammedPawns(Visit visit) {
    BOARD board;
    ForEachSquareOnLeftHalf(1, 5, [&](Square blocked) {
        for (Square other = a2; other <= h7; ++other) {
            ForBothKings([&](Square strong_king, Square weak_king) {
                for (const Colour to_move : {white, black}) {
                    if (!SetUp(board,
                               {{blocked, pawn},
                                {blocked + 8, -pawn},
                                {other, pawn},
                                {strong_king, king},
                                {weak_king, -king}},
                               to_move)) {
                        continue;
                    }
                    visit(board, VorkaBitbases::RammedPawnsCell(blocked, other, strong_king, weak_king,
                                                                to_move == white ? 0 : 1));
                }
            });
        }
    });
}

/// Why the tables don't know a position that they should.
std::string_view ReasonOfNotFound(const Tablebases& tablebases, std::string_view not_available) {
    switch (tablebases.LastFailure()) {
        case VorkaTablebases::SourceFailure::corrupted:
            return vocabulary::tablebase_corruption;
        case VorkaTablebases::SourceFailure::unreadable:
            return vocabulary::tablebase_io_error;
        default:
            return not_available;
    }
}

/// Probes, and throws `Failure` with a text that says why there is no answer.
template <class Failure>
int ProbeOrThrow(const Tablebases& tablebases, const BOARD& board, std::string_view not_available,
                 std::string_view queued) {
    int score = 0;
    switch (tablebases.Probe(board, score)) {
        case ProbeResult::found:
            return score;
        case ProbeResult::disabled:
            throw Failure(std::string(vocabulary::tablebases_not_loaded));
        case ProbeResult::not_found:
            throw Failure(std::string(ReasonOfNotFound(tablebases, not_available)));
        default:
            throw Failure(std::string(queued));
    }
}

int ProbeToGenerate(const Tablebases& tablebases, const BOARD& board, std::string_view not_available) {
    return ProbeOrThrow<GenerationFailed>(tablebases, board, not_available, vocabulary::generation_lookup_queued);
}

/// Whether the tables know the material, before a file is touched.
void TestTables(const Tablebases& tablebases, std::initializer_list<Man> men, std::string_view not_available) {
    BOARD board;
    for (const Colour to_move : {white, black}) {
        SetUp(board, men, to_move);
        ProbeToGenerate(tablebases, board, not_available);
    }
}

void Store(std::vector<std::uint8_t>& bytes, const VorkaBitbases::Cell& cell, int stored) {
    std::uint8_t& byte = bytes[cell.offset];
    byte = static_cast<std::uint8_t>(byte | stored << cell.shift);
}

/// A score for White as the file holds it.
int StoredResult(int score_of_white) {
    if (score_of_white == 0) return VorkaBitbases::stored_draw;
    return score_of_white > 0 ? VorkaBitbases::stored_win : VorkaBitbases::stored_loss;
}

/// Before minutes of work: whether a file can stand there at all.
bool CanBeCreated(const std::string& path) {
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    return access(folder.empty() ? "." : folder.c_str(), W_OK) == 0;
}

bool PutInPlace(const std::string& path, const std::vector<std::uint8_t>& bytes) {
    return ReplaceFile(path, std::string(bytes.begin(), bytes.end())) == FileOutcome::written;
}

/// Fills a new file by `walk`, which calls `visit(board, cell)`. It gets its name when it is complete, so that a kill
/// leaves nothing that could be taken for it. Tables that fail on the way leave what they have given.
template <class Walk>
void WriteFile(const Tablebases& tablebases, const std::string& path, std::uint32_t size,
               std::string_view not_available, Walk walk) {
    const auto fail = [&] { throw GenerationFailed(VorkaBitbases::CouldNotOpen(path)); };
    if (!CanBeCreated(path)) fail();
    VorkaBitbases::RemoveChecksum(path);
    std::vector<std::uint8_t> bytes(size);
    try {
        walk([&](const BOARD& board, const VorkaBitbases::Cell& cell) {
            const int score = ProbeToGenerate(tablebases, board, not_available);
            Store(bytes, cell, StoredResult(board.side_to_move == white ? score : -score));
        });
    } catch (const GenerationFailed&) {
        (void)PutInPlace(path, bytes);
        throw;
    }
    if (!PutInPlace(path, bytes)) fail();
    // Without it the file is used as well, and the start says so.
    (void)VorkaBitbases::WriteChecksum(path, bytes);
}

int Sign(int score) { return (score > 0) - (score < 0); }

void Compare(const Databases& databases, VerificationHandler& handler, const BOARD& board,
             std::string_view not_available) {
    const int score = ProbeOrThrow<VerificationFailed>(databases.tablebases, board, not_available,
                                                       vocabulary::verification_lookup_queued);
    handler.positionChecked();
    const std::optional<int> known = databases.bitbases.Probe(board);
    if (!known)
        handler.positionNotFound(board);
    else if (Sign(score) != Sign(*known))
        handler.wrongResult(board);
}

[[noreturn]] void FailOn(const BOARD& board, std::string_view reason) {
    vlog << vocabulary::corrupted_position_found;
    PrintBoard(board, true);
    throw VerificationFailed(
        std::string(vocabulary::verification_failed_reason).append(reason).append(vocabulary::verification_failed_end));
}

}  // namespace

void GenerateTwoPawnsBitbases(const Tablebases& tablebases, const std::string& path) {
    TestTables(tablebases, {{e1, king}, {e2, pawn}, {e8, -king}, {e7, -pawn}}, vocabulary::two_pawns_not_available);
    WriteFile(tablebases, path, VorkaBitbases::two_pawns_size, vocabulary::two_pawns_not_available,
              [](auto visit) { ForEachTwoPawns(visit); });
}

void GenerateRammedPawnBitbases(const Tablebases& tablebases, const std::string& path) {
    TestTables(tablebases, {{e1, king}, {d2, pawn}, {e4, pawn}, {e8, -king}, {e5, -pawn}},
               vocabulary::three_pawns_not_available);
    WriteFile(tablebases, path, VorkaBitbases::rammed_pawn_size, vocabulary::three_pawns_not_available,
              [](auto visit) { ForEachRammedPawns(visit); });
}

void SilentVerificationHandler::wrongResult(const BOARD& board) { FailOn(board, vocabulary::invalid_result); }
void SilentVerificationHandler::positionNotFound(const BOARD& board) { FailOn(board, vocabulary::position_not_found); }

void DefaultVerificationHandler::started(std::string_view name) {
    name_ = name;
    positions_ = 0;
    has_failed_ = false;
    vlog << vocabulary::verifying_bitbase << name_ << vocabulary::verifying_dots;
    vlog.Flush();
}

void DefaultVerificationHandler::finished() {
    if (has_failed_)
        vlog << vocabulary::job_failed;
    else if (positions_ == 0)
        vlog << vocabulary::job_skipped;
    else
        vlog << vocabulary::verification_passed << positions_ << vocabulary::verification_positions;
}

void DefaultVerificationHandler::report(std::string_view text, const BOARD& board) {
    has_failed_ = true;
    vlog << vocabulary::error_in_bitbase << name_ << vocabulary::error_in_bitbase_end << text;
    PrintBoard(board, true);
}

void DefaultVerificationHandler::wrongResult(const BOARD& board) {
    report(vocabulary::position_reports_wrong_result, board);
}
void DefaultVerificationHandler::positionNotFound(const BOARD& board) {
    report(vocabulary::position_was_not_found, board);
}

void DefaultVerificationHandler::aborted() { vlog << vocabulary::job_aborted; }

void VerifySinglePawnBitbases(const Databases& databases, VerificationHandler& handler) {
    handler.started(vocabulary::job_single_pawn);
    ForEachSinglePawn(
        [&](const BOARD& board) { Compare(databases, handler, board, vocabulary::single_pawn_not_available); });
    handler.finished();
}

void VerifyTwoPawnsBitbases(const Databases& databases, VerificationHandler& handler) {
    handler.started(vocabulary::job_two_pawns);
    if (databases.bitbases.TwoPawnsLoaded()) {
        ForEachTwoPawns([&](const BOARD& board, const VorkaBitbases::Cell&) {
            Compare(databases, handler, board, vocabulary::two_pawns_not_available);
        });
    }
    handler.finished();
}

void VerifyRammedPawnBitbases(const Databases& databases, VerificationHandler& handler) {
    handler.started(vocabulary::job_rammed_pawn);
    if (databases.bitbases.RammedPawnsLoaded()) {
        ForEachRammedPawns([&](const BOARD& board, const VorkaBitbases::Cell&) {
            Compare(databases, handler, board, vocabulary::three_pawns_not_available);
        });
    }
    handler.finished();
}

}  // namespace VorkaGenerator
