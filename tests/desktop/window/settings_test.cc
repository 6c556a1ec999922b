// Description, preferences and the about box, through their dialogs.
#include <QCursor>
#include <QRadioButton>

#include "tests/desktop/window/dialog_user.h"

namespace carnetel::desktop {
namespace {

class WindowSettings : public DialogWindowTest {
 protected:
  void BuildThree() {
    Build({CardWith({{kSte1, "ALPHA"}, {kNom, "Zola"}, {kNotes, "note"}, {kRef1, "R1"}}),
           CardWith({{kSte1, "BETA"}, {kNom, "Martin"}}),
           CardWith({{kSte1, "GAMMA"}, {kNom, "Albert"}})});
  }
  // Presses radios and boxes of the preferences, then "Ok".
  void ChangePreferences(const Numbers& controls) {
    Expect(134, [controls](QDialog& dialog) {
      for (const int control : controls) PressIn(dialog, control);
      PressIn(dialog, 1);
    });
    Choose(230);
  }
  [[nodiscard]] bool IsBold(int label) { return Control(label)->font().bold(); }
};

// ---- Descriptif ----

TEST_F(WindowSettings, ADescriptionIsTypedRestoredAndKept) {
  BuildCompanies(1);
  Start();
  Expect(103, [this](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Descriptif de l'carnetel");
    EXPECT_EQ(Find<QLabel>(dialog, 180)->text().toStdString(), DefaultPath() + ".DAN");
    EXPECT_EQ(FocusId(), 196);
    Type("Faux");
    PressIn(dialog, 197);
    EXPECT_EQ(Find<QLineEdit>(dialog, 196)->text(), "");
    EXPECT_EQ(FocusId(), 196);
    Type(QString::fromUtf8("Clients d'été"));
    PressIn(dialog, 1);
  });
  Choose(204);
  EXPECT_EQ(HeaderOf(DefaultPath()).description().bytes(), "Clients d'\x82t\x82");
  EXPECT_EQ(Focus(), 195);
  Expect(103, [this](QDialog& dialog) {
    EXPECT_EQ(Find<QLineEdit>(dialog, 196)->text(), QString::fromUtf8("Clients d'été"));
    // All of it is selected: typing replaces it.
    Type("Amis");
    Key(Qt::Key_Return);
  });
  Choose(204);
  Choose(206);
  ExitSession();
  EXPECT_EQ(HeaderOf(DefaultPath()).description().bytes(), "Amis");
}

TEST_F(WindowSettings, ADescriptionAppearsWhereDirectoriesAreChosen) {
  BuildCompanies(1);
  Start();
  Expect(103, [this](QDialog&) {
    Type("Fournisseurs");
    Key(Qt::Key_Return);
  });
  Choose(204);
  Expect(128, [](QDialog& dialog) {
    ClickText(FilesOf(dialog), "CARNETEL.DAN");
    EXPECT_EQ(Find<QLineEdit>(dialog, 196)->text(), "Fournisseurs");
    PressIn(dialog, 2);
  });
  Choose(201);
}

TEST_F(WindowSettings, ADirectoryBecomesPrivateAndPublicAgain) {
  BuildCompanies(1);
  StartWithSeats();
  for (const bool is_private : {true, false}) {
    Expect(132, [](QDialog& dialog) {
      PressIn(dialog, 225);
      PressIn(dialog, 1);
    });
    Choose(204);
    EXPECT_EQ(HeaderOf(DefaultPath()).owner(), is_private ? 3 : 0);
  }
}

// ---- Préférences ----

TEST_F(WindowSettings, AnotherIndexReordersTheListAndKeepsTheMarks) {
  BuildThree();
  Start();
  Key(Qt::Key_Space);
  Click(Control(656));
  EXPECT_EQ(Rows(), Texts{"ALPHA"});
  EXPECT_TRUE(IsBold(2016));
  EXPECT_FALSE(IsBold(2019));
  ChangePreferences({172});
  EXPECT_EQ(Rows(), (Texts{"Albert", "Martin", "Zola"}));
  EXPECT_EQ(MarkedRows(), Numbers{2});
  EXPECT_EQ(Text(183), "1");
  EXPECT_FALSE(IsBold(2016));
  EXPECT_TRUE(IsBold(2015));
  EXPECT_TRUE(IsBold(2019));
  EXPECT_EQ(window->findChild<LetterTabs*>()->SelectedId(), 655);
  EXPECT_EQ(Text(172), "Albert");
  EXPECT_EQ(Profile("Idindex"), "10");
  // The index field is where a new card begins.
  Reactivate();
  Press(1008);
  EXPECT_EQ(Focus(), 172);
  Press(1008);
  Choose(206);
  ExitSession();
  const auto saved = Saved(kNom);
  ASSERT_EQ(saved.size(), 3u);
  EXPECT_EQ(saved[2].Field(kSte1), "ALPHA");
  EXPECT_TRUE(saved[2].entry.bit(1));
}

TEST_F(WindowSettings, AnotherStyleStaysOnTheTab) {
  BuildThree();
  Start();
  Click(Control(657));
  ChangePreferences({2026});
  EXPECT_EQ(Rows(), Texts{"Martin BETA"});
  EXPECT_EQ(Profile("StyleAffSte"), "2");
  EXPECT_EQ(window->findChild<LetterTabs*>()->SelectedId(), 657);
  ChangePreferences({});
  EXPECT_EQ(Rows(), Texts{"Martin BETA"});
}

TEST_F(WindowSettings, NotesComeFirst) {
  BuildThree();
  Start();
  EXPECT_FALSE(Control(174)->isVisible());
  ChangePreferences({174});
  EXPECT_TRUE(Control(174)->isVisible());
  EXPECT_FALSE(Control(164)->isVisible());
  EXPECT_EQ(Text(174), "note");
  EXPECT_TRUE(Button(1020)->isVisible());
  EXPECT_EQ(Profile("ShowRefCor"), "0");
  // What the user swapped meanwhile is set right by the next "Ok".
  Press(1020);
  EXPECT_TRUE(Control(164)->isVisible());
  ChangePreferences({});
  EXPECT_TRUE(Control(174)->isVisible());
}

TEST_F(WindowSettings, ANewCardBeginsAtItsFirstField) {
  BuildThree();
  Start();
  Press(1008);
  EXPECT_EQ(Focus(), 150);
  Press(1008);
  ChangePreferences({2027});
  Press(1008);
  EXPECT_EQ(Focus(), 170);
}

class Balloons : public WindowSettings {
 protected:
  // Holds the mouse over the toolbar's first button until a balloon would be up.
  [[nodiscard]] bool ShowsBalloon() {
    QWidget* button = Control(1010);
    QTest::mouseMove(window.get(), QPoint(1, 1));
    QCursor::setPos(button->mapToGlobal(button->rect().center()));
    QTest::mouseMove(button, button->rect().center());
    Settle();
    auto* tip = window->findChild<BubbleTip*>();
    tip->ShowNow();
    return tip->Visible() != nullptr;
  }
};

TEST_F(Balloons, AreShownAsLongAsTheyAreWanted) {
  BuildThree();
  Start();
  // The toolbar must be where the mouse can go.
  window->move(10, 10);
  EXPECT_TRUE(ShowsBalloon());
  ChangePreferences({223});
  EXPECT_FALSE(ShowsBalloon());
  EXPECT_EQ(Profile("Balloons"), "0");
  ChangePreferences({223});
  EXPECT_TRUE(ShowsBalloon());
}

// ---- A propos ----

TEST_F(WindowSettings, AboutTellsTheProgram) {
  BuildThree();
  Start();
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
    Expect(131, [this, key](QDialog& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "A propos de l'carnetel");
      Key(key);
    });
    Choose(229);
    EXPECT_EQ(Focus(), 195);
  }
}

