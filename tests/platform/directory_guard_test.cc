#include "platform/directory_guard.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>

#include "tests/support/fresh_folder.h"

namespace carnetel {
namespace {

using namespace std::chrono_literals;

class DirectoryGuardTest : public ::testing::Test {
 protected:
  // The lock file is never removed by the program; a test has no other users.
  ~DirectoryGuardTest() override {
    ::unlink(DirectoryGuard::LockFilePath(address_).c_str());
    ::unlink(DirectoryGuard::LockFilePath(other_).c_str());
  }

  FreshFolder folder_;
  std::string address_ = folder_.path() + "X.ADR";
  std::string other_ = folder_.path() + "Y.ADR";
};

TEST_F(DirectoryGuardTest, OneHoldsTheOtherWaitsInVain) {
  auto first = DirectoryGuard::Take(address_, 0ms);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(DirectoryGuard::Take(address_, 0ms), nullptr);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(DirectoryGuard::Take(address_, 50ms), nullptr);
  EXPECT_GE(std::chrono::steady_clock::now() - start, 50ms);
  first.reset();
  EXPECT_NE(DirectoryGuard::Take(address_, 0ms), nullptr);
}

TEST_F(DirectoryGuardTest, TwoDirectoriesDoNotMeet) {
  const auto first = DirectoryGuard::Take(address_, 0ms);
  EXPECT_NE(first, nullptr);
  EXPECT_NE(DirectoryGuard::Take(other_, 0ms), nullptr);
}

TEST_F(DirectoryGuardTest, TheWaitEndsWhenTheHolderLetsGo) {
  auto first = DirectoryGuard::Take(address_, 0ms);
  ASSERT_NE(first, nullptr);
  std::unique_ptr<DirectoryGuard> second;
  std::thread waiter([&] { second = DirectoryGuard::Take(address_, 60s); });
  first.reset();
  waiter.join();
  EXPECT_NE(second, nullptr);
}

TEST_F(DirectoryGuardTest, TheLockFileStaysForEverybody) {
  const mode_t former = ::umask(0077);
  DirectoryGuard::Take(address_, 0ms).reset();
  ::umask(former);
  struct stat status = {};
  ASSERT_EQ(::stat(DirectoryGuard::LockFilePath(address_).c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, mode_t{0666});
}

TEST_F(DirectoryGuardTest, ALinkInItsPlaceIsNotFollowed) {
  const std::string lock = DirectoryGuard::LockFilePath(address_);
  ASSERT_EQ(::symlink((folder_.path() + "victim").c_str(), lock.c_str()), 0);
  EXPECT_EQ(DirectoryGuard::Take(address_, 0ms), nullptr);
  EXPECT_NE(::access((folder_.path() + "victim").c_str(), F_OK), 0);
}

// Programs of different builds must come to the same name: FNV-1a of "a" is af63dc4c8601ec8c.
TEST(DirectoryGuardName, IsTheSameInEveryBuild) {
  EXPECT_EQ(DirectoryGuard::LockFilePath("a"), "/tmp/carnetel-af63dc4c8601ec8c.lock");
  EXPECT_EQ(DirectoryGuard::LockFilePath(""), "/tmp/carnetel-cbf29ce484222325.lock");
}

// A process of its own that takes the guard, says so and waits to be killed.
class HoldingProcess {
 public:
  explicit HoldingProcess(const std::string& address) {
    int ends[2];
    if (::pipe(ends) != 0) return;
    child_ = ::fork();
    if (child_ == 0) {
      const auto guard = DirectoryGuard::Take(address, 0ms);
      const char answer = guard != nullptr ? 'y' : 'n';
      if (::write(ends[1], &answer, 1) == 1) ::pause();
      ::_exit(0);
    }
    char answer = 'n';
    holds_ = ::read(ends[0], &answer, 1) == 1 && answer == 'y';
    ::close(ends[0]);
    ::close(ends[1]);
  }
  ~HoldingProcess() { Kill(); }

  [[nodiscard]] bool holds() const { return holds_; }
  void Kill() {
    if (child_ <= 0) return;
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
    child_ = 0;
  }

 private:
  pid_t child_ = 0;
  bool holds_ = false;
};

TEST_F(DirectoryGuardTest, AnotherProcessHoldsItUntilItDies) {
  HoldingProcess other(address_);
  ASSERT_TRUE(other.holds());
  EXPECT_EQ(DirectoryGuard::Take(address_, 0ms), nullptr);
  other.Kill();
  EXPECT_NE(DirectoryGuard::Take(address_, 0ms), nullptr);
}

TEST_F(DirectoryGuardTest, AnotherProcessFindsItHeld) {
  const auto guard = DirectoryGuard::Take(address_, 0ms);
  ASSERT_NE(guard, nullptr);
  EXPECT_FALSE(HoldingProcess(address_).holds());
}

}  // namespace
}  // namespace carnetel
