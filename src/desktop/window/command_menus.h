// The menu bar of a window, drawn from a table of popups: items are commands that are told by a
// signal, grey or not as the popup opens, and the recent directories stand at the end of the first
// popup. Main window and chooser have one each.
#pragma once

#include <QAction>
#include <QActionGroup>
#include <QList>
#include <QMap>
#include <QMenuBar>
#include <QObject>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "desktop/controls/menu_help.h"
#include "shell/command_table.h"

namespace carnetel::desktop {

class CommandMenus : public QObject {
  Q_OBJECT

 public:
  // Whether the item of a command is grey just now.
  using IsGrey = std::function<bool(int command)>;

  // Fills `bar`, which must outlive this.
  CommandMenus(QMenuBar* bar, std::span<const MenuPopup> popups, IsGrey is_grey,
               QObject* parent = nullptr);

  // The item of a command, null when there is none.
  [[nodiscard]] QAction* Item(int command) const { return items_.value(command); }
  // Makes the items `first` to `last` radio items, of which `command` is the checked one.
  void CheckRadio(int first, int last, int command);
  // Shows these texts, "&1 /path", as commands from kCommandRecent1 on.
  void SetRecents(const std::vector<std::string>& texts);

 Q_SIGNALS:
  void chosen(int command);
  // The bar came over an item.
  void pointedAt(int command);
  // A popup opens, of which the status line says this text; it has closed.
  void opening(int status_text);
  void closed();
  // F1 over an item; 0 over none.
  void helpWanted(int command);

 private:
  void AddPopup(const MenuPopup& popup);
  QAction* AddItem(QMenu* menu, const QString& text, int command);

  QMenuBar* bar_;
  IsGrey is_grey_;
  MenuHelp help_;
  QMenu* first_popup_ = nullptr;
  QMap<int, QAction*> items_;
  QList<QAction*> recents_;
  QActionGroup radios_;
};

}  // namespace carnetel::desktop
