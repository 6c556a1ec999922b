// Keeps two programs of this machine (window, command line, another user's) from working on one
// directory at a time: they would write the same side files over each other. Seats on other
// machines have address files of their own and never meet here.
//
// The guard is an advisory lock (flock) on a file in /tmp whose name is a hash of the address
// file's path. The system lets it go when the process dies, however it dies. The lock file stays
// behind on purpose: who removed it could remove it between another program's open and lock, and
// two programs would then hold locks on two files of one name.
#pragma once

#include <chrono>
#include <memory>
#include <string>

namespace carnetel {

class DirectoryGuard {
 public:
  // `canonical_address_path`: the .ADR path as FileSystem::Canonical gives it, so that one
  // directory has one name. Null when somebody else, in this process too, holds it during all of
  // `wait`, or the lock file cannot be opened; at least one try is made.
  [[nodiscard]] static std::unique_ptr<DirectoryGuard> Take(
      const std::string& canonical_address_path, std::chrono::milliseconds wait);
  ~DirectoryGuard();
  DirectoryGuard(const DirectoryGuard&) = delete;
  DirectoryGuard& operator=(const DirectoryGuard&) = delete;

  [[nodiscard]] static std::string LockFilePath(const std::string& canonical_address_path);

 private:
  explicit DirectoryGuard(int descriptor) : descriptor_(descriptor) {}

  int descriptor_;
};

}  // namespace carnetel
