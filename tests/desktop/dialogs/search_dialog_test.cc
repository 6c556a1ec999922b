// "Recherche" as its user meets it: what it shows, what can be typed and what is found.
#include "tests/desktop/dialogs/search_dialog_fixture.h"

namespace carnetel::desktop {
namespace {

// ---- what it shows ----

TEST_F(SearchDialogTest, HasItsTitleControlsAndTexts) {
  StartWithCards();
  Run([this] {
    EXPECT_EQ(dialog->objectName(), "102");
    EXPECT_EQ(dialog->windowTitle(), "Recherche");
    for (const int id :
         {150, 151, 152, 153, 155, 156, 157, 158, 159, 160, 161, 162, 164, 171, 172, 174}) {
      ASSERT_NE(Control(id), nullptr) << id;
      EXPECT_TRUE(Control(id)->isVisible() && Control(id)->isEnabled()) << id;
      EXPECT_EQ(Text(id), "") << id;
    }
    for (const int id : {154, 163, 170, 173}) {
      EXPECT_EQ(Find(*dialog, id), nullptr) << id;
      EXPECT_EQ(Control(id), nullptr) << id;
    }
    const std::pair<int, const char*> texts[] = {
        {1, "&Chercher"}, {216, "&Suiv"}, {217, "&Préc"}, {2, "&Quitter"}, {500, "?"}};
    for (const auto& [id, text] : texts) {
      EXPECT_EQ(Find<QPushButton>(*dialog, id)->text(), QString::fromUtf8(text)) << id;
    }
    EXPECT_EQ(On(), (QList<int>{2, 500}));
    EXPECT_EQ(FocusId(), 171);
    EXPECT_EQ(dialog->panel().References(), QStringList(6));
    ExpectNames(*dialog);
  });
}

TEST_F(SearchDialogTest, TabComesByFieldsAndButtons) {
  StartWithCards();
  Run([this] {
    EXPECT_EQ(TabWalk(), (QList<int>{171, 172, 158, 159, 160, 161, 162, 164, 174, 2, 500, 150, 151,
                                     152, 153, 155, 156, 157}));
    TypeInto(150, "BA");
    Press(*dialog, 1);
    Control(174)->setFocus();
    QList<int> stops;
    for (int i = 0; i < 5; ++i) {
      PressKey(Qt::Key_Tab);
      stops += FocusId();
    }
    EXPECT_EQ(stops, (QList<int>{216, 217, 2, 500, 150}));
  });
}

TEST_F(SearchDialogTest, TheFieldThatNamesCardsHasABoldLabel) {
  StartWithCards();
  Run([this] {
    EXPECT_TRUE(Control(2016)->font().bold());
    EXPECT_FALSE(Control(2015)->font().bold());
  });
  SetProfile("Idindex", "10");
  Quit();
  ASSERT_TRUE(Start());
  Run([this] {
    EXPECT_FALSE(Control(2016)->font().bold());
    EXPECT_TRUE(Control(2015)->font().bold());
  });
}

// ---- typing ----

TEST_F(SearchDialogTest, ChercherIsOnWhileAFieldIsFilled) {
  StartWithCards();
  Run([this] {
    for (const int id :
         {150, 151, 152, 153, 155, 156, 157, 158, 159, 160, 161, 162, 164, 171, 172, 174}) {
      TypeInto(id, "1");
      EXPECT_EQ(On(), (QList<int>{1, 2, 500})) << id;
      PressKey(Qt::Key_Backspace);
      EXPECT_EQ(On(), (QList<int>{2, 500})) << id;
    }
  });
}

TEST_F(SearchDialogTest, FieldsAreLimitedByTheirSizes) {
  StartWithCards();
  Run([this] {
    const std::pair<int, int> sizes[] = {{150, 32}, {151, 32}, {152, 32}, {153, 32}, {155, 14},
                                         {156, 32}, {157, 32}, {158, 24}, {159, 24}, {160, 21},
                                         {161, 21}, {162, 21}, {171, 24}, {172, 32}};
    for (const auto& [id, size] : sizes) {
      int refusals = 0;
      Edit(id)->SetBeeper([&refusals] { ++refusals; });
      TypeInto(id, QString(size + 1, QChar('1')));
      EXPECT_EQ(Text(id), std::string(static_cast<size_t>(size), '1')) << id;
      EXPECT_EQ(refusals, 1) << id;
    }
    int refusals = 0;
    Notes()->SetBeeper([&refusals] { ++refusals; });
    TypeInto(174, QString(65, QChar('1')));
    EXPECT_EQ(Text(174), std::string(64, '1'));
    EXPECT_EQ(refusals, 1);
  });
}

TEST_F(SearchDialogTest, NumbersTakeDialSigns) {
  StartWithCards();
  Run([this] {
    for (const int id : {158, 159, 160, 161}) {
      int refusals = 0;
      Edit(id)->SetBeeper([&refusals] { ++refusals; });
      TypeInto(id, "0e1a");
      EXPECT_EQ(Text(id), "01A") << id;
      EXPECT_EQ(refusals, 1) << id;
    }
    TypeInto(162, "3615 méteo");
    EXPECT_EQ(Text(162), "3615 méteo");
  });
}

TEST_F(SearchDialogTest, ACompanyMayNotStartWithAnAccentedLetter) {
  StartWithCards();
  Run([this] {
    for (const char* refused : {"É", "é", "-", "Ç"}) {
      beeps = 0;
      TypeInto(150, refused);
      EXPECT_EQ(Text(150), "") << refused;
      EXPECT_EQ(beeps, 1) << refused;
      EXPECT_EQ(On(), (QList<int>{2, 500})) << refused;
    }
    beeps = 0;
    TypeInto(150, "Été");
    EXPECT_EQ(Text(150), "té");
    EXPECT_EQ(beeps, 1);
    // Other fields may, the name among them, whatever the index.
    beeps = 0;
    TypeInto(172, "Éric");
    TypeInto(156, "Évry");
    EXPECT_EQ(Text(172), "Éric");
    EXPECT_EQ(Text(156), "Évry");
    EXPECT_EQ(beeps, 0);
  });
}

TEST_F(SearchDialogTest, DeletingWhatStoodInFrontOfAnAccentIsTakenBack) {
  StartWithCards();
  Run([this] {
    TypeInto(150, "Lé");
    PressKey(Qt::Key_Home);
    PressKey(Qt::Key_Delete);
    EXPECT_EQ(Text(150), "Lé");
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(On(), (QList<int>{1, 2, 500}));
  });
}

// ---- searching ----

TEST_F(SearchDialogTest, EnterInAFieldFindsTheFirstCardByTown) {
  StartWithCards();
  Run([this] {
    TypeInto(156, "lyon");
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Text(150), "BANQUE");
    EXPECT_EQ(Text(156), "Lyon");
    EXPECT_EQ(Text(172), "Durand");
    EXPECT_EQ(FocusId(), 216);
    EXPECT_EQ(On(), (QList<int>{216, 217, 2, 500}));
    EXPECT_EQ(messages.TakeShown(), ShownBoxes());
  });
}

TEST_F(SearchDialogTest, EnterThenGoesFromCardToCardAndBeepsAtTheEnd) {
  StartWithCards();
  Run([this] {
    TypeInto(156, "lyon");
    PressKey(Qt::Key_Return);
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Text(150), "Barbier");
    EXPECT_EQ(Text(151), "Groupe BA");
    EXPECT_EQ(Text(172), "");
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Text(150), "CESAR");
    EXPECT_EQ(beeps, 0);
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Text(150), "CESAR");
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(FocusId(), 216);
    EXPECT_EQ(messages.TakeShown(), ShownBoxes());
  });
}

