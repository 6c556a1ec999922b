#include "platform/clock.h"

#include <time.h>

#include <chrono>

namespace carnetel {

int64_t SystemClock::Now() {
  const auto since_1970 = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::floor<std::chrono::seconds>(since_1970).count();
}

int64_t SystemClock::LocalNow() {
  const int64_t now = Now();
  const time_t seconds = static_cast<time_t>(now);
  struct tm local = {};
  ::tzset();
  return ::localtime_r(&seconds, &local) == nullptr ? now : now + local.tm_gmtoff;
}

}  // namespace carnetel
