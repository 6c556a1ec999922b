// The choice of what the line "à l'attention de" is made of, as its user meets it.
#include "desktop/dialogs/viafax_dialog.h"

#include <QGroupBox>
#include <QRadioButton>
#include <memory>

#include "tests/desktop/dialogs/dialog_pictures.h"

namespace carnetel::desktop {
namespace {

using Numbers = QList<int>;

class ViafaxDialogTest : public ::testing::Test {
 protected:
  void Open(int option) {
    form = std::make_unique<ViafaxOptionForm>(option);
    dialog = std::make_unique<ViafaxDialog>(*form, nullptr);
    finished = std::make_unique<QSignalSpy>(dialog.get(), &QDialog::finished);
    Show(*dialog);
  }
  Numbers Seen() {
    Numbers ids;
    for (int id = 1040; id <= 1048; ++id) {
      if (Find<QRadioButton>(*dialog, id)->isVisible()) ids += id;
    }
    return ids;
  }
  Numbers Checked() {
    Numbers ids;
    for (int id = 1040; id <= 1048; ++id) {
      if (Find<QRadioButton>(*dialog, id)->isChecked()) ids += id;
    }
    return ids;
  }
  int End() { return finished->count() == 1 ? finished->at(0).at(0).toInt() : -1; }

  std::unique_ptr<ViafaxOptionForm> form;
  std::unique_ptr<ViafaxDialog> dialog;
  std::unique_ptr<QSignalSpy> finished;
};

TEST_F(ViafaxDialogTest, HasItsTexts) {
  Open(0);
  EXPECT_EQ(dialog->objectName(), "1049");
  EXPECT_EQ(dialog->windowTitle(), "Rubrique à l'attention de...");
  const std::pair<int, const char*> texts[] = {{1040, "&Société"},    {1041, "&Nom"},
                                               {1042, "Société"},     {1043, "Société-Nom"},
                                               {1044, "Nom-Société"}, {1045, "Qualité-Prénom-Nom"},
                                               {1046, "Prénom-Nom"},  {1047, "Qualité-Nom-Prénom"},
                                               {1048, "Nom-Prénom"},  {1, "OK"},
                                               {2, "Annuler"}};
  for (const auto& [id, text] : texts) {
    EXPECT_EQ(Find<QAbstractButton>(*dialog, id)->text(), QString::fromUtf8(text)) << id;
  }
  QStringList titles;
  for (const QGroupBox* box : dialog->findChildren<QGroupBox*>()) titles += box->title();
  titles.sort();
  EXPECT_EQ(titles, (QStringList{"Composition", "Sujet"}));
  ExpectNames(*dialog);
}

TEST_F(ViafaxDialogTest, OpensOnTheSetOfItsOption) {
  const Numbers company = {1040, 1041, 1042, 1043, 1044};
  const Numbers name = {1040, 1041, 1045, 1046, 1047, 1048};
  for (int option = 0; option < 3; ++option) {
    Open(option);
    EXPECT_EQ(Seen(), company) << option;
    EXPECT_EQ(Checked(), (Numbers{1040, 1042 + option, 1045})) << option;
    EXPECT_EQ(FocusId(), 1040);
  }
  for (int option = 3; option < 7; ++option) {
    Open(option);
    EXPECT_EQ(Seen(), name) << option;
    EXPECT_EQ(Checked(), (Numbers{1041, 1042, 1042 + option})) << option;
    EXPECT_EQ(FocusId(), 1041);
  }
  // What is no option leaves the first ones of the set that its size names.
  Open(-4);
  EXPECT_EQ(Checked(), (Numbers{1040, 1042, 1045}));
  Open(9);
  EXPECT_EQ(Checked(), (Numbers{1041, 1042, 1045}));
}

TEST_F(ViafaxDialogTest, EachSetKeepsItsChoice) {
  Open(1);
  Press(*dialog, 1044);
  Press(*dialog, 1041);
  EXPECT_EQ(form->option(), 3);
  Press(*dialog, 1048);
  EXPECT_EQ(form->option(), 6);
  Press(*dialog, 1040);
  EXPECT_EQ(form->option(), 2);
  Press(*dialog, 1041);
  EXPECT_EQ(Checked(), (Numbers{1041, 1044, 1048}));
  Press(*dialog, 1);
  EXPECT_EQ(End(), QDialog::Accepted);
  EXPECT_EQ(form->option(), 6);
}

TEST_F(ViafaxDialogTest, WorksByKeysAlone) {
  Open(0);
  EXPECT_EQ(TabWalk(), (Numbers{1040, 1042, 1, 2}));
  PressKey(Qt::Key_Down);
  EXPECT_EQ(form->subject(), ViafaxSubject::kName);
  EXPECT_EQ(TabWalk(), (Numbers{1041, 1045, 1, 2}));
  PressKey(Qt::Key_Tab);
  PressKey(Qt::Key_Down);
  EXPECT_EQ(form->option(), 4);
  QSignalSpy chosen(Find<QAbstractButton>(*dialog, 1040), &QAbstractButton::toggled);
  PressKey(Qt::Key_S, Qt::AltModifier);
  EXPECT_TRUE(chosen.count() == 1 || chosen.wait());
  EXPECT_EQ(form->option(), 0);
  PressKey(Qt::Key_Return);
  EXPECT_EQ(End(), QDialog::Accepted);
}

TEST_F(ViafaxDialogTest, IsAbandoned) {
  Open(2);
  Press(*dialog, 2);
  EXPECT_EQ(End(), QDialog::Rejected);
  Open(2);
  PressKey(Qt::Key_Escape);
  EXPECT_EQ(End(), QDialog::Rejected);
}

TEST_F(ViafaxDialogTest, NothingIsCut) {
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    Open(4);
    SavePicture(*dialog, "viafax", percent);
  }
}

}  // namespace
}  // namespace carnetel::desktop
