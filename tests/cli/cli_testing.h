// Runs the tool in this process, on files in memory, the way a shell would: words in, status,
// standard output and standard error out.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "cli/run_cli.h"
#include "platform/fault_file_system.h"
#include "platform/memory_file_system.h"

namespace carnetel {

struct CliOutcome {
  int status = -1;
  std::string out;
  std::string err;
};

using Words = std::vector<std::string>;

class CliTest : public testing::Test {
 protected:
  // The tool with these words alone.
  CliOutcome Run(const Words& words);
  // The same on the directory /d/CLIENTS.
  CliOutcome On(const Words& words);
  // Expects success and answers the output.
  std::string Done(const Words& words);

  // Expects a failure with this status and reason, and every file of /d as it was.
  void ExpectRefused(const Words& words, int status, const std::string& reason);

  // Every file of /d.
  std::map<std::string, std::vector<std::byte>> Family();
  void SetFile(const std::string& path, std::string_view text) {
    files_.SetContents(path, AsBytes(text));
  }
  std::string TextOf(const std::string& path) {
    return std::string(AsChars(files_.Contents(path)));
  }
  // Expects `check` to find nothing.
  void ExpectConsistent();

  FakeClock clock_{1'000'000'000};
  MemoryFileSystem files_{clock_};
  FaultFileSystem disk_{files_};
  std::map<std::string, std::string> variables_ = {{"CARNETEL_HOME", "/home/u/carnetel"},
                                                   {"CARNETEL_PROFILE", "/home/u/profile.ini"}};
  std::string input_;
  bool can_ask_ = false;
  bool shows_progress_ = false;
  bool others_work_on_it_ = false;
  bool metric_ = true;
  // The programs that were run, and what the file named last on their lines held then.
  std::vector<Words> programs_;
  std::vector<std::byte> handed_over_;
  int program_status_ = 0;
  // Runs each time the tool looks whether it is to stop, as before each line of a script.
  std::function<void()> while_running_ = [] {};
  int interrupt_after_ = -1;  // questions of the tool whether to stop; never when negative
  int64_t milliseconds_ = 0;
  std::vector<std::string> guarded_;
};

}  // namespace carnetel
