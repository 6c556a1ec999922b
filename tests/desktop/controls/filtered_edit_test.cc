#include "desktop/controls/filtered_edit.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include "tests/desktop/controls/painted_image.h"

namespace carnetel::desktop {
namespace {

constexpr EntryRule kNumber{FilterClass::kNumber, CaseRule::kUpper};
constexpr EntryRule kPath{FilterClass::kPath, CaseRule::kUpper};

// For characters that the test library knows no key for.
void TypeCharacter(QWidget& widget, const QString& text) {
  QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, text, Qt::NoModifier);
}

class MarkingEdit : public FilteredEdit {
 public:
  using FilteredEdit::FilteredEdit;
  QList<TextRun> runs;

 protected:
  QList<TextRun> InvertedRuns() const override { return runs; }
};

class FilteredEditTest : public testing::Test {
 protected:
  void SetUp() override {
    edit_.SetBeeper([this] { ++beeps_; });
    edit_.show();
    edit_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&edit_));
    edit_.setFocus();
  }

  void Paste(const QString& text) {
    QApplication::clipboard()->setText(text);
    QTest::keyClick(&edit_, Qt::Key_V, Qt::ControlModifier);
  }

  void Commit(const QString& text) {
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&edit_, &event);
  }

  MarkingEdit edit_{150};
  int beeps_ = 0;
};

TEST_F(FilteredEditTest, IsNamedByItsIdAndTakesNoDrops) {
  EXPECT_EQ(edit_.objectName(), QStringLiteral("150"));
  EXPECT_FALSE(edit_.acceptDrops());
}

TEST_F(FilteredEditTest, TypedCharactersPassTheRule) {
  edit_.SetEntryRule(kNumber, 24);
  QTest::keyClicks(&edit_, QStringLiteral("01.4w"));
  EXPECT_EQ(edit_.text(), QStringLiteral("014W"));
  EXPECT_EQ(beeps_, 1);
}

TEST_F(FilteredEditTest, ASlashInAPathIsABackslash) {
  edit_.SetEntryRule(kPath, 260);
  QTest::keyClicks(&edit_, QStringLiteral("c:/a b"));
  EXPECT_EQ(edit_.text(), QStringLiteral("C:\\AB"));
  EXPECT_EQ(beeps_, 1);
}

TEST_F(FilteredEditTest, EachRefusedCharacterBeeps) {
  edit_.SetEntryRule({FilterClass::kDigits, CaseRule::kNone}, 4);
  QTest::keyClicks(&edit_, QStringLiteral("a1b"));
  EXPECT_EQ(edit_.text(), QStringLiteral("1"));
  EXPECT_EQ(beeps_, 2);
}

TEST_F(FilteredEditTest, TheLimitHoldsAndBeeps) {
  edit_.SetEntryRule({}, 3);
  QTest::keyClicks(&edit_, QStringLiteral("abcd"));
  EXPECT_EQ(edit_.text(), QStringLiteral("abc"));
  EXPECT_EQ(beeps_, 1);
  edit_.selectAll();
  TypeCharacter(edit_, QStringLiteral("é"));
  EXPECT_EQ(edit_.text(), QStringLiteral("é"));
  EXPECT_EQ(beeps_, 1);
}

TEST_F(FilteredEditTest, ALimitBelowOneChangesNothing) {
  edit_.SetEntryRule(kNumber, 3);
  edit_.SetEntryRule({}, 0);
  QTest::keyClicks(&edit_, QStringLiteral("12345"));
  EXPECT_EQ(edit_.text(), QStringLiteral("123"));
}

TEST_F(FilteredEditTest, PasteMapsLookAlikesAndBeepsOnceForTheRest) {
  Paste(QStringLiteral("l’œuf – ЖЖ10 €"));
  EXPECT_EQ(edit_.text(), QStringLiteral("l'oeuf - 10 "));
  EXPECT_EQ(beeps_, 1);
}

TEST_F(FilteredEditTest, PasteMakesLinesOne) {
  Paste(QStringLiteral("a\r\nb"));
  EXPECT_EQ(edit_.text(), QStringLiteral("a b"));
  EXPECT_EQ(beeps_, 0);
}

TEST_F(FilteredEditTest, PasteIsCutAtTheLimit) {
  edit_.SetEntryRule({}, 5);
  edit_.setText(QStringLiteral("ab"));
  Paste(QStringLiteral("cdef"));
  EXPECT_EQ(edit_.text(), QStringLiteral("abcde"));
  EXPECT_EQ(beeps_, 1);
}

TEST_F(FilteredEditTest, DeadKeysAndInputMethodsAreFilteredToo) {
  Commit(QStringLiteral("ê"));
  EXPECT_EQ(edit_.text(), QStringLiteral("ê"));
  EXPECT_EQ(beeps_, 0);
  Commit(QStringLiteral("œ"));
  EXPECT_EQ(edit_.text(), QStringLiteral("ê"));
  EXPECT_EQ(beeps_, 1);
  edit_.SetEntryRule(kNumber, 3);
  Commit(QStringLiteral("12345"));
  EXPECT_EQ(edit_.text(), QStringLiteral("ê12"));
  EXPECT_EQ(beeps_, 2);
}

TEST_F(FilteredEditTest, TheContextMenuPastesThroughTheFilter) {
  QApplication::clipboard()->setText(QStringLiteral("œ"));
  QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(2, 2),
                          edit_.mapToGlobal(QPoint(2, 2)));
  QApplication::sendEvent(&edit_, &event);
  auto* paste = edit_.findChild<QAction*>(QStringLiteral("paste"));
  ASSERT_NE(paste, nullptr);
  paste->trigger();
  EXPECT_EQ(edit_.text(), QStringLiteral("oe"));
  QApplication::activePopupWidget()->close();
}

