#pragma once

#include <chrono>
#include <cstddef>
#include <utility>

/// When somebody has waited long enough.
using Deadline = std::chrono::steady_clock::time_point;

/// Memory for large tables: all zero at first, and all zero again at once when it is cleared, since the pages go back
/// to the system and come back empty when they are next touched. A table costs neither time nor memory before it is
/// used, however large it is.
class ZeroedPages {
  public:
    ZeroedPages() noexcept = default;
    /// As many bytes, all zero, starting at a page; null data() if there is no memory for them.
    explicit ZeroedPages(std::size_t bytes) noexcept;
    ZeroedPages(ZeroedPages&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}
    ZeroedPages& operator=(ZeroedPages&& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        return *this;
    }
    ~ZeroedPages();

    [[nodiscard]] void* data() const noexcept { return data_; }
    [[nodiscard]] std::size_t size() const noexcept { return size_; }
    void Clear() noexcept;
    /// Takes the memory from the system now, whose first use of a page may cost a tenth of a millisecond, and much more
    /// in a virtual machine. What stands in the pages stays. Ends early after the deadline: false then.
    bool Touch(Deadline deadline) noexcept;

  private:
    void* data_ = nullptr;
    std::size_t size_ = 0;  ///< bytes
};
