// The command capture.

#include <ostream>

#include "base/code_page.h"
#include "cli/cli_session.h"
#include "cli/commands.h"
#include "cli/json_form.h"
#include "cli/result_messages.h"
#include "transfer/enrichment.h"

namespace carnetel {
namespace {

constexpr int kCardsCreated = 112;
constexpr int kOntoItself = 181;

void PrintCreated(CliSession& session, int32_t cards) {
  session.out() << (session.options().json ? CountLine("cards", cards)
                                           : FormatText(kCardsCreated, cards))
                << '\n';
}

int RunCapture(CliSession& session, const Arguments& arguments) {
  const std::string& file = arguments.positionals.front();
  if (session.Family() == nullptr) return kRefused;
  if (session.Family()->Holds(file)) return session.Fail(FormatText(kOntoItself, file));
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  const std::string prefix =
      AnsiFromUtf8Lossy(arguments.Value("--prefix").value_or(std::string())).bytes();
  ResultMessages messages(session.messages());
  EnrichmentForm form(*directory, messages, EnrichmentMode::kSilent, file, prefix);
  form.RunSilently([&session](const std::string&) { return session.interrupted(); });
  form.Finish();
  if (!session.CloseStores() || messages.told_failure()) return kRefused;
  PrintCreated(session, form.added());
  if (form.failed()) return session.Fail("toutes les fiches n'ont pas pu être ajoutées");
  // Opened again at once, as after an import: that heals what many adds leave out of place.
  return session.Open() != nullptr ? kDone : kRefused;
}

}  // namespace

Command CaptureCommand() {
  return {.name = "capture",
          .summary = "Ajoute les fiches d'un fichier de capture",
          .details =
              "Affiche le nombre de fiches ajoutées. Un fichier de capture a des fiches de "
              "156 octets, sans en-tête.",
          .usage = "FICHIER",
          .least = 1,
          .most = 1,
          .options = {{"--prefix", "TEXTE",
                       "ce que les numéros reçoivent devant eux ; « ? » pour rien"}},
          .run = RunCapture};
}

}  // namespace carnetel
