// The command print: cards on paper, into a text file, on standard output or into a PDF.

#include <unistd.h>

#include <ostream>

#include "cli/card_arguments.h"
#include "cli/card_output.h"
#include "cli/commands.h"
#include "cli/group_argument.h"
#include "cli/print_options.h"
#include "cli/print_targets.h"
#include "printing/page_loop.h"
#include "printing/pdf_file.h"
#include "printing/print_form.h"
#include "printing/text_target.h"

namespace carnetel {
namespace {

constexpr int kNoAccess = 43;
constexpr int kNoDevice = 81;
constexpr const char* kApplication = "CARNETEL";
constexpr const char* kPrintProgram = "lp";

// One run of the command on the open directory.
class PrintWork {
 public:
  PrintWork(CliSession& session, Directory& directory, const PrintOrder& order, MeasureUnit unit)
      : session_(session), directory_(directory), order_(order), unit_(unit) {
    run_.setup = order.setup;
    run_.current_entry = directory.address().header().current_row();
  }

  void StartAt(uint32_t entry) { run_.current_entry = entry; }

  // The exit status.
  int Run() {
    if (order_.output == PrintOutput::kTextFile || order_.output == PrintOutput::kPdf) {
      // In any case: on other systems that would be the same file.
      if (directory_.paths().Holds(FindAnyCase(session_.files(), order_.path))) {
        return session_.Fail(order_.path + " est un fichier du carnetel : rien n'y est imprimé");
      }
    }
    LoadComposition();
    switch (order_.output) {
      case PrintOutput::kTextFile:
        return PrintToFile();
      case PrintOutput::kStandardOutput:
        return PrintToStream();
      case PrintOutput::kPdf:
        return PrintToPdf();
      case PrintOutput::kPrinter:
        break;
    }
    return PrintOnPrinter();
  }

 private:
  // Makes the file of the layout when there is none.
  void LoadComposition() {
    if (run_.setup.presentation != Presentation::kList) return;
    LayoutFile layout(session_.files(), directory_.paths().Of(".LST"));
    run_.composition = layout.LoadComposition(CompositionCopy::kUser);
  }

  int TellNoDevice(const std::string& path = {}) {
    return session_.Fail((path.empty() ? path : path + " : ") + std::string(LoadText(kNoDevice)));
  }

  // What the form keeps when its button is pressed.
  void Store(PrintDestination destination, const std::string& file) {
    PageSetup setup = order_.setup;
    setup.destination = destination;
    setup.file = file;
    UserProfile profile = session_.Profile();
    if (WritePageSetup(profile, CliSession::ProfileSection(), setup)) return;
    session_.messages().Warn("la mise en page n'est pas retenue : " +
                             FormatText(kNoAccess, profile.path()));
  }
  void StoreSetup() { Store(order_.setup.destination, order_.setup.file); }

  // False when the run did not come to its end (told).
  bool PrintInto(PrintTarget& target) {
    InterruptibleTarget interruptible(session_, target);
    outcome_ = PrintCards(directory_, run_, interruptible);
    if (outcome_.read_failed) {
      session_.Fail("une fiche est illisible : l'impression s'arrête devant elle");
    } else if (session_.interrupted()) {
      session_.Fail("impression abandonnée");
    } else {
      WarnOfNoMarks();
      return true;
    }
    return false;
  }

  void WarnOfNoMarks() {
    if (outcome_.cards != 0 || order_.setup.scope != PrintScope::kSelection) return;
    session_.messages().Warn("aucune fiche n'est marquée : rien n'est imprimé");
  }

  int TellCount() {
    const uint32_t cards = outcome_.cards;
    if (session_.options().json) {
      session_.out() << PrintedLine(cards, cards == 0 ? 0 : outcome_.pages) << '\n';
    } else {
      session_.out() << CardCount(cards) << (cards > 1 ? " imprimées\n" : " imprimée\n");
    }
    return kDone;
  }

  // The window takes a path as it stands: it is kept as one that means the same everywhere.
  [[nodiscard]] std::string KeptPath() const {
    return order_.path.starts_with('/') ? order_.path : session_.files().Canonical(order_.path);
  }

