#include "frame/base/zeroed_pages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace {

/// From this size on the system is asked for its large pages: a probe of a table then seldom has to look up where its
/// page lies, which costs more than the memory itself, above all in a virtual machine.
constexpr std::size_t large_page = std::size_t{2} << 20U;

void* Map(std::size_t bytes) noexcept {
    void* const pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return pages == MAP_FAILED ? nullptr : pages;
}

/// Large pages have to start at a multiple of their size: maps more, and gives back what is too much on both sides.
void* MapLargePages(std::size_t bytes) noexcept {
    if (bytes > std::numeric_limits<std::size_t>::max() - large_page) return nullptr;
    void* const pages = Map(bytes + large_page);
    if (pages == nullptr) return nullptr;
    auto* const first = static_cast<std::byte*>(pages);
    const std::size_t before = -reinterpret_cast<std::uintptr_t>(pages) % large_page;
    if (before != 0) munmap(first, before);
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t kept = (bytes + page - 1) / page * page;
    if (before + kept < bytes + large_page) munmap(first + before + kept, bytes + large_page - before - kept);
#ifdef MADV_HUGEPAGE
    static_cast<void>(madvise(first + before, kept, MADV_HUGEPAGE));
#endif
    return first + before;
}

/// Whether the system took the pages back; they read as zero then.
bool GiveBack([[maybe_unused]] void* data, [[maybe_unused]] std::size_t size) noexcept {
#ifdef __linux__
    return madvise(data, size, MADV_DONTNEED) == 0;
#else
    return false;
#endif
}

/// From the start of a page on.
void TouchPages(std::byte* pages, std::size_t size) noexcept {
#ifdef MADV_POPULATE_WRITE
    if (madvise(pages, size, MADV_POPULATE_WRITE) == 0) return;
#endif
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    for (std::size_t at = 0; at < size; at += page) {
        volatile std::byte& first = pages[at];
        first = first;
    }
}

}  // namespace

ZeroedPages::ZeroedPages(std::size_t bytes) noexcept : data_(bytes < large_page ? Map(bytes) : MapLargePages(bytes)) {
    if (data_ != nullptr) size_ = bytes;
}

ZeroedPages::~ZeroedPages() {
    if (data_ != nullptr) munmap(data_, size_);
}

/// A small table is cleared by hand: to get each of its pages back from the system takes longer.
void ZeroedPages::Clear() noexcept {
    if (data_ == nullptr || (size_ >= large_page && GiveBack(data_, size_))) return;
    std::memset(data_, 0, size_);
}

bool ZeroedPages::Touch(Deadline deadline) noexcept {
    // So much takes a tenth of a second at most, where the system is slowest.
    constexpr std::size_t step = std::size_t{32} << 20U;
    for (std::size_t at = 0; at < size_; at += step) {
        if (std::chrono::steady_clock::now() >= deadline) return false;
        TouchPages(static_cast<std::byte*>(data_) + at, std::min(step, size_ - at));
    }
    return true;
}
