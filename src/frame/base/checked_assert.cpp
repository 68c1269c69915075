#include "frame/base/checked_assert.h"

#include <cstdlib>

#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"

void ReportFailedAssertion(std::string_view condition, std::string_view file, int line, std::string_view message) {
    // The assertion may fail while the echo or the file is switched off; the report needs both.
    vlog.SetEcho(true);
    vlog.SetFileOutput(true);
    vlog.SetFlush(true);
    vlog << vocabulary::checked_assert_failed << '\n'
         << condition << '\n'
         << vocabulary::assertion_file << file << vocabulary::assertion_line << line << '\n'
         << message << "\n\n";
    vlog.Flush();
}

void FailAssertion(std::string_view condition, std::string_view file, int line, std::string_view message) {
    ReportFailedAssertion(condition, file, line, message);
    std::abort();
}
