#include "desktop/window/command_menus.h"

#include <utility>

#include "desktop/window/window_parts.h"

namespace carnetel::desktop {
namespace {

// "&1 path" as a menu shows it: no '&' of the path is a mnemonic, a long path loses its middle.
QString MenuTextOf(const QString& raw, const QFontMetrics& metrics) {
  constexpr qsizetype kPrefix = 3;
  constexpr int kShownCharacters = 60;
  QString path = metrics.elidedText(raw.mid(kPrefix), Qt::ElideMiddle,
                                    metrics.averageCharWidth() * kShownCharacters);
  return raw.left(kPrefix) + path.replace('&', QStringLiteral("&&"));
}

}  // namespace

CommandMenus::CommandMenus(QMenuBar* bar, std::span<const MenuPopup> popups, IsGrey is_grey,
                           QObject* parent)
    : QObject(parent), bar_(bar), is_grey_(std::move(is_grey)), radios_(this) {
  for (const MenuPopup& popup : popups) AddPopup(popup);
  connect(&help_, &MenuHelp::helpWanted, this, &CommandMenus::helpWanted);
}

void CommandMenus::AddPopup(const MenuPopup& popup) {
  QMenu* menu = bar_->addMenu(Utf8(popup.title));
  if (first_popup_ == nullptr) first_popup_ = menu;
  for (const MenuItem& item : popup.items) {
    if (item.command == 0) {
      menu->addSeparator();
      continue;
    }
    // The shortcut is text only: which keys do it is told by where the focus is.
    const QString shortcut = item.shortcut.empty() ? QString() : '\t' + Utf8(item.shortcut);
    items_[item.command] = AddItem(menu, Utf8(item.text) + shortcut, item.command);
  }
  help_.Watch(menu);
  const int status = popup.status_text;
  connect(menu, &QMenu::aboutToShow, this, [this, status] {
    for (auto item = items_.cbegin(); item != items_.cend(); ++item) {
      item.value()->setEnabled(!is_grey_(item.key()));
    }
    Q_EMIT opening(status);
  });
  connect(menu, &QMenu::aboutToHide, this, &CommandMenus::closed);
}

QAction* CommandMenus::AddItem(QMenu* menu, const QString& text, int command) {
  QAction* action = menu->addAction(text);
  action->setObjectName(QString::number(command));
  action->setMenuRole(QAction::NoRole);
  connect(action, &QAction::triggered, this, [this, command] { Q_EMIT chosen(command); });
  connect(action, &QAction::hovered, this, [this, command] { Q_EMIT pointedAt(command); });
  return action;
}

void CommandMenus::CheckRadio(int first, int last, int command) {
  for (int item = first; item <= last; ++item) {
    QAction* action = items_.value(item);
    if (action == nullptr) continue;
    action->setCheckable(true);
    radios_.addAction(action);
    action->setChecked(item == command);
  }
}

void CommandMenus::SetRecents(const std::vector<std::string>& texts) {
  qDeleteAll(std::exchange(recents_, {}));
  int command = kCommandRecent1;
  for (const std::string& text : texts) {
    const QString raw = Utf8(text);
    QAction* action = AddItem(first_popup_, MenuTextOf(raw, bar_->fontMetrics()), command++);
    action->setData(raw);
    recents_.append(action);
  }
}

}  // namespace carnetel::desktop
