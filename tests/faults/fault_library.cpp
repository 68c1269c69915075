// A library that is loaded before all others (LD_PRELOAD) and lets the system fail under a program that knows nothing
// of it. Each fault is asked for by an environment variable and stands in a section of its own; without its variable a
// function does what it always does.
//
//     VORKA_FAULT_CLOCK=300:-3600    300 ms after the start somebody sets the clock back by an hour
//     VORKA_FAULT_MALLOC=17          the 17th request for memory is refused
//     VORKA_FAULT_MALLOC=17+         so are all after it
//     VORKA_FAULT_CALL=5:EIO         the fifth call about a file fails with that error; 5+:EIO: so do all after it
//     VORKA_FAULT_CALL=5:kill        the program is killed at that call
//     VORKA_FAULT_CALL=5:torn        the same, but half of what was to be written is written
//     VORKA_FAULT_CALL=5:short       only half is written, which is no fault: the program has to write the rest
//     VORKA_FAULT_DISK=100           the disk is full after 100 bytes
//     VORKA_FAULT_TRIALS="EIO kill"  for a program that works for long before it writes: at its first unlink of a file,
//                                    which is where counting begins, it becomes many, each with its fault, EIO at the
//                                    first call, at the second .., then kill. Each goes on in a folder of its own,
//                                    trial-EIO-1 .., which has a folder kept, and in the end its output and its status
//     VORKA_FAULT_FILES=kept         calls are those about files whose path has this text in it; without it, any file
//
// A fault of a call is told on standard error: its name and its number. The functions below take the places of those of
// the C library, so their names are not of this house.

// With it the library has functions of these names inline.
#undef _FORTIFY_SOURCE

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

/// The function of the C library that the one of this name here has taken the place of.
template <class Function>
Function* Original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// --- The clock that can be set ---

struct SetClock {
    bool is_wanted = false;
    std::int64_t due = 0;    ///< nanoseconds of the clock that can't be set
    std::int64_t shift = 0;  ///< seconds
};

std::int64_t Nanoseconds(const timespec& time) { return std::int64_t{time.tv_sec} * 1000000000 + time.tv_nsec; }

std::int64_t SteadyNow() {
    static auto* const original = Original<int(clockid_t, timespec*)>("clock_gettime");
    timespec now{};
    original(CLOCK_MONOTONIC, &now);
    return Nanoseconds(now);
}

SetClock ReadSetClock() {
    const char* const wish = std::getenv("VORKA_FAULT_CLOCK");
    if (wish == nullptr) return {};
    char* end = nullptr;
    const std::int64_t milliseconds = std::strtoll(wish, &end, 10);
    return {
        .is_wanted = true, .due = SteadyNow() + milliseconds * 1000000, .shift = std::strtoll(end + 1, nullptr, 10)};
}

const SetClock set_clock = ReadSetClock();

/// What has to be added to the calendar's time now, in seconds.
std::int64_t Shift() { return set_clock.is_wanted && SteadyNow() >= set_clock.due ? set_clock.shift : 0; }

// --- Memory ---

struct RefusedMemory {
    std::uint64_t first = 0;  ///< the number of the request; 0 for none
    bool for_ever = false;
};

RefusedMemory ReadRefusedMemory() {
    const char* const wish = std::getenv("VORKA_FAULT_MALLOC");
    if (wish == nullptr) return {};
    char* end = nullptr;
    const std::uint64_t first = std::strtoull(wish, &end, 10);
    return {.first = first, .for_ever = *end == '+'};
}

/// Nothing is refused before this is built, so the requests of the loader don't count.
const RefusedMemory refused_memory = ReadRefusedMemory();
std::atomic<std::uint64_t> requests{0};

bool IsRefused() {
    if (refused_memory.first == 0) return false;
    const std::uint64_t number = ++requests;
    return number == refused_memory.first || (refused_memory.for_ever && number > refused_memory.first);
}

// --- Files ---

enum class Action { none, fail, kill, torn, cut_short };

struct FaultyCall {
    std::uint64_t number = 0;  ///< 0 for none
    bool for_ever = false;
    Action action = Action::none;
    int error = 0;
};

