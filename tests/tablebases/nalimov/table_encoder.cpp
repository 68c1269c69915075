#include "tablebases/nalimov/table_encoder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <fstream>
#include <queue>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace table_encoder {

namespace {

using namespace NalimovTablebases;

constexpr std::size_t block = 8192;
constexpr unsigned field_bits = 13;
constexpr std::string_view banner = "Compressed by DATACOMP v 1.0 (c) 1991--1998 Andrew Kadatch\r\n";

/// Bit by bit, as it is described.
std::uint32_t Checksum(std::span<const std::uint8_t> bytes) {
    std::uint32_t rest = 0;
    for (const std::uint8_t byte : bytes) {
        rest ^= byte;
        for (int bit = 0; bit < 8; ++bit) {
            const bool out = (rest & 1U) != 0;
            rest >>= 1;
            if (!out) rest ^= 0xEDB88320;
        }
    }
    return rest;
}

/// A literal, or a copy.
struct Token {
    unsigned symbol;
    unsigned extra_bits = 0;
    std::uint64_t extra = 0;
};

constexpr std::array<std::size_t, 24> distances{1,  2,  3,  4,  5,  6,  7,   8,   16,  30,  46,   47,
                                                48, 59, 60, 61, 62, 63, 122, 124, 183, 244, 3660, 3782};

Token CopyOf(std::size_t distance_number, std::size_t length) {
    const auto symbol = [&](std::size_t length_class) {
        return static_cast<unsigned>(256 + distance_number * 32 + length_class);
    };
    if (length <= 15) return {symbol(length - 1)};
    const auto width = static_cast<unsigned>(std::bit_width(length - 14) - 1);
    return {symbol(14 + width), width, length - 14 - (std::size_t{1} << width)};
}

/// Takes the longest copy at each place.
std::vector<Token> TokensOf(std::span<const std::uint8_t> plain, std::size_t longest_copy) {
    std::vector<Token> tokens;
    for (std::size_t at = 0; at < plain.size();) {
        std::size_t longest = 0;
        std::size_t number = 0;
        for (std::size_t i = 0; i < distances.size() && distances[i] <= at; ++i) {
            std::size_t length = 0;
            while (length < longest_copy && at + length < plain.size() &&
                   plain[at + length] == plain[at + length - distances[i]]) {
                ++length;
            }
            if (length > longest) {
                longest = length;
                number = i;
            }
        }
        constexpr std::size_t worth_it = 2;
        if (longest < worth_it) {
            tokens.push_back({plain[at]});
            ++at;
        } else {
            tokens.push_back(CopyOf(number, longest));
            at += longest;
        }
    }
    return tokens;
}

std::vector<std::uint8_t> BytesOf(const std::vector<Token>& tokens, const Bytes& lengths,
                                  const std::vector<std::uint32_t>& codes) {
    const bool is_alone = std::count_if(lengths.begin(), lengths.end(), [](auto length) { return length > 0; }) == 1;
    BitWriter bits;
    for (const Token& token : tokens) {
        if (!is_alone) bits.Put(codes[token.symbol], lengths[token.symbol]);
        bits.Put(token.extra, token.extra_bits);
    }
    bits.Align();
    return bits.bytes();
}

void Append(Bytes& bytes, const Bytes& more) { bytes.insert(bytes.end(), more.begin(), more.end()); }

void AppendNumber(Bytes& bytes, std::uint32_t number) {
    bytes.resize(bytes.size() + 4);
    SetNumber(bytes, bytes.size() - 4, number);
}

/// Lengths with one width, and counts of zeros.
void PutPlainLengths(BitWriter& bits, const Bytes& lengths) {
    const auto width =
        static_cast<unsigned>(std::bit_width(unsigned{*std::max_element(lengths.begin(), lengths.end())}));
    bits.Put(width, 5);
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        bits.Put(lengths[i], width);
        if (lengths[i] != 0) continue;
        std::size_t more = 0;
        while (more < 15 && i + 1 < lengths.size() && lengths[i + 1] == 0) {
            ++more;
            ++i;
        }
        bits.Put(more, 4);
    }
}

/// A length, or several that are the same.
struct Run {
    unsigned symbol;
    bool is_repeated = false;
    Token repetition{0};
};

