#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// Knuth's lagged-Fibonacci generator ran_array (The Art of Computer Programming, volume 2, section 3.6, in its form
/// of 2002) with its published parameters, as the source of the Zobrist keys: the keys are the same in every run.
class RandomKeys {
  public:
    explicit RandomKeys(long seed = 310952);
    /// 64 bits from the low halves of four numbers, the first lowest.
    [[nodiscard]] std::uint64_t Next64();
    /// The next number of the stream, 0 <= n < 2^30.
    [[nodiscard]] long Next();
    /// The next numbers.size() numbers of the recurrence, at least 100. Next() hands out such arrays number by number.
    void RanArray(std::span<long> numbers);

  private:
    static constexpr std::size_t long_lag = 100, short_lag = 37, buffer_size = 1009;
    std::array<long, long_lag> state_{};
    std::array<long, buffer_size> buffer_{};
    std::size_t position_ = long_lag;  ///< a buffer counts as used up after its first 100 numbers
};
