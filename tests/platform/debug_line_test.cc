#include "platform/debug_line.h"

#include <gtest/gtest.h>

#include <string>

namespace carnetel {
namespace {

std::string Written(const std::string& setting, std::string_view text) {
  const DebugLine line = DebugLineFor([&setting](const std::string& name) {
    return name == "CARNETEL_DEBUG" ? setting : std::string();
  });
  testing::internal::CaptureStderr();
  line(text);
  return testing::internal::GetCapturedStderr();
}

TEST(DebugLine, SaysNothingUnlessAskedTo) {
  EXPECT_EQ(Written("", "quiet"), "");
}

TEST(DebugLine, EndsWithALineFeed) {
  EXPECT_EQ(Written("1", " a b "), " a b \n");
}

TEST(DebugLine, CutsALongLine) {
  EXPECT_EQ(Written("1", std::string(300, 'x')), std::string(271, 'x') + '\n');
}

}  // namespace
}  // namespace carnetel
