#include "shell/roles.h"

#include "link/exchange_request.h"
#include "transfer/enrichment.h"

namespace carnetel {
namespace {

constexpr int kDone = 1;
constexpr int kProgramTitle = 51;
constexpr int kStillActive = 264;

int32_t RunExchange(Session& session, RoleWindows& windows) {
  bool chooser_follows = false;
  const int result = RunExchangeRole(session, &chooser_follows);
  return chooser_follows ? windows.RunChooser(ChooserKind::kSingle) : result;
}

// What the caller is told of the role.
int32_t RunRole(Session& session, RoleWindows& windows) {
  switch (session.role().command) {
    case kRoleMainWindow:
      windows.RunMainWindow();
      return 0;
    case kRoleChooserSingle:
      return windows.RunChooser(ChooserKind::kSingle);
    case kRoleChooserMany:
      return windows.RunChooser(ChooserKind::kMany);
    case static_cast<int>(EnrichmentMode::kSilent):
    case static_cast<int>(EnrichmentMode::kReview):
    case static_cast<int>(EnrichmentMode::kEdit):
      RunEnrichmentRole(session, windows.Dialogs());
      return 0;
    case static_cast<int>(ExchangeType::kLookUp):
    case static_cast<int>(ExchangeType::kRewrite):
    case static_cast<int>(ExchangeType::kInsert):
      return RunExchange(session, windows);
    default:
      return 0;
  }
}

}  // namespace

void RunSession(Session& session, RoleWindows& windows, const CallerNotifier& caller) {
  if (session.sharing_failed()) return;
  bool fell_back = false;
  const bool opened = session.OpenAtStart(&fell_back);
  if (opened || session.role().command == kRoleMainWindow) {
    const int32_t result = RunRole(session, windows);
    session.CloseDirectory();
    const std::optional<RoleNotification> told = NotificationOf(session.role(), result);
    if (told) caller.NotifyCaller(told->message, told->w_param, told->l_param);
  }
  session.Exit();
}

void RefuseShutdown(MessageForm& messages, const std::function<void()>& refuse) {
  messages.ShowMessage(MessageStyle::kError, kProgramTitle, kStillActive);
  refuse();
}

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
