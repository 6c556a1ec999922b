#include <gtest/gtest.h>

#include <QHBoxLayout>
#include <QLineEdit>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include "desktop/controls/bubble_button.h"
#include "desktop/controls/bubble_tip.h"
#include "desktop/controls/button_row.h"
#include "tests/desktop/controls/painted_image.h"

namespace carnetel::desktop {
namespace {

// A window with a field, three toolbar buttons and another field.
class ButtonsTest : public testing::Test {
 protected:
  void SetUp() override {
    auto* line = new QHBoxLayout(&window_);
    line->addWidget(before_ = new QLineEdit);
    const Face faces[] = {Face::kOpen, Face::kPrint, Face::kSearch};
    for (int i = 0; i < 3; ++i) {
      buttons_ += new BubbleButton(1000 + i, faces[i], ButtonSize::kToolbar,
                                   QStringLiteral("Bouton %1").arg(i));
      buttons_[i]->SetBeeper([this] { ++beeps_; });
      line->addWidget(buttons_[i]);
    }
    line->addWidget(after_ = new QLineEdit);
    row_ = new ButtonRow(buttons_, &window_);
    window_.show();
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  QWidget window_;
  QLineEdit* before_ = nullptr;
  QLineEdit* after_ = nullptr;
  QList<BubbleButton*> buttons_;
  ButtonRow* row_ = nullptr;
  int beeps_ = 0;
};

TEST_F(ButtonsTest, AButtonSpeaksItsCaption) {
  EXPECT_EQ(buttons_[0]->objectName(), QStringLiteral("1000"));
  EXPECT_EQ(buttons_[0]->text(), QStringLiteral("Bouton 0"));
  EXPECT_TRUE(buttons_[0]->IsActive());
}

TEST_F(ButtonsTest, SizesAreThoseOfTheThreeKinds) {
  BubbleButton form(1008, Face::kNewCard, ButtonSize::kFormColumn, QString());
  BubbleButton sibling(1014, Face::kVoice, ButtonSize::kSibling, QString());
  const QFont small(QStringLiteral("DejaVu Sans"), 8);
  for (BubbleButton* button : {buttons_[0], &form, &sibling}) button->setFont(small);
  EXPECT_EQ(buttons_[0]->sizeHint(), QSize(38, 38));
  EXPECT_EQ(form.sizeHint(), QSize(30, 28));
  EXPECT_EQ(sibling.sizeHint(), QSize(32, 17));
  form.setFont(QFont(QStringLiteral("DejaVu Sans"), 24));
  EXPECT_GT(form.sizeHint().width(), 60);
}

TEST_F(ButtonsTest, AnActiveButtonFiresOnClickSpaceAndEnter) {
  QSignalSpy clicked(buttons_[0], &QAbstractButton::clicked);
  QTest::mouseClick(buttons_[0], Qt::LeftButton);
  QTest::keyClick(buttons_[0], Qt::Key_Space);
  QTest::keyClick(buttons_[0], Qt::Key_Return);
  EXPECT_EQ(clicked.count(), 3);
  EXPECT_EQ(beeps_, 0);
}

TEST_F(ButtonsTest, AButtonThatIsOffBeepsAndDoesNotFire) {
  QSignalSpy clicked(buttons_[0], &QAbstractButton::clicked);
  buttons_[0]->SetActive(false);
  before_->setFocus();
  QTest::mouseClick(buttons_[0], Qt::LeftButton);
  EXPECT_EQ(beeps_, 1);
  EXPECT_TRUE(before_->hasFocus());
  QTest::keyClick(buttons_[0], Qt::Key_Space);
  EXPECT_EQ(beeps_, 2);
  QTest::keyClick(buttons_[0], Qt::Key_Return);
  EXPECT_EQ(beeps_, 3);
  EXPECT_EQ(clicked.count(), 0);
  EXPECT_TRUE(buttons_[0]->isEnabled());
}

TEST_F(ButtonsTest, FocusPassesAButtonThatIsOff) {
  buttons_[1]->SetActive(false);
  before_->setFocus();
  buttons_[1]->setFocus();
  EXPECT_TRUE(buttons_[2]->hasFocus());
  buttons_[1]->setFocus();
  EXPECT_TRUE(buttons_[0]->hasFocus());
}

TEST_F(ButtonsTest, TabCannotReachAButtonThatIsOff) {
  buttons_[0]->SetActive(false);
  before_->setFocus();
  QTest::keyClick(before_, Qt::Key_Tab);
  EXPECT_TRUE(buttons_[1]->hasFocus());
  buttons_[1]->SetActive(false);
  buttons_[2]->SetActive(false);
  before_->setFocus();
  QTest::keyClick(before_, Qt::Key_Tab);
  EXPECT_TRUE(after_->hasFocus());
  buttons_[2]->SetActive(true);
  before_->setFocus();
  QTest::keyClick(before_, Qt::Key_Tab);
  EXPECT_TRUE(buttons_[2]->hasFocus());
}

TEST_F(ButtonsTest, TabStopsOnceInARowWhereTheFocusWasLast) {
  before_->setFocus();
  QTest::keyClick(before_, Qt::Key_Tab);
  EXPECT_TRUE(buttons_[0]->hasFocus());
  QTest::keyClick(buttons_[0], Qt::Key_Right);
  QTest::keyClick(buttons_[1], Qt::Key_Tab);
  EXPECT_TRUE(after_->hasFocus());
  QTest::keyClick(after_, Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_TRUE(buttons_[1]->hasFocus());
}

TEST_F(ButtonsTest, ArrowsSkipButtonsThatAreOffAndStopAtTheEnds) {
  buttons_[1]->SetActive(false);
  buttons_[0]->setFocus();
  QTest::keyClick(buttons_[0], Qt::Key_Left);
  EXPECT_TRUE(buttons_[0]->hasFocus());
  QTest::keyClick(buttons_[0], Qt::Key_Right);
  EXPECT_TRUE(buttons_[2]->hasFocus());
  QTest::keyClick(buttons_[2], Qt::Key_Right);
  EXPECT_TRUE(buttons_[2]->hasFocus());
  QTest::keyClick(buttons_[2], Qt::Key_Left);
  EXPECT_TRUE(buttons_[0]->hasFocus());
}

TEST_F(ButtonsTest, APressedFaceIsShifted) {
  const QImage rest = PaintedImage(*buttons_[0]);
  buttons_[0]->setDown(true);
  const QImage pressed = PaintedImage(*buttons_[0]);
  // The darkest column of the drawing, its left stroke, one pixel further right.
  const auto darkest_column = [](const QImage& image) {
    int best = 0;
    int best_sum = 1 << 30;
    for (int x = 2; x < image.width() / 2 - 3; ++x) {
      int sum = 0;
      for (int y = 10; y < image.height() - 10; ++y) sum += qGray(image.pixel(x, y));
      if (sum < best_sum) {
        best_sum = sum;
        best = x;
      }
    }
    return best;
  };
  EXPECT_EQ(darkest_column(pressed), darkest_column(rest) + 1);
}

class TipTest : public ButtonsTest {
 protected:
  void SetUp() override {
    // Away from where the window comes up: a real pointer would enter its buttons.
    QCursor::setPos(window_.screen()->geometry().bottomRight());
    ButtonsTest::SetUp();
    window_.move(50, 50);
    QCoreApplication::processEvents();
  }

  void MouseTo(QWidget* widget) {
    QTest::mouseMove(&window_, QPoint(1, 1));
    QCursor::setPos(widget->mapToGlobal(widget->rect().center()));
    QTest::mouseMove(widget, widget->rect().center());
    QCoreApplication::processEvents();
  }
  void Ticks(int count) {
    for (int i = 0; i < count; ++i) tip_.Tick();
  }

  BubbleTip tip_;
};

TEST_F(TipTest, ShowsAtTheThirdTickBelowTheButton) {
  EXPECT_EQ(BubbleTip::kTickMilliseconds, 500);
  MouseTo(buttons_[1]);
  EXPECT_TRUE(tip_.IsTicking());
  Ticks(2);
  EXPECT_EQ(tip_.Visible(), nullptr);
  Ticks(1);
  const QLabel* label = tip_.Visible();
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(label->text(), QStringLiteral("Bouton 1"));
  const QPoint corner = buttons_[1]->mapToGlobal(buttons_[1]->rect().bottomLeft());
  EXPECT_EQ(label->pos(), corner + QPoint(2, 2));
  const QSize text = label->fontMetrics().size(Qt::TextSingleLine, label->text());
  EXPECT_EQ(label->size(), text + QSize(7, 4));
  EXPECT_EQ(label->palette().color(QPalette::Window), QColor(255, 255, 128));
  EXPECT_EQ(label->palette().color(QPalette::WindowText), QColor(0, 0, 0));
  Ticks(1);
  EXPECT_FALSE(tip_.IsTicking());
  EXPECT_NE(tip_.Visible(), nullptr);
}

TEST_F(TipTest, IsGreyForAButtonThatIsOff) {
  buttons_[1]->SetActive(false);
  MouseTo(buttons_[1]);
  Ticks(3);
  ASSERT_NE(tip_.Visible(), nullptr);
  EXPECT_EQ(tip_.Visible()->palette().color(QPalette::WindowText), QColor(192, 192, 192));
}

TEST_F(TipTest, MovingToAnotherButtonStartsAnew) {
  MouseTo(buttons_[0]);
  Ticks(3);
  MouseTo(buttons_[1]);
  EXPECT_EQ(tip_.Visible(), nullptr);
  Ticks(2);
  EXPECT_EQ(tip_.Visible(), nullptr);
  Ticks(1);
  ASSERT_NE(tip_.Visible(), nullptr);
  EXPECT_EQ(tip_.Visible()->text(), QStringLiteral("Bouton 1"));
}

TEST_F(TipTest, CanBeShownAtOnceWhileTheCountRuns) {
  MouseTo(before_);
  tip_.ShowNow();
  EXPECT_EQ(tip_.Visible(), nullptr);
  MouseTo(buttons_[0]);
  tip_.ShowNow();
  EXPECT_NE(tip_.Visible(), nullptr);
}

TEST_F(TipTest, GoesWhenTheMouseLeavesOrAKeyIsPressed) {
  MouseTo(buttons_[0]);
  Ticks(3);
  MouseTo(before_);
  EXPECT_EQ(tip_.Visible(), nullptr);
  Ticks(1);
  EXPECT_FALSE(tip_.IsTicking());
  MouseTo(buttons_[0]);
  Ticks(3);
  QTest::keyClick(before_, Qt::Key_A);
  EXPECT_EQ(tip_.Visible(), nullptr);
}

TEST_F(TipTest, NeedsTheApplicationToBeActive) {
  MouseTo(buttons_[0]);
  Ticks(2);
  QApplication::setActiveWindow(nullptr);
  Ticks(1);
  EXPECT_EQ(tip_.Visible(), nullptr);
  MouseTo(buttons_[1]);
  Ticks(3);
  EXPECT_EQ(tip_.Visible(), nullptr);
}

TEST_F(TipTest, CanBeSwitchedOff) {
  tip_.SetAllowed(false);
  MouseTo(buttons_[0]);
  Ticks(3);
  EXPECT_EQ(tip_.Visible(), nullptr);
}

TEST_F(TipTest, AButtonWithoutCaptionHasNone) {
  buttons_[0]->setText(QString());
  MouseTo(buttons_[0]);
  Ticks(3);
  EXPECT_EQ(tip_.Visible(), nullptr);
}

TEST_F(TipTest, StaysOnTheScreen) {
  const QRect screen = window_.screen()->availableGeometry();
  buttons_[2]->setText(QString(60, QLatin1Char('x')));
  window_.move(screen.right() - window_.width(), screen.bottom() - window_.height() + 5);
  QCoreApplication::processEvents();
  MouseTo(buttons_[2]);
  Ticks(3);
  ASSERT_NE(tip_.Visible(), nullptr);
  // Its place and size, not its geometry: the platform without a screen adds a frame to that.
  const QRect box(tip_.Visible()->pos(), tip_.Visible()->size());
  EXPECT_TRUE(screen.contains(box));
  EXPECT_GT(tip_.Visible()->width(), 200);
}

}  // namespace
}  // namespace carnetel::desktop
