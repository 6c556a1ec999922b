#include "shell/file_names.h"

#include <algorithm>
#include <array>

#include "base/path.h"
#include "base/utf8.h"

namespace carnetel {
namespace {

// What the letters from U+00C0 to U+00FF are filed under; a blank stands for "as it is".
constexpr std::string_view kPlainLetters =
    "aaaaaa ceeeeiiii nooooo ouuuuy  "
    "aaaaaa ceeeeiiii nooooo ouuuuy y";
constexpr char32_t kFirstAccented = 0xC0;

void AppendPlain(std::u32string& key, char32_t letter) {
  switch (letter) {
    case 0xC6:  // Æ æ
    case 0xE6:
      key += U"ae";
      return;
    case 0x152:  // Œ œ
    case 0x153:
      key += U"oe";
      return;
    case 0x178:  // Ÿ
      key += U'y';
      return;
    default:
      break;
  }
  const size_t row = letter - kFirstAccented;
  const bool has_plain = letter >= kFirstAccented && row < kPlainLetters.size();
  if (has_plain && kPlainLetters[row] != ' ') {
    key += static_cast<char32_t>(kPlainLetters[row]);
  } else {
    key += letter >= U'A' && letter <= U'Z' ? letter + 0x20 : letter;
  }
}

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

// A number as a zero, how many digits it has, and these: 9 comes before 10.
void AppendNumber(std::u32string& key, std::string_view digits) {
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  key += U'0';
  key += static_cast<char32_t>(digits.size());
  for (const char digit : digits) key += static_cast<char32_t>(digit);
}

std::u32string SortKey(std::string_view utf8) {
  std::u32string key;
  while (!utf8.empty()) {
    const auto end = std::ranges::find_if_not(utf8, IsDigit);
    const auto digits = static_cast<size_t>(end - utf8.begin());
    if (digits > 0) {
      AppendNumber(key, utf8.substr(0, digits));
      utf8.remove_prefix(digits);
    } else {
      AppendPlain(key, DecodeUtf8(utf8));
    }
  }
  return key;
}

}  // namespace

std::vector<FileFilter> ParseFilters(std::string_view text) {
  std::vector<FileFilter> filters;
  if (text.empty()) return filters;
  const char separator = text.back();
  const auto take = [&text, separator] {
    const size_t end = text.find(separator);
    const std::string entry(text.substr(0, end));
    text.remove_prefix(std::min(end, text.size() - 1) + 1);
    return entry;
  };
  while (!text.empty()) {
    std::string shown = take();
    if (text.empty()) break;
    filters.push_back({std::move(shown), take()});
  }
  return filters;
}

bool MatchesFilter(std::string_view name, std::string_view pattern) {
  return pattern == "*.*" || MatchesPattern(name, pattern);
}

void SortNames(std::vector<std::string>& names) {
  std::vector<std::pair<std::u32string, std::string>> keyed;
  keyed.reserve(names.size());
  for (std::string& name : names) keyed.emplace_back(SortKey(name), std::move(name));
  std::ranges::sort(keyed);
  for (size_t i = 0; i < names.size(); ++i) names[i] = std::move(keyed[i].second);
}

std::string CleanPath(std::string_view path) {
  std::vector<std::string_view> parts;
  while (!path.empty()) {
    const size_t end = std::min(path.find('/'), path.size());
    const std::string_view part = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    if (part.empty() || part == ".") continue;
    if (part != "..") {
      parts.push_back(part);
    } else if (!parts.empty()) {
      parts.pop_back();
    }
  }
  std::string clean;
  for (const std::string_view part : parts) clean += "/" + std::string(part);
  return clean.empty() ? "/" : clean;
}

bool LiesIn(std::string_view folder, std::string_view parent) {
  if (parent == "/") return folder.starts_with('/');
  return folder.starts_with(parent) &&
         (folder.size() == parent.size() || folder[parent.size()] == '/');
}

std::string ResolveTyped(std::string_view typed, const std::string& folder,
                         const Environment& environment) {
  const std::string home = environment("HOME");
  if (!home.empty() && (typed == "~" || typed.starts_with("~/"))) {
    return CleanPath(home + std::string(typed.substr(1)));
  }
  return CleanPath(typed.starts_with('/') ? std::string(typed) : folder + "/" + std::string(typed));
}

std::vector<std::string> ParseQuotedNames(std::string_view line) {
  std::vector<std::string> names;
  while (true) {
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    if (line.empty()) return names;
    const size_t end = line.find('"', 1);
    if (line.front() != '"' || end == std::string_view::npos) return {};
    if (end > 1) names.emplace_back(line.substr(1, end - 1));
    line.remove_prefix(end + 1);
  }
}

std::string QuoteNames(const std::vector<std::string>& names) {
  std::string line;
  for (const std::string& name : names) line += (line.empty() ? "\"" : " \"") + name + "\"";
  return line;
}

bool HoldsUserFiles(const MountedVolume& volume) {
  constexpr std::array<std::string_view, 3> kForUsers = {"/media", "/mnt", "/run/media"};
  constexpr std::array<std::string_view, 12> kOfTheSystem = {"/boot", "/dev",  "/etc", "/nix",
                                                             "/opt",  "/proc", "/run", "/snap",
                                                             "/sys",  "/tmp",  "/usr", "/var"};
  const auto holds = [&volume](std::string_view parent) { return LiesIn(volume.folder, parent); };
  if (std::ranges::any_of(kForUsers, holds)) return true;
  if (volume.folder == "/" || std::ranges::any_of(kOfTheSystem, holds)) return false;
  const std::string_view device = volume.device;
  const bool disk = device.starts_with("/dev/") && !device.starts_with("/dev/loop");
  const bool share = device.starts_with("//") || device.find(":/") != std::string_view::npos;
  return disk || share;
}

}  // namespace carnetel
