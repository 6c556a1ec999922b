#include "base/text.h"

namespace carnetel {
namespace {

constexpr char kEscape = 0x1B;

// Source and target of the fold: positions 1 to 7 of the source are the capitals U O N E A A A with
// their accents; the rest of the table has no target byte anybody uses.
constexpr std::string_view kFoldSource =
    "\x9A\x99\xA5\x90\x8E\x8F\x92 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-.:*&'()/"
    "abcdefghijklmnopqrstuvwxyz";
constexpr std::string_view kFoldTarget = "UONEAAA";

unsigned char LowerAscii(unsigned char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte + 0x20) : byte;
}

unsigned char ByteOrEnd(std::string_view text, size_t index) {
  return index < text.size() ? static_cast<unsigned char>(text[index]) : 0;
}

}  // namespace

std::string CopyFieldText(ByteView source, size_t limit) {
  const std::string_view area = AsChars(source.first(std::min(limit, source.size())));
  return std::string(area.substr(0, area.find('\0')));
}

void UpperCaseRun(std::string& text, size_t limit) {
  size_t counted = 0;
  for (size_t i = 0; i < text.size() && text[i] != '\0' && counted < limit; ++i) {
    if (text[i] == kEscape) {
      ++i;
      continue;
    }
    if (text[i] >= 'a' && text[i] <= 'z') text[i] = static_cast<char>(text[i] - 0x20);
    ++counted;
  }
}

size_t FindInTable(size_t start, std::string_view table, unsigned char byte) {
  const size_t found = table.find(static_cast<char>(byte), start);
  return found == std::string_view::npos ? 0 : found + 1;
}

size_t TrimmedLength(std::string_view text, TrimSide side) {
  if (side == TrimSide::kRight) return text.find_last_not_of(' ') + 1;
  const size_t first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? 0 : first + 1;
}

void TrimRight(std::string& text) {
  const size_t length = TrimmedLength(text, TrimSide::kRight);
  text.resize(length <= 1 ? 0 : length);
}

void CutTrailingBlanks(std::string& text) {
  text.resize(TrimmedLength(text, TrimSide::kRight));
}

unsigned char FoldByte(unsigned char byte) {
  const size_t position = FindInTable(0, kFoldSource, byte);
  if (position == 0 || position > kFoldTarget.size()) return 0;
  return static_cast<unsigned char>(kFoldTarget[position - 1]);
}

int CompareKey(std::string_view a, std::string_view b, size_t limit) {
  for (size_t i = 0; i < limit; ++i) {
    const unsigned char left = LowerAscii(ByteOrEnd(a, i));
    const unsigned char right = LowerAscii(ByteOrEnd(b, i));
    if (left != right) return left < right ? -1 : 1;
    if (left == 0) return 0;
  }
  return 0;
}

std::string WithCrLf(std::string_view text) {
  std::string result;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) result += '\r';
    result += text[i];
  }
  return result;
}

}  // namespace carnetel
