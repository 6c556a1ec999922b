#include "base/key_alphabet.h"

#include "base/code_page.h"

#include <algorithm>
#include <string_view>

namespace carnetel {
namespace {

constexpr std::string_view kAccentedCapitals = "\x9A\x99\xA5\x90\x8E\x8F\x92";

bool IsBetween(unsigned char byte, char first, char last) {
  return byte >= first && byte <= last;
}

}  // namespace

bool IsKeyStart(unsigned char oem_byte) {
  return IsBetween(oem_byte, '0', '9') || IsBetween(oem_byte, 'A', 'Z') ||
         IsBetween(oem_byte, 'a', 'z') ||
         kAccentedCapitals.find(static_cast<char>(oem_byte)) != std::string_view::npos;
}

bool IsKeyStartOrBlank(unsigned char oem_byte) {
  return oem_byte == ' ' || IsKeyStart(oem_byte);
}

std::string StripToKeyStart(std::string oem) {
  oem.erase(oem.begin(), std::find_if(oem.begin(), oem.end(), [](char c) {
              return IsKeyStart(static_cast<unsigned char>(c));
            }));
  return oem;
}

// The test takes a byte of the form's code page for one of the cards': an accented capital such as
// É is refused, and the signs that share a byte with one (Ž ’ ™ š ¥) pass. Both are to stay.
bool MayStartKey(const std::string& utf8) {
  const AnsiText text = AnsiFromUtf8Lossy(utf8);
  return text.empty() || IsKeyStartOrBlank(static_cast<unsigned char>(text.bytes().front()));
}

}  // namespace carnetel
