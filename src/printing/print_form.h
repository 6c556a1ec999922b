// "Impression de l'carnetel": what is printed, how and where, the printer, the composition of the
// list, and the run. The page set-up is kept in the profile at each run.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/messages.h"
#include "printing/layout_form.h"
#include "printing/page_loop.h"
#include "printing/printer_choice.h"
#include "printing/printer_port.h"

namespace carnetel {

struct PrintServices {
  MessageForm& messages;
  UserProfile& profile;
  std::string section;  // of the profile
  PrinterPort& printers;
  // Shows the choice of a printer; true when it was confirmed.
  std::function<bool(PrinterChoiceForm& form)> choose_printer;
};

struct PrintPlace {
  std::string printer_file;    // where the chosen printer is kept
  std::string application;     // its name, in the name of the document
  uint32_t current_entry = 0;  // of the list's current row, in the address file
  MeasureUnit unit = MeasureUnit::kCentimetres;
};

class PrintForm {
 public:
  // `directory` is open and outlives the form, as does what `services` refers to.
  PrintForm(Directory& directory, PrintServices services, PrintPlace place);

  [[nodiscard]] MeasureUnit unit() const { return place_.unit; }
  // The values as the controls show them; the controls write them back as they change.
  PageSetup& setup() { return setup_; }
  [[nodiscard]] bool prints_to_file() const {
    return setup_.destination == PrintDestination::kFile;
  }
  LayoutForm& layout() { return layout_; }
  // The top line: the chosen printer.
  [[nodiscard]] std::string PrinterText() const { return stored_printer_.Text(); }
  // Its name; empty when none was chosen.
  [[nodiscard]] std::string PrinterName() const { return stored_printer_.Read().name; }
  // "&Configurer...": true when another printer was chosen.
  bool Configure();

  // "&Imprimer": keeps the page set-up, then runs; the form stays open in every case. False when
  // there was no run.
  bool Print();

  // The same run into another target, without keeping anything: for the preview.
  void Preview(PrintTarget& target);
  [[nodiscard]] size_t Columns() { return PrintColumns(MakeRun()); }

 private:
  [[nodiscard]] PrintRun MakeRun();
  bool PrintToFile();
  bool PrintOnPrinter();

  Directory& directory_;
  PrintServices services_;
  PrintPlace place_;
  PageSetup setup_;
  LayoutFile layout_file_;
  LayoutForm layout_;
  StoredPrinter stored_printer_;
};

// The name of a run's document in the queue of a printer: "CARNETEL - CLIENTS.DAN".
[[nodiscard]] std::string PrintDocumentName(const std::string& application,
                                            const Directory& directory);

// The path that a run writes to: a name without a folder lies beside the directory.
[[nodiscard]] std::string PrintPath(const std::string& main_file, const std::string& path);

// The file of a run, opened without being emptied; null when it cannot be opened, or when it is
// one of the directory's own.
[[nodiscard]] std::unique_ptr<File> OpenPrintFile(const Directory& directory,
                                                  const std::string& path);

}  // namespace carnetel
