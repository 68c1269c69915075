#include "tablebases/table_messages.h"

#include <cstdio>
#include <initializer_list>

#include "frame/base/standard_output.h"
#include "frame/base/vocabulary.h"

namespace VorkaTablebases {

namespace {

void Tell(std::initializer_list<std::string_view> words) {
    std::FILE* const out = StandardOutput();
    std::fputs("*** ", out);
    for (const std::string_view word : words) std::fwrite(word.data(), 1, word.size(), out);
    std::fputc('\n', out);
    std::fflush(out);
}

}  // namespace

void TellUnableToRegister(const std::string& file) { Tell({vocabulary::unable_to_register, file}); }

void TellUnableToRead(const std::string& file, std::string_view reason) {
    Tell({vocabulary::unable_to_read, file, " - ", reason});
}

void TellSeekFailed(const std::string& file) { Tell({vocabulary::seek_in, file, vocabulary::seek_or_read_failed}); }

void TellReadFailed(const std::string& file) { Tell({vocabulary::read_from, file, vocabulary::seek_or_read_failed}); }

void TellUnsupportedBlockSize(const std::string& file, std::uint32_t block_size) {
    Tell({file, vocabulary::unsupported_block_size, std::to_string(block_size)});
}

void TellNoLength(const std::string& file) { Tell({vocabulary::cannot_find_length, file}); }

void TellNoMemory(std::uint64_t bytes) {
    Tell({vocabulary::cannot_allocate, std::to_string(bytes), vocabulary::bytes_of_memory});
}

void TellCorrupted(const std::string& file, std::uint64_t block, std::uint64_t offset, std::uint64_t bytes) {
    Tell({file, vocabulary::corrupted, std::to_string(block), " ", std::to_string(offset), " ", std::to_string(bytes)});
}

}  // namespace VorkaTablebases
