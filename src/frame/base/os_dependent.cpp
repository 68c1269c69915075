#include "frame/base/os_dependent.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/select.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <utility>

#include "frame/base/hang_up.h"
#include "frame/base/logfile.h"
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

void SetStdinRawMode() {
    static bool done = false;
    if (std::exchange(done, true)) return;
    termios mode{};
    if (tcgetattr(STDIN_FILENO, &mode) == 0) {  // fails on a pipe, which has no line mode anyway
        mode.c_lflag &= ~static_cast<tcflag_t>(ICANON);
        tcsetattr(STDIN_FILENO, TCSANOW, &mode);
    }
    std::setbuf(stdin, nullptr);
    LogOnly(vocabulary::stdin_set_to_raw_mode);
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

std::optional<TerminalSize> SizeOfTerminal() {
    if (isatty(STDIN_FILENO) == 0) return std::nullopt;
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0) return std::nullopt;
    return TerminalSize{.rows = size.ws_row, .columns = size.ws_col};
}

std::uint64_t PhysicalMemory() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long page = sysconf(_SC_PAGESIZE);
    return pages > 0 && page > 0 ? static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(page) : 0;
}

void IgnoreTerminationSignals() {
    std::signal(SIGINT, SIG_IGN);
    std::signal(SIGTERM, SIG_IGN);
}

void IgnoreFailedWrites() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

void ReserveStandardDescriptors() {
    // open takes the lowest free number, so going upwards each missing one gets its own.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) == -1 && errno == EBADF) (void)open("/dev/null", O_RDWR);
    }
}

SilentStandardError::SilentStandardError() : kept_(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) {
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (kept_ != -1 && nowhere != -1) (void)dup2(nowhere, STDERR_FILENO);
    if (nowhere != -1) (void)close(nowhere);
}

SilentStandardError::~SilentStandardError() {
    if (kept_ == -1) return;
    (void)dup2(kept_, STDERR_FILENO);
    (void)close(kept_);
}

std::string DirectoryOfProgram(std::string_view argv0) {
    const std::size_t slash = argv0.rfind('/');
    return std::string(slash == std::string_view::npos ? "." : argv0.substr(0, slash));
}

const std::string& ExecutableDirectory(const std::string& argv0) {
    static const std::string directory = DirectoryOfProgram(argv0);
    return directory;
}

std::string PathOfProgram(const std::string& argv0) {
    namespace fs = std::filesystem;
    std::error_code error;
    if (argv0.find('/') != std::string::npos) {
        if (!fs::is_symlink(argv0, error)) return argv0;
        const fs::path target = fs::canonical(argv0, error);
        return error ? argv0 : target.string();
    }
    const fs::path known = fs::read_symlink("/proc/self/exe", error);
    if (error || fs::equivalent(known.parent_path(), ".", error)) return argv0;
    return known.string();
}

bool FileExists(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) return false;
    close(descriptor);
    return true;
}

int NonDeterministicRand_16bit() {
    static std::uint32_t state = static_cast<std::uint32_t>(std::time(nullptr) & 65535);
    static int calls = 0;
    if (calls <= 10 && ++calls == 11) LogOnly(vocabulary::random_source_used_often);
    state = state * 1103515245U + 12345U;
    return static_cast<int>((state >> 16) & 32767U);
}
