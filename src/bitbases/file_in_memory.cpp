#include "bitbases/file_in_memory.h"

#include <fcntl.h>

#include <new>

#include "frame/base/open_file.h"

namespace VorkaUtils {

FileInMemory::FileInMemory(const std::string& path, std::uint32_t expected_size) : size_(expected_size) {
    // Without waiting for whoever writes a pipe.
    const OpenFile file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.is_open()) throw IOException(Failure::not_opened);
    if (!file.is_regular()) throw IOException(Failure::no_regular_file);
    if (!file.has_size(expected_size)) throw IOException(Failure::other_size);
    bytes_.reset(new (std::nothrow) std::uint8_t[expected_size]);
    if (!bytes_ || !file.Read(bytes_.get(), expected_size)) throw IOException(Failure::not_read);
}

}  // namespace VorkaUtils
