// Reading and writing UTF-8 one character at a time: the strict decoder behind the code page
// conversions and the character count behind limits and columns.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace carnetel {

// What DecodeUtf8 answers for bytes that are not UTF-8, and what is shown in their place.
inline constexpr char32_t kNotUtf8 = 0xFFFFFFFF;
inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// Some editors put it in front of a text.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
inline void DropByteOrderMark(std::string& text) {
  if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
}

// Takes the first character off `rest`, which must not be empty. Overlong forms, surrogates and cut
// sequences are kNotUtf8 and take one byte.
[[nodiscard]] char32_t DecodeUtf8(std::string_view& rest);

void AppendUtf8(std::string& text, char32_t character);

// Number of characters; a byte that is not UTF-8 counts as one.
[[nodiscard]] size_t CountCharacters(std::string_view utf8);

}  // namespace carnetel
