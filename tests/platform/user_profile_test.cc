#include "platform/user_profile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "platform/fault_file_system.h"
#include "platform/memory_file_system.h"
#include "platform/posix_file_system.h"
#include "tests/support/fresh_folder.h"

namespace carnetel {
namespace {

using ::testing::UnorderedElementsAre;

constexpr char kPath[] = "/home/config/profile.ini";
constexpr char kOwn[] = "PhoneBook-DROV";

class UserProfileTest : public ::testing::Test {
 protected:
  void Hold(std::string_view text) { files_.SetContents(kPath, AsBytes(text)); }
  std::string Held() { return std::string(AsChars(files_.Contents(kPath))); }
  std::string Own(const std::string& key) { return profile_.Text(kOwn, key, "<default>"); }

  FakeClock clock_{100};
  MemoryFileSystem files_{clock_};
  UserProfile profile_{files_, kPath};
};

TEST_F(UserProfileTest, AMissingFileSectionOrKeyGivesTheDefault) {
  EXPECT_EQ(Own("File1"), "<default>");
  Hold("[ApplDROV]\nFile1=other\n");
  EXPECT_EQ(Own("File1"), "<default>");
  Hold("File1=before any section\n[PhoneBook-DROV]\nFile2=x\n");
  EXPECT_EQ(Own("File1"), "<default>");
}

TEST_F(UserProfileTest, SectionsAndKeysAreFoundWithoutRegardToCase) {
  Hold("[appldrov]\nFAXAPPL=fax\n");
  EXPECT_EQ(profile_.Text("ApplDROV", "FaxAppl", ""), "fax");
  EXPECT_EQ(profile_.Text("ApplDrov", "faxappl", ""), "fax");
}

TEST_F(UserProfileTest, BlanksAroundNamesAndValuesDoNotCount) {
  Hold("  [ PhoneBook-DROV ]  \n\t File1 \t=  &1 /a b/x.DAN \t\n");
  EXPECT_EQ(Own("File1"), "&1 /a b/x.DAN");
}

TEST_F(UserProfileTest, OnePairOfQuotesIsTakenOff) {
  Hold("[PhoneBook-DROV]\na=\"  x \"\nb=\"\"q\"\"\nc='y'\nd=\"z\ne=\"\nf=\"z'\n");
  EXPECT_EQ(Own("a"), "  x ");
  EXPECT_EQ(Own("b"), "\"q\"");
  EXPECT_EQ(Own("c"), "y");
  EXPECT_EQ(Own("d"), "\"z");
  EXPECT_EQ(Own("e"), "\"");
  EXPECT_EQ(Own("f"), "\"z'");
  EXPECT_EQ(profile_.Text(kOwn, "none", "\"kept\""), "\"kept\"");
}

TEST_F(UserProfileTest, AnEmptyValueIsATextButNoNumber) {
  Hold("[PhoneBook-DROV]\nFile1=\nBalloons=  \n");
  EXPECT_EQ(Own("File1"), "");
  EXPECT_EQ(profile_.Int(kOwn, "Balloons", 1), 1);
}

TEST_F(UserProfileTest, CommentsAndTheSignsOfCommentsInValues) {
  Hold("[PhoneBook-DROV]\n;a=1\n # b=2\nc=3 ; not a comment=x\n");
  EXPECT_EQ(Own("a"), "<default>");
  EXPECT_EQ(Own("b"), "<default>");
  EXPECT_EQ(Own("c"), "3 ; not a comment=x");
}

TEST_F(UserProfileTest, NumbersAreReadFromTheStartOfTheText) {
  Hold(
      "[PhoneBook-DROV]\na=12\nb=-7mm\nc=+5\nd=yes\ne=-\nf=--3\ng=99999999999999999999\n"
      "h=-3000000000\ni=0x10\nj=\"4\"\n");
  const auto number = [&](const char* key) { return profile_.Int(kOwn, key, 77); };
  EXPECT_EQ(number("a"), 12);
  EXPECT_EQ(number("b"), -7);
  EXPECT_EQ(number("c"), 5);
  EXPECT_EQ(number("d"), 0);
  EXPECT_EQ(number("e"), 0);
  EXPECT_EQ(number("f"), 0);
  EXPECT_EQ(number("g"), 2147483647);
  EXPECT_EQ(number("h"), -2147483647 - 1);
  EXPECT_EQ(number("i"), 0);
  EXPECT_EQ(number("j"), 4);
  EXPECT_EQ(number("none"), 77);
}

TEST_F(UserProfileTest, TheFirstOfEqualKeysCountsForReadingAndWriting) {
  Hold("[PhoneBook-DROV]\nIdindex=1\nIdindex=2\n");
  EXPECT_EQ(Own("Idindex"), "1");
  EXPECT_TRUE(profile_.Write(kOwn, "Idindex", "10"));
  EXPECT_EQ(Held(), "[PhoneBook-DROV]\nIdindex=10\nIdindex=2\n");
}

TEST_F(UserProfileTest, AWriteMakesTheFileAndItsFolder) {
  EXPECT_TRUE(profile_.Write(kOwn, "File1", "&1 /x.DAN"));
  EXPECT_TRUE(profile_.WriteInt(kOwn, "Idindex", -10));
  EXPECT_EQ(Held(), "[PhoneBook-DROV]\nFile1=&1 /x.DAN\nIdindex=-10\n");
}

TEST_F(UserProfileTest, AWriteChangesOneValueAndKeepsAllElse) {
  Hold(
      "\xEF\xBB\xBF; h\xC3\xA9 \r\n\r\n[Other]\r\n idindex=9\r\nnonsense\r\n\r\n\r\n"
      "[phonebook-drov]\r\n# c\r\n  IDINDEX =  0  \r\n[oops\r\nz=\"1\"");
  EXPECT_TRUE(profile_.Write(kOwn, "Idindex", "10"));
  EXPECT_EQ(Held(),
            "\xEF\xBB\xBF; h\xC3\xA9 \r\n\r\n[Other]\r\n idindex=9\r\nnonsense\r\n\r\n\r\n"
            "[phonebook-drov]\r\n# c\r\n  IDINDEX =  10  \r\n[oops\r\nz=\"1\"");
  EXPECT_EQ(Own("Idindex"), "10");
  EXPECT_EQ(Own("z"), "1");
}

TEST_F(UserProfileTest, ANewKeyGoesBehindTheLastOfItsSection) {
  Hold("[PhoneBook-DROV]\r\na=1\r\n\r\n; about the other\r\n[Other]\r\nb=2\r\n");
  EXPECT_TRUE(profile_.Write(kOwn, "c", "3"));
  EXPECT_EQ(Held(),
            "[PhoneBook-DROV]\r\na=1\r\nc=3\r\n\r\n; about the other\r\n[Other]\r\nb=2\r\n");
}

TEST_F(UserProfileTest, ANewKeyGoesInAnEmptySectionAndAtAnUnfinishedEnd) {
  Hold("[PhoneBook-DROV]\n[Last]\nz=1");
  EXPECT_TRUE(profile_.Write(kOwn, "a", "1"));
  EXPECT_TRUE(profile_.Write("Last", "y", "2"));
  EXPECT_EQ(Held(), "[PhoneBook-DROV]\na=1\n[Last]\nz=1\ny=2");
}

TEST_F(UserProfileTest, ANewSectionGoesToTheEndBehindABlankLine) {
  Hold("[Other]\r\nz=1");
  EXPECT_TRUE(profile_.Write(kOwn, "a", "1"));
  EXPECT_EQ(Held(), "[Other]\r\nz=1\r\n\r\n[PhoneBook-DROV]\r\na=1\r\n");
  Hold("[Other]\n");
  EXPECT_TRUE(profile_.Write(kOwn, "a", "1"));
  EXPECT_EQ(Held(), "[Other]\n\n[PhoneBook-DROV]\na=1\n");
}

TEST_F(UserProfileTest, OldLineEndsAreReadAndKept) {
  Hold("[PhoneBook-DROV]\ra=1\r");
  EXPECT_EQ(Own("a"), "1");
  EXPECT_TRUE(profile_.Write(kOwn, "b", "2"));
  EXPECT_EQ(Held(), "[PhoneBook-DROV]\ra=1\rb=2\r");
}

TEST_F(UserProfileTest, AnEmptyValueIsFilledAndAValueEmptied) {
  Hold("[PhoneBook-DROV]\na=\nb=2\n");
  EXPECT_TRUE(profile_.Write(kOwn, "a", "1"));
  EXPECT_TRUE(profile_.Write(kOwn, "b", ""));
  EXPECT_EQ(Held(), "[PhoneBook-DROV]\na=1\nb=\n");
}

TEST_F(UserProfileTest, WithoutASectionDefaultsAreReadAndNothingIsWritten) {
  Hold("a=1\n[]\na=2\n");
  EXPECT_EQ(profile_.Text("", "a", "<default>"), "<default>");
  EXPECT_EQ(profile_.Int("", "a", 5), 5);
  EXPECT_TRUE(profile_.Write("", "a", "3"));
  EXPECT_TRUE(profile_.WriteInt("", "a", 3));
  EXPECT_EQ(Held(), "a=1\n[]\na=2\n");
}

TEST_F(UserProfileTest, AnEmptyPathReadsDefaultsAndRefusesWrites) {
  UserProfile nowhere(files_, "");
  EXPECT_EQ(nowhere.Int(kOwn, "a", 5), 5);
  EXPECT_FALSE(nowhere.Write(kOwn, "a", "1"));
  EXPECT_TRUE(files_.List("/").empty());
}

TEST_F(UserProfileTest, WhatOthersWroteMeanwhileIsKept) {
  EXPECT_TRUE(profile_.Write(kOwn, "a", "1"));
  Hold("[PhoneBook-DROV]\na=2\n[New]\nb=3\n");
  EXPECT_EQ(Own("a"), "2");
  EXPECT_TRUE(profile_.Write(kOwn, "c", "4"));
  EXPECT_EQ(Held(), "[PhoneBook-DROV]\na=2\nc=4\n[New]\nb=3\n");
}

TEST_F(UserProfileTest, AValueThatStandsAlreadyIsNotWrittenAgain) {
  Hold("[PhoneBook-DROV]\na = 1\n");
  clock_.Set(200);
  EXPECT_TRUE(profile_.WriteInt(kOwn, "a", 1));
  EXPECT_EQ(files_.Open(kPath, OpenMode::kRead)->ModificationTime(), 100);
}

TEST_F(UserProfileTest, AValueWithALineEndIsRefused) {
  EXPECT_FALSE(profile_.Write(kOwn, "a", "1\n[ApplDROV]"));
  EXPECT_FALSE(profile_.Write(kOwn, "a", "1\r"));
  EXPECT_FALSE(profile_.Write(kOwn, "a", std::string_view("1\0", 2)));
  EXPECT_FALSE(files_.Exists(kPath));
}

TEST_F(UserProfileTest, AFailureAtAnyPointLeavesTheOldFileWhole) {
  const std::string before = "[PhoneBook-DROV]\na=1\n";
  const std::string after = "[PhoneBook-DROV]\na=2\n";
  int allowed = 0;
  for (bool written = false; !written; ++allowed) {
    Hold(before);
    FaultFileSystem fault(files_);
    fault.StopAfter(allowed);
    written = UserProfile(fault, kPath).Write(kOwn, "a", "2");
    EXPECT_EQ(Held(), written ? after : before) << "after " << allowed << " changes";
  }
  EXPECT_EQ(allowed, 4);  // creation, write, rename; the fourth round, of 3 changes, succeeds
}

TEST_F(UserProfileTest, AFullDiskLeavesTheOldFileAndNoOther) {
  Hold("[PhoneBook-DROV]\na=1\n");
  FaultFileSystem fault(files_);
  fault.FillDisk();
  EXPECT_FALSE(UserProfile(fault, kPath).Write(kOwn, "a", "2"));
  EXPECT_EQ(Held(), "[PhoneBook-DROV]\na=1\n");
  EXPECT_THAT(files_.List("/home/config"), UnorderedElementsAre("profile.ini"));
}

TEST_F(UserProfileTest, AFolderInItsPlaceIsNotReplaced) {
  ASSERT_TRUE(files_.MakeFolder(kPath));
  EXPECT_EQ(Own("a"), "<default>");
  EXPECT_FALSE(profile_.Write(kOwn, "a", "1"));
  EXPECT_TRUE(files_.IsFolder(kPath));
}

TEST(UserProfileOnDisk, ALinkedProfileIsReplacedBehindTheLink) {
  const FreshFolder folder;
  PosixFileSystem files;
  ASSERT_TRUE(files.MakeFolder(folder.path() + "dotfiles"));
  const std::string real = folder.path() + "dotfiles/profile.ini";
  const std::string link = folder.path() + "profile.ini";
  ASSERT_TRUE(files.Open(real, OpenMode::kCreateOrEmpty)->Write(0, AsBytes("; mine\n")));
  ASSERT_EQ(::symlink("dotfiles/profile.ini", link.c_str()), 0);
  EXPECT_TRUE(UserProfile(files, link).Write("ApplDROV", "TDF", "/opt"));
  EXPECT_EQ(AsChars(ReadStart(files, real, 100)), "; mine\n\n[ApplDROV]\nTDF=/opt\n");
  EXPECT_THAT(files.List(folder.path() + "dotfiles"), UnorderedElementsAre("profile.ini"));
  char target[100];
  EXPECT_GT(::readlink(link.c_str(), target, sizeof target), 0);
}

}  // namespace
}  // namespace carnetel
