#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "bitbases/checksum_file.h"
#include "bitbases/file_in_memory.h"
#include "chess/board.h"
#include "frame/base/vorka_exception.h"

/// What is known exactly about pawn endings: king and pawn against king (built in), king and pawn against king and
/// pawn, and king and two pawns against king and pawn where two pawns block each other. The last two are files beside
/// the executable, read if they are there; without them the engine plays on. A checksum stands beside each of them
/// (checksum_file.h): a file that it does not fit is not used, one that lacks it is.
///
/// Probes give scores from the side to move's view on the search's scale: 0 for a draw. A sure win or loss lies among
/// the mate scores, as a mate at least 56 plies away that comes nearer as the pawn advances. They throw nothing.
namespace VorkaBitbases {

namespace HelperFunctions {

/// Numbers the squares of the files a to d: a1 is 0, d1 3, a2 4, d8 31.
[[nodiscard]] constexpr int CompactAntiMirroredSquare(Square square) noexcept {
    return ((square & 56) >> 1) | (square & 3);
}

static_assert([] {
    int next = 0;
    for (Square s = a1; s <= h8; ++s) {
        if (FileOf(s) < 4 && CompactAntiMirroredSquare(s) != next++) return false;
    }
    return next == 32;
}());

}  // namespace HelperFunctions

inline constexpr std::uint32_t two_pawns_size = 0x120000;    ///< bytes
inline constexpr std::uint32_t rammed_pawn_size = 0x1E0000;  ///< bytes

/// What is said of a file that can't be opened.
[[nodiscard]] std::string CouldNotOpen(const std::string& path);

class CouldNotOpenFileException : public TextException {
  public:
    CouldNotOpenFileException(std::string text, std::string_view reason)
        : TextException(std::move(text)), reason_(reason) {}
    /// What is wrong with the file, for those who want to know more; empty if there is nothing to add.
    [[nodiscard]] std::string_view reason() const noexcept { return reason_; }

  private:
    std::string_view reason_;  // a fixed text
};

/// What became of a file that was to be read.
struct FileState {
    std::optional<VorkaUtils::FileInMemory::Failure> failure{};
    Checksum checksum = Checksum::not_tested;
};

/// A stored result, in the view of the side that the table names.
enum StoredResult : int { stored_draw = 0, stored_loss = 1, stored_draw_too = 2, stored_win = 3 };

/// Whether a lone pawn on `pawn` wins, whatever else is on the board. Impossible positions count as wins.
[[nodiscard]] bool IsSinglePawnWin(Colour to_move, Colour pawn_side, Square pawn, Square white_king,
                                   Square black_king) noexcept;
/// One pawn in all.
[[nodiscard]] int ProbeSinglePawn(const BOARD& board) noexcept;

/// The files that an engine has in use; none at first.
class Bitbases {
  public:
    /// Reads the files of the executable's directory, telling the log what it found. May be called again: a file that
    /// was generated since comes into use in the place of the old one.
    void Init();

    /// Read one file. Throw CouldNotOpenFileException, also if the checksum does not fit, with the old file still in
    /// use.
    void LoadTwoPawns(const std::string& path);
    void LoadRammedPawns(const std::string& path);

    [[nodiscard]] bool TwoPawnsLoaded() const noexcept { return two_pawns_ != nullptr; }
    [[nodiscard]] bool RammedPawnsLoaded() const noexcept { return rammed_pawns_ != nullptr; }
    /// What became of the file that was read last, in use or not.
    [[nodiscard]] const FileState& TwoPawnsState() const noexcept { return two_pawns_state_; }
    [[nodiscard]] const FileState& RammedPawnsState() const noexcept { return rammed_pawns_state_; }

    /// The stored result for the side to move. The file must be loaded.
    [[nodiscard]] int ProbeTwoPawnsRaw(Colour to_move, Square white_king, Square black_king, Square white_pawn,
                                       Square black_pawn) const noexcept;
    /// One pawn on each side. The file must be loaded.
    [[nodiscard]] int ProbeTwoPawns(const BOARD& board) const noexcept;
    /// Three pawns in all, the one of a side directly in front of one of the other. The file must be loaded.
    [[nodiscard]] int ProbeRammedPawns(const BOARD& board) const noexcept;
    /// Whatever is known of a position: nothing if there are pieces, castling rights, other numbers of pawns, or the
    /// file is not loaded.
    [[nodiscard]] std::optional<int> Probe(const BOARD& board) const noexcept;

  private:
    using File = std::unique_ptr<VorkaUtils::FileInMemory>;
    File two_pawns_;
    File rammed_pawns_;
    FileState two_pawns_state_;
    FileState rammed_pawns_state_;
};

/// What is to be said about a checksum after what is said about its file: a line, or nothing if all is well. `name` is
/// that of the file.
[[nodiscard]] std::string ChecksumLine(const FileState& state, std::string_view name);

/// The same of the whole file, by itself: why it is not in use, or that its checksum is missing. Nothing if all is
/// well, or nobody tried to read it.
[[nodiscard]] std::string Complaint(const FileState& state, const std::string& folder, std::string_view name);

/// Whether a white pawn stands directly below a black one.
[[nodiscard]] constexpr bool HasRam(const BOARD& board) noexcept {
    return (board.sides[white].pawns << 8 & board.sides[black].pawns) != 0;
}

/// Where a position stands in a file: a byte, and a bit pair in it.
struct Cell {
    std::size_t offset;
    int shift;
};
/// Normalised squares: the side named by the table is White, the indexed pawn stands on the files a to d.
[[nodiscard]] constexpr Cell TwoPawnsCell(Square own_pawn, Square enemy_pawn, Square own_king,
                                          Square enemy_king) noexcept {
    const int pawn_index = HelperFunctions::CompactAntiMirroredSquare(own_pawn - 8);
    return {static_cast<std::size_t>(((pawn_index * 48 + (enemy_pawn - 8)) * 64 + own_king) * 16 + (enemy_king & 15)),
            (enemy_king >> 4) * 2};
}
/// `weak_to_move` is 0 with the strong side to move, else 1.
[[nodiscard]] constexpr Cell RammedPawnsCell(Square blocked_pawn, Square free_pawn, Square strong_king,
                                             Square weak_king, int weak_to_move) noexcept {
    const int pawn_index = HelperFunctions::CompactAntiMirroredSquare(blocked_pawn - 8);
    return {static_cast<std::size_t>(((pawn_index * 48 + (free_pawn - 8)) * 64 + strong_king) * 32 + (weak_king & 31)),
            weak_to_move * 2 + (weak_king >> 5) * 4};
}

}  // namespace VorkaBitbases
