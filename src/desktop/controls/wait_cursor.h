// The busy cursor, on for the life of a WaitCursor. A box that opens meanwhile takes it away with a
// WaitCursorPause, so that the user sees an arrow to answer with.
#pragma once

#include <QCursor>
#include <QList>

namespace carnetel::desktop {

class WaitCursor {
 public:
  WaitCursor();
  ~WaitCursor();
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
};

class WaitCursorPause {
 public:
  WaitCursorPause();
  ~WaitCursorPause();
  WaitCursorPause(const WaitCursorPause&) = delete;
  WaitCursorPause& operator=(const WaitCursorPause&) = delete;

 private:
  QList<QCursor> taken_;  // outermost last
};

}  // namespace carnetel::desktop
