#include "base/utf8.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace carnetel {
namespace {

// Lead bytes by the number of bytes that follow, with the smallest character each may stand for.
struct SequenceForm {
  unsigned char mask;
  unsigned char lead;
  size_t following;
  char32_t smallest;
};
constexpr SequenceForm kForms[] = {
    {0x80, 0x00, 0, 0x0}, {0xE0, 0xC0, 1, 0x80}, {0xF0, 0xE0, 2, 0x800}, {0xF8, 0xF0, 3, 0x10000}};

constexpr char32_t kLastCharacter = 0x10FFFF;

bool IsSurrogate(char32_t character) {
  return character >= 0xD800 && character <= 0xDFFF;
}

// The character at the start of `text` and its length in bytes, or kNotUtf8 and 1.
std::pair<char32_t, size_t> FirstCharacter(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const auto* form = std::ranges::find_if(
      kForms, [lead](const SequenceForm& f) { return (lead & f.mask) == f.lead; });
  if (form == std::end(kForms) || text.size() <= form->following) return {kNotUtf8, 1};
  char32_t character = lead & static_cast<unsigned char>(~form->mask);
  for (const char c : text.substr(1, form->following)) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0) != 0x80) return {kNotUtf8, 1};
    character = (character << 6) | (byte & 0x3F);
  }
  const bool valid =
      character >= form->smallest && character <= kLastCharacter && !IsSurrogate(character);
  return valid ? std::pair(character, form->following + 1) : std::pair(kNotUtf8, size_t{1});
}

}  // namespace

char32_t DecodeUtf8(std::string_view& rest) {
  const auto [character, length] = FirstCharacter(rest);
  rest.remove_prefix(length);
  return character;
}

void AppendUtf8(std::string& text, char32_t character) {
  const auto continuation = [character](int shift) {
    return static_cast<char>(0x80 | ((character >> shift) & 0x3F));
  };
  if (character < 0x80) {
    text += static_cast<char>(character);
  } else if (character < 0x800) {
    text += static_cast<char>(0xC0 | (character >> 6));
    text += continuation(0);
  } else if (character < 0x10000) {
    text += static_cast<char>(0xE0 | (character >> 12));
    text += continuation(6);
    text += continuation(0);
  } else {
    text += static_cast<char>(0xF0 | (character >> 18));
    text += continuation(12);
    text += continuation(6);
    text += continuation(0);
  }
}

size_t CountCharacters(std::string_view utf8) {
  size_t count = 0;
  while (!utf8.empty()) {
    static_cast<void>(DecodeUtf8(utf8));
    ++count;
  }
  return count;
}

}  // namespace carnetel
