// Groups and criteria sets in the chooser: members of the displayed group alone, marks of its own.
#include "tests/shell/chooser_fixture.h"

namespace carnetel {
namespace {

using ChooserGroups = ChooserTest;

TEST_F(ChooserGroups, AGroupShowsItsMembersAloneHoweverItIsDisplayedElsewhere) {
  BuildFour();
  MakeGroup("Lyon", {0, 1, 2}, kWholeFileFlagged);
  StartChooser(kMany);
  EXPECT_EQ(view.groups, (Texts{"Tout le Fichier ", "Lyon"}));
  EXPECT_EQ(view.group, 0);
  chooser->PickGroup(1);
  // BETA is a member too, but has no fax.
  EXPECT_EQ(Companies(), (Texts{"ALPHA", "GAMMA"}));
  EXPECT_EQ(view.group, 1);
  EXPECT_EQ(view.position, "1 / 2");
  EXPECT_EQ(view.list_focuses, 2);
  chooser->PickGroup(0);
  EXPECT_EQ(Companies(), (Texts{"ALPHA", "GAMMA", "ZETA"}));
}

TEST_F(ChooserGroups, EachGroupHasItsMarksAndItsPlace) {
  BuildFour();
  MakeGroup("Lyon", {0, 2});
  StartChooser(kMany);
  chooser->list().SetCurrentRow(2);
  chooser->ToggleRow(2);
  chooser->PickGroup(1);
  EXPECT_EQ(view.marked, 0);
  chooser->list().SetCurrentRow(1);
  chooser->ToggleRow(1);
  chooser->PickGroup(0);
  EXPECT_EQ(Marked(), Numbers{2});
  chooser->PickGroup(1);
  EXPECT_EQ(Marked(), Numbers{1});
  EXPECT_EQ(chooser->list().current_row(), 1);
}

TEST_F(ChooserGroups, AGroupShowsTheSetItRemembersWithoutAScan) {
  BuildFour();
  SaveSet("Ni\x87ois", kVille + 1, "NICE");
  MakeGroup("Lyon", {0, 2}, kMembersOnly, "Ni\xE7ois");
  StartChooser(kMany);
  EXPECT_EQ(view.sets, (Texts{"Sans Nom", "Niçois"}));
  chooser->PickGroup(1);
  EXPECT_EQ(view.set, 1);
  EXPECT_EQ(Marked(), Numbers{});
}

TEST_F(ChooserGroups, ASetMarksWhatFitsAndGoesToTheFirst) {
  BuildFour();
  SaveSet("Nicois", kVille + 1, "NICE");
  StartChooser(kMany);
  chooser->ToggleRow(0);
  const std::vector<std::byte> groups = memory.Contents(DefaultPath() + ".GRP");
  chooser->PickSet(1);
  EXPECT_EQ(Marked(), Numbers{2});
  EXPECT_EQ(chooser->list().current_row(), 2);
  EXPECT_EQ(view.set, 1);
  EXPECT_FALSE(progress.open);
  EXPECT_TRUE(progress.steps.empty());
  // The group does not remember the choice.
  EXPECT_EQ(memory.Contents(DefaultPath() + ".GRP"), groups);
  chooser->PickSet(0);
  EXPECT_EQ(Marked(), Numbers{});
  EXPECT_EQ(view.set, 0);
}

TEST_F(ChooserGroups, NoSetAfterNoSetKeepsTheMarks) {
  BuildFour();
  StartChooser(kMany);
  chooser->ToggleRow(1);
  chooser->PickSet(0);
  EXPECT_EQ(Marked(), Numbers{1});
}

TEST_F(ChooserGroups, AMarkedCardThatIsNotListedIsNotCounted) {
  BuildFour();
  WithDirectory([](Directory& directory) {
    ChangeMark(directory, 1, true);
    ChangeMark(directory, 2, true);
  });
  StartChooser(kMany);
  EXPECT_EQ(view.marked, 1);
  EXPECT_EQ(Marked(), Numbers{1});
}

}  // namespace
}  // namespace carnetel
