// The command batch: the commands of a script, one a line, on one open directory.

#include <istream>
#include <ostream>
#include <sstream>

#include "base/utf8.h"
#include "cli/cli_session.h"
#include "cli/commands.h"
#include "cli/help_text.h"
#include "cli/script_line.h"

namespace carnetel {
namespace {

constexpr int kNoAccess = 43;

int RunLine(CliSession& session, const std::string& text) {
  const std::optional<std::vector<std::string>> words = SplitScriptLine(text);
  if (!words) return session.WrongUsage("guillemet non fermé");
  if (words->empty()) return kDone;
  const CommandLine line = ParseScriptCommand(*words, AllCommands());
  if (line.help && line.command != nullptr) {
    session.out() << CommandHelp(*line.command);
    return kDone;
  }
  if (!line.error.empty()) return session.WrongUsage(line.error);
  if (line.command == nullptr) return session.WrongUsage("il manque une commande");
  return line.command->run(session, line.arguments);
}

int RunLines(CliSession& session, std::istream& script, bool keep_going) {
  int status = kDone;
  std::string text;
  for (int number = 1; !session.interrupted() && std::getline(script, text); ++number) {
    session.messages().set_script_line(number);
    if (number == 1) DropByteOrderMark(text);
    const int result = RunLine(session, text);
    if (result == kDone) continue;
    status = keep_going ? kRefused : result;
    if (!keep_going) break;
  }
  session.messages().set_script_line(0);
  return status;
}

int RunBatch(CliSession& session, const Arguments& arguments) {
  if (session.in_script) return session.WrongUsage("batch ne peut pas figurer dans un script");
  const bool keep_going = arguments.Has("--keep-going");
  session.in_script = true;
  if (arguments.positionals.empty()) {
    session.script_from_input = true;
    return RunLines(session, session.environment().in, keep_going);
  }
  const std::string& path = arguments.positionals.front();
  const std::optional<std::string> content = ReadText(session.files(), path);
  if (!content) return session.Fail(FormatText(kNoAccess, path));
  std::istringstream script(*content);
  return RunLines(session, script, keep_going);
}

}  // namespace

Command BatchCommand() {
  return {.name = "batch",
          .summary = "Exécute les commandes d'un script, le carnetel restant ouvert",
          .details =
              "Une commande par ligne, avec les guillemets du shell ; # commence un "
              "commentaire. Sans SCRIPT, lit l'entrée standard. S'arrête au premier échec "
              "et donne sa ligne. Les options générales se donnent devant batch.",
          .usage = "[SCRIPT]",
          .most = 1,
          .options = {{"--keep-going", "", "continue après un échec ; le code de retour est 1"}},
          .run = RunBatch};
}

}  // namespace carnetel
