#include "platform/instance_guard.h"

#include <gtest/gtest.h>

#include "tests/support/fresh_folder.h"

namespace carnetel {
namespace {

Environment RuntimeFolder(const std::string& folder) {
  return [folder](const std::string& name) {
    return name == "XDG_RUNTIME_DIR" ? folder : std::string();
  };
}

TEST(InstanceGuard, SecondInstanceGetsNoneUntilTheFirstEnds) {
  const FreshFolder folder;
  const Environment environment = RuntimeFolder(folder.path());
  std::unique_ptr<FileLock> first = TakeInstanceGuard(environment);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(TakeInstanceGuard(environment), nullptr);
  first.reset();
  EXPECT_NE(TakeInstanceGuard(environment), nullptr);
}

TEST(InstanceGuard, UsersWithFoldersOfTheirOwnDoNotMeet) {
  const FreshFolder one;
  const FreshFolder other;
  const std::unique_ptr<FileLock> first = TakeInstanceGuard(RuntimeFolder(one.path()));
  EXPECT_NE(first, nullptr);
  EXPECT_NE(TakeInstanceGuard(RuntimeFolder(other.path())), nullptr);
}

}  // namespace
}  // namespace carnetel
