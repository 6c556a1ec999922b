// A folder on the disk of its own for one test: empty at the start, gone with all it holds at the
// end.
#pragma once

#include <string>

namespace carnetel {

class FreshFolder {
 public:
  FreshFolder();
  ~FreshFolder();
  FreshFolder(const FreshFolder&) = delete;
  FreshFolder& operator=(const FreshFolder&) = delete;

  // With its trailing '/'.
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace carnetel
