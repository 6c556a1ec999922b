// The command about saved transfer profiles.

#include <ostream>

#include "base/code_page.h"
#include "cli/card_output.h"
#include "cli/commands.h"
#include "cli/json_form.h"
#include "cli/transfer_setup.h"
#include "transfer/saved_profiles.h"

namespace carnetel {
namespace {

constexpr int kSetToBeDeleted = 36;
constexpr auto kPlainType = TransferFileType::kDelimited;

// The parameter file as the last transfer left it, unlike in a transfer not made when missing.
class ProfileWork {
 public:
  ProfileWork(CliSession& session, const Arguments& arguments)
      : session_(session),
        arguments_(arguments),
        parameters_(session.files(), session.ParameterFile()) {
    there_ = Read(kPlainType, TransferDirection::kImport);
    for (const std::string& name : Profiles().Names()) names_.push_back(OemFromUtf8Lossy(name));
  }

  int List() {
    for (size_t number = 0; number < names_.size(); ++number) {
      const SavedKind kind = KindOf(number);
      const std::string name = Utf8FromOem(names_[number]);
      if (session_.options().json) {
        session_.out() << ProfileLine(name, Word(kind)) << '\n';
      } else {
        session_.out() << Shown(name) << FrenchNote(kind) << '\n';
      }
    }
    return kDone;
  }

  int Save() {
    const std::optional<OemText> name = ToName(session_, word(1));
    if (!name || !IsFreeName(session_, kProfileKind, names_, *name)) return kRefused;
    const auto type = static_cast<TransferFileType>(parameters_.header().last_type());
    const auto direction = static_cast<TransferDirection>(parameters_.header().direction());
    const bool used = there_ && (!IsDbase(type) || Read(type, direction));
    if (!used) return session_.Fail("aucun transfert n'a encore été fait : rien à sauver");
    parameters_.profile().set_type(type);
    return Told(SavedProfiles(parameters_, direction).Add(Utf8FromOem(*name)));
  }

  int Load() {
    const std::optional<size_t> number = Find();
    if (!number) return kRefused;
    const bool exports = KindOf(*number) == SavedKind::kDbaseExport;
    const auto direction = exports ? TransferDirection::kExport : TransferDirection::kImport;
    if (KindOf(*number) != SavedKind::kPlain) parameters_.header().set_direction(direction);
    return Told(SavedProfiles(parameters_, direction).Load(*number));
  }

  int Rename() {
    const std::optional<size_t> number = Find();
    const std::optional<OemText> name = number ? ToName(session_, word(2)) : std::nullopt;
    if (!name || !IsFreeName(session_, kProfileKind, names_, *name, number)) return kRefused;
    return Told(Profiles().Rename(*number, Utf8FromOem(*name)));
  }

  int Delete() {
    const std::optional<size_t> number = Find();
    if (!number) return kRefused;
    if (!session_.Confirm(kSetToBeDeleted, Utf8FromOem(names_[*number]))) {
      return session_.Fail("rien n'est supprimé");
    }
    return Told(Profiles().Delete(*number));
  }

 private:
  [[nodiscard]] const std::string& word(size_t place) const {
    return arguments_.positionals[place];
  }
  // The direction matters only to what a mapping is loaded for.
  SavedProfiles Profiles() { return {parameters_, TransferDirection::kImport}; }
  bool Read(TransferFileType type, TransferDirection direction) {
    return parameters_.AccessParameterFile(ParameterFile::Access::kRead, type, direction) == 0;
  }
  std::optional<size_t> Find() { return FindName(session_, kProfileKind, names_, word(1)); }
  SavedKind KindOf(size_t number) { return Profiles().KindOf(number).value_or(SavedKind::kPlain); }

  static std::string Word(SavedKind kind) {
    if (kind == SavedKind::kPlain) return "plain";
    return kind == SavedKind::kDbaseImport ? "import" : "export";
  }
  static std::string FrenchNote(SavedKind kind) {
    if (kind == SavedKind::kPlain) return {};
    return kind == SavedKind::kDbaseImport ? " : importation dBase" : " : exportation dBase";
  }

  int Told(bool done) {
    return done ? kDone : session_.Fail("le fichier des paramètres n'a pas pu être écrit");
  }

  CliSession& session_;
  const Arguments& arguments_;
  ParameterFile parameters_;
  bool there_ = false;
  std::vector<OemText> names_;
};

int RunParameters(CliSession& session, const Arguments& arguments) {
  ProfileWork work(session, arguments);
  const std::string& action = arguments.positionals.front();
  if (action == "list") return work.List();
  if (action == "save") return work.Save();
  if (action == "load") return work.Load();
  return action == "rename" ? work.Rename() : work.Delete();
}

std::vector<ActionSyntax> ParameterActions() {
  return {
      {.name = "list", .help = "les noms des jeux"},
      {.name = "save",
       .usage = "NOM",
       .help = "un nouveau jeu de ce que le dernier transfert a utilisé",
       .least = 1,
       .most = 1},
      {.name = "load",
       .usage = "NOM",
       .help = "le prochain transfert part de ce jeu",
       .least = 1,
       .most = 1},
      {.name = "rename",
       .usage = "NOM NOUVEAU",
       .help = "un autre nom pour le même jeu",
       .least = 2,
       .most = 2},
      {.name = "delete",
       .usage = "NOM",
       .help = "supprime un jeu ; demande une confirmation",
       .least = 1,
       .most = 1},
  };
}

}  // namespace

std::vector<Command> ParameterCommands() {
  return {{.name = "parameters",
           .summary = "Gère les jeux de paramètres de transfert",
           .details = "Un jeu garde sous un nom le type de fichier et sa disposition : champs et "
                      "séparateurs, places, colonnes dBase. « import --load NOM » et « export "
                      "--load NOM » partent d'un jeu.",
           .usage = "ACTION [ARGUMENTS]",
           .least = 1,
           .most = 3,
           .actions = ParameterActions(),
           .run = RunParameters}};
}

}  // namespace carnetel
