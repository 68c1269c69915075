#pragma once

#include <functional>
#include <string>

/// Every run of the program has a log file of its own in the working directory: logfile.000, logfile.001, .. up to
/// logfile.99999, the first one that does not exist yet. If all exist, logfile.max, which is overwritten.
[[nodiscard]] std::string ChooseLogFileName(const std::function<bool(const std::string&)>& exists);
