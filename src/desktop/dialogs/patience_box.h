// "Veuillez patienter": a box without a button over work that does not count its steps and lets no
// events through. show() returns when it is painted; it stays until hide(), whatever the user does,
// and the program is busy as long.
#pragma once

#include <QDialog>
#include <optional>

#include "desktop/controls/busy_state.h"

namespace carnetel::desktop {

class PatienceBox : public QDialog {
  Q_OBJECT

 public:
  // `busy` must outlive the box.
  PatienceBox(BusyState& busy, QWidget* parent);

  void setVisible(bool visible) override;
  // Escape.
  void reject() override {}

 protected:
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void WaitForPaint();

  BusyState& busy_;
  std::optional<BusyScope> scope_;
  bool painted_ = false;
};

}  // namespace carnetel::desktop
