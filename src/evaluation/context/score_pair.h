#pragma once

#include <cstdint>

/// A positional and a reckless score in one word, both in centipawns: a sum of terms costs no more than one of plain
/// numbers.
///
/// The word is positional + 65536 * reckless, modulo 2^32, so that sums of words are the words of the sums. The low 16
/// bits are the positional half. What is left without it is 65536 * reckless: a negative positional half has borrowed
/// one from the high half, and half a unit added before the shift gives it back. For example {-3, 5} is 0x0004FFFD.
///
/// Both halves of a sum are exact as long as they fit into 16 bits, whatever happened on the way. Beyond that each
/// wraps by itself, but a positional half that has wrapped has carried one into the reckless half. A score is not a
/// tenth of that.
class SCORE_PAIR {
  public:
    constexpr SCORE_PAIR() noexcept = default;
    constexpr SCORE_PAIR(int positional, int reckless) noexcept
        : word_(static_cast<std::uint32_t>(positional) + (static_cast<std::uint32_t>(reckless) << 16)) {}

    [[nodiscard]] constexpr int positional() const noexcept { return static_cast<std::int16_t>(word_ & 0xFFFF); }
    [[nodiscard]] constexpr int reckless() const noexcept { return static_cast<std::int16_t>((word_ + 0x8000) >> 16); }

    constexpr SCORE_PAIR& operator+=(SCORE_PAIR other) noexcept {
        word_ += other.word_;
        return *this;
    }
    constexpr SCORE_PAIR& operator-=(SCORE_PAIR other) noexcept {
        word_ -= other.word_;
        return *this;
    }
    [[nodiscard]] friend constexpr SCORE_PAIR operator+(SCORE_PAIR a, SCORE_PAIR b) noexcept { return a += b; }
    [[nodiscard]] friend constexpr SCORE_PAIR operator-(SCORE_PAIR a, SCORE_PAIR b) noexcept { return a -= b; }
    [[nodiscard]] friend constexpr SCORE_PAIR operator-(SCORE_PAIR a) noexcept { return SCORE_PAIR{} -= a; }
    constexpr bool operator==(const SCORE_PAIR&) const noexcept = default;

  private:
    std::uint32_t word_ = 0;
};
static_assert(sizeof(SCORE_PAIR) == 4);
