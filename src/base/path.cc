#include "base/path.h"

#include <algorithm>

namespace carnetel {
namespace {

constexpr char kSeparator = '/';

// Capital of a character of code page 1252; ß, µ, ƒ and the like have none there.
unsigned char AnsiCapital(unsigned char byte) {
  constexpr unsigned char kDivisionSign = 0xF7;
  const bool plain = byte >= 'a' && byte <= 'z';
  const bool accented = byte >= 0xE0 && byte <= 0xFE && byte != kDivisionSign;
  if (plain || accented) return static_cast<unsigned char>(byte - 0x20);
  const bool caron_or_ligature = byte == 0x9A || byte == 0x9C || byte == 0x9E;
  if (caron_or_ligature) return static_cast<unsigned char>(byte - 0x10);
  return byte == 0xFF ? 0x9F : byte;
}

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
  for (char& c : path.bytes()) c = static_cast<char>(AnsiCapital(static_cast<unsigned char>(c)));
  return path;
}

}  // namespace carnetel
