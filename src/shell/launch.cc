#include "shell/launch.h"

namespace carnetel {

Role RoleOf(const StartupRequest& request) {
  Role role;
  int32_t type = request.launch_type;
  if (type == 9 || type == 19) {
    role.viafax_output = true;
    type = 12;
  }
  role.effective_launch_type = type;
  if (type >= 10) {
    role.long_records = true;
    type -= 10;
  }
  const uint32_t high = static_cast<uint32_t>(request.caller_argument) << 16;
  if (type >= 3) {
    role.command = type;
    role.parameter = high | 1;
    return role;
  }
  role.parameter = high | (static_cast<uint32_t>(type) & 0xFFFF);
  switch (type) {
    case 0:
      role.command = kRoleMainWindow;
      break;
    case 1:
      role.command = kRoleChooserMarking;
      break;
    case 2:
      role.command = kRoleChooserPlain;
      break;
    default:
      // A negative type is no role: nothing runs.
      role.command = type;
      break;
  }
  return role;
}

bool IsExchangeLaunch(const StartupRequest& request) {
  return request.caller_argument == kExchangeArgument ||
         (request.launch_type >= 3 && request.launch_type <= 5);
}

}  // namespace carnetel