TEST_F(SearchDialogTest, PrecGoesBackAndBeepsOnTheFirstHit) {
  StartWithCards();
  Run([this] {
    TypeInto(150, "ba");
    Press(*dialog, 1);
    EXPECT_EQ(FocusId(), 216);
    EXPECT_EQ(Text(150), "BANQUE");
    Press(*dialog, 217);
    EXPECT_EQ(Text(150), "BANQUE");
    EXPECT_EQ(beeps, 1);
    Press(*dialog, 216);
    EXPECT_EQ(Text(150), "Barbier");
    Press(*dialog, 216);
    EXPECT_EQ(beeps, 2);
    Press(*dialog, 217);
    EXPECT_EQ(Text(150), "BANQUE");
    EXPECT_EQ(beeps, 2);
  });
}

TEST_F(SearchDialogTest, NothingFoundIsToldAndTheExampleStays) {
  StartWithCards();
  Run([this] {
    TypeInto(156, "Brest");
    PressKey(Qt::Key_Return);
    ExpectNotFound();
    EXPECT_EQ(Text(156), "Brest");
    TypeInto(156, "");
    Edit(156)->selectAll();
    Type("Paris");
    Press(*dialog, 1);
    EXPECT_EQ(Text(150), "ALPHA");
  });
  EXPECT_EQ(list().current_row(), 0);
}

