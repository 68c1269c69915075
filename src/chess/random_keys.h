#pragma once

#include <array>
#include <cstdint>

/// Knuth's lagged-Fibonacci generator ran_array (The Art of Computer Programming, volume 2, section 3.6) with its
/// published parameters, as the source of the Zobrist keys: the keys are the same in every run.
class RandomKeys {
  public:
    explicit RandomKeys(long seed = 310952);
    /// 64 bits from the low halves of four numbers, the first lowest.
    [[nodiscard]] std::uint64_t Next64();
    /// The next number of the stream, 0 <= n < 2^30.
    [[nodiscard]] long Next();

  private:
    static constexpr int long_lag = 100, short_lag = 37, quality = 1009;
    void Refill(long* numbers, int count);
    std::array<long, long_lag> state_{};
    std::array<long, quality> buffer_{};
    int position_ = long_lag;  // a buffer is used up after its first 100 numbers
};