struct NamedError {
    const char* name;
    int number;
};
constexpr std::array errors{NamedError{"EIO", EIO},       NamedError{"ENOSPC", ENOSPC}, NamedError{"EACCES", EACCES},
                            NamedError{"EINTR", EINTR},   NamedError{"EDQUOT", EDQUOT}, NamedError{"EMFILE", EMFILE},
                            NamedError{"ENOENT", ENOENT}, NamedError{"EROFS", EROFS}};

FaultyCall ReadFaultyCall(const char* wish) {
    if (wish == nullptr) return {};
    char* end = nullptr;
    FaultyCall call{.number = std::strtoull(wish, &end, 10)};
    call.for_ever = *end == '+';
    const char* const word = end + (call.for_ever ? 2 : 1);
    if (std::strcmp(word, "kill") == 0) call.action = Action::kill;
    if (std::strcmp(word, "torn") == 0) call.action = Action::torn;
    if (std::strcmp(word, "short") == 0) call.action = Action::cut_short;
    for (const NamedError& error : errors) {
        if (std::strcmp(word, error.name) == 0) call = {call.number, call.for_ever, Action::fail, error.number};
    }
    return call;
}

struct Disk {
    bool is_wanted = false;
    std::size_t left = 0;  ///< bytes
};

Disk ReadDisk() {
    const char* const wish = std::getenv("VORKA_FAULT_DISK");
    if (wish == nullptr) return {};
    return {.is_wanted = true, .left = std::strtoull(wish, nullptr, 10)};
}

FaultyCall faulty_call = ReadFaultyCall(std::getenv("VORKA_FAULT_CALL"));
Disk disk = ReadDisk();
const char* const files = std::getenv("VORKA_FAULT_FILES");
std::atomic<std::uint64_t> calls{0};

bool IsMeant(const char* path) { return files == nullptr || std::strstr(path, files) != nullptr; }

/// Whether it is a file or a folder, of those that are meant.
bool IsMeant(int descriptor) {
    if (descriptor < 0) return false;
    std::array<char, 64> link{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", descriptor);
    std::array<char, 4096> path{};
    const ssize_t length = readlink(link.data(), path.data(), path.size() - 1);
    return length > 0 && path[0] == '/' && std::strncmp(path.data(), "/dev/", 5) != 0 && IsMeant(path.data());
}

void Say(const char* text) { (void)syscall(SYS_write, STDERR_FILENO, text, std::strlen(text)); }

/// What is to happen to a call of that name; it is counted if it is meant.
Action Due(const char* name, bool is_meant) {
    if (!is_meant || faulty_call.action == Action::none) return Action::none;
    const std::uint64_t number = ++calls;
    if (number != faulty_call.number && !(faulty_call.for_ever && number > faulty_call.number)) return Action::none;
    std::array<char, 64> line{};
    std::snprintf(line.data(), line.size(), "fault: %s, call %llu\n", name, static_cast<unsigned long long>(number));
    Say(line.data());
    return faulty_call.action;
}

void KillMe() { (void)syscall(SYS_kill, getpid(), SIGKILL); }

/// For calls that write nothing: whether the call fails, with the error that was asked for. A kill doesn't return.
bool Fails(const char* name, bool is_meant) {
    const Action action = Due(name, is_meant);
    if (action == Action::kill || action == Action::torn) KillMe();
    if (action != Action::fail) return false;
    errno = faulty_call.error;
    return true;
}

/// How many bytes the disk takes of so many. 0, with the error of a full disk, if there is no room for one.
std::size_t RoomFor(std::size_t length, bool is_meant) {
    if (!is_meant || !disk.is_wanted) return length;
    const std::size_t taken = std::min(length, disk.left);
    disk.left -= taken;
    if (taken < length) Say("fault: full disk\n");
    if (taken == 0) errno = ENOSPC;
    return taken;
}

// --- Many trials of one run ---

using Path = std::array<char, 256>;

bool HasFault(const char* output) {
    FILE* const file = std::fopen(output, "r");
    if (file == nullptr) return false;
    bool has_fault = false;
    std::array<char, 512> line{};
    while (std::fgets(line.data(), line.size(), file) != nullptr) {
        has_fault = has_fault || std::strncmp(line.data(), "fault: ", 7) == 0;
    }
    std::fclose(file);
    return has_fault;
}

/// The child goes on as if nothing had been; its parent waits for its end, and says whether there was a fault.
enum class Trial { is_child, had_fault, had_none };

Trial TryOnce(const char* word, int number) {
    Path folder{};
    std::snprintf(folder.data(), folder.size(), "trial-%s-%d", word, number);
    Path kept{};
    std::snprintf(kept.data(), kept.size(), "trial-%s-%d/kept", word, number);
    Path output{};
    std::snprintf(output.data(), output.size(), "trial-%s-%d/output", word, number);
    mkdir(folder.data(), 0777);
    mkdir(kept.data(), 0777);
    const pid_t child = fork();
    if (child == 0) {
        (void)std::freopen(output.data(), "w", stderr);
        if (chdir(folder.data()) != 0) _exit(98);
        Path wish{};
        std::snprintf(wish.data(), wish.size(), "%d:%s", number, word);
        faulty_call = ReadFaultyCall(wish.data());
        calls = 0;
        return Trial::is_child;
    }
    int status = 0;
    waitpid(child, &status, 0);
    const bool has_fault = HasFault(output.data());
    FILE* const file = std::fopen(output.data(), "a");
    std::fprintf(file, "status %d\n", WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status));
    std::fclose(file);
    return has_fault ? Trial::had_fault : Trial::had_none;
}

