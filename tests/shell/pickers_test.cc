// The two lists above the cards: which group is displayed and which criteria set is active.
#include "shell/pickers.h"

#include "selection/marks.h"
#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

class PickersTest : public WindowFixture {
 protected:
  void SetUp() override {
    Build({CardWith({{kSte1, "ALPHA"}, {kVille, "LYON"}}),
           CardWith({{kSte1, "BETA"}, {kVille, "PARIS"}}),
           CardWith({{kSte1, "GAMMA"}, {kVille, "LYON"}}),
           CardWith({{kSte1, "ZETA"}, {kVille, "NICE"}})});
  }
  // Marks the rows, makes a group of them, and takes the marks away.
  void MakeGroup(const std::string& name, const std::vector<int>& rows,
                 uint8_t mode = kMembersOnly) {
    for (const int row : rows) list().ToggleMark(row);
    dialogs.group_descriptions.push_back(GroupDescription{name, mode});
    dialogs.groups = [](GroupsForm& form) { return static_cast<int>(form.Create()); };
    view.Run(kCommandGroups);
    view.Run(kCommandDeselectAll);
  }
  // Saves a set of one criterion.
  void SaveSet(const std::string& name, int16_t code, const std::string& value) {
    CriteriaFile file(files, DefaultPath() + ".CRT");
    file.rows().SetRow(0, {code, '0', OemText(value)});
    ASSERT_TRUE(file.AddCriteriaSet(OemText(name)));
  }
  std::vector<std::byte> GroupBytes() { return memory.Contents(DefaultPath() + ".GRP"); }
};

TEST_F(PickersTest, ANewDirectoryHasTheWholeFileAndNoSet) {
  Start();
  EXPECT_EQ(view.groups, std::vector<std::string>{"Tout le Fichier "});
  EXPECT_EQ(view.sets, std::vector<std::string>{"Sans Nom"});
  EXPECT_EQ(GroupBytes().size(), 256U);
}

TEST_F(PickersTest, AGroupShowsItsMembersWithTheirOwnMarks) {
  Start();
  MakeGroup("Lyon", {0, 2});
  EXPECT_EQ(view.groups, (std::vector<std::string>{"Tout le Fichier ", "Lyon"}));
  list().ToggleMark(3);
  window().PickGroup(1);
  EXPECT_EQ(Rows(), (std::vector<std::string>{"ALPHA ", "GAMMA "}));
  EXPECT_EQ(view.marked, 0);
  EXPECT_EQ(view.focus, kControlList);
  list().ToggleMark(1);
  EXPECT_EQ(view.marked, 1);
  window().PickGroup(0);
  EXPECT_EQ(Rows().size(), 4U);
  EXPECT_EQ(MarkedRows(), std::vector<int>{3});
  window().PickGroup(1);
  EXPECT_EQ(MarkedRows(), std::vector<int>{1});
}

TEST_F(PickersTest, AGroupOfTheOtherKindShowsAllCardsAndFlagsItsMembers) {
  Start();
  MakeGroup("Lyon", {0, 2}, kWholeFileFlagged);
  window().PickGroup(1);
  EXPECT_EQ(Rows().size(), 4U);
  EXPECT_TRUE(list().displayed_group().whole_file);
  std::vector<bool> members;
  for (int row = 0; row < 4; ++row) members.push_back(list().IsMember(row));
  EXPECT_EQ(members, (std::vector<bool>{true, false, true, false}));
}

TEST_F(PickersTest, EachGroupComesBackOnTheRowItWasLeftOn) {
  Start();
  MakeGroup("Lyon", {0, 2});
  list().SetCurrentRow(3);
  window().PickGroup(1);
  EXPECT_EQ(list().current_row(), 0);
  list().SetCurrentRow(1);
  window().PickGroup(0);
  EXPECT_EQ(list().current_row(), 3);
  window().PickGroup(1);
  EXPECT_EQ(list().current_row(), 1);
  // Of the whole file the next run knows it too.
  window().PickGroup(0);
  Quit();
  Start();
  EXPECT_EQ(list().current_row(), 3);
}

TEST_F(PickersTest, PickingTheDisplayedGroupChangesNothing) {
  Start();
  MakeGroup("Lyon", {0, 2});
  const int refills = view.refills;
  window().PickGroup(0);
  EXPECT_EQ(view.refills, refills);
}

