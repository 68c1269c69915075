#include "chess/random_keys.h"

namespace {

constexpr long modulus = 1L << 30;
constexpr int stream_separation = 70;
constexpr int warm_up_rounds = 10;

/// (x - y) mod 2^30.
constexpr long Difference(long x, long y) { return (x - y) & (modulus - 1); }

}  // namespace

void RandomKeys::RanArray(std::span<long> numbers) {
    const std::size_t count = numbers.size();
    for (std::size_t j = 0; j < long_lag; ++j) numbers[j] = state_[j];
    for (std::size_t j = long_lag; j < count; ++j)
        numbers[j] = Difference(numbers[j - long_lag], numbers[j - short_lag]);
    for (std::size_t i = 0; i < long_lag; ++i) {
        const std::size_t j = count + i;
        const long lagged = i < short_lag ? numbers[j - short_lag] : state_[i - short_lag];
        state_[i] = Difference(numbers[j - long_lag], lagged);
    }
}

// The state is a polynomial that stands for the seed: it is squared once per round, and multiplied by z for each bit
// of the seed that is set, so that different seeds give streams that are far apart.
RandomKeys::RandomKeys(long seed) {
    std::array<long, 2 * long_lag - 1> x{};
    long bits = (seed + 2) & (modulus - 2);
    for (std::size_t j = 0; j < long_lag; ++j) {
        x[j] = bits;
        bits <<= 1;
        if (bits >= modulus) bits -= modulus - 2;
    }
    ++x[1];

    bits = seed & (modulus - 1);
    for (int rounds = stream_separation - 1; rounds != 0;) {
        for (std::size_t j = long_lag - 1; j > 0; --j) {
            x[2 * j] = x[j];
            x[2 * j - 1] = 0;
        }
        for (std::size_t j = 2 * long_lag - 2; j >= long_lag; --j) {
            const std::size_t middle = j - (long_lag - short_lag);
            x[middle] = Difference(x[middle], x[j]);
            x[j - long_lag] = Difference(x[j - long_lag], x[j]);
        }
        if ((bits & 1) != 0) {
            for (std::size_t j = long_lag; j > 0; --j) x[j] = x[j - 1];
            x[0] = x[long_lag];
            x[short_lag] = Difference(x[short_lag], x[long_lag]);
        }
        if (bits != 0)
            bits >>= 1;
        else
            --rounds;
    }

    for (std::size_t j = 0; j < long_lag; ++j) state_[(j + long_lag - short_lag) % long_lag] = x[j];
    for (int round = 0; round < warm_up_rounds; ++round) RanArray(x);
}

long RandomKeys::Next() {
    if (position_ == long_lag) {
        RanArray(buffer_);
        position_ = 0;
    }
    return buffer_[position_++];
}

std::uint64_t RandomKeys::Next64() {
    std::uint64_t key = 0;
    for (int shift = 0; shift < 64; shift += 16) key |= (static_cast<std::uint64_t>(Next()) & 0xFFFF) << shift;
    return key;
}
