// Controls that are known by a name of their own, since they have no number, and what a user does
// with them.
#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include "tests/desktop/dialogs/dialog_testing.h"

namespace carnetel::desktop {

template <class Widget = QWidget>
Widget* Named(const QDialog& dialog, const QString& name) {
  auto* found = dialog.findChild<Widget*>(name);
  if (found == nullptr) qFatal("no control %s", qPrintable(name));
  return found;
}

inline void PressNamed(const QDialog& dialog, const QString& name) {
  auto* button = Named<QAbstractButton>(dialog, name);
  ASSERT_TRUE(button->isVisible() && button->isEnabled()) << name.toStdString();
  // The press gives the focus, as the window system does it.
  QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

inline QString TextOf(const QDialog& dialog, const QString& name) {
  QWidget* control = Named(dialog, name);
  if (const auto* list = qobject_cast<QComboBox*>(control)) return list->currentText();
  return Named<QLineEdit>(dialog, name)->text();
}

// Goes to a field, selects what it holds and types.
inline void TypeInto(const QDialog& dialog, const QString& name, const QString& text) {
  QWidget* control = Named(dialog, name);
  control->setFocus(Qt::TabFocusReason);
  PressKey(Qt::Key_A, Qt::ControlModifier);
  if (text.isEmpty()) PressKey(Qt::Key_Delete);
  Type(text);
}

// Goes to a list and down to a row with the keys.
inline void Pick(const QDialog& dialog, const QString& name, int row) {
  auto* list = Named<QComboBox>(dialog, name);
  ASSERT_LT(row, list->count());
  list->setFocus(Qt::TabFocusReason);
  while (list->currentIndex() != row) {
    const int former = list->currentIndex();
    PressKey(former < row ? Qt::Key_Down : Qt::Key_Up);
    ASSERT_NE(list->currentIndex(), former);
  }
}

inline QStringList Rows(const QDialog& dialog, const QString& name) {
  const auto* list = Named<QComboBox>(dialog, name);
  QStringList rows;
  for (int row = 0; row < list->count(); ++row) rows += list->itemText(row);
  return rows;
}

inline QString FocusName() {
  const QWidget* focus = QApplication::focusWidget();
  return focus == nullptr ? QString() : focus->objectName();
}

// The names that Tab comes by, from the focus until it is back there.
inline QStringList TabNames() {
  constexpr int kMost = 60;
  QStringList stops = {FocusName()};
  for (int i = 0; i < kMost; ++i) {
    PressKey(Qt::Key_Tab);
    if (FocusName() == stops.front()) return stops;
    stops += FocusName();
  }
  ADD_FAILURE() << "the walk does not come back";
  return stops;
}

// The wheel over a closed list.
inline void TurnWheel(QWidget* widget) {
  const QPointF place = widget->rect().center();
  QWheelEvent wheel(place, widget->mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(widget, &wheel);
}

// Every list of the dialog stays when the wheel turns over it.
inline void ExpectWheelChangesNothing(const QDialog& dialog) {
  for (QComboBox* list : dialog.findChildren<QComboBox*>()) {
    const int former = list->currentIndex();
    TurnWheel(list);
    if (list->lineEdit() != nullptr) TurnWheel(list->lineEdit());
    EXPECT_EQ(list->currentIndex(), former) << list->objectName().toStdString();
  }
}

}  // namespace carnetel::desktop