TEST_F(PickersTest, APickedSetReplacesTheMarks) {
  SaveSet("Lyonnais", kVille + 1, "LYON");
  Start();
  EXPECT_EQ(view.sets, (std::vector<std::string>{"Sans Nom", "Lyonnais"}));
  list().ToggleMark(3);
  window().PickSet(1);
  EXPECT_EQ(MarkedRows(), (std::vector<int>{0, 2}));
  EXPECT_EQ(view.marked, 2);
  EXPECT_EQ(list().current_row(), 0);
  EXPECT_TRUE(progress.steps.empty());
  window().PickSet(0);
  EXPECT_TRUE(MarkedRows().empty());
}

TEST_F(PickersTest, TheSameSetIsScannedAgainForAnotherGroupOnly) {
  SaveSet("Lyonnais", kVille + 1, "LYON");
  Start();
  MakeGroup("Divers", {0, 1});
  window().PickSet(1);
  list().ToggleMark(0);
  window().PickSet(1);
  EXPECT_EQ(MarkedRows(), std::vector<int>{2});
  window().PickGroup(1);
  window().PickSet(1);
  EXPECT_EQ(MarkedRows(), std::vector<int>{0});
}

TEST_F(PickersTest, AGroupRemembersItsSetWithoutScanningIt) {
  SaveSet("Lyonnais", kVille + 1, "LYON");
  SaveSet("Parisiens", kVille + 1, "PARIS");
  Start();
  MakeGroup("Divers", {0, 1});
  window().PickGroup(1);
  window().PickSet(2);
  window().PickGroup(0);
  window().PickSet(1);
  list().ToggleMark(0);
  window().PickGroup(1);
  EXPECT_EQ(MarkedRows(), std::vector<int>{1});
  window().PickGroup(0);
  EXPECT_EQ(MarkedRows(), std::vector<int>{2});
}

TEST_F(PickersTest, TheActiveSetIsThereAgainAtTheNextStartWithoutAScan) {
  SaveSet("Lyonnais", kVille + 1, "LYON");
  Start();
  window().PickSet(1);
  list().ToggleMark(0);
  Quit();
  EXPECT_EQ(LoadLe16(memory.Contents(DefaultPath() + ".CRT"), 100), 1);
  Start();
  EXPECT_EQ(MarkedRows(), std::vector<int>{2});
}

TEST_F(PickersTest, ASetThatIsGoneLeavesNoName) {
  SaveSet("Lyonnais", kVille + 1, "LYON");
  Start();
  window().PickSet(1);
  Quit();
  ASSERT_TRUE(CriteriaFile(files, DefaultPath() + ".CRT").DeleteCriteriaSet(1));
  Start();
  EXPECT_EQ(view.sets, std::vector<std::string>{"Sans Nom"});
  window().PickSet(1);
  window().PickSet(-1);
}

TEST_F(PickersTest, ADeletedDisplayedGroupFallsBackToTheWholeFile) {
  Start();
  MakeGroup("Lyon", {0, 2});
  window().PickGroup(1);
  messages.Answer(MessageButton::kOk);
  dialogs.groups = [](GroupsForm& form) { return static_cast<int>(form.Delete()); };
  view.Run(kCommandGroups);
  EXPECT_EQ(view.groups, std::vector<std::string>{"Tout le Fichier "});
  EXPECT_EQ(Rows().size(), 4U);
}

TEST_F(PickersTest, AGroupWithoutABitPairIsNotDisplayed) {
  Start();
  MakeGroup("Lyon", {0, 2});
  Quit();
  std::vector<std::byte> bytes = GroupBytes();
  bytes[176 + 80 + 72] = std::byte{7};
  memory.SetContents(DefaultPath() + ".GRP", bytes);
  Start();
  EXPECT_EQ(view.groups.size(), 2U);
  window().PickGroup(1);
  EXPECT_EQ(Rows().size(), 4U);
  EXPECT_EQ(session->directory()->group_bit(), 0);
}

TEST_F(PickersTest, ChangedTextIsAskedForBeforeTheListChanges) {
  Start();
  MakeGroup("Lyon", {0, 2});
  view.Type(156, "NANTES");
  messages.Answer(MessageButton::kNo);
  window().PickGroup(1);
  EXPECT_EQ(Rows().size(), 4U);
  EXPECT_EQ(view.Text(156), "NANTES");
}

}  // namespace
}  // namespace carnetel
