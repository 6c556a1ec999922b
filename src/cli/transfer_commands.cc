// The commands import and export.

#include <ostream>

#include "cli/cli_session.h"
#include "cli/commands.h"
#include "cli/import_trial.h"
#include "cli/json_form.h"
#include "cli/transfer_setup.h"
#include "platform/overlay_file_system.h"
#include "shell/transfer_run.h"
#include "transfer/delimited.h"

namespace carnetel {
namespace {

constexpr int kNoAccess = 43;
constexpr int kNotPossible = 48;
constexpr int kNoSelection = 50;
constexpr int kToBeDestroyed = 179;
constexpr int kToBeEmptied = 185;

void PrintCount(CliSession& session, uint32_t cards) {
  if (session.options().json) {
    session.out() << CountLine("cards", cards) << '\n';
  } else {
    session.out() << cards << (cards > 1 ? " fiches transférées\n" : " fiche transférée\n");
  }
}

int TellAborted(CliSession& session) {
  return session.Fail("transfert abandonné ; les fiches déjà transférées restent");
}

int TellFull(CliSession& session, const std::string& message) {
  return session.Fail(std::string(LoadText(kNotPossible)) + " : le carnetel est plein (" +
                      std::to_string(kMaxCards) + " fiches)" +
                      (message.empty() ? message : ". " + message));
}

void WarnOfNoCard(CliSession& session, const TransferSetup& setup) {
  const bool text = setup.type == TransferFileType::kDelimited;
  session.messages().Warn(text ? "aucune ligne de " + setup.file +
                                     " ne donne de fiche : voyez les séparateurs"
                               : setup.file + " ne donne pas de fiche");
}

// An import that was made, or would be.
struct ImportDone {
  TransferSetup setup;
  TransferOutcome outcome;
};

int TellImport(CliSession& session, const ImportDone& done) {
  const TransferOutcome& outcome = done.outcome;
  if (outcome.lines_left_out != 0) {
    session.messages().Warn(std::to_string(outcome.lines_left_out) +
                            (outcome.lines_left_out > 1 ? " lignes laissées" : " ligne laissée") +
                            " de côté : une importation en prend " +
                            std::to_string(kMaxImportedLines) + " au plus");
  }
  if (outcome.directory_full) return TellFull(session, outcome.message);
  if (!outcome.message.empty()) return session.Fail(outcome.message);
  if (outcome.result < 0 && done.setup.type == TransferFileType::kDelimited) {
    return session.Fail(done.setup.file + " est vide : rien à importer");
  }
  if (outcome.result < 0) return session.Fail(FormatText(kNoAccess, done.setup.file));
  if (outcome.aborted) return TellAborted(session);
  if (outcome.cards == 0) WarnOfNoCard(session, done.setup);
  return kDone;
}

// Nothing when it is refused before the engine runs (told, with the exit status). `asks`: whether
// the user is asked before the cards that are there go.
std::optional<ImportDone> Import(CliSession& session, const Arguments& arguments, bool asks,
                                 int* status) {
  *status = kRefused;
  const Directory* directory = session.Open();
  if (directory == nullptr) return {};
  const bool has_cards = directory->main().count() != 0;
  auto setup = PrepareTransfer(session, arguments, TransferDirection::kImport, status);
  if (!setup) return {};
  *status = kRefused;
  const std::string main = session.Family()->Main();
  const TransferOptions& options = setup->options;
  if (options.replace && has_cards && asks && !session.Confirm(kToBeEmptied, main)) {
    session.Fail("rien n'est remplacé");
    return {};
  }
  // The engine opens the directory itself.
  if (!session.CloseStores()) return {};
  ImportRequest request;
  request.source = setup->file;
  request.destination.path = main;
  request.destination.key_field = session.settings().key_field;
  request.replace = options.replace;
  request.charset = options.charset;
  const DirectoryServices services{session.files(), session.environment().clock,
                                   session.progress()};
  const TransferOutcome outcome = ImportFile(services, setup->parameters, setup->type, request);
  *status = kDone;
  return ImportDone{std::move(*setup), outcome};
}

// The import on a view of the files that keeps all changes to itself: directory, parameter file and
// profile stay as they are.
int TryImport(CliSession& session, const Arguments& arguments) {
  if (!session.Close()) return kRefused;
  OverlayFileSystem view(session.files(), session.environment().clock);
  const CliEnvironment& real = session.environment();
  const CliEnvironment environment{.files = view,
                                   .clock = real.clock,
                                   .in = real.in,
                                   .out = real.out,
                                   .err = real.err,
                                   .variables = real.variables,
                                   .executable_folder = real.executable_folder,
                                   .version = real.version,
                                   .can_ask = real.can_ask,
                                   .shows_progress = real.shows_progress,
                                   .metric = real.metric,
                                   .reader_left = real.reader_left,
                                   .interrupted = real.interrupted,
                                   .take_guard = real.take_guard,
                                   .run_program = real.run_program,
                                   .milliseconds = real.milliseconds};
  CliSession trial(environment, session.options());
  trial.messages().set_script_line(session.messages().script_line());
  int status = kDone;
  auto done = Import(trial, arguments, false, &status);
  if (!done) return status;
  if (done->outcome.aborted) return trial.Fail("essai abandonné ; rien n'est changé");
  const int key_field = trial.settings().key_field;
  PrintTrial(trial, done->setup, done->outcome, ExamineSource(view, done->setup, key_field));
  return TellImport(trial, *done);
}

int RunImport(CliSession& session, const Arguments& arguments) {
  if (arguments.Has("--dry-run")) return TryImport(session, arguments);
  int status = kDone;
  const auto done = Import(session, arguments, true, &status);
  if (!done) return status;
  // Opened again at once, as the window does: that heals what many adds leave out of place.
  const bool reopened = session.Open() != nullptr;
  PrintCount(session, done->outcome.cards);
  const int told = TellImport(session, *done);
  return reopened ? told : kRefused;
}

int RunExport(CliSession& session, const Arguments& arguments) {
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  int status = kDone;
  auto setup = PrepareTransfer(session, arguments, TransferDirection::kExport, &status);
  if (!setup) return status;
  if (directory->marked_count() == 0) return session.Fail(std::string(LoadText(kNoSelection)));
  const TransferOptions& options = setup->options;
  const bool there = session.files().Exists(setup->file);
  if (options.replace && there && !session.Confirm(kToBeDestroyed, setup->file)) {
    return session.Fail("rien n'est remplacé");
  }
  std::shared_ptr<void> guard;
  if (setup->type == TransferFileType::kDirectory) {
    const std::string address = FamilyPaths(session.files(), setup->file).Of(".ADR");
    guard = session.environment().take_guard(session.files().Canonical(address));
    if (guard == nullptr) return session.Fail(setup->file + " est ouvert par un autre programme");
  }
  const ExportRequest request{setup->file, options.replace || !there, options.charset};
  const TransferOutcome outcome = ExportFile(*directory, setup->parameters, setup->type, request);
  if (outcome.not_opened) return session.Fail(FormatText(kNoAccess, setup->file));
  PrintCount(session, outcome.cards);
  if (outcome.directory_full) return TellFull(session, outcome.message);
  if (!outcome.message.empty()) return session.Fail(outcome.message);
  if (outcome.aborted) return TellAborted(session);
  return outcome.result < 0 ? session.Fail("l'exportation a échoué") : kDone;
}

constexpr const char* kTransferHelp =
    "Ce qui n'est pas donné vient du dernier transfert ; ce qui a servi est retenu pour le "
    "suivant. Un séparateur est un nom (NUL TAB LF FF CR ESC CRLF…) ou des signes séparés par des "
    "blancs : un caractère, un nombre décimal de deux chiffres, ou un code tel que 0Dh.";

Command ImportCommand() {
  return {.name = "import",
          .summary = "Importe des fiches : texte, fiches de taille fixe, dBase, autre carnetel",
          .details = std::string("Affiche le nombre de fiches transférées. ") + kTransferHelp,
          .usage = "FICHIER",
          .least = 1,
          .most = 1,
          .options = TransferOptionSyntax(TransferDirection::kImport),
          .run = RunImport};
}

Command ExportCommand() {
  return {.name = "export",
          .summary = "Exporte les fiches marquées : texte, taille fixe, dBase, autre carnetel",
          .details = std::string("Affiche le nombre de fiches transférées. ") + kTransferHelp,
          .usage = "FICHIER",
          .least = 1,
          .most = 1,
          .options = TransferOptionSyntax(TransferDirection::kExport),
          .run = RunExport};
}

}  // namespace

std::vector<Command> TransferCommands() {
  return {ImportCommand(), ExportCommand()};
}

}  // namespace carnetel
