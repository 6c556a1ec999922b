// Cards typed, kept, thrown away and saved.
#include <QApplication>
#include <QClipboard>

#include "tests/desktop/window/window_fixture.h"

namespace carnetel::desktop {
namespace {

using Texts = std::vector<std::string>;

const std::string kQuestion = "Voulez vous quitter sans sauver les dernières saisies ?";

class Editing : public WindowTest {
 protected:
  void StartWith(int companies) {
    BuildCompanies(companies);
    Start();
  }
};

TEST_F(Editing, LeavingForAnotherRowAndAnsweringNoKeepsTheCardUnderEdit) {
  StartWith(5);
  ClickRow(1);
  TypeInto(156, "Lyon");
  Answer(MessageButton::kNo);
  ClickRow(3);
  EXPECT_EQ(Asked(), Texts{kQuestion});
  EXPECT_EQ(Focus(), 156);
  EXPECT_EQ(List()->CurrentRow(), 1);
  EXPECT_EQ(Text(156), "Lyon");
  EXPECT_EQ(Text(150), "BETA");
  Key(Qt::Key_Return);
  EXPECT_EQ(Focus(), 195);
  EXPECT_EQ(Saved()[1].Field(kVille), "Lyon");
  EXPECT_EQ(Saved()[3].Field(kVille), "");
  EXPECT_EQ(Asked(), Texts{});
}

TEST_F(Editing, LeavingForAnotherRowAndAnsweringYesShowsThatRow) {
  StartWith(5);
  ClickRow(1);
  TypeInto(156, "Lyon");
  Answer(MessageButton::kYes);
  ClickRow(3);
  EXPECT_EQ(Focus(), 195);
  EXPECT_EQ(List()->CurrentRow(), 3);
  EXPECT_EQ(Text(150), "CHARLIE");
  EXPECT_EQ(Text(156), "");
  EXPECT_EQ(Saved()[1].Field(kVille), "");
  EXPECT_EQ(Button(1008)->text(), "Créer nouvelle fiche");
  // The list is not stuck with a button down: a plain click goes on moving.
  ClickRow(4);
  EXPECT_EQ(Text(150), "DELTA");
  EXPECT_EQ(Asked(), Texts{kQuestion});
}

TEST_F(Editing, MenusAndOtherWindowsAskNothing) {
  StartWith(3);
  TypeInto(156, "Lyon");
  QWidget* field = Control(156);
  for (const Qt::FocusReason reason :
       {Qt::MenuBarFocusReason, Qt::PopupFocusReason, Qt::ActiveWindowFocusReason}) {
    QFocusEvent event(QEvent::FocusIn, reason);
    QApplication::sendEvent(List(), &event);
    Settle();
  }
  EXPECT_EQ(Asked(), Texts{});
  EXPECT_EQ(window->logic().form().return_field(), 156);
  EXPECT_EQ(Focus(), field->objectName().toInt());
}

TEST_F(Editing, NewCardsChainUntilCancelled) {
  StartWith(2);
  Key(Qt::Key_Insert);
  EXPECT_EQ(Focus(), 150);
  Type("Gamma");
  Key(Qt::Key_Return);
  EXPECT_EQ(Focus(), 150);
  EXPECT_EQ(Text(150), "");
  EXPECT_EQ(Button(1008)->text(), "Annuler les dernières saisies");
  Type("Omega");
  Key(Qt::Key_Return);
  Type("Perdue");
  Press(1008);
  EXPECT_EQ(Focus(), 195);
  EXPECT_EQ(Asked(), Texts{});
  EXPECT_EQ(SavedCompanies(), (Texts{"ALPHA", "BETA", "Gamma", "Omega"}));
  EXPECT_EQ(Text(150), "Omega");
  EXPECT_EQ(Text(181), "4 / 4");
}

TEST_F(Editing, CancelShowsTheCardAgain) {
  StartWith(2);
  TypeInto(156, "Lyon");
  EXPECT_EQ(Button(1008)->text(), "Annuler les dernières saisies");
  Press(1008);
  EXPECT_EQ(Text(156), "");
  EXPECT_EQ(Focus(), 195);
  EXPECT_EQ(Asked(), Texts{});
  EXPECT_EQ(Button(1008)->text(), "Créer nouvelle fiche");
}

TEST_F(Editing, AChangedKeyMovesTheRowAndKeepsItsMarks) {
  StartWith(3);
  Key(Qt::Key_Space);
  ClickRow(0);
  TypeInto(150, "Zulu");
  Key(Qt::Key_Return);
  EXPECT_EQ(Rows(), (Texts{"BETA", "BRAVO", "Zulu"}));
  EXPECT_EQ(MarkedRows(), std::vector<int>{2});
  EXPECT_EQ(List()->CurrentRow(), 2);
  const std::vector<SavedCard> saved = Saved();
  EXPECT_EQ(saved[2].Field(kSte1), "Zulu");
  EXPECT_EQ(saved[2].Field(kTel1), "01 00 00 00 00");
  EXPECT_TRUE(saved[2].entry.bit(1));
  EXPECT_TRUE(saved[2].entry.bit(0));
}

TEST_F(Editing, AChangedNumberStaysInPlace) {
  StartWith(3);
  const uint32_t place = Saved()[1].entry.card_offset();
  ClickRow(1);
  TypeInto(158, "02 11");
  Press(1006);
  EXPECT_EQ(Saved()[1].Field(kTel1), "02 11");
  EXPECT_EQ(Saved()[1].entry.card_offset(), place);
}

TEST_F(Editing, WithoutAKeyTheSaveButtonsAreOffAndEnterBeeps) {
  StartWith(2);
  int beeps = 0;
  window->SetBeeper([&beeps] { ++beeps; });
  TypeInto(150, "B");
  EXPECT_TRUE(Button(1006)->IsActive());
  Key(Qt::Key_Backspace);
  EXPECT_FALSE(Button(1006)->IsActive());
  EXPECT_FALSE(Button(1007)->IsActive());
  Key(Qt::Key_Return);
  EXPECT_EQ(beeps, 1);
  EXPECT_EQ(Focus(), 150);
  EXPECT_EQ(SavedCompanies(), (Texts{"ALPHA", "BETA"}));
  Type("C");
  EXPECT_TRUE(Button(1006)->IsActive());
}

TEST_F(Editing, AKeyOfBlanksIsToldAndLost) {
  StartWith(2);
  TypeInto(150, " ");
  Key(Qt::Key_Return);
  EXPECT_EQ(Asked(), Texts{"Fiche incomplète : le champ d'index est obligatoire "});
  EXPECT_EQ(SavedCompanies(), (Texts{"ALPHA", "BETA"}));
  EXPECT_EQ(Text(150), "ALPHA");
}

TEST_F(Editing, EscapeAsksOnlyWhenThereAreChanges) {
  StartWith(2);
  Control(156)->setFocus(Qt::TabFocusReason);
  Key(Qt::Key_Escape);
  EXPECT_EQ(Asked(), Texts{});
  EXPECT_EQ(Focus(), 156);
  Type("Lyon");
  Answer(MessageButton::kNo);
  Key(Qt::Key_Escape);
  EXPECT_EQ(Asked(), Texts{kQuestion});
  EXPECT_EQ(Text(156), "Lyon");
  EXPECT_EQ(Focus(), 156);
  Answer(MessageButton::kYes);
  Key(Qt::Key_Escape);
  EXPECT_EQ(Asked(), Texts{kQuestion});
  EXPECT_EQ(Text(156), "");
  EXPECT_EQ(Focus(), 195);
  EXPECT_TRUE(window->isVisible());
}

TEST_F(Editing, AccentsAreStoredAsCardsHoldThem) {
  StartWith(1);
  TypeInto(156, "Besançon l'été");
  Key(Qt::Key_Return);
  EXPECT_EQ(Saved()[0].Field(kVille), "Besan\x87on l'\x82t\x82");
  EXPECT_EQ(Text(156), "Besançon l'été");
}

TEST_F(Editing, ACharacterThatCardsCannotHoldIsRefusedWithABeep) {
  StartWith(1);
  auto* town = dynamic_cast<FilteredEdit*>(Control(156));
  int beeps = 0;
  town->SetBeeper([&beeps] { ++beeps; });
  TypeInto(156, "S\u0152ur");
  EXPECT_EQ(Text(156), "Sur");
  EXPECT_EQ(beeps, 1);
  QApplication::clipboard()->setText("l\u2019eau");
  TypeInto(156, "");
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Text(156), "l'eau");
  EXPECT_EQ(beeps, 1);
  Key(Qt::Key_Return);
  EXPECT_EQ(Saved()[0].Field(kVille), "l'eau");
}

TEST_F(Editing, AKeyMayNotStartWithAnAccentedCapital) {
  StartWith(1);
  int beeps = 0;
  window->SetBeeper([&beeps] { ++beeps; });
  Key(Qt::Key_Insert);
  Type("É");
  EXPECT_EQ(Text(150), "");
  EXPECT_EQ(beeps, 1);
  Type("Eté");
  EXPECT_EQ(Text(150), "Eté");
}

TEST_F(Editing, NotesTakeLineBreaksByControlEnterAndSaveByEnter) {
  SetProfile("ShowRefCor", "0");
  StartWith(1);
  Control(174)->setFocus(Qt::TabFocusReason);
  Type("un");
  Key(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(Focus(), 174);
  Type("deux");
  Key(Qt::Key_Return);
  EXPECT_EQ(Focus(), 195);
  EXPECT_EQ(Saved()[0].Field(kNotes), "un\r\ndeux");
  Control(174)->setFocus(Qt::TabFocusReason);
  Key(Qt::Key_Tab);
  EXPECT_NE(Focus(), 174);
}

TEST_F(Editing, AReferenceIsTypedInItsRow) {
  StartWith(1);
  auto* references = dynamic_cast<ReferenceCombo*>(Control(164));
  references->edit()->setFocus(Qt::MouseFocusReason);
  Key(Qt::Key_Down);
  Key(Qt::Key_Down);
  EXPECT_EQ(references->currentIndex(), 2);
  EXPECT_EQ(window->logic().form().mode(), FormMode::kRest);
  Type("C0042");
  Key(Qt::Key_Return);
  EXPECT_EQ(Saved()[0].Field(kRef1 + 2), "C0042");
  EXPECT_EQ(Saved()[0].Field(kRef1), "");
}

TEST_F(Editing, ZonesSwapOnOneSpot) {
  StartWith(1);
  const QSize size = window->size();
  EXPECT_TRUE(Control(164)->isVisible());
  EXPECT_FALSE(Control(174)->isVisible());
  Press(1018);
  EXPECT_FALSE(Control(164)->isVisible());
  EXPECT_TRUE(Control(174)->isVisible());
  EXPECT_EQ(Focus(), 174);
  Press(1020);
  EXPECT_TRUE(Control(164)->isVisible());
  EXPECT_EQ(Focus(), 164);
  EXPECT_EQ(window->size(), size);
}

TEST_F(Editing, NumberFieldsTakeDialSignsOnly) {
  StartWith(1);
  for (const int control : {158, 159, 160, 161}) {
    auto* number = dynamic_cast<FilteredEdit*>(Control(control));
    int beeps = 0;
    number->SetBeeper([&beeps] { ++beeps; });
    TypeInto(control, "01e,a*#");
    EXPECT_EQ(number->text(), "01,A*#") << control;
    EXPECT_EQ(beeps, 1) << control;
  }
  TypeInto(162, "3615 méteo");
  EXPECT_EQ(Text(162), "3615 méteo");
}

TEST_F(Editing, NothingMovesBetweenTheLooks) {
  StartWith(1);
  const QSize size = window->size();
  const QRect field = Control(158)->geometry();
  EXPECT_TRUE(Control(173)->isVisible());
  EXPECT_FALSE(Control(172)->isVisible());
  Control(158)->setFocus(Qt::TabFocusReason);
  Settle();
  EXPECT_FALSE(Control(173)->isVisible());
  EXPECT_TRUE(Control(172)->isVisible());
  EXPECT_EQ(Control(158)->geometry(), field);
  const auto right_edge = [this](int id) {
    return Control(id)->mapTo(window.get(), Control(id)->rect().topRight()).x();
  };
  EXPECT_EQ(right_edge(159), right_edge(172));
  EXPECT_EQ(right_edge(161), right_edge(150));
  EXPECT_EQ(window->size(), size);
}

}  // namespace
}  // namespace carnetel::desktop
