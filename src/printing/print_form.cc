#include "printing/print_form.h"

#include "base/format_text.h"
#include "base/path.h"
#include "printing/text_target.h"

namespace carnetel {
namespace {

constexpr int kErrorTitle = 79;
constexpr int kNoDevice = 81;
constexpr int kManagerFailed = 82;
constexpr std::string_view kDocumentFormat = "%s - %s%s";
constexpr std::string_view kMainExtension = ".DAN";

}  // namespace

PrintForm::PrintForm(Directory& directory, PrintServices services, PrintPlace place)
    : directory_(directory),
      services_(std::move(services)),
      place_(std::move(place)),
      setup_(ReadPageSetup(services_.profile, services_.section, place_.unit)),
      layout_file_(directory.files(), directory.paths().Of(".LST")),
      layout_(layout_file_),
      stored_printer_(directory.files(), place_.printer_file) {}

bool PrintForm::Configure() {
  PrinterChoiceForm form(stored_printer_, services_.printers);
  if (!form.has_printers() || !services_.choose_printer(form)) return false;
  form.Confirm();
  return true;
}

bool PrintForm::Print() {
  setup_.file.resize(std::min(setup_.file.size(), kMaxPrintPath));
  WritePageSetup(services_.profile, services_.section, setup_);
  return prints_to_file() ? PrintToFile() : PrintOnPrinter();
}

void PrintForm::Preview(PrintTarget& target) {
  PrintCards(directory_, MakeRun(), target);
}

PrintRun PrintForm::MakeRun() {
  return {setup_, layout_file_.LoadComposition(CompositionCopy::kUser), place_.current_entry};
}

bool PrintForm::PrintToFile() {
  const std::string path = PrintPath(directory_.paths().Main(), setup_.file);
  const std::unique_ptr<File> file = OpenPrintFile(directory_, path);
  bool printed = file != nullptr;
  if (printed) {
    TextFileTarget target(*file);
    PrintCards(directory_, MakeRun(), target);
    printed = target.Flush();
  }
  if (!printed) services_.messages.ShowMessage(MessageStyle::kError, kErrorTitle, kNoDevice);
  return printed;
}

bool PrintForm::PrintOnPrinter() {
  const PrintRun run = MakeRun();
  PrintJob job;
  job.document = PrintDocumentName(place_.application, directory_);
  job.printer = stored_printer_.Read().name;
  job.columns = PrintColumns(run);
  job.lines = setup_.lines;
  const PrinterStart start = services_.printers.BeginPrinter(job);
  if (start == PrinterStart::kNoDevice || start == PrinterStart::kFailed) {
    services_.messages.ShowMessage(MessageStyle::kError, kErrorTitle,
                                   start == PrinterStart::kNoDevice ? kNoDevice : kManagerFailed);
  }
  if (start != PrinterStart::kStarted) return false;
  PrintCards(directory_, run, services_.printers.target());
  services_.printers.EndPrinter();
  return true;
}

std::string PrintDocumentName(const std::string& application, const Directory& directory) {
  return FormatPrintf(kDocumentFormat,
                      {application, PathSplit(directory.paths().stem()).name, kMainExtension});
}

std::string PrintPath(const std::string& main_file, const std::string& path) {
  const bool is_bare = path.find('/') == std::string::npos;
  return is_bare ? PathSplit(main_file).folder + path : path;
}

std::unique_ptr<File> OpenPrintFile(const Directory& directory, const std::string& path) {
  FileSystem& files = directory.files();
  const std::string found = FindAnyCase(files, path);
  // A printout must never overwrite the cards, in whatever case their file was typed.
  if (path.empty() || directory.paths().Holds(found)) return nullptr;
  return files.Open(found, OpenMode::kCreateOrOpen);
}

}  // namespace carnetel
