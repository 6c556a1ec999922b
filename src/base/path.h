// Taking paths apart and putting them together. The files of a directory lie beside each other and
// differ in their extension alone, so every path is made from another one by replacing pieces:
// PathMerge("/a/MES.DAN", ".ADR") is "/a/MES.ADR", PathMerge("/a/MES.ADR", "/seat/") is
// "/seat/MES.ADR". The separator is '/'; there are no drives, ':' and '\' are plain characters.
#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

namespace carnetel {

struct PathPieces {
  std::string drive;      // always empty on this system
  std::string folder;     // with its trailing '/'
  std::string name;       // without extension
  std::string extension;  // from the last dot behind the folder on, with the dot
  bool wildcard = false;  // the name or the extension holds '*' or '?'

  friend bool operator==(const PathPieces&, const PathPieces&) = default;
};

// A name whose only dot is its first character, such as ".ADR", is an extension without a name.
[[nodiscard]] PathPieces PathSplit(std::string_view path);

// `base` with every piece that `overlay` has put in its place.
[[nodiscard]] PathPieces OverlayPieces(PathPieces base, const PathPieces& overlay);

[[nodiscard]] std::string ComposePath(const PathPieces& pieces);

// The path of `base` with every piece that `overlay` has put in its place.
[[nodiscard]] std::string PathMerge(std::string_view base, std::string_view overlay);

// Whether the path's extension is this one (with its dot), without regard to case.
[[nodiscard]] bool HasExtension(std::string_view path, std::string_view extension);

// For the paths in hand-off records and exchange replies, which receivers expect in capitals:
// ASCII and accented letters alike. No path that is opened may pass through here, since case
// matters in folders.
[[nodiscard]] AnsiText UpperCasePath(AnsiText path);

}  // namespace carnetel
