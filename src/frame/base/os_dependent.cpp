#include "frame/base/os_dependent.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/select.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <utility>

#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"

namespace {

/// Set by SIGHUP, for good.
std::atomic<bool> has_hung_up{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal may come at any moment");

/// Waits until a descriptor is ready for `events`, or can't be asked. False if the terminal hung up before or
/// meanwhile.
bool WaitFor(int descriptor, short events) {
    // A signal that came between the question and the wait would be slept over: it is held back but for the wait
    // itself.
    sigset_t hang_up;
    sigset_t before;
    sigemptyset(&hang_up);
    sigaddset(&hang_up, SIGHUP);
    pthread_sigmask(SIG_BLOCK, &hang_up, &before);
    pollfd asked{.fd = descriptor, .events = events, .revents = 0};
    while (!has_hung_up && ppoll(&asked, 1, nullptr, &before) < 0 && errno == EINTR) continue;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return !has_hung_up;
}

/// Writes all of a text, which always counts as written: there is nobody to be told of a failure.
ssize_t WriteToStandardOutput(void* /*cookie*/, const char* text, std::size_t length) {
    for (std::size_t written = 0; written < length;) {
        const ssize_t step = write(STDOUT_FILENO, text + written, length - written);
        if (step > 0)
            written += static_cast<std::size_t>(step);
        else if (step == 0 || (errno != EINTR && errno != EAGAIN))
            break;
        else if (!WaitFor(STDOUT_FILENO, POLLOUT))
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
    if (next_ < buffer_.size() || has_hung_up) return true;
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
    while (!has_hung_up) {
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
    if (buffer_.empty() || has_hung_up) return std::nullopt;
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
    while (WaitFor(descriptor_, POLLIN)) {
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

std::FILE* StandardOutput() {
    static std::FILE* const stream = OpenStandardOutput();
    return stream;
}

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

void EndInputOnHangUp() {
    struct sigaction before {};
    if (sigaction(SIGHUP, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) return;
    struct sigaction action {};
    action.sa_handler = [](int) { has_hung_up = true; };
    sigemptyset(&action.sa_mask);
    sigaction(SIGHUP, &action, nullptr);
}

bool HasHungUp() { return has_hung_up; }

void ReserveStandardDescriptors() {
    // open takes the lowest free number, so going upwards each missing one gets its own.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) == -1 && errno == EBADF) (void)open("/dev/null", O_RDWR);
    }
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
