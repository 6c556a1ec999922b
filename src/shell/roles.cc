#include "shell/roles.h"

#include "link/exchange_request.h"
#include "shell/caller_notifier.h"
#include "transfer/enrichment.h"

namespace carnetel {
namespace {

constexpr int kDone = 1;

}  // namespace

int RunExchangeRole(Session& session, bool* chooser_follows) {
  ExchangeRequestJob job;
  job.type = static_cast<ExchangeType>(session.role().command);
  job.file = session.request().exchange_file_path;
  job.long_records = session.role().long_records;
  const int result = ServeExchangeRequest(*session.directory(), job, session.services().messages);
  *chooser_follows = result != kDone && job.type != ExchangeType::kInsert;
  if (!*chooser_follows) session.CloseDirectory();
  return result;
}

void RunEnrichmentRole(Session& session, DialogHost& dialogs) {
  EnrichmentForm form(*session.directory(), session.services().messages,
                      static_cast<EnrichmentMode>(session.role().command),
                      session.request().exchange_file_path, session.request().app_argument);
  if (form.can_run()) dialogs.RunEnrichment(form);
  form.Finish();
  session.CloseDirectory();
}

std::optional<RoleNotification> NotificationOf(const Role& role, int32_t result) {
  const int32_t type = role.effective_launch_type;
  switch (role.command) {
    case kRoleChooserMany:
    case kRoleChooserSingle:
      return RoleNotification{kNotifyRoleEnded, result, 0};
    case 3:
    case 4:
    case 5:
      return RoleNotification{kNotifyRoleEnded, 0, type};
    case 6:
    case 7:
      return RoleNotification{kNotifyRoleEnded, result, type};
    case 8:
      return RoleNotification{kNotifyInserted, result, type};
    default:
      return std::nullopt;
  }
}

}  // namespace carnetel
