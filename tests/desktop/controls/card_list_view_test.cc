#include "desktop/controls/card_list_view.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <set>

#include "desktop/controls/letter_key.h"
#include "tests/desktop/controls/painted_image.h"

namespace carnetel::desktop {
namespace {

class Rows : public RowSource {
 public:
  int RowCount() override { return count; }
  QString Label(int row) override {
    ++labels_read;
    return QStringLiteral("FICHE %1").arg(row);
  }
  bool IsMarked(int row) override { return marked.count(row) != 0; }
  bool IsFlagged(int row) override { return row % 2 == 0; }
  bool ShowsFlagColumn() override { return flags; }

  int count = 100;
  int labels_read = 0;
  bool flags = false;
  std::set<int> marked;
};

class CardListTest : public testing::Test {
 protected:
  void SetUp() override {
    auto* column = new QVBoxLayout(&window_);
    column->addWidget(before_ = new QLineEdit);
    column->addWidget(list_ = new CardListView(195, rows_));
    window_.resize(300, 300);
    window_.show();
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    list_->setFocus();
  }

  void Click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mouseClick(list_->viewport(), Qt::LeftButton, modifiers, list_->RowRect(row).center());
  }
  void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(list_, static_cast<Qt::Key>(key), modifiers);
  }

  void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(list_, &event);
  }

  QWidget window_;
  Rows rows_;
  QLineEdit* before_ = nullptr;
  CardListView* list_ = nullptr;
};

TEST_F(CardListTest, BeginsAtTheFirstRow) {
  EXPECT_EQ(list_->objectName(), QStringLiteral("195"));
  EXPECT_EQ(list_->RowCount(), 100);
  EXPECT_EQ(list_->CurrentRow(), 0);
  EXPECT_EQ(list_->TopRow(), 0);
}

TEST_F(CardListTest, AnEmptyListHasNoCurrentRow) {
  rows_.count = 0;
  list_->Reload();
  EXPECT_EQ(list_->CurrentRow(), -1);
  QSignalSpy moved(list_, &CardListView::currentRowChanged);
  QSignalSpy marked(list_, &CardListView::markAndStep);
  Key(Qt::Key_Down);
  Key(Qt::Key_Space);
  Click(0);
  EXPECT_EQ(moved.count() + marked.count(), 0);
}

TEST_F(CardListTest, ReloadKeepsTheCurrentRowWhereItCan) {
  list_->SetCurrentRow(50);
  list_->Reload();
  EXPECT_EQ(list_->CurrentRow(), 50);
  rows_.count = 20;
  list_->Reload();
  EXPECT_EQ(list_->CurrentRow(), 19);
}

TEST_F(CardListTest, SettingTheRowIsSilentAndScrolls) {
  QSignalSpy moved(list_, &CardListView::currentRowChanged);
  list_->SetCurrentRow(60);
  EXPECT_EQ(moved.count(), 0);
  EXPECT_EQ(list_->TopRow(), 60 - list_->PageRows() + 1);
  list_->SetCurrentRow(10);
  EXPECT_EQ(list_->TopRow(), 10);
  list_->SetCurrentRow(100);
  EXPECT_EQ(list_->CurrentRow(), 10);
}

TEST_F(CardListTest, KeysMoveTheCurrentRow) {
  QSignalSpy moved(list_, &CardListView::currentRowChanged);
  Key(Qt::Key_Down);
  EXPECT_EQ(list_->CurrentRow(), 1);
  Key(Qt::Key_Up);
  Key(Qt::Key_Up);
  EXPECT_EQ(list_->CurrentRow(), 0);
  EXPECT_EQ(moved.count(), 2);
  Key(Qt::Key_PageDown);
  EXPECT_EQ(list_->CurrentRow(), list_->PageRows() - 1);
  Key(Qt::Key_End);
  EXPECT_EQ(list_->CurrentRow(), 99);
  Key(Qt::Key_PageUp);
  EXPECT_EQ(list_->CurrentRow(), 99 - (list_->PageRows() - 1));
  Key(Qt::Key_Home);
  EXPECT_EQ(list_->CurrentRow(), 0);
}

