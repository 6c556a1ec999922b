// The rules of the dialog that keeps groups.
#include "selection/groups_form.h"

#include "tests/selection/criteria_bytes.h"
#include "tests/selection/group_bytes.h"
#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

using Outcome = GroupsForm::Outcome;
using Buttons = GroupsForm::Buttons;
using Groups = std::vector<GroupDescription>;

class GroupsFormTest : public SelectionFixture {
 protected:
  void SetUp() override {
    Open();
    AddCompanies({"ALPHA", "BETA", "DELTA"});
    MarkOnly({"BETA"});
  }
  GroupsForm Form(MessageForm& messages) {
    const auto ask = [this](const GroupDescription& offered) {
      offered_.push_back(offered);
      return answer_;
    };
    return {*directory_, messages, ask, place_};
  }
  GroupsForm Form() { return Form(ok_); }
  // Puts groups A, B and so on of this number into the file.
  void PutGroups(int count) {
    std::string file = GroupHeaderText(count + 1) + WholeFileRowText();
    for (int i = 0; i < count; ++i) {
      file += GroupRowText(
          {.name = std::string(1, static_cast<char>('A' + i)), .slot = 2 + 2 * i, .mode = i % 2});
    }
    SetContents(".GRP", BytesOf(file));
  }
  void ExpectFile(const std::string& text) {
    EXPECT_TRUE(SameBytes(BytesOf(text), Contents(".GRP")));
  }
  static void ExpectMessage(const SilentMessages& messages, MessageStyle style, int title_id,
                            const std::string& text) {
    ASSERT_EQ(messages.shown().size(), 1U);
    EXPECT_EQ(messages.shown()[0].style, style);
    EXPECT_EQ(messages.shown()[0].title_id, title_id);
    EXPECT_EQ(messages.shown()[0].text, text);
  }

  SilentMessages ok_{MessageButton::kOk};
  SilentMessages cancel_{MessageButton::kCancel};
  SilentMessages yes_{MessageButton::kYes};
  SilentMessages no_{MessageButton::kNo};
  std::optional<GroupDescription> answer_;
  Groups offered_;
  GroupsForm::Place place_ = {0, AnsiText("Sans Nom")};
};

TEST_F(GroupsFormTest, OpeningMakesTheFileAndListsNothing) {
  const GroupsForm form = Form();
  ExpectFile(GroupHeaderText(1) + WholeFileRowText());
  EXPECT_TRUE(form.groups().empty());
  EXPECT_EQ(form.selected(), -1);
  EXPECT_EQ(form.ModeText(), "");
}

TEST_F(GroupsFormTest, OpeningListsTheGroupsAndSelectsTheFirst) {
  PutGroups(3);
  const GroupsForm form = Form();
  EXPECT_EQ(form.groups(), (Groups{{"A", 0}, {"B", 1}, {"C", 0}}));
  EXPECT_EQ(form.selected(), 0);
}

TEST_F(GroupsFormTest, TheTextBelowTellsTheMode) {
  PutGroups(2);
  GroupsForm form = Form();
  EXPECT_EQ(form.ModeText(), "Fiches du groupe uniquement");
  form.Select(1);
  EXPECT_EQ(form.ModeText(), "Fichier entier plus groupe sélectionné");
  form.Select(-1);
  EXPECT_EQ(form.ModeText(), "");
}

TEST_F(GroupsFormTest, ButtonsFollowTheMarksAndTheList) {
  EXPECT_EQ(Form().EnabledButtons(), (Buttons{true, false, false, false, false}));
  PutGroups(1);
  EXPECT_EQ(Form().EnabledButtons(), (Buttons{true, true, true, true, true}));
  directory_->set_marked_count(0);
  EXPECT_EQ(Form().EnabledButtons(), (Buttons{false, false, false, true, true}));
  PutGroups(0);
  EXPECT_EQ(Form().EnabledButtons(), Buttons{});
}

TEST_F(GroupsFormTest, CreatingAsksForANameInModeZeroAndAddsTheGroup) {
  answer_ = {"Été", kWholeFileFlagged};
  place_ = {0, AnsiText("Crit\xE8res")};
  GroupsForm form = Form();
  EXPECT_EQ(form.Create(), Outcome::kStays);
  EXPECT_EQ(offered_, (Groups{{"", kMembersOnly}}));
  ExpectFile(GroupHeaderText(2) + WholeFileRowText() +
             GroupRowText({.name = "\x90t\x82", .set = "Crit\xE8res", .slot = 2, .mode = 1}));
  EXPECT_EQ(form.groups(), (Groups{{"Été", 1}}));
  EXPECT_EQ(form.selected(), 0);
  EXPECT_EQ(CompaniesWith(2), Texts{"BETA"});
  EXPECT_TRUE(ok_.shown().empty());
}

