#include "transfer/separator.h"

#include <algorithm>
#include <cstdlib>

#include "base/format_text.h"

namespace carnetel {
namespace {

const SeparatorName* FindName(std::string_view text) {
  const auto* row = std::ranges::find(kSeparatorNames, text, &SeparatorName::name);
  return row == kSeparatorNames.end() ? nullptr : row;
}

// The next token of `rest`, taken off it; empty when there is none.
std::string_view TakeToken(std::string_view* rest) {
  rest->remove_prefix(std::min(rest->find_first_not_of(' '), rest->size()));
  const std::string_view token = rest->substr(0, rest->find(' '));
  rest->remove_prefix(token.size());
  return token;
}

char TokenValue(std::string_view token) {
  if (token.size() == 1) return token[0];
  if (token.size() > 3) return '\0';
  const bool hex = token.size() == 3 && (token[2] == 'H' || token[2] == 'h');
  const long value = std::strtol(std::string(token).c_str(), nullptr, hex ? 16 : 10);
  return value < 0 || value > 255 ? '\0' : static_cast<char>(value);
}

std::string TokenBytes(std::string_view text) {
  std::string bytes;
  for (;;) {
    const std::string_view token = TakeToken(&text);
    if (token.empty()) return bytes;
    bytes += TokenValue(token);
  }
}

}  // namespace

std::string ParseSeparator(std::string_view text, SeparatorForm form) {
  const SeparatorName* name = FindName(text);
  if (form == SeparatorForm::kBytes) return TokenBytes(name == nullptr ? text : name->code);
  if (name != nullptr) return std::string(text);
  std::string shown;
  for (const char c : TokenBytes(text)) {
    const auto value = static_cast<unsigned char>(c);
    shown += FormatPrintf(value > 32 && value < 127 ? "%c " : "%02Xh ", {value});
  }
  if (shown.empty()) return "00h";
  shown.pop_back();
  return shown;
}

std::ptrdiff_t FindBytes(std::string_view buffer, std::string_view pattern, size_t from) {
  const size_t found = buffer.find(pattern, from);
  return found == std::string_view::npos ? -1 : static_cast<std::ptrdiff_t>(found);
}

}  // namespace carnetel
