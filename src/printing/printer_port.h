// The printers of the system, as the print form uses them: which there are, and one run on one of
// them. The window implements it over the system's print dialog; a test answers in its place.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "printing/print_target.h"

namespace carnetel {

struct InstalledPrinter {
  std::string name;
  std::string driver;  // make and model
  std::string port;
};

struct PrintJob {
  std::string document;  // its name in the queue, UTF-8
  std::string printer;   // the one that is offered first; empty for the system's own
  size_t columns = 0;    // of the longest line
  int lines = 0;         // a page
};

enum class PrinterStart {
  kStarted,
  kCancelled,  // by the user, in the system's dialog
  kNoDevice,   // the chosen printer cannot be reached
  kFailed,     // the print manager refused the document
};

class PrinterPort {
 public:
  virtual ~PrinterPort() = default;

  [[nodiscard]] virtual std::vector<InstalledPrinter> Printers() = 0;
  // The printer's own settings.
  virtual void ShowProperties(const std::string& printer) = 0;

  // Lets the user choose, opens the document and its box with the button to abandon it.
  virtual PrinterStart BeginPrinter(const PrintJob& job) = 0;
  // Between a start and its end.
  virtual PrintTarget& target() = 0;
  virtual void EndPrinter() = 0;
};

}  // namespace carnetel
