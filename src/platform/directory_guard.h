// Keeps two programs of this machine (window, command line, another user's) from working on one
// directory at a time: they would write the same side files over each other. Seats on other
// machines have address files of their own and never meet here.
//
// The guard is a lock on a file in /tmp whose name is a hash of the address file's path.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <utility>

#include "platform/file_lock.h"

namespace carnetel {

class DirectoryGuard {
 public:
  // `canonical_address_path`: the .ADR path as FileSystem::Canonical gives it, so that one
  // directory has one name. Null when somebody else, in this process too, holds it during all of
  // `wait`, or the lock file cannot be opened; at least one try is made.
  [[nodiscard]] static std::unique_ptr<DirectoryGuard> Take(
      const std::string& canonical_address_path, std::chrono::milliseconds wait);

  [[nodiscard]] static std::string LockFilePath(const std::string& canonical_address_path);

 private:
  explicit DirectoryGuard(std::unique_ptr<FileLock> lock) : lock_(std::move(lock)) {}

  std::unique_ptr<FileLock> lock_;
};

}  // namespace carnetel
