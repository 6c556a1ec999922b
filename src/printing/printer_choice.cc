#include "printing/printer_choice.h"

#include <algorithm>

#include "base/format_text.h"
#include "platform/user_profile.h"

namespace carnetel {
namespace {

constexpr std::string_view kSection = "devices";
constexpr std::string_view kKey = "Printer";
constexpr std::string_view kFormat = "%s,%s,%s";
constexpr std::string_view kNothing = "@@@";
constexpr int kPrinterOnPort = 38;
constexpr std::string_view kCaptureDriver = "CAPTURE FAX DROV";

std::string RowOf(const InstalledPrinter& printer) {
  return printer.name + ',' + printer.port;
}

}  // namespace

std::string PrinterFile(const std::string& home_folder, const std::string& application) {
  return home_folder + application + ".INI";
}

InstalledPrinter StoredPrinter::Read() const {
  const std::string text = UserProfile(*files_, path_).Text(kSection, kKey, "");
  const size_t driver = text.find(',');
  if (driver == std::string::npos) return {};
  // The make and model of a printer may hold commas, a name and a port do not.
  const size_t port = text.rfind(',');
  InstalledPrinter printer{text.substr(0, driver), {}, text.substr(port + 1)};
  if (port > driver) printer.driver = text.substr(driver + 1, port - driver - 1);
  return printer;
}

bool StoredPrinter::Write(const InstalledPrinter& printer) {
  return UserProfile(*files_, path_)
      .Write(kSection, kKey, FormatPrintf(kFormat, {printer.name, printer.driver, printer.port}));
}

std::string StoredPrinter::Text() const {
  const InstalledPrinter printer = Read();
  if (printer.name.empty()) return std::string(kNothing);
  return FormatText(kPrinterOnPort, printer.name, printer.port);
}

PrinterChoiceForm::PrinterChoiceForm(StoredPrinter& stored, PrinterPort& port)
    : stored_(stored), port_(port), printers_(port.Printers()) {
  has_printers_ = !printers_.empty();
  std::erase_if(printers_,
                [](const InstalledPrinter& printer) { return printer.driver == kCaptureDriver; });
  if (printers_.empty()) return;
  const auto found = std::ranges::find(printers_, RowOf(stored.Read()), RowOf);
  selected_ = found == printers_.end() ? 0 : static_cast<int>(found - printers_.begin());
}

std::vector<std::string> PrinterChoiceForm::Rows() const {
  std::vector<std::string> rows;
  std::ranges::transform(printers_, std::back_inserter(rows), RowOf);
  return rows;
}

void PrinterChoiceForm::Select(int row) {
  if (row >= 0 && static_cast<size_t>(row) < printers_.size()) selected_ = row;
}

void PrinterChoiceForm::Confirm() {
  if (selected_ >= 0) stored_.Write(printers_[static_cast<size_t>(selected_)]);
}

void PrinterChoiceForm::ShowProperties() {
  if (selected_ >= 0) port_.ShowProperties(printers_[static_cast<size_t>(selected_)].name);
}

}  // namespace carnetel
