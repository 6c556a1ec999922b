#include "platform/overlay_file_system.h"

#include <algorithm>

namespace carnetel {

bool OverlayFileSystem::Take(const std::string& canonical) {
  if (IsOurs(canonical)) return true;
  if (base_.Exists(canonical) && !base_.IsFolder(canonical)) {
    const std::unique_ptr<File> file = base_.Open(canonical, OpenMode::kRead);
    if (file == nullptr) return false;
    std::vector<std::byte> bytes(static_cast<size_t>(file->Size()));
    if (file->Read(0, bytes) < bytes.size()) return false;
    memory_.SetContents(canonical, bytes);
    const std::unique_ptr<File> copy = memory_.Open(canonical, OpenMode::kReadWrite);
    copy->SetModificationTime(file->ModificationTime());
  }
  ours_.insert(canonical);
  return true;
}

bool OverlayFileSystem::HasFolder(const std::string& canonical) {
  const size_t slash = canonical.rfind('/');
  return slash == std::string::npos || slash == 0 || IsFolder(canonical.substr(0, slash));
}

std::unique_ptr<File> OverlayFileSystem::Open(const std::string& path, OpenMode mode) {
  const std::string file = Canonical(path);
  if (mode == OpenMode::kRead && !IsOurs(file)) return base_.Open(path, mode);
  const bool creates = mode == OpenMode::kCreateOrOpen || mode == OpenMode::kCreateOrEmpty;
  if (path.empty() || path.back() == '/' || IsFolder(file)) return nullptr;
  if (creates ? !HasFolder(file) : !Exists(file)) return nullptr;
  return Take(file) ? memory_.Open(file, mode) : nullptr;
}

bool OverlayFileSystem::Exists(const std::string& path) {
  const std::string file = Canonical(path);
  return IsOurs(file) ? memory_.Exists(file) : base_.Exists(path) || memory_.IsFolder(file);
}

bool OverlayFileSystem::IsFolder(const std::string& path) {
  return base_.IsFolder(path) || memory_.IsFolder(Canonical(path));
}

bool OverlayFileSystem::Remove(const std::string& path) {
  const std::string file = Canonical(path);
  if (IsFolder(file) || !Exists(file)) return false;
  return Take(file) && memory_.Remove(file);
}

bool OverlayFileSystem::Rename(const std::string& from, const std::string& to) {
  const std::string source = Canonical(from);
  const std::string target = Canonical(to);
  if (IsFolder(source) || !Exists(source) || IsFolder(target) || !HasFolder(target)) return false;
  if (!Take(source)) return false;
  ours_.insert(target);
  return memory_.Rename(source, target);
}

bool OverlayFileSystem::MakeFolder(const std::string& path) {
  const std::string folder = Canonical(path);
  if (IsFolder(folder)) return true;
  for (size_t end = folder.size(); end != std::string::npos && end != 0;
       end = folder.rfind('/', end - 1)) {
    const std::string part = folder.substr(0, end);
    if (Exists(part) && !IsFolder(part)) return false;
  }
  return !path.empty() && memory_.MakeFolder(folder);
}

std::vector<std::string> OverlayFileSystem::List(const std::string& folder) {
  const std::string inside = Canonical(folder);
  const std::string prefix = inside.ends_with('/') ? inside : inside + '/';
  std::vector<std::string> names = memory_.List(inside);
  for (const std::string& name : base_.List(folder)) {
    const bool listed = std::ranges::find(names, name) != names.end();
    if (!listed && !IsOurs(prefix + name)) names.push_back(name);
  }
  return names;
}

std::string OverlayFileSystem::Canonical(const std::string& path) {
  return base_.Canonical(path);
}

}  // namespace carnetel
