// What tests of dialogs do as a user does: press, type, walk. A dialog is shown, not run, so that a
// test goes on beside it.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>

namespace carnetel::desktop {

inline void Show(QDialog& dialog) {
  dialog.show();
  dialog.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
}

// The control of that number; null when there is none.
template <class Widget = QWidget>
Widget* Find(const QDialog& dialog, int id) {
  return dialog.findChild<Widget*>(QString::number(id));
}

inline void Press(const QDialog& dialog, int id) {
  auto* button = Find<QAbstractButton>(dialog, id);
  ASSERT_NE(button, nullptr) << id;
  ASSERT_TRUE(button->isVisible() && button->isEnabled()) << id;
  QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

// To the widget with the focus.
inline void PressKey(Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier) {
  ASSERT_NE(QApplication::focusWidget(), nullptr);
  QTest::keyClick(QApplication::focusWidget(), key, keys);
}

inline void Type(const QString& text) {
  for (const QChar character : text) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown,
                        QString(character), Qt::NoModifier);
  }
}

// Alt with the letter of a button: it is seen to go down before it acts.
inline void PressMnemonic(const QDialog& dialog, Qt::Key letter, int id) {
  auto* button = Find<QAbstractButton>(dialog, id);
  ASSERT_NE(button, nullptr) << id;
  QSignalSpy clicked(button, &QAbstractButton::clicked);
  PressKey(letter, Qt::AltModifier);
  ASSERT_TRUE(clicked.count() == 1 || clicked.wait()) << id;
}

// Number of the control with the focus, 0 for none.
inline int FocusId() {
  const QWidget* focus = QApplication::focusWidget();
  return focus == nullptr ? 0 : focus->objectName().toInt();
}

// The numbers that Tab comes by, from the focus until it is back there.
inline QList<int> TabWalk() {
  constexpr int kMost = 20;
  QList<int> stops = {FocusId()};
  for (int i = 0; i < kMost; ++i) {
    PressKey(Qt::Key_Tab);
    if (FocusId() == stops.front()) return stops;
    stops += FocusId();
  }
  ADD_FAILURE() << "the walk does not come back";
  return stops;
}

// Nothing of the dialog's texts is cut off.
inline void ExpectTextsFit(const QDialog& dialog) {
  EXPECT_EQ(dialog.size(), dialog.sizeHint());
  for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
    // The line of a drop-down or a spin has the room that it leaves it.
    if (!widget->isVisible() || widget->parent()->inherits("QComboBox")) continue;
    if (widget->parent()->inherits("QAbstractSpinBox")) continue;
    const QSize needed = widget->minimumSizeHint().boundedTo(widget->maximumSize());
    EXPECT_TRUE(widget->width() >= needed.width() && widget->height() >= needed.height())
        << widget->metaObject()->className() << " " << widget->objectName().toStdString();
  }
}

// Every control that takes the focus says what it is.
inline void ExpectNames(const QDialog& dialog) {
  for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
    if ((widget->focusPolicy() & Qt::TabFocus) == 0 || !widget->isVisible()) continue;
    const QAccessibleInterface* told =
        QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
    ASSERT_NE(told, nullptr);
    EXPECT_FALSE(told->text(QAccessible::Name).isEmpty()) << widget->objectName().toStdString();
  }
}

}  // namespace carnetel::desktop