// ---- the focus afterwards ----

TEST_F(WindowSettings, TheFormIsAtRestBesideADialogAndAfterIt) {
  BuildThree();
  Start();
  bool by_keys = false;
  for (const int control : {150, 156, 158, 164, 170, 171, 172, 173, 170, 150}) {
    QWidget* field = Control(control);
    if (control != 173) Control(150)->setFocus(Qt::MouseFocusReason);
    if (auto* combo = qobject_cast<QComboBox*>(field)) field = combo->lineEdit();
    field->setFocus(Qt::MouseFocusReason);
    Settle();
    ASSERT_TRUE(window->logic().form().edit_look()) << control;
    const auto at_rest = [&] {
      EXPECT_FALSE(window->logic().form().edit_look()) << control;
      EXPECT_TRUE(Control(173)->isVisible()) << control;
      EXPECT_EQ(Button(1008)->face(), Face::kNewCard) << control;
    };
    Expect(131, [&](QDialog&) {
      at_rest();
      Key(Qt::Key_Return);
    });
    by_keys = !by_keys;
    if (by_keys) {
      ChooseByKeys(Qt::Key_A, Qt::Key_P);
    } else {
      Choose(229);
    }
    at_rest();
    EXPECT_EQ(Focus(), 195) << control;
  }
}

}  // namespace
}  // namespace carnetel::desktop
