#include "frame/base/whole_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

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
    }
}

}  // namespace
