// The group file of a directory, byte for byte after each operation, with the members.
#include "selection/group_file.h"

#include "tests/selection/criteria_bytes.h"
#include "tests/selection/group_bytes.h"
#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

const AnsiText kNoSet("Sans Nom");

class GroupFileTest : public SelectionFixture {
 protected:
  void SetUp() override {
    Open();
    AddCompanies({"ALPHA", "BETA", "DELTA", "ZETA"});
    file_ = std::make_unique<GroupFile>(*directory_);
    file_->Check();
  }
  // A group of these cards.
  bool Create(const std::string& name, const Texts& companies, uint8_t mode = kMembersOnly) {
    MarkOnly(companies);
    return file_->CreateGroup({OemText(name), mode}, kNoSet, 0);
  }
  void ExpectFile(const std::string& text) {
    EXPECT_TRUE(SameBytes(BytesOf(text), Contents(".GRP")));
  }
  std::vector<int> Slots() {
    std::vector<int> slots;
    for (const GroupRecord& group : file_->Groups()) slots.push_back(group.slot());
    return slots;
  }

  std::unique_ptr<GroupFile> file_;
};

TEST_F(GroupFileTest, ANewFileHasTheWholeFileAlone) {
  ExpectFile(GroupHeaderText(1) + WholeFileRowText());
  EXPECT_EQ(file_->Rows().size(), 1U);
  EXPECT_TRUE(file_->Groups().empty());
}

TEST_F(GroupFileTest, CheckingLeavesAFileThatBelongsAlone) {
  EXPECT_TRUE(Create("A", {"BETA"}));
  const FileBytes before = Contents(".GRP");
  files_.ResetCounts();
  file_->Check();
  EXPECT_EQ(files_.counts().writes, 0);
  EXPECT_TRUE(SameBytes(before, Contents(".GRP")));
}

TEST_F(GroupFileTest, AGroupIsMadeOfTheMarkedCards) {
  MarkOnly({"BETA", "ZETA"});
  EXPECT_TRUE(file_->CreateGroup({OemText("Soci\x82t\x82s"), kWholeFileFlagged},
                                 AnsiText("Crit\xE8res"), 0));
  ExpectFile(GroupHeaderText(2) + WholeFileRowText() +
             GroupRowText({.name = "Soci\x82t\x82s", .set = "Crit\xE8res", .slot = 2, .mode = 1}));
  EXPECT_EQ(CompaniesWith(2), (Texts{"BETA", "ZETA"}));
  EXPECT_EQ(Marked(), (Texts{"BETA", "ZETA"}));
}

TEST_F(GroupFileTest, OneMarkedCardMakesAGroupOfOneWithoutASelection) {
  EXPECT_TRUE(Create("One", {"BETA"}));
  EXPECT_EQ(CompaniesWith(2), Texts{"BETA"});
  EXPECT_EQ(Marked(), Texts{"BETA"});
  EXPECT_EQ(CompaniesWith(3), Texts{});
  Display(2);
  EXPECT_EQ(directory_->marked_count(), 0);
}

TEST_F(GroupFileTest, EachGroupHasACountOfItsOwn) {
  EXPECT_TRUE(Create("A", {"ALPHA", "BETA", "DELTA"}));
  Display(2);
  MarkOnly({"BETA", "DELTA"});
  Display(0);
  EXPECT_EQ(directory_->marked_count(), 3);
  EXPECT_EQ(LoadLe16(Contents(".ADR"), 128 + 2 * 1), 3);
  EXPECT_EQ(LoadLe16(Contents(".ADR"), 128 + 2 * 3), 2);
  Display(2);
  EXPECT_EQ(directory_->marked_count(), 2);
}

TEST_F(GroupFileTest, ANewGroupKeepsWhatItDoesNotSetOfTheDisplayedRow) {
  EXPECT_TRUE(Create("A", {"ALPHA"}));
  GroupRecord record = *file_->ReadRow(1);
  record.set_file_name(OemText("A.LST"));
  record.set_rows(7, 5);
  StorePadded(record.bytes(), 78, 2, "jk");
  EXPECT_TRUE(file_->WriteRow(1, record));
  const std::string a =
      GroupRowText({.name = "A", .slot = 2, .current_row = 7, .top_row = 5, .file = "A.LST"})
          .substr(0, 78) +
      "jk";
  EXPECT_TRUE(file_->CreateGroup({OemText("B"), kMembersOnly}, AnsiText("set"), 1));
  const std::string b =
      GroupRowText({.name = "B", .set = "set", .slot = 4, .file = "A.LST"}).substr(0, 78) + "jk";
  ExpectFile(GroupHeaderText(3) + WholeFileRowText() + a + b);
}

