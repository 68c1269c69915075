#include "selfplay/pgn_file.h"

#include <fcntl.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <stdexcept>

std::size_t LengthKept(std::string_view kept, std::string_view known) {
    // Long enough to tell one game from another, mostly; so few places have to be compared to the end.
    const std::string_view head = known.substr(0, 200);
    if (head.empty()) return 0;
    for (std::size_t at = kept.find(head); at != std::string_view::npos; at = kept.find(head, at + 1)) {
        const std::string_view end = kept.substr(at);
        if (known.starts_with(end) || end.starts_with(known)) return std::min(end.size(), known.size());
    }
    for (std::size_t length = std::min(head.size(), kept.size()); length > 0; --length) {
        if (kept.ends_with(head.substr(0, length))) return length;
    }
    return 0;
}

PgnFile::PgnFile(const std::string& path, std::string_view known)
    // Without waiting for whoever reads a pipe.
    : path_(path), file_(open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666)) {
    if (!file_.is_open()) throw std::runtime_error("can't write " + path);
    if (!file_.is_regular()) throw std::runtime_error("can't write " + path + ": no regular file");
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("can't read " + path);
    const std::string kept{std::istreambuf_iterator<char>(file), {}};
    Add(known.substr(LengthKept(kept, known)));
}

void PgnFile::Add(std::string_view games) const {
    if (!file_.Write(games)) throw std::runtime_error("can't write " + path_);
}
