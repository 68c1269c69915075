#include "frame/base/os_dependent.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <string>

#include "frame/base/hang_up.h"
#include "frame/base/logfile.h"
#include "frame/base/standard_output.h"
#include "support/log_capture.h"
#include "support/standard_input.h"
#include "support/temporary_directory.h"

namespace {

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

// --- Input ---

class DescriptorReaderTest : public testing::Test {
  protected:
    DescriptorReaderTest() { EXPECT_EQ(pipe(ends_), 0); }
    ~DescriptorReaderTest() override {
        close(ends_[0]);
        CloseWriter();
    }

    void Write(std::string_view text) const {
        ASSERT_EQ(write(ends_[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void CloseWriter() {
        if (ends_[1] >= 0) close(ends_[1]);
        ends_[1] = -1;
    }
    [[nodiscard]] DescriptorReader Reader() const { return DescriptorReader(ends_[0]); }

    int ends_[2];
};

TEST_F(DescriptorReaderTest, SeesNothingOnAnIdlePipe) { EXPECT_FALSE(Reader().IsInputAvailable()); }

TEST_F(DescriptorReaderTest, ReadsLineByLine) {
    DescriptorReader reader = Reader();
    Write("one\n\ntwo \r\n");
    EXPECT_TRUE(reader.IsInputAvailable());
    EXPECT_EQ(reader.ReadLine(), "one");
    EXPECT_TRUE(reader.IsInputAvailable());
    EXPECT_EQ(reader.ReadLine(), "");
    EXPECT_EQ(reader.ReadLine(), "two \r");
    EXPECT_FALSE(reader.IsInputAvailable());
}

TEST_F(DescriptorReaderTest, SeesAPartlyReadLineWhileTheDescriptorIsIdle) {
    DescriptorReader reader = Reader();
    Write("go\nunde");
    EXPECT_EQ(reader.ReadLine(), "go");
    EXPECT_TRUE(reader.IsInputAvailable());
    Write("cided\nping");
    EXPECT_EQ(reader.ReadLine(), "undecided");
    CloseWriter();
    EXPECT_EQ(reader.ReadLine(), "ping") << "the last line may lack its end";
}

TEST_F(DescriptorReaderTest, IsReadyAtTheEndAndStaysThere) {
    DescriptorReader reader = Reader();
    CloseWriter();
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(reader.IsInputAvailable());
        EXPECT_EQ(reader.ReadLine(), std::nullopt);
    }
}

TEST_F(DescriptorReaderTest, IsReadyOnAClosedDescriptor) {
    const int descriptor = dup(ends_[0]);
    close(descriptor);
    DescriptorReader reader(descriptor);
    EXPECT_TRUE(reader.IsInputAvailable());
    EXPECT_EQ(reader.ReadLine(), std::nullopt);
}

TEST_F(DescriptorReaderTest, KeepsNulAndHighBytes) {
    DescriptorReader reader = Reader();
    const std::string line("a\0\xff\x80\x01z", 6);
    Write(line + '\n');
    EXPECT_EQ(reader.ReadLine(), line);
}

TEST_F(DescriptorReaderTest, ReadsALineOfOneMebibyte) {
    const TemporaryDirectory directory;
    std::string line(1U << 20, 'x');
    line[12345] = '\0';
    std::ofstream(directory.File("input"), std::ios::binary) << line << "\nnext\n" << line;
    const int file = open(directory.File("input").c_str(), O_RDONLY);
    DescriptorReader reader(file);
    EXPECT_TRUE(reader.ReadLine() == line);
    EXPECT_EQ(reader.ReadLine(), "next");
    EXPECT_TRUE(reader.ReadLine() == line);
    EXPECT_EQ(reader.ReadLine(), std::nullopt);
    close(file);
}

TEST_F(DescriptorReaderTest, SkipsALineThatIsLonger) {
    const TemporaryDirectory directory;
    const std::string longest(longest_input_line, 'x');
    std::ofstream(directory.File("input"), std::ios::binary) << longest << "\nping " << longest << "\nnext\n"
                                                             << longest << longest << longest;
    const int file = open(directory.File("input").c_str(), O_RDONLY);
    DescriptorReader reader(file);
    EXPECT_TRUE(reader.ReadLine() == longest);
    try {
        (void)reader.ReadLine();
        ADD_FAILURE() << "the line was taken";
    } catch (const input_line_too_long& failure) {
        EXPECT_EQ(failure.beginning(), "ping " + std::string(55, 'x'));
    }
    EXPECT_EQ(reader.ReadLine(), "next");
    EXPECT_THROW((void)reader.ReadLine(), input_line_too_long);
    EXPECT_EQ(reader.ReadLine(), std::nullopt);
    close(file);
}

TEST_F(DescriptorReaderTest, WaitsOnAPipeThatDoesNotBlock) {
    ASSERT_EQ(fcntl(ends_[0], F_SETFL, O_NONBLOCK), 0);
    DescriptorReader reader = Reader();
    const pid_t child = fork();
    if (child == 0) {
        usleep(20000);
        Write("late\n");
        _exit(0);
    }
    EXPECT_EQ(reader.ReadLine(), "late");
    waitpid(child, nullptr, 0);
}

TEST(ReadLine, LogsTheLineToTheFileAlone) {
    CaptureStdout();
    const LogCapture log;
    const StandardInputText input("level 40 5 0\nlast");
    EXPECT_TRUE(IsInputAvailable());
    EXPECT_EQ(ReadLine(), "level 40 5 0");
    EXPECT_EQ(ReadLine(), "last");
    EXPECT_EQ(GetCapturedStdout(), "");
    EXPECT_EQ(log.text(), "Vorka received input: level 40 5 0\nVorka received input: last\n");
}

TEST(ReadLine, SaysQuitForEverAtTheEndAndLogsNothing) {
    const LogCapture log;
    const StandardInputText input("");
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(IsInputAvailable());
        EXPECT_EQ(ReadLine(), "quit");
    }
    EXPECT_EQ(log.text(), "");
}

TEST(ReadLine, ShowsTheQuestionBeforeItWaits) {
    const TemporaryDirectory directory;
    const StandardInputText input("answer\n");
    CaptureStdout();
    vlog << "question? ";
    EXPECT_EQ(ReadLine(), "answer");
    const int copy = dup(STDOUT_FILENO);  // what has left the process, seen past its own buffer
    const off_t written = lseek(copy, 0, SEEK_CUR);
    close(copy);
    EXPECT_EQ(GetCapturedStdout(), "question? ");
    EXPECT_EQ(written, 10);
}

// --- What happens once in a process runs in processes of its own ---

/// Runs `work` in a child with a log of its own and gives the log's text without its heading.
std::string LogOfChild(const std::function<void()>& work) {
    const TemporaryDirectory directory;
    const std::string name = directory.File("log");
    EXPECT_EXIT(
        {
            vlog.Open(name);
            work();
            vlog.Close();
            _exit(0);
        },
        testing::ExitedWithCode(0), "");
    const std::string text = TextOf(name);
    return text.substr(text.find('\n') + 1);
}

constexpr const char* raw_mode_note = "Stdin has been set to raw mode (OS: Unix compatible). (not sent to xboard)\n";

TEST(SetStdinRawModeDeathTest, NotesItOnceAndWorksWithoutATerminal) {
    EXPECT_EQ(LogOfChild([] {
                  const StandardInputText input("xboard\nprotover 2\n");
                  SetStdinRawMode();
                  (void)ReadLine();
                  SetStdinRawMode();
                  (void)ReadLine();
              }),
              std::string(raw_mode_note) + "Vorka received input: xboard\nVorka received input: protover 2\n");
}

TEST(NonDeterministicRandDeathTest, IsRemarkedUponAtTheEleventhCallOnly) {
    const std::string note =
        "Note: NonDeterministicRand_16bit seems to be used more often than originally intended. This could be a "
        "problem, because its implementation is bad. (not sent to xboard)\n";
    const auto calls = [](int n) {
        return [n] {
            for (int i = 0; i < n; ++i) (void)NonDeterministicRand_16bit();
        };
    };
    EXPECT_EQ(LogOfChild(calls(10)), "");
    EXPECT_EQ(LogOfChild(calls(11)), note);
    EXPECT_EQ(LogOfChild(calls(1000)), note);
}

TEST(NonDeterministicRand, StaysWithin15Bits) {
    std::set<int> seen;
    for (int i = 0; i < 1000; ++i) {
        const int value = NonDeterministicRand_16bit();
        ASSERT_GE(value, 0);
        ASSERT_LE(value, 32767);
        seen.insert(value);
    }
    EXPECT_GT(seen.size(), 900U);
}

TEST(SignalsDeathTest, AreIgnoredOnceTheyShallBe) {
    EXPECT_EXIT(
        {
            IgnoreTerminationSignals();
            IgnoreFailedWrites();
            raise(SIGINT);
            raise(SIGTERM);
            raise(SIGPIPE);
            raise(SIGXFSZ);
            _exit(3);
        },
        testing::ExitedWithCode(3), "");
    EXPECT_EXIT(raise(SIGTERM), testing::KilledBySignal(SIGTERM), "");
}

TEST(HangUpDeathTest, EndsTheInputWhetherItWaitsOrNot) {
    EXPECT_EXIT(
        {
            int ends[2];
            if (pipe(ends) != 0) _exit(2);
            EndInputOnHangUp();
            DescriptorReader reader(ends[0]);
            const pid_t parent = getpid();
            if (fork() == 0) {
                usleep(20000);
                kill(parent, SIGHUP);
                _exit(0);
            }
            const bool was_idle = !reader.IsInputAvailable();
            const bool ended = !reader.ReadLine().has_value();
            const bool is_ready = reader.IsInputAvailable() && HasHungUp();
            const bool ended_again = write(ends[1], "ping\n", 5) == 5 && !reader.ReadLine().has_value();
            _exit(was_idle && ended && is_ready && ended_again ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(HangUpDeathTest, IsNothingToAProgramThatWasToldToIgnoreIt) {
    EXPECT_EXIT(
        {
            std::signal(SIGHUP, SIG_IGN);
            EndInputOnHangUp();
            raise(SIGHUP);
            _exit(HasHungUp() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(StandardOutputDeathTest, WaitsForAPipeThatDoesNotBlock) {
    EXPECT_EXIT(
        {
            int ends[2];
            if (pipe(ends) != 0) _exit(2);
            const std::string text(1000000, 'x');
            if (fork() == 0) {
                dup2(ends[1], STDOUT_FILENO);
                fcntl(STDOUT_FILENO, F_SETFL, O_NONBLOCK);
                std::fwrite(text.data(), 1, text.size(), StandardOutput());
                std::fflush(StandardOutput());
                _exit(0);
            }
            close(ends[1]);
            usleep(20000);
            std::size_t length = 0;
            char chunk[5000];
            for (ssize_t step = 0; (step = read(ends[0], chunk, sizeof(chunk))) > 0;) {
                length += static_cast<std::size_t>(step);
            }
            _exit(length == text.size() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ReserveStandardDescriptorsDeathTest, FillsWhatIsMissingAndLeavesTheRest) {
    EXPECT_EXIT(
        {
            close(STDIN_FILENO);
            close(STDOUT_FILENO);
            ReserveStandardDescriptors();
            const bool filled = fcntl(STDIN_FILENO, F_GETFD) != -1 && fcntl(STDOUT_FILENO, F_GETFD) != -1;
            const bool ends = IsInputAvailable() && ReadLine() == "quit";
            fputs("still the error stream", stderr);
            _exit(filled && ends ? 0 : 1);
        },
        testing::ExitedWithCode(0), "still the error stream");
}

TEST(SilentStandardError, LosesWhatIsWrittenMeanwhile) {
    testing::internal::CaptureStderr();
    (void)std::fputs("before, ", stderr);
    {
        const SilentStandardError silence;
        (void)std::fputs("meanwhile, ", stderr);
    }
    (void)std::fputs("after", stderr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "before, after");
}

TEST(SilentStandardErrorDeathTest, StandsThatThereIsNone) {
    EXPECT_EXIT(
        {
            close(STDERR_FILENO);
            { const SilentStandardError silence; }
            _exit(fcntl(STDERR_FILENO, F_GETFD) == -1 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

// --- Files ---

TEST(DirectoryOfProgram, IsWhatStandsBeforeTheLastSlash) {
    EXPECT_EQ(DirectoryOfProgram("./prog"), ".");
    EXPECT_EQ(DirectoryOfProgram("/opt/x/prog"), "/opt/x");
    EXPECT_EQ(DirectoryOfProgram("prog"), ".");
    EXPECT_EQ(DirectoryOfProgram(""), ".");
    EXPECT_EQ(DirectoryOfProgram("/prog"), "");
    EXPECT_EQ(DirectoryOfProgram("a\\b\\prog"), ".") << "only the slash counts";
    EXPECT_EQ(DirectoryOfProgram("a//prog"), "a/");
}

TEST(ExecutableDirectoryDeathTest, StoresTheFirstAndIgnoresTheLaterCalls) {
    EXPECT_EXIT(
        {
            const bool stored = ExecutableDirectory("/opt/x/prog") == "/opt/x" && ExecutableDirectory() == "/opt/x" &&
                                ExecutableDirectory("/usr/bin/other") == "/opt/x";
            _exit(stored ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(PathOfProgram, IsTheNameItWasStartedByUnlessThatTellsNoFolder) {
    const TemporaryDirectory directory;
    std::filesystem::create_directory(directory.File("bin"));
    std::ofstream(directory.File("vorka")).flush();
    std::filesystem::create_symlink("../vorka", directory.File("bin/link"));
    std::filesystem::create_symlink("nowhere", directory.File("bin/dangling"));
    std::filesystem::create_directory_symlink("bin", directory.File("folder"));
    for (const std::string& name : {std::string("./prog"), std::string("/opt/x/prog"), directory.File("vorka"),
                                    directory.File("bin/../vorka"), directory.File("bin/dangling")}) {
        EXPECT_EQ(PathOfProgram(name), name);
    }
    EXPECT_EQ(PathOfProgram(directory.File("bin/link")), directory.File("vorka"));
    EXPECT_EQ(PathOfProgram(directory.File("folder/link")), directory.File("vorka"));
}

TEST(PathOfProgramDeathTest, IsWhatTheSystemKnowsIfItWasFoundThroughPath) {
    const std::string own = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EXIT(_exit(chdir("/") == 0 && PathOfProgram("vorka") == own ? 0 : 1), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(_exit(chdir(DirectoryOfProgram(own).c_str()) == 0 && PathOfProgram("vorka") == "vorka" ? 0 : 1),
                testing::ExitedWithCode(0), "")
        << "it stands in the working directory";
}

TEST(FileExists, NeverWaitsForWhoWritesAPipe) {
    const TemporaryDirectory directory;
    ASSERT_EQ(mkfifo(directory.File("pipe").c_str(), 0600), 0);
    EXPECT_TRUE(FileExists(directory.File("pipe")));
}

TEST(FileExists, TellsWhetherItCanBeReadFrom) {
    const TemporaryDirectory directory;
    EXPECT_FALSE(FileExists(directory.File("file")));
    std::ofstream(directory.File("file")).flush();
    EXPECT_TRUE(FileExists(directory.File("file")));
    EXPECT_FALSE(FileExists(directory.File("no/such/file")));
    EXPECT_FALSE(FileExists(""));
}

}  // namespace
