#include "platform/interrupt.h"

#include <gtest/gtest.h>

namespace carnetel {
namespace {

int former_calls = 0;

extern "C" void FormerHandler(int) {
  ++former_calls;
}

class InterruptTest : public ::testing::Test {
 protected:
  InterruptTest() {
    former_calls = 0;
    struct sigaction action = {};
    action.sa_handler = FormerHandler;
    ::sigaction(SIGINT, &action, &outside_);
  }
  ~InterruptTest() override { ::sigaction(SIGINT, &outside_, nullptr); }

  struct sigaction outside_ = {};
};

TEST_F(InterruptTest, TheSignalIsToldAndNothingElseHappens) {
  const InterruptFlag flag;
  EXPECT_FALSE(flag.requested());
  ::raise(SIGINT);
  EXPECT_TRUE(flag.requested());
  EXPECT_TRUE(flag.requested());
  EXPECT_EQ(former_calls, 0);
}

TEST_F(InterruptTest, TheFormerHandlerComesBack) {
  { const InterruptFlag flag; }
  ::raise(SIGINT);
  EXPECT_EQ(former_calls, 1);
}

TEST_F(InterruptTest, ANewFlagDoesNotKnowOldSignals) {
  {
    const InterruptFlag flag;
    ::raise(SIGINT);
    EXPECT_TRUE(flag.requested());
  }
  const InterruptFlag later;
  EXPECT_FALSE(later.requested());
}

TEST_F(InterruptTest, AFlagWithinAnotherLeavesItTheSignal) {
  const InterruptFlag outer;
  ::raise(SIGINT);
  {
    const InterruptFlag inner;
    EXPECT_FALSE(inner.requested());
  }
  EXPECT_TRUE(outer.requested());
  ::raise(SIGINT);
  EXPECT_EQ(former_calls, 0);
}

}  // namespace
}  // namespace carnetel
