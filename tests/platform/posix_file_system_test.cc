// What only the file system of the machine knows: links, pipes, full disks. The rest is in the
// suite that it shares with the one in memory.
#include "platform/posix_file_system.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "platform/clock.h"
#include "tests/support/fresh_folder.h"

namespace carnetel {
namespace {

class PosixFileSystemTest : public ::testing::Test {
 protected:
  std::string Path(const std::string& name) { return folder_.path() + name; }

  FreshFolder folder_;
  PosixFileSystem files_;
};

TEST_F(PosixFileSystemTest, APipeDoesNotOpenAndDoesNotWait) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(files_.Open(Path("pipe"), OpenMode::kRead), nullptr);
  EXPECT_EQ(files_.Open(Path("pipe"), OpenMode::kReadWrite), nullptr);
}

TEST_F(PosixFileSystemTest, OnlyAFileIsReplacedAndALinkStays) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  EXPECT_FALSE(ReplaceFile(files_, Path("pipe"), AsBytes("x")));
  ASSERT_TRUE(files_.MakeFolder(Path("folder")));
  EXPECT_FALSE(ReplaceFile(files_, Path("folder"), AsBytes("x")));
  EXPECT_FALSE(ReplaceFile(files_, Path("none/file"), AsBytes("x")));
  EXPECT_EQ(files_.List(folder_.path()).size(), 2U);
  ASSERT_EQ(::symlink("file", Path("link").c_str()), 0);
  EXPECT_TRUE(ReplaceFile(files_, Path("file"), AsBytes("much of it")));
  EXPECT_TRUE(ReplaceFile(files_, Path("link"), AsBytes("less")));
  EXPECT_EQ(ReadText(files_, Path("file")), "less");
  struct stat status = {};
  ASSERT_EQ(::lstat(Path("link").c_str(), &status), 0);
  EXPECT_TRUE(S_ISLNK(status.st_mode));
  EXPECT_EQ(files_.List(folder_.path()).size(), 4U);
}

TEST_F(PosixFileSystemTest, CanonicalFollowsLinksAsFarAsThePathExists) {
  ASSERT_TRUE(files_.MakeFolder(Path("real")));
  ASSERT_EQ(::symlink("real", Path("link").c_str()), 0);
  const std::string real = files_.Canonical(Path("real"));
  EXPECT_EQ(files_.Canonical(Path("link/x.adr")), real + "/x.adr");
  EXPECT_EQ(files_.Canonical(Path("link/none/x.adr")), real + "/none/x.adr");
}

TEST_F(PosixFileSystemTest, ALinkToNothingDoesNotExist) {
  ASSERT_EQ(::symlink("none", Path("link").c_str()), 0);
  EXPECT_FALSE(files_.Exists(Path("link")));
  EXPECT_TRUE(files_.Remove(Path("link")));
}

TEST_F(PosixFileSystemTest, AFullDiskFailsTheWriteAndIsRemembered) {
  const auto full = files_.Open("/dev/full", OpenMode::kReadWrite);
  ASSERT_NE(full, nullptr);
  EXPECT_FALSE(full->Write(0, AsBytes("x")));
  EXPECT_TRUE(full->write_failed());
}

TEST_F(PosixFileSystemTest, AFileIsNotMadeInAFolderThatIsMissing) {
  EXPECT_EQ(files_.Open(Path("none/a"), OpenMode::kCreateOrOpen), nullptr);
  EXPECT_FALSE(files_.Exists(Path("none")));
}

TEST_F(PosixFileSystemTest, ANewFileHasTheTimeOfTheClock) {
  SystemClock clock;
  const int64_t before = clock.Now();
  const int64_t made = files_.Open(Path("a"), OpenMode::kCreateOrOpen)->ModificationTime();
  // The kernel stamps files with a clock that may be one tick behind.
  EXPECT_GE(made, before - 1);
  EXPECT_LE(made, clock.Now());
}

TEST_F(PosixFileSystemTest, ADescriptorDoesNotReachStartedPrograms) {
  const auto file = files_.Open(Path("a"), OpenMode::kCreateOrOpen);
  ASSERT_NE(file, nullptr);
  const std::string wanted = files_.Canonical(Path("a"));
  const std::string command = "for f in /proc/self/fd/*; do [ \"$(readlink $f)\" = '" + wanted +
                              "' ] && exit 7; done; exit 0";
  EXPECT_EQ(std::system(command.c_str()), 0);
}

TEST_F(PosixFileSystemTest, AFolderThatIsGoneLeavesNothingBehind) {
  std::string path;
  {
    const FreshFolder folder;
    path = folder.path();
    EXPECT_TRUE(files_.IsFolder(path));
    EXPECT_NE(files_.Open(path + "a", OpenMode::kCreateOrOpen), nullptr);
  }
  EXPECT_FALSE(files_.Exists(path));
}

TEST(SystemClockTest, TellsSecondsSince1970) {
  SystemClock clock;
  constexpr int64_t kYear2020 = 1577836800;
  constexpr int64_t kYear2200 = 7258118400;
  EXPECT_GT(clock.Now(), kYear2020);
  EXPECT_LT(clock.Now(), kYear2200);
}

}  // namespace
}  // namespace carnetel
