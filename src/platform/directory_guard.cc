#include "platform/directory_guard.h"

#include <fmt/format.h>

#include <cstdint>
#include <string_view>

namespace carnetel {
namespace {

// Not $TMPDIR, which may differ between the users and the sessions that must meet here.
constexpr std::string_view kSharedFolder = "/tmp/";

// FNV-1a: the same in every build, as programs of different builds must agree. Two paths of one
// hash would only wait for each other without need.
uint64_t HashOf(std::string_view text) {
  uint64_t hash = 0xCBF29CE484222325;
  for (const char character : text) {
    hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001B3;
  }
  return hash;
}

}  // namespace

std::unique_ptr<DirectoryGuard> DirectoryGuard::Take(const std::string& canonical_address_path,
                                                     std::chrono::milliseconds wait) {
  std::unique_ptr<FileLock> lock = FileLock::Take(LockFilePath(canonical_address_path), wait);
  if (lock == nullptr) return nullptr;
  return std::unique_ptr<DirectoryGuard>(new DirectoryGuard(std::move(lock)));
}

std::string DirectoryGuard::LockFilePath(const std::string& canonical_address_path) {
  return fmt::format("{}carnetel-{:016x}.lock", kSharedFolder, HashOf(canonical_address_path));
}

}  // namespace carnetel
