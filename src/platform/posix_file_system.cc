#include "platform/posix_file_system.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace carnetel {
namespace {

template <class Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

std::string FolderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

// Puts the entries of a folder on the disk; a folder that cannot be opened is left to the system.
void SyncFolder(const std::string& folder) {
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  Uninterrupted([&] { return ::fsync(descriptor); });
  ::close(descriptor);
}

class PosixFile : public File {
 public:
  // Takes the descriptor over. `new_in` is the folder of a file that may just have been made: its
  // entry there must reach the disk with the first Sync; empty otherwise.
  PosixFile(int descriptor, std::string new_in)
      : descriptor_(descriptor), new_in_(std::move(new_in)) {}
  ~PosixFile() override { ::close(descriptor_); }
  PosixFile(const PosixFile&) = delete;
  PosixFile& operator=(const PosixFile&) = delete;

  size_t Read(uint64_t position, ByteSpan into) override {
    size_t done = 0;
    while (done < into.size()) {
      const ssize_t count = Uninterrupted([&] {
        return ::pread(descriptor_, into.data() + done, into.size() - done,
                       static_cast<off_t>(position + done));
      });
      if (count <= 0) break;
      done += static_cast<size_t>(count);
    }
    return done;
  }

  uint64_t Size() override {
    struct stat status = {};
    return ::fstat(descriptor_, &status) == 0 ? static_cast<uint64_t>(status.st_size) : 0;
  }

  bool Write(uint64_t position, ByteView bytes) override {
    size_t done = 0;
    while (done < bytes.size()) {
      const ssize_t count = Uninterrupted([&] {
        return ::pwrite(descriptor_, bytes.data() + done, bytes.size() - done,
                        static_cast<off_t>(position + done));
      });
      if (count <= 0) return Remember(false);
      done += static_cast<size_t>(count);
    }
    return true;
  }

  bool Truncate(uint64_t size) override {
    const auto cut = [&] { return ::ftruncate(descriptor_, static_cast<off_t>(size)); };
    return Remember(Uninterrupted(cut) == 0);
  }

  bool Sync() override {
    const bool done = Uninterrupted([&] { return ::fdatasync(descriptor_); }) == 0;
    if (!new_in_.empty()) SyncFolder(std::exchange(new_in_, std::string()));
    return Remember(done);
  }

  int64_t ModificationTime() override {
    struct stat status = {};
    return ::fstat(descriptor_, &status) == 0 ? int64_t{status.st_mtim.tv_sec} : 0;
  }

  bool SetModificationTime(int64_t seconds) override {
    struct timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = static_cast<time_t>(seconds);
    return Remember(::futimens(descriptor_, times) == 0);
  }

 private:
  int descriptor_;
  std::string new_in_;
};

int OpenFlags(OpenMode mode) {
  // Without O_NONBLOCK the open of a pipe would wait for its other end.
  constexpr int kAlways = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  switch (mode) {
    case OpenMode::kRead:
      return kAlways | O_RDONLY;
    case OpenMode::kReadWrite:
      return kAlways | O_RDWR;
    case OpenMode::kCreateOrOpen:
      return kAlways | O_RDWR | O_CREAT;
    case OpenMode::kCreateOrEmpty:
      return kAlways | O_RDWR | O_CREAT | O_TRUNC;
  }
  return kAlways | O_RDONLY;
}

bool HasPositions(int descriptor) {
  struct stat status = {};
  if (::fstat(descriptor, &status) != 0) return false;
  return S_ISREG(status.st_mode) || S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode);
}

class PosixLock : public RangeLock {
 public:
  explicit PosixLock(int descriptor) : descriptor_(descriptor) {}
  ~PosixLock() override { ::close(descriptor_); }
  PosixLock(const PosixLock&) = delete;
  PosixLock& operator=(const PosixLock&) = delete;

 private:
  int descriptor_;
};

}  // namespace

std::unique_ptr<File> PosixFileSystem::Open(const std::string& path, OpenMode mode) {
  constexpr mode_t kEverybodyWithinUmask = 0666;
  const int flags = OpenFlags(mode);
  const int descriptor =
      Uninterrupted([&] { return ::open(path.c_str(), flags, kEverybodyWithinUmask); });
  if (descriptor < 0) return nullptr;
  if (!HasPositions(descriptor)) {
    ::close(descriptor);
    return nullptr;
  }
  const bool may_be_new = (flags & O_CREAT) != 0;
  return std::make_unique<PosixFile>(descriptor, may_be_new ? FolderOf(path) : std::string());
}

bool PosixFileSystem::Exists(const std::string& path) {
  return ::access(path.c_str(), F_OK) == 0;
}

bool PosixFileSystem::IsFolder(const std::string& path) {
  struct stat status = {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool PosixFileSystem::Remove(const std::string& path) {
  return ::unlink(path.c_str()) == 0;
}

bool PosixFileSystem::Rename(const std::string& from, const std::string& to) {
  return ::rename(from.c_str(), to.c_str()) == 0;
}

bool PosixFileSystem::MakeFolder(const std::string& path) {
  std::error_code error;
  std::filesystem::create_directories(path, error);
  return IsFolder(path);
}

std::vector<std::string> PosixFileSystem::List(const std::string& folder) {
  std::vector<std::string> names;
  DIR* const listing = ::opendir(folder.c_str());
  if (listing == nullptr) return names;
  while (const dirent* const entry = ::readdir(listing)) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
  }
  ::closedir(listing);
  return names;
}

std::string PosixFileSystem::Canonical(const std::string& path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  if (error) return path;
  const std::filesystem::path resolved = std::filesystem::weakly_canonical(absolute, error);
  return error ? absolute.lexically_normal().string() : resolved.string();
}

// A lock of the open file description (fcntl(2), F_OFD_SETLK), on a descriptor of its own: the
// older locks of the process fall as soon as any descriptor of the file is closed.
std::unique_ptr<RangeLock> PosixFileSystem::LockRange(const std::string& path, uint64_t offset,
                                                      uint64_t size) {
  const int descriptor =
      Uninterrupted([&] { return ::open(path.c_str(), OpenFlags(OpenMode::kReadWrite)); });
  if (descriptor < 0) return nullptr;
  struct flock range = {};
  range.l_type = F_WRLCK;
  range.l_whence = SEEK_SET;
  range.l_start = static_cast<off_t>(offset);
  range.l_len = static_cast<off_t>(size);
  if (Uninterrupted([&] { return ::fcntl(descriptor, F_OFD_SETLK, &range); }) == 0) {
    return std::make_unique<PosixLock>(descriptor);
  }
  ::close(descriptor);
  return nullptr;
}

}  // namespace carnetel
