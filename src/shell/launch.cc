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
    // A higher number must not pass for one of the commands above (110 - 10 is the main window's).
    role.command = type <= kLastNumberedRole ? type : kRoleNone;
    role.parameter = high | 1;
    return role;
  }
  role.parameter = high | (static_cast<uint32_t>(type) & 0xFFFF);
  switch (type) {
    case 0:
      role.command = kRoleMainWindow;
      break;
    case 1:
      role.command = kRoleChooserSingle;
      break;
    case 2:
      role.command = kRoleChooserMany;
      break;
    default:
      role.command = kRoleNone;
      break;
  }
  return role;
}

bool IsExchangeLaunch(const StartupRequest& request) {
  return request.caller_argument == kExchangeArgument ||
         (request.launch_type >= 3 && request.launch_type <= 5);
}

}  // namespace carnetel
