#include "frame/base/zeroed_pages.h"

#include <sys/mman.h>

#include <cstdint>
#include <cstring>
#include <utility>

namespace {

/// From this size on the system is asked for its large pages: a probe of a large table then seldom has to look up where
/// its page lies. They are zeroed as a whole when they are touched, which would make small tables dearer.
constexpr std::size_t large_page = std::size_t{2} << 20U;
constexpr std::size_t first_size_with_large_pages = 16 * large_page;

void AskForLargePages([[maybe_unused]] void* data, [[maybe_unused]] std::size_t size) noexcept {
#ifdef MADV_HUGEPAGE
    if (size >= first_size_with_large_pages) static_cast<void>(madvise(data, size, MADV_HUGEPAGE));
#endif
}

/// Whether the system took the pages back; they read as zero then.
bool GiveBack([[maybe_unused]] void* data, [[maybe_unused]] std::size_t size) noexcept {
#ifdef __linux__
    return madvise(data, size, MADV_DONTNEED) == 0;
#else
    return false;
#endif
}

}  // namespace

ZeroedPages::ZeroedPages(std::size_t bytes) noexcept {
    void* const pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) return;
    data_ = pages;
    size_ = bytes;
    AskForLargePages(data_, size_);
}

ZeroedPages::ZeroedPages(ZeroedPages&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}

ZeroedPages& ZeroedPages::operator=(ZeroedPages&& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
    return *this;
}

ZeroedPages::~ZeroedPages() {
    if (data_ != nullptr) munmap(data_, size_);
}

void ZeroedPages::Clear() noexcept {
    if (data_ != nullptr && !GiveBack(data_, size_)) std::memset(data_, 0, size_);
}
