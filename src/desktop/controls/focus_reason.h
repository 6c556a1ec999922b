// Tells a user who goes to another control from a desktop that merely borrows the focus.
#pragma once

#include <Qt>

namespace carnetel::desktop {

// False for menus, popups of combo boxes and other windows: after those the focus comes back by
// itself, and nothing that hangs on leaving or entering a control may happen.
[[nodiscard]] constexpr bool IsUserFocusChange(Qt::FocusReason reason) {
  return reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason &&
         reason != Qt::ActiveWindowFocusReason;
}

}  // namespace carnetel::desktop
