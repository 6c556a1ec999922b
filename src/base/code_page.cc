#include "base/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <optional>

#include "base/utf8.h"

namespace carnetel {
namespace {

using UpperHalf = std::array<char16_t, 128>;
using ByteTable = std::array<uint8_t, 256>;

// Characters of the bytes 80h to FFh; those below are ASCII in both pages.
// clang-format off
constexpr UpperHalf kOemUpperHalf = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7,  // 80h
    0x00EA, 0x00EB, 0x00E8, 0x00EF, 0x00EE, 0x00EC, 0x00C4, 0x00C5,  // 88h
    0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9,  // 90h
    0x00FF, 0x00D6, 0x00DC, 0x00F8, 0x00A3, 0x00D8, 0x00D7, 0x0192,  // 98h
    0x00E1, 0x00ED, 0x00F3, 0x00FA, 0x00F1, 0x00D1, 0x00AA, 0x00BA,  // A0h
    0x00BF, 0x00AE, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB,  // A8h
    0x2591, 0x2592, 0x2593, 0x2502, 0x2524, 0x00C1, 0x00C2, 0x00C0,  // B0h
    0x00A9, 0x2563, 0x2551, 0x2557, 0x255D, 0x00A2, 0x00A5, 0x2510,  // B8h
    0x2514, 0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x00E3, 0x00C3,  // C0h
    0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550, 0x256C, 0x00A4,  // C8h
    0x00F0, 0x00D0, 0x00CA, 0x00CB, 0x00C8, 0x0131, 0x00CD, 0x00CE,  // D0h
    0x00CF, 0x2518, 0x250C, 0x2588, 0x2584, 0x00A6, 0x00CC, 0x2580,  // D8h
    0x00D3, 0x00DF, 0x00D4, 0x00D2, 0x00F5, 0x00D5, 0x00B5, 0x00FE,  // E0h
    0x00DE, 0x00DA, 0x00DB, 0x00D9, 0x00FD, 0x00DD, 0x00AF, 0x00B4,  // E8h
    0x00AD, 0x00B1, 0x2017, 0x00BE, 0x00B6, 0x00A7, 0x00F7, 0x00B8,  // F0h
    0x00B0, 0x00A8, 0x00B7, 0x00B9, 0x00B3, 0x00B2, 0x25A0, 0x00A0,  // F8h
};
// The five bytes without a character (81h 8Dh 8Fh 90h 9Dh) stand for the control of their value.
constexpr UpperHalf kAnsiUpperHalf = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80h
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88h
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90h
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98h
    0x00A0, 0x00A1, 0x00A2, 0x00A3, 0x00A4, 0x00A5, 0x00A6, 0x00A7,  // A0h
    0x00A8, 0x00A9, 0x00AA, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x00AF,  // A8h
    0x00B0, 0x00B1, 0x00B2, 0x00B3, 0x00B4, 0x00B5, 0x00B6, 0x00B7,  // B0h
    0x00B8, 0x00B9, 0x00BA, 0x00BB, 0x00BC, 0x00BD, 0x00BE, 0x00BF,  // B8h
    0x00C0, 0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C6, 0x00C7,  // C0h
    0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC, 0x00CD, 0x00CE, 0x00CF,  // C8h
    0x00D0, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D7,  // D0h
    0x00D8, 0x00D9, 0x00DA, 0x00DB, 0x00DC, 0x00DD, 0x00DE, 0x00DF,  // D8h
    0x00E0, 0x00E1, 0x00E2, 0x00E3, 0x00E4, 0x00E5, 0x00E6, 0x00E7,  // E0h
    0x00E8, 0x00E9, 0x00EA, 0x00EB, 0x00EC, 0x00ED, 0x00EE, 0x00EF,  // E8h
    0x00F0, 0x00F1, 0x00F2, 0x00F3, 0x00F4, 0x00F5, 0x00F6, 0x00F7,  // F0h
    0x00F8, 0x00F9, 0x00FA, 0x00FB, 0x00FC, 0x00FD, 0x00FE, 0x00FF,  // F8h
};
// clang-format on