TEST_F(GroupFileTest, ReplacingChangesNameModeSetAndMembers) {
  EXPECT_TRUE(Create("A", {"ALPHA", "BETA"}));
  EXPECT_TRUE(Create("B", {"DELTA"}));
  GroupRecord record = *file_->ReadRow(1);
  record.set_rows(3, 1);
  EXPECT_TRUE(file_->WriteRow(1, record));
  MarkOnly({"BETA", "ZETA"});
  EXPECT_TRUE(file_->ReplaceGroup(1, {OemText("A2"), kWholeFileFlagged}, AnsiText("set")));
  ExpectFile(
      GroupHeaderText(3) + WholeFileRowText() +
      GroupRowText(
          {.name = "A2", .set = "set", .slot = 2, .current_row = 3, .top_row = 1, .mode = 1}) +
      GroupRowText({.name = "B", .slot = 4}));
  EXPECT_EQ(CompaniesWith(2), (Texts{"BETA", "ZETA"}));
  EXPECT_EQ(CompaniesWith(4), Texts{"DELTA"});
}

TEST_F(GroupFileTest, ReplacingTakesTheMarksOfTheDisplayedGroup) {
  EXPECT_TRUE(Create("A", {"ALPHA", "BETA"}));
  EXPECT_TRUE(Create("B", {"ZETA"}));
  Display(2);
  MarkOnly({"BETA"});
  EXPECT_TRUE(file_->ReplaceGroup(2, {OemText("B"), kMembersOnly}, kNoSet));
  EXPECT_EQ(CompaniesWith(4), Texts{"BETA"});
  EXPECT_EQ(CompaniesWith(2), (Texts{"ALPHA", "BETA"}));
}

TEST_F(GroupFileTest, RenamingKeepsTheMembersAndChangesTheMode) {
  EXPECT_TRUE(Create("Quite a long name", {"ALPHA", "BETA"}));
  MarkOnly({"ZETA"});
  const FileBytes address = Contents(".ADR");
  EXPECT_TRUE(file_->RenameGroup(1, {OemText("B"), kWholeFileFlagged}, AnsiText("set")));
  ExpectFile(GroupHeaderText(2) + WholeFileRowText() +
             GroupRowText({.name = "B", .set = "set", .slot = 2, .mode = 1}));
  EXPECT_TRUE(SameBytes(address, Contents(".ADR")));
  EXPECT_EQ(CompaniesWith(2), (Texts{"ALPHA", "BETA"}));
  EXPECT_TRUE(file_->RenameGroup(1, {OemText("B"), kMembersOnly}, AnsiText("set")));
  EXPECT_EQ(file_->ReadRow(1)->mode(), kMembersOnly);
}

TEST_F(GroupFileTest, MergingAddsMembersAndLeavesTheFile) {
  EXPECT_TRUE(Create("A", {"ALPHA"}));
  MarkOnly({"ZETA"});
  const FileBytes before = Contents(".GRP");
  EXPECT_TRUE(file_->MergeGroup(1));
  EXPECT_EQ(CompaniesWith(2), (Texts{"ALPHA", "ZETA"}));
  EXPECT_TRUE(SameBytes(before, Contents(".GRP")));
}

TEST_F(GroupFileTest, DeletingMovesTheOthersDownAndEmptiesTheGroup) {
  EXPECT_TRUE(Create("A", {"ALPHA"}));
  EXPECT_TRUE(Create("B", {"BETA"}));
  EXPECT_TRUE(Create("C", {"ALPHA", "BETA"}));
  EXPECT_TRUE(file_->DeleteGroup(2));
  ExpectFile(GroupHeaderText(3) + WholeFileRowText() + GroupRowText({.name = "A", .slot = 2}) +
             GroupRowText({.name = "C", .slot = 6}));
  EXPECT_EQ(CompaniesWith(2), Texts{"ALPHA"});
  EXPECT_EQ(CompaniesWith(4), Texts{});
  EXPECT_EQ(CompaniesWith(6), (Texts{"ALPHA", "BETA"}));
  EXPECT_TRUE(file_->DeleteGroup(2));
  EXPECT_TRUE(file_->DeleteGroup(1));
  ExpectFile(GroupHeaderText(1) + WholeFileRowText());
}

TEST_F(GroupFileTest, TheLowestFreeSlotIsTakenFirst) {
  for (const char* name : {"A", "B", "C", "D"}) EXPECT_TRUE(Create(name, {"ALPHA"}));
  EXPECT_EQ(Slots(), (std::vector{2, 4, 6, 8}));
  EXPECT_TRUE(file_->DeleteGroup(3));
  EXPECT_TRUE(file_->DeleteGroup(1));
  EXPECT_TRUE(Create("E", {"ALPHA"}));
  EXPECT_TRUE(Create("F", {"ALPHA"}));
  EXPECT_TRUE(Create("G", {"ALPHA"}));
  EXPECT_EQ(Slots(), (std::vector{4, 8, 2, 6, 10}));
}

