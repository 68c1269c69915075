#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// What the code that reads tables has to say, on standard output, each as one line that begins with "*** ".
namespace VorkaTablebases {

void TellUnableToRegister(const std::string& file);
/// `reason` is one of the three words of the vocabulary.
void TellUnableToRead(const std::string& file, std::string_view reason);
void TellSeekFailed(const std::string& file);
void TellReadFailed(const std::string& file);
void TellUnsupportedBlockSize(const std::string& file, std::uint32_t block_size);
void TellNoLength(const std::string& file);
void TellNoMemory(std::uint64_t bytes);
/// Three numbers that help to find the place: the block, where it begins in the file, and its packed bytes.
void TellCorrupted(const std::string& file, std::uint64_t block, std::uint64_t offset, std::uint64_t bytes);

}  // namespace VorkaTablebases
