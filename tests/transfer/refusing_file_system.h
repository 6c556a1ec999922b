// A file system on which one file cannot be opened, as if somebody else had taken the right to.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/file_system.h"

namespace carnetel {

class RefusingFileSystem : public FileSystem {
 public:
  RefusingFileSystem(FileSystem& base, std::string refused)
      : base_(base), refused_(std::move(refused)) {}

  [[nodiscard]] std::unique_ptr<File> Open(const std::string& path, OpenMode mode) override {
    return path == refused_ ? nullptr : base_.Open(path, mode);
  }
  [[nodiscard]] bool Exists(const std::string& path) override { return base_.Exists(path); }
  [[nodiscard]] bool IsFolder(const std::string& path) override { return base_.IsFolder(path); }
  // A file without rights of its own cannot be told from one in a folder without them.
  bool Remove(const std::string& path) override { return path != refused_ && base_.Remove(path); }
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
  std::string refused_;
};

}  // namespace carnetel
