#include "frame/base/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace {

/// A descriptor that is closed at the end of the scope, if it was not before.
class OpenFile {
  public:
    explicit OpenFile(int descriptor) : descriptor_(descriptor) {}
    ~OpenFile() { (void)Close(); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    [[nodiscard]] bool is_open() const { return descriptor_ >= 0; }
    [[nodiscard]] bool Write(std::string_view text) const {
        while (!text.empty()) {
            const ssize_t written = write(descriptor_, text.data(), text.size());
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) return false;
            text.remove_prefix(static_cast<std::size_t>(written));
        }
        return true;
    }
    [[nodiscard]] bool Sync() const { return fsync(descriptor_) == 0; }
    [[nodiscard]] bool SetMode(mode_t mode) const { return fchmod(descriptor_, mode) == 0; }
    /// Some devices report a failed write only here.
    [[nodiscard]] bool Close() {
        if (descriptor_ < 0) return true;
        const int closed = close(descriptor_);
        descriptor_ = -1;
        return closed == 0;
    }

  private:
    int descriptor_;
};

/// A file beside the one that it is to replace; removed at the end of the scope unless it took that one's place.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& target) : name_(target + ".XXXXXX"), file_(mkstemp(name_.data())) {}
    ~TemporaryFile() {
        if (file_.is_open() || !is_placed_) unlink(name_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] bool is_open() const { return file_.is_open(); }
    [[nodiscard]] bool Fill(std::string_view text, mode_t mode) {
        return file_.Write(text) && file_.SetMode(mode) && file_.Sync() && file_.Close();
    }
    [[nodiscard]] bool Place(const std::string& target) {
        is_placed_ = rename(name_.c_str(), target.c_str()) == 0;
        return is_placed_;
    }

  private:
    std::string name_;
    OpenFile file_;
    bool is_placed_ = false;
};

FileOutcome WriteDirectly(const std::string& path, std::string_view text) {
    // Without waiting for somebody to read a pipe.
    OpenFile file(open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.is_open()) return FileOutcome::not_opened;
    return file.Write(text) && file.Close() ? FileOutcome::written : FileOutcome::not_written;
}

/// The permissions of a new file.
mode_t DefaultMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

/// Where a chain of symbolic links leads; the path itself if it is no link, or leads nowhere.
std::string TargetOfLinks(const std::string& path) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(path, error);
    return error ? path : target.string();
}

}  // namespace

bool OpenForReading(const std::string& path, std::ifstream& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return false;
    file.open(path, std::ios::binary);
    return file.is_open();
}

FileOutcome ReplaceFile(const std::string& path, std::string_view text) {
    if (path.empty()) return FileOutcome::not_opened;
    const std::string target = TargetOfLinks(path);
    struct stat old {};
    const bool exists = stat(target.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode)) return FileOutcome::not_opened;
    if (exists && !S_ISREG(old.st_mode)) return WriteDirectly(target, text);
    // A write-protected file stays, though its folder would let another file take its place.
    if (exists && access(target.c_str(), W_OK) != 0) return FileOutcome::not_opened;

    TemporaryFile temporary(target);
    if (!temporary.is_open()) return FileOutcome::not_opened;
    const mode_t mode = exists ? old.st_mode & 07777 : DefaultMode();
    return temporary.Fill(text, mode) && temporary.Place(target) ? FileOutcome::written : FileOutcome::not_written;
}
