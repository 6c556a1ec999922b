// A view of another file system in which everything can be changed and nothing reaches it: a file
// is copied into memory when it is first opened for writing, renamed or removed, and lives there
// from then on. It shows what an operation would do.
//
// A handle that was opened for reading before its file was changed goes on reading the file below.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "platform/memory_file_system.h"

namespace carnetel {

class OverlayFileSystem : public FileSystem {
 public:
  // Both outlive this object, as this object outlives the files opened on it.
  OverlayFileSystem(FileSystem& base, Clock& clock) : base_(base), memory_(clock) {}

  [[nodiscard]] std::unique_ptr<File> Open(const std::string& path, OpenMode mode) override;
  [[nodiscard]] bool Exists(const std::string& path) override;
  [[nodiscard]] bool IsFolder(const std::string& path) override;
  bool Remove(const std::string& path) override;
  bool Rename(const std::string& from, const std::string& to) override;
  bool MakeFolder(const std::string& path) override;
  [[nodiscard]] std::vector<std::string> List(const std::string& folder) override;
  [[nodiscard]] std::string Canonical(const std::string& path) override;
  [[nodiscard]] std::unique_ptr<RangeLock> LockRange(const std::string& path, uint64_t offset,
                                                     uint64_t size) override {
    return base_.LockRange(path, offset, size);
  }

 private:
  // Whether the file at a canonical path is what memory has of it, be it nothing.
  [[nodiscard]] bool IsOurs(const std::string& canonical) const {
    return ours_.contains(canonical);
  }
  // Makes it so; false when the file below cannot be read.
  bool Take(const std::string& canonical);
  [[nodiscard]] bool HasFolder(const std::string& canonical);

  FileSystem& base_;
  MemoryFileSystem memory_;
  std::set<std::string> ours_;
};

}  // namespace carnetel
