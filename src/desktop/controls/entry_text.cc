#include "desktop/controls/entry_text.h"

namespace carnetel::desktop {

bool EntersText(const QKeyEvent& event) {
  if (event.text().isEmpty()) return false;
  // AltGr, which is Ctrl and Alt together on some systems, enters text; either alone does not.
  const Qt::KeyboardModifiers held =
      event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  if (held == Qt::ControlModifier || held == Qt::AltModifier || held == Qt::MetaModifier) {
    return false;
  }
  const QChar first = event.text().at(0);
  return first.isPrint() || first.isSurrogate() || first.category() == QChar::Other_Format ||
         first.category() == QChar::Other_PrivateUse;
}

bool IsDialogKey(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F1:
      return true;
    default:
      return false;
  }
}

}  // namespace carnetel::desktop
