// What the main window's commands about marks, criteria, groups and searches do.
#include "shell/preferences.h"
#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

class SelectionWindow : public WindowFixture {
 protected:
  void SetUp() override {
    Build({CardWith({{kSte1, "ALPHA"}, {kVille, "LYON"}}),
           CardWith({{kSte1, "BETA"}, {kVille, "PARIS"}}),
           CardWith({{kSte1, "DURAND"}, {kVille, "LYON"}}),
           CardWith({{kSte1, "Duval"}, {kVille, "NICE"}}),
           CardWith({{kSte1, "ZETA"}, {kVille, "LYON"}})});
    Start();
  }
  // The criteria dialog is closed by one of its buttons with this one row.
  void WillSelect(CriteriaEnd end, int field, int comparator, const std::string& value) {
    dialogs.criteria = [=](CriteriaForm& form) {
      TypedCriteria typed;
      typed[0] = {field, comparator, value};
      return form.Confirm(typed) ? end : CriteriaEnd::kQuit;
    };
  }
  static constexpr int kFieldSte1 = 3;
  static constexpr int kFieldVille = 8;
};

TEST_F(SelectionWindow, CriteriaMarkTheCardsThatPass) {
  WillSelect(CriteriaEnd::kReplace, kFieldSte1, 0, "du");
  view.Run(kButtonSelect);
  EXPECT_EQ(MarkedRows(), (std::vector<int>{2, 3}));
  EXPECT_EQ(view.marked, 2);
  EXPECT_EQ(progress.form, ProgressForm::kSelection);
  EXPECT_EQ(progress.total, 2U);
  WillSelect(CriteriaEnd::kAdd, kFieldVille, 6, "LYO");
  view.Run(kCommandSelect);
  EXPECT_EQ(MarkedRows(), (std::vector<int>{0, 2, 3, 4}));
  EXPECT_EQ(view.marked, 4);
}

TEST_F(SelectionWindow, QuittingTheDialogScansNothing) {
  list().ToggleMark(0);
  dialogs.criteria = [](CriteriaForm&) { return CriteriaEnd::kQuit; };
  view.Run(kCommandSelect);
  EXPECT_EQ(MarkedRows(), std::vector<int>{0});
}

TEST_F(SelectionWindow, AnEmptyResultIsNoMessage) {
  list().ToggleMark(0);
  WillSelect(CriteriaEnd::kReplace, kFieldSte1, 0, "XYZ");
  view.Run(kCommandSelect);
  EXPECT_EQ(view.marked, 0);
  EXPECT_TRUE(messages.TakeShown().empty());
}

TEST_F(SelectionWindow, SetsSavedInTheDialogAppearInTheList) {
  dialogs.criteria = [](CriteriaForm& form) {
    TypedCriteria typed;
    typed[0] = {kFieldVille, 0, "LYON"};
    form.ManageSets(typed);
    return form.Confirm(typed) ? CriteriaEnd::kReplace : CriteriaEnd::kQuit;
  };
  dialogs.named_sets = [](NamedSetsForm& form) { return static_cast<int>(form.Add()); };
  dialogs.names = {"Lyonnais"};
  view.Run(kCommandSelect);
  EXPECT_EQ(view.sets, (std::vector<std::string>{"Sans Nom", "Lyonnais"}));
  EXPECT_EQ(MarkedRows(), (std::vector<int>{0, 2, 4}));
}

TEST_F(SelectionWindow, SelectAllMarksEverythingAndLeavesTheCriteriaFile) {
  const auto before = memory.Contents(DefaultPath() + ".CRT");
  view.Run(kCommandSelectAll);
  EXPECT_EQ(view.marked, 5);
  EXPECT_EQ(memory.Contents(DefaultPath() + ".CRT"), before);
  view.Run(kCommandDeselectAll);
  EXPECT_EQ(view.marked, 0);
}

TEST_F(SelectionWindow, DeselectUnderATabLeavesHiddenMarks) {
  view.Run(kCommandSelectAll);
  window().ApplyLetterTab(kTabA);
  view.Run(kCommandDeselectAll);
  window().ApplyLetterTab(kTabAll);
  EXPECT_EQ(MarkedRows(), (std::vector<int>{1, 2, 3, 4}));
}

TEST_F(SelectionWindow, ASearchGoesToTheCardFoundLast) {
  dialogs.search = [](SearchForm& form) {
    FormTexts texts;
    texts.fields[156] = "lyon";
    form.FieldsChanged(texts);
    EXPECT_TRUE(form.may_search());
    EXPECT_EQ(form.Search(texts), SearchForm::Outcome::kFound);
    EXPECT_EQ(form.card().FieldText(kSte1).bytes(), "ALPHA");
    EXPECT_FALSE(form.may_search());
    EXPECT_EQ(form.Step(WalkDirection::kNext), SearchForm::Outcome::kFound);
    EXPECT_EQ(form.card().FieldText(kSte1).bytes(), "DURAND");
    return 0;
  };
  view.Run(kButtonSearch);
  EXPECT_EQ(list().current_row(), 2);
  EXPECT_EQ(view.Text(150), "DURAND");
  EXPECT_EQ(view.focus, kControlList);
}

TEST_F(SelectionWindow, ANumberGoesToItsRow) {
  dialogs.number = [](NumberForm& form) {
    for (const char* none : {"", "0", "6", "-1", "2x", "x", "99999999999"}) {
      EXPECT_FALSE(form.Confirm(none)) << none;
    }
    return form.Confirm("4");
  };
  view.Run(kCommandGoToNumber);
  EXPECT_EQ(list().current_row(), 3);
  EXPECT_EQ(view.Text(150), "Duval");
}

