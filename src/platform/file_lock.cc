#include "platform/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <thread>

namespace carnetel {
namespace {

constexpr std::chrono::milliseconds kRetryEvery{20};
constexpr mode_t kEverybody = 0666;

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

std::unique_ptr<FileLock> FileLock::Take(const std::string& path, std::chrono::milliseconds wait) {
  const auto deadline = std::chrono::steady_clock::now() + wait;
  while (true) {
    const int descriptor = TryLock(path);
    if (descriptor >= 0) return std::unique_ptr<FileLock>(new FileLock(descriptor));
    const auto left = deadline - std::chrono::steady_clock::now();
    if (left <= left.zero()) return nullptr;
    std::this_thread::sleep_for(std::min<std::chrono::nanoseconds>(left, kRetryEvery));
  }
}

FileLock::~FileLock() {
  ::close(descriptor_);
}

}  // namespace carnetel
