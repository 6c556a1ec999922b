// The files of the operating system behind two small interfaces, so that the stores run on a disk,
// in memory and on a disk that fails. All stores are plain files worked on by position; nothing
// here knows what they hold.
//
// A File remembers whether a write of its own ever failed (`write_failed`); writers carry on and
// the front end reports it at the end of the operation. Sizes and positions are in bytes, times in
// whole seconds since 1970-01-01 00:00 UTC.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"

namespace carnetel {

// What every reader gets: it cannot write.
class ReadableFile {
 public:
  virtual ~ReadableFile() = default;
  // Bytes read into `into`: fewer than asked at the end of the file or on an error, never more.
  [[nodiscard]] virtual size_t Read(uint64_t position, ByteSpan into) = 0;
  // 0 also when the size cannot be had.
  [[nodiscard]] virtual uint64_t Size() = 0;
};

class File : public ReadableFile {
 public:
  // True when all of `bytes` was written. A short write leaves what was written.
  virtual bool Write(uint64_t position, ByteView bytes) = 0;
  // Cuts or extends (with zeros) the file to `size`.
  virtual bool Truncate(uint64_t size) = 0;
  // Returns when the data is on the disk, so that it survives a power cut.
  virtual bool Sync() = 0;
  [[nodiscard]] virtual int64_t ModificationTime() = 0;
  virtual bool SetModificationTime(int64_t seconds) = 0;
  [[nodiscard]] bool write_failed() const { return write_failed_; }

 protected:
  bool Remember(bool done) {
    write_failed_ = write_failed_ || !done;
    return done;
  }

 private:
  bool write_failed_ = false;
};

enum class OpenMode {
  kRead,           // an existing file, for reading
  kReadWrite,      // an existing file, for reading and writing
  kCreateOrOpen,   // for reading and writing, made when missing, kept as it is when not
  kCreateOrEmpty,  // for reading and writing, made when missing, emptied when not
};

// An exclusive lock on a range of a file's bytes, for as long as the object lives and the process
// with it. It keeps out other locks, of other machines and of this process too, and nobody's reads
// and writes.
class RangeLock {
 public:
  virtual ~RangeLock() = default;
};

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  // Null when the file cannot be opened. Every file is shared for reading and writing.
  [[nodiscard]] virtual std::unique_ptr<File> Open(const std::string& path, OpenMode mode) = 0;
  [[nodiscard]] virtual bool Exists(const std::string& path) = 0;
  [[nodiscard]] virtual bool IsFolder(const std::string& path) = 0;
  virtual bool Remove(const std::string& path) = 0;
  // Replaces `to` when it exists.
  virtual bool Rename(const std::string& from, const std::string& to) = 0;
  virtual bool MakeFolder(const std::string& path) = 0;
  // Names (not paths) of the entries of a folder, in no order; empty when it cannot be read.
  [[nodiscard]] virtual std::vector<std::string> List(const std::string& folder) = 0;
  // `path` made absolute, links resolved as far as it exists: the same file, the same text.
  [[nodiscard]] virtual std::string Canonical(const std::string& path) = 0;
  // Null when somebody holds part of the range, or when the file cannot be opened or locked. The
  // range may lie behind the end of the file.
  [[nodiscard]] virtual std::unique_ptr<RangeLock> LockRange(const std::string& path,
                                                             uint64_t offset, uint64_t size);
};

// How often somebody who waits for a range looks whether it is free.
inline constexpr std::chrono::milliseconds kLockRetry{5};

// Tries again until `wait` is over; at least one try is made.
[[nodiscard]] std::unique_ptr<RangeLock> WaitForRange(FileSystem& files, const std::string& path,
                                                      uint64_t offset, uint64_t size,
                                                      std::chrono::milliseconds wait);

// `path` when it exists, else the path of an entry of its folder whose name differs from it only in
// the case of ASCII letters, else `path` as it is. Families copied from systems that do not tell
// cases apart (`x.dan`, `X.i01`) open through this; folders are never searched this way.
std::string FindAnyCase(FileSystem& files, const std::string& path);

// True when the path can be accessed. An empty path counts as existing, by design; a trailing
// separator is dropped from paths longer than 3 characters.
bool FileExists(FileSystem& files, const std::string& path);

// '*' stands for any run of characters, '?' for any one; the case of ASCII letters is ignored.
bool MatchesPattern(std::string_view name, std::string_view pattern);

// Deletes every file whose name matches the last part of `pattern` in its folder; returns how many
// went.
int DeleteMatching(FileSystem& files, const std::string& pattern);

// Reads at most `limit` bytes from the start of a file; empty when it cannot be opened.
std::vector<std::byte> ReadStart(FileSystem& files, const std::string& path, size_t limit);

// Puts a file with this content at `path`, in one step: by a temporary file beside it, so that no
// moment shows half of it. Links are resolved first: the file at their end is replaced, not the
// link. False when it could not be made, or what is there is no file that may be written; what was
// there then stays.
bool ReplaceFile(FileSystem& files, const std::string& path, ByteView content);

// Larger files are not taken for texts that somebody wrote.
inline constexpr uint64_t kLargestText = uint64_t{64} * 1024 * 1024;

// The whole content of a text file; nothing when it cannot be read or is too large for one.
std::optional<std::string> ReadText(FileSystem& files, const std::string& path);

}  // namespace carnetel
