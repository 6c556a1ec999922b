#include "shell/caller_notifier.h"

#include <ostream>

#include "base/format_text.h"
#include "platform/line_sender.h"

namespace carnetel {

void CallerNotifier::NotifyCaller(int message, int32_t w_param, int32_t l_param) const {
  if (caller_window_ == 0) return;
  const BrokenPipeGuard guard;
  const std::string line = FormatPrintf("%d %d %d", {message, w_param, l_param});
  output_ << line << std::endl;
  const std::string path = environment_("CARNETEL_NOTIFY");
  if (!path.empty()) SendLine(path, line);
  if (send_to_window_) send_to_window_(caller_window_, message, w_param, l_param);
}

}  // namespace carnetel
