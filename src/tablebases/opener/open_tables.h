#pragma once

#include <memory>
#include <string>

#include "bitbases/tablebases.h"

namespace VorkaTablebases {

/// Opens whatever tables lie in the folder; null if there are none. What can't be used is told on standard output.
[[nodiscard]] std::unique_ptr<TableSource> OpenTables(const std::string& path);

}  // namespace VorkaTablebases
