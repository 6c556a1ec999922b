// The run from the open directory to the last word to the caller, apart from its windows: which
// role runs, what follows when it was not answered, and in which order the run ends. One command
// line, one role, one exit.
#pragma once

#include <cstdint>
#include <optional>

#include "shell/caller_notifier.h"
#include "shell/chooser_commands.h"
#include "shell/dialog_host.h"
#include "shell/session.h"

namespace carnetel {

// The windows of the roles. Each returns when its window has ended.
class RoleWindows {
 public:
  virtual ~RoleWindows() = default;
  virtual void RunMainWindow() = 0;
  // What the caller is told of it.
  virtual int32_t RunChooser(ChooserKind kind) = 0;
  // The dialogs of a role that has no window of its own.
  virtual DialogHost& Dialogs() = 0;
};

// Opens the directory and runs the session's role. The role closes its stores, then the caller is
// told, then the profile notes the directory, whatever the role was. Without a directory every role
// but the main window is left out, and nobody is told. Nothing at all is done when files cannot be
// shared among seats: the user knows by then.
void RunSession(Session& session, RoleWindows& windows, const CallerNotifier& caller);

// Roles 6, 7 and 8, on the session's open directory. `*chooser_follows`: the request was not
// answered, and the user is to choose among the cards instead.
[[nodiscard]] int RunExchangeRole(Session& session, bool* chooser_follows);

// Roles 3, 4 and 5; afterwards the directory is closed.
void RunEnrichmentRole(Session& session, DialogHost& dialogs);

// A desktop that shuts down has to wait for the run, whatever it does: it is told so, and refused.
void RefuseShutdown(MessageForm& messages, const std::function<void()>& refuse);

struct RoleNotification {
  int message = 0;
  int32_t w_param = 0;
  int32_t l_param = 0;

  friend bool operator==(const RoleNotification&, const RoleNotification&) = default;
};
// Nothing for the main window, and for a launch type without a role. `result`: of the role that
// ended last.
[[nodiscard]] std::optional<RoleNotification> NotificationOf(const Role& role, int32_t result);

}  // namespace carnetel
