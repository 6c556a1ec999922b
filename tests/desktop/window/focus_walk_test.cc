// Tab from the list round to the list: every stop has a name for screen readers, and no text on the
// way is cut, at the usual size, with letters twice as large, and on a screen of twice the density
// (the program runs a second time with QT_SCALE_FACTOR).
#include "tests/desktop/window/focus_walk.h"

#include <QApplication>

#include "tests/desktop/window/window_fixture.h"

namespace carnetel::desktop {
namespace {

using Numbers = std::vector<int>;

class FocusWalk : public WindowTest {
 protected:
  void StartWithOneCard() {
    Build({CardWith({{kSte1, "ALPHA"}, {kQualite, "M."}, {kNom, "Durand"}})});
    Start();
  }
  Numbers Walk() { return WalkByTab(*window); }
  // The composed line sends the focus on to the first field of the person.
  const Numbers expected = {195, 655, 184, 185, 1010, 1008, 150, 151, 152, 153, 155, 156,
                            157, 170, 171, 172, 158,  159,  160, 161, 162, 164, 1018};
};

TEST_F(FocusWalk, AtTheUsualSize) {
  StartWithOneCard();
  EXPECT_EQ(Walk(), expected);
  EXPECT_LE(window->width(), 1000);
  EXPECT_LE(window->height(), 700);
}

TEST_F(FocusWalk, WithLettersTwiceAsLarge) {
  const QFont usual = QApplication::font();
  QApplication::setFont(QFont(usual.family(), usual.pointSize() * 2));
  StartWithOneCard();
  EXPECT_EQ(Walk(), expected);
  QApplication::setFont(usual);
}

TEST_F(FocusWalk, WithTheNotesInPlaceOfTheReferences) {
  SetProfile("ShowRefCor", "0");
  StartWithOneCard();
  Numbers notes = expected;
  notes[21] = 174;
  notes[22] = 1020;
  EXPECT_EQ(Walk(), notes);
}

TEST_F(FocusWalk, BackwardsIsTheSameRound) {
  StartWithOneCard();
  Numbers stops;
  do {
    stops.push_back(Focus());
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
  } while (Focus() != kControlList && stops.size() < 60);
  std::reverse(stops.begin() + 1, stops.end());
  EXPECT_EQ(stops, expected);
}

TEST_F(FocusWalk, ArrowsGoThroughTheToolbar) {
  StartWithOneCard();
  Button(1010)->setFocus(Qt::TabFocusReason);
  Numbers stops;
  for (int i = 0; i < 9; ++i) {
    stops.push_back(Focus());
    Key(Qt::Key_Right);
  }
  EXPECT_EQ(stops, (Numbers{1010, 1011, 1000, 1001, 1002, 1003, 1013, 1012, 1012}));
}

TEST_F(FocusWalk, EveryButtonAndFieldHasAName) {
  StartWithOneCard();
  for (const BubbleButton* button : window->findChildren<BubbleButton*>()) {
    EXPECT_EQ(button->accessibleName(), button->text()) << button->objectName().toStdString();
    EXPECT_FALSE(button->text().isEmpty()) << button->objectName().toStdString();
  }
  for (const int id : {150, 158, 164, 174, 181, 183, 184, 185, 194, 195, 655, 681}) {
    EXPECT_FALSE(Control(id)->accessibleName().isEmpty()) << id;
  }
}

}  // namespace
}  // namespace carnetel::desktop
