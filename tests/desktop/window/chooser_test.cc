// The chooser as its user meets it: what stands in it, keys, clicks and menus.
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <algorithm>

#include "tests/desktop/dialogs/dialog_pictures.h"
#include "tests/desktop/window/chooser_window_fixture.h"
#include "tests/desktop/window/focus_walk.h"

namespace carnetel::desktop {
namespace {

class Chooser : public ChooserWindowTest {
 protected:
  // Of a title, in the list's own pixels.
  int LeftOfTitle(int id) {
    return Control(id)->mapTo(&TestedWindow(), QPoint()).x() - LeftOfList();
  }
  int LeftOfList() { return List()->viewport()->mapTo(&TestedWindow(), QPoint()).x(); }
  void SavePicture(const QString& name) {
    EXPECT_TRUE(chooser->grab().save(QStringLiteral("window_%1.png").arg(name)));
  }
};

// ---- what stands in it ----

TEST_F(Chooser, HasItsTitleTextsAndFixedSize) {
  BuildFour();
  for (const auto& [type, number] : {std::pair(kSingle, "119"), std::pair(kMany, "105")}) {
    StartChooser(type);
    EXPECT_EQ(chooser->objectName(), number);
    EXPECT_EQ(chooser->windowTitle(), "Choix du correspondant");
    EXPECT_EQ(Text(2017), "Société");
    EXPECT_EQ(Text(2013), "Prénom-Nom");
    EXPECT_EQ(Text(2014), "N° Fax");
    EXPECT_EQ(Text(184), "Tout le Fichier ");
    EXPECT_EQ(Text(185), "Sans Nom");
    EXPECT_EQ(Text(181), "1 / 3");
    EXPECT_EQ(Text(183), "0");
    EXPECT_EQ(Focus(), 195);
    EXPECT_EQ(chooser->minimumSize(), chooser->maximumSize());
    EXPECT_FALSE(chooser->windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
  }
}

TEST_F(Chooser, ColumnsBeginWhereTheirTitlesDo) {
  Build({CardWith({{kSte1, "MMM"}, {kNom, "MMM"}, {kFax, "000"}}),
         CardWith({{kSte1, "MMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMM"},
                   {kNom, "MMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMM"},
                   {kFax, "000000000000000000000000"}})});
  for (const int type : {kSingle, kMany}) {
    StartChooser(type);
    const int text_left = type == kSingle ? 5 : 13;
    EXPECT_NEAR(FirstInk(1, 0), LeftOfTitle(2017) + text_left, 2);
    for (const int row : {0, 1}) {
      for (const int title : {2013, 2014}) {
        const int left = LeftOfTitle(title);
        // Nothing of the column before comes near.
        EXPECT_NEAR(FirstInk(row, left - 3), left, 3) << row << " " << title;
      }
    }
  }
}

TEST_F(Chooser, MenusAreThoseOfTheTable) {
  BuildFour();
  for (const int type : {kMany, kViafax}) {
    StartChooser(type);
    QStringList titles;
    for (const QAction* title : TestedWindow().menuBar()->actions()) titles += title->text();
    EXPECT_EQ(titles, (QStringList{"&Fichier", "&Edition", "E&xtraction", "&Options", "&Aide"}));
    EXPECT_EQ(chooser->MenuAction(235) != nullptr, type == kViafax);
    Numbers checked;
    for (int style = 231; style <= 234; ++style) {
      EXPECT_TRUE(chooser->MenuAction(style)->isCheckable()) << style;
      if (chooser->MenuAction(style)->isChecked()) checked.push_back(style);
    }
    EXPECT_EQ(checked, Numbers{232});
  }
}

TEST_F(Chooser, GreyFollowsRowsAndMarks) {
  BuildFour();
  StartChooser(kMany);
  EXPECT_EQ(GreyItems(), (Numbers{213, 222}));
  EXPECT_FALSE(Button(1032)->IsActive());
  EXPECT_FALSE(Button(1034)->IsActive());
  EXPECT_TRUE(Button(1031)->IsActive());
  Key(Qt::Key_Space);
  EXPECT_EQ(GreyItems(), Numbers{});
  EXPECT_TRUE(Button(1032)->IsActive());
  EXPECT_TRUE(Button(1034)->IsActive());
  StartChooser(kSingle);
  EXPECT_EQ(GreyItems(), (Numbers{222, 223}));
  EXPECT_FALSE(Button(1031)->IsActive());
  EXPECT_FALSE(Button(1032)->IsActive());
  EXPECT_FALSE(Button(1034)->IsActive());
  // The card keeps its mark, which is counted here too, and can be taken away.
  EXPECT_EQ(Text(183), "1");
}

TEST_F(Chooser, WithTheSecondTelephoneNothingIsListed) {
  Build({CardWith({{kSte1, "ALPHA"}, {kTel2, "0140000001"}})});
  StartChooser(kMany, 32767, 16);
  EXPECT_EQ(Text(2014), "N° Téléphone 2");
  EXPECT_EQ(List()->RowCount(), 0);
  EXPECT_EQ(Text(181), "1 / 0");
  EXPECT_EQ(GreyItems(), (Numbers{211, 213, 220, 221, 222, 223}));
  Key(Qt::Key_Return);
  Key(Qt::Key_Space);
  EXPECT_EQ(ended, 0);
}

TEST_F(Chooser, AListThatIsFullIsToldOnceTheWindowIsOpen) {
  BuildFour();
  StartChooser(kMany, 1);
  EXPECT_EQ(Asked(), Texts{"Liste de fiches saturée: [ 2 ] fiches non chargées. \n Actionnez les "
                           "onglets des lettres pour les visualiser !"});
  EXPECT_EQ(Text(181), "1 / 3");
}

// ---- keys ----

TEST_F(Chooser, TabWalksThroughWithNothingCut) {
  BuildFour();
  StartChooser(kMany);
  Key(Qt::Key_Space);
  EXPECT_EQ(WalkByTab(*chooser), (Numbers{195, 184, 185, 1010}));
  EXPECT_LE(chooser->width(), 1000);
  EXPECT_LE(chooser->height(), 700);
  SavePicture(QStringLiteral("chooser_100"));
  StartChooser(kSingle);
  EXPECT_EQ(WalkByTab(*chooser), (Numbers{195, 184, 185, 1010}));
  SavePicture(QStringLiteral("chooser_single_100"));
}

TEST_F(Chooser, WithLettersTwiceAsLargeNothingIsCut) {
  const LettersAt letters(200);
  BuildFour();
  StartChooser(kMany);
  EXPECT_EQ(WalkByTab(*chooser), (Numbers{195, 184, 185, 1010}));
  SavePicture(QStringLiteral("chooser_200"));
}

TEST_F(Chooser, ArrowsGoThroughTheButtonsThatAreOn) {
  BuildFour();
  StartChooser(kMany);
  Button(1010)->setFocus(Qt::TabFocusReason);
  Numbers stops;
  for (int i = 0; i < 7; ++i) {
    stops.push_back(Focus());
    Key(Qt::Key_Right);
  }
  EXPECT_EQ(stops, (Numbers{1010, 1012, 1033, 1001, 1030, 1031, 1031}));
  for (const BubbleButton* button : chooser->findChildren<BubbleButton*>()) {
    EXPECT_FALSE(button->text().isEmpty());
    EXPECT_EQ(button->accessibleName(), button->text());
  }
}

TEST_F(Chooser, TheStatusLineTellsOfFocusAndItems) {
  BuildFour();
  StartChooser(kMany);
  EXPECT_EQ(Text(194), "Alt=menu, Tab=boutons, Barre espace=sélection/désélection");
  Button(1033)->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(Text(194), QString::fromUtf8(LoadText(173)));
  Q_EMIT chooser->MenuAction(221)->hovered();
  EXPECT_EQ(Text(194), QString::fromUtf8(LoadText(174)));
  Q_EMIT TestedWindow().menuBar()->actions().at(2)->menu()->aboutToShow();
  EXPECT_EQ(Text(194), QString::fromUtf8(LoadText(172)));
  Q_EMIT TestedWindow().menuBar()->actions().at(2)->menu()->aboutToHide();
  EXPECT_EQ(Text(194), QString::fromUtf8(LoadText(173)));
  StartChooser(kSingle);
  EXPECT_EQ(Text(194), "Alt=menu, Tab=boutons");
}

TEST_F(Chooser, SpaceMarksAndGoesOnWhereSeveralArePicked) {
  BuildFour();
  StartChooser(kMany);
  Key(Qt::Key_Space);
  EXPECT_EQ(Marked(), Numbers{0});
  EXPECT_EQ(List()->CurrentRow(), 1);
  EXPECT_EQ(Text(183), "1");
  EXPECT_EQ(Text(181), "2 / 3");
  StartChooser(kSingle);
  Key(Qt::Key_Space);
  EXPECT_EQ(Marked(), Numbers{0});
  EXPECT_EQ(List()->CurrentRow(), 0);
}

TEST_F(Chooser, LettersJump) {
  BuildFour();
  StartChooser(kMany);
  Type("z");
  EXPECT_EQ(List()->CurrentRow(), 2);
  EXPECT_EQ(beeps, 0);
  Type("b");
  EXPECT_EQ(List()->CurrentRow(), 2);
  EXPECT_EQ(beeps, 1);
}

TEST_F(Chooser, EnterHandsTheRowOut) {
  BuildFour();
  for (const auto& [key, type] :
       {std::pair(Qt::Key_Return, kSingle), std::pair(Qt::Key_Enter, kMany)}) {
    files.Remove(ExchangeFile());
    StartChooser(type);
    Key(Qt::Key_Home);
    Key(Qt::Key_Down);
    Key(key);
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(chooser->result(), 1);
    EXPECT_FALSE(chooser->isVisible());
    EXPECT_EQ(Extracted(), Texts{"0340000003"});
  }
}

TEST_F(Chooser, EnterOnAButtonPressesItAndOnAPickerDoesNothing) {
  BuildFour();
  StartChooser(kMany);
  Control(184)->setFocus(Qt::TabFocusReason);
  Key(Qt::Key_Return);
  EXPECT_EQ(ended, 0);
  Button(1031)->setFocus(Qt::TabFocusReason);
  Key(Qt::Key_Return);
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(chooser->result(), 2);
  EXPECT_EQ(Extracted(), (Texts{"0140000001", "0340000003", "0440000004"}));
}

TEST_F(Chooser, EscapeTheCrossAndItsCommandsLeave) {
  BuildFour();
  const std::function<void()> ways[] = {[this] { Key(Qt::Key_Escape); },
                                        [this] {
                                          Control(184)->setFocus();
                                          Key(Qt::Key_Escape);
                                        },
                                        [this] { chooser->close(); },
                                        [this] { Choose(206); },
                                        [this] { Press(1012); },
                                        [this] { chooser->QuitUnasked(); }};
  for (const auto& leave : ways) {
    StartChooser(kMany);
    leave();
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(chooser->result(), 0);
    EXPECT_FALSE(chooser->isVisible());
    EXPECT_EQ(session->directory(), nullptr);
    EXPECT_FALSE(files.Exists(ExchangeFile()));
  }
}

TEST_F(Chooser, LeavingWaitsUntilALoopHasEnded) {
  BuildFour();
  StartChooser(kMany);
  busy.Enter();
  EXPECT_FALSE(chooser->close());
  EXPECT_EQ(ended, 0);
  busy.Leave();
  Settle();
  EXPECT_EQ(ended, 1);
  EXPECT_FALSE(chooser->isVisible());
}

TEST_F(Chooser, F1ShowsItsHelp) {
  BuildFour();
  StartChooser(kMany);
  Key(Qt::Key_F1);
  ASSERT_NE(chooser->dialogs().help_window(), nullptr);
  EXPECT_EQ(chooser->dialogs().help_window()->topic(), 48);
  Reactivate();
  Choose(206);
  EXPECT_EQ(chooser->dialogs().help_window(), nullptr);
}

}  // namespace
}  // namespace carnetel::desktop
