#include "tablebases/table_file.h"

#include <fcntl.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "frame/base/vocabulary.h"
#include "tablebases/table_messages.h"

namespace VorkaTablebases {

std::vector<std::filesystem::path> FilesIn(const std::string& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    for (std::filesystem::directory_iterator file(folder, error), end; !error && file != end; file.increment(error)) {
        files.push_back(file->path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// Without waiting: a pipe may have this name.
TableFile::TableFile(std::string path)
    : path_(std::move(path)), file_(open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}

std::optional<std::uint64_t> TableFile::size() const noexcept {
    const std::optional<std::uint64_t> bytes = file_.size();
    if (!bytes) TellNoLength(path_);
    return bytes;
}

bool TableFile::ReadHead(std::uint64_t offset, std::span<std::uint8_t> to) const noexcept {
    if (file_.Seek(offset) && file_.Read(to.data(), to.size())) return true;
    TellUnableToRead(path_, vocabulary::reason_read_error);
    return false;
}

bool TableFile::ReadBlock(std::uint64_t offset, std::span<std::uint8_t> to) const noexcept {
    if (!file_.Seek(offset)) {
        TellSeekFailed(path_);
        return false;
    }
    if (file_.Read(to.data(), to.size())) return true;
    TellReadFailed(path_);
    return false;
}

}  // namespace VorkaTablebases