// What stands in for a character that a page lacks, in ascending order of characters.
struct LookAlike {
  char16_t character;
  char ascii;
};
// clang-format off
constexpr LookAlike kLookAlikes[] = {
    {0x0131, 'i'}, {0x0152, 'O'}, {0x0153, 'o'}, {0x0160, 'S'}, {0x0161, 's'},
    {0x0178, 'Y'}, {0x017D, 'Z'}, {0x017E, 'z'}, {0x02BC, '\''}, {0x02C6, '^'},
    {0x02DC, '~'}, {0x2002, ' '}, {0x2003, ' '}, {0x2009, ' '}, {0x200A, ' '},
    {0x2010, '-'}, {0x2011, '-'}, {0x2012, '-'}, {0x2013, '-'}, {0x2014, '-'},
    {0x2015, '-'}, {0x2017, '='}, {0x2018, '\''}, {0x2019, '\''}, {0x201A, '\''},
    {0x201B, '\''}, {0x201C, '"'}, {0x201D, '"'}, {0x201E, '"'}, {0x201F, '"'},
    {0x2020, '+'}, {0x2021, '+'}, {0x2022, '.'}, {0x2026, '.'}, {0x202F, ' '},
    {0x2030, '%'}, {0x2032, '\''}, {0x2033, '"'}, {0x2039, '<'}, {0x203A, '>'},
    {0x20AC, 'E'}, {0x2122, 'T'}, {0x2212, '-'}, {0x25A0, '#'},
};
// clang-format on
static_assert(std::ranges::is_sorted(kLookAlikes, {}, &LookAlike::character));

constexpr bool IsBetween(char32_t character, char32_t first, char32_t last) {
  return character >= first && character <= last;
}

// Lines and blocks, by which old lists draw frames.
constexpr char DrawingLookAlike(char32_t character) {
  if (character == 0x2500 || character == 0x2550) return '-';
  if (character == 0x2502 || character == 0x2551) return '|';
  return character <= 0x257F ? '+' : '#';
}

constexpr char LookAlikeOf(char32_t character) {
  if (IsBetween(character, 0x2500, 0x259F)) return DrawingLookAlike(character);
  const auto* row = std::ranges::lower_bound(kLookAlikes, character, {}, &LookAlike::character);
  const bool found = row != std::end(kLookAlikes) && row->character == character;
  return found ? row->ascii : '?';
}

constexpr char32_t CharacterOf(const UpperHalf& page, uint8_t byte) {
  return byte < 0x80 ? char32_t{byte} : char32_t{page[byte - 0x80u]};
}

constexpr std::optional<uint8_t> ExactByte(const UpperHalf& page, char32_t character) {
  if (character < 0x80) return static_cast<uint8_t>(character);
  const auto* found = std::ranges::find(page, character);
  if (found == page.end()) return std::nullopt;
  return static_cast<uint8_t>(0x80 + (found - page.begin()));
}

constexpr uint8_t NearestByte(const UpperHalf& page, char32_t character) {
  return ExactByte(page, character).value_or(static_cast<uint8_t>(LookAlikeOf(character)));
}

constexpr ByteTable MakeByteTable(const UpperHalf& from, const UpperHalf& to) {
  ByteTable table{};
  for (size_t byte = 0; byte < table.size(); ++byte) {
    table[byte] = NearestByte(to, CharacterOf(from, static_cast<uint8_t>(byte)));
  }
  return table;
}

constexpr ByteTable kOemToAnsi = MakeByteTable(kOemUpperHalf, kAnsiUpperHalf);
constexpr ByteTable kAnsiToOem = MakeByteTable(kAnsiUpperHalf, kOemUpperHalf);

