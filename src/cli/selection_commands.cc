// The commands that choose cards by criteria: select, criteria.

#include <ostream>

#include "base/code_page.h"
#include "cli/card_output.h"
#include "cli/commands.h"
#include "cli/criteria_arguments.h"
#include "cli/group_argument.h"
#include "selection/criteria_file.h"
#include "selection/selection_scan.h"

namespace carnetel {
namespace {

constexpr int kSetToBeDeleted = 36;
constexpr int kNoCriteria = 44;
constexpr NamedKind kSetKind = {"jeu de critères", "jeux de critères"};
constexpr const char* kCriteriaHelp =
    "Un CRITÈRE est un champ, l'un des signes = <> <= >= < > ~ et une valeur, qui peut être vide : "
    "Ste1=DU, Ville~PARIS, Fax<>. Six au plus ; une fiche doit répondre à tous. « = » compare le "
    "début du champ, « ~ » cherche n'importe où. Entre apostrophes, le shell laisse < > * et ~ "
    "tels quels.";

// With the header as it stands in the file: which set the window shows is not this tool's matter.
CriteriaFile ReadCriteria(CliSession& session, const Directory& directory) {
  CriteriaFile criteria(session.files(), directory.paths().Of(".CRT"));
  (void)criteria.ReadCriteriaHeader();
  return criteria;
}

int FailToWrite(CliSession& session) {
  return session.Fail("les critères n'ont pas pu être écrits");
}

// A saved set by its name.
struct FoundSet {
  size_t number = 0;  // of its record
  OemText name;
};
// Nothing when the name is not there or stands twice (told).
std::optional<FoundSet> FindSet(CliSession& session, CriteriaFile& criteria,
                                const std::string& name) {
  const std::vector<OemText> names = criteria.ListCriteriaSets();
  const std::optional<size_t> place = FindName(session, kSetKind, names, name);
  if (!place) return {};
  return FoundSet{*place + 1, names[*place]};
}

// The valid rows of a saved set; nothing when there are none (told).
std::optional<CriteriaRows> SavedRows(CliSession& session, CriteriaFile& criteria,
                                      const std::string& name) {
  const std::optional<FoundSet> set = FindSet(session, criteria, name);
  if (!set) return {};
  (void)criteria.LoadCriteriaSet(set->number);
  if (criteria.rows().CompactCriteriaRows() != 0) return criteria.rows();
  session.Fail(std::string(LoadText(kNoCriteria)));
  return {};
}

// Marks the cards of the scope that pass. Selecting all is the window's own command for it: it
// leaves the working set of the file alone, and counts as a change of marks by hand.
int Select(CliSession& session, Directory& directory, GroupScope& scope, CriteriaFile& criteria,
           const CriteriaRows& rows, const Arguments& arguments) {
  if (IsSelectAll(arguments.positionals)) {
    directory.set_selection_dirty();
  } else {
    criteria.rows() = rows;
    if (!criteria.StoreWorkingSet()) return FailToWrite(session);
  }
  RunSelection(directory, rows, arguments.Has("--add"), scope.is_group(),
               directory.address().entry_count());
  scope.Recount();
  directory.CloseListView();
  PrintMarkedCount(session, directory.marked_count());
  // The scan of a group goes through to its end.
  const bool stopped = session.interrupted() && !scope.is_group();
  return stopped ? session.Fail("la sélection a été arrêtée") : kDone;
}

int RunSelect(CliSession& session, const Arguments& arguments) {
  const std::optional<std::string> set = arguments.Value("--set");
  if (set.has_value() != arguments.positionals.empty()) {
    return session.WrongUsage("il faut des critères, ou --set");
  }
  int status = kRefused;
  std::optional<CriteriaRows> rows;
  if (!set) rows = ParseCriteria(session, arguments.positionals, &status);
  if (!set && !rows) return status;
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  GroupScope scope(session, *directory, arguments);
  if (!scope.found()) return kRefused;
  CriteriaFile criteria = ReadCriteria(session, *directory);
  if (set) rows = SavedRows(session, criteria, *set);
  if (!rows) return kRefused;
  return Select(session, *directory, scope, criteria, *rows, arguments);
}

int ListSets(CliSession& session, CriteriaFile& criteria) {
  for (const OemText& name : criteria.ListCriteriaSets()) {
    const std::string text = Utf8FromOem(name);
    session.out() << (session.options().json ? NameLine(text) : Shown(text)) << '\n';
  }
  return kDone;
}

int ShowSet(CliSession& session, CriteriaFile& criteria, const std::string& name) {
  const std::optional<FoundSet> set = FindSet(session, criteria, name);
  if (!set) return kRefused;
  (void)criteria.LoadCriteriaSet(set->number);
  std::vector<std::string> texts;
  for (size_t row = 0; row < kCriteriaRowCount && criteria.rows().FieldCode(row) > 0; ++row) {
    texts.push_back(CriterionText(criteria.rows().Row(row)));
  }
  if (session.options().json) {
    session.out() << CriteriaLine(Utf8FromOem(set->name), texts) << '\n';
    return kDone;
  }
  for (const std::string& text : texts) session.out() << Shown(text) << '\n';
  return kDone;
}

int SaveSet(CliSession& session, CriteriaFile& criteria, const std::string& name,
            const CriteriaRows& rows) {
  const std::optional<OemText> taken = ToName(session, name);
  if (!taken || !IsFreeName(session, kSetKind, criteria.ListCriteriaSets(), *taken)) {
    return kRefused;
  }
  criteria.rows() = rows;
  return criteria.AddCriteriaSet(*taken) ? kDone : FailToWrite(session);
}

// The set keeps its name as it is written.
int ReplaceSet(CliSession& session, CriteriaFile& criteria, const std::string& name,
               const CriteriaRows& rows) {
  const std::optional<FoundSet> set = FindSet(session, criteria, name);
  if (!set) return kRefused;
  criteria.rows() = rows;
  const bool done = criteria.ReplaceCriteriaSet(set->number, set->name, false);
  return done ? kDone : FailToWrite(session);
}

int RenameSet(CliSession& session, CriteriaFile& criteria, const std::string& name,
              const std::string& new_name) {
  const std::optional<FoundSet> set = FindSet(session, criteria, name);
  const std::optional<OemText> taken = set ? ToName(session, new_name) : std::nullopt;
  if (!taken) return kRefused;
  const std::vector<OemText> names = criteria.ListCriteriaSets();
  if (!IsFreeName(session, kSetKind, names, *taken, set->number - 1)) return kRefused;
  return criteria.ReplaceCriteriaSet(set->number, *taken, true) ? kDone : FailToWrite(session);
}

int DeleteSet(CliSession& session, CriteriaFile& criteria, const std::string& name) {
  const std::optional<FoundSet> set = FindSet(session, criteria, name);
  if (!set) return kRefused;
  if (!session.Confirm(kSetToBeDeleted, Utf8FromOem(set->name))) {
    return session.Fail("rien n'est supprimé");
  }
  return criteria.DeleteCriteriaSet(set->number) ? kDone : FailToWrite(session);
}

int RunCriteria(CliSession& session, const Arguments& arguments) {
  const std::vector<std::string>& words = arguments.positionals;
  const std::string& action = words.front();
  CriteriaRows rows;
  if (action == "save" || action == "replace") {
    int status = kDone;
    const auto parsed = ParseCriteria(session, {words.begin() + 2, words.end()}, &status);
    if (!parsed) return status;
    rows = *parsed;
  }
  const Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  CriteriaFile criteria = ReadCriteria(session, *directory);
  if (action == "list") return ListSets(session, criteria);
  if (action == "show") return ShowSet(session, criteria, words[1]);
  if (action == "save") return SaveSet(session, criteria, words[1], rows);
  if (action == "replace") return ReplaceSet(session, criteria, words[1], rows);
  if (action == "rename") return RenameSet(session, criteria, words[1], words[2]);
  return DeleteSet(session, criteria, words[1]);
}

Command SelectCommand() {
  return {.name = "select",
          .summary = "Marque les fiches qui répondent à des critères",
          .details = std::string(kCriteriaHelp) +
                     "\nLe seul argument « * » marque toutes les fiches. Affiche le nombre de "
                     "fiches marquées.",
          .usage = "[CRITÈRE…]",
          .most = kManyArguments,
          .options = {{"--add", "", "garde les marques déjà mises"},
                      {"--group", "NOM", "parmi les fiches de ce groupe, avec ses marques"},
                      {"--set", "NOM", "les critères d'un jeu sauvé"}},
          .run = RunSelect};
}

std::vector<ActionSyntax> CriteriaActions() {
  return {
      {.name = "list", .help = "les noms des jeux"},
      {.name = "show", .usage = "NOM", .help = "les critères d'un jeu", .least = 1, .most = 1},
      {.name = "save",
       .usage = "NOM CRITÈRE…",
       .help = "un nouveau jeu",
       .least = 2,
       .most = kManyArguments},
      {.name = "replace",
       .usage = "NOM CRITÈRE…",
       .help = "d'autres critères sous le même nom",
       .least = 2,
       .most = kManyArguments},
      {.name = "rename",
       .usage = "NOM NOUVEAU",
       .help = "un autre nom pour les mêmes critères",
       .least = 2,
       .most = 2},
      {.name = "delete",
       .usage = "NOM",
       .help = "supprime un jeu ; demande une confirmation",
       .least = 1,
       .most = 1},
  };
}

Command CriteriaCommand() {
  return {.name = "criteria",
          .summary = "Gère les jeux de critères sauvés",
          .details = std::string(kCriteriaHelp) +
                     "\n« select --set NOM » marque les fiches qui répondent à un jeu.",
          .usage = "ACTION [ARGUMENTS]",
          .least = 1,
          .most = kManyArguments,
          .actions = CriteriaActions(),
          .run = RunCriteria};
}

}  // namespace

std::vector<Command> SelectionCommands() {
  return {SelectCommand(), CriteriaCommand()};
}

}  // namespace carnetel
