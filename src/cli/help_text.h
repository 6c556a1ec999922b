// The help of the tool and of each command, in French, 80 columns wide.
#pragma once

#include <span>
#include <string>

#include "cli/command.h"

namespace carnetel {

// Two lines: the usage of a command, or of the tool when it is null, and where to read more.
[[nodiscard]] std::string ShortHelp(const Command* command);
[[nodiscard]] std::string ToolHelp(std::span<const Command> commands);
[[nodiscard]] std::string CommandHelp(const Command& command);

}  // namespace carnetel
