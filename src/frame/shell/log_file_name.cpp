#include "frame/shell/log_file_name.h"

#include "frame/base/vocabulary.h"

void OpenFirstFreeLog(const LogOpeners& openers) {
    constexpr int names = 100000;
    constexpr std::size_t least_digits = 3;
    for (int i = 0; i < names; ++i) {
        const std::string digits = std::to_string(i);
        std::string name(vocabulary::log_file_prefix);
        if (digits.size() < least_digits) name.append(least_digits - digits.size(), '0');
        name += digits;
        // What is wrong with one name, a folder that can't be written, is wrong with all.
        if (openers.create(name) != Logfile::Creation::exists) return;
    }
    openers.overwrite(std::string(vocabulary::log_file_of_last_resort));
}

void OpenFirstFreeLog(Logfile& log) {
    OpenFirstFreeLog({.create = [&](const std::string& name) { return log.Create(name); },
                      .overwrite = [&](const std::string& name) { (void)log.Overwrite(name); }});
}
