#include "uci/output.h"

#include <gtest/gtest.h>

#include "frame/base/logfile.h"
#include "support/log_capture.h"

namespace {

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;
using VorkaUci::Output;

struct UciOutput : testing::Test {
    UciOutput() { CaptureStdout(); }
    const LogCapture log;
    Output output;
};

TEST_F(UciOutput, SendsWholeLinesAndLogsThem) {
    output.Send("readyok");
    EXPECT_EQ(GetCapturedStdout(), "readyok\n");
    EXPECT_EQ(log.text(), "sent: readyok\n");
}

TEST_F(UciOutput, TurnsWhatTheLogSaysIntoStrings) {
    vlog << "two "
         << "words\n\nthe next"
         << " line\n";
    LogOnly("secret");
    EXPECT_EQ(GetCapturedStdout(), "info string two words\ninfo string the next line\n");
}

TEST_F(UciOutput, TellsAllWhenDebugging) {
    output.SetDebug(true);
    LogOnly("secret");
    output.Send("readyok");
    output.SetDebug(false);
    LogOnly("secret again");
    EXPECT_EQ(GetCapturedStdout(), "info string secret (not sent to xboard)\nreadyok\n");
}

TEST_F(UciOutput, SaysEachLineByItself) {
    output.Say("one\ntwo\n\nthree");
    EXPECT_EQ(GetCapturedStdout(), "info string one\ninfo string two\ninfo string three\n");
}

TEST(UciOutputEnd, GivesStandardOutputBackToTheLog) {
    const LogCapture log;
    { const Output output; }
    CaptureStdout();
    vlog << "plain\n";
    vlog.Flush();
    EXPECT_EQ(GetCapturedStdout(), "plain\n");
}

}  // namespace
