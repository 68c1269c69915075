#include "bitbases/memory_mapped_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <new>

#include "frame/base/checked_assert.h"
#include "frame/base/vocabulary.h"

namespace VorkaUtils {

namespace {

/// An open file that is closed at the end of its scope; a mapping outlives it.
class OpenFile {
  public:
    OpenFile(const std::string& path, int flags) : descriptor_(open(path.c_str(), flags | O_CLOEXEC, 0644)) {}
    ~OpenFile() {
        if (descriptor_ >= 0) close(descriptor_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    [[nodiscard]] bool is_open() const noexcept { return descriptor_ >= 0; }
    [[nodiscard]] bool has_size(std::uint32_t size) const noexcept {
        struct stat status {};
        return fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode) &&
               status.st_size == static_cast<off_t>(size);
    }
    /// Reserves the blocks, so that a full disk shows here and not as a signal when the mapping is written.
    [[nodiscard]] bool resize(std::uint32_t size) const noexcept {
        if (ftruncate(descriptor_, 0) != 0) return false;
        constexpr char zero = 0;
        return lseek(descriptor_, static_cast<off_t>(size) - 1, SEEK_SET) >= 0 && write(descriptor_, &zero, 1) == 1 &&
               posix_fallocate(descriptor_, 0, static_cast<off_t>(size)) == 0;
    }
    /// False if the file ends before, or can't be read.
    [[nodiscard]] bool read_all(std::uint8_t* bytes, std::uint32_t size) const noexcept {
        for (std::uint32_t done = 0; done < size;) {
            const ssize_t step = read(descriptor_, bytes + done, size - done);
            if (step < 0 && errno == EINTR) continue;
            if (step <= 0) return false;
            done += static_cast<std::uint32_t>(step);
        }
        return true;
    }
    /// Null if it can't be mapped.
    [[nodiscard]] void* map(std::uint32_t size, int protection) const noexcept {
        void* const address = mmap(nullptr, size, protection, MAP_SHARED, descriptor_, 0);
        return address == MAP_FAILED ? nullptr : address;
    }

  private:
    int descriptor_;
};

}  // namespace

ReadOnlyMemoryMappedFile::ReadOnlyMemoryMappedFile(const std::string& path, std::uint32_t expected_size)
    : size_(expected_size) {
    // Without waiting for whoever writes a pipe.
    const OpenFile file(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (!file.is_open() || !file.has_size(expected_size)) throw IOException();
    bytes_.reset(new (std::nothrow) std::uint8_t[expected_size]);
    if (!bytes_ || !file.read_all(bytes_.get(), expected_size)) throw IOException();
}

MemoryMappedFile::MemoryMappedFile(const std::string& path, std::uint32_t size) : size_(size) {
    CHECKED_ASSERT(size > 0, vocabulary::mapped_file_is_empty);
    const OpenFile file(path, O_RDWR | O_CREAT);
    if (!file.is_open() || !file.resize(size)) throw IOException();
    address_ = static_cast<std::uint8_t*>(file.map(size, PROT_READ | PROT_WRITE));
    if (address_ == nullptr) throw IOException();
}

MemoryMappedFile::~MemoryMappedFile() { munmap(address_, size_); }

bool MemoryMappedFile::Flush() noexcept { return msync(address_, size_, MS_SYNC) == 0; }

}  // namespace VorkaUtils
