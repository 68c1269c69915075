#include "frame/base/os_dependent.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <utility>

#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"

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
