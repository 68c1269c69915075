#include "frame/base/wall_clock.h"

#include <unistd.h>

#include <ctime>

Timestamp Timestamp::Now() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return {.valid = true, .seconds = now.tv_sec, .microseconds = now.tv_nsec / 1000};
}

std::int64_t ElapsedMilliseconds(const Timestamp& from, const Timestamp& to) {
    std::int64_t seconds = to.seconds - from.seconds;
    std::int64_t microseconds = to.microseconds - from.microseconds;
    if (microseconds < 0) {
        microseconds += 1000000;
        --seconds;
    }
    return seconds * 1000 + microseconds / 1000;
}

void SleepMilliseconds(int milliseconds) {
    if (milliseconds > 0) usleep(static_cast<useconds_t>(milliseconds) * 1000);
}

std::string LocalTimeText() {
    const std::time_t now = std::time(nullptr);
    const char* text = std::ctime(&now);
    return text != nullptr ? text : "\n";
}
