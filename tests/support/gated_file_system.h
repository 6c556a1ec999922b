// Another file system as it is, but that a test can watch its locks and refuse them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/file_system.h"

namespace carnetel {

class GatedFileSystem : public FileSystem {
 public:
  explicit GatedFileSystem(FileSystem& base) : base_(base) {}

  // Runs before each lock is tried; false refuses it.
  std::function<bool()> may_lock = [] { return true; };

  [[nodiscard]] std::unique_ptr<RangeLock> LockRange(const std::string& path, uint64_t offset,
                                                     uint64_t size) override {
    return may_lock() ? base_.LockRange(path, offset, size) : nullptr;
  }
  [[nodiscard]] std::unique_ptr<File> Open(const std::string& path, OpenMode mode) override {
    return base_.Open(path, mode);
  }
  [[nodiscard]] bool Exists(const std::string& path) override { return base_.Exists(path); }
  [[nodiscard]] bool IsFolder(const std::string& path) override { return base_.IsFolder(path); }
  bool Remove(const std::string& path) override { return base_.Remove(path); }
  bool Rename(const std::string& from, const std::string& to) override {
    return base_.Rename(from, to);
  }
  bool MakeFolder(const std::string& path) override { return base_.MakeFolder(path); }
  [[nodiscard]] std::vector<std::string> List(const std::string& folder) override {
    return base_.List(folder);
  }
  [[nodiscard]] std::string Canonical(const std::string& path) override {
    return base_.Canonical(path);
  }

 private:
  FileSystem& base_;
};

}  // namespace carnetel