TEST_F(GroupsFormTest, CreatingGoesFromTheRowOfTheDisplayedGroup) {
  PutGroups(1);
  FileBytes file = Contents(".GRP");
  StorePadded(file, 256 + 32, 16, "A.LST");
  SetContents(".GRP", file);
  answer_ = {"N", kMembersOnly};
  place_.displayed = 1;
  Form().Create();
  ExpectFile(GroupHeaderText(3) + WholeFileRowText() +
             GroupRowText({.name = "A", .slot = 2, .file = "A.LST"}) +
             GroupRowText({.name = "N", .slot = 4, .file = "A.LST"}));
}

TEST_F(GroupsFormTest, TwoGroupsMayHaveOneName) {
  PutGroups(1);
  answer_ = {"A", kMembersOnly};
  GroupsForm form = Form();
  form.Create();
  EXPECT_EQ(form.groups(), (Groups{{"A", 0}, {"A", 0}}));
}

TEST_F(GroupsFormTest, WithoutMarksCreatingTells) {
  directory_->set_marked_count(0);
  GroupsForm form = Form();
  EXPECT_EQ(form.Create(), Outcome::kStays);
  ExpectMessage(ok_, MessageStyle::kError, 79, "Pas de sélection disponible");
  EXPECT_TRUE(offered_.empty());
}

TEST_F(GroupsFormTest, The45thGroupIsRefused) {
  PutGroups(43);
  answer_ = {"44", kMembersOnly};
  GroupsForm form = Form();
  form.Create();
  EXPECT_EQ(form.groups().size(), 44U);
  EXPECT_EQ(CompaniesWith(88), Texts{"BETA"});
  offered_.clear();
  const FileBytes before = Contents(".GRP");
  EXPECT_EQ(form.Create(), Outcome::kStays);
  ExpectMessage(ok_, MessageStyle::kError, 79,
                "Création de groupe impossible. La liste est saturée !");
  EXPECT_TRUE(offered_.empty());
  EXPECT_TRUE(SameBytes(before, Contents(".GRP")));
}

TEST_F(GroupsFormTest, AFullListIsToldBeforeMissingMarks) {
  PutGroups(44);
  directory_->set_marked_count(0);
  Form().Create();
  ExpectMessage(ok_, MessageStyle::kError, 79,
                "Création de groupe impossible. La liste est saturée !");
}

TEST_F(GroupsFormTest, ANameLeftOrEmptiedChangesNothing) {
  PutGroups(1);
  const FileBytes before = Contents(".GRP");
  for (const std::optional<GroupDescription>& group :
       {std::optional<GroupDescription>(), std::optional(GroupDescription{"", 1})}) {
    answer_ = group;
    GroupsForm form = Form();
    EXPECT_EQ(form.Create(), Outcome::kStays);
    EXPECT_EQ(form.Replace(), Outcome::kStays);
    EXPECT_EQ(form.Rename(), Outcome::kStays);
    EXPECT_EQ(form.groups(), (Groups{{"A", 0}}));
  }
  EXPECT_TRUE(SameBytes(before, Contents(".GRP")));
  EXPECT_EQ(CompaniesWith(2), Texts{});
}

TEST_F(GroupsFormTest, ReplacingOffersNameAndModeAndChangesBothAndTheMembers) {
  PutGroups(2);
  answer_ = {"new", kMembersOnly};
  GroupsForm form = Form();
  form.Select(1);
  EXPECT_EQ(form.Replace(), Outcome::kStays);
  EXPECT_EQ(offered_, (Groups{{"B", 1}}));
  EXPECT_EQ(form.groups(), (Groups{{"A", 0}, {"new", 0}}));
  ExpectFile(GroupHeaderText(3) + WholeFileRowText() + GroupRowText({.name = "A", .slot = 2}) +
             GroupRowText({.name = "new", .slot = 4}));
  EXPECT_EQ(CompaniesWith(4), Texts{"BETA"});
}

TEST_F(GroupsFormTest, WithoutMarksReplacingTellsBeforeItLooksForASelection) {
  directory_->set_marked_count(0);
  EXPECT_EQ(Form().Replace(), Outcome::kStays);
  ExpectMessage(ok_, MessageStyle::kError, 79, "Pas de sélection disponible");
}

