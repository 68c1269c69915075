#pragma once

#include <cstdint>

/// Small random numbers for the order of moves that nothing else tells apart. A generator of the search's own with a
/// fixed seed, restarted with each search, so that a search can be repeated node for node. A linear congruential
/// generator (multiplier and increment of Numerical Recipes); the high bits are the good ones.
class OrderingNoise {
  public:
    void Restart() noexcept { state_ = seed; }
    /// 0 .. n - 1; n must be 1 or more and below 65536.
    [[nodiscard]] std::uint32_t Below(std::uint32_t n) noexcept {
        state_ = state_ * 1664525U + 1013904223U;
        return ((state_ >> 16) * n) >> 16;
    }

  private:
    static constexpr std::uint32_t seed = 0x2F6E2B1;
    std::uint32_t state_ = seed;
};
