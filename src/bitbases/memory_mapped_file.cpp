#include "bitbases/memory_mapped_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <new>

#include "frame/base/checked_assert.h"
#include "frame/base/open_file.h"
#include "frame/base/vocabulary.h"

namespace VorkaUtils {

namespace {

/// Reserves the blocks, so that a full disk shows here and not as a signal when the mapping is written.
bool Resize(const OpenFile& file, std::uint32_t size) noexcept {
    const int descriptor = file.descriptor();
    if (ftruncate(descriptor, 0) != 0) return false;
    constexpr char zero = 0;
    return lseek(descriptor, static_cast<off_t>(size) - 1, SEEK_SET) >= 0 && write(descriptor, &zero, 1) == 1 &&
           posix_fallocate(descriptor, 0, static_cast<off_t>(size)) == 0;
}

/// Outlives the file. Null if it can't be mapped.
void* Map(const OpenFile& file, std::uint32_t size, int protection) noexcept {
    void* const address = mmap(nullptr, size, protection, MAP_SHARED, file.descriptor(), 0);
    return address == MAP_FAILED ? nullptr : address;
}

}  // namespace

ReadOnlyMemoryMappedFile::ReadOnlyMemoryMappedFile(const std::string& path, std::uint32_t expected_size)
    : size_(expected_size) {
    // Without waiting for whoever writes a pipe.
    const OpenFile file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.is_open()) throw IOException(Failure::not_opened);
    if (!file.is_regular()) throw IOException(Failure::no_regular_file);
    if (!file.has_size(expected_size)) throw IOException(Failure::other_size);
    bytes_.reset(new (std::nothrow) std::uint8_t[expected_size]);
    if (!bytes_ || !file.Read(bytes_.get(), expected_size)) throw IOException(Failure::not_read);
}

MemoryMappedFile::MemoryMappedFile(const std::string& path, std::uint32_t size) : size_(size) {
    CHECKED_ASSERT(size > 0, vocabulary::mapped_file_is_empty);
    const OpenFile file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644));
    if (!file.is_open() || !Resize(file, size)) throw IOException();
    address_ = static_cast<std::uint8_t*>(Map(file, size, PROT_READ | PROT_WRITE));
    if (address_ == nullptr) throw IOException();
}

MemoryMappedFile::~MemoryMappedFile() { munmap(address_, size_); }

bool MemoryMappedFile::Flush() noexcept { return msync(address_, size_, MS_SYNC) == 0; }

}  // namespace VorkaUtils
