// The command extract.

#include <array>
#include <ostream>

// In front of the exit statuses: a result of an extraction bears the name of one of them.
#include "link/chooser_extract.h"

#include "cli/card_arguments.h"
#include "cli/card_output.h"
#include "cli/commands.h"
#include "cli/group_argument.h"
#include "link/viafax_file.h"
#include "link/viafax_option.h"

namespace carnetel {
namespace {

constexpr int kNoAccess = 43;
constexpr int kNoSelection = 50;
constexpr int kWriteError = 94;
constexpr int kNoNumber = 103;
constexpr int kOntoItself = 181;

constexpr const char* kOwnSettings = "CARNETEL";

struct NumberWord {
  std::string_view word;
  NumberKind kind;
};
constexpr std::array<NumberWord, 5> kNumberWords = {{{"fax", NumberKind::kFax},
                                                     {"modem", NumberKind::kModem},
                                                     {"minitel", NumberKind::kMinitel},
                                                     {"tel1", NumberKind::kTel1},
                                                     {"tel2", NumberKind::kTel2}}};

class Extraction {
 public:
  Extraction(CliSession& session, const Arguments& arguments)
      : session_(session), arguments_(arguments) {}

  // The exit status.
  int Run() {
    const std::string usage = TakeOptions();
    if (!usage.empty()) return session_.WrongUsage(usage);
    if (session_.Family() == nullptr) return kRefused;
    if (session_.Family()->Holds(FindAnyCase(session_.files(), request_.file))) {
      return session_.Fail(FormatText(kOntoItself, request_.file));
    }
    Directory* directory = session_.Open();
    if (directory == nullptr) return kRefused;
    const GroupScope group(session_, *directory, arguments_);
    if (!group.found()) return kRefused;
    ChooserRows rows = ListChooserRows(*directory, request_.kind);
    const int status = FindCurrent(*directory, rows);
    if (status != kDone) return status;
    FinishRequest();
    return Tell(ChooserExtract(*directory, request_, scope_, rows));
  }

 private:
  // What is wrong with the line; empty when nothing is.
  std::string TakeOptions() {
    request_.file = arguments_.positionals.front();
    if (request_.file.empty()) return "il faut un fichier";
    const std::string word = arguments_.Value("--number").value_or("");
    const auto* known = std::ranges::find(kNumberWords, word, &NumberWord::word);
    if (known == kNumberWords.end()) {
      return "--number demande fax, modem, minitel, tel1 ou tel2";
    }
    request_.kind = known->kind;
    const bool row = arguments_.Has("--row");
    const bool selection = arguments_.Has("--selection");
    if (int{row} + int{selection} + int{arguments_.Has("--all")} != 1) {
      return "il faut une ligne (--row), ou --selection, ou --all";
    }
    scope_ = row         ? ExtractScope::kCard
             : selection ? ExtractScope::kSelection
                         : ExtractScope::kGroup;
    return TakeForm();
  }

  std::string TakeForm() {
    request_.viafax = arguments_.Has("--viafax");
    request_.long_records = arguments_.Has("--long");
    if (request_.viafax && request_.long_records) {
      return "l'option --long n'a pas de sens avec --viafax";
    }
    appli_name_ = arguments_.Value("--appli").value_or(kOwnSettings);
    if (!request_.viafax && arguments_.Has("--appli")) {
      return "l'option --appli n'a de sens qu'avec --viafax";
    }
    const bool plain = !appli_name_.empty() && appli_name_.find('/') == std::string::npos;
    return plain ? "" : "--appli demande un nom, sans chemin";
  }

  // Makes the card of --row the current one; refused when it is not among the rows (told).
  int FindCurrent(Directory& directory, ChooserRows& rows) {
    if (scope_ != ExtractScope::kCard) return kDone;
    const std::string name = *arguments_.Value("--row");
    int status = kDone;
    const auto offsets = ResolveRows(session_, directory, {name}, &status);
    if (!offsets) return status;
    const auto offset = static_cast<int32_t>(offsets->front());
    const auto found = std::ranges::find_if(
        rows.items, [offset](int32_t item) { return item == offset || item == -offset; });
    if (found == rows.items.end()) {
      return session_.Fail("la fiche de la ligne " + name +
                           " n'est pas de celles qui ont un tel numéro");
    }
    rows.current = static_cast<int>(found - rows.items.begin());
    return kDone;
  }

  void FinishRequest() {
    request_.styles = session_.label_styles();
    if (!request_.viafax) return;
    const UserProfile profile = session_.Profile();
    request_.viafax_option = profile.Int(CliSession::ProfileSection(), kViafaxOptionKey, 0);
    const CliEnvironment& environment = session_.environment();
    const std::string home =
        HomeFolder(environment.files, environment.variables, environment.executable_folder);
    request_.user_name = ViafaxUserName(environment.files, home, appli_name_);
  }

  int Tell(const ExtractOutcome& outcome) {
    switch (outcome.result) {
      case ExtractOutcome::Result::kNoRow:
        return scope_ == ExtractScope::kSelection
                   ? session_.Fail(std::string(LoadText(kNoSelection)))
                   : session_.Fail("aucune fiche n'a un tel numéro");
      case ExtractOutcome::Result::kNoNumber:
        return session_.Fail(std::string(LoadText(kNoNumber)));
      case ExtractOutcome::Result::kNoFile:
        return session_.Fail(FormatText(kNoAccess, request_.file));
      case ExtractOutcome::Result::kDone:
        break;
    }
    if (outcome.write_failed) return session_.Fail(FormatText(kWriteError, request_.file));
    if (session_.options().json) {
      session_.out() << CountLine("cards", outcome.cards) << '\n';
    } else {
      session_.out() << CardCount(outcome.cards)
                     << (outcome.cards > 1 ? " extraites\n" : " extraite\n");
    }
    return kDone;
  }

  CliSession& session_;
  const Arguments& arguments_;
  ExtractRequest request_;
  ExtractScope scope_ = ExtractScope::kCard;
  std::string appli_name_;
};

int RunExtract(CliSession& session, const Arguments& arguments) {
  return Extraction(session, arguments).Run();
}

}  // namespace

Command ExtractCommand() {
  return {.name = "extract",
          .summary = "Extrait des numéros vers un fichier, pour un autre programme",
          .details =
              "Ajoute au FICHIER ce que le choix du correspondant y laisse : un enregistrement par "
              "fiche, ou un travail Viafax. Seules comptent les fiches qui ont un numéro du genre "
              "demandé. Affiche le nombre de fiches extraites.",
          .usage = "FICHIER",
          .least = 1,
          .most = 1,
          .options = {{"--number", "GENRE", "fax, modem, minitel, tel1 ou tel2"},
                      {"--row", "LIGNE", "une seule fiche"},
                      {"--selection", "", "les fiches marquées"},
                      {"--all", "", "toutes les fiches ; avec --group, celles du groupe"},
                      {"--group", "NOM", "les membres de ce groupe, avec ses marques"},
                      {"--long", "", "des enregistrements longs"},
                      {"--viafax", "", "un travail Viafax au lieu d'enregistrements"},
                      {"--appli", "NOM",
                       "le programme dont les réglages donnent l'expéditeur ; sinon CARNETEL"}},
          .run = RunExtract};
}

}  // namespace carnetel
