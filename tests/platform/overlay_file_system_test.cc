#include "platform/overlay_file_system.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace carnetel {
namespace {

using ::testing::UnorderedElementsAre;

class OverlayFileSystemTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"/f/a", "/f/b", "/f/c"}) base_.SetContents(name, AsBytes("old"));
  }
  void ExpectBaseAsItWas() {
    EXPECT_THAT(base_.List("/f"), UnorderedElementsAre("a", "b", "c"));
    for (const char* name : {"/f/a", "/f/b", "/f/c"}) EXPECT_EQ(TextIn(base_, name), "old");
  }
  static std::string TextIn(FileSystem& files, const std::string& path) {
    return std::string(AsChars(ReadStart(files, path, 100)));
  }

  FakeClock clock_{1'000'000};
  MemoryFileSystem base_{clock_};
  FakeClock later_{2'000'000};
  OverlayFileSystem view_{base_, later_};
};

TEST_F(OverlayFileSystemTest, ShowsTheFilesBelow) {
  EXPECT_EQ(TextIn(view_, "/f/a"), "old");
  EXPECT_TRUE(view_.Exists("/f/a"));
  EXPECT_FALSE(view_.Exists("/f/d"));
  EXPECT_TRUE(view_.IsFolder("/f"));
  EXPECT_THAT(view_.List("/f"), UnorderedElementsAre("a", "b", "c"));
  EXPECT_EQ(view_.Open("/f/d", OpenMode::kReadWrite), nullptr);
}

TEST_F(OverlayFileSystemTest, KeepsEveryChangeToItself) {
  EXPECT_TRUE(view_.Open("/f/a", OpenMode::kReadWrite)->Write(1, AsBytes("new")));
  EXPECT_TRUE(view_.Open("/f/d", OpenMode::kCreateOrOpen)->Write(0, AsBytes("made")));
  EXPECT_TRUE(view_.Remove("/f/b"));
  EXPECT_TRUE(view_.Rename("/f/c", "/f/e"));
  EXPECT_EQ(TextIn(view_, "/f/a"), "onew");
  EXPECT_EQ(TextIn(view_, "/f/d"), "made");
  EXPECT_EQ(TextIn(view_, "/f/e"), "old");
  EXPECT_FALSE(view_.Exists("/f/b"));
  EXPECT_FALSE(view_.Remove("/f/b"));
  EXPECT_THAT(view_.List("/f"), UnorderedElementsAre("a", "d", "e"));
  ExpectBaseAsItWas();
}

TEST_F(OverlayFileSystemTest, AFileThatIsEmptiedOrMadeAgainIsItsOwn) {
  EXPECT_EQ(view_.Open("/f/a", OpenMode::kCreateOrEmpty)->Size(), 0U);
  view_.Remove("/f/b");
  EXPECT_EQ(view_.Open("/f/b", OpenMode::kCreateOrOpen)->Size(), 0U);
  EXPECT_TRUE(view_.Rename("/f/c", "/f/a"));
  EXPECT_EQ(TextIn(view_, "/f/a"), "old");
  EXPECT_FALSE(view_.Exists("/f/c"));
  ExpectBaseAsItWas();
}

TEST_F(OverlayFileSystemTest, ACopyKeepsItsTimeUntilItIsWritten) {
  const std::unique_ptr<File> file = view_.Open("/f/a", OpenMode::kReadWrite);
  EXPECT_EQ(file->ModificationTime(), 1'000'000);
  file->Write(0, AsBytes("x"));
  EXPECT_EQ(file->ModificationTime(), 2'000'000);
}

TEST_F(OverlayFileSystemTest, NewFoldersAreItsOwnAndMissingOnesHoldNothing) {
  EXPECT_EQ(view_.Open("/g/a", OpenMode::kCreateOrOpen), nullptr);
  EXPECT_TRUE(view_.MakeFolder("/g"));
  EXPECT_TRUE(view_.Exists("/g"));
  EXPECT_NE(view_.Open("/g/a", OpenMode::kCreateOrOpen), nullptr);
  EXPECT_FALSE(view_.MakeFolder("/f/a/b"));
  EXPECT_FALSE(base_.IsFolder("/g"));
}

}  // namespace
}  // namespace carnetel
