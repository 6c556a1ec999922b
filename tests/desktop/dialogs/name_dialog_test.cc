// The dialog that asks for a set's name, as its user meets it: one field and two buttons.
#include "desktop/dialogs/name_dialog.h"

#include <QClipboard>
#include <memory>

#include "tests/desktop/dialogs/dialog_testing.h"

namespace carnetel::desktop {
namespace {

class NameDialogTest : public ::testing::Test {
 protected:
  void Open(SetsDialog which = SetsDialog::kCriteria, const std::string& offered = "") {
    dialog = std::make_unique<NameDialog>(which, offered, nullptr);
    finished = std::make_unique<QSignalSpy>(dialog.get(), &QDialog::finished);
    edit()->SetBeeper([this] { ++beeps; });
    Show(*dialog);
  }
  FilteredEdit* edit() { return Find<FilteredEdit>(*dialog, 196); }
  QPushButton* confirm() { return Find<QPushButton>(*dialog, 1); }
  // How the dialog ended; nothing while it is open.
  QList<int> Ends() {
    QList<int> ends;
    for (const auto& arguments : *finished) ends += arguments.at(0).toInt();
    return ends;
  }

  std::unique_ptr<NameDialog> dialog;
  std::unique_ptr<QSignalSpy> finished;
  int beeps = 0;
};

TEST_F(NameDialogTest, HasItsTitleAndTexts) {
  Open();
  EXPECT_EQ(dialog->objectName(), "115");
  EXPECT_EQ(dialog->windowTitle(), "Descriptif de la sélection");
  EXPECT_EQ(confirm()->text(), "Valider");
  EXPECT_EQ(Find<QPushButton>(*dialog, 2)->text(), "Abandonner");
  EXPECT_EQ(dialog->findChildren<QPushButton*>().size(), 2);
  ExpectNames(*dialog);
}

TEST_F(NameDialogTest, IsTitledByWhatItNames) {
  for (const SetsDialog transfer : {SetsDialog::kImport, SetsDialog::kExport}) {
    Open(transfer);
    EXPECT_EQ(dialog->windowTitle(), "Descriptif du jeu de paramètres");
  }
}

TEST_F(NameDialogTest, OffersANameThatTypingReplaces) {
  Open(SetsDialog::kCriteria, "Été à Évian");
  EXPECT_EQ(FocusId(), 196);
  EXPECT_EQ(edit()->text(), "Été à Évian");
  EXPECT_EQ(edit()->selectedText(), "Été à Évian");
  EXPECT_EQ(dialog->name(), "Été à Évian");
  Type("Noël");
  EXPECT_EQ(dialog->name(), "Noël");
}

TEST_F(NameDialogTest, TakesNoMoreThanTwentyThreeCharacters) {
  Open();
  Type("abcdefghijklmnopqrstuvw");
  EXPECT_EQ(beeps, 0);
  Type("x");
  EXPECT_EQ(dialog->name(), "abcdefghijklmnopqrstuvw");
  EXPECT_EQ(beeps, 1);
  edit()->clear();
  QApplication::clipboard()->setText(
      "ééééééééééééééééééééééé"
      "trop");
  PressKey(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(edit()->text(), QString(23, u'é'));
  EXPECT_EQ(beeps, 2);
}

TEST_F(NameDialogTest, TakesEveryCharacterThatItsFileCanHold) {
  Open();
  Type("a Z9,;:!?%<b>&\"'");
  EXPECT_EQ(dialog->name(), "a Z9,;:!?%<b>&\"'");
  EXPECT_EQ(beeps, 0);
  Type("€");
  EXPECT_EQ(dialog->name(), "a Z9,;:!?%<b>&\"'");
  EXPECT_EQ(beeps, 1);
}

TEST_F(NameDialogTest, ButtonAndEnterConfirm) {
  Open();
  Type("Nord");
  Press(*dialog, 1);
  EXPECT_EQ(Ends(), QList<int>{QDialog::Accepted});
  EXPECT_FALSE(dialog->isVisible());
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    Open();
    Type("Nord");
    PressKey(key);
    EXPECT_EQ(Ends(), QList<int>{QDialog::Accepted});
    EXPECT_EQ(dialog->name(), "Nord");
  }
}

TEST_F(NameDialogTest, AbandonEscapeAndTheCrossLeave) {
  Open(SetsDialog::kCriteria, "Nord");
  Press(*dialog, 2);
  EXPECT_EQ(Ends(), QList<int>{QDialog::Rejected});
  Open(SetsDialog::kCriteria, "Nord");
  PressKey(Qt::Key_Escape);
  EXPECT_EQ(Ends(), QList<int>{QDialog::Rejected});
  Open(SetsDialog::kCriteria, "Nord");
  dialog->close();
  EXPECT_EQ(Ends(), QList<int>{QDialog::Rejected});
  Open(SetsDialog::kCriteria, "Nord");
  Find(*dialog, 2)->setFocus(Qt::TabFocusReason);
  PressKey(Qt::Key_Return);
  EXPECT_EQ(Ends(), QList<int>{QDialog::Rejected});
}

// It counts as leaving, which is what the caller makes of it.
TEST_F(NameDialogTest, ACriteriaSetCanBeConfirmedWithoutAName) {
  Open(SetsDialog::kCriteria, "Nord");
  edit()->clear();
  EXPECT_TRUE(confirm()->isEnabled());
  PressKey(Qt::Key_Return);
  EXPECT_EQ(Ends(), QList<int>{QDialog::Accepted});
  EXPECT_EQ(dialog->name(), "");
}

TEST_F(NameDialogTest, ParametersCannotBeConfirmedWithoutAName) {
  for (const SetsDialog transfer : {SetsDialog::kImport, SetsDialog::kExport}) {
    Open(transfer);
    EXPECT_FALSE(confirm()->isEnabled());
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Ends(), QList<int>());
    Type("a");
    EXPECT_TRUE(confirm()->isEnabled());
    PressKey(Qt::Key_Backspace);
    EXPECT_FALSE(confirm()->isEnabled());
    Type(" ");
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Ends(), QList<int>{QDialog::Accepted});
    EXPECT_EQ(dialog->name(), " ");
  }
  Open(SetsDialog::kImport, "Dernier format composé");
  EXPECT_TRUE(confirm()->isEnabled());
}

TEST_F(NameDialogTest, TheKeyboardReachesEverything) {
  Open();
  EXPECT_EQ(TabWalk(), (QList<int>{196, 1, 2}));
  Find(*dialog, 2)->setFocus(Qt::TabFocusReason);
  PressKey(Qt::Key_N, Qt::AltModifier);
  EXPECT_EQ(FocusId(), 196);
}

TEST_F(NameDialogTest, F1AsksForItsHelp) {
  Open();
  QSignalSpy help(dialog.get(), &FixedDialog::helpWanted);
  for (const int id : {196, 1, 2}) {
    Find(*dialog, id)->setFocus(Qt::TabFocusReason);
    PressKey(Qt::Key_F1);
    ASSERT_EQ(help.count(), 1) << id;
    EXPECT_EQ(help.takeFirst().at(0).toInt(), 57);
  }
  EXPECT_TRUE(dialog->isVisible());
}

TEST_F(NameDialogTest, ShowsTheLongestNameWhole) {
  Open(SetsDialog::kCriteria, "WWWWWWWWWWWWWWWWWWWWWWW");
  EXPECT_GT(edit()->width(), edit()->fontMetrics().horizontalAdvance(edit()->text()));
}

}  // namespace
}  // namespace carnetel::desktop
