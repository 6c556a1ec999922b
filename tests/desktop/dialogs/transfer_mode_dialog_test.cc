// The question what becomes of the cards that are in the destination, as its user meets it.
#include "desktop/dialogs/transfer_mode_dialog.h"

#include <memory>

#include "tests/desktop/dialogs/dialog_pictures.h"
#include "tests/desktop/dialogs/named_controls.h"

namespace carnetel::desktop {
namespace {

class TransferModeTest : public ::testing::Test {
 protected:
  void Open(bool imports) {
    dialog = std::make_unique<TransferModeDialog>(imports, nullptr);
    finished = std::make_unique<QSignalSpy>(dialog.get(), &QDialog::finished);
    Show(*dialog);
  }
  int End() { return finished->count() == 1 ? finished->at(0).at(0).toInt() : -1; }

  std::unique_ptr<TransferModeDialog> dialog;
  std::unique_ptr<QSignalSpy> finished;
};

TEST_F(TransferModeTest, HasItsTexts) {
  Open(true);
  EXPECT_EQ(dialog->objectName(), "112");
  EXPECT_EQ(dialog->windowTitle(), "Mode d'importation de fiches");
  QStringList labels;
  for (const QLabel* label : dialog->findChildren<QLabel*>()) labels += label->text();
  EXPECT_EQ(labels, (QStringList{"Le fichier de destination existe déjà !", "Vous pouvez :"}));
  EXPECT_EQ(Named<QAbstractButton>(*dialog, "add")->text().remove('&'),
            "Ajouter aux fiches existantes");
  EXPECT_EQ(Named<QAbstractButton>(*dialog, "replace")->text().remove('&'),
            "Remplacer toutes les fiches existantes");
  EXPECT_EQ(Find<QPushButton>(*dialog, 1)->text(), "OK");
  EXPECT_EQ(Find<QPushButton>(*dialog, 2)->text(), "Abandonner");
  ExpectNames(*dialog);
  Open(false);
  EXPECT_EQ(dialog->windowTitle(), "Mode d'exportation de fiches");
}

TEST_F(TransferModeTest, AddsUnlessToldToReplace) {
  Open(true);
  EXPECT_EQ(FocusName(), "add");
  PressKey(Qt::Key_Return);
  EXPECT_EQ(End(), QDialog::Accepted);
  EXPECT_FALSE(dialog->replaces());
  Open(true);
  PressNamed(*dialog, "replace");
  Press(*dialog, 1);
  EXPECT_EQ(End(), QDialog::Accepted);
  EXPECT_TRUE(dialog->replaces());
  Open(false);
  // Seen to go down before it acts.
  QSignalSpy chosen(Named<QAbstractButton>(*dialog, "replace"), &QAbstractButton::toggled);
  PressKey(Qt::Key_R, Qt::AltModifier);
  EXPECT_TRUE(chosen.count() == 1 || chosen.wait());
  EXPECT_TRUE(dialog->replaces());
  PressKey(Qt::Key_Up);
  EXPECT_FALSE(dialog->replaces());
}

TEST_F(TransferModeTest, AbandonAndEscapeLeave) {
  Open(true);
  Press(*dialog, 2);
  EXPECT_EQ(End(), QDialog::Rejected);
  Open(true);
  PressKey(Qt::Key_Escape);
  EXPECT_EQ(End(), QDialog::Rejected);
}

TEST_F(TransferModeTest, TabStopsOnceAtTheChoices) {
  Open(true);
  EXPECT_EQ(TabNames(), (QStringList{"add", "1", "2"}));
}

TEST_F(TransferModeTest, F1AsksForTheHelpOfTheDirection) {
  for (const bool imports : {true, false}) {
    Open(imports);
    QSignalSpy help(dialog.get(), &FixedDialog::helpWanted);
    PressKey(Qt::Key_F1);
    ASSERT_EQ(help.count(), 1);
    EXPECT_EQ(help.at(0).at(0).toInt(), imports ? 58 : 59);
  }
}

TEST_F(TransferModeTest, Pictures) {
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    Open(true);
    SavePicture(*dialog, QStringLiteral("transfer_mode"), percent);
  }
}

}  // namespace
}  // namespace carnetel::desktop
