#include "shell/main_window.h"

#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

using Companies = std::vector<std::string>;
using Shown = std::vector<QueuedMessages::Entry>;
using Texts = std::vector<std::string>;

class MainWindowTest : public WindowFixture {
 protected:
  static CardRecord Company(std::string_view name) { return CardWith({{kSte1, name}}); }
  void StartWithFive() {
    Build({Company("ZORRO"), Company("BETA"), Company("ALPHA"), Company("DUPONT"),
           Company("MARTIN")});
    Start();
  }
  Shown DeletionOf(const std::string& label) const {
    return {{MessageStyle::kOkCancel, 80, "La fiche " + label + " \nva être détruite ..."}};
  }
};

// ---- start and end ----

TEST_F(MainWindowTest, StartsOnTheWholeDirectory) {
  StartWithFive();
  EXPECT_EQ(view.title, "Carnetel -  " + home + "CARNETEL.DAN");
  EXPECT_EQ(view.groups, Texts{"Tout le Fichier "});
  EXPECT_EQ(view.sets, Texts{"Sans Nom"});
  EXPECT_EQ(view.tab, 655);
  EXPECT_EQ(view.focus, kControlList);
  EXPECT_FALSE(view.edit_look);
  EXPECT_EQ(view.recents, Texts{"&1 " + home + "CARNETEL.DAN"});
  EXPECT_EQ(view.Text(150), "ALPHA");
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(MainWindowTest, QuitEndsTheWindowOnce) {
  StartWithFive();
  view.Run(206);
  EXPECT_TRUE(view.ended);
  EXPECT_EQ(session->directory(), nullptr);
  // What is painted until the window is gone has no directory any more.
  EXPECT_EQ(list().Label(0), "");
  EXPECT_TRUE(window().RequestQuit());
}

TEST_F(MainWindowTest, QuitWithChangesAnsweredNoStaysInTheForm) {
  StartWithFive();
  view.Type(158, "01");
  messages.Answer(MessageButton::kNo);
  EXPECT_FALSE(window().RequestQuit());
  EXPECT_FALSE(view.ended);
  EXPECT_EQ(view.focus, 158);
  EXPECT_EQ(view.Text(158), "01");
  messages.Answer(MessageButton::kYes);
  EXPECT_TRUE(window().RequestQuit());
  EXPECT_TRUE(view.ended);
}

TEST_F(MainWindowTest, ADirectOpeningLeavesTheProfileAlone) {
  Build(home + "direct", {Company("ALPHA")});
  SetProfile("File2", "&2 /data/B.DAN");
  const std::vector<std::byte> before = memory.Contents("/profile.ini");
  StartupRequest request;
  request.direct_open = true;
  request.direct_path = home + "direct.DAN";
  Start(request);
  EXPECT_EQ(Rows(), Texts{"ALPHA "});
  EXPECT_EQ(view.recents, Texts{"&1 " + home + "direct.DAN"});
  Quit();
  EXPECT_EQ(memory.Contents("/profile.ini"), before);
}

// ---- deleting one card ----

TEST_F(MainWindowTest, DeletesTheCurrentCardWhenConfirmed) {
  StartWithFive();
  list().SetCurrentRow(1);
  messages.Answer(MessageButton::kOk);
  view.Press(1004);
  EXPECT_EQ(messages.TakeShown(), DeletionOf("BETA"));
  EXPECT_EQ(SavedCompanies(), (Companies{"ALPHA", "DUPONT", "MARTIN", "ZORRO"}));
  EXPECT_EQ(view.position, "2 / 4");
  EXPECT_EQ(view.Text(150), "DUPONT");
  // The last card of the file lies in the freed place; it is still found.
  EXPECT_EQ(list().FindCardRow(2 * 768), 2);
  EXPECT_EQ(view.Text(150), "MARTIN");
}

TEST_F(MainWindowTest, KeepsTheCardWhenTheDeletionIsCancelled) {
  StartWithFive();
  messages.Answer(MessageButton::kCancel);
  view.Run(209);
  EXPECT_EQ(messages.TakeShown(), DeletionOf("ALPHA"));
  EXPECT_EQ(SavedCompanies().size(), 5u);
}

TEST_F(MainWindowTest, DeletingTheLastRowGoesToTheOneBefore) {
  StartWithFive();
  list().SetCurrentRow(4);
  messages.Answer(MessageButton::kOk);
  view.Run(209);
  EXPECT_EQ(view.position, "4 / 4");
  EXPECT_EQ(view.Text(150), "MARTIN");
}

TEST_F(MainWindowTest, DeletingTheOnlyCardEmptiesTheForm) {
  Build({Company("SEULE")});
  Start();
  messages.Answer(MessageButton::kOk);
  view.Run(209);
  EXPECT_EQ(view.position, "1 / 0");
  EXPECT_EQ(view.Text(150), "");
  EXPECT_EQ(Saved().size(), 0u);
  // Nothing to delete, nothing to ask.
  messages.TakeShown();
  view.Run(209);
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(MainWindowTest, ACardIsNamedByTheActiveKeyOrElseTheOther) {
  SetProfile("Idindex", "10");
  Build({CardWith({{kSte1, "ALPHA"}, {kNom, "Z\x82ro"}}), Company("BETA")});
  Start();
  list().FindCardRow(768);
  messages.Answer(MessageButton::kCancel);
  view.Run(209);
  EXPECT_EQ(messages.TakeShown(), DeletionOf("Zéro"));
  list().FindCardRow(2 * 768);
  messages.Answer(MessageButton::kCancel);
  view.Run(209);
  EXPECT_EQ(messages.TakeShown(), DeletionOf("BETA"));
}

TEST_F(MainWindowTest, DeletingStaysInItsTabAndKeepsTheOtherMarks) {
  StartWithFive();
  list().ToggleSpan(0, 1);
  view.Run(657);
  EXPECT_EQ(view.marked, 1);
  messages.Answer(MessageButton::kOk);
  view.Run(209);
  EXPECT_EQ(view.tab, 657);
  EXPECT_EQ(view.position, "1 / 0");
  EXPECT_EQ(view.marked, 0);
  view.Run(655);
  EXPECT_EQ(MarkedRows(), std::vector<int>{0});
}

// ---- deleting marked cards ----

class DeleteMarked : public MainWindowTest {
 protected:
  void SetUp() override {
    StartWithFive();
    list().ToggleMark(0);
    list().ToggleMark(2);
    list().ToggleMark(4);
  }
  const Shown question_ = {
      {MessageStyle::kOkCancel, 80, "La totalité des fiches sélectionnées va être supprimée..."}};
};

TEST_F(DeleteMarked, DeletesThemAllUnderAProgressBox) {
  view.Run(657);
  view.Run(655);
  messages.Answer(MessageButton::kOk);
  view.Press(1005);
  EXPECT_EQ(messages.TakeShown(), question_);
  EXPECT_EQ(progress.form, ProgressForm::kDelete);
  EXPECT_EQ(progress.total, 3u);
  EXPECT_EQ(progress.steps, (Texts{"ALPHA", "DUPONT", "ZORRO"}));
  EXPECT_FALSE(progress.open);
  EXPECT_EQ(SavedCompanies(), (Companies{"BETA", "MARTIN"}));
  EXPECT_EQ(view.tab, 655);
  EXPECT_EQ(view.marked, 0);
  EXPECT_EQ(view.position, "1 / 2");
  EXPECT_EQ(view.Text(150), "BETA");
  EXPECT_FALSE(view.IsEnabled(1005));
}

TEST_F(DeleteMarked, GoesBackToAllLetters) {
  view.Run(656);
  messages.Answer(MessageButton::kOk);
  view.Run(210);
  EXPECT_EQ(view.tab, 655);
  // The count of the tab said one: the first marked card went.
  EXPECT_EQ(SavedCompanies(), (Companies{"BETA", "DUPONT", "MARTIN", "ZORRO"}));
  EXPECT_EQ(view.marked, 2);
}

TEST_F(DeleteMarked, CancelledKeepsThem) {
  messages.Answer(MessageButton::kCancel);
  view.Run(210);
  EXPECT_EQ(SavedCompanies().size(), 5u);
  EXPECT_EQ(view.marked, 3);
  EXPECT_EQ(progress.steps, Texts());
}

TEST_F(DeleteMarked, StoppedAtACardDeletesItAndNoFurtherOne) {
  progress.stop_at = 2;
  messages.Answer(MessageButton::kOk);
  view.Run(210);
  EXPECT_EQ(progress.steps, (Texts{"ALPHA", "DUPONT"}));
  EXPECT_FALSE(progress.open);
  EXPECT_EQ(SavedCompanies(), (Companies{"BETA", "MARTIN", "ZORRO"}));
  EXPECT_EQ(MarkedRows(), std::vector<int>{2});
  EXPECT_EQ(view.marked, 1);
}

TEST_F(DeleteMarked, WithoutMarksAsksNothing) {
  view.Run(213);
  view.Run(210);
  EXPECT_EQ(messages.TakeShown(), Shown());
  EXPECT_EQ(SavedCompanies().size(), 5u);
}

TEST_F(DeleteMarked, EndsWhenNothingCanBeWritten) {
  files.StopAfter(0);
  messages.Answer(MessageButton::kOk);
  view.Run(210);
  EXPECT_EQ(progress.steps.size(), 3u);
  EXPECT_EQ(list().row_count(), 5);
  EXPECT_EQ(view.marked, 3);
}

// ---- other commands ----

TEST_F(MainWindowTest, TheMarkButtonTogglesTheCurrentRow) {
  StartWithFive();
  list().SetCurrentRow(2);
  view.Press(1009);
  EXPECT_EQ(MarkedRows(), std::vector<int>{2});
  EXPECT_EQ(view.marked, 1);
  EXPECT_TRUE(view.IsEnabled(1005));
  view.Press(1009);
  EXPECT_EQ(MarkedRows(), std::vector<int>());
  EXPECT_FALSE(view.IsEnabled(1005));
}

TEST_F(MainWindowTest, BrowsingOpensTheConsultation) {
  StartWithFive();
  view.Run(219);
  EXPECT_EQ(view.consultations, 1);
}

TEST_F(MainWindowTest, StepsOverTheMarkedRows) {
  StartWithFive();
  list().ToggleMark(1);
  list().ToggleMark(3);
  EXPECT_EQ(window().NextMarkedRow(-1, 1), 1);
  EXPECT_EQ(window().NextMarkedRow(1, 1), 3);
  EXPECT_EQ(window().NextMarkedRow(3, 1), -1);
  EXPECT_EQ(window().NextMarkedRow(3, -1), 1);
  EXPECT_EQ(window().NextMarkedRow(1, -1), -1);
}

TEST_F(MainWindowTest, TellsTheStatusOfItemsAndPopups) {
  StartWithFive();
  window().ShowStatusOf(1009);
  EXPECT_EQ(view.status, LoadText(221));
  window().ShowStatusOf(195);
  EXPECT_EQ(view.status, "Alt=menu, Tab=boutons, Barre espace=sélection/désélection");
  window().ShowStatusText(60);
  EXPECT_EQ(view.status, "Créer, ouvrir ou imprimer un carnetel, importer des fiches");
}

TEST_F(MainWindowTest, HelpKnowsWhetherACardIsNew) {
  StartWithFive();
  EXPECT_EQ(window().HelpTopic(150), 66);
  view.Run(207);
  EXPECT_EQ(window().HelpTopic(150), 52);
  EXPECT_EQ(window().HelpTopic(1000), 54);
  EXPECT_EQ(window().HelpTopic(195), 48);
}

TEST_F(MainWindowTest, NumbersWithoutCommandDoNothing) {
  StartWithFive();
  const std::vector<std::byte> before = memory.Contents(home + "CARNETEL.ADR");
  for (const int number : {0, 3, 149, 163, 181, 199, 224, 231, 654, 682, 999, 1019, 1021, 1034}) {
    view.Run(number);
  }
  EXPECT_EQ(messages.TakeShown(), Shown());
  EXPECT_EQ(memory.Contents(home + "CARNETEL.ADR"), before);
  EXPECT_EQ(view.Text(150), "ALPHA");
  EXPECT_EQ(view.tab, 655);
  EXPECT_FALSE(view.ended);
}

}  // namespace
}  // namespace carnetel
