// An upgrade that is cut short, on a full disk or on one that does not give a card back: the old
// main file is there whole or the new one is.
#include <gmock/gmock.h>

#include "platform/fault_file_system.h"
#include "storage/upgrade.h"
#include "tests/storage/family_check.h"
#include "tests/storage/older_file.h"

namespace carnetel {
namespace {

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

const std::string kMain = "/carnets/ESSAI.DAN";
const std::string kTemporary = "/carnets/CARNDAN.TMP";
// Cards for three writes of the new file.
constexpr int kCards = 200;
// Byte counts of torn writes: inside the banner, a header, a card, the second buffer.
constexpr size_t kKeptBytes[] = {1, 97, 1000, 70000};

// Files that cannot be read beyond a position or renamed, over a file system that works. It notes
// what happens to them, in order.
class WornFileSystem : public FileSystem {
 public:
  explicit WornFileSystem(MemoryFileSystem& base) : base_(base) {}

  std::unique_ptr<File> Open(const std::string& path, OpenMode mode) override {
    std::unique_ptr<File> file = base_.Open(path, mode);
    if (file == nullptr) return nullptr;
    return std::make_unique<WornFile>(*this, std::move(file));
  }
  bool Exists(const std::string& path) override { return base_.Exists(path); }
  bool IsFolder(const std::string& path) override { return base_.IsFolder(path); }
  bool Remove(const std::string& path) override { return base_.Remove(path); }
  bool Rename(const std::string& from, const std::string& to) override {
    events.push_back("rename");
    return !refuses_rename && base_.Rename(from, to);
  }
  bool MakeFolder(const std::string& path) override { return base_.MakeFolder(path); }
  std::vector<std::string> List(const std::string& folder) override { return base_.List(folder); }
  std::string Canonical(const std::string& path) override { return base_.Canonical(path); }

  uint64_t readable = UINT64_MAX;
  bool refuses_rename = false;
  std::vector<std::string> events;

 private:
  class WornFile : public File {
   public:
    WornFile(WornFileSystem& owner, std::unique_ptr<File> file)
        : owner_(owner), file_(std::move(file)) {}
    size_t Read(uint64_t position, ByteSpan into) override {
      const uint64_t left = owner_.readable > position ? owner_.readable - position : 0;
      return file_->Read(position, into.first(std::min<size_t>(into.size(), left)));
    }
    uint64_t Size() override { return file_->Size(); }
    bool Write(uint64_t position, ByteView bytes) override {
      owner_.events.push_back("write");
      return file_->Write(position, bytes);
    }
    bool Truncate(uint64_t size) override { return file_->Truncate(size); }
    bool Sync() override {
      owner_.events.push_back("sync");
      return file_->Sync();
    }
    int64_t ModificationTime() override { return file_->ModificationTime(); }
    bool SetModificationTime(int64_t seconds) override {
      return file_->SetModificationTime(seconds);
    }

   private:
    WornFileSystem& owner_;
    std::unique_ptr<File> file_;
  };

  MemoryFileSystem& base_;
};

class UpgradeFailureTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::vector<FileBytes> cards;
    for (int number = 0; number < kCards; ++number) {
      cards.push_back(OldCard({{10, "NOM" + std::to_string(number)}, {26, std::string(99, 'n')}}));
    }
    old_ = OldMainFile(cards);
    files_.SetContents(kMain, old_);
    MemoryFileSystem copy = files_.Snapshot();
    FaultFileSystem counting(copy);
    ASSERT_TRUE(UpgradeMainFile(counting, kMain));
    changes_ = counting.changes();
    new_ = copy.Contents(kMain);
    ASSERT_EQ(new_.size(), old_.size());
    ASSERT_FALSE(SameBytes(old_, new_));
  }
  // A second attempt, on a disk that works again, ends as the first one would have.
  void ExpectUpgradesNow(MemoryFileSystem& files) {
    DirectoryOptions options;
    options.path = "/carnets/ESSAI";
    Directory directory(DirectoryServices{files, clock_, progress_}, options);
    EXPECT_EQ(OpenUpgrading(directory), OpenResult::kOpened);
    directory.CloseDirectory();
    EXPECT_TRUE(SameBytes(new_, files.Contents(kMain)));
    EXPECT_THAT(files.List("/carnets"), UnorderedElementsAre("ESSAI.DAN", "ESSAI.I01", "ESSAI.I02",
                                                             "ESSAI.ADR", "ESSAI.CRT"));
    EXPECT_EQ(FamilyFault(ReadFamily(files, "/carnets/ESSAI")), "");
  }
  // After a failure that the program lives through.
  void ExpectUntouched() {
    EXPECT_TRUE(SameBytes(old_, files_.Contents(kMain)));
    EXPECT_THAT(files_.List("/carnets"), ElementsAre("ESSAI.DAN"));
    ExpectUpgradesNow(files_);
  }

