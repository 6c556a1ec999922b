// Consultation: the marked cards one after the other, read-only, beside the main window.
#pragma once

#include <QDialog>

#include "desktop/form/card_panel.h"

namespace carnetel::desktop {

class Consultation : public QDialog {
  Q_OBJECT

 public:
  explicit Consultation(QWidget* parent);

  CardPanel& panel() { return *panel_; }

 Q_SIGNALS:
  // 1 for the next marked card, -1 for the one before.
  void stepped(int step);
  void helpWanted();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  CardPanel* panel_;
};

}  // namespace carnetel::desktop
