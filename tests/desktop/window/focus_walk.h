// A walk of Tab through a window: every stop has a name for screen readers, and no text on the way
// is cut.
#pragma once

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QTest>
#include <vector>

#include "desktop/controls/letter_tabs.h"
#include "desktop/controls/picker_combo.h"

namespace carnetel::desktop {

inline bool Fits(const QWidget& widget, const QString& text, int room) {
  return widget.fontMetrics().horizontalAdvance(text) <= room;
}

inline void ExpectNothingClipped(const QMainWindow& window) {
  for (const QLabel* label : window.findChildren<QLabel*>()) {
    if (!label->isVisible()) continue;
    QString text = label->text();
    if (label->buddy() != nullptr) text.remove('&');
    EXPECT_TRUE(Fits(*label, text, label->contentsRect().width())) << text.toStdString();
    EXPECT_GE(label->height(), label->fontMetrics().height()) << text.toStdString();
  }
  for (const LetterTab* tab : window.findChildren<LetterTab*>()) {
    EXPECT_TRUE(Fits(*tab, tab->Caption(), tab->width() - 4)) << tab->Caption().toStdString();
    EXPECT_GE(tab->height(), tab->fontMetrics().height()) << tab->Caption().toStdString();
  }
  for (const PickerCombo* picker : window.findChildren<PickerCombo*>()) {
    EXPECT_TRUE(Fits(*picker, picker->currentText(), picker->width() - picker->height()))
        << picker->objectName().toStdString();
  }
  for (const QLineEdit* edit : window.findChildren<QLineEdit*>()) {
    if (!edit->isVisible()) continue;
    EXPECT_GE(edit->height(), edit->fontMetrics().height());
  }
  // Everything lies within the window.
  for (const QWidget* widget : window.centralWidget()->findChildren<QWidget*>()) {
    if (!widget->isVisible()) continue;
    const QRect box(widget->mapTo(window.centralWidget(), QPoint()), widget->size());
    EXPECT_TRUE(window.centralWidget()->rect().contains(box))
        << widget->metaObject()->className() << widget->objectName().toStdString();
  }
}

// Number of the control around the focus.
inline int FocusedNumber() {
  for (const QWidget* at = QApplication::focusWidget(); at != nullptr; at = at->parentWidget()) {
    if (const int id = at->objectName().toInt()) return id;
  }
  return 0;
}

// The stops of Tab until the focus is back where it was.
inline std::vector<int> WalkByTab(const QMainWindow& window) {
  constexpr size_t kMost = 60;
  std::vector<int> stops;
  const int first = FocusedNumber();
  do {
    QWidget* focus = QApplication::focusWidget();
    const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(focus);
    QString name = focus->accessibleName();
    for (QWidget* at = focus; name.isEmpty() && at != nullptr; at = at->parentWidget()) {
      name = at->accessibleName();
    }
    EXPECT_FALSE(name.isEmpty()) << FocusedNumber();
    EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty()) << FocusedNumber();
    ExpectNothingClipped(window);
    stops.push_back(FocusedNumber());
    QTest::keyClick(focus, Qt::Key_Tab);
    QCoreApplication::processEvents();
  } while (FocusedNumber() != first && stops.size() < kMost);
  return stops;
}

}  // namespace carnetel::desktop