  // The case of the path stays as it was typed, and so does what the file holds behind the text.
  int PrintToFile() {
    const std::string kept = KeptPath();
    if (kept.size() > kMaxPrintPath) {
      return session_.Fail(order_.path + " : un chemin a " + std::to_string(kMaxPrintPath) +
                           " octets au plus");
    }
    const auto file = session_.files().Open(order_.path, OpenMode::kCreateOrOpen);
    if (file == nullptr) return TellNoDevice(order_.path);
    Store(PrintDestination::kFile, kept);
    TextFileTarget target(*file);
    const bool done = PrintInto(target);
    if (!target.Flush()) return TellNoDevice(order_.path);
    return done ? TellCount() : kRefused;
  }

  int PrintToStream() {
    StoreSetup();
    StreamTarget target(session_.out());
    return PrintInto(target) ? kDone : kRefused;
  }

  // The run as a document; nothing when it cannot be had (told).
  std::optional<std::vector<std::byte>> MakePdf() {
    PdfTarget target({unit_, PrintColumns(run_), run_.setup.lines, DocumentName()});
    if (!PrintInto(target)) return {};
    auto document = target.Finish();
    if (!document) session_.Fail("la mémoire ne suffit pas au document PDF");
    return document;
  }
  [[nodiscard]] std::string DocumentName() const {
    return PrintDocumentName(kApplication, directory_);
  }

  int PrintToPdf() {
    StoreSetup();
    const auto document = MakePdf();
    if (!document) return kRefused;
    const bool done = ReplaceFile(session_.files(), order_.path, *document);
    return done ? TellCount() : TellNoDevice(order_.path);
  }

  int PrintOnPrinter() {
    Store(PrintDestination::kPrinter, order_.setup.file);
    const auto document = MakePdf();
    if (!document) return kRefused;
    // No sheet for nothing.
    if (outcome_.cards == 0) return TellCount();
    // In the user's own folder, where nobody else looks.
    const std::string path =
        session_.HomePath() + "impression." + std::to_string(::getpid()) + ".pdf";
    if (!ReplaceFile(session_.files(), path, *document)) {
      return session_.Fail(FormatText(kNoAccess, path));
    }
    const int status = session_.environment().run_program(PrinterWords(path));
    session_.files().Remove(path);
    return status == 0 ? TellCount() : TellNoDevice();
  }

  // The program takes a copy of the file before it ends.
  std::vector<std::string> PrinterWords(const std::string& path) {
    std::vector<std::string> words = {kPrintProgram};
    const StoredPrinter stored(session_.files(), PrinterFile(session_.HomePath(), kApplication));
    const std::string printer = stored.Read().name;
    if (!printer.empty()) words.insert(words.end(), {"-d", printer});
    words.insert(words.end(), {"-t", DocumentName(), "--", path});
    return words;
  }

  CliSession& session_;
  Directory& directory_;
  const PrintOrder& order_;
  MeasureUnit unit_;
  PrintRun run_;
  PrintOutcome outcome_;
};

int RunPrint(CliSession& session, const Arguments& arguments) {
  const UserProfile profile = session.Profile();
  const MeasureUnit unit = ReadMeasureUnit(profile, session.environment().metric);
  PrintOrder order;
  order.setup = ReadPageSetup(profile, CliSession::ProfileSection(), unit);
  const std::string usage = ParsePrintOptions(arguments, session.options().json, unit, &order);
  if (!usage.empty()) return session.WrongUsage(usage);
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  const GroupScope scope(session, *directory, arguments);
  if (!scope.found()) return kRefused;
  PrintWork work(session, *directory, order, unit);
  if (order.row) {
    int status = kDone;
    const auto offsets = ResolveRows(session, *directory, {*order.row}, &status);
    if (!offsets) return status;
    if (!scope.HoldsEach(*offsets)) return kRefused;
    work.StartAt(directory->address().FindRow(offsets->front()));
  }
  return work.Run();
}

}  // namespace

Command PrintCommand() {
  return {.name = "print",
          .summary = "Imprime des fiches, en liste ou entières",
          .details =
              "Sans --output ni --pdf, sur l'imprimante choisie dans la fenêtre, sinon sur "
              "celle du système. Ce qui n'est pas donné vient de la dernière impression ; "
              "ce qui a servi est retenu, pour la fenêtre aussi. Un fichier texte est écrit "
              "depuis son début et n'est pas raccourci. Affiche le nombre de fiches "
              "imprimées.",
          .options = PrintOptionSyntax(),
          .run = RunPrint};
}

}  // namespace carnetel
