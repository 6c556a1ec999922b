// The commands about the list of cards: list, find, mark, unmark.

#include <ostream>

#include "cli/card_arguments.h"
#include "cli/card_output.h"
#include "cli/commands.h"
#include "cli/group_argument.h"
#include "selection/marks.h"
#include "storage/card_dispatch.h"

namespace carnetel {
namespace {

constexpr int kNoExample = 34;
constexpr int kNothingFound = 35;

std::optional<LetterRange> LetterArgument(const Arguments& arguments) {
  const std::optional<std::string> letter = arguments.Value("--letter");
  if (!letter) return kAllLetters;
  return letter->size() == 1 ? LetterRangeOf(letter->front()) : std::nullopt;
}

int RunList(CliSession& session, const Arguments& arguments) {
  const std::optional<LetterRange> range = LetterArgument(arguments);
  if (!range) return session.WrongUsage("--letter demande une lettre de A à Z ou un chiffre");
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  const GroupScope scope(session, *directory, arguments);
  if (!scope.found()) return kRefused;
  const bool marked = arguments.Has("--marked");
  CardPrinter printer(session, *directory);
  const uint32_t hidden = VisitCardRows(*directory, *range, [&](const CardRow& row) {
    const bool wanted = !marked || row.entry.bit(directory->selection_bit());
    if (wanted && scope.Shows(row.entry)) printer.PrintRow(row);
    return !session.interrupted() && session.out().good();
  });
  if (hidden != 0 && *range == kAllLetters && !marked && !scope.is_group()) {
    session.messages().Inform(std::to_string(hidden) +
                              (hidden > 1 ? " fiches n'apparaissent" : " fiche n'apparaît") +
                              " dans aucune liste : leur clé ne commence ni par un chiffre ni par "
                              "une lettre sans accent");
  }
  return kDone;
}

// Walks over the cards that fit the example; true when there was one.
bool PrintHits(CliSession& session, Directory& directory, const CardRecord& example, bool all) {
  CardPrinter printer(session, directory);
  CardDispatch dispatch(directory);
  uint32_t offset = 0;
  uint32_t row_hint = 0;
  WalkDirection direction = WalkDirection::kFirst;
  while (!session.interrupted() && session.out().good()) {
    directory.context().current = example;
    if (dispatch.Find(direction, &offset) != 0) break;
    const std::optional<CardRow> row = LoadRow(directory, offset, row_hint);
    if (row) {
      printer.PrintRow(*row);
      row_hint = row->row;
    }
    direction = WalkDirection::kNext;
    if (!all) break;
  }
  return direction == WalkDirection::kNext;
}

int RunFind(CliSession& session, const Arguments& arguments) {
  int status = kDone;
  const auto values = ParseAssignments(session, arguments.positionals, &status);
  if (!values) return status;
  CardRecord example;
  // The example's postal code is the long one alone: cards that have only the short one are
  // compared by it, and those that have only the long one must not fail for want of the short one.
  for (const FieldValue& value : *values) example.SetField(value.field, value.text);
  if (example == CardRecord()) return session.Fail(std::string(LoadText(kNoExample)));
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  const bool found = PrintHits(session, *directory, example, arguments.Has("--all"));
  return found ? kDone : session.Fail(std::string(LoadText(kNothingFound)));
}

// Marks all there is to mark: of a group, its members. Unmarks whatever is marked.
void MarkAll(Directory& directory, const GroupScope& scope, bool marked) {
  if (!scope.is_group() || !marked) {
    SetAllMarks(directory, marked);
    return;
  }
  const AddressFile& address = directory.address();
  for (uint32_t row = 0; row < address.entry_count(); ++row) {
    if (scope.Holds(address.Entry(row))) ChangeMark(directory, row, true);
  }
  directory.Commit();
}

int ChangeMarks(CliSession& session, const Arguments& arguments, bool marked) {
  const bool all = arguments.Has("--all");
  if (all != arguments.positionals.empty()) {
    return session.WrongUsage("il faut des lignes, ou --all");
  }
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  int status = kDone;
  const auto offsets = ResolveRows(session, *directory, arguments.positionals, &status);
  if (!offsets) return status;
  const GroupScope scope(session, *directory, arguments);
  if (!scope.found() || !scope.ShowsEach(*offsets)) return kRefused;
  if (all) MarkAll(*directory, scope, marked);
  for (const uint32_t offset : *offsets) {
    SetMark(*directory, directory->address().FindRow(offset), marked);
  }
  PrintMarkedCount(session, directory->marked_count());
  return kDone;
}

int RunMark(CliSession& session, const Arguments& arguments) {
  return ChangeMarks(session, arguments, true);
}

int RunUnmark(CliSession& session, const Arguments& arguments) {
  return ChangeMarks(session, arguments, false);
}

Command ListCommand() {
  return {.name = "list",
          .summary = "Affiche les lignes de la liste : numéro, marque, libellé",
          .details = "Sans --letter, la vue « A à Z ». Avec --json, les fiches entières.",
          .options = {{"--letter", "X", "l'onglet d'une lettre, ou un chiffre"},
                      {"--group", "NOM", "la vue de ce groupe, avec ses marques"},
                      {"--marked", "", "les fiches marquées seulement"}},
          .run = RunList};
}

Command FindCommand() {
  return {.name = "find",
          .summary = "Cherche par l'exemple",
          .details =
              "Toutes les valeurs données doivent convenir : celle du champ d'index au "
              "début du champ, les autres n'importe où. Affiche la première fiche, dans la "
              "forme de list ; le code de retour est 1 quand il n'y en a pas.",
          .usage = "CHAMP=VALEUR…",
          .least = 1,
          .most = kManyArguments,
          .options = {{"--all", "", "toutes les fiches, dans l'ordre de l'index"}},
          .run = RunFind};
}

Command MarkCommand(const std::string& name, const std::string& summary,
                    int (*run)(CliSession&, const Arguments&)) {
  return {.name = name,
          .summary = summary,
          .details = "Affiche le nombre de fiches marquées.",
          .usage = "[LIGNE…]",
          .most = kManyArguments,
          .options = {{"--all", "", "toutes les fiches ; avec --group, celles du groupe"},
                      {"--group", "NOM", "dans la sélection de ce groupe"}},
          .run = run};
}

}  // namespace

std::vector<Command> ListCommands() {
  return {ListCommand(), FindCommand(), MarkCommand("mark", "Marque des fiches", RunMark),
          MarkCommand("unmark", "Retire la marque de fiches", RunUnmark)};
}

}  // namespace carnetel
