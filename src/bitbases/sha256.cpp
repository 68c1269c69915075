#include "bitbases/sha256.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <string_view>

// The text is cut into blocks of 64 bytes. Each is stretched to 64 words of 32 bits, and each word stirs the eight
// words of the state once; what the block has made of the state is added to what it was. The last block is filled up
// with a single bit, zeroes, and the length of the text in bits.

namespace {

using State = std::array<std::uint32_t, 8>;
constexpr std::size_t block_size = 64;

/// The fractional parts of the square roots of the first 8 primes.
constexpr State first_state = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                               0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

/// The fractional parts of the cube roots of the first 64 primes.
// clang-format off
constexpr std::array<std::uint32_t, 64> round_constants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2,
};
// clang-format on

std::uint32_t ReadWord(const std::uint8_t* bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 | bytes[3];
}

std::array<std::uint32_t, 64> Stretch(const std::uint8_t* block) {
    std::array<std::uint32_t, 64> words;
    for (std::size_t i = 0; i < 16; ++i) words[i] = ReadWord(block + 4 * i);
    for (std::size_t i = 16; i < 64; ++i) {
        const std::uint32_t a = words[i - 15];
        const std::uint32_t b = words[i - 2];
        words[i] = words[i - 16] + (std::rotr(a, 7) ^ std::rotr(a, 18) ^ a >> 3) + words[i - 7] +
                   (std::rotr(b, 17) ^ std::rotr(b, 19) ^ b >> 10);
    }
    return words;
}

void Stir(State& state, const std::uint8_t* block) {
    const std::array<std::uint32_t, 64> words = Stretch(block);
    auto [a, b, c, d, e, f, g, h] = state;
    for (std::size_t i = 0; i < 64; ++i) {
        const std::uint32_t first = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) + ((e & f) ^ (~e & g)) +
                                    round_constants[i] + words[i];
        const std::uint32_t second =
            (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + first;
        d = c;
        c = b;
        b = a;
        a = first + second;
    }
    const State stirred = {a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < state.size(); ++i) state[i] += stirred[i];
}

}  // namespace

std::string Sha256(std::span<const std::uint8_t> bytes) {
    State state = first_state;
    const std::size_t whole = bytes.size() / block_size * block_size;
    for (std::size_t at = 0; at < whole; at += block_size) Stir(state, bytes.data() + at);

    std::array<std::uint8_t, 2 * block_size> end{};
    const std::span<const std::uint8_t> rest = bytes.subspan(whole);
    std::copy(rest.begin(), rest.end(), end.begin());
    end[rest.size()] = 0x80;
    constexpr std::size_t length_size = 8;
    const std::size_t end_size = rest.size() + 1 + length_size <= block_size ? block_size : 2 * block_size;
    std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
    for (std::size_t i = 1; i <= length_size; ++i, bits >>= 8) end[end_size - i] = static_cast<std::uint8_t>(bits);
    for (std::size_t at = 0; at < end_size; at += block_size) Stir(state, end.data() + at);

    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const std::uint32_t word : state) {
        for (int shift = 28; shift >= 0; shift -= 4) text += digits[word >> shift & 15U];
    }
    return text;
}