Run RunOf(std::uint8_t length, std::size_t times) {
    if (times < 2) return {length};
    const std::size_t more = times - 2;
    if (more <= 31) return {32U + length, true, {static_cast<unsigned>(more)}};
    const auto width = static_cast<unsigned>(std::bit_width(more - 31) - 1);
    return {32U + length, true, {32 + width, width, more - 31 - (std::size_t{1} << width)}};
}

}  // namespace

void BitWriter::Put(std::uint64_t bits, unsigned count) {
    while (count > 0) {
        if (free_ == 0) {
            bytes_.push_back(0);
            free_ = 8;
        }
        --count;
        --free_;
        bytes_.back() = static_cast<std::uint8_t>(bytes_.back() | (bits >> count & 1U) << free_);
    }
}

void BitWriter::Align() { free_ = 0; }

Bytes CodeLengths(const std::vector<std::uint64_t>& counts) {
    using Node = std::pair<std::uint64_t, std::vector<std::size_t>>;  // its count, and the symbols below it
    std::priority_queue<Node, std::vector<Node>, std::greater<>> nodes;
    for (std::size_t symbol = 0; symbol < counts.size(); ++symbol) {
        if (counts[symbol] > 0) nodes.push({counts[symbol], {symbol}});
    }
    Bytes lengths(counts.size(), 0);
    if (nodes.size() == 1) lengths[nodes.top().second.front()] = 1;
    while (nodes.size() > 1) {
        auto [count, symbols] = nodes.top();
        nodes.pop();
        const Node other = nodes.top();
        nodes.pop();
        symbols.insert(symbols.end(), other.second.begin(), other.second.end());
        for (const std::size_t symbol : symbols) ++lengths[symbol];
        nodes.push({count + other.first, std::move(symbols)});
    }
    if (std::any_of(lengths.begin(), lengths.end(), [](auto length) { return length > 31; })) {
        throw std::logic_error("a code is too long");
    }
    return lengths;
}

std::vector<std::uint32_t> CanonicalCodes(const Bytes& lengths) {
    std::vector<std::uint32_t> codes(lengths.size());
    std::uint32_t next = 0;
    for (unsigned length = 1; length <= 31; ++length) {
        next <<= 1;
        for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
            if (lengths[symbol] == length) codes[symbol] = next++;
        }
    }
    return codes;
}

void PutCodeLengths(BitWriter& bits, const Bytes& lengths) {
    const bool are_none = std::all_of(lengths.begin(), lengths.end(), [](auto length) { return length == 0; });
    bits.Put(are_none ? 1 : 0, 1);
    if (are_none) return;
    if (lengths.size() <= 128) return PutPlainLengths(bits, lengths);

    std::vector<Run> runs;
    for (std::size_t i = 0; i < lengths.size();) {
        std::size_t end = i;
        while (end < lengths.size() && lengths[end] == lengths[i]) ++end;
        runs.push_back(RunOf(lengths[i], end - i));
        i = end;
    }
    std::vector<std::uint64_t> counts_of_lengths(64);
    std::vector<std::uint64_t> counts_of_repetitions(64);
    for (const Run& run : runs) {
        ++counts_of_lengths[run.symbol];
        if (run.is_repeated) ++counts_of_repetitions[run.repetition.symbol];
    }
    const Bytes of_lengths = CodeLengths(counts_of_lengths);
    const Bytes of_repetitions = CodeLengths(counts_of_repetitions);
    Bytes both = of_lengths;
    Append(both, of_repetitions);
    PutCodeLengths(bits, both);
    const auto put = [&](unsigned symbol, const Bytes& code) {
        if (std::count(code.begin(), code.end(), 0) + 1 < static_cast<std::ptrdiff_t>(code.size())) {
            bits.Put(CanonicalCodes(code)[symbol], code[symbol]);
        }
    };
    for (const Run& run : runs) {
        put(run.symbol, of_lengths);
        if (!run.is_repeated) continue;
        put(run.repetition.symbol, of_repetitions);
        bits.Put(run.repetition.extra, run.repetition.extra_bits);
    }
}

