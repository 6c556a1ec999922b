// Group files that are missing, cut short or from elsewhere, and disks that fail.
#include "selection/group_file.h"
#include "tests/selection/criteria_bytes.h"
#include "tests/selection/group_bytes.h"
#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

const AnsiText kNoSet("Sans Nom");

class GroupDamageTest : public SelectionFixture {
 protected:
  void SetUp() override {
    Open();
    AddCompanies({"ALPHA", "BETA"});
    MarkOnly({"ALPHA"});
    file_ = std::make_unique<GroupFile>(*directory_);
  }
  void Put(const std::string& text) { SetContents(".GRP", BytesOf(text)); }
  void ExpectFile(const std::string& text) {
    EXPECT_TRUE(SameBytes(BytesOf(text), Contents(".GRP")));
  }
  bool Create(const std::string& name) {
    return file_->CreateGroup({OemText(name), kMembersOnly}, kNoSet, 0);
  }

  std::unique_ptr<GroupFile> file_;
  const std::string fresh_ = GroupHeaderText(1) + WholeFileRowText();
  // Two groups, in slots 2 and 4.
  const std::string two_ =
      GroupRowText({.name = "A", .slot = 2}) + GroupRowText({.name = "B", .slot = 4});
};

TEST_F(GroupDamageTest, AMissingFileHasNoRowsAndTakesNone) {
  EXPECT_TRUE(file_->Rows().empty());
  EXPECT_TRUE(file_->Groups().empty());
  EXPECT_FALSE(Create("A"));
  EXPECT_FALSE(file_->WriteRow(0, GroupRecord()));
  EXPECT_FALSE(files_.Exists("/d/X.GRP"));
  EXPECT_EQ(CompaniesWith(2), Texts{});
  file_->Check();
  ExpectFile(fresh_);
}

TEST_F(GroupDamageTest, AFileWithoutItsFirstRowIsMadeAnew) {
  for (const size_t size : {size_t{0}, size_t{1}, size_t{175}, size_t{176}, size_t{255}}) {
    Put((GroupHeaderText(3) + WholeFileRowText()).substr(0, size));
    EXPECT_TRUE(file_->Rows().empty()) << size;
    file_->Check();
    ExpectFile(fresh_);
  }
}

TEST_F(GroupDamageTest, AHeaderWithoutRowsOrOfOtherRowsIsMadeAnew) {
  for (const int count : {0, -1, 0x8000}) {
    Put(GroupHeaderText(count) + WholeFileRowText() + two_);
    EXPECT_TRUE(file_->Rows().empty()) << count;
    file_->Check();
    ExpectFile(fresh_);
  }
  FileBytes other = BytesOf(GroupHeaderText(1) + WholeFileRowText());
  StoreLe16(other, 98, 81);
  SetContents(".GRP", other);
  file_->Check();
  ExpectFile(fresh_);
  Put(std::string(1000, ' '));
  file_->Check();
  ExpectFile(fresh_);
}

TEST_F(GroupDamageTest, ACountThatIsTooHighIsCutByTheRowsThatAreThere) {
  Put(GroupHeaderText(0x7FFF) + WholeFileRowText() + two_ + "piece");
  file_->Check();
  EXPECT_EQ(file_->Rows().size(), 3U);
  EXPECT_TRUE(Create("C"));
  ExpectFile(GroupHeaderText(4) + WholeFileRowText() + two_ +
             GroupRowText({.name = "C", .slot = 6}));
}

TEST_F(GroupDamageTest, RowsBehindTheCountAreNone) {
  Put(GroupHeaderText(2) + WholeFileRowText() + two_);
  EXPECT_EQ(file_->Rows().size(), 2U);
  EXPECT_FALSE(file_->RenameGroup(2, {OemText("x"), kMembersOnly}, kNoSet));
  EXPECT_TRUE(Create("C"));
  ExpectFile(GroupHeaderText(3) + WholeFileRowText() + GroupRowText({.name = "A", .slot = 2}) +
             GroupRowText({.name = "C", .slot = 4}));
}

