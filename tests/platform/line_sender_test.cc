#include "platform/line_sender.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>

namespace carnetel {
namespace {

TEST(BrokenPipeGuard, WritingToSomebodyWhoHasGoneFailsAndNoMore) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  ::close(ends[0]);
  {
    const BrokenPipeGuard guard;
    EXPECT_EQ(::write(ends[1], "x", 1), -1);
    EXPECT_EQ(errno, EPIPE);
  }
  ::close(ends[1]);
}

TEST(BrokenPipeGuard, LeavesTheSignalAsItWas) {
  const auto own = [](int) {};
  const auto former = ::signal(SIGPIPE, own);
  { const BrokenPipeGuard guard; }
  EXPECT_EQ(::signal(SIGPIPE, former), +own);
}

}  // namespace
}  // namespace carnetel
