#include "platform/directory_guard.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <thread>

namespace carnetel {
namespace {

// Not $TMPDIR, which may differ between the users and the sessions that must meet here.
constexpr std::string_view kSharedFolder = "/tmp/";
constexpr std::chrono::milliseconds kRetryEvery{20};
constexpr mode_t kEverybody = 0666;

// FNV-1a: the same in every build, as programs of different builds must agree. Two paths of one
// hash would only wait for each other without need.
uint64_t HashOf(std::string_view text) {
  uint64_t hash = 0xCBF29CE484222325;
  for (const char character : text) {
    hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001B3;
  }
  return hash;
}

// Only reading is asked for: the system may refuse to open another user's file in a shared folder
// with O_CREAT, and a lock does not need more.
int OpenLockFile(const std::string& path) {
  constexpr int kFlags = O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
  const int existing = ::open(path.c_str(), kFlags);
  if (existing >= 0) return existing;
  const int made = ::open(path.c_str(), kFlags | O_CREAT | O_EXCL, kEverybody);
  if (made < 0) return ::open(path.c_str(), kFlags);  // somebody else made it in between
  ::fchmod(made, kEverybody);                         // the umask must not keep other users out
  return made;
}

// False for a file that a cleaner of the folder took away: nobody else would find the lock on it.
bool IsStillThere(int descriptor, const std::string& path) {
  struct stat opened = {};
  struct stat named = {};
  return ::fstat(descriptor, &opened) == 0 && ::lstat(path.c_str(), &named) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

// The descriptor that holds the lock, or -1.
int TryLock(const std::string& path) {
  const int descriptor = OpenLockFile(path);
  if (descriptor < 0) return -1;
  if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0 && IsStillThere(descriptor, path)) {
    return descriptor;
  }
  ::close(descriptor);
  return -1;
}

}  // namespace

std::unique_ptr<DirectoryGuard> DirectoryGuard::Take(const std::string& canonical_address_path,
                                                     std::chrono::milliseconds wait) {
  const std::string path = LockFilePath(canonical_address_path);
  const auto deadline = std::chrono::steady_clock::now() + wait;
  while (true) {
    const int descriptor = TryLock(path);
    if (descriptor >= 0) return std::unique_ptr<DirectoryGuard>(new DirectoryGuard(descriptor));
    const auto left = deadline - std::chrono::steady_clock::now();
    if (left <= left.zero()) return nullptr;
    std::this_thread::sleep_for(std::min<std::chrono::nanoseconds>(left, kRetryEvery));
  }
}

DirectoryGuard::~DirectoryGuard() {
  ::close(descriptor_);
}

std::string DirectoryGuard::LockFilePath(const std::string& canonical_address_path) {
  return fmt::format("{}carnetel-{:016x}.lock", kSharedFolder, HashOf(canonical_address_path));
}

}  // namespace carnetel
