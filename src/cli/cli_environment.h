// Everything the tool takes from its surroundings, so that a test can run it in its own process, on
// files in memory, with streams it reads back.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/folders.h"

namespace carnetel {

struct CliEnvironment {
  FileSystem& files;
  Clock& clock;
  std::istream& in;
  std::ostream& out;
  std::ostream& err;

  Environment variables;
  std::string executable_folder;
  std::string version;

  // Whether somebody sits there to answer a question, and to watch a progress bar.
  bool can_ask = false;
  bool shows_progress = false;

  // Whether the user's surroundings measure in centimetres.
  bool metric = true;

  // True once the program that reads the output has ended, as `head` does early: no error to tell.
  std::function<bool()> reader_left = [] { return false; };
  // True once the user asked to stop.
  std::function<bool()> interrupted;
  // Keeps other programs out of the directory whose canonical address path is given, as long as the
  // answer lives; null when somebody else has it.
  std::function<std::shared_ptr<void>(const std::string& address_path)> take_guard;
  // Runs another program to its end and answers its status, -1 when it cannot be started.
  std::function<int(const std::vector<std::string>& words)> run_program =
      [](const std::vector<std::string>& /*words*/) { return -1; };
  // A clock that never goes back, for the pace of the progress bar.
  std::function<int64_t()> milliseconds;
};

}  // namespace carnetel