Bytes ValuesOf(const Material& material, Side mover, const ValueOf& value_of) {
    const NalimovIndex index(material, mover);
    Bytes values(static_cast<std::size_t>(index.size()), static_cast<std::uint8_t>(127));
    Placement position;
    std::vector<Square*> men{&position.kings[mover], &position.kings[Other(mover)]};
    for (const Side side : {first_side, second_side}) {
        for (std::size_t i = 0; i < MenOf(material, side).size(); ++i) men.push_back(&position.men[side][i]);
    }
    const auto place = [&](auto& self, std::size_t man) -> void {
        if (man == men.size()) {
            const auto number = index.Of(position);
            if (!number) return;
            const auto value = value_of(position);
            if (value) values[static_cast<std::size_t>(*number)] = static_cast<std::uint8_t>(*value);
            return;
        }
        for (Square square = a1; square <= h8; ++square) {
            // Turned boards would be the same again.
            if (man == 0 && FileOf(square) > 3) continue;
            if (man == 0 && !material.has_pawns() && RankOf(square) > FileOf(square)) continue;
            *men[man] = square;
            self(self, man + 1);
        }
    };
    place(place, 0);
    return values;
}

Bytes Pack(std::span<const std::uint8_t> plain, const Packing& packing) {
    const std::size_t blocks = (plain.size() + block - 1) / block;
    std::vector<std::span<const std::uint8_t>> plain_blocks;
    std::vector<std::vector<Token>> tokens;
    std::vector<std::uint64_t> counts(1024);
    for (std::size_t i = 0; i < blocks; ++i) {
        plain_blocks.push_back(plain.subspan(i * block, std::min(block, plain.size() - i * block)));
        tokens.push_back(TokensOf(plain_blocks.back(), packing.longest_copy));
        if (packing.stores_all) continue;
        for (const Token& token : tokens.back()) ++counts[token.symbol];
    }
    const Bytes lengths = CodeLengths(counts);
    const std::vector<std::uint32_t> codes = CanonicalCodes(lengths);
    std::vector<Bytes> packed_blocks;
    for (std::size_t i = 0; i < blocks; ++i) {
        Bytes packed = packing.stores_all ? Bytes() : BytesOf(tokens[i], lengths, codes);
        if (packed.empty() || packed.size() >= plain_blocks[i].size()) {
            packed.assign(plain_blocks[i].begin(), plain_blocks[i].end());
        }
        packed_blocks.push_back(std::move(packed));
    }

    Bytes file(banner.begin(), banner.end());
    file.resize(80);
    file[70] = field_bits;
    file[71] = 24;
    SetNumber(file, 72, static_cast<std::uint32_t>(blocks));
    SetNumber(file, 76, 1024U << 12 | 1U << 8 | 15U << 4 | 5U);
    BitWriter fields;
    for (std::size_t i = 0; i < blocks; ++i) {
        AppendNumber(file, Checksum(plain_blocks[i]));
        AppendNumber(file, Checksum(packed_blocks[i]));
        fields.Put(packed_blocks[i].size() % block, field_bits);
    }
    fields.Put(plain_blocks.back().size() % block, field_bits);
    for (const std::size_t distance : distances) fields.Put(distance, field_bits);
    fields.Align();
    PutCodeLengths(fields, lengths);
    fields.Align();
    Append(file, fields.bytes());
    file.resize(file.size() + 4);
    SetNumber(file, 64, static_cast<std::uint32_t>(file.size()));
    RenewHeaderChecksum(file);
    for (const Bytes& packed : packed_blocks) Append(file, packed);
    return file;
}

void SetNumber(Bytes& bytes, std::size_t at, std::uint32_t number) {
    for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<std::uint8_t>(number >> (24 - 8 * i));
}

void RenewHeaderChecksum(Bytes& file) {
    std::size_t header = 0;
    for (std::size_t i = 64; i < 68; ++i) header = header << 8 | file[i];
    if (header < 84 || header > file.size()) return;
    SetNumber(file, header - 4, Checksum(std::span(file).first(header - 4)));
}

void WriteFile(const std::string& path, std::span<const std::uint8_t> bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw std::runtime_error("can't write " + path);
}

}  // namespace table_encoder
