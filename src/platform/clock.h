// The time of day behind one small class, so that tests choose it. Times are whole seconds since
// 1970-01-01 00:00 UTC, as in the change stamp of a directory and the file times it comes from.
#pragma once

#include <cstdint>

namespace carnetel {

class Clock {
 public:
  virtual ~Clock() = default;
  [[nodiscard]] virtual int64_t Now() = 0;
  // The same instant counted in local time: for dates that a user reads.
  [[nodiscard]] virtual int64_t LocalNow() = 0;
};

class SystemClock : public Clock {
 public:
  [[nodiscard]] int64_t Now() override;
  [[nodiscard]] int64_t LocalNow() override;
};

// Stands still until a test moves it.
class FakeClock : public Clock {
 public:
  explicit FakeClock(int64_t now = 0) : now_(now) {}

  [[nodiscard]] int64_t Now() override { return now_; }
  [[nodiscard]] int64_t LocalNow() override { return now_ + local_ahead_; }
  void Set(int64_t now) { now_ = now; }
  void SetLocalAhead(int64_t seconds) { local_ahead_ = seconds; }
  void Advance(int64_t seconds) { now_ += seconds; }

 private:
  int64_t now_;
  int64_t local_ahead_ = 0;
};

}  // namespace carnetel
