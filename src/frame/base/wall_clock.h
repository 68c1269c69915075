#pragma once

#include <cstdint>
#include <string>

/// A reading of the wall clock.
struct Timestamp {
    bool valid = false;  ///< set once the clock was read
    std::int64_t seconds = 0;
    std::int64_t microseconds = 0;

    [[nodiscard]] static Timestamp Now();
};

/// Milliseconds from `from` to `to`, truncated; negative if the clock went back.
[[nodiscard]] std::int64_t ElapsedMilliseconds(const Timestamp& from, const Timestamp& to);
void SleepMilliseconds(int milliseconds);
/// The local time in the form of ctime, its newline included.
[[nodiscard]] std::string LocalTimeText();
