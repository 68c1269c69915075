#pragma once

#include <array>
#include <cstdint>

/// What some number of draws makes of a state.
struct OrderingNoiseDraws {
    std::uint32_t multiplier, increment;
    [[nodiscard]] constexpr std::uint32_t After(std::uint32_t state) const { return state * multiplier + increment; }
};

/// Small random numbers for the order of moves that nothing else tells apart. A generator of the search's own with a
/// fixed seed, restarted with each search, so that a search can be repeated node for node. A linear congruential
/// generator (multiplier and increment of Numerical Recipes); the high bits are the good ones.
class OrderingNoise {
  public:
    void Restart() noexcept { state_ = seed; }
    /// 0 .. n - 1; n must be 1 or more and below 65536.
    [[nodiscard]] std::uint32_t Below(std::uint32_t n) noexcept {
        state_ = one_draw.After(state_);
        return ((state_ >> 16) * n) >> 16;
    }
    /// As if `count` numbers had been drawn, at most 255.
    void PassOver(std::uint32_t count) noexcept {
        for (std::size_t bit = 0; count != 0; ++bit, count >>= 1) {
            if ((count & 1U) != 0) state_ = draws_by_bit[bit].After(state_);
        }
    }

  private:
    using Draws = OrderingNoiseDraws;
    static constexpr Draws one_draw{1664525U, 1013904223U};
    /// 1, 2, 4 .. 128 of them.
    static constexpr std::array<Draws, 8> draws_by_bit = [] {
        std::array<Draws, 8> draws{one_draw};
        for (std::size_t bit = 1; bit < draws.size(); ++bit) {
            const Draws half = draws[bit - 1];
            draws[bit] = {half.multiplier * half.multiplier, half.After(half.increment)};
        }
        return draws;
    }();

    static constexpr std::uint32_t seed = 0x2F6E2B1;
    std::uint32_t state_ = seed;
};
