#include "desktop/controls/letter_tabs.h"

#include <gtest/gtest.h>

#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

namespace carnetel::desktop {
namespace {

class LetterTabsTest : public testing::Test {
 protected:
  void SetUp() override {
    auto* line = new QHBoxLayout(&window_);
    line->addWidget(before_ = new QLineEdit);
    line->addWidget(tabs_ = new LetterTabs);
    line->addWidget(after_ = new QLineEdit);
    window_.show();
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  QWidget window_;
  QLineEdit* before_ = nullptr;
  QLineEdit* after_ = nullptr;
  LetterTabs* tabs_ = nullptr;
};

TEST_F(LetterTabsTest, HasTwentySevenNamedTabs) {
  EXPECT_EQ(tabs_->findChildren<LetterTab*>().size(), 27);
  EXPECT_EQ(tabs_->Tab(655)->Caption(), QStringLiteral("A à Z"));
  EXPECT_EQ(tabs_->Tab(656)->Caption(), QStringLiteral("A"));
  EXPECT_EQ(tabs_->Tab(681)->Caption(), QStringLiteral("Z"));
  EXPECT_EQ(window_.findChild<LetterTab*>(QStringLiteral("668")), tabs_->Tab(668));
  for (int id = 655; id <= 681; ++id) EXPECT_FALSE(tabs_->Tab(id)->accessibleName().isEmpty());
}

TEST_F(LetterTabsTest, OverlapByOnePixelAndTheLastIsOneWider) {
  for (int id = 656; id <= 681; ++id) {
    EXPECT_EQ(tabs_->Tab(id)->x(), tabs_->Tab(id - 1)->geometry().right());
  }
  EXPECT_EQ(tabs_->Tab(681)->width(), tabs_->Tab(658)->width() + 1);
  EXPECT_GT(tabs_->Tab(655)->width(), 2 * tabs_->Tab(656)->width());
}

TEST_F(LetterTabsTest, AClickSelectsOnceTheEventIsThrough) {
  QSignalSpy selected(tabs_, &LetterTabs::tabSelected);
  QTest::mouseClick(tabs_->Tab(660), Qt::LeftButton);
  ASSERT_TRUE(QTest::qWaitFor([&] { return selected.count() == 1; }));
  EXPECT_EQ(selected[0][0].toInt(), 660);
  EXPECT_EQ(tabs_->SelectedId(), 660);
  EXPECT_TRUE(tabs_->Tab(660)->hasFocus());
  QTest::mouseClick(tabs_->Tab(660), Qt::LeftButton);
  QCoreApplication::processEvents();
  EXPECT_EQ(selected.count(), 1);
}

// Or the tab that has lost its place would be chosen again as soon as the window is active again.
TEST_F(LetterTabsTest, TheFocusOfATabGoesAlongWithASelection) {
  QSignalSpy selected(tabs_, &LetterTabs::tabSelected);
  tabs_->Tab(655)->setFocus();
  tabs_->Select(660, false);
  EXPECT_TRUE(tabs_->Tab(660)->hasFocus());
  QWidget above;
  above.show();
  above.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&above));
  tabs_->Select(662, false);
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  QCoreApplication::processEvents();
  EXPECT_TRUE(tabs_->Tab(662)->hasFocus());
  EXPECT_EQ(tabs_->SelectedId(), 662);
  EXPECT_EQ(selected.count(), 0);
  // A focus elsewhere stays there.
  before_->setFocus();
  tabs_->Select(655, false);
  EXPECT_TRUE(before_->hasFocus());
}

TEST_F(LetterTabsTest, ARefusalKeepsTheFormerTab) {
  int asked = 0;
  tabs_->SetMayLeave([&asked] {
    ++asked;
    return false;
  });
  QSignalSpy selected(tabs_, &LetterTabs::tabSelected);
  before_->setFocus();
  QTest::mouseClick(tabs_->Tab(660), Qt::LeftButton);
  QCoreApplication::processEvents();
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(tabs_->SelectedId(), 655);
  EXPECT_EQ(selected.count(), 0);
  EXPECT_TRUE(before_->hasFocus());
}

TEST_F(LetterTabsTest, FocusSelects) {
  QSignalSpy selected(tabs_, &LetterTabs::tabSelected);
  tabs_->Tab(670)->setFocus();
  ASSERT_TRUE(QTest::qWaitFor([&] { return selected.count() == 1; }));
  EXPECT_EQ(tabs_->SelectedId(), 670);
  before_->setFocus();
  tabs_->Tab(670)->setFocus();
  QCoreApplication::processEvents();
  EXPECT_EQ(selected.count(), 1);
}

TEST_F(LetterTabsTest, ArrowsMoveTheSelection) {
  QSignalSpy selected(tabs_, &LetterTabs::tabSelected);
  tabs_->Tab(655)->setFocus();
  QTest::keyClick(tabs_->Tab(655), Qt::Key_Left);
  EXPECT_EQ(selected.count(), 0);
  QTest::keyClick(tabs_->Tab(655), Qt::Key_Right);
  EXPECT_EQ(tabs_->SelectedId(), 656);
  EXPECT_TRUE(tabs_->Tab(656)->hasFocus());
  QTest::keyClick(tabs_->Tab(656), Qt::Key_End);
  EXPECT_EQ(tabs_->SelectedId(), 681);
  QTest::keyClick(tabs_->Tab(681), Qt::Key_Right);
  EXPECT_EQ(tabs_->SelectedId(), 681);
  EXPECT_EQ(selected.count(), 2);
}

TEST_F(LetterTabsTest, IsOneTabStop) {
  tabs_->Select(660, false);
  before_->setFocus();
  QTest::keyClick(before_, Qt::Key_Tab);
  EXPECT_TRUE(tabs_->Tab(660)->hasFocus());
  QTest::keyClick(tabs_->Tab(660), Qt::Key_Tab);
  EXPECT_TRUE(after_->hasFocus());
}

TEST_F(LetterTabsTest, SelectingFromOutsideAsksNobody) {
  int asked = 0;
  tabs_->SetMayLeave([&asked] {
    ++asked;
    return false;
  });
  QSignalSpy selected(tabs_, &LetterTabs::tabSelected);
  tabs_->Select(661, false);
  EXPECT_EQ(tabs_->SelectedId(), 661);
  EXPECT_EQ(selected.count(), 0);
  tabs_->Select(662, true);
  ASSERT_EQ(selected.count(), 1);
  EXPECT_EQ(selected[0][0].toInt(), 662);
  EXPECT_EQ(asked, 0);
  tabs_->Select(700, true);
  EXPECT_EQ(tabs_->SelectedId(), 662);
}

}  // namespace
}  // namespace carnetel::desktop
