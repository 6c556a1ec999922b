#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/fault_file_system.h"
#include "platform/memory_file_system.h"
#include "shell/session.h"
#include "storage/card_dispatch.h"

namespace carnetel {
namespace {

class SessionDebug : public ::testing::Test {
 protected:
  std::vector<std::string> LinesOf(int32_t seat, const std::string& exchange_file) {
    StartupRequest request;
    request.workstation_number = seat;
    request.exchange_file_path = exchange_file;
    Session session({files_, clock_, progress_, messages_, profile_}, request, "/home/");
    std::vector<std::string> lines;
    session.SetDebugLine([&lines](std::string_view line) { lines.emplace_back(line); });
    session.Start();
    return lines;
  }

  FakeClock clock_{1000000000};
  MemoryFileSystem memory_{clock_};
  FaultFileSystem files_{memory_};
  SilentProgress progress_;
  SilentMessages messages_;
  UserProfile profile_{files_, "/profile.ini"};
};

TEST_F(SessionDebug, TellsWhetherThereAreSeveralSeats) {
  EXPECT_EQ(LinesOf(0, ""), std::vector<std::string>{" Valeur de lan_on = 0 "});
  EXPECT_EQ(LinesOf(3, "/seat/X.DAT"), std::vector<std::string>{" Valeur de lan_on = 1 "});
}

TEST_F(SessionDebug, TellsAWriteThatFailed) {
  Session session({files_, clock_, progress_, messages_, profile_}, {}, "/home/");
  std::vector<std::string> lines;
  session.Start();
  session.SetDebugLine([&lines](std::string_view line) { lines.emplace_back(line); });
  bool fell_back = false;
  ASSERT_TRUE(session.OpenAtStart(&fell_back));
  files_.StopAfter(0);
  session.directory()->context().current.SetField(kSte1, OemText("Alpha"));
  uint32_t position = 0;
  EXPECT_LT(CardDispatch(*session.directory()).Add(false, &position), 0);
  session.CloseDirectory();
  EXPECT_EQ(lines, std::vector<std::string>{"a write to /home/CARNETEL has failed"});
}

}  // namespace
}  // namespace carnetel
