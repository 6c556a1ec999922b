// The whole tool as a function: what main() calls, and what tests call in its place.
#pragma once

#include <string>
#include <vector>

#include "cli/cli_environment.h"

namespace carnetel {

// `arguments` without the program's name. Answers the exit status: 0 done, 1 refused or failed, 2
// wrong usage.
[[nodiscard]] int RunCli(const std::vector<std::string>& arguments,
                         const CliEnvironment& environment);

}  // namespace carnetel
