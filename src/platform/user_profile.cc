#include "platform/user_profile.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <memory>
#include <system_error>
#include <utility>

#include "platform/ini_text.h"

namespace carnetel {
namespace {

std::string_view WithoutQuotes(std::string_view text) {
  const bool quoted = text.size() >= 2 && text.front() == text.back() &&
                      (text.front() == '"' || text.front() == '\'');
  return quoted ? text.substr(1, text.size() - 2) : text;
}

int LeadingNumber(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  if (text.starts_with('-')) return 0;  // from_chars would take a second sign
  int64_t number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec == std::errc::result_out_of_range) number = std::numeric_limits<int64_t>::max();
  if (negative) number = -number;
  return static_cast<int>(std::clamp<int64_t>(number, std::numeric_limits<int>::min(),
                                              std::numeric_limits<int>::max()));
}

}  // namespace

UserProfile::UserProfile(FileSystem& files, std::string path)
    : files_(files), path_(std::move(path)) {}

std::string UserProfile::Text(std::string_view section, std::string_view key,
                              std::string_view fallback) const {
  if (section.empty()) return std::string(fallback);
  const std::string content = Load().value_or(std::string());
  const std::optional<std::string_view> value = FindIniValue(content, section, key);
  return std::string(value ? WithoutQuotes(*value) : fallback);
}

int UserProfile::Int(std::string_view section, std::string_view key, int fallback) const {
  const std::string text = Text(section, key, "");
  return text.empty() ? fallback : LeadingNumber(text);
}

bool UserProfile::Write(std::string_view section, std::string_view key, std::string_view text) {
  if (section.empty()) return true;
  if (text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos) return false;
  const std::optional<std::string> content = Load();
  if (path_.empty() || !content) return false;
  const std::string changed = WithIniValue(*content, section, key, text);
  return changed == *content || Replace(changed);
}

bool UserProfile::WriteInt(std::string_view section, std::string_view key, int value) {
  return Write(section, key, std::to_string(value));
}

std::optional<std::string> UserProfile::Load() const {
  return files_.Exists(path_) ? ReadText(files_, path_) : std::optional(std::string());
}

bool UserProfile::Replace(std::string_view content) {
  const std::string target = files_.Canonical(path_);
  files_.MakeFolder(target.substr(0, target.rfind('/') + 1));
  return ReplaceFile(files_, target, AsBytes(content));
}

}  // namespace carnetel
