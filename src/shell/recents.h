// The directories worked on last, as the file menu of both windows offers them: up to four, the
// open one in front.
#pragma once

#include <string>
#include <vector>

#include "shell/session.h"

namespace carnetel {

class Recents {
 public:
  explicit Recents(Session& session) : session_(session) {}

  // Takes those of the profile, without the first one: that is always the open directory.
  void Read();
  // Puts the open directory in front; answers the menu texts, "&1 /path". The path holds no
  // mnemonics.
  [[nodiscard]] std::vector<std::string> Rebuild();
  // Writes all but the first one, which is written at the end of the run, for every role. One that
  // is gone from the menu leaves its old value behind, on purpose.
  void Write();

  [[nodiscard]] const std::vector<std::string>& paths() const { return paths_; }
  // The path of a command from kCommandRecent1 on; empty when there is none, or when it is the open
  // directory's.
  [[nodiscard]] std::string PathToOpen(int command) const;

 private:
  Session& session_;
  std::vector<std::string> paths_;
};

}  // namespace carnetel
