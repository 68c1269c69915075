#include "frame/base/whole_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/temporary_directory.h"

namespace {

namespace fs = std::filesystem;

void Write(const std::string& path, const std::string& text) { std::ofstream(path) << text; }

std::vector<std::string> NamesIn(const TemporaryDirectory& directory) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory.path())) names.push_back(entry.path().filename());
    return names;
}

// --- Reading ---

TEST(WholeFile, OpensRegularFilesOnly) {
    const TemporaryDirectory directory;
    Write(directory.File("a"), "text");
    std::ifstream file;
    ASSERT_TRUE(OpenForReading(directory.File("a"), file));
    std::string text;
    file >> text;
    EXPECT_EQ(text, "text");
    ASSERT_EQ(mkfifo(directory.File("pipe").c_str(), 0600), 0);
    for (const std::string& path : {directory.path().string(), directory.File("none"), directory.File("a/b"),
                                    directory.File("pipe"), std::string("/dev/zero"), std::string()}) {
        std::ifstream none;
        EXPECT_FALSE(OpenForReading(path, none)) << path;
    }
}

// --- Writing ---

TEST(WholeFile, IsCreatedAndReplaced) {
    const TemporaryDirectory directory;
    const std::string path = directory.File("a");
    EXPECT_EQ(ReplaceFile(path, "one\n"), FileOutcome::written);
    EXPECT_EQ(TextOf(path), "one\n");
    EXPECT_EQ(ReplaceFile(path, ""), FileOutcome::written);
    EXPECT_EQ(TextOf(path), "");
    const std::string large(3000000, 'x');
    EXPECT_EQ(ReplaceFile(path, large), FileOutcome::written);
    EXPECT_EQ(TextOf(path), large);
    EXPECT_EQ(NamesIn(directory), std::vector<std::string>{"a"}) << "no temporary file is left";
}

TEST(WholeFile, NewFileHasTheUsualPermissions) {
    const TemporaryDirectory directory;
    const mode_t before = umask(027);
    EXPECT_EQ(ReplaceFile(directory.File("a"), "x"), FileOutcome::written);
    umask(before);
    EXPECT_EQ(fs::status(directory.File("a")).permissions(), static_cast<fs::perms>(0640));
}

TEST(WholeFile, PermissionsOfAnOldFileStay) {
    const TemporaryDirectory directory;
    Write(directory.File("a"), "old");
    fs::permissions(directory.File("a"), static_cast<fs::perms>(0604));
    EXPECT_EQ(ReplaceFile(directory.File("a"), "new"), FileOutcome::written);
    EXPECT_EQ(fs::status(directory.File("a")).permissions(), static_cast<fs::perms>(0604));
}

TEST(WholeFile, LinkIsFollowed) {
    const TemporaryDirectory directory;
    fs::create_directory(directory.path() / "folder");
    Write(directory.File("folder/target"), "old");
    fs::create_symlink("folder/target", directory.path() / "link");
    EXPECT_EQ(ReplaceFile(directory.File("link"), "new"), FileOutcome::written);
    EXPECT_TRUE(fs::is_symlink(directory.path() / "link"));
    EXPECT_EQ(TextOf(directory.File("folder/target")), "new");
}

TEST(WholeFile, LinkThatLeadsNowhereGetsItsTarget) {
    const TemporaryDirectory directory;
    fs::create_directory(directory.path() / "folder");
    fs::create_symlink("folder/next", directory.path() / "link");
    fs::create_symlink("target", directory.path() / "folder/next");
    EXPECT_EQ(ReplaceFile(directory.File("link"), "new"), FileOutcome::written);
    EXPECT_TRUE(fs::is_symlink(directory.path() / "link"));
    EXPECT_TRUE(fs::is_symlink(directory.path() / "folder/next"));
    EXPECT_EQ(TextOf(directory.File("folder/target")), "new");
    fs::create_symlink("circle", directory.path() / "circle");
    EXPECT_EQ(ReplaceFile(directory.File("circle"), "new"), FileOutcome::not_opened);
}

TEST(WholeFile, RightsThatAreLentEndWithTheText) {
    const TemporaryDirectory directory;
    Write(directory.File("a"), "old");
    ASSERT_EQ(chmod(directory.File("a").c_str(), 07755), 0);
    EXPECT_EQ(ReplaceFile(directory.File("a"), "new"), FileOutcome::written);
    struct stat status {};
    ASSERT_EQ(stat(directory.File("a").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0755U);
}

TEST(WholeFile, OwnerStaysOrTheFileDoes) {
    if (geteuid() != 0) GTEST_SKIP() << "only root can give files away";
    const TemporaryDirectory directory;
    const std::string path = directory.File("a");
    Write(path, "old");
    ASSERT_EQ(chown(path.c_str(), 1234, 2345), 0);
    EXPECT_EQ(ReplaceFile(path, "new"), FileOutcome::written);
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 1234U);
    EXPECT_EQ(status.st_gid, 2345U);
    // Another user who may write the file and the folder could not keep its owner.
    fs::permissions(path, static_cast<fs::perms>(0666));
    fs::permissions(directory.path(), static_cast<fs::perms>(0777));
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        if (setgid(999) != 0 || setuid(999) != 0) _exit(2);
        _exit(ReplaceFile(path, "newer") == FileOutcome::not_opened ? 0 : 1);
    }
    int result = 0;
    ASSERT_EQ(waitpid(child, &result, 0), child);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(TextOf(path), "new");
    EXPECT_EQ(NamesIn(directory), std::vector<std::string>{"a"});
}

