// The bit primitives in the form that reads the table of 16-bit chunks (bits.h says which form is in force).

#include "chess/bitboard_tables.h"
#include "chess/bits.h"

namespace {

constexpr unsigned full_chunk = 0xFFFF;

constexpr unsigned Chunk(Bitboard b, int number) { return static_cast<unsigned>(b >> (16 * number)) & full_chunk; }

int ChunkPopulation(unsigned chunk) { return chunk == full_chunk ? 16 : bitboard_tables.bit_info[chunk] >> 4; }

int ChunkHighestBit(unsigned chunk) { return bitboard_tables.bit_info[chunk] & 15; }

}  // namespace

int table_bits::PopCount(Bitboard b) noexcept {
    return ChunkPopulation(Chunk(b, 0)) + ChunkPopulation(Chunk(b, 1)) + ChunkPopulation(Chunk(b, 2)) +
           ChunkPopulation(Chunk(b, 3));
}

Square table_bits::FindHighestBit(Bitboard b) noexcept {
    if (const unsigned chunk = Chunk(b, 3)) return 48 + ChunkHighestBit(chunk);
    if (const unsigned chunk = Chunk(b, 2)) return 32 + ChunkHighestBit(chunk);
    if (const unsigned chunk = Chunk(b, 1)) return 16 + ChunkHighestBit(chunk);
    return ChunkHighestBit(Chunk(b, 0));
}

Square table_bits::FindLowestBit(Bitboard b) noexcept { return FindHighestBit(b & (~b + 1)); }
