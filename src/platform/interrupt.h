// Tells a long operation that the user pressed Ctrl+C, so that it ends at a moment when the files
// are whole. While an InterruptFlag lives, SIGINT no longer ends the process; afterwards it does
// again what it did before.
#pragma once

#include <signal.h>

namespace carnetel {

class InterruptFlag {
 public:
  InterruptFlag();
  ~InterruptFlag();
  InterruptFlag(const InterruptFlag&) = delete;
  InterruptFlag& operator=(const InterruptFlag&) = delete;

  // True once SIGINT came during the life of this object.
  [[nodiscard]] bool requested() const;

 private:
  struct sigaction former_ = {};
  unsigned count_at_start_;
};

}  // namespace carnetel
