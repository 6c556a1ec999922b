// An exclusive advisory lock (flock) on a file that exists for nothing else. The system lets it go
// when the process dies, however it dies. The file stays behind on purpose: who removed it could
// remove it between another program's open and lock, and two programs would then hold locks on two
// files of one name.
#pragma once

#include <chrono>
#include <memory>
#include <string>

namespace carnetel {

class FileLock {
 public:
  // Null when somebody else, in this process too, holds the lock during all of `wait`, or the file
  // cannot be opened; at least one try is made. The file is made when missing, for everybody.
  [[nodiscard]] static std::unique_ptr<FileLock> Take(const std::string& path,
                                                      std::chrono::milliseconds wait);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

 private:
  explicit FileLock(int descriptor) : descriptor_(descriptor) {}

  int descriptor_;
};

}  // namespace carnetel
