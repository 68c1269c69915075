#include "bitbases/memory_mapped_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

#include "support/temporary_directory.h"

namespace {

using VorkaUtils::MemoryMappedFile;
using VorkaUtils::ReadOnlyMemoryMappedFile;

std::string Contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST(MemoryMappedFile, IsCreatedFilledWithZeroesAndWritten) {
    const TemporaryDirectory directory;
    const std::string path = directory.File("x");
    {
        MemoryMappedFile file(path, 5000);
        EXPECT_EQ(file.size(), 5000U);
        file.address()[0] = 'a';
        file.address()[4999] = 'z';
        EXPECT_TRUE(file.Flush());
    }
    const std::string contents = Contents(path);
    ASSERT_EQ(contents.size(), 5000U);
    EXPECT_EQ(contents.front(), 'a');
    EXPECT_EQ(contents.back(), 'z');
    EXPECT_EQ(contents.find_first_not_of('\0', 1), 4999U);
}

TEST(MemoryMappedFile, AnOldFileIsEmptiedFirst) {
    const TemporaryDirectory directory;
    std::ofstream(directory.File("x")) << std::string(9000, 'o');
    { const MemoryMappedFile file(directory.File("x"), 100); }
    EXPECT_EQ(Contents(directory.File("x")), std::string(100, '\0'));
}

TEST(MemoryMappedFile, WhatCantBeCreatedIsAnException) {
    const TemporaryDirectory directory;
    EXPECT_THROW(MemoryMappedFile(directory.File("no/x"), 10), MemoryMappedFile::IOException);
    std::filesystem::create_directory(directory.File("folder"));
    EXPECT_THROW(MemoryMappedFile(directory.File("folder"), 10), MemoryMappedFile::IOException);
}

TEST(MemoryMappedFileDeathTest, SizeIsAboveZero) {
    const TemporaryDirectory directory;
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            const MemoryMappedFile file(directory.File("x"), 0);
        },
        testing::KilledBySignal(SIGABRT), "size > 0\nfile: memory_mapped_file, line: [0-9]+");
}

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
