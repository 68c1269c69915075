#pragma once

#include "bitbases/tablebases.h"

namespace VorkaInterfaces {

/// What opens the tables of a directory from now on, when `tb` names it; returns the opener before. The first one finds
/// none.
VorkaTablebases::SourceOpener useTablebaseOpener(VorkaTablebases::SourceOpener opener);

}  // namespace VorkaInterfaces
