#include "frame/base/out_of_memory.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <string_view>

#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"

namespace {

[[noreturn]] void EndOrAbort() {
    if (const std::exception_ptr failure = std::current_exception()) {
        try {
            std::rethrow_exception(failure);
        } catch (const std::bad_alloc&) {
            // The log may not have been built yet.
            (void)std::fflush(nullptr);
            const std::string_view text = vocabulary::out_of_memory;
            (void)!write(STDOUT_FILENO, text.data(), text.size());
            _exit(EXIT_FAILURE);
        } catch (...) {
            // Anything else is a fault of the program, to be found in what the system keeps of it.
        }
    }
    std::abort();
}

/// Before all else, since what is built before main asks for memory too.
[[gnu::constructor(101)]] void WatchForItsEnd() { std::set_terminate(EndOrAbort); }

}  // namespace

int ReportOutOfMemory(const char* prefix) {
    vlog.SetListener(nullptr);
    vlog.SetEcho(true);
    vlog.SetFileOutput(true);
    vlog.SetFlush(true);
    vlog << prefix << vocabulary::out_of_memory;
    vlog.Flush();
    return EXIT_FAILURE;
}
