#include "desktop/window/list_position.h"

#include <QLayout>
#include <QScrollBar>
#include <utility>

namespace carnetel::desktop {

ListPosition::ListPosition(CardListView& view, CardList& list, QObject* parent)
    : QObject(parent), view_(view), list_(list) {
  // Refills and the address file keep the row on top as the user has scrolled it.
  connect(view.verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int row) {
    if (start_top_row_ < 0) list_.SetTopRow(row);
  });
}

void ListPosition::Started() {
  start_top_row_ = list_.top_row();
}

// Only a window on the screen has a list of its final height: the row on top could not be applied
// before.
void ListPosition::Shown() {
  if (start_top_row_ < 0) return;
  const int top = std::exchange(start_top_row_, -1);
  view_.window()->layout()->activate();
  QMetaObject::invokeMethod(
      this,
      [this, top] {
        view_.SetTopRow(top);
        view_.SetCurrentRow(list_.current_row());
      },
      Qt::QueuedConnection);
}

void ListPosition::Refilled() {
  const int top = list_.top_row();
  view_.Reload();
  view_.SetTopRow(top);
  view_.SetCurrentRow(list_.current_row());
}

}  // namespace carnetel::desktop