TEST_F(SearchDialogTest, TheCursorWaitsWhileTheIndexIsWalked) {
  StartWithCards();
  Qt::CursorShape shape = Qt::ArrowCursor;
  messages.while_shown = [&shape] {
    if (QApplication::overrideCursor() != nullptr) shape = QApplication::overrideCursor()->shape();
  };
  Run([this] {
    TypeInto(156, "Brest");
    PressKey(Qt::Key_Return);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  });
  EXPECT_EQ(shape, Qt::WaitCursor);
}

TEST_F(SearchDialogTest, HitsThatTheTabHidesArePassedOver) {
  StartWithCards();
  list().ListRefill(*LetterRangeOf('C'));
  Run([this] {
    TypeInto(156, "lyon");
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Text(150), "CESAR");
    Press(*dialog, 217);
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(Text(150), "CESAR");
  });
  EXPECT_EQ(list().current_row(), 0);
  EXPECT_EQ(view.Text(150), "CESAR");
}

TEST_F(SearchDialogTest, OnlyHiddenHitsAreNoHits) {
  StartWithCards();
  list().ListRefill(*LetterRangeOf('A'));
  Run([this] {
    TypeInto(156, "lyon");
    PressKey(Qt::Key_Return);
    ExpectNotFound();
  });
}

TEST_F(SearchDialogTest, AReferenceIsSearchedInItsRow) {
  StartWith({CardWith({{kSte1, "ALPHA"}, {kRef1, "C0042"}}),
             CardWith({{kSte1, "BETA"}, {kRef1, "x"}, {kRef1 + 2, "C0042"}})});
  Run([this] {
    Control(164)->setFocus();
    PressKey(Qt::Key_Down);
    PressKey(Qt::Key_Down);
    Type("c00");
    EXPECT_EQ(References()->currentIndex(), 2);
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Text(150), "BETA");
    EXPECT_EQ(FocusId(), 216);
    EXPECT_EQ(dialog->panel().References(), (QStringList{"x", "", "C0042", "", "", ""}));
    // The row that fitted is the one to be seen.
    EXPECT_EQ(References()->currentIndex(), 2);
    EXPECT_EQ(References()->currentText(), "C0042");
  });
}

TEST_F(SearchDialogTest, PostalCodesAreShownAndFoundLongAndShort) {
  StartWith({CardWith({{kSte1, "COURT"}, {kShortPostalCode, "69003"}}),
             CardWith({{kSte1, "LONG"}, {kPostalCode, "69003 CEDEX"}})});
  Run([this] {
    TypeInto(155, "69003");
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Text(150), "COURT");
    EXPECT_EQ(Text(155), "69003");
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Text(155), "69003 CEDEX");
    PressKey(Qt::Key_Return);
    EXPECT_EQ(beeps, 1);
  });
}

TEST_F(SearchDialogTest, AccentsAreShownAsCardsHoldThem) {
  StartWith({CardWith({{kSte1, "ALPHA"}, {kVille, "Besan\x87on"}, {kNotes, "l'\x82t\x82"}})});
  Run([this] {
    TypeInto(156, "besançon");
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Text(156), "Besançon");
    EXPECT_EQ(Text(174), "l'été");
  });
}

// ---- the end ----

TEST_F(SearchDialogTest, TheCardFoundLastBecomesTheCurrentRow) {
  StartWithCards();
  Run([this] {
    TypeInto(156, "lyon");
    PressKey(Qt::Key_Return);
    PressKey(Qt::Key_Return);
    EXPECT_EQ(list().current_row(), 0);
    Press(*dialog, 2);
    EXPECT_FALSE(dialog->isVisible());
  });
  EXPECT_EQ(list().current_row(), 2);
  EXPECT_EQ(view.Text(150), "Barbier");
  EXPECT_EQ(view.focus, kControlList);
  EXPECT_EQ(MarkedRows(), std::vector<int>());
}

TEST_F(SearchDialogTest, WithoutAHitTheRowStays) {
  StartWithCards();
  list().SetCurrentRow(3);
  Run([this] {
    TypeInto(156, "Brest");
    PressKey(Qt::Key_Return);
    messages.TakeShown();
    PressKey(Qt::Key_Escape);
  });
  EXPECT_EQ(list().current_row(), 3);
  EXPECT_EQ(view.Text(150), "CESAR");
}

}  // namespace
}  // namespace carnetel::desktop