TEST_F(CardListTest, SpaceAndShiftedArrowsMark) {
  QSignalSpy marked(list_, &CardListView::markAndStep);
  Key(Qt::Key_Space);
  Key(Qt::Key_Down, Qt::ControlModifier);
  Key(Qt::Key_Down, Qt::ShiftModifier);
  Key(Qt::Key_Up, Qt::ControlModifier);
  Key(Qt::Key_Up, Qt::ShiftModifier);
  ASSERT_EQ(marked.count(), 5);
  const int steps[] = {1, 1, 1, -1, -1};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(marked[i][0].toInt(), steps[i]);
  EXPECT_EQ(list_->CurrentRow(), 0);
}

TEST_F(CardListTest, ShiftSpansFromWhereItWentDown) {
  list_->SetCurrentRow(5);
  QSignalSpy span(list_, &CardListView::spanMoved);
  // Not the test library's own modifier, which presses Shift anew for every key.
  Press(Qt::Key_Shift);
  Press(Qt::Key_End, Qt::ShiftModifier);
  ASSERT_EQ(span.count(), 1);
  EXPECT_EQ(span[0][0].toInt(), 5);
  EXPECT_EQ(span[0][1].toInt(), 99);
  Press(Qt::Key_Home, Qt::ShiftModifier);
  ASSERT_EQ(span.count(), 2);
  EXPECT_EQ(span[1][0].toInt(), 5);
  EXPECT_EQ(span[1][1].toInt(), 0);
  Press(Qt::Key_End);
  EXPECT_EQ(span.count(), 2);
}

TEST_F(CardListTest, ClicksTellRowAndModifiers) {
  QSignalSpy moved(list_, &CardListView::currentRowChanged);
  QSignalSpy clicked(list_, &CardListView::rowClicked);
  QSignalSpy span(list_, &CardListView::spanMoved);
  Click(3);
  Click(5, Qt::ControlModifier);
  Click(8, Qt::ShiftModifier);
  ASSERT_EQ(clicked.count(), 3);
  EXPECT_EQ(clicked[1][0].toInt(), 5);
  EXPECT_EQ(clicked[1][1].value<Qt::KeyboardModifiers>(), Qt::ControlModifier);
  EXPECT_EQ(moved.count(), 3);
  ASSERT_EQ(span.count(), 1);
  EXPECT_EQ(span[0][0].toInt(), 5);
  EXPECT_EQ(span[0][1].toInt(), 8);
}

TEST_F(CardListTest, ADoubleClickIsOneClickAndOneDoubleClick) {
  QSignalSpy clicked(list_, &CardListView::rowClicked);
  QSignalSpy doubled(list_, &CardListView::rowDoubleClicked);
  Click(2);
  QTest::mouseDClick(list_->viewport(), Qt::LeftButton, Qt::NoModifier, list_->RowRect(2).center());
  EXPECT_EQ(clicked.count(), 1);
  EXPECT_EQ(doubled.count(), 1);
}

TEST_F(CardListTest, TheFocusComesBeforeTheRowOfAClick) {
  before_->setFocus();
  int row_at_focus = -1;
  QObject::connect(list_, &CardListView::focusEntered, list_,
                   [&](Qt::FocusReason) { row_at_focus = list_->CurrentRow(); });
  Click(7);
  EXPECT_EQ(row_at_focus, 0);
  EXPECT_EQ(list_->CurrentRow(), 7);
}

TEST_F(CardListTest, FrozenTakesNeitherKeysNorClicks) {
  list_->SetFrozen(true);
  QSignalSpy moved(list_, &CardListView::currentRowChanged);
  Key(Qt::Key_Down);
  Click(4);
  EXPECT_EQ(moved.count(), 0);
  EXPECT_EQ(list_->CurrentRow(), 0);
}

TEST_F(CardListTest, LettersAndDigitsAreTold) {
  QSignalSpy typed(list_, &CardListView::letterTyped);
  QTest::keyClick(list_, 'd');
  QTest::keyClick(list_, Qt::Key_7, Qt::KeypadModifier);
  QTest::keyClick(list_, '-');
  QTest::keyClick(list_, Qt::Key_A, Qt::ControlModifier);
  ASSERT_EQ(typed.count(), 2);
  EXPECT_EQ(typed[0][0].value<char>(), 'D');
  EXPECT_EQ(typed[1][0].value<char>(), '7');
}

