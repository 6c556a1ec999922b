// The commands of the tool, by subject.
#pragma once

#include <vector>

#include "cli/command.h"

namespace carnetel {

[[nodiscard]] std::vector<Command> DirectoryCommands();  // create info check describe destroy
[[nodiscard]] std::vector<Command> UpkeepCommands();     // index recover
[[nodiscard]] std::vector<Command> CardCommands();       // show add edit delete
[[nodiscard]] std::vector<Command> ListCommands();       // list find mark unmark
[[nodiscard]] std::vector<Command> SelectionCommands();  // select criteria
[[nodiscard]] std::vector<Command> GroupCommands();      // group
[[nodiscard]] std::vector<Command> TransferCommands();   // import export
[[nodiscard]] std::vector<Command> ParameterCommands();  // parameters
[[nodiscard]] Command LayoutCommand();
[[nodiscard]] Command PrintCommand();
[[nodiscard]] Command ExtractCommand();
[[nodiscard]] Command ExchangeCommand();
[[nodiscard]] Command CaptureCommand();
[[nodiscard]] Command BatchCommand();

// All of them, in the order of the help.
[[nodiscard]] const std::vector<Command>& AllCommands();

}  // namespace carnetel
