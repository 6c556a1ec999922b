// Printers without a printer: a test says which are installed and how a run starts, and reads what
// was printed on pages of as many lines as it likes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "printing/paged_target.h"
#include "printing/printer_port.h"

namespace carnetel {

// Keeps the lines of each page, by their number on it; a line that was not printed is empty.
class RecordedPages : public PagedTarget {
 public:
  explicit RecordedPages(int lines_per_page) : PagedTarget(lines_per_page) {}

  std::vector<std::vector<std::string>> pages{1};

 protected:
  void DrawLine(int number, std::string_view ansi) override {
    pages.back().resize(static_cast<size_t>(number));
    pages.back().back() = ansi;
  }
  void TurnPage() override { pages.emplace_back(); }
};

class FakePrinters : public PrinterPort {
 public:
  std::vector<InstalledPrinter> installed;
  PrinterStart start = PrinterStart::kStarted;
  int lines_per_page = 200;
  // What happened.
  std::vector<std::string> properties_shown;
  std::vector<PrintJob> jobs;
  std::unique_ptr<RecordedPages> printed;
  int ends = 0;

  std::vector<InstalledPrinter> Printers() override { return installed; }
  void ShowProperties(const std::string& printer) override { properties_shown.push_back(printer); }
  PrinterStart BeginPrinter(const PrintJob& job) override {
    jobs.push_back(job);
    printed = std::make_unique<RecordedPages>(lines_per_page);
    return start;
  }
  PrintTarget& target() override { return *printed; }
  void EndPrinter() override { ++ends; }
};

}  // namespace carnetel
