// Hands one line to another program through a file or a named pipe, and never waits for it.
#pragma once

#include <string>

namespace carnetel {

// As long as it lives, writing to somebody who has gone fails and does not end the program.
class BrokenPipeGuard {
 public:
  BrokenPipeGuard();
  ~BrokenPipeGuard();
  BrokenPipeGuard(const BrokenPipeGuard&) = delete;
  BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

 private:
  void (*former_)(int);
};

// Appends `line` and a line feed to a file, made when missing, or sends it through a pipe that
// somebody reads. False when nobody does, or the file cannot be written.
bool SendLine(const std::string& path, const std::string& line);

}  // namespace carnetel
