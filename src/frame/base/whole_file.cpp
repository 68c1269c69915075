#include "frame/base/whole_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

#include "frame/base/open_file.h"

namespace {

namespace fs = std::filesystem;

fs::path FolderOf(const fs::path& file) { return file.has_parent_path() ? file.parent_path() : "."; }

constexpr std::string_view temporary_mark = ".vorka-";
constexpr std::size_t random_letters = 6;  ///< that mkostemp adds
constexpr std::size_t longest_name = 255;

/// The name that all temporary files of a file begin with. What is too long to be a name is cut.
std::string TemporaryPrefix(const fs::path& target) {
    const std::string name = target.filename().string();
    return name.substr(0, longest_name - temporary_mark.size() - random_letters).append(temporary_mark);
}

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

/// Removes what killed runs have left beside the file. Who writes one of them now holds its lock. (The standard
/// library's iterator over a folder ends the program where there is no memory.)
void RemoveLeftovers(const fs::path& target) {
    const std::string prefix = TemporaryPrefix(target);
    const std::unique_ptr<DIR, FolderCloser> folder(opendir(FolderOf(target).c_str()));
    if (!folder) return;
    while (const dirent* const entry = readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (name.size() != prefix.size() + random_letters || !name.starts_with(prefix)) continue;
        const int in_folder = dirfd(folder.get());
        const OpenFile file(openat(in_folder, entry->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (file.is_regular() && file.TakeLock()) unlinkat(in_folder, entry->d_name, 0);
    }
}

/// A file beside the one that it is to replace; removed at the end of the scope unless it took that one's place.
class TemporaryFile {
  public:
    explicit TemporaryFile(const fs::path& target)
        : name_((FolderOf(target) / TemporaryPrefix(target)).string() + std::string(random_letters, 'X')),
          file_(mkostemp(name_.data(), O_CLOEXEC)) {}
    ~TemporaryFile() {
        if (file_.is_open() && !is_placed_) unlink(name_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// Whether it is open, and nobody can take it for a leftover.
    [[nodiscard]] bool is_ready() const { return file_.is_open() && file_.TakeLock() && file_.has_name(); }
    [[nodiscard]] bool SetOwner(const struct stat& old) const { return file_.SetOwner(old.st_uid, old.st_gid); }
    [[nodiscard]] bool Fill(std::string_view text, mode_t mode) const {
        return file_.Write(text) && file_.SetMode(mode) && file_.Sync();
    }
    [[nodiscard]] bool Place(const fs::path& target) {
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

/// Where a chain of symbolic links leads, whether there is something or not; nothing if it leads in a circle.
std::optional<fs::path> TargetOfLinks(fs::path path) {
    constexpr int most_links = 40;
    std::error_code failure;
    if (fs::exists(path, failure)) {
        // Some links are none to be read: /dev/stdout leads to something that need not have a name.
        const fs::path target = fs::canonical(path, failure);
        return failure ? path : target;
    }
    for (int i = 0; i < most_links; ++i) {
        std::error_code error;
        if (!fs::is_symlink(fs::symlink_status(path, error))) return path;
        const fs::path next = fs::read_symlink(path, error);
        if (error) return std::nullopt;
        path = path.parent_path() / next;  // which is `next` alone if that is absolute
    }
    return std::nullopt;
}

/// Makes the renaming outlive a loss of power, as far as the file system can; the file is whole in any case.
void SyncFolder(const fs::path& target) {
    const OpenFile folder(open(FolderOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.is_open()) (void)folder.Sync();
}

}  // namespace

bool OpenForReading(const std::string& path, std::ifstream& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return false;
    file.open(path, std::ios::binary);
    return file.is_open();
}

FileOutcome ReplaceFile(const std::string& path, std::string_view text) {
    const std::optional<fs::path> target = TargetOfLinks(path);
    if (!target || !target->has_filename()) return FileOutcome::not_opened;
    struct stat old {};
    const bool exists = stat(target->c_str(), &old) == 0;
    if (!exists && errno != ENOENT) return FileOutcome::not_opened;
    if (exists && S_ISDIR(old.st_mode)) return FileOutcome::not_opened;
    if (exists && !S_ISREG(old.st_mode)) return WriteDirectly(*target, text);
    // A write-protected file stays, though its folder would let another file take its place.
    if (exists && access(target->c_str(), W_OK) != 0) return FileOutcome::not_opened;

    RemoveLeftovers(*target);
    std::optional<TemporaryFile> temporary;
    // Between its creation and its lock somebody else who clears up may take the file for a leftover.
    for (int tries = 0; tries < 10 && !(temporary && temporary->is_ready()); ++tries) temporary.emplace(*target);
    if (!temporary->is_ready()) return FileOutcome::not_opened;
    if (exists && !temporary->SetOwner(old)) return FileOutcome::not_opened;
    // Rights that are lent to whoever runs a file were lent for its old text.
    const mode_t mode = exists ? old.st_mode & 0777 : DefaultMode();
    if (!temporary->Fill(text, mode) || !temporary->Place(*target)) return FileOutcome::not_written;
    SyncFolder(*target);
    return FileOutcome::written;
}