TEST_F(SelectionWindow, CommandsAskBeforeTypedTextIsLost) {
  view.Type(156, "NANTES");
  for (const int command : {211, 212, 213, 215, 216, 218, 219, 209, 210, 1001, 1002, 1003}) {
    messages.Answer(MessageButton::kNo);
    view.Run(command);
    EXPECT_EQ(messages.TakeShown().size(), 1U) << command;
  }
  EXPECT_EQ(view.Text(156), "NANTES");
}

class GroupStory : public SelectionWindow {
 protected:
  void MakeLyon(uint8_t mode = kMembersOnly) {
    WillSelect(CriteriaEnd::kReplace, kFieldVille, 0, "LYON");
    view.Run(kCommandSelect);
    dialogs.group_descriptions.push_back(GroupDescription{"Lyon", mode});
    dialogs.groups = [](GroupsForm& form) { return static_cast<int>(form.Create()); };
    view.Run(kButtonGroups);
    window().PickGroup(1);
  }
};

TEST_F(GroupStory, CardsDeletedInAGroupStayInTheDirectory) {
  MakeLyon();
  EXPECT_EQ(Rows(), (std::vector<std::string>{"ALPHA ", "DURAND ", "ZETA "}));
  EXPECT_EQ(view.marked, 0);
  list().SetCurrentRow(1);
  messages.Answer(MessageButton::kOk);
  view.Run(kCommandDeleteCard);
  EXPECT_EQ(messages.TakeShown().front().text, "La fiche DURAND \nva être détruite ...");
  EXPECT_EQ(Rows(), (std::vector<std::string>{"ALPHA ", "ZETA "}));
  view.Run(kCommandSelectAll);
  EXPECT_EQ(view.marked, 2);
  messages.Answer(MessageButton::kOk);
  view.Run(kCommandDeleteMarked);
  EXPECT_EQ(messages.TakeShown().size(), 1U);
  EXPECT_TRUE(Rows().empty());
  EXPECT_EQ(view.marked, 0);
  window().PickGroup(0);
  EXPECT_EQ(Rows().size(), 5U);
  EXPECT_EQ(MarkedRows(), (std::vector<int>{0, 2, 4}));
  Quit();
  EXPECT_EQ(SavedCompanies().size(), 5U);
}

TEST_F(GroupStory, OneMarkedCardLeavesTheGroupAfterOneQuestion) {
  MakeLyon();
  list().ToggleMark(0);
  messages.Answer(MessageButton::kOk);
  view.Run(kButtonDeleteMarked);
  EXPECT_EQ(messages.TakeShown().size(), 1U);
  EXPECT_EQ(Rows(), (std::vector<std::string>{"DURAND ", "ZETA "}));
}

TEST_F(GroupStory, SelectAllInAGroupMarksItsMembersOnly) {
  MakeLyon(kWholeFileFlagged);
  EXPECT_EQ(Rows().size(), 5U);
  view.Run(kCommandSelectAll);
  EXPECT_EQ(MarkedRows(), (std::vector<int>{0, 2, 4}));
}

TEST_F(GroupStory, ANewCardJoinsTheDisplayedGroup) {
  MakeLyon();
  view.Press(kButtonCreateOrCancel);
  view.Type(150, "KAPPA");
  view.Press(kButtonSaveNew);
  EXPECT_EQ(Rows(), (std::vector<std::string>{"ALPHA ", "DURAND ", "KAPPA ", "ZETA "}));
}

TEST_F(GroupStory, AnotherIndexGoesBackToTheWholeFileAndKeepsTheMembers) {
  MakeLyon();
  dialogs.preferences = [](PreferencesForm& form) {
    form.set_key_field(kNom);
    return true;
  };
  view.Run(kCommandPreferences);
  EXPECT_EQ(Rows().size(), 5U);
  EXPECT_EQ(view.groups.size(), 2U);
  window().PickGroup(1);
  EXPECT_EQ(Rows().size(), 3U);
}

TEST_F(GroupStory, ClosingInAGroupViewComesBackToTheWholeFile) {
  MakeLyon();
  list().ToggleMark(2);
  Quit();
  Start();
  EXPECT_EQ(Rows().size(), 5U);
  window().PickGroup(1);
  EXPECT_EQ(MarkedRows(), std::vector<int>{2});
}

TEST_F(GroupStory, AMovedDirectoryLosesTheNamesOfItsGroups) {
  MakeLyon();
  Quit();
  for (const char* extension : {".DAN", ".I01", ".I02", ".ADR", ".CRT", ".GRP"}) {
    memory.SetContents(home + "AILLEURS" + extension, memory.Contents(DefaultPath() + extension));
  }
  SetProfile("File1", "&1 " + home + "AILLEURS.DAN");
  Start();
  EXPECT_EQ(view.groups, std::vector<std::string>{"Tout le Fichier "});
  // The bits are still there: a new group on the slot finds its former members.
  list().ToggleMark(1);
  dialogs.group_descriptions.push_back(GroupDescription{"Neuf", kMembersOnly});
  dialogs.groups = [](GroupsForm& form) { return static_cast<int>(form.Create()); };
  view.Run(kCommandGroups);
  window().PickGroup(1);
  EXPECT_EQ(Rows().size(), 4U);
}

}  // namespace
}  // namespace carnetel
