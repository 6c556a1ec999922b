#include "platform/file_system.h"

#include <unistd.h>

#include <algorithm>
#include <optional>
#include <span>
#include <thread>
#include <utility>

namespace carnetel {
namespace {

struct FolderAndName {
  std::string folder;  // with its trailing '/', empty for the current folder
  std::string name;
};

FolderAndName Part(const std::string& path) {
  const size_t name_at = path.rfind('/') + 1;  // npos + 1 is 0: a name alone
  return {path.substr(0, name_at), path.substr(name_at)};
}

std::vector<std::string> SortedEntries(FileSystem& files, const std::string& folder) {
  std::vector<std::string> names = files.List(folder.empty() ? "." : folder);
  std::sort(names.begin(), names.end());
  return names;
}

char LowerAscii(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character + 0x20) : character;
}

bool SameLetter(char a, char b) {
  return LowerAscii(a) == LowerAscii(b);
}

bool SameIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), SameLetter);
}

// Where the UTF-8 character at `index` ends.
size_t CharacterEnd(std::string_view text, size_t index) {
  do {
    ++index;
  } while (index < text.size() && (static_cast<unsigned char>(text[index]) & 0xC0) == 0x80);
  return index;
}

}  // namespace

// Goes back to the last '*' alone, so the time is at most the product of the two lengths.
bool MatchesPattern(std::string_view name, std::string_view pattern) {
  size_t n = 0;
  size_t p = 0;
  std::optional<size_t> star;
  size_t star_end = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      star_end = n;
    } else if (p < pattern.size() && pattern[p] == '?') {
      n = CharacterEnd(name, n);
      ++p;
    } else if (p < pattern.size() && SameLetter(pattern[p], name[n])) {
      ++n;
      ++p;
    } else if (star) {
      p = *star + 1;
      n = star_end = CharacterEnd(name, star_end);
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

// A system without locks: whoever needs one is refused.
std::unique_ptr<RangeLock> FileSystem::LockRange(const std::string& /*path*/, uint64_t /*offset*/,
                                                 uint64_t /*size*/) {
  return nullptr;
}

std::unique_ptr<RangeLock> WaitForRange(FileSystem& files, const std::string& path, uint64_t offset,
                                        uint64_t size, std::chrono::milliseconds wait) {
  const auto deadline = std::chrono::steady_clock::now() + wait;
  while (true) {
    std::unique_ptr<RangeLock> lock = files.LockRange(path, offset, size);
    if (lock != nullptr) return lock;
    const auto left = deadline - std::chrono::steady_clock::now();
    if (left <= left.zero()) return nullptr;
    std::this_thread::sleep_for(std::min<std::chrono::nanoseconds>(left, kLockRetry));
  }
}

std::string FindAnyCase(FileSystem& files, const std::string& path) {
  const auto [folder, name] = Part(path);
  if (name.empty() || files.Exists(path)) return path;
  // Sorted, so that of two such names every seat takes the same one.
  for (const std::string& entry : SortedEntries(files, folder)) {
    if (SameIgnoringCase(entry, name) && !files.IsFolder(folder + entry)) return folder + entry;
  }
  return path;
}

bool FileExists(FileSystem& files, const std::string& path) {
  constexpr size_t kLongestRoot = 3;
  if (path.empty()) return true;
  if (path.size() > kLongestRoot && path.back() == '/') {
    return files.Exists(path.substr(0, path.size() - 1));
  }
  return files.Exists(path);
}

int DeleteMatching(FileSystem& files, const std::string& pattern) {
  const auto [folder, name_pattern] = Part(pattern);
  int deleted = 0;
  for (const std::string& entry : SortedEntries(files, folder)) {
    if (MatchesPattern(entry, name_pattern) && files.Remove(folder + entry)) ++deleted;
  }
  return deleted;
}

std::vector<std::byte> ReadStart(FileSystem& files, const std::string& path, size_t limit) {
  const std::unique_ptr<File> file = files.Open(path, OpenMode::kRead);
  if (file == nullptr) return {};
  std::vector<std::byte> start(static_cast<size_t>(std::min<uint64_t>(limit, file->Size())));
  start.resize(file->Read(0, start));
  return start;
}

bool ReplaceFile(FileSystem& files, const std::string& path, ByteView content) {
  const std::string target = files.Canonical(path);
  // A device is none, and must not give way to a file.
  if (files.Exists(target) && files.Open(target, OpenMode::kReadWrite) == nullptr) return false;
  const std::string temporary = target + "." + std::to_string(::getpid()) + ".tmp";
  std::unique_ptr<File> file = files.Open(temporary, OpenMode::kCreateOrEmpty);
  if (file == nullptr) return false;
  const bool written = file->Write(0, content) && file->Sync();
  file.reset();
  if (written && files.Rename(temporary, target)) return true;
  files.Remove(temporary);
  return false;
}

std::optional<std::string> ReadText(FileSystem& files, const std::string& path) {
  const std::unique_ptr<File> file = files.Open(path, OpenMode::kRead);
  if (file == nullptr || file->Size() > kLargestText) return std::nullopt;
  std::string content(static_cast<size_t>(file->Size()), '\0');
  const size_t read = file->Read(0, std::as_writable_bytes(std::span(content)));
  return read == content.size() ? std::optional(std::move(content)) : std::nullopt;
}

}  // namespace carnetel
