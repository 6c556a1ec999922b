#include "platform/memory_file_system.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace carnetel {
namespace {

using ::testing::UnorderedElementsAre;

class MemoryFileSystemTest : public ::testing::Test {
 protected:
  FakeClock clock_{100};
  MemoryFileSystem files_{clock_};
};

TEST_F(MemoryFileSystemTest, TimesComeFromTheClockAtEachChange) {
  const auto file = files_.Open("/a", OpenMode::kCreateOrOpen);
  EXPECT_EQ(file->ModificationTime(), 100);
  clock_.Set(200);
  EXPECT_EQ(file->ModificationTime(), 100);
  file->Write(0, AsBytes("x"));
  EXPECT_EQ(file->ModificationTime(), 200);
  clock_.Advance(5);
  file->Truncate(0);
  EXPECT_EQ(file->ModificationTime(), 205);
  clock_.Advance(5);
  files_.SetContents("/a", AsBytes("y"));
  EXPECT_EQ(file->ModificationTime(), 210);
}

TEST_F(MemoryFileSystemTest, EveryCallIsCounted) {
  const auto file = files_.Open("/a", OpenMode::kCreateOrOpen);
  EXPECT_EQ(files_.Open("/none", OpenMode::kRead), nullptr);
  std::byte byte{};
  EXPECT_EQ(file->Read(0, std::span(&byte, 1)), 0u);
  file->Write(0, AsBytes("abc"));
  file->Write(0, AsBytes("d"));
  file->Write(0, AsBytes("e"));
  file->Truncate(1);
  file->Sync();
  file->Sync();
  EXPECT_EQ(files_.counts().opens, 2);
  EXPECT_EQ(files_.counts().reads, 1);
  EXPECT_EQ(files_.counts().writes, 3);
  EXPECT_EQ(files_.counts().truncates, 1);
  EXPECT_EQ(files_.counts().syncs, 2);
  files_.ResetCounts();
  EXPECT_EQ(files_.counts().writes, 0);
}

TEST_F(MemoryFileSystemTest, ContentsAreSetAndTakenPastTheCounts) {
  files_.SetContents("/fam/x.dan", AsBytes("abc"));
  EXPECT_EQ(AsChars(files_.Contents("/fam//x.dan")), "abc");
  EXPECT_TRUE(files_.Contents("/none").empty());
  EXPECT_EQ(files_.counts().opens, 0);
  EXPECT_EQ(files_.counts().writes, 0);
}

TEST_F(MemoryFileSystemTest, AFileMakesItsFoldersWhichStay) {
  files_.SetContents("/one/two/a", {});
  EXPECT_TRUE(files_.IsFolder("/one"));
  EXPECT_TRUE(files_.IsFolder("/one/two/"));
  EXPECT_THAT(files_.List("/"), UnorderedElementsAre("one"));
  EXPECT_TRUE(files_.Remove("/one/two/a"));
  EXPECT_TRUE(files_.IsFolder("/one/two"));
  EXPECT_FALSE(files_.IsFolder("/on"));
}

TEST_F(MemoryFileSystemTest, ASnapshotIsOnItsOwn) {
  files_.SetContents("/a", AsBytes("before"));
  ASSERT_TRUE(files_.MakeFolder("/empty"));
  const auto file = files_.Open("/a", OpenMode::kReadWrite);
  MemoryFileSystem copy = files_.Snapshot();
  file->Write(0, AsBytes("AFTER!"));
  files_.SetContents("/b", AsBytes("new"));
  EXPECT_EQ(AsChars(copy.Contents("/a")), "before");
  EXPECT_FALSE(copy.Exists("/b"));
  EXPECT_TRUE(copy.IsFolder("/empty"));
  EXPECT_EQ(copy.counts().opens, 0);
  copy.SetContents("/a", AsBytes("copy"));
  EXPECT_EQ(AsChars(files_.Contents("/a")), "AFTER!");
}

TEST_F(MemoryFileSystemTest, ASnapshotKeepsTheTimes) {
  files_.SetContents("/a", AsBytes("x"));
  clock_.Set(500);
  MemoryFileSystem copy(files_);
  EXPECT_EQ(copy.Open("/a", OpenMode::kRead)->ModificationTime(), 100);
}

TEST_F(MemoryFileSystemTest, AWildPositionFailsAsOnAFullDisk) {
  const auto file = files_.Open("/a", OpenMode::kCreateOrOpen);
  EXPECT_FALSE(file->Write(0xFFFFFFFFFFFFFFF0, AsBytes("x")));
  EXPECT_TRUE(file->write_failed());
  EXPECT_FALSE(file->Truncate(uint64_t{1} << 40));
  EXPECT_EQ(file->Size(), 0u);
}

TEST_F(MemoryFileSystemTest, RelativePathsStartAtTheRoot) {
  files_.SetContents("x.dan", AsBytes("abc"));
  EXPECT_EQ(AsChars(files_.Contents("/x.dan")), "abc");
  EXPECT_THAT(files_.List("."), UnorderedElementsAre("x.dan"));
  EXPECT_EQ(FindAnyCase(files_, "X.DAN"), "x.dan");
}

}  // namespace
}  // namespace carnetel
