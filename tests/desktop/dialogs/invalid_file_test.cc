#include <unistd.h>

#include <QRadioButton>

#include "desktop/dialogs/invalid_file_dialog.h"
#include "tests/desktop/dialogs/dialog_testing.h"
#include "tests/shell/window_fixture.h"

namespace carnetel::desktop {
namespace {

class InvalidFileDialogTest : public WindowFixture {
 protected:
  // The default directory is two cards behind a header that says nothing.
  void SetUp() override {
    path = home + "CARNETEL.DAN";
    std::string bytes(768, '?');
    for (const char* company : {"BETA", "ALPHA"}) {
      const CardRecord card = CardWith({{kSte1, company}});
      bytes += AsChars(card.bytes());
    }
    memory.SetContents(path, AsBytes(bytes));
    StartSession();
    ASSERT_TRUE(session->OpenAtStart(&fell_back));
    OpenDialog();
  }
  void OpenDialog() {
    dialog.reset();
    form = std::make_unique<InvalidFileForm>(*session, [this] {
      ++destructions;
      if (while_destroying) while_destroying();
    });
    dialog = std::make_unique<InvalidFileDialog>(*form, nullptr);
    help = std::make_unique<QSignalSpy>(dialog.get(), &FixedDialog::helpWanted);
    Show(*dialog);
  }
  ~InvalidFileDialogTest() override {
    dialog.reset();
    session.reset();
    ::unlink(DirectoryGuard::LockFilePath(home + "CARNETEL.ADR").c_str());
  }

  QRadioButton* Radio(int id) { return Find<QRadioButton>(*dialog, id); }
  PathLabel* Path() { return dialog->findChild<PathLabel*>(); }
  void ExpectEnd(InvalidFileEnd end) {
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->end(), end);
  }

