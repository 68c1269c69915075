// Any text as a settings file: it is refused, or what it holds is within bounds and reads back from what is written.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "frame/base/logfile.h"
#include "search/settings/settings_file.h"

namespace {

void Require(bool holds) {
    if (!holds) abort();
}

std::string Written(const OptimizeInterface::Settings& settings) {
    std::ostringstream text;
    settings.Write(text);
    return text.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using OptimizeInterface::Settings;
    Settings settings = Settings::Of({});
    try {
        std::istringstream stream(std::string(reinterpret_cast<const char*>(data), size));
        settings.Read(stream);
    } catch (const Settings::InvalidData& error) {
        Require(!error.text().empty());
        return 0;
    }
    for (const search_settings::SettingRow& row : search_settings::Table()) {
        const OptimizeInterface::DataType& variable = settings.Find(row.name);
        for (std::size_t i = 0; i < variable.size(); ++i) {
            Require(variable.Get(i) >= row.lower_bound && variable.Get(i) <= row.upper_bound);
        }
    }
    std::istringstream written(Written(settings));
    Settings again = Settings::Descriptions();
    again.Read(written);
    Require(Written(again) == Written(settings));
    return 0;
}
