#include "desktop/controls/wait_cursor.h"

#include <QApplication>

namespace carnetel::desktop {

WaitCursor::WaitCursor() {
  QApplication::setOverrideCursor(Qt::WaitCursor);
}

WaitCursor::~WaitCursor() {
  QApplication::restoreOverrideCursor();
}

WaitCursorPause::WaitCursorPause() {
  while (const QCursor* cursor = QApplication::overrideCursor()) {
    taken_ += *cursor;
    QApplication::restoreOverrideCursor();
  }
}

WaitCursorPause::~WaitCursorPause() {
  while (!taken_.isEmpty()) QApplication::setOverrideCursor(taken_.takeLast());
}

}  // namespace carnetel::desktop
