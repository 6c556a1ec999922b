// Names and paths as a file dialog shows and takes them: in the order in which a French reader
// looks for them, chosen by patterns, typed in any form, with the places from which a search
// starts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/folders.h"

namespace carnetel {

// One row of the list of types, from a text such as "Fichier Carnetel(*.Dan)|*.DAN|".
struct FileFilter {
  std::string text;
  std::string pattern;
  friend bool operator==(const FileFilter&, const FileFilter&) = default;
};

// The last character of `text` separates its entries: text and pattern in turn.
[[nodiscard]] std::vector<FileFilter> ParseFilters(std::string_view text);

// "*.*" means every file here too, with or without a dot.
[[nodiscard]] bool MatchesFilter(std::string_view name, std::string_view pattern);

// Numbers count as such; accents and case only between names that are equal without them.
void SortNames(std::vector<std::string>& names);

// `path`, which is absolute, without "." and "..", doubled separators and the one at its end.
[[nodiscard]] std::string CleanPath(std::string_view path);

// Both clean; a folder lies in itself too.
[[nodiscard]] bool LiesIn(std::string_view folder, std::string_view parent);

// The absolute path, cleaned, of what was typed while `folder` was shown; "~" is the user's home.
[[nodiscard]] std::string ResolveTyped(std::string_view typed, const std::string& folder,
                                       const Environment& environment);

// The names of a line such as `"A.DAN" "B.DAN"`; none when the line is not of that form.
[[nodiscard]] std::vector<std::string> ParseQuotedNames(std::string_view line);
[[nodiscard]] std::string QuoteNames(const std::vector<std::string>& names);

struct MountedVolume {
  std::string folder;  // where it is mounted
  std::string device;  // such as "/dev/sdb1" or "server:/export"
};

// Whether a user keeps files there: a disk that was put in, a share, a data partition; not one of
// the volumes that a system is made of.
[[nodiscard]] bool HoldsUserFiles(const MountedVolume& volume);

}  // namespace carnetel
