#include "frame/base/standard_output.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>

#include "frame/base/hang_up.h"

namespace {

/// A pipe that is ready takes so many bytes without waiting, also one that blocks.
constexpr std::size_t largest_step = PIPE_BUF;

/// Whether a step can be written: it is waited for, but not after the hang-up, for nobody need ever read any more.
bool IsReady() {
    if (WaitUntilReady(STDOUT_FILENO, POLLOUT)) return true;
    pollfd asked{.fd = STDOUT_FILENO, .events = POLLOUT, .revents = 0};
    return poll(&asked, 1, 0) > 0;
}

/// Writes all of a text, which always counts as written: there is nobody to be told of a failure.
ssize_t WriteToStandardOutput(void* /*cookie*/, const char* text, std::size_t length) {
    for (std::size_t written = 0; written < length && IsReady();) {
        const ssize_t step = write(STDOUT_FILENO, text + written, std::min(length - written, largest_step));
        if (step > 0)
            written += static_cast<std::size_t>(step);
        else if (step == 0 || (errno != EINTR && errno != EAGAIN))
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
