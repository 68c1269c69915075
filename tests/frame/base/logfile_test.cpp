#include "frame/base/logfile.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "frame/base/os_dependent.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace {

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

TEST(Logfile, EchoesToStandardOutputAtFirst) {
    CaptureStdout();
    const LogCapture log;
    vlog << "move e2e4\n";
    vlog.Flush();
    EXPECT_EQ(GetCapturedStdout(), "move e2e4\n");
    EXPECT_EQ(log.text(), "move e2e4\n");
}

TEST(Logfile, TellsAListenerWholeLinesInsteadOfStandardOutput) {
    CaptureStdout();
    const LogCapture log;
    std::vector<std::string> lines;
    const auto listener = [&](std::string_view line) { lines.emplace_back(line); };
    vlog.SetListener(listener);
    vlog << "one"
         << " line\nthe next\n\nan open";
    LogOnly("unheard");
    EXPECT_EQ(lines, (std::vector<std::string>{"one line", "the next", ""}));
    vlog.SetListener(listener, true);
    LogOnly("heard");
    EXPECT_EQ(lines.back(), "heard (not sent to xboard)") << "the open line is forgotten";
    vlog.SetListener(nullptr);
    vlog << "plain\n";
    vlog.Flush();
    EXPECT_EQ(GetCapturedStdout(), "plain\n");
    EXPECT_EQ(log.text(),
              "one line\nthe next\n\nan openunheard (not sent to xboard)\nheard (not sent to xboard)\nplain\n");
}

TEST(Logfile, PrintsNumbersInTheDefaultFormat) {
    CaptureStdout();
    const LogCapture log;
    vlog << -5 << ' ' << 0.125 << ' ' << 1e7 << ' ' << 123456.789 << ' ' << true << ' ' << 1234567890123U << '\n';
    EXPECT_EQ(GetCapturedStdout(), "-5 0.125 1e+07 123457 1 1234567890123\n");
    EXPECT_EQ(log.text(), "-5 0.125 1e+07 123457 1 1234567890123\n");
}

TEST(Logfile, KeepsNulAndHighBytes) {
    const std::string text("a\0\xff\x80z\n", 6);
    CaptureStdout();
    const LogCapture log;
    vlog << text;
    EXPECT_EQ(GetCapturedStdout(), text);
    EXPECT_EQ(log.text(), text);
}

TEST(Logfile, WithTheEchoOffWritesToTheFileAlone) {
    CaptureStdout();
    const LogCapture log;
    EXPECT_TRUE(vlog.SetEcho(false));
    vlog << "hidden";
    EXPECT_FALSE(vlog.SetEcho(true));
    vlog << "shown";
    EXPECT_EQ(GetCapturedStdout(), "shown");
    EXPECT_EQ(log.text(), "hiddenshown");
}

TEST(EchoScope, IsPutBackWhenItsScopeIsLeftByAThrow) {
    CaptureStdout();
    const LogCapture log;
    try {
        const EchoScope file_only(vlog, Echo::off);
        {
            const EchoScope both(vlog, Echo::on);
            vlog << "a";
        }
        vlog << "b";
        throw 1;
    } catch (int) {
        vlog << "c";
    }
    EXPECT_EQ(GetCapturedStdout(), "ac");
    EXPECT_EQ(log.text(), "abc");
}

TEST(ScreenOnlyScope, KeepsItsTextOutOfTheFile) {
    CaptureStdout();
    const LogCapture log;
    {
        const ScreenOnlyScope screen_only(vlog);
        vlog << '\r';
    }
    vlog << "Depth";
    EXPECT_EQ(GetCapturedStdout(), "\rDepth");
    EXPECT_EQ(log.text(), "Depth");
}

TEST(Logfile, IsHeadedByTheLocalTime) {
    const TemporaryDirectory directory;
    CaptureStdout();
    ASSERT_TRUE(vlog.Open(directory.File("log")));
    EXPECT_EQ(vlog.file_name(), directory.File("log"));
    const std::string text = TextOf(directory.File("log"));  // is there without a flush
    vlog.Close();
    EXPECT_EQ(GetCapturedStdout(), "") << "the heading is for the file alone";
    ASSERT_TRUE(text.starts_with("Vorka logfile created at: "));
    tm time{};
    const char* rest = strptime(text.c_str() + 26, "%a %b %d %H:%M:%S %Y", &time);
    ASSERT_NE(rest, nullptr) << text;
    EXPECT_STREQ(rest, "\n");
}

