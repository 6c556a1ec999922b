#include "platform/folders.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "platform/memory_file_system.h"
#include "platform/posix_file_system.h"

namespace carnetel {
namespace {

Environment Variables(std::map<std::string, std::string> values) {
  return [values](const std::string& name) {
    const auto found = values.find(name);
    return found == values.end() ? std::string() : found->second;
  };
}

class HomeFolderTest : public ::testing::Test {
 protected:
  std::string Home(std::map<std::string, std::string> values) {
    return HomeFolder(files_, Variables(std::move(values)), "/opt/carnetel/bin/");
  }

  FakeClock clock_;
  MemoryFileSystem files_{clock_};
};

TEST(ProfilePathTest, TheOwnVariableComesFirst) {
  EXPECT_EQ(
      ProfilePath(Variables(
          {{"CARNETEL_PROFILE", "/x/p.ini"}, {"XDG_CONFIG_HOME", "/cfg"}, {"HOME", "/home/u"}})),
      "/x/p.ini");
}

TEST(ProfilePathTest, ThenTheFolderOfTheDesktop) {
  EXPECT_EQ(ProfilePath(Variables({{"XDG_CONFIG_HOME", "/cfg"}, {"HOME", "/home/u"}})),
            "/cfg/carnetel/profile.ini");
  EXPECT_EQ(ProfilePath(Variables({{"XDG_CONFIG_HOME", "/cfg/"}, {"HOME", "/home/u"}})),
            "/cfg/carnetel/profile.ini");
}

TEST(ProfilePathTest, ThenTheUsualPlaceInTheHome) {
  EXPECT_EQ(ProfilePath(Variables({{"HOME", "/home/u"}})), "/home/u/.config/carnetel/profile.ini");
}

TEST(ProfilePathTest, ARelativeDesktopFolderCountsAsNotSet) {
  EXPECT_EQ(ProfilePath(Variables({{"XDG_CONFIG_HOME", "cfg"}, {"HOME", "/home/u"}})),
            "/home/u/.config/carnetel/profile.ini");
}

TEST_F(HomeFolderTest, TheOwnVariableComesFirst) {
  files_.SetContents("/opt/carnetel/bin/carnetel.portable", {});
  EXPECT_EQ(Home({{"CARNETEL_HOME", "/x/y"}, {"XDG_DATA_HOME", "/data"}}), "/x/y/");
  EXPECT_EQ(Home({{"CARNETEL_HOME", "/x/y/"}}), "/x/y/");
}

TEST_F(HomeFolderTest, ThenTheFolderOfAPortableExecutable) {
  files_.SetContents("/opt/carnetel/bin/carnetel.portable", {});
  EXPECT_EQ(Home({{"XDG_DATA_HOME", "/data"}, {"HOME", "/home/u"}}), "/opt/carnetel/bin/");
}

TEST_F(HomeFolderTest, ThenTheFolderOfTheDesktop) {
  EXPECT_EQ(Home({{"XDG_DATA_HOME", "/data"}, {"HOME", "/home/u"}}), "/data/carnetel/");
}

TEST_F(HomeFolderTest, ThenTheUsualPlaceInTheHomeAndNothingIsMade) {
  EXPECT_EQ(Home({{"HOME", "/home/u"}}), "/home/u/.local/share/carnetel/");
  EXPECT_FALSE(files_.Exists("/home"));
}

TEST_F(HomeFolderTest, AnUnknownExecutableFolderIsNotTheRoot) {
  files_.SetContents("/carnetel.portable", {});
  EXPECT_EQ(HomeFolder(files_, Variables({{"HOME", "/home/u"}}), ""),
            "/home/u/.local/share/carnetel/");
}

TEST(SystemEnvironmentTest, TellsWhatIsSetAndAlwaysAHome) {
  ASSERT_EQ(::setenv("CARNETEL_FOLDERS_TEST", "value", 1), 0);
  EXPECT_EQ(SystemEnvironment("CARNETEL_FOLDERS_TEST"), "value");
  ::unsetenv("CARNETEL_FOLDERS_TEST");
  EXPECT_EQ(SystemEnvironment("CARNETEL_FOLDERS_TEST"), "");
  const std::string home = SystemEnvironment("HOME");
  ::unsetenv("HOME");
  EXPECT_EQ(SystemEnvironment("HOME").front(), '/');
  ::setenv("HOME", home.c_str(), 1);
}

TEST(ExecutableFolderTest, HoldsThisTest) {
  PosixFileSystem files;
  EXPECT_TRUE(files.Exists(ExecutableFolder() + "platform_test"));
}

}  // namespace
}  // namespace carnetel
