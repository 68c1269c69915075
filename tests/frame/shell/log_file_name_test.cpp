#include "frame/shell/log_file_name.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>

#include "support/row_name.h"
#include "support/temporary_directory.h"

namespace {

struct NameRow {
    std::string name;
    int existing;  ///< the names that exist already, from the first one on
    std::string expected;
};

/// The name of the log, if these names exist; empty if there is none.
std::string NameOfLog(const std::function<Logfile::Creation(const std::string&)>& create) {
    std::string last;
    OpenFirstFreeLog({.create =
                          [&](const std::string& name) {
                              const Logfile::Creation creation = create(name);
                              if (creation == Logfile::Creation::created) last = name;
                              return creation;
                          },
                      .overwrite = [&](const std::string& name) { last = name; }});
    return last;
}

class LogFileName : public testing::TestWithParam<NameRow> {};

TEST_P(LogFileName, IsTheFirstThatDoesNotExist) {
    int asked = 0;
    EXPECT_EQ(NameOfLog([&](const std::string&) {
                  return asked++ < GetParam().existing ? Logfile::Creation::exists : Logfile::Creation::created;
              }),
              GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Shell, LogFileName,
                         testing::Values(NameRow{"FirstRun", 0, "logfile.000"}, NameRow{"SecondRun", 1, "logfile.001"},
                                         NameRow{"TwoDigits", 42, "logfile.042"},
                                         NameRow{"ThreeDigits", 999, "logfile.999"},
                                         NameRow{"FourDigits", 1000, "logfile.1000"},
                                         NameRow{"LastNumber", 99999, "logfile.99999"},
                                         NameRow{"AllExist", 100000, "logfile.max"}),
                         RowName<NameRow>);

TEST(LogFileName, GapIsFilled) {
    EXPECT_EQ(NameOfLog([](const std::string& name) {
                  return name != "logfile.007" ? Logfile::Creation::exists : Logfile::Creation::created;
              }),
              "logfile.007");
}

TEST(LogFileName, FolderThatCantBeWrittenIsAskedOnce) {
    int asked = 0;
    EXPECT_EQ(NameOfLog([&](const std::string&) {
                  ++asked;
                  return Logfile::Creation::failed;
              }),
              "");
    EXPECT_EQ(asked, 1);
}

TEST(LogFileName, LinksAndPipesAreNamesThatExist) {
    const TemporaryDirectory directory;
    ASSERT_EQ(chdir(directory.path().c_str()), 0);
    std::filesystem::create_symlink("elsewhere", "logfile.000");
    ASSERT_EQ(mkfifo("logfile.001", 0600), 0);
    std::filesystem::create_directory("logfile.002");
    OpenFirstFreeLog(vlog);
    vlog.Close();
    EXPECT_EQ(vlog.file_name(), "logfile.003");
    EXPECT_TRUE(TextOf("logfile.003").starts_with("Vorka logfile created at: "));
    EXPECT_FALSE(std::filesystem::exists("elsewhere"));
}

}  // namespace
