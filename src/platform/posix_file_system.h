// The file system of the machine, by POSIX calls. Files are opened without any lock, so every other
// program may read and write them at the same time; interrupted calls are taken up again, and only
// files that can be worked on by position open (no folders, no pipes).
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/file_system.h"

namespace carnetel {

class PosixFileSystem : public FileSystem {
 public:
  [[nodiscard]] std::unique_ptr<File> Open(const std::string& path, OpenMode mode) override;
  [[nodiscard]] bool Exists(const std::string& path) override;
  [[nodiscard]] bool IsFolder(const std::string& path) override;
  bool Remove(const std::string& path) override;
  bool Rename(const std::string& from, const std::string& to) override;
  bool MakeFolder(const std::string& path) override;
  [[nodiscard]] std::vector<std::string> List(const std::string& folder) override;
  [[nodiscard]] std::string Canonical(const std::string& path) override;
  [[nodiscard]] std::unique_ptr<RangeLock> LockRange(const std::string& path, uint64_t offset,
                                                     uint64_t size) override;
};

}  // namespace carnetel