TEST_F(CardListTest, OnlyRowsInViewAreRead) {
  rows_.count = 32767;
  list_->Reload();
  rows_.labels_read = 0;
  list_->grab();
  EXPECT_LE(rows_.labels_read, list_->PageRows() + 1);
  list_->SetTopRow(16000);
  list_->grab();
  EXPECT_LE(rows_.labels_read, 2 * (list_->PageRows() + 1));
  const int read = rows_.labels_read;
  list_->grab();
  EXPECT_EQ(rows_.labels_read, read);
  list_->ReloadRow(16001);
  list_->grab();
  EXPECT_EQ(rows_.labels_read, read + 1);
}

TEST_F(CardListTest, PaintingIsToldAfterwardsAndOnce) {
  QCoreApplication::processEvents();
  QSignalSpy painted(list_, &CardListView::painted);
  list_->viewport()->repaint();
  list_->viewport()->repaint();
  EXPECT_EQ(painted.count(), 0);
  QCoreApplication::processEvents();
  EXPECT_EQ(painted.count(), 1);
}

// Left edge of the first pixel of a row that is not its background.
int FirstInk(CardListView& list, int row) {
  const QImage image = PaintedImage(*list.viewport());
  const QRect box = list.RowRect(row);
  const QRgb background = image.pixel(box.right(), box.center().y());
  for (int x = 0; x < box.width(); ++x) {
    for (int y = box.top(); y <= box.bottom(); ++y) {
      if (image.pixel(x, y) != background) return x;
    }
  }
  return -1;
}

TEST_F(CardListTest, TextStandsBehindTheColumnsShown) {
  const int plain = FirstInk(*list_, 3);
  EXPECT_GE(plain, 13);
  EXPECT_LT(plain, 17);
  rows_.flags = true;
  list_->Reload();
  EXPECT_GE(FirstInk(*list_, 3), plain + 13);
  EXPECT_LT(FirstInk(*list_, 4), 13);
}

TEST_F(CardListTest, AMarkStandsLeftOfTheText) {
  rows_.marked = {3};
  list_->Reload();
  EXPECT_LT(FirstInk(*list_, 3), 13);
}

TEST_F(CardListTest, TheCurrentRowIsWhiteOnBlackUnlessClickedWithCtrl) {
  const auto background = [this](int row) {
    return PaintedImage(*list_->viewport())
        .pixel(list_->RowRect(row).right(), list_->RowRect(row).center().y());
  };
  list_->SetCurrentRow(2);
  EXPECT_EQ(background(2), qRgb(0, 0, 0));
  EXPECT_NE(background(3), qRgb(0, 0, 0));
  Click(4, Qt::ControlModifier);
  EXPECT_NE(background(4), qRgb(0, 0, 0));
  Click(5);
  EXPECT_EQ(background(5), qRgb(0, 0, 0));
}

std::optional<char> Letter(const QString& text, quint32 scan_code = 0,
                           Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  return LetterOfKey(
      QKeyEvent(QEvent::KeyPress, Qt::Key_unknown, modifiers, scan_code, 0, 0, text));
}

TEST(LetterOfKey, FoldsToCapitalsAndDigits) {
  EXPECT_EQ(Letter(QStringLiteral("a")), 'A');
  EXPECT_EQ(Letter(QStringLiteral("Z")), 'Z');
  EXPECT_EQ(Letter(QStringLiteral("5")), '5');
  EXPECT_EQ(Letter(QStringLiteral("ç")), 'C');
  EXPECT_EQ(Letter(QStringLiteral("É")), 'E');
  EXPECT_EQ(Letter(QStringLiteral("&")), std::nullopt);
  EXPECT_EQ(Letter(QStringLiteral("Ж")), std::nullopt);
  EXPECT_EQ(Letter(QString()), std::nullopt);
  EXPECT_EQ(Letter(QStringLiteral("a"), 0, Qt::ControlModifier), std::nullopt);
}

TEST(LetterOfKey, TheUpperRowOfAFrenchKeyboardIsDigits) {
  EXPECT_EQ(Letter(QStringLiteral("&"), 10), '1');
  EXPECT_EQ(Letter(QStringLiteral("é"), 11), '2');
  EXPECT_EQ(Letter(QStringLiteral("à"), 19), '0');
  EXPECT_EQ(Letter(QStringLiteral("é"), 20), 'E');
}

}  // namespace
}  // namespace carnetel::desktop
