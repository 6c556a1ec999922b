#include "platform/memory_file_system.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace carnetel {
namespace {

// A wild position in a damaged store must fail as on a full disk, not take the machine's memory.
constexpr uint64_t kLargestFile = uint64_t{1} << 30;

// No links, so that the text alone decides; without a trailing '/', but for "/" itself.
std::string Absolute(const std::string& path) {
  std::string text = (std::filesystem::path("/") / path).lexically_normal().string();
  if (text.size() > 1 && text.back() == '/') text.pop_back();
  return text;
}

std::string ParentOf(const std::string& absolute_path) {
  const size_t slash = absolute_path.rfind('/');
  return slash == 0 ? "/" : absolute_path.substr(0, slash);
}

// Adds what stands directly below `prefix` (a folder with its '/') on the way to `path`.
void AddEntry(std::set<std::string>& names, const std::string& prefix, const std::string& path) {
  if (path.size() <= prefix.size() || !path.starts_with(prefix)) return;
  names.insert(path.substr(prefix.size(), path.find('/', prefix.size()) - prefix.size()));
}

std::string WithSlash(const std::string& folder) {
  return folder == "/" ? folder : folder + "/";
}

}  // namespace

class MemoryFileSystem::MemoryFile : public File {
 public:
  MemoryFile(MemoryFileSystem& owner, std::shared_ptr<Content> content, bool writable)
      : owner_(owner), content_(std::move(content)), writable_(writable) {}

  size_t Read(uint64_t position, ByteSpan into) override {
    ++owner_.counts_.reads;
    const ByteView bytes = content_->bytes;
    if (position >= bytes.size()) return 0;
    const ByteView rest = bytes.subspan(static_cast<size_t>(position));
    const size_t count = std::min(rest.size(), into.size());
    std::copy_n(rest.begin(), count, into.begin());
    return count;
  }

  uint64_t Size() override { return content_->bytes.size(); }

  bool Write(uint64_t position, ByteView bytes) override {
    ++owner_.counts_.writes;
    if (!writable_ || position > kLargestFile) return Remember(false);
    if (bytes.empty()) return true;
    const size_t start = static_cast<size_t>(position);
    const size_t end = start + bytes.size();
    if (end > content_->bytes.size()) content_->bytes.resize(end);
    std::copy(bytes.begin(), bytes.end(), content_->bytes.data() + start);
    content_->modified = owner_.clock_.Now();
    return true;
  }

  bool Truncate(uint64_t size) override {
    ++owner_.counts_.truncates;
    if (!writable_ || size > kLargestFile) return Remember(false);
    content_->bytes.resize(static_cast<size_t>(size));
    content_->modified = owner_.clock_.Now();
    return true;
  }

  bool Sync() override {
    ++owner_.counts_.syncs;
    return true;
  }

  int64_t ModificationTime() override { return content_->modified; }

  bool SetModificationTime(int64_t seconds) override {
    content_->modified = seconds;
    return true;
  }

 private:
  MemoryFileSystem& owner_;
  std::shared_ptr<Content> content_;
  bool writable_;
};

MemoryFileSystem::MemoryFileSystem(const MemoryFileSystem& other)
    : clock_(other.clock_), folders_(other.folders_) {
  for (const auto& [path, content] : other.files_) {
    files_[path] = std::make_shared<Content>(*content);
  }
}

std::unique_ptr<File> MemoryFileSystem::Open(const std::string& path, OpenMode mode) {
  ++counts_.opens;
  const bool creates = mode == OpenMode::kCreateOrOpen || mode == OpenMode::kCreateOrEmpty;
  const std::string absolute = Absolute(path);
  if (path.empty() || path.back() == '/' || IsFolder(absolute)) return nullptr;
  if (!files_.contains(absolute) && !(creates && CanHoldFile(absolute))) return nullptr;
  const std::shared_ptr<Content> content = Make(absolute);
  if (mode == OpenMode::kCreateOrEmpty) {
    content->bytes.clear();
    content->modified = clock_.Now();
  }
  return std::make_unique<MemoryFile>(*this, content, mode != OpenMode::kRead);
}

bool MemoryFileSystem::Exists(const std::string& path) {
  return !path.empty() && (files_.contains(Absolute(path)) || IsFolder(path));
}

