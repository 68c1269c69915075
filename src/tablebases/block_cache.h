#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "bitbases/tablebases.h"

namespace VorkaTablebases {

/// What reads a table block by block. Every block but the last unpacks to the same number of bytes.
class BlockReader {
  public:
    BlockReader() = default;
    virtual ~BlockReader() = default;
    BlockReader(const BlockReader&) = delete;
    BlockReader& operator=(const BlockReader&) = delete;

    /// Reads and unpacks one block to the head of `to`, which has room for a whole one; a last block that is shorter
    /// leaves the rest as it was. `corrupted` if a checksum does not fit or the block can't be unpacked, `unreadable`
    /// if the file can't be read. Whoever fails has told why.
    [[nodiscard]] virtual SourceFailure ReadBlock(std::uint32_t block, std::span<std::uint8_t> to) noexcept = 0;
};

/// The blocks of tables that were asked for last, unpacked, for all tables of a source together. The blocks live in
/// slots of one size. When all slots are taken, the block that was not asked for the longest time gives way.
///
/// All that the cache needs for its blocks, their order and the way to find them stands in one piece of memory that is
/// never larger than the size asked for. Without a cache (size 0, as at first) each probe reads its block again, into
/// one block of working memory.
class BlockCache {
  public:
    /// `block_bytes` is the size of the largest block of any table.
    explicit BlockCache(std::size_t block_bytes);
    ~BlockCache();
    BlockCache(const BlockCache&) = delete;
    BlockCache& operator=(const BlockCache&) = delete;

    /// Gives up all blocks and takes memory of at most so many bytes, 0 for no cache. False if not a single block fits
    /// or there is not so much memory, which is told; then there is no cache.
    [[nodiscard]] bool Resize(std::uint64_t bytes) noexcept;

    /// Whether there was less memory than the last Resize asked for.
    [[nodiscard]] bool lacks_memory() const noexcept { return lacks_memory_; }

    /// Sets `value` to a byte of a block, which is read if it is not here. A block that can't be read leaves no trace.
    /// `reader` stands for its table, and must live until the cache is resized or gone.
    [[nodiscard]] SourceFailure Find(BlockReader& reader, std::uint32_t block, std::size_t offset,
                                     std::uint8_t& value) noexcept;

    /// Blocks that fit; 0 without a cache.
    [[nodiscard]] std::uint32_t capacity() const noexcept { return capacity_; }
    /// Bytes in use for the cache.
    [[nodiscard]] std::uint64_t bytes() const noexcept;
    /// How many blocks were read so far.
    [[nodiscard]] std::uint64_t blocks_read() const noexcept { return blocks_read_; }

  private:
    struct Slot;

    [[nodiscard]] std::span<std::uint8_t> BlockOf(std::uint32_t slot) const noexcept;
    [[nodiscard]] std::uint32_t BucketOf(const BlockReader* reader, std::uint32_t block) const noexcept;
    [[nodiscard]] std::uint32_t Lookup(const BlockReader* reader, std::uint32_t block) const noexcept;
    void MoveToFront(std::uint32_t slot) noexcept;
    void TakeOut(std::uint32_t slot) noexcept;

    const std::size_t block_bytes_;
    const std::unique_ptr<std::uint8_t[]> working_block_;

    struct FreeMemory {
        void operator()(void* memory) const noexcept;
    };
    std::unique_ptr<void, FreeMemory> memory_;
    std::uint32_t capacity_ = 0;
    bool lacks_memory_ = false;
    Slot* slots_ = nullptr;             ///< these three point into `memory_`
    std::uint32_t* buckets_ = nullptr;  ///< heads of chains of slots, as many as there are slots
    std::uint8_t* blocks_ = nullptr;
    std::uint32_t newest_ = 0;  ///< the ends of the list by age
    std::uint32_t oldest_ = 0;
    std::uint64_t blocks_read_ = 0;
};

}  // namespace VorkaTablebases
