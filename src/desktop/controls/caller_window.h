// The window of the program that started this one, known by its number alone: it owns the role's
// window, comes back on the screen when that one closes, and gets the result as a message. On X11
// all of it is done; elsewhere, and for a number that is no window (any more), nothing is.
#pragma once

#include <QWidget>
#include <cstdint>

namespace carnetel::desktop {

class CallerWindow {
 public:
  // 0: nobody has started the program.
  explicit CallerWindow(uint32_t window) : window_(window) {}

  // Makes it the owner of a window that is about to be shown for the first time.
  void Own(QWidget& window) const;
  // Shows it again where it was hidden.
  void ShowAgain() const;
  // A message with its two values: a client message of 32-bit numbers, type CARNETEL_NOTIFY.
  void Send(int message, int32_t w_param, int32_t l_param) const;

 private:
  uint32_t window_;
};

}  // namespace carnetel::desktop
