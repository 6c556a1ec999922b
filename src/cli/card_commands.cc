// The commands about single cards: show, add, edit, delete.

#include <istream>

#include "base/utf8.h"
#include "cli/card_arguments.h"
#include "cli/card_output.h"
#include "cli/commands.h"
#include "cli/group_argument.h"
#include "selection/card_removal.h"
#include "selection/group_removal.h"
#include "storage/card_dispatch.h"
#include "storage/card_edit.h"

namespace carnetel {
namespace {

constexpr int kHeldByOther = 177;
constexpr int kNotPossible = 48;
constexpr int kNoKey = 30;
constexpr int kOneToBeDeleted = 31;
constexpr int kMarkedToBeDeleted = 53;
constexpr int kNoSelection = 50;

constexpr const char* kFieldHelp =
    "CHAMP est un nom court (Ste1 Ste2 Adr1 Adr2 CP Ville Pays Qualite Prenom Nom Ref1 à Ref6 Tel1 "
    "Tel2 Mtel Fax Modem Notes), sans égard aux majuscules, ou #N, de 0 à 30. « CHAMP= » vide le "
    "champ. Une valeur trop longue est coupée.";
constexpr const char* kRowHelp =
    "LIGNE est le numéro de la fiche dans tout le fichier, à partir de 1, ou @POSITION, sa place "
    "en octets dans le fichier principal.";

int RunShow(CliSession& session, const Arguments& arguments) {
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  int status = kDone;
  const auto offsets = ResolveRows(session, *directory, arguments.positionals, &status);
  if (!offsets) return status;
  CardPrinter printer(session, *directory);
  for (const uint32_t offset : *offsets) {
    const std::optional<CardRow> row = LoadRow(*directory, offset);
    if (!row) return session.Fail("la fiche @" + std::to_string(offset) + " est illisible");
    printer.PrintCard(*row);
  }
  return kDone;
}

int FailToWrite(CliSession& session, const Directory& directory) {
  if (directory.lock_refused()) return session.Fail(std::string(LoadText(kHeldByOther)));
  const bool full = directory.main().count() >= kMaxCards;
  return session.Fail(std::string(LoadText(kNotPossible)) +
                      (full ? " : le carnetel est plein (" + std::to_string(kMaxCards) + " fiches)"
                            : " : l'écriture a échoué"));
}

// What a form's save does to the key fields of a card; false when it has none (told).
bool PrepareKeys(CliSession& session, CardRecord* card) {
  if (StripKeyFields(*card)) {
    session.messages().Warn(
        "les premiers caractères de Ste1 et Nom qui ne peuvent commencer une clé sont retirés");
  }
  if (HasKeyField(*card)) return true;
  session.Fail(std::string(LoadText(kNoKey)));
  return false;
}

// Adds a card and prints it.
int AddCard(CliSession& session, Directory& directory, const std::vector<FieldValue>& values,
            bool marked) {
  CardRecord& card = directory.context().current;
  card.Clear();
  SetFields(values, &card);
  if (!PrepareKeys(session, &card)) return kRefused;
  uint32_t position = 0;
  if (CardDispatch(directory).Add(marked, &position) < 0) return FailToWrite(session, directory);
  if (marked) directory.set_selection_dirty();
  CardRow row;
  row.row = EntryRow(position);
  row.entry = directory.address().Entry(row.row);
  row.card = card;
  CardPrinter(session, directory).PrintNumber(row);
  return kDone;
}

// Reads a card a line; those before a line that is refused stay.
int AddFromInput(CliSession& session, Directory& directory, bool marked) {
  // With seats each card is added by itself: nothing stays locked while a line is waited for.
  std::optional<Directory::Batch> batch;
  if (!directory.is_shared()) batch.emplace(directory);
  std::istream& in = session.environment().in;
  std::string line;
  for (int number = 1; !session.interrupted() && std::getline(in, line); ++number) {
    if (number == 1) DropByteOrderMark(line);
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    const std::string place = "fiche de la ligne " + std::to_string(number);
    const CardInput input = ParseCardLine(line);
    if (!input.error.empty()) return session.Fail(place + " : " + input.error);
    int status = kDone;
    const auto values = ParseFields(session, input.fields, &status);
    if (!values || AddCard(session, directory, *values, marked || input.marked) != kDone) {
      session.messages().Warn(place + " refusée ; les précédentes sont ajoutées");
      return kRefused;
    }
  }
  return kDone;
}

int RunAdd(CliSession& session, const Arguments& arguments) {
  const bool marked = arguments.Has("--mark");
  const bool from_input = arguments.positionals.size() == 1 && arguments.positionals[0] == "-";
  if (from_input && session.script_from_input) {
    return session.Fail("« add - » ne peut pas lire l'entrée standard : le script en vient");
  }
  int status = kDone;
  std::optional<std::vector<FieldValue>> values;
  if (!from_input) {
    values = ParseAssignments(session, arguments.positionals, &status);
    if (!values) return status;
  }
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  return from_input ? AddFromInput(session, *directory, marked)
                    : AddCard(session, *directory, *values, marked);
}

int RunEdit(CliSession& session, const Arguments& arguments) {
  int status = kDone;
  const std::vector<std::string>& words = arguments.positionals;
  const auto values = ParseAssignments(session, {words.begin() + 1, words.end()}, &status);
  if (!values) return status;
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  // From here on a row is the same card until the end.
  const ChangeScope change(*directory);
  if (!change) return FailToWrite(session, *directory);
  const auto offsets = ResolveRows(session, *directory, {words.front()}, &status);
  if (!offsets) return status;
  if (!directory->TestCardLock(offsets->front())) return FailToWrite(session, *directory);
  CardRecord card;
  if (!directory->main().ReadCard(offsets->front(), card)) return FailToWrite(session, *directory);
  SetFields(*values, &card);
  if (!PrepareKeys(session, &card)) return kRefused;
  const ChangedCard changed = ChangeCard(*directory, offsets->front(), card);
  if (changed.result == ChangeResult::kNotPossible) return FailToWrite(session, *directory);
  const std::optional<CardRow> row = LoadRow(*directory, changed.card_offset);
  if (row) CardPrinter(session, *directory).PrintNumber(*row);
  return kDone;
}

bool ConfirmDelete(CliSession& session, Directory& directory,
                   const std::vector<uint32_t>& offsets) {
  CardRecord card;
  if (offsets.size() != 1 || !directory.main().ReadCard(offsets.front(), card)) {
    return session.Confirm(kMarkedToBeDeleted);
  }
  return session.Confirm(kOneToBeDeleted, DeletionLabel(card, directory.key_field()));
}

// The cards as they are when the question is asked.
std::vector<CardRecord> ReadCards(Directory& directory, const std::vector<uint32_t>& offsets) {
  std::vector<CardRecord> cards(offsets.size());
  for (size_t i = 0; i < offsets.size(); ++i) (void)directory.main().ReadCard(offsets[i], cards[i]);
  return cards;
}

// What the user has agreed to: with seats another card may lie there by now.
CardRemoval RemoveCards(Directory& directory, const std::vector<uint32_t>& offsets,
                        const std::vector<CardRecord>& shown) {
  const ChangeScope change(directory);
  const bool is_same = !directory.is_shared() || ReadCards(directory, offsets) == shown;
  if (!change || !is_same) return {.held = static_cast<uint32_t>(offsets.size())};
  return DeleteCards(directory, offsets);
}

int TellRemoval(CliSession& session, const CardRemoval& removal) {
  const std::string told =
      CardCount(removal.deleted) + (removal.deleted > 1 ? " supprimées" : " supprimée");
  if (removal.failed) return session.Fail("suppression impossible : " + told);
  session.messages().Inform(told);
  return removal.held == 0 ? kDone : session.Fail(std::string(LoadText(kHeldByOther)));
}

// Without offsets, the marked ones.
int LeaveGroup(CliSession& session, Directory& directory, const GroupScope& scope,
               const std::vector<uint32_t>& offsets) {
  const uint32_t before = CountMembers(directory, directory.group_bit());
  if (offsets.empty()) RemoveMarkedFromGroup(directory, scope.MarkedShown());
  for (const uint32_t offset : offsets) ClearEntryBits(directory, offset);
  const uint32_t left = before - CountMembers(directory, directory.group_bit());
  session.messages().Inform(CardCount(left) + (left > 1 ? " ont" : " a") + " quitté le groupe");
  return kDone;
}

int RunDelete(CliSession& session, const Arguments& arguments) {
  const bool marked = arguments.Has("--marked");
  if (marked != arguments.positionals.empty()) {
    return session.WrongUsage("delete demande des lignes, ou --marked");
  }
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  int status = kDone;
  const auto offsets = ResolveRows(session, *directory, arguments.positionals, &status);
  if (!offsets) return status;
  const GroupScope scope(session, *directory, arguments);
  if (!scope.found() || !scope.HoldsEach(*offsets)) return kRefused;
  if (marked && directory->marked_count() == 0) {
    return session.Fail(std::string(LoadText(kNoSelection)));
  }
  const std::vector<CardRecord> shown = ReadCards(*directory, *offsets);
  if (!ConfirmDelete(session, *directory, *offsets)) {
    return session.Fail("rien n'est supprimé");
  }
  if (scope.is_group()) return LeaveGroup(session, *directory, scope, *offsets);
  return TellRemoval(
      session, marked ? DeleteMarkedCards(*directory) : RemoveCards(*directory, *offsets, shown));
}

Command ShowCommand() {
  return {.name = "show",
          .summary = "Affiche des fiches entières",
          .details = kRowHelp,
          .usage = "LIGNE…",
          .least = 1,
          .most = kManyArguments,
          .run = RunShow};
}

Command AddCommand() {
  return {.name = "add",
          .summary = "Ajoute une fiche et affiche sa ligne",
          .details = std::string(kFieldHelp) +
                     "\n« add - » lit des fiches en JSON sur l'entrée standard, une par ligne, "
                     "dans la forme que --json affiche.",
          .usage = "CHAMP=VALEUR…",
          .least = 1,
          .most = kManyArguments,
          .options = {{"--mark", "", "marque la fiche"}},
          .run = RunAdd};
}

Command EditCommand() {
  return {.name = "edit",
          .summary = "Modifie une fiche et affiche sa ligne",
          .details = std::string(kRowHelp) + "\n" + kFieldHelp +
                     "\nLes champs non nommés restent. Quand Ste1 ou Nom change, la fiche est "
                     "reclassée ; elle garde marques et groupes.",
          .usage = "LIGNE CHAMP=VALEUR…",
          .least = 2,
          .most = kManyArguments,
          .run = RunEdit};
}

Command DeleteCommand() {
  return {.name = "delete",
          .summary = "Supprime des fiches",
          .details = std::string(kRowHelp) +
                     "\nDemande une confirmation. Avec --group, les fiches quittent le groupe et "
                     "rien n'est supprimé.",
          .usage = "[LIGNE…]",
          .most = kManyArguments,
          .options = {{"--marked", "", "toutes les fiches marquées"},
                      {"--group", "NOM", "les retire de ce groupe sans les supprimer"}},
          .run = RunDelete};
}

}  // namespace

std::vector<Command> CardCommands() {
  return {ShowCommand(), AddCommand(), EditCommand(), DeleteCommand()};
}

}  // namespace carnetel
