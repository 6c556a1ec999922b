#include "platform/fault_file_system.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/memory_file_system.h"

namespace carnetel {
namespace {

class FaultFileSystemTest : public ::testing::Test {
 protected:
  FaultFileSystemTest() {
    base_.SetContents("/a", AsBytes("0123456789"));
    file_ = files_.Open("/a", OpenMode::kReadWrite);
  }
  std::string Text(const std::string& path) { return std::string(AsChars(base_.Contents(path))); }

  FakeClock clock_{100};
  MemoryFileSystem base_{clock_};
  FaultFileSystem files_{base_};
  std::unique_ptr<File> file_;
};

TEST_F(FaultFileSystemTest, WithoutAFaultEverythingGoesThrough) {
  EXPECT_TRUE(file_->Write(0, AsBytes("ab")));
  EXPECT_TRUE(file_->Truncate(4));
  EXPECT_TRUE(file_->Sync());
  EXPECT_TRUE(files_.Rename("/a", "/b"));
  EXPECT_EQ(Text("/b"), "ab23");
  EXPECT_TRUE(files_.Remove("/b"));
  EXPECT_FALSE(file_->write_failed());
}

TEST_F(FaultFileSystemTest, OnlyChangingCallsCount) {
  EXPECT_EQ(files_.changes(), 0);  // an open of an existing file changes nothing
  std::byte byte{};
  EXPECT_EQ(file_->Read(0, std::span(&byte, 1)), 1u);
  file_->Sync();
  EXPECT_NE(files_.Open("/a", OpenMode::kCreateOrOpen), nullptr);
  EXPECT_EQ(files_.changes(), 0);
  file_->Write(0, AsBytes("x"));
  EXPECT_EQ(files_.changes(), 1);
  file_->Truncate(1);
  EXPECT_EQ(files_.changes(), 2);
  EXPECT_NE(files_.Open("/new", OpenMode::kCreateOrOpen), nullptr);
  EXPECT_EQ(files_.changes(), 3);
  EXPECT_NE(files_.Open("/a", OpenMode::kCreateOrEmpty), nullptr);
  EXPECT_EQ(files_.changes(), 4);
  files_.Rename("/new", "/newer");
  EXPECT_EQ(files_.changes(), 5);
  files_.Remove("/newer");
  EXPECT_EQ(files_.changes(), 6);
  files_.MakeFolder("/folder");
  files_.MakeFolder("/folder");
  EXPECT_EQ(files_.changes(), 7);
  file_->SetModificationTime(5);
  EXPECT_EQ(files_.changes(), 8);
}

TEST_F(FaultFileSystemTest, AStoppedDiskChangesNothingMoreAndIsStillRead) {
  files_.StopAfter(1);
  EXPECT_TRUE(file_->Write(0, AsBytes("A")));
  EXPECT_FALSE(file_->write_failed());
  EXPECT_FALSE(file_->Write(1, AsBytes("B")));
  EXPECT_TRUE(file_->write_failed());
  EXPECT_FALSE(file_->Truncate(0));
  EXPECT_FALSE(file_->Sync());
  EXPECT_FALSE(file_->SetModificationTime(5));
  EXPECT_FALSE(files_.Rename("/a", "/b"));
  EXPECT_FALSE(files_.Remove("/a"));
  EXPECT_FALSE(files_.MakeFolder("/folder"));
  EXPECT_EQ(files_.Open("/new", OpenMode::kCreateOrOpen), nullptr);
  EXPECT_EQ(files_.Open("/a", OpenMode::kCreateOrEmpty), nullptr);
  EXPECT_EQ(AsChars(ReadStart(files_, "/a", 100)), "A123456789");
  EXPECT_EQ(file_->ModificationTime(), 100);
  EXPECT_FALSE(files_.Exists("/new"));
  EXPECT_FALSE(files_.Exists("/folder"));
}

TEST_F(FaultFileSystemTest, ADiskCanBeStoppedAtOnce) {
  files_.StopAfter(0);
  EXPECT_FALSE(file_->Write(0, AsBytes("A")));
  EXPECT_EQ(Text("/a"), "0123456789");
}

TEST_F(FaultFileSystemTest, ATornWriteLeavesItsFirstBytesAndStopsTheDisk) {
  files_.TearWrite(2, 3);
  EXPECT_TRUE(file_->Write(0, AsBytes("AB")));
  EXPECT_TRUE(file_->Truncate(8));  // counts as a change, not as a write
  EXPECT_FALSE(file_->Write(2, AsBytes("CDEFG")));
  EXPECT_TRUE(file_->write_failed());
  EXPECT_FALSE(file_->Write(0, AsBytes("Z")));
  EXPECT_FALSE(files_.Remove("/a"));
  EXPECT_EQ(Text("/a"), "ABCDE567");
}

TEST_F(FaultFileSystemTest, ATornWriteMayLeaveNothing) {
  files_.TearWrite(1, 0);
  EXPECT_FALSE(file_->Write(0, AsBytes("AB")));
  EXPECT_EQ(Text("/a"), "0123456789");
}

TEST_F(FaultFileSystemTest, OneWriteCanFailAlone) {
  files_.FailWrite(2);
  EXPECT_TRUE(file_->Write(0, AsBytes("AB")));
  EXPECT_TRUE(file_->Truncate(8));
  EXPECT_FALSE(file_->Write(2, AsBytes("CD")));
  EXPECT_TRUE(file_->write_failed());
  EXPECT_TRUE(file_->Write(4, AsBytes("EF")));
  EXPECT_EQ(Text("/a"), "AB23EF67");
}

TEST_F(FaultFileSystemTest, AFullDiskRefusesGrowthAlone) {
  files_.FillDisk();
  EXPECT_TRUE(file_->Write(8, AsBytes("XY")));
  EXPECT_FALSE(file_->write_failed());
  EXPECT_FALSE(file_->Write(9, AsBytes("ZZ")));
  EXPECT_TRUE(file_->write_failed());
  EXPECT_FALSE(file_->Truncate(11));
  EXPECT_EQ(Text("/a"), "01234567XY");
  EXPECT_TRUE(file_->Truncate(5));
  EXPECT_TRUE(files_.Rename("/a", "/b"));
  EXPECT_EQ(Text("/b"), "01234");
}

TEST_F(FaultFileSystemTest, AHealedDiskWorksButFilesRemember) {
  files_.StopAfter(0);
  EXPECT_FALSE(file_->Write(0, AsBytes("A")));
  files_.Heal();
  EXPECT_TRUE(file_->Write(0, AsBytes("B")));
  EXPECT_TRUE(file_->write_failed());
  EXPECT_EQ(Text("/a"), "B123456789");
  EXPECT_EQ(files_.changes(), 2);
}

}  // namespace
}  // namespace carnetel
