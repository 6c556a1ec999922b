// Tab from the list round to the list: every stop has a name for screen readers, and no text on the
// way is cut, at the usual size, with letters twice as large, and on a screen of twice the density
// (the program runs a second time with QT_SCALE_FACTOR).
#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QStyle>
#include <QStyleOptionComboBox>

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
  static bool Fits(const QWidget& widget, const QString& text, int room) {
    return widget.fontMetrics().horizontalAdvance(text) <= room;
  }
  void ExpectNothingClipped() {
    for (const QLabel* label : window->findChildren<QLabel*>()) {
      if (!label->isVisible()) continue;
      QString text = label->text();
      if (label->buddy() != nullptr) text.remove('&');
      EXPECT_TRUE(Fits(*label, text, label->contentsRect().width())) << text.toStdString();
      EXPECT_GE(label->height(), label->fontMetrics().height()) << text.toStdString();
    }
    for (int id = LetterTabs::kFirstId; id <= LetterTabs::kLastId; ++id) {
      auto* tab = dynamic_cast<LetterTab*>(Control(id));
      EXPECT_TRUE(Fits(*tab, tab->Caption(), tab->width() - 4)) << id;
      EXPECT_GE(tab->height(), tab->fontMetrics().height()) << id;
    }
    for (const int id : {kControlGroups, kControlSets}) {
      auto* picker = dynamic_cast<PickerCombo*>(Control(id));
      EXPECT_TRUE(Fits(*picker, picker->currentText(), picker->width() - picker->height())) << id;
    }
    for (const QLineEdit* edit : window->findChildren<QLineEdit*>()) {
      if (!edit->isVisible()) continue;
      EXPECT_GE(edit->height(), edit->fontMetrics().height());
    }
    // Everything lies within the window.
    for (const QWidget* widget : window->centralWidget()->findChildren<QWidget*>()) {
      if (!widget->isVisible()) continue;
      const QRect box(widget->mapTo(window->centralWidget(), QPoint()), widget->size());
      EXPECT_TRUE(window->centralWidget()->rect().contains(box))
          << widget->metaObject()->className() << widget->objectName().toStdString();
    }
  }
  Numbers Walk() {
    Numbers stops;
    do {
      QWidget* focus = QApplication::focusWidget();
      const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(focus);
      QString name = focus->accessibleName();
      for (QWidget* at = focus; name.isEmpty() && at != nullptr; at = at->parentWidget()) {
        name = at->accessibleName();
      }
      EXPECT_FALSE(name.isEmpty()) << Focus();
      EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty()) << Focus();
      ExpectNothingClipped();
      stops.push_back(Focus());
      Key(Qt::Key_Tab);
    } while (Focus() != kControlList && stops.size() < 60);
    return stops;
  }
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
