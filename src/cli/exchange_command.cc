// The command exchange.

#include <istream>
#include <ostream>

#include "base/code_page.h"
#include "cli/card_output.h"
#include "cli/cli_session.h"
#include "cli/commands.h"
#include "cli/json_form.h"
#include "cli/result_messages.h"
#include "link/exchange_request.h"

namespace carnetel {
namespace {

constexpr int kNoAccess = 43;
constexpr int kCardsCreated = 112;
constexpr int kOntoItself = 181;

// The question of an insertion has three answers, and no one at the terminal means the third:
// nothing is inserted twice unseen.
class InsertionMessages : public ResultMessages {
 public:
  explicit InsertionMessages(CliSession& session)
      : ResultMessages(session.messages()), session_(session) {}

  MessageButton Show(MessageStyle style, int title_id, const std::string& text) override {
    if (style != MessageStyle::kYesNoCancel) return ResultMessages::Show(style, title_id, text);
    if (session_.options().yes) return MessageButton::kYes;
    const CliEnvironment& environment = session_.environment();
    environment.err << OneLine(text);
    if (!environment.can_ask) {
      environment.err << " Abandonner (--yes pour répondre oui)\n";
      return MessageButton::kCancel;
    }
    environment.err << " [o/n/A] ";
    environment.err.flush();
    std::string answer;
    if (!std::getline(environment.in, answer)) environment.err << '\n';
    if (answer.starts_with('o') || answer.starts_with('O')) return MessageButton::kYes;
    const bool no = answer.starts_with('n') || answer.starts_with('N');
    return no ? MessageButton::kNo : MessageButton::kCancel;
  }

 private:
  CliSession& session_;
};

std::optional<ExchangeType> TypeOf(const std::string& text) {
  if (text == "6") return ExchangeType::kLookUp;
  if (text == "7") return ExchangeType::kRewrite;
  if (text == "8") return ExchangeType::kInsert;
  return std::nullopt;
}

int PrintReply(CliSession& session, Directory& directory, const std::string& file) {
  const auto row = LoadRow(directory, RepliedCard(session.files(), file));
  if (!row) return session.Fail("la fiche trouvée est illisible");
  const int name_field = row->card.FieldEmpty(kNom) ? kSte1 : kNom;
  ExchangeView::Reply reply;
  reply.name = Utf8FromOem(row->card.FieldText(name_field));
  reply.number = Utf8FromOem(row->card.FieldText(kTel1));
  reply.row = row->row + 1;
  if (session.options().json) {
    session.out() << ExchangeLine({.result = kExchangeDone, .reply = reply}) << '\n';
  } else {
    session.out() << reply.row << ' ' << Shown(reply.name) << " : " << Shown(reply.number) << '\n';
  }
  return kDone;
}

int TellLookUp(CliSession& session, Directory& directory, const std::string& file, int result) {
  if (result == kExchangeDone) return PrintReply(session, directory, file);
  return session.Fail(
      "la demande reste sans réponse : aucune fiche à ce nom n'a de numéro Tel1, ou plusieurs");
}

int TellRewrite(CliSession& session, const std::string& file, int result) {
  if (result != kExchangeDone) return session.Fail(file + " n'a pas pu être écrit");
  if (session.options().json) session.out() << ExchangeLine({.result = result}) << '\n';
  return kDone;
}

int TellInsertion(CliSession& session, const InsertionMessages& messages, uint32_t added,
                  int result) {
  if (session.options().json) {
    session.out() << ExchangeLine({.result = result, .cards = added}) << '\n';
  } else {
    session.out() << FormatText(kCardsCreated, added) << '\n';
  }
  if (result == kExchangeDone) return kDone;
  if (result == kExchangeNotServed) return session.Fail("rien n'est inséré");
  return messages.told_failure() ? kRefused
                                 : session.Fail("toutes les fiches n'ont pas pu être insérées");
}

int Serve(CliSession& session, const ExchangeRequestJob& job) {
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  const int64_t before = directory->own_count();
  InsertionMessages messages(session);
  const int result = ServeExchangeRequest(*directory, job, messages);
  if (result == kExchangeRefused && directory->is_open()) {
    return session.Fail(FormatText(kNoAccess, job.file));
  }
  if (!session.CloseStores()) return kRefused;
  directory = session.Open();
  if (directory == nullptr) return kRefused;
  switch (job.type) {
    case ExchangeType::kLookUp:
      return TellLookUp(session, *directory, job.file, result);
    case ExchangeType::kRewrite:
      return TellRewrite(session, job.file, result);
    case ExchangeType::kInsert:
      break;
  }
  return TellInsertion(session, messages, static_cast<uint32_t>(directory->own_count() - before),
                       result);
}

int RunExchange(CliSession& session, const Arguments& arguments) {
  const std::optional<ExchangeType> type = TypeOf(arguments.Value("--type").value_or(""));
  if (!type) return session.WrongUsage("--type prend 6, 7 ou 8");
  const ExchangeRequestJob job{*type, arguments.positionals.front(), arguments.Has("--long")};
  if (!session.files().Exists(job.file) || session.files().IsFolder(job.file)) {
    return session.Fail(FormatText(kNoAccess, job.file));
  }
  if (session.Family() == nullptr) return kRefused;
  if (session.Family()->Holds(job.file)) return session.Fail(FormatText(kOntoItself, job.file));
  if (!IsExchangeFile(session.files(), job)) {
    return session.Fail(job.file + " n'est pas un fichier d'échange");
  }
  return Serve(session, job);
}

}  // namespace

Command ExchangeCommand() {
  return {.name = "exchange",
          .summary = "Sert la demande qu'une autre application a laissée dans un fichier d'échange",
          .details =
              "6 cherche un nom et répond dans le FICHIER ; affiche la ligne, le nom et le numéro. "
              "7 remet la demande en forme. 8 insère les fiches du FICHIER, puis l'efface ; une "
              "fiche qui existe déjà est insérée à neuf (o), sur la base de l'ancienne (n) ou pas "
              "du tout.",
          .usage = "FICHIER",
          .least = 1,
          .most = 1,
          .options = {{"--type", "TYPE", "6, 7 ou 8"},
                      {"--long", "", "une réponse longue, avec le nom de la personne"}},
          .run = RunExchange};
}

}  // namespace carnetel
