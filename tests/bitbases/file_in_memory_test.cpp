#include "bitbases/file_in_memory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/temporary_directory.h"

namespace {

using VorkaUtils::FileInMemory;

TEST(FileInMemory, GivesTheBytes) {
    const TemporaryDirectory directory;
    std::ofstream(directory.File("x")) << "hello";
    const FileInMemory file(directory.File("x"), 5);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(file.address()), file.size()), "hello");
}

TEST(FileInMemory, RefusesWhatHasAnotherSize) {
    const TemporaryDirectory directory;
    std::ofstream(directory.File("x")) << "hello";
    EXPECT_THROW(FileInMemory(directory.File("x"), 4), FileInMemory::IOException);
    EXPECT_THROW(FileInMemory(directory.File("x"), 6), FileInMemory::IOException);
    EXPECT_THROW(FileInMemory(directory.File("y"), 5), FileInMemory::IOException);
    std::filesystem::create_directory(directory.File("folder"));
    EXPECT_THROW(FileInMemory(directory.File("folder"), 4096), FileInMemory::IOException);
}

}  // namespace
