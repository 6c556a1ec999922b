// Text as the stores hold it: bytes of one of two code pages, and the small helpers that cut, fold
// and search such bytes. Cards, keys and names on disk are OEM (code page 850); forms, hand-off
// records and some transfer files are ANSI (code page 1252). The two are different types, so that a
// missed conversion does not compile; conversions are in base/code_page.h.
#pragma once

#include <compare>
#include <string>
#include <string_view>
#include <utility>

#include "base/bytes.h"

namespace carnetel {

template <class CodePage>
class CodedText {
 public:
  CodedText() = default;
  explicit CodedText(std::string bytes) : bytes_(std::move(bytes)) {}

  [[nodiscard]] const std::string& bytes() const { return bytes_; }
  std::string& bytes() { return bytes_; }
  [[nodiscard]] bool empty() const { return bytes_.empty(); }
  [[nodiscard]] size_t size() const { return bytes_.size(); }
  friend bool operator==(const CodedText&, const CodedText&) = default;

 private:
  std::string bytes_;
};

using OemText = CodedText<struct OemCodePage>;
using AnsiText = CodedText<struct AnsiCodePage>;

// The bytes of `source` up to its first zero byte, its end or `limit`, whichever comes first.
std::string CopyFieldText(ByteView source, size_t limit);
inline std::string CopyFieldText(std::string_view source, size_t limit) {
  return CopyFieldText(AsBytes(source), limit);
}

// Makes 'a' to 'z' capitals in place, over at most `limit` counted bytes, stopping at a zero byte.
// An ESC byte (1Bh) and the byte behind it are stepped over unchanged and uncounted. Bytes above
// 7Fh stay: accented letters keep their form in keys and comparisons.
void UpperCaseRun(std::string& text, size_t limit);

// Position plus one of `byte` in a table, searched from `start`; 0 when it is not there.
size_t FindInTable(size_t start, std::string_view table, unsigned char byte);

enum class TrimSide { kLeft, kRight };
// kRight: the length of `text` without trailing blanks. kLeft: one more than the number of leading
// blanks, or 0 when the text is blank or empty.
size_t TrimmedLength(std::string_view text, TrimSide side);

// Removes trailing blanks, and more than that: a text of one character, or one whose only non-blank
// character is the first, is emptied. Callers rely on it; for a plain cut use CutTrailingBlanks.
void TrimRight(std::string& text);

void CutTrailingBlanks(std::string& text);

// Line ends as notes in a card have them: every LF without a CR in front gets one.
[[nodiscard]] std::string WithCrLf(std::string_view text);

// Replaces a byte above 'Z' by the capital it is filed under: the seven accented OEM capitals give
// their plain letter, any byte without a place in the table gives 0, which ends a key there.
unsigned char FoldByte(unsigned char byte);

// Compares over at most `limit` bytes, 'A' to 'Z' as 'a' to 'z', other bytes as unsigned values,
// ending at a zero byte (or the end) of either text. Negative, 0 or positive.
int CompareKey(std::string_view a, std::string_view b, size_t limit);

}  // namespace carnetel
