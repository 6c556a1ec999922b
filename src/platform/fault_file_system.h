// A file system that fails on demand, over another one, for tests of what a crash or a full disk
// leaves. Reads always go on, so that a test can look at the damage and open the family again.
//
// A changing call is a write, a truncation, a change of file time, a rename, a removal, or the
// creation or emptying of a file or folder. Run once without a fault, take changes(), then run once
// for each number below it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/file_system.h"

namespace carnetel {

class FaultFileSystem : public FileSystem {
 public:
  // `base` outlives this object, as this object outlives the files opened on it.
  explicit FaultFileSystem(FileSystem& base) : base_(base) {}

  // One fault at a time: each of these takes the place of the one before, counts from this moment
  // and acts on open files too.

  // The disk stops: `changes` more changing calls work, all later ones fail and change nothing.
  void StopAfter(int changes);
  // The `nth` write (1 is the next) puts only its first `kept_bytes` in the file and fails, or all
  // when it has no more; every changing call after it fails and changes nothing.
  void TearWrite(int nth, size_t kept_bytes);
  // The `nth` write (1 is the next) fails and changes nothing; all other changing calls work.
  void FailWrite(int nth);
  // Writes and truncations that would make a file larger fail and change nothing; all others work.
  void FillDisk();
  void Heal();

  // Changing calls asked for since the start, failed ones too.
  [[nodiscard]] int changes() const { return changes_; }

  [[nodiscard]] std::unique_ptr<File> Open(const std::string& path, OpenMode mode) override;
  [[nodiscard]] bool Exists(const std::string& path) override { return base_.Exists(path); }
  [[nodiscard]] bool IsFolder(const std::string& path) override { return base_.IsFolder(path); }
  bool Remove(const std::string& path) override;
  bool Rename(const std::string& from, const std::string& to) override;
  bool MakeFolder(const std::string& path) override;
  [[nodiscard]] std::vector<std::string> List(const std::string& folder) override {
    return base_.List(folder);
  }
  [[nodiscard]] std::string Canonical(const std::string& path) override {
    return base_.Canonical(path);
  }
  [[nodiscard]] std::unique_ptr<RangeLock> LockRange(const std::string& path, uint64_t offset,
                                                     uint64_t size) override {
    return base_.LockRange(path, offset, size);
  }

 private:
  class FaultFile;

  // Counts a changing call and tells whether it may go on.
  [[nodiscard]] bool Allow();
  // Counts a write and tells how many of its `size` bytes go on.
  [[nodiscard]] size_t AllowWrite(size_t size);
  [[nodiscard]] bool stopped() const { return changes_left_ == 0; }

  FileSystem& base_;
  int changes_ = 0;
  std::optional<int> changes_left_;  // none: no end
  std::optional<int> whole_writes_left_;
  size_t kept_bytes_ = 0;
  int writes_to_failure_ = 0;  // 0: none fails
  bool full_ = false;
};

}  // namespace carnetel
