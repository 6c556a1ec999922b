#include "platform/clock.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <string>

namespace carnetel {
namespace {

// Puts the process into another time zone for one test.
class ZoneOfTest {
 public:
  explicit ZoneOfTest(const char* zone) {
    const char* before = ::getenv("TZ");
    had_one_ = before != nullptr;
    if (had_one_) before_ = before;
    ::setenv("TZ", zone, 1);
  }
  ~ZoneOfTest() {
    if (had_one_) {
      ::setenv("TZ", before_.c_str(), 1);
    } else {
      ::unsetenv("TZ");
    }
  }
  ZoneOfTest(const ZoneOfTest&) = delete;
  ZoneOfTest& operator=(const ZoneOfTest&) = delete;

 private:
  bool had_one_ = false;
  std::string before_;
};

int64_t HoursAhead() {
  SystemClock clock;
  const int64_t utc = clock.Now();
  return (clock.LocalNow() - utc + 60) / 3600;
}

TEST(SystemClock, LocalTimeFollowsTheZone) {
  const ZoneOfTest zone("TST-05");  // east of Greenwich, in the notation of POSIX
  EXPECT_EQ(HoursAhead(), 5);
}

TEST(SystemClock, LocalTimeFollowsAChangeOfZone) {
  const ZoneOfTest east("TST-11");
  EXPECT_EQ(HoursAhead(), 11);
  const ZoneOfTest greenwich("UTC0");
  EXPECT_EQ(HoursAhead(), 0);
}

TEST(FakeClock, LocalTimeIsAheadByWhatATestSays) {
  FakeClock clock(1000);
  EXPECT_EQ(clock.LocalNow(), 1000);
  clock.SetLocalAhead(3600);
  EXPECT_EQ(clock.LocalNow(), 4600);
  EXPECT_EQ(clock.Now(), 1000);
}

}  // namespace
}  // namespace carnetel
