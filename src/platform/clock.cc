#include "platform/clock.h"

#include <chrono>

namespace carnetel {

int64_t SystemClock::Now() {
  const auto since_1970 = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::floor<std::chrono::seconds>(since_1970).count();
}

}  // namespace carnetel
