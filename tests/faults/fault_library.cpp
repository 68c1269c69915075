// A library that is loaded before all others (LD_PRELOAD) and lets the system fail under a program that knows nothing
// of it. Each fault is asked for by an environment variable and stands in a section of its own; without its variable a
// function does what it always does.
//
//     VORKA_FAULT_CLOCK=300:-3600    300 ms after the start somebody sets the clock back by an hour
//     VORKA_FAULT_MALLOC=17          the 17th request for memory is refused
//     VORKA_FAULT_MALLOC=17+         so are all after it
//
// The functions below take the places of those of the C library, so their names are not of this house.

#include <dlfcn.h>
#include <sys/time.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>
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

}  // extern "C"
