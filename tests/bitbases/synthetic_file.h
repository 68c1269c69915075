#pragma once

#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "bitbases/bitbases.h"
#include "bitbases/checksum_file.h"
#include "support/temporary_directory.h"

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

    void WriteWithChecksum(const std::string& path) const {
        Write(path);
        const std::vector<std::uint8_t> bytes(bytes_.begin(), bytes_.end());
        if (!VorkaBitbases::WriteChecksum(path, bytes)) throw std::runtime_error("no checksum beside " + path);
    }

  private:
    std::vector<char> bytes_;
};

/// Makes up bitbase files. All is drawn in them but for one position.
class BitbaseFiles {
  public:
    void LoadTwoPawns(VorkaBitbases::Bitbases& bitbases, const VorkaBitbases::Cell& cell = {},
                      int value = VorkaBitbases::stored_draw) const {
        SyntheticFile(VorkaBitbases::two_pawns_size).Set(cell, value).WriteWithChecksum(directory_.File("two"));
        bitbases.LoadTwoPawns(directory_.File("two"));
    }
    void LoadRammedPawn(VorkaBitbases::Bitbases& bitbases, const VorkaBitbases::Cell& cell = {},
                        int value = VorkaBitbases::stored_draw) const {
        SyntheticFile(VorkaBitbases::rammed_pawn_size).Set(cell, value).WriteWithChecksum(directory_.File("ram"));
        bitbases.LoadRammedPawns(directory_.File("ram"));
    }

  private:
    TemporaryDirectory directory_;
};
