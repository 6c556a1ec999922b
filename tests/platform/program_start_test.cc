#include "platform/program_start.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <sstream>

#include "platform/posix_file_system.h"
#include "tests/support/fresh_folder.h"

namespace carnetel {
namespace {

class ProgramStartTest : public testing::Test {
 protected:
  // Runs a line of the shell, which knows this test's folder as $1.
  int Shell(const std::string& line) {
    return RunProgram({"sh", "-c", line, "sh", folder_.path()});
  }
  std::string TextOf(const std::string& name) {
    return ReadText(files_, folder_.path() + name).value_or("(missing)");
  }

  PosixFileSystem files_;
  FreshFolder folder_;
};

TEST_F(ProgramStartTest, TheExitStatusComesBack) {
  EXPECT_EQ(RunProgram({"true"}), 0);
  EXPECT_EQ(Shell("exit 7"), 7);
  EXPECT_EQ(RunProgram({"/bin/sh", "-c", "exit 255"}), 255);
}

TEST_F(ProgramStartTest, ASignalThatEndsItIsToldAsTheShellDoes) {
  EXPECT_EQ(Shell("kill -TERM $$"), 128 + SIGTERM);
}

TEST_F(ProgramStartTest, WhatCannotBeStartedIsMinusOne) {
  EXPECT_EQ(RunProgram({}), -1);
  EXPECT_EQ(RunProgram({""}), -1);
  EXPECT_EQ(RunProgram({"carnetel-no-such-program"}), -1);
  EXPECT_EQ(RunProgram({folder_.path()}), -1);
  std::ofstream(folder_.path() + "text") << "no program";
  EXPECT_EQ(RunProgram({folder_.path() + "text"}), -1);
}

TEST_F(ProgramStartTest, WordsArriveAsTheyAre) {
  const std::string line = "printf '<%s>' \"$@\" > \"$0\"";
  EXPECT_EQ(
      RunProgram({"sh", "-c", line, folder_.path() + "words", "a b", "", "$HOME; 'x'", "é\n"}), 0);
  EXPECT_EQ(TextOf("words"), "<a b><><$HOME; 'x'><é\n>");
}

TEST_F(ProgramStartTest, ItReadsNothingAndPrintsNowhere) {
  // Linux names what stands behind a descriptor.
  EXPECT_EQ(Shell("s=$(readlink /proc/$$/fd/0 /proc/$$/fd/1); echo \"$s\" > \"$1/streams\""), 0);
  EXPECT_EQ(TextOf("streams"), "/dev/null\n/dev/null\n");
  EXPECT_EQ(Shell("read line || echo end > \"$1/read\""), 0);
  EXPECT_EQ(TextOf("read"), "end\n");
}

int signals_seen = 0;

extern "C" void CountSignal(int) {
  ++signals_seen;
}

TEST_F(ProgramStartTest, ASignalDuringTheWaitDoesNotEndIt) {
  struct sigaction action = {};
  struct sigaction former = {};
  action.sa_handler = CountSignal;
  ::sigaction(SIGUSR1, &action, &former);
  signals_seen = 0;
  EXPECT_EQ(Shell("kill -USR1 $PPID; kill -USR1 $PPID; : > \"$1/after\"; exit 3"), 3);
  ::sigaction(SIGUSR1, &former, nullptr);
  EXPECT_GE(signals_seen, 1);
  EXPECT_EQ(TextOf("after"), "");
}

// Programs that nobody waits for tell of themselves through a pipe with a name.
class StartProgramTest : public ProgramStartTest {
 protected:
  StartProgramTest() { EXPECT_EQ(::mkfifo(Pipe().c_str(), 0600), 0); }

  [[nodiscard]] std::string Pipe() const { return folder_.path() + "pipe"; }
  // What the next program says; it waits for somebody to listen.
  [[nodiscard]] std::string Told() const {
    constexpr int kPatience = 20'000;
    const int reader = ::open(Pipe().c_str(), O_RDONLY | O_NONBLOCK);
    pollfd waiting = {reader, POLLIN, 0};
    const bool spoken = ::poll(&waiting, 1, kPatience) == 1;
    std::array<char, 4096> text{};
    const ssize_t size = spoken ? ::read(reader, text.data(), text.size()) : 0;
    ::close(reader);
    return {text.data(), static_cast<size_t>(std::max<ssize_t>(size, 0))};
  }
};

TEST_F(StartProgramTest, ItBeginsInItsFolder) {
  ASSERT_TRUE(files_.MakeFolder(folder_.path() + "inside"));
  ASSERT_TRUE(StartProgram({"sh", "-c", "pwd -P > ../pipe"}, folder_.path() + "inside"));
  EXPECT_EQ(Told(), files_.Canonical(folder_.path() + "inside") + "\n");
  ASSERT_TRUE(StartProgram({"sh", "-c", "pwd -P > \"$0\"", Pipe()}, ""));
  EXPECT_EQ(Told(), files_.Canonical(".") + "\n");
}

TEST_F(StartProgramTest, ItIsOnItsOwn) {
  // Of a process, the session (6th) is the process itself, and the parent (4th) is not this one.
  const std::string line = "echo $$ $(cut -d ' ' -f 4,6 /proc/$$/stat) > \"$0\"";
  ASSERT_TRUE(StartProgram({"sh", "-c", line, Pipe()}, ""));
  std::istringstream told(Told());
  int process = 0;
  int parent = 0;
  int session = 0;
  told >> process >> parent >> session;
  EXPECT_GT(process, 0);
  EXPECT_EQ(session, process);
  EXPECT_NE(parent, ::getpid());
  // No child is left to be waited for.
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(StartProgramTest, WhatCannotBeStartedIsFalse) {
  EXPECT_FALSE(StartProgram({}, ""));
  EXPECT_FALSE(StartProgram({"carnetel-no-such-program"}, ""));
  EXPECT_FALSE(StartProgram({"true"}, folder_.path() + "nowhere"));
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
}

}  // namespace
}  // namespace carnetel
