#pragma once

#include <cstdint>

/// Numbers by chance that are the same for a seed on every machine: Steele, Lea and Flood's splitmix64.
class RandomNumbers {
  public:
    explicit RandomNumbers(std::uint64_t seed) : state_(seed) {}

    std::uint64_t Next() {
        std::uint64_t z = state_ += 0x9E3779B97F4A7C15;
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EB;
        return z ^ (z >> 31U);
    }
    /// Below `bound`, which is not 0; a bound far below 2^64 makes all results alike.
    std::uint64_t Below(std::uint64_t bound) { return Next() % bound; }

  private:
    std::uint64_t state_;
};
