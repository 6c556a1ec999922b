// Families with one thing wrong, as files of the repository (tests/data/broken, whose script tells
// what each is): opened, healed or refused, and never at the cost of the main file.
#include <gmock/gmock.h>

#include <map>

#include "platform/posix_file_system.h"
#include "storage/family_check.h"
#include "storage/upgrade.h"
#include "tests/storage/store_fixture.h"
#include "tests/support/fresh_folder.h"

namespace carnetel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

const std::string kBroken = std::string(CARNETEL_SOURCE_DIR) + "/tests/data/broken/";

using Files = std::map<std::string, FileBytes>;

class BrokenFamilyTest : public ::testing::Test {
 protected:
  // Copies a case into the folder of this test.
  void Take(const std::string& name) {
    name_ = name;
    for (const std::string& file : files_.List(kBroken + name)) {
      if (!file.starts_with("ESSAI.")) continue;
      const FileBytes bytes = ReadWhole(kBroken + name + '/' + file);
      const auto copy = files_.Open(folder_.path() + file, OpenMode::kCreateOrEmpty);
      ASSERT_NE(copy, nullptr);
      ASSERT_TRUE(copy->Write(0, bytes));
    }
    before_ = Folder();
    ASSERT_FALSE(before_.empty()) << "no such case: " << name;
  }
  FileBytes ReadWhole(const std::string& path) { return ReadStart(files_, path, SIZE_MAX / 2); }
  FileBytes Wanted(const std::string& name, const std::string& file) {
    const std::string path = kBroken + name + '/' + file;
    EXPECT_TRUE(files_.Exists(path)) << path;
    return ReadWhole(path);
  }
  Files Folder() {
    Files found;
    for (const std::string& file : files_.List(folder_.path())) {
      found[file] = ReadWhole(folder_.path() + file);
    }
    return found;
  }
  OpenResult Open() {
    DirectoryOptions options;
    options.path = folder_.path() + "ESSAI";
    Directory directory(DirectoryServices{files_, clock_, progress_}, options);
    const OpenResult result = OpenUpgrading(directory);
    marked = directory.is_open() ? directory.marked_count() : -1;
    count = directory.is_open() ? directory.main().count() : 0;
    return result;
  }
  // What a check finds now, such as "DAN 96".
  std::vector<std::string> Findings() {
    std::vector<std::string> told;
    const FamilyPaths paths(files_, folder_.path() + "ESSAI");
    for (const Finding& finding : CheckFamily(files_, paths, kSte1)) {
      told.push_back(finding.file + ' ' + std::to_string(finding.offset.value_or(0)));
    }
    return told;
  }
  void ExpectUnchanged(const std::string& file) {
    EXPECT_TRUE(SameBytes(before_[file], ReadWhole(folder_.path() + file))) << name_ << ' ' << file;
  }
  // A derived file is what it is in a family without a fault.
  void ExpectSound(const std::string& file) {
    EXPECT_TRUE(SameBytes(Wanted("sound", file), ReadWhole(folder_.path() + file)))
        << name_ << ' ' << file;
  }
  // The address file of a sound family but for marks and saved rows, and what goes with those.
  void ExpectMarksLost() {
    FileBytes expected = Wanted("sound", "ESSAI.ADR");
    StoreLe16(expected, 102, 0);
    StoreLe16(expected, 130, 0);
    for (size_t at = 320; at < expected.size(); at += 16) expected[at + 4] = std::byte{1};
    EXPECT_TRUE(SameBytes(expected, ReadWhole(folder_.path() + "ESSAI.ADR"))) << name_;
    EXPECT_THAT(
        files_.List(folder_.path()),
        UnorderedElementsAre("ESSAI.DAN", "ESSAI.I01", "ESSAI.I02", "ESSAI.ADR", "ESSAI.CRT"));
  }
  void ExpectRefused() {
    EXPECT_EQ(Open(), OpenResult::kNoStore) << name_;
    EXPECT_TRUE(Folder() == before_) << name_ << ": no file may change, come or go";
  }

  int32_t marked = -1;
  uint32_t count = 0;