TEST_F(GroupsFormTest, RenamingNeedsNoMarksAndLeavesTheMembers) {
  PutGroups(2);
  directory_->set_marked_count(0);
  answer_ = {"new", kWholeFileFlagged};
  GroupsForm form = Form();
  EXPECT_EQ(form.Rename(), Outcome::kStays);
  EXPECT_EQ(offered_, (Groups{{"A", 0}}));
  EXPECT_EQ(form.groups(), (Groups{{"new", 1}, {"B", 1}}));
  EXPECT_EQ(form.ModeText(), "Fichier entier plus groupe sélectionné");
  ExpectFile(GroupHeaderText(3) + WholeFileRowText() +
             GroupRowText({.name = "new", .slot = 2, .mode = 1}) +
             GroupRowText({.name = "B", .slot = 4, .mode = 1}));
  EXPECT_EQ(CompaniesWith(2), Texts{});
  EXPECT_TRUE(ok_.shown().empty());
}

TEST_F(GroupsFormTest, MergingAsksAndAddsTheMarkedCards) {
  PutGroups(2);
  const FileBytes before = Contents(".GRP");
  GroupsForm form = Form(yes_);
  form.Select(1);
  EXPECT_EQ(form.Merge(), Outcome::kStays);
  ExpectMessage(yes_, MessageStyle::kYesNo, 80,
                "Confirmez-vous la fusion des fiches sélectionnées au groupe\n B ?");
  EXPECT_EQ(CompaniesWith(4), Texts{"BETA"});
  EXPECT_TRUE(SameBytes(before, Contents(".GRP")));
}

TEST_F(GroupsFormTest, MergingMayBeRefused) {
  PutGroups(1);
  EXPECT_EQ(Form(no_).Merge(), Outcome::kStays);
  EXPECT_EQ(CompaniesWith(2), Texts{});
}

TEST_F(GroupsFormTest, MergingDoesNotTestTheMarks) {
  PutGroups(1);
  directory_->set_marked_count(0);
  Form(yes_).Merge();
  EXPECT_EQ(CompaniesWith(2), Texts{"BETA"});
}

TEST_F(GroupsFormTest, WithoutASelectionTheOthersBeep) {
  PutGroups(2);
  for (const int position : {-1, 2}) {
    GroupsForm form = Form();
    form.Select(position);
    EXPECT_EQ(form.Replace(), Outcome::kBeeps);
    EXPECT_EQ(form.Rename(), Outcome::kBeeps);
    EXPECT_EQ(form.Merge(), Outcome::kBeeps);
    EXPECT_EQ(form.Delete(), Outcome::kBeeps);
  }
  EXPECT_TRUE(ok_.shown().empty());
  EXPECT_TRUE(offered_.empty());
}

TEST_F(GroupsFormTest, DeletingAsks) {
  PutGroups(2);
  const FileBytes before = Contents(".GRP");
  GroupsForm form = Form(cancel_);
  form.Select(1);
  EXPECT_EQ(form.Delete(), Outcome::kStays);
  ExpectMessage(cancel_, MessageStyle::kOkCancel, 80, "Le jeu \"B\" va être supprimé...");
  EXPECT_EQ(form.groups().size(), 2U);
  EXPECT_TRUE(SameBytes(before, Contents(".GRP")));
}

TEST_F(GroupsFormTest, AfterADeleteTheSamePlaceIsSelectedOrTheLastOne) {
  PutGroups(3);
  GroupsForm form = Form();
  form.Select(1);
  form.Delete();
  EXPECT_EQ(form.groups(), (Groups{{"A", 0}, {"C", 0}}));
  EXPECT_EQ(form.selected(), 1);
  form.Delete();
  EXPECT_EQ(form.selected(), 0);
  form.Delete();
  EXPECT_TRUE(form.groups().empty());
  EXPECT_EQ(form.selected(), -1);
  ExpectFile(GroupHeaderText(1) + WholeFileRowText());
}

TEST_F(GroupsFormTest, OnADiskThatFailsTheListStays) {
  PutGroups(1);
  answer_ = {"new", kWholeFileFlagged};
  GroupsForm form = Form();
  faults_.StopAfter(0);
  form.Create();
  form.Replace();
  form.Rename();
  form.Delete();
  EXPECT_EQ(form.groups(), (Groups{{"A", 0}}));
}

TEST_F(GroupsFormTest, ADeleteThatFailsHalfWayShowsWhatIsThereNow) {
  PutGroups(4);
  GroupsForm form = Form();
  form.Select(1);
  // The count, then group C in the place of B, then D.
  faults_.FailWrite(3);
  EXPECT_EQ(form.Delete(), Outcome::kStays);
  EXPECT_EQ(form.groups(), (Groups{{"A", 0}, {"C", 0}}));
  EXPECT_EQ(form.selected(), 1);
}

}  // namespace
}  // namespace carnetel