TEST_F(FilteredEditTest, TypingIsToldAsEdited) {
  QSignalSpy edited(&edit_, &QLineEdit::textEdited);
  edit_.setText(QStringLiteral("a"));
  EXPECT_EQ(edited.count(), 0);
  QTest::keyClicks(&edit_, QStringLiteral("b"));
  EXPECT_EQ(edited.count(), 1);
  Paste(QStringLiteral("c"));
  EXPECT_EQ(edited.count(), 2);
  Commit(QStringLiteral("d"));
  EXPECT_EQ(edited.count(), 3);
  EXPECT_EQ(edit_.text(), QStringLiteral("abcd"));
}

TEST_F(FilteredEditTest, FrozenTakesNothingAndStaysSilent) {
  edit_.setText(QStringLiteral("a"));
  edit_.SetFrozen(true);
  QTest::keyClicks(&edit_, QStringLiteral("b"));
  TypeCharacter(edit_, QStringLiteral("€"));
  QTest::keyClick(&edit_, Qt::Key_Backspace);
  Paste(QStringLiteral("c"));
  Commit(QStringLiteral("d"));
  EXPECT_EQ(edit_.text(), QStringLiteral("a"));
  EXPECT_EQ(beeps_, 0);
  edit_.SetFrozen(false);
  QTest::keyClicks(&edit_, QStringLiteral("b"));
  EXPECT_EQ(edit_.text(), QStringLiteral("ab"));
}

TEST_F(FilteredEditTest, ReadOnlyTakesNothing) {
  edit_.setReadOnly(true);
  QTest::keyClicks(&edit_, QStringLiteral("b"));
  Paste(QStringLiteral("c"));
  Commit(QStringLiteral("d"));
  EXPECT_EQ(edit_.text(), QString());
}

TEST_F(FilteredEditTest, AnEditCanBeTakenBack) {
  edit_.setText(QStringLiteral("ab"));
  edit_.setCursorPosition(0);
  QTest::keyClicks(&edit_, QStringLiteral("-"));
  EXPECT_EQ(edit_.text(), QStringLiteral("-ab"));
  edit_.TakeBackEdit();
  EXPECT_EQ(edit_.text(), QStringLiteral("ab"));
  EXPECT_FALSE(edit_.isUndoAvailable());
}

TEST_F(FilteredEditTest, UndoCanBeForgotten) {
  QTest::keyClicks(&edit_, QStringLiteral("ab"));
  edit_.setCursorPosition(1);
  QSignalSpy changed(&edit_, &QLineEdit::textChanged);
  edit_.ForgetUndo();
  edit_.undo();
  EXPECT_EQ(edit_.text(), QStringLiteral("ab"));
  EXPECT_EQ(edit_.cursorPosition(), 1);
  EXPECT_EQ(changed.count(), 0);
}

TEST_F(FilteredEditTest, EnterIsTold) {
  QSignalSpy pressed(&edit_, &QLineEdit::returnPressed);
  QTest::keyClick(&edit_, Qt::Key_Return);
  QTest::keyClick(&edit_, Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(pressed.count(), 2);
}

TEST_F(FilteredEditTest, FocusIsToldWithItsReason) {
  QSignalSpy entered(&edit_, &FilteredEdit::focusEntered);
  QSignalSpy left(&edit_, &FilteredEdit::focusLeft);
  edit_.clearFocus();
  edit_.setFocus(Qt::TabFocusReason);
  ASSERT_EQ(left.count(), 1);
  ASSERT_EQ(entered.count(), 1);
  EXPECT_EQ(entered[0][0].value<Qt::FocusReason>(), Qt::TabFocusReason);
}

TEST_F(FilteredEditTest, FlatHasTheSameSize) {
  const QSize framed = edit_.sizeHint();
  edit_.SetFlat(true);
  EXPECT_FALSE(edit_.hasFrame());
  EXPECT_EQ(edit_.sizeHint(), framed);
  edit_.SetFlat(false);
  EXPECT_EQ(edit_.sizeHint(), framed);
}

// Whether a good part of the field between two characters has the text's colour for background.
bool IsInverted(const FilteredEdit& edit, const QImage& image, qsizetype first, qsizetype last) {
  const QFontMetrics metrics = edit.fontMetrics();
  const QString text = edit.text();
  int black = 0;
  int all = 0;
  const int base = edit.width() - edit.contentsRect().width() + 4;
  const int from = base + metrics.horizontalAdvance(text.left(first));
  const int to = base + metrics.horizontalAdvance(text.left(last));
  for (int x = from + 1; x < to - 1; ++x, ++all) {
    if (qGray(image.pixel(x, image.height() / 2 - metrics.ascent() / 2)) < 128) ++black;
  }
  return black * 2 > all;
}

TEST_F(FilteredEditTest, RunsArePaintedInverted) {
  edit_.setText(QStringLiteral("mmmmmmmm"));
  edit_.setCursorPosition(0);
  edit_.clearFocus();
  edit_.runs = {{2, 3}};
  const QImage image = PaintedImage(edit_);
  EXPECT_FALSE(IsInverted(edit_, image, 0, 2));
  EXPECT_TRUE(IsInverted(edit_, image, 2, 5));
  EXPECT_FALSE(IsInverted(edit_, image, 5, 8));
}

}  // namespace
}  // namespace carnetel::desktop
