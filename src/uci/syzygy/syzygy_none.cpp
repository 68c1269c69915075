// For a build without the library Fathom.

#include "uci/syzygy/syzygy.h"

namespace VorkaUci {

bool HasSyzygy() { return false; }
int SyzygyTables::Open(const std::string& /*path*/) { return 0; }
std::unique_ptr<VorkaTablebases::TableSource> SyzygyTables::MakeSource() { return nullptr; }
std::vector<TableMove> SyzygyTables::RootMoves(const BOARD& /*board*/) const { return {}; }

}  // namespace VorkaUci
