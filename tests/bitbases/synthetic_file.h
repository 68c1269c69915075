#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "bitbases/bitbases.h"

/// A bitbase file of so many bytes, all zero but for the cells that were set.
class SyntheticFile {
  public:
    explicit SyntheticFile(std::uint32_t size) : bytes_(size) {}
    explicit SyntheticFile(std::vector<char> bytes) : bytes_(std::move(bytes)) {}
    SyntheticFile& Set(const VorkaBitbases::Cell& cell, int value) {
        bytes_.at(cell.offset) = static_cast<char>(bytes_.at(cell.offset) | value << cell.shift);
        return *this;
    }
    void Write(const std::string& path) const {
        std::ofstream(path, std::ios::binary).write(bytes_.data(), static_cast<std::streamsize>(bytes_.size()));
    }

  private:
    std::vector<char> bytes_;
};
