#include "tune/state_lock.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>

#include "support/temporary_directory.h"

namespace {

class LockOfState : public testing::Test {
  protected:
    [[nodiscard]] std::string WhyRefused() const {
        try {
            const StateLock lock(state);
            return "nothing was refused";
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }
    [[nodiscard]] bool HasFile() const { return access((state + ".lock").c_str(), F_OK) == 0; }

    TemporaryDirectory folder;
    std::string state = folder.File("state");
};

TEST_F(LockOfState, HasOneOwnerAtATime) {
    std::optional<StateLock> lock(state);
    EXPECT_EQ(WhyRefused(), state + ": another run is using it");
    EXPECT_EQ(WhyRefused(), state + ": another run is using it") << "whoever was refused has left it as it is";
    lock.reset();
    EXPECT_EQ(WhyRefused(), "nothing was refused");
}

TEST_F(LockOfState, LeavesNoFile) {
    { const StateLock lock(state); }
    EXPECT_FALSE(HasFile());
}

TEST_F(LockOfState, FileOfAKilledRunIsInNobodysWay) {
    std::ofstream(state + ".lock");
    EXPECT_EQ(WhyRefused(), "nothing was refused");
    EXPECT_FALSE(HasFile());
}

TEST_F(LockOfState, FileOfSomebodyElseStays) {
    std::ofstream(state + ".lock") << "mine";
    EXPECT_EQ(WhyRefused(), "nothing was refused");
    EXPECT_TRUE(HasFile());
}

TEST_F(LockOfState, WaitsForNobodyWhoWritesAPipe) {
    ASSERT_EQ(mkfifo((state + ".lock").c_str(), 0600), 0);
    EXPECT_EQ(WhyRefused(), "nothing was refused");
    EXPECT_TRUE(HasFile());
}

TEST_F(LockOfState, PlaceWithoutAFolderIsLeftToWhoWritesTheState) {
    const StateLock lock(folder.File("none/state"));
    EXPECT_EQ(WhyRefused(), "nothing was refused");
}

}  // namespace
