// The files of one directory: one stem, one extension each, beside each other; with seats, the
// files that belong to a seat (marks, criteria, groups, layouts) lie in its own folder instead.
// Extensions are written in capitals; a file that is there under another case is used as it is.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace carnetel {

// In the order in which a directory is deleted.
inline constexpr std::array<std::string_view, 7> kFamilyExtensions = {
    ".DAN", ".ADR", ".I01", ".I02", ".CRT", ".LST", ".GRP"};
// What goes when an address file has to be made anew: its use starts at the fourth name, behind the
// three that are rebuilt.
inline constexpr std::array<std::string_view, 6> kDependentExtensions = {".DAN", ".ADR", ".I01",
                                                                         ".CRT", ".LST", ".GRP"};
inline constexpr size_t kFirstDependent = 3;

class FamilyPaths {
 public:
  // `path`: the main file, with or without its extension, or any other file of the family.
  // `shared_dir`: the folder of the seat, with a trailing separator; empty without seats.
  FamilyPaths(FileSystem& files, std::string path, std::string shared_dir = {});

  // The stem with its folder, as the main file has it when there is one.
  [[nodiscard]] const std::string& stem() const { return stem_; }
  // As given above.
  [[nodiscard]] const std::string& shared_dir() const { return shared_dir_; }
  // Path of a file of the family; `extension` with its dot, in capitals.
  [[nodiscard]] std::string Of(std::string_view extension) const;
  // The same in the directory's own folder, seats or not.
  [[nodiscard]] std::string BesideMain(std::string_view extension) const;
  // Whether the path leads to a file of the family, whatever way it is written.
  [[nodiscard]] bool Holds(const std::string& path) const;
  [[nodiscard]] std::string Main() const { return BesideMain(".DAN"); }

 private:
  [[nodiscard]] std::string Existing(const std::string& path) const;

  FileSystem* files_;
  std::string stem_;
  std::string shared_dir_;
};

// Deletes a directory's files from the extension at `first` on, and its temporary list files. With
// seats, everything but the main file is looked for in the seat's folder: the two shared indexes
// stay behind, and the next creation under that name repairs them. True when the main file is gone.
bool DeleteDirectoryFiles(FileSystem& files, const std::string& path, const std::string& shared_dir,
                          size_t first = 0);

// Deletes what depends on the address file: the files that the groups name, the groups, criteria
// and layouts, and the temporary list files.
void DeleteDependents(FileSystem& files, const FamilyPaths& paths, size_t first = kFirstDependent);

}  // namespace carnetel
