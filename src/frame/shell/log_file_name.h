#pragma once

#include <functional>
#include <string>

#include "frame/base/logfile.h"

/// Every run of the program has a log file of its own in the working directory: logfile.000, logfile.001, .. up to
/// logfile.99999, the first one that does not exist yet. If all exist, logfile.max, which is overwritten. Where no file
/// can be created there is no log.

/// How a new log is created, and the last one overwritten.
struct LogOpeners {
    std::function<Logfile::Creation(const std::string& name)> create;
    std::function<void(const std::string& name)> overwrite;
};
void OpenFirstFreeLog(const LogOpeners& openers);
void OpenFirstFreeLog(Logfile& log);