/// Returns in the children alone.
void TryAll() {
    static bool is_done = false;
    const char* words = std::getenv("VORKA_FAULT_TRIALS");
    if (words == nullptr || is_done) return;
    is_done = true;
    std::array<char, 16> word{};
    int length = 0;
    for (; std::sscanf(words, " %15s%n", word.data(), &length) == 1; words += length) {
        Trial trial = Trial::had_fault;
        for (int number = 1; number < 200 && trial == Trial::had_fault; ++number) {
            trial = TryOnce(word.data(), number);
            if (trial == Trial::is_child) return;
        }
    }
    _exit(0);
}

/// Only what creates a file has a mode.
mode_t ModeOf(int flags, std::va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec* time) {
    static auto* const original = Original<int(clockid_t, timespec*)>("clock_gettime");
    const int result = original(clock, time);
    if (result == 0 && clock == CLOCK_REALTIME) time->tv_sec += Shift();
    return result;
}

int gettimeofday(timeval* time, void* zone) noexcept {
    static auto* const original = Original<int(timeval*, void*)>("gettimeofday");
    const int result = original(time, zone);
    if (result == 0) time->tv_sec += Shift();
    return result;
}

std::time_t time(std::time_t* stored) noexcept {
    static auto* const original = Original<std::time_t(std::time_t*)>("time");
    const std::time_t now = original(nullptr) + Shift();
    if (stored != nullptr) *stored = now;
    return now;
}

// The allocator can't be looked up by name, since the look-up itself asks it for memory.
void* __libc_malloc(std::size_t size);

void* malloc(std::size_t size) {
    if (IsRefused()) {
        errno = ENOMEM;
        return nullptr;
    }
    return __libc_malloc(size);
}

