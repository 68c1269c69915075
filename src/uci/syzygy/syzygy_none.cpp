// For a build without the library Fathom.

#include "uci/syzygy/syzygy.h"

namespace VorkaUci {

bool HasSyzygy() { return false; }
int OpenSyzygy(const std::string& /*path*/) { return 0; }
std::unique_ptr<VorkaTablebases::TableSource> MakeSyzygySource() { return nullptr; }
std::vector<Move> SyzygyRootMoves(const BOARD& /*board*/) { return {}; }

}  // namespace VorkaUci
