#include "desktop/controls/button_row.h"

#include <QApplication>
#include <QKeyEvent>

namespace carnetel::desktop {
namespace {

bool CanTakeFocus(const BubbleButton* button) {
  return button->IsActive() && button->isEnabled() && !button->isHidden();
}

}  // namespace

ButtonRow::ButtonRow(const QList<BubbleButton*>& buttons, QObject* parent)
    : QObject(parent), buttons_(buttons) {
  for (BubbleButton* button : buttons_) {
    button->installEventFilter(this);
    button->SetTabStop(false);
    connect(button, &BubbleButton::activeChanged, this, &ButtonRow::CheckTabStop);
  }
  connect(qApp, &QApplication::focusChanged, this, &ButtonRow::FocusMoved);
  CheckTabStop();
}

BubbleButton* ButtonRow::Neighbour(const BubbleButton* from, int step) const {
  for (qsizetype at = buttons_.indexOf(from) + step; at >= 0 && at < buttons_.size(); at += step) {
    if (CanTakeFocus(buttons_[at])) return buttons_[at];
  }
  return nullptr;
}

bool ButtonRow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key != Qt::Key_Left && key != Qt::Key_Right) return false;
  auto* button = static_cast<BubbleButton*>(watched);
  if (BubbleButton* to = Neighbour(button, key == Qt::Key_Left ? -1 : 1)) {
    to->setFocus(Qt::TabFocusReason);
  }
  return true;
}

void ButtonRow::FocusMoved(QWidget* from, QWidget* to) {
  auto* button = qobject_cast<BubbleButton*>(to);
  if (button == nullptr || !buttons_.contains(button)) return;
  if (button->IsActive()) {
    MoveTabStop(button);
    return;
  }
  BubbleButton* next = Neighbour(button, 1);
  if (next == nullptr || next == from) next = Neighbour(button, -1);
  if (next != nullptr) next->setFocus(Qt::OtherFocusReason);
}

void ButtonRow::MoveTabStop(BubbleButton* to) {
  if (tab_stop_ == to) return;
  if (tab_stop_ != nullptr) tab_stop_->SetTabStop(false);
  tab_stop_ = to;
  if (to != nullptr) to->SetTabStop(true);
}

// A stop on a button that is off could not be reached: the first that is on takes it.
void ButtonRow::CheckTabStop() {
  if (tab_stop_ != nullptr && CanTakeFocus(tab_stop_)) return;
  for (BubbleButton* button : buttons_) {
    if (!CanTakeFocus(button)) continue;
    MoveTabStop(button);
    return;
  }
}

}  // namespace carnetel::desktop
