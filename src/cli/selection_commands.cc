// The commands that choose cards by criteria: select, criteria.

#include <ostream>

#include "base/code_page.h"
#include "cli/commands.h"
#include "cli/criteria_arguments.h"
#include "cli/group_argument.h"
#include "selection/card_test.h"
#include "selection/criteria_file.h"
#include "selection/marks.h"
#include "selection/selection_scan.h"

namespace carnetel {
namespace {

constexpr int kSetToBeDeleted = 36;
constexpr int kNoCriteria = 44;
constexpr const char* kCriteriaUsage =
    "criteria list | show NOM | save NOM CRITÈRE… | replace NOM CRITÈRE… | rename NOM NOUVEAU | "
    "delete NOM";
constexpr const char* kCriteriaHelp =
    "Un CRITÈRE est un champ, l'un des signes = <> <= >= < > ~ et une valeur, qui peut être vide : "
    "Ste1=DU, Ville~PARIS, Fax<>. Six au plus ; une fiche doit répondre à tous.";

// The record of a saved set by its name without regard to case; nothing when there is none of that
// name or more than one (told).
std::optional<size_t> FindSet(CliSession& session, CriteriaFile& criteria,
                              const std::string& name) {
  const std::vector<OemText> names = criteria.ListCriteriaSets();
  const OemText wanted = OemFromUtf8Lossy(name);
  std::optional<size_t> found;
  for (size_t i = 0; i < names.size(); ++i) {
    if (!SameName(names[i], wanted)) continue;
    if (found) {
      session.Fail("plusieurs jeux de critères portent le nom « " + name + " »");
      return {};
    }
    found = i + 1;
  }
  if (!found) session.Fail("pas de jeu de critères « " + name + " »");
  return found;
}

// What the line asks for: a saved set, criteria, or all cards; nothing when refused (told).
std::optional<CriteriaRows> WantedRows(CliSession& session, const Arguments& arguments,
                                       CriteriaFile& criteria, int* status) {
  *status = kRefused;
  const std::optional<std::string> set = arguments.Value("--set");
  if (set.has_value() != arguments.positionals.empty()) {
    *status = session.WrongUsage("il faut des critères, ou --set");
    return {};
  }
  if (!set && arguments.positionals == std::vector<std::string>{"*"}) {
    return RowsForAll(criteria.rows());
  }
  if (!set) return ParseCriteria(session, arguments.positionals, status);
  const std::optional<size_t> number = FindSet(session, criteria, *set);
  if (!number) return {};
  (void)criteria.LoadCriteriaSet(*number);
  if (criteria.rows().CompactCriteriaRows() != 0) return criteria.rows();
  session.Fail(std::string(LoadText(kNoCriteria)));
  return {};
}

int PrintMarked(CliSession& session, int32_t count) {
  if (session.options().json) {
    session.out() << CountLine("marked", count) << '\n';
  } else {
    session.out() << count << (count > 1 ? " fiches marquées\n" : " fiche marquée\n");
  }
  return kDone;
}

int RunSelect(CliSession& session, const Arguments& arguments) {
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  const GroupScope scope(session, *directory, arguments);
  if (!scope.found()) return kRefused;
  CriteriaFile criteria(session.files(), directory->paths().Of(".CRT"));
  int status = kDone;
  const std::optional<CriteriaRows> rows = WantedRows(session, arguments, criteria, &status);
  if (!rows) return status;
  if (!PassesAll(*rows) || arguments.positionals != std::vector<std::string>{"*"}) {
    criteria.rows() = *rows;
    if (!criteria.StoreWorkingSet()) return session.Fail("les critères n'ont pas pu être écrits");
  }
  RunSelection(*directory, *rows, arguments.Has("--add"), scope.is_group(),
               directory->address().entry_count());
  directory->set_marked_count(CountMarks(*directory));
  directory->CloseListView();
  PrintMarked(session, directory->marked_count());
  return session.interrupted() ? session.Fail("la sélection a été arrêtée") : kDone;
}

int ListSets(CliSession& session, CriteriaFile& criteria) {
  for (const OemText& name : criteria.ListCriteriaSets()) {
    const std::string text = Utf8FromOem(name);
    session.out() << (session.options().json ? NamedLine(text, {}) : text) << '\n';
  }
  return kDone;
}

int ShowSet(CliSession& session, CriteriaFile& criteria, const std::string& name) {
  const std::optional<size_t> number = FindSet(session, criteria, name);
  if (!number) return kRefused;
  (void)criteria.LoadCriteriaSet(*number);
  std::vector<std::string> texts;
  for (size_t row = 0; row < kCriteriaRowCount && criteria.rows().FieldCode(row) > 0; ++row) {
    texts.push_back(CriterionText(criteria.rows().Row(row)));
  }
  if (session.options().json) {
    session.out() << NamedLine(Utf8FromOem(criteria.name()), texts) << '\n';
    return kDone;
  }
  for (const std::string& text : texts) session.out() << text << '\n';
  return kDone;
}

int SaveSet(CliSession& session, CriteriaFile& criteria, const std::string& name,
            const std::vector<std::string>& words) {
  const std::optional<OemText> oem = ToName(session, name);
  if (!oem) return kRefused;
  int status = kDone;
  const std::optional<CriteriaRows> rows = ParseCriteria(session, words, &status);
  if (!rows) return status;
  const std::vector<OemText> names = criteria.ListCriteriaSets();
  const auto same = [&oem](const OemText& other) { return SameName(other, *oem); };
  if (std::ranges::any_of(names, same)) {
    return session.Fail("un jeu de critères « " + name + " » existe déjà");
  }
  criteria.rows() = *rows;
  if (criteria.AddCriteriaSet(*oem)) return kDone;
  return session.Fail("les critères n'ont pas pu être écrits");
}

int ChangeSet(CliSession& session, CriteriaFile& criteria, const Arguments& arguments) {
  const std::vector<std::string>& words = arguments.positionals;
  const bool rename = words[0] == "rename";
  const std::optional<OemText> name = ToName(session, words[rename ? 2 : 1]);
  const std::optional<size_t> number = FindSet(session, criteria, words[1]);
  if (!number || !name) return kRefused;
  if (!rename) {
    int status = kDone;
    const auto rows = ParseCriteria(session, {words.begin() + 2, words.end()}, &status);
    if (!rows) return status;
    criteria.rows() = *rows;
  }
  if (criteria.ReplaceCriteriaSet(*number, *name, rename)) return kDone;
  return session.Fail("les critères n'ont pas pu être écrits");
}

int DeleteSet(CliSession& session, CriteriaFile& criteria, const std::string& name) {
  const std::optional<size_t> number = FindSet(session, criteria, name);
  if (!number) return kRefused;
  if (!session.Confirm(kSetToBeDeleted, name)) return session.Fail("rien n'est supprimé");
  if (criteria.DeleteCriteriaSet(*number)) return kDone;
  return session.Fail("les critères n'ont pas pu être écrits");
}

int RunCriteria(CliSession& session, const Arguments& arguments) {
  const std::vector<std::string>& words = arguments.positionals;
  const std::string& verb = words.front();
  const size_t count = words.size();
  const bool known = (verb == "list" && count == 1) || (verb == "show" && count == 2) ||
                     (verb == "delete" && count == 2) || (verb == "rename" && count == 3) ||
                     ((verb == "save" || verb == "replace") && count >= 3);
  if (!known) return session.WrongUsage(kCriteriaUsage);
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  CriteriaFile criteria(session.files(), directory->paths().Of(".CRT"));
  if (verb == "list") return ListSets(session, criteria);
  if (verb == "show") return ShowSet(session, criteria, words[1]);
  if (verb == "delete") return DeleteSet(session, criteria, words[1]);
  if (verb == "save") {
    return SaveSet(session, criteria, words[1], {words.begin() + 2, words.end()});
  }
  return ChangeSet(session, criteria, arguments);
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

Command CriteriaCommand() {
  return {.name = "criteria",
          .summary = "Gère les jeux de critères sauvés",
          .details = std::string("list ; show NOM ; save NOM CRITÈRE… ; replace NOM CRITÈRE… ; "
                                 "rename NOM NOUVEAU ; delete NOM\n") +
                     kCriteriaHelp,
          .usage = "ACTION [NOM [CRITÈRE…]]",
          .least = 1,
          .most = kManyArguments,
          .run = RunCriteria};
}

}  // namespace

std::vector<Command> SelectionCommands() {
  return {SelectCommand(), CriteriaCommand()};
}

}  // namespace carnetel
