// What becomes of the derived files when a main file is upgraded: they stay where they are and are
// judged as at any opening.
#include <gmock/gmock.h>

#include "storage/upgrade.h"
#include "tests/storage/family_check.h"
#include "tests/storage/older_file.h"

namespace carnetel {
namespace {

constexpr uint32_t kOldStamp = 0x2F000000;

class UpgradeFamilyTest : public StoreFixture {
 protected:
  // A family whose main file is of an older version; ALPHA and TANGO are marked.
  void SetUp() override {
    Open();
    Add(MakeCard({{kSte1, "TANGO"}, {kNom, "CAMUS"}, {kFax, "2"}}), true);
    Add(MakeCard({{kSte1, "ALPHA"}}), true);
    Add(MakeCard({{kSte1, "MIKE"}, {kNom, "HUGO"}}));
    Close();
    for (const std::string_view extension : {".GRP", ".CRT", ".LST"}) {
      files.SetContents(Path(extension), AsBytes("kept"));
    }
    files.SetContents(Path(".DAN"), OldMainFile({OldCard({{0, "TANGO"}, {10, "CAMUS"}, {22, "2"}}),
                                                 OldCard({{0, "ALPHA"}, {8, "ZOLA"}}),
                                                 OldCard({{0, "MIKE"}, {10, "HUGO"}})}));
  }
  void OpenOld() {
    DirectoryOptions options;
    options.path = kStem;
    Directory opened(DirectoryServices{files, clock, progress}, options);
    ASSERT_EQ(OpenUpgrading(opened), OpenResult::kOpened);
    marked = opened.marked_count();
    CardRecord card;
    ASSERT_TRUE(opened.main().ReadCard(CardOffset(2), card));
    EXPECT_EQ(card.FieldText(kNom).bytes(), "ZOLA");
  }
  // The surname of ALPHA was in the title field, so its slot has the company for a key.
  static FileBytes OldIndex2() {
    return IndexBuilder()
        .Page('A', {{"ALPHA", 1536}})
        .Page('C', {{"CAMUS", 768}})
        .Page('H', {{"HUGO", 2304}})
        .Bytes();
  }
  static FileBytes NewIndex2() {
    return IndexBuilder()
        .Page('C', {{"CAMUS", 768}})
        .Page('H', {{"HUGO", 2304}})
        .Page('Z', {{"ZOLA", 1536}})
        .Bytes();
  }

  int32_t marked = -1;
};

TEST_F(UpgradeFamilyTest, DerivedFilesAndMarksStay) {
  const FileBytes index1 = IndexFile(1);
  OpenOld();
  EXPECT_EQ(marked, 2);
  EXPECT_TRUE(SameBytes(index1, IndexFile(1)));
  EXPECT_TRUE(SameBytes(OldIndex2(), IndexFile(2)));
  EXPECT_TRUE(
      SameBytes(ExpectedAddressFile({{1536, 0x03}, {2304}, {768, 0x03, 0x10}}, kOldStamp, 2),
                AddressFileBytes()));
  for (const std::string_view extension : {".GRP", ".CRT", ".LST"}) {
    EXPECT_EQ(AsChars(Contents(extension)), "kept") << extension;
  }
}

TEST_F(UpgradeFamilyTest, AnIndexMadeAnewHasTheKeysOfTheNewCards) {
  files.Remove(Path(".I02"));
  OpenOld();
  EXPECT_EQ(marked, 2);
  EXPECT_TRUE(SameBytes(NewIndex2(), IndexFile(2)));
}

TEST_F(UpgradeFamilyTest, WithoutDerivedFilesTheyAreMade) {
  for (const std::string_view extension : {".I01", ".I02", ".ADR", ".CRT"}) {
    files.Remove(Path(extension));
  }
  OpenOld();
  EXPECT_EQ(marked, 0);
  EXPECT_EQ(FamilyFault(ReadFamily(files, kStem)), "");
  EXPECT_TRUE(SameBytes(DefaultCriteriaBytes(), Contents(".CRT")));
}

// Marks are lost, and with them groups, criteria and layouts.
TEST_F(UpgradeFamilyTest, AnOlderAddressFileIsMadeAnewWithoutMarks) {
  FileBytes address = AddressFileBytes();
  StorePadded(address, 66, 5, "04.09");
  files.SetContents(Path(".ADR"), address);
  OpenOld();
  EXPECT_EQ(marked, 0);
  EXPECT_TRUE(SameBytes(ExpectedAddressFile({{1536}, {2304}, {768, 0x01, 0x10}}, kOldStamp),
                        AddressFileBytes()));
  EXPECT_FALSE(files.Exists(Path(".GRP")));
  EXPECT_FALSE(files.Exists(Path(".LST")));
  EXPECT_TRUE(SameBytes(DefaultCriteriaBytes(), Contents(".CRT")));
}

// A card that the old directory never counted makes everything derived anew.
TEST_F(UpgradeFamilyTest, APartialLastCardMakesTheDerivedFilesAnew) {
  FileBytes file = MainFile();
  const FileBytes more = OldCard({{0, "NOVEMBER"}, {10, "BALZAC"}});
  file.insert(file.end(), more.begin(), more.begin() + 300);
  files.SetContents(Path(".DAN"), file);
  OpenOld();
  EXPECT_EQ(marked, 0);
  EXPECT_EQ(MainFile().size(), 768U * 5);
  EXPECT_EQ(FamilyFault(ReadFamily(files, kStem)), "");
}

TEST_F(UpgradeFamilyTest, AMainFileOfAnotherCaseKeepsItsName) {
  files.Rename(Path(".DAN"), "/carnets/essai.dan");
  OpenOld();
  EXPECT_FALSE(files.Exists(Path(".DAN")));
  EXPECT_EQ(files.Contents("/carnets/essai.dan").size(), 768U * 4);
  EXPECT_FALSE(files.Exists("/carnets/CARNDAN.TMP"));
}

}  // namespace
}  // namespace carnetel
