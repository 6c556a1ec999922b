// The keys of "Recherche": Enter from every place, Escape, letters and help.
#include "tests/desktop/dialogs/search_dialog_fixture.h"

namespace carnetel::desktop {
namespace {

TEST_F(SearchDialogTest, EnterInTheNotesSearchesAndWithControlBreaksTheLine) {
  StartWith({CardWith({{kSte1, "ALPHA"}, {kNotes, "un\r\ndeux"}}),
             CardWith({{kSte1, "BETA"}, {kNotes, "un deux"}})});
  Run([this] {
    TypeInto(174, "n");
    PressKey(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(FocusId(), 174);
    Type("d");
    EXPECT_EQ(Text(174), "n\r\nd");
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Text(150), "ALPHA");
    EXPECT_EQ(Text(174), "un\r\ndeux");
    EXPECT_EQ(FocusId(), 216);
    // Afterwards it does nothing there.
    Control(174)->setFocus();
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Text(174), "un\r\ndeux");
    EXPECT_EQ(FocusId(), 174);
    EXPECT_EQ(messages.TakeShown(), ShownBoxes());
  });
}

TEST_F(SearchDialogTest, EnterInTheNotesOfAnEmptyFormIsTold) {
  StartWithCards();
  Run([this] {
    Control(174)->setFocus();
    PressKey(Qt::Key_Return);
    EXPECT_EQ(messages.TakeShown(), kNoExample);
    EXPECT_EQ(FocusId(), 150);
    EXPECT_TRUE(dialog->isVisible());
  });
}

TEST_F(SearchDialogTest, EnterDoesNothingWhereChercherIsOff) {
  StartWithCards();
  Run([this] {
    for (const int id : {150, 156, 164, 171}) {
      Control(id)->setFocus();
      PressKey(Qt::Key_Return);
      EXPECT_EQ(FocusId(), id);
    }
    EXPECT_EQ(messages.TakeShown(), ShownBoxes());
    EXPECT_TRUE(dialog->isVisible());
  });
}

TEST_F(SearchDialogTest, AfterAHitFieldsCanBeTypedInButOnlyTheStepsWork) {
  StartWithCards();
  Run([this] {
    TypeInto(156, "lyon");
    PressKey(Qt::Key_Return);
    Edit(156)->setFocus();
    Edit(156)->selectAll();
    Type("Paris");
    EXPECT_EQ(Text(156), "Paris");
    EXPECT_EQ(On(), (QList<int>{216, 217, 2, 500}));
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Text(150), "BANQUE");
    Press(*dialog, 216);
    EXPECT_EQ(Text(150), "Barbier");
    EXPECT_EQ(Text(156), "Lyon 3");
  });
}

TEST_F(SearchDialogTest, LettersWithAltPressTheButtons) {
  StartWithCards();
  Run([this] {
    TypeInto(156, "lyon");
    PressMnemonic(*dialog, Qt::Key_C, 1);
    EXPECT_EQ(Text(150), "BANQUE");
    PressMnemonic(*dialog, Qt::Key_S, 216);
    EXPECT_EQ(Text(150), "Barbier");
    PressMnemonic(*dialog, Qt::Key_P, 217);
    EXPECT_EQ(Text(150), "BANQUE");
    PressMnemonic(*dialog, Qt::Key_Q, 2);
    EXPECT_FALSE(dialog->isVisible());
  });
}

TEST_F(SearchDialogTest, EscapeClosesFromEverywhere) {
  StartWithCards();
  for (const int id : {150, 155, 158, 164, 171, 174, 500}) {
    Run([this, id] {
      Find(*dialog, id)->setFocus();
      PressKey(Qt::Key_Escape);
      EXPECT_FALSE(dialog->isVisible()) << id;
    });
  }
  Run([this] {
    TypeInto(156, "lyon");
    PressKey(Qt::Key_Return);
    PressKey(Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
  });
}

TEST_F(SearchDialogTest, HelpByButtonAndKey) {
  StartWithCards();
  Run([this] {
    Press(*dialog, 500);
    for (const int id : {150, 164, 171, 174, 2, 500}) {
      Find(*dialog, id)->setFocus();
      PressKey(Qt::Key_F1);
    }
    ASSERT_EQ(help->count(), 7);
    for (const QList<QVariant>& wanted : *help) EXPECT_EQ(wanted.value(0).toInt(), 53);
    EXPECT_TRUE(dialog->isVisible());
  });
}

}  // namespace
}  // namespace carnetel::desktop
