// A group of picture buttons for the keyboard: Tab stops at one of them, Left and Right go to the
// neighbour that is on, in the order given and not past the ends. Focus that lands on a button
// which is off goes on to the next one that is on, or back if that is where it came from.
#pragma once

#include <QList>
#include <QObject>

#include "desktop/controls/bubble_button.h"

namespace carnetel::desktop {

class ButtonRow : public QObject {
  Q_OBJECT

 public:
  explicit ButtonRow(const QList<BubbleButton*>& buttons, QObject* parent = nullptr);

  [[nodiscard]] const QList<BubbleButton*>& buttons() const { return buttons_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] BubbleButton* Neighbour(const BubbleButton* from, int step) const;
  void FocusMoved(QWidget* from, QWidget* to);
  void MoveTabStop(BubbleButton* to);
  void CheckTabStop();

  QList<BubbleButton*> buttons_;
  BubbleButton* tab_stop_ = nullptr;
};

}  // namespace carnetel::desktop