TEST(Logfile, OpeningReplacesWhatTheFileHeld) {
    const TemporaryDirectory directory;
    const std::string name = directory.File("logfile.max");
    std::ofstream(name) << "an older log that is longer than any heading, and then some more of it\n";
    ASSERT_TRUE(vlog.Open(name));
    vlog.Close();
    EXPECT_TRUE(TextOf(name).starts_with("Vorka logfile created at: "));
    EXPECT_EQ(TextOf(name).find("older"), std::string::npos);
}

TEST(Logfile, IsCreatedOnlyWhereNothingIs) {
    const TemporaryDirectory directory;
    EXPECT_EQ(vlog.Create(directory.File("log")), Logfile::Creation::created);
    EXPECT_EQ(vlog.Create(directory.File("log")), Logfile::Creation::exists);
    std::filesystem::create_symlink("nowhere", directory.path() / "link");
    EXPECT_EQ(vlog.Create(directory.File("link")), Logfile::Creation::exists);
    EXPECT_EQ(vlog.Create(directory.File("none/log")), Logfile::Creation::failed);
    vlog.Close();
    EXPECT_FALSE(std::filesystem::exists(directory.path() / "nowhere"));
}

TEST(Logfile, OpensRegularFilesAlone) {
    const TemporaryDirectory directory;
    std::filesystem::create_symlink("target", directory.path() / "link");
    EXPECT_TRUE(vlog.Open(directory.File("link")));
    vlog.Close();
    EXPECT_TRUE(TextOf(directory.File("target")).starts_with("Vorka logfile created at: "));
    ASSERT_EQ(mkfifo(directory.File("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(vlog.Open(directory.File("pipe")));
    const int reader = open(directory.File("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_FALSE(vlog.Open(directory.File("pipe"))) << "though somebody reads it";
    close(reader);
    EXPECT_FALSE(vlog.Open("/dev/null"));
}

TEST(Logfile, OverwritesRegularFilesAlone) {
    const TemporaryDirectory directory;
    std::ofstream(directory.File("target")) << "text";
    std::filesystem::create_symlink("target", directory.path() / "link");
    EXPECT_FALSE(vlog.Overwrite(directory.File("link")));
    EXPECT_EQ(TextOf(directory.File("target")), "text");
    ASSERT_EQ(mkfifo(directory.File("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(vlog.Overwrite(directory.File("pipe")));
    const int reader = open(directory.File("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_FALSE(vlog.Overwrite(directory.File("pipe"))) << "though somebody reads it";
    close(reader);
    EXPECT_TRUE(vlog.Overwrite(directory.File("target")));
    EXPECT_TRUE(vlog.Overwrite(directory.File("new")));
    vlog.Close();
    EXPECT_TRUE(TextOf(directory.File("target")).starts_with("Vorka logfile created at: "));
}

TEST(Logfile, OpensNoFileThatAnotherLogWritesTo) {
    const TemporaryDirectory directory;
    const std::string name = directory.File("log");
    Logfile other;
    ASSERT_EQ(other.Create(name), Logfile::Creation::created);
    const std::string before = TextOf(name);
    EXPECT_FALSE(vlog.Open(name));
    EXPECT_TRUE(vlog.was_in_use());
    EXPECT_EQ(TextOf(name), before);
    EXPECT_FALSE(vlog.Open(directory.File("no/such/directory/log")));
    EXPECT_FALSE(vlog.was_in_use());
    EXPECT_TRUE(vlog.Overwrite(name)) << "which has no other name to go to";
    vlog.Close();
    other.Close();
    EXPECT_TRUE(vlog.Open(name));
    vlog.Close();
}

TEST(Logfile, OpeningAnotherFileClosesTheFirst) {
    const TemporaryDirectory directory;
    const EchoScope file_only(vlog, Echo::off);
    vlog.Open(directory.File("first"));
    vlog << "one";
    vlog.Open(directory.File("second"));
    vlog << "two";
    vlog.Close();
    vlog << "nowhere";
    EXPECT_TRUE(TextOf(directory.File("first")).ends_with("\none"));
    EXPECT_TRUE(TextOf(directory.File("second")).ends_with("\ntwo"));
}

TEST(Logfile, ThatCannotBeOpenedLeavesStandardOutput) {
    const TemporaryDirectory directory;
    CaptureStdout();
    EXPECT_FALSE(vlog.Open(directory.File("no/such/directory/log")));
    vlog << "still here\n";
    vlog.Flush();
    vlog.Close();
    EXPECT_EQ(GetCapturedStdout(), "still here\n");
}

TEST(Logfile, OnAFullDiskLeavesStandardOutput) {
    // A file that may grow no more stands for it.
    const TemporaryDirectory directory;
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{.rlim_cur = 60, .rlim_max = before.rlim_max};
    CaptureStdout();
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_TRUE(vlog.Open(directory.File("log")));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    for (int i = 0; i < 3; ++i) {
        vlog << "line " << i << '\n';
        vlog.Flush();
    }
    EXPECT_TRUE(vlog.good());
    vlog.Close();
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    (void)std::signal(SIGXFSZ, handler);
    EXPECT_EQ(TextOf(directory.File("log")).size(), 60U);
    EXPECT_EQ(GetCapturedStdout(), "line 0\nline 1\nline 2\n");
}

TEST(Logfile, WithoutFlushAlwaysKeepsTheFileBuffered) {
    const TemporaryDirectory directory;
    const std::string name = directory.File("log");
    const EchoScope file_only(vlog, Echo::off);
    vlog.Open(name);
    EXPECT_TRUE(vlog.SetFlush(false));
    vlog << "later";
    vlog.Flush();
    EXPECT_FALSE(TextOf(name).ends_with("later"));
    EXPECT_FALSE(vlog.SetFlush(true));
    vlog.Flush();
    EXPECT_TRUE(TextOf(name).ends_with("later"));
    vlog.Close();
}

TEST(Logfile, ClosingFlushesInAnyCase) {
    const TemporaryDirectory directory;
    const EchoScope file_only(vlog, Echo::off);
    vlog.Open(directory.File("log"));
    vlog.SetFlush(false);
    vlog << "the end";
    vlog.Close();
    vlog.SetFlush(true);
    EXPECT_TRUE(TextOf(directory.File("log")).ends_with("the end"));
}

TEST(LogOnly, WritesTheMarkedLineToTheFileAlone) {
    CaptureStdout();
    const LogCapture log;
    LogOnly("a remark");
    vlog << "spoken\n";
    EXPECT_EQ(GetCapturedStdout(), "spoken\n");
    EXPECT_EQ(log.text(), "a remark (not sent to xboard)\nspoken\n");
}

TEST(LogOnly, Flushes) {
    const TemporaryDirectory directory;
    vlog.Open(directory.File("log"));
    LogOnly("a remark");
    EXPECT_TRUE(TextOf(directory.File("log")).ends_with("\na remark (not sent to xboard)\n"));
    vlog.Close();
}

// Child processes: each closes or breaks its own standard output.
class StandardOutputDeathTest : public testing::TestWithParam<bool> {
  protected:
    /// Runs in the child, which ends with status 0 if all went well.
    static void WriteWithBrokenOutput(const std::string& name, bool by_pipe) {
        IgnoreFailedWrites();
        int ends[2];
        if (by_pipe && pipe(ends) == 0) {
            dup2(ends[1], STDOUT_FILENO);
            close(ends[0]);
            close(ends[1]);
        } else {
            close(STDOUT_FILENO);
            ReserveStandardDescriptors();
        }
        vlog.Open(name);
        for (int i = 0; i < 3; ++i) {
            vlog << "line " << i << '\n';
            vlog.Flush();
        }
        const bool good = vlog.good();
        vlog.Close();
        _exit(good ? 0 : 1);
    }
};

TEST_P(StandardOutputDeathTest, LeavesTheLogIfBroken) {
    const TemporaryDirectory directory;
    const std::string name = directory.File("log");
    EXPECT_EXIT(WriteWithBrokenOutput(name, GetParam()), testing::ExitedWithCode(0), "");
    EXPECT_THAT(TextOf(name), testing::MatchesRegex("Vorka logfile created at: [^\n]*\nline 0\nline 1\nline 2\n"));
}

INSTANTIATE_TEST_SUITE_P(Ways, StandardOutputDeathTest, testing::Bool(),
                         [](const auto& way) { return way.param ? "PipeWithoutReader" : "ClosedDescriptor"; });

}  // namespace
