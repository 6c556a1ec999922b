#include "platform/ini_text.h"

#include <algorithm>

#include "base/text.h"
#include "base/utf8.h"

namespace carnetel {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kLineEnds = "\r\n";

// Where a key stands, or would stand.
struct Place {
  bool found = false;
  size_t value_start = 0;  // of a key that was found
  size_t value_end = 0;
  std::optional<size_t> last_line_end;  // of the last key line of the section, or of its header
};

std::string_view Trim(std::string_view text) {
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool SameName(std::string_view a, std::string_view b) {
  return CompareKey(a, b, std::string_view::npos) == 0;
}

bool IsComment(std::string_view trimmed_line) {
  return trimmed_line.starts_with(';') || trimmed_line.starts_with('#');
}

// The name between the brackets of a header line; none for any other line.
std::optional<std::string_view> HeaderName(std::string_view trimmed_line) {
  const size_t close = trimmed_line.find(']');
  if (!trimmed_line.starts_with('[') || close == std::string_view::npos) return std::nullopt;
  return Trim(trimmed_line.substr(1, close - 1));
}

// `line` starts at `offset` of the text and has its `equals` sign there.
void SetValueRange(Place& place, std::string_view line, size_t offset, size_t equals) {
  const std::string_view behind = line.substr(equals + 1);
  const size_t first = behind.find_first_not_of(kBlanks);
  const size_t start = first == std::string_view::npos ? line.size() : equals + 1 + first;
  place.found = true;
  place.value_start = offset + start;
  place.value_end = place.value_start + Trim(behind).size();
}

Place FindPlace(std::string_view text, std::string_view section, std::string_view key) {
  Place place;
  bool inside = false;
  size_t start = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
  while (start < text.size() && !place.found) {
    const size_t end = std::min(text.find_first_of(kLineEnds, start), text.size());
    const std::string_view line = text.substr(start, end - start);
    const std::string_view trimmed = Trim(line);
    const size_t equals = line.find('=');
    const std::optional<std::string_view> header = HeaderName(trimmed);
    if (header) inside = SameName(*header, section);
    const bool is_key = !header && !IsComment(trimmed) && equals != std::string_view::npos;
    if (inside && (header || is_key)) place.last_line_end = end;
    if (inside && is_key && SameName(Trim(line.substr(0, equals)), key)) {
      SetValueRange(place, line, start, equals);
    }
    start = end + 1;  // the LF of a CR LF is an empty line of its own here, which matters to nobody
  }
  return place;
}

std::string LineEndOf(std::string_view text) {
  const size_t first = text.find_first_of(kLineEnds);
  if (first == std::string_view::npos || text[first] == '\n') return "\n";
  return text.substr(first).starts_with("\r\n") ? "\r\n" : "\r";
}

}  // namespace

std::optional<std::string_view> FindIniValue(std::string_view text, std::string_view section,
                                             std::string_view key) {
  const Place place = FindPlace(text, section, key);
  if (!place.found) return std::nullopt;
  return text.substr(place.value_start, place.value_end - place.value_start);
}

std::string WithIniValue(std::string text, std::string_view section, std::string_view key,
                         std::string_view value) {
  const Place place = FindPlace(text, section, key);
  if (place.found) {
    return text.replace(place.value_start, place.value_end - place.value_start, value);
  }
  const std::string line_end = LineEndOf(text);
  const std::string line = std::string(key) + "=" + std::string(value);
  if (place.last_line_end) return text.insert(*place.last_line_end, line_end + line);
  const bool has_lines = !text.empty() && text != kByteOrderMark;
  if (has_lines && !(text.back() == '\n' || text.back() == '\r')) text += line_end;
  if (has_lines) text += line_end;
  return text + "[" + std::string(section) + "]" + line_end + line + line_end;
}

}  // namespace carnetel
