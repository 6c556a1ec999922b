// "Recherche par numéro" as its user meets it.
#include "desktop/dialogs/number_dialog.h"

#include "tests/desktop/dialogs/dialog_pictures.h"
#include "tests/shell/window_fixture.h"

namespace carnetel::desktop {
namespace {

class NumberDialogTest : public WindowFixture {
 protected:
  void SetUp() override {
    Build({CardWith({{kSte1, "ALPHA"}}), CardWith({{kSte1, "BETA"}}), CardWith({{kSte1, "BRAVO"}}),
           CardWith({{kSte1, "CESAR"}})});
    ASSERT_TRUE(Start());
    OpenDialog();
  }
  void OpenDialog() {
    dialog.reset();
    form = std::make_unique<NumberForm>(list());
    dialog = std::make_unique<NumberDialog>(*form, nullptr);
    help = std::make_unique<QSignalSpy>(dialog.get(), &FixedDialog::helpWanted);
    dialog->SetBeeper([this] { ++beeps; });
    Edit()->SetBeeper([this] { ++beeps; });
    Show(*dialog);
  }
  FilteredEdit* Edit() { return Find<FilteredEdit>(*dialog, 196); }
  void ExpectGone(int row) {
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(list().current_row(), row);
  }
  void ExpectRefused() {
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(list().current_row(), 0);
    EXPECT_EQ(FocusId(), 196);
  }

  std::unique_ptr<NumberForm> form;
  std::unique_ptr<NumberDialog> dialog;
  std::unique_ptr<QSignalSpy> help;
  int beeps = 0;
};

TEST_F(NumberDialogTest, HasItsTitleAndTexts) {
  EXPECT_EQ(dialog->objectName(), "109");
  EXPECT_EQ(dialog->windowTitle(), "Recherche par numéro");
  EXPECT_EQ(Edit()->text(), "");
  EXPECT_EQ(Find<QPushButton>(*dialog, 1)->text(), "OK");
  EXPECT_EQ(Find<QPushButton>(*dialog, 2)->text(), "Annuler");
  EXPECT_EQ(FocusId(), 196);
  EXPECT_EQ(TabWalk(), (QList<int>{196, 1, 2}));
  ExpectNames(*dialog);
}

TEST_F(NumberDialogTest, EnterGoesToTheRow) {
  Type("3");
  PressKey(Qt::Key_Return);
  ExpectGone(2);
  EXPECT_EQ(dialog->result(), QDialog::Accepted);
  EXPECT_EQ(beeps, 0);
}

TEST_F(NumberDialogTest, OkGoesToTheRow) {
  Type("0004");
  Press(*dialog, 1);
  ExpectGone(3);
}

TEST_F(NumberDialogTest, ANumberThatIsNoRowBeepsAndTheDialogStays) {
  const QStringList refused = {"0", "5", "9999", ""};
  for (const QString& number : refused) {
    beeps = 0;
    Edit()->selectAll();
    PressKey(Qt::Key_Delete);
    Type(number);
    PressKey(Qt::Key_Return);
    EXPECT_EQ(beeps, 1) << number.toStdString();
    ExpectRefused();
    EXPECT_EQ(Edit()->text(), number);
  }
}

TEST_F(NumberDialogTest, TheNextNumberTakesThePlaceOfTheRefusedOne) {
  Type("5");
  Press(*dialog, 1);
  ExpectRefused();
  Type("2");
  EXPECT_EQ(Edit()->text(), "2");
  PressKey(Qt::Key_Enter, Qt::KeypadModifier);
  ExpectGone(1);
}

TEST_F(NumberDialogTest, TheEditTakesFourDigits) {
  Type("12345");
  EXPECT_EQ(Edit()->text(), "1234");
  EXPECT_EQ(beeps, 1);
  PressKey(Qt::Key_Backspace);
  EXPECT_EQ(Edit()->text(), "123");
}

TEST_F(NumberDialogTest, OtherCharactersBeep) {
  Type("-a 1é.");
  EXPECT_EQ(Edit()->text(), "1");
  EXPECT_EQ(beeps, 5);
}

TEST_F(NumberDialogTest, AnnulerEscapeAndTheCrossLeaveTheRow) {
  Type("3");
  Press(*dialog, 2);
  ExpectGone(0);
  EXPECT_EQ(dialog->result(), QDialog::Rejected);
  OpenDialog();
  Type("3");
  PressKey(Qt::Key_Escape);
  ExpectGone(0);
  OpenDialog();
  Type("3");
  dialog->close();
  ExpectGone(0);
  OpenDialog();
  Type("3");
  Find(*dialog, 2)->setFocus();
  PressKey(Qt::Key_Return);
  ExpectGone(0);
}

TEST_F(NumberDialogTest, RowsAreThoseOfTheTabThatIsShown) {
  list().ListRefill(*LetterRangeOf('B'));
  Type("3");
  PressKey(Qt::Key_Return);
  EXPECT_EQ(beeps, 1);
  Type("2");
  PressKey(Qt::Key_Return);
  ExpectGone(1);
}

TEST_F(NumberDialogTest, HelpByKey) {
  for (const int id : {196, 1, 2}) {
    Find(*dialog, id)->setFocus();
    PressKey(Qt::Key_F1);
  }
  ASSERT_EQ(help->count(), 3);
  for (const QList<QVariant>& wanted : *help) EXPECT_EQ(wanted.value(0).toInt(), 53);
  EXPECT_TRUE(dialog->isVisible());
}

TEST_F(NumberDialogTest, Pictures) {
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    NumberDialog pictured(*form, nullptr);
    Find<FilteredEdit>(pictured, 196)->setText("8888");
    SavePicture(pictured, QStringLiteral("number"), percent);
  }
}

}  // namespace
}  // namespace carnetel::desktop
