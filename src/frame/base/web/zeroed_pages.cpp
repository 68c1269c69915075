// In WebAssembly memory only grows, and no page of it goes back to the system: a table is a block of the heap.

#include "frame/base/zeroed_pages.h"

#include <cstdlib>
#include <cstring>

ZeroedPages::ZeroedPages(std::size_t bytes) noexcept : data_(std::calloc(bytes, 1)) {
    if (data_ != nullptr) size_ = bytes;
}

ZeroedPages::~ZeroedPages() { std::free(data_); }

void ZeroedPages::Clear() noexcept {
    if (data_ != nullptr) std::memset(data_, 0, size_);
}

bool ZeroedPages::Touch(Deadline /*deadline*/) noexcept { return true; }
