// What the chooser's user does with its rows and commands: clicks and marks, the consultation
// beside it, groups and sets, dialogs, recent directories, and what ends it.
#include <QPushButton>
#include <functional>

#include "tests/desktop/window/chooser_window_fixture.h"

namespace carnetel::desktop {
namespace {

using Choosing = ChooserWindowTest;

// ---- clicks ----

TEST_F(Choosing, AClickMarksOnceWhereSeveralArePicked) {
  BuildFour();
  StartChooser(kMany);
  ClickRow(1);
  EXPECT_EQ(Marked(), Numbers{1});
  EXPECT_EQ(List()->CurrentRow(), 1);
  ClickRow(2, Qt::ControlModifier);
  EXPECT_EQ(Marked(), (Numbers{1, 2}));
  ClickRow(1);
  EXPECT_EQ(Marked(), Numbers{2});
  // From the row that was current to this one, both turned once.
  ClickRow(0, Qt::ShiftModifier);
  EXPECT_EQ(Marked(), (Numbers{0, 1, 2}));
  EXPECT_EQ(Text(183), "3");
  StartChooser(kSingle);
  for (const auto keys : {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier}) {
    ClickRow(1, keys);
    EXPECT_EQ(Marked(), (Numbers{0, 1, 2}));
    EXPECT_EQ(List()->CurrentRow(), 1);
  }
}

TEST_F(Choosing, MarksAreShownWhereSeveralArePickedOnly) {
  BuildFour();
  StartChooser(kMany);
  Key(Qt::Key_Space);
  // The picture stands in front of the text.
  EXPECT_LT(FirstInk(0, 0), 13);
  EXPECT_GE(FirstInk(2, 0), 13);
  StartChooser(kSingle);
  Key(Qt::Key_End);
  EXPECT_NEAR(FirstInk(0, 0), 5, 3);
}

TEST_F(Choosing, ADoubleClickMarksOnceAndHandsItsRowOut) {
  BuildFour();
  StartChooser(kMany);
  DoubleClickRow(2);
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(chooser->result(), 1);
  EXPECT_EQ(Extracted(), Texts{"0440000004"});
  Numbers marked;
  const std::vector<SavedCard> cards = Saved();
  for (size_t i = 0; i < cards.size(); ++i) {
    if (cards[i].entry.bit(1)) marked.push_back(static_cast<int>(i));
  }
  EXPECT_EQ(marked, Numbers{3});
  StartChooser(kSingle);
  DoubleClickRow(1);
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(Extracted(), (Texts{"0440000004", "0340000003"}));
}

TEST_F(Choosing, TipsTellTheCaptionsAsLongAsTheyAreWanted) {
  BuildFour();
  const auto tip_of = [this](int button) {
    // The toolbar must be where the mouse can go.
    chooser->move(10, 10);
    QTest::mouseMove(chooser.get(), QPoint(1, 1));
    QCursor::setPos(Button(button)->mapToGlobal(Button(button)->rect().center()));
    QTest::mouseMove(Button(button), Button(button)->rect().center());
    Settle();
    auto* tip = chooser->findChild<BubbleTip*>();
    tip->ShowNow();
    return tip->Visible() == nullptr ? QString() : tip->Visible()->text();
  };
  StartChooser(kMany);
  EXPECT_EQ(tip_of(1031), "Extraire Groupe");
  // That one is off.
  EXPECT_EQ(tip_of(1032), "Extraire Sélection");
  SetProfile("Balloons", "0");
  StartChooser(kMany);
  EXPECT_EQ(tip_of(1031), "");
}

// ---- the consultation ----

class ChooserConsulting : public ChooserWindowTest {
 protected:
  void Open(int type = kMany) {
    BuildFour();
    StartChooser(type);
    Press(1033);
    ASSERT_NE(Box(), nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(Box()));
  }
  ChooserConsultation* Box() { return chooser->findChild<ChooserConsultation*>("106"); }
  QPushButton* In(int id) { return Box()->findChild<QPushButton*>(QString::number(id)); }
  QString Field(int id) { return Box()->panel().FieldText(id); }
  void ExpectClosed() {
    ASSERT_TRUE(QTest::qWaitFor([this] {
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
      return Box() == nullptr;
    }));
  }
};

TEST_F(ChooserConsulting, ShowsAllOfTheCurrentCardReadOnly) {
  Open();
  EXPECT_EQ(Box()->windowTitle(), "Consultation");
  EXPECT_FALSE(Box()->isModal());
  EXPECT_EQ(Field(150), "ALPHA");
  EXPECT_EQ(Field(155), "75001");
  EXPECT_EQ(Field(160), "0140000001");
  EXPECT_EQ(Field(171), "Jean");
  EXPECT_EQ(Field(172), "DURAND");
  EXPECT_EQ(Field(174), "note");
  EXPECT_EQ(Box()->panel().References().value(0), "client");
  EXPECT_FALSE(Box()->panel().Control(174)->isEnabled());
  EXPECT_TRUE(qobject_cast<QLineEdit*>(Box()->panel().Control(150))->isReadOnly());
  const std::pair<int, const char*> captions[] = {
      {216, "&Suiv"}, {217, "&Préc"}, {218, "&Ext. Fiche"}, {2, "&Quitter"}, {500, "?"}};
  for (const auto& [id, caption] : captions) EXPECT_EQ(In(id)->text(), QString(caption)) << id;
  EXPECT_TRUE(Box()->grab().save("window_chooser_consultation_100.png"));
}

TEST_F(ChooserConsulting, OpensOnceAndFollowsTheList) {
  Open();
  ChooserConsultation* first = Box();
  Choose(220);
  EXPECT_EQ(chooser->findChildren<Consultation*>(), QList<Consultation*>{first});
  EXPECT_TRUE(QTest::qWaitForWindowActive(first));
  Reactivate();
  List()->setFocus(Qt::TabFocusReason);
  Key(Qt::Key_End);
  EXPECT_EQ(Field(150), "ZETA");
  EXPECT_EQ(Field(156), "Nice");
  EXPECT_EQ(Field(155), "");
}

TEST_F(ChooserConsulting, EnterGoesTheWayOfTheButtonWithTheFocus) {
  Open();
  EXPECT_TRUE(In(216)->hasFocus());
  Key(Qt::Key_Return);
  EXPECT_EQ(Field(150), "GAMMA");
  EXPECT_EQ(List()->CurrentRow(), 1);
  for (int i = 0; i < 3; ++i) Key(Qt::Key_Return);
  EXPECT_EQ(Field(150), "ZETA");
  Key(Qt::Key_Tab);
  EXPECT_TRUE(In(217)->hasFocus());
  for (int i = 0; i < 4; ++i) Key(Qt::Key_Return);
  EXPECT_EQ(Field(150), "ALPHA");
  QTest::mouseClick(In(216), Qt::LeftButton);
  EXPECT_EQ(Field(150), "GAMMA");
  EXPECT_EQ(Marked(), Numbers{});
}

class ChooserConsultingExtracts : public ChooserConsulting,
                                  public ::testing::WithParamInterface<int> {};

TEST_P(ChooserConsultingExtracts, HandsItsCardOutAndCloses) {
  Open(GetParam());
  Key(Qt::Key_Return);
  Key(Qt::Key_E, Qt::AltModifier);
  ASSERT_TRUE(QTest::qWaitFor([this] { return ended == 1; }));
  EXPECT_EQ(chooser->result(), 1);
  EXPECT_EQ(Extracted(), Texts{"0340000003"});
  ExpectClosed();
}
INSTANTIATE_TEST_SUITE_P(Kinds, ChooserConsultingExtracts, ::testing::Values(1, 2));

TEST_F(ChooserConsulting, ClosesAndTheListHasTheFocus) {
  Open();
  Key(Qt::Key_Escape);
  ExpectClosed();
  Reactivate();
  EXPECT_EQ(Focus(), 195);
  EXPECT_EQ(ended, 0);
  Press(1033);
  QTest::mouseClick(In(2), Qt::LeftButton);
  ExpectClosed();
}

TEST_F(ChooserConsulting, HasItsHelp) {
  Open();
  QTest::mouseClick(In(500), Qt::LeftButton);
  ASSERT_NE(chooser->dialogs().help_window(), nullptr);
  EXPECT_EQ(chooser->dialogs().help_window()->topic(), 11);
  chooser->dialogs().CloseHelp();
}

TEST_F(ChooserConsulting, EndsWithTheWindow) {
  Open();
  Choose(206);
  EXPECT_EQ(ended, 1);
  ExpectClosed();
}

TEST_F(ChooserConsulting, AnEmptyListLeavesAnEmptyCard) {
  Build(home + "VIDE", {CardWith({{kSte1, "SANS FAX"}})});
  SetProfile("File2", "&2 " + home + "VIDE.DAN");
  Open();
  Choose(226);
  EXPECT_EQ(List()->RowCount(), 0);
  EXPECT_EQ(Field(150), "");
  EXPECT_EQ(Box()->panel().References().value(0), "");
}

// ---- groups, sets, styles ----

TEST_F(Choosing, PickersAndStylesChangeTheList) {
  BuildFour();
  CriteriaFile sets(files, DefaultPath() + ".CRT");
  sets.rows().SetRow(0, {kVille + 1, '0', OemText("Nice")});
  ASSERT_TRUE(sets.AddCriteriaSet(OemText("Nice")));
  StartChooser(kMany);
  auto* picker = qobject_cast<PickerCombo*>(Control(185));
  picker->setFocus(Qt::TabFocusReason);
  Key(Qt::Key_Down);
  EXPECT_EQ(Text(185), "Nice");
  EXPECT_EQ(Marked(), Numbers{2});
  EXPECT_EQ(List()->CurrentRow(), 2);
  EXPECT_EQ(Text(181), "3 / 3");
  EXPECT_EQ(Focus(), 195);
  Choose(234);
  EXPECT_EQ(Text(2013), "Nom-Prénom");
  EXPECT_TRUE(chooser->MenuAction(234)->isChecked());
  EXPECT_FALSE(chooser->MenuAction(232)->isChecked());
  EXPECT_EQ(chooser->logic().Row(0).second, "DURAND Jean ");
  EXPECT_EQ(Profile("StyleAffList"), "3");
}

// ---- dialogs ----

TEST_F(Choosing, CommandsOpenTheirDialogs) {
  BuildFour();
  StartChooser(kMany);
  Expect(128, [this](QDialog&) { Key(Qt::Key_Escape); });
  Press(1010);
  Expect(103, [this](QDialog&) { Key(Qt::Key_Escape); });
  Choose(224);
  Expect(131, [this](QDialog&) { Key(Qt::Key_Escape); });
  Choose(229);
  Expect(102, [this](QDialog& dialog) {
    Find<QLineEdit>(dialog, 150)->setFocus();
    Type("ZETA");
    PressIn(dialog, 1);
    PressIn(dialog, 2);
  });
  Press(1001);
  EXPECT_EQ(List()->CurrentRow(), 2);
  Reactivate();
  EXPECT_EQ(Focus(), 195);
  EXPECT_EQ(ended, 0);
}

TEST_F(Choosing, MarksGoAfterAQuestion) {
  BuildFour();
  StartChooser(kMany);
  Key(Qt::Key_Space);
  Answer(MessageButton::kNo);
  Press(1034);
  EXPECT_EQ(Marked(), Numbers{0});
  Answer(MessageButton::kYes);
  Choose(213);
  EXPECT_EQ(Marked(), Numbers{});
  EXPECT_EQ(Asked(), (Texts{"Vider la Sélection courante ?", "Vider la Sélection courante ?"}));
}

TEST_F(Choosing, TheViafaxLineIsChosenInItsDialog) {
  BuildFour();
  StartChooser(kViafax);
  Expect(1049, [](QDialog& dialog) {
    PressIn(dialog, 1041);
    PressIn(dialog, 1046);
    PressIn(dialog, 1);
  });
  Choose(235);
  EXPECT_EQ(Profile("ViafaxOption"), "4");
  Reactivate();
  Key(Qt::Key_Return);
  EXPECT_EQ(chooser->result(), 1);
  const std::vector<std::byte> job = files.Contents(ExchangeFile());
  EXPECT_NE(AsChars(job).find("ADR08=\"Jean-DURAND\","), std::string::npos);
}

TEST_F(Choosing, RecentDirectoriesOpenInItsPlace) {
  BuildFour();
  Build(home + "A&B", {CardWith({{kSte1, "AUTRE"}, {kFax, "99"}})});
  SetProfile("File2", "&2 " + home + "A&B.DAN");
  StartChooser(kMany);
  EXPECT_EQ(RecentTexts(), (Texts{"&1 " + DefaultPath() + ".DAN", "&2 " + home + "A&B.DAN"}));
  Choose(226);
  EXPECT_EQ(chooser->logic().Row(0).first, "AUTRE");
  EXPECT_EQ(RecentTexts().front(), "&1 " + home + "A&B.DAN");
  Choose(206);
  EXPECT_EQ(Profile("File2"), "&2 " + DefaultPath() + ".DAN");
}

// ---- its end ----

TEST_F(Choosing, SelectionAndGroupAreHandedOut) {
  BuildFour();
  StartChooser(kMany);
  ClickRow(0);
  ClickRow(2);
  Press(1032);
  EXPECT_EQ(chooser->result(), 2);
  EXPECT_EQ(Extracted(), (Texts{"0140000001", "0440000004"}));
  StartChooser(kMany);
  Choose(223);
  EXPECT_EQ(chooser->result(), 2);
  EXPECT_EQ(Extracted().size(), 5U);
}

TEST_F(Choosing, AFileThatCannotBeOpenedIsToldAndClosesTheWindow) {
  BuildFour();
  files.MakeFolder(ExchangeFile());
  StartChooser(kMany);
  Key(Qt::Key_Return);
  EXPECT_EQ(Asked(), Texts{"Accès au fichier " + ExchangeFile() + " impossible"});
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(chooser->result(), 0);
}

TEST_F(Choosing, EndsWhenTheProgramDoesWhileADialogIsOpen) {
  BuildFour();
  for (const auto& [command, number] : {std::pair(211, 102), std::pair(201, 128)}) {
    StartChooser(kMany);
    Expect(number, [this](QDialog& dialog) {
      chooser->QuitUnasked();
      EXPECT_EQ(ended, 1);
      dialog.reject();
    });
    Choose(command);
    EXPECT_EQ(session->directory(), nullptr);
    EXPECT_EQ(chooser->result(), 0);
  }
}

}  // namespace
}  // namespace carnetel::desktop