TEST_F(GroupDamageTest, ReadsTheRowsBehindTheWholeFile) {
  Put(GroupHeaderText(3) + WholeFileRowText() +
      GroupRowText({.name = "Clients", .slot = 4, .mode = 1}) +
      GroupRowText({.name = std::string(32, 'x'), .slot = 88}));
  const std::vector<GroupRecord> groups = file_->Groups();
  ASSERT_EQ(groups.size(), 2U);
  EXPECT_EQ(groups[0].name(), OemText("Clients"));
  EXPECT_EQ(groups[0].slot(), 4);
  EXPECT_EQ(groups[0].mode(), kWholeFileFlagged);
  EXPECT_EQ(groups[1].name(), OemText(std::string(32, 'x')));
  EXPECT_EQ(groups[1].slot(), 88);
}

// Odd, none, too high, and what is negative as a signed byte.
TEST_F(GroupDamageTest, ARowThatNamesNoBitPairIsARowWithoutMembers) {
  for (const int slot : {0, 1, 3, 89, 90, 96, 128, 200, 254, 255}) {
    Put(GroupHeaderText(2) + WholeFileRowText() + GroupRowText({.name = "bad", .slot = slot}));
    const FileBytes address = Contents(".ADR");
    EXPECT_EQ(file_->Rows().size(), 2U) << slot;
    EXPECT_TRUE(file_->Groups().empty()) << slot;
    EXPECT_TRUE(file_->ReplaceGroup(1, {OemText("new"), kWholeFileFlagged}, kNoSet));
    EXPECT_TRUE(file_->MergeGroup(1));
    ExpectFile(GroupHeaderText(2) + WholeFileRowText() +
               GroupRowText({.name = "new", .slot = slot, .mode = 1}));
    EXPECT_TRUE(file_->DeleteGroup(1));
    ExpectFile(fresh_);
    EXPECT_TRUE(SameBytes(address, Contents(".ADR"))) << slot;
  }
}

TEST_F(GroupDamageTest, TheFirstRowTakesNoSlotWhateverItSays) {
  Put(GroupHeaderText(1) + GroupRowText({.name = "Tout le Fichier ", .slot = 2}));
  EXPECT_TRUE(Create("A"));
  EXPECT_EQ(file_->ReadRow(1)->slot(), 2);
}

TEST_F(GroupDamageTest, TwoRowsOfOneSlotShareTheirMembers) {
  Put(GroupHeaderText(3) + WholeFileRowText() + GroupRowText({.name = "A", .slot = 2}) +
      GroupRowText({.name = "B", .slot = 2}));
  EXPECT_TRUE(file_->MergeGroup(2));
  EXPECT_TRUE(Create("C"));
  EXPECT_EQ(file_->ReadRow(3)->slot(), 4);
  EXPECT_EQ(CompaniesWith(2), Texts{"ALPHA"});
}

TEST_F(GroupDamageTest, OnADiskThatFailsNothingChanges) {
  Put(GroupHeaderText(3) + WholeFileRowText() + two_);
  const FileBytes address = Contents(".ADR");
  faults_.StopAfter(0);
  EXPECT_FALSE(Create("C"));
  EXPECT_FALSE(file_->ReplaceGroup(1, {OemText("x"), kMembersOnly}, kNoSet));
  EXPECT_FALSE(file_->RenameGroup(1, {OemText("x"), kMembersOnly}, kNoSet));
  EXPECT_FALSE(file_->DeleteGroup(1));
  ExpectFile(GroupHeaderText(3) + WholeFileRowText() + two_);
  EXPECT_TRUE(SameBytes(address, Contents(".ADR")));
}

TEST_F(GroupDamageTest, ADeleteThatFailsHalfWayHasCutTheRowsAndEmptiesTheGroup) {
  file_->Check();
  for (const char* name : {"A", "B", "C"}) EXPECT_TRUE(Create(name));
  // The first write is that of the count.
  faults_.FailWrite(2);
  EXPECT_FALSE(file_->DeleteGroup(1));
  ExpectFile(GroupHeaderText(3) + WholeFileRowText());
  EXPECT_EQ(CompaniesWith(2), Texts{});
  EXPECT_EQ(CompaniesWith(4), Texts{"ALPHA"});
}

TEST_F(GroupDamageTest, AFileThatCannotBeMadeIsDoneWithout) {
  faults_.StopAfter(0);
  file_->Check();
  EXPECT_FALSE(files_.Exists("/d/X.GRP"));
  EXPECT_TRUE(file_->Rows().empty());
}

}  // namespace
}  // namespace carnetel
