// The roles that a sibling program starts, apart from their windows: the exchange of cards, the
// enrichment, and what the caller is told when a role has ended.
#pragma once

#include <cstdint>
#include <optional>

#include "shell/dialog_host.h"
#include "shell/session.h"

namespace carnetel {

// Roles 6, 7 and 8, on the session's open directory. `*chooser_follows`: the request was not
// answered, and the user is to choose among the cards instead.
[[nodiscard]] int RunExchangeRole(Session& session, bool* chooser_follows);

// Roles 3, 4 and 5; afterwards the directory is closed.
void RunEnrichmentRole(Session& session, DialogHost& dialogs);

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
