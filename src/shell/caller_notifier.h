// Tells the program that started this one what became of it: a message number and two values. The
// line `1524 <wParam> <lParam>` goes to standard output and to the file or pipe that
// $CARNETEL_NOTIFY names; a window on screen can be told besides. Nobody waits, and nothing that
// goes wrong here matters to the run.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>

#include "platform/folders.h"

namespace carnetel {

// The role of a chooser, an enrichment or an exchange has ended.
inline constexpr int kNotifyRoleEnded = 1524;
// An insertion through the exchange file has ended.
inline constexpr int kNotifyInserted = 1424;

class CallerNotifier {
 public:
  using WindowSender = std::function<void(uint32_t window, int message, int32_t w, int32_t l)>;

  // `caller_window` 0: nobody is told anything.
  CallerNotifier(uint32_t caller_window, std::ostream& output, Environment environment,
                 WindowSender send_to_window = {})
      : caller_window_(caller_window),
        output_(output),
        environment_(std::move(environment)),
        send_to_window_(std::move(send_to_window)) {}

  void NotifyCaller(int message, int32_t w_param, int32_t l_param) const;

 private:
  uint32_t caller_window_;
  std::ostream& output_;
  Environment environment_;
  WindowSender send_to_window_;
};

}  // namespace carnetel
