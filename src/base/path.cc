#include "base/path.h"

#include <algorithm>

#include "base/code_page.h"

namespace carnetel {
namespace {

constexpr char kSeparator = '/';

}  // namespace

PathPieces PathSplit(std::string_view path) {
  PathPieces pieces;
  const size_t name_start = path.find_last_of(kSeparator) + 1;
  const std::string_view name = path.substr(name_start);
  const size_t dot = std::min(name.find_last_of('.'), name.size());
  pieces.folder = path.substr(0, name_start);
  pieces.name = name.substr(0, dot);
  pieces.extension = name.substr(dot);
  pieces.wildcard = name.find_first_of("*?") != std::string_view::npos;
  return pieces;
}

PathPieces OverlayPieces(PathPieces base, const PathPieces& overlay) {
  if (!overlay.drive.empty()) base.drive = overlay.drive;
  if (!overlay.folder.empty()) base.folder = overlay.folder;
  if (!overlay.name.empty()) base.name = overlay.name;
  if (!overlay.extension.empty()) base.extension = overlay.extension;
  base.wildcard = (base.name + base.extension).find_first_of("*?") != std::string::npos;
  return base;
}

std::string ComposePath(const PathPieces& pieces) {
  if (!pieces.drive.empty() && pieces.folder.empty()) {
    return pieces.drive + kSeparator + pieces.name + pieces.extension;
  }
  return pieces.drive + pieces.folder + pieces.name + pieces.extension;
}

std::string PathMerge(std::string_view base, std::string_view overlay) {
  return ComposePath(OverlayPieces(PathSplit(base), PathSplit(overlay)));
}

bool HasExtension(std::string_view path, std::string_view extension) {
  return CompareKey(PathSplit(path).extension, extension, extension.size() + 1) == 0;
}

AnsiText UpperCasePath(AnsiText path) {
  return AnsiCapitals(std::move(path));
}

}  // namespace carnetel