bool MemoryFileSystem::IsFolder(const std::string& path) {
  if (path.empty()) return false;
  const std::string absolute = Absolute(path);
  if (absolute == "/" || folders_.contains(absolute)) return true;
  const std::string prefix = WithSlash(absolute);
  const auto file = files_.lower_bound(prefix);
  const auto folder = folders_.lower_bound(prefix);
  return (file != files_.end() && file->first.starts_with(prefix)) ||
         (folder != folders_.end() && folder->starts_with(prefix));
}

bool MemoryFileSystem::Remove(const std::string& path) {
  const std::string absolute = Absolute(path);
  if (files_.erase(absolute) == 0) return false;
  folders_.insert(ParentOf(absolute));  // an implied folder stays when its last file goes
  return true;
}

bool MemoryFileSystem::Rename(const std::string& from, const std::string& to) {
  const std::string source = Absolute(from);
  const std::string target = Absolute(to);
  const auto file = files_.find(source);
  if (file == files_.end() || IsFolder(target) || !CanHoldFile(target)) return false;
  if (source == target) return true;
  files_[target] = file->second;
  return Remove(source);
}

bool MemoryFileSystem::MakeFolder(const std::string& path) {
  const std::string absolute = Absolute(path);
  if (path.empty() || files_.contains(absolute) || !CanHoldFile(absolute)) return false;
  folders_.insert(absolute);
  return true;
}

std::vector<std::string> MemoryFileSystem::List(const std::string& folder) {
  std::set<std::string> names;
  const std::string prefix = WithSlash(Absolute(folder));
  for (const auto& entry : files_) AddEntry(names, prefix, entry.first);
  for (const std::string& entry : folders_) AddEntry(names, prefix, entry);
  return {names.begin(), names.end()};
}

std::string MemoryFileSystem::Canonical(const std::string& path) {
  return Absolute(path);
}

class MemoryFileSystem::MemoryLock : public RangeLock {
 public:
  using Ranges = std::vector<std::shared_ptr<LockedRange>>;
  MemoryLock(std::shared_ptr<Ranges> all, std::shared_ptr<LockedRange> own)
      : all_(std::move(all)), own_(std::move(own)) {
    all_->push_back(own_);
  }
  ~MemoryLock() override { std::erase(*all_, own_); }
  MemoryLock(const MemoryLock&) = delete;
  MemoryLock& operator=(const MemoryLock&) = delete;

 private:
  std::shared_ptr<Ranges> all_;
  std::shared_ptr<LockedRange> own_;
};

std::unique_ptr<RangeLock> MemoryFileSystem::LockRange(const std::string& path, uint64_t offset,
                                                       uint64_t size) {
  ++counts_.locks;
  const std::string file = Absolute(path);
  const uint64_t end = offset + size;
  const bool held = std::ranges::any_of(*locks_, [&](const std::shared_ptr<LockedRange>& range) {
    return range->path == file && range->offset < end && offset < range->end;
  });
  if (held || !files_.contains(file)) return nullptr;
  return std::make_unique<MemoryLock>(
      locks_, std::make_shared<LockedRange>(LockedRange{file, offset, end}));
}

std::vector<std::byte> MemoryFileSystem::Contents(const std::string& path) const {
  const auto file = files_.find(Absolute(path));
  return file == files_.end() ? std::vector<std::byte>() : file->second->bytes;
}

void MemoryFileSystem::SetContents(const std::string& path, ByteView bytes) {
  const std::shared_ptr<Content> content = Make(Absolute(path));
  content->bytes.assign(bytes.begin(), bytes.end());
  content->modified = clock_.Now();
}

std::shared_ptr<MemoryFileSystem::Content> MemoryFileSystem::Make(const std::string& path) {
  std::shared_ptr<Content>& content = files_[path];
  if (content == nullptr) {
    content = std::make_shared<Content>();
    content->modified = clock_.Now();
  }
  return content;
}

bool MemoryFileSystem::CanHoldFile(const std::string& path) {
  for (std::string folder = ParentOf(path); folder != "/"; folder = ParentOf(folder)) {
    if (files_.contains(folder)) return false;
  }
  return true;
}

}  // namespace carnetel
