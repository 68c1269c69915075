#include "tablebases/nalimov/canonical_code.h"

#include <algorithm>

namespace NalimovTablebases {

std::optional<CanonicalCode> CanonicalCode::FromLengths(std::span<const std::uint8_t> lengths) {
    std::array<std::uint32_t, longest_code + 2> count{};
    for (const std::uint8_t length : lengths) {
        if (length > longest_code) return std::nullopt;
        if (length > 0) ++count[length];
    }
    CanonicalCode code;
    std::uint64_t next = 0;  // the first code of a length
    for (unsigned length = 1; length <= longest_code; ++length) {
        next = (next + count[length - 1]) << 1;
        if (next + count[length] > std::uint64_t{1} << length) return std::nullopt;
        code.first_[length] = static_cast<std::uint32_t>(next);
        code.position_[length + 1] = code.position_[length] + count[length];
    }
    code.symbols_.resize(code.position_.back());
    std::array<std::uint32_t, longest_code + 2> place = code.position_;
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
        if (lengths[symbol] > 0) code.symbols_[place[lengths[symbol]]++] = static_cast<std::uint16_t>(symbol);
    }
    code.FillQuickTable();
    return code;
}

void CanonicalCode::FillQuickTable() {
    quick_.assign(std::size_t{1} << quick_bits, {});
    for (unsigned length = 1; length <= quick_bits; ++length) {
        for (std::uint32_t i = position_[length]; i < position_[length + 1]; ++i) {
            const std::uint32_t code = first_[length] + (i - position_[length]);
            const auto from = quick_.begin() + static_cast<std::ptrdiff_t>(code << (quick_bits - length));
            std::fill_n(from, std::ptrdiff_t{1} << (quick_bits - length),
                        Quick{symbols_[i], static_cast<std::uint8_t>(length)});
        }
    }
}

std::optional<unsigned> CanonicalCode::Read(BitReader& bits) const noexcept {
    if (symbols_.size() == 1) return symbols_.front();
    const Quick& quick = quick_[bits.Peek(quick_bits)];
    if (quick.length > 0) {
        bits.Skip(quick.length);
        return quick.symbol;
    }
    const std::uint32_t ahead = bits.Peek(longest_code);
    for (unsigned length = quick_bits + 1; length <= longest_code; ++length) {
        const std::uint32_t code = ahead >> (longest_code - length);
        const std::uint32_t number = code - first_[length];
        if (code >= first_[length] && number < position_[length + 1] - position_[length]) {
            bits.Skip(length);
            return symbols_[position_[length] + number];
        }
    }
    return std::nullopt;
}

namespace {

/// Lengths of one width; after each 0 stands how many more follow.
std::optional<std::vector<std::uint8_t>> ReadPlainLengths(BitReader& bits, std::size_t count) {
    std::vector<std::uint8_t> lengths;
    const unsigned width = bits.Take(5);
    while (lengths.size() < count) {
        const std::uint32_t length = bits.Take(width);
        if (length > longest_code) return std::nullopt;
        lengths.push_back(static_cast<std::uint8_t>(length));
        if (length == 0) lengths.resize(lengths.size() + bits.Take(4));
    }
    if (lengths.size() > count || bits.is_beyond_end()) return std::nullopt;
    return lengths;
}

/// A number whose smaller values are symbols of their own, and whose larger ones a symbol and bits. Nothing if it is
/// above `most`.
std::optional<std::size_t> ReadRepetition(BitReader& bits, const CanonicalCode& code, std::size_t most) {
    constexpr unsigned plain_values = 32;
    const std::optional<unsigned> symbol = code.Read(bits);
    if (!symbol) return std::nullopt;
    std::uint64_t number = *symbol;
    if (*symbol >= plain_values) {
        const unsigned width = *symbol - plain_values;
        number = plain_values - 1 + (std::uint64_t{1} << width) + bits.Take(width);
    }
    if (number > most) return std::nullopt;
    return static_cast<std::size_t>(number);
}

}  // namespace

std::optional<std::vector<std::uint8_t>> ReadCodeLengths(BitReader& bits, std::size_t count) {
    if (bits.Take(1) == 1) return std::vector<std::uint8_t>(count, 0);
    constexpr std::size_t symbols_of_lengths = 128;
    if (count <= symbols_of_lengths) return ReadPlainLengths(bits, count);

    const auto inner = ReadCodeLengths(bits, symbols_of_lengths);
    if (!inner) return std::nullopt;
    const std::span<const std::uint8_t> both(*inner);
    const auto code_of_lengths = CanonicalCode::FromLengths(both.first(symbols_of_lengths / 2));
    const auto code_of_repetitions = CanonicalCode::FromLengths(both.last(symbols_of_lengths / 2));
    if (!code_of_lengths || !code_of_repetitions) return std::nullopt;
    std::vector<std::uint8_t> lengths;
    while (lengths.size() < count) {
        const std::optional<unsigned> symbol = code_of_lengths->Read(bits);
        if (!symbol) return std::nullopt;
        const auto length = static_cast<std::uint8_t>(*symbol & 31);
        std::size_t times = 1;
        if (*symbol > 31) {
            const auto more = ReadRepetition(bits, *code_of_repetitions, count);
            if (!more) return std::nullopt;
            times = 2 + *more;
        }
        lengths.insert(lengths.end(), times, length);
    }
    if (lengths.size() > count || bits.is_beyond_end()) return std::nullopt;
    return lengths;
}

}  // namespace NalimovTablebases
