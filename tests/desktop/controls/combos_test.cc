#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include "desktop/controls/picker_combo.h"
#include "desktop/controls/reference_combo.h"

namespace carnetel::desktop {
namespace {

void Wheel(QWidget& widget, int delta) {
  QWheelEvent event(QPointF(5, 5), widget.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, delta),
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&widget, &event);
}

const QStringList kReferences = {
    QStringLiteral("un"), QStringLiteral("deux"), QString(), QString(), QString(), QString()};

class ReferenceComboTest : public testing::Test {
 protected:
  void SetUp() override {
    combo_.SetTexts(kReferences);
    combo_.show();
    combo_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&combo_));
    combo_.edit()->setFocus();
  }

  ReferenceCombo combo_{164, 32};
};

TEST_F(ReferenceComboTest, ShowsTheFirstRow) {
  EXPECT_EQ(combo_.objectName(), QStringLiteral("164"));
  EXPECT_EQ(combo_.currentIndex(), 0);
  EXPECT_EQ(combo_.edit()->text(), QStringLiteral("un"));
  EXPECT_EQ(combo_.completer(), nullptr);
}

TEST_F(ReferenceComboTest, TheWheelDoesNotPick) {
  Wheel(combo_, -120);
  Wheel(*combo_.edit(), -120);
  EXPECT_EQ(combo_.currentIndex(), 0);
}

TEST_F(ReferenceComboTest, WhatIsTypedStaysWithItsRow) {
  combo_.edit()->selectAll();
  QTest::keyClicks(combo_.edit(), QStringLiteral("trois"));
  combo_.setCurrentIndex(1);
  EXPECT_EQ(combo_.edit()->text(), QStringLiteral("deux"));
  combo_.setCurrentIndex(0);
  EXPECT_EQ(combo_.edit()->text(), QStringLiteral("trois"));
  EXPECT_EQ(combo_.Texts().first(), QStringLiteral("trois"));
}

TEST_F(ReferenceComboTest, ATextLikeAnotherRowsDoesNotJumpThere) {
  combo_.edit()->selectAll();
  QTest::keyClicks(combo_.edit(), QStringLiteral("deux"));
  QTest::keyClick(combo_.edit(), Qt::Key_Return);
  EXPECT_EQ(combo_.currentIndex(), 0);
  combo_.edit()->clearFocus();
  EXPECT_EQ(combo_.currentIndex(), 0);
  EXPECT_EQ(combo_.count(), 6);
  EXPECT_EQ(combo_.Texts().first(), QStringLiteral("deux"));
}

TEST_F(ReferenceComboTest, EnterAddsNoRow) {
  combo_.edit()->selectAll();
  QTest::keyClicks(combo_.edit(), QStringLiteral("neuf"));
  QTest::keyClick(combo_.edit(), Qt::Key_Return);
  EXPECT_EQ(combo_.count(), 6);
}

TEST_F(ReferenceComboTest, TypingStopsAtTheLimit) {
  int beeps = 0;
  combo_.edit()->SetBeeper([&beeps] { ++beeps; });
  combo_.edit()->clear();
  QTest::keyClicks(combo_.edit(), QString(33, QLatin1Char('x')));
  EXPECT_EQ(combo_.edit()->text().size(), 32);
  EXPECT_EQ(beeps, 1);
}

TEST_F(ReferenceComboTest, ShowingOtherTextsIsSilent) {
  QSignalSpy edited(combo_.edit(), &QLineEdit::textEdited);
  QSignalSpy picked(&combo_, &QComboBox::activated);
  QSignalSpy changed(combo_.edit(), &QLineEdit::textChanged);
  combo_.SetTexts({QStringLiteral("x"), QStringLiteral("y")});
  EXPECT_EQ(combo_.edit()->text(), QStringLiteral("x"));
  EXPECT_EQ(edited.count() + picked.count() + changed.count(), 0);
}

TEST(PickerCombo, OnlyTheUserActivates) {
  PickerCombo combo(184);
  QSignalSpy picked(&combo, &QComboBox::activated);
  combo.SetRows({QStringLiteral("Tout le Fichier "), QStringLiteral("Lyon")}, 1);
  EXPECT_EQ(combo.currentIndex(), 1);
  combo.show();
  Wheel(combo, 120);
  EXPECT_EQ(combo.currentIndex(), 1);
  EXPECT_EQ(picked.count(), 0);
  QTest::keyClick(&combo, Qt::Key_Up);
  EXPECT_EQ(combo.currentIndex(), 0);
  ASSERT_EQ(picked.count(), 1);
  EXPECT_EQ(picked[0][0].toInt(), 0);
}

}  // namespace
}  // namespace carnetel::desktop
