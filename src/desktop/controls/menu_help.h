// F1 over an open menu: all menus close and the command of the item under the bar is asked about
// instead of run. Items say their command by their object name, in decimal.
#pragma once

#include <QMenu>
#include <QObject>

namespace carnetel::desktop {

class MenuHelp : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  // Watches `menu`; a submenu is watched by itself.
  void Watch(QMenu* menu);

 Q_SIGNALS:
  // 0 when no item was under the bar, or one without a number.
  void helpWanted(int command);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace carnetel::desktop