  FakeClock clock_{1'000'000'000};
  MemoryFileSystem files_{clock_};
  SilentProgress progress_;
  FileBytes old_;
  FileBytes new_;
  int changes_ = 0;
};

TEST_F(UpgradeFailureTest, StoppedAtEveryChange) {
  ASSERT_GE(changes_, 5);
  for (int change = 0; change <= changes_; ++change) {
    MemoryFileSystem files = files_.Snapshot();
    FaultFileSystem faulty(files);
    faulty.StopAfter(change);
    EXPECT_EQ(UpgradeMainFile(faulty, kMain), change == changes_) << change;
    EXPECT_TRUE(SameBytes(change == changes_ ? new_ : old_, files.Contents(kMain))) << change;
    ExpectUpgradesNow(files);
  }
}

TEST_F(UpgradeFailureTest, TornInEveryWrite) {
  for (int write = 1; write <= changes_ - 2; ++write) {
    for (const size_t kept : kKeptBytes) {
      MemoryFileSystem files = files_.Snapshot();
      FaultFileSystem faulty(files);
      faulty.TearWrite(write, kept);
      EXPECT_FALSE(UpgradeMainFile(faulty, kMain)) << write << " at " << kept;
      EXPECT_TRUE(SameBytes(old_, files.Contents(kMain))) << write << " at " << kept;
      ExpectUpgradesNow(files);
    }
  }
}

TEST_F(UpgradeFailureTest, AFullDiskLeavesNothingBehind) {
  FaultFileSystem faulty(files_);
  faulty.FillDisk();
  EXPECT_FALSE(UpgradeMainFile(faulty, kMain));
  ExpectUntouched();
}

TEST_F(UpgradeFailureTest, AnOpeningOnAFullDiskIsRefused) {
  FaultFileSystem faulty(files_);
  faulty.FillDisk();
  DirectoryOptions options;
  options.path = "/carnets/ESSAI";
  bool upgraded = false;
  {
    Directory directory(DirectoryServices{faulty, clock_, progress_}, options);
    EXPECT_EQ(OpenUpgrading(directory, &upgraded), OpenResult::kNoStore);
    EXPECT_FALSE(directory.is_open());
  }
  ExpectUntouched();
}

TEST_F(UpgradeFailureTest, ARenameThatFailsLeavesNothingBehind) {
  WornFileSystem worn(files_);
  worn.refuses_rename = true;
  EXPECT_FALSE(UpgradeMainFile(worn, kMain));
  ExpectUntouched();
}

// A card that cannot be read must not be replaced by an empty one.
TEST_F(UpgradeFailureTest, ACardThatCannotBeReadStopsTheUpgrade) {
  for (const uint64_t readable : {uint64_t{768 * 100 + 1}, uint64_t{768 * 100}, uint64_t{0}}) {
    WornFileSystem worn(files_);
    worn.readable = readable;
    EXPECT_FALSE(UpgradeMainFile(worn, kMain)) << readable;
    EXPECT_TRUE(SameBytes(old_, files_.Contents(kMain))) << readable;
    EXPECT_FALSE(files_.Exists(kTemporary)) << readable;
  }
  ExpectUntouched();
}

TEST_F(UpgradeFailureTest, WhatAnEarlierAttemptLeftIsReplaced) {
  files_.SetContents(kTemporary, FileBytes(500'000, std::byte{'x'}));
  ExpectUpgradesNow(files_);
}

// A power cut behind the rename must not find a new file that is still in memory.
TEST_F(UpgradeFailureTest, TheNewFileIsOnTheDiskBeforeItTakesThePlace) {
  WornFileSystem worn(files_);
  EXPECT_TRUE(UpgradeMainFile(worn, kMain));
  EXPECT_THAT(worn.events, ElementsAre("write", "write", "write", "sync", "rename"));
}

}  // namespace
}  // namespace carnetel
