#include "base/format_text.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

namespace carnetel {
namespace {

// No field of a text is wider than this, so that a wild width cannot ask for all memory.
constexpr int kWidestField = 1024;

struct Directive {
  std::string_view text;  // as it stands in the format
  std::string_view flags;
  int width = 0;
  std::optional<int> precision;
  char conversion = 0;

  [[nodiscard]] bool Has(char flag) const { return flags.find(flag) != std::string_view::npos; }
  [[nodiscard]] bool left() const { return Has('-') || width < 0; }
};

class Arguments {
 public:
  explicit Arguments(std::span<const FormatArgument> rest) : rest_(rest) {}

  const FormatArgument* Next() {
    if (rest_.empty()) return nullptr;
    const FormatArgument* next = rest_.data();
    rest_ = rest_.subspan(1);
    return next;
  }

 private:
  std::span<const FormatArgument> rest_;
};

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

std::string_view TakeAll(std::string_view& rest, std::string_view characters) {
  const std::string_view taken = rest.substr(0, rest.find_first_not_of(characters));
  rest.remove_prefix(taken.size());
  return taken;
}

// The number of a value that a directive shows, or nothing when it is a text.
std::optional<int64_t> SignedNumber(const FormatArgument& argument) {
  if (const auto* number = std::get_if<int64_t>(&argument.value())) return *number;
  if (const auto* number = std::get_if<uint64_t>(&argument.value())) {
    return static_cast<int64_t>(*number);
  }
  return std::nullopt;
}

// A width or precision: digits, or '*' and the number of the next argument.
int TakeSize(std::string_view& rest, Arguments& arguments) {
  if (rest.starts_with('*')) {
    rest.remove_prefix(1);
    const FormatArgument* argument = arguments.Next();
    const int64_t size = argument == nullptr ? 0 : SignedNumber(*argument).value_or(0);
    return static_cast<int>(std::clamp<int64_t>(size, -kWidestField, kWidestField));
  }
  int size = 0;
  for (; !rest.empty() && IsDigit(rest[0]); rest.remove_prefix(1)) {
    size = std::min(kWidestField, size * 10 + (rest[0] - '0'));
  }
  return size;
}

// Reads a directive at the '%' that `rest` begins with and takes it off.
Directive TakeDirective(std::string_view& rest, Arguments& arguments) {
  const std::string_view start = rest;
  Directive directive;
  rest.remove_prefix(1);
  directive.flags = TakeAll(rest, "-0+ #");
  directive.width = TakeSize(rest, arguments);
  if (rest.starts_with('.')) {
    rest.remove_prefix(1);
    const int precision = TakeSize(rest, arguments);
    if (precision >= 0) directive.precision = precision;
  }
  TakeAll(rest, "hl");
  if (!rest.empty()) {
    directive.conversion = rest[0];
    rest.remove_prefix(1);
  }
  directive.text = start.substr(0, start.size() - rest.size());
  return directive;
}

std::string Pad(std::string text, const Directive& directive) {
  const auto width = static_cast<size_t>(std::abs(directive.width));
  if (text.size() < width) {
    text.insert(directive.left() ? text.size() : 0, width - text.size(), ' ');
  }
  return text;
}

// `sign` stays in front of the zeros that fill up to the precision or the width.
std::string PadNumber(std::string sign, std::string digits, const Directive& directive) {
  const auto width = static_cast<size_t>(std::abs(directive.width));
  size_t wanted = static_cast<size_t>(directive.precision.value_or(1));
  const bool fill = directive.Has('0') && !directive.left() && !directive.precision;
  if (fill && width > sign.size()) wanted = std::max(wanted, width - sign.size());
  if (digits.size() < wanted) digits.insert(0, wanted - digits.size(), '0');
  return Pad(std::move(sign) + digits, directive);
}

std::string Digits(uint64_t number, unsigned base, std::string_view symbols) {
  std::string digits;
  for (; number != 0; number /= base) digits.insert(digits.begin(), symbols[number % base]);
  return digits;
}

std::string FormatSigned(int64_t number, const Directive& directive) {
  const uint64_t size =
      number < 0 ? 0 - static_cast<uint64_t>(number) : static_cast<uint64_t>(number);
  std::string sign = number < 0 ? "-" : directive.Has('+') ? "+" : directive.Has(' ') ? " " : "";
  return PadNumber(std::move(sign), Digits(size, 10, "0123456789"), directive);
}

// A negative number of 32 bits or less shows as the 32-bit number of the same bits.
uint64_t UnsignedNumber(int64_t number, const FormatArgument& argument) {
  const bool narrow = std::holds_alternative<int64_t>(argument.value()) && number >= INT32_MIN;
  return narrow && number < 0 ? static_cast<uint32_t>(number) : static_cast<uint64_t>(number);
}

std::string FormatUnsigned(uint64_t number, const Directive& directive) {
  const bool hexadecimal = directive.conversion != 'u';
  const std::string_view symbols =
      directive.conversion == 'x' ? "0123456789abcdef" : "0123456789ABCDEF";
  std::string prefix;
  if (hexadecimal && directive.Has('#') && number != 0) prefix = {'0', directive.conversion};
  return PadNumber(std::move(prefix), Digits(number, hexadecimal ? 16 : 10, symbols), directive);
}

std::string FormatString(std::string_view text, const Directive& directive) {
  if (directive.precision) text = text.substr(0, static_cast<size_t>(*directive.precision));
  return Pad(std::string(text), directive);
}

// False for a '%' that merely stands in a text.
bool TakesArgument(const Directive& directive) {
  return std::string_view("sdiuxXc").find(directive.conversion) != std::string_view::npos;
}

// What the directive makes of the argument, or nothing when they do not go together.
std::optional<std::string> Fill(const Directive& directive, const FormatArgument& argument) {
  if (directive.conversion == 's') {
    const auto* text = std::get_if<std::string_view>(&argument.value());
    return text == nullptr ? std::nullopt : std::optional(FormatString(*text, directive));
  }
  const std::optional<int64_t> number = SignedNumber(argument);
  if (!number) return std::nullopt;
  switch (directive.conversion) {
    case 'd':
    case 'i':
      return FormatSigned(*number, directive);
    case 'u':
    case 'x':
    case 'X':
      return FormatUnsigned(UnsignedNumber(*number, argument), directive);
    case 'c':
      return Pad(std::string(1, static_cast<char>(*number)), directive);
    default:
      return std::nullopt;
  }
}

}  // namespace

std::string FormatPrintf(std::string_view format, std::span<const FormatArgument> arguments) {
  Arguments remaining(arguments);
  std::string result;
  while (!format.empty()) {
    const std::string_view plain = format.substr(0, format.find('%'));
    result += plain;
    format.remove_prefix(plain.size());
    if (format.empty()) break;
    const Directive directive = TakeDirective(format, remaining);
    if (directive.conversion == '%') {
      result += '%';
      continue;
    }
    const FormatArgument* argument = TakesArgument(directive) ? remaining.Next() : nullptr;
    const std::optional<std::string> filled =
        argument == nullptr ? std::nullopt : Fill(directive, *argument);
    result += filled ? std::string_view(*filled) : directive.text;
  }
  return result;
}

}  // namespace carnetel
