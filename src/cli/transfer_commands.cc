// The commands import and export.

#include <algorithm>
#include <ostream>

#include "base/path.h"
#include "cli/cli_session.h"
#include "cli/commands.h"
#include "cli/json_form.h"
#include "shell/field_names.h"
#include "transfer/delimited.h"
#include "transfer/parameter_file.h"
#include "transfer/separator.h"

namespace carnetel {
namespace {

constexpr int kNoAccess = 43;
constexpr int kNotPossible = 48;
constexpr int kNoSelection = 50;
constexpr int kToBeDestroyed = 179;
constexpr int kOntoItself = 181;
constexpr int kWrongType = 182;
constexpr int kToBeEmptied = 185;

struct Transfer {
  std::string file;
  bool replace = false;
  CharacterSet charset = CharacterSet::kOem;
  TransferProfile profile;
};

bool HasExtension(const std::string& path, std::string_view extension) {
  return CompareKey(PathSplit(path).extension, extension, extension.size() + 1) == 0;
}

// --columns: ranks from 1 on; the error in French, empty when all is well.
std::string TakeColumns(const std::string& columns, TransferProfile* profile) {
  profile->ClearRanks();
  std::string_view rest = columns;
  for (int16_t rank = 1;; ++rank) {
    const size_t comma = std::min(rest.find(','), rest.size());
    const std::string name(rest.substr(0, comma));
    const std::optional<int> field = FindField(name);
    if (name != "-" && (!field || !IsDelimitedField(*field))) {
      return "--columns : « " + name + " » n'est pas un champ de ces fichiers";
    }
    if (field && profile->rank(*field) != 0) return "--columns : " + name + " est donné deux fois";
    if (field) profile->set_rank(*field, rank);
    if (comma == rest.size()) return {};
    rest.remove_prefix(comma + 1);
  }
}

// A separator as the form keeps it: in the form it shows.
std::string TakeSeparator(const std::string& option, const std::string& text, std::string* kept) {
  const bool ascii =
      std::ranges::all_of(text, [](char byte) { return byte >= ' ' && byte < 0x7F; });
  if (!ascii || text.size() > TransferProfile::kMaxSeparator) {
    return option + " : au plus 8 caractères sans accent ; un octet s'écrit par exemple 0Dh";
  }
  const std::string shown = ParseSeparator(text, SeparatorForm::kDisplay);
  *kept = shown.size() <= TransferProfile::kMaxSeparator ? shown : text;
  return {};
}

std::string TakeSeparators(const Arguments& arguments, TransferProfile* profile) {
  std::string kept;
  if (const auto text = arguments.Value("--field-separator")) {
    std::string error = TakeSeparator("--field-separator", *text, &kept);
    if (!error.empty()) return error;
    profile->set_field_separator(kept);
  }
  if (const auto text = arguments.Value("--card-separator")) {
    std::string error = TakeSeparator("--card-separator", *text, &kept);
    if (!error.empty()) return error;
    profile->set_card_separator(kept);
  }
  return {};
}

std::string TakeWords(const Arguments& arguments, Transfer* transfer) {
  const std::string type = arguments.Value("--type").value_or("delimited");
  if (type != "delimited") return "--type : « " + type + " » n'est pas un type connu";
  const std::string charset = arguments.Value("--charset").value_or("oem");
  if (charset != "oem" && charset != "ansi") return "--charset demande oem ou ansi";
  transfer->charset = charset == "ansi" ? CharacterSet::kAnsi : CharacterSet::kOem;
  transfer->replace = arguments.Has("--replace");
  transfer->file = arguments.positionals.front();
  return {};
}

// What the form checks before it runs an engine; empty when all is well.
std::string RefusalOf(CliSession& session, const Arguments& arguments, const Transfer& transfer,
                      int16_t stored_type) {
  const bool typed = arguments.Has("--type");
  const bool foreign = HasExtension(transfer.file, ".DAN") || HasExtension(transfer.file, ".DBF");
  if (!typed && (foreign || stored_type != static_cast<int16_t>(TransferFileType::kDelimited))) {
    return FormatText(kWrongType, transfer.file) + " (--type delimited : fichier avec séparateurs)";
  }
  const std::string file = session.files().Canonical(transfer.file);
  for (const std::string_view extension : kFamilyExtensions) {
    if (session.files().Canonical(session.Family()->Of(extension)) == file) {
      return FormatText(kOntoItself, transfer.file);
    }
  }
  return {};
}

// Takes options and stored parameters together and stores what will be used. A failure is told.
std::optional<Transfer> Prepare(CliSession& session, const Arguments& arguments,
                                TransferDirection direction, int* status) {
  Transfer transfer;
  const std::string wrong = TakeWords(arguments, &transfer);
  TransferProfile scratch;
  std::string usage = wrong.empty() ? TakeSeparators(arguments, &scratch) : wrong;
  const std::optional<std::string> columns = arguments.Value("--columns");
  if (usage.empty() && columns) usage = TakeColumns(*columns, &scratch);
  if (!usage.empty()) {
    *status = session.WrongUsage(usage);
    return std::nullopt;
  }
  const bool source_missing =
      direction == TransferDirection::kImport && !session.files().Exists(transfer.file);
  if (source_missing) {
    *status = session.Fail(FormatText(kNoAccess, transfer.file));
    return std::nullopt;
  }
  ParameterFile parameters(session.files(), session.ParameterFile());
  parameters.StartTransfer(direction);
  TransferProfile& profile = parameters.profile();
  const std::string refusal = RefusalOf(session, arguments, transfer, profile.type());
  if (!refusal.empty()) {
    *status = session.Fail(refusal);
    return std::nullopt;
  }
  (void)TakeSeparators(arguments, &profile);
  if (columns) (void)TakeColumns(*columns, &profile);
  profile.set_type(TransferFileType::kDelimited);
  parameters.header().set_last_type(TransferFileType::kDelimited);
  (void)parameters.AccessParameterFile(ParameterFile::Access::kWrite, TransferFileType::kDelimited,
                                       direction);
  transfer.profile = profile;
  return transfer;
}

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

int TellImport(CliSession& session, const Transfer& transfer, const TransferOutcome& outcome) {
  PrintCount(session, outcome.cards);
  if (outcome.lines_left_out != 0) {
    session.messages().Warn(std::to_string(outcome.lines_left_out) +
                            " lignes laissées de côté : une importation en prend " +
                            std::to_string(kMaxImportedLines) + " au plus");
  }
  if (outcome.directory_full) {
    return session.Fail(std::string(LoadText(kNotPossible)) + " : le carnetel est plein (" +
                        std::to_string(kMaxCards) + " fiches). " + outcome.message);
  }
  if (!outcome.message.empty()) return session.Fail(outcome.message);
  if (outcome.result < 0) return session.Fail(transfer.file + " est vide : rien à importer");
  if (outcome.aborted) return TellAborted(session);
  if (outcome.cards == 0) {
    session.messages().Warn("aucune ligne de " + transfer.file +
                            " ne donne de fiche : voyez les séparateurs");
  }
  return kDone;
}

int RunImport(CliSession& session, const Arguments& arguments) {
  const Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  const bool has_cards = directory->main().count() != 0;
  int status = kDone;
  const auto transfer = Prepare(session, arguments, TransferDirection::kImport, &status);
  if (!transfer) return status;
  const std::string main = session.Family()->Main();
  if (transfer->replace && has_cards && !session.Confirm(kToBeEmptied, main)) {
    return session.Fail("rien n'est remplacé");
  }
  // The engine opens the directory itself.
  if (!session.CloseStores()) return kRefused;
  ImportRequest request;
  request.source = transfer->file;
  request.destination.path = main;
  request.destination.key_field = session.settings().key_field;
  request.replace = transfer->replace;
  request.charset = transfer->charset;
  const DirectoryServices services{session.files(), session.environment().clock,
                                   session.progress()};
  const TransferOutcome outcome = ImportDelimited(services, transfer->profile, request);
  // Opened again at once, as the window does: that heals what many adds leave out of place.
  const bool reopened = session.Open() != nullptr;
  const int told = TellImport(session, *transfer, outcome);
  return reopened ? told : kRefused;
}

int RunExport(CliSession& session, const Arguments& arguments) {
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  int status = kDone;
  const auto transfer = Prepare(session, arguments, TransferDirection::kExport, &status);
  if (!transfer) return status;
  if (directory->marked_count() == 0) return session.Fail(std::string(LoadText(kNoSelection)));
  if (transfer->replace && session.files().Exists(transfer->file) &&
      !session.Confirm(kToBeDestroyed, transfer->file)) {
    return session.Fail("rien n'est remplacé");
  }
  const ExportRequest request{transfer->file, transfer->replace, transfer->charset};
  const TransferOutcome outcome = ExportDelimited(*directory, transfer->profile, request);
  if (outcome.not_opened) return session.Fail(FormatText(kNoAccess, transfer->file));
  PrintCount(session, outcome.cards);
  if (!outcome.message.empty()) return session.Fail(outcome.message);
  if (outcome.aborted) return TellAborted(session);
  return outcome.result < 0 ? session.Fail("l'exportation a échoué") : kDone;
}

std::vector<OptionSyntax> TransferOptions(const std::string& replace_help) {
  return {{"--type", "TYPE", "delimited : fichier avec séparateurs"},
          {"--charset", "JEU", "jeu de caractères du fichier : oem (par défaut) ou ansi"},
          {"--replace", "", replace_help},
          {"--columns", "CHAMP,…", "champs d'une ligne, dans l'ordre ; « - » laisse un rang vide"},
          {"--field-separator", "TEXTE", "séparateur de champs, par exemple « ; » ou TAB"},
          {"--card-separator", "TEXTE", "séparateur de fiches, par exemple CRLF ou LF"}};
}

constexpr const char* kTransferHelp =
    "Ce qui n'est pas donné vient du dernier transfert ; ce qui a servi est retenu pour le "
    "suivant. Un séparateur est un nom (NUL TAB LF FF CR ESC CRLF…) ou des signes séparés par des "
    "blancs : un caractère, un nombre décimal de deux chiffres, ou un code tel que 0Dh.";

Command ImportCommand() {
  return {
      .name = "import",
      .summary = "Importe les fiches d'un fichier avec séparateurs",
      .details = std::string("Affiche le nombre de fiches transférées. ") + kTransferHelp,
      .usage = "FICHIER",
      .least = 1,
      .most = 1,
      .options = TransferOptions("remplace toutes les fiches existantes (demande confirmation)"),
      .run = RunImport};
}

Command ExportCommand() {
  return {.name = "export",
          .summary = "Exporte les fiches marquées vers un fichier avec séparateurs",
          .details = std::string("Affiche le nombre de fiches transférées. ") + kTransferHelp,
          .usage = "FICHIER",
          .least = 1,
          .most = 1,
          .options = TransferOptions("remplace le fichier au lieu de le compléter (demande "
                                     "confirmation)"),
          .run = RunExport};
}

}  // namespace

std::vector<Command> TransferCommands() {
  return {ImportCommand(), ExportCommand()};
}

}  // namespace carnetel