void Translate(ByteSpan buffer, const ByteTable& table) {
  for (std::byte& byte : buffer) byte = std::byte{table[std::to_integer<uint8_t>(byte)]};
}

std::string Translated(std::string bytes, const ByteTable& table) {
  Translate(std::as_writable_bytes(std::span(bytes)), table);
  return bytes;
}

std::string ToUtf8(const std::string& bytes, const UpperHalf& page) {
  std::string utf8;
  utf8.reserve(bytes.size());
  for (const char c : bytes) AppendUtf8(utf8, CharacterOf(page, static_cast<uint8_t>(c)));
  return utf8;
}

// The bytes up to the first character that `page` lacks, which goes to `refused` in UTF-8.
std::string FromUtf8(std::string_view utf8, const UpperHalf& page, std::string& refused) {
  std::string bytes;
  while (!utf8.empty()) {
    const char32_t character = DecodeUtf8(utf8);
    const std::optional<uint8_t> byte = ExactByte(page, character);
    if (!byte) {
      AppendUtf8(refused, character == kNotUtf8 ? kReplacementCharacter : character);
      return bytes;
    }
    bytes += static_cast<char>(*byte);
  }
  return bytes;
}

std::string FromUtf8Lossy(std::string_view utf8, const UpperHalf& page) {
  std::string bytes;
  while (!utf8.empty()) bytes += static_cast<char>(NearestByte(page, DecodeUtf8(utf8)));
  return bytes;
}

// Capital of a character of code page 1252; ß, µ, ƒ and the like have none there.
unsigned char AnsiCapital(unsigned char byte) {
  constexpr unsigned char kDivisionSign = 0xF7;
  const bool plain = byte >= 'a' && byte <= 'z';
  const bool accented = byte >= 0xE0 && byte <= 0xFE && byte != kDivisionSign;
  if (plain || accented) return static_cast<unsigned char>(byte - 0x20);
  const bool caron_or_ligature = byte == 0x9A || byte == 0x9C || byte == 0x9E;
  if (caron_or_ligature) return static_cast<unsigned char>(byte - 0x10);
  return byte == 0xFF ? 0x9F : byte;
}

}  // namespace

void OemToCharBuff(ByteSpan buffer) {
  Translate(buffer, kOemToAnsi);
}

void CharToOemBuff(ByteSpan buffer) {
  Translate(buffer, kAnsiToOem);
}

AnsiText OemToAnsi(const OemText& text) {
  return AnsiText(Translated(text.bytes(), kOemToAnsi));
}

OemText AnsiToOem(const AnsiText& text) {
  return OemText(Translated(text.bytes(), kAnsiToOem));
}

AnsiText AnsiCapitals(AnsiText text) {
  for (char& c : text.bytes()) c = static_cast<char>(AnsiCapital(static_cast<unsigned char>(c)));
  return text;
}

std::string Utf8FromOem(const OemText& text) {
  return ToUtf8(text.bytes(), kOemUpperHalf);
}

std::string Utf8FromAnsi(const AnsiText& text) {
  return ToUtf8(text.bytes(), kAnsiUpperHalf);
}

OemConversion OemFromUtf8(std::string_view utf8) {
  OemConversion conversion;
  conversion.text = OemText(FromUtf8(utf8, kOemUpperHalf, conversion.refused));
  return conversion;
}

AnsiConversion AnsiFromUtf8(std::string_view utf8) {
  AnsiConversion conversion;
  conversion.text = AnsiText(FromUtf8(utf8, kAnsiUpperHalf, conversion.refused));
  return conversion;
}

OemText OemFromUtf8Lossy(std::string_view utf8) {
  return OemText(FromUtf8Lossy(utf8, kOemUpperHalf));
}

AnsiText AnsiFromUtf8Lossy(std::string_view utf8) {
  return AnsiText(FromUtf8Lossy(utf8, kAnsiUpperHalf));
}

}  // namespace carnetel