int open(const char* path, int flags, ...) {
    static auto* const original = Original<int(const char*, int, ...)>("open");
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Fails("open", IsMeant(path)) ? -1 : original(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
    static auto* const original = Original<int(int, const char*, int, ...)>("openat");
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return Fails("openat", IsMeant(folder)) ? -1 : original(folder, path, flags, mode);
}

int mkostemp(char* name, int flags) {
    static auto* const original = Original<int(char*, int)>("mkostemp");
    return Fails("mkostemp", IsMeant(name)) ? -1 : original(name, flags);
}

DIR* opendir(const char* path) {
    static auto* const original = Original<DIR*(const char*)>("opendir");
    return Fails("opendir", IsMeant(path)) ? nullptr : original(path);
}

ssize_t write(int descriptor, const void* bytes, std::size_t length) {
    static auto* const original = Original<ssize_t(int, const void*, std::size_t)>("write");
    const bool is_meant = IsMeant(descriptor);
    const Action action = Due("write", is_meant);
    if (action == Action::fail) {
        errno = faulty_call.error;
        return -1;
    }
    if (action == Action::cut_short) return original(descriptor, bytes, (length + 1) / 2);
    if (action == Action::torn) (void)original(descriptor, bytes, length / 2);
    if (action != Action::none) KillMe();
    const std::size_t room = RoomFor(length, is_meant);
    return room == 0 && length > 0 ? -1 : original(descriptor, bytes, room);
}

std::size_t fwrite(const void* bytes, std::size_t size, std::size_t count, FILE* stream) {
    static auto* const original = Original<std::size_t(const void*, std::size_t, std::size_t, FILE*)>("fwrite");
    const bool is_meant = IsMeant(fileno(stream));
    const Action action = Due("fwrite", is_meant);
    if (action == Action::fail) {
        errno = faulty_call.error;
        return 0;
    }
    if (action == Action::torn) {
        (void)original(bytes, 1, size * count / 2, stream);
        (void)fflush_unlocked(stream);
    }
    if (action == Action::torn || action == Action::kill) KillMe();
    const std::size_t length = size * count;
    const std::size_t room = RoomFor(length, is_meant);
    if (room == length) return original(bytes, size, count, stream);
    return original(bytes, 1, room, stream) / size;
}

int fflush(FILE* stream) {
    static auto* const original = Original<int(FILE*)>("fflush");
    return Fails("fflush", stream != nullptr && IsMeant(fileno(stream))) ? EOF : original(stream);
}

// What could not be closed is closed nevertheless.
int fclose(FILE* stream) {
    static auto* const original = Original<int(FILE*)>("fclose");
    const bool fails = Fails("fclose", IsMeant(fileno(stream)));
    const int error = errno;
    const int result = original(stream);
    if (fails) errno = error;
    return fails ? EOF : result;
}

int close(int descriptor) {
    static auto* const original = Original<int(int)>("close");
    const bool fails = Fails("close", IsMeant(descriptor));
    const int error = errno;
    const int result = original(descriptor);
    if (fails) errno = error;
    return fails ? -1 : result;
}

int fsync(int descriptor) {
    static auto* const original = Original<int(int)>("fsync");
    return Fails("fsync", IsMeant(descriptor)) ? -1 : original(descriptor);
}

int fchmod(int descriptor, mode_t mode) noexcept {
    static auto* const original = Original<int(int, mode_t)>("fchmod");
    return Fails("fchmod", IsMeant(descriptor)) ? -1 : original(descriptor, mode);
}

int fchown(int descriptor, uid_t owner, gid_t group) noexcept {
    static auto* const original = Original<int(int, uid_t, gid_t)>("fchown");
    return Fails("fchown", IsMeant(descriptor)) ? -1 : original(descriptor, owner, group);
}

int ftruncate(int descriptor, off_t length) noexcept {
    static auto* const original = Original<int(int, off_t)>("ftruncate");
    return Fails("ftruncate", IsMeant(descriptor)) ? -1 : original(descriptor, length);
}

int flock(int descriptor, int operation) noexcept {
    static auto* const original = Original<int(int, int)>("flock");
    return Fails("flock", IsMeant(descriptor)) ? -1 : original(descriptor, operation);
}

int fstat(int descriptor, struct stat* status) noexcept {
    static auto* const original = Original<int(int, struct stat*)>("fstat");
    return Fails("fstat", IsMeant(descriptor)) ? -1 : original(descriptor, status);
}

int stat(const char* path, struct stat* status) noexcept {
    static auto* const original = Original<int(const char*, struct stat*)>("stat");
    return Fails("stat", IsMeant(path)) ? -1 : original(path, status);
}

int access(const char* path, int kind) noexcept {
    static auto* const original = Original<int(const char*, int)>("access");
    return Fails("access", IsMeant(path)) ? -1 : original(path, kind);
}

int rename(const char* from, const char* to) noexcept {
    static auto* const original = Original<int(const char*, const char*)>("rename");
    return Fails("rename", IsMeant(to)) ? -1 : original(from, to);
}

int unlink(const char* path) noexcept {
    static auto* const original = Original<int(const char*)>("unlink");
    if (IsMeant(path)) TryAll();
    return Fails("unlink", IsMeant(path)) ? -1 : original(path);
}

int unlinkat(int folder, const char* path, int flags) noexcept {
    static auto* const original = Original<int(int, const char*, int)>("unlinkat");
    return Fails("unlinkat", IsMeant(folder)) ? -1 : original(folder, path, flags);
}

}  // extern "C"
