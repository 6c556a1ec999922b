// Fills numbers and names into a text with printf directives, mostly one of the string table. It is
// a printf that cannot go wrong: an argument that is missing or of the wrong kind leaves its
// directive in the text as it stands, and what stands in an argument is never read as a directive.
#pragma once

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "base/string_table.h"

namespace carnetel {

// A number or a text. A text is referred to, not copied: it must outlive the call.
class FormatArgument {
 public:
  template <std::signed_integral T>
  FormatArgument(T number) : value_(static_cast<int64_t>(number)) {}
  template <std::unsigned_integral T>
  FormatArgument(T number) : value_(static_cast<uint64_t>(number)) {}
  FormatArgument(std::string_view text) : value_(text) {}
  FormatArgument(const std::string& text) : value_(std::string_view(text)) {}
  FormatArgument(const char* text) : value_(std::string_view(text)) {}

  [[nodiscard]] const auto& value() const { return value_; }

 private:
  std::variant<int64_t, uint64_t, std::string_view> value_;
};

// Knows %s %d %i %u %x %X %c %% with the flags "-0+ #", width and precision, both as digits or "*".
// Widths and precisions of texts count bytes: pass text in a code page when they are used.
[[nodiscard]] std::string FormatPrintf(std::string_view format,
                                       std::span<const FormatArgument> arguments);
[[nodiscard]] inline std::string FormatPrintf(std::string_view format,
                                              std::initializer_list<FormatArgument> arguments) {
  return FormatPrintf(format, std::span(arguments.begin(), arguments.size()));
}

// Text `id` of the string table with its directives filled in; texts are UTF-8.
template <class... Args>
[[nodiscard]] std::string FormatText(int id, const Args&... args) {
  return FormatPrintf(LoadText(id), std::initializer_list<FormatArgument>{args...});
}

}  // namespace carnetel