 private:
  FreshFolder folder_;
  PosixFileSystem files_;
  FakeClock clock_{1'000'000'000};
  SilentProgress progress_;
  std::string name_;
  Files before_;
};

TEST_F(BrokenFamilyTest, Sound) {
  Take("sound");
  EXPECT_THAT(Findings(), IsEmpty());
  for (int opening = 0; opening < 2; ++opening) {
    EXPECT_EQ(Open(), OpenResult::kOpened);
    EXPECT_EQ(count, 4U);
    EXPECT_EQ(marked, 2);
    for (const char* extension : {"DAN", "I01", "I02", "ADR", "CRT", "GRP", "LST"}) {
      ExpectUnchanged(std::string("ESSAI.") + extension);
    }
  }
  EXPECT_THAT(Findings(), IsEmpty());
}

// The partial card stays in the file until the next add writes over it; nothing names it.
TEST_F(BrokenFamilyTest, TruncatedInMidCard) {
  Take("truncated-in-mid-card");
  EXPECT_EQ(Open(), OpenResult::kOpened);
  EXPECT_EQ(count, 3U);
  EXPECT_EQ(marked, 0);
  ExpectUnchanged("ESSAI.DAN");
  EXPECT_EQ(Open(), OpenResult::kOpened);
  ExpectUnchanged("ESSAI.DAN");
  EXPECT_THAT(Findings(), ElementsAre("DAN 3072", "DAN 96"));
}

// The count on the disk stays wrong until the next add or delete.
TEST_F(BrokenFamilyTest, CountWrong) {
  Take("count-wrong");
  EXPECT_EQ(Open(), OpenResult::kOpened);
  EXPECT_EQ(count, 4U);
  EXPECT_EQ(marked, 2);
  for (const char* extension : {"DAN", "I01", "I02", "ADR", "CRT", "GRP", "LST"}) {
    ExpectUnchanged(std::string("ESSAI.") + extension);
  }
  EXPECT_EQ(Open(), OpenResult::kOpened);
  EXPECT_THAT(Findings(), ElementsAre("DAN 96"));
}

TEST_F(BrokenFamilyTest, VersionOlder) {
  Take("version-older");
  EXPECT_THAT(Findings(), ::testing::Contains("DAN 0"));
  EXPECT_EQ(Open(), OpenResult::kOpened);
  EXPECT_EQ(count, 4U);
  EXPECT_EQ(marked, 2);
  for (int opening = 0; opening < 2; ++opening) {
    EXPECT_TRUE(Folder()["ESSAI.DAN"] == Wanted("version-older", "expected.DAN"));
    for (const char* extension : {"I01", "I02", "ADR", "CRT", "GRP", "LST"}) {
      ExpectUnchanged(std::string("ESSAI.") + extension);
    }
    EXPECT_EQ(Open(), OpenResult::kOpened);
  }
  EXPECT_THAT(Findings(), IsEmpty());
}

TEST_F(BrokenFamilyTest, BannerWithoutVersion) {
  Take("banner-without-version");
  ExpectRefused();
  ExpectRefused();
  EXPECT_THAT(Findings(), ElementsAre("DAN 0"));
}

TEST_F(BrokenFamilyTest, IndexMissing) {
  Take("index-missing");
  EXPECT_EQ(Open(), OpenResult::kOpened);
  EXPECT_EQ(marked, 2);
  ExpectSound("ESSAI.I01");
  for (const char* extension : {"DAN", "I02", "ADR", "CRT", "GRP", "LST"}) {
    ExpectUnchanged(std::string("ESSAI.") + extension);
  }
  EXPECT_EQ(Open(), OpenResult::kOpened);
  EXPECT_THAT(Findings(), IsEmpty());
}

TEST_F(BrokenFamilyTest, IndexShort) {
  Take("index-short");
  EXPECT_EQ(Open(), OpenResult::kOpened);
  EXPECT_EQ(marked, 2);
  ExpectSound("ESSAI.I02");
  for (const char* extension : {"DAN", "I01", "ADR", "CRT", "GRP", "LST"}) {
    ExpectUnchanged(std::string("ESSAI.") + extension);
  }
  EXPECT_EQ(Open(), OpenResult::kOpened);
  EXPECT_THAT(Findings(), IsEmpty());
}

// The slot goes at the first opening, and with its entry the marks; the count of the address file
// made anew then tells the second one that the index misses a card.
TEST_F(BrokenFamilyTest, IndexOffsetPastEnd) {
  Take("index-offset-past-end");
  EXPECT_EQ(Open(), OpenResult::kOpened);
  EXPECT_EQ(count, 4U);
  EXPECT_EQ(marked, 0);
  ExpectUnchanged("ESSAI.DAN");
  EXPECT_EQ(Open(), OpenResult::kOpened);
  ExpectUnchanged("ESSAI.DAN");
  ExpectSound("ESSAI.I01");
  ExpectSound("ESSAI.I02");
  ExpectMarksLost();
  EXPECT_THAT(Findings(), IsEmpty());
}

TEST_F(BrokenFamilyTest, AddressStale) {
  Take("address-stale");
  EXPECT_EQ(Open(), OpenResult::kOpened);
  EXPECT_EQ(marked, 0);
  ExpectUnchanged("ESSAI.DAN");
  ExpectSound("ESSAI.I01");
  ExpectSound("ESSAI.I02");
  ExpectSound("ESSAI.CRT");
  ExpectMarksLost();
  EXPECT_EQ(Open(), OpenResult::kOpened);
  EXPECT_THAT(Findings(), IsEmpty());
}

TEST_F(BrokenFamilyTest, AddressOtherVersion) {
  Take("address-other-version");
  EXPECT_EQ(Open(), OpenResult::kOpened);
  EXPECT_EQ(marked, 0);
  for (const char* extension : {"DAN", "I01", "I02", "CRT"}) {
    ExpectUnchanged(std::string("ESSAI.") + extension);
  }
  ExpectMarksLost();
  EXPECT_EQ(Open(), OpenResult::kOpened);
  EXPECT_THAT(Findings(), IsEmpty());
}

TEST_F(BrokenFamilyTest, ZeroBytes) {
  Take("zero-bytes");
  ExpectRefused();
  ExpectRefused();
  EXPECT_THAT(Findings(), ElementsAre("DAN 0"));
}

TEST_F(BrokenFamilyTest, TextFile) {
  Take("text-file");
  ExpectRefused();
  ExpectRefused();
  EXPECT_THAT(Findings(), ElementsAre("DAN 0"));
}

// Each folder of the data has its test above.
TEST_F(BrokenFamilyTest, EveryCaseIsTested) {
  PosixFileSystem files;
  std::vector<std::string> names;
  for (const std::string& name : files.List(kBroken)) {
    if (files.IsFolder(kBroken + name)) names.push_back(name);
  }
  EXPECT_THAT(
      names, UnorderedElementsAre("sound", "truncated-in-mid-card", "count-wrong", "version-older",
                                  "banner-without-version", "index-missing", "index-short",
                                  "index-offset-past-end", "address-stale", "address-other-version",
                                  "zero-bytes", "text-file"));
}

}  // namespace
}  // namespace carnetel
