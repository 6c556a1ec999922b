#include "cli/run_cli.h"

#include <iterator>
#include <ostream>

#include "cli/cli_session.h"
#include "cli/command_line.h"
#include "cli/commands.h"
#include "cli/help_text.h"

namespace carnetel {
namespace {

void Append(std::vector<Command>* commands, std::vector<Command> more) {
  commands->insert(commands->end(), std::make_move_iterator(more.begin()),
                   std::make_move_iterator(more.end()));
}

std::vector<Command> CollectCommands() {
  std::vector<Command> commands;
  Append(&commands, DirectoryCommands());
  Append(&commands, UpkeepCommands());
  Append(&commands, ListCommands());
  Append(&commands, CardCommands());
  Append(&commands, SelectionCommands());
  Append(&commands, GroupCommands());
  Append(&commands, TransferCommands());
  Append(&commands, ParameterCommands());
  commands.push_back(LayoutCommand());
  commands.push_back(PrintCommand());
  commands.push_back(ExtractCommand());
  commands.push_back(ExchangeCommand());
  commands.push_back(CaptureCommand());
  commands.push_back(BatchCommand());
  return commands;
}

int RunCommand(const CommandLine& line, const CliEnvironment& environment) {
  CliSession session(environment, line.global);
  int status = line.command->run(session, line.arguments);
  if (!session.Close() && status == kDone) status = kRefused;
  if (environment.interrupted() && status == kDone) status = session.Fail("interrompu");
  environment.out.flush();
  if (environment.out || status != kDone) return status;
  if (!environment.reader_left()) session.Fail("la sortie standard ne prend plus rien");
  return kRefused;
}

int TellWrongUsage(const CommandLine& line, const CliEnvironment& environment) {
  CliSession session(environment, line.global);
  session.WrongUsage(line.error);
  if (!line.global.json) environment.err << ShortHelp(line.command);
  return kWrongUsage;
}

}  // namespace

const std::vector<Command>& AllCommands() {
  static const std::vector<Command> commands = CollectCommands();
  return commands;
}

int RunCli(const std::vector<std::string>& arguments, const CliEnvironment& environment) {
  const CommandLine line = ParseToolLine(arguments, AllCommands());
  if (line.error.empty() && line.help) {
    environment.out << (line.command != nullptr ? CommandHelp(*line.command)
                                                : ToolHelp(AllCommands()));
    return kDone;
  }
  if (line.error.empty() && line.version) {
    environment.out << "carnetel-cli " << environment.version << '\n';
    return kDone;
  }
  if (!line.error.empty()) return TellWrongUsage(line, environment);
  return RunCommand(line, environment);
}

}  // namespace carnetel
