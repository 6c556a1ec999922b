// The two code pages of the system and the ways between them and UTF-8. Cards and their keys are
// OEM (code page 850), forms, hand-off records and some transfer files ANSI (code page 1252), and
// everything outside (terminal, window, file names) is UTF-8. Both pages are single-byte and give
// every one of their 256 bytes a character of its own, so a byte always survives the way to UTF-8
// and back; between the two pages, and by the lossy ways, a look-alike stands in ("?" at the last).
#pragma once

#include <string>
#include <string_view>

#include "base/bytes.h"
#include "base/text.h"

namespace carnetel {

// Converts a whole buffer in place, zero bytes and what follows them included.
void OemToCharBuff(ByteSpan buffer);
void CharToOemBuff(ByteSpan buffer);

[[nodiscard]] AnsiText OemToAnsi(const OemText& text);
[[nodiscard]] OemText AnsiToOem(const AnsiText& text);

// Every letter that has a capital in its page as that one, accented ones too.
[[nodiscard]] AnsiText AnsiCapitals(AnsiText text);

[[nodiscard]] std::string Utf8FromOem(const OemText& text);
[[nodiscard]] std::string Utf8FromAnsi(const AnsiText& text);

// `refused` is the first character (in UTF-8) that the page does not hold exactly, U+FFFD for bytes
// that are not UTF-8, and empty when everything was converted; `text` is what stood before it.
struct OemConversion {
  OemText text;
  std::string refused;
};
struct AnsiConversion {
  AnsiText text;
  std::string refused;
};
[[nodiscard]] OemConversion OemFromUtf8(std::string_view utf8);
[[nodiscard]] AnsiConversion AnsiFromUtf8(std::string_view utf8);

// For texts that must get through whatever they hold (the program's own, paths): one byte a
// character, a look-alike or "?" where the page lacks it.
[[nodiscard]] OemText OemFromUtf8Lossy(std::string_view utf8);
[[nodiscard]] AnsiText AnsiFromUtf8Lossy(std::string_view utf8);

}  // namespace carnetel
