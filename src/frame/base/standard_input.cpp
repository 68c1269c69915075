#include <poll.h>
#include <sys/select.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <utility>

#include "frame/base/hang_up.h"
#include "frame/base/logfile.h"
#include "frame/base/os_dependent.h"
#include "frame/base/standard_output.h"
#include "frame/base/vocabulary.h"

namespace {

void LogInput(const std::string& line) {
    const EchoScope file_only(vlog, Echo::off);
    vlog << vocabulary::vorka_received_input << ": " << line << '\n';
}

DescriptorReader& StandardInput() {
    static DescriptorReader reader(STDIN_FILENO);
    return reader;
}

}  // namespace

bool DescriptorReader::IsInputAvailable() const {
    if (next_ < buffer_.size() || HasHungUp()) return true;
    fd_set ready;
    FD_ZERO(&ready);
    FD_SET(descriptor_, &ready);
    timeval no_time{};
    const int result = select(descriptor_ + 1, &ready, nullptr, nullptr, &no_time);
    // A descriptor that can't be asked is closed: reading from it will show that.
    return result > 0 || (result < 0 && errno != EINTR);
}

std::optional<std::string> DescriptorReader::ReadLine() {
    std::size_t scanned = next_;
    while (!HasHungUp()) {
        const std::size_t end = buffer_.find('\n', scanned);
        if (std::min(end, buffer_.size()) - next_ > longest_input_line) SkipLine();
        if (end != std::string::npos) {
            std::string line = buffer_.substr(next_, end - next_);
            next_ = end + 1;
            return line;
        }
        buffer_.erase(0, std::exchange(next_, 0));
        scanned = buffer_.size();
        if (!ReadMore()) break;
    }
    if (buffer_.empty() || HasHungUp()) return std::nullopt;
    return std::exchange(buffer_, {});  // a last line without its end
}

/// Forgets the line that begins in the buffer, and what is still to come of it.
void DescriptorReader::SkipLine() {
    constexpr std::size_t recognisable = 60;
    std::string beginning = buffer_.substr(next_, recognisable);
    std::size_t end = 0;
    while ((end = buffer_.find('\n', next_)) == std::string::npos) {
        buffer_.clear();
        next_ = 0;
        if (!ReadMore()) break;
    }
    next_ = end == std::string::npos ? buffer_.size() : end + 1;
    throw input_line_too_long(std::move(beginning));
}

bool DescriptorReader::ReadMore() {
    std::array<char, 0x4000> chunk;
    while (WaitUntilReady(descriptor_, POLLIN)) {
        const ssize_t length = read(descriptor_, chunk.data(), chunk.size());
        if (length < 0 && (errno == EINTR || errno == EAGAIN)) continue;
        if (length <= 0) return false;
        buffer_.append(chunk.data(), static_cast<std::size_t>(length));
        return true;
    }
    return false;
}

bool IsInputAvailable() { return StandardInput().IsInputAvailable(); }

std::optional<std::string> ReadLineOrEnd() {
    std::fflush(StandardOutput());  // the question must be visible before anybody can answer
    std::optional<std::string> line;
    try {
        line = StandardInput().ReadLine();
    } catch (const input_line_too_long& failure) {
        LogInput(failure.beginning());
        throw;
    }
    if (line) LogInput(*line);
    return line;
}

std::string ReadLine() { return ReadLineOrEnd().value_or(std::string(vocabulary::quit)); }
