// "Installation de l'imprimante": which of the system's printers Carnetel uses, and where that is
// kept: "name,driver,port" under the key Printer of the section devices, in a file of settings of
// the program's own.
#pragma once

#include <string>
#include <vector>

#include "platform/file_system.h"
#include "printing/printer_port.h"

namespace carnetel {

// The file of settings of a program in its settings folder, which ends in '/'.
[[nodiscard]] std::string PrinterFile(const std::string& home_folder,
                                      const std::string& application);

class StoredPrinter {
 public:
  // `path`: of the file of settings, which need not exist.
  StoredPrinter(FileSystem& files, std::string path) : files_(&files), path_(std::move(path)) {}

  // Without a name when nothing is stored.
  [[nodiscard]] InstalledPrinter Read() const;
  // False when the file could not be written.
  bool Write(const InstalledPrinter& printer);
  // "%s sur %s" with printer and port, "@@@" when nothing is stored.
  [[nodiscard]] std::string Text() const;

 private:
  FileSystem* files_;
  std::string path_;
};

class PrinterChoiceForm {
 public:
  // Leaves out what prints through the fax capture driver: it must never appear as a paper printer.
  PrinterChoiceForm(StoredPrinter& stored, PrinterPort& port);

  // False when the system has no printer at all: the form does not open then.
  [[nodiscard]] bool has_printers() const { return has_printers_; }
  // "name,port".
  [[nodiscard]] std::vector<std::string> Rows() const;
  [[nodiscard]] int selected() const { return selected_; }  // -1 without rows
  void Select(int row);

  // Keeps the choice; without a row there is nothing to keep.
  void Confirm();
  void ShowProperties();

 private:
  StoredPrinter& stored_;
  PrinterPort& port_;
  std::vector<InstalledPrinter> printers_;
  bool has_printers_ = false;
  int selected_ = -1;
};

}  // namespace carnetel
