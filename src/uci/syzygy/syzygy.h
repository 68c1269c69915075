#pragma once

#include <memory>
#include <string>
#include <vector>

#include "bitbases/tablebases.h"
#include "chess/board.h"
#include "uci/syzygy/root_choice.h"

/// Syzygy tablebases by the library Fathom, where it was installed when the program was built. The library keeps what
/// it has opened for the whole process: one folder, or one list of folders, at a time.
namespace VorkaUci {

/// Whether this build can read the tables.
[[nodiscard]] bool HasSyzygy();

/// The tables in use. The library holds one state for the process, so there is one such object at a time.
class SyzygyTables {
  public:
    /// Opens the tables of the folders that `path` lists, with colons between them; an empty path puts those in use out
    /// of it. The number of men of the largest, 0 if there are none. No source of the tables before may be asked after.
    [[nodiscard]] int Open(const std::string& path);
    [[nodiscard]] bool IsOpen() const { return men_ > 0; }
    /// Gives the search the tables that are open: who wins, of a position whose fifty counter is 0. A win is told as a
    /// mate that is further away than the search goes.
    [[nodiscard]] static std::unique_ptr<VorkaTablebases::TableSource> MakeSource();
    /// What the tables say of each move; empty if they don't know the position.
    [[nodiscard]] std::vector<TableMove> RootMoves(const BOARD& board) const;

  private:
    std::string opened_;  ///< the path whose tables the library holds, in use or not
    int men_ = 0;         ///< of the largest table in use; 0: none is
};

}  // namespace VorkaUci
