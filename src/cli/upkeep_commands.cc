// The commands that look after a directory: index, recover.

#include <ostream>

#include "cli/cli_session.h"
#include "cli/commands.h"
#include "cli/json_form.h"
#include "storage/address_reorder.h"
#include "storage/recovery.h"

namespace carnetel {
namespace {

constexpr int kNoAccess = 43;
constexpr int kOntoItself = 181;
constexpr int kNotPossible = 48;

int RunIndex(CliSession& session, const Arguments& arguments) {
  const std::string& key = arguments.positionals.front();
  if (key != "societe" && key != "nom") {
    return session.WrongUsage("« " + key + " » n'est pas un index : societe ou nom");
  }
  const int key_field = key == "nom" ? kNom : kSte1;
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  // First the profile: with the former index in it, the next opening would lose marks and groups.
  if (!session.StoreKeyField(key_field)) return session.Fail("le profil n'a pas pu être écrit");
  if (directory->key_field() == key_field) return kDone;
  AddressReorder reorder(*directory, key_field);
  if (!reorder.built()) return session.Fail(FormatText(kNoAccess, directory->address().path()));
  reorder.CarryOver();
  return kDone;
}

int RunRecover(CliSession& session, const Arguments& arguments) {
  const std::string& path = arguments.positionals.front();
  if (!session.files().Exists(path) || session.files().IsFolder(path)) {
    return session.Fail(FormatText(kNoAccess, path));
  }
  if (session.Family() == nullptr) return kRefused;
  if (session.Family()->Holds(path)) return session.Fail(FormatText(kOntoItself, path));
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  const Recovery recovery = RecoverCards(*directory, path);
  if (!recovery.read) return session.Fail(FormatText(kNoAccess, path));
  if (session.options().json) {
    session.out() << CountLine("cards", recovery.added) << '\n';
  } else {
    session.out() << recovery.added << " fiche(s) récupérée(s)\n";
  }
  if (recovery.failed) return session.Fail(std::string(LoadText(kNotPossible)));
  return recovery.stopped ? session.Fail("la récupération a été arrêtée") : kDone;
}

Command IndexCommand() {
  return {.name = "index",
          .summary = "Choisit l'index actif : par société ou par nom",
          .details =
              "Les marques et les groupes suivent les fiches dans le nouvel ordre. Le choix est "
              "gardé dans le profil et vaut pour tous les carnetels, dans la fenêtre aussi.",
          .usage = "societe|nom",
          .least = 1,
          .most = 1,
          .run = RunIndex};
}

Command RecoverCommand() {
  return {.name = "recover",
          .summary = "Récupère les fiches d'un fichier non reconnu",
          .details =
              "Chaque fiche du FICHIER est ajoutée, marquée, au carnetel nommé par --directory. "
              "Le FICHIER lui-même ne change pas.",
          .usage = "FICHIER",
          .least = 1,
          .most = 1,
          .run = RunRecover};
}

}  // namespace

std::vector<Command> UpkeepCommands() {
  return {IndexCommand(), RecoverCommand()};
}

}  // namespace carnetel
