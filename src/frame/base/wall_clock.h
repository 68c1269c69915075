#pragma once

#include <cstdint>
#include <string>

/// A reading of the clock that durations are measured by. Nobody can set it: it counts from some moment of the past,
/// and says nothing about the date.
struct Timestamp {
    bool valid = false;  ///< set once the clock was read
    std::int64_t seconds = 0;
    std::int64_t microseconds = 0;

    [[nodiscard]] static Timestamp Now();
};

/// Milliseconds from `from` to `to`, truncated; negative if `to` is the earlier one.
[[nodiscard]] std::int64_t ElapsedMilliseconds(const Timestamp& from, const Timestamp& to);
void SleepMilliseconds(int milliseconds);
/// The date and the local time, by the calendar, in the form of ctime, its newline included.
[[nodiscard]] std::string LocalTimeText();
