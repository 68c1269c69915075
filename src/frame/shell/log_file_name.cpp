#include "frame/shell/log_file_name.h"

#include "frame/base/vocabulary.h"

std::string ChooseLogFileName(const std::function<bool(const std::string&)>& exists) {
    constexpr int names = 100000;
    constexpr std::size_t least_digits = 3;
    for (int i = 0; i < names; ++i) {
        const std::string digits = std::to_string(i);
        std::string name(vocabulary::log_file_prefix);
        if (digits.size() < least_digits) name.append(least_digits - digits.size(), '0');
        name += digits;
        if (!exists(name)) return name;
    }
    return std::string(vocabulary::log_file_of_last_resort);
}
