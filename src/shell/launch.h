// From the launch type of the command line to the role of the run. The process has exactly one
// role: one command line, one role, one exit.
#pragma once

#include <cstdint>

#include "shell/command_line.h"

namespace carnetel {

// The commands that start a role.
inline constexpr int32_t kRoleMainWindow = 100;
inline constexpr int32_t kRoleChooserMany = 105;
inline constexpr int32_t kRoleChooserSingle = 119;
// Launch types 3 to 8 are their own command; a launch type without a role runs nothing.
inline constexpr int32_t kLastNumberedRole = 8;
inline constexpr int32_t kRoleNone = 0;

// The number 16 is a number kind of the chooser and marks an exchange launch at once.
inline constexpr int32_t kExchangeArgument = 16;

struct Role {
  int32_t command = kRoleMainWindow;
  // The number of the command line in the high 16 bits, the launch type or 1 in the low ones.
  uint32_t parameter = 0;
  // The launch type that notifications carry: 9 and 19 become 12, nothing else changes.
  int32_t effective_launch_type = 0;
  bool viafax_output = false;
  bool long_records = false;
};

[[nodiscard]] Role RoleOf(const StartupRequest& request);

// A missing directory is then looked for in the folder of the exchange file, and the sibling
// applications are out of reach.
[[nodiscard]] bool IsExchangeLaunch(const StartupRequest& request);

}  // namespace carnetel
