#include "frame/shell/self_checks.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

#include "frame/base/vocabulary.h"

namespace {

TEST(SelfChecks, Hold) {
    EXPECT_TRUE(RoundingHolds());
    RunSelfChecks();
}

TEST(SelfChecksDeathTest, ReportTheFailedCheck) {
    const auto fail = [](std::string_view description) {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        RequireSelfCheck(false, description);
    };

    EXPECT_EXIT(fail(vocabulary::rounding_functions_failed), testing::KilledBySignal(SIGABRT),
                "CHECKED_ASSERT failed:\nok\nfile: os_dependent, line: [0-9]+\n"
                "rounding functions in utility.h failed the checks\n\n");
}

}  // namespace
