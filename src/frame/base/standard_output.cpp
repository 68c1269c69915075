#include "frame/base/standard_output.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

#include "frame/base/hang_up.h"

namespace {

/// Writes all of a text, which always counts as written: there is nobody to be told of a failure.
ssize_t WriteToStandardOutput(void* /*cookie*/, const char* text, std::size_t length) {
    for (std::size_t written = 0; written < length;) {
        const ssize_t step = write(STDOUT_FILENO, text + written, length - written);
        if (step > 0)
            written += static_cast<std::size_t>(step);
        else if (step == 0 || (errno != EINTR && errno != EAGAIN))
            break;
        else if (!WaitUntilReady(STDOUT_FILENO, POLLOUT))
            break;
    }
    return static_cast<ssize_t>(length);
}

std::FILE* OpenStandardOutput() {
    std::FILE* const stream = fopencookie(nullptr, "w", {nullptr, WriteToStandardOutput, nullptr, nullptr});
    if (stream == nullptr) return stdout;
    std::setvbuf(stream, nullptr, isatty(STDOUT_FILENO) != 0 ? _IOLBF : _IOFBF, BUFSIZ);
    return stream;
}

}  // namespace

std::FILE* StandardOutput() {
    static std::FILE* const stream = OpenStandardOutput();
    return stream;
}
