#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "chess/board.h"
#include "frame/base/vorka_exception.h"

/// Endgame tablebases with distances to mate, behind an abstract source: who reads the files of a format implements
/// TableSource. No source is there at the start, and a program without a reader never gets one.
namespace VorkaTablebases {

class TB_Exception : public TextException {
  public:
    using TextException::TextException;
};

enum class ProbeResult : int {
    disabled = 0,   ///< nothing is loaded
    found = 1,      ///< a score goes out
    not_found = 2,  ///< this material or this position is not in the tables
    queued = 3,     ///< a lookup was postponed: no source of this program does it, and callers treat it as an error
};

/// Why tables that should know a position could not answer.
enum class SourceFailure { none, corrupted, unreadable };

/// The score of a mate that stands on the board; one that is further away has a ply less for each.
inline constexpr int score_of_mate = 32767;

/// What reads tables. Neither castling rights nor en passant squares come here.
class TableSource {
  public:
    TableSource() = default;
    virtual ~TableSource() = default;
    TableSource(const TableSource&) = delete;
    TableSource& operator=(const TableSource&) = delete;

    /// Sets `score` for a position that is found: 0 a draw, else score_of_mate - |score| plies to the mate, positive if
    /// the side to move wins. Throws nothing.
    [[nodiscard]] virtual ProbeResult Probe(const BOARD& board, int& score) noexcept = 0;
    /// What went wrong in the last probe that found nothing; none if the position is just not there.
    [[nodiscard]] virtual SourceFailure last_failure() const noexcept { return SourceFailure::none; }
    /// Whether the tables tell who wins, and not how soon: a score is then a bound, and a mate may be nearer.
    [[nodiscard]] virtual bool KnowsNoDistances() const noexcept { return false; }
    /// Gives the tables a cache of so many bytes. False if they can't work with that.
    [[nodiscard]] virtual bool UseCache(std::int32_t bytes) noexcept = 0;
    /// Whether there is less memory than the last UseCache asked for, which has told so.
    [[nodiscard]] virtual bool LacksMemory() const noexcept { return false; }
};

/// Whether a score of the tables is a loss that is 30 plies away or more.
[[nodiscard]] bool IsLossFarAway(int score) noexcept;

/// The tables that an engine has in use; none at first.
class Tablebases {
  public:
    /// Takes the tables into use, instead of those before. Null puts tablebases out of use.
    void Use(std::unique_ptr<TableSource> source) noexcept { source_ = std::move(source); }

    /// Probes what is loaded. A position with a castling right or an en passant square is not looked up.
    [[nodiscard]] ProbeResult Probe(const BOARD& board, int& score) const noexcept;
    /// Whether a win may be nearer than its score says, and a loss too.
    [[nodiscard]] bool KnowNoDistances() const noexcept { return source_ && source_->KnowsNoDistances(); }
    /// What went wrong in the last probe that found nothing.
    [[nodiscard]] SourceFailure LastFailure() const noexcept;
    /// Whether a position is a loss that is 30 plies away or more; false for what is not found.
    [[nodiscard]] bool IsLossFarAway(const BOARD& board) const noexcept;

  private:
    std::unique_ptr<TableSource> source_;
};

/// Opens the tables of a directory; null if there are none.
using SourceOpener = std::function<std::unique_ptr<TableSource>(const std::string& path)>;

}  // namespace VorkaTablebases

/// Tables in the format of Nalimov.
namespace NalimovTablebases {

class NalimovException : public VorkaTablebases::TB_Exception {
  public:
    using TB_Exception::TB_Exception;
};

/// Opens the tables at `path` with `open` and takes them into use with a cache of `size` bytes, telling the log. Throws
/// NalimovException with the reason; then no tablebases are in use.
void Initialize(VorkaTablebases::Tablebases& tablebases, std::uint64_t size, const std::string& path,
                const VorkaTablebases::SourceOpener& open);

/// Finds no tables anywhere: for programs without a reader.
[[nodiscard]] std::unique_ptr<VorkaTablebases::TableSource> OpenNothing(const std::string& path);

}  // namespace NalimovTablebases
