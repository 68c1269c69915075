// For a build without the library Fathom.

#include "uci/syzygy/syzygy.h"

namespace VorkaUci {

bool HasSyzygy() { return false; }
int SyzygyTables::open(const std::string& /*path*/) { return 0; }
std::unique_ptr<VorkaTablebases::TableSource> SyzygyTables::makeSource() { return nullptr; }
std::vector<TableMove> SyzygyTables::rootMoves(const BOARD& /*board*/) const { return {}; }

}  // namespace VorkaUci
