#include "desktop/print/printer_desk.h"

#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinterInfo>

#include "desktop/controls/wait_cursor.h"
#include "desktop/print/printer_ports.h"
#include "desktop/print/printer_run.h"

namespace carnetel::desktop {
namespace {

// Of a queue whose device the system does not tell.
constexpr const char* kUnknownPort = "CUPS";

bool RunPrintDialog(QPrinter& printer, QWidget* owner) {
  QPrintDialog dialog(&printer, owner);
  // Which cards are printed is said in the print form.
  dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize |
                    QAbstractPrintDialog::PrintCollateCopies);
  return dialog.exec() == QDialog::Accepted;
}

bool RunPageDialog(QPrinter& printer, QWidget* owner) {
  QPageSetupDialog dialog(&printer, owner);
  return dialog.exec() == QDialog::Accepted;
}

// A printer that is no longer there leaves the system's own, and without any the PDF file.
std::unique_ptr<QPrinter> MakePrinter(const std::string& name) {
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  const QString wanted = QString::fromStdString(name);
  if (QPrinterInfo::availablePrinterNames().contains(wanted)) printer->setPrinterName(wanted);
  return printer;
}

}  // namespace

PrinterDesk::PrinterDesk(BusyState& busy, std::function<QWidget*()> owner)
    : busy_(busy),
      owner_(std::move(owner)),
      print_dialog_(RunPrintDialog),
      page_dialog_(RunPageDialog) {}

PrinterDesk::~PrinterDesk() = default;

std::vector<InstalledPrinter> PrinterDesk::Printers() {
  std::vector<InstalledPrinter> printers;
  const QList<QPrinterInfo> installed = QPrinterInfo::availablePrinters();
  if (installed.isEmpty()) return printers;
  const WaitCursor wait;
  const QMap<QString, QString> ports = ReadPrinterPorts();
  for (const QPrinterInfo& info : installed) {
    QString port = ports.value(info.printerName());
    // A comma ends a part of what is stored.
    if (port.isEmpty() || port.contains(u',')) port = QString::fromLatin1(kUnknownPort);
    printers.push_back(
        {info.printerName().toStdString(), info.makeAndModel().toStdString(), port.toStdString()});
  }
  return printers;
}

QPageLayout PrinterDesk::PageLayout(const std::string& printer) {
  auto found = layouts_.find(printer);
  if (found == layouts_.end()) {
    found = layouts_.emplace(printer, MakePrinter(printer)->pageLayout()).first;
  }
  return found->second;
}

void PrinterDesk::ShowProperties(const std::string& printer) {
  const std::unique_ptr<QPrinter> device = MakePrinter(printer);
  device->setPageLayout(PageLayout(printer));
  const WaitCursorPause arrow;
  if (page_dialog_(*device, owner_())) layouts_[printer] = device->pageLayout();
}

PrinterStart PrinterDesk::BeginPrinter(const PrintJob& job) {
  std::unique_ptr<QPrinter> printer = MakePrinter(job.printer);
  printer->setPageLayout(PageLayout(job.printer));
  printer->setDocName(QString::fromStdString(job.document));
  QWidget* owner = owner_();
  {
    const WaitCursorPause arrow;
    if (!print_dialog_(*printer, owner)) return PrinterStart::kCancelled;
  }
  if (!printer->isValid()) return PrinterStart::kNoDevice;
  auto painter = std::make_unique<QPainter>();
  if (!painter->begin(printer.get())) return PrinterStart::kFailed;
  PageDrawing drawing(PrintableSize(printer->pageLayout()), job.columns, job.lines);
  run_ = std::make_unique<PrinterRun>(std::move(printer), std::move(painter), std::move(drawing));
  run_->OpenBox(busy_, owner);
  return PrinterStart::kStarted;
}

PrintTarget& PrinterDesk::target() {
  return *run_;
}

void PrinterDesk::EndPrinter() {
  run_.reset();
}

}  // namespace carnetel::desktop
