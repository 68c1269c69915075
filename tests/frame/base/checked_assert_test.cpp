#include "frame/base/checked_assert.h"

#include <gtest/gtest.h>

#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"
#include "support/log_capture.h"

namespace {

TEST(SourceFileStem, LeavesOutDirectoryAndEnding) {
    EXPECT_EQ(SourceFileStem("/src/chess/move_generator.cpp"), "move_generator");
    EXPECT_EQ(SourceFileStem("hash.cpp"), "hash");
    EXPECT_EQ(SourceFileStem("a.b/hash"), "hash");
    EXPECT_EQ(SourceFileStem(""), "");
}

TEST(ReportFailedAssertion, PrintsAllFields) {
    testing::internal::CaptureStdout();
    const LogCapture log;
    ReportFailedAssertion("depth > 0", "search_serial", 12, "Sunk too deep!");
    const std::string wanted = "CHECKED_ASSERT failed:\ndepth > 0\nfile: search_serial, line: 12\nSunk too deep!\n\n";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), wanted);
    EXPECT_EQ(log.text(), wanted);
}

TEST(ReportFailedAssertion, PrintsAllFieldsAfterAnEmptyCondition) {
    testing::internal::CaptureStdout();
    ReportFailedAssertion("", "hash", 1, "no error description available");
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "CHECKED_ASSERT failed:\n\nfile: hash, line: 1\nno error description available\n\n");
}

TEST(ReportFailedAssertion, ReachesBothEvenIfBothAreOff) {
    testing::internal::CaptureStdout();
    const LogCapture log;
    vlog.SetEcho(false);
    vlog.SetFileOutput(false);
    vlog.SetFlush(false);
    ReportFailedAssertion("false", "hash", 7, "text");
    const std::string wanted = "CHECKED_ASSERT failed:\nfalse\nfile: hash, line: 7\ntext\n\n";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), wanted);
    EXPECT_EQ(log.text(), wanted);
}

TEST(CheckedAssert, GoesOnIfTheConditionHolds) {
    int evaluated = 0;
    CHECKED_ASSERT(++evaluated == 1, vocabulary::no_error_description);
    EXPECT_EQ(evaluated, 1);
}

TEST(CheckedAssertDeathTest, AbortsAfterAReportThatQuotesTheCondition) {
    // The report goes to standard output, and a death test watches the error stream.
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            const int legs = 3;
            CHECKED_ASSERT(legs == 4, "horse is lame");
        },
        testing::KilledBySignal(SIGABRT),
        "CHECKED_ASSERT failed:\nlegs == 4\nfile: checked_assert_test, line: [0-9]+\nhorse is lame\n\n");
}

TEST(CheckedAssertDeathTest, LeavesTheReportInTheLog) {
    const TemporaryDirectory directory;
    const std::string name = directory.File("log");
    EXPECT_EXIT(
        {
            vlog.Open(name);
            CHECKED_ASSERT(false, vocabulary::no_error_description);
        },
        testing::KilledBySignal(SIGABRT), "");
    EXPECT_NE(TextOf(name).find("CHECKED_ASSERT failed:\nfalse\nfile: checked_assert_test, line: "), std::string::npos);
    EXPECT_NE(TextOf(name).find("\nno error description available\n\n"), std::string::npos);
}

}  // namespace
