#include "shell/caller_notifier.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <sstream>

#include "tests/support/fresh_folder.h"

namespace carnetel {
namespace {

Environment NotifyTo(const std::string& path) {
  return
      [path](const std::string& name) { return name == "CARNETEL_NOTIFY" ? path : std::string(); };
}

TEST(CallerNotifier, TellsLineFileAndWindow) {
  const FreshFolder folder;
  const std::string path = folder.path() + "/notes";
  std::ostringstream output;
  std::string window;
  const CallerNotifier notifier(77, output, NotifyTo(path),
                                [&window](uint32_t id, int message, int32_t w, int32_t l) {
                                  window = std::to_string(id) + ' ' + std::to_string(message) +
                                           ' ' + std::to_string(w) + ' ' + std::to_string(l);
                                });
  notifier.NotifyCaller(kNotifyRoleEnded, 2, 0);
  notifier.NotifyCaller(kNotifyInserted, -1, 8);
  EXPECT_EQ(output.str(), "1524 2 0\n1424 -1 8\n");
  EXPECT_EQ(window, "77 1424 -1 8");
  std::stringstream written;
  written << std::ifstream(path).rdbuf();
  EXPECT_EQ(written.str(), "1524 2 0\n1424 -1 8\n");
}

TEST(CallerNotifier, StandAloneTellsNobody) {
  std::ostringstream output;
  CallerNotifier(0, output, NotifyTo("")).NotifyCaller(kNotifyRoleEnded, 2, 0);
  EXPECT_EQ(output.str(), "");
}

TEST(CallerNotifier, PipeWithoutReaderDoesNotHoldTheProgramUp) {
  const FreshFolder folder;
  const std::string path = folder.path() + "/pipe";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  std::ostringstream output;
  CallerNotifier(1, output, NotifyTo(path)).NotifyCaller(kNotifyRoleEnded, 0, 3);
  EXPECT_EQ(output.str(), "1524 0 3\n");
}

}  // namespace
}  // namespace carnetel