TEST(WholeFile, WhatAKilledRunLeftGoesAtTheNextWrite) {
    const TemporaryDirectory directory;
    for (const char* name :
         {"a.vorka-Ab3dEf", "a.vorka-held00", "a.vorka-Ab3dE", "a.vorka-Ab3dEfg", "a.Ab3dEf", "b.vorka-Ab3dEf"}) {
        Write(directory.File(name), "half");
    }
    const int held = open(directory.File("a.vorka-held00").c_str(), O_RDONLY);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    fs::create_symlink("b.vorka-Ab3dEf", directory.path() / "a.vorka-linked");
    EXPECT_EQ(ReplaceFile(directory.File("a"), "new"), FileOutcome::written);
    close(held);
    std::vector<std::string> names = NamesIn(directory);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"a", "a.Ab3dEf", "a.vorka-Ab3dE", "a.vorka-Ab3dEfg", "a.vorka-held00",
                                               "a.vorka-linked", "b.vorka-Ab3dEf"}))
        << "one is gone, the others are in use, or of another name";
    EXPECT_EQ(ReplaceFile(directory.File("a"), "newer"), FileOutcome::written);
    EXPECT_FALSE(fs::exists(directory.File("a.vorka-held00")));
}

TEST(WholeFile, LongestNameCanBeWritten) {
    const TemporaryDirectory directory;
    const std::string path = directory.File(std::string(255, 'n'));
    EXPECT_EQ(ReplaceFile(path, "new"), FileOutcome::written);
    EXPECT_EQ(TextOf(path), "new");
}

TEST(WholeFile, PlacesWhereNoFileCanBeAreRefused) {
    const TemporaryDirectory directory;
    Write(directory.File("a"), "old");
    for (const std::string& path : {directory.path().string(), directory.File("none/x"), directory.File("a/x"),
                                    std::string(), directory.File(std::string(5000, 'x'))}) {
        EXPECT_EQ(ReplaceFile(path, "new"), FileOutcome::not_opened) << path.substr(0, 100);
    }
    EXPECT_EQ(NamesIn(directory), std::vector<std::string>{"a"});
    EXPECT_EQ(TextOf(directory.File("a")), "old");
}

TEST(WholeFile, ProtectedFileStays) {
    if (geteuid() == 0) GTEST_SKIP() << "nothing is protected against root";
    const TemporaryDirectory directory;
    Write(directory.File("a"), "old");
    fs::permissions(directory.File("a"), static_cast<fs::perms>(0444));
    EXPECT_EQ(ReplaceFile(directory.File("a"), "new"), FileOutcome::not_opened);
    EXPECT_EQ(TextOf(directory.File("a")), "old");
}

TEST(WholeFile, DevicesAreWrittenDirectly) {
    EXPECT_EQ(ReplaceFile("/dev/null", "x"), FileOutcome::written);
    EXPECT_TRUE(fs::is_character_file("/dev/null")) << "it is no file now";
    EXPECT_EQ(ReplaceFile("/dev/full", "x"), FileOutcome::not_written);
}

TEST(WholeFile, PipeWithoutANameIsWrittenDirectly) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_EQ(ReplaceFile("/proc/self/fd/" + std::to_string(ends[1]), "x"), FileOutcome::written);
    char letter = 0;
    EXPECT_EQ(read(ends[0], &letter, 1), 1);
    EXPECT_EQ(letter, 'x');
    close(ends[0]);
    close(ends[1]);
}

TEST(WholeFile, PipeWithoutAReaderIsRefusedAtOnce) {
    const TemporaryDirectory directory;
    ASSERT_EQ(mkfifo(directory.File("pipe").c_str(), 0600), 0);
    EXPECT_EQ(ReplaceFile(directory.File("pipe"), "x"), FileOutcome::not_opened);
}

/// Runs in a child, since its limits can't be taken back.
TEST(WholeFile, FullDiskLeavesTheOldFile) {
    const TemporaryDirectory directory;
    Write(directory.File("a"), "old");
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{.rlim_cur = 1000, .rlim_max = 1000};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) _exit(2);
        _exit(ReplaceFile(directory.File("a"), std::string(5000, 'x')) == FileOutcome::not_written ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(TextOf(directory.File("a")), "old");
    EXPECT_EQ(NamesIn(directory), std::vector<std::string>{"a"});
}

/// A child writes one long text after the other until it is killed: the file is always one of them, from end to end.
TEST(WholeFile, KillLeavesAWholeFile) {
    const TemporaryDirectory directory;
    const std::string path = directory.File("a");
    const auto text = [](int number) { return std::string(200000, static_cast<char>('a' + number % 20)); };
    ASSERT_EQ(ReplaceFile(path, text(0)), FileOutcome::written);
    for (int round = 0; round < 20; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int number = 0;; ++number) (void)ReplaceFile(path, text(number));
        }
        usleep(static_cast<useconds_t>(1000 + round * 700));
        kill(child, SIGKILL);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
        const std::string found = TextOf(path);
        ASSERT_EQ(found.size(), 200000U);
        EXPECT_EQ(found.find_first_not_of(found.front()), std::string::npos);
        EXPECT_LE(NamesIn(directory).size(), 2U) << "what one killed run left is removed by the next";
    }
    EXPECT_EQ(ReplaceFile(path, text(0)), FileOutcome::written);
    EXPECT_EQ(NamesIn(directory), std::vector<std::string>{"a"});
}

}  // namespace
