#include "storage/family_files.h"

#include "base/format_text.h"
#include "base/path.h"
#include "storage/group_format.h"

namespace carnetel {
namespace {

bool IsSeatFile(std::string_view extension) {
  return extension != ".DAN" && extension != ".I01" && extension != ".I02";
}

void RemoveIfThere(FileSystem& files, const std::string& path) {
  if (files.Exists(path)) files.Remove(path);
}

// Names of an earlier layout of the family, kept as names to clean up: .T01 .T02 .T04 .T08 .T16.
void DeleteTemporaryLists(FileSystem& files, const FamilyPaths& paths) {
  for (int number = 1; number < 32; number *= 2) {
    RemoveIfThere(files, paths.BesideMain(FormatPrintf(".T%02d", {number})));
  }
}

void DeleteFilesOfGroups(FileSystem& files, const std::string& group_path) {
  const std::unique_ptr<File> file = files.Open(group_path, OpenMode::kRead);
  if (file == nullptr) return;
  std::array<std::byte, kGroupHeaderSize> header{};
  if (file->Read(0, header) < header.size()) return;
  const uint64_t row_size = LoadLe16(header, kGroupRowSizeOffset);
  const int rows = LoadLe16(header, kGroupCountOffset);
  for (int row = 1; row < rows; ++row) {
    std::array<std::byte, kGroupRowSize> bytes{};
    const uint64_t position = kGroupHeaderSize + row_size * static_cast<uint64_t>(row);
    if (file->Read(position, bytes) < bytes.size()) return;
    const std::string name =
        CopyFieldText(ByteView(bytes).subspan(kGroupFileNameOffset), kGroupFileNameSize);
    // A bare name lies beside the groups; anything else, a main file above all, is not a name that
    // a group was ever given.
    const bool main_file = HasExtension(name, ".DAN");
    if (name.empty() || main_file || name.find('/') != std::string::npos) continue;
    RemoveIfThere(files, PathSplit(group_path).folder + name);
  }
}

}  // namespace

FamilyPaths::FamilyPaths(FileSystem& files, std::string path, std::string shared_dir)
    : files_(&files), shared_dir_(std::move(shared_dir)) {
  PathPieces pieces = PathSplit(path);
  const auto is_family = [&pieces](std::string_view extension) {
    return CompareKey(pieces.extension, extension, extension.size() + 1) == 0;
  };
  // A stem may hold dots of its own: only an extension of the family is cut off.
  if (std::ranges::any_of(kFamilyExtensions, is_family)) pieces.extension.clear();
  stem_ = ComposePath(pieces);
  const std::string main = FindAnyCase(files, stem_ + ".DAN");
  stem_ = main.substr(0, main.size() - 4);
}

std::string FamilyPaths::Existing(const std::string& path) const {
  return FindAnyCase(*files_, path);
}

std::string FamilyPaths::Of(std::string_view extension) const {
  const std::string path = stem_ + std::string(extension);
  const bool in_seat = !shared_dir_.empty() && IsSeatFile(extension);
  return Existing(in_seat ? PathMerge(path, shared_dir_) : path);
}

std::string FamilyPaths::BesideMain(std::string_view extension) const {
  return Existing(stem_ + std::string(extension));
}

bool FamilyPaths::Holds(const std::string& path) const {
  const std::string file = files_->Canonical(path);
  return std::ranges::any_of(kFamilyExtensions, [&](std::string_view extension) {
    return files_->Canonical(Of(extension)) == file;
  });
}

bool DeleteDirectoryFiles(FileSystem& files, const std::string& path, const std::string& shared_dir,
                          size_t first) {
  const FamilyPaths paths(files, path, shared_dir);
  const std::string main = paths.Main();
  for (size_t i = first; i < kFamilyExtensions.size(); ++i) {
    const std::string own = paths.stem() + std::string(kFamilyExtensions[i]);
    const bool in_seat = !shared_dir.empty() && i > first;
    RemoveIfThere(files, FindAnyCase(files, in_seat ? PathMerge(own, shared_dir) : own));
  }
  DeleteTemporaryLists(files, paths);
  return !files.Exists(main);
}

void DeleteDependents(FileSystem& files, const FamilyPaths& paths, size_t first) {
  const std::string group_path = paths.Of(".GRP");
  DeleteFilesOfGroups(files, group_path);
  RemoveIfThere(files, group_path);
  for (size_t i = first; i < kDependentExtensions.size(); ++i) {
    RemoveIfThere(files, paths.Of(kDependentExtensions[i]));
  }
  DeleteTemporaryLists(files, paths);
}

}  // namespace carnetel
