// The help of the tool and of each command, in French, 80 columns wide.
#pragma once

#include <span>
#include <string>

#include "cli/command.h"

namespace carnetel {

[[nodiscard]] std::string ShortHelp();
[[nodiscard]] std::string ToolHelp(std::span<const Command> commands);
[[nodiscard]] std::string CommandHelp(const Command& command);

}  // namespace carnetel
