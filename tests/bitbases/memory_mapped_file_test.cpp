#include "bitbases/memory_mapped_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/temporary_directory.h"

namespace {

using VorkaUtils::ReadOnlyMemoryMappedFile;

TEST(ReadOnlyMemoryMappedFile, GivesTheBytes) {
    const TemporaryDirectory directory;
    std::ofstream(directory.File("x")) << "hello";
    const ReadOnlyMemoryMappedFile file(directory.File("x"), 5);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(file.address()), file.size()), "hello");
}

TEST(ReadOnlyMemoryMappedFile, RefusesWhatHasAnotherSize) {
    const TemporaryDirectory directory;
    std::ofstream(directory.File("x")) << "hello";
    EXPECT_THROW(ReadOnlyMemoryMappedFile(directory.File("x"), 4), ReadOnlyMemoryMappedFile::IOException);
    EXPECT_THROW(ReadOnlyMemoryMappedFile(directory.File("x"), 6), ReadOnlyMemoryMappedFile::IOException);
    EXPECT_THROW(ReadOnlyMemoryMappedFile(directory.File("y"), 5), ReadOnlyMemoryMappedFile::IOException);
    std::filesystem::create_directory(directory.File("folder"));
    EXPECT_THROW(ReadOnlyMemoryMappedFile(directory.File("folder"), 4096), ReadOnlyMemoryMappedFile::IOException);
}

}  // namespace
