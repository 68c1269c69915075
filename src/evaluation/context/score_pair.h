#pragma once

#include <cstdint>

/// A positional and a reckless score in one word, both in centipawns. The halves add up separately, each wrapping at 16
/// bits: a sum of terms costs no more than one of plain numbers.
class SCORE_PAIR {
  public:
    constexpr SCORE_PAIR() noexcept = default;
    constexpr SCORE_PAIR(int positional, int reckless) noexcept
        : word_(static_cast<std::uint16_t>(positional) |
                static_cast<std::uint32_t>(static_cast<std::uint16_t>(reckless)) << 16) {}

    [[nodiscard]] constexpr int positional() const noexcept { return static_cast<std::int16_t>(word_ & 0xFFFF); }
    [[nodiscard]] constexpr int reckless() const noexcept { return static_cast<std::int16_t>(word_ >> 16); }

    constexpr SCORE_PAIR& operator+=(SCORE_PAIR other) noexcept {
        // Without their top bits the halves can't carry into one another; the top bits are added by exclusive or.
        word_ = ((word_ & ~top_bits) + (other.word_ & ~top_bits)) ^ ((word_ ^ other.word_) & top_bits);
        return *this;
    }
    constexpr SCORE_PAIR& operator-=(SCORE_PAIR other) noexcept {
        word_ = ((word_ | top_bits) - (other.word_ & ~top_bits)) ^ ((word_ ^ ~other.word_) & top_bits);
        return *this;
    }
    [[nodiscard]] friend constexpr SCORE_PAIR operator+(SCORE_PAIR a, SCORE_PAIR b) noexcept { return a += b; }
    [[nodiscard]] friend constexpr SCORE_PAIR operator-(SCORE_PAIR a, SCORE_PAIR b) noexcept { return a -= b; }
    [[nodiscard]] friend constexpr SCORE_PAIR operator-(SCORE_PAIR a) noexcept { return SCORE_PAIR{} -= a; }
    constexpr bool operator==(const SCORE_PAIR&) const noexcept = default;

  private:
    static constexpr std::uint32_t top_bits = 0x80008000;
    std::uint32_t word_ = 0;  ///< positional in the low half, reckless in the high one
};
static_assert(sizeof(SCORE_PAIR) == 4);
