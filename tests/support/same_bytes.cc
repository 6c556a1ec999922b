#include "tests/support/same_bytes.h"

#include "base/format_text.h"

namespace carnetel {
namespace {

constexpr size_t kBytesPerRow = 16;
constexpr int kMostRowsShown = 12;

ByteView RowOf(ByteView bytes, size_t position) {
  if (position >= bytes.size()) return {};
  return bytes.subspan(position, std::min(kBytesPerRow, bytes.size() - position));
}

}  // namespace

std::string Hex(ByteView bytes) {
  std::string text;
  for (const std::byte byte : bytes) {
    if (!text.empty()) text += ' ';
    text += FormatPrintf("%02X", {std::to_integer<int>(byte)});
  }
  return text;
}

::testing::AssertionResult SameBytes(ByteView expected, ByteView actual) {
  if (std::ranges::equal(AsChars(expected), AsChars(actual))) return ::testing::AssertionSuccess();
  ::testing::AssertionResult failure = ::testing::AssertionFailure();
  failure << "expected " << expected.size() << " bytes, are " << actual.size() << "\n";
  int shown = 0;
  const size_t end = std::max(expected.size(), actual.size());
  for (size_t position = 0; position < end && shown < kMostRowsShown; position += kBytesPerRow) {
    const ByteView wanted = RowOf(expected, position);
    const ByteView there = RowOf(actual, position);
    if (std::ranges::equal(wanted, there)) continue;
    failure << "at " << position << " expected " << Hex(wanted) << "\n"
            << std::string(std::to_string(position).size() + 3, ' ') << "     are " << Hex(there)
            << "\n";
    ++shown;
  }
  return failure;
}

}  // namespace carnetel
