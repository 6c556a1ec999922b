#include "desktop/controls/beeper.h"

#include <QApplication>

namespace carnetel::desktop {

void SystemBeep() {
  QApplication::beep();
}

}  // namespace carnetel::desktop
