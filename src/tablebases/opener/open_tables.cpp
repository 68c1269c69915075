#include "tablebases/opener/open_tables.h"

#include <utility>
#include <vector>

#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"
#include "tablebases/mate_table_set.h"
#include "tablebases/nalimov/nalimov_set.h"
#include "tablebases/table_files.h"

namespace VorkaTablebases {

std::unique_ptr<TableSource> OpenTables(const std::string& path) {
    std::vector<std::unique_ptr<TableSet>> sets;
    sets.push_back(std::make_unique<MateTableSet>(path));
    sets.push_back(std::make_unique<NalimovTablebases::NalimovSet>(path));
    if (!sets.back()->empty()) vlog << vocabulary::nalimov_untested;
    std::erase_if(sets, [](const auto& set) { return set->empty(); });
    if (sets.empty()) return nullptr;
    return std::make_unique<CombinedSource>(std::move(sets));
}

}  // namespace VorkaTablebases