  std::string path;
  std::unique_ptr<InvalidFileForm> form;
  std::unique_ptr<InvalidFileDialog> dialog;
  std::unique_ptr<QSignalSpy> help;
  int destructions = 0;
  std::function<void()> while_destroying;
};

TEST_F(InvalidFileDialogTest, ShowsTheFileAndFourChoices) {
  EXPECT_EQ(dialog->objectName(), "136");
  EXPECT_EQ(dialog->windowTitle(), "Erreur !   Carnetel invalide");
  QStringList texts;
  for (const QLabel* label : dialog->findChildren<QLabel*>()) texts += label->text();
  EXPECT_EQ(texts, (QStringList{QString::fromStdString(path), "Fichier non reconnu :"}));
  EXPECT_EQ(Radio(690)->text(), "&Récupérer et charger le fichier");
  EXPECT_EQ(Radio(687)->text(), "&Créer un nouveau fichier");
  EXPECT_EQ(Radio(688)->text(), "C&harger un fichier existant");
  EXPECT_EQ(Radio(689)->text(), "&Détruire le fichier non reconnu");
  EXPECT_LT(Radio(690)->y(), Radio(687)->y());
  EXPECT_LT(Radio(687)->y(), Radio(688)->y());
  EXPECT_LT(Radio(688)->y(), Radio(689)->y());
  EXPECT_EQ(Find<QPushButton>(*dialog, 1)->text(), "OK");
  EXPECT_EQ(Find<QPushButton>(*dialog, 2)->text(), "&Fermer");
  EXPECT_TRUE(Radio(690)->isChecked());
  ExpectNames(*dialog);
}

TEST_F(InvalidFileDialogTest, TabComesByTheChoiceAndTheButtons) {
  EXPECT_EQ(FocusId(), 690);
  EXPECT_EQ(TabWalk(), (QList<int>{690, 1, 2}));
}

TEST_F(InvalidFileDialogTest, EnterAtTheBeginningRecovers) {
  PressKey(Qt::Key_Return);
  ExpectEnd(InvalidFileEnd::kRecovered);
  const std::vector<SavedCard> saved = Saved(home + "CARN001");
  ASSERT_EQ(saved.size(), 2u);
  EXPECT_EQ(saved[0].card.FieldText(kSte1).bytes(), "ALPHA");
  EXPECT_TRUE(saved[0].marked() && saved[1].marked());
}

TEST_F(InvalidFileDialogTest, OkDoesWhatIsChosen) {
  Press(*dialog, 687);
  Press(*dialog, 1);
  ExpectEnd(InvalidFileEnd::kCreate);
  OpenDialog();
  Press(*dialog, 688);
  Press(*dialog, 1);
  ExpectEnd(InvalidFileEnd::kLoad);
  OpenDialog();
  Press(*dialog, 687);
  Press(*dialog, 690);
  Press(*dialog, 1);
  ExpectEnd(InvalidFileEnd::kRecovered);
  EXPECT_EQ(destructions, 0);
}

TEST_F(InvalidFileDialogTest, KeysChooseToo) {
  PressKey(Qt::Key_Down);
  EXPECT_TRUE(Radio(687)->isChecked());
  PressMnemonic(*dialog, Qt::Key_D, 689);
  EXPECT_TRUE(Radio(689)->isChecked());
  PressMnemonic(*dialog, Qt::Key_R, 690);
  EXPECT_TRUE(Radio(690)->isChecked());
  PressMnemonic(*dialog, Qt::Key_C, 687);
  EXPECT_TRUE(Radio(687)->isChecked());
  PressMnemonic(*dialog, Qt::Key_H, 688);
  EXPECT_TRUE(Radio(688)->isChecked());
  PressKey(Qt::Key_Return);
  ExpectEnd(InvalidFileEnd::kLoad);
}

TEST_F(InvalidFileDialogTest, FermerEscapeAndTheCrossClose) {
  Press(*dialog, 2);
  ExpectEnd(InvalidFileEnd::kClosed);
  OpenDialog();
  PressKey(Qt::Key_Escape);
  ExpectEnd(InvalidFileEnd::kClosed);
  OpenDialog();
  PressMnemonic(*dialog, Qt::Key_F, 2);
  ExpectEnd(InvalidFileEnd::kClosed);
  OpenDialog();
  dialog->close();
  ExpectEnd(InvalidFileEnd::kClosed);
  EXPECT_EQ(Saved(home + "CARN001").size(), 0u);
}

TEST_F(InvalidFileDialogTest, ADestroyedFileCannotBeRecovered) {
  while_destroying = [this] {
    EXPECT_TRUE(dialog->isVisible());
    memory.Remove(path);
  };
  Press(*dialog, 689);
  Press(*dialog, 1);
  EXPECT_EQ(destructions, 1);
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(Path()->text(), "");
  EXPECT_FALSE(Radio(690)->isEnabled());
  EXPECT_TRUE(Radio(687)->isChecked());
  EXPECT_EQ(FocusId(), 687);
  PressKey(Qt::Key_Return);
  ExpectEnd(InvalidFileEnd::kCreate);
}

TEST_F(InvalidFileDialogTest, AFileThatWasSparedKeepsEveryChoice) {
  Press(*dialog, 689);
  Press(*dialog, 1);
  EXPECT_EQ(destructions, 1);
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(Path()->text().toStdString(), path);
  EXPECT_TRUE(Radio(690)->isEnabled());
  EXPECT_TRUE(Radio(689)->isChecked());
  Press(*dialog, 2);
  ExpectEnd(InvalidFileEnd::kClosed);
}

TEST_F(InvalidFileDialogTest, WithoutTheFileItBeginsWithCreation) {
  memory.Remove(path);
  OpenDialog();
  EXPECT_FALSE(Radio(690)->isEnabled());
  EXPECT_TRUE(Radio(687)->isChecked());
  EXPECT_EQ(FocusId(), 687);
  // The arrows pass the choice that is off.
  PressKey(Qt::Key_Up);
  EXPECT_FALSE(Radio(690)->isChecked());
}

TEST_F(InvalidFileDialogTest, HelpHasAKey) {
  for (const int id : {690, 1, 2}) {
    Find(*dialog, id)->setFocus();
    PressKey(Qt::Key_F1);
  }
  ASSERT_EQ(help->count(), 3);
  for (const QList<QVariant>& wanted : *help) EXPECT_EQ(wanted.value(0).toInt(), 48);
}

}  // namespace
}  // namespace carnetel::desktop
