// The system's printers behind the print form: the list of them, a printer's own page settings, and
// a run on one of them, or into a PDF file, chosen in the system's print dialog. During a run the
// box to abandon it is up, and the events that wait are dispatched at each page and every 40 ms.
#pragma once

#include <QPageLayout>
#include <functional>
#include <map>
#include <memory>

#include "desktop/controls/busy_state.h"
#include "printing/printer_port.h"

class QPrinter;
class QWidget;

namespace carnetel::desktop {

class PrinterRun;

class PrinterDesk : public PrinterPort {
 public:
  // A dialog of the system's that works on a printer; true when it was confirmed.
  using Dialog = std::function<bool(QPrinter& printer, QWidget* owner)>;

  // `owner` says over which window dialogs open. `busy` is held during a run and outlives this.
  PrinterDesk(BusyState& busy, std::function<QWidget*()> owner);
  ~PrinterDesk() override;
  PrinterDesk(const PrinterDesk&) = delete;
  PrinterDesk& operator=(const PrinterDesk&) = delete;

  [[nodiscard]] std::vector<InstalledPrinter> Printers() override;
  void ShowProperties(const std::string& printer) override;
  PrinterStart BeginPrinter(const PrintJob& job) override;
  PrintTarget& target() override;
  void EndPrinter() override;

  // The page of a printer, as its settings were left; with an empty name that of the system's own.
  [[nodiscard]] QPageLayout PageLayout(const std::string& printer);

  // What stands in for the system's dialogs.
  void SetPrintDialog(Dialog dialog) { print_dialog_ = std::move(dialog); }
  void SetPageDialog(Dialog dialog) { page_dialog_ = std::move(dialog); }

 private:
  BusyState& busy_;
  std::function<QWidget*()> owner_;
  Dialog print_dialog_;
  Dialog page_dialog_;
  std::map<std::string, QPageLayout> layouts_;  // by printer
  std::unique_ptr<PrinterRun> run_;
};

}  // namespace carnetel::desktop
