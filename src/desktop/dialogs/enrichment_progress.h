// "Enrichissement de l'carnetel en cours...": the box beside a silent enrichment, with the
// directory and the company at hand. It lets events through by itself; whatever would close it is
// the wish to stop, and it stays until the run is over.
#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <string>

#include "desktop/controls/busy_state.h"
#include "desktop/dialogs/fixed_dialog.h"

namespace carnetel::desktop {

class EnrichmentProgress : public FixedDialog {
  Q_OBJECT

 public:
  // `busy` is held as long as the box lives, and must outlive it.
  EnrichmentProgress(BusyState& busy, const std::string& directory, QWidget* parent);

  // The next company; true when the user wants to stop. Events that wait are dispatched the first
  // time and then at least every 40 ms, since a card may take microseconds.
  bool ShowCompany(const std::string& company);

  // Enter, Escape, the button and the window's cross.
  void accept() override { stop_ = true; }
  void reject() override { stop_ = true; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  BusyScope busy_;
  QLabel* company_;
  QElapsedTimer since_pump_;
  bool stop_ = false;
};

}  // namespace carnetel::desktop
