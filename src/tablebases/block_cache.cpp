#include "tablebases/block_cache.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

#include "tablebases/table_messages.h"

// Each slot is in two lists: one of all slots by age, doubly linked, and the chain of its bucket, where a search for a
// block begins. A slot that holds no block stands at the old end of the first list and in no chain.

namespace VorkaTablebases {

namespace {

constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

}  // namespace

struct BlockCache::Slot {
    const BlockReader* reader;  ///< null for an empty slot
    std::uint32_t block;
    std::uint32_t newer;
    std::uint32_t older;
    std::uint32_t next_in_bucket;
};

void BlockCache::FreeMemory::operator()(void* memory) const noexcept { std::free(memory); }

BlockCache::BlockCache(std::size_t block_bytes)
    : block_bytes_(block_bytes), working_block_(std::make_unique<std::uint8_t[]>(block_bytes)) {}

BlockCache::~BlockCache() = default;

bool BlockCache::Resize(std::uint64_t bytes) noexcept {
    memory_.reset();
    capacity_ = 0;
    lacks_memory_ = false;
    if (bytes == 0) return true;
    const std::uint64_t cost = block_bytes_ + sizeof(Slot) + sizeof(std::uint32_t);
    const auto capacity = static_cast<std::uint32_t>(std::min<std::uint64_t>(bytes / cost, none - 1));
    if (capacity == 0) return false;
    // Left as it comes: pages of slots that are never used cost nothing.
    memory_.reset(std::malloc(static_cast<std::size_t>(capacity * cost)));
    if (!memory_) {
        lacks_memory_ = true;
        TellNoMemory(capacity * cost);
        return false;
    }
    capacity_ = capacity;
    slots_ = static_cast<Slot*>(memory_.get());
    buckets_ = reinterpret_cast<std::uint32_t*>(slots_ + capacity);
    blocks_ = reinterpret_cast<std::uint8_t*>(buckets_ + capacity);
    for (std::uint32_t i = 0; i < capacity; ++i) {
        new (slots_ + i) Slot{.reader = nullptr,
                              .block = 0,
                              .newer = i == 0 ? none : i - 1,
                              .older = i + 1 == capacity ? none : i + 1,
                              .next_in_bucket = none};
        new (buckets_ + i) std::uint32_t{none};
    }
    newest_ = 0;
    oldest_ = capacity - 1;
    return true;
}

std::uint64_t BlockCache::bytes() const noexcept {
    return capacity_ * std::uint64_t{block_bytes_ + sizeof(Slot) + sizeof(std::uint32_t)};
}

SourceFailure BlockCache::Find(BlockReader& reader, std::uint32_t block, std::size_t offset,
                               std::uint8_t& value) noexcept {
    if (capacity_ == 0) {
        ++blocks_read_;
        const SourceFailure failure = reader.ReadBlock(block, {working_block_.get(), block_bytes_});
        if (failure == SourceFailure::none) value = working_block_[offset];
        return failure;
    }
    std::uint32_t slot = Lookup(&reader, block);
    if (slot == none) {
        slot = oldest_;
        TakeOut(slot);
        ++blocks_read_;
        const SourceFailure failure = reader.ReadBlock(block, BlockOf(slot));
        if (failure != SourceFailure::none) return failure;
        slots_[slot].reader = &reader;
        slots_[slot].block = block;
        std::uint32_t& head = buckets_[BucketOf(&reader, block)];
        slots_[slot].next_in_bucket = head;
        head = slot;
    }
    MoveToFront(slot);
    value = BlockOf(slot)[offset];
    return SourceFailure::none;
}

std::span<std::uint8_t> BlockCache::BlockOf(std::uint32_t slot) const noexcept {
    return {blocks_ + slot * block_bytes_, block_bytes_};
}

std::uint32_t BlockCache::BucketOf(const BlockReader* reader, std::uint32_t block) const noexcept {
    constexpr std::uint64_t odd = 0x9E3779B97F4A7C15;
    const std::uint64_t mixed = (reinterpret_cast<std::uintptr_t>(reader) + block * odd) * odd;
    return static_cast<std::uint32_t>((mixed >> 32) % capacity_);
}

std::uint32_t BlockCache::Lookup(const BlockReader* reader, std::uint32_t block) const noexcept {
    std::uint32_t slot = buckets_[BucketOf(reader, block)];
    while (slot != none && (slots_[slot].reader != reader || slots_[slot].block != block)) {
        slot = slots_[slot].next_in_bucket;
    }
    return slot;
}

/// Forgets the block of a slot, which stays where it is by age.
void BlockCache::TakeOut(std::uint32_t slot) noexcept {
    if (slots_[slot].reader == nullptr) return;
    std::uint32_t* link = &buckets_[BucketOf(slots_[slot].reader, slots_[slot].block)];
    while (*link != slot) link = &slots_[*link].next_in_bucket;
    *link = slots_[slot].next_in_bucket;
    slots_[slot].reader = nullptr;
}

void BlockCache::MoveToFront(std::uint32_t slot) noexcept {
    if (slot == newest_) return;
    Slot& moved = slots_[slot];
    slots_[moved.newer].older = moved.older;
    if (slot == oldest_) {
        oldest_ = moved.newer;
    } else {
        slots_[moved.older].newer = moved.newer;
    }
    moved.newer = none;
    moved.older = newest_;
    slots_[newest_].newer = slot;
    newest_ = slot;
}

}  // namespace VorkaTablebases
