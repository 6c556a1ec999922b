// Keeps the rows of a list on the screen where those of its cards are: after a refill, as the user
// scrolls, and when the window comes up on the rows that the files have kept.
#pragma once

#include <QObject>

#include "desktop/controls/card_list_view.h"
#include "shell/card_list.h"

namespace carnetel::desktop {

class ListPosition : public QObject {
  Q_OBJECT

 public:
  // Both must outlive this.
  ListPosition(CardListView& view, CardList& list, QObject* parent);

  // The list has been filled for the first time; its window is not on the screen yet.
  void Started();
  // The window has come on the screen.
  void Shown();
  // The rows are others now.
  void Refilled();

 private:
  CardListView& view_;
  CardList& list_;
  // The row on top that the files have kept, until the window is shown; then -1.
  int start_top_row_ = 0;
};

}  // namespace carnetel::desktop
