#include "desktop/controls/menu_help.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>

namespace carnetel::desktop {
namespace {

bool IsHelpKey(const QEvent& event) {
  if (event.type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<const QKeyEvent&>(event);
  return key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
}

void CloseMenus() {
  while (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) menu->close();
  // The bar keeps the focus that it took when its menu was opened by keys; Escape makes it give
  // the focus back to where it was.
  if (auto* bar = qobject_cast<QMenuBar*>(QApplication::focusWidget())) {
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(bar, &escape);
  }
}

}  // namespace

void MenuHelp::Watch(QMenu* menu) {
  menu->installEventFilter(this);
}

bool MenuHelp::eventFilter(QObject* watched, QEvent* event) {
  if (!IsHelpKey(*event)) return QObject::eventFilter(watched, event);
  const QAction* action = static_cast<QMenu*>(watched)->activeAction();
  const int command = action != nullptr ? action->objectName().toInt() : 0;
  CloseMenus();
  Q_EMIT helpWanted(command);
  return true;
}

}  // namespace carnetel::desktop
