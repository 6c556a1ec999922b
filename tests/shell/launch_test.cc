#include "shell/launch.h"

#include <gtest/gtest.h>

namespace carnetel {
namespace {

struct Launch {
  int32_t type;
  int32_t command;
  uint32_t parameter;  // with the number 5 of the command line in the high half
  int32_t effective;
  bool long_records;
  bool viafax;
};

class LaunchType : public ::testing::TestWithParam<Launch> {};

TEST_P(LaunchType, GivesItsRole) {
  const Launch& expected = GetParam();
  StartupRequest request;
  request.launch_type = expected.type;
  request.caller_argument = 5;
  const Role role = RoleOf(request);
  EXPECT_EQ(role.command, expected.command);
  EXPECT_EQ(role.parameter, expected.parameter);
  EXPECT_EQ(role.effective_launch_type, expected.effective);
  EXPECT_EQ(role.long_records, expected.long_records);
  EXPECT_EQ(role.viafax_output, expected.viafax);
}

INSTANTIATE_TEST_SUITE_P(
    WholeTable, LaunchType,
    ::testing::Values(
        Launch{0, 100, 0x50000, 0, false, false}, Launch{1, 119, 0x50001, 1, false, false},
        Launch{2, 105, 0x50002, 2, false, false}, Launch{3, 3, 0x50001, 3, false, false},
        Launch{4, 4, 0x50001, 4, false, false}, Launch{5, 5, 0x50001, 5, false, false},
        Launch{6, 6, 0x50001, 6, false, false}, Launch{7, 7, 0x50001, 7, false, false},
        Launch{8, 8, 0x50001, 8, false, false}, Launch{9, 105, 0x50002, 12, true, true},
        Launch{10, 100, 0x50000, 10, true, false}, Launch{11, 119, 0x50001, 11, true, false},
        Launch{12, 105, 0x50002, 12, true, false}, Launch{13, 3, 0x50001, 13, true, false},
        Launch{14, 4, 0x50001, 14, true, false}, Launch{15, 5, 0x50001, 15, true, false},
        Launch{16, 6, 0x50001, 16, true, false}, Launch{17, 7, 0x50001, 17, true, false},
        Launch{18, 8, 0x50001, 18, true, false}, Launch{19, 105, 0x50002, 12, true, true}));

TEST(Launch, NumbersOutsideOfTheTableRunNothing) {
  // Among them those that would become a role's own number.
  for (const int32_t type : {-1, 20, 99, 100, 105, 110, 115, 119, 129}) {
    StartupRequest request;
    request.launch_type = type;
    const Role role = RoleOf(request);
    EXPECT_EQ(role.command, kRoleNone) << type;
    EXPECT_EQ(role.effective_launch_type, type);
  }
}

TEST(Launch, NegativeNumbersOfTheCallerFillTheHighHalf) {
  StartupRequest request;
  request.launch_type = 12;
  request.caller_argument = -1;
  EXPECT_EQ(RoleOf(request).parameter, 0xFFFF0002u);
}

TEST(Launch, ExchangeIsToldByTheRawTypeOrTheNumber16) {
  for (int32_t type = 0; type < 20; ++type) {
    StartupRequest request;
    request.launch_type = type;
    EXPECT_EQ(IsExchangeLaunch(request), type >= 3 && type <= 5) << type;
    request.caller_argument = 16;
    EXPECT_TRUE(IsExchangeLaunch(request)) << type;
  }
}

}  // namespace
}  // namespace carnetel
