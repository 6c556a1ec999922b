#include "desktop/controls/filtered_notes_edit.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QSignalSpy>
#include <QTest>

namespace carnetel::desktop {
namespace {

// For characters that the test library knows no key for.
void TypeCharacter(QWidget& widget, const QString& text) {
  QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, text, Qt::NoModifier);
}

class NotesTest : public testing::Test {
 protected:
  void SetUp() override {
    notes_.SetBeeper([this] { ++beeps_; });
    notes_.show();
    notes_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&notes_));
    notes_.setFocus();
  }

  void Paste(const QString& text) {
    QApplication::clipboard()->setText(text);
    notes_.paste();
  }

  FilteredNotesEdit notes_{174, 8};
  int beeps_ = 0;
};

TEST_F(NotesTest, IsNamedByItsIdAndTakesNoDrops) {
  EXPECT_EQ(notes_.objectName(), QStringLiteral("174"));
  EXPECT_FALSE(notes_.acceptDrops());
  EXPECT_TRUE(notes_.tabChangesFocus());
}

TEST_F(NotesTest, EnterConfirmsAndCtrlEnterBreaksTheLine) {
  QSignalSpy pressed(&notes_, &FilteredNotesEdit::returnPressed);
  QTest::keyClicks(&notes_, QStringLiteral("a"));
  QTest::keyClick(&notes_, Qt::Key_Return);
  EXPECT_EQ(pressed.count(), 1);
  EXPECT_EQ(notes_.Text(), QStringLiteral("a"));
  QTest::keyClick(&notes_, Qt::Key_Return, Qt::ControlModifier);
  QTest::keyClicks(&notes_, QStringLiteral("b"));
  EXPECT_EQ(notes_.Text(), QStringLiteral("a\nb"));
  EXPECT_EQ(pressed.count(), 1);
}

TEST_F(NotesTest, ALineBreakTakesTwoBytes) {
  QTest::keyClicks(&notes_, QStringLiteral("123456"));
  QTest::keyClick(&notes_, Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(beeps_, 0);
  QTest::keyClicks(&notes_, QStringLiteral("7"));
  EXPECT_EQ(notes_.Text(), QStringLiteral("123456\n"));
  EXPECT_EQ(beeps_, 1);
  QTest::keyClick(&notes_, Qt::Key_Backspace);
  QTest::keyClicks(&notes_, QStringLiteral("7"));
  QTest::keyClick(&notes_, Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(notes_.Text(), QStringLiteral("1234567"));
  EXPECT_EQ(beeps_, 2);
}

TEST_F(NotesTest, ASelectionMakesRoom) {
  notes_.SetText(QStringLiteral("12\r\n345"));
  EXPECT_EQ(notes_.Text(), QStringLiteral("12\n345"));
  notes_.selectAll();
  Paste(QStringLiteral("abcdefgh"));
  EXPECT_EQ(notes_.Text(), QStringLiteral("abcdefgh"));
  EXPECT_EQ(beeps_, 0);
}

TEST_F(NotesTest, PasteIsFilteredAndCut) {
  Paste(QStringLiteral("œ’\r\n€bcdef"));
  EXPECT_EQ(notes_.Text(), QStringLiteral("oe'\nbcd"));
  EXPECT_EQ(beeps_, 1);
}

TEST_F(NotesTest, TypedCharactersAndCommitsAreFiltered) {
  QTest::sendKeyEvent(QTest::Click, &notes_, Qt::Key_unknown, QStringLiteral("€"), Qt::NoModifier);
  EXPECT_EQ(beeps_, 1);
  QInputMethodEvent event;
  event.setCommitString(QStringLiteral("ê€"));
  QApplication::sendEvent(&notes_, &event);
  EXPECT_EQ(notes_.Text(), QStringLiteral("ê"));
  EXPECT_EQ(beeps_, 2);
}

TEST_F(NotesTest, OnlyTheUsersChangesAreTold) {
  QSignalSpy edited(&notes_, &FilteredNotesEdit::textEdited);
  notes_.SetText(QStringLiteral("a"));
  EXPECT_EQ(edited.count(), 0);
  QTest::keyClicks(&notes_, QStringLiteral("b"));
  EXPECT_EQ(edited.count(), 1);
}

TEST_F(NotesTest, FrozenTakesNothing) {
  notes_.SetFrozen(true);
  QSignalSpy pressed(&notes_, &FilteredNotesEdit::returnPressed);
  QTest::keyClicks(&notes_, QStringLiteral("a"));
  TypeCharacter(notes_, QStringLiteral("€"));
  QTest::keyClick(&notes_, Qt::Key_Return);
  Paste(QStringLiteral("b"));
  EXPECT_EQ(notes_.Text(), QString());
  EXPECT_EQ(pressed.count(), 0);
  EXPECT_EQ(beeps_, 0);
}

}  // namespace
}  // namespace carnetel::desktop
