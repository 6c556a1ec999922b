// A file system that lives in memory, for tests: quick, countable, and copied in one go to see what
// a program that stopped at this moment would have left. It behaves as a POSIX system does: names
// tell cases apart, several handles work on one file, and a removed file stays readable through the
// handles that were open on it. One difference is wanted: a file may be made in a folder that
// nobody made, so that a test starts with its first file. Relative paths are taken from "/".
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/file_system.h"

namespace carnetel {

// Calls since the start or the last ResetCounts, failed ones too.
struct IoCounts {
  int opens = 0;
  int reads = 0;
  int writes = 0;
  int truncates = 0;
  int syncs = 0;
  int locks = 0;
};

class MemoryFileSystem : public FileSystem {
 public:
  // `clock` gives the modification time at each change and outlives this object, as this object
  // outlives the files opened on it.
  explicit MemoryFileSystem(Clock& clock) : clock_(clock) {}
  // Copies every file: later changes on one side do not show on the other. Counts start at 0.
  MemoryFileSystem(const MemoryFileSystem& other);
  MemoryFileSystem& operator=(const MemoryFileSystem&) = delete;

  [[nodiscard]] MemoryFileSystem Snapshot() const { return *this; }

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

  // All bytes of a file, uncounted; empty when there is none.
  [[nodiscard]] std::vector<std::byte> Contents(const std::string& path) const;
  // Makes or replaces a file, uncounted; open handles see the new bytes.
  void SetContents(const std::string& path, ByteView bytes);

  [[nodiscard]] const IoCounts& counts() const { return counts_; }
  void ResetCounts() { counts_ = {}; }

 private:
  struct Content {
    std::vector<std::byte> bytes;
    int64_t modified = 0;
  };
  struct LockedRange {
    std::string path;
    uint64_t offset = 0;
    uint64_t end = 0;
  };
  class MemoryFile;
  class MemoryLock;

  // The content of a file, made when missing.
  std::shared_ptr<Content> Make(const std::string& canonical_path);
  [[nodiscard]] bool CanHoldFile(const std::string& canonical_path);

  Clock& clock_;
  std::map<std::string, std::shared_ptr<Content>> files_;
  std::set<std::string> folders_;
  // Those that live; shared with them, so that they may outlive this object.
  std::shared_ptr<std::vector<std::shared_ptr<LockedRange>>> locks_ =
      std::make_shared<std::vector<std::shared_ptr<LockedRange>>>();
  IoCounts counts_;
};

}  // namespace carnetel
