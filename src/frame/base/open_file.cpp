#include "frame/base/open_file.h"

#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

bool OpenFile::is_regular() const noexcept {
    struct stat status {};
    return is_open() && fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode);
}

bool OpenFile::has_size(std::uint64_t size) const noexcept {
    struct stat status {};
    return is_open() && fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode) &&
           std::cmp_equal(status.st_size, size);
}

std::optional<std::uint64_t> OpenFile::size() const noexcept {
    struct stat status {};
    if (!is_open() || fstat(descriptor_, &status) != 0 || status.st_size < 0) return std::nullopt;
    return static_cast<std::uint64_t>(status.st_size);
}

bool OpenFile::has_name() const noexcept {
    struct stat status {};
    return fstat(descriptor_, &status) == 0 && status.st_nlink > 0;
}

bool OpenFile::TakeLock() const noexcept { return flock(descriptor_, LOCK_EX | LOCK_NB) == 0; }

bool OpenFile::SetOwner(uid_t owner, gid_t group) const noexcept {
    struct stat status {};
    if (fstat(descriptor_, &status) == 0 && status.st_uid == owner && status.st_gid == group) return true;
    return fchown(descriptor_, owner, group) == 0;
}

bool OpenFile::SetMode(mode_t mode) const noexcept { return fchmod(descriptor_, mode) == 0; }

bool OpenFile::Seek(std::uint64_t offset) const noexcept {
    return std::in_range<off_t>(offset) && lseek(descriptor_, static_cast<off_t>(offset), SEEK_SET) >= 0;
}

bool OpenFile::Read(std::uint8_t* bytes, std::size_t size) const noexcept {
    for (std::size_t done = 0; done < size;) {
        const ssize_t step = read(descriptor_, bytes + done, size - done);
        if (step < 0 && errno == EINTR) continue;
        if (step <= 0) return false;
        done += static_cast<std::size_t>(step);
    }
    return true;
}

bool OpenFile::Write(std::string_view text) const noexcept {
    while (!text.empty()) {
        const ssize_t written = write(descriptor_, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool OpenFile::Sync() const noexcept { return fsync(descriptor_) == 0; }

bool OpenFile::Close() noexcept {
    if (descriptor_ < 0) return true;
    const int closed = close(descriptor_);
    descriptor_ = -1;
    return closed == 0;
}