TEST_F(GroupFileTest, AGroupOnTheSlotOfADeletedOneInheritsItsMarksAndTheirCount) {
  EXPECT_TRUE(Create("A", {"ALPHA", "BETA", "DELTA"}));
  Display(2);
  MarkOnly({"ALPHA", "BETA"});
  Display(0);
  EXPECT_TRUE(file_->DeleteGroup(1));
  EXPECT_EQ(CompaniesWith(3), (Texts{"ALPHA", "BETA"}));
  EXPECT_TRUE(Create("B", {"ZETA"}));
  EXPECT_EQ(CompaniesWith(2), Texts{"ZETA"});
  Display(2);
  EXPECT_EQ(Marked(), (Texts{"ALPHA", "BETA"}));
  EXPECT_EQ(directory_->marked_count(), 2);
}

TEST_F(GroupFileTest, DeletingTheGroupOfSlot2TakesAMarkOfSlot18) {
  for (int slot = 2; slot <= 18; slot += 2) EXPECT_TRUE(Create("G", {"ALPHA", "BETA"}));
  Display(18);
  MarkOnly({"ALPHA", "BETA"});
  Display(0);
  MarkOnly({"BETA"});
  EXPECT_TRUE(file_->ReplaceGroup(1, {OemText("G"), kMembersOnly}, kNoSet));
  // ALPHA left slot 2, BETA stayed in.
  EXPECT_EQ(CompaniesWith(19), Texts{"BETA"});
  EXPECT_TRUE(file_->DeleteGroup(1));
  EXPECT_EQ(CompaniesWith(19), Texts{});
}

TEST_F(GroupFileTest, AfterALostFileANewGroupFindsTheFormerMembersOfItsSlot) {
  EXPECT_TRUE(Create("A", {"ALPHA", "BETA"}));
  files_.Remove("/d/X.GRP");
  file_->Check();
  EXPECT_TRUE(Create("B", {"ZETA"}));
  EXPECT_EQ(CompaniesWith(2), (Texts{"ALPHA", "BETA", "ZETA"}));
}

TEST_F(GroupFileTest, ThereAre44GroupsAndNo45th) {
  std::string expected = GroupHeaderText(45) + WholeFileRowText();
  for (int slot = 2; slot <= 88; slot += 2) {
    EXPECT_TRUE(Create("G" + std::to_string(slot), {"ALPHA"}));
    expected += GroupRowText({.name = "G" + std::to_string(slot), .slot = slot});
  }
  ExpectFile(expected);
  EXPECT_FALSE(Create("G90", {"ALPHA"}));
  ExpectFile(expected);
  // Bits 2, 4 to 88 and no others above the whole file's pair.
  for (unsigned bit = 2; bit <= 95; ++bit) {
    EXPECT_EQ(CompaniesWith(bit).size(), bit % 2 == 0 && bit <= 88 ? 1U : 0U) << bit;
  }
  EXPECT_TRUE(file_->DeleteGroup(44));
  EXPECT_TRUE(Create("again", {"BETA"}));
  EXPECT_EQ(CompaniesWith(88), Texts{"BETA"});
}

TEST_F(GroupFileTest, TheSetNameIsAnsiAndTheGroupNameOem) {
  MarkOnly({"ALPHA"});
  EXPECT_TRUE(file_->CreateGroup({OemText("\x82"), kMembersOnly}, AnsiText("\xE9"), 0));
  const FileBytes file = Contents(".GRP");
  EXPECT_EQ(file.at(256), std::byte{0x82});
  EXPECT_EQ(file.at(256 + 48), std::byte{0xE9});
  EXPECT_EQ(file_->ReadRow(1)->name(), OemText("\x82"));
  EXPECT_EQ(file_->ReadRow(1)->set_name_shown(), AnsiText("\xE9"));
}

TEST_F(GroupFileTest, RowsThatAreNotThereCannotBeChanged) {
  MarkOnly({"ALPHA"});
  const FileBytes before = Contents(".GRP");
  EXPECT_FALSE(file_->ReadRow(1));
  EXPECT_FALSE(file_->ReplaceGroup(1, {OemText("x"), kMembersOnly}, kNoSet));
  EXPECT_FALSE(file_->RenameGroup(1, {OemText("x"), kMembersOnly}, kNoSet));
  EXPECT_FALSE(file_->MergeGroup(1));
  EXPECT_FALSE(file_->DeleteGroup(1));
  EXPECT_FALSE(file_->DeleteGroup(0));
  EXPECT_TRUE(SameBytes(before, Contents(".GRP")));
}

}  // namespace
}  // namespace carnetel
